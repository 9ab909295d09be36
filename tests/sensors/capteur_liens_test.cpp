// Links of a sensor: what it finds, what it says, and the section that follows its parameters.
#include <gtest/gtest.h>

#include "outils/banc_capteur.h"
#include "sensors/parametres_eprouvette.h"

namespace zuma {
namespace {

using essai::Avec;
using essai::Ligne;
using essai::LigneDeCapteur;
using essai::Texte;
using T = ENUM_TYPE_CAPTEUR;

class LesLiensDUnCapteur : public testing::Test, protected essai::BancCapteur {
 protected:
  LesLiensDUnCapteur() {
    chassis.ChargeErreur(registre);
    chassis.Cartes()->Add("1")->Fonctions()->Add("1")->Canals()->Add("7");
    for (const char* label : {"F1", "F2", "F2"}) {
      const std::string clé = std::to_string(chassis.Capteurs()->Count() + 1);
      const auto capteur = Lu(LigneDeCapteur());
      capteur->Label(label);
      capteur->Key(clé);
      chassis.Capteurs()->Add(clé, capteur);
    }
    chassis.EntréesLogiques()->Add("1")->Label("Porte");
  }
  void Lie(Capteur& capteur) { capteur.Lien(sécurité, paramètres, traducteur, &chassis); }

