// Readings that are of now, and readings that are not: every device is silenced, and its sensors
// must say how old they are.
#include <algorithm>
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>

#include <gtest/gtest.h>

#include "outils/programme.h"

namespace zuma {
namespace {

using essai::Fin;
using essai::LeProgramme;
using essai::Lit;
using Noms = std::set<std::string>;

class DesAges : public LeProgramme {
 protected:
  // The views of a run, and what it told.
  std::vector<nlohmann::json> Tourne(const std::string& base, const char* chassis,
                                     const std::string& panne, bool malgréTout = false) {
    std::vector<std::string> options{"run",    base,        "--frame", chassis,   "--sim", "--fast",
                                     "--json", "--seconds", "18",      "--fault", panne};
    if (malgréTout) options.emplace_back("--start-anyway");
    fin = Lance(options);
    std::vector<nlohmann::json> vues;
    std::istringstream lignes(fin.sortie);
    for (std::string ligne; std::getline(lignes, ligne);) {
      vues.push_back(nlohmann::json::parse(ligne));
    }
    return vues;
  }
  static Noms Vieux(const nlohmann::json& vue) {
    Noms noms;
    for (const auto& capteur : vue["sensors"]) {
      if (capteur["old"].get<bool>()) noms.insert(capteur["name"]);
    }
    return noms;
  }
  std::size_t Fois(const std::string& texte) const {
    std::size_t fois = 0;
    for (auto i = fin.erreur.find(texte); i != std::string::npos;
         i = fin.erreur.find(texte, i + 1)) {
      ++fois;
    }
    return fois;
  }
  Fin fin{};
};

TEST_F(DesAges, DisentCeQuiNEstPlusLu) {
  const Noms bus{"Traverse",       "Entrefer",     "Plateau",          "Mors haut",
                 "Mors bas",       "Balance LRPC", "Indicateur DEXAL", "Balance JADEVER",
                 "Palpeur",        "Palpeur 2",    "Température 1",    "Vitesse de traverse",
                 "Règle d'origine"};
  const Noms instruments{"Allongement", "Jauge A", "Pont A", "Force CBR", "Enfoncement", "Poids"};
  const struct {
    const char *chassis, *panne;
    const Noms& vieux;
  } cas[] = {
      {"3", "silence@1.2-6", bus},
      {"3", "unplug@1.2-6", bus},
      {"4", "silence@1.2-6", instruments},
      {"4", "unplug@1.2-6", instruments},
  };
  for (const auto& c : cas) {
    const auto vues = Tourne(Base(), c.chassis, c.panne);
    ASSERT_EQ(vues.size(), 36U) << fin.erreur;
    for (const auto& vue : vues) {
      const double heure = vue["time_s"];
      const Noms vieux = Vieux(vue);
      const bool calme = heure < 1.9 || heure > 17;
      if (calme) {
        EXPECT_EQ(vieux, Noms()) << c.chassis << " " << c.panne << " at " << heure;
      }
      if (heure > 5.4 && heure < 6) {
        EXPECT_EQ(vieux, c.vieux) << c.chassis << " " << c.panne;
      }
    }
    EXPECT_GT(Fois(" retrouvées après "), 0U) << fin.erreur;
    EXPECT_GT(Fois(" perdues : "), 0U);
  }
}

// An instrument that was silent from the start has given nothing yet, and no 0.
TEST_F(DesAges, NePrennentPasPourUnZéroCeQuiNAJamaisParlé) {
  const struct {
    const char* chassis;
    Noms muets;
  } cas[] = {
      {"3", {"Balance LRPC", "Indicateur DEXAL", "Balance JADEVER", "Palpeur", "Température 1"}},
      {"4", {"Allongement", "Jauge A", "Force CBR", "Poids"}},
  };
  for (const auto& c : cas) {
    const auto vues = Tourne(Base(), c.chassis, "silence", true);
    ASSERT_FALSE(vues.empty()) << fin.erreur;
    std::size_t vus = 0;
    for (const auto& capteur : vues.back()["sensors"]) {
      if (!c.muets.contains(capteur["name"])) continue;
      ++vus;
      EXPECT_TRUE(capteur["value"].is_null()) << capteur["name"];
    }
    EXPECT_EQ(vus, c.muets.size());
  }
}

TEST_F(DesAges, VontAvecLesLecturesDansUnEnregistrement) {
  const std::string csv = dossier.Fichier("a.csv");
  fin = Lance({"run", Base(), "--frame", "3", "--sim", "--fast", "--seconds", "4", "--fault",
               "silence@1-9", "--csv", csv, "--ages"});
  std::istringstream lignes(Lit(csv));
  const auto champs = [](const std::string& ligne) {
    std::vector<std::string> liste;
    std::istringstream texte(ligne);
    for (std::string champ; std::getline(texte, champ, ',');) liste.push_back(champ);
    return liste;
  };
  std::string ligne;
  std::getline(lignes, ligne);
  const auto noms = champs(ligne);
  const auto colonne = std::ranges::find(noms, "Température 1 age [s]") - noms.begin();
  ASSERT_LT(colonne, std::ssize(noms)) << fin.erreur;
  std::string dernière;
  while (std::getline(lignes, ligne)) dernière = ligne;
  EXPECT_NEAR(std::stod(champs(dernière).at(static_cast<std::size_t>(colonne))), 3, 0.5);
}

TEST_F(DesAges, SontCourtsQuandToutVaBien) {
  for (const char* chassis : {"1", "3", "4", "5"}) {
    const auto vues = Tourne(Base(), chassis, "late:99");
    ASSERT_FALSE(vues.empty());
    EXPECT_EQ(Vieux(vues.back()), Noms()) << chassis;
    EXPECT_EQ(Fois(" perdues : "), 0U) << fin.erreur;
  }
}

TEST_F(DesAges, ArrêtentLeChassisAuDelàDuMaximum) {
  const auto causes = [&](const char* sql) {
    const auto vues = Tourne(Base(sql), "3", "silence@2-4");
    return vues.empty() ? fin.erreur : vues.back()["stop_causes"].dump();
  };
  constexpr const char* kCause = "Lecture trop ancienne du Température 1";
  EXPECT_NE(causes("UPDATE [Capteur] SET [Age maximal (s)]=1.5,"
                   "[Arrêt en Cas de Dépassement des sécurités]=-1 "
                   "WHERE [Nom du Capteur]='Température 1'")
                .find(kCause),
            std::string::npos);
  EXPECT_EQ(causes("UPDATE [Capteur] SET [Age maximal (s)]=3,"
                   "[Arrêt en Cas de Dépassement des sécurités]=-1 "
                   "WHERE [Nom du Capteur]='Température 1'"),
            "[]");
  EXPECT_EQ(causes("UPDATE [Capteur] SET [Age maximal (s)]=1.5,"
                   "[Arrêt en Cas de Dépassement des sécurités]=0 "
                   "WHERE [Nom du Capteur]='Température 1'"),
            "[]");
}

}  // namespace
}  // namespace zuma
