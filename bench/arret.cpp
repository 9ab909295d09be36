// How long a stop takes on the simulated clock, with the boards' settling delays in it and the
// processor's own time left out.
#include <algorithm>
#include <cstdio>
#include <functional>
#include <iterator>
#include <limits>
#include <optional>

#include "bench/scenarios.h"

namespace zuma::banc {
namespace {

constexpr double kTic = 1000;  // microseconds from the start of a pass to the next, at least
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
  PortsObservés(PortsES& bus, std::function<void()> regarde)
      : bus_(bus), regarde_(std::move(regarde)) {}
  std::uint8_t Inp(std::uint16_t port) override { return bus_.Inp(port); }
  std::uint16_t Inpw(std::uint16_t port) override { return bus_.Inpw(port); }
  std::uint32_t Inpd(std::uint16_t port) override { return bus_.Inpd(port); }
  void Outp(std::uint16_t port, std::uint8_t octet) override { bus_.Outp(port, octet), regarde_(); }
  void Outpw(std::uint16_t port, std::uint16_t mot) override { bus_.Outpw(port, mot), regarde_(); }
  void Outpd(std::uint16_t port, std::uint32_t mot) override { bus_.Outpd(port, mot), regarde_(); }

 private:
  PortsES& bus_;
  std::function<void()> regarde_;
};

// Five analog boards, whose conversions a stop waits for, and behind them a board of door contacts
// and logic outputs, commands, and the sensor with a limit.
Lignes Armoire() {
  Lignes lignes = HuitCartes(kFréquenceEA, kFréquenceEL);
  lignes.Carte("DrvPET48DIO");
  const std::int32_t porte = lignes.Bloc(kEL, "DrvPET48DIO_TB24P", 8, true);
  const std::int32_t sortie = lignes.Bloc(kSL, "DrvPET48DIO_TB24R", 8, true);
  lignes.Carte();
  const std::int32_t consigne = lignes.Bloc(kSA, "DrvACL6128", 8, false);
  lignes.Carte();
  const std::int32_t force = lignes.Bloc(kEA, kScan, 1, true);
  lignes.Objet(kEL, {Entier("Canal", porte), Texte("Niveau d'Arrêt d'Urgence", "Activé")});
  for (std::int32_t n = 0; n < 8; ++n) {
    lignes.Objet(kSL, {Entier("Canal", sortie + n)});
    lignes.Objet("Commande", {Entier("Canal", consigne + n)});
  }
  lignes.Objet("Capteur", {Entier("Canal", force),
                           Réel("Temps d'Intégration du Canal", 0),
                           Réel("Sécurité Maximale en Unité", 50),
                           {"Arrêt en Cas de Dépassement des sécurités", Valeur(true)}});
  return lignes;
}

struct Durée {
  double passes;
  double microsecondes;
};

/// A frame whose outputs are watched.
class BancDArrêt : private Banc {
 public:
  BancDArrêt() : Banc(Armoire()) {
    LaMachine().services.ports = &ports_;
    Fixe(false, false);
    LeChassis().DéclencheAU();
    repos_ = Sorties();
    for (const CommandeRef& commande : *LeChassis().Commandes()) commande->Enabled(true);
  }
  using Banc::Plaintes;

  /// One crossing, `essai` passes after the machine was set going. None when it did not stop, or
  /// stopped before.
  std::optional<Durée> Arrête(bool parLaForce, int essai) {
    Fixe(false, false);
    (void)LaSécurité().Acquitte();
    for (const CommandeRef& c : *LeChassis().Commandes()) c->ValeurCouranteEnUnité(50);
    for (const SortieLogiqueRef& s : *LeChassis().SortiesLogiques()) {
      s->ValeurCourante(ENUM_ETAT_LOGIQUE::Actif);
    }
    heureDuRepos_.reset();
    for (int n = 0; n < kPassesDAttente + essai; ++n) Passe();
    if (heureDuRepos_) return {};
    // Anywhere between two passes.
    LaMachine().horloge->Avance(Attente() * (essai % 10) / 10);
    const double départ = Maintenant();
    Fixe(parLaForce, !parLaForce);
    for (int passe = 1; passe <= kPassesAuPlus; ++passe) {
      Passe();
      if (heureDuRepos_) return Durée{static_cast<double>(passe), *heureDuRepos_ - départ};
    }
    return {};
  }

 private:
  [[nodiscard]] double Attente() const { return std::max(prochain_ - Maintenant(), 0.0); }
  void Passe() {
    LaMachine().horloge->Avance(Attente());
    prochain_ = Maintenant() + kTic;
    LeChassis().MetàJour();
  }

  void Fixe(bool horsLimite, bool ouverte) {
    for (sim::Bornes* bornes : LesBornes()) {
      bornes->entréesAnalogiques.fill(kSousLaLimite);
      bornes->entréesLogiques = ouverte ? 0xFFFFFFFFU : 0;
    }
    if (horsLimite) LesBornes().back()->entréesAnalogiques[0] = kHorsLimite;
  }

  [[nodiscard]] std::vector<double> Sorties() const {
    std::vector<double> terminaux;
    for (const sim::Bornes* bornes : LesBornes()) {
      std::ranges::copy(bornes->sortiesAnalogiques, std::back_inserter(terminaux));
      terminaux.push_back(bornes->sortiesLogiques);
    }
    return terminaux;
  }
  void Regarde() {
    if (!heureDuRepos_ && Sorties() == repos_) heureDuRepos_ = Maintenant();
  }

  PortsObservés ports_{LaMachine().ports.Bus(), [this] { Regarde(); }};
  std::vector<double> repos_;
  std::optional<double> heureDuRepos_;
  double prochain_ = 0;
};

struct Etendue {
  double mini = std::numeric_limits<double>::max();
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
      std::fprintf(stderr, "%s: no stop at crossing %d. %s\n", cause, essai,
                   banc.Plaintes().c_str());
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
      "Stop: from the limit crossed to the last output at rest, a pass every %.0f us, %d "
      "crossings.\n"
      "Simulated clock: rates and settling delays count, the processor does not.\n"
      "Boards are written in their order, here behind five analog boards that a stop reads too.\n\n"
      "%-34s %18s   %25s\n%-34s %5s %6s %5s   %7s %8s %8s\n",
      kTic, kEssais, "", "passes", "microseconds", "cause", "min", "mean", "max", "min", "mean",
      "max");
  const bool force = Imprime("sensor limit, no filter (200 Hz)", true);
  const bool porte = Imprime("guard door, no debounce (20 Hz)", false);
  return force && porte;
}

}  // namespace zuma::banc
