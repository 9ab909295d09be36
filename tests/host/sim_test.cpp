// The instruments that the program serves, through the real serial adapter and the program itself.
#include <algorithm>
#include <chrono>
#include <csignal>
#include <map>
#include <nlohmann/json.hpp>
#include <sstream>
#include <thread>

#include <gtest/gtest.h>

#include "core/outils_modbus.h"
#include "outils/programme.h"
#include "platform/linux/liaison_serie_linux.h"
#include "sensors/trames_capteur.h"

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

Octets Demande(linux_::LiaisonSérieLinux& liaison, std::string_view question, char fin) {
  (void)liaison.LitTampon({});
  liaison.EcritPort(question);
  Octets réponse;
  const auto échéance = std::chrono::steady_clock::now() + std::chrono::seconds(2);
  while (réponse.find(fin) == Octets::npos && std::chrono::steady_clock::now() < échéance) {
    réponse += liaison.LitTampon({});
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
  }
  return réponse;
}

TEST(LeProgrammeServi, RépondSurSesPseudoTerminaux) {
  const ProgrammeLancé programme;
  const linux_::CarteDesPorts ports{{1, programme.Port("balance")}, {2, programme.Port("modbus")}};
  linux_::LiaisonSérieLinux balance(ports);
  linux_::LiaisonSérieLinux esclave(ports);
  for (linux_::LiaisonSérieLinux* liaison : {&balance, &esclave}) {
    liaison->VitesseSérie(9600);
    liaison->BitsDeDonnées(8);
    liaison->BitsDeStop(1);
    liaison->PortSérie(liaison == &balance ? 1 : 2);
    liaison->OuvrePort();
  }

  const Octets pesée = Demande(balance, "\x1bP", '\x0d');
  const auto trame = trames_capteur::TrameSignée(pesée);
  ASSERT_TRUE(trame) << pesée;
  const auto mesure = trames_capteur::DécodeRéservé1(*trame);
  ASSERT_TRUE(mesure && mesure->nombre);
  EXPECT_GE(*mesure->nombre, 6) << "12 kg times 0.5 to 2.5";
  EXPECT_LE(*mesure->nombre, 30);
  EXPECT_EQ(*mesure->unité, "kg");

  Octets question;
  OutilsModbus::ConstruitQuestion(1, 3, 0, 4, {}, question);
  const Octets réponse = Demande(esclave, question, '\0');
  Octets reçue = réponse;
  OutilsModbus::Valeurs valeurs;
  auto résultat = OutilsModbus::Résultat::Incomplète;
  for (int i = 0; i < 500 && résultat == OutilsModbus::Résultat::Incomplète; ++i) {
    résultat =
        OutilsModbus::DécodeRéponse(reçue, question, &valeurs, OutilsModbus::FormeValeurs::Mots);
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
    reçue += esclave.LitTampon({});
  }
  ASSERT_EQ(résultat, OutilsModbus::Résultat::Bonne);
  EXPECT_LE(valeurs.Item(1), 2000);
  EXPECT_EQ(valeurs.Item(4), 3);
}

using LesChassisDeDémonstration = essai::LeProgramme;

// A demo frame on the machine at hand: library, adapters, pseudo-terminals and twins at once.
TEST_F(LesChassisDeDémonstration, MesurentParLesVraisAdaptateurs) {
  const struct {
    const char* chassis;
    const char* base;  ///< the USB drive ends a process that lacks its device
    const char* secondes;
    std::vector<std::pair<const char*, const char*>> ports;
    std::vector<const char*> mesures;                 ///< sensors that move
    std::vector<std::pair<const char*, bool>> états;  ///< "block.channel"
  } cas[] = {
      {"4",
       "",
       "1.6",
       {{"12", "laser"},
        {"13", "conditioner"},
        {"14", "conditioner-2"},
        {"15", "cbr"},
        {"16", "gram"}},
       {"Allongement", "Jauge A", "Pont A", "Force CBR", "Poids"},
       {{"212.0", true},
        {"212.3", false},
        {"222.0", true},
        {"222.1", false},
        {"232.0", true},
        {"232.1", false},
        {"242.1", false},
        {"252.0", true}}},
      {"3",
       "DELETE FROM Carte WHERE [Index] = 17",
       "1.6",
       {{"4", "lrpc"},
        {"5", "dexal"},
        {"6", "jadever"},
        {"7", "metro"},
        {"8", "metro-mux"},
        {"9", "modbus"},
        {"10", "drive"},
        {"11", "umv"}},
       {"Balance LRPC", "Indicateur DEXAL", "Balance JADEVER", "Palpeur", "Palpeur 2",
        "Température 1"},
       {{"141.-1", false},
        {"142.-1", false},
        {"142.6", true},
        {"151.-1", false},
        {"153.-1", false},
        {"153.0", true},
        {"153.1", false},  // started behind a latched stop, which holds the drive at rest
        {"161.-1", false}}},
  };
  const ProgrammeLancé programme;
  for (const auto& c : cas) {
    // Amplifier, keyboard and CAN card are not at hand.
    std::vector<std::string> arguments{"run",    Base(c.base), "--frame",  c.chassis,
                                       "--json", "--seconds",  c.secondes, "--start-anyway"};
    for (const auto& [numéro, nom] : c.ports) {
      arguments.insert(arguments.end(), {"--port", numéro + ("=" + programme.Port(nom))});
    }
    const essai::Fin fin = Lance(arguments);
    std::map<std::string, std::vector<double>> mesures;
    std::map<std::string, bool> états;
    std::istringstream lignes(fin.sortie);
    for (std::string ligne; std::getline(lignes, ligne);) {
      const auto vue = nlohmann::json::parse(ligne);
      for (const auto& capteur : vue["sensors"]) {
        if (!capteur["value"].is_null()) mesures[capteur["name"]].push_back(capteur["value"]);
      }
      for (const auto& canal : vue["channels"]) {
        const std::string place = canal["block"].get<std::string>() + "." + canal["channel"].dump();
        états[place] = canal.contains("on") ? canal["on"].get<bool>() : canal["points"] != 0;
      }
    }
    for (const char* nom : c.mesures) {
      const auto [mini, maxi] = std::ranges::minmax(mesures.at(nom));
      EXPECT_NE(mini, maxi) << nom << " stays\n" << fin.erreur;
    }
    for (const auto& [place, attendu] : c.états) EXPECT_EQ(états.at(place), attendu) << place;
  }
}

}  // namespace
}  // namespace zuma
