// Faults of the simulated machine as a user plans them: each kind does what its name says, and the
// same seed gives the same run.
#include "host/pannes.h"

#include <gtest/gtest.h>

#include "host/chassis_en_marche.h"
#include "host/machine.h"
#include "outils/cas.h"
#include "outils/programme.h"
#include "sim/cartes_pci.h"
#include "sim/machine_simulee.h"

namespace zuma {
namespace {

using essai::Cas;
using essai::Fin;
using testing::IsSubstring;

class DesPannes : public essai::LeProgramme {
 protected:
  Fin Tourne(const std::string& chassis, const std::string& options) {
    return Lance("run " + base + " --sim --fast --seconds 4 --json --frame " + chassis + options);
  }
  const std::string base = Base();
};

TEST_F(DesPannes, FontCeQuEllesDisent) {
  for (const auto& [chassis, panne, code, texte] : Cas<const char*, std::string, int, const char*>{
           {"1", "bounce@2-3", 0, "l'entrée logique Porte fermée"},
           {"1", "dead:0x220@2-3", 0, "l'entrée logique Arrêt d'urgence, état détecté : actif"},
           {"1", "hang", 1, "TimeOut Watch dog"},
           {"1", "dead:boards@3", 0, "l'entrée logique Arrêt d'urgence"},
           {"3", "unplug:9", 1, "COM9 absent"},
           {"3", "deaf:can", 1, "initialiser le CAN"},
           {"3", "running:usb", 1, "Thumler : trouvé en marche"},
           {"4", "running", 1, "la machine tourne sans que ce programme l'ait mise en marche"},
           {"4", "deaf:13", 1, "'13,9600,N,8,1' non détecté"}}) {
    const Fin fin = Tourne(chassis, " --fault " + panne);
    EXPECT_EQ(fin.code, code) << panne;
    EXPECT_PRED_FORMAT2(IsSubstring, texte, fin.sortie + fin.erreur) << chassis << " " << panne;
  }
}

// A place is struck and its neighbour is not; a pulled PCI board is a refusal that is told.
TEST_F(DesPannes, FrappentLeurLieuSeul) {
  const Fin voisine = Tourne("1", " --fault bounce:0x2C0@2-3");
  EXPECT_EQ(voisine.code, 0) << voisine.erreur;
  EXPECT_PRED_FORMAT2(testing::IsNotSubstring, "l'entrée logique", voisine.sortie);

  sim::BibliothèquePCISimulée pci;
  sim::CartePCISimulée& carte = pci.Enfiche(BibliothèquePCI::kType9111, 0);
  const auto poignée = static_cast<std::uint16_t>(pci.Register_Card(BibliothèquePCI::kType9111, 0));
  const auto pannes = host::LitLesPannes("dead:boards@2-3", 0);
  std::uint32_t mot = 0;
  for (const auto& [secondes, lue] : {std::pair(1.0, true), std::pair(2.5, false)}) {
    pci.Applique(pannes, secondes);
    EXPECT_EQ(pci.DI_ReadPort(poignée, 0, mot) == 0, lue) << secondes;
    EXPECT_EQ(pci.DO_WritePort(poignée, 0, secondes < 2 ? 0x5U : 0U) == 0, lue) << secondes;
  }
  EXPECT_EQ(carte.bornes.sortiesLogiques & 0xFFFFU, 0x5U) << "its terminals stand";
}

TEST_F(DesPannes, SuiventLeurGraine) {
  const auto tourne = [&](const std::string& graine) {
    return Tourne("3", " --fault random --fault lose --start-anyway --seed " + graine).sortie;
  };
  const std::string première = tourne("7");
  EXPECT_EQ(tourne("7"), première);
  EXPECT_NE(tourne("8"), première);

  const auto tirées = host::LitLesPannes("random@2-30", 7);
  EXPECT_GT(tirées.size(), 5U);
  double dernière = 2;
  for (const sim::PannePrévue& panne : tirées) {
    EXPECT_TRUE(panne.début >= dernière && panne.fin > panne.début && panne.fin <= 30);
    dernière = panne.fin;
  }
}

// The clock of the day is wrong for a while; the time that passes is not.
TEST_F(DesPannes, RèglentLHeureDuJour) {
  const auto recueil = Crée<host::Recueil>();
  const auto machine = host::MachineSimulée(*recueil, host::Cadence::Libre);
  sim::MachineSimulée& jumelle = *machine->Jumelle();
  jumelle.pannes = host::LitLesPannes("clock:-7200@2-4", 0);
  for (const auto& [secondes, heure] : Cas<double, const char*>{
           {1, "08:00:01"}, {3, "06:00:03"}, {3.9, "06:00:03"}, {5, "08:00:05"}}) {
    EXPECT_NEAR(machine->AvanceJusquA(secondes), secondes, 1e-3);
    EXPECT_EQ(jumelle.horloge->TexteHeure(), heure);
  }
}

TEST_F(DesPannes, RefusentUnePanneMalDite) {
  for (const auto& [options, erreur] :
       Cas<std::string, const char*>{{"--sim --fault fire", "no such kind"},
                                     {"--sim --fault crc:lpt", "no such place \"lpt\""},
                                     {"--sim --fault dead:0xZZ", "no such place \"0xZZ\""},
                                     {"--sim --fault running@3", "found at the start"},
                                     {"--sim --fault clock:nan", "no such place \"nan\""},
                                     {"--sim --fault clock:inf", "no such place \"inf\""},
                                     {"--sim --fault bounce:9", "does not strike there"},
                                     {"--sim --fault garbage:can", "does not strike there"},
                                     {"--sim --fault clock:can", "does not strike there"},
                                     {"--sim --fault crc@soon", "unreadable time"},
                                     {"--sim --fault crc@4-2", "unreadable time"},
                                     {"--fault crc", "add --sim"},
                                     {"--seed 3", "add --sim"}}) {
    const Fin fin = Lance("run " + base + " --frame 3 --seconds 1 " + options);
    EXPECT_EQ(fin.code, 2) << options;
    EXPECT_PRED_FORMAT2(IsSubstring, erreur, fin.erreur) << options;
  }
}

}  // namespace
}  // namespace zuma
