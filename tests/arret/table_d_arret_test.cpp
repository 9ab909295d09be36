// Every stop arrives, or is told by name: each kind of output under each unkindness.
#include "arret/table_d_arret.h"

#include <gtest/gtest.h>

#include "arret/rudesse.h"
#include "arret/sortie.h"

namespace zuma::arret {
namespace {

class ChaqueArrêt : public testing::TestWithParam<std::size_t> {};

TEST_P(ChaqueArrêt, ArriveOuEstDit) {
  const Sortie& sortie = Sorties()[GetParam()];
  for (const Hôte hôte : {Hôte::Fourni, Hôte::Nu}) {
    if (!Concerne(hôte, sortie)) continue;
    for (const Rudesse& rudesse : Rudesses()) {
      const Verdict v = Essaie(sortie, rudesse, hôte);
      EXPECT_TRUE(v.Tient()) << Nom(sortie) << " / " << Nom(rudesse)
                             << (hôte == Hôte::Nu ? " / bare host" : "") << ": " << EnLong(v);
    }
  }
}

// The program's own end, its user's or one that a failed device asks for, is a stop that nobody
// drives again behind it.
TEST_P(ChaqueArrêt, ArriveAussiÀLaFinDuProgramme) {
  const Sortie& sortie = Sorties()[GetParam()];
  if (sortie.enMarcheAvant == nullptr) return;  // not behind a link
  for (const bool exigée : {false, true}) {
    EXPECT_TRUE(FinitAuRepos(sortie, exigée)) << Nom(sortie) << exigée;
  }
}

INSTANTIATE_TEST_SUITE_P(DeLaTable, ChaqueArrêt, testing::Range<std::size_t>(0, Sorties().size()));

}  // namespace
}  // namespace zuma::arret
