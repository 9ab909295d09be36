// A logic input from its row to its event, its stop and its parameters.
#include <gtest/gtest.h>

#include "outils/allocations.h"
#include "outils/banc_logique.h"
#include "outils/cas.h"

namespace zuma::essai {
namespace {

using enum ENUM_ETAT_LOGIQUE;

constexpr std::int32_t kCanal = 12;
constexpr const char* kNiveau = "Niveau d'Arrêt d'Urgence";
constexpr const char* kFiltre = "Durée Anti-Rebond (s)";
constexpr const char* kSiRien = "Etat si rien de connecte";

Ligne SansSource(const Ligne& champs = {}) {
  return Avec({{"Nom de l'Entrée Logique", "Porte"},
               {"Etat d'Activation", 1},
               {kNiveau, "Aucun"},
               {"Touche", Nul{}},
               {"Canal", Nul{}},
               {kFiltre, Nul{}}},
              champs);
}
Ligne SurCanal(const Ligne& champs = {}) {
  return Avec(SansSource({{"Canal", kCanal}}), champs);
}

class UneEntréeLogique : public testing::Test, protected BancLogique {
 protected:
  Ref<EntréeLogique> Prête(const Ligne& ligne) {
    auto entrée = Prêt<EntréeLogique>(ligne);
    entrée->AbonneChange([this](ENUM_ETAT_LOGIQUE état) { changements.push_back(état); });
    return entrée;
  }
  // A refresh with that value on the channel.
  ENUM_ETAT_LOGIQUE Passe(EntréeLogique& entrée, double niveau) {
    CanalDe(kCanal)->ValeurCanal(niveau);
    entrée.MetàJour();
    return entrée.ValeurCourante();
  }
  std::vector<ENUM_ETAT_LOGIQUE> changements;
};

TEST_F(UneEntréeLogique, PrendSonNiveauDeLaPolarité) {
  const Cas<Valeur, double, ENUM_ETAT_LOGIQUE> cas{
      {1, -1, Actif},   {1, 0, Inactif}, {1, 1, Inactif},  {0, 0, Actif},
      {0, -1, Inactif}, {2, 0, Actif},   {"1", -1, Actif}, {Nul{}, 0, Actif}};
  for (const auto& [activation, niveau, état] : cas) {
    EXPECT_EQ(Passe(*Prête(SurCanal({{"Etat d'Activation", activation}})), niveau), état);
  }
  EXPECT_TRUE(registre->entrées.empty());
}

TEST_F(UneEntréeLogique, NEstActiveQuAvecUnCanalRafraîchiOuSaToucheSeule) {
  const auto entrée = Prête(SurCanal({{"Touche", "F5"}}));
  const auto état = [&] {
    entrée->MetàJour();
    return entrée->ValeurCourante();
  };
  EXPECT_EQ(état(), Inactif) << "the channel was never refreshed";
  clavier.Enfonce(116);
  EXPECT_EQ(état(), Actif);
  clavier.Enfonce('A');
  EXPECT_EQ(état(), Inactif) << "two keys are down";
  EXPECT_EQ(Passe(*entrée, -1), Actif);
  clavier.Relâche('A');
  EXPECT_EQ(Passe(*entrée, 0), Actif) << "the key again";
  entrée->Initialise();
  EXPECT_EQ(état(), Inactif) << "a key left down at start does not count";
  plateforme.clavier = nullptr;
  const auto sansClavier = Prête(SurCanal({{"Touche", "F5"}}));
  EXPECT_TRUE(Dit("Erreur N°91 "));
  EXPECT_EQ(Passe(*sansClavier, -1), Actif);
  (void)Prête(SurCanal());
  EXPECT_TRUE(registre->entrées.empty()) << "an input without a key needs no keyboard";
}

TEST_F(UneEntréeLogique, FiltreDansLesDeuxSens) {
  const auto entrée = Prête(SurCanal({{kFiltre, "0,5"}}));
  const Cas<double, int, ENUM_ETAT_LOGIQUE> passes{
      {10.0, 0, Inactif},  {10.1, -1, Inactif}, {10.5, -1, Inactif}, {10.55, 0, Inactif},
      {10.6, -1, Inactif}, {11.0, -1, Inactif}, {11.1, -1, Actif},   {11.2, 0, Actif},
      {11.6, 0, Actif},    {11.65, -1, Actif},  {11.7, 0, Actif},    {12.3, 0, Inactif}};
  for (const auto& [secondes, niveau, état] : passes) {
    timer->heure = secondes * 1e6;
    EXPECT_EQ(Passe(*entrée, niveau), état) << secondes;
  }
  EXPECT_EQ(changements, (std::vector{Actif, Inactif}));
}

// A state that was never read stops nothing, and one that was read does not wait for the filter.
TEST_F(UneEntréeLogique, CompteSaPremièreLectureAussitôtPuisFiltre) {
  std::int32_t clé = 10;  // one that nothing has refreshed, for each
  for (const auto& [niveau, lu, arrêts] : Cas<const char*, double, int>{
           {"Désactivé", -1, 0}, {"Désactivé", 0, 1}, {"Activé", -1, 1}, {"Activé", 0, 0}}) {
    timer->heure = 1e7;
    sécurité->arrêts = 0;
    const auto entrée = Prête(SurCanal({{kNiveau, niveau}, {kFiltre, "0,5"}, {"Canal", ++clé}}));
    const auto passe = [&, clé](double points, double secondes) {
      timer->heure += secondes * 1e6;
      CanalDe(clé)->ValeurCanal(points);
      entrée->MetàJour();
      return entrée->ValeurCourante();
    };
    const auto [état, autre] = lu == 0 ? std::pair(Inactif, Actif) : std::pair(Actif, Inactif);
    entrée->MetàJour();
    EXPECT_EQ(sécurité->arrêts, 0) << niveau << lu << ", nothing was read";
    EXPECT_EQ(passe(lu, 0.01), état) << niveau;
    EXPECT_EQ(sécurité->arrêts, arrêts) << niveau << lu;
    EXPECT_EQ(passe(-1 - lu, 0.4), état) << "a bounce";
    EXPECT_EQ(passe(lu, 0.01), état);
    entrée->Initialise();
    EXPECT_EQ(passe(-1 - lu, 3600), autre) << "an old state does not outlive a new start";
    const int échoue = entrée->AbonneChange([](auto) { throw Echec(Numéro::DivisionParZéro); });
    EXPECT_EQ(passe(lu, 0.01), autre);
    EXPECT_EQ(passe(lu, 0.5), état);
    EXPECT_TRUE(Dit("Erreur N°11 "));
    EXPECT_EQ(passe(-1 - lu, 0.01), état) << "a failure takes nothing from the filter";
    entrée->DésabonneChange(échoue);
  }
}

TEST_F(UneEntréeLogique, SansSourceEstTenueParLHôteQuandSaDernièreColonneLeDit) {
  Ligne devant = SansSource();
  devant.insert(devant.begin(), {kSiRien, "Actif"});
  const Ligne tenue = SansSource({{kSiRien, "Actif"}});
  for (const auto& [ligne, gardé] :
       Cas<Ligne, bool>{{tenue, true},
                        {SansSource({{"ETAT SI RIEN DE CONNECTE", "autre"}}), true},
                        {SansSource({{kSiRien, Nul{}}}), false},
                        {devant, false},
                        {Avec(tenue, "Commentaire", Nul{}), false}}) {
    changements.clear();
    const auto entrée = Prête(ligne);
    for (int i = 0; i < 2; ++i) entrée->ValeurCourante(Actif);
    EXPECT_EQ(changements, std::vector{Actif});
    entrée->MetàJour();
    EXPECT_EQ(entrée->ValeurCourante(), gardé ? Actif : Inactif) << ligne.back().Name.Texte();
  }
  // The accessor makes a channel: nothing is connected still, but the host lets go of it.
  const auto entrée = Prête(tenue);
  EXPECT_EQ(entrée->Canal(), entrée->Canal());
  entrée->ValeurCourante(Actif);
  EXPECT_EQ(entrée->ValeurCourante(), Inactif);
}

TEST_F(UneEntréeLogique, ForcéeNeMontreQueSaValeurForcée) {
  const auto entrée = Prête(SurCanal({{kNiveau, "Activé"}}));
  entrée->ForceOFF();
  EXPECT_EQ(Passe(*entrée, -1), Inactif);
  entrée->ForceON();
  EXPECT_EQ(Passe(*entrée, 0), Actif);
  EXPECT_EQ(changements, (std::vector{Actif, Inactif}));
  EXPECT_EQ(sécurité->arrêts, 1);
  entrée->LibereEntreeLogique();
  EXPECT_EQ(entrée->ValeurCourante(), Inactif);
  // A refresh that fails ends it.
  const auto sansSécurité = Lu<EntréeLogique>(SurCanal({{kNiveau, "Activé"}}));
  sansSécurité->Lien({}, {}, {}, &chassis);
  sansSécurité->ForceOFF();
  EXPECT_EQ(Passe(*sansSécurité, -1), Actif);
  EXPECT_TRUE(Dit("Erreur N°91 "));
}

TEST_F(UneEntréeLogique, DéclencheLArrêtTantQueSonEtatDure) {
  traducteur->mots = {{"Texte etat detecte", ", state"}, {"Texte Inactif", "off"}};
  const std::string cause = "Texte declenchement AU par EL Porte, state ";
  const Cas<const char*, double, std::string> cas{
      {"Activé", -1, "Texte Actif"}, {"Activé", 0, ""}, {"Désactivé", 0, "off"},
      {"Désactivé", -1, ""},         {"Aucun", -1, ""}, {"Aucun", 0, ""}};
  for (const auto& [niveau, points, état] : cas) {
    sécurité->arrêts = 0;
    Prête(SurCanal({{kNiveau, niveau}, {"Canal", kCanal + 1}}))->MetàJour();  // never read
    const auto entrée = Prête(SurCanal({{kNiveau, niveau}}));
    int attendus = 0;
    for (const bool permis : {true, true, false, true}) {
      permis ? entrée->AutoriseAU() : entrée->InterditAU();
      Passe(*entrée, points);
      attendus += permis && !état.empty() ? 1 : 0;
      EXPECT_EQ(sécurité->arrêts, attendus) << niveau << points << permis;
    }
    EXPECT_TRUE(état.empty() || sécurité->causes.back() == cause + état);
  }
}

TEST_F(UneEntréeLogique, DéclencheLArrêtMêmeQuandLeResteEchoue) {
  const Ligne ligne = SurCanal({{kNiveau, "Activé"}});
  const auto sansTraducteur = Lu<EntréeLogique>(ligne);
  sansTraducteur->Lien(sécurité, {}, {}, &chassis);
  Passe(*sansTraducteur, -1);
  EXPECT_EQ(sécurité->causes, std::vector<std::string>{"Texte declenchement AU par EL PorteTexte "
                                                       "etat detecte Texte Actif"});
  EXPECT_TRUE(registre->entrées.empty());
  sécurité->refuse = true;
  const auto entrée = Prête(ligne);
  Passe(*entrée, -1);
  EXPECT_EQ(sécurité->arrêts, 2) << "the cause was refused";
  EXPECT_TRUE(Dit("Erreur N°51 "));

  sécurité->refuse = false;
  Passe(*entrée, 0);
  entrée->AbonneChange([](ENUM_ETAT_LOGIQUE) { throw Echec(Numéro::DivisionParZéro); });
  Passe(*entrée, -1);
  EXPECT_EQ(sécurité->arrêts, 3) << "a handler of the host failed";
  EXPECT_TRUE(Dit("Erreur N°11 "));

  // A reference that cannot be resolved does not cost the input its safety object.
  plateforme.messages = nullptr;
  const auto introuvable = Lu<EntréeLogique>(Avec(ligne, "Parametre Etat", 77));
  Lie(*introuvable);
  EXPECT_TRUE(Dit("Erreur N°91 ")) << "nowhere to tell it";
  Passe(*introuvable, -1);
  EXPECT_EQ(sécurité->arrêts, 4);
}

TEST_F(UneEntréeLogique, DitUneColonneDArrêtOuDeFiltreMalEcriteEtLitLAutre) {
  for (const auto& [niveau, filtre, message, état] :
       Cas<Valeur, const char*, const char*, ENUM_ETAT_LOGIQUE>{
           {"Active", "0,5", "'Active' n'est ni 'Aucun', ni 'Activé', ni 'Désactivé'", Inactif},
           {Nul{}, "0,5", "'Null' n'est ni", Inactif},
           {"Activé", "vite", "'Durée Anti-Rebond (s)'", Actif}}) {
    const auto entrée = Lu<EntréeLogique>(SurCanal({{kNiveau, niveau}, {kFiltre, filtre}}));
    EXPECT_TRUE(Dit(message)) << message;
    Lie(*entrée);
    Passe(*entrée, 0);
    EXPECT_EQ(Passe(*entrée, -1), état) << "filtered or not";
    EXPECT_EQ(sécurité->arrêts, état == Actif ? 1 : 0);
  }
}

class SesParamètres : public UneEntréeLogique {
 protected:
  static Ligne Liée(const Ligne& ligne) {
    return Avec(ligne, {{"parametre etat", 1},
                        {"Parametre Etat Actif", 2},
                        {"Parametre Etat Inactif", "3"},
                        {"Parametre Defaut", 4}});
  }
  std::string Etat() const { return état->ValeurParamètre(); }
  Ref<Parametre> état = Partage(1, "");
  Ref<Parametre> autres[3] = {Partage(2, "fermée"), Partage(3, "ouverte : attendre la fermeture"),
                              Partage(4, "absente")};
};

TEST_F(SesParamètres, SuiventLEtatRéelSansRienAllouer) {
  const auto entrée = Prête(Liée(SurCanal()));
  entrée->ForceON();
  Passe(*entrée, 0);
  EXPECT_EQ(Etat(), "ouverte : attendre la fermeture");
  const auto avant = Allocations();
  entrée->MetàJour();
  EXPECT_EQ(Allocations(), avant);
  EXPECT_EQ(état->écritures, 1) << "listeners hear of changes only";
  état->ValeurParamètre("autre");
  Passe(*entrée, -1);
  EXPECT_EQ(Etat(), "fermée");

  const auto sansSource = Prête(Liée(SansSource()));
  for (int i = 0; i < 2; ++i) {
    état->ValeurParamètre("");
    sansSource->MetàJour();
    EXPECT_EQ(Etat(), "absente");
    (void)sansSource->Canal();  // an empty channel connects nothing
  }
}

TEST_F(SesParamètres, SontCherchésSelonLIndexDeLEtatActif) {
  const std::string entrée = "L'entrée logique 'Porte' utilise ";
  for (const auto& [colonne, index, message] : Cas<const char*, int, std::string>{
           {"Canal", 99, "Attention : " + entrée + "un canal d'index '99'"},
           {"Canal", 0, ""},
           {"parametre etat", 9, entrée + "le Parametre Etat d'index '9'"},
           {"Parametre Etat Actif", 9, entrée + "le parametre Etat d'index '9'"},
           {"Parametre Etat Inactif", 0, entrée + "le parametre Etat d'index '0'"},
           {"Parametre Defaut", 0, entrée + "le parametre Etat d'index '0'"},
           {"Parametre Etat Actif", 0, ""}}) {
    messages.textes.clear();
    état->ValeurParamètre("rien");
    Prête(Avec(Liée(SansSource()), colonne, index))->MetàJour();
    const auto attendu = message.empty() ? "" : message + " qui n'a pas été trouvé.";
    EXPECT_EQ(messages.textes.empty() ? "" : messages.textes[0], attendu) << colonne;
  }
  EXPECT_EQ(Etat(), "rien") << "without that index the default is not looked for either";
  EXPECT_TRUE(registre->entrées.empty());
}

}  // namespace
}  // namespace zuma::essai
