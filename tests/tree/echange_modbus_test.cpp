// Modbus blocks on a board, against a slave on a simulated line.
#include <functional>

#include <gtest/gtest.h>

#include "outils/arbre.h"
#include "outils/cas.h"
#include "outils/ligne_retive.h"
#include "sim/bus_modbus.h"
#include "sim/liaisons_simulees.h"

namespace zuma::essai {
namespace {

using Numéros = std::vector<std::int32_t>;
using Points = std::vector<double>;

constexpr auto kEA = "Entrée Analogique";
constexpr auto kEL = "Entrée Logique";
constexpr auto kSA = "Sortie Analogique";
constexpr auto kSL = "Sortie Logique";

class UneCarteModbus : public testing::Test, protected Banc {
 public:
  UneCarteModbus() {
    plateforme.liaisons = &fabrique;
    carte.TimerExact(horloge);
    carte.ChargeErreur(registre);
  }

  FonctionRef Ajoute(const char* clé, const char* type, const char* fonctionHexa,
                     std::int32_t départ, const Numéros& numéros, const char* adresse = "05",
                     bool parFonction = true) {
    return AjouteBloc(carte, clé,
                      {{"Driver", "DrvModBus"},
                       {"Type de Fonction", type},
                       {"Mise à Jour par Fonction", parFonction},
                       {"ModBus - Adresse", adresse},
                       {"ModBus - Fonction", fonctionHexa},
                       {"ModBus - Regitre départ", départ}},
                      numéros, horloge, registre);
  }
  void Retire(const char* clé) {
    carte.Fonctions()->Remove(clé);
    carte.FonctionSuivante({});
  }
  // A second slave beside the first one, on port 5.
  void PartageLaLigne() {
    const auto bus = Crée<sim::BusModbus>(*horloge);
    bus->Attache(5, esclave);
    bus->Attache(6, second);
    fabrique.Attache(5, bus);
  }
  static CanalRef Le(const FonctionRef& bloc, std::int32_t numéro) {
    return bloc->Canals()->Item(CléDuCanal(numéro));
  }
  void Démarre(const char* réglages = "3,19200,N,8,1") {
    LitCarte(carte, "DrvModBus", réglages);
    carte.Initialise();
  }

  // One pass of the host every 5 milliseconds.
  void Passe(int fois) {
    for (; fois > 0; --fois) {
      carte.MetàJour();
      horloge->Avance(5000);
    }
  }
  static Points Lues(const FonctionRef& bloc, const Numéros& numéros) {
    Points lues;
    for (const std::int32_t n : numéros) lues.push_back(Le(bloc, n)->ValeurCanal());
    return lues;
  }

