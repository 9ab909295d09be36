// The compression test as its user meets it: undisturbed, and with each thing that can go wrong.
#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>
#include <sstream>

#include <gtest/gtest.h>

#include "outils/programme.h"

namespace zuma {
namespace {

using nlohmann::json;

class LEssaiDeCompression : public essai::LeProgramme {
 protected:
  json Essaie(const std::string& panne, int code, const std::string& sql = {}) {
    dossierDEssai = dossier.Fichier("essai" + panne);
    std::vector<std::string> arguments{"compression", Base(sql), "--json", "--out", dossierDEssai};
    if (!panne.empty()) arguments.insert(arguments.end(), {"--fault", panne});
    const essai::Fin fin = Lance(arguments);
    EXPECT_EQ(fin.code, code) << panne;
    EXPECT_EQ(fin.erreur, "") << panne;
    return json::parse(fin.sortie);
  }
  [[nodiscard]] std::string Ecrit(const char* nom) const {
    return essai::Lit(dossierDEssai + "/" + nom);
  }
  std::string dossierDEssai;
};

// A recording of the program: the names of its columns, then numbers.
struct Enregistrement {
  explicit Enregistrement(const std::string& csv) {
    std::istringstream lignes(csv);
    std::string ligne;
    std::getline(lignes, ligne);
    noms = Champs(ligne);
    while (std::getline(lignes, ligne)) {
      valeurs.emplace_back();
      for (const std::string& champ : Champs(ligne)) {
        valeurs.back().push_back(champ.empty() ? std::nan("") : std::stod(champ));
      }
    }
  }
  static std::vector<std::string> Champs(const std::string& ligne) {
    std::vector<std::string> champs;
    std::istringstream flux(ligne);
    for (std::string champ; std::getline(flux, champ, ',');) champs.push_back(champ);
    return champs;
  }
  [[nodiscard]] double Maximum(const std::string& nom) const {
    const auto rang = static_cast<std::size_t>(std::ranges::find(noms, nom) - noms.begin());
    double maximum = -HUGE_VAL;
    for (const auto& ligne : valeurs) maximum = std::max(maximum, ligne.at(rang));
    return maximum;
  }
  std::vector<std::string> noms;
  std::vector<std::vector<double>> valeurs;
};

TEST_F(LEssaiDeCompression, FiniOuArrêtéDitPourquoiEtMetAuRepos) {
  const struct {
    std::string panne;
    std::string fin;
    std::string cause;             // a part of it
    double auPlusTôt, auPlusTard;  // seconds from the disturbance to the stop
    double force;                  // largest, kN
    double écartDeForce;
    double écartDeVitesse;  // MPa/s
  } cas[] = {
      {"", "specimen broken", "", -1, -1, 60, 0.1, 0.006},
      // Ten seconds of load at 0.6 MPa/s on a cylinder of 50 mm, after the contact.
      {"door", "stop", "l'entrée logique Porte fermée, état détecté : inactif", 0, 0.15, 12.1, 0.4,
       0.03},
      {"button", "stop", "l'entrée logique Arrêt d'urgence, état détecté : actif", 0, 0.15, 12.1,
       0.4, 0.03},
      {"overrange", "stop", "Dépassement dangereux du capteur Force 100 kN", 0, 0.15, 95, 0.1,
       0.006},
      // In the time of the watchdog, 0.2 s: the host itself stands still for a second.
      {"freeze", "safety chain open", "the watchdog tripped", 0.19, 0.21, 12.2, 0.4, 0.03},
  };
  for (const auto& c : cas) {
    const bool rupture = c.panne.empty();
    const json rapport = Essaie(c.panne, rupture ? 0 : 1);
    EXPECT_EQ(rapport["end"], c.fin) << c.panne;
    ASSERT_EQ(rapport["causes"].size(), rupture ? 0U : 1U) << rapport.dump();
    if (!rupture) {
      EXPECT_NE(rapport["causes"][0].get<std::string>().find(c.cause), std::string::npos)
          << rapport["causes"][0];
    }
    EXPECT_EQ(rapport["rest_after_passes"], rupture ? -1 : 0) << c.panne;
    EXPECT_GE(rapport["stop_after_s"], c.auPlusTôt) << c.panne;
    EXPECT_LE(rapport["stop_after_s"], c.auPlusTard) << c.panne;
    EXPECT_NEAR(rapport["max_force_kN"], c.force, c.écartDeForce) << c.panne;
    const double aire = 3.14159265358979 * 50 * 50 / 4;  // square millimetres
    EXPECT_NEAR(rapport["max_stress_MPa"], rapport["max_force_kN"].get<double>() * 1e3 / aire, 1e-6)
        << c.panne;
    EXPECT_EQ(rapport["rate_asked_MPa_s"], 0.6);
    EXPECT_NEAR(rapport["rate_held_MPa_s"], 0.6, c.écartDeVitesse) << c.panne;

    const Enregistrement enregistrement(Ecrit("compression.csv"));
    EXPECT_GT(enregistrement.valeurs.size(), 100 * rapport["load_s"].get<double>() * 0.9);
    EXPECT_NEAR(enregistrement.Maximum("Force [kN]"), rapport["max_force_kN"], 0.01) << c.panne;
    const json description = json::parse(Ecrit("compression.csv.json"));
    EXPECT_EQ(description["sensors"].size() + 1, enregistrement.noms.size());
    const std::string courbe = Ecrit("compression.svg");
    EXPECT_NE(courbe.find("Stress against time"), std::string::npos);
    EXPECT_NE(courbe.find("Stress against strain"), std::string::npos);
    EXPECT_TRUE(courbe.ends_with("</svg>\n")) << c.panne;
  }
}

// A reading that must not be believed ends the test, and is not taken for a broken specimen.
TEST_F(LEssaiDeCompression, FinitSurUneForceNonValide) {
  const struct {
    const char* panne;
    const char* sql;
    const char* cause;
    double force;  // largest at most, kN
  } cas[] = {
      {"cell", "", "sensor Force: reading frozen", 13},
      // The large cell may not stop the frame.
      {"overrange",
       "UPDATE Capteur SET [Arrêt en Cas de Dépassement des sécurités]=0 WHERE [Index]=1",
       "sensor Force 100 kN: outside its limits", 95.1},
      {"", "UPDATE Capteur SET [Seuil de lecture non valide]=1 WHERE [Index]=3",
       "sensor Force: reading not valid", 0},
      {"", "UPDATE Capteur SET [Canal]=NULL WHERE [Index]=2", "sensor Force 10 kN: no channel", 0},
      {"",
       "UPDATE Capteur SET [Parametre de sélection]=1,[Valeur de selection]='x' "
       "WHERE [Index]=10",
       "sensor Contrainte cylindre: not selected", 0},
  };
  for (const auto& c : cas) {
    const json rapport = Essaie(c.panne, 1, c.sql);
    EXPECT_EQ(rapport["end"], "force not valid") << c.cause;
    EXPECT_EQ(rapport["causes"], json::array({c.cause}));
    EXPECT_LE(rapport["max_force_kN"], c.force) << c.cause;
    EXPECT_LE(rapport["rest_after_passes"], 1) << c.cause;
    EXPECT_GE(rapport["rest_after_passes"], 0) << c.cause;
  }
}

TEST_F(LEssaiDeCompression, RefuseCeQuIlNeSaitPasFaire) {
  const std::string base = Base();
  const struct {
    std::vector<std::string> arguments;
    std::string erreur;
  } cas[] = {
      {{base, "--fault", "fire"}, "--fault"},
      {{base, "--rate", "9"}, "--rate"},
      {{base, "--frame", "7"}, "has no frame 7"},
      {{Base("UPDATE [Liaison Chassis / Capteur] SET Label='F' WHERE Label='Force'"),
        "--start-anyway"},
       "no sensor Force"},
  };
  for (const auto& c : cas) {
    std::vector<std::string> arguments{"compression", "--out", dossier.Fichier("essai")};
    arguments.insert(arguments.end(), c.arguments.begin(), c.arguments.end());
    const essai::Fin fin = Lance(arguments);
    EXPECT_EQ(fin.code, 2) << c.erreur;
    EXPECT_NE(fin.erreur.find(c.erreur), std::string::npos) << fin.erreur;
    EXPECT_EQ(fin.sortie, "");
  }
}

}  // namespace
}  // namespace zuma
