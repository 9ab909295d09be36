// Readings that are of now, and readings that are not: every device is silenced, and its sensors
// must say how old they are.
#include <algorithm>
#include <set>

#include <gtest/gtest.h>

#include "outils/cas.h"
#include "outils/programme.h"

namespace zuma {
namespace {

using essai::Cas;
using nlohmann::json;
using testing::IsSubstring;
using Noms = std::set<std::string>;

class DesAges : public essai::LeProgramme {
 protected:
  // The views of a run of 18 s, and what it told.
  std::vector<json> Tourne(const std::string& chassis, const std::string& panne,
                           const std::string& sql = {}) {
    fin = Lance("run " + Base(sql) + " --sim --fast --json --seconds 18 --frame " + chassis +
                " --fault " + panne);
    return fin.Vues();
  }
  static Noms Vieux(const json& vue) {
    Noms noms;
    for (const auto& capteur : vue["sensors"]) {
      if (capteur["old"].get<bool>()) noms.insert(capteur["name"]);
    }
    return noms;
  }
  essai::Fin fin{};
};

TEST_F(DesAges, DisentCeQuiNEstPlusLu) {
  const Noms bus{"Traverse",       "Entrefer",     "Plateau",          "Mors haut",
                 "Mors bas",       "Balance LRPC", "Indicateur DEXAL", "Balance JADEVER",
                 "Palpeur",        "Palpeur 2",    "Température 1",    "Vitesse de traverse",
                 "Règle d'origine"};
  const Noms instruments{"Allongement", "Jauge A", "Pont A", "Force CBR", "Enfoncement", "Poids"};
  for (const auto& [chassis, panne, attendus] :
       Cas<std::string, std::string, Noms>{{"3", "silence@1.2-6", bus},
                                           {"3", "unplug@1.2-6", bus},
                                           {"4", "silence@1.2-6", instruments},
                                           {"4", "unplug@1.2-6", instruments}}) {
    const auto vues = Tourne(chassis, panne);
    ASSERT_EQ(vues.size(), 36U) << fin.erreur;
    for (const json& vue : vues) {
      const double heure = vue["time_s"];
      SCOPED_TRACE(chassis + " " + panne + " at " + std::to_string(heure));
      const bool tenue = heure > 5.4 && heure < 6;
      if (!tenue && heure >= 1.9 && heure <= 17) continue;
      EXPECT_EQ(Vieux(vue), tenue ? attendus : Noms());
    }
    for (const char* dit : {" retrouvées après ", " perdues : "}) {
      EXPECT_PRED_FORMAT2(IsSubstring, dit, fin.erreur);
    }
  }
}

// An instrument that was silent from the start has given nothing yet, and no 0.
TEST_F(DesAges, NePrennentPasPourUnZéroCeQuiNAJamaisParlé) {
  for (const auto& [chassis, muets] : Cas<std::string, Noms>{
           {"3",
            {"Balance LRPC", "Indicateur DEXAL", "Balance JADEVER", "Palpeur", "Température 1"}},
           {"4", {"Allongement", "Jauge A", "Force CBR", "Poids"}}}) {
    const auto vues = Tourne(chassis, "silence --start-anyway");
    ASSERT_FALSE(vues.empty()) << fin.erreur;
    Noms sansValeur;
    for (const auto& capteur : vues.back()["sensors"]) {
      if (capteur["value"].is_null()) sansValeur.insert(capteur["name"]);
    }
    EXPECT_TRUE(std::ranges::includes(sansValeur, muets)) << vues.back()["sensors"].dump();
  }
}

TEST_F(DesAges, VontAvecLesLecturesDansUnEnregistrement) {
  const std::string csv = dossier.Fichier("a.csv");
  fin = Lance("run " + Base() + " --frame 3 --sim --fast --seconds 4 --fault silence@1-9 --ages" +
              " --csv " + csv);
  const std::string écrit = essai::Lit(csv);
  const auto lignes = Découpe(écrit, '\n');
  const auto noms = Découpe(lignes[0], ',');
  const auto colonne = std::ranges::find(noms, "Température 1 age [s]") - noms.begin();
  ASSERT_LT(colonne, std::ssize(noms)) << fin.erreur;
  const std::string âge(Découpe(lignes.at(lignes.size() - 2), ',')[static_cast<size_t>(colonne)]);
  EXPECT_NEAR(std::stod(âge), 3, 0.5);
}

TEST_F(DesAges, ArrêtentLeChassisAuDelàDuMaximum) {
  for (const auto& [maximum, arrêt, arrête] : Cas<std::string, std::string, bool>{
           {"1.5", "-1", true}, {"3", "-1", false}, {"1.5", "0", false}}) {
    const auto vues = Tourne("3", "silence@2-4",
                             "UPDATE [Capteur] SET [Age maximal (s)]=" + maximum +
                                 ", [Arrêt en Cas de Dépassement des sécurités]=" + arrêt +
                                 " WHERE [Nom du Capteur]='Température 1'");
    ASSERT_FALSE(vues.empty()) << fin.erreur;
    const std::string causes = vues.back()["stop_causes"].dump();
    EXPECT_EQ(causes.find("Lecture trop ancienne du Température 1") != causes.npos, arrête);
    EXPECT_EQ(causes == "[]", !arrête) << causes;
  }
}

}  // namespace
}  // namespace zuma
