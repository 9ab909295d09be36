// The proof of the stop as a table: kinds of output by what is done to the machine.
#include "arret/table_d_arret.h"

#include <cstdio>
#include <string>

#include "arret/rudesse.h"
#include "arret/sortie.h"
#include "bench/scenarios.h"

namespace zuma::banc {
namespace {

void Cellule(std::string_view texte) {
  std::printf(" %.*s |", static_cast<int>(texte.size()), texte.data());
}

void Explique(const arret::Sortie& sortie, const arret::Rudesse& rudesse, const char* hôte,
              const arret::Verdict& verdict) {
  std::fprintf(stderr, "%s / %s%s: %s\n", std::string(arret::Nom(sortie)).c_str(),
               std::string(arret::Nom(rudesse)).c_str(), hôte, arret::EnLong(verdict).c_str());
}

// The same by a host that calls `Chassis.DéclencheAU` once: only what fails is shown.
bool TientSousUnHôteNu() {
  bool tient = true;
  for (const arret::Sortie& sortie : arret::Sorties()) {
    if (!arret::Concerne(arret::Hôte::Nu, sortie)) continue;
    for (const arret::Rudesse& rudesse : arret::Rudesses()) {
      const arret::Verdict verdict = arret::Essaie(sortie, rudesse, arret::Hôte::Nu);
      if (verdict.Tient()) continue;
      tient = false;
      Explique(sortie, rudesse, " / bare host", verdict);
    }
  }
  return tient;
}

}  // namespace

bool ImprimeLaTableDArrêt() {
  bool tient = true;
  std::printf("|");
  Cellule("Output");
  for (const arret::Rudesse& rudesse : arret::Rudesses()) Cellule(arret::Nom(rudesse));
  std::printf("\n|---|");
  for (std::size_t n = 0; n < arret::Rudesses().size(); ++n) std::printf("---|");
  std::printf("\n");
  for (const arret::Sortie& sortie : arret::Sorties()) {
    std::printf("|");
    Cellule(arret::Nom(sortie));
    for (const arret::Rudesse& rudesse : arret::Rudesses()) {
      const arret::Verdict verdict = arret::Essaie(sortie, rudesse);
      tient = tient && verdict.Tient();
      Cellule(arret::EnBref(verdict));
      if (!verdict.Tient()) Explique(sortie, rudesse, "", verdict);
      std::fflush(stdout);
    }
    std::printf("\n");
  }
  return TientSousUnHôteNu() && tient;
}

}  // namespace zuma::banc
