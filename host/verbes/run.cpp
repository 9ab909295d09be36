#include <algorithm>
#include <cstdio>
#include <limits>
#include <memory>
#include <optional>

#include "host/chassis_en_marche.h"
#include "host/configuration.h"
#include "host/drivers_charges.h"
#include "host/enregistreur.h"
#include "host/interruption.h"
#include "host/machine_rejouee.h"
#include "host/pannes.h"
#include "host/parametres.h"
#include "host/verbes/clavier_terminal.h"
#include "host/verbes/gestes_capteur.h"
#include "host/verbes/verbes.h"
#include "host/verbes/vue.h"
#include "sim/machine_simulee.h"

namespace zuma::host {
namespace {

constexpr double kPasDePasse = 0.001;     // seconds between passes
constexpr double kPeriodeTerminal = 0.1;  // seconds between views on a terminal
constexpr double kPeriodeLignes = 0.5;    // of the lines or the data for a program
constexpr double kPeriodeResume = 1;      // of the summary, without a terminal

// Those of the recording that is played again, unless they are given anew.
std::vector<std::string> LesDonnés(const OptionsRun& options) {
  std::vector<std::string> donnés;
  if (!options.rejoue.empty()) donnés = ParamètresEnregistrés(options.rejoue);
  donnés.insert(donnés.end(), options.paramètres.begin(), options.paramètres.end());
  return donnés;
}

class Marche {
 public:
  Marche(const OptionsRun& options, Machine& machine, const Ref<Recueil>& recueil,
         Enregistreur* enregistreur)
      : options_(options),
        machine_(machine),
        recueil_(recueil),
        marche_(options.fichier, options.chassis, machine, recueil,
                LitLesParamètres(options.fichier, LesDonnés(options)),
                SelonLOption(options.malgréTout)),
        enregistreur_(enregistreur) {
    if (options.rejoue.empty()) {
      marche_.GardeLesArrêts(options.arrêts.empty() ? DossierDesArrêts(options.fichier)
                                                    : options.arrêts);
    }
    if (enregistreur_ != nullptr) Enregistre(marche_, *enregistreur_, Spécimen());
  }
  ~Marche() {
    if (enregistreur_ != nullptr) enregistreur_->Termine();
  }
  Marche(const Marche&) = delete;
  Marche& operator=(const Marche&) = delete;

  void Tourne() {
    const double période = Période();
    double prochaineVue = période;
    double secondes = 0;
    while (!fin_ && !Interruption::Demandée() && machine_.Fini().empty() && !machine_.AuBout() &&
           !(options_.secondes && secondes >= *options_.secondes)) {
      secondes = machine_.AvanceJusquA(secondes + kPasDePasse);
      Passe();
      if (secondes + kPasDePasse / 2 < prochaineVue) continue;
      prochaineVue = std::max(prochaineVue + période, secondes);
      while (const char touche = clavier_.Touche()) Traite(touche);
      Montre(secondes);
    }
  }

 private:
  void Passe() {
    const double départ = timer_->LitMicrosecondes();
    marche_.Passe();
    plusLonguePasse_ = std::max(plusLonguePasse_, (timer_->LitMicrosecondes() - départ) / 1000);
    if (enregistreur_ != nullptr) enregistreur_->Suit();
  }

  std::vector<std::pair<std::string, std::string>> Spécimen() const {
    std::vector<std::pair<std::string, std::string>> textes;
    for (const auto& paramètre : *marche_.LesParamètres().Collection()) {
      textes.emplace_back("parameter " + paramètre->Key(), paramètre->ValeurParamètre());
    }
    return textes;
  }

  [[nodiscard]] double Période() const {
    if (options_.json || options_.lignes) return kPeriodeLignes;
    return terminal_.EstTerminal() ? kPeriodeTerminal : kPeriodeResume;
  }

  void FaitDéfiler(bool versLeBas) {
    const std::size_t page = std::max<std::size_t>(terminal_.Lignes() / 2, 1);
    haut_ = versLeBas ? haut_ + page : haut_ - std::min(haut_, page);
  }

  void Choisit(std::int32_t pas) {
    const std::int32_t nombre = marche_.LeChassis().Capteurs()->Count();
    if (nombre != 0) choisi_ = (choisi_ + pas + nombre) % nombre;
  }

  Capteur* CapteurChoisi() {
    const CapteursRef capteurs = marche_.LeChassis().Capteurs();
    return choisi_ < capteurs->Count() ? std::next(capteurs->begin(), choisi_)->Brut() : nullptr;
  }

  // One letter, one act; a stop is acknowledged by its own key and by no other. A terminal tells no
  // release of a key, so that each repeated `s` fires anew.
  void Traite(char touche) {
    Capteur* capteur = CapteurChoisi();
    if (touche == 'q') fin_ = true;
    if (touche == 'j') Choisit(1);
    if (touche == 'k') Choisit(-1);
    if (touche == ' ' || touche == 'b') FaitDéfiler(touche == ' ');
    if (touche == 'a') (void)marche_.Acquitte();
    if (touche == 'e') (void)marche_.RemetEnService();
    if (touche == 's') marche_.Arrête();
    if (touche == 'f') ChangeDePanne();
    if (capteur != nullptr) FaitLeGeste(touche, *capteur, marche_.LaSécurité().Déclenchée());
  }

