// The compression test on the simulated press, undisturbed or with something that goes wrong.
#include <array>
#include <cstdio>
#include <filesystem>
#include <nlohmann/json.hpp>

#include "host/chassis_en_marche.h"
#include "host/configuration.h"
#include "host/courbe.h"
#include "host/enregistreur.h"
#include "host/interruption.h"
#include "host/parametres.h"
#include "host/verbes/essai_compression.h"
#include "host/verbes/verbes.h"
#include "platform/linux/texte_ligne.h"
#include "sim/machine_simulee.h"

namespace zuma::host {
namespace {

using Fin = EssaiCompression::Fin;

constexpr double kPas = 0.001;              // seconds between passes
constexpr double kMomentDeLaPanne = 10;     // seconds of load
constexpr double kAvantDépassement = 94.9;  // kN, just below the limit of the big cell
constexpr double kGel = 1;                  // seconds that a frozen host stands still

struct Rapport {
  Fin fin = Fin::Délai;
  EssaiCompression::Résultat résultat;
  double arrêtAprès = -1;  // seconds from the disturbance to the stop; none: -1
  int passesAuRepos = -1;  // passes from the stop to outputs at rest; 0 is the same pass
  std::vector<std::string> causes;
};

// The test on the simulated press, with what may go wrong, watched at the terminals.
class EssaiSimulé {
 public:
  EssaiSimulé(const OptionsCompression& options, Machine& machine, const Ref<Recueil>& recueil,
              Enregistreur& enregistreur)
      : options_(options),
        machine_(machine),
        jumelle_(*machine.Jumelle()),
        marche_(options.fichier, options.chassis, machine, recueil,
                LitLesParamètres(options.fichier, {}), SelonLOption(options.malgréTout)),
        essai_(marche_.LeChassis(), marche_.LaSécurité(),
               {.vitesse = options.vitesse, .limite = options.limite}),
        enregistreur_(enregistreur) {
    marche_.GardeLesArrêts(options.dossier + "/stops");
    Enregistre(marche_, enregistreur_,
               {{"standard rate [MPa/s]", std::to_string(options.vitesse)}});
    // The press is a simulated one: the option that starts it is its acknowledgement.
    if (options.malgréTout) (void)marche_.Acquitte();
  }

  ~EssaiSimulé() { enregistreur_.Termine(); }
  EssaiSimulé(const EssaiSimulé&) = delete;
  EssaiSimulé& operator=(const EssaiSimulé&) = delete;

  Rapport Tourne() {
    while (!essai_.Terminé()) {
      Passe();
      essai_.Agit();
      if (const auto t = essai_.SecondesDeCharge()) Perturbe(*t);
    }
    rapport_.fin = essai_.LaFin().value_or(Fin::Délai);
    rapport_.résultat = essai_.LeRésultat();
    for (const linux_::Securite::Cause& cause : marche_.LaSécurité().Causes()) {
      rapport_.causes.push_back(cause.texte);
    }
    return rapport_;
  }

  [[nodiscard]] std::vector<Courbe> Courbes() const {
    Courbe temps{"Stress against time", "time [s]", "stress [MPa]", {}};
    Courbe déformation{"Stress against strain", "strain [%]", "stress [MPa]", {}};
    for (const EssaiCompression::Point& p : essai_.Points()) {
      temps.points.emplace_back(p.secondes, p.contrainte);
      déformation.points.emplace_back(p.déformation, p.contrainte);
    }
    return {temps, déformation};
  }

 private:
  void Passe() {
    secondes_ += kPas;
    machine_.AvanceJusquA(secondes_);
    for (auto& [cellule, tension] : cellulesFigées_) cellule.TensionEntrée(tension);
    marche_.Passe();
    enregistreur_.Suit();
    Surveille();
  }

