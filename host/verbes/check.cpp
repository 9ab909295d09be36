#include <algorithm>
#include <cstdio>

#include "base/echec.h"
#include "boards/partage_can.h"
#include "core/chassis.h"
#include "host/configuration.h"
#include "host/drivers_charges.h"
#include "host/parametres.h"
#include "host/problemes.h"
#include "host/retenues.h"
#include "host/verbes/verbes.h"
#include "host/verbes/verifie_le_sens.h"
#include "host/verifie_donnees.h"
#include "platform/linux/base_sqlite.h"
#include "platform/linux/horloge_systeme.h"
#include "platform/linux/liaison_serie_linux.h"
#include "platform/linux/minuterie.h"
#include "platform/linux/parametres.h"
#include "platform/linux/traducteur.h"
#include "sim/bus_ports.h"

namespace zuma::host {
namespace {

// A driver in a block of a type that it does not serve neither reads nor writes, and says nothing.
void ExigeUnTypeServi(const Fonction& bloc, Recueil& recueil) {
  const LigneDriver& ligne = bloc.LeDriver();
  if (ligne.types == 0 || ligne.Sert(bloc.TypeDeFonction())) return;
  recueil.Ajoute({.origine = Origine::Donnée,
                  .table = "Fonction",
                  .ligne = bloc.Key(),
                  .colonne = "Type de Fonction",
                  .texte = "the driver " + std::string(ligne.nom) +
                           " does not serve blocks of this type: nothing is read or written"});
}

// A channel on a line that its board does not read never moves.
void ExigeUneLigneLue(Fonction& bloc, Recueil& recueil) {
  const std::int16_t lues = bloc.LeDriver().lignesLues;
  if (lues == 0) return;
  for (const CanalRef& canal : *bloc.Canals()) {
    if (canal->NuméroCanal() < lues) continue;
    recueil.Ajoute({.origine = Origine::Donnée,
                    .table = "Canal",
                    .ligne = canal->Key(),
                    .colonne = "Numéro du Canal",
                    .trouvé = std::to_string(canal->NuméroCanal()),
                    .attendu = "0 to " + std::to_string(lues - 1),
                    .texte = "the block does not read this line: the input stays at 0"});
  }
}

void VérifieLePartageDuCAN(Chassis& chassis, Recueil& recueil) {
  partage_can::Recherche recherche;
  for (const CarteRef& carte : *chassis.Cartes()) recherche.Ajoute(*carte);
  for (const partage_can::Conflit& conflit : recherche.Conflits()) {
    const bool duBloc = partage_can::EstDuBloc(conflit);
    recueil.Ajoute({.origine = Origine::Donnée,
                    .table = duBloc ? "Fonction" : "Canal",
                    .ligne = duBloc ? conflit.canal->Parent()->Key() : conflit.canal->Key(),
                    .colonne = std::string(partage_can::Colonne(conflit)),
                    .trouvé = partage_can::Trouvé(conflit),
                    .attendu = partage_can::Attendu(conflit),
                    .texte = partage_can::EnAnglais(conflit)});
  }
}

void VérifieLesDrivers(Chassis& chassis, Recueil& recueil) {
  VérifieLePartageDuCAN(chassis, recueil);
  for (const CarteRef& carte : *chassis.Cartes()) {
    for (const FonctionRef& bloc : *carte->Fonctions()) {
      ExigeUnTypeServi(*bloc, recueil);
      ExigeUneLigneLue(*bloc, recueil);
    }
  }
}

// Nothing wrong, and nothing that a look at the configuration tells: which connector to wire.
std::vector<std::string> NotesDeCâblage(Chassis& chassis) {
  std::vector<std::string> notes;
  for (const CarteRef& carte : *chassis.Cartes()) {
    for (const FonctionRef& bloc : carte->LesFonctions()) {
      const std::string_view câblage = bloc->LeDriver().câblage;
      if (câblage.empty()) continue;
      notes.push_back("note: table Fonction, row " + bloc->Key() + ": " + std::string(câblage));
    }
  }
  return notes;
}

// A stop puts every output to its inactive level, and -1 starts a CBR tester: the level that the
// stop writes is looked at on the channel itself, nothing being started here.
void VérifieLesArrêts(Chassis& chassis, Recueil& recueil) {
  for (const SortieLogiqueRef& sortie : *chassis.SortiesLogiques()) {
    const CanalRef canal = sortie->Canal();
    if (!canal || canal->NuméroCanal() != 0 || canal->Parent() == nullptr) continue;
    const Carte* carte = canal->Parent()->Parent();
    if (carte == nullptr || !carte->LeDriver().sortieQuiDémarre) continue;
    sortie->DéclencheAU();
    if (canal->ValeurCanal() != kVrai) continue;
    recueil.Ajoute({.origine = Origine::Donnée,
                    .table = "Sortie Logique",
                    .ligne = sortie->Key(),
                    .colonne = "Etat d'Activation",
                    .trouvé = "0",
                    .attendu = "1",
                    .texte = "a stop would start the tester behind this output"});
  }
}

struct Contenu {
  int cartes = 0, blocs = 0, canaux = 0, capteurs = 0, commandes = 0, entrées = 0, sorties = 0;
  std::vector<std::string> notes{};  ///< what is good to know, and no problem
};

Contenu Compte(Chassis& chassis) {
  Contenu contenu{.cartes = chassis.Cartes()->Count(),
                  .capteurs = chassis.Capteurs()->Count(),
                  .commandes = chassis.Commandes()->Count(),
                  .entrées = chassis.EntréesLogiques()->Count(),
                  .sorties = chassis.SortiesLogiques()->Count(),
                  .notes = NotesDeCâblage(chassis)};
  for (const CarteRef& carte : *chassis.Cartes()) {
    contenu.blocs += carte->Fonctions()->Count();
    for (const FonctionRef& bloc : *carte->Fonctions()) contenu.canaux += bloc->Canals()->Count();
  }
  return contenu;
}

// Loads and links as a host would, with collaborators that keep what they are told. Nothing is
// started: the machine is not touched.
Contenu ChargeEtLie(const Ref<BaseDeDonnées>& base, std::int32_t index,
                    const linux_::Parametres& paramètres, const Ref<RegistreDesDrivers>& drivers,
                    const Ref<Recueil>& recueil) {
  Plateforme plateforme;
  plateforme.messages = recueil.Brut();
  plateforme.drivers = drivers;
  linux_::FabriqueLiaisonsLinux liaisons;
  plateforme.liaisons = &liaisons;
  sim::BusPorts ports;  // no board answers here, and none is driven
  plateforme.ports = &ports;
  linux_::HorlogeSystème horloge;
  plateforme.horloge = &horloge;
  Chassis chassis(plateforme);
  chassis.TimerExact(Crée<linux_::Minuterie>());
  chassis.ChargeErreur(recueil);
  chassis.ChargeLeChassis(base, index);
  chassis.Lien(base, std::to_string(index), {}, paramètres.Collection(),
               Crée<linux_::Traducteur>());
  chassis.MiseàJourDesLiens();
  VérifieLesDrivers(chassis, *recueil);
  VérifieLesArrêts(chassis, *recueil);
  for (Problème& problème : RetenuesTropLongues(chassis)) recueil->Ajoute(std::move(problème));
  return Compte(chassis);
}

void VérifieLeFichier(const std::string& fichier, Recueil& recueil) {
  constexpr std::chrono::milliseconds kDurée{1500};  // some hundred megabytes
  const linux_::BaseSqlite base(fichier, {.lectureSeule = true, .bornes = {.durée = kDurée}});
  for (auto& [texte, certain] : base.ProblèmesDIntégrité()) {
    recueil.Ajoute({.origine = Origine::Fichier,
                    .texte = std::move(texte),
                    .gravité = certain ? Gravité::Erreur : Gravité::Avertissement});
  }
}

void Imprime(const OptionsCheck& options, const Recueil& recueil, const Contenu& contenu) {
  const std::vector<Problème>& problèmes = recueil.Problèmes();
  const std::size_t enPlus = recueil.EnPlus();
  if (options.json) {
    std::printf("%s\n", EnJson(problèmes, 2, enPlus).c_str());
    return;
  }
  for (const Problème& problème : problèmes) std::printf("%s\n", Ligne(problème).c_str());
  if (enPlus != 0) std::printf("%s\n", EtDAutres(enPlus).c_str());
  for (const std::string& note : contenu.notes) std::printf("%s\n", note.c_str());
  std::printf(
      "Frame %d: %d boards, %d blocks, %d channels, %d sensors, %d commands, %d logic inputs, %d "
      "logic outputs: %s\n",
      options.chassis, contenu.cartes, contenu.blocs, contenu.canaux, contenu.capteurs,
      contenu.commandes, contenu.entrées, contenu.sorties,
      problèmes.empty() ? "no problem"
                        : (std::to_string(problèmes.size() + enPlus) + " problem(s)").c_str());
}

}  // namespace

int Check(const OptionsCheck& options) {
  const Ref<BaseDeDonnées> base = OuvreLaBase(options.fichier, true);
  const auto recueil = Crée<Recueil>();
  VérifieLeFichier(options.fichier, *recueil);
  const std::unique_ptr<const LecturesCohérentes> lectures = FigeLaBase(base, options.fichier);
  ExigeChassis(*base, options.fichier, options.chassis);
  const linux_::Parametres paramètres = LitLesParamètres(options.fichier, options.paramètres);
  const Ref<RegistreDesDrivers> drivers = LesDrivers(options.drivers);
  {
    Avancement avancement;
    VérifieLesDonnées(*base, *drivers, *recueil, {}, &avancement);
  }
  VérifieLeSens(*base, paramètres.Collection(), *recueil);
  const Contenu contenu = ChargeEtLie(base, options.chassis, paramètres, drivers, recueil);
  Imprime(options, *recueil, contenu);
  return recueil->Problèmes().empty() ? kBon : kProblèmes;
}

}  // namespace zuma::host
