// What a sensor makes of its row.
#include <gtest/gtest.h>

#include "outils/banc_capteur.h"
#include "outils/cas.h"

namespace zuma::essai {
namespace {

constexpr const char* kBas = "Recouvrement - Seuil bas %";
constexpr const char* kHaut = "Recouvrement - Seuil haut %";
constexpr const char* kMini = "Recouvrement - Mini valeur pour recouvrement";

class UneLigneDeCapteur : public testing::Test, protected BancCapteur {
 protected:
  const Ligne ligne = LigneDeCapteur();
};

TEST_F(UneLigneDeCapteur, DonneSesLimitesAvantLeDépart) {
  const auto c = Lu(LigneDeCapteur({{"Type de Capteur", "Autre"}}));
  EXPECT_TRUE(registre->entrées.empty() && messages.textes.empty());
  EXPECT_EQ(c->TypeDeCapteur(), ENUM_TYPE_CAPTEUR::capteurNormal);
  // The sensors made from this one are linked by then. Limits in points come out in units.
  EXPECT_EQ((std::vector{c->MaxiCapteur(), c->MiniCapteur(), c->MaxiCapteurPoints(),
                         c->MiniCapteurPoints()}),
            (std::vector<double>{110, -10, 200, -50}));
  EXPECT_EQ(c->NomAfficheDuCapteur() + c->TexteMaxi(), "Force fineRupture");
  EXPECT_TRUE(c->AutoriseDétectionMaxi()) << "the column cannot switch it off";
}

TEST_F(UneLigneDeCapteur, DitCeQuiManqueEtCeQuiEstIllisible) {
  for (const auto& [lue, échec] : Cas<Ligne, const char*>{
           {Sans(ligne, "Nombre de Lecture Simultanée"), "Erreur N°3265 "},
           {Sans(ligne, "Point 20 - Point"), "Erreur N°3265 "},
           {LigneDeCapteur({{"Unité d'Etalonnage", Nul{}}}), "Erreur N°94 "},
           {LigneDeCapteur({{"Sécurité Maximale en Unité", Nul{}}}), "Erreur N°94 "},
           {LigneDeCapteur({{"Point 3 - Unité", "cent"}}), "Erreur N°94 "},
           {LigneDeCapteur({{"Nombre de Lecture Simultanée", 40000}}), "Erreur N°6 "},
           {LigneDeCapteur({{"Configuration RS", "1,9600,N"}}), "Erreur N°9 "}}) {
    registre->entrées.clear();
    (void)Lu(lue);
    ASSERT_EQ(registre->entrées.size(), 1U) << échec;
    EXPECT_TRUE(registre->Contient(échec)) << registre->entrées[0].message;
    EXPECT_TRUE(registre->Contient(" de la procédure ParamètresDepuisBD de l'objet Capteur ("));
  }
  const auto coupé = Lu(LigneDeCapteur({{"Point 3 - Unité", "cent"}}));
  EXPECT_EQ(coupé->PointX(2), 100) << "what stands in front of it is taken";
  registre->entrées.clear();
  Ligne vide = Sans(Sans(ligne, "Détection du maxi"), "Nom affiché");
  EXPECT_EQ(Lu(vide)->NomAfficheDuCapteur(), "");
  for (const char* colonne :
       {"Nom affiché", "Temps de Calcul de la Vitesse", "Texte pour le maximum", "Opérateur",
        "Configuration RS", "Canal", "EL de selection", "Etat EL de selection",
        "Valeur de selection", "Facteur de convertion", "Etalonnage par utilisateur"}) {
    vide = Avec(vide, colonne, Nul{});
  }
  EXPECT_EQ(Lu(vide)->NomAfficheDuCapteur(), "Force");
  EXPECT_TRUE(registre->entrées.empty());
  EXPECT_TRUE(messages.textes.empty());
}

TEST_F(UneLigneDeCapteur, ParleALIntégrateur) {
  const std::string absent = "' n'existe pas. Veuillez le créer avec le format suivant : ";
  const std::string seuil = "du capteur de recouvrement nommé 'Force' est invalide. Il est mis à ";
  const Ligne nuls = LigneDeCapteur({{kBas, Nul{}}, {kHaut, Nul{}}, {kMini, Nul{}}});
  for (const auto& [lue, textes] : Cas<Ligne, std::vector<std::string>>{
           {Avec(nuls, "Type de Capteur", "Recouvrement"),
            {"Le seuil bas " + seuil + "80%.", "Le seuil haut " + seuil + "90%.",
             "Le nombre de valeur mini pour le recouvrement du capteur de nommé 'Force' est "
             "invalide. Ils est mis à 1."}},
           {nuls, {}},
           // Told only when the first of the three is missing.
           {Sans(Sans(ligne, kHaut), kMini), {}},
           {Sans(Sans(Sans(ligne, kBas), kHaut), kMini),
            {std::string("Le champs '") + kBas + absent + "REEL DOUBLE",
             std::string("Le champs '") + kHaut + absent + "REEL DOUBLE",
             std::string("Le champs '") + kMini + absent + "ENTIER LONG"}},
           {LigneDeCapteur({{"Type de Capteur", "Selectionnable"}, {"Valeur de selection", Nul{}}}),
            {"Sensor 'Force' : 'Valeur de selection' not define."}},
           {LigneDeCapteur({{"Configuration RS", "1,9601,N,8,1"}}),
            {"Not supported Baud Rate in 'ParametrageDepuisBD' from object 'Capteur' named 'Force. "
             "Default baud rate : 9600"}},
           {LigneDeCapteur({{"Configuration RS", "1,256000,N,8,1"}}), {}}}) {
    messages.textes.clear();
    (void)Lu(lue);
    EXPECT_EQ(messages.textes, textes);
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
  (void)c->AbonneUnitChange([](const std::string&) { throw Echec(Numéro::ErreurInterne); });
  c->UnitéEtalonnage("kN");
  EXPECT_EQ(reçues, "daN;daN;");
  EXPECT_TRUE(registre->Contient(" de la propriété UnitéEtalonnage en écriture "));
}

}  // namespace
}  // namespace zuma::essai