  void Surveille() {
    const bool finissait = essai_.LaFin().has_value();
    essai_.Observe(secondes_);
    if (Interruption::Demandée()) essai_.Interrompt();
    if (!finissait && essai_.LaFin() == Fin::Chaîne) NoteLaChaîneOuverte();
    if (!finissait && essai_.LeDéfaut()) NoteLeDéfaut(*essai_.LeDéfaut());
    if (essai_.LaFin() || !jumelle_.presse.chaîneFermée) MesureLArrêt();
  }

  // Now: the end of the test stops the watchdog, which closes its contact again.
  void NoteLaChaîneOuverte() {
    rapport_.causes.emplace_back(jumelle_.presse.chaîneFermée
                                     ? "input Armé is no longer active"
                                     : "the watchdog tripped: the host did not refresh it in time");
  }

  void NoteLeDéfaut(const DéfautCapteur& défaut) {
    rapport_.causes.push_back("sensor " + défaut.capteur + ": " + std::string(Texte(défaut.genre)));
  }

  // Called at the end of each pass, from the one that found the stop on, and as soon as the
  // watchdog has let go, whether the host has seen it or stands still.
  void MesureLArrêt() {
    if (essai_.LaFin() == Fin::Rupture) return;
    if (heurePanne_ >= 0 && rapport_.arrêtAprès < 0) rapport_.arrêtAprès = secondes_ - heurePanne_;
    if (rapport_.passesAuRepos >= 0) return;
    if (AuRepos()) rapport_.passesAuRepos = passesDepuisLArrêt_;
    ++passesDepuisLArrêt_;
  }

  // At the terminals: what the machine obeys, not what the program believes.
  [[nodiscard]] bool AuRepos() const {
    const auto borne = [&](const CanalRef& canal) { return jumelle_.ports.BorneDe(*canal); };
    const auto ouverte = [&](const SortieLogique& sortie) {
      const auto ligne = borne(sortie.Canal());
      return ligne && ligne->SortieLogique();
    };
    const auto valve = borne(essai_.Servovalve().Canal());
    return !jumelle_.presse.chaîneFermée ||
           (valve && valve->TensionSortie() == 0 && !ouverte(essai_.Pompe()) &&
            !ouverte(essai_.Distributeur()));
  }

  // Something goes wrong, once. A frozen host passes no more; the machine's time goes on.
  void Perturbe(double t) {
    if (heurePanne_ >= 0 || options_.panne.empty() || t < kMomentDeLaPanne) return;
    if (options_.panne == "overrange" && essai_.Force().ValeurCourante() < kAvantDépassement) {
      return;
    }
    heurePanne_ = secondes_;
    if (options_.panne == "door") jumelle_.presse.porteFermée = false;
    if (options_.panne == "button") jumelle_.presse.boutonAU = true;
    if (options_.panne == "freeze") Gèle();
    if (options_.panne == "cell") FigeLesCellules();
  }

  // Their converter hangs: each gives its last voltage for ever.
  void FigeLesCellules() {
    for (const CapteurRef& cellule : *essai_.Force().CapteursFils()) {
      const auto borne = jumelle_.BorneDe(*cellule->Canal());
      if (!borne) continue;
      cellulesFigées_.emplace_back(*borne, borne->DeLaCarte().entréesAnalogiques[borne->Ligne()]);
    }
  }

  void Gèle() {
    const double gel = secondes_ + kGel;
    while (secondes_ < gel) {
      secondes_ += kPas;
      machine_.AvanceJusquA(secondes_);
      Surveille();
    }
  }

