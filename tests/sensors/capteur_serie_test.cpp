// Kinds that ask an instrument on a line of their own.
#include <gtest/gtest.h>

#include "outils/banc_capteur.h"
#include "outils/cas.h"

namespace zuma {
namespace {

struct Instrument {
  const char* type;
  const char* demande;
  std::vector<std::string> textes;  // shown on a silence
};
const Instrument kInstruments[] = {
    {"Réservé 1", "\x1BP", {"Pas de réponse (ou alors incorrecte) de la balance", "Réémission"}},
    {"Réservé 2", "\x02", {}},
    {"Scout 55", "\x02MSV?;\x03", {}},
};

class UnCapteurSérie : public testing::Test, protected essai::BancCapteur {
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
       essai::Cas<const char*, const char*, double, const char*, const char*>{
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
  for (const auto& [type, demande, textes] : kInstruments) {
    messages.textes.clear();
    Démarre(type);
    EXPECT_EQ(Trace(), std::string("v4800 a2 d7 s15 p2 [ouvre]") + demande) << type;
    timer->heure += 5e6;
    (void)Reçoit("morceau");
    EXPECT_EQ(Trace(), "") << type;  // 5 seconds are not yet a silence
    timer->heure += 0.25e6;
    (void)Reçoit("morceau");
    EXPECT_EQ(Trace(), std::string("[ferme][ouvre]") + demande) << type;
    EXPECT_EQ(messages.textes, textes);
    // A port that has gone is told once a silence, then it heals.
    lignes.ligne->absente = true;
    timer->heure += 6e6;
    (void)Reçoit("");
    (void)Reçoit("");
    EXPECT_EQ(Trace(), "[ferme][ouvre]") << type;
    EXPECT_EQ(registre->entrées.size(), 1U);
    lignes.ligne->absente = false;
    timer->heure += 6e6;
    (void)Reçoit("");
    EXPECT_EQ(Trace(), std::string("[ferme][ouvre]") + demande) << type;
  }
}

TEST_F(UnCapteurSérie, NeRelancePasCeluiQuiRépondSaufLIndicateur) {
  for (const auto& [type, demande, textes] : kInstruments) {
    const bool indicateur = std::string_view(type) == "Scout 55";
    const std::string réponse = indicateur ? "13.0 N\r\n" : "+\r";
    Démarre(type);
    timer->heure += 4e6;
    (void)Reçoit(réponse);
    (void)Trace();
    timer->heure += 2e6;  // 6 seconds after the start
    (void)Reçoit("");
    EXPECT_EQ(Trace(), indicateur ? std::string("[ferme][ouvre]") + demande : "") << type;
  }
}

}  // namespace
}  // namespace zuma
