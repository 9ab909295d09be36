#include "base/garde.h"

#include <stdexcept>

#include <gtest/gtest.h>

#include "outils/cas.h"
#include "outils/temoins.h"

namespace zuma {
namespace {

struct Cobaye : Objet {
  explicit Cobaye(Plateforme& plateforme) : Objet(plateforme, "Capteur") {}
  [[nodiscard]] std::string_view NomPourErreur() const override { return nom; }
  std::string nom;
};

class UneGarde : public testing::Test, protected essai::Banc {
 protected:
  UneGarde() { objet.ChargeErreur(registre); }
  Cobaye objet{plateforme};
};

TEST_F(UneGarde, EcritLeMessageDeChaqueForme) {
  for (const auto& [forme, nom, suite] : essai::Cas<Forme, const char*, const char*>{
           {Forme::Méthode, "Force", "méthode Essai de l'objet Capteur (Force)."},
           {Forme::Procédure, "Force", "procédure Essai de l'objet Capteur (Force)."},
           {Forme::Lecture, "Force", "propriété Essai en lecture de l'objet Capteur (Force)."},
           {Forme::Ecriture, "Force", "propriété Essai en écriture de l'objet Capteur (Force)."},
           {Forme::LectureParticulière, "", "propriété Essai en Lecture de l'objet Capteur ()."}}) {
    registre->entrées.clear();
    objet.nom = nom;
    EXPECT_EQ(Garde(objet, forme, "Essai", []() -> int { throw Echec(Numéro::DivisionParZéro); }),
              0);
    const int ligne = __LINE__ - 2;
    EXPECT_EQ(registre->entrées.at(0).message, "Erreur N°11 (Division par zéro) à la ligne " +
                                                   std::to_string(ligne) + " de la " + suite);
    EXPECT_EQ(registre->entrées[0].variables.size(), 1U) << "row 0 alone, empty";
  }
}

TEST_F(UneGarde, NeLaisseSortirAucuneExceptionEtrangère) {
  Garde(objet, Forme::Méthode, "Essai", [] { throw std::runtime_error("panne"); });
  Garde(objet, Forme::Méthode, "Essai", [] { throw 3; });
  Garde(objet, Forme::Méthode, "Essai",
        [] { [[maybe_unused]] const int n = std::vector<int>().at(1); });
  ASSERT_EQ(registre->entrées.size(), 3U);
  EXPECT_TRUE(registre->entrées[0].message.starts_with("Erreur N°51 (Erreur interne : panne)"));
  EXPECT_TRUE(registre->entrées[2].message.starts_with("Erreur N°9 "));
}

TEST_F(UneGarde, RemplitLaTableSurEchecEtSansErreurEchoueOuMontre) {
  int remplie = 0;
  const auto remplit = [&](Variables& v) {
    ++remplie;
    v.Ajoute("mdblHeure", 1.5);
    v.AjouteVide();
  };
  EXPECT_EQ(Garde(objet, Forme::Méthode, "Essai", [] { return 7; }, remplit), 7);
  EXPECT_EQ(remplie, 0);
  const auto échoue = [&](const Objet& qui, SansErreur sans) {
    Garde(qui, Forme::Méthode, "Essai", [] { throw Echec(Numéro::Dépassement); }, remplit, sans);
  };
  échoue(objet, SansErreur::Echoue);
  EXPECT_EQ(registre->entrées.at(0).variables,
            (TableVariables{{}, {Valeur("Variable mdblHeure"), Valeur(1.5)}, {}}));
  const Cobaye orphelin(plateforme);
  EXPECT_THROW(échoue(orphelin, SansErreur::Echoue), Echec);
  échoue(orphelin, SansErreur::Montre);
  EXPECT_TRUE(messages.textes.at(0).starts_with("Erreur N°6 "));
}

}  // namespace
}  // namespace zuma
