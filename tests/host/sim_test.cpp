// The instruments that the program serves, through the real serial adapter.
#include <chrono>
#include <nlohmann/json.hpp>
#include <thread>

#include <gtest/gtest.h>

#include "core/outils_modbus.h"
#include "platform/linux/liaison_serie_linux.h"
#include "sensors/trames_capteur.h"

namespace zuma {
namespace {

// The program, started with its output on a pipe.
class ProgrammeLancé {
 public:
  ProgrammeLancé() : tube_(::popen("'" ZUMA_PROGRAMME "' sim --seconds 2 --json", "r")) {
    char* ligne = nullptr;
    std::size_t taille = 0;
    if (tube_ != nullptr && ::getline(&ligne, &taille, tube_) > 0) {
      for (const auto& servi : nlohmann::json::parse(ligne)) {
        ports_[servi["name"]] = servi["port"];
      }
    }
    ::free(ligne);
  }
  ~ProgrammeLancé() {
    if (tube_ != nullptr) ::pclose(tube_);
  }
  [[nodiscard]] std::string Port(const std::string& nom) const { return ports_.at(nom); }

 private:
  std::FILE* tube_;
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

}  // namespace
}  // namespace zuma