  Chassis chassis{plateforme};
};

TEST_F(LesLiensDUnCapteur, SontTrouvésParLabelEtParIndex) {
  Ligne ligne = Avec(LigneDeCapteur(), "Canal", Valeur(7));
  ligne = Avec(Avec(ligne, "Capteur Fils N° 2", Texte("F2")), "Capteur Fils N° 1", Texte("F1"));
  ligne = Avec(Avec(ligne, "Capteur Fils N° 3", Valeur(Nul{})), "EL de selection", Texte("Porte"));
  const auto c = Lu(Avec(ligne, "Etat EL de selection", Texte("Actif")));
  Lie(*c);
  EXPECT_TRUE(messages.textes.empty());
  ASSERT_TRUE(c->Canal());
  EXPECT_EQ(c->Canal()->Key(), "7");
  ASSERT_EQ(c->CapteursFils()->Count(), 2);
  // The order of the columns is the order of the children; of two equal labels the first wins.
  EXPECT_EQ(c->CapteursFils()->Item("1")->Key(), "2");
  EXPECT_EQ(c->CapteursFils()->Item("2")->Label(), "F1");
  c->MetàJour();  // the input is at rest: refused
  EXPECT_FALSE(c->CapteurSelectionne());
  const auto repos = Lu(Avec(ligne, "Etat EL de selection", Texte("Inactif")));
  Lie(*repos);
  repos->MetàJour();
  EXPECT_TRUE(repos->CapteurSelectionne());
}

TEST_F(LesLiensDUnCapteur, DisentCeQuiNEstPasTrouvé) {
  Ligne ligne =
      Avec(Avec(LigneDeCapteur(), "Canal", Valeur(8)), "EL de selection", Texte("Trappe"));
  ligne = Avec(Avec(ligne, "Capteur Fils N° 1", Texte("F9")), "Capteur Fils N° 2", Texte("F1"));
  std::vector<std::string> attendus{
      "Attention : Le capteur 'Force' utilise l'entrée logique de sélection ayant le label "
      "'Trappe' qui n'a pas été trouvée.",
      "Attention : Le capteur 'Force' utilise un capteur fils ayant le label 'F9' qui n'a pas été "
      "trouvée.",
      "Attention : Le capteur 'Force' utilise un canal d'index '8' qui n'a pas été trouvé."};
  const char* const noms[] = {"Méthode de calcul de surface",
                              "L",
                              "M",
                              "Unité de masse",
                              "Masse volumique",
                              "Unité de masse volumique",
                              "A",
                              "B",
                              "C",
                              "D",
                              "E",
                              "H",
                              "N",
                              "S",
                              "Distance entre appuis sup",
                              "Distance entre appuis inf",
                              "Unité",
                              "Forme eprouvette",
                              "Type de contrainte",
                              "Offset",
                              "Parametre de sélection"};
  for (std::size_t i = 0; i < std::size(noms); ++i) {
    const auto index = static_cast<std::int32_t>(100 + i);
    ligne = Avec(ligne, kLignesParamètres[i].colonne, Valeur(index));
    attendus.push_back("Attention : Le capteur 'Force' utilise un paramètre '" +
                       std::string(noms[i]) + "' d'index '" + std::to_string(index) +
                       "' qui n'a pas été trouvée.");
  }
  const auto c = Lu(ligne);
  paramètres->push_back({});  // a hole in the host's set is no parameter
  Lie(*c);
  EXPECT_EQ(messages.textes, attendus);
  EXPECT_EQ(c->CapteursFils()->Count(), 1);
  EXPECT_EQ(c->CapteursFils()->Item("2")->Label(), "F1");  // the first child leaves a gap
  EXPECT_TRUE(registre->entrées.empty());
}

TEST_F(LesLiensDUnCapteur, GardentLaSécuritéQuandUneRéférenceEchoue) {
  struct Cassé : essai::Parametre {
    using Parametre::Parametre;
    [[nodiscard]] std::string NomParamètre() const override { throw Echec(Numéro::ErreurInterne); }
  };
  paramètres->push_back(Crée<Cassé>("1", ""));
  const auto c = Lu(Avec(LigneDeCapteur(), "Offset", Valeur(1)));
  Lie(*c);
  EXPECT_TRUE(registre->Contient("Erreur N°51 "));
  c->Canal(canal);
  Passe(*c, 2000);
  EXPECT_EQ(sécurité->arrêts, 1);
}

TEST_F(LesLiensDUnCapteur, NeDisentRienDUnIndexNul) {
  const auto c = Lu(Avec(Avec(LigneDeCapteur(), "Canal", Valeur(0)), "A", Valeur(0)));
  Lie(*c);
  EXPECT_TRUE(messages.textes.empty());
  EXPECT_FALSE(c->Canal());
}

TEST_F(LesLiensDUnCapteur, DéduisentLesLimitesDesCapteursDérivés) {
  (void)Partage(1, "20");
  (void)Partage(2, "0");
  (void)Partage(3, "0,5");
  const auto lie = [&](const char* type, int s, int facteur) {
    Ligne ligne = Avec(LigneDeCapteur(), "Type de Capteur", Texte(type));
    ligne = Avec(Avec(ligne, "Capteur Fils N° 1", Texte("F1")), "S", Valeur(s));
    auto c = Lu(Avec(ligne, "Facteur de convertion", Valeur(facteur)));
    Lie(*c);
    return c;
  };
  EXPECT_DOUBLE_EQ(lie("Contrainte", 1, 0)->MaxiCapteur(), 55);  // 110 kN on 20 cm², in MPa
  EXPECT_DOUBLE_EQ(lie("Contrainte", 1, 3)->MiniCapteur(), -2.5);
  EXPECT_DOUBLE_EQ(lie("DeltaL/L", 1, 0)->MaxiCapteur(), 5.5);  // a ratio, not in percent
  EXPECT_EQ(lie("DeltaL/L", 2, 0)->MaxiCapteur(), 0);
  EXPECT_TRUE(registre->entrées.empty());
  Ligne ligne = Avec(LigneDeCapteur(), "Type de Capteur", Texte("Recouvrement"));
  ligne = Avec(Avec(ligne, "Capteur Fils N° 1", Texte("F1")), "Capteur Fils N° 2", Texte("F2"));
  Lie(*Lu(Avec(ligne, "S", Valeur(1))));  // not to be configured with "S"
  EXPECT_TRUE(registre->Contient(" de la procédure Lien de l'objet Capteur (Force)."));
}

/// A stress sensor under child "F1", on a specimen whose parameters the operator edits.
class UneContrainteSurEprouvette : public LesLiensDUnCapteur {
 protected:
  Ref<Capteur> Contrainte() {
    Ligne ligne = Avec(LigneDeCapteur(), "Type de Capteur", Texte("Contrainte"));
    ligne = Avec(Avec(ligne, "Capteur Fils N° 1", Texte("F1")), "S", Valeur(5));
    ligne = Avec(Avec(ligne, "Type de contrainte", Valeur(1)), "Forme eprouvette", Valeur(2));
    ligne = Avec(Avec(ligne, "D", Valeur(3)), "Unite", Valeur(4));
    ligne = Avec(Avec(ligne, "A", Valeur(6)), "Facteur de convertion", Valeur(7));
    auto c = Lu(ligne);
    Lie(*c);
    return c;
  }
  double Sous(Capteur& c, double force) {
    const auto fils = chassis.Capteurs()->Item("1");
    fils->ValeurCourante(force);
    c.MetàJour();
    return c.ValeurCourante();
  }
  Ref<essai::Parametre> essai = Partage(1, "Compression");
  Ref<essai::Parametre> forme = Partage(2, "Cylindre");
  Ref<essai::Parametre> diamètre = Partage(3, "100");
  Ref<essai::Parametre> unité = Partage(4, "mm");
  Ref<essai::Parametre> section = Partage(5, "0");
  Ref<essai::Parametre> côté = Partage(6, "");
  Ref<essai::Parametre> facteur = Partage(7, "");
};

TEST_F(UneContrainteSurEprouvette, SuitLesParamètresEtReporteLaSection) {
  const auto c = Contrainte();
  EXPECT_EQ(section->ValeurParamètre(), "7853,98163397448");  // mm², once
  EXPECT_EQ(section->écritures, 1);
  côté->ValeurParamètre("12");  // of no use to a cylinder: computed again, nothing written
  EXPECT_EQ(section->écritures, 1);
  EXPECT_NEAR(Sous(*c, 78.53981633974483), 10, 1e-9);  // 1 kN/cm² is 10 MPa
  EXPECT_NEAR(c->ConvertionContrainteForce(10), 78.53981633974483, 1e-9);
  facteur->ValeurParamètre("2");
  EXPECT_NEAR(Sous(*c, 78.53981633974483), 20, 1e-9);
  facteur->ValeurParamètre("deux");
  diamètre->ValeurParamètre("200");
  EXPECT_NEAR(Sous(*c, 78.53981633974483), 2.5, 1e-9);
  EXPECT_EQ(section->ValeurParamètre(), "31415,9265358979");
  unité->ValeurParamètre("pouce");  // unknown: a section of 0, and nothing to write back
  EXPECT_EQ(Sous(*c, 50), 0);
  EXPECT_EQ(section->écritures, 2);
  EXPECT_TRUE(registre->entrées.empty());
}

TEST_F(UneContrainteSurEprouvette, ReconnaîtLesMotsDeLaLangueCourante) {
  traducteur->mots = {{"Compression", "Crushing"}, {"Cylindre", "Cylinder"}};
  essai->ValeurParamètre("Crushing");
  forme->ValeurParamètre("Cylindre");
  const auto c = Contrainte();
  EXPECT_EQ(messages.textes, std::vector<std::string>{"Unknown shape of sample (Cylindre)."});
  EXPECT_EQ(traducteur->langue, "Français");
  EXPECT_GT(traducteur->écrituresDeLangue, 0);
  forme->ValeurParamètre("Cylinder");
  EXPECT_NEAR(Sous(*c, 78.53981633974483), 10, 1e-9);
  essai->ValeurParamètre("Torsion");
  EXPECT_EQ(messages.textes.back(), "Strength type unknown (Torsion).");
  EXPECT_EQ(Sous(*c, 50), 0);
}

TEST_F(UneContrainteSurEprouvette, TientLaForceDuMaximumDeSonFils) {
  const auto c = Contrainte();
  const auto force = chassis.Capteurs()->Item("1");
  force->ValeurCourante(78.53981633974483);
  force->RazMaxiDétecté();
  c->MetàJour();
  EXPECT_NEAR(c->MaxiDétecté(), 10, 1e-9);
  c->RazMaxiDétecté();
  (void)Sous(*c, 0);
  EXPECT_NEAR(c->MaxiDétecté(), 10, 1e-9);  // reset to the value, and the child's did not change
  force->ValeurCourante(2 * 78.53981633974483);
  force->RazMaxiDétecté();
  (void)Sous(*c, 0);
  EXPECT_NEAR(c->MaxiDétecté(), 20, 1e-9);
  EXPECT_NEAR(c->MiniDétecté(), 10, 1e-9);  // left alone by this kind
}

TEST_F(UneContrainteSurEprouvette, SArrêteQuandDeuxCapteursSePartagentLaSection) {
  const auto cylindre = Contrainte();
  const auto prisme = [&] {
    Ligne ligne = Avec(LigneDeCapteur(), "Type de Capteur", Texte("Contrainte"));
    ligne = Avec(Avec(ligne, "S", Valeur(5)), "Type de contrainte", Valeur(1));
    (void)Partage(8, "Prisme");
    auto c = Lu(Avec(Avec(ligne, "Forme eprouvette", Valeur(8)), "A", Valeur(6)));
    Lie(*c);
    return c;
  }();
  côté->ValeurParamètre("3");  // each writes its own section to the shared parameter
  EXPECT_NEAR(Sous(*cylindre, 78.53981633974483), 10, 1e-9);
  EXPECT_TRUE(registre->entrées.empty());
}

TEST_F(UneContrainteSurEprouvette, DitUneSectionIllisibleSousLeNomDuGestionnaire) {
  const auto c = Contrainte();
  section->ValeurParamètre("grande");
  EXPECT_TRUE(registre->Contient("Erreur N°13 "));
  EXPECT_TRUE(registre->Contient(" de la méthode S_mobj_Change de l'objet Capteur (Force)."));
  EXPECT_EQ(c->dblSurfaceContrainte(), 0);
  EXPECT_TRUE(registre->Contient(" de la propriété dblSurfaceContrainte en lecture "));
  c->dblSurfaceContrainte(12.5);
  EXPECT_NEAR(c->dblSurfaceContrainte(), 7853.98163397448, 1e-9);  // computed again at once
}

TEST_F(UneContrainteSurEprouvette, ParleDesTypesObsolètes) {
  const auto c = Contrainte();
  const struct {
    ENUM_TYPE_CONTRAINTE type;
    const char* texte;
    std::size_t messages;
  } cas[] = {
      {ENUM_TYPE_CONTRAINTE::surface, "Surface", 1},
      {ENUM_TYPE_CONTRAINTE::TractionCompressionCylindre, "Traction/Compression de cylindre", 1},
      {ENUM_TYPE_CONTRAINTE::TractionCompressionPrisme, "Traction/Compression de prisme", 1},
      {ENUM_TYPE_CONTRAINTE::Flexion, "Bending", 0},
      {ENUM_TYPE_CONTRAINTE::Fendage, "Fendage", 0},
      {ENUM_TYPE_CONTRAINTE::Traction_Compression, "Traction/Compression", 0},
      {ENUM_TYPE_CONTRAINTE::Compression, "Compression", 0},
      {ENUM_TYPE_CONTRAINTE::Traction, "Traction", 0},
  };
  traducteur->mots = {{"Flexion", "Bending"}};
  for (const auto& e : cas) {
    messages.textes.clear();
    c->TypeCalculContrainte(e.type);
    EXPECT_EQ(essai->ValeurParamètre(), e.texte);
    EXPECT_EQ(c->TypeCalculContrainte(), e.type);
    EXPECT_EQ(messages.textes.size(), e.messages) << e.texte;
    if (e.messages == 0) continue;
    EXPECT_EQ(messages.textes[0],
              "'" + std::string(e.texte) +
                  "' est un type de calcul obsolete. Veuillez apporter les correction nécessaire "
                  "dans le capteur 'Force'.");
    EXPECT_EQ(Sous(*c, 50), 0);
  }
  c->TypeCalculContrainte(static_cast<ENUM_TYPE_CONTRAINTE>(7));
  EXPECT_EQ(essai->ValeurParamètre(), "Traction");
}

TEST_F(UneContrainteSurEprouvette, QuitteSesParamètresAvecLeCapteur) {
  {
    const auto c = Contrainte();
  }
  EXPECT_TRUE(diamètre->abonnés.empty());
  diamètre->ValeurParamètre("5");
  const auto c = Contrainte();
  Lie(*c);  // linked twice: one handler all the same
  EXPECT_EQ(diamètre->abonnés.size(), 1U);
  EXPECT_TRUE(facteur->abonnés.empty());
}

}  // namespace
}  // namespace zuma
