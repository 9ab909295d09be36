// The instruments that the program serves, through the real serial adapter and the program itself.
#include <csignal>
#include <map>
#include <set>

#include <gtest/gtest.h>

#include "outils/cas.h"
#include "outils/programme.h"

namespace zuma {
namespace {

// The program, started with its output on a pipe, behind its process number.
class ProgrammeLancé {
 public:
  ProgrammeLancé()
      : tube_(::popen("echo $$; exec '" ZUMA_PROGRAMME "' sim --seconds 60 --json", "r")) {
    processus_ = std::atoi(Ligne().c_str());
    for (const auto& servi : nlohmann::json::parse(Ligne())) ports_[servi["name"]] = servi["port"];
  }
  ~ProgrammeLancé() {
    if (processus_ > 0) ::kill(processus_, SIGTERM);
    ::pclose(tube_);
  }
  [[nodiscard]] std::string Port(const std::string& nom) const { return ports_.at(nom); }

 private:
  std::string Ligne() {
    std::string ligne;
    for (int c = std::fgetc(tube_); c != EOF && c != '\n'; c = std::fgetc(tube_)) {
      ligne += static_cast<char>(c);
    }
    return ligne;
  }
  std::FILE* tube_;
  pid_t processus_ = 0;
  std::map<std::string, std::string> ports_;
};

using LesChassisDeDémonstration = essai::LeProgramme;

// A demo frame on the machine at hand: library, adapters, pseudo-terminals and twins at once.
TEST_F(LesChassisDeDémonstration, MesurentParLesVraisAdaptateurs) {
  const ProgrammeLancé programme;
  using Noms = std::vector<std::string>;
  // The first serial port and what stands on it and those behind it, the sensors that move, and
  // channels ("block.channel") that are on and off.
  for (const auto& [chassis, premier, appareils, capteurs, levés, baissés] :
       essai::Cas<const char*, int, Noms, Noms, Noms, Noms>{
           {"4",
            12,
            {"laser", "conditioner", "conditioner-2", "cbr", "gram"},
            {"Allongement", "Jauge A", "Pont A", "Force CBR", "Poids"},
            {"212.0", "222.0", "232.0", "252.0"},
            {"212.3", "222.1", "232.1", "242.1"}},
           {"2",
            1,
            {"balance", "comparator", "indicator"},
            {"Balance", "Comparateur", "Indicateur"},
            {},
            {}},
           // Started behind a latched stop, which holds the drive at rest (153.1).
           {"3",
            4,
            {"lrpc", "dexal", "jadever", "metro", "metro-mux", "modbus", "drive", "umv"},
            {"Balance LRPC", "Indicateur DEXAL", "Balance JADEVER", "Palpeur", "Palpeur 2",
             "Température 1"},
            {"142.6", "153.0"},
            {"141.-1", "142.-1", "151.-1", "153.-1", "153.1", "161.-1"}}}) {
    // Amplifier, keyboard and CAN card are not at hand, and the USB drive ends a process that lacks
    // its device.
    std::string commande = "run " + Base("DELETE FROM Carte WHERE [Index] = 17") +
                           " --json --seconds 1.6 --start-anyway --frame " + chassis;
    for (int port = premier; const std::string& nom : appareils) {
      commande += " --port " + std::to_string(port++) + "=" + programme.Port(nom);
    }
    const essai::Fin fin = Lance(commande);
    std::map<std::string, std::set<double>> mesures;
    std::map<std::string, bool> états;
    for (const auto& vue : fin.Vues()) {
      for (const auto& capteur : vue["sensors"]) {
        if (!capteur["value"].is_null())
          mesures[capteur["name"]].insert(capteur["value"].get<double>());
      }
      for (const auto& canal : vue["channels"]) {
        états[canal["block"].get<std::string>() + "." + canal["channel"].dump()] =
            canal.contains("on") ? canal["on"] == true : canal["points"] != 0;
      }
    }
    for (const auto& nom : capteurs) EXPECT_GT(mesures[nom].size(), 1U) << nom << fin.erreur;
    for (const auto& place : levés) EXPECT_TRUE(états.at(place)) << place;
    for (const auto& place : baissés) EXPECT_FALSE(états.at(place)) << place;
  }
}

}  // namespace
}  // namespace zuma