  const OptionsCompression& options_;
  Machine& machine_;
  sim::MachineSimulée& jumelle_;
  ChassisEnMarche marche_;
  EssaiCompression essai_;
  Enregistreur& enregistreur_;
  Rapport rapport_;
  std::vector<std::pair<sim::Borne, double>> cellulesFigées_;
  double secondes_ = 0;
  double heurePanne_ = -1;
  int passesDepuisLArrêt_ = 0;
};

std::string Secondes(double secondes) {
  std::array<char, 48> texte{};
  std::snprintf(texte.data(), texte.size(), "%.3f s", secondes);
  return texte.data();
}

void Imprime(const OptionsCompression& options, const Rapport& r, const std::string& nom) {
  const std::string fin(Texte(r.fin));
  if (options.json) {
    const nlohmann::ordered_json json{{"end", fin},
                                      {"max_force_kN", r.résultat.forceMaximale},
                                      {"max_stress_MPa", r.résultat.contrainteMaximale},
                                      {"rate_asked_MPa_s", options.vitesse},
                                      {"rate_held_MPa_s", r.résultat.vitesseTenue},
                                      {"load_s", r.résultat.durée},
                                      {"stop_after_s", r.arrêtAprès},
                                      {"rest_after_passes", r.passesAuRepos},
                                      {"causes", r.causes},
                                      {"folder", options.dossier},
                                      {"recording", nom + ".csv"},
                                      {"curves", nom + ".svg"}};
    const std::string texte =
        json.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
    std::printf("%s\n", linux_::SansSéquence(texte).c_str());
    return;
  }
  std::printf("Compression test: %s\n", fin.c_str());
  for (const std::string& cause : r.causes) {
    std::printf("  cause: %s\n", linux_::UneSeuleLigne(cause).c_str());
  }
  std::printf(
      "  maximum force    %8.2f kN\n  maximum stress   %8.2f MPa\n"
      "  rate held        %8.3f MPa/s (asked %.3f)\n  duration of load %8.1f s\n",
      r.résultat.forceMaximale, r.résultat.contrainteMaximale, r.résultat.vitesseTenue,
      options.vitesse, r.résultat.durée);
  if (r.arrêtAprès >= 0) {
    std::printf("  stop             %s after the disturbance\n", Secondes(r.arrêtAprès).c_str());
  }
  if (r.fin != Fin::Rupture && r.passesAuRepos >= 0) {
    std::printf("  outputs at rest  %s\n",
                r.passesAuRepos == 0 ? "in the same pass"
                                     : (std::to_string(r.passesAuRepos) +
                                        (r.passesAuRepos == 1 ? " pass later" : " passes later"))
                                           .c_str());
  }
  std::printf("Recording %s.csv, curves %s.svg\n", nom.c_str(), nom.c_str());
}

bool EcritLesCourbes(const std::string& nom, const std::vector<Courbe>& courbes) {
  const int erreur = FichierEnAjout(nom).Ajoute(EnSvg(courbes));
  if (erreur != 0) std::fprintf(stderr, "zuma: %s: %s\n", nom.c_str(), Raison(erreur).c_str());
  return erreur == 0;
}

}  // namespace

int Compression(const OptionsCompression& options) {
  std::filesystem::create_directories(options.dossier);
  const auto recueil = Crée<Recueil>();
  const auto machine = MachineSimulée(*recueil, Cadence::Libre);
  if (options.panne == "overrange") machine->Jumelle()->presse.Réglages().rupture = 1e6;
  // A recording of before stays: the files of each test have a number of their own.
  const std::string nom =
      PremierNomLibre(options.dossier, "compression", {".csv", ".csv.json", ".svg"});
  Enregistreur enregistreur(nom + ".csv", Enregistreur::Retard::Attend);
  Rapport rapport;
  std::vector<Courbe> courbes;
  const Interruption interruption;  // the end of the files, too, is not cut short
  {
    EssaiSimulé essai(options, *machine, recueil, enregistreur);
    rapport = essai.Tourne();
    courbes = essai.Courbes();
  }
  bool complet = FermeEtDit(enregistreur);
  complet = EcritLesCourbes(nom + ".svg", courbes) && complet;
  Imprime(options, rapport, nom);
  for (const Problème& problème : recueil->Problèmes()) {
    std::fprintf(stderr, "%s\n", Ligne(problème).c_str());
  }
  return complet && rapport.fin == Fin::Rupture && recueil->Problèmes().empty() ? kBon : kProblèmes;
}

}  // namespace zuma::host
