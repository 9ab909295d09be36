// Links of a sensor: what it finds and what it says.
#include "base/requetes.h"
#include "outils/banc_chassis_capteurs.h"

namespace zuma::essai {
namespace {

using LesLiensDUnCapteur = DansUnChassis;

TEST_F(LesLiensDUnCapteur, SontTrouvésParLabelEtParIndex) {
  for (const std::string état : {"Actif", "Inactif"}) {  // the input is at rest
    const auto c = Lié({{"Canal", 7},
                        {"Capteur Fils N° 2", "F2"},
                        {"Capteur Fils N° 1", "F1"},
                        {"Capteur Fils N° 3", Nul{}},
                        {"EL de selection", "Porte"},
                        {"Etat EL de selection", état}});
    EXPECT_EQ(c->Canal()->Key(), "7");
    ASSERT_EQ(c->CapteursFils()->Count(), 2);
    // The order of the columns is the order of the children; of two equal labels the first wins.
    EXPECT_EQ(c->CapteursFils()->Item("1")->Key() + c->CapteursFils()->Item("2")->Key(), "21");
    c->MetàJour();
    EXPECT_EQ(c->CapteurSelectionne(), état == "Inactif");
  }
  EXPECT_TRUE(messages.textes.empty());
}

TEST_F(LesLiensDUnCapteur, DisentCeQuiNEstPasTrouvé) {
  paramètres->push_back({});  // a hole in the host's set is no parameter
  const auto c = Lié({{"Canal", 8},
                      {"EL de selection", "Trappe"},
                      {"Capteur Fils N° 1", "F9"},
                      {"Capteur Fils N° 2", "F1"},
                      {"m", 101},
                      {"Facteur de convertion", 102},
                      {"Unite", 103},
                      {"Offset", 104}});
  std::vector<std::string> attendus{"l'entrée logique de sélection ayant le label 'Trappe'",
                                    "un capteur fils ayant le label 'F9'",
                                    "un canal d'index '8'",
                                    "un paramètre 'M' d'index '101'",
                                    "un paramètre 'C' d'index '102'",
                                    "un paramètre 'Unité' d'index '103'",
                                    "un paramètre 'Offset' d'index '104'"};
  for (std::string& texte : attendus) {
    const char* const fin = texte.starts_with("un canal") ? "é." : "ée.";
    texte = "Attention : Le capteur 'Force' utilise " + texte + " qui n'a pas été trouv" + fin;
  }
  EXPECT_EQ(messages.textes, attendus);
  EXPECT_EQ(c->CapteursFils()->Count(), 1);
  EXPECT_EQ(c->CapteursFils()->Item("2")->Label(), "F1");  // the first child leaves a gap
  EXPECT_TRUE(registre->entrées.empty());
  messages.textes.clear();
  EXPECT_FALSE(Lié({{"Canal", 0}, {"A", 0}})->Canal());
  EXPECT_TRUE(messages.textes.empty());  // an index of 0 is none
}

TEST_F(LesLiensDUnCapteur, GardentLaSécuritéQuandUneRéférenceEchoue) {
  struct Cassé : Parametre {
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

// Through the links of the whole frame, which sorts its sensors at the end.
class UnTriDeCapteurs : public DansUnChassis {
 protected:
  /// A sensor of that name, label and key, over the children of these labels.
  Ref<Capteur> Ajoute(const std::string& nom, const char* type, const char* fils1,
                      const char* fils2, int s = 0) {
    auto capteur = Lu(LigneDeCapteur({{"Nom du Capteur", nom},
                                      {"Type de Capteur", type},
                                      {"Capteur Fils N° 1", fils1},
                                      {"Capteur Fils N° 2", fils2},
                                      {"S", s}}));
    capteur->Label(nom);
    chassis.Capteurs()->Add(nom, capteur)->Key(nom);
    return capteur;
  }
  void LieTout() {
    const auto base = Crée<BaseFixe>();
    base->réponses[requêtes::LigneDuChassisPourLien(1)] = {};
    chassis.Lien(base, "1", sécurité, paramètres, traducteur);
  }
};

TEST_F(UnTriDeCapteurs, NommeEtDétacheCeuxQuiNePeuventEtreTriés) {
  const auto s = Partage(1, "20");
  std::vector<std::weak_ptr<Capteur>> laissés{Ajoute("A", "Moyen", "B", "B", 1).Partagé(),
                                              Ajoute("B", "Moyen", "A", "F1", 1).Partagé()};
  const auto tenu = Ajoute("Moi", "Recouvrement", "Moi", "Moi");
  LieTout();
  EXPECT_EQ(messages.textes, std::vector<std::string>{"Gros soucis dans le tri des capteurs..."
                                                      "Voir Marcel (K9) : A, B, Moi"});
  EXPECT_EQ(chassis.Capteurs()->Count(), 3);
  for (const auto& laissé : laissés) EXPECT_TRUE(laissé.expired());
  EXPECT_TRUE(s->abonnés.empty());
  tenu->Raz();
  EXPECT_TRUE(registre->Contient("Erreur N°91 "));
}

// The stresses are linked after the overlap that is made from them.
TEST_F(UnTriDeCapteurs, DonneSesSeuilsAUnRecouvrementDeCapteursDérivés) {
  (void)Partage(1, "10");
  (void)Partage(2, "20");
  const auto recouvrement = Ajoute("R", "Recouvrement", "C1", "C2");
  const auto grand = Ajoute("C1", "Contrainte", "F1", "F1", 1);  // 110 kN on 10 cm²
  const auto petit = Ajoute("C2", "Contrainte", "F1", "F1", 2);
  LieTout();
  EXPECT_TRUE(messages.textes.empty());
  EXPECT_TRUE(registre->entrées.empty());
  const auto sous = [&](double mpaDuPetit, double mpaDuGrand) {
    petit->ValeurCourante(mpaDuPetit);
    grand->ValeurCourante(mpaDuGrand);
    recouvrement->MetàJour();
    return recouvrement->ValeurCourante();
  };
  EXPECT_EQ(sous(40, 30), 40);
  EXPECT_EQ(sous(50, 30), 30);  // past 90 % of 55 MPa
}

// However the frame's links ended.
TEST_F(UnTriDeCapteurs, NeLaissePasUnCycleSurvivreAuChassis) {
  std::weak_ptr<Capteur> laissé;
  {
    Chassis autre(plateforme);
    const auto a = Monté("Moyen", {});
    a->CapteursFils()->Référence(a, "1");
    autre.Capteurs()->Add("1", a);
    laissé = a.Partagé();
  }
  EXPECT_TRUE(laissé.expired());
}

}  // namespace
}  // namespace zuma::essai
