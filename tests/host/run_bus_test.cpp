// A frame of buses and drives under faults: values, error channels, and how long a pass takes.
#include <set>

#include <gtest/gtest.h>

#include "host/chassis_en_marche.h"
#include "outils/cas.h"
#include "outils/programme.h"
#include "sim/bus_modbus.h"
#include "sim/machine_simulee.h"

namespace zuma {
namespace {

using nlohmann::json;
using Blocs = std::set<std::string>;

class DesBusEnPanne : public essai::LeProgramme {
 protected:
  essai::Fin Tourne(const std::string& panne) {
    return Lance("run " + Base() + " --frame 3 --sim --fast --seconds 8 --fault " + panne);
  }
  /// Blocks whose error indicator is up.
  static Blocs EnDéfaut(const json& vue) {
    Blocs blocs;
    for (const auto& canal : vue["channels"]) {
      if (canal["channel"] != -1) continue;
      if (canal.contains("on") ? canal["on"] == true : canal["points"] != 0) {
        blocs.insert(canal["block"]);
      }
    }
    return blocs;
  }
  static json Capteur(const json& vue, const std::string& nom) {
    for (const auto& capteur : vue["sensors"]) {
      if (capteur["name"] == nom) return capteur["value"];
    }
    ADD_FAILURE() << nom;
    return {};
  }
};

TEST_F(DesBusEnPanne, DisentLeurDéfautTiennentEtReviennent) {
  const Blocs tous{"141", "142", "143", "151", "153", "161"};
  // The longest pass is in milliseconds.
  for (const auto& [panne, défauts, passe] : essai::Cas<std::string, Blocs, double>{
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
    const auto vues = Tourne(panne + "@2-6 --json").Vues();
    ASSERT_EQ(vues.size(), 16U);
    for (const json& vue : vues) {
      const double heure = vue["time_s"];
      const bool tenue = heure > 5.4 && heure < 6;
      if (tenue || heure < 2 || heure > 6.9) {
        EXPECT_EQ(EnDéfaut(vue), tenue ? défauts : Blocs()) << heure;
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
  const essai::Fin fin = Tourne("unplug:usb@2");
  EXPECT_EQ(fin.code, 1);
  EXPECT_PRED_FORMAT2(testing::IsSubstring, "the process ends here: Thumler : FT_", fin.erreur);
  EXPECT_PRED_FORMAT2(testing::IsNotSubstring, "2.50 s", fin.sortie);
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

}  // namespace
}  // namespace zuma
