// The texts that select a driver at each level. The demo frames name every driver of the table:
// here what they must not be taken for.
#include <gtest/gtest.h>

#include "boards/table_des_drivers.h"
#include "outils/arbre.h"

namespace zuma {
namespace {

TEST(LeRegistreDesDrivers, ReconnaîtUnTexteASonNiveauEtALaLettre) {
  const auto drivers = CréeLesDrivers();
  const struct {
    const char* texte;
    int carte, bloc, canal;
  } cas[] = {
      {"DrvModBus", 300, 300, 0},
      {"Drv_UMV4301_Modbus", 3001, 3001, 0},
      {"Variateur LS Modbus et soft K9", 3002, 3002, 0},
      {"DrvPCI 6208 V", 1002, 0, 0},
      {"DrvWDT01", 0, 40, 0},
      {"DrvPCL813_PCLD881", 0, 20, 0},
      {"DrvA826PG_DB16P", 0, 4, 0},
      {"Règle MTS Multimagnet", 0, 0, 220},
      {"drvmodbus", 0, 0, 0},
      {"DrvModBus ", 0, 0, 0},
      {"DrvAucun", 0, 0, 0},
      {"", 0, 0, 0},
  };
  for (const auto& c : cas) {
    EXPECT_EQ(static_cast<int>(drivers->DeCarte(c.texte).valeur), c.carte) << c.texte;
    EXPECT_EQ(static_cast<int>(drivers->DeFonction(c.texte).valeur), c.bloc) << c.texte;
    EXPECT_EQ(static_cast<int>(drivers->DeCanal(c.texte).valeur), c.canal) << c.texte;
  }
  EXPECT_EQ(&drivers->DeCarte(300), &kSansDriver);
  EXPECT_EQ(&drivers->DeCarte(Nul{}), &kSansDriver);
}

// A host's own rows stand beside those of the library, all of a table or none of them.
TEST(LeRegistreDesDrivers, PrendLesLignesDUnHôteOuLesRefuseToutes) {
  constexpr auto kMien = static_cast<ENUM_DRIVER>(90'001);
  const LigneDriver mien{
      .valeur = kMien, .nom = "MonDriver", .texteCarte = "Ma carte", .texteFonction = "Mon bloc"};
  const struct {
    const char* quoi;
    LigneDriver ligne;
    int numéro;
  } refus[] = {
      {"a value that is there", {.valeur = ENUM_DRIVER::DrvModBus, .nom = "Autre"}, 457},
      {"a text that is there", {.valeur = kMien, .nom = "A", .texteFonction = "DrvModBus"}, 457},
      {"another form", {.version = kVersionDesDrivers + 1, .valeur = kMien, .nom = "Autre"}, 5},
      {"no value", {.nom = "Autre"}, 5},
      {"no name", {.valeur = kMien}, 5},
  };
  for (const auto& c : refus) {
    SCOPED_TRACE(c.quoi);
    const auto drivers = CréeLesDrivers();
    const LigneDriver lignes[] = {
        {.valeur = static_cast<ENUM_DRIVER>(90'000), .nom = "Bon", .texteCanal = "Bon"}, c.ligne};
    try {
      drivers->Ajoute(lignes);
      ADD_FAILURE() << "taken";
    } catch (const Echec& échec) {
      EXPECT_EQ(échec.NuméroErreur(), c.numéro) << échec.Description();
    }
    EXPECT_EQ(&drivers->DeCanal("Bon"), &kSansDriver);
    EXPECT_EQ(drivers->Tous().size(), DriversDeZuma().size());
  }
  const auto drivers = CréeLesDrivers();
  drivers->Ajoute({&mien, 1});
  EXPECT_EQ(&drivers->DeCarte("Ma carte"), &mien);
  EXPECT_EQ(&drivers->DeFonction("Mon bloc"), &mien);
  EXPECT_EQ(&drivers->DeValeur(kMien), &mien);
}

// A frame whose host gave no driver tells so: it would stand there without a reading.
TEST(LeRegistreDesDrivers, ManqueAvecUneEntrée) {
  essai::Banc banc;
  banc.plateforme.drivers = nullptr;
  Carte carte(banc.plateforme);
  carte.ChargeErreur(banc.registre);
  carte.ParamètresDepuisBD(essai::UneLigne({{"Driver de la Carte", essai::Texte("DrvModBus")}}));
  ASSERT_EQ(banc.registre->entrées.size(), 1U);
  EXPECT_NE(banc.registre->entrées[0].message.find("91"), std::string::npos)
      << banc.registre->entrées[0].message;
}

}  // namespace
}  // namespace zuma
