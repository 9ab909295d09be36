// A library of drivers that the program loads: served like one of its own, or refused whole.
#include <cmath>

#include <gtest/gtest.h>

#include "outils/cas.h"
#include "outils/programme.h"

namespace zuma {
namespace {

using essai::Cas;
using nlohmann::json;
using testing::IsSubstring;

std::string Option(const std::string& nom) {
  return " --driver '" ZUMA_MODULES "/lib" + nom + ".so'";
}

class UnDriverExterne : public essai::LeProgramme {
 protected:
  const std::string base = Base(essai::Lit(ZUMA_EXEMPLES "/driver/chassis.sql")) + " --frame 50";
  const std::string avec = base + Option("ma_carte");
};

TEST_F(UnDriverExterne, SertSousLesVerbesEtLesPannesCommeUnDesNôtres) {
  EXPECT_PRED_FORMAT2(IsSubstring, "found \"DrvMC8\"", Lance("check " + base).sortie);
  EXPECT_EQ(Lance("check " + avec).sortie,
            "Frame 50: 1 boards, 1 blocks, 2 channels, 1 sensors, 0 commands, 0 logic inputs, 0 "
            "logic outputs: no problem\n");
  EXPECT_PRED_FORMAT2(IsSubstring, "Driver de la fonction :        MC 8\n",
                      Lance("dump --sim " + avec).sortie);
  for (const char* panne : {"hang", "dead"}) {
    SCOPED_TRACE(panne);
    const auto vues = Lance("run " + avec + " --sim --fast --seconds 3 --json --fault " +
                            std::string(panne) + ":0x340@1.2")
                          .Vues();
    ASSERT_EQ(vues.size(), 6U);
    for (const json& vue : vues) {
      const bool enPanne = vue["time_s"] > 1.2;
      for (const json& canal : vue["channels"]) {
        constexpr double kUnCode = 65536 / 4096.0;
        const double volts = std::stod(canal["terminal"].get<std::string>());
        const double écart = std::fabs(canal["points"].get<double>() - volts * 6553.6);
        EXPECT_EQ(écart > kUnCode, enPanne) << canal;
      }
      EXPECT_EQ(vue["sensors"][0]["old"], vue["time_s"] > 2.3);
    }
  }
}

TEST_F(UnDriverExterne, EstRefuséEntierAvecCeQuIlYAÀFaire) {
  const std::string texte = dossier.Fichier("texte.so");
  std::ofstream(texte) << "no library\n";
  for (const auto& [options, erreur] : Cas<std::string, std::string>{
           {" --driver absent.so", "--driver absent.so: there is no such file; give the path"},
           {" --driver " + texte, "texte.so cannot be loaded: "},
           {Option("driver_symbole_absent"), "zuma_nulle_part. Build it as a module against this"},
           {Option("driver_sans_symbole"), "no symbol zuma_drivers in this library: it holds no"},
           {Option("driver_version"), "made for version 1 of the driver interface, this program"},
           {Option("driver_valeur"), "driver 'DrvEssai': value 300 belongs to 'DrvModBus'. Give "},
           {Option("driver_texte"), "text \"DrvModBus\" of column \"Driver\" belongs to 'DrvModBu"},
           {Option("ma_carte"), "driver 'DrvMC8': value 10001 belongs to 'DrvMC8'. Give each"}}) {
    for (const char* verbe : {"check ", "run --sim --seconds 1 ", "dump --sim "}) {
      const essai::Fin fin = Lance(verbe + avec + options);
      EXPECT_EQ(fin.code, 2) << verbe << options;
      EXPECT_EQ(fin.sortie, "");
      EXPECT_PRED_FORMAT2(IsSubstring, erreur, fin.erreur);
    }
  }
}

}  // namespace
}  // namespace zuma
