// A command from its value in units to the registers of its board.
#include "commands/commande.h"

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "outils/allocations.h"
#include "outils/banc_logique.h"

namespace zuma {
namespace {

using essai::Avec;
using essai::Ligne;
using essai::Nombre;
using essai::Sans;
using essai::Texte;

const Valeur kNul{Nul{}};
constexpr std::int32_t kCanal = 10;
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

// 0 to 100 units over 100 to 4100 points, 40 points a unit; limits 10 to 90 units, and 300 to
// 3500 points: 5 to 85 units.
Ligne LigneDeCommande(const char* type = "Normale") {
  Ligne ligne{{"Nom de la Commande", Texte("Vérin")},
              {"Valeur Initiale", Texte("20,0")},
              {"Date d'Etalonnage", Texte("12/03/2024")},
              {"Nom de l'Etalonneur", Texte("Durand")},
              {"Unité d'Etalonnage", Texte("mm/s")},
              {"Type de Commande", Texte(type)},
              {"Sécurité Minimale en Unité", Nombre(10)},
              {"Sécurité Maximale en Unité", Nombre(90)},
              {"Sécurité Minimale en Points", Nombre(300)},
              {"Sécurité Maximale en Points", Nombre(3500)},
              {"Fréquence dither", kNul},
              {"Amplitude dither", Nombre(0)},
              {"Canal", Nombre(kCanal)}};
  for (int i = 1; i <= 20; ++i) {
    const std::string point = "Point " + std::to_string(i);
    const double unités = i == 1 ? 0 : 100;
    ligne.push_back({point + " - Unité", Valeur(i <= 2 ? unités : 0)});
    ligne.push_back({point + " - Point", Valeur(i <= 2 ? 100 + 40 * unités : 0.0)});
  }
  return ligne;
}

class UneCommande : public testing::Test, protected essai::BancLogique {
 protected:
  UneCommande() {
    for (const char* label : {"Alim", "Util", "Copie"}) {
      const auto capteur = Libre();
      capteur->Label(label);
      chassis.Capteurs()->Add(label, capteur);
    }
    int index = 12;
    for (const char* label : {"Monte", "Descend"}) {
      const auto sortie = Prêt<SortieLogique>({{"Index", Nombre(index)},
                                               {"Nom de la Sortie Logique", Texte(label)},
                                               {"Etat d'Activation", Nombre(1)},
                                               {"Canal", Nombre(index)}});
      sortie->Label(label);
      chassis.SortiesLogiques()->Référence(sortie, label);
      ++index;
    }
  }
  Ref<Commande> Faite(const Ligne& ligne) { return Prêt<Commande>(ligne); }
  Ref<Commande> EnService(const Ligne& ligne) {
    auto commande = Faite(ligne);
    commande->Enabled(true);
    Ecritures();
    return commande;
  }
  static Ligne Servo() {
    return Avec(Avec(LigneDeCommande("Servo"), "Capteur Alimentation", Texte("Alim")),
                "Capteur Utilisation", Texte("Util"));
  }
  Ref<Capteur> CapteurDe(const char* label) { return chassis.Capteurs()->Item(label); }
  double Points() { return CanalDe(kCanal)->ValeurCanal(); }
};

TEST_F(UneCommande, LimiteEnUnitésPuisEnPoints) {
  const struct {
    double demandée;
    double gardée;
    double points;
    bool saturée;
  } cas[] = {
      {50, 50, 2100, false}, {10, 10, 500, true},           {9, 10, 500, true},
      {-1e9, 10, 500, true}, {90, 90, 3500, true},          {1e9, 90, 3500, true},
      {86, 86, 3500, false}, {89.999, 89.999, 3500, false},
  };
  const auto commande = EnService(LigneDeCommande());
  EXPECT_EQ(commande->MiniCommande(), 10);
  EXPECT_EQ(commande->MaxiCommande(), 90);
  for (const auto& c : cas) {
    commande->ValeurCouranteEnUnité(c.demandée);
    EXPECT_EQ(commande->ValeurCouranteEnUnité(), c.gardée);
    EXPECT_EQ(commande->ValeurCouranteEnPoints(), c.points) << c.demandée;
    EXPECT_EQ(commande->SortieSaturée(), c.saturée) << c.demandée;
  }
  EXPECT_TRUE(registre->entrées.empty()) << registre->entrées[0].message;
  commande->ValeurCouranteEnUnité(50);
  commande->ValeurCouranteEnUnité(kNaN);
  EXPECT_EQ(Points(), 2100) << "what is no number must not pass for the upper limit";
  EXPECT_TRUE(registre->Contient("Erreur N°5 "));
}

TEST_F(UneCommande, NEcritPasDeuxFoisLaMêmeValeur) {
  const auto commande = EnService(LigneDeCommande());
  commande->ValeurCouranteEnUnité(50);
  EXPECT_GT(Ecritures(), 0U) << "in the caller's time";
  const auto avant = essai::Allocations();
  commande->ValeurCouranteEnUnité(50);
  commande->MetàJour();
  EXPECT_EQ(essai::Allocations(), avant);
  EXPECT_EQ(Ecritures(), 0U);
}

TEST_F(UneCommande, HorsServiceSuitSonCanalEtRepartSansÀCoup) {
  const auto commande = EnService(LigneDeCommande());
  commande->ValeurCouranteEnUnité(50);
  commande->Enabled(false);
  EXPECT_EQ(commande->ValeurCouranteEnUnité(), 50);
  CanalDe(kCanal)->ValeurCanal(2500);  // somebody else drives the output
  commande->ValeurCouranteEnUnité(70);
  EXPECT_EQ(commande->ValeurCouranteEnUnité(), 60) << "read back";
  EXPECT_EQ(Points(), 2500);
  commande->DéclencheAU();
  EXPECT_EQ(commande->ValeurCouranteEnUnité(), 60);
  Ecritures();
  commande->Enabled(true);
  EXPECT_EQ(Points(), 2500);
  EXPECT_GT(Ecritures(), 0U) << "written all the same";
  EXPECT_FALSE(commande->SortieSaturée());
  // Outside the working limits the value is brought back; the safety clamp in points is not there.
  commande->Enabled(false);
  CanalDe(kCanal)->ValeurCanal(3900);
  commande->MetàJour();
  EXPECT_EQ(commande->ValeurCouranteEnUnité(), 95);
  commande->Enabled(true);
  EXPECT_EQ(commande->ValeurCouranteEnUnité(), 90);
  EXPECT_EQ(Points(), 3700);
  EXPECT_TRUE(commande->SortieSaturée());
  commande->MetàJour();
  EXPECT_EQ(Points(), 3500);
}

TEST_F(UneCommande, RevientÀSaValeurInitialeParLArrêt) {
  for (const char* type : {"Normale", "Servo"}) {
    const auto commande = EnService(LigneDeCommande(type));
    commande->ValeurCouranteEnUnité(50);
    Ecritures();
    commande->DéclencheAU();
    EXPECT_EQ(Points(), 900) << type;
    EXPECT_GT(Ecritures(), 0U);
  }
  // Outside the limits the initial value is stored untested and the output limited.
  const auto commande = EnService(Avec(LigneDeCommande(), "Valeur Initiale", Nombre(0)));
  commande->DéclencheAU();
  EXPECT_EQ(commande->ValeurCouranteEnUnité(), 0);
  EXPECT_EQ(Points(), 500);
  // A dither of one toggle in ten seconds does not hold the stop back.
  const auto lente = EnService(Avec(LigneDeCommande(), "Fréquence dither", Valeur(0.05)));
  for (int i = 0; i < 2; ++i) {
    timer->heure += 1000;
    lente->ValeurCouranteEnUnité(50);
  }
  ASSERT_EQ(Points(), 2100);
  timer->heure += 1000;
  lente->ValeurCouranteEnUnité(60);
  ASSERT_EQ(Points(), 2100) << "waits for the next toggle";
  lente->DéclencheAU();
  EXPECT_EQ(Points(), 900);
  // Nor does a pressure sensor that gives no number.
  const auto servo = EnService(Servo());
  CapteurDe("Alim")->ValeurCourante(100);
  CapteurDe("Util")->ValeurCourante(50);
  servo->ValeurCouranteEnUnité(50);
  ASSERT_EQ(Points(), 2100);
  CapteurDe("Util")->ValeurCourante(kNaN);
  servo->DéclencheAU();
  EXPECT_EQ(Points(), 900);
  EXPECT_EQ(registre->entrées.size(), 1U);
}

TEST_F(UneCommande, NePrendJamaisCeQuiNEstPasUnNombrePourSaLimiteHaute) {
  // Out of service and back between two passes, with a pressure that cannot be read.
  const auto servo = EnService(Servo());
  CapteurDe("Alim")->ValeurCourante(100);
  CapteurDe("Util")->ValeurCourante(50);
  servo->ValeurCouranteEnUnité(50);
  CapteurDe("Util")->ValeurCourante(kNaN);
  servo->Enabled(false);
  EXPECT_EQ(registre->entrées.size(), 1U);
  servo->Enabled(true);
  EXPECT_EQ(Points(), 2100);
  // The channel itself.
  const auto commande = EnService(LigneDeCommande());
  commande->Enabled(false);
  CanalDe(kCanal)->ValeurCanal(kNaN);
  commande->MetàJour();
  Ecritures();
  commande->Enabled(true);
  commande->MetàJour();
  EXPECT_EQ(Ecritures(), 0U);
  EXPECT_EQ(registre->entrées.size(), 3U);
  commande->DéclencheAU();
  EXPECT_EQ(Points(), 900);
  // A dither.
  commande->FréquenceDither(10);
  commande->FréquenceDither(kNaN);
  commande->AmplitudeDither(kNaN);
  EXPECT_EQ(registre->entrées.size(), 5U);
  EXPECT_EQ(commande->FréquenceDither(), 10);
  EXPECT_EQ(commande->AmplitudeDither(), 0);
}

TEST_F(UneCommande, ToutOuRienConduitDeuxSorties) {
  const Ligne ligne =
      Avec(Avec(LigneDeCommande("Tout ou Rien"), "Sortie Logique 1", Texte("Monte")),
           "Sortie Logique 2", Texte("Descend"));
  const Ligne large = Avec(ligne, "Sécurité Minimale en Unité", Nombre(-90));
  const auto commande = EnService(large);
  const double points = Points();
  const struct {
    double unités;
    std::uint32_t lignes;
  } cas[] = {{1, 0b0100}, {-1, 0b1000}, {0, 0}, {80, 0b0100}};
  for (const auto& c : cas) {
    commande->ValeurCouranteEnUnité(c.unités);
    EXPECT_EQ(Lignes(), c.lignes) << c.unités;
    EXPECT_EQ(Points(), points) << "the channel is not written";
  }
  commande->DéclencheAU();  // the initial value is above 0
  EXPECT_EQ(Lignes(), 0b0100U);
  EXPECT_TRUE(registre->entrées.empty());

  const auto sansSortie = EnService(Sans(large, "Sortie Logique 2"));
  sansSortie->ValeurCouranteEnUnité(0);
  ASSERT_EQ(registre->entrées.size(), 1U);
  EXPECT_TRUE(registre->Contient("Erreur N°91 "));
  EXPECT_EQ(registre->entrées[0].variables.size(), 6U);
}

TEST_F(UneCommande, RecopieSuitSonCapteurEnServiceOuNon) {
  const auto parametre = Partage(5, "rien");
  const Ligne ligne = Avec(LigneDeCommande("Recopie"), "Paramètre", Nombre(5));
  const auto commande = Faite(Avec(ligne, "Capteur de recopie", Texte("Copie")));
  CapteurDe("Copie")->ValeurCourante(42.5);
  Ecritures();
  commande->MetàJour();
  EXPECT_EQ(Points(), 1800);
  EXPECT_GT(Ecritures(), 0U);
  EXPECT_EQ(parametre->ValeurParamètre(), "42,5");
  commande->MetàJour();
  EXPECT_EQ(Ecritures(), 0U);
  CapteurDe("Copie")->ValeurCourante(95);  // beyond the working limits: the points alone clamp
  commande->MetàJour();
  EXPECT_EQ(commande->ValeurCouranteEnUnité(), 95);
  EXPECT_EQ(Points(), 3500);
  CapteurDe("Copie")->ValeurCourante(kNaN);
  commande->MetàJour();
  EXPECT_EQ(Points(), 3500);
  EXPECT_EQ(registre->entrées.size(), 1U);

  commande->CapteurDeRecopie({});
  parametre->ValeurParamètre("laissé");
  commande->MetàJour();
  EXPECT_EQ(parametre->ValeurParamètre(), "laissé") << "no sensor: not even the parameter";
}

TEST_F(UneCommande, ServoCompenseLaPressionEtEcritToujours) {
  const auto commande = EnService(Servo());
  commande->OffsetServovalve(2);
  commande->PenteOffsetServovalve(0.1);
  CapteurDe("Alim")->ValeurCourante(100);
  CapteurDe("Util")->ValeurCourante(20);
  std::vector<servo::Relevé> relevés;
  commande->Journal([&](const servo::Relevé& r) { relevés.push_back(r); });
  commande->ValeurCouranteEnUnité(40);
  const double corrigée = 40 / std::sqrt(1.6) + 20 * 0.1 + 2;
  EXPECT_DOUBLE_EQ(Points(), 100 + 40 * corrigée);
  EXPECT_EQ(commande->ValeurCouranteEnUnité(), 40) << "the value before correction";
  ASSERT_EQ(relevés.size(), 1U);
  EXPECT_DOUBLE_EQ(relevés[0].corrigée, corrigée);
  EXPECT_DOUBLE_EQ(relevés[0].décalage, 4);
  EXPECT_EQ(relevés[0].points, Points());
  Ecritures();
  commande->MetàJour();
  EXPECT_GT(Ecritures(), 0U) << "unchanged, and written";
  // Saturation is that of the corrected value, and the stored one stays.
  CapteurDe("Util")->ValeurCourante(99);
  commande->MetàJour();
  EXPECT_TRUE(commande->SortieSaturée());
  EXPECT_EQ(commande->ValeurCouranteEnUnité(), 40);
  EXPECT_EQ(Points(), 3500);
  // Out of service the value is the uncorrected one that the channel stands for.
  CapteurDe("Util")->ValeurCourante(20);
  commande->MetàJour();
  commande->Enabled(false);
  EXPECT_DOUBLE_EQ(commande->ValeurCouranteEnUnité(), 40);
}

TEST_F(UneCommande, OndeAutourDeSaValeurAvecUnDither) {
  struct Attendu {
    double secondes;
    double points;
    bool écrite;
  };
  const struct {
    const char* type;
    double valeur;
    double amplitude;
    double gardée;
    bool saturée;
    std::vector<Attendu> passes;
  } cas[] = {
      // Low side first. For a plain command the lateness shifts the toggles.
      {"Normale",
       50,
       4,
       50,
       false,
       {{0.001, 2020, true}, {0.002, 2020, false}, {0.003, 2180, true}, {0.055, 2020, true}}},
      {"Servo",
       50,
       4,
       50,
       false,
       {{0.001, 2020, true}, {0.003, 2020, false}, {0.052, 2180, true}, {0.055, 2180, false}}},
      // Too near the limit of 10: the wave shrinks, and its low side saturates without a word.
      {"Servo", 11, 4, 11, false, {{0.001, 500, true}, {0.052, 580, true}, {0.103, 500, true}}},
      // On the limit: flat. A plain command takes the limit as its value.
      {"Normale", 5, 4, 10, true, {{0.001, 500, true}, {0.003, 500, true}}},
      {"Normale", 50, 0, 50, false, {{0.001, 2100, true}, {0.003, 2100, true}}},
  };
  for (const auto& c : cas) {
    timer->heure = 0;
    Ligne ligne = Avec(LigneDeCommande(c.type), "Valeur Initiale", Nombre(50));
    ligne =
        Avec(Avec(ligne, "Fréquence dither", Nombre(10)), "Amplitude dither", Valeur(c.amplitude));
    const auto commande = EnService(ligne);
    commande->ValeurCouranteEnUnité(c.valeur);  // not due yet at the time of the start
    EXPECT_EQ(Ecritures(), 0U);
    for (const auto& p : c.passes) {
      timer->heure = p.secondes * 1e6;
      commande->MetàJour();
      EXPECT_DOUBLE_EQ(Points(), p.points) << c.type << c.valeur << " " << p.secondes;
      EXPECT_EQ(Ecritures() > 0, p.écrite) << c.type << c.valeur << " " << p.secondes;
    }
    EXPECT_EQ(commande->ValeurCouranteEnUnité(), c.gardée);
    EXPECT_EQ(commande->SortieSaturée(), c.saturée) << c.valeur;
  }
  EXPECT_TRUE(registre->entrées.empty());
}

TEST_F(UneCommande, MontreSaValeurÀSonParamètre) {
  const auto parametre = Partage(5, "");
  const auto commande = Faite(Avec(LigneDeCommande(), "Paramètre", Nombre(5)));
  CanalDe(kCanal)->ValeurCanal(100 + 40.0 / 3);
  commande->MetàJour();
  EXPECT_EQ(parametre->ValeurParamètre(), "0,333333333333333");
  const auto avant = essai::Allocations();
  commande->MetàJour();
  EXPECT_EQ(essai::Allocations(), avant);
  EXPECT_EQ(parametre->écritures, 1);
  parametre->ValeurParamètre("autre");
  commande->MetàJour();
  EXPECT_EQ(parametre->ValeurParamètre(), "0,333333333333333");
}

TEST_F(UneCommande, SansCanalNeFaitRien) {
  const auto commande = Faite(Sans(LigneDeCommande(), "Canal"));
  Ecritures();
  commande->Enabled(true);
  EXPECT_FALSE(commande->Enabled());
  commande->ValeurCouranteEnUnité(50);
  EXPECT_EQ(commande->ValeurCouranteEnUnité(), 50);
  commande->DéclencheAU();
  EXPECT_EQ(Ecritures(), 0U);
  EXPECT_TRUE(registre->entrées.empty());
  EXPECT_EQ(commande->ValeurCouranteEnPoints(), 0);
  EXPECT_TRUE(registre->Contient("Erreur N°91 "));
  EXPECT_TRUE(
      registre->Contient("de la propriété ValeurCouranteEnPoints en lecture de l'objet "
                         "Commande (Vérin)."));
}

TEST_F(UneCommande, DUnTypeInconnuNAgitPas) {
  for (const Valeur& type : {Texte("normale"), Texte(""), kNul, Nombre(1)}) {
    const auto commande = EnService(Avec(LigneDeCommande(), "Type de Commande", type));
    const double points = Points();
    commande->ValeurCouranteEnUnité(50);
    EXPECT_EQ(commande->TypeCommande(), ENUM_TYPE_COMMANDE::Aucune);
    EXPECT_EQ(Points(), points);
  }
  EXPECT_TRUE(registre->entrées.empty());
}

TEST_F(UneCommande, DitSesRéférencesIntrouvables) {
  const struct {
    const char* colonne;
    Valeur valeur;
    const char* message;
  } cas[] = {
      {"Canal", Nombre(99), "un canal d'index '99' qui n'a pas été trouvé."},
      {"Canal", Nombre(0), nullptr},
      {"Capteur Alimentation", Texte("X"),
       "comme capteur d'alimentation le capteur ayant le label 'X' qui n'a pas été trouvée."},
      {"Capteur Alimentation", Texte(""), nullptr},
      {"Capteur Utilisation", Texte("X"),
       "comme capteur d'utilisation le capteur ayant le label 'X' qui n'a pas été trouvée."},
      {"Sortie Logique 1", Texte("X"),
       "comme une 'sortie logique 1' ayant le label 'X' qui n'a pas été trouvée."},
      {"Sortie Logique 2", Texte("X"),
       "comme une 'sortie logique 2' ayant le label 'X' qui n'a pas été trouvée."},
      {"Capteur de recopie", Texte("X"),
       "comme capteur de recopie le capteur ayant le label 'X' qui n'a pas été trouvée."},
      {"Paramètre", Nombre(9), "le paramètre ayant l'index '9' qui n'a pas été trouvée."},
      {"Paramètre", Nombre(0), nullptr},
  };
  for (const auto& c : cas) {
    messages.textes.clear();
    (void)Faite(Avec(LigneDeCommande(), c.colonne, c.valeur));
    std::vector<std::string> attendus;
    if (c.message != nullptr) {
      attendus.push_back(std::string("Attention : La commande 'Vérin' utilise ") + c.message);
    }
    EXPECT_EQ(messages.textes, attendus) << c.colonne;
  }
  EXPECT_TRUE(registre->entrées.empty());
}

TEST_F(UneCommande, NommeLaColonneQuiGêne) {
  const struct {
    Ligne ligne;
    const char* échec;
    const char* colonne;
  } cas[] = {
      {Sans(LigneDeCommande(), "Valeur Initiale"), "Erreur N°3265 ", "'Valeur Initiale'"},
      {Sans(LigneDeCommande(), "Fréquence dither"), "Erreur N°3265 ", "'Fréquence dither'"},
      {Sans(LigneDeCommande(), "Point 20 - Point"), "Erreur N°3265 ", "'Point 20 - Point'"},
      {Avec(LigneDeCommande(), "Date d'Etalonnage", kNul), "Erreur N°94 ", "'Date d'Etalonnage'"},
      {Avec(LigneDeCommande(), "Point 7 - Unité", Texte("x")), "Erreur N°94 ", "'Point 7 - Unité'"},
      {Avec(LigneDeCommande(), "Paramètre", Texte("x")), "Erreur N°94 ", "'Paramètre'"},
  };
  for (const auto& c : cas) {
    registre->entrées.clear();
    (void)Lu<Commande>(c.ligne);
    ASSERT_EQ(registre->entrées.size(), 1U) << c.colonne;
    EXPECT_TRUE(registre->Contient(c.échec)) << registre->entrées[0].message;
    EXPECT_TRUE(registre->Contient(c.colonne)) << registre->entrées[0].message;
  }
}

}  // namespace
}  // namespace zuma
