// The PCI boards through boards, blocks and channels, against the twin of their library.
#include <gtest/gtest.h>

#include "boards/pci_9111_hr.h"
#include "outils/arbre.h"
#include "sim/machine_simulee.h"

namespace zuma {
namespace {

using essai::Texte;

constexpr double kPointsParVolt = 6553.6;
constexpr auto k9111 = BibliothèquePCI::kType9111;
constexpr auto k6208 = BibliothèquePCI::kType6208V;

class UneCartePCI : public testing::Test, public essai::Banc {
 public:
  UneCartePCI() { plateforme.pci = &bibliothèque; }
  FonctionRef Bloc(Carte& de, const char* driver, const char* type,
                   const std::vector<std::int32_t>& numéros) {
    de.TimerExact(timer);
    de.ChargeErreur(registre);
    return essai::AjouteBloc(de, driver,
                             {{"Driver", Texte(driver)},
                              {"Type de Fonction", Texte(type)},
                              {"Nom de la Fonction", Texte("Bloc")}},
                             numéros, timer, registre);
  }
  void Démarre(const char* driver) {
    essai::LitCarte(carte, driver, "", "2");
    carte.Initialise();
  }
  static Canal& Le(const FonctionRef& bloc, std::int32_t numéro) {
    return *bloc->Canals()->Item(essai::CléDuCanal(numéro));
  }
  static std::vector<double> Valeurs(const FonctionRef& bloc) {
    std::vector<double> valeurs;
    for (const CanalRef& canal : *bloc->Canals()) valeurs.push_back(canal->ValeurCanal());
    return valeurs;
  }

