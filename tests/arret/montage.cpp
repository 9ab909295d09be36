#include "arret/montage.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "platform/linux/base_creation.h"

namespace zuma::arret {

using banc::Entier;
using banc::Texte;

// Whatever sleeps on this clock may be interrupted once by an event of the host.
class MachineÀLEcoute::Horloge : public zuma::Horloge {
 public:
  explicit Horloge(MachineÀLEcoute& machine) : machine_(machine) {}
  std::string TexteHeure() const override { return machine_.sim.horloge->TexteHeure(); }
  void Dort(double secondes) override {
    if (auto événement = std::exchange(machine_.pendantUnSommeil, nullptr)) événement();
    machine_.sim.horloge->Dort(secondes);
  }

 private:
  MachineÀLEcoute& machine_;
};

// The simulated clock; who reads it may be looked at meanwhile.
class MachineÀLEcoute::Minuterie : public ZED_Timer {
 public:
  explicit Minuterie(MachineÀLEcoute& machine) : machine_(machine) {}
  double LitMicrosecondes() override {
    const double maintenant = machine_.sim.horloge->LitMicrosecondes();
    if (machine_.àChaqueLecture) machine_.àChaqueLecture();
    return maintenant;
  }

 private:
  MachineÀLEcoute& machine_;
};

MachineÀLEcoute::MachineÀLEcoute(BoîteDeMessage& messages)
    : sim(messages),
      horloge_(std::make_shared<Horloge>(*this)),
      minuterie_(Crée<Minuterie>(*this)) {
  sim.services.horloge = horloge_.get();
  sim.services.fenêtres = &fenêtres;
}
MachineÀLEcoute::~MachineÀLEcoute() = default;
Ref<ZED_Timer> MachineÀLEcoute::Timer() {
  return minuterie_;
}

// A guard door that stops the frame while it is open, an input that somebody listens to, and a
// sensor that can be calibrated.
Lignes Montage::Départ() {
  constexpr double kFréquenceEA = 100;
  constexpr double kFréquenceEL = 100;
  Lignes lignes(kFréquenceEA, kFréquenceEL);
  lignes.Carte("DrvPET48DIO");
  const std::int32_t ligne = lignes.Bloc(banc::kEL, "DrvPET48DIO_TB24P", 2, true);
  lignes.Objet(banc::kEL, {Texte("Nom de l'Entrée Logique", kPorte), Entier("Canal", ligne),
                           Texte("Niveau d'Arrêt d'Urgence", "Activé")});
  lignes.Objet(banc::kEL,
               {Texte("Nom de l'Entrée Logique", kEcouteur), Entier("Canal", ligne + 1)});
  lignes.Carte();
  const std::int32_t mesure = lignes.Bloc(banc::kEA, "DrvPCL813_PCLD881", 1, false);
  lignes.Objet("Capteur", {Entier("Canal", mesure),
                           Texte("Nom affiché", "Mesure"),
                           {"Etalonnage par utilisateur", Valeur(true)}});
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
  for (const EntréeLogiqueRef& entrée : *marche->LeChassis().EntréesLogiques()) {
    const bool active = entrée->NomDeEntréeLogique() == kPorte ? ouverte_ : levé_;
    if (auto borne = machine.sim.BorneDe(*entrée->Canal())) borne->EntréeLogique(active);
  }
}

void Montage::Dénude() {
  nu_ = true;
  Chassis& chassis = marche->LeChassis();
  linux_::Securite& sécurité = marche->LaSécurité();
  sécurité.Débranche();
  sécurité.Branche({.arrête =
                        [&chassis] {
                          chassis.DéclencheAU();
                          return true;
                        },
                    .maintient = [] { return true; }});
}

void Montage::Passe(double pas) {
  secondes_ = machine.AvanceJusquA(secondes_ + pas);
  FixeLesEntrées();
  marche->Passe();
}

EntréeLogique& Montage::Ecouteur() {
  for (const EntréeLogiqueRef& entrée : *marche->LeChassis().EntréesLogiques()) {
    if (entrée->NomDeEntréeLogique() == kEcouteur) return *entrée;
  }
  throw Echec::ObjetAbsent();
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