  Ref<sim::HorlogeVirtuelle> horloge = Crée<sim::HorlogeVirtuelle>();
  sim::FabriqueLiaisonsSimulée fabrique;
  Ref<sim::EsclaveModbus> esclave = Crée<sim::EsclaveModbus>(*horloge, std::uint8_t{5});
  Ref<sim::EsclaveModbus> second = Crée<sim::EsclaveModbus>(*horloge, std::uint8_t{6});
  sim::LigneSérie& ligne = fabrique.Attache(3, esclave);
  Carte carte{plateforme};
};

TEST_F(UneCarteModbus, LitTousLesBlocsSansAttendre) {
  const FonctionRef mesures = Ajoute("1", kEA, "3", 100, {-1, 0, 1, 2});
  const FonctionRef états = Ajoute("2", kEL, "2", 0, {-1, 0, 5, 7});
  const FonctionRef parFonction = Ajoute("3", kEL, "3", 10, {-1, 0, 6, 15});
  const FonctionRef parCanal = Ajoute("4", kEL, "3", 10, {-1, 0, 1, 2}, "05", false);
  esclave->registres = {{100, 0},     {101, 40000}, {102, 65535},
                        {10, 0x8001}, {11, 0xFF00}, {12, 0x0080}};
  esclave->bits = {{0, true}, {1, false}, {2, false}};
  Démarre();
  for (int i = 0; i < 2; ++i) {
    carte.MetàJour();
    EXPECT_TRUE(mesures->RafraichissementEnCours());  // the answer is still on the wire
  }
  Passe(24);
  EXPECT_EQ(Lues(mesures, {-1, 0, 1, 2}), (Points{0, 0, 40000, 65535}));  // words are unsigned
  EXPECT_EQ(Lues(états, {5, 7}), (Points{0, -1}));  // input 0 is the low bit of the only byte
  EXPECT_EQ(Lues(parFonction, {0, 6, 15}), (Points{-1, 0, -1}));  // two bytes, high bits first
  EXPECT_EQ(Lues(parCanal, {0, 1, 2}), (Points{-1, 0, -1}));      // the low byte of each register
  EXPECT_TRUE(registre->entrées.empty());
}

// Every function that writes, in blocks of either type: what the slave holds at and behind register
// or coil 200, and that it is told as arrived.
TEST_F(UneCarteModbus, EcritLesSorties) {
  using Registres = std::map<std::uint16_t, std::uint16_t>;
  using Bits = std::map<std::uint16_t, bool>;
  const Registres trois{{200, 1235}, {201, 0xFFFE}, {202, 65535}};
  for (const auto& [type, fonction, numéros, voulues, registres, bits] :
       Cas<const char*, const char*, Numéros, Points, Registres, Bits>{
           {kSA, "10", {0, 1, 4}, {1234.5, -2, 65535.4}, trois, {}},
           {kSA, "6", {0, 3}, {7, -2}, {{200, 7}, {203, 0xFFFE}}, {}},
           {kSA, "5", {0, 1}, {3, 0}, {}, {{200, true}, {201, false}}},
           {kSL, "5", {0, 9}, {-1, 0}, {}, {{200, true}, {209, false}}},
           {kSL, "F", {0, 1, 2}, {-1, 0, 1}, {}, {{200, true}, {201, false}, {202, true}}},
           {kSL, "6", {0, 2}, {-1, 0}, {{200, 1}, {202, 0}}, {}},
           {kSL, "10", {0, 1}, {0, -1}, {{200, 0}, {201, 1}}, {}}}) {
    SCOPED_TRACE(std::string(type) + fonction);
    Numéros avecErreur = numéros;
    avecErreur.insert(avecErreur.begin(), -1);
    const FonctionRef sorties = Ajoute("1", type, fonction, 200, avecErreur);
    esclave->registres.clear();
    esclave->bits.clear();
    for (std::size_t i = 0; i < voulues.size(); ++i)
      Le(sorties, numéros[i])->ValeurCanal(voulues[i]);
    Démarre();
    Passe(80);  // what the former block asked may still be answered
    EXPECT_EQ(esclave->registres, registres);
    EXPECT_EQ(esclave->bits, bits);
    for (const CanalRef& canal : *sorties->Canals()) {
      EXPECT_EQ(canal->Atteint(), canal->NuméroCanal() != -1);
    }
    EXPECT_TRUE(registre->entrées.empty());
    Retire("1");
  }
  // A set point out of a register, which is told, goes as 0 and holds up none of the others.
  for (const double impossible : {70000.0, std::numeric_limits<double>::quiet_NaN()}) {
    const FonctionRef consignes = Ajoute("1", kSA, "10", 200, {-1, 0, 1});
    const CanalRef fausse = Le(consignes, 0);
    const CanalRef autre = Le(consignes, 1);
    registre->entrées.clear();
    for (const CanalRef& canal : {fausse, autre}) canal->ValeurCanal(9);
    Démarre();
    Passe(80);
    ASSERT_TRUE(fausse->Atteint() && autre->Atteint());
    fausse->ValeurCanal(impossible);
    autre->ValeurCanal(0);
    Passe(10);
    EXPECT_TRUE(registre->Contient("Erreur N°6 "));
    EXPECT_EQ(esclave->registres[200] + esclave->registres[201], 0);
    EXPECT_TRUE(autre->Atteint() && !fausse->Atteint());
    EXPECT_EQ(Lues(consignes, {-1}), Points{0});
    fausse->ValeurCanal(9);
    EXPECT_FALSE(fausse->Atteint()) << "the slave holds 0";
    Passe(10);
    EXPECT_TRUE(fausse->Atteint());
    Retire("1");
  }
}

// One coil or register a write: a stop comes before the turns of the others, and one output that
// the slave refuses keeps none of them.
TEST_F(UneCarteModbus, EcritUnArrêtAvantLesAutresVoies) {
  const FonctionRef sorties = Ajoute("1", kSA, "6", 200, {-1, 0, 1, 2, 3, 4, 5});
  const auto canal = [&](int n) { return Le(sorties, n); };
  for (int n = 0; n < 6; ++n) canal(n)->ValeurCanal(9);
  Démarre();
  Passe(60);
  for (int n = 0; n < 6; ++n) ASSERT_TRUE(canal(n)->Atteint()) << n;
  for (const int n : {1, 5, 3}) {
    canal(n)->ValeurCanal(0);
    Passe(10);  // an exchange in progress, then that one
    EXPECT_EQ(esclave->registres[static_cast<std::uint16_t>(200 + n)], 0) << n;
    EXPECT_TRUE(canal(n)->Atteint()) << n;
  }
  ligne.pannes.muette = true;
  canal(0)->ValeurCanal(0);
  Passe(30);
  EXPECT_FALSE(canal(0)->Atteint());
  ligne.pannes = {};
  canal(2)->ValeurCanal(8);
  Passe(150);
  EXPECT_TRUE(canal(0)->Atteint());
  EXPECT_EQ(esclave->registres[202], 8);
}

// With a number beyond the answer, which is told each time, the other channels are read and the
// error channel falls.
TEST_F(UneCarteModbus, LitLesAutresVoiesQuandLUneNExistePas) {
  const FonctionRef mots = Ajoute("1", kEA, "3", 0, {-1, 0, 1, 7});
  const FonctionRef bits = Ajoute("2", kEL, "2", 0, {-1, 0, 20});
  esclave->registres = {{0, 40000}, {1, 5}, {2, 6}};
  esclave->bits = {{0, true}, {1, true}};
  Le(mots, 1)->ParamètresDepuisBD(UneLigne({{"Numéro du Canal", Nombre(0)},
                                            {"Nom du Canal", Texte("signé")},
                                            {"ModBus - Registre signé", Valeur(true)}}));
  Démarre();
  ligne.pannes.muette = true;
  Passe(500);
  EXPECT_EQ(Lues(mots, {-1}), Points{-1});
  ligne.pannes = {};
  Passe(200);
  EXPECT_EQ(Lues(mots, {-1, 0, 1, 7}), (Points{0, 40000, -25536, 0}));  // the same word with a sign
  EXPECT_EQ(Lues(bits, {-1, 20}), (Points{0, 0}));
  EXPECT_TRUE(registre->Contient("Erreur N°9 "));
}

// The answer to ten registers at 4800 bits per second takes 75 ms: with the usual time-out it is
// late and gives nothing, with a longer one it is right. A value of another block is never taken.
TEST_F(UneCarteModbus, DonneASesEsclavesLeTempsDeSaConfiguration) {
  const Numéros tous{-1, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9};
  const FonctionRef un = Ajoute("1", kEA, "3", 0, tous);
  const FonctionRef deux = Ajoute("2", kEA, "3", 10, tous);
  for (std::uint16_t i = 0; i < 20; ++i) esclave->registres[i] = i < 10 ? 1 : 2;
  const auto règle = [&](const Valeur& timeOut) {
    messages.textes.clear();
    carte.ParamètresDepuisBD(UneLigne({{"ModBus - Time-out", timeOut}}));
    return messages.textes.empty() ? "" : messages.textes.back();
  };
  for (const auto& [timeOut, refusé, erreur] :
       Cas<Valeur, std::string, double>{{Valeur(), "", -1},
                                        {100, "", 0},
                                        {40.5, "", -1},
                                        {"250", "", 0},
                                        {0, "'0'", 0},  // what was read before stays
                                        {"vite", "'vite'", 0}}) {
    if (!refusé.empty()) (void)règle(100);
    const std::string dit = règle(timeOut);
    EXPECT_EQ(dit, refusé.empty() ? ""
                                  : "'ModBus - Time-out' of card 'Carte' is " + refusé +
                                        ": 1 to 10000 ms expected. Default time-out: 50 ms");
    Démarre("3,4800,N,8,1");
    for (const FonctionRef& bloc : {un, deux}) Le(bloc, 0)->ValeurCanal(0);
    Passe(1200);
    for (int i = 0; i < 2000; ++i) {
      Passe(1);
      for (const auto& [bloc, valeur] : {std::pair(un, 1.0), std::pair(deux, 2.0)}) {
        const Points lues = Lues(bloc, {-1, 0});
        ASSERT_TRUE(lues[1] == valeur || lues == (Points{erreur, 0})) << i;
      }
    }
    EXPECT_EQ(Lues(un, {-1}), Points{erreur});
  }
}

TEST_F(UneCarteModbus, LèveLeCanalDErreurAprèsDixEchecsEtLeRetire) {
  const FonctionRef bloc = Ajoute("1", kEA, "4", 0, {-1, 0});
  esclave->registres = {{0, 77}};
  Démarre();
  Passe(4);
  sim::Pannes& pannes = ligne.pannes;
  for (const auto& [quoi, abîme, passesParEchec] : Cas<const char*, std::function<void()>, int>{
           {"silence", [&] { pannes.muette = true; }, 12},
           {"parasites", [&] { pannes.parasitée = true; }, 4},
           {"coupures", [&] { pannes.coupée = true; }, 12},
           {"autre esclave", [&] { esclave->fausseAdresse = 6; }, 4},
           {"registre absent", [&] { esclave->registres.clear(); }, 4},
           {"port débranché", [&] { pannes.débranchée = true; }, 1}}) {
    SCOPED_TRACE(quoi);
    abîme();
    int passes = 0;
    for (; Lues(bloc, {-1}) == Points{0} && passes < 200; ++passes) Passe(1);
    EXPECT_GE(passes, 10) << "fewer than ten exchanges";
    EXPECT_LE(passes, passesParEchec * 10 + 12);
    EXPECT_EQ(Lues(bloc, {-1, 0}), (Points{-1, 77})) << "the value holds";
    ligne.pannes = {};
    esclave->fausseAdresse = 0;
    esclave->registres = {{0, 77}};
    Passe(130);  // late answers may come for half a second
    EXPECT_EQ(Lues(bloc, {-1}), Points{0}) << "a good answer clears it";
  }
}

TEST_F(UneCarteModbus, DitUnPortQuiNeSOuvrePasParLeCanalDErreur) {
  const FonctionRef bloc = Ajoute("1", kEA, "4", 0, {-1, 0});
  Démarre("4,19200,N,8,1");  // nothing is plugged there
  EXPECT_EQ(registre->entrées.size(), 1U);
  registre->entrées.clear();
  Passe(10);
  EXPECT_EQ(Lues(bloc, {-1}), Points{-1});
  EXPECT_EQ(registre->entrées.size(), 10U);
  EXPECT_FALSE(registre->Contient("Erreur N°91 "));  // the port is named, not a missing object
  fabrique.Attache(4, esclave);                      // plugged in late
  esclave->registres = {{0, 77}};
  Passe(250);
  EXPECT_EQ(Lues(bloc, {-1, 0}), (Points{0, 77}));
}

// On either bus, whatever keeps a block from its turn.
TEST_F(UneCarteModbus, FaitArriverUnArrêt) {
  const FonctionRef premier = Ajoute("1", kEA, "3", 0, {-1, 0});
  const FonctionRef consignes = Ajoute("2", kSA, "10", 200, {-1, 0});
  (void)Ajoute("3", kEA, "3", 0, {-1, 0});
  esclave->registres = {{0, 77}};
  const CanalRef canal = Le(consignes, 0);
  const auto règle = [&](const char* fonction) {
    premier->ParamètresDepuisBD(UneLigne({{"Driver", "DrvModBus"},
                                          {"Type de Fonction", kEA},
                                          {"ModBus - Adresse", "05"},
                                          {"ModBus - Fonction", fonction}}));
  };
  for (const char* driver : {"DrvModBus", "Drv_UMV4301_Modbus"}) {
    for (const auto& [quoi, gêne] : Cas<const char*, std::function<void()>>{
             {"hors service", [&] { consignes->Enabled(false); }},
             {"premier bloc impossible", [&] { règle("63"); }},
             {"port fermé", [&] { carte.RS()->FermePort(); }}}) {
      SCOPED_TRACE(std::string(driver) + quoi);
      LitCarte(carte, driver, "3,19200,N,8,1");
      carte.Initialise();
      consignes->Enabled(true);
      canal->ValeurCanal(9);
      Passe(300);
      ASSERT_TRUE(canal->Atteint() && esclave->registres[200] == 9);
      gêne();
      Passe(200);
      canal->ValeurCanal(0);
      Passe(210);
      EXPECT_EQ(esclave->registres[200], 0);
      EXPECT_TRUE(canal->Atteint());
      règle("3");
    }
  }
}

// A late answer is that of no other question: neither a value of another block, nor the arrival of
// a set point.
TEST_F(UneCarteModbus, NePrendPasUneRéponseTardivePourUneAutre) {
  const FonctionRef un = Ajoute("1", kEA, "3", 0, {-1, 0});
  const FonctionRef deux = Ajoute("2", kEA, "3", 1, {-1, 0});
  const FonctionRef consignes = Ajoute("3", kSA, "10", 200, {-1, 0});
  const auto fil = Crée<LigneRétive>(*horloge, esclave);
  fabrique.Attache(5, fil);
  esclave->registres = {{0, 1}, {1, 2}};
  Démarre("5,19200,N,8,1");
  const CanalRef canal = Le(consignes, 0);
  Tirage tire;
  int bonnes = 0;
  int atteintes = 0;
  for (int i = 0; i < 1500; ++i) {
    fil->Change(tire);
    if (tire(3) == 0) canal->ValeurCanal(tire(3));
    for (std::uint32_t n = tire(200); n > 0; --n) {
      Passe(1);
      bonnes += Lues(un, {0}) == Points{1} && Lues(deux, {0}) == Points{2} ? 1 : 0;
      for (const auto& [bloc, valeur] : {std::pair(un, 1.0), std::pair(deux, 2.0)}) {
        ASSERT_TRUE(Lues(bloc, {0}) == Points{0} || Lues(bloc, {0}) == Points{valeur}) << i;
      }
      if (!canal->Atteint()) continue;
      ++atteintes;
      ASSERT_EQ(esclave->registres[200], canal->ValeurCanal()) << i;
    }
  }
  EXPECT_GT(bonnes, 5'000);
  EXPECT_GT(atteintes, 5'000);
}

// The late answer of one slave may touch the answer of the one that is asked: that one counts.
TEST_F(UneCarteModbus, EntendLaRéponseQuiToucheUneRéponseTardive) {
  (void)Ajoute("1", kEA, "3", 0, {-1, 0});
  const CanalRef canal = Le(Ajoute("2", kSA, "10", 200, {-1, 0}, "06"), 0);
  PartageLaLigne();
  esclave->registres = {{0, 1}};
  Démarre("5,9600,N,8,1");
  Passe(100);
  ASSERT_TRUE(canal->Atteint());
  esclave->latence = 66'000;  // its answer ends where that of the other begins
  canal->ValeurCanal(7);
  const double départ = horloge->Maintenant();
  while (!canal->Atteint() && horloge->Maintenant() < départ + 1e6) {
    carte.MetàJour();
    horloge->Avance(1000);
  }
  EXPECT_EQ(second->registres[200], 7);
  EXPECT_LT(horloge->Maintenant() - départ, 150'000);
}

// While noise comes, a question is followed by another only when it has left: a stop does not wait
// behind a queue of them.
TEST_F(UneCarteModbus, NEntassePasSesQuestionsDevantLeBruit) {
  (void)Ajoute("1", kEA, "3", 0, {-1, 0});
  const FonctionRef consignes = Ajoute("2", kSA, "10", 200, {-1, 0});
  const CanalRef canal = Le(consignes, 0);
  esclave->registres = {{0, 1}};
  Démarre("3,9600,N,8,1");
  canal->ValeurCanal(9);
  Passe(300);
  ASSERT_EQ(esclave->registres[200], 9);
  ligne.pannes.babillarde = true;
  Passe(1000);
  canal->ValeurCanal(0);
  Passe(100);
  EXPECT_EQ(esclave->registres[200], 0);
}

TEST_F(UneCarteModbus, LaisseEnPaixLesAutresEsclavesDUnLent) {
  const FonctionRef lent = Ajoute("1", kEA, "3", 0, {-1, 0});
  const FonctionRef prompt = Ajoute("2", kEA, "3", 0, {-1, 0}, "06");
  PartageLaLigne();
  esclave->registres = {{0, 1}};
  esclave->latence = 60'000;
  Démarre("5,19200,N,8,1");
  for (int i = 0; i < 20; ++i) {
    second->registres[0] = static_cast<std::uint16_t>(i);
    Passe(100);
    EXPECT_EQ(Lues(prompt, {-1, 0}), (Points{0, static_cast<double>(i)}));
  }
  EXPECT_EQ(Lues(lent, {-1, 0}), (Points{-1, 0}));
}

TEST_F(UneCarteModbus, AccepteEncoreUneRéponseACinquanteMillisecondes) {
  const FonctionRef bloc = Ajoute("1", kEA, "3", 0, {-1, 0});
  for (const int retard : {49'999, 50'000}) {  // the pass's own read of the clock adds one
    esclave->registres = {{0, static_cast<std::uint16_t>(retard)}};
    if (retard == 49'999) Démarre();
    while (!bloc->RafraichissementEnCours()) carte.MetàJour();
    horloge->Avance(retard);
    carte.MetàJour();
    EXPECT_EQ(Lues(bloc, {0}), Points{49'999});
  }
}

}  // namespace
}  // namespace zuma::essai
