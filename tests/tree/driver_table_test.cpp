// The texts that select a driver at each level, and what a driver says that is not built yet.
#include "tree/driver_table.h"

#include <algorithm>

#include <gtest/gtest.h>

#include "outils/arbre.h"

namespace zuma {
namespace {

using essai::Texte;

struct Sélection {
  const char* texte;
  int valeur;
};

constexpr Sélection kCartes[] = {{"DrvPCI7841-2", 26},
                                 {"DrvPCI7841", 25},
                                 {"DrvPET48DIO", 1000},
                                 {"Extensometre EIR LASER", 3004},
                                 {"UTS-0107", 3005},
                                 {"Balance GRAM", 3006},
                                 {"DrvModBus", 300},
                                 {"Variateur LS Modbus et soft K9", 3002},
                                 {"Thumler", 3003},
                                 {"Drv_UMV4301_Modbus", 3001},
                                 {"Drv RS 232", 302},
                                 {"DrvPCI9111HR", 1001},
                                 {"DrvPCI 6208 V", 1002},
                                 {"Drv SOLARTRON LVDT", 301},
                                 {"Conditionneur numerique K9", 3010},
                                 {"Conditionneur numerique K9 V1.00", 3011},
                                 {"Spider V1", 3009}};

constexpr Sélection kBlocs[] = {{"DrvModBus", 300},
                                {"DrvPCL731_PCLD782B", 1},
                                {"DrvPET48DIO_TB24P", 2},
                                {"DrvACL8316_ACLD9182", 3},
                                {"DrvACL6126_ACLD9182", 5},
                                {"DrvA826PG_DB16P", 4},
                                {"DrvPET48DIO_PCLD782B", 6},
                                {"DrvPCI9111HR/Vorlanex EL", 7},
                                {"DrvPCL731_PCLD7225", 10},
                                {"DrvPET48DIO_TB24R", 11},
                                {"DrvACL8316_ACLD9185", 12},
                                {"DrvACL6126_ACLD9185", 14},
                                {"DrvA826PG_DB16R", 13},
                                {"DrvPET48DIO_PCLD7225", 15},
                                {"DrvPCI9111HR/Vorlanex SL", 16},
                                {"DrvPCL813_PCLD881", 20},
                                {"DrvACL8113", 21},
                                {"DrvACL8316_ACLD8125", 22},
                                {"Drv_UMV4301_Modbus", 3001},
                                {"DrvA826PG_DB8225", 24},
                                {"DrvIK121", 23},
                                {"DrvPCI7841", 25},
                                {"DrvPCI7841-2", 26},
                                {"DrvPCI9111HR/Vorlanex EA", 27},
                                {"Drv RS232 - SPIDER", 30204},
                                {"DrvPCL728", 30},
                                {"DrvACL6128", 31},
                                {"DrvA826PG", 33},
                                {"DrvACL8316", 32},
                                {"DrvACL6126", 34},
                                {"DrvPCI9111HR/Vorlanex SA", 35},
                                {"DrvPCI6208V/Vorlanex SA", 36},
                                {"DrvWDT01", 40},
                                {"Drv SOLARTRON LVDT", 301},
                                {"Drv RS 232", 302},
                                {"Drv METRO RS232", 30205},
                                {"Drv METRO RS232 MUX 2/4/8", 30206},
                                {"Variateur LS Modbus et soft K9", 3002}};

constexpr Sélection kCanaux[] = {{"Règle MTS 3 aimants (lecture 2-1)", 211},
                                 {"Règle MTS 3 aimants (lecture 3)", 210},
                                 {"Règle MTS 1 aimant", 200},
                                 {"Règle MTS Multimagnet", 220},
                                 {"RS232 - Balance LRPC 31", 30201},
                                 {"RS232 - Indicateur DEXAL", 30202},
                                 {"RS232 - Balance JADEVER", 30203}};

TEST(TableDesDriversTest, ReconnaîtChaqueTexteEtNulAutre) {
  const struct {
    std::span<const Sélection> textes;
    ENUM_DRIVER (*cherche)(const Valeur&) noexcept;
    std::string_view LigneDriver::* colonne;
  } niveaux[] = {{kCartes, &DriverDeCarte, &LigneDriver::texteCarte},
                 {kBlocs, &DriverDeFonction, &LigneDriver::texteFonction},
                 {kCanaux, &DriverDeCanal, &LigneDriver::texteCanal}};
  for (const auto& niveau : niveaux) {
    for (const auto& [texte, valeur] : niveau.textes) {
      EXPECT_EQ(static_cast<int>(niveau.cherche(Texte(texte))), valeur) << texte;
    }
    const auto nommés = std::ranges::count_if(TableDesDrivers(), [&](const LigneDriver& ligne) {
      return !(ligne.*niveau.colonne).empty();
    });
    EXPECT_EQ(static_cast<std::size_t>(nommés), niveau.textes.size());
    for (const Valeur& autre : {Texte(""), Texte("drvmodbus"), Texte("DrvModBus "), Valeur(300),
                                Valeur(Nul{}), Texte("DrvAucun")}) {
      EXPECT_EQ(niveau.cherche(autre), ENUM_DRIVER::DrvAucun);
    }
  }
}

}  // namespace
}  // namespace zuma
