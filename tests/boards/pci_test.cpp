// The PCI boards through boards, blocks and channels, against the twin of their library.
#include <gtest/gtest.h>

#include "boards/pci_9111_hr.h"
#include "outils/banc_instrument.h"
#include "outils/cas.h"
#include "sim/cartes_pci.h"

namespace zuma {
namespace {

using essai::Cas;
using Valeurs = std::vector<double>;

constexpr double kPointsParVolt = 6553.6;

class UneCartePCI : public testing::Test, public essai::BancInstrument {
 public:
  UneCartePCI() { plateforme.pci = &bibliothèque; }
  ~UneCartePCI() override { chassis.Cartes({}); }
  // A block of the board, started.
  FonctionRef Monte(const char* driver, const char* type,
                    const std::vector<std::int32_t>& numéros) {
    const FonctionRef bloc = Ajoute(type, numéros, {{"Driver", driver}});
    Démarre("DrvPCI9111HR", "", "2");
    return bloc;
  }
  FonctionRef Sorties(const std::vector<std::int32_t>& numéros) {
    return Monte("DrvPCI9111HR/Vorlanex SL", "Sortie Logique", numéros);
  }

  sim::BibliothèquePCISimulée bibliothèque;
  sim::CartePCISimulée& jumelle = bibliothèque.Enfiche(BibliothèquePCI::kType9111, 2);
  std::uint32_t& lignes = jumelle.bornes.sortiesLogiques;
};

TEST_F(UneCartePCI, DonneSaPoignéeASesBlocsEtRedémarreSousSonNuméro) {
  const FonctionRef bloc = Sorties({4});
  const std::int32_t première = carte.Adresse();
  EXPECT_NE(première, 2);
  EXPECT_EQ(bloc->Adresse(), première);
  EXPECT_EQ(Le(bloc, 4).Adresse(), première);
  Le(bloc, 4).ValeurCanal(kVrai);
  bloc->MetàJour();
  EXPECT_EQ(lignes, 0x10U);
  carte.Initialise();
  EXPECT_NE(carte.Adresse(), première);
  EXPECT_EQ(lignes, 0U) << "the board is found, and its outputs cleared";
  lignes = 0x10;  // by another program
  bloc->Initialise();
  EXPECT_EQ(lignes, 0U) << "the word already held goes out at a start";
  EXPECT_TRUE(registre->entrées.empty());
}

TEST_F(UneCartePCI, ChercheSonCalibreEtDonneLesMêmesPoints) {
  const FonctionRef bloc = Monte("DrvPCI9111HR/Vorlanex EA", "Entrée Analogique", {3, 16});
  EXPECT_TRUE(registre->Contient("Voie 16 absente de la carte, qui a les voies 0 à 15"));
  Canal& canal = Le(bloc, 3);
  canal.NbLecture(2);
  double& volts = jumelle.bornes.entréesAnalogiques[3];
  constexpr double kCode = 10.0 / 32768;  // volts, range 1
  const std::tuple<double, int, int> cas[] = {
      {16284 * kCode, 1, 1},     {16283 * kCode, 1, 2}, {32668 * kCode / 2, 2, 2},
      {32669 * kCode / 2, 2, 1}, {-10, 5, 1},           {-0.01, 9, 5}};
  for (const auto& [entrée, départ, arrivée] : cas) {
    canal.Gain(départ);
    volts = entrée;
    bloc->MetàJour();
    EXPECT_EQ(canal.Gain(), arrivée) << entrée;
    EXPECT_NEAR(canal.ValeurCanal(), entrée * kPointsParVolt, 1) << entrée;
  }
  bibliothèque.refuseTout = true;
  volts = 2;
  bloc->MetàJour();
  EXPECT_NEAR(canal.ValeurCanal(), -0.01 * kPointsParVolt, 1) << "a failed call gives no value";
  bibliothèque.refuseTout = false;
  bibliothèque.refus = 0;
  PCI_9111_HR pilote({plateforme, timer}, static_cast<std::uint16_t>(carte.Adresse()));
  for (const auto& [départ, lectures] : Cas<std::int16_t, std::int16_t>{{0, 0}, {9, 3}}) {
    std::int16_t gain = départ;
    EXPECT_NEAR(pilote.LitAnalogique(3, gain, lectures), 6553.6, 0.5) << lectures;
  }
  EXPECT_EQ(bibliothèque.refus, 0) << "no range but 1 to 5";
}

TEST_F(UneCartePCI, LitLesEntréesLogiquesDesDeuxPorts) {
  const FonctionRef bloc = Monte("DrvPCI9111HR/Vorlanex EL", "Entrée Logique", {0, 15, 16, 19, 20});
  EXPECT_TRUE(registre->Contient("Voie 20 absente de la carte, qui a les voies 0 à 19"));
  jumelle.bornes.entréesLogiques = 0x18000;
  bloc->MetàJour();
  EXPECT_EQ(Lues(bloc), (Valeurs{0, -1, -1, 0, 0}));
  jumelle.bornes.entréesLogiques = 0x80001;
  for (const CanalRef& canal : *bloc->Canals()) canal->MetàJour();
  EXPECT_EQ(Lues(bloc), (Valeurs{-1, 0, 0, -1, 0}));
  // A read that is refused opens the contacts, ages, and is told.
  registre->entrées.clear();
  jumelle.pannes.morte = true;
  for (const bool parBloc : {true, false}) {
    plateforme.heureDePasse += 10;
    if (parBloc) {
      bloc->MetàJour();
    } else {
      Le(bloc, 0).MetàJour();
    }
    EXPECT_EQ(Lues(bloc), (Valeurs{0, 0, 0, 0, 0}));
    EXPECT_TRUE(Le(bloc, 0).EstVieux());
    EXPECT_TRUE(registre->Contient("Lecture des entrées logiques refusée par la carte"));
    registre->entrées.clear();
  }
  jumelle.pannes.morte = false;
  bloc->MetàJour();
  EXPECT_EQ(Lues(bloc), (Valeurs{-1, 0, 0, -1, 0}));
  EXPECT_FALSE(Le(bloc, 0).EstVieux());
}

// Whatever came between, a word that the board does not hold goes out: a stop is such a word.
TEST_F(UneCartePCI, NeSauteQuUnMotQuElleADéjà) {
  const FonctionRef bloc = Sorties({3, 16, 19, 21});
  const auto écrit = [&](double niveau, int portMort) {
    for (const std::int32_t numéro : {3, 19, 21}) Le(bloc, numéro).ValeurCanal(niveau);
    jumelle.portMort = portMort;
    bloc->MetàJour();
    return lignes;
  };
  jumelle.écritures = 0;
  for (int fois = 0; fois < 2; ++fois) EXPECT_EQ(écrit(kVrai, -1), 0x80008U);
  EXPECT_EQ(jumelle.écritures, 2) << "one pair of ports";
  EXPECT_EQ(jumelle.motsEcrits, (std::array<std::uint32_t, 2>{0x200008, 0x28}));
  Le(bloc, 16).ValeurCanal(kVrai);
  Le(bloc, 16).MetàJour();  // a single line
  EXPECT_EQ(lignes, 0x90008U);
  Le(bloc, 16).ValeurCanal(0);
  bloc->MetàJour();
  EXPECT_EQ(lignes, 0x80008U) << "the word that the block wrote last, once more";
  EXPECT_EQ(écrit(0, 1), 0x80000U);
  EXPECT_EQ(écrit(0, -1), 0U) << "a stop that was refused, by one port even, is written again";
  EXPECT_EQ(écrit(kVrai, 1), 8U);
  EXPECT_EQ(écrit(0, -1), 0U) << "though the stop before it was taken whole";
  // Pulled and put back, the board has lost a word that the driver takes for held.
  lignes = 8;
  EXPECT_EQ(écrit(0, -1), 8U) << "no stop: the word is skipped";
  chassis.TimerExact(horloge);
  chassis.DéclencheAU();
  EXPECT_EQ(lignes, 0U);
}

TEST_F(UneCartePCI, EcritSonUniqueSortieAnalogique) {
  Canal& canal = Le(Monte("DrvPCI9111HR/Vorlanex SA", "Sortie Analogique", {3}), 3);
  for (const auto& [valeur, polarité, volts] : Cas<double, std::uint16_t, double>{
           {2047, 1, 9.9951}, {2048, 1, -10}, {-512, 1, -2.5}, {1024, 0, 2.5}, {3072, 0, 7.5}}) {
    plateforme.réglages.polaritéPCI9111 = polarité;
    canal.ValeurCanal(valeur);
    canal.MetàJour();
    EXPECT_NEAR(jumelle.bornes.sortiesAnalogiques[0], volts, 1e-4) << valeur;
  }
}

TEST_F(UneCartePCI, DitSonAbsenceOuSeRemetAZéro) {
  const FonctionRef bloc =
      Ajoute("Sortie Analogique", {1, 7}, {{"Driver", "DrvPCI6208V/Vorlanex SA"}});
  Démarre("DrvPCI9111HR", "", "3");
  EXPECT_TRUE(registre->Contient("Carte PCI 9111 n° 3 absente (réponse -9)"));
  Démarre("DrvPCI 6208 V", "", "3");
  EXPECT_EQ(bloc->Adresse(), -9);

  auto& sorties = bibliothèque.Enfiche(BibliothèquePCI::kType6208V, 3).bornes.sortiesAnalogiques;
  sorties.fill(4);
  carte.Initialise();  // the board was put in
  EXPECT_EQ(messages.textes, std::vector<std::string>{"Init 6208V error : -9"});
  for (std::size_t i = 0; i < 8; ++i) EXPECT_EQ(sorties[i], i == 6 ? 4 : 0) << i;
  Le(bloc, 7).ValeurCanal(-16384);
  bloc->MetàJour();
  EXPECT_EQ(sorties[7], -5);
}

}  // namespace
}  // namespace zuma
