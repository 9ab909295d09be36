// zuma_bench                      times every scenario (options of Google Benchmark)
// zuma_bench --list               names and texts of the scenarios, between tabs
// zuma_bench --turns N SCENARIO   N turns after the warm-up, for a profiler
// zuma_bench --stop               how long a stop takes
// zuma_bench --passes             how long each driver holds a pass
// zuma_bench --publication        what others who look at the frame cost a pass
// zuma_bench --stop-table         whether every stop arrives, whatever is done to the machine
#include <algorithm>
#include <charconv>
#include <cstdio>
#include <string>

#include <benchmark/benchmark.h>

#include "bench/scenarios.h"
#include "outils/allocations.h"

namespace zuma::banc {
namespace {

// Rooms that are kept from one pass to the next are taken by then.
constexpr int kToursDeChauffe = 20;

int Mauvais(const std::string& texte) {
  std::fprintf(stderr, "%s\n", texte.c_str());
  return 2;
}

// Not through `FaitUnTour`: these turns are not counted.
void Chauffe(Mesure& mesure, int tours) {
  for (int tour = 0; tour < tours; ++tour) {
    mesure.Avant();
    mesure.Tour();
  }
}

void Chronomètre(benchmark::State& état, const Scénario& scénario) {
  const auto mesure = scénario.prépare();
  Chauffe(*mesure, kToursDeChauffe);
  std::int64_t allocations = 0;
  double simulé = 0;
  const auto deLaBibliothèque = [&] {
    return essai::Allocations() - mesure->allocationsDesJumeaux;
  };
  for (auto _ : état) {
    mesure->Avant();
    const std::int64_t avant = deLaBibliothèque();
    const double départ = mesure->banc.Maintenant();
    FaitUnTour(*mesure);
    simulé += mesure->banc.Maintenant() - départ;
    allocations += deLaBibliothèque() - avant;
  }
  const std::string plaintes = mesure->banc.Plaintes();
  if (!plaintes.empty()) état.SkipWithError(plaintes.c_str());
  const auto moyenne = benchmark::Counter::kAvgIterations;
  état.counters["allocations"] = {static_cast<double>(allocations), moyenne};
  état.counters["simulated_us"] = {simulé, moyenne};
}

int Liste() {
  for (const Scénario& s : Scénarios()) {
    std::printf("%.*s\t%.*s\n", static_cast<int>(s.nom.size()), s.nom.data(),
                static_cast<int>(s.texte.size()), s.texte.data());
  }
  return 0;
}

int Tourne(std::string_view nombre, std::string_view nom) {
  int tours = 0;
  const auto lu = std::from_chars(nombre.data(), nombre.data() + nombre.size(), tours);
  if (lu.ptr != nombre.data() + nombre.size() || tours < 1) return Mauvais("bad number of turns");
  for (const Scénario& scénario : Scénarios()) {
    if (scénario.nom != nom) continue;
    const auto mesure = scénario.prépare();
    Chauffe(*mesure, std::min(tours, kToursDeChauffe));
    for (int tour = 0; tour < tours; ++tour) {
      mesure->Avant();
      FaitUnTour(*mesure);
    }
    const std::string plaintes = mesure->banc.Plaintes();
    return plaintes.empty() ? 0 : Mauvais(plaintes);
  }
  return Mauvais("no such scenario");
}

int Lance(int argc, char** argv) {
  const std::string_view verbe = argc > 1 ? argv[1] : "";
  if (verbe == "--list") return Liste();
  if (verbe == "--stop") return RapportDArrêt() ? 0 : 1;
  if (verbe == "--publication") return RapportDePublication() ? 0 : 1;
  if (verbe == "--passes") {
    RapportDesPasses();
    return 0;
  }
  if (verbe == "--stop-table") return ImprimeLaTableDArrêt() ? 0 : 1;
  if (verbe == "--turns") {
    return argc == 4 ? Tourne(argv[2], argv[3]) : Mauvais("--turns N SCENARIO");
  }
  for (const Scénario& s : Scénarios()) {
    benchmark::RegisterBenchmark(std::string(s.nom).c_str(), [&s](benchmark::State& état) {
      Chronomètre(état, s);
    })->Unit(benchmark::kMicrosecond);
  }
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}

}  // namespace
}  // namespace zuma::banc

int main(int argc, char** argv) {
  return zuma::banc::Lance(argc, argv);
}
