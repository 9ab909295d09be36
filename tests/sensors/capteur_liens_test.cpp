// Links of a sensor: what it finds and what it says.
#include "outils/banc_chassis_capteurs.h"
#include "sensors/parametres_eprouvette.h"

namespace zuma {
namespace {

using essai::Ligne;
using LesLiensDUnCapteur = essai::DansUnChassis;

TEST_F(LesLiensDUnCapteur, SontTrouvésParLabelEtParIndex) {
  for (const char* état : {"Actif", "Inactif"}) {  // the input is at rest
    const auto c = Lié({{"Canal", 7},
                        {"Capteur Fils N° 2", "F2"},
                        {"Capteur Fils N° 1", "F1"},
                        {"Capteur Fils N° 3", Nul{}},
                        {"EL de selection", "Porte"},
                        {"Etat EL de selection", état}});
    EXPECT_TRUE(messages.textes.empty());
    ASSERT_TRUE(c->Canal());
    EXPECT_EQ(c->Canal()->Key(), "7");
    ASSERT_EQ(c->CapteursFils()->Count(), 2);
    // The order of the columns is the order of the children; of two equal labels the first wins.
    EXPECT_EQ(c->CapteursFils()->Item("1")->Key(), "2");
    EXPECT_EQ(c->CapteursFils()->Item("2")->Label(), "F1");
    c->MetàJour();
    EXPECT_EQ(c->CapteurSelectionne(), état == std::string_view("Inactif"));
  }
}

TEST_F(LesLiensDUnCapteur, DisentCeQuiNEstPasTrouvé) {
  const std::string capteur = "Attention : Le capteur 'Force' utilise ";
  std::vector<std::string> attendus{
      capteur + "l'entrée logique de sélection ayant le label 'Trappe' qui n'a pas été trouvée.",
      capteur + "un capteur fils ayant le label 'F9' qui n'a pas été trouvée.",
      capteur + "un canal d'index '8' qui n'a pas été trouvé."};
  Ligne colonnes{{"Canal", 8},
                 {"EL de selection", "Trappe"},
                 {"Capteur Fils N° 1", "F9"},
                 {"Capteur Fils N° 2", "F1"}};
  const std::map<std::string_view, std::string> autres{
      {"m", "M"}, {"Facteur de convertion", "C"}, {"Unite", "Unité"}};
  for (const auto& [colonne, message, gestionnaire] : kLignesParamètres) {
    const auto index = static_cast<std::int32_t>(100 + colonnes.size());
    colonnes.push_back({std::string(colonne), index});
    const auto autre = autres.find(colonne);
    attendus.push_back(capteur + "un paramètre '" +
                       (autre == autres.end() ? std::string(colonne) : autre->second) +
                       "' d'index '" + std::to_string(index) + "' qui n'a pas été trouvée.");
  }
  paramètres->push_back({});  // a hole in the host's set is no parameter
  const auto c = Lié(colonnes);
  EXPECT_EQ(messages.textes, attendus);
  EXPECT_EQ(attendus.size(), 24U);
  EXPECT_EQ(c->CapteursFils()->Count(), 1);
  EXPECT_EQ(c->CapteursFils()->Item("2")->Label(), "F1");  // the first child leaves a gap
  EXPECT_TRUE(registre->entrées.empty());
  messages.textes.clear();
  EXPECT_FALSE(Lié({{"Canal", 0}, {"A", 0}})->Canal());
  EXPECT_TRUE(messages.textes.empty());  // an index of 0 is none
}

TEST_F(LesLiensDUnCapteur, GardentLaSécuritéQuandUneRéférenceEchoue) {
  struct Cassé : essai::Parametre {
    using Parametre::Parametre;
    [[nodiscard]] std::string NomParamètre() const override { throw Echec(Numéro::ErreurInterne); }
  };
  paramètres->push_back(Crée<Cassé>("1", ""));
  const auto c = Lié({{"Offset", 1}});
  EXPECT_TRUE(registre->Contient("Erreur N°51 "));
  c->Canal(canal);
  Passe(*c, 2000);
  EXPECT_EQ(sécurité->arrêts, 1);
}

TEST_F(LesLiensDUnCapteur, DéduisentLesLimitesDesCapteursDérivés) {
  (void)Partage(1, "20");
  (void)Partage(2, "0");
  (void)Partage(3, "0,5");
  const auto lie = [&](const char* type, int s, int facteur) {
    return Lié({{"Type de Capteur", type},
                {"Capteur Fils N° 1", "F1"},
                {"Capteur Fils N° 2", "F2"},
                {"S", s},
                {"Facteur de convertion", facteur}});
  };
  EXPECT_DOUBLE_EQ(lie("Contrainte", 1, 0)->MaxiCapteur(), 55);  // 110 kN on 20 cm², in MPa
  EXPECT_DOUBLE_EQ(lie("Contrainte", 1, 3)->MiniCapteur(), -2.5);
  EXPECT_DOUBLE_EQ(lie("DeltaL/L", 1, 0)->MaxiCapteur(), 5.5);  // a ratio, not in percent
  EXPECT_EQ(lie("DeltaL/L", 2, 0)->MaxiCapteur(), 0);
  EXPECT_TRUE(registre->entrées.empty());
  lie("Recouvrement", 1, 0);  // not to be configured with "S"
  EXPECT_TRUE(registre->Contient(" de la procédure Lien de l'objet Capteur (Force)."));
}

}  // namespace
}  // namespace zuma
