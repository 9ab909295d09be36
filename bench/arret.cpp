// How long a stop takes on the simulated clock, with the boards' settling delays in it and the
// processor's own time left out.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <functional>
#include <iterator>
#include <optional>

#include "bench/banc.h"
#include "bench/scenarios.h"

namespace zuma::banc {
namespace {

constexpr double kTic = 1000;  // microseconds between the passes of the host
constexpr double kFréquenceEA = 200;
constexpr double kFréquenceEL = 20;
constexpr int kEssais = 100;
constexpr int kPassesDAttente = 60;  // both rates come round
constexpr int kPassesAuPlus = 200;
constexpr double kSousLaLimite = 2;  // volts
constexpr double kHorsLimite = 9;

/// The bus, with a look at the outputs after each write.
class PortsObservés : public PortsES {
 public:
  using Regard = std::function<void()>;
  PortsObservés(PortsES& bus, Regard regard) : bus_(bus), regard_(std::move(regard)) {}

  std::uint8_t Inp(std::uint16_t port) override { return bus_.Inp(port); }
  std::uint16_t Inpw(std::uint16_t port) override { return bus_.Inpw(port); }
  std::uint32_t Inpd(std::uint16_t port) override { return bus_.Inpd(port); }
  void Outp(std::uint16_t port, std::uint8_t octet) override {
    bus_.Outp(port, octet);
    regard_();
  }
  void Outpw(std::uint16_t port, std::uint16_t mot) override {
    bus_.Outpw(port, mot);
    regard_();
  }
  void Outpd(std::uint16_t port, std::uint32_t mot) override {
    bus_.Outpd(port, mot);
    regard_();
  }

 private:
  PortsES& bus_;
  Regard regard_;
};

// Five analog boards, whose conversions a stop has to wait for, and behind them a board of door
// contacts, eight commands and eight logic outputs.
Lignes ArmoireDArrêt() {
  Lignes a = HuitCartes(kFréquenceEA, kFréquenceEL);
  a.Carte("DrvPET48DIO");
  const std::int32_t porte = a.Bloc(kEL, "DrvPET48DIO_TB24P", 8, true);
  const std::int32_t sortie = a.Bloc(kSL, "DrvPET48DIO_TB24R", 8, true);
  a.EntréeLogique(porte, {Texte("Niveau d'Arrêt d'Urgence", "Activé")});
  for (std::int32_t n = 0; n < 8; ++n) a.SortieLogique(sortie + n);
  a.Carte();
  const std::int32_t consigne = a.Bloc(kSA, "DrvACL6128", 8, false);
  for (std::int32_t n = 0; n < 8; ++n) a.Commande("Normale", consigne + n);
  a.Carte();
  const std::int32_t force = a.Bloc(kEA, kScan, 1, true);
  a.CapteurNormal(force, {Réel("Temps d'Intégration du Canal", 0),
                          Réel("Sécurité Maximale en Unité", 50),
                          {"Arrêt en Cas de Dépassement des sécurités", Valeur(true)}});
  return a;
}

struct Durée {
  double passes;
  double microsecondes;
};

/// A frame whose outputs are watched.
class BancDArrêt {
 public:
  BancDArrêt() {
    banc_.LaMachine().services.ports = &ports_;
    Fixe(false, false);
    banc_.LeChassis().DéclencheAU();
    repos_ = Sorties();
    for (const CommandeRef& commande : *banc_.LeChassis().Commandes()) commande->Enabled(true);
  }

  /// One crossing, `essai` passes after the machine was set going. None when it did not stop.
  std::optional<Durée> Arrête(bool parLaForce, int essai) {
    Fixe(false, false);
    banc_.LaSécurité().Acquitte();
    MetEnMarche();
    for (int n = 0; n < kPassesDAttente + essai; ++n) Passe();
    if (AuRepos()) return {};
    // Anywhere between two passes.
    Horloge().Avance((prochain_ - Horloge().Maintenant()) * (essai % 10) / 10);
    const double départ = Horloge().Maintenant();
    heureDuRepos_.reset();
    Fixe(parLaForce, !parLaForce);
    for (int passe = 1; passe <= kPassesAuPlus; ++passe) {
      Passe();
      if (heureDuRepos_) return Durée{static_cast<double>(passe), *heureDuRepos_ - départ};
    }
    return {};
  }
  [[nodiscard]] std::string Plaintes() const { return banc_.Plaintes(); }

