// The wire of a simulated port: bytes take their time, queue, and suffer the faults of the line.
#include "sim/ligne_serie.h"

#include <algorithm>
#include <array>
#include <utility>

#include <gtest/gtest.h>

#include "outils/cas.h"
#include "sim/journal_borne.h"

namespace zuma::sim {
namespace {

// 1 ms a byte.
constexpr std::int32_t kVitesse = 11'000;

// Answers each byte with three, after `latence` microseconds.
struct Appareil : AppareilSérie {
  using AppareilSérie::AppareilSérie;
  void Reçoit(std::string_view octets, LigneSérie& ligne) override {
    entendus += octets;
    ligne.Emet(réponse, latence);
  }
  Octets entendus;
  Octets réponse = "abc";
  double latence = 0;
};

class UneLigne : public testing::Test {
 protected:
  UneLigne() {
    ligne.Attache(appareil);
    ligne.Ouvre(kVitesse);
  }
  Octets Après(double millisecondes) {
    horloge->Avance(millisecondes * 1000);
    return std::exchange(ligne.Reçus(), {});
  }
  Octets Demande(std::string_view question, double millisecondes) {
    EXPECT_TRUE(ligne.Ecrit(question, kVitesse));
    return Après(millisecondes);
  }
  Ref<HorlogeVirtuelle> horloge = Crée<HorlogeVirtuelle>(0);
  Ref<Appareil> appareil = Crée<Appareil>(*horloge);
  LigneSérie ligne;
};

TEST_F(UneLigne, PorteOctetParOctetEtGardeLesRéponses) {
  EXPECT_EQ(Demande("x", 0.9), "");
  EXPECT_EQ(appareil->entendus, "");
  EXPECT_EQ(Après(1.2), "a");
  EXPECT_EQ(Après(1), "b");
  EXPECT_EQ(Demande("y", 0.1), "") << "what is asked meanwhile takes nothing away";
  EXPECT_EQ(Après(5), "cabc");

  appareil->latence = 100'000;
  EXPECT_EQ(Demande("xy", 101), "") << "two answers, both late";
  EXPECT_EQ(Après(20), "abcabc");
  EXPECT_EQ(Demande("x", 50), "");
  ligne.Ouvre(kVitesse);
  EXPECT_EQ(Après(100), "abc") << "opening again does not call back what is on its way";
}

TEST_F(UneLigne, GardeEtEnvoieCeQueTientUnPort) {
  EXPECT_TRUE(ligne.Ecrit(Octets(4096, 'x'), kVitesse));
  EXPECT_FALSE(ligne.Ecrit("y", kVitesse));
  EXPECT_EQ(Après(20'000).size(), 4096U) << "of three times as many";
}

// What the device hears of "question" and what comes back, under each fault.
TEST_F(UneLigne, PerdDansUnSeulSens) {
  for (const auto& [panne, entendus, reçus] :
       essai::Cas<bool Pannes::*, const char*, const char*>{{&Pannes::muette, "x", ""},
                                                            {&Pannes::sourde, "", ""},
                                                            {&Pannes::coupée, "x", "ab"},
                                                            {&Pannes::débranchée, "", ""},
                                                            {&Pannes::tardive, "x", ""}}) {
    appareil->entendus.clear();
    ligne.pannes = {};
    ligne.pannes.*panne = true;
    EXPECT_EQ(Demande("x", 10), reçus);
    EXPECT_EQ(appareil->entendus, entendus);
  }
  EXPECT_EQ(Après(kRetard * 1000), "abc") << "late, and not lost";
}

TEST_F(UneLigne, RépèteLaPremièreRéponseDUnAppareilFigéEtBabilleÀSaVitesse) {
  ligne.pannes.figée = true;
  EXPECT_EQ(Demande("x", 10), "abc");
  appareil->réponse = "def";
  EXPECT_EQ(Demande("x", 10), "abc");
  ligne.pannes = {};
  EXPECT_EQ(Demande("x", 10), "def");
  ligne.pannes.babillarde = true;
  EXPECT_NEAR(static_cast<double>(Après(100).size()), 100, 1);
  ligne.pannes = {};
  EXPECT_EQ(Après(100), "");
}

// One byte now and then, both ways, never more than one, and the same by the same seed.
TEST_F(UneLigne, AbîmeUnOctetDeTempsEnTemps) {
  const Octets mots = "abcdefgh";
  appareil->réponse = "";
  const auto abîme = [&](const Octets& arrivés, int écart) {
    if (arrivés != mots) {
      EXPECT_EQ(static_cast<int>(arrivés.size()) - static_cast<int>(mots.size()), écart);
    }
    return arrivés != mots ? 'x' : '.';
  };
  const std::pair<bool Pannes::*, int> cas[] = {
      {&Pannes::perdante, -1}, {&Pannes::ajoutante, 1}, {&Pannes::retournante, 0}};
  for (const auto& [panne, écart] : cas) {
    ligne.pannes = {};
    ligne.pannes.*panne = true;
    std::array<std::string, 2> passages;
    for (std::string& passage : passages) {
      ligne.hasard = Hasard::De(7, 1);
      for (int i = 0; i < 200; ++i) {
        (void)Demande(mots, 20);
        passage += abîme(std::exchange(appareil->entendus, {}), écart);
        ligne.Emet(mots, 0);
        passage += abîme(Après(20), écart);
      }
    }
    EXPECT_NEAR(static_cast<double>(std::ranges::count(passages[0], 'x')), 100, 30);
    EXPECT_EQ(passages[0], passages[1]);
  }
}

TEST(LesJournauxDesJumeaux, OublientLeDébut) {
  std::vector<std::string> lignes;
  std::string octets;
  for (int i = 0; i <= 100'000; ++i) {
    Note(lignes, std::to_string(i));
    Note(octets, "bruit" + std::to_string(i));
  }
  EXPECT_EQ(lignes.back(), "100000");
  EXPECT_EQ(lignes[lignes.size() - kEntréesGardées], std::to_string(100'001 - kEntréesGardées));
  EXPECT_LE(lignes.size(), 2 * kEntréesGardées);
  EXPECT_EQ(octets.size(), kEntréesGardées);
  EXPECT_TRUE(octets.ends_with("bruit100000"));
}

}  // namespace
}  // namespace zuma::sim
