// The system's statements, as SQLite gets them.
#include "platform/linux/dialecte_sql.h"

#include <gtest/gtest.h>

#include "core/requetes.h"
#include "outils/dossier_provisoire.h"
#include "platform/linux/base_creation.h"
#include "platform/linux/base_sqlite.h"

namespace zuma::linux_ {
namespace {

using namespace requêtes;

TEST(LeDialecte, TraduitCeQuiDiffèreEtRienDAutre) {
  const struct {
    std::string instruction;
    std::string sql;
  } cas[] = {
      {kSortiesLogiques.liste(7),
       "SELECT ALL * FROM [Sortie Logique] WHERE ([Sortie Logique].[Index] IN ( SELECT [Sortie "
       "Logique] FROM [Liaison Chassis / Sortie Logique] WHERE ([Liaison Chassis / Sortie "
       "Logique].[Chassis] = 7)))"},
      {kEntréesLogiques.liaison(12, 3),
       "SELECT ALL* FROM [Liaison Chassis / Entrée Logique] WHERE ([Liaison Chassis / Entrée "
       "Logique].[Entrée Logique]=12 AND [Liaison Chassis / Entrée Logique].[Chassis]=3)"},
      {FonctionsDe(-4),
       "SELECT [Index], [Nom de la Fonction] FROM Fonction WHERE ((Fonction.[Carte])=-4)"},
      {kCapteurs.liste(1), kCapteurs.liste(1)},
      {"a = any(b", "a IN (b"},
      {"a=\t ANY\n(b", "a IN (b"},
      {"a = ANYTHING", "a = ANYTHING"},
      {"a = ANY", "a = ANY"},
      {"a != b AND c<>'=ANY(!12x'", "a != b AND c<>'=ANY(!12x'"},
      {"[Quoi ! = ANY ( 3x] ! \"é!3x\"", "[Quoi ! = ANY ( 3x] . \"é!3x\""},
      {"x12y=1.5AND z2=3", "x12y=1.5 AND z2=3"},
      {"[jamais fermé ! 1x", "[jamais fermé ! 1x"},
      {"", ""},
  };
  for (const auto& c : cas) EXPECT_EQ(TraduitPourSqlite(c.instruction), c.sql);
}

// Two frames share the objects of each kind: each statement must give its own rows and no other.
class LesInstructions : public testing::Test {
 protected:
  void SetUp() override {
    std::vector<LigneDeBase> lignes;
    for (const int n : {1, 2, 12}) {
      for (const char* table : {"Chassis", "Carte", "Capteur", "Commande", "Entrée Logique",
                                "Sortie Logique", "WatchDog"}) {
        lignes.push_back({table, {{"Index", Valeur(n)}}});
      }
      lignes.push_back({"Fonction", {{"Index", Valeur(n)}, {"Carte", Valeur(n)}}});
      for (const int numéro : {5, 3}) {
        lignes.push_back({"Canal",
                          {{"Index", Valeur(n * 10 + numéro)},
                           {"Fonction", Valeur(n)},
                           {"Numéro du Canal", Valeur(8 - numéro)}}});
      }
    }
    // Frame 1 has objects 2 and 12, frame 2 has object 1 only.
    int rang = 0;
    for (const auto& [chassis, objet] : {std::pair{1, 12}, {1, 2}, {2, 1}}) {
      for (const char* table :
           {"Carte", "Capteur", "Commande", "Entrée Logique", "Sortie Logique", "WatchDog"}) {
        const std::string lien = std::string("Liaison Chassis / ") + table;
        LigneDeBase ligne{lien, {{"Chassis", Valeur(chassis)}, {table, Valeur(objet)}}};
        if (lien == "Liaison Chassis / Capteur") ligne.champs.push_back({"Index", Valeur(++rang)});
        lignes.push_back(ligne);
      }
    }
    CréeBase(dossier.Fichier("base.db"), lignes);
    base = Crée<BaseSqlite>(dossier.Fichier("base.db"));
  }
  std::vector<std::int32_t> Index(const std::string& instruction,
                                  std::string_view colonne = "Index") {
    std::vector<std::int32_t> lus;
    const auto lignes = base->OpenRecordset(instruction);
    for (; !lignes->FinDeTable(); lignes->MoveNext()) {
      lus.push_back(VersEntier32(LitChamp(*lignes, colonne)));
    }
    return lus;
  }
  essai::DossierProvisoire dossier;
  Ref<BaseDeDonnées> base;
};

TEST_F(LesInstructions, DonnentLesLignesDeLeurChassisSeulement) {
  using Lus = std::vector<std::int32_t>;
  for (const ObjetLié* objet :
       {&kCartes, &kCommandes, &kEntréesLogiques, &kSortiesLogiques, &kWatchDog}) {
    EXPECT_EQ(Index(objet->liste(1)), (Lus{2, 12})) << objet->liste(1);
    EXPECT_EQ(Index(objet->liste(9)), Lus{});
    EXPECT_EQ(Index(objet->ligne(12)), Lus{12});
    if (objet->liaison == nullptr) continue;
    EXPECT_EQ(Index(objet->liaison(12, 1), "Chassis"), Lus{1}) << objet->liaison(12, 1);
    EXPECT_EQ(Index(objet->liaison(12, 2), "Chassis"), Lus{});
  }
  // Sensors come in the order of their links.
  EXPECT_EQ(Index(kCapteurs.liste(1)), (Lus{12, 2}));
  EXPECT_EQ(Index(kCapteurs.ligne(2)), Lus{2});
  EXPECT_EQ(Index(kCapteurs.liaison(2, 1), "Chassis"), Lus{1});
  EXPECT_EQ(Index(LigneDuChassis(2)), Lus{2});
  EXPECT_EQ(Index(LigneDuChassisPourLien(2)), Lus{2});
  EXPECT_EQ(Index(FonctionsDe(2)), Lus{2});
  EXPECT_EQ(Index(LigneDeLaFonction(2)), Lus{2});
  // Channels come in the order of their numbers.
  EXPECT_EQ(Index(CanauxDe(2)), (Lus{25, 23}));
  EXPECT_EQ(Index(LigneDuCanalDeBloc(25)), Lus{25});
}

TEST_F(LesInstructions, RépondentAuxOutilsDeService) {
  EXPECT_TRUE(RecordSetCanal(*base, Valeur(25)));
  EXPECT_FALSE(RecordSetCanal(*base, Valeur(99)));
  EXPECT_TRUE(RecordSetFonction(*base, Valeur(1)));
  EXPECT_TRUE(RecordSetCarte(*base, Valeur(1)));
  EXPECT_TRUE(RecordSetCapteur(*base, Valeur(1)));
  // Its statement names a table that it does not select from.
  try {
    static_cast<void>(RecordSetSL(*base, Valeur(1)));
    FAIL() << "a database has no answer to it";
  } catch (const Echec& e) {
    EXPECT_EQ(e.NuméroErreur(), 3061);
  }
}

}  // namespace
}  // namespace zuma::linux_
