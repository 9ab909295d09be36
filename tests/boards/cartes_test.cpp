// The port-mapped boards through blocks and channels, against twins made from the register maps.
#include <cmath>
#include <memory>

#include <gtest/gtest.h>

#include "boards/carte_es.h"
#include "boards/exacticks.h"
#include "boards/gain_automatique.h"
#include "outils/arbre.h"
#include "sim/carte_acl8316.h"
#include "sim/cartes_simples.h"
#include "sim/compteurs_virtuels.h"

namespace zuma {
namespace {

using essai::Texte;

constexpr double kPointsParVolt = 6553.6;
constexpr std::uint16_t kBase = 0x220;

class UneCarte : public testing::Test, public essai::Banc {
 public:
  UneCarte() {
    plateforme.ports = &bus;
    plateforme.compteurs = &compteurs;
    carte.TimerExact(horloge);
    carte.ChargeErreur(registre);
  }
  FonctionRef Bloc(const char* clé, const char* driver, const char* type,
                   const std::vector<std::int32_t>& numéros, bool parFonction = true) {
    return essai::AjouteBloc(carte, clé,
                             {{"Driver", Texte(driver)},
                              {"Type de Fonction", Texte(type)},
                              {"Nom de la Fonction", Texte("Bloc")},
                              {"Mise à Jour par Fonction", Valeur(parFonction)}},
                             numéros, horloge, registre);
  }
  template <class Jumeau, class... Args>
  Jumeau& Enfiche(std::uint16_t base, Args&&... args) {
    auto jumeau = std::make_shared<Jumeau>(std::forward<Args>(args)...);
    bus.Attache(base, 16, *jumeau);
    jumeaux.push_back(jumeau);
    return *jumeau;
  }
  void Démarre(const char* driverDeCarte = "") {
    essai::LitCarte(carte, driverDeCarte, "", "220");
    carte.Initialise();
  }
  static Canal& Le(const FonctionRef& bloc, std::int32_t numéro) {
    return *bloc->Canals()->Item(essai::CléDuCanal(numéro));
  }
  static std::string Bits(const FonctionRef& bloc) {
    std::string bits;
    for (const CanalRef& canal : *bloc->Canals()) {
      bits += canal->ValeurCanal() == kVrai ? '1' : (canal->ValeurCanal() == 0 ? '0' : '?');
    }
    return bits;
  }

