// Kinds that ask an instrument on a line of their own.
#include <gtest/gtest.h>

#include "outils/banc_capteur.h"
#include "outils/cas.h"

namespace zuma::essai {
namespace {

class UnCapteurSérie : public testing::Test, protected BancCapteur {
 protected:
  void Démarre(const char* type) {
    lignes.ligne->reçu.clear();
    registre->entrées.clear();
    capteur = Monté({{"Type de Capteur", type}, {"Configuration RS", "2,4800,e,7,1.5"}});
  }
  double Reçoit(const std::string& octets) {
    lignes.ligne->reçu += octets;
    capteur->MetàJour();
    return capteur->ValeurCourante();
  }
  std::string Trace() { return std::exchange(lignes.ligne->trace, {}); }

  Ref<Capteur> capteur;
};

TEST_F(UnCapteurSérie, LitCeQuUnInstrumentEnvoie) {
  // Values through the calibration table, but for the last kind.
  for (const auto& [type, reçu, valeur, unité, échec] :
       Cas<const char*, const char*, double, const char*, const char*>{
           {"Réservé 1", "-    123.45 g \r", -12.345, "g", ""},
           {"Réservé 1", "+ 123.45 g\r", 0, "kN", ""},  // a character short: asked again
           {"Réservé 1", "+ERR 12345 kg \r", 0, "kN", "Erreur N°94 "},
           {"Réservé 2", "+ 0.48615x\r", 0.048615, "kN", ""},
           {"Réservé 2", "+ 0.4861\"x\r", 0.04861, "\"", ""},
           {"Réservé 2", "-  1.250? \r", -0.125, "?", ""},
           {"Réservé 2", "+  12.345 x\r", 0, "kN", ""},
           {"Réservé 2", "+ 12,x45  \r", 0, "kN", "Erreur N°94 "},
           // Last sign, last return.
           {"Réservé 2", "+ 12.345  \r\n-+  1.000  \r\n+3", 0.1, "mm", ""},
           {"Réservé 2", "\xAB\xB1\xB2.345678\x8D", 1.234567, "kN", ""},  // parity bits set
           {"Scout 55", "-3,25kg\r\n+1 N\r\n", -3.25, "kN", ""},
           {"Scout 55", "12?5 N\r\n", 0, "kN", ""},
           {"Scout 55", "OVERLOAD\r\n", 0, "kN", ""},
           {"Scout 55", "?", 0, "kN", "Erreur N°5 "}}) {
    Démarre(type);
    EXPECT_DOUBLE_EQ(Reçoit(reçu), valeur) << reçu;
    EXPECT_EQ(capteur->UnitéEtalonnage(), unité) << reçu;
    EXPECT_EQ(registre->entrées.size(), *échec == 0 ? 0U : 1U) << reçu;
    EXPECT_TRUE(*échec == 0 || registre->Contient(échec)) << reçu;
  }
}

TEST_F(UnCapteurSérie, LitLaBalanceParMorceauxEtRedemande) {
  Démarre("Réservé 1");
  (void)Trace();
  EXPECT_EQ(Reçoit("+    250.0"), 0);
  EXPECT_EQ(Trace(), "");
  EXPECT_DOUBLE_EQ(Reçoit("0 g \r\n"), 25);
  EXPECT_EQ(messages.textes, std::vector<std::string>{"Chaine complète recue"});
  EXPECT_DOUBLE_EQ(Reçoit("+  Error  12 g\r"), 25);  // held, and the line goes on
  EXPECT_DOUBLE_EQ(Reçoit("-    100.00 kg\r"), -10);
  EXPECT_EQ(Trace(), "\x1BP\x1BP\x1BP");
}

TEST_F(UnCapteurSérie, OuvreSaLigneEtRelanceUnInstrumentMuet) {
  const std::vector<std::string> vaine{"Pas de réponse (ou alors incorrecte) de la balance",
                                       "Réémission"};
  // What it is asked, shown on a silence, an answer, and whether that keeps it from being asked.
  for (const auto& [type, demande, textes, réponse, compte] :
       Cas<const char*, std::string, std::vector<std::string>, const char*, bool>{
           {"Réservé 1", "\x1BP", vaine, "+\r", true},
           {"Réservé 2", "\x02", {}, "+\r", true},
           {"Scout 55", "\x02MSV?;\x03", {}, "13.0 N\r\n", false}}) {
    const std::string relance = "[ferme][ouvre]" + demande;
    messages.textes.clear();
    Démarre(type);
    EXPECT_EQ(Trace(), "v4800 a2 d7 s15 p2 [ouvre]" + demande) << type;
    const auto après = [&](double secondes, const char* reçu) {
      timer->heure += secondes * 1e6;
      (void)Reçoit(reçu);
      return Trace();
    };
    EXPECT_EQ(après(5, "morceau"), "") << type << ": 5 seconds are not yet a silence";
    EXPECT_EQ(après(0.25, "morceau"), relance) << type;
    EXPECT_EQ(messages.textes, textes);
    // A port that has gone is told once a silence, then it heals.
    lignes.ligne->absente = true;
    EXPECT_EQ(après(6, "") + après(0, ""), "[ferme][ouvre]") << type;
    EXPECT_EQ(registre->entrées.size(), 1U);
    lignes.ligne->absente = false;
    EXPECT_EQ(après(6, ""), relance) << type;
    (void)après(4, réponse);
    EXPECT_EQ(après(2, ""), compte ? "" : relance) << type << ": 6 seconds after the question";
  }
}

}  // namespace
}  // namespace zuma::essai
