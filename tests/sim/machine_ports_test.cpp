// The twins of a frame's port-mapped boards, seen from the channels.
#include "sim/machine_ports.h"

#include <gtest/gtest.h>

#include "outils/arbre.h"
#include "sim/compteurs_virtuels.h"

namespace zuma::sim {
namespace {

using essai::Texte;

class UneMachine : public testing::Test, protected essai::Banc {
 protected:
  UneMachine() {
    plateforme.ports = &machine.Bus();
    plateforme.compteurs = &compteurs;
    plateforme.horloge = horloge.Brut();
  }
  // A board with one block, its channels numbered so that no rank equals a number.
  FonctionRef Ajoute(const char* adresse, const char* driver, const char* type, bool parFonction) {
    const CarteRef carte = chassis.Cartes()->Add(adresse);
    carte->TimerExact(horloge);
    carte->ChargeErreur(registre);
    const FonctionRef bloc = essai::AjouteBloc(*carte, "1",
                                               {{"Driver", Texte(driver)},
                                                {"Type de Fonction", Texte(type)},
                                                {"Nom de la Fonction", Texte("Bloc")},
                                                {"Mise à Jour par Fonction", Valeur(parFonction)}},
                                               {1, 2, 5}, horloge, registre);
    const bool pet = std::string_view(driver).starts_with("DrvPET");
    essai::LitCarte(*carte, pet ? "DrvPET48DIO" : "", "", adresse);
    return bloc;
  }
  std::string Suivante() { return std::to_string(++dernière) + "0"; }
  void Démarre() {
    machine.Branche(chassis);
    for (const CarteRef& carte : *chassis.Cartes()) carte->Initialise();
  }
  Borne La(const CanalRef& canal) const { return machine.BorneDe(*canal).value(); }

