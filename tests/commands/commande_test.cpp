// A command from its value in units to the registers of its board.
#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>

#include <gtest/gtest.h>

#include "commands/dither.h"
#include "commands/servo.h"
#include "outils/allocations.h"
#include "outils/banc_logique.h"
#include "outils/cas.h"

namespace zuma::essai {
namespace {

using Textes = std::vector<std::string>;

constexpr std::int32_t kCanal = kCanalDeCommande;
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

Ligne Servo() {
  return LigneDeCommande("Servo",
                         {{"Capteur Alimentation", "Alim"}, {"Capteur Utilisation", "Util"}});
}

class UneCommande : public testing::Test, protected BancLogique {
 protected:
  UneCommande() {
    for (const char* label : {"Alim", "Util", "Copie"}) {
      const auto capteur = Libre();
      capteur->Label(label);
      chassis.Capteurs()->Add(label, capteur);
    }
    for (const auto& [label, index] : Cas<const char*, int>{{"Monte", 12}, {"Descend", 13}}) {
      const auto sortie = Prêt<SortieLogique>({{"Index", index},
                                               {"Nom de la Sortie Logique", "Sortie"},
                                               {"Etat d'Activation", 1},
                                               {"Canal", index}});
      sortie->Label(label);
      chassis.SortiesLogiques()->Référence(sortie, sortie->Key());
    }
  }
  Ref<Commande> EnService(const Ligne& ligne) {
    auto commande = Prêt<Commande>(ligne);
    commande->Enabled(true);
    Ecritures();
    return commande;
  }
  // The pressures that ask for no correction, and a value.
  Ref<Commande> ServoEnService() {
    auto commande = EnService(Servo());
    Mesure("Alim", 100);
    Mesure("Util", 50);
    commande->ValeurCouranteEnUnité(50);
    EXPECT_EQ(Points(), 2100);
    return commande;
  }
  void Mesure(const char* label, double valeur) {
    chassis.Capteurs()->Item(label)->ValeurCourante(valeur);
  }
  double Points() { return CanalDe(kCanal)->ValeurCanal(); }
  // Units, points, saturated, written since the last look.
  using Vu = std::tuple<double, double, bool, bool>;
  Vu Etat(const Ref<Commande>& commande) {
    return {commande->ValeurCouranteEnUnité(), Points(), commande->SortieSaturée(),
            Ecritures() > 0};
  }
};

TEST_F(UneCommande, LimiteEnUnitésPuisEnPointsEtNEcritPasDeuxFois) {
  const auto commande = EnService(LigneDeCommande());
  const Cas<double, Vu> cas{{50, {50, 2100, false, true}},  {10, {10, 500, true, true}},
                            {9, {10, 500, true, false}},    {-1e9, {10, 500, true, false}},
                            {90, {90, 3500, true, true}},   {1e9, {90, 3500, true, false}},
                            {86, {86, 3500, false, false}}, {89.999, {89.999, 3500, false, false}},
                            {50, {50, 2100, false, true}}};
  for (const auto& [demandée, attendu] : cas) {
    commande->ValeurCouranteEnUnité(demandée);
    EXPECT_EQ(Etat(commande), attendu) << demandée;
    EXPECT_EQ(commande->ValeurCouranteEnPoints(), Points());
  }
  EXPECT_TRUE(registre->entrées.empty()) << registre->entrées[0].message;
  const auto avant = Allocations();
  commande->ValeurCouranteEnUnité(50);
  commande->MetàJour();
  EXPECT_EQ(Allocations(), avant);
  EXPECT_EQ(Ecritures(), 0U);
}

TEST_F(UneCommande, HorsServiceSuitSonCanalEtRepartSansÀCoup) {
  const auto commande = EnService(LigneDeCommande());
  commande->ValeurCouranteEnUnité(50);
  commande->Enabled(false);
  EXPECT_EQ(Etat(commande), Vu(50, 2100, false, true));
  CanalDe(kCanal)->ValeurCanal(2500);  // somebody else drives the output
  commande->ValeurCouranteEnUnité(70);
  EXPECT_EQ(Etat(commande), Vu(60, 2500, false, false)) << "read back";
  commande->DéclencheAU();
  EXPECT_EQ(Etat(commande), Vu(60, 2500, false, false));
  commande->Enabled(true);
  EXPECT_EQ(Etat(commande), Vu(60, 2500, false, true)) << "written all the same";
  // Outside the working limits the value is brought back; the safety clamp in points is not there.
  commande->Enabled(false);
  CanalDe(kCanal)->ValeurCanal(3900);
  commande->MetàJour();
  commande->Enabled(true);
  EXPECT_EQ(Etat(commande), Vu(90, 3700, true, true));
  commande->MetàJour();
  EXPECT_EQ(Points(), 3500);
}

TEST_F(UneCommande, RevientÀSaValeurInitialeParLArrêt) {
  // Outside the limits the initial value is stored untested and the output limited, in units by
  // the working limits, then in points.
  for (const auto& [type, initiale, mini, points] :
       Cas<const char*, int, int, double>{{"Normale", 20, 10, 900},
                                          {"Servo", 20, 10, 900},
                                          {"Normale", 0, 10, 500},
                                          {"Normale", 0, 0, 300}}) {
    const auto commande = EnService(LigneDeCommande(
        type, {{"Valeur Initiale", initiale}, {"Sécurité Minimale en Unité", mini}}));
    commande->ValeurCouranteEnUnité(50);
    Ecritures();
    commande->DéclencheAU();
    EXPECT_EQ(Etat(commande), Vu(initiale, points, initiale == 0, true)) << type;
  }
  // A pressure sensor that gives no number does not hold the stop back.
  const auto servo = ServoEnService();
  Mesure("Util", kNaN);
  servo->DéclencheAU();
  EXPECT_EQ(Points(), 900);
  EXPECT_TRUE(Dit("pression illisible, commande envoyée sans correction"));
}

TEST_F(UneCommande, NePrendJamaisCeQuiNEstPasUnNombrePourSaLimiteHaute) {
  // Out of service and back between two passes, with a pressure that cannot be read.
  const auto servo = ServoEnService();
  Mesure("Util", kNaN);
  servo->Enabled(false);
  EXPECT_TRUE(Dit("Erreur N°5 "));
  servo->Enabled(true);
  EXPECT_EQ(Points(), 2100);
  const auto commande = EnService(LigneDeCommande());
  commande->ValeurCouranteEnUnité(kNaN);
  EXPECT_TRUE(Dit("Erreur N°5 "));
  EXPECT_EQ(Points(), 2100 - 1200);
  // The channel itself.
  commande->Enabled(false);
  CanalDe(kCanal)->ValeurCanal(kNaN);
  commande->MetàJour();
  Ecritures();
  commande->Enabled(true);
  EXPECT_TRUE(Dit("Erreur N°5 "));
  commande->MetàJour();
  EXPECT_TRUE(Dit("Erreur N°5 "));
  EXPECT_EQ(Ecritures(), 0U);
  commande->DéclencheAU();
  EXPECT_EQ(Points(), 900);
  // A dither.
  commande->FréquenceDither(kNaN);
  commande->AmplitudeDither(kNaN);
  EXPECT_EQ(registre->entrées.size(), 2U);
  EXPECT_EQ(commande->FréquenceDither(), 0);
  EXPECT_EQ(commande->AmplitudeDither(), 0);
}

TEST_F(UneCommande, ToutOuRienConduitDeuxSortiesEtReprendOùEllesSont) {
  const auto parametre = Partage(5, "");
  const Ligne ligne = LigneDeCommande("Tout ou Rien", {{"Sortie Logique 1", "Monte"},
                                                       {"Sortie Logique 2", "Descend"},
                                                       {"Sécurité Minimale en Unité", -90},
                                                       {"Paramètre", 5}});
  const auto commande = EnService(ligne);
  chassis.Commandes()->Add("1", commande);
  const double points = Points();
  for (const auto& [unités, excitées] :
       Cas<double, std::uint32_t>{{1, 0b0100U}, {-1, 0b1000U}, {0, 0U}, {5, 0b0100U}}) {
    commande->ValeurCouranteEnUnité(unités);
    EXPECT_EQ(Lignes(), excitées) << unités;
  }
  commande->DéclencheAU();  // the initial value is above 0
  EXPECT_EQ(Lignes(), 0U);
  // The lines that somebody else moves while it is out of service, and what it shows of them.
  const auto met = [&](const char* sortie, bool active) {
    chassis.SortiesLogiques()->Item(sortie)->ValeurCourante(active ? ENUM_ETAT_LOGIQUE::Actif
                                                                   : ENUM_ETAT_LOGIQUE::Inactif);
  };
  for (const auto& [monte, descend, montrée] :
       Cas<bool, bool, int>{{true, false, 30}, {false, true, -1}, {false, false, 0}}) {
    commande->ValeurCouranteEnUnité(30);
    commande->Enabled(false);
    EXPECT_EQ(commande->ValeurCouranteEnUnité(), 30) << "nothing has moved yet";
    EXPECT_EQ(Lignes(), 0b0100U);
    met("12", monte);
    met("13", descend);
    const std::uint32_t excitées = Lignes();
    commande->MetàJour();
    EXPECT_EQ(parametre->ValeurParamètre(), std::to_string(montrée));
    commande->Enabled(true);
    commande->MetàJour();
    EXPECT_EQ(commande->ValeurCouranteEnUnité(), montrée);
    EXPECT_EQ(Lignes(), excitées) << "taken over without a step";
  }
  EXPECT_EQ(Points(), points) << "the channel is not written";
  // A stop of the frame leaves nothing energised, and nothing shown that is not so.
  for (const bool enService : {true, false}) {
    commande->ValeurCouranteEnUnité(30);
    commande->Enabled(enService);
    ASSERT_EQ(Lignes(), 0b0100U);
    chassis.DéclencheAU();
    EXPECT_EQ(Lignes(), 0U);
    chassis.MetàJour();
    EXPECT_EQ(commande->ValeurCouranteEnUnité(), 0);
    commande->Enabled(true);
  }
  EXPECT_TRUE(registre->entrées.empty());
  EnService(Sans(ligne, "Sortie Logique 2"))->ValeurCouranteEnUnité(0);
  EXPECT_EQ(registre->entrées.at(0).variables.size(), 6U);
  EXPECT_TRUE(Dit("Erreur N°91 "));
}

TEST_F(UneCommande, RecopieSuitSonCapteurEnServiceOuNon) {
  const auto parametre = Partage(5, "rien");
  const auto commande = Prêt<Commande>(
      LigneDeCommande("Recopie", {{"Paramètre", 5}, {"Capteur de recopie", "Copie"}}));
  // Beyond the working limits the points alone clamp; what is no number moves nothing.
  for (const auto& [mesure, attendu] : Cas<double, Vu>{{42.5, {42.5, 1800, false, true}},
                                                       {42.5, {42.5, 1800, false, false}},
                                                       {95, {95, 3500, false, true}},
                                                       {kNaN, {95, 3500, false, false}}}) {
    Mesure("Copie", mesure);
    commande->MetàJour();
    EXPECT_EQ(Etat(commande), attendu) << mesure;
  }
  EXPECT_EQ(parametre->ValeurParamètre(), "95");
  EXPECT_TRUE(Dit("Erreur N°5 "));
  // Held at rest it leaves a sensor that cannot be read too, and stays until it is enabled.
  commande->MaintientAuRepos();
  commande->DéclencheAU();
  EXPECT_EQ(Etat(commande), Vu(20, 900, false, true));
  EXPECT_TRUE(registre->entrées.empty());
  Mesure("Copie", 42.5);
  commande->MetàJour();
  EXPECT_EQ(Etat(commande), Vu(20, 900, false, false)) << "not even a pulse";
  commande->Enabled(true);
  commande->MetàJour();
  EXPECT_EQ(Etat(commande), Vu(42.5, 1800, false, true));
  commande->CapteurDeRecopie({});
  parametre->ValeurParamètre("laissé");
  commande->MetàJour();
  EXPECT_EQ(parametre->ValeurParamètre(), "laissé") << "no sensor: not even the parameter";
}

TEST_F(UneCommande, ServoCompenseLaPressionEtEcritToujours) {
  const auto commande = ServoEnService();
  commande->OffsetServovalve(2);
  commande->PenteOffsetServovalve(0.1);
  Mesure("Util", 20);
  servo::Relevé relevé;
  commande->Journal([&](const servo::Relevé& r) { relevé = r; });
  const double corrigée = 40 / std::sqrt(1.6) + 20 * 0.1 + 2;
  commande->ValeurCouranteEnUnité(40);
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(Etat(commande), Vu(40, relevé.points, false, true)) << "before correction";
    commande->MetàJour();  // unchanged, and written
  }
  EXPECT_DOUBLE_EQ(Points(), 100 + 40 * corrigée);
  EXPECT_DOUBLE_EQ(relevé.corrigée, corrigée);
  EXPECT_DOUBLE_EQ(relevé.décalage, 4);
  // Saturation is that of the corrected value, and the stored one stays.
  Mesure("Util", 99);
  commande->MetàJour();
  EXPECT_EQ(Etat(commande), Vu(40, 3500, true, true));
  // Out of service the value is the uncorrected one that the channel stands for.
  Mesure("Util", 20);
  commande->MetàJour();
  commande->Enabled(false);
  EXPECT_DOUBLE_EQ(commande->ValeurCouranteEnUnité(), 40);
}

TEST_F(UneCommande, OndeAutourDeSaValeurAvecUnDither) {
  for (const auto& [type, valeur, amplitude, gardée, saturée, écritures] :
       Cas<const char*, double, double, double, bool, std::string>{
           // Low side first. For a plain command the lateness of 1 ms shifts the toggles.
           {"Normale", 50, 4, 50, false, "1:2020 3:2180 55:2020 107:2180 "},
           {"Servo", 50, 4, 50, false, "1:2020 52:2180 103:2020 "},
           // Too near the limit of 10: the wave shrinks, and its low side saturates without a word.
           {"Servo", 11, 4, 11, false, "1:500 52:580 103:500 "},
           // On the limit: flat. A plain command takes the limit as its value.
           {"Normale", 5, 4, 10, true, "1:500 3:500 55:500 107:500 "},
           {"Normale", 50, 0, 50, false, "1:2100 3:2100 55:2100 107:2100 "}}) {
    timer->heure = 0;
    const auto commande = EnService(LigneDeCommande(
        type,
        {{"Valeur Initiale", 50}, {"Fréquence dither", 10}, {"Amplitude dither", amplitude}}));
    commande->ValeurCouranteEnUnité(valeur);  // no toggle is due yet
    EXPECT_DOUBLE_EQ(Points(), 100 + 40 * std::max(valeur, 10.0));
    Ecritures();
    std::string écrites;
    for (int ms = 1; ms < 110; ++ms) {
      timer->heure = ms * 1e3;
      commande->MetàJour();
      if (Ecritures() > 0) écrites += std::to_string(ms) + ":" + TexteDeNombre(Points()) + " ";
    }
    EXPECT_EQ(écrites, écritures) << type << valeur;
    EXPECT_EQ(Etat(commande), Vu(gardée, Points(), saturée, false)) << type << valeur;
  }
  EXPECT_TRUE(registre->entrées.empty());
}

TEST_F(UneCommande, NAttendJamaisSonDither) {
  const auto passes = [&](const Ref<Commande>& commande, int ms) {
    int bascules = 0;
    for (; ms > 0; --ms) {
      timer->heure += 1e3;
      const double avant = Points();
      commande->MetàJour();
      if (Points() != avant) ++bascules;
    }
    return bascules;
  };
  using Fait = std::function<void(const Ref<Commande>&)>;
  const auto attend = [&](double secondes) { timer->heure += secondes * 1e6; };
  const Cas<const char*, Fait> cas{
      {"put in service late",
       [&](const auto& c) { c->Enabled(false), attend(60), c->Enabled(true); }},
      {"a late pass", [&](const auto& c) { attend(5), c->MetàJour(); }},
      {"a stop after a while", [&](const auto& c) { attend(60), c->DéclencheAU(); }},
      {"a slow wave before",
       [&](const auto& c) {
         c->FréquenceDither(1e-3);
         passes(c, 100);
         c->FréquenceDither(10);
       }},
      {"switched on late", [&](const auto& c) {
         c->FréquenceDither(0);
         attend(60);
         c->FréquenceDither(10);
       }}};
  for (const char* type : {"Normale", "Servo"}) {
    for (const auto& [nom, fait] : cas) {
      const auto commande =
          EnService(LigneDeCommande(type, {{"Fréquence dither", 10}, {"Amplitude dither", 4}}));
      passes(commande, 30);
      fait(commande);
      commande->ValeurCouranteEnUnité(50);
      EXPECT_NEAR(Points(), 2100, 80) << "in the caller's time: " << type << ", " << nom;
      EXPECT_NEAR(passes(commande, 1000), 19, 2) << type << ", " << nom;
      // Between two toggles, which keep their times: the same side around another value.
      const bool haut = Points() > 2100;
      commande->ValeurCouranteEnUnité(60);
      EXPECT_DOUBLE_EQ(Points(), haut ? 2580 : 2420);
      Ecritures();
      commande->ValeurCouranteEnUnité(60);
      EXPECT_EQ(Ecritures(), 0U) << "no step to tell";
    }
    // Neither a value nor a stop waits for a wave that no clock will see toggle.
    for (const double hertz : {-10.0, 1e-300, 5e-324, 1e300, HUGE_VAL, -HUGE_VAL}) {
      const auto commande = EnService(LigneDeCommande(type, {{"Amplitude dither", 4}}));
      commande->FréquenceDither(hertz);
      passes(commande, 3);
      commande->ValeurCouranteEnUnité(50);
      EXPECT_NEAR(Points(), 2100, 80) << hertz;
      passes(commande, 3);
      commande->DéclencheAU();
      EXPECT_NEAR(Points(), 900, 80) << hertz;
    }
  }
  EXPECT_TRUE(registre->entrées.empty());
}

TEST_F(UneCommande, SansCanalOuDUnTypeInconnuNeFaitRien) {
  for (const Valeur& type : {Valeur("normale"), Valeur(Nul{})}) {
    const auto commande = EnService(LigneDeCommande("", {{"Type de Commande", type}}));
    const double points = Points();
    commande->ValeurCouranteEnUnité(50);
    EXPECT_EQ(Points(), points);
  }
  const auto commande = Prêt<Commande>(Sans(LigneDeCommande(), "Canal"));
  Ecritures();
  commande->Enabled(true);
  EXPECT_FALSE(commande->Enabled());
  commande->ValeurCouranteEnUnité(50);
  EXPECT_EQ(commande->ValeurCouranteEnUnité(), 50);
  commande->DéclencheAU();
  EXPECT_EQ(Ecritures(), 0U);
  EXPECT_TRUE(registre->entrées.empty());
  EXPECT_EQ(commande->ValeurCouranteEnPoints(), 0);
  EXPECT_TRUE(
      Dit("de la propriété ValeurCouranteEnPoints en lecture de l'objet Commande (Vérin)."));
}

TEST_F(UneCommande, DitSesRéférencesIntrouvables) {
  const std::string dans = "Attention : La commande 'Vérin' utilise ";
  for (const auto& [colonne, valeur, message] : Cas<const char*, Valeur, std::string>{
           {"Canal", 99, "un canal d'index '99' qui n'a pas été trouvé."},
           {"Canal", 0, ""},
           {"Capteur Alimentation", "X", "comme capteur d'alimentation le capteur"},
           {"Capteur Alimentation", "", ""},
           {"Capteur Utilisation", "X", "comme capteur d'utilisation le capteur"},
           {"Sortie Logique 1", "X", "comme une 'sortie logique 1'"},
           {"Sortie Logique 2", "X", "comme une 'sortie logique 2'"},
           {"Capteur de recopie", "X", "comme capteur de recopie le capteur"},
           {"Paramètre", 9, "le paramètre ayant l'index '9' qui n'a pas été trouvée."},
           {"Paramètre", 0, ""}}) {
    messages.textes.clear();
    (void)Prêt<Commande>(LigneDeCommande("Normale", {{colonne, valeur}}));
    const char* const fin =
        message.starts_with("comme") ? " ayant le label 'X' qui n'a pas été trouvée." : "";
    EXPECT_EQ(messages.textes, message.empty() ? Textes() : Textes{dans + message + fin});
  }
  EXPECT_TRUE(registre->entrées.empty());
}

TEST_F(UneCommande, NommeLaColonneQuiGêne) {
  for (const char* colonne : {"Valeur Initiale", "Fréquence dither", "Point 20 - Point"}) {
    (void)Lu<Commande>(Sans(LigneDeCommande(), colonne));
    EXPECT_TRUE(Dit(colonne)) << colonne;
  }
  for (const auto& [colonne, valeur] : Cas<std::string, Valeur>{
           {"Date d'Etalonnage", Nul{}}, {"Point 7 - Unité", "x"}, {"Paramètre", "x"}}) {
    (void)Lu<Commande>(Avec(LigneDeCommande(), colonne, valeur));
    EXPECT_TRUE(registre->Contient("Erreur N°94 ")) << colonne;
    EXPECT_TRUE(Dit("'" + colonne + "'")) << colonne;
  }
}

TEST(LeCoefficientServo, SuitLesPressions) {
  constexpr std::nullopt_t kSans = std::nullopt;
  using Pression = std::optional<double>;
  for (const auto& [unités, alimentation, utilisation, coefficient, Putil] :
       Cas<double, Pression, Pression, double, double>{{1, kSans, 80, 1, 0},
                                                       {1, 100, 50, 1, 50},
                                                       {1, 100, kSans, std::sqrt(0.5), 0},
                                                       {0, 100, 0, 10, 0},
                                                       {-1, 100, -5, 10, 0},
                                                       {1, 100, 99, 1 / std::sqrt(0.02), 99},
                                                       {1, 100, 99.9, 10, 99.9},
                                                       {1, 100, 100, 10, 100},
                                                       {-1, 100, 99, 1 / std::sqrt(1.98), 99},
                                                       {1, 100, 120, 10, 120},
                                                       {1, 0, 50, 1, 50},
                                                       {-1, 100, 110, 0.7, 110},
                                                       {1, -3, 50, 1, 50},
                                                       {-1, 0, 0, 1, 0}}) {
    const auto rendu = servo::CalculeCoefServo(unités, {alimentation, utilisation});
    EXPECT_DOUBLE_EQ(rendu.coefficient, coefficient) << unités << " " << Putil;
    EXPECT_EQ(rendu.Putil, Putil);
  }
  EXPECT_TRUE(std::isnan(servo::CalculeCoefServo(1, {NAN, 50}).coefficient));
}

TEST(LeJournalServo, ALesColonnesDeSonEntête) {
  const servo::Relevé relevé{-5, {.coefficient = 0.75, .Palim = 100, .Putil = 30}, 5, 1.25, 4096.5};
  EXPECT_EQ(servo::LigneDuJournal(relevé), "-5;100;30;-1;0,75;5;1,25;4096,5;");
  EXPECT_EQ(std::ranges::count(servo::kEntêteDuJournal, ';') + 1, 8);
}

TEST(LAmplitudeDuDither, TientEntreLesLimites) {
  for (const auto& [base, amplitude, utilisable] : Cas<double, double, double>{
           {50, 10, 10}, {97, 10, 6}, {2, 10, 4}, {100, 10, 0}, {95, 10, 10}}) {
    EXPECT_DOUBLE_EQ(AmplitudeUtilisable(base, amplitude, 0, 100), utilisable) << base;
  }
}

}  // namespace
}  // namespace zuma::essai
