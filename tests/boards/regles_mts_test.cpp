// Rulers on the CAN card: filters as functions, and blocks and channels against simulated rulers.
#include "boards/regles_mts.h"

#include <algorithm>

#include <gtest/gtest.h>

#include "outils/allocations.h"
#include "outils/arbre.h"
#include "sim/regle_mts.h"

namespace zuma {
namespace {

using essai::Nombre;
using essai::Texte;
using regles_mts::Mémoire;
using regles_mts::Paire;

TEST(Règles, DécodentUnePositionSur24Bits) {
  EXPECT_EQ(regles_mts::Position(0, 0, 0), 0);
  EXPECT_EQ(regles_mts::Position(0x12, 0x34, 0x56), 0x123456);
  EXPECT_EQ(regles_mts::Position(0x7F, 0xFF, 0xFF), 8388607);
  EXPECT_EQ(regles_mts::Position(0x80, 0, 0), -8388607);
  EXPECT_EQ(regles_mts::Position(0xFF, 0xFF, 0xFF), 0);
  const std::array<std::uint8_t, 6> données{0, 1, 2, 0x80, 0, 1};
  EXPECT_EQ(regles_mts::DécodePaire(données), (Paire{258, -8388606}));
  EXPECT_EQ(regles_mts::DécodePaire(std::span(données).first(5)), (Paire{258, 0}));
  EXPECT_EQ(regles_mts::DécodePaire(std::span(données).first(2)), std::nullopt);
  EXPECT_EQ(regles_mts::OctetsDeSérie("00A1fF10"),
            (std::array<std::uint8_t, 4>{0, 0xA1, 0xFF, 0x10}));
  for (const char* fausse : {"", "00A1FF1", "00A1FF100", "00A1FG10", "+0A1FF10"}) {
    EXPECT_THROW((void)regles_mts::OctetsDeSérie(fausse), Echec) << fausse;
  }
}

TEST(Règles, LisentTroisAimants) {
  using P = std::optional<Paire>;
  const struct {
    P première, seconde;
    std::int32_t lecture21, lecture3;
  } cas[] = {{Paire{100, 350}, Paire{900, 0}, 250, 900},
             {Paire{350, 100}, Paire{900, 0}, -250, 900},
             {Paire{0, 350}, Paire{900, 0}, 0, 900},
             {Paire{100, 0}, Paire{900, 0}, 0, 900},
             {Paire{100, 350}, Paire{0, 7}, 0, 350},
             {Paire{100, 0}, Paire{0, 0}, 0, 100},
             {Paire{100, 350}, P{}, 0, 0},
             {P{}, Paire{900, 0}, 0, 0}};
  for (const auto& c : cas) {
    EXPECT_EQ(regles_mts::Lecture2moins1(c.première, c.seconde), c.lecture21);
    EXPECT_EQ(regles_mts::Lecture3(c.première, c.seconde), c.lecture3);
  }
}

TEST(Règles, SéparentLesAimants) {
  EXPECT_FALSE(regles_mts::AimantsSéparés(10000, 10200));
  EXPECT_TRUE(regles_mts::AimantsSéparés(10000, 10203));
  EXPECT_TRUE(regles_mts::AimantsSéparés(10203, 10000)) << "whichever comes first";
  EXPECT_TRUE(regles_mts::AimantsSéparés(9900, 10100)) << "9999 on both sides";
  EXPECT_FALSE(regles_mts::AimantsSéparés(5000, 5000));
}

// Former positions, positions read, positions kept.
TEST(Règles, FiltrentLaLectureDuBloc) {
  const struct {
    Paire avant, lues, après;
    const char* pourquoi;
  } cas[] = {
      {{50000, 90000}, {59999, 90000}, {59999, 90000}, "9999 is taken"},
      {{50000, 90000}, {60000, 90000}, {50000, 90000}, "10000 is refused on magnet 1"},
      {{50000, 90000}, {40000, 90000}, {50000, 90000}, "and backwards"},
      {{0, 90000}, {60000, 90000}, {60000, 90000}, "the first position of magnet 1 is taken"},
      {{50000, 90000}, {50000, 250000}, {50000, 250000}, "any jump of magnet 2 is taken"},
      {{50000, 90000}, {50000, 0}, {50000, 90000}, "but one to 0"},
      {{50000, 0}, {50000, 90000}, {50000, 90000}, "and its first position"},
      {{50000, 9999}, {50000, 0}, {50000, 0}, "a small step to 0 is taken"},
      {{50000, 90000}, {70000, 70700}, {50000, 90000}, "too close: both keep"},
  };
  for (const auto& c : cas) {
    Mémoire m{c.lues[0], c.lues[1], c.avant[0], c.avant[1]};
    regles_mts::FiltreBloc(m);
    EXPECT_EQ((Paire{m.c1, m.c2}), c.après) << c.pourquoi;
  }
}

TEST(Règles, FiltrentLaLectureSimple) {
  const struct {
    Paire avant, lues;
    int aimant;
    std::optional<std::int32_t> prise;
    Paire après;
    const char* pourquoi;
  } cas[] = {
      {{5000, 9000}, {5999, 9000}, 1, 5999, {5999, 9000}, "999 is taken"},
      {{5000, 9000}, {6000, 9000}, 1, {}, {5000, 9000}, "1000 is refused"},
      {{5000, 9000}, {6000, 9000}, 2, 9000, {6000, 9000}, "but not filtered for the other magnet"},
      {{5000, 9000}, {5000, 7999}, 2, {}, {5000, 9000}, "magnet 2 is filtered alike"},
      {{500, 9000}, {0, 9000}, 1, {}, {500, 9000}, "0 is no position"},
      {{0, 9000}, {5000, 9000}, 1, 5000, {5000, 9000}, "the first position is taken"},
      {{5000, 9000}, {8950, 9000}, 2, {}, {5000, 9000}, "too close: both keep"},
  };
  for (const auto& c : cas) {
    Mémoire m{.c1 = c.avant[0], .c2 = c.avant[1]};
    EXPECT_EQ(regles_mts::FiltreSimple(m, c.lues, c.aimant), c.prise) << c.pourquoi;
    EXPECT_EQ((Paire{m.c1, m.c2}), c.après) << c.pourquoi;
  }
}

class SurLeCAN : public testing::Test, public essai::Banc {
 public:
  SurLeCAN() {
    plateforme.can = &can;
    carte.TimerExact(horloge);
    carte.ChargeErreur(registre);
  }
  // A block of rulers, each channel with its row.
  struct LigneDeRègle {
    std::int32_t numéro;
    const char* driver;
    const char* série = "00A1FF10";
    std::int32_t positionID = 0x1A1;
    std::int32_t aimants = 2;
    std::int32_t aimant = 1;
  };
  FonctionRef Bloc(const char* driver, const std::vector<LigneDeRègle>& règles,
                   bool parFonction = false, std::int32_t vitesse = 500) {
    std::vector<std::int32_t> numéros;
    for (const auto& règle : règles) numéros.push_back(règle.numéro);
    const FonctionRef bloc = essai::AjouteBloc(carte, "1",
                                               {{"Driver", Texte(driver)},
                                                {"Type de Fonction", Texte("Entrée Analogique")},
                                                {"Nom de la Fonction", Texte("Règles")},
                                                {"Mise à Jour par Fonction", Valeur(parFonction)},
                                                {"Numéro du port CAN", Nombre(1)},
                                                {"Vitesse du CAN", Nombre(vitesse)},
                                                {"Mode CAN", Texte("11 bits")}},
                                               numéros, horloge, registre);
    for (const auto& règle : règles) {
      if (règle.driver == nullptr) continue;
      Le(bloc, règle.numéro)
          .ParamètresDepuisBD(essai::UneLigne({{"Numéro du Canal", Nombre(règle.numéro)},
                                               {"Nom du Canal", Texte("Règle")},
                                               {"N° de série", Texte(règle.série)},
                                               {"N° de Node", Nombre(5)},
                                               {"Mode opératoire", Nombre(3)},
                                               {"Nombre d'aimants", Nombre(règle.aimants)},
                                               {"Position de l'aimant", Nombre(règle.aimant)},
                                               {"Position ID", Nombre(règle.positionID)},
                                               {"Status ID", Nombre(0x2A1)},
                                               {"Driver canal", Texte(règle.driver)}}));
    }
    return bloc;
  }
  static Canal& Le(const FonctionRef& bloc, std::int32_t numéro) {
    return *bloc->Canals()->Item(essai::CléDuCanal(numéro));
  }
  Ref<sim::RègleMTSSimulée> Règle(std::vector<std::int32_t> positions,
                                  std::uint32_t série = 0x00A1FF10, std::int32_t port = 1) {
    const auto règle = Crée<sim::RègleMTSSimulée>(série, std::move(positions));
    can.Port(2, port).Attache(règle);
    return règle;
  }
  void Démarre(const char* driver = "DrvPCI7841-2") {
    essai::LitCarte(carte, driver, "", "2");
    carte.Initialise();
  }

