// Recordings as they come back from the world: cut short, with names that meet.
#include "host/enregistrement_lu.h"

#include <fstream>

#include <gtest/gtest.h>

#include "host/configuration.h"
#include "outils/cas.h"
#include "outils/dossier_provisoire.h"

namespace zuma {
namespace {

class UnEnregistrementLu : public testing::Test {
 protected:
  host::EnregistrementLu Lit(const std::string& csv, const std::string& capteurs = "[]") {
    const std::string nom = dossier.Fichier("essai.csv");
    std::ofstream(nom, std::ios::binary) << csv;
    std::ofstream(nom + ".json") << R"({"linked_at_us": 5, "sensors": )" << capteurs << "}";
    return host::LitLEnregistrement(nom);
  }

  essai::DossierProvisoire dossier;
};

// Half a number is a number, too: only the end of the line shows that a row is whole.
TEST_F(UnEnregistrementLu, PerdLaRangéeCoupéeEtGardeCellesDAvant) {
  const std::string bonnes = "time [s],a\n0,1\n1,-0.000152\n";
  for (const auto& [fin, coupé] : essai::Cas<std::string, bool>{
           {"", false}, {"2,12.3", true}, {"2", true}, {"2,", true}, {"2\n", true}}) {
    const auto lu = Lit(bonnes + fin);
    EXPECT_EQ(lu.secondes.size(), 2U) << fin;
    EXPECT_EQ(lu.colonnes[0].valeurs.size(), 2U) << fin;
    EXPECT_EQ(lu.coupé, coupé) << fin;
  }
  // Half a row that a failing disk kept, and the line that counts it.
  const auto lu = Lit(bonnes + "2,3,\n# 2 rows lost from 2.0 s to 3.0 s,\n4,5\n");
  EXPECT_EQ(lu.secondes.size(), 3U);
  EXPECT_EQ(lu.lacunes.size(), 1U);
  EXPECT_FALSE(lu.coupé);
  EXPECT_THROW(Lit(bonnes + "2\n3,4\n"), host::MauvaisUsage) << "nobody knows what was there";
}

// A sensor may bear the name of another one, of its channel or of the clock.
TEST_F(UnEnregistrementLu, ReconnaîtSesColonnesAuRangEtNonAuNom) {
  const std::string capteurs =
      R"([{"name": "Force", "calibrated": "un"}, {"name": "clock", "calibrated": "deux"},)"
      R"( {"name": "Force", "calibrated": ""}])";
  for (const auto& [titres, pas] : essai::Cas<std::string, std::size_t>{
           {"Force [kN],clock [s],Force [kN]", 1},
           {"Force [kN],Force age [s],clock [s],clock age [s],Force [kN],Force age [s]", 2}}) {
    const auto lu = Lit("time [s]," + titres + ",clock [us],Carte/Bloc/Force [points]\n", capteurs);
    EXPECT_EQ(lu.horloge, 3 * pas);
    EXPECT_EQ(lu.colonnes[0].étalonné, "un");
    EXPECT_EQ(lu.colonnes[pas].étalonné, "deux");
    EXPECT_EQ(lu.colonnes[2 * pas].étalonné, "");
  }
  EXPECT_EQ(Lit("time [s],a\n", capteurs).horloge, 0U) << "the description of another recording";
}

}  // namespace
}  // namespace zuma
