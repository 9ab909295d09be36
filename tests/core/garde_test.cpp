#include "core/garde.h"

#include <stdexcept>

#include <gtest/gtest.h>

#include "outils/temoins.h"

namespace zuma {
namespace {

class Cobaye : public Objet {
 public:
  explicit Cobaye(Plateforme& plateforme) : Objet(plateforme, "Capteur") {}
  [[nodiscard]] std::string_view NomPourErreur() const override { return nom; }
  std::string nom = "Force";
};

class UneGarde : public testing::Test, protected essai::Banc {
 protected:
  UneGarde() { objet.ChargeErreur(registre); }
  Cobaye objet{plateforme};
};

TEST_F(UneGarde, EcritLeMessageDeChaqueForme) {
  const struct {
    Forme forme;
    const char* suite;
  } cas[] = {
      {Forme::Méthode, " de la méthode Essai de l'objet Capteur (Force)."},
      {Forme::Procédure, " de la procédure Essai de l'objet Capteur (Force)."},
      {Forme::Lecture, " de la propriété Essai en lecture de l'objet Capteur (Force)."},
      {Forme::Ecriture, " de la propriété Essai en écriture de l'objet Capteur (Force)."},
      {Forme::LectureParticulière, " de la propriété Essai en Lecture de l'objet Capteur (Force)."},
  };
  for (const auto& c : cas) {
    registre->entrées.clear();
    const int rendu =
        Garde(objet, c.forme, "Essai", []() -> int { throw Echec(Numéro::DivisionParZéro); });
    const int ligne = __LINE__ - 1;
    EXPECT_EQ(rendu, 0);
    ASSERT_EQ(registre->entrées.size(), 1U);
    EXPECT_EQ(registre->entrées[0].message,
              "Erreur N°11 (Division par zéro) à la ligne " + std::to_string(ligne) + c.suite);
    EXPECT_EQ(registre->entrées[0].variables.size(), 1U) << "row 0 alone, empty";
  }
}

TEST_F(UneGarde, ObjetSansNomFinitParUnePaireDeParenthèsesVide) {
  objet.nom.clear();
  Garde(objet, Forme::Méthode, "Essai", [] { throw Echec(Numéro::ObjetAbsent); });
  ASSERT_EQ(registre->entrées.size(), 1U);
  EXPECT_TRUE(registre->entrées[0].message.ends_with("de l'objet Capteur ()."));
}

TEST_F(UneGarde, NeLaisseSortirAucuneExceptionEtrangère) {
  Garde(objet, Forme::Méthode, "Essai", [] { throw std::runtime_error("panne"); });
  Garde(objet, Forme::Méthode, "Essai", [] { throw 3; });
  Garde(objet, Forme::Méthode, "Essai", [] { (void)std::vector<int>().at(1); });
  ASSERT_EQ(registre->entrées.size(), 3U);
  EXPECT_TRUE(registre->entrées[0].message.starts_with("Erreur N°51 (Erreur interne : panne)"));
  EXPECT_TRUE(registre->entrées[2].message.starts_with("Erreur N°9 "));
}

TEST_F(UneGarde, RemplitLaTableSeulementSurEchec) {
  int remplissages = 0;
  const auto remplit = [&](Variables& v) {
    ++remplissages;
    v.Ajoute("mdblHeure", 1.5);
    v.AjouteVide();
  };
  EXPECT_EQ(Garde(objet, Forme::Méthode, "Essai", [] { return 7; }, remplit), 7);
  EXPECT_EQ(remplissages, 0);
  Garde(objet, Forme::Méthode, "Essai", [] { throw Echec(Numéro::Dépassement); }, remplit);
  ASSERT_EQ(registre->entrées.size(), 1U);
  const TableVariables& table = registre->entrées[0].variables;
  ASSERT_EQ(table.size(), 3U);
  EXPECT_TRUE(EstNul(table[0][0]));
  EXPECT_EQ(table[1][0], Valeur("Variable mdblHeure"));
  EXPECT_EQ(table[1][1], Valeur(1.5));
  EXPECT_TRUE(EstNul(table[2][0]));
}

TEST_F(UneGarde, SansErreurLaQueueEchoueOuMontre) {
  Cobaye orphelin(plateforme);
  EXPECT_THROW(Garde(orphelin, Forme::Méthode, "Essai", [] { throw Echec(Numéro::Dépassement); }),
               Echec);
  Garde(
      orphelin, Forme::Méthode, "Essai", [] { throw Echec(Numéro::Dépassement); },
      [](Variables&) {}, SansErreur::Montre);
  ASSERT_EQ(messages.textes.size(), 1U);
  EXPECT_TRUE(messages.textes[0].starts_with("Erreur N°6 "));
}

}  // namespace
}  // namespace zuma