  // Each press goes on to the next kind of fault, on all lines, and from the last one to none.
  void ChangeDePanne() {
    sim::MachineSimulée* jumelle = machine_.Jumelle();
    if (jumelle == nullptr) return;
    sim::PannePrévue panne{.fin = std::numeric_limits<double>::infinity()};
    if (parTouche_) panne.genre = *parTouche_;
    const bool encore = !parTouche_ || PanneSuivante(panne.genre);
    parTouche_.reset();
    jumelle->pannes.clear();
    if (!encore) return;
    parTouche_ = panne.genre;
    jumelle->pannes.push_back(panne);
  }

  void Montre(double secondes) {
    const Instantané vue{
        marche_.LeChassis(),
        machine_,
        marche_.LaSécurité(),
        marche_.LeSuivi(),
        secondes,
        choisi_,
        plusLonguePasse_,
        parTouche_ ? NomDePanne(*parTouche_) : std::string_view(),
        enregistreur_ != nullptr ? std::optional(enregistreur_->Etat()) : std::nullopt};
    if (options_.json) {
      std::printf("%s\n", VueEnJson(vue).c_str());
      std::fflush(stdout);
    } else if (options_.lignes) {
      terminal_.Montre(VueEnLignes(vue));
    } else if (terminal_.EstTerminal()) {
      terminal_.Montre(VueVivante(vue, terminal_, haut_));
    } else {
      terminal_.Montre({VueEnResume(vue)});
    }
  }

  const OptionsRun& options_;
  Machine& machine_;
  Ref<Recueil> recueil_;
  Terminal terminal_;
  ClavierTerminal clavier_;
  ChassisEnMarche marche_;
  Enregistreur* enregistreur_;  ///< none: nothing is recorded
  Ref<ZED_Timer> timer_ = machine_.Timer();
  double plusLonguePasse_ = 0;  // milliseconds
  std::optional<sim::GenreDePanne> parTouche_;
  std::int32_t choisi_ = 0;
  std::size_t haut_ = 0;  ///< first line shown below the head of the view
  bool fin_ = false;
};

std::unique_ptr<Machine> LaMachine(const OptionsRun& options, BoîteDeMessage& messages) {
  const Cadence cadence = options.auPlusVite ? Cadence::Libre : Cadence::Réelle;
  const bool deLaJumelle = !options.pannes.empty() || options.graine != 0;
  if (!options.simulation && (deLaJumelle || (options.auPlusVite && options.rejoue.empty()))) {
    throw MauvaisUsage("--fault, --seed and --fast belong to the simulated machine: add --sim");
  }
  if (!options.rejoue.empty()) {
    return MachineRejouée(MachineSimulée(messages, Cadence::Libre, LesDrivers(options.drivers)),
                          options.rejoue, cadence);
  }
  const Raccordement raccordement = LitLesPorts(options.ports, options.can);
  if (!options.simulation) {
    return MachineRéelle(messages, raccordement, LesDrivers(options.drivers));
  }
  auto machine = MachineSimulée(messages, cadence, LesDrivers(options.drivers));
  machine->Jumelle()->graine = options.graine;
  std::vector<sim::PannePrévue>& pannes = machine->Jumelle()->pannes;
  for (const std::string& panne : options.pannes) {
    const auto lues = LitLesPannes(panne, options.graine);
    pannes.insert(pannes.end(), lues.begin(), lues.end());
  }
  return machine;
}

}  // namespace

int Run(const OptionsRun& options) {
  const Interruption interruption;
  const auto recueil = Crée<Recueil>();
  const auto machine = LaMachine(options, *recueil);
  std::optional<Enregistreur> enregistreur;
  if (!options.csv.empty()) {
    using Retard = Enregistreur::Retard;
    enregistreur.emplace(options.csv, options.auPlusVite ? Retard::Attend : Retard::Perd,
                         Contenu{.âges = options.âges, .rejouable = options.canaux});
  }
  // The outputs are at rest before anything waits for the disk.
  Marche(options, *machine, recueil, enregistreur ? &*enregistreur : nullptr).Tourne();
  const bool complet = !enregistreur || FermeEtDit(*enregistreur);
  machine->Rapporte(*recueil);
  if (!machine->Fini().empty()) {
    std::fprintf(stderr, "zuma: the process ends here: %s\n", std::string(machine->Fini()).c_str());
  }
  for (const Problème& problème : recueil->Problèmes()) {
    std::fprintf(stderr, "%s\n", Ligne(problème).c_str());
  }
  return complet && recueil->Problèmes().empty() ? kBon : kProblèmes;
}

}  // namespace zuma::host
