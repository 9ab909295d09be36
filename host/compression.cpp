// A compression test as any host would write it: the object model alone, and the machine's time.
#include <array>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>

#include "core/recherche.h"
#include "host/chassis_en_marche.h"
#include "host/configuration.h"
#include "host/courbe.h"
#include "host/enregistreur.h"
#include "host/interruption.h"
#include "host/parametres.h"
#include "host/verbes.h"
#include "sim/machine_simulee.h"

namespace zuma::host {
namespace {

constexpr double kPas = 0.001;           // seconds between passes
constexpr double kPressionPrête = 180;   // bar
constexpr double kContact = 0.3;         // kN that tell the platen has met the specimen
constexpr double kApproche = 10;         // % of the valve
constexpr double kRetour = -20;          // % of the valve
constexpr double kAvance = 1.2;          // % that overcome the dead band of the valve
constexpr double kGainP = 3;             // % for each MPa of error
constexpr double kGainI = 2;             // % for each MPa second
constexpr double kRuptureSous = 0.8;     // share of the maximum that tells a break
constexpr double kForceMinimale = 5;     // kN below which no break is looked for
constexpr double kMomentDeLaPanne = 10;  // seconds of load
constexpr double kGel = 1;               // seconds that a frozen host stands still

enum class Fin { Rupture, Arrêt, Chaîne, Délai, Interrompu };
constexpr std::array<std::string_view, 5> kFins{"specimen broken", "stop", "safety chain open",
                                                "time limit", "interrupted"};

struct Rapport {
  Fin fin = Fin::Délai;
  double forceMaximale = 0;       // kN
  double contrainteMaximale = 0;  // MPa
  double vitesseTenue = 0;        // MPa/s, mean slope between 20 and 90 % of the maximum
  double durée = 0;               // seconds of load
  double arrêtAprès = -1;         // seconds from the disturbance to the stop; none: -1
  int passesAuRepos = -1;         // passes from the stop to outputs at rest; 0 is the same pass
  std::vector<std::string> causes;
};

/// Sensors, commands and lines that the test needs, found by label as a host finds them.
struct Organes {
  explicit Organes(Chassis& chassis)
      : force(Exige(recherche::CapteurDeLabel(chassis, "Force"), "sensor Force")),
        contrainte(Exige(recherche::CapteurDeLabel(chassis, "Contrainte"), "sensor Contrainte")),
        déformation(Exige(recherche::CapteurDeLabel(chassis, "Déformation"), "sensor Déformation")),
        alimentation(Exige(recherche::CapteurDeLabel(chassis, "Pression alimentation"),
                           "sensor Pression alimentation")),
        armé(Exige(chassis.AU(), "the input named in Entrée Armé")),
        pompe(Exige(recherche::SortieLogiqueDeLabel(chassis, "Pompe"), "output Pompe")),
        distributeur(Exige(recherche::SortieLogiqueDeLabel(chassis, "Distributeur"),
                           "output Distributeur")) {
    for (const CommandeRef& commande : *chassis.Commandes()) {
      if (commande->Label() == "Servovalve") servovalve = commande;
    }
    (void)Exige(servovalve, "command Servovalve");
  }

  template <class T>
  static Ref<T> Exige(Ref<T> objet, const char* quoi) {
    if (!objet) throw MauvaisUsage(std::string("this frame has no ") + quoi);
    return objet;
  }

  CapteurRef force, contrainte, déformation, alimentation;
  EntréeLogiqueRef armé;
  SortieLogiqueRef pompe, distributeur;
  CommandeRef servovalve;
};

class Essai {
 public:
  Essai(const OptionsCompression& options, Machine& machine, const Ref<Recueil>& recueil)
      : options_(options),
        machine_(machine),
        jumelle_(*machine.Jumelle()),
        marche_(options.fichier, options.chassis, machine, recueil,
                LitLesParamètres(options.fichier, {})),
        organes_(marche_.LeChassis()),
        enregistreur_((std::filesystem::path(options.dossier) / "compression.csv").string(),
                      marche_.LeChassis(),
                      {{"standard rate [MPa/s]", std::to_string(options.vitesse)}}) {}

