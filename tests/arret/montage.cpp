#include "arret/montage.h"

#include <algorithm>
#include <vector>

#include "platform/linux/base_creation.h"

namespace zuma::arret {

using banc::Entier;
using banc::Texte;

// A guard door that stops the frame while it is open, an input that somebody listens to, and a
// sensor that can be calibrated.
Lignes Montage::Départ() {
  Lignes lignes(/*fréquenceEA=*/100, /*fréquenceEL=*/100);
  lignes.Carte("DrvPET48DIO");
  const std::int32_t ligne = lignes.Bloc(banc::kEL, "DrvPET48DIO_TB24P", 2, true);
  lignes.Objet(banc::kEL, {Entier("Canal", ligne), Texte("Niveau d'Arrêt d'Urgence", "Activé")});
  lignes.Objet(banc::kEL, {Entier("Canal", ligne + 1)});
  lignes.Carte();
  const std::int32_t mesure = lignes.Bloc(banc::kEA, "DrvPCL813_PCLD881", 1, false);
  lignes.Objet("Capteur", {Entier("Canal", mesure), {"Etalonnage par utilisateur", Valeur(true)}});
  return lignes;
}

Montage::Montage(const Lignes& lignes, const std::function<void(Montage&)>& avantLeDépart) {
  const std::string fichier = dossier_.Fichier("arret.db");
  linux_::CréeBase(fichier, lignes.Toutes());
  if (avantLeDépart) machine.avantLeDépart = [this, &avantLeDépart] { avantLeDépart(*this); };
  // A machine that is found running is told, and would not be started without a word.
  const auto malgréTout = [](const host::DépartRefusé&) { return true; };
  marche.emplace(fichier, banc::kChassis, machine, recueil, linux_::Parametres(), malgréTout);
  machine.sim.horloge->Avance(1);
  secondes_ = machine.AvanceJusquA(0);
  FixeLesEntrées();
}

// Inputs stand where the proof puts them, and do not move by themselves.
void Montage::FixeLesEntrées() {
  machine.sim.BorneDe(*Porte().Canal())->EntréeLogique(ouverte);
  machine.sim.BorneDe(*Ecouteur().Canal())->EntréeLogique(levé);
}

void Montage::Dénude() {
  nu_ = true;
  Chassis& chassis = marche->LeChassis();
  linux_::Securite& sécurité = marche->LaSécurité();
  sécurité.Débranche();
  const auto arrête = [&chassis] {
    chassis.DéclencheAU();
    return true;
  };
  sécurité.Branche({.arrête = arrête, .maintient = [] { return true; }});
}

void Montage::Passe(double pas) {
  secondes_ = machine.AvanceJusquA(secondes_ + pas);
  FixeLesEntrées();
  marche->Passe();
}

Objet Montage::LObjet() {
  Objet objet;
  for (const CommandeRef& commande : *marche->LeChassis().Commandes()) {
    if (commande->NomDeLaCommande() == kSujet) objet.commande = commande;
  }
  for (const SortieLogiqueRef& sortie : *marche->LeChassis().SortiesLogiques()) {
    if (sortie->NomDeLaSortieLogique() == kSujet) objet.sortie = sortie;
  }
  return objet;
}

bool Montage::EstDite(std::string_view nom) {
  const std::vector<std::string> manquées =
      nu_ ? marche->LeChassis().SortiesNonAtteintes() : marche->LeSuivi().Manquées();
  return std::ranges::find(manquées, nom) != manquées.end();
}

}  // namespace zuma::arret
