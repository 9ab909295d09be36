// What the library states of the passes that a silent device holds up, against the twins.
#include "tree/retenues.h"

#include <gtest/gtest.h>

#include "outils/passes_mesurees.h"

namespace zuma::essai {
namespace {

TEST(LesRetenues, SontCellesQueLesJumeauxMesurent) {
  constexpr double kParNature = 3000;  // microseconds: conversions, and looks at the clock
  const auto mesures = MesureLesPasses();
  EXPECT_EQ(mesures.size(), DriversDeZuma().size());
  const Ref<RegistreDesDrivers> drivers = CréeLesDrivers();
  for (const PasseMesurée& mesure : mesures) {
    const std::string_view nom = drivers->DeValeur(mesure.driver).nom;
    EXPECT_LE(mesure.muette, mesure.annoncée + kParNature) << nom;
    EXPECT_GE(mesure.muette * 2, mesure.annoncée) << nom << ": stated for nothing";
  }
}

}  // namespace
}  // namespace zuma::essai
