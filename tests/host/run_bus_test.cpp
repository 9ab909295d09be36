// Frames of buses and instruments under faults: values and their ages, error channels, and how long
// a pass takes.
#include <algorithm>
#include <set>

#include <gtest/gtest.h>

#include "host/chassis_en_marche.h"
#include "outils/cas.h"
#include "outils/programme.h"
#include "sim/bus_modbus.h"
#include "sim/machine_simulee.h"

namespace zuma {
namespace {

using essai::Cas;
using nlohmann::json;
using testing::IsSubstring;
using Noms = std::set<std::string>;

class DesBusEnPanne : public essai::LeProgramme {
 protected:
  // What a run of that frame told, and its views.
  std::vector<json> Tourne(const std::string& chassis, const std::string& panne,
                           const std::string& options, const std::string& sql = {}) {
    fin = Lance("run " + Base(sql) + " --sim --fast --frame " + chassis + " --fault " + panne +
                " --json " + options);
    return fin.Vues();
  }
  /// Blocks whose error indicator is up.
  static Noms EnDéfaut(const json& vue) {
    Noms blocs;
    for (const auto& canal : vue["channels"]) {
      if (canal["channel"] != -1) continue;
      if (canal.contains("on") ? canal["on"] == true : canal["points"] != 0) {
        blocs.insert(canal["block"]);
      }
    }
    return blocs;
  }
  static Noms Vieux(const json& vue) {
    Noms noms;
    for (const auto& capteur : vue["sensors"]) {
      if (capteur["old"].get<bool>()) noms.insert(capteur["name"]);
    }
    return noms;
  }
  static json Capteur(const json& vue, const std::string& nom) {
    for (const auto& capteur : vue["sensors"]) {
      if (capteur["name"] == nom) return capteur["value"];
    }
    ADD_FAILURE() << nom;
    return {};
  }
  essai::Fin fin{};
};
using DesAges = DesBusEnPanne;

TEST_F(DesBusEnPanne, DisentLeurDéfautTiennentEtReviennent) {
  const Noms tous{"141", "142", "143", "151", "153", "161"};
  // The longest pass is in milliseconds.
  for (const auto& [panne, défauts, passe] : Cas<std::string, Noms, double>{
           {"silence", tous, 35},  // three rulers of 10 ms each
           {"garbage", tous, 5},
           {"crc", tous, 5},
           {"cut", tous, 5},  // an answer cut short is waited for, like silence
           {"babble", tous, 5},
           {"unplug", tous, 35},
           {"deaf", tous, 35},
           {"late", {"161"}, 35},  // a late slave is asked twice a second, told at the tenth time
           {"crc:9", {"141", "142", "143"}, 5},
           {"silence:can", {}, 35}}) {
    SCOPED_TRACE(panne);
    const auto vues = Tourne("3", panne + "@2-6", "--seconds 8");
    ASSERT_EQ(vues.size(), 16U);
    for (const json& vue : vues) {
      const double heure = vue["time_s"];
      const bool tenue = heure > 5.4 && heure < 6;
      if (tenue || heure < 2 || heure > 6.9) {
        EXPECT_EQ(EnDéfaut(vue), tenue ? défauts : Noms()) << heure;
      }
    }
    EXPECT_LT(vues.back()["longest_pass_ms"], passe);
    for (const char* nom :
         {"Traverse", "Règle d'origine", "Balance LRPC", "Indicateur DEXAL", "Balance JADEVER",
          "Palpeur", "Palpeur 2", "Température 1", "Vitesse de traverse"}) {
      EXPECT_NE(Capteur(vues[14], nom), Capteur(vues[15], nom)) << nom;
    }
    if (panne == "cut" || panne.find(':') != panne.npos) continue;
    EXPECT_EQ(Capteur(vues[7], "Température 1"), Capteur(vues[10], "Température 1"))
        << "a value without a good answer stays";
  }
}

// A drive that no longer obeys ends the process, and the user is told why.
TEST_F(DesBusEnPanne, FinissentAvecLEntraînementUSB) {
  const auto vues = Tourne("3", "unplug:usb@2", "--seconds 8");
  EXPECT_EQ(fin.code, 1);
  EXPECT_PRED_FORMAT2(IsSubstring, "the process ends here: Thumler : FT_", fin.erreur);
  EXPECT_LE(vues.size(), 4U);
}

// A drive that follows a sensor must not go on at its last set point when the program ends, not
// even behind an exchange that outlasts the usual rest.
TEST_F(DesBusEnPanne, LaissentLesEntraînementsAuRepos) {
  const auto recueil = Crée<host::Recueil>();
  const auto machine = host::MachineSimulée(*recueil, host::Cadence::Libre);
  sim::MachineSimulée& jumelle = *machine->Jumelle();
  const std::string base = Base("UPDATE Carte SET [ModBus - Time-out]=1800");
  std::optional<host::ChassisEnMarche> marche(std::in_place, base, 3, *machine, recueil,
                                              linux_::Parametres());
  sim::LigneSérie& ligne = *jumelle.liaisons.Ligne(10);
  auto& registres = dynamic_cast<sim::BusModbus&>(*ligne.appareil).Esclave(5)->registres;
  for (double t = 0; t < 2.3;) {
    t = machine->AvanceJusquA(t + 0.001);
    marche->Passe();
    if (t < 2) continue;
    EXPECT_TRUE(registres[500] == 1 && jumelle.bus.Thumler().EnMarche());
    ligne.pannes.muette = true;
  }
  marche.reset();
  EXPECT_EQ(registres[500], 0);
  EXPECT_EQ(registres[501], 0);
  EXPECT_FALSE(jumelle.bus.Thumler().EnMarche());
  EXPECT_FALSE(recueil->Problèmes().empty());
}

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
    const auto vues = Tourne(chassis, panne, "--seconds 18");
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
    const auto vues = Tourne(chassis, "silence", "--seconds 18 --start-anyway");
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
  (void)Tourne("3", "silence@1-9", "--seconds 4 --ages --csv " + csv);
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
    const auto vues = Tourne("3", "silence@2-4", "--seconds 18",
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
