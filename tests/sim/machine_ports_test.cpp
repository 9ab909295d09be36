// The twins of a frame's port-mapped boards, seen from the channels.
#include "sim/machine_ports.h"

#include <gtest/gtest.h>

#include "outils/banc_instrument.h"
#include "outils/cas.h"
#include "sim/compteurs_virtuels.h"

namespace zuma::sim {
namespace {

class UneMachine : public testing::Test, protected essai::BancInstrument {
 protected:
  UneMachine() {
    plateforme.ports = &machine.Bus();
    plateforme.compteurs = &compteurs;
  }
  ~UneMachine() override { chassis.Cartes({}); }
  // A started board with one block, its channels numbered so that no rank equals a number.
  FonctionRef Monte(const char* driver, const char* type, bool parFonction = true,
                    const char* adresse = nullptr) {
    const std::string libre = std::to_string(20 + chassis.Cartes()->Count()) + "0";
    Carte& une = AjouteCarte(libre);
    const FonctionRef bloc = AjouteSur(
        une, type, {1, 2, 5}, {{"Driver", driver}, {"Mise à Jour par Fonction", parFonction}});
    const bool pet = std::string_view(driver).starts_with("DrvPET");
    essai::LitCarte(une, pet ? "DrvPET48DIO" : "", "", adresse ? adresse : libre.c_str());
    machine.Branche(chassis);
    une.Initialise();
    return bloc;
  }
  Borne La(const CanalRef& canal) const { return machine.BorneDe(*canal).value(); }

  CompteursVirtuels compteurs{*horloge};
  MachinePorts machine{*horloge};
};

TEST_F(UneMachine, DonneÀChaqueCanalSaBorneEtNulleAutre) {
  const auto essaie = [&](const char* type, const std::vector<const char*>& drivers,
                          bool parFonction, auto choisit, auto juste) {
    for (const char* driver : drivers) {
      const FonctionRef bloc = Monte(driver, type, parFonction);
      for (const CanalRef& choisi : *bloc->Canals()) {
        for (const CanalRef& canal : *bloc->Canals()) choisit(canal, canal == choisi);
        bloc->MetàJour();
        for (const CanalRef& canal : *bloc->Canals()) {
          EXPECT_TRUE(juste(canal, canal == choisi)) << driver << parFonction;
        }
      }
    }
  };
  const auto ferme = [&](const CanalRef& c, bool oui) { La(c).EntréeLogique(oui); };
  const auto lit = [](const CanalRef& c, bool oui) { return c->ValeurCanal() == (oui ? -1 : 0); };
  const char* type = "Entrée Logique";
  essaie(type, {"DrvPET48DIO_TB24P", "DrvPET48DIO_PCLD782B"}, false, ferme, lit);
  essaie(type,
         {"DrvPET48DIO_TB24P", "DrvPET48DIO_PCLD782B", "DrvPCL731_PCLD782B", "DrvACL8316_ACLD9182",
          "DrvA826PG_DB16P", "DrvACL6126_ACLD9182"},
         true, ferme, lit);
  essaie(
      "Sortie Logique",
      {"DrvPET48DIO_TB24R", "DrvPET48DIO_PCLD7225", "DrvPCL731_PCLD7225", "DrvACL8316_ACLD9185",
       "DrvA826PG_DB16R", "DrvACL6126_ACLD9185"},
      true, [](const CanalRef& c, bool oui) { c->ValeurCanal(oui ? kVrai : 0); },
      [&](const CanalRef& c, bool oui) { return La(c).SortieLogique() == oui; });
  for (const bool parFonction : {false, true}) {
    essaie(
        "Entrée Analogique",
        {"DrvACL8316_ACLD8125", "DrvA826PG_DB8225", "DrvACL8113", "DrvPCL813_PCLD881"}, parFonction,
        [&](const CanalRef& c, bool oui) { La(c).TensionEntrée(oui ? 4.5 : 1); },
        [](const CanalRef& c, bool oui) {
          return std::abs(c->ValeurCanal() - PointsPourVolts(oui ? 4.5 : 1)) < 16;
        });
  }
  EXPECT_TRUE(registre->entrées.empty());
}

// Boards of few ports stand close together on a real bus.
TEST_F(UneMachine, DistingueDesCartesVoisines) {
  for (const auto& [driver, adresse, voisine] : essai::Cas<const char*, const char*, const char*>{
           {"DrvPCL731_PCLD782B", "400", "408"}, {"DrvPET48DIO_TB24P", "410", "412"}}) {
    const FonctionRef un = Monte(driver, "Entrée Logique", true, adresse);
    const FonctionRef deux = Monte(driver, "Entrée Logique", true, voisine);
    La(deux->Canals()->Item(essai::CléDuCanal(2))).EntréeLogique(true);
    un->MetàJour();
    deux->MetàJour();
    EXPECT_EQ(Le(deux, 2).ValeurCanal(), kVrai) << driver;
    EXPECT_EQ(Le(un, 2).ValeurCanal(), 0) << driver;
    EXPECT_EQ(Le(deux, 1).ValeurCanal(), 0) << driver;
  }
}

TEST_F(UneMachine, NeDonnePasDeBorneAUnCanalQuiNEnAPas) {
  (void)Monte("DrvACL8316_ACLD9185", "Sortie Logique", true, "400");
  for (const auto& [driver, adresse, présente] :
       essai::Cas<ENUM_DRIVER, int, bool>{{ENUM_DRIVER::DrvRègleMTS1Aimant, 0x400, false},
                                          {ENUM_DRIVER::DrvACL8316, 0x400, true},
                                          {ENUM_DRIVER::DrvACL8316, 0x420, false}}) {
    Canal ailleurs(plateforme);
    ailleurs.Driver(driver);
    ailleurs.Adresse(adresse);
    EXPECT_EQ(machine.BorneDe(ailleurs).has_value(), présente);
  }
}

}  // namespace
}  // namespace zuma::sim