  Rapport Tourne() {
    Arme();
    if (Continue()) Approche();
    if (Continue()) Charge();
    Décharge();
    Conclut();
    return rapport_;
  }

  [[nodiscard]] std::vector<Courbe> Courbes() const {
    Courbe temps{"Stress against time", "time [s]", "stress [MPa]", {}};
    Courbe déformation{"Stress against strain", "strain [%]", "stress [MPa]", {}};
    for (const Point& p : points_) {
      temps.points.emplace_back(p.secondes, p.contrainte);
      déformation.points.emplace_back(p.déformation, p.contrainte);
    }
    return {temps, déformation};
  }

 private:
  struct Point {
    double secondes;
    double contrainte;
    double déformation;
  };

  void Passe() {
    secondes_ += kPas;
    machine_.AvanceJusquA(secondes_);
    Chassis& chassis = marche_.LeChassis();
    const std::uint64_t avant = chassis.RafraichissementsEA();
    marche_.Passe();
    if (chassis.RafraichissementsEA() != avant) enregistreur_.Note(secondes_);
    Surveille();
  }

  // What ends a test whatever its phase.
  void Surveille() {
    if (marche_.LaSécurité().Déclenchée()) {
      Finit(Fin::Arrêt);
    } else if (armé_ && organes_.armé->ValeurCourante() != ENUM_ETAT_LOGIQUE::Actif) {
      Finit(Fin::Chaîne);
    } else if (Interruption::Demandée()) {
      Finit(Fin::Interrompu);
    }
    if (finie_ || !jumelle_.presse.chaîneFermée) MesureLArrêt();
  }

  // Called at the end of each pass, from the one that found the stop on, and as soon as the
  // watchdog has let go, whether the host has seen it or stands still.
  void MesureLArrêt() {
    if (rapport_.fin == Fin::Rupture) return;
    if (heurePanne_ >= 0 && rapport_.arrêtAprès < 0) rapport_.arrêtAprès = secondes_ - heurePanne_;
    if (rapport_.passesAuRepos >= 0) return;
    if (AuRepos()) rapport_.passesAuRepos = passesDepuisLArrêt_;
    ++passesDepuisLArrêt_;
  }

  void Finit(Fin fin) {
    if (finie_) return;
    finie_ = true;
    rapport_.fin = fin;
    if (fin != Fin::Chaîne) return;
    // Now: the end of the test stops the watchdog, which closes its contact again.
    rapport_.causes.emplace_back(jumelle_.presse.chaîneFermée
                                     ? "input Armé is no longer active"
                                     : "the watchdog tripped: the host did not refresh it in time");
  }
  [[nodiscard]] bool Continue() const { return !finie_; }

  // At the terminals: what the machine obeys, not what the program believes.
  [[nodiscard]] bool AuRepos() const {
    const auto borne = [&](const CanalRef& canal) { return jumelle_.ports.BorneDe(*canal); };
    const auto ouverte = [&](const SortieLogiqueRef& sortie) {
      const auto ligne = borne(sortie->Canal());
      return ligne && ligne->SortieLogique();
    };
    const auto valve = borne(organes_.servovalve->Canal());
    return !jumelle_.presse.chaîneFermée ||
           (valve && valve->TensionSortie() == 0 && !ouverte(organes_.pompe) &&
            !ouverte(organes_.distributeur));
  }

  template <class Condition>
  void PasseJusquA(Condition&& condition, double délai) {
    const double fin = secondes_ + délai;
    while (Continue() && !condition()) {
      if (secondes_ > fin) Finit(Fin::Délai);
      Passe();
    }
  }

  void Arme() {
    for (int i = 0; i < 200 && Continue(); ++i) Passe();
    marche_.LeChassis().Watchdog()->Enabled(true);
    organes_.pompe->ValeurCourante(ENUM_ETAT_LOGIQUE::Actif);
    organes_.distributeur->ValeurCourante(ENUM_ETAT_LOGIQUE::Actif);
    organes_.servovalve->Enabled(true);
    PasseJusquA([&] { return organes_.alimentation->ValeurCourante() > kPressionPrête; }, 10);
    PasseJusquA([&] { return organes_.armé->ValeurCourante() == ENUM_ETAT_LOGIQUE::Actif; }, 2);
    armé_ = true;
  }

