// The texts that select a driver at each level. The demo frames name every driver of the table:
// here what they must not be taken for.
#include "tree/driver_table.h"

#include <algorithm>
#include <functional>

#include <gtest/gtest.h>

#include "outils/arbre.h"

namespace zuma {
namespace {

TEST(TableDesDriversTest, ReconnaîtUnTexteASonNiveauEtALaLettre) {
  const struct {
    const char* texte;
    int carte, bloc, canal;
  } cas[] = {
      {"DrvModBus", 300, 300, 0},
      {"Drv_UMV4301_Modbus", 3001, 3001, 0},
      {"Variateur LS Modbus et soft K9", 3002, 3002, 0},
      {"DrvPCI 6208 V", 1002, 0, 0},
      {"DrvWDT01", 0, 40, 0},
      {"DrvPCL813_PCLD881", 0, 20, 0},
      {"DrvA826PG_DB16P", 0, 4, 0},
      {"Règle MTS Multimagnet", 0, 0, 220},
      {"drvmodbus", 0, 0, 0},
      {"DrvModBus ", 0, 0, 0},
      {"DrvAucun", 0, 0, 0},
      {"", 0, 0, 0},
  };
  for (const auto& c : cas) {
    EXPECT_EQ(static_cast<int>(DriverDeCarte(c.texte)), c.carte) << c.texte;
    EXPECT_EQ(static_cast<int>(DriverDeFonction(c.texte)), c.bloc) << c.texte;
    EXPECT_EQ(static_cast<int>(DriverDeCanal(c.texte)), c.canal) << c.texte;
  }
  const auto table = TableDesDrivers();
  EXPECT_EQ(std::ranges::adjacent_find(table, std::greater_equal{}, &LigneDriver::valeur),
            table.end());
  EXPECT_EQ(DriverDeCarte(300), ENUM_DRIVER::DrvAucun);
  EXPECT_EQ(DriverDeCarte(Nul{}), ENUM_DRIVER::DrvAucun);
}

}  // namespace
}  // namespace zuma