  Ref<sim::HorlogeVirtuelle> horloge = Crée<sim::HorlogeVirtuelle>(1);
  sim::CompteursVirtuels compteurs{*horloge};
  sim::BusPorts bus;
  std::vector<std::shared_ptr<sim::CarteSimulée>> jumeaux;
  Carte carte{plateforme};
};

// A board of its own, on a bus of its own, with one block: started.
struct Montage {
  Montage(UneCarte& banc, sim::CarteSimulée& jumeau, const char* driver, const char* type,
          const std::vector<std::int32_t>& numéros, bool parFonction = true)
      : carte(banc.plateforme) {
    bus.Attache(kBase, 16, jumeau);
    banc.plateforme.ports = &bus;
    carte.TimerExact(banc.horloge);
    carte.ChargeErreur(banc.registre);
    bloc = essai::AjouteBloc(carte, "1",
                             {{"Driver", Texte(driver)},
                              {"Type de Fonction", Texte(type)},
                              {"Nom de la Fonction", Texte("Bloc")},
                              {"Mise à Jour par Fonction", Valeur(parFonction)}},
                             numéros, banc.horloge, banc.registre);
    const bool pet48 = std::string_view(driver).starts_with("DrvPET");
    essai::LitCarte(carte, pet48 ? "DrvPET48DIO" : "", "", "220");
    carte.Initialise();
  }
  sim::BusPorts bus;
  Carte carte;
  FonctionRef bloc;
};

TEST_F(UneCarte, LitUneTensionEnPointsAToutGain) {
  const struct {
    const char* driver;
    std::shared_ptr<sim::CarteSimulée> jumeau;
    bool signée;
    bool gainAutomatique;
    double codes;
  } cas[] = {
      {"DrvACL8316_ACLD8125", std::make_shared<sim::CarteACL8316>(*horloge), true, true, 32768},
      {"DrvA826PG_DB8225", std::make_shared<sim::CarteA826>(*horloge), true, false, 32768},
      {"DrvACL8113", std::make_shared<sim::CarteEntrées12Bits>(*horloge), false, true, 4096},
      {"DrvPCL813_PCLD881", std::make_shared<sim::CarteEntrées12Bits>(*horloge), false, true, 4096},
  };
  for (const auto& c : cas) {
    Montage montage(*this, *c.jumeau, c.driver, "Entrée Analogique", {0, 3, 7}, false);
    const FonctionRef& bloc = montage.bloc;
    Le(bloc, 3).NbLecture(4);
    for (const double volts : {0.0, 0.31, 1.2, 2.4, 4.9, 9.9, 12.0, -0.2, -6.3}) {
      c.jumeau->bornes.entréesAnalogiques[3] = volts;
      c.jumeau->bornes.entréesAnalogiques[7] = 1.0;
      bloc->MetàJour();
      const double minimum = c.signée ? -65536 : 0;
      const double attendu =
          std::max(minimum, std::min(volts * kPointsParVolt, 65536 * (1 - 1 / c.codes)));
      EXPECT_NEAR(Le(bloc, 3).ValeurCanal(), attendu, 65536 / c.codes) << c.driver << " " << volts;
      EXPECT_NEAR(Le(bloc, 7).ValeurCanal(), kPointsParVolt, 65536 / c.codes) << c.driver;
      if (std::fabs(volts) < 1.0) {
        EXPECT_EQ(Le(bloc, 3).Gain(), c.gainAutomatique ? 3 : 0) << c.driver << " " << volts;
      }
    }
    EXPECT_TRUE(registre->entrées.empty()) << c.driver;
    Le(bloc, 0).NbLecture(0);
    bloc->MetàJour();
    EXPECT_TRUE(registre->Contient("Erreur N°11 (")) << c.driver;
    registre->entrées.clear();
  }
}

TEST(GainAutomatique, ResteEntreLesSeuilsEtFinitToujours) {
  const struct {
    double lecture;  // whatever the gain
    std::int16_t départ, arrivée;
  } cas[] = {{16284, 1, 1},  {16283, 1, 3},  {32668, 2, 2}, {32669, 2, 0},
             {-16283, 0, 3}, {-32768, 3, 0}, {0, 7, 3}};
  for (const auto& c : cas) {
    std::int16_t gain = c.départ;
    int conversions = 0;
    const double valeur = LitAvecGain(gain, kSeuils16Bits, [&](std::int16_t) {
      ++conversions;
      return c.lecture;
    });
    EXPECT_EQ(gain, c.arrivée) << c.lecture;
    EXPECT_EQ(valeur, c.lecture / (1 << gain));
    EXPECT_LE(conversions, 5);
  }
}

TEST(GainAutomatique, NePoursuitPasUnSignalQuiSauteSansCesse) {
  std::int16_t gain = 1;
  int conversions = 0;
  (void)LitAvecGain(gain, kSeuils16Bits, [&](std::int16_t) {
    if (++conversions > 1000) throw Echec(Numéro::ErreurInterne);
    return conversions % 2 == 0 ? 32767 : 100;
  });
  EXPECT_LE(conversions, 100);
}

TEST_F(UneCarte, BalaieAuGainUnMêmeAprèsDesConversions) {
  auto& jumeau = Enfiche<sim::CarteACL8316>(kBase, *horloge);
  const FonctionRef parCanal = Bloc("1", "DrvACL8316_ACLD8125", "Entrée Analogique", {0}, false);
  const FonctionRef balayé = Bloc("2", "DrvACL8316_ACLD8125", "Entrée Analogique", {0});
  jumeau.bornes.entréesAnalogiques[0] = 0.5;
  Démarre();
  parCanal->MetàJour();
  ASSERT_EQ(Le(parCanal, 0).Gain(), 3);
  carte.Initialise();
  balayé->MetàJour();
  EXPECT_NEAR(Le(balayé, 0).ValeurCanal(), 0.5 * kPointsParVolt, 2);
}

TEST_F(UneCarte, BalaieSeizeVoiesSansSeDécaler) {
  auto& jumeau = Enfiche<sim::CarteACL8316>(kBase, *horloge);
  const FonctionRef bloc = Bloc("1", "DrvACL8316_ACLD8125", "Entrée Analogique",
                                {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15});
  Le(bloc, 2).NbLecture(3);
  for (std::size_t i = 0; i < 16; ++i) {
    jumeau.bornes.entréesAnalogiques[i] = 0.5 * static_cast<double>(i) - 4;
  }
  Démarre();
  EXPECT_EQ(bloc->NbLecture(), 3);
  for (int passe = 0; passe < 5; ++passe) {
    bloc->MetàJour();
    for (std::int32_t i = 0; i < 16; ++i) {
      EXPECT_NEAR(Le(bloc, i).ValeurCanal(), (0.5 * i - 4) * kPointsParVolt, 2)
          << passe << " " << i;
    }
  }
  EXPECT_TRUE(registre->entrées.empty());
}

// For each driver of logic inputs: what a set bit means to a block and to a channel.
TEST_F(UneCarte, LitLesEntréesLogiquesDansLeSensDeChaqueDriver) {
  const struct {
    const char* driver;
    std::shared_ptr<sim::CarteSimulée> jumeau;
    const char* bloc;  // channels 0, 1, 9 with bits 0 and 9 set
    const char* canal;
    const char* après;  // block, bit 1 set too
  } cas[] = {
      {"DrvPCL731_PCLD782B", std::make_shared<sim::CartePCL731>(), "101", "010", "111"},
      {"DrvPET48DIO_TB24P", std::make_shared<sim::CartePET48>(), "100", "101", "110"},
      {"DrvACL8316_ACLD9182", std::make_shared<sim::CarteACL8316>(*horloge), "100", "010", "110"},
      {"DrvA826PG_DB16P", std::make_shared<sim::CarteA826>(*horloge), "100", "101", "110"},
      {"DrvACL6126_ACLD9182", std::make_shared<sim::CarteSortiesParPaires>(6U, true), "100", "101",
       "110"},
      {"DrvPET48DIO_PCLD782B", std::make_shared<sim::CartePET48>(), "011", "010", "001"},
  };
  for (const auto& c : cas) {
    c.jumeau->bornes.entréesLogiques = 0x201;
    Montage montage(*this, *c.jumeau, c.driver, "Entrée Logique", {0, 1, 9});
    const FonctionRef& bloc = montage.bloc;
    bloc->MetàJour();
    EXPECT_EQ(Bits(bloc), c.bloc) << c.driver;
    // Nothing moved: the block leaves the channels alone.
    Le(bloc, 1).ValeurCanal(5);
    bloc->MetàJour();
    EXPECT_EQ(Le(bloc, 1).ValeurCanal(), 5) << c.driver;
    for (const CanalRef& canal : *bloc->Canals()) canal->MetàJour();
    EXPECT_EQ(Bits(bloc), c.canal) << c.driver;
    c.jumeau->bornes.entréesLogiques = 0x203;
    bloc->MetàJour();
    EXPECT_EQ(Bits(bloc), c.après) << c.driver;
    // The first word after a start is shown, whatever it is: a broken wire reads 0.
    c.jumeau->bornes.entréesLogiques = 0;
    bloc->MetàJour();
    Le(bloc, 1).ValeurCanal(5);
    montage.carte.Initialise();
    bloc->MetàJour();
    EXPECT_NE(Le(bloc, 1).ValeurCanal(), 5) << c.driver;
  }
  EXPECT_TRUE(registre->entrées.empty());
}

TEST_F(UneCarte, SertLesCanauxDUnBlocRégléParCanal) {
  auto& jumeau = Enfiche<sim::CartePET48>(kBase);
  const FonctionRef bloc = Bloc("1", "DrvPET48DIO_TB24P", "Entrée Logique", {20, 21}, false);
  Démarre("DrvPET48DIO");
  jumeau.bornes.entréesLogiques = 1U << 21U;
  bloc->MetàJour();
  EXPECT_EQ(Bits(bloc), "01") << "by number, where a whole block goes by rank";
}

TEST_F(UneCarte, GardeLesSingularités) {
  auto& pcl = Enfiche<sim::CartePCL731>(kBase);
  const FonctionRef bloc = Bloc("1", "DrvPCL731_PCLD782B", "Entrée Logique", {22, 23, 24});
  Démarre();
  pcl.bornes.entréesLogiques = 0xFFFFFF;
  bloc->MetàJour();
  EXPECT_EQ(Bits(bloc), "100") << "the block does not read line 23";
  for (const CanalRef& canal : *bloc->Canals()) canal->MetàJour();
  EXPECT_EQ(Bits(bloc), "001") << "there is no line 24: it reads true";

  sim::CarteSortiesParPaires acl(6, true);
  Montage montage(*this, acl, "DrvACL6126_ACLD9182", "Entrée Logique", {0, 1, 2, 3, 4, 5, 6, 7, 8});
  const FonctionRef& entrées = montage.bloc;
  acl.bornes.entréesLogiques = 0x00FF;
  entrées->MetàJour();
  EXPECT_EQ(Bits(entrées), "111111110");
  acl.bornes.entréesLogiques = 0x0100;  // weighs 255, like 0x00FF
  entrées->MetàJour();
  EXPECT_EQ(Bits(entrées), "111111110") << "the change test does not see this one";
  entrées->MetàJour();
  EXPECT_EQ(Bits(entrées), "000000001") << "but it is not lost";
}

TEST_F(UneCarte, EcritLesSortiesLogiques) {
  const struct {
    const char* driver;
    std::shared_ptr<sim::CarteSimulée> jumeau;
    std::uint32_t repos;        // terminals after the start
    std::uint32_t bloc, canal;  // changed terminals: channels 0 at -1, 1 at 1, 9 at -1
  } cas[] = {
      {"DrvPCL731_PCLD7225", std::make_shared<sim::CartePCL731>(), 0xFFFFFF, 0x201, 0x203},
      {"DrvPET48DIO_TB24R", std::make_shared<sim::CartePET48>(), 0, 0x201, 0x203},
      {"DrvACL8316_ACLD9185", std::make_shared<sim::CarteACL8316>(*horloge), 0, 0x201, 0x203},
      {"DrvA826PG_DB16R", std::make_shared<sim::CarteA826>(*horloge), 0, 0x201, 0x203},
      {"DrvACL6126_ACLD9185", std::make_shared<sim::CarteSortiesParPaires>(6U, true), 0, 0x201,
       0x203},
      {"DrvPET48DIO_PCLD7225", std::make_shared<sim::CartePET48>(), 0xFFFFFF, 0x201, 0x203},
  };
  for (const auto& c : cas) {
    Montage montage(*this, *c.jumeau, c.driver, "Sortie Logique", {0, 1, 9});
    const FonctionRef& bloc = montage.bloc;
    sim::Bornes& bornes = c.jumeau->bornes;
    EXPECT_EQ(bornes.sortiesLogiques, c.repos) << c.driver;
    Le(bloc, 0).ValeurCanal(kVrai);
    Le(bloc, 1).ValeurCanal(1);
    Le(bloc, 9).ValeurCanal(kVrai);
    for (const CanalRef& canal : *bloc->Canals()) canal->MetàJour();
    EXPECT_EQ(bornes.sortiesLogiques ^ c.repos, c.canal) << c.driver;
    bloc->MetàJour();
    EXPECT_EQ((bornes.sortiesLogiques ^ c.repos) & 0xFFFFFF, c.bloc) << c.driver;
  }
  EXPECT_TRUE(registre->entrées.empty());
}

// A number is one terminal, whoever writes it; no contact is driven against; and a card that lost
// its registers is driven again by the next word.
TEST_F(UneCarte, SortUneVoieDePCL731SurUnSeulConnecteur) {
  constexpr std::uint32_t kRepos = 0xFFFFFF;
  for (const bool avecEntrées : {false, true}) {
    Carte laCarte(plateforme);
    laCarte.TimerExact(horloge);
    laCarte.ChargeErreur(registre);
    sim::BusPorts leBus;
    sim::CartePCL731 pcl;
    leBus.Attache(kBase, 8, pcl);
    plateforme.ports = &leBus;
    const auto ajoute = [&](const char* driver, const char* type) {
      return essai::AjouteBloc(laCarte, type,
                               {{"Driver", Texte(driver)},
                                {"Type de Fonction", Texte(type)},
                                {"Nom de la Fonction", Texte("Bloc")}},
                               {0, 9, 22}, horloge, registre);
    };
    FonctionRef entrées;
    if (avecEntrées) entrées = ajoute("DrvPCL731_PCLD782B", "Entrée Logique");
    const FonctionRef sorties = ajoute("DrvPCL731_PCLD7225", "Sortie Logique");
    essai::LitCarte(laCarte, "", "", "220");
    laCarte.Initialise();
    EXPECT_EQ(pcl.bornes.sortiesLogiques, kRepos) << "before the first refresh";
    EXPECT_EQ(pcl.PremierConnecteur(), avecEntrées ? std::nullopt : std::optional(kRepos));
    pcl.bornes.entréesLogiques = 0x200;
    for (const bool blocPuisCanal : {false, true}) {
      for (const CanalRef& canal : *sorties->Canals()) {
        const auto écrit = [&](double niveau, bool parBloc) {
          canal->ValeurCanal(niveau);
          parBloc ? sorties->MetàJour() : canal->MetàJour();
          if (avecEntrées) {
            entrées->MetàJour();
            EXPECT_EQ(Bits(entrées), "010");
          }
          return pcl.bornes.sortiesLogiques;
        };
        EXPECT_EQ(écrit(kVrai, blocPuisCanal), kRepos & ~Masque(canal->NuméroCanal()));
        EXPECT_EQ(écrit(0, !blocPuisCanal), kRepos) << canal->NuméroCanal();
      }
    }
    Le(sorties, 9).ValeurCanal(kVrai);
    pcl = sim::CartePCL731();  // pulled and put back
    sorties->MetàJour();
    EXPECT_EQ(pcl.bornes.sortiesLogiques, kRepos & ~Masque(9));
  }
  EXPECT_TRUE(registre->entrées.empty());
}

// A bad number in the configuration must not keep a stop from the other outputs.
TEST_F(UneCarte, EcritLesSortiesMalgréUneVoieAbsente) {
  auto& jumeau = Enfiche<sim::CarteACL8316>(kBase, *horloge);
  const FonctionRef bloc = Bloc("1", "DrvACL8316_ACLD9185", "Sortie Logique", {-1, 3, 16, 40});
  Démarre();
  for (const std::int32_t absente : {-1, 16, 40}) {
    Le(bloc, absente).ValeurCanal(kVrai);
    Le(bloc, 3).ValeurCanal(kVrai);
    bloc->MetàJour();
    EXPECT_EQ(jumeau.bornes.sortiesLogiques, 8U);
    Le(bloc, 3).ValeurCanal(0);
    bloc->MetàJour();
    EXPECT_EQ(jumeau.bornes.sortiesLogiques, 0U);
    const std::string texte = "Voie " + std::to_string(absente) + " absente de la carte";
    EXPECT_TRUE(registre->Contient(texte + ", qui a les voies 0 à 15")) << absente;
    registre->entrées.clear();
    Le(bloc, absente).MetàJour();
    EXPECT_TRUE(registre->Contient(texte)) << absente;
    Le(bloc, absente).ValeurCanal(0);
  }
}

TEST_F(UneCarte, NeLitPasUneAutreVoieQueLaSienne) {
  for (const char* driver :
       {"DrvACL8316_ACLD8125", "DrvA826PG_DB8225", "DrvACL8113", "DrvPCL813_PCLD881"}) {
    Carte laCarte(plateforme);
    laCarte.TimerExact(horloge);
    laCarte.ChargeErreur(registre);
    const FonctionRef bloc = essai::AjouteBloc(laCarte, "1",
                                               {{"Driver", Texte(driver)},
                                                {"Type de Fonction", Texte("Entrée Analogique")},
                                                {"Nom de la Fonction", Texte("Bloc")},
                                                {"Mise à Jour par Fonction", Valeur(false)}},
                                               {-1, 32}, horloge, registre);
    essai::LitCarte(laCarte, "", "", "220");
    laCarte.Initialise();
    bloc->MetàJour();
    EXPECT_TRUE(registre->Contient("Voie -1 absente")) << driver;
    EXPECT_TRUE(registre->Contient("Voie 32 absente")) << driver;
    registre->entrées.clear();
  }
}

// An interface set to output pulls its lines down: only a board that has outputs may do it.
TEST_F(UneCarte, NeMetEnSortieQuUneCarteASorties) {
  Enfiche<sim::CartePET48>(kBase);
  bus.Journalise(true);
  const auto metEnSortie = [&] {
    for (const auto& écriture : bus.Ecritures()) {
      if (écriture.port == kBase + 1 && écriture.valeur == 0x80) return true;
    }
    return false;
  };
  const FonctionRef entrées = Bloc("1", "DrvPET48DIO_PCLD782B", "Entrée Logique", {0});
  Démarre("DrvPET48DIO");
  EXPECT_FALSE(metEnSortie());
  const FonctionRef sorties = Bloc("2", "DrvPET48DIO_PCLD7225", "Sortie Logique", {0});
  Démarre("DrvPET48DIO");
  EXPECT_TRUE(metEnSortie());
}

TEST_F(UneCarte, EcritLesSortiesAnalogiques) {
  const struct {
    const char* driver;
    std::shared_ptr<sim::CarteSimulée> jumeau;
    double valeur, volts;
  } cas[] = {
      {"DrvPCL728", std::make_shared<sim::CarteSortiesParPaires>(8U), 1024, 2.5},
      {"DrvACL6128", std::make_shared<sim::CarteSortiesParPaires>(8U), 3071.5, 7.5},
      {"DrvACL6126", std::make_shared<sim::CarteSortiesParPaires>(6U, true), 4095, 9.99756},
      {"DrvA826PG", std::make_shared<sim::CarteA826>(*horloge), 2048, 5},
      {"DrvACL8316", std::make_shared<sim::CarteACL8316>(*horloge), 1024, 5},
      {"DrvACL8316", std::make_shared<sim::CarteACL8316>(*horloge), 2048, -10},
      {"DrvACL8316", std::make_shared<sim::CarteACL8316>(*horloge), 3072, -5},
  };
  for (const auto& c : cas) {
    Montage montage(*this, *c.jumeau, c.driver, "Sortie Analogique", {0, 1});
    const FonctionRef& bloc = montage.bloc;
    Le(bloc, 1).ValeurCanal(c.valeur);
    Le(bloc, 1).MetàJour();
    EXPECT_NEAR(c.jumeau->bornes.sortiesAnalogiques[1], c.volts, 0.001) << c.driver << c.valeur;
    EXPECT_EQ(c.jumeau->bornes.sortiesAnalogiques[0], 0) << c.driver;
    EXPECT_TRUE(registre->entrées.empty()) << c.driver;
    const bool décalée = std::string_view(c.driver) == "DrvACL8316";
    for (const double excès :
         {40000.0, -40000.0, décalée ? 6144.0 : 1e9, décalée ? -2049.0 : -1e9}) {
      Le(bloc, 1).ValeurCanal(excès);
      Le(bloc, 1).MetàJour();
      EXPECT_TRUE(registre->Contient("Erreur N°6 (")) << c.driver << excès;
      EXPECT_NEAR(c.jumeau->bornes.sortiesAnalogiques[1], c.volts, 0.001) << "the output holds";
      registre->entrées.clear();
    }
  }
}

TEST_F(UneCarte, ProgrammeLaSortieEnFréquence) {
  auto& jumeau = Enfiche<sim::CarteACL8316>(kBase, *horloge);
  const FonctionRef bloc = Bloc("1", "DrvACL8316", "Sortie Analogique", {0});
  Canal& canal = Le(bloc, 0);
  canal.ParamètresDepuisBD(essai::UneLigne({{"Numéro du Canal", essai::Nombre(0)},
                                            {"Nom du Canal", Texte("Fréquence")},
                                            {"Canal en fréquence", Valeur(true)}}));
  Démarre();
  for (const auto& [demandée, obtenue] : {std::pair{1000.0, 1000.0},
                                          {30.0, 0.0},
                                          {31.0, 2e6 / 64516},
                                          {-5.0, 0.0},
                                          {3000.0, 2e6 / 666},
                                          {0.0, 0.0}}) {
    canal.ValeurCanal(demandée);
    canal.MetàJour();
    EXPECT_DOUBLE_EQ(jumeau.bornes.fréquence, obtenue) << demandée;
  }
  EXPECT_EQ(jumeau.bornes.sortiesAnalogiques[0], 0) << "the analog output of that number stays";
}

TEST_F(UneCarte, NePartagePasSesImagesAvecUneAutre) {
  auto& première = Enfiche<sim::CarteACL8316>(kBase, *horloge);
  auto& seconde = Enfiche<sim::CarteACL8316>(0x240, *horloge);
  const FonctionRef bloc = Bloc("1", "DrvACL8316_ACLD9185", "Sortie Logique", {0, 1});
  Démarre();
  Carte autre(plateforme);
  autre.TimerExact(horloge);
  autre.ChargeErreur(registre);
  const FonctionRef autreBloc = essai::AjouteBloc(autre, "1",
                                                  {{"Driver", Texte("DrvACL8316_ACLD9185")},
                                                   {"Type de Fonction", Texte("Sortie Logique")},
                                                   {"Nom de la Fonction", Texte("Bloc")}},
                                                  {0, 1}, horloge, registre);
  essai::LitCarte(autre, "", "", "240");
  autre.Initialise();
  Le(bloc, 0).ValeurCanal(kVrai);
  Le(bloc, 0).MetàJour();
  Le(autreBloc, 1).ValeurCanal(kVrai);
  Le(autreBloc, 1).MetàJour();
  EXPECT_EQ(première.bornes.sortiesLogiques, 1U);
  EXPECT_EQ(seconde.bornes.sortiesLogiques, 2U);
}

TEST_F(UneCarte, AbsenteNeBloqueRien) {
  const FonctionRef analogique = Bloc("1", "DrvACL8316_ACLD8125", "Entrée Analogique", {0}, false);
  const FonctionRef logique = Bloc("2", "DrvACL8316_ACLD9182", "Entrée Logique", {0});
  Démarre();
  carte.MetàJour();
  EXPECT_NEAR(Le(analogique, 0).ValeurCanal(), 0, 1) << "the bus reads all ones";
  EXPECT_TRUE(registre->entrées.empty());
}

TEST(CompteurFin, ContinueAuDelàDeLaLimiteDeLaBibliothèque) {
  sim::HorlogeVirtuelle horloge(1);
  sim::CompteursVirtuels compteurs(horloge);
  Exacticks compteur;
  EXPECT_THROW((void)compteur.Lit(), Echec);
  compteur.Ouvre(&compteurs, "essai");
  compteur.Ouvre(&compteurs, "essai");
  EXPECT_EQ(compteurs.Ouverts(), 1U) << "a former counter is closed";
  const double départ = horloge.Maintenant();
  for (int i = 0; i < 5; ++i) {
    horloge.Avance(70e6);
    EXPECT_NEAR(static_cast<double>(compteur.Lit()), horloge.Maintenant() - départ, 10);
  }
  EXPECT_EQ(compteurs.Ouverts(), 1U);
}

}  // namespace
}  // namespace zuma
