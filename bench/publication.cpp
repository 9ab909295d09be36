// What the publication costs a pass, and what readers at full speed cost it.
#include "publication/publication.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <memory>
#include <pthread.h>
#include <sched.h>
#include <thread>

#include "bench/scenarios.h"

namespace zuma::banc {
namespace {

using Horloge = std::chrono::steady_clock;

constexpr int kLecteurs = 16;
constexpr int kPasses = 20'000;
constexpr int kPaires = 5;
constexpr double kPas = 1000;     // microseconds of the machine from one pass to the next
constexpr double kPlafond = 0.5;  // microseconds a pass
constexpr double kPart = 0.05;    // of p99 that readers may add

double Microsecondes(Horloge::duration durée) {
  return std::chrono::duration<double, std::micro>(durée).count();
}

std::unique_ptr<Mesure> LeBanc() {
  const auto scénarios = Scénarios();
  const auto normal = std::ranges::find(scénarios, "normal", &Scénario::nom);
  return normal->prépare();
}

// A host that moves a machine runs before everything else, where it may.
bool PasseDevant() {
  sched_param priorité{};
  priorité.sched_priority = 10;
  return ::pthread_setschedparam(::pthread_self(), SCHED_FIFO, &priorité) == 0;
}
void PasseAvecLesAutres() {
  const sched_param priorité{};
  (void)::pthread_setschedparam(::pthread_self(), SCHED_OTHER, &priorité);
}

/// Readers that read the last sample again and again.
class Lecteurs {
 public:
  Lecteurs(const publication::Publication& publication, int nombre) {
    for (int i = 0; i < nombre; ++i) {
      fils_.emplace_back([this, lecteur = publication.LeLecteur()] {
        publication::Echantillon échantillon;
        while (!fin_) lus_ += lecteur.LitLeDernier(échantillon) ? 1 : 0;
      });
    }
  }
  ~Lecteurs() {
    fin_ = true;
    for (std::thread& fil : fils_) fil.join();
  }
  Lecteurs(const Lecteurs&) = delete;
  Lecteurs& operator=(const Lecteurs&) = delete;
  [[nodiscard]] std::uint64_t Lus() const { return lus_; }

 private:
  std::atomic<bool> fin_ = false;
  std::atomic<std::uint64_t> lus_ = 0;
  std::vector<std::thread> fils_;
};

// What a look at the clock takes, which is in each figure.
double TempsDeLHorloge() {
  constexpr int kRegards = 1001;
  std::vector<double> durées;
  for (int i = 0; i < kRegards; ++i) {
    const auto avant = Horloge::now();
    durées.push_back(Microsecondes(Horloge::now() - avant));
  }
  std::ranges::nth_element(durées, durées.begin() + kRegards / 2);
  return durées[kRegards / 2];
}

struct Relevé {
  double p99 = 0;       ///< of passes with their publication, microseconds
  double parPasse = 0;  ///< of the publication alone, median of the passes that take a sample
  std::uint64_t lus = 0;
};

Relevé Relève(Mesure& mesure, publication::Publication& publication, int lecteurs) {
  std::vector<double> passes, échantillons;
  passes.reserve(kPasses);
  échantillons.reserve(kPasses);
  const Lecteurs lit(publication, lecteurs);
  for (int i = 0; i < kPasses; ++i) {
    mesure.banc.LaMachine().horloge->Avance(kPas);
    const std::uint64_t avant = mesure.banc.LeChassis().RafraichissementsEA();
    const auto départ = Horloge::now();
    mesure.banc.LeChassis().MetàJour();
    const auto milieu = Horloge::now();
    publication.Publie();
    const auto fin = Horloge::now();
    passes.push_back(Microsecondes(fin - départ));
    if (mesure.banc.LeChassis().RafraichissementsEA() != avant) {
      échantillons.push_back(Microsecondes(fin - milieu));
    }
  }
  const auto centile = [](std::vector<double>& valeurs, double part) {
    const auto rang = static_cast<std::ptrdiff_t>(part * static_cast<double>(valeurs.size() - 1));
    std::ranges::nth_element(valeurs, valeurs.begin() + rang);
    return valeurs[static_cast<std::size_t>(rang)];
  };
  return {centile(passes, 0.99), centile(échantillons, 0.5) - TempsDeLHorloge(), lit.Lus()};
}

}  // namespace

bool RapportDePublication() {
  const auto mesure = LeBanc();
  Chassis& chassis = mesure->banc.LeChassis();
  // Where a host publishes: on a disk the first write to each page would wait for it.
  publication::Place place({"zuma-bench", 1, true}, publication::DossierDesPublications());
  publication::Publication publication(chassis, place, {});
  publication.Suit(mesure->banc.LaSécurité());
  const bool devant = PasseDevant();
  std::vector<double> rapports;
  std::printf("readers   p99 of a pass, us   publication, us   reads\n");
  double coût = 0;
  for (int paire = 0; paire < kPaires; ++paire) {
    const Relevé seul = Relève(*mesure, publication, 0);
    const Relevé lu = Relève(*mesure, publication, kLecteurs);
    for (const auto& [nombre, relevé] : {std::pair(0, seul), std::pair(kLecteurs, lu)}) {
      std::printf("%7d   %17.2f   %15.3f   %5llu\n", nombre, relevé.p99, relevé.parPasse,
                  static_cast<unsigned long long>(relevé.lus));
    }
    rapports.push_back(lu.p99 / seul.p99);
    coût = std::max(coût, seul.parPasse);
  }
  PasseAvecLesAutres();
  std::ranges::sort(rapports);
  const double médiane = rapports[rapports.size() / 2];
  std::printf(
      "%d sensors, rate %.0f Hz, a pass each ms, %s priority: at most %.3f us a pass (%.1f "
      "wanted); "
      "p99 with %d readers %.3f of that without, median of %d pairs (%.2f wanted)\n",
      chassis.Capteurs()->Count(), chassis.FréquenceEA(), devant ? "real-time" : "plain", coût,
      kPlafond, kLecteurs, médiane, kPaires, 1 + kPart);
  return coût <= kPlafond && médiane <= 1 + kPart;
}

}  // namespace zuma::banc
