// What a sensor makes of its row.
#include <gtest/gtest.h>

#include "outils/banc_capteur.h"

namespace zuma {
namespace {

using essai::Avec;
using essai::Ligne;
using essai::LigneDeCapteur;
using essai::Sans;
using essai::Texte;

const Valeur kNul{Nul{}};

class UneLigneDeCapteur : public testing::Test, protected essai::BancCapteur {
 protected:
  const Ligne ligne = LigneDeCapteur();
};

TEST_F(UneLigneDeCapteur, EstLueEnEntier) {
  const auto c = Lu(Avec(Avec(ligne, "Etalonnage par utilisateur", Valeur(true)),
                         "Commentaire etalonnage", Texte("à revoir")));
  EXPECT_TRUE(registre->entrées.empty());
  EXPECT_TRUE(messages.textes.empty());
  EXPECT_EQ(c->NomDuCapteur(), "Force");
  EXPECT_EQ(c->NomAfficheDuCapteur(), "Force fine");
  EXPECT_TRUE(c->RazAutorise_bln());
  EXPECT_EQ(c->MaxiCapteurUnité(), 110);
  EXPECT_EQ(c->MiniCapteurUnité(), -10);
  // The limits stand before `Initialise`: the sensors made from this one are linked by then.
  EXPECT_EQ(c->MaxiCapteur(), 110);
  EXPECT_EQ(c->MiniCapteur(), -10);
  // Limits in points come out in units.
  EXPECT_EQ(c->MaxiCapteurPoints(), 200);
  EXPECT_EQ(c->MiniCapteurPoints(), -50);
  EXPECT_EQ(c->UnitéEtalonnage(), "kN");
  EXPECT_EQ(c->DateEtalonnage(), "12/03/2024");
  EXPECT_EQ(c->NomEtalonneur(), "Durand");
  EXPECT_EQ(c->TexteMaxi(), "Rupture");
  EXPECT_EQ(c->PointX(2), 100);
  EXPECT_EQ(c->PointY(2), 1000);
  EXPECT_EQ(c->PointX(0), 0);
  EXPECT_EQ(c->PointY(0), 0);
  EXPECT_TRUE(c->AutoriseDétectionMaxi());  // the column cannot switch it off
  EXPECT_TRUE(c->EtalonnageExterieurPossible());
  EXPECT_EQ(c->CommentaireEtalonnage(), "à revoir");
  EXPECT_TRUE(c->LeRecordset());
}

TEST_F(UneLigneDeCapteur, ReconnaîtLesQuatorzeTypes) {
  const struct {
    const char* texte;
    int type;
  } cas[] = {{"Normal", 0},
             {"Moyen", 10},
             {"Recouvrement", 11},
             {"Contrainte", 12},
             {"Temps", 13},
             {"Vitesse", 14},
             {"DeltaL/L", 15},
             {"Combinaison", 16},
             {"Selectionnable", 17},
             {"Réservé 1", 1000},
             {"Réservé 2", 1001},
             {"Scout 55", 1002},
             {"SOLARTRON LVDT", 1004},
             {"PPC", 1005},
             {"Autre", 0}};
  for (const auto& c : cas) {
    const auto capteur = Lu(Avec(ligne, "Type de Capteur", Texte(c.texte)));
    EXPECT_EQ(static_cast<int>(capteur->TypeDeCapteur()), c.type) << c.texte;
  }
}

TEST_F(UneLigneDeCapteur, DitCeQuiManqueEtCeQuiEstIllisible) {
  const struct {
    Ligne ligne;
    const char* échec;  // null: read without a failure
  } cas[] = {
      {Sans(ligne, "Nom du Capteur"), "Erreur N°3265 "},
      {Sans(ligne, "Nombre de Lecture Simultanée"), "Erreur N°3265 "},
      {Sans(ligne, "Point 20 - Point"), "Erreur N°3265 "},
      {Avec(ligne, "Unité d'Etalonnage", kNul), "Erreur N°94 "},
      {Avec(ligne, "Sécurité Maximale en Unité", kNul), "Erreur N°94 "},
      {Avec(ligne, "Point 3 - Unité", Texte("cent")), "Erreur N°94 "},
      {Avec(ligne, "Nombre de Lecture Simultanée", Valeur(40000)), "Erreur N°6 "},
      {Avec(ligne, "Configuration RS", Texte("1,9600,N")), "Erreur N°9 "},
      {Sans(ligne, "Nom affiché"), nullptr},
      {Sans(ligne, "Détection du maxi"), nullptr},
      {Avec(ligne, "Temps de Calcul de la Vitesse", kNul), nullptr},
      {Avec(ligne, "Texte pour le maximum", kNul), nullptr},
      {Avec(ligne, "Opérateur", kNul), nullptr},
      {Avec(ligne, "Configuration RS", kNul), nullptr},
      {Avec(ligne, "Canal", kNul), nullptr},
      {Avec(ligne, "EL de selection", kNul), nullptr},
      {Avec(ligne, "Valeur de selection", kNul), nullptr},
      {Avec(ligne, "Facteur de convertion", kNul), nullptr},
      {Avec(ligne, "Etalonnage par utilisateur", kNul), nullptr},
  };
  for (const auto& c : cas) {
    registre->entrées.clear();
    (void)Lu(c.ligne);
    ASSERT_EQ(registre->entrées.size(), c.échec == nullptr ? 0U : 1U)
        << registre->entrées[0].message;
    if (c.échec == nullptr) continue;
    EXPECT_TRUE(registre->entrées[0].message.starts_with(c.échec)) << registre->entrées[0].message;
    EXPECT_TRUE(registre->Contient(" de la procédure ParamètresDepuisBD de l'objet Capteur ("));
  }
  EXPECT_EQ(Lu(Sans(ligne, "Nom affiché"))->NomAfficheDuCapteur(), "");
  EXPECT_EQ(Lu(Avec(ligne, "Nom affiché", kNul))->NomAfficheDuCapteur(), "Force");
}

TEST_F(UneLigneDeCapteur, ParleALIntégrateur) {
  const std::string bas = "Recouvrement - Seuil bas %";
  const std::string haut = "Recouvrement - Seuil haut %";
  const std::string mini = "Recouvrement - Mini valeur pour recouvrement";
  const Ligne recouvrement = Avec(ligne, "Type de Capteur", Texte("Recouvrement"));
  const struct {
    Ligne ligne;
    std::vector<std::string> textes;
  } cas[] = {
      {Avec(recouvrement, bas, kNul),
       {"Le seuil bas du capteur de recouvrement nommé 'Force' est invalide. Il est mis à 80%."}},
      {Avec(recouvrement, haut, kNul),
       {"Le seuil haut du capteur de recouvrement nommé 'Force' est invalide. Il est mis à 90%."}},
      {Avec(recouvrement, mini, kNul),
       {"Le nombre de valeur mini pour le recouvrement du capteur de nommé 'Force' est invalide. "
        "Ils est mis à 1."}},
      {Avec(ligne, bas, kNul), {}},
      {Sans(Sans(ligne, haut), mini), {}},
      {Sans(Sans(Sans(ligne, bas), haut), mini),
       {"Le champs '" + bas +
            "' n'existe pas. Veuillez le créer avec le format suivant : REEL DOUBLE",
        "Le champs '" + haut +
            "' n'existe pas. Veuillez le créer avec le format suivant : REEL DOUBLE",
        "Le champs '" + mini +
            "' n'existe pas. Veuillez le créer avec le format suivant : ENTIER LONG"}},
      {Avec(Avec(ligne, "Type de Capteur", Texte("Selectionnable")), "Valeur de selection", kNul),
       {"Sensor 'Force' : 'Valeur de selection' not define."}},
      {Avec(ligne, "Configuration RS", Texte("1,9601,N,8,1")),
       {"Not supported Baud Rate in 'ParametrageDepuisBD' from object 'Capteur' named 'Force. "
        "Default baud rate : 9600"}},
      {Avec(ligne, "Configuration RS", Texte("1,256000,N,8,1")), {}},
  };
  for (const auto& c : cas) {
    messages.textes.clear();
    (void)Lu(c.ligne);
    EXPECT_EQ(messages.textes, c.textes);
  }
  EXPECT_TRUE(registre->entrées.empty());
}

TEST_F(UneLigneDeCapteur, SignaleSonUnitéMêmeInchangée) {
  const auto c = Lu(ligne);
  std::string reçues;
  const int numéro = c->AbonneUnitChange([&](const std::string& unité) { reçues += unité + ";"; });
  c->UnitéEtalonnage("daN");
  c->UnitéEtalonnage("daN");
  c->DésabonneUnitChange(numéro);
  c->UnitéEtalonnage("N");
  EXPECT_EQ(reçues, "daN;daN;");
  (void)c->AbonneUnitChange([](const std::string&) { throw Echec(Numéro::ErreurInterne); });
  c->UnitéEtalonnage("kN");
  EXPECT_TRUE(registre->Contient(" de la propriété UnitéEtalonnage en écriture "));
}

}  // namespace
}  // namespace zuma
