// The variable-speed drive over a simulated line: start, set points, states, failures.
#include "instruments/variateur_ls.h"

#include <functional>

#include <gtest/gtest.h>

#include "outils/banc_instrument.h"
#include "outils/cas.h"
#include "outils/ligne_retive.h"
#include "sim/collaborateurs.h"

namespace zuma {
namespace {

TEST(ConsigneDuVariateur, TientEnTroisRegistres) {
  const std::pair<double, std::array<std::uint16_t, 3>> cas[] = {
      {12.34, {1, 12, 34}}, {-0.5, {0xFFFF, 0, 50}},       {0, {0, 0, 0}},
      {0.999, {1, 1, 0}},   {-1500.01, {0xFFFF, 1500, 1}}, {0.135, {1, 0, 14}},
      {0.145, {1, 0, 15}},  {-1.005, {0xFFFF, 1, 1}},      {0.1449, {1, 0, 14}},
      {1.995, {1, 2, 0}},   {0.29 - 0.145, {1, 0, 15}}};
  for (const auto& [valeur, registres] : cas) EXPECT_EQ(VariateurLS::Consigne(valeur), registres);
  EXPECT_THROW((void)VariateurLS::Consigne(70000), Echec);
  // The wait, longer on fast links.
  EXPECT_EQ(VariateurLS::TimeOut(10, 19200), 15'000);
  EXPECT_EQ(VariateurLS::TimeOut(10, 38400), 150'000);
}

class UnVariateur : public testing::Test, public essai::BancInstrument {
 public:
  UnVariateur() {
    plateforme.fichiers = &fichiers;
    esclave->registres = {{1032, 7}, {1146, 7}, {600, 0x0201}, {601, 0x1234}, {602, 0}};
    Démarre("Variateur LS Modbus et soft K9", "4,38400,N,8,1,0.7");
  }
  // Asked to move, it does, and nothing of it is on the line any more.
  void Tourne() {
    Le(consigne, 0).ValeurCanal(12);
    Passe(200);
    (void)fil->Genres();
  }
  // The drive holds the set point's whole part.
  [[nodiscard]] bool Reçue() { return esclave->registres[501] == Le(consigne, 0).ValeurCanal(); }
  [[nodiscard]] double Défaut() const { return Le(consigne, -1).ValeurCanal(); }
  FonctionRef Ajoute(const char* type, const char* fonction, std::int32_t départ,
                     const std::vector<std::int32_t>& numéros) {
    return BancInstrument::Ajoute(type, numéros,
                                  {{"Driver", "Variateur LS Modbus et soft K9"},
                                   {"ModBus - Adresse", "05"},
                                   {"ModBus - Fonction", fonction},
                                   {"ModBus - Regitre départ", départ}});
  }
  void Passe(int fois) {
    for (; fois > 0; --fois) {
      carte.MetàJour();
      horloge->Avance(2000);
    }
  }

  sim::FichiersEnMémoire fichiers;
  Ref<sim::EsclaveModbus> esclave = Crée<sim::EsclaveModbus>(*horloge, std::uint8_t{5});
  Ref<essai::LigneRétive> fil = Crée<essai::LigneRétive>(*horloge, esclave);
  sim::LigneSérie& prise = liaisons.Attache(4, fil);
  FonctionRef consigne = Ajoute("Sortie Analogique", "10", 500, {-1, 0});
  FonctionRef sorties = Ajoute("Sortie Logique", "10", 500, {0, 3});
  FonctionRef états = Ajoute("Entrée Logique", "3", 600, {-1, 0, 9, 20});
  FonctionRef vitesse = Ajoute("Entrée Analogique", "3", 600, {0});
};

TEST_F(UnVariateur, DémarrePuisEcritEtLitTourATour) {
  Le(consigne, 0).ValeurCanal(12.34);
  Le(sorties, 3).ValeurCanal(kVrai);
  Le(sorties, 0).ValeurCanal(1);  // only -1 counts
  Passe(45);
  EXPECT_EQ(fil->Genres(), "D1032=1 D1032=0 D1146=2 E12 E12 L E12 E12 E12 E12 L ");
  const auto registres = [&] {
    std::vector<int> lus;
    for (std::uint16_t i = 500; i < 505; ++i) lus.push_back(esclave->registres[i]);
    return lus;
  };
  EXPECT_EQ(registres(), (std::vector<int>{1, 12, 34, 7, 8}));
  Passe(55);
  // Bit 0 of the low byte of the first word, bit 1 of its high byte, bit 4 of the second word.
  for (const std::int32_t bit : {0, 9, 20}) EXPECT_EQ(Le(états, bit).ValeurCanal(), -1) << bit;
  EXPECT_EQ(Le(vitesse, 0).ValeurCanal(), 0x1234);
  Le(consigne, 0).ValeurCanal(0);
  Passe(100);
  EXPECT_EQ(registres(), (std::vector<int>{0, 0, 0, 0, 8})) << "no ramp at rest";
  EXPECT_TRUE(registre->entrées.empty());
}

TEST_F(UnVariateur, SigneUnePanneSansRetenirLaBoucle) {
  Passe(100);
  prise.pannes.parasitée = true;
  Passe(200);
  EXPECT_EQ(Le(consigne, -1).ValeurCanal(), -1);
  EXPECT_EQ(Le(états, -1).ValeurCanal(), -1);
  ASSERT_GE(fichiers.lignes.size(), 3U);
  EXPECT_EQ(fichiers.lignes[2].substr(8), ",Erreur CRC,3");
  EXPECT_EQ(fichiers.lignes[2].substr(0, 3), "08:");
  prise.pannes = {};
  Passe(100);
  EXPECT_EQ(Le(consigne, -1).ValeurCanal(), 0);
  fichiers.lignes.clear();
  prise.pannes.muette = true;
  Passe(400);
  EXPECT_EQ(Défaut(), 0);
  Passe(150);
  EXPECT_EQ(Défaut(), -1) << "ten silences of 100 ms";
  EXPECT_TRUE(fichiers.lignes.empty());
  // A line that never falls silent holds up neither set points nor the counting of failures.
  prise.pannes = {};
  Passe(100);
  prise.pannes.babillarde = true;
  (void)fil->Genres();
  Passe(5000);
  EXPECT_FALSE(fil->questions.empty());
  EXPECT_EQ(Défaut(), -1);
}

TEST_F(UnVariateur, RéponseTardiveOuPerdueNeRetientPasUnArrêt) {
  using Gêne = std::function<void()>;
  Passe(1);
  for (const auto& [quoi, gêne] :
       essai::Cas<const char*, Gêne>{{"rien", [] {}},
                                     {"43 ms", [&] { fil->retard = 43'000; }},
                                     {"60 ms", [&] { fil->retard = 60'000; }},
                                     {"600 ms", [&] { fil->retard = 600'000; }},
                                     {"réponses perdues", [&] { fil->perdRéponses = 1'000; }},
                                     {"parasites", [&] { prise.pannes.parasitée = true; }},
                                     {"coupures", [&] { prise.pannes.coupée = true; }}}) {
    SCOPED_TRACE(quoi);
    for (const FonctionRef& bloc : {consigne, sorties}) {
      for (const int avance : {300, 307, 313, 326}) {  // wherever the exchange stands
        Tourne();
        Le(sorties, 3).ValeurCanal(kVrai);
        ASSERT_EQ(esclave->registres[501], 12);
        gêne();
        Passe(avance);
        EXPECT_EQ(fil->Genres().find("L L"), std::string::npos);
        const double départ = horloge->Maintenant();
        Canal& canal = Le(bloc, bloc == consigne ? 0 : 3);
        canal.ValeurCanal(0);
        while (fil->questions.empty()) Passe(1);
        EXPECT_LT(fil->heures.front() - départ, 105'000);
        Passe(110);
        EXPECT_EQ(esclave->registres[bloc == consigne ? 501 : 504], 0);
        const Octets première = fil->questions.front();
        EXPECT_EQ(première[1], 16) << "the next question is the stop";
        EXPECT_EQ(première[bloc == consigne ? 10 : 16], 0);
        prise.pannes = {};
        fil->retard = 10'000;
        fil->perdQuestions = fil->perdRéponses = 0;
        Passe(1000);
        EXPECT_TRUE(canal.Atteint());
        EXPECT_EQ(Défaut(), 0);
      }
    }
  }
}

// Whatever the line does, an output is told to have arrived only where the drive holds it.
TEST_F(UnVariateur, NeDitPasAtteintCeQuiNeLEstPas) {
  essai::Tirage tire;
  int atteintes = 0;
  for (int i = 0; i < 1500; ++i) {
    fil->Change(tire);
    if (tire(3) == 0) Le(consigne, 0).ValeurCanal(tire(3));
    for (std::uint32_t n = tire(200); n > 0; --n) {
      Passe(1);
      if (!Le(consigne, 0).Atteint()) continue;
      ++atteintes;
      ASSERT_TRUE(Reçue()) << i;
    }
  }
  EXPECT_GT(atteintes, 5'000);
}

TEST_F(UnVariateur, RouvreUneLigneQuiManqueEtLeDit) {
  for (const bool auDépart : {true, false}) {
    auDépart ? carte.RS()->FermePort() : Tourne();
    prise.pannes.débranchée = true;
    registre->entrées.clear();
    Passe(600);
    EXPECT_EQ(Défaut(), -1) << auDépart;
    EXPECT_GE(registre->entrées.size(), 1U);
    EXPECT_LE(registre->entrées.size(), 3U) << "told every second and not on each pass";
    Le(consigne, 0).ValeurCanal(0);
    esclave->registres[501] = 12;
    prise.pannes = {};
    Passe(550);
    EXPECT_EQ(esclave->registres[501], 0) << auDépart;
    Passe(550);
    EXPECT_TRUE(Le(consigne, 0).Atteint()) << auDépart;
    EXPECT_EQ(Défaut(), 0) << auDépart;
    EXPECT_EQ(esclave->registres[1146], 2) << "the start that could not be made is made now";
  }
}

TEST_F(UnVariateur, ReprendUnDépartQuiAEchoué) {
  prise.pannes.muette = true;
  Passe(1);
  ASSERT_EQ(messages.textes.size(), 1U);
  EXPECT_EQ(messages.textes[0],
            "Internal program speed controler stopped. Please Call K9 (++00 (0)0 00 00 00 00).");
  esclave->registres[1032] = esclave->registres[1146] = 7;
  prise.pannes = {};
  (void)fil->Genres();
  Le(consigne, 0).ValeurCanal(1);
  double plusLongue = 0;
  for (int i = 0; i < 500; ++i) {
    const double départ = horloge->Maintenant();
    carte.MetàJour();
    plusLongue = std::max(plusLongue, horloge->Maintenant() - départ);
    horloge->Avance(2000);
  }
  EXPECT_LT(plusLongue, 1'000) << "no pass waits for the drive";
  EXPECT_EQ(esclave->registres[1032], 0);
  EXPECT_EQ(esclave->registres[1146], 2);
  EXPECT_EQ(esclave->registres[501], 1);
  EXPECT_EQ(messages.textes.size(), 1U);
  EXPECT_EQ(Défaut(), 0);
}

}  // namespace
}  // namespace zuma