  void Approche() {
    organes_.servovalve->ValeurCouranteEnUnité(kApproche);
    PasseJusquA([&] { return organes_.force->ValeurCourante() > kContact; }, 60);
    if (Continue()) organes_.servovalve->ValeurCouranteEnUnité(0);
  }

  // Constant stress rate: a proportional and integral correction around the dead band.
  void Charge() {
    const double départ = secondes_;
    const double contrainteDépart = organes_.contrainte->ValeurCourante();
    double intégrale = 0;
    while (Continue()) {
      const double t = secondes_ - départ;
      const double contrainte = organes_.contrainte->ValeurCourante();
      const double erreur = contrainteDépart + options_.vitesse * t - contrainte;
      intégrale += erreur * kPas;
      organes_.servovalve->ValeurCouranteEnUnité(kAvance + kGainP * erreur + kGainI * intégrale);
      Perturbe(t);
      Passe();
      Mesure(t);
      if (t > options_.limite) Finit(Fin::Délai);
    }
    rapport_.durée = secondes_ - départ;
  }

  // The curve ends at the break: what the sensors of a broken specimen show is no material.
  void Mesure(double t) {
    const double force = organes_.force->ValeurCourante();
    if (rapport_.forceMaximale > kForceMinimale && force < kRuptureSous * rapport_.forceMaximale) {
      Finit(Fin::Rupture);
      return;
    }
    points_.push_back(
        {t, organes_.contrainte->ValeurCourante(), organes_.déformation->ValeurCourante()});
    rapport_.forceMaximale = std::max(rapport_.forceMaximale, force);
    rapport_.contrainteMaximale = std::max(rapport_.contrainteMaximale, points_.back().contrainte);
  }

  // Something goes wrong, once. A frozen host passes no more; the machine's time goes on.
  void Perturbe(double t) {
    if (heurePanne_ >= 0 || options_.panne.empty() || t < kMomentDeLaPanne) return;
    if (options_.panne == "overrange") {
      if (organes_.force->ValeurCourante() < kAvantDépassement) return;
    }
    heurePanne_ = secondes_;
    if (options_.panne == "door") jumelle_.presse.porteFermée = false;
    if (options_.panne == "button") jumelle_.presse.boutonAU = true;
    if (options_.panne == "freeze") {
      const double gel = secondes_ + kGel;
      while (secondes_ < gel) {
        secondes_ += kPas;
        machine_.AvanceJusquA(secondes_);
        Surveille();
      }
    }
  }

  // Back to a force of nothing, then everything to rest. After a stop nothing is commanded: its
  // outputs stay where the stop put them.
  void Décharge() {
    if (rapport_.fin == Fin::Rupture) {
      organes_.servovalve->ValeurCouranteEnUnité(kRetour);
      for (int i = 0; i < 2000; ++i) Passe();
    }
    if (marche_.LaSécurité().Déclenchée()) {
      for (int i = 0; i < 50; ++i) Passe();
      return;
    }
    organes_.servovalve->ValeurCouranteEnUnité(0);
    organes_.distributeur->ValeurCourante(ENUM_ETAT_LOGIQUE::Inactif);
    organes_.pompe->ValeurCourante(ENUM_ETAT_LOGIQUE::Inactif);
    marche_.LeChassis().Watchdog()->Enabled(false);
    for (int i = 0; i < 100; ++i) Passe();
  }

  // Least squares over the part of the load that a standard looks at.
  void Conclut() {
    double n = 0, st = 0, sc = 0, stt = 0, stc = 0;
    for (const Point& p : points_) {
      if (p.contrainte > 0.9 * rapport_.contrainteMaximale) break;
      if (p.contrainte < 0.2 * rapport_.contrainteMaximale) continue;
      n += 1;
      st += p.secondes;
      sc += p.contrainte;
      stt += p.secondes * p.secondes;
      stc += p.secondes * p.contrainte;
    }
    const double d = n * stt - st * st;
    rapport_.vitesseTenue = d > 0 ? (n * stc - st * sc) / d : 0;
    for (const linux_::Securite::Cause& cause : marche_.LaSécurité().Causes()) {
      rapport_.causes.push_back(cause.texte);
    }
  }

