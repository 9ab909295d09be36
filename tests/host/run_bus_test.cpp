// A frame of buses and drives under faults: values, error channels, and how long a pass takes.
#include <map>
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>

#include <gtest/gtest.h>

#include "host/chassis_en_marche.h"
#include "outils/programme.h"
#include "sim/bus_modbus.h"
#include "sim/machine_simulee.h"

namespace zuma {
namespace {

using essai::Fin;
using essai::LeProgramme;

class DesBusEnPanne : public LeProgramme {
 public:
  /// Views of a run with a fault from 2 to 6 s.
  std::vector<nlohmann::json> Tourne(const std::string& panne) {
    const Fin fin = Lance({"run", Base(), "--frame", "3", "--sim", "--fast", "--json", "--seconds",
                           "8", "--fault", panne + "@2-6"});
    std::vector<nlohmann::json> vues;
    std::istringstream lignes(fin.sortie);
    for (std::string ligne; std::getline(lignes, ligne);) {
      vues.push_back(nlohmann::json::parse(ligne));
    }
    return vues;
  }
  /// Blocks whose error indicator is up.
  static std::set<std::string> EnDéfaut(const nlohmann::json& vue) {
    std::set<std::string> blocs;
    for (const auto& canal : vue["channels"]) {
      if (canal["channel"] != -1) continue;
      const bool levé = canal.contains("on") ? canal["on"].get<bool>() : canal["points"] != 0;
      if (levé) blocs.insert(canal["block"]);
    }
    return blocs;
  }
  static double Capteur(const nlohmann::json& vue, const std::string& nom) {
    for (const auto& capteur : vue["sensors"]) {
      if (capteur["name"] == nom) return capteur["value"];
    }
    ADD_FAILURE() << nom;
    return 0;
  }
};

TEST_F(DesBusEnPanne, DisentLeurDéfautTiennentEtReviennent) {
  const std::set<std::string> tous{"141", "142", "143", "151", "153", "161"};
  const struct {
    std::string panne;
    std::set<std::string> défauts;
    double passe;  ///< longest one, milliseconds
  } cas[] = {
      {"silence", tous, 35},  // three rulers of 10 ms each
      {"garbage", tous, 5},
      {"crc", tous, 5},
      {"cut", tous, 5},  // an answer cut short is waited for, like silence
      {"babble", tous, 5},
      {"unplug", tous, 35},
      {"deaf", tous, 35},
      {"late", {"161"}, 35},  // a late slave is asked twice a second, and told at the tenth time
      {"crc:9", {"141", "142", "143"}, 5},
      {"silence:can", {}, 35},
  };
  for (const auto& c : cas) {
    const auto vues = Tourne(c.panne);
    ASSERT_EQ(vues.size(), 16U) << c.panne;
    for (const auto& vue : vues) {
      const double heure = vue["time_s"];
      if (heure < 2 || heure > 6.9) {
        EXPECT_EQ(EnDéfaut(vue), std::set<std::string>()) << c.panne << " at " << heure;
      } else if (heure > 5.4 && heure < 6) {
        EXPECT_EQ(EnDéfaut(vue), c.défauts) << c.panne << " at " << heure;
      }
    }
    EXPECT_LT(vues.back()["longest_pass_ms"], c.passe) << c.panne;
    for (const char* nom :
         {"Traverse", "Règle d'origine", "Balance LRPC", "Indicateur DEXAL", "Balance JADEVER",
          "Palpeur", "Palpeur 2", "Température 1", "Vitesse de traverse"}) {
      EXPECT_NE(Capteur(vues[14], nom), Capteur(vues[15], nom)) << c.panne << ": " << nom;
    }
    const bool surLesLignes = c.panne.find(':') == std::string::npos;
    if (surLesLignes && c.panne != "cut") {
      EXPECT_EQ(Capteur(vues[7], "Température 1"), Capteur(vues[10], "Température 1"))
          << c.panne << ": a value without a good answer stays";
    }
  }
}

// A drive that no longer obeys ends the process, and the user is told why.
TEST_F(DesBusEnPanne, FinissentAvecLEntraînementUSB) {
  const Fin fin = Lance({"run", Base(), "--frame", "3", "--sim", "--fast", "--seconds", "8",
                         "--fault", "unplug:usb@2"});
  EXPECT_EQ(fin.code, 1);
  EXPECT_NE(fin.erreur.find("the process ends here: Thumler : FT_"), std::string::npos)
      << fin.erreur;
  EXPECT_EQ(fin.sortie.find("2.50 s"), std::string::npos);
}

// A drive that follows a sensor must not go on at its last set point when the program ends, not
// even behind an exchange that outlasts the usual rest.
TEST_F(DesBusEnPanne, LaissentLesEntraînementsAuRepos) {
  for (const bool muette : {false, true}) {
    const auto recueil = Crée<host::Recueil>();
    const auto machine = host::MachineSimulée(*recueil, host::Cadence::Libre);
    const auto consigne = [&](std::uint16_t registre) {
      auto* bus =
          dynamic_cast<sim::BusModbus*>(machine->Jumelle()->liaisons.Ligne(10)->appareil.Brut());
      return bus->Esclave(5)->registres[registre];
    };
    {
      const std::string base = Base(muette ? "UPDATE Carte SET [ModBus - Time-out]=1800" : "");
      host::ChassisEnMarche marche(base, 3, *machine, recueil, {});
      for (double t = 0; t < 2;) {
        t = machine->AvanceJusquA(t + 0.001);
        marche.Passe();
      }
      EXPECT_EQ(consigne(500), 1);
      EXPECT_TRUE(machine->Jumelle()->bus.Thumler().EnMarche());
      machine->Jumelle()->liaisons.Ligne(10)->pannes.muette = muette;
      for (int i = 0; muette && i < 300; ++i) {
        (void)machine->AvanceJusquA(machine->AvanceJusquA(0) + 0.001);
        marche.Passe();
      }
    }
    EXPECT_EQ(consigne(500), 0);
    EXPECT_EQ(consigne(501), 0);
    EXPECT_FALSE(machine->Jumelle()->bus.Thumler().EnMarche());
    EXPECT_EQ(recueil->Problèmes().empty(), !muette);
  }
}

}  // namespace
}  // namespace zuma
