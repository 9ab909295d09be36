#include "host/chassis_en_marche.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <filesystem>

#include "host/configuration.h"
#include "host/interruption.h"
#include "host/regard/gardien.h"
#include "host/retenues.h"
#include "platform/linux/arret_du_chassis.h"
#include "tree/bloc_de_sorties.h"

namespace zuma::host {
namespace {

constexpr double kMicrosecondes = 1e6;
constexpr double kRepos = 0.5;         // seconds
constexpr double kReposAuPlus = 1.5;   // seconds: a tester sends its stop again each second
constexpr double kReposMaximum = 15;   // seconds: the same on a bus of slow slaves
constexpr double kPasDuRepos = 0.001;  // seconds

// Its outputs leave with exchanges, over several steps.
bool EstPilotée(Carte& carte) {
  return carte.Service() != ServiceCarte::ParFonction &&
         std::ranges::any_of(carte.LesFonctions(),
                             [](const FonctionRef& bloc) { return EstUneSortie(*bloc); });
}

// A slave that is silent holds its bus for the whole time-out, and a stop behind it must still get
// its turn, and one more.
double ReposAuPlus(const std::vector<CarteRef>& pilotées) {
  constexpr double kTours = 2;
  constexpr double kMillisecondes = 1000;
  double plusLong = kReposAuPlus;
  for (const CarteRef& carte : pilotées) {
    const double tour = carte->LesFonctions().Count() * carte->TimeOutModbus() / kMillisecondes;
    plusLong = std::max(plusLong, kTours * tour);
  }
  return std::min(plusLong, kReposMaximum);
}

publication::Identité IdentitéSur(Machine& machine, const std::string& fichier,
                                  std::int32_t index) {
  return {fichier, index, machine.Jumelle() != nullptr, !machine.Enregistrement().empty()};
}

}  // namespace

ChassisEnMarche::ChassisEnMarche(Machine& machine, const publication::Identité& identité,
                                 const Ref<Recueil>& recueil, linux_::Parametres paramètres,
                                 Ref<ZED_Traduction> traducteur)
    : machine_(machine),
      place_(identité, publication::DossierDesPublications()),
      recueil_(recueil),
      traducteur_(std::move(traducteur)),
      paramètres_(std::move(paramètres)),
      sécurité_(Crée<linux_::Securite>(machine.Timer())),
      chassis_(machine.Services()),
      suivi_(recueil, traducteur_),
      horloge_(Crée<HorlogeDePasse>(machine.InstantDePasse())) {
  sécurité_->Branche(chassis_);
  sécurité_->Bornes(*traducteur_);
  chassis_.TimerExact(machine.Timer());
  chassis_.ChargeErreur(recueil);
}

// What is thrown from here on finds an object that is made: its destructor puts the outputs to
// rest. A frame whose load, link or start told anything is refused, message boxes and what adapters
// told on their own included: nobody can say of an entry that no stop hangs on it. Taken all the
// same, it runs behind a stop.
ChassisEnMarche::ChassisEnMarche(const std::string& fichier, std::int32_t index, Machine& machine,
                                 const Ref<Recueil>& recueil, linux_::Parametres paramètres,
                                 const MalgréTout& malgréTout, Ref<ZED_Traduction> traducteur)
    : ChassisEnMarche(machine, IdentitéSur(machine, fichier, index), recueil, std::move(paramètres),
                      std::move(traducteur)) {
  const auto exige = [&](Etape étape, std::vector<Problème> problèmes) {
    problèmes.insert(problèmes.end(), recueil->Problèmes().begin(), recueil->Problèmes().end());
    const DépartRefusé refus(index, étape, std::move(problèmes));
    if (!malgréTout || !malgréTout(refus)) throw refus;
  };
  const std::vector<Problème> données = Charge(fichier, index);
  const std::size_t duChargement = recueil->Problèmes().size();
  if (duChargement != 0) exige(Etape::Chargé, données);
  Démarre(IdentitéSur(machine, fichier, index));
  if (recueil->Problèmes().empty()) return;
  Arrête(traducteur_->Traduit("Cause depart", "", "Bureau"));
  SertLesLiens();  // the answer may take its time, and nothing passes meanwhile
  if (recueil->Problèmes().size() != duChargement) exige(Etape::Démarré, données);
}

// One read: no writer puts a channel of before together with limits of after a change.
std::vector<Problème> ChassisEnMarche::Charge(const std::string& fichier, std::int32_t index) {
  const Ref<BaseDeDonnées> base = OuvreLaBase(fichier, false);
  const std::unique_ptr<const LecturesCohérentes> lectures = FigeLaBase(base, fichier);
  ExigeChassis(*base, fichier, index);
  chassis_.ChargeLeChassis(base, index);
  chassis_.TimerExact(horloge_);
  for (const CapteurRef& capteur : *chassis_.Capteurs()) capteur->TimerExact(horloge_);
  chassis_.Lien(base, std::to_string(index), sécurité_, paramètres_.Collection(), traducteur_);
  chassis_.MiseàJourDesLiens();
  for (const CarteRef& carte : *chassis_.Cartes()) carte->Lien(paramètres_.Collection());
  if (Interruption::Demandée()) throw std::runtime_error("asked to end during the load");
  if (recueil_->Problèmes().empty()) return {};
  return ProblèmesDesDonnées(*base, chassis_, index);
}

void ChassisEnMarche::Démarre(const publication::Identité& identité) {
  DitLesRetenues(chassis_);
  suivi_.Suit(chassis_);
  machine_.Branche(chassis_);
  démarré_ = true;
  machine_.AvantLaFin([this] { FinitAuRepos(); });
  chassis_.Initialise();
  machine_.Rapporte(*recueil_);
  publication::ChassisPublié sujet{.fichier = std::filesystem::absolute(identité.fichier),
                                   .index = identité.index,
                                   .simulé = identité.simulé,
                                   .rejoué = machine_.Enregistrement(),
                                   .programme = ::program_invocation_short_name,
                                   .horloge = horloge_->LitMicrosecondes()};
  for (const auto& paramètre : *paramètres_.Collection()) {
    sujet.paramètres.emplace_back(paramètre->NomParamètre(), paramètre->ValeurParamètre());
  }
  horloge_->Pose(machine_.InstantDePasse());
  publication::Réglages réglages = publication::RéglagesDuSystème();
  réglages.durées = machine_.Timer();
  publication_.emplace(chassis_, place_, std::move(sujet), réglages);
  publication_->Suit(*sécurité_);
  if (!place_.Défaut().empty()) std::fprintf(stderr, "zuma: %s\n", place_.Défaut().c_str());
  machine_.AprèsLeDépart(chassis_);
  for (const CarteRef& carte : *chassis_.Cartes()) {
    if (carte->LeDriver().EstLaisséeALHôte()) laissées_.push_back(carte);
  }
}

void ChassisEnMarche::Passe() {
  const std::uint64_t avant = chassis_.RafraichissementsEA();
  const double dernier = horloge_->LitMicrosecondes();
  horloge_->Pose(machine_.InstantDePasse());
  if (std::exchange(rafraîchi_, false)) {
    machine_.Services().heureDePasse = horloge_->LitMicrosecondes() / kMicrosecondes;
    for (const CarteRef& carte : laissées_) carte->MetàJour();
  }
  chassis_.MetàJour();
  rafraîchi_ = chassis_.RafraichissementsEA() != avant;
  if (!rafraîchi_) horloge_->Pose(dernier);
  MaintientLArrêt();
  Publie();
}

void ChassisEnMarche::Publie() {
  for (const auto& problèmes = recueil_->Problèmes(); publiés_ < problèmes.size(); ++publiés_) {
    publication_->Note(publication::GenreDEvènement::Problème, Ligne(problèmes[publiés_]));
  }
  publication_->Publie();
}

// A stop whose danger is gone goes on until it is acknowledged.
void ChassisEnMarche::MaintientLArrêt() {
  try {
    sécurité_->Maintient();
  } catch (...) {
    recueil_->AjouteErreur(EchecCourant(__LINE__).what(), {});
  }
  suivi_.Observe(sécurité_->Déclenchée(), machine_.Timer()->LitMicrosecondes());
}

void ChassisEnMarche::GardeLesArrêts(const std::string& dossier) {
  gardien_ =
      std::make_unique<GardienDesArrêts>(publication_->LeLecteur(), dossier, place_.MiseDeCôté());
}

std::string DossierDesArrêts(const std::string& fichier) {
  return std::filesystem::absolute(fichier).replace_filename("stops");
}

void ChassisEnMarche::MetAuRepos() {
  linux_::ArrêteLeChassis(chassis_);
  SertLesLiens();
  suivi_.Conclut();
  if (publication_) Publie();
}

// From inside a pass, on the way to the end of the process: what is still to be told is told here.
void ChassisEnMarche::FinitAuRepos() {
  const std::size_t avant = recueil_->Problèmes().size();
  machine_.Services().échecs.enPasse = false;  // each failure is told from here on
  MetAuRepos();
  for (std::size_t i = avant; i < recueil_->Problèmes().size(); ++i) {
    std::fprintf(stderr, "%s\n", Ligne(recueil_->Problèmes()[i]).c_str());
  }
}

// One step of a bus is not the write of its last block: each gets its turn, within half a second.
// What was not confirmed by then gets the time in which it leaves, and is sent again.
void ChassisEnMarche::SertLesLiens() {
  std::vector<CarteRef> pilotées;
  for (const CarteRef& carte : *chassis_.Cartes()) {
    if (EstPilotée(*carte)) pilotées.push_back(carte);
  }
  if (pilotées.empty()) return;
  double maintenant = machine_.AvanceJusquA(0);
  const double départ = maintenant;
  const double auPlus = départ + ReposAuPlus(pilotées);
  while (maintenant < départ + kRepos || (maintenant < auPlus && !linux_::ArrêtAtteint(chassis_))) {
    maintenant = machine_.AvanceJusquA(maintenant + kPasDuRepos);
    for (const CarteRef& carte : pilotées) carte->MetàJour();
  }
}

ChassisEnMarche::~ChassisEnMarche() {
  try {
    if (démarré_) MetAuRepos();
    if (démarré_) chassis_.Décharge();
  } catch (...) {
    recueil_->AjouteErreur(EchecCourant(__LINE__).what(), {});
  }
  machine_.AvantLaFin({});
  sécurité_->Débranche();
}

void ChassisEnMarche::Arrête(std::string_view cause) {
  sécurité_->PositionneCauseAU(cause);
  (void)sécurité_->DéclencheSécurité();
}

bool ChassisEnMarche::Acquitte() {
  if (!sécurité_->Acquitte()) return false;
  publication_->NoteLAcquittement();
  const WatchdogRef chien = chassis_.Watchdog();
  if (chien->EnArrêt()) chien->Enabled(false);  // whoever set it meanwhile: the flag alone
  chien->Réarme();
  return true;
}

bool ChassisEnMarche::RemetEnService() {
  if (sécurité_->Déclenchée()) return false;
  for (const CommandeRef& commande : *chassis_.Commandes()) {
    if (commande->MaintenueAuRepos()) commande->Enabled(true);
  }
  chassis_.Watchdog()->Enabled(true);
  publication_->Note(publication::GenreDEvènement::EnService, "");
  return true;
}

}  // namespace zuma::host