  sim::BibliothèquePCISimulée bibliothèque;
  Carte carte{plateforme};
};

TEST_F(UneCartePCI, DonneSaPoignéeASesBlocsEtRedémarreSousSonNuméro) {
  sim::CartePCISimulée& jumelle = bibliothèque.Enfiche(k9111, 2);
  const FonctionRef bloc = Bloc(carte, "DrvPCI9111HR/Vorlanex SL", "Sortie Logique", {4});
  Démarre("DrvPCI9111HR");
  const std::int32_t première = carte.Adresse();
  EXPECT_NE(première, 2);
  EXPECT_EQ(bloc->Adresse(), première);
  EXPECT_EQ(Le(bloc, 4).Adresse(), première);
  Le(bloc, 4).ValeurCanal(kVrai);
  bloc->MetàJour();
  EXPECT_EQ(jumelle.bornes.sortiesLogiques, 0x10U);
  carte.Initialise();
  EXPECT_NE(carte.Adresse(), première);
  EXPECT_EQ(jumelle.bornes.sortiesLogiques, 0U) << "the board is found, and its outputs cleared";
  jumelle.bornes.sortiesLogiques = 0x10;  // by another program
  bloc->Initialise();
  EXPECT_EQ(jumelle.bornes.sortiesLogiques, 0U) << "the word already held goes out at a start";
  EXPECT_TRUE(registre->entrées.empty());
}

TEST_F(UneCartePCI, ChercheSonCalibreEtDonneLesMêmesPoints) {
  sim::CartePCISimulée& jumelle = bibliothèque.Enfiche(k9111, 2);
  const FonctionRef bloc = Bloc(carte, "DrvPCI9111HR/Vorlanex EA", "Entrée Analogique", {3, 16});
  Démarre("DrvPCI9111HR");
  EXPECT_TRUE(registre->Contient("Voie 16 absente de la carte, qui a les voies 0 à 15"));
  registre->entrées.clear();
  Canal& canal = Le(bloc, 3);
  canal.NbLecture(2);
  constexpr double kVoltsParCode = 10.0 / 32768;  // code 1
  const struct {
    double volts;
    std::int16_t départ, arrivée;
  } cas[] = {{16284 * kVoltsParCode, 1, 1},
             {16283 * kVoltsParCode, 1, 2},
             {32668 * kVoltsParCode / 2, 2, 2},
             {32669 * kVoltsParCode / 2, 2, 1},
             {-10, 5, 1},
             {-0.01, 9, 5}};
  for (const auto& c : cas) {
    canal.Gain(Valeur(std::int32_t{c.départ}));
    jumelle.bornes.entréesAnalogiques[3] = c.volts;
    bloc->MetàJour();
    EXPECT_EQ(canal.Gain(), c.arrivée) << c.volts;
    EXPECT_NEAR(canal.ValeurCanal(), c.volts * kPointsParVolt, 1) << c.volts;
  }
  bibliothèque.refuseTout = true;
  const double avant = canal.ValeurCanal();
  bloc->MetàJour();
  EXPECT_EQ(canal.ValeurCanal(), avant) << "a call that fails gives no value";
  bibliothèque.refuseTout = false;
  jumelle.bornes.entréesAnalogiques[3] = 2;
  bibliothèque.refus = 0;
  PCI_9111_HR pilote({plateforme, timer}, static_cast<std::uint16_t>(carte.Adresse()));
  for (const auto& [départ, lectures] :
       std::vector<std::pair<std::int16_t, std::int16_t>>{{0, 0}, {9, 3}}) {
    std::int16_t gain = départ;
    EXPECT_NEAR(pilote.LitAnalogique(3, gain, lectures), 6553.6, 0.5) << lectures;
  }
  EXPECT_EQ(bibliothèque.refus, 0) << "no range but 1 to 5";
}

TEST_F(UneCartePCI, LitLesEntréesLogiquesDesDeuxPorts) {
  sim::CartePCISimulée& jumelle = bibliothèque.Enfiche(k9111, 2);
  const FonctionRef bloc =
      Bloc(carte, "DrvPCI9111HR/Vorlanex EL", "Entrée Logique", {0, 15, 16, 19, 20});
  Démarre("DrvPCI9111HR");
  EXPECT_TRUE(registre->Contient("Voie 20 absente de la carte, qui a les voies 0 à 19"));
  jumelle.bornes.entréesLogiques = 0x18000;
  bloc->MetàJour();
  EXPECT_EQ(Valeurs(bloc), (std::vector<double>{0, -1, -1, 0, 0}));
  jumelle.bornes.entréesLogiques = 0x80001;
  for (const CanalRef& canal : *bloc->Canals()) canal->MetàJour();
  EXPECT_EQ(Valeurs(bloc), (std::vector<double>{-1, 0, 0, -1, 0}));
}

// Whatever came between, a word that the board does not hold goes out: a stop is such a word.
TEST_F(UneCartePCI, NeSauteQuUnMotQuElleADéjà) {
  sim::CartePCISimulée& jumelle = bibliothèque.Enfiche(k9111, 2);
  const FonctionRef bloc =
      Bloc(carte, "DrvPCI9111HR/Vorlanex SL", "Sortie Logique", {3, 16, 19, 21});
  Démarre("DrvPCI9111HR");
  const std::uint32_t& lignes = jumelle.bornes.sortiesLogiques;
  for (const std::int32_t numéro : {3, 19, 21}) Le(bloc, numéro).ValeurCanal(kVrai);
  jumelle.écritures = 0;
  bloc->MetàJour();
  bloc->MetàJour();
  EXPECT_EQ(jumelle.écritures, 2) << "one pair of ports";
  EXPECT_EQ(lignes, 0x80008U);
  EXPECT_EQ(jumelle.motsEcrits, (std::array<std::uint32_t, 2>{0x200008, 0x28}));

  Le(bloc, 16).ValeurCanal(kVrai);
  Le(bloc, 16).MetàJour();  // a single line
  EXPECT_EQ(lignes, 0x90008U);
  Le(bloc, 16).ValeurCanal(0);
  bloc->MetàJour();
  EXPECT_EQ(lignes, 0x80008U) << "the word that the block wrote last, once more";

  const auto écrit = [&](double niveau, int portMort) {
    for (const std::int32_t numéro : {3, 19, 21}) Le(bloc, numéro).ValeurCanal(niveau);
    jumelle.portMort = portMort;
    bloc->MetàJour();
    return lignes;
  };
  EXPECT_EQ(écrit(0, 1), 0x80000U);
  EXPECT_EQ(écrit(0, -1), 0U) << "a stop that was refused, by one port even, is written again";
  EXPECT_EQ(écrit(kVrai, 1), 8U);
  EXPECT_EQ(écrit(0, -1), 0U) << "though the stop before it was taken whole";
}

// Pulled and put back, the board has lost a word that the driver takes for held.
TEST_F(UneCartePCI, ReçoitChaqueArrêtMêmeSansChangement) {
  sim::CartePCISimulée& jumelle = bibliothèque.Enfiche(k9111, 2);
  Chassis chassis(plateforme);
  chassis.ChargeErreur(registre);
  chassis.TimerExact(timer);
  const CarteRef sorties = chassis.Cartes()->Add("1");
  const FonctionRef bloc = Bloc(*sorties, "DrvPCI9111HR/Vorlanex SL", "Sortie Logique", {3, 4});
  essai::LitCarte(*sorties, "DrvPCI9111HR", "", "2");
  sorties->Initialise();
  Le(bloc, 4).ValeurCanal(kVrai);  // energised at rest
  bloc->MetàJour();
  jumelle.bornes.sortiesLogiques = 8;
  chassis.DéclencheAU();
  EXPECT_EQ(jumelle.bornes.sortiesLogiques, 0x10U);
  jumelle.bornes.sortiesLogiques = 8;
  bloc->MetàJour();
  EXPECT_EQ(jumelle.bornes.sortiesLogiques, 8U) << "no stop: the word is skipped as ever";
  EXPECT_TRUE(registre->entrées.empty());
}

TEST_F(UneCartePCI, EcritSonUniqueSortieAnalogique) {
  sim::CartePCISimulée& jumelle = bibliothèque.Enfiche(k9111, 2);
  const FonctionRef bloc = Bloc(carte, "DrvPCI9111HR/Vorlanex SA", "Sortie Analogique", {3});
  Démarre("DrvPCI9111HR");
  const auto volts = [&](double valeur, std::uint16_t polarité) {
    plateforme.réglages.polaritéPCI9111 = polarité;
    Le(bloc, 3).ValeurCanal(valeur);
    Le(bloc, 3).MetàJour();
    return jumelle.bornes.sortiesAnalogiques[0];
  };
  EXPECT_NEAR(volts(2047, 1), 9.9951, 1e-4);
  EXPECT_EQ(volts(2048, 1), -10);
  EXPECT_EQ(volts(-512, 1), -2.5);
  EXPECT_EQ(volts(1024, 0), 2.5);
  EXPECT_EQ(volts(3072, 0), 7.5);
}

TEST_F(UneCartePCI, DitSonAbsenceOuSeRemetAZéro) {
  const FonctionRef bloc = Bloc(carte, "DrvPCI6208V/Vorlanex SA", "Sortie Analogique", {1, 7});
  Démarre("DrvPCI9111HR");
  EXPECT_TRUE(registre->Contient("Carte PCI 9111 n° 2 absente (réponse -9)"));
  Démarre("DrvPCI 6208 V");
  ASSERT_EQ(messages.textes, std::vector<std::string>{"Init 6208V error : -9"});
  EXPECT_EQ(bloc->Adresse(), -9);

  sim::CartePCISimulée& jumelle = bibliothèque.Enfiche(k6208, 2);
  jumelle.bornes.sortiesAnalogiques.fill(4);
  carte.Initialise();  // the board was put in
  EXPECT_EQ(messages.textes.size(), 1U);
  for (std::size_t i = 0; i < 8; ++i) {
    EXPECT_EQ(jumelle.bornes.sortiesAnalogiques[i], i == 6 ? 4 : 0) << i;
  }
  Le(bloc, 7).ValeurCanal(-16384);
  bloc->MetàJour();
  EXPECT_EQ(jumelle.bornes.sortiesAnalogiques[7], -5);
}

// A frame plugged by the simulated machine: the terminals are known before and after the start.
TEST_F(UneCartePCI, MontreSesBornesEtBougeSurLaMachineSimulée) {
  sim::MachineSimulée machine(messages);
  Chassis chassis(machine.services);
  const CarteRef mesures = chassis.Cartes()->Add("1");
  const CarteRef codeurs = chassis.Cartes()->Add("2");
  const Canal& mesure = Le(Bloc(*mesures, "DrvPCI9111HR/Vorlanex EA", "Entrée Analogique", {5}), 5);
  const Canal& axe = Le(Bloc(*codeurs, "DrvIK121", "Entrée Analogique", {2}), 2);
  essai::LitCarte(*mesures, "DrvPCI9111HR", "", "1");
  essai::LitCarte(*codeurs, "", "", "345");
  machine.Branche(chassis);
  for (const CarteRef& une : *chassis.Cartes()) une->Initialise();
  for (const double secondes : {1.0, 3.0}) {
    machine.AvanceJusquA(secondes);
    for (const CarteRef& une : *chassis.Cartes()) une->MetàJour();
    const double volts = machine.BorneDe(mesure).value().DeLaCarte().entréesAnalogiques[5];
    EXPECT_NEAR(mesure.ValeurCanal(), sim::PointsPourVolts(volts), 2);
    const double codeur = machine.BorneDe(axe).value().DeLaCarte().entréesAnalogiques[1];
    EXPECT_NEAR(axe.ValeurCanal(), -10'000 * codeur, 1);
    EXPECT_GE(std::min(volts, codeur), 1) << "the terminals are set";
  }
  EXPECT_TRUE(registre->entrées.empty());
}

}  // namespace
}  // namespace zuma
