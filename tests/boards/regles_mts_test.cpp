// Rulers on the CAN card: filters as functions, and blocks and channels against simulated rulers.
#include "boards/regles_mts.h"

#include <algorithm>

#include <gtest/gtest.h>

#include "boards/pci_7841.h"
#include "outils/allocations.h"
#include "outils/banc_instrument.h"
#include "outils/cas.h"
#include "sim/regle_mts.h"

namespace zuma {
namespace {

using essai::Cas;
using regles_mts::Mémoire;
using regles_mts::Paire;
using Positions = std::vector<double>;

TEST(Règles, DécodentUnePositionSur24Bits) {
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

TEST(Règles, FiltrentLaLectureDuBloc) {
  for (const auto& [pourquoi, avant, lues, après] : Cas<const char*, Paire, Paire, Paire>{
           {"9999 is taken", {50000, 90000}, {59999, 90000}, {59999, 90000}},
           {"10000 is refused on magnet 1", {50000, 90000}, {60000, 90000}, {50000, 90000}},
           {"and backwards", {50000, 90000}, {40000, 90000}, {50000, 90000}},
           {"the first position of magnet 1", {0, 90000}, {60000, 90000}, {60000, 90000}},
           {"any jump of magnet 2", {50000, 90000}, {50000, 250000}, {50000, 250000}},
           {"but one to 0", {50000, 90000}, {50000, 0}, {50000, 90000}},
           {"and its first position", {50000, 0}, {50000, 90000}, {50000, 90000}},
           {"a small step to 0 is taken", {50000, 9999}, {50000, 0}, {50000, 0}},
           {"too close: both keep", {50000, 90000}, {70000, 70700}, {50000, 90000}},
           {"just so", {10000, 90000}, {10001, 10201}, {10000, 90000}},
           {"just apart", {10000, 90000}, {10000, 10203}, {10000, 10203}},
           {"whichever comes first", {10000, 90000}, {10203, 10000}, {10203, 10000}}}) {
    Mémoire m{lues[0], lues[1], avant[0], avant[1]};
    regles_mts::FiltreBloc(m);
    EXPECT_EQ((Paire{m.c1, m.c2}), après) << pourquoi;
  }
}

TEST(Règles, FiltrentLaLectureSimple) {
  for (const auto& [pourquoi, avant, lues, aimant, prise, après] :
       Cas<const char*, Paire, Paire, int, std::optional<std::int32_t>, Paire>{
           {"999 is taken", {5000, 9000}, {5999, 9000}, 1, 5999, {5999, 9000}},
           {"1000 is refused", {5000, 9000}, {6000, 9000}, 1, {}, {5000, 9000}},
           {"but not for magnet 2", {5000, 9000}, {6000, 9000}, 2, 9000, {6000, 9000}},
           {"magnet 2 alike", {5000, 9000}, {5000, 7999}, 2, {}, {5000, 9000}},
           {"0 is no position", {500, 9000}, {0, 9000}, 1, {}, {500, 9000}},
           {"the first position", {0, 9000}, {5000, 9000}, 1, 5000, {5000, 9000}},
           {"too close: both keep", {5000, 9000}, {8950, 9000}, 2, {}, {5000, 9000}}}) {
    Mémoire m{.c1 = avant[0], .c2 = avant[1]};
    EXPECT_EQ(regles_mts::FiltreSimple(m, lues, aimant), prise) << pourquoi;
    EXPECT_EQ((Paire{m.c1, m.c2}), après) << pourquoi;
  }
}

constexpr const char* kUn = "Règle MTS 1 aimant";
constexpr const char* kPlusieurs = "Règle MTS Multimagnet";
constexpr const char* kPremièreGénération = "DrvPCI7841";

class SurLeCAN : public testing::Test, public essai::BancInstrument {
 public:
  SurLeCAN() { plateforme.can = &can; }
  ~SurLeCAN() override { chassis.Cartes({}); }
  // A ruler's channel.
  struct Voie {
    std::int32_t numéro;
    const char* driver;
    const char* série = "00A1FF10";
    std::int32_t positionID = 0x1A1;
    std::int32_t aimants = 2;
    std::int32_t aimant = 1;
  };
  // A block of rulers, started.
  FonctionRef Monte(const std::vector<Voie>& voies, bool parFonction = false,
                    const char* driver = "DrvPCI7841-2", std::int32_t vitesse = 500) {
    std::vector<std::int32_t> numéros;
    for (const Voie& voie : voies) numéros.push_back(voie.numéro);
    const FonctionRef bloc = Ajoute("Entrée Analogique", numéros,
                                    {{"Driver", driver},
                                     {"Mise à Jour par Fonction", parFonction},
                                     {"Numéro du port CAN", 1},
                                     {"Vitesse du CAN", vitesse},
                                     {"Mode CAN", "11 bits"}});
    for (const Voie& voie : voies) {
      if (voie.driver == nullptr) continue;
      LitCanal(Le(bloc, voie.numéro), {{"N° de série", voie.série},
                                       {"N° de Node", 5},
                                       {"Mode opératoire", 3},
                                       {"Nombre d'aimants", voie.aimants},
                                       {"Position de l'aimant", voie.aimant},
                                       {"Position ID", voie.positionID},
                                       {"Status ID", 0x2A1},
                                       {"Driver canal", voie.driver}});
    }
    Démarre(driver, "", "2");
    return bloc;
  }
  Ref<sim::RègleMTSSimulée> Règle(std::vector<std::int32_t> positions,
                                  std::uint32_t série = 0x00A1FF10) {
    const auto règle = Crée<sim::RègleMTSSimulée>(série, std::move(positions));
    bus.Attache(règle);
    return règle;
  }
  // What the channels read behind passes of 5 ms.
  Positions Passe(const FonctionRef& bloc, int passes = 1) {
    for (; passes > 0; --passes) {
      bloc->MetàJour();
      horloge->Avance(5000);
    }
    return Lues(bloc);
  }

  sim::CarteCANSimulée can{*horloge};
  sim::PortCANSimulé& bus = can.Port(2, 1);
};

TEST_F(SurLeCAN, DémarreUneRègleEtLaLit) {
  const auto règle = Règle({123456});
  Règle({777}, 0x01020304);  // another ruler on the bus stays quiet
  const FonctionRef bloc = Monte({{0, kUn}});
  EXPECT_EQ(bus.réglages.codeVitesse, 2);
  EXPECT_EQ(règle->positionID, 0x1A1U);
  EXPECT_EQ(règle->statusID, 0x2A1U);
  EXPECT_EQ(règle->noeud, 5);
  EXPECT_EQ(règle->mode, 3);
  ASSERT_EQ(bus.envoyées.size(), 4U);
  EXPECT_EQ(bus.envoyées[0].données, (DonnéesCAN{0, 0xA1, 0xFF, 0x10, 5, ' ', ' ', ' '}));
  EXPECT_EQ(Passe(bloc), Positions{123456});
  règle->aimants = {-8388607};
  const auto avant = essai::Allocations();
  bloc->MetàJour();
  EXPECT_LT(essai::Allocations() - avant, 6) << "the twin alone may allocate";
  EXPECT_EQ(Lues(bloc), Positions{-8388607});
  EXPECT_TRUE(bus.envoyées.back().distante == 1 && bus.envoyées.back().identifiant == 0x1A1);
  // Stale answers in the queue are not taken for the present position.
  bus.Emet({.identifiant = 0x1A1, .nombre = 3, .données = {0, 0, 1}}, 0);
  EXPECT_EQ(Passe(bloc), Positions{-8388607});
  règle->muette = true;
  const double départ = horloge->Maintenant();
  bloc->MetàJour();
  EXPECT_LT(horloge->Maintenant() - départ, 11'000) << "bounded by its time-out";
  EXPECT_EQ(Lues(bloc), Positions{0}) << "a ruler that does not answer reads 0";
  EXPECT_TRUE(registre->entrées.empty());
}

TEST_F(SurLeCAN, LaisseHorsServiceUneRègleQuiNeRépondPas) {
  const auto règle = Règle({5});
  for (int réponses = 0; réponses < 4; ++réponses) {
    SCOPED_TRACE(réponses);
    règle->réponsesRestantes = réponses;
    Canal& canal = Le(Monte({{0, kUn}}), 0);
    for (int fois = 0; fois < 2; ++fois) {
      EXPECT_FALSE(canal.EnService());
      canal.Initialise();
    }
    canal.ValeurCanal(42);
    canal.MetàJour();
    EXPECT_EQ(canal.ValeurCanal(), 42);
    règle->réponsesRestantes.reset();
    canal.Initialise();
    EXPECT_TRUE(canal.EnService()) << "a later start may succeed";
    carte.Fonctions()->Remove("1");
  }
  EXPECT_EQ(registre->entrées.size(), 4U) << "each of the four channels, once";
  EXPECT_TRUE(registre->Contient("Règle '00A1FF10' muette au démarrage"));
  EXPECT_TRUE(messages.textes.empty());
}

TEST_F(SurLeCAN, RefuseUneConfigurationIllisible) {
  Règle({5, 900});
  const FonctionRef bloc = Monte({{0, kUn, "12", 0x1A2},
                                  {1, kPlusieurs, "00A1FF10", 0x1A1, 3, 3},
                                  {2, kPlusieurs, "00A1FF10", 0x1A1, 2, 3},
                                  {3, kUn}});
  EXPECT_TRUE(registre->Contient("'12' n'est pas un numéro de série de règle"));
  EXPECT_TRUE(registre->Contient("Position de l'aimant 3, 1 ou 2 attendu"));
  EXPECT_EQ(registre->entrées.size(), 2U);
  EXPECT_FALSE(Le(bloc, 0).EnService() || Le(bloc, 1).EnService());
  Le(bloc, 2).ValeurCanal(42);
  EXPECT_EQ(Passe(bloc), (Positions{0, 0, 42, 5}))
      << "a magnet beyond the count keeps its value, the others go on";
}

TEST_F(SurLeCAN, LitTroisAimants) {
  const auto règle = Règle({1, 2, 3});
  const FonctionRef bloc =
      Monte({{0, "Règle MTS 3 aimants (lecture 2-1)"}, {1, "Règle MTS 3 aimants (lecture 3)"}});
  using Aimants = std::vector<std::int32_t>;
  const std::tuple<Aimants, int, Positions> cas[] = {
      {{100, 350, 900}, 2, {250, 900}}, {{350, 100, 900}, 2, {-250, 900}},
      {{0, 350, 900}, 2, {0, 900}},     {{100, 0, 900}, 2, {0, 900}},
      {{100, 350, 0}, 2, {0, 350}},     {{100, 0, 0}, 2, {0, 100}},
      {{100, 350, 900}, 1, {0, 0}}};
  for (const auto& [aimants, trames, lues] : cas) {
    règle->aimants = aimants;
    règle->tramesMaximum = static_cast<std::size_t>(trames);
    EXPECT_EQ(Passe(bloc), lues) << testing::PrintToString(aimants) << " " << trames;
  }
}

TEST_F(SurLeCAN, FiltreLaLectureDUnAimantParmiPlusieurs) {
  const auto règle = Règle({50000, 90000});
  const FonctionRef bloc = Monte({{0, kPlusieurs}, {1, kPlusieurs, "00A1FF10", 0x1A1, 2, 2}});
  bus.relevés = 0;
  (void)Passe(bloc);
  EXPECT_EQ(bus.relevés, 0) << "the first two reads leave the bus alone";
  EXPECT_EQ(Passe(bloc, 4), (Positions{50000, 90000}));
  règle->aimants = {50900, 90100};
  EXPECT_EQ(Passe(bloc, 3), (Positions{50900, 90100}));
  règle->aimants = {60000, 90100};
  EXPECT_EQ(Passe(bloc, 3), (Positions{50900, 90100})) << "a jump is refused";
  EXPECT_TRUE(registre->entrées.empty());
}

TEST_F(SurLeCAN, LitDeuxAimantsEnUnBloc) {
  const auto règle = Règle({50000, 90000});
  const FonctionRef bloc = Monte({{0, kPlusieurs}, {1, kPlusieurs}}, true);
  const auto demandes = [&] {
    return std::ranges::count_if(bus.envoyées, [](const TrameCAN& t) { return t.distante == 1; });
  };
  EXPECT_EQ(Passe(bloc), (Positions{0, 0})) << "asked at once, answered later";
  EXPECT_EQ(demandes(), 1);
  EXPECT_EQ(Passe(bloc), (Positions{50000, 90000}));
  EXPECT_EQ(demandes(), 2);

  règle->muette = true;
  bloc->MetàJour();  // the answer to the last request was on its way
  const auto avant = demandes();
  (void)Passe(bloc, 200);
  EXPECT_NEAR(static_cast<double>(demandes() - avant), 5, 1) << "every 200 ms while it is silent";
  plateforme.heureDePasse = 100;
  for (const TrameCAN& vaine :
       {TrameCAN{.identifiant = 0x555, .nombre = 8}, TrameCAN{.identifiant = 0x1A1, .nombre = 2}}) {
    bus.Emet(vaine, 0);
    horloge->Avance(1000);
    EXPECT_EQ(Passe(bloc), (Positions{50000, 90000})) << "the values stay";
    EXPECT_EQ(Le(bloc, 0).Age(), 100) << "a frame without a position is no reading";
  }
  règle->muette = false;
  règle->aimants = {51000, 300000};
  horloge->Avance(250'000);
  EXPECT_EQ(Passe(bloc, 2), (Positions{51000, 300000}));
  EXPECT_EQ(Le(bloc, 1).Age(), 0);
  EXPECT_TRUE(registre->entrées.empty());
}

// A frame goes to the ruler that its identifier names, whichever of them asked last.
TEST_F(SurLeCAN, PartageUnPortEntreSesRègles) {
  Règle({50000, 90000});
  const auto autre = Règle({20000, 70000}, 0x01020304);
  Règle({4242}, 0x0A0B0C0D);
  const FonctionRef bloc = Monte({{0, kPlusieurs},
                                  {1, kPlusieurs, "01020304", 0x1B1, 2, 1},
                                  {2, kUn, "0A0B0C0D", 0x1C1},
                                  {3, kPlusieurs, "00A1FF10", 0x1A1, 2, 2},
                                  {4, kPlusieurs, "01020304", 0x1B1, 2, 2}});
  EXPECT_EQ(Passe(bloc, 6), (Positions{50000, 20000, 4242, 90000, 70000}));
  for (int i = 0; i < 20; ++i) {
    autre->aimants = {20000 + 40 * i, 70000 - 30 * i};
    EXPECT_EQ(Passe(bloc, 3), (Positions{50000, 20000.0 + 40 * i, 4242, 90000, 70000.0 - 30 * i}));
  }
  const Positions dernières{50000, 20760, 4242, 90000, 69430};
  autre->muette = true;
  EXPECT_EQ(Passe(bloc, 5), dernières);
  EXPECT_TRUE(registre->entrées.empty());
  // A card that takes no request says nothing of its rulers.
  can.absente = true;
  EXPECT_EQ(Passe(bloc, 5), dernières);
}

TEST_F(SurLeCAN, DitCeQuiNePeutPasPartagerUnPort) {
  Règle({5, 6});
  Règle({7, 8}, 0x01020304);
  for (const auto& [seconde, parFonction, dit] : Cas<Voie, bool, std::string>{
           {{1, kUn, "01020304", 0x1B1}, false, ""},
           {{1, kUn}, false, ""},
           {{1, kUn, "01020304"}, false, "Position ID d'une autre règle du port"},
           {{1, kUn, "00A1FF10", 0x1B1},
            false,
            "la règle de ce numéro de série a déjà un autre Position ID"},
           {{1, kUn, "01020304", 0x1B1},
            true,
            "le bloc ne lit que la règle de son premier canal"}}) {
    registre->entrées.clear();
    (void)Monte({{0, kUn}, seconde}, parFonction);
    EXPECT_EQ(registre->entrées.size(), dit.empty() ? 0U : 1U) << dit;
    EXPECT_TRUE(dit.empty() || registre->Contient("Canal 11 : " + dit + " (canal 10)")) << dit;
    carte.Fonctions()->Remove("1");
  }
}

TEST_F(SurLeCAN, FermeLePortUneFois) {
  const FonctionRef bloc = Monte({{0, nullptr}}, true, "DrvPCI7841-2", 123);
  EXPECT_EQ(bus.réglages.codeVitesse, 3) << "a speed that is not known";
  EXPECT_TRUE(bus.ouvert);
  bloc->Décharge();
  EXPECT_FALSE(bus.ouvert);
  bus.ouvert = true;  // opened by somebody else meanwhile
  bloc->Décharge();
  EXPECT_TRUE(bus.ouvert);
}

TEST_F(SurLeCAN, DitUneConfigurationRefuséeEtUneCarteAbsente) {
  can.refuseConfig = true;
  (void)Monte({{0, nullptr}});
  EXPECT_EQ(messages.textes,
            std::vector<std::string>{
                "init carte CAN\nHandle : 261\nN° de carte : 2\nN° du port : 1\nMode : 11 bits\n"
                "Acc Code : 0\nAcc Mask : 2047\nVitesse : 500"});
  EXPECT_TRUE(registre->entrées.empty()) << "loading goes on";
  can.absente = true;
  (void)Monte({{0, nullptr}}, false, kPremièreGénération);
  EXPECT_TRUE(registre->Contient(
      "Erreur N°32000 (blnErreur d'initialisation de la carte PCI 7841 basé à l'adresse 2)"));
}

// The first generation: rulers that send by themselves, one on each port.
TEST_F(SurLeCAN, SertLaPremièreGénération) {
  plateforme.réglages.can.numéroDeSérie = "00A1FF10";
  const auto règle = Règle({123456});
  const FonctionRef bloc = Monte({{1, nullptr}}, false, kPremièreGénération);
  EXPECT_EQ(bus.réglages7841.adresse, 8);
  EXPECT_EQ(bus.réglages7841.masque, 0xFF);
  EXPECT_EQ(bus.réglages7841.temps, (std::array<std::uint8_t, 2>{0, 0x14}));
  EXPECT_EQ(Le(bloc, 1).NuméroDeNoeud(), 0x21);
  EXPECT_EQ(Le(bloc, 1).Etat<IdentifiantsDeRègle>().a, 0x181);
  EXPECT_EQ(Le(bloc, 1).Etat<IdentifiantsDeRègle>().b, 0x1A1);
  EXPECT_EQ(règle->paramètres, (std::array<std::uint8_t, 5>{1, 0, 1, 0, 0}));
  EXPECT_EQ(Passe(bloc), Positions{0}) << "no frame yet";
  règle->aimants = {-42};
  horloge->Avance(1000);
  for (int fois = 0; fois < 2; ++fois) {
    bloc->MetàJour();
    EXPECT_EQ(Lues(bloc), Positions{-42}) << "stays between two frames";
  }
  EXPECT_TRUE(registre->entrées.empty());
}

TEST_F(SurLeCAN, EssaieTroisFoisLaPremièreGénération) {
  plateforme.réglages.can.numéroDeSérie = "00A1FF10";
  const auto règle = Règle({123456});
  règle->muette = true;
  Canal& canal = Le(Monte({{1, nullptr}}, false, kPremièreGénération), 1);
  ASSERT_EQ(registre->entrées.size(), 1U);
  EXPECT_TRUE(registre->Contient("Erreur N°32000 (Imposiible d'initialiser le CAN) à la ligne "));
  EXPECT_EQ(bus.envoyées.size(), 3U);
  EXPECT_FALSE(canal.EnService());

  règle->muette = false;
  canal.Initialise();
  EXPECT_EQ(registre->entrées.size(), 1U);
  EXPECT_TRUE(canal.EnService() && règle->enMarche) << "a later start may succeed";
}

}  // namespace
}  // namespace zuma