  static constexpr double kAvantDépassement = 94.9;  // kN, just below the limit of the big cell

  const OptionsCompression& options_;
  Machine& machine_;
  sim::MachineSimulée& jumelle_;
  ChassisEnMarche marche_;
  Organes organes_;
  Enregistreur enregistreur_;
  std::vector<Point> points_;
  Rapport rapport_;
  double secondes_ = 0;
  double heurePanne_ = -1;
  int passesDepuisLArrêt_ = 0;
  bool armé_ = false;
  bool finie_ = false;
};

std::string Secondes(double secondes) {
  std::array<char, 48> texte{};
  std::snprintf(texte.data(), texte.size(), "%.3f s", secondes);
  return texte.data();
}

void Imprime(const OptionsCompression& options, const Rapport& r) {
  const std::string fin(kFins[static_cast<std::size_t>(r.fin)]);
  if (options.json) {
    const nlohmann::ordered_json json{{"end", fin},
                                      {"max_force_kN", r.forceMaximale},
                                      {"max_stress_MPa", r.contrainteMaximale},
                                      {"rate_asked_MPa_s", options.vitesse},
                                      {"rate_held_MPa_s", r.vitesseTenue},
                                      {"load_s", r.durée},
                                      {"stop_after_s", r.arrêtAprès},
                                      {"rest_after_passes", r.passesAuRepos},
                                      {"causes", r.causes},
                                      {"folder", options.dossier}};
    std::printf("%s\n", json.dump(2).c_str());
    return;
  }
  std::printf("Compression test: %s\n", fin.c_str());
  for (const std::string& cause : r.causes) std::printf("  cause: %s\n", cause.c_str());
  std::printf(
      "  maximum force    %8.2f kN\n  maximum stress   %8.2f MPa\n"
      "  rate held        %8.3f MPa/s (asked %.3f)\n  duration of load %8.1f s\n",
      r.forceMaximale, r.contrainteMaximale, r.vitesseTenue, options.vitesse, r.durée);
  if (r.arrêtAprès >= 0) {
    std::printf("  stop             %s after the disturbance\n", Secondes(r.arrêtAprès).c_str());
  }
  if (r.fin != Fin::Rupture && r.passesAuRepos >= 0) {
    std::printf("  outputs at rest  %s\n",
                r.passesAuRepos == 0 ? "in the same pass"
                                     : (std::to_string(r.passesAuRepos) + " passes later").c_str());
  }
  std::printf("Recording %s/compression.csv, curves %s/compression.svg\n", options.dossier.c_str(),
              options.dossier.c_str());
}

void EcritLesCourbes(const std::string& dossier, const std::vector<Courbe>& courbes) {
  const auto nom = std::filesystem::path(dossier) / "compression.svg";
  std::ofstream fichier(nom);
  fichier << EnSvg(courbes);
  if (!fichier.flush()) throw MauvaisUsage(nom.string() + " cannot be written");
}

}  // namespace

int Compression(const OptionsCompression& options) {
  std::filesystem::create_directories(options.dossier);
  const auto recueil = Crée<Recueil>();
  const auto machine = MachineSimulée(*recueil, Cadence::Libre);
  if (options.panne == "overrange") machine->Jumelle()->presse.Réglages().rupture = 1e6;
  Rapport rapport;
  {
    const Interruption interruption;
    Essai essai(options, *machine, recueil);
    rapport = essai.Tourne();
    EcritLesCourbes(options.dossier, essai.Courbes());
  }
  Imprime(options, rapport);
  for (const Problème& problème : recueil->Problèmes()) {
    std::fprintf(stderr, "%s\n", Ligne(problème).c_str());
  }
  return rapport.fin == Fin::Rupture && recueil->Problèmes().empty() ? kBon : kProblèmes;
}

}  // namespace zuma::host
