// A logic input from its row to its event, its stop and its parameters.
#include "logic/entree_logique.h"

#include <gtest/gtest.h>

#include "outils/allocations.h"
#include "outils/banc_logique.h"

namespace zuma {
namespace {

using essai::Avec;
using essai::Ligne;
using essai::Nombre;
using essai::Texte;
using enum ENUM_ETAT_LOGIQUE;

const Valeur kNul{Nul{}};
constexpr std::int32_t kCanal = 12;

Ligne LigneDEntrée() {
  return {{"Nom de l'Entrée Logique", Texte("Porte")},
          {"Etat d'Activation", Nombre(1)},
          {"Niveau d'Arrêt d'Urgence", Texte("Aucun")},
          {"Touche", kNul},
          {"Canal", kNul},
          {"Durée Anti-Rebond (s)", kNul}};
}
Ligne AvecCanal(Ligne ligne = LigneDEntrée()) {
  return Avec(std::move(ligne), "Canal", Nombre(kCanal));
}

class UneEntréeLogique : public testing::Test, protected essai::BancLogique {
 protected:
  using Entrée = Ref<EntréeLogique>;
  Entrée Prête(const Ligne& ligne) { return Prêt<EntréeLogique>(ligne); }
  // A refresh with that value on the channel.
  void Passe(EntréeLogique& entrée, double niveau) {
    CanalDe(kCanal)->ValeurCanal(niveau);
    entrée.MetàJour();
  }
  void EcouteLesChangements(EntréeLogique& entrée) {
    entrée.AbonneChange([this](ENUM_ETAT_LOGIQUE état) { changements.push_back(état); });
  }
  std::vector<ENUM_ETAT_LOGIQUE> changements;
};

TEST_F(UneEntréeLogique, PrendSonNiveauDeLaPolarité) {
  const struct {
    Valeur activation;
    double niveau;
    ENUM_ETAT_LOGIQUE état;
  } cas[] = {
      {Nombre(1), -1, Actif},   {Nombre(1), 0, Inactif},  {Nombre(1), 1, Inactif},
      {Nombre(0), 0, Actif},    {Nombre(0), -1, Inactif}, {Nombre(0), 5, Inactif},
      {Nombre(2), 0, Actif},    {Texte("1"), -1, Actif},  {kNul, 0, Actif},
      {Valeur(true), 0, Actif},
  };
  for (const auto& c : cas) {
    const auto entrée = Prête(Avec(AvecCanal(), "Etat d'Activation", c.activation));
    Passe(*entrée, c.niveau);
    EXPECT_EQ(entrée->ValeurCourante(), c.état) << c.niveau;
  }
  EXPECT_TRUE(registre->entrées.empty());
}

TEST_F(UneEntréeLogique, NEstActiveQuAvecUnCanalRafraîchiOuSaToucheSeule) {
  const auto entrée = Prête(Avec(AvecCanal(), "Touche", Texte("F5")));
  const auto état = [&] {
    entrée->MetàJour();
    return entrée->ValeurCourante();
  };
  EXPECT_EQ(état(), Inactif) << "the channel was never refreshed";
  clavier.Enfonce(116);
  EXPECT_EQ(état(), Actif);
  clavier.Enfonce('A');
  EXPECT_EQ(état(), Inactif) << "two keys are down";
  CanalDe(kCanal)->ValeurCanal(-1);
  EXPECT_EQ(état(), Actif);
  clavier.Relâche('A');
  CanalDe(kCanal)->ValeurCanal(0);
  EXPECT_EQ(état(), Actif) << "the key again";
  entrée->Initialise();
  EXPECT_EQ(état(), Inactif) << "a key left down at start does not count";
}

TEST_F(UneEntréeLogique, SansClavierSuitSonCanalEtLeDitUneFois) {
  plateforme.clavier = nullptr;
  const auto entrée = Prête(Avec(AvecCanal(), "Touche", Texte("F5")));
  ASSERT_EQ(registre->entrées.size(), 1U);
  EXPECT_TRUE(registre->Contient("Erreur N°91 "));
  Passe(*entrée, -1);
  EXPECT_EQ(entrée->ValeurCourante(), Actif);
  (void)Prête(AvecCanal());
  EXPECT_EQ(registre->entrées.size(), 1U) << "an input without a key needs no keyboard";
}

TEST_F(UneEntréeLogique, FiltreDansLesDeuxSens) {
  const auto entrée = Prête(Avec(AvecCanal(), "Durée Anti-Rebond (s)", Texte("0,5")));
  EcouteLesChangements(*entrée);
  const struct {
    double secondes;
    double niveau;
    ENUM_ETAT_LOGIQUE état;
  } passes[] = {
      {10.0, 0, Inactif},  {10.1, -1, Inactif}, {10.5, -1, Inactif}, {10.55, 0, Inactif},
      {10.6, -1, Inactif}, {11.0, -1, Inactif}, {11.1, -1, Actif},   {11.2, 0, Actif},
      {11.6, 0, Actif},    {11.65, -1, Actif},  {11.7, 0, Actif},    {12.3, 0, Inactif},
  };
  for (const auto& p : passes) {
    timer->heure = p.secondes * 1e6;
    Passe(*entrée, p.niveau);
    EXPECT_EQ(entrée->ValeurCourante(), p.état) << p.secondes;
  }
  EXPECT_EQ(changements, (std::vector{Actif, Inactif}));
}

TEST_F(UneEntréeLogique, NonConnectéeEstTenueParLHôte) {
  const auto entrée = Prête(Avec(LigneDEntrée(), "Etat si rien de connecte", Texte("Actif")));
  EcouteLesChangements(*entrée);
  entrée->ValeurCourante(Actif);
  entrée->ValeurCourante(Actif);
  entrée->MetàJour();
  EXPECT_EQ(entrée->ValeurCourante(), Actif);
  EXPECT_EQ(changements, (std::vector{Actif}));
  // The accessor makes a channel: nothing is connected still, but the host lets go of it.
  EXPECT_EQ(entrée->Canal(), entrée->Canal());
  entrée->ValeurCourante(Inactif);
  EXPECT_EQ(entrée->ValeurCourante(), Actif);
  entrée->MetàJour();
  EXPECT_EQ(entrée->ValeurCourante(), Inactif);
}

TEST_F(UneEntréeLogique, NeGardeLEtatSiRienQueDeLaDernièreColonne) {
  const Ligne nue = LigneDEntrée();
  Ligne devant = nue;
  devant.insert(devant.begin(), {"Etat si rien de connecte", Texte("Actif")});
  const struct {
    Ligne ligne;
    bool gardé;
  } cas[] = {
      {Avec(nue, "Etat si rien de connecte", Texte("Actif")), true},
      {Avec(nue, "ETAT SI RIEN DE CONNECTE", Texte("autre")), true},
      {Avec(nue, "Etat si rien de connecte", kNul), false},
      {devant, false},
      {Avec(Avec(nue, "Etat si rien de connecte", Texte("Actif")), "Commentaire", kNul), false},
      {nue, false},
  };
  for (const auto& c : cas) {
    const auto entrée = Prête(c.ligne);
    entrée->ValeurCourante(Actif);
    entrée->MetàJour();
    // Kept, the refresh leaves the host's state alone; otherwise nothing active means inactive.
    EXPECT_EQ(entrée->ValeurCourante(), c.gardé ? Actif : Inactif) << &c - cas;
  }
}

TEST_F(UneEntréeLogique, ForcéeNeMontreQueSaValeurForcée) {
  const auto entrée = Prête(Avec(AvecCanal(), "Niveau d'Arrêt d'Urgence", Texte("Activé")));
  EcouteLesChangements(*entrée);
  entrée->ForceOFF();
  Passe(*entrée, -1);
  EXPECT_EQ(entrée->ValeurCourante(), Inactif);
  EXPECT_EQ(changements, (std::vector{Actif}));
  EXPECT_EQ(sécurité->arrêts, 1);
  entrée->ForceON();
  Passe(*entrée, 0);
  EXPECT_EQ(entrée->ValeurCourante(), Actif);
  EXPECT_EQ(sécurité->arrêts, 1);
  entrée->LibereEntreeLogique();
  EXPECT_EQ(entrée->ValeurCourante(), Inactif);
}

TEST_F(UneEntréeLogique, DéclencheLArrêtTantQueSonEtatDure) {
  const struct {
    const char* niveau;
    double canal;
    bool arrêt;
  } cas[] = {
      {"Activé", -1, true},     {"Activé", 0, false}, {"Désactivé", 0, true},
      {"Désactivé", -1, false}, {"Aucun", -1, false}, {"Aucun", 0, false},
  };
  for (const auto& c : cas) {
    sécurité->arrêts = 0;
    const auto entrée = Prête(Avec(AvecCanal(), "Niveau d'Arrêt d'Urgence", Texte(c.niveau)));
    entrée->AutoriseAU();  // cannot fire without a level
    for (int i = 0; i < 3; ++i) Passe(*entrée, c.canal);
    EXPECT_EQ(sécurité->arrêts, c.arrêt ? 3 : 0) << c.niveau << c.canal;
    entrée->InterditAU();
    Passe(*entrée, c.canal);
    EXPECT_EQ(sécurité->arrêts, c.arrêt ? 3 : 0) << "forbidden";
    entrée->AutoriseAU();
    Passe(*entrée, c.canal);
    EXPECT_EQ(sécurité->arrêts, c.arrêt ? 4 : 0) << "allowed again";
  }
}

TEST_F(UneEntréeLogique, NeDéclencheRienAvantDAvoirEtéLue) {
  for (const char* niveau : {"Activé", "Désactivé"}) {
    const auto entrée = Prête(Avec(LigneDEntrée(), "Niveau d'Arrêt d'Urgence", Texte(niveau)));
    entrée->ValeurCourante(Actif);
    entrée->MetàJour();
    const auto connectée = Prête(Avec(Avec(AvecCanal(), "Canal", Nombre(kCanal + 1)),
                                      "Niveau d'Arrêt d'Urgence", Texte(niveau)));
    connectée->MetàJour();
  }
  EXPECT_EQ(sécurité->arrêts, 0);
}

TEST_F(UneEntréeLogique, DitLaCauseDansLaLangueDeLOpérateur) {
  traducteur->mots = {{"Texte declenchement AU par EL", "Stop by input"},
                      {"Texte etat detecte", ", state"},
                      {"Texte Actif", "on"},
                      {"Texte Inactif", "off"}};
  for (const char* niveau : {"Activé", "Désactivé"}) {
    const auto entrée = Prête(Avec(AvecCanal(), "Niveau d'Arrêt d'Urgence", Texte(niveau)));
    Passe(*entrée, -1);
    Passe(*entrée, 0);
  }
  EXPECT_EQ(sécurité->causes, (std::vector<std::string>{"Stop by input Porte, state on",
                                                        "Stop by input Porte, state off"}));
}

TEST_F(UneEntréeLogique, DéclencheLArrêtMêmeQuandLeResteEchoue) {
  const Ligne ligne = Avec(AvecCanal(), "Niveau d'Arrêt d'Urgence", Texte("Activé"));

  const auto sansTraducteur = Lu<EntréeLogique>(ligne);
  sansTraducteur->Lien(sécurité, {}, {}, &chassis);
  Passe(*sansTraducteur, -1);
  ASSERT_EQ(sécurité->arrêts, 1);
  EXPECT_EQ(sécurité->causes.back(),
            "Texte declenchement AU par EL PorteTexte etat detecte Texte Actif");
  EXPECT_TRUE(registre->entrées.empty());

  sécurité->refuse = true;
  const auto entrée = Prête(ligne);
  Passe(*entrée, -1);
  EXPECT_EQ(sécurité->arrêts, 2) << "the cause was refused";
  EXPECT_EQ(registre->entrées.size(), 1U);

  sécurité->refuse = false;
  Passe(*entrée, 0);
  entrée->AbonneChange([](ENUM_ETAT_LOGIQUE) { throw Echec(Numéro::DivisionParZéro); });
  Passe(*entrée, -1);
  EXPECT_EQ(sécurité->arrêts, 3) << "a handler of the host failed";
  EXPECT_EQ(registre->entrées.size(), 2U);

  // A reference that cannot be resolved does not cost the input its safety object.
  const auto sansCanal = Lu<EntréeLogique>(Avec(ligne, "Parametre Etat", Nombre(77)));
  Lie(*sansCanal);
  Passe(*sansCanal, -1);
  EXPECT_EQ(sécurité->arrêts, 4);
}

TEST_F(UneEntréeLogique, PerdSonForçageEtSaLectureQuandElleEchoue) {
  const auto entrée =
      Lu<EntréeLogique>(Avec(AvecCanal(), "Niveau d'Arrêt d'Urgence", Texte("Activé")));
  entrée->Lien({}, {}, {}, &chassis);  // no safety object
  entrée->ForceOFF();
  Passe(*entrée, -1);
  ASSERT_EQ(registre->entrées.size(), 1U);
  const auto& échec = registre->entrées[0];
  EXPECT_TRUE(échec.message.starts_with("Erreur N°91 "));
  EXPECT_TRUE(échec.message.ends_with("de la méthode MetàJour de l'objet Entrée logique (Porte)."));
  ASSERT_EQ(échec.variables.size(), 4U);
  EXPECT_EQ(échec.variables[1][0], Texte("Variable mblnEtatActivation"));
  EXPECT_EQ(échec.variables[2][0], Texte("Variable musrValeurCourante"));
  EXPECT_EQ(échec.variables[3][0], Texte("Variable mobjCanal.ValeurCanal"));
  EXPECT_EQ(échec.variables[3][1], Valeur(-1.0));
  EXPECT_EQ(entrée->ValeurCourante(), Actif) << "no longer forced";
}

TEST_F(UneEntréeLogique, DitUnNiveauDArrêtMalEcrit) {
  const Ligne ligne = Avec(AvecCanal(), "Durée Anti-Rebond (s)", Texte("0,5"));
  for (const auto& [niveau, texte] :
       {std::pair(Texte("Active"), "'Active' n'est ni"), std::pair(kNul, "'Null' n'est ni")}) {
    registre->entrées.clear();
    const auto entrée = Lu<EntréeLogique>(Avec(ligne, "Niveau d'Arrêt d'Urgence", niveau));
    ASSERT_EQ(registre->entrées.size(), 1U);
    EXPECT_TRUE(registre->Contient(texte)) << registre->entrées[0].message;
    Lie(*entrée);
    Passe(*entrée, -1);
    EXPECT_EQ(entrée->Canal(), CanalDe(kCanal)) << "the rest of the row was read";
    EXPECT_EQ(entrée->ValeurCourante(), Inactif) << "the filter's time too";
  }
  // The other way round: a filter time that cannot be read does not cost the stop.
  const auto sansFiltre =
      Lu<EntréeLogique>(Avec(Avec(AvecCanal(), "Durée Anti-Rebond (s)", Texte("vite")),
                             "Niveau d'Arrêt d'Urgence", Texte("Activé")));
  EXPECT_TRUE(registre->Contient("'Durée Anti-Rebond (s)'"));
  Lie(*sansFiltre);
  Passe(*sansFiltre, -1);
  EXPECT_EQ(sécurité->arrêts, 1);
}

class SesParamètres : public UneEntréeLogique {
 protected:
  SesParamètres() {
    const char* const textes[] = {"", "fermée", "ouverte : attendre la fermeture", "absente"};
    for (int i = 0; i < 4; ++i) partagés.push_back(Partage(i + 1, textes[i]));
  }
  Ligne Liée(Ligne ligne) {
    ligne = Avec(Avec(ligne, "parametre etat", Nombre(1)), "Parametre Etat Actif", Nombre(2));
    return Avec(Avec(ligne, "Parametre Etat Inactif", Texte("3")), "Parametre Defaut", Nombre(4));
  }
  std::string Etat() const { return partagés[0]->ValeurParamètre(); }
  std::vector<Ref<essai::Parametre>> partagés;
};

TEST_F(SesParamètres, SuiventLEtatRéelSansRienAllouer) {
  const auto entrée = Prête(Liée(AvecCanal()));
  entrée->ForceON();
  Passe(*entrée, 0);
  EXPECT_EQ(Etat(), "ouverte : attendre la fermeture");
  const auto avant = essai::Allocations();
  Passe(*entrée, 0);
  EXPECT_EQ(essai::Allocations(), avant);
  EXPECT_EQ(partagés[0]->écritures, 1) << "listeners hear of changes only";
  Passe(*entrée, -1);
  EXPECT_EQ(Etat(), "fermée");
  partagés[0]->ValeurParamètre("autre");
  Passe(*entrée, -1);
  EXPECT_EQ(Etat(), "fermée");
}

TEST_F(SesParamètres, PrennentLeDéfautSansSource) {
  const auto entrée = Prête(Liée(LigneDEntrée()));
  entrée->MetàJour();
  EXPECT_EQ(Etat(), "absente");
  (void)entrée->Canal();  // an empty channel connects nothing
  partagés[0]->ValeurParamètre("");
  entrée->MetàJour();
  EXPECT_EQ(Etat(), "absente");
}

TEST_F(SesParamètres, SontCherchésSelonLIndexDeLEtatActif) {
  const struct {
    const char* colonne;
    Valeur index;
    const char* message;
  } cas[] = {
      {"Canal", Nombre(99),
       "Attention : L'entrée logique 'Porte' utilise un canal d'index '99' qui n'a pas été "
       "trouvé."},
      {"Canal", Nombre(0), nullptr},
      {"parametre etat", Nombre(9),
       "L'entrée logique 'Porte' utilise le Parametre Etat d'index '9' qui n'a pas été trouvé."},
      {"Parametre Etat Actif", Nombre(9),
       "L'entrée logique 'Porte' utilise le parametre Etat d'index '9' qui n'a pas été trouvé."},
      {"Parametre Etat Inactif", Nombre(0),
       "L'entrée logique 'Porte' utilise le parametre Etat d'index '0' qui n'a pas été trouvé."},
      {"Parametre Defaut", Nombre(0),
       "L'entrée logique 'Porte' utilise le parametre Etat d'index '0' qui n'a pas été trouvé."},
      {"Parametre Etat Actif", Nombre(0), nullptr},
  };
  for (const auto& c : cas) {
    messages.textes.clear();
    const auto entrée = Prête(Avec(Liée(LigneDEntrée()), c.colonne, c.index));
    if (c.message == nullptr) {
      EXPECT_TRUE(messages.textes.empty()) << c.colonne;
    } else {
      EXPECT_EQ(messages.textes, std::vector<std::string>{c.message}) << c.colonne;
    }
  }
  // With the index of the active state at 0 the default is not looked for either.
  partagés[0]->ValeurParamètre("rien");
  Prête(Avec(Liée(LigneDEntrée()), "Parametre Etat Actif", Nombre(0)))->MetàJour();
  EXPECT_EQ(Etat(), "rien");
  EXPECT_TRUE(registre->entrées.empty());
}

}  // namespace
}  // namespace zuma