 private:
  using Terminaux = std::vector<double>;

  sim::HorlogeVirtuelle& Horloge() { return *banc_.LaMachine().horloge; }

  void Passe() {
    const double attente = prochain_ - Horloge().Maintenant();
    if (attente > 0) Horloge().Avance(attente);
    prochain_ = Horloge().Maintenant() + kTic;
    banc_.LeChassis().MetàJour();
  }

  void MetEnMarche() {
    for (const CommandeRef& c : *banc_.LeChassis().Commandes()) c->ValeurCouranteEnUnité(50);
    for (const SortieLogiqueRef& s : *banc_.LeChassis().SortiesLogiques()) {
      s->ValeurCourante(ENUM_ETAT_LOGIQUE::Actif);
    }
  }

  void Fixe(bool horsLimite, bool ouverte) {
    for (sim::Bornes* bornes : banc_.LesBornes()) {
      bornes->entréesAnalogiques.fill(kSousLaLimite);
      bornes->entréesLogiques = ouverte ? 0xFFFFFFFFU : 0;
    }
    if (!horsLimite) return;
    const CapteurRef force = *banc_.LeChassis().Capteurs()->begin();
    banc_.LaMachine().ports.BornesDe(*force->Canal())->entréesAnalogiques[0] = kHorsLimite;
  }

  [[nodiscard]] Terminaux Sorties() const {
    Terminaux terminaux;
    for (const sim::Bornes* bornes : banc_.LesBornes()) {
      std::ranges::copy(bornes->sortiesAnalogiques, std::back_inserter(terminaux));
      terminaux.push_back(bornes->sortiesLogiques);
    }
    return terminaux;
  }
  [[nodiscard]] bool AuRepos() const { return Sorties() == repos_; }
  void Regarde() {
    if (!heureDuRepos_ && AuRepos()) heureDuRepos_ = Horloge().Maintenant();
  }

  Base base_{ArmoireDArrêt()};
  Banc banc_{base_};
  PortsObservés ports_{banc_.LaMachine().ports.Bus(), [this] { Regarde(); }};
  Terminaux repos_;
  std::optional<double> heureDuRepos_;
  double prochain_ = 0;
};

struct Etendue {
  double mini = INFINITY;
  double somme = 0;
  double maxi = 0;
  void Ajoute(double x) {
    mini = std::min(mini, x);
    somme += x;
    maxi = std::max(maxi, x);
  }
};

bool Imprime(const char* cause, bool parLaForce) {
  BancDArrêt banc;
  Etendue passes;
  Etendue temps;
  for (int essai = 0; essai < kEssais; ++essai) {
    const auto durée = banc.Arrête(parLaForce, essai);
    if (!durée || !banc.Plaintes().empty()) {
      std::fprintf(stderr, "%s: outputs not at rest. %s\n", cause, banc.Plaintes().c_str());
      return false;
    }
    passes.Ajoute(durée->passes);
    temps.Ajoute(durée->microsecondes);
  }
  std::printf("%-34s %5.0f %6.1f %5.0f   %7.0f %8.0f %8.0f\n", cause, passes.mini,
              passes.somme / kEssais, passes.maxi, temps.mini, temps.somme / kEssais, temps.maxi);
  return true;
}

}  // namespace

bool RapportDArrêt() {
  std::printf(
      "Stop: from the limit crossed to the last output at rest, host pass every %.0f us,\n"
      "%d crossings. Simulated clock: rates and settling delays count, the processor does not.\n"
      "Boards are written in their order, here behind five analog boards that a stop reads "
      "too.\n\n",
      kTic, kEssais);
  std::printf("%-34s %18s   %25s\n", "", "passes", "microseconds");
  std::printf("%-34s %5s %6s %5s   %7s %8s %8s\n", "cause", "min", "mean", "max", "min", "mean",
              "max");
  const bool force = Imprime("sensor limit, no filter (200 Hz)", true);
  const bool porte = Imprime("guard door, no debounce (20 Hz)", false);
  return force && porte;
}

}  // namespace zuma::banc
