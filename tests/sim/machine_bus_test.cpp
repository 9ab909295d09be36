// A frame of rulers, balances, gauges, probes and amplifiers on its twins, plugged by the machine
// itself.
#include "sim/machine_bus.h"

#include <gtest/gtest.h>

#include "outils/arbre.h"
#include "sim/machine_simulee.h"

namespace zuma::sim {
namespace {

using essai::Nombre;
using essai::Texte;

class DesBusSimulés : public testing::Test {
 public:
  DesBusSimulés() {
    chassis.TimerExact(machine.horloge);
    chassis.ChargeErreur(registre);
  }
  Carte& Ajoute(const char* clé, const char* driver, const char* adresse = "0") {
    const CarteRef carte = chassis.Cartes()->Add(clé);
    carte->TimerExact(machine.horloge);
    carte->ChargeErreur(registre);
    cartes.emplace_back(carte, std::pair(driver, adresse));
    return *carte;
  }
  FonctionRef Bloc(Carte& carte, const char* driver, const std::vector<std::int32_t>& numéros,
                   std::int32_t port) {
    return essai::AjouteBloc(carte, "1",
                             {{"Driver", Texte(driver)},
                              {"Type de Fonction", Texte("Entrée Analogique")},
                              {"Nom de la Fonction", Texte("Bloc")},
                              {"Mise à Jour par Fonction", Valeur(false)},
                              {"Numéro du port CAN", Nombre(port)},
                              {"RS232 - COM", Nombre(port)},
                              {"RS232 - Baud Rate", Nombre(9600)},
                              {"RS232 - Parity", Texte("No parity")},
                              {"RS232 - Data", Nombre(8)},
                              {"RS232 - Stop", Nombre(1)}},
                             numéros, machine.horloge, registre);
  }
  static Canal& Le(const FonctionRef& bloc, std::int32_t numéro) {
    return *bloc->Canals()->Item(essai::CléDuCanal(numéro));
  }
  static void LitCanal(Canal& canal, const char* driver, const char* série, std::int32_t id) {
    canal.ParamètresDepuisBD(essai::UneLigne({{"Numéro du Canal", Nombre(canal.NuméroCanal())},
                                              {"Nom du Canal", Texte("c")},
                                              {"N° de série", Texte(série)},
                                              {"N° de Node", Nombre(id)},
                                              {"Mode opératoire", Nombre(1)},
                                              {"Nombre d'aimants", Nombre(2)},
                                              {"Position de l'aimant", Nombre(1)},
                                              {"Position ID", Nombre(0x100 + id)},
                                              {"Status ID", Nombre(0x200 + id)},
                                              {"Driver canal", Texte(driver)}}));
  }

  essai::Messages messages;
  Ref<essai::Registre> registre = Crée<essai::Registre>();
  MachineSimulée machine{messages};
  Chassis chassis{machine.services};
  std::vector<std::pair<CarteRef, std::pair<const char*, const char*>>> cartes;
};

TEST_F(DesBusSimulés, FaitMarcherTousLesBus) {
  const FonctionRef règles = Bloc(Ajoute("1", "DrvPCI7841-2", "1"), "DrvPCI7841-2", {0, 1, 2}, 0);
  LitCanal(Le(règles, 0), "Règle MTS 1 aimant", "0000ABCD", 1);
  LitCanal(Le(règles, 1), "Règle MTS 3 aimants (lecture 2-1)", "0000ABCE", 2);
  LitCanal(Le(règles, 2), "Règle MTS 3 aimants (lecture 3)", "0000ABCE", 2);
  const FonctionRef première = Bloc(Ajoute("2", "DrvPCI7841", "2"), "DrvPCI7841", {1}, 0);
  const FonctionRef balance = Bloc(Ajoute("3", "Drv RS 232"), "Drv RS 232", {0}, 4);
  LitCanal(Le(balance, 0), "RS232 - Balance JADEVER", "", 0);
  const FonctionRef jauge = Bloc(Ajoute("4", ""), "Drv METRO RS232", {2}, 5);
  const FonctionRef jauges = Bloc(Ajoute("5", ""), "Drv METRO RS232 MUX 2/4/8", {1, 2}, 6);
  const FonctionRef palpeurs =
      Bloc(Ajoute("6", "Drv SOLARTRON LVDT"), "Drv SOLARTRON LVDT", {0, 1}, 0);
  LitCanal(Le(palpeurs, 0), "", "L0", 0);
  LitCanal(Le(palpeurs, 1), "", "L1", 0);
  for (const CanalRef& canal : *palpeurs->Canals()) canal->Driver(ENUM_DRIVER::DrvLvdtSolartron);
  // Both on port 90, since the amplifier's library opens one at a time.
  const FonctionRef spider = Bloc(Ajoute("7", "Spider V1", "5A"), "", {0, 1}, 0);
  const FonctionRef spider8 = Bloc(Ajoute("8", ""), "Drv RS232 - SPIDER", {0, 1}, 0);
  for (const auto& [carte, ligne] : cartes) essai::LitCarte(*carte, ligne.first, "", ligne.second);
  machine.Branche(chassis);
  for (const auto& [carte, ligne] : cartes) carte->Initialise();

  struct Suivi {
    const Canal* canal;
    double mini = 1e9, maxi = -1e9;
  };
  std::vector<Suivi> suivis;
  for (const auto& bloc : {règles, première, balance, jauge, jauges, palpeurs, spider, spider8}) {
    for (const CanalRef& canal : *bloc->Canals()) suivis.push_back({canal.Brut()});
  }
  for (int i = 1; i < 500; ++i) {
    machine.AvanceJusquA(0.02 * i);
    for (const auto& [carte, ligne] : cartes) carte->MetàJour();
    for (Suivi& suivi : suivis) {
      suivi.mini = std::min(suivi.mini, suivi.canal->ValeurCanal());
      suivi.maxi = std::max(suivi.maxi, suivi.canal->ValeurCanal());
    }
  }
  EXPECT_TRUE(registre->entrées.empty()) << registre->entrées.front().message;
  EXPECT_TRUE(messages.textes.empty());
  EXPECT_NEAR(Le(règles, 1).ValeurCanal(), 200'000, 2'000) << "between two magnets of one ruler";
  for (const Suivi& suivi : suivis) {
    EXPECT_GT(suivi.maxi, suivi.mini + 5) << suivi.canal->Key() << " moves";
  }
  EXPECT_NEAR(Le(règles, 0).ValeurCanal(), 200'000, 20'000);
  EXPECT_NEAR(Le(règles, 2).ValeurCanal(), 600'000, 24'000);
}

}  // namespace
}  // namespace zuma::sim