  Ref<sim::HorlogeVirtuelle> horloge = Crée<sim::HorlogeVirtuelle>(1);
  sim::CarteCANSimulée can{*horloge};
  sim::PortCANSimulé& bus = can.Port(2, 1);
  Carte carte{plateforme};
};

TEST_F(SurLeCAN, DémarreUneRègleEtLaLit) {
  const auto règle = Règle({123456});
  Règle({777}, 0x01020304);  // another ruler on the bus stays quiet
  const FonctionRef bloc = Bloc("DrvPCI7841-2", {{0, "Règle MTS 1 aimant"}});
  Démarre();
  EXPECT_EQ(bus.réglages.codeVitesse, 2);
  EXPECT_EQ(bus.réglages.masqueAcceptation, 0x7FFU);
  EXPECT_EQ(règle->positionID, 0x1A1U);
  EXPECT_EQ(règle->statusID, 0x2A1U);
  EXPECT_EQ(règle->noeud, 5);
  EXPECT_EQ(règle->mode, 3);
  ASSERT_EQ(bus.envoyées.size(), 4U);
  EXPECT_EQ(bus.envoyées[0].données, (DonnéesCAN{0, 0xA1, 0xFF, 0x10, 5, ' ', ' ', ' '}));
  EXPECT_EQ(bus.envoyées[3].données, (DonnéesCAN{5, 6, 3, ' ', ' ', ' ', ' ', ' '}));
  EXPECT_EQ(bus.envoyées[3].nombre, 3);
  bloc->MetàJour();
  EXPECT_EQ(Le(bloc, 0).ValeurCanal(), 123456);
  règle->aimants = {-8388607};
  const auto avant = essai::Allocations();
  bloc->MetàJour();
  EXPECT_EQ(Le(bloc, 0).ValeurCanal(), -8388607);
  EXPECT_LT(essai::Allocations() - avant, 6) << "the twin alone may allocate";
  EXPECT_TRUE(bus.envoyées.back().distante == 1 && bus.envoyées.back().identifiant == 0x1A1);

  // Stale answers in the queue are not taken for the present position.
  bus.Emet({.identifiant = 0x1A1, .nombre = 3, .données = {0, 0, 1}}, 0);
  bloc->MetàJour();
  EXPECT_EQ(Le(bloc, 0).ValeurCanal(), -8388607);

  règle->muette = true;
  const double départ = horloge->Maintenant();
  bloc->MetàJour();
  EXPECT_EQ(Le(bloc, 0).ValeurCanal(), 0) << "a ruler that does not answer reads 0";
  EXPECT_LT(horloge->Maintenant() - départ, 11'000) << "bounded by its time-out";
  EXPECT_TRUE(registre->entrées.empty());
}

TEST_F(SurLeCAN, LaisseHorsServiceUneRègleQuiNeRépondPas) {
  for (int réponses = 0; réponses < 4; ++réponses) {
    sim::CarteCANSimulée autre(*horloge);
    plateforme.can = &autre;
    Carte laCarte(plateforme);
    laCarte.TimerExact(horloge);
    laCarte.ChargeErreur(registre);
    const auto règle = Crée<sim::RègleMTSSimulée>(0x00A1FF10, std::vector<std::int32_t>{5});
    autre.Port(0, 0).Attache(règle);
    règle->réponsesRestantes = réponses;
    Canal canal(plateforme);
    canal.ChargeErreur(registre);
    const FonctionRef bloc = laCarte.Fonctions()->Add("1");
    bloc->ChargeErreur(registre);
    bloc->Parent(&laCarte);
    canal.Parent(bloc.Brut());
    canal.ParamètresDepuisBD(essai::UneLigne({{"Numéro du Canal", Nombre(0)},
                                              {"Nom du Canal", Texte("Règle")},
                                              {"N° de série", Texte("00A1FF10")},
                                              {"Status ID", Nombre(1)},
                                              {"Driver canal", Texte("Règle MTS 1 aimant")}}));
    canal.TypeCanal(ENUM_TYPE_FONCTION::FctEntréesAnalogiques);
    canal.HandlePort(autre.CanOpenDriver(0, 0));
    canal.Initialise();
    EXPECT_FALSE(canal.EnService()) << réponses;
    canal.Initialise();
    canal.ValeurCanal(42);
    canal.MetàJour();
    EXPECT_EQ(canal.ValeurCanal(), 42) << réponses;
    règle->réponsesRestantes.reset();
    canal.Initialise();
    EXPECT_TRUE(canal.EnService()) << "a second start may succeed";
  }
  EXPECT_EQ(registre->entrées.size(), 4U) << "each of the four channels, once";
  EXPECT_TRUE(registre->Contient("Règle '00A1FF10' muette au démarrage"));
  EXPECT_TRUE(messages.textes.empty());
}

TEST_F(SurLeCAN, RefuseUneConfigurationIllisible) {
  Règle({5, 900});
  const FonctionRef bloc =
      Bloc("DrvPCI7841-2", {{0, "Règle MTS 1 aimant", "12", 0x1A2},
                            {1, "Règle MTS Multimagnet", "00A1FF10", 0x1A1, 3, 3},
                            {2, "Règle MTS Multimagnet", "00A1FF10", 0x1A1, 2, 3},
                            {3, "Règle MTS 1 aimant"}});
  Démarre();
  EXPECT_TRUE(registre->Contient("'12' n'est pas un numéro de série de règle"));
  EXPECT_TRUE(registre->Contient("Position de l'aimant 3, 1 ou 2 attendu"));
  EXPECT_EQ(registre->entrées.size(), 2U);
  EXPECT_FALSE(Le(bloc, 0).EnService());
  EXPECT_FALSE(Le(bloc, 1).EnService());
  Le(bloc, 2).ValeurCanal(42);
  bloc->MetàJour();
  EXPECT_EQ(Le(bloc, 2).ValeurCanal(), 42) << "a magnet beyond the count keeps its value";
  EXPECT_EQ(Le(bloc, 3).ValeurCanal(), 5) << "the others go on";
}

TEST_F(SurLeCAN, LitTroisAimants) {
  const auto règle = Règle({1000, 3500, 9000});
  const FonctionRef bloc = Bloc("DrvPCI7841-2", {{0, "Règle MTS 3 aimants (lecture 2-1)"},
                                                 {1, "Règle MTS 3 aimants (lecture 3)"}});
  Démarre();
  bloc->MetàJour();
  EXPECT_EQ(Le(bloc, 0).ValeurCanal(), 2500);
  EXPECT_EQ(Le(bloc, 1).ValeurCanal(), 9000);
  règle->aimants = {1000, 3500, 0};
  bloc->MetàJour();
  EXPECT_EQ(Le(bloc, 0).ValeurCanal(), 0);
  EXPECT_EQ(Le(bloc, 1).ValeurCanal(), 3500);
  règle->aimants = {1000, 3500, 9000};
  règle->tramesMaximum = 1;
  bloc->MetàJour();
  EXPECT_EQ(Le(bloc, 0).ValeurCanal(), 0) << "the second frame did not come";
  EXPECT_EQ(Le(bloc, 1).ValeurCanal(), 0);
}

TEST_F(SurLeCAN, FiltreLaLectureDUnAimantParmiPlusieurs) {
  const auto règle = Règle({50000, 90000});
  const FonctionRef bloc =
      Bloc("DrvPCI7841-2", {{0, "Règle MTS Multimagnet", "00A1FF10", 0x1A1, 2, 1},
                            {1, "Règle MTS Multimagnet", "00A1FF10", 0x1A1, 2, 2}});
  Démarre();
  bus.relevés = 0;
  const std::size_t envoyées = bus.envoyées.size();
  bloc->MetàJour();
  EXPECT_EQ(bus.relevés, 0) << "the first two reads leave the bus alone";
  EXPECT_EQ(bus.envoyées.size(), envoyées);
  const auto passe = [&] {
    bloc->MetàJour();
    horloge->Avance(5000);
  };
  for (int i = 0; i < 4; ++i) passe();
  EXPECT_EQ(Le(bloc, 0).ValeurCanal(), 50000);
  EXPECT_EQ(Le(bloc, 1).ValeurCanal(), 90000);
  règle->aimants = {50900, 90100};
  for (int i = 0; i < 3; ++i) passe();
  EXPECT_EQ(Le(bloc, 0).ValeurCanal(), 50900);
  EXPECT_EQ(Le(bloc, 1).ValeurCanal(), 90100);
  règle->aimants = {60000, 90100};
  for (int i = 0; i < 3; ++i) passe();
  EXPECT_EQ(Le(bloc, 0).ValeurCanal(), 50900) << "a jump is refused";
  EXPECT_TRUE(registre->entrées.empty());
}

TEST_F(SurLeCAN, LitDeuxAimantsEnUnBloc) {
  const auto règle = Règle({50000, 90000});
  const FonctionRef bloc =
      Bloc("DrvPCI7841-2", {{0, "Règle MTS Multimagnet"}, {1, "Règle MTS Multimagnet"}}, true);
  Démarre();
  const auto demandes = [&] {
    return std::ranges::count_if(bus.envoyées, [](const TrameCAN& t) { return t.distante == 1; });
  };
  bloc->MetàJour();
  EXPECT_EQ(demandes(), 1) << "asked at once, answered later";
  EXPECT_EQ(Le(bloc, 0).ValeurCanal(), 0);
  horloge->Avance(5000);
  bloc->MetàJour();
  EXPECT_EQ(Le(bloc, 0).ValeurCanal(), 50000);
  EXPECT_EQ(Le(bloc, 1).ValeurCanal(), 90000);
  EXPECT_EQ(demandes(), 2);

  règle->muette = true;
  horloge->Avance(5000);
  bloc->MetàJour();  // the answer to the last request was on its way
  const auto avant = demandes();
  for (int i = 0; i < 100; ++i) {
    horloge->Avance(10'000);
    bloc->MetàJour();
  }
  EXPECT_NEAR(static_cast<double>(demandes() - avant), 5, 1) << "every 200 ms while it is silent";
  EXPECT_EQ(Le(bloc, 0).ValeurCanal(), 50000) << "the values stay";
  plateforme.heureDePasse = 100;
  for (const TrameCAN& vaine :
       {TrameCAN{.identifiant = 0x555, .nombre = 8}, TrameCAN{.identifiant = 0x1A1, .nombre = 2}}) {
    bus.Emet(vaine, 0);
    horloge->Avance(1000);
    bloc->MetàJour();
    EXPECT_EQ(Le(bloc, 0).Age(), 100) << "a frame without a position is no reading";
    EXPECT_EQ(Le(bloc, 0).ValeurCanal(), 50000);
  }
  règle->muette = false;
  règle->aimants = {51000, 300000};
  horloge->Avance(250'000);
  bloc->MetàJour();
  horloge->Avance(5000);
  bloc->MetàJour();
  EXPECT_EQ(Le(bloc, 0).ValeurCanal(), 51000);
  EXPECT_EQ(Le(bloc, 1).ValeurCanal(), 300000);
  EXPECT_EQ(Le(bloc, 1).Age(), 0);
  EXPECT_TRUE(registre->entrées.empty());
}

// A frame goes to the ruler that its identifier names, whichever of them asked last.
TEST_F(SurLeCAN, PartageUnPortEntreSesRègles) {
  Règle({50000, 90000});
  const auto autre = Règle({20000, 70000}, 0x01020304);
  Règle({4242}, 0x0A0B0C0D);
  const FonctionRef bloc =
      Bloc("DrvPCI7841-2", {{0, "Règle MTS Multimagnet", "00A1FF10", 0x1A1, 2, 1},
                            {1, "Règle MTS Multimagnet", "01020304", 0x1B1, 2, 1},
                            {2, "Règle MTS 1 aimant", "0A0B0C0D", 0x1C1},
                            {3, "Règle MTS Multimagnet", "00A1FF10", 0x1A1, 2, 2},
                            {4, "Règle MTS Multimagnet", "01020304", 0x1B1, 2, 2}});
  Démarre();
  const auto passe = [&](int fois) {
    for (; fois > 0; --fois) {
      bloc->MetàJour();
      horloge->Avance(5000);
    }
    std::vector<double> lues;
    for (const CanalRef& canal : *bloc->Canals()) lues.push_back(canal->ValeurCanal());
    return lues;
  };
  EXPECT_EQ(passe(6), (std::vector<double>{50000, 20000, 4242, 90000, 70000}));
  for (int i = 0; i < 20; ++i) {
    autre->aimants = {20000 + 40 * i, 70000 - 30 * i};
    const auto lues = passe(3);
    EXPECT_EQ(lues[1], 20000 + 40 * i);
    EXPECT_EQ(lues[4], 70000 - 30 * i);
  }
  autre->muette = true;
  EXPECT_EQ(passe(5), (std::vector<double>{50000, 20760, 4242, 90000, 69430}));
  EXPECT_TRUE(registre->entrées.empty());
  // A card that takes no request says nothing of its rulers.
  can.absente = true;
  EXPECT_EQ(passe(5), (std::vector<double>{50000, 20760, 4242, 90000, 69430}));
}

TEST_F(SurLeCAN, DitCeQuiNePeutPasPartagerUnPort) {
  const char* kUn = "Règle MTS 1 aimant";
  const struct {
    const char* driver;
    std::vector<LigneDeRègle> règles;
    bool parFonction;
    const char* dit;
  } cas[] = {
      {"DrvPCI7841-2", {{0, kUn}, {1, kUn, "01020304", 0x1B1}}, false, ""},
      {"DrvPCI7841-2", {{0, kUn}, {1, kUn}}, false, ""},
      {"DrvPCI7841-2",
       {{0, kUn}, {1, kUn, "01020304"}},
       false,
       "Canal 11 : Position ID d'une autre règle du port (canal 10)"},
      {"DrvPCI7841-2",
       {{0, kUn}, {1, kUn, "00A1FF10", 0x1B1}},
       false,
       "Canal 11 : la règle de ce numéro de série a déjà un autre Position ID (canal 10)"},
      {"DrvPCI7841-2",
       {{0, kUn}, {1, kUn, "01020304", 0x1B1}},
       true,
       "Canal 11 : le bloc ne lit que la règle de son premier canal (canal 10)"},
  };
  Règle({5, 6});
  Règle({7, 8}, 0x01020304);
  for (const auto& c : cas) {
    registre->entrées.clear();
    (void)Bloc(c.driver, c.règles, c.parFonction);
    Démarre(c.driver);
    EXPECT_EQ(registre->entrées.size(), *c.dit == 0 ? 0U : 1U) << c.dit;
    EXPECT_TRUE(registre->Contient(c.dit) || *c.dit == 0) << c.dit;
    carte.Fonctions()->Remove("1");
  }
}

TEST_F(SurLeCAN, FermeLePortUneFois) {
  const FonctionRef bloc = Bloc("DrvPCI7841-2", {{0, nullptr}}, true, 123);
  Démarre();
  EXPECT_EQ(bus.réglages.codeVitesse, 3) << "a speed that is not known";
  EXPECT_TRUE(bus.ouvert);
  bloc->Décharge();
  EXPECT_FALSE(bus.ouvert);
  bus.ouvert = true;  // opened by somebody else meanwhile
  bloc->Décharge();
  EXPECT_TRUE(bus.ouvert);
}

TEST_F(SurLeCAN, MontreUneConfigurationRefusée) {
  Bloc("DrvPCI7841-2", {{0, nullptr}});
  can.refuseConfig = true;
  Démarre();
  ASSERT_EQ(messages.textes.size(), 1U);
  EXPECT_EQ(messages.textes.front(),
            "init carte CAN\nHandle : 261\nN° de carte : 2\nN° du port : 1\nMode : 11 bits\n"
            "Acc Code : 0\nAcc Mask : 2047\nVitesse : 500");
  EXPECT_TRUE(registre->entrées.empty()) << "loading goes on";
}

// The first generation: rulers that send by themselves, one on each port.
TEST_F(SurLeCAN, SertLaPremièreGénération) {
  plateforme.réglages.can.numéroDeSérie = "00A1FF10";
  const auto règle = Règle({123456}, 0x00A1FF10, 1);
  const FonctionRef bloc = Bloc("DrvPCI7841", {{1, nullptr}});
  Démarre("DrvPCI7841");
  EXPECT_EQ(bus.réglages7841.adresse, 8);
  EXPECT_EQ(bus.réglages7841.masque, 0xFF);
  EXPECT_EQ(bus.réglages7841.temps, (std::array<std::uint8_t, 2>{0, 0x14}));
  EXPECT_EQ(Le(bloc, 1).NuméroDeNoeud(), 0x21);
  EXPECT_EQ(Le(bloc, 1).Canal_IdentifiantA(), 0x181);
  EXPECT_EQ(Le(bloc, 1).Canal_IdentifiantB(), 0x1A1);
  EXPECT_EQ(règle->paramètres, (std::array<std::uint8_t, 5>{1, 0, 1, 0, 0}));
  bloc->MetàJour();
  EXPECT_EQ(Le(bloc, 1).ValeurCanal(), 0) << "no frame yet";
  horloge->Avance(3500);
  règle->aimants = {-42};
  horloge->Avance(1000);
  bloc->MetàJour();
  EXPECT_EQ(Le(bloc, 1).ValeurCanal(), -42);
  bloc->MetàJour();
  EXPECT_EQ(Le(bloc, 1).ValeurCanal(), -42) << "stays between two frames";
  EXPECT_TRUE(registre->entrées.empty());
}

TEST_F(SurLeCAN, EssaieTroisFoisLaPremièreGénération) {
  plateforme.réglages.can.numéroDeSérie = "00A1FF10";
  const auto règle = Règle({123456}, 0x00A1FF10, 1);
  règle->muette = true;
  const FonctionRef bloc = Bloc("DrvPCI7841", {{1, nullptr}});
  Démarre("DrvPCI7841");
  ASSERT_EQ(registre->entrées.size(), 1U);
  EXPECT_TRUE(registre->Contient("Erreur N°32000 (Imposiible d'initialiser le CAN) à la ligne "));
  EXPECT_EQ(bus.envoyées.size(), 3U);
  EXPECT_FALSE(Le(bloc, 1).EnService());

  // The third attempt is the good one.
  registre->entrées.clear();
  règle->muette = false;
  règle->réponsesRestantes = 0;
  bus.envoyées.clear();
  can.Port(2, 1).Attache(Crée<sim::RègleMTSSimulée>(0x01010101, std::vector<std::int32_t>{1}));
  class Réveil : public sim::AppareilCAN {
   public:
    explicit Réveil(sim::RègleMTSSimulée& r) : règle(r) {}
    void Reçoit(const TrameCAN&, sim::PortCANSimulé&) override {
      if (++trames == 2) règle.réponsesRestantes.reset();
    }
    sim::RègleMTSSimulée& règle;
    int trames = 0;
  };
  bus.Attache(Crée<Réveil>(*règle));
  Le(bloc, 1).Initialise();
  EXPECT_TRUE(registre->entrées.empty());
  EXPECT_TRUE(Le(bloc, 1).EnService());
  EXPECT_TRUE(règle->enMarche);
}

TEST_F(SurLeCAN, SignaleUneCarteAbsente) {
  can.absente = true;
  Bloc("DrvPCI7841", {{0, nullptr}});
  Démarre("DrvPCI7841");
  EXPECT_TRUE(registre->Contient(
      "Erreur N°32000 (blnErreur d'initialisation de la carte PCI 7841 basé à l'adresse 2)"));
}

}  // namespace
}  // namespace zuma