  Ref<HorlogeVirtuelle> horloge = Crée<HorlogeVirtuelle>(1);
  CompteursVirtuels compteurs{*horloge};
  MachinePorts machine{*horloge};
  Chassis chassis{plateforme};
  int dernière = 20;  // address of the last board, without its last digit
};

struct Cas {
  const char* driver;
  bool parFonction = true;
};

TEST_F(UneMachine, MetUneEntréeAVraiPourSonCanalSeul) {
  const Cas tous[] = {
      {"DrvPCL731_PCLD782B"},   {"DrvPET48DIO_TB24P"},           {"DrvPET48DIO_TB24P", false},
      {"DrvPET48DIO_PCLD782B"}, {"DrvPET48DIO_PCLD782B", false}, {"DrvACL8316_ACLD9182"},
      {"DrvA826PG_DB16P"},      {"DrvACL6126_ACLD9182"}};
  std::vector<FonctionRef> blocs;
  for (const Cas& c : tous) {
    blocs.push_back(Ajoute(Suivante().c_str(), c.driver, "Entrée Logique", c.parFonction));
  }
  Démarre();
  for (const FonctionRef& bloc : blocs) {
    for (const CanalRef& vrai : *bloc->Canals()) {
      for (const CanalRef& canal : *bloc->Canals()) {
        La(canal).EntréeLogique(canal.Brut() == vrai.Brut());
      }
      bloc->MetàJour();
      for (const CanalRef& canal : *bloc->Canals()) {
        EXPECT_EQ(canal->ValeurCanal(), canal.Brut() == vrai.Brut() ? kVrai : 0)
            << static_cast<int>(bloc->Driver_enm()) << " " << canal->NuméroCanal();
      }
    }
  }
  EXPECT_TRUE(registre->entrées.empty());
}

TEST_F(UneMachine, MontreLEtatDUneSortieDeBloc) {
  std::vector<FonctionRef> blocs;
  for (const char* driver : {"DrvPCL731_PCLD7225", "DrvPET48DIO_TB24R", "DrvPET48DIO_PCLD7225",
                             "DrvACL8316_ACLD9185", "DrvA826PG_DB16R", "DrvACL6126_ACLD9185"}) {
    blocs.push_back(Ajoute(Suivante().c_str(), driver, "Sortie Logique", true));
  }
  Démarre();
  for (const FonctionRef& bloc : blocs) {
    for (const CanalRef& canal : *bloc->Canals()) {
      canal->ValeurCanal(canal->NuméroCanal() == 2 ? kVrai : 0);
    }
    bloc->MetàJour();
    for (const CanalRef& canal : *bloc->Canals()) {
      EXPECT_EQ(La(canal).SortieLogique(), canal->NuméroCanal() == 2)
          << static_cast<int>(bloc->Driver_enm());
    }
  }
  EXPECT_TRUE(registre->entrées.empty());
}

TEST_F(UneMachine, DonneLesPointsDUneTension) {
  const Cas tous[] = {{"DrvACL8316_ACLD8125"},
                      {"DrvACL8316_ACLD8125", false},
                      {"DrvA826PG_DB8225"},
                      {"DrvACL8113"},
                      {"DrvPCL813_PCLD881"}};
  std::vector<FonctionRef> blocs;
  for (const Cas& c : tous) {
    blocs.push_back(Ajoute(Suivante().c_str(), c.driver, "Entrée Analogique", c.parFonction));
  }
  Démarre();
  for (const FonctionRef& bloc : blocs) {
    for (const CanalRef& canal : *bloc->Canals()) {
      La(canal).TensionEntrée(1.5 * canal->NuméroCanal());
    }
    bloc->MetàJour();
    for (const CanalRef& canal : *bloc->Canals()) {
      EXPECT_NEAR(canal->ValeurCanal(), PointsPourVolts(1.5 * canal->NuméroCanal()), 16)
          << static_cast<int>(bloc->Driver_enm());
    }
  }
  EXPECT_TRUE(registre->entrées.empty());
}

// Boards of few ports stand close together on a real bus.
TEST_F(UneMachine, DistingueDesCartesVoisines) {
  const struct {
    const char* driver;
    const char* adresses[2];
  } cas[] = {{"DrvPCL731_PCLD782B", {"300", "308"}}, {"DrvPET48DIO_TB24P", {"310", "312"}}};
  for (const auto& c : cas) {
    const FonctionRef un = Ajoute(c.adresses[0], c.driver, "Entrée Logique", true);
    const FonctionRef deux = Ajoute(c.adresses[1], c.driver, "Entrée Logique", true);
    Démarre();
    const CanalRef canal = deux->Canals()->Item(essai::CléDuCanal(2));
    La(canal).EntréeLogique(true);
    un->MetàJour();
    deux->MetàJour();
    EXPECT_EQ(canal->ValeurCanal(), kVrai) << c.driver;
    EXPECT_EQ(un->Canals()->Item(essai::CléDuCanal(2))->ValeurCanal(), 0) << c.driver;
    EXPECT_EQ(deux->Canals()->Item(essai::CléDuCanal(1))->ValeurCanal(), 0) << c.driver;
  }
}

TEST_F(UneMachine, NeDonnePasDeBorneAUnCanalQuiNEnAPas) {
  const FonctionRef bloc = Ajoute("220", "DrvACL8316_ACLD9185", "Sortie Logique", true);
  Démarre();
  Canal ailleurs(plateforme);
  ailleurs.Driver(ENUM_DRIVER::DrvRègleMTS1Aimant);
  ailleurs.Adresse(0x220);
  EXPECT_FALSE(machine.BorneDe(ailleurs).has_value());
  ailleurs.Driver(ENUM_DRIVER::DrvACL8316);
  EXPECT_TRUE(machine.BorneDe(ailleurs).has_value());
  ailleurs.Adresse(0x240);
  EXPECT_FALSE(machine.BorneDe(ailleurs).has_value());
}

}  // namespace
}  // namespace zuma::sim
