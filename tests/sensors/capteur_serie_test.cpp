// Kinds that ask an instrument on a line of their own.
#include <gtest/gtest.h>

#include "outils/banc_capteur.h"

namespace zuma {
namespace {

using essai::Avec;
using essai::LigneDeCapteur;
using essai::Texte;

class UnCapteurSérie : public testing::Test, protected essai::BancCapteur {
 protected:
  void Démarre(const char* type) {
    capteur = Lu(Avec(Avec(LigneDeCapteur(), "Type de Capteur", Texte(type)), "Configuration RS",
                      Texte("2,4800,e,7,1.5")));
    capteur->Initialise();
    trace = Trace();
  }
  double Reçoit(const char* octets) {
    lignes.ligne->reçu += octets;
    capteur->MetàJour();
    return capteur->ValeurCourante();
  }
  std::string Trace() { return std::exchange(lignes.ligne->trace, {}); }

  Ref<Capteur> capteur;
  std::string trace;
};

TEST_F(UnCapteurSérie, OuvreSaLigneEtDemande) {
  const struct {
    const char* type;
    const char* demande;
  } cas[] = {{"Réservé 1", "\x1BP"}, {"Réservé 2", "\x02"}, {"Scout 55", "\x02MSV?;\x03"}};
  for (const auto& c : cas) {
    Démarre(c.type);
    EXPECT_EQ(trace, std::string("v4800 a2 d7 s15 p2 [ouvre]") + c.demande) << c.type;
  }
}

TEST_F(UnCapteurSérie, LitLaBalanceParMorceaux) {
  Démarre("Réservé 1");
  EXPECT_EQ(Reçoit("+    250.0"), 0);
  EXPECT_EQ(Trace(), "");
  EXPECT_DOUBLE_EQ(Reçoit("0 g \r\n"), 25);  // through the calibration table
  EXPECT_EQ(capteur->UnitéEtalonnage(), "g");
  EXPECT_EQ(Trace(), "\x1BP");
  EXPECT_DOUBLE_EQ(Reçoit("+trop court\r"), 25);
  EXPECT_EQ(Trace(), "\x1BP");
  EXPECT_EQ(messages.textes,
            (std::vector<std::string>{"Chaine complète recue", "Chaine complète recue"}));
  EXPECT_DOUBLE_EQ(Reçoit("+  Error  12 g\r"), 25);
  EXPECT_TRUE(registre->Contient("Erreur N°94 "));
  EXPECT_DOUBLE_EQ(Reçoit("-    100.00 kg\r"), -10);  // and the line goes on
}

TEST_F(UnCapteurSérie, LitLeComparateur) {
  Démarre("Réservé 2");
  EXPECT_DOUBLE_EQ(Reçoit("+  12.34  \r"), 1.234);
  EXPECT_EQ(capteur->UnitéEtalonnage(), "mm");
  EXPECT_EQ(Trace(), "\x02");
  EXPECT_TRUE(messages.textes.empty());
}

TEST_F(UnCapteurSérie, RelanceUnInstrumentMuet) {
  const struct {
    const char* type;
    const char* demande;
    std::vector<std::string> textes;
  } cas[] = {
      {"Réservé 1", "\x1BP", {"Pas de réponse (ou alors incorrecte) de la balance", "Réémission"}},
      {"Réservé 2", "\x02", {}},
      {"Scout 55", "\x02MSV?;\x03", {}},
  };
  for (const auto& c : cas) {
    messages.textes.clear();
    pendule.heure = 36000;
    Démarre(c.type);
    pendule.heure += 5;
    (void)Reçoit("morceau");
    EXPECT_EQ(Trace(), "") << c.type;  // 5 seconds are not yet a silence
    pendule.heure += 0.5;
    (void)Reçoit("morceau");
    EXPECT_EQ(Trace(), std::string("[ferme][ouvre]") + c.demande) << c.type;
    EXPECT_EQ(messages.textes, c.textes);
    // Across midnight, with a port that has gone: told once a silence, then it heals.
    registre->entrées.clear();
    pendule.heure = 86398;
    (void)Reçoit("");
    (void)Trace();
    lignes.ligne->absente = true;
    pendule.heure = 4;
    (void)Reçoit("");
    (void)Reçoit("");
    EXPECT_EQ(Trace(), "[ferme][ouvre]") << c.type;
    EXPECT_EQ(registre->entrées.size(), 1U);
    lignes.ligne->absente = false;
    pendule.heure = 10;
    (void)Reçoit("");
    EXPECT_EQ(Trace(), std::string("[ferme][ouvre]") + c.demande) << c.type;
  }
}

TEST_F(UnCapteurSérie, LitLIndicateurEtLeRelanceMêmeSIlRépond) {
  Démarre("Scout 55");
  EXPECT_DOUBLE_EQ(Reçoit("12.5 N\r\n"), 12.5);  // no calibration table here
  EXPECT_EQ(Trace(), "\x02MSV?;\x03");
  EXPECT_DOUBLE_EQ(Reçoit("?\r\n"), 12.5);
  EXPECT_TRUE(registre->entrées.empty());
  pendule.heure += 4;
  (void)Reçoit("13.0 N\r\n");
  (void)Trace();
  pendule.heure += 2;  // 6 seconds after the start, whatever came
  (void)Reçoit("");
  EXPECT_EQ(Trace(), "[ferme][ouvre]\x02MSV?;\x03");
  (void)Reçoit("?");
  EXPECT_TRUE(registre->Contient("Erreur N°5 "));
}

}  // namespace
}  // namespace zuma
