// The compression test as its user meets it: undisturbed, and with each thing that can go wrong.
#include <algorithm>
#include <cmath>

#include <gtest/gtest.h>

#include "outils/cas.h"
#include "outils/programme.h"

namespace zuma {
namespace {

using essai::Cas;
using nlohmann::json;
using testing::IsSubstring;

class LEssaiDeCompression : public essai::LeProgramme {
 protected:
  json Essaie(const std::string& panne, int code, const std::string& sql = {}) {
    dossierDEssai = dossier.Fichier("essai" + panne);
    const essai::Fin fin = Lance("compression " + Base(sql) + " --json --out " + dossierDEssai +
                                 (panne.empty() ? "" : " --fault " + panne));
    EXPECT_EQ(fin.code, code) << panne;
    EXPECT_EQ(fin.erreur, "") << panne;
    return json::parse(fin.sortie);
  }
  [[nodiscard]] std::string Ecrit(const char* nom) const {
    return essai::Lit(dossierDEssai + "/" + nom);
  }
  std::string dossierDEssai;
};

// Largest number of a column of a recording.
double Maximum(const std::string& csv, std::string_view nom) {
  const auto lignes = Découpe(csv, '\n');
  const auto noms = Découpe(lignes[0], ',');
  const auto rang = static_cast<std::size_t>(std::ranges::find(noms, nom) - noms.begin());
  double maximum = -HUGE_VAL;
  for (std::size_t i = 1; i + 1 < lignes.size(); ++i) {
    maximum = std::max(maximum, std::stod(std::string(Découpe(lignes[i], ',').at(rang))));
  }
  return maximum;
}

TEST_F(LEssaiDeCompression, FiniOuArrêtéDitPourquoiEtMetAuRepos) {
  // A part of the cause, seconds from the disturbance to the stop at least and at most, largest
  // force in kN with its tolerance, tolerance of the rate in MPa/s.
  for (const auto& [panne, fin, cause, auPlusTôt, auPlusTard, force, écartDeForce, écartDeVitesse] :
       Cas<std::string, const char*, const char*, double, double, double, double, double>{
           {"", "specimen broken", "", -1, -1, 60, 0.1, 0.006},
           // Ten seconds of load at 0.6 MPa/s on a cylinder of 50 mm, after the contact.
           {"door", "stop", "l'entrée logique Porte fermée, état détecté : inactif", 0, 0.15, 12.1,
            0.4, 0.03},
           {"button", "stop", "l'entrée logique Arrêt d'urgence, état détecté : actif", 0, 0.15,
            12.1, 0.4, 0.03},
           {"overrange", "stop", "Dépassement dangereux du capteur Force 100 kN", 0, 0.15, 95, 0.1,
            0.006},
           // In the time of the watchdog, 0.2 s: the host itself stands still for a second.
           {"freeze", "safety chain open", "the watchdog tripped", 0.19, 0.21, 12.2, 0.4, 0.03}}) {
    SCOPED_TRACE(panne);
    const bool rupture = panne.empty();
    const json rapport = Essaie(panne, rupture ? 0 : 1);
    EXPECT_EQ(rapport["end"], fin);
    ASSERT_EQ(rapport["causes"].size(), rupture ? 0U : 1U);
    EXPECT_PRED_FORMAT2(IsSubstring, cause, rapport["causes"].dump());
    EXPECT_EQ(rapport["rest_after_passes"], rupture ? -1 : 0);
    EXPECT_GE(rapport["stop_after_s"], auPlusTôt);
    EXPECT_LE(rapport["stop_after_s"], auPlusTard);
    EXPECT_NEAR(rapport["max_force_kN"], force, écartDeForce);
    const double aire = 3.14159265358979 * 50 * 50 / 4;  // square millimetres
    const double maximum = rapport["max_force_kN"];
    EXPECT_NEAR(rapport["max_stress_MPa"], maximum * 1e3 / aire, 1e-6);
    EXPECT_EQ(rapport["rate_asked_MPa_s"], 0.6);
    EXPECT_NEAR(rapport["rate_held_MPa_s"], 0.6, écartDeVitesse);

    const std::string csv = Ecrit("compression.csv");
    EXPECT_GT(std::ranges::count(csv, '\n'), 100 * rapport["load_s"].get<double>() * 0.9);
    EXPECT_NEAR(Maximum(csv, "Force [kN]"), maximum, 0.01);
    const std::string courbe = Ecrit("compression.svg");
    for (const char* titre : {"Stress against time", "Stress against strain"}) {
      EXPECT_PRED_FORMAT2(IsSubstring, titre, courbe);
    }
    EXPECT_TRUE(courbe.ends_with("</svg>\n"));
  }
}

// A reading that must not be believed ends the test, and is not taken for a broken specimen.
TEST_F(LEssaiDeCompression, FinitSurUneForceNonValide) {
  // The largest force at most is in kN.
  for (const auto& [panne, sql, cause, force] : Cas<const char*, const char*, const char*, double>{
           {"cell", "", "sensor Force: reading frozen", 13},
           // The large cell may not stop the frame.
           {"overrange",
            "UPDATE Capteur SET [Arrêt en Cas de Dépassement des sécurités]=0 WHERE [Index]=1",
            "sensor Force 100 kN: outside its limits", 95.1},
           {"", "UPDATE Capteur SET [Seuil de lecture non valide]=1 WHERE [Index]=3",
            "sensor Force: reading not valid", 0},
           {"", "UPDATE Capteur SET [Canal]=NULL WHERE [Index]=2", "sensor Force 10 kN: no channel",
            0},
           {"",
            "UPDATE Capteur SET [Parametre de sélection]=1,[Valeur de selection]='x' "
            "WHERE [Index]=10",
            "sensor Contrainte cylindre: not selected", 0}}) {
    const json rapport = Essaie(panne, 1, sql);
    EXPECT_EQ(rapport["end"], "force not valid") << cause;
    EXPECT_EQ(rapport["causes"], json::array({cause}));
    EXPECT_LE(rapport["max_force_kN"], force) << cause;
    EXPECT_LE(rapport["rest_after_passes"], 1) << cause;
    EXPECT_GE(rapport["rest_after_passes"], 0) << cause;
  }
}

TEST_F(LEssaiDeCompression, RefuseCeQuIlNeSaitPasFaire) {
  const std::string base = Base();
  const std::string sansForce =
      Base("UPDATE [Liaison Chassis / Capteur] SET Label='F' WHERE Label='Force'");
  for (const auto& [arguments, erreur] :
       Cas<std::string, const char*>{{base + " --fault fire", "--fault"},
                                     {base + " --rate 9", "--rate"},
                                     {base + " --frame 7", "has no frame 7"},
                                     {sansForce + " --start-anyway", "no sensor Force"}}) {
    const essai::Fin fin = Lance("compression --out " + dossier.Fichier("essai") + " " + arguments);
    EXPECT_EQ(fin.code, 2) << erreur;
    EXPECT_PRED_FORMAT2(IsSubstring, erreur, fin.erreur);
    EXPECT_EQ(fin.sortie, "");
  }
}

}  // namespace
}  // namespace zuma
