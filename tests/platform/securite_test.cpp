#include "platform/linux/securite.h"

#include <new>

#include <gtest/gtest.h>

#include "core/chassis.h"
#include "outils/allocations.h"
#include "outils/temoins.h"
#include "platform/linux/traducteur.h"

namespace zuma::linux_ {
namespace {

class HorlogeFixe : public Horloge {
 public:
  [[nodiscard]] std::string TexteHeure() const override {
    if (panne) throw std::bad_alloc();
    return "14:03:22";
  }
  void Dort(double) override {}
  bool panne = false;
};

struct Montage {
  Montage() {
    securite.Branche(
        {.arrête = [this] { return Arrête(); }, .maintient = [this] { return ++maintiens > 0; }});
  }
  bool Arrête() {
    ++arrêts;
    if (pendant) pendant();
    return complet;
  }
  void Lève(std::string_view cause) {
    securite.PositionneCauseAU(cause);
    EXPECT_TRUE(EstNul(securite.DéclencheSécurité()));
  }
  [[nodiscard]] std::vector<std::string> Textes() const {
    std::vector<std::string> textes;
    for (const auto& cause : securite.Causes()) textes.push_back(cause.texte);
    return textes;
  }
  Ref<essai::Minuterie> timer = Crée<essai::Minuterie>();
  HorlogeFixe horloge;
  Securite securite{timer, &horloge};
  int arrêts = 0;
  int maintiens = 0;
  bool complet = true;
  std::function<void()> pendant;
};

// What a sensor says of itself in the translator's present language.
std::string Dépassement(const ZED_Traduction& t, const std::string& nom, int valeur) {
  return t.Traduit("Texte depassement dangeureux") + " " + nom +
         t.Traduit("Texte valeur courante UC") + " " + std::to_string(valeur) + "kN" +
         t.Traduit("Texte valeur courante pts") + " 123";
}

TEST(Securite, UneCauseTenueNArrêteQuUneFois) {
  Montage m;
  Traducteur traducteur;
  m.securite.Bornes(traducteur);
  for (const std::string langue : {"Français", "English"}) {
    traducteur.LangueCourante(langue);
    m.securite.Acquitte();
    m.arrêts = 0;
    for (int i = 0; i < 200; ++i) {
      m.timer->heure += 5000;
      m.Lève(Dépassement(traducteur, "Force 1", 100 + i));
    }
    EXPECT_EQ(m.arrêts, 1);
    EXPECT_EQ(m.maintiens, 9) << "ten times a second";
    m.maintiens = 0;
    m.Lève(Dépassement(traducteur, "Force 2", 100));
    EXPECT_EQ(m.arrêts, 2);
    ASSERT_EQ(m.Textes().size(), 2U);
    const auto& [texte, heure, fois] = m.securite.Causes()[0];
    EXPECT_EQ(texte, Dépassement(traducteur, "Force 1", 100));
    EXPECT_EQ(heure, "14:03:22");
    EXPECT_EQ(fois, 200U);
  }
}

TEST(Securite, UneCauseRevenueArrêteDeNouveau) {
  Montage m;
  for (const auto& [attente, arrêts] : {std::pair(0.0, 1), {0.9e6, 1}, {1.1e6, 2}}) {
    m.timer->heure += attente;
    m.Lève("porte");
    EXPECT_EQ(m.arrêts, arrêts);
  }
  EXPECT_EQ(m.Textes(), std::vector<std::string>{"porte"});
  EXPECT_TRUE(m.securite.Acquitte());
  EXPECT_FALSE(m.securite.Déclenchée());
  EXPECT_EQ(m.arrêts, 2) << "acknowledging moves nothing";
  m.Lève("porte");
  EXPECT_EQ(m.arrêts, 3);
  EXPECT_TRUE(m.securite.Déclenchée());
}

TEST(Securite, LeDouteArrêteToujours) {
  Montage m;
  m.Lève("");
  m.Lève("");
  (void)m.securite.DéclencheSécurité();  // no cause given at all
  m.horloge.panne = true;                // no memory left to keep the cause
  m.Lève("porte");
  m.Lève("porte");
  EXPECT_EQ(m.arrêts, 5);
  EXPECT_EQ(m.securite.Perdues(), 5U);
  m.horloge.panne = false;

  for (std::size_t i = 0; i < Securite::kCausesGardées; ++i) m.Lève(std::to_string(i));
  m.arrêts = 0;
  m.Lève("une de trop");
  m.Lève("une de trop");
  EXPECT_EQ(m.arrêts, 2);
  EXPECT_EQ(m.Textes().size(), Securite::kCausesGardées);

  Securite sansTimer({});
  sansTimer.Branche([&] { return ++m.arrêts > 0; });
  for (int i = 0; i < 2; ++i) {
    sansTimer.PositionneCauseAU("porte");
    (void)sansTimer.DéclencheSécurité();
  }
  EXPECT_EQ(m.arrêts, 4);
}

TEST(Securite, UnArrêtManquéRecommence) {
  Montage m;
  m.complet = false;
  m.Lève("porte");
  EXPECT_FALSE(m.securite.ArrêtComplet());
  m.Lève("porte");
  EXPECT_EQ(m.arrêts, 2);
  m.pendant = [] { throw Echec(Numéro::MatérielAbsent); };
  EXPECT_THROW(m.Lève("porte"), Echec);
  EXPECT_TRUE(m.securite.Déclenchée());
  m.pendant = nullptr;
  m.complet = true;
  m.Lève("porte");
  m.Lève("porte");
  EXPECT_EQ(m.arrêts, 4);
  EXPECT_TRUE(m.securite.ArrêtComplet());

  m.securite.Débranche();
  EXPECT_THROW(m.Lève("autre"), Echec);
  EXPECT_EQ(m.Textes(), (std::vector<std::string>{"porte", "autre"}));

  Montage autre;
  autre.pendant = [&] { autre.securite.Débranche(); };
  autre.Lève("porte");
  EXPECT_TRUE(autre.securite.ArrêtComplet());
}

TEST(Securite, UneCauseLevéePendantLArrêtLeReprend) {
  Montage m;
  m.pendant = [&] {
    EXPECT_FALSE(m.securite.Acquitte());
    m.Lève("porte");  // the one under way
    m.Lève("huile");
  };
  m.Lève("porte");
  EXPECT_EQ(m.arrêts, 2);
  EXPECT_EQ(m.Textes(), (std::vector<std::string>{"porte", "huile"}));
  m.pendant = nullptr;
  m.Lève("huile");
  EXPECT_EQ(m.arrêts, 2);

  // Ever new causes from inside the stop: it ends all the same, and counts as not complete.
  int n = 0;
  m.pendant = [&] { m.Lève("nouvelle " + std::to_string(n++)); };
  m.Lève("départ");
  EXPECT_LT(m.arrêts, 20);
  EXPECT_FALSE(m.securite.ArrêtComplet());
}

// From the raises of a danger that holds, or from the host's loop once it is gone; never both.
TEST(Securite, MaintientUnArrêtSansMémoireJusquÀLAcquittement) {
  Montage m;
  m.securite.Maintient();
  m.Lève("porte");
  const auto avant = essai::Allocations();
  for (int i = 0; i < 200; ++i) {
    m.timer->heure += 5000;
    if (i % 10 == 0) m.Lève("porte");
    m.securite.Maintient();
  }
  EXPECT_EQ(essai::Allocations(), avant);
  EXPECT_EQ(m.arrêts, 1);
  EXPECT_EQ(m.maintiens, 10);
  m.securite.Acquitte();
  m.timer->heure += 1e6;
  m.securite.Maintient();
  EXPECT_EQ(m.maintiens, 10);
}

TEST(Securite, ArrêteTousSesChassisMalgréUnEchec) {
  essai::Banc banc;
  Chassis a(banc.plateforme);
  Chassis b(banc.plateforme);
  for (Chassis* chassis : {&a, &b}) (void)chassis->Cartes()->Référence({}, "0");  // a hole: fails
  a.ChargeErreur(banc.registre);
  Securite securite(banc.timer);
  securite.Branche(b);  // it has no record: its failure comes out
  securite.Branche(a);
  securite.Branche(a);
  const auto lève = [&](const char* cause) {
    securite.PositionneCauseAU(cause);
    EXPECT_THROW((void)securite.DéclencheSécurité(), Echec);
    const bool arrêtés = a.Watchdog()->EnArrêt() && b.Watchdog()->EnArrêt();
    for (Chassis* chassis : {&a, &b}) chassis->Watchdog()->Réarme();
    return arrêtés;
  };
  EXPECT_TRUE(lève("porte"));
  EXPECT_EQ(banc.registre->entrées.size(), 1U) << "plugged twice, stopped once";
  securite.Débranche(a);
  EXPECT_FALSE(lève("huile"));
  EXPECT_EQ(banc.registre->entrées.size(), 1U);

  // With its own record it sees what the frame fails at.
  Chassis chassis(banc.plateforme);
  const auto registre = Crée<RegistreErreurs>(RéglagesRegistre{});
  chassis.ChargeErreur(registre);
  Securite seule(banc.timer);
  seule.Branche(chassis, registre);
  for (const bool trou : {false, true}) {  // a hole in the collection: the stop fails on it
    if (trou) (void)chassis.Cartes()->Référence({}, "0");
    seule.PositionneCauseAU(trou ? "huile" : "porte");
    (void)seule.DéclencheSécurité();
    EXPECT_EQ(seule.ArrêtComplet(), !trou);
    ASSERT_EQ(registre->Total(), trou ? 1U : 0U);
  }
  EXPECT_PRED_FORMAT2(testing::IsSubstring, "DéclencheAU", registre->Entrées()[0].message);
}

}  // namespace
}  // namespace zuma::linux_
