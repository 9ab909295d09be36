// Sensors made from other sensors or from the clock.
#include <gtest/gtest.h>

#include "outils/allocations.h"
#include "outils/banc_capteur.h"

namespace zuma {
namespace {

using essai::Avec;
using essai::LigneDeCapteur;
using essai::Texte;
using T = ENUM_TYPE_CAPTEUR;

class UnCapteurDérivé : public testing::Test, protected essai::BancCapteur {
 protected:
  /// Read from a row with these columns, then linked to the parameters and given its children.
  Ref<Capteur> Lié(const char* type, essai::Ligne colonnes, const std::vector<Ref<Capteur>>& fils) {
    essai::Ligne ligne = Avec(LigneDeCapteur(), "Type de Capteur", Texte(type));
    for (Champ& champ : colonnes) ligne.push_back(std::move(champ));
    const auto capteur = Lu(ligne);
    capteur->CapteursFils(Dérivé(T::CapteurMoyen, fils)->CapteursFils());
    capteur->Lien(sécurité, paramètres, traducteur, nullptr);
    capteur->Initialise();
    return capteur;
  }
};

TEST_F(UnCapteurDérivé, CombineSesFils) {
  const auto libres = [&](std::vector<double> valeurs) {
    std::vector<Ref<Capteur>> fils;
    for (const double valeur : valeurs) fils.push_back(Libre(valeur));
    return fils;
  };
  const struct {
    T type;
    const char* opérateur;
    std::vector<double> fils;
    double valeur;
    bool échec;
  } cas[] = {
      {T::CapteurMoyen, "", {2, 4, 9}, 5, false},
      {T::CapteurMoyen, "", {}, 77, false},
      {T::CapteurCombinaison, "+", {2, 4, 9}, 15, false},
      {T::CapteurCombinaison, "-", {2}, -2, false},
      {T::CapteurCombinaison, "-", {2, 5, 9}, -3, false},
      {T::CapteurCombinaison, "*", {2, 4, 9}, 72, false},
      {T::CapteurCombinaison, "/", {4}, 0.25, false},
      {T::CapteurCombinaison, "/", {6, 4, 9}, 1.5, false},
      {T::CapteurCombinaison, "/", {6, 0}, 0, false},
      {T::CapteurCombinaison, "/", {0}, 77, true},
      {T::CapteurCombinaison, "?", {2, 3}, 77, false},
      {T::CapteurCombinaison, "+", {}, 0, false},
      {T::CapteurContrainte, "", {}, 0, false},
      {T::CapteurDeltaL, "", {}, 0, false},
      {T::CapteurDeltaL, "", {5}, 0, false},  // no reference length
      {T::CapteurSelectionnable, "", {5}, 77, false},
      {T::CapteurLePlusPetit, "", {5}, 0, false},  // a child that passed no selection
      {T::CapteurLvdtSolartron, "", {5}, 77, false},
      {static_cast<T>(1003), "", {5}, 77, false},
  };
  for (const auto& c : cas) {
    registre->entrées.clear();
    const auto capteur = Dérivé(c.type, libres(c.fils));
    capteur->Operateur_str(c.opérateur);
    capteur->ValeurCourante(77);
    capteur->MetàJour();
    EXPECT_DOUBLE_EQ(capteur->ValeurCourante(), c.valeur)
        << static_cast<int>(c.type) << c.opérateur << c.fils.size();
    EXPECT_EQ(registre->Contient("Erreur N°11 "), c.échec);
  }
}

TEST_F(UnCapteurDérivé, EchoueSansSesFilsOuSansLePremier) {
  Capteur orphelin(plateforme);
  orphelin.ChargeErreur(registre);
  orphelin.TypeDeCapteur(T::CapteurMoyen);
  orphelin.MetàJour();
  EXPECT_TRUE(registre->Contient("Erreur N°91 "));
  const auto troué = Dérivé(T::CapteurContrainte, {});
  troué->CapteursFils()->Référence(Libre(3), "2");
  troué->MetàJour();
  EXPECT_TRUE(registre->Contient("Erreur N°5 "));
}

TEST_F(UnCapteurDérivé, RemetSaTareAChaquePasseSurUneValeurEcriteDehors) {
  const auto lvdt = Libre(10);
  lvdt->ValeurTare(1);
  lvdt->MetàJour();
  lvdt->MetàJour();
  EXPECT_DOUBLE_EQ(lvdt->ValeurCourante(), 8);
}

TEST_F(UnCapteurDérivé, DonneLeTempsDansSonUnité) {
  const struct {
    const char* unité;
    double valeur;
  } cas[] = {{"h", 1.5}, {"Mn", 90}, {"s", 5400}, {"ms", 5.4e6}, {"µs", 5.4e9}, {"j", 0}};
  for (const auto& c : cas) {
    const auto montre = Lié("Temps", {}, {});
    montre->UnitéEtalonnage(c.unité);
    timer->heure += 5400e6;
    montre->MetàJour();
    EXPECT_DOUBLE_EQ(montre->ValeurCourante(), c.valeur) << c.unité;
    EXPECT_EQ(montre->MaxiDétecté(), 0);  // the clock has no extremes
    montre->Raz();
    EXPECT_EQ(montre->ValeurCourante(), 0) << c.unité;
    EXPECT_EQ(montre->EtatRAZ(), ENUM_OPERATION_MAV::RienFaire);
  }
}

TEST_F(UnCapteurDérivé, DonneLaVitesseSurSaFenêtre) {
  const auto position = Libre();
  const auto vitesse = Lié("Vitesse", {}, {position});  // 0.5 s at 200 Hz
  for (int i = 0; i < 300; ++i) {
    timer->heure += 5000;
    position->ValeurCourante(0.25 * timer->heure / 1e6);
    vitesse->MetàJour();
  }
  EXPECT_NEAR(vitesse->ValeurCourante(), 0.25, 1e-9);
  const std::int64_t avant = essai::Allocations();
  vitesse->MetàJour();
  EXPECT_EQ(essai::Allocations(), avant);
}

TEST_F(UnCapteurDérivé, DonneLAllongementEnPourCent) {
  const auto longueur = Partage(3, "50");
  const auto allongement = Libre(1);
  const auto pourcent = Lié("DeltaL/L", {{"S", Valeur(3)}}, {allongement});
  allongement->AutoriseDétectionMaxi(true);  // its maximum is 1 from now on
  pourcent->MetàJour();
  EXPECT_DOUBLE_EQ(pourcent->ValeurCourante(), 2);
  EXPECT_DOUBLE_EQ(pourcent->MaxiDétecté(), 2);
  longueur->ValeurParamètre("0");
  pourcent->MetàJour();
  EXPECT_EQ(pourcent->ValeurCourante(), 0);
  longueur->ValeurParamètre("longue");
  pourcent->MetàJour();
  EXPECT_TRUE(registre->Contient("Erreur N°13 "));
}

TEST_F(UnCapteurDérivé, SelectionneParUnParamètre) {
  const auto choix = Partage(3, "2");
  const auto capteur =
      Lié("Selectionnable", {{"S", Valeur(3)}, {"Valeur de selection", Texte("2,0")}}, {Libre(8)});
  capteur->MetàJour();
  EXPECT_EQ(capteur->ValeurCourante(), 8);
  for (const char* autre : {"3", "deux", ""}) {
    choix->ValeurParamètre(autre);
    capteur->MetàJour();
    EXPECT_EQ(capteur->ValeurCourante(), 0) << autre;
  }
  EXPECT_TRUE(registre->entrées.empty());
}

TEST_F(UnCapteurDérivé, PrendLePlusPetitFilsSelectionné) {
  const auto petit = Libre(1, 10);
  const auto grand = Libre(2, 100);
  const auto autre = Libre(3, 10);
  const auto choisi = Lié("PPC", {}, {grand, petit, autre});
  for (const auto& fils : {grand, petit, autre}) fils->MetàJour();
  choisi->MetàJour();
  EXPECT_EQ(choisi->ValeurCourante(), 1);  // the first of the two smallest
  EXPECT_EQ(choisi->MaxiCapteurUnité(), 10);
  EXPECT_TRUE(messages.textes.empty());
  petit->UnitéEtalonnage("mm");
  choisi->Initialise();
  EXPECT_EQ(messages.textes,
            std::vector<std::string>{
                "Problem on sensor 'Force'. Unit of sensors linked are not the same."});
}

TEST_F(UnCapteurDérivé, PasseLeZéroEtLaMiseEnServiceASesFils) {
  const std::vector<Ref<Capteur>> fils{Normal(), Normal()};
  const auto plusPetit = Dérivé(T::CapteurLePlusPetit, fils);
  plusPetit->Raz();
  for (const auto& f : fils) EXPECT_EQ(f->EtatRAZ(), ENUM_OPERATION_MAV::Acquisition);
  fils[1]->Enabled_bln(false);
  plusPetit->Enabled_bln(false);
  EXPECT_TRUE(fils[0]->Enabled_bln());
  plusPetit->Enabled_bln(true);
  EXPECT_TRUE(fils[1]->Enabled_bln());
  const auto moyen = Dérivé(T::CapteurMoyen, fils);
  moyen->Raz();  // this kind has no zero
  EXPECT_EQ(moyen->EtatRAZ(), ENUM_OPERATION_MAV::RienFaire);
  EXPECT_TRUE(registre->entrées.empty());
}

TEST_F(UnCapteurDérivé, NAllouePasEnSeRafraîchissant) {
  (void)Partage(3, "50,5");
  const std::vector<Ref<Capteur>> fils{Libre(4, 10), Libre(5, 100)};
  std::vector<Ref<Capteur>> capteurs;
  for (const T type : {T::CapteurMoyen, T::CapteurTemps, T::CapteurLePlusPetit}) {
    capteurs.push_back(Dérivé(type, fils));
  }
  for (const char* type : {"Contrainte", "DeltaL/L", "Selectionnable", "Recouvrement"}) {
    const bool avecS = std::string_view(type) != "Recouvrement";
    capteurs.push_back(Lié(type, avecS ? essai::Ligne{{"S", Valeur(3)}} : essai::Ligne{}, fils));
  }
  for (const char* opérateur : {"+", "-", "*", "/"}) {
    capteurs.push_back(Dérivé(T::CapteurCombinaison, fils));
    capteurs.back()->Operateur_str(opérateur);
  }
  for (const auto& capteur : capteurs) capteur->MetàJour();
  ASSERT_TRUE(registre->entrées.empty()) << registre->entrées[0].message;
  for (const auto& capteur : capteurs) {
    const std::int64_t avant = essai::Allocations();
    capteur->MetàJour();
    EXPECT_EQ(essai::Allocations(), avant) << static_cast<int>(capteur->TypeDeCapteur());
  }
}

}  // namespace
}  // namespace zuma
