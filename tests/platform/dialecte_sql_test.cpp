// The system's statements, as SQLite gets them.
#include "platform/linux/dialecte_sql.h"

#include <gtest/gtest.h>

#include "core/requetes.h"
#include "outils/cas.h"
#include "outils/dossier_provisoire.h"
#include "outils/numero.h"
#include "platform/linux/base_creation.h"
#include "platform/linux/base_sqlite.h"

namespace zuma::linux_ {
namespace {

using namespace requêtes;

TEST(LeDialecte, TraduitCeQuiDiffèreEtRienDAutre) {
  for (const auto& [instruction, sql] : essai::Cas<std::string, std::string>{
           {kSortiesLogiques.liste(7),
            "SELECT ALL * FROM [Sortie Logique] WHERE ([Sortie Logique].[Index] IN ( SELECT "
            "[Sortie "
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
           {"", ""}}) {
    EXPECT_EQ(TraduitPourSqlite(instruction), sql);
  }
}

// Two frames share the objects of each kind: each statement must give its own rows and no other.
class LesInstructions : public testing::Test {
 protected:
  LesInstructions() {
    std::vector<LigneDeBase> lignes;
    for (const int n : {1, 2, 12}) {
      lignes.push_back({"Chassis", {{"Index", n}}});
      lignes.push_back({"Fonction", {{"Index", n}, {"Carte", n}}});
      for (const int numéro : {5, 3}) {
        lignes.push_back(
            {"Canal",
             {{"Index", n * 10 + numéro}, {"Fonction", n}, {"Numéro du Canal", 8 - numéro}}});
      }
    }
    // Frame 1 has objects 2 and 12, frame 2 has object 1 only.
    for (const auto& [chassis, objet, rang] : {std::tuple{1, 12, 1}, {1, 2, 2}, {2, 1, 3}}) {
      for (const std::string table :
           {"Carte", "Capteur", "Commande", "Entrée Logique", "Sortie Logique", "WatchDog"}) {
        LigneDeBase lien{"Liaison Chassis / " + table, {{"Chassis", chassis}, {table, objet}}};
        if (table == "Capteur") lien.champs.push_back({"Index", rang});
        lignes.insert(lignes.end(), {{table, {{"Index", objet}}}, lien});
      }
    }
    CréeBase(dossier.Fichier("base.db"), lignes);
    base = Crée<BaseSqlite>(dossier.Fichier("base.db"));
  }
  using Lus = std::vector<Valeur>;
  Lus Index(const std::string& instruction, std::string_view colonne = "Index") {
    Lus lus;
    const auto lignes = base->OpenRecordset(instruction);
    for (; !lignes->FinDeTable(); lignes->MoveNext()) lus.push_back(LitChamp(*lignes, colonne));
    return lus;
  }
  essai::DossierProvisoire dossier;
  Ref<BaseDeDonnées> base;
};

TEST_F(LesInstructions, DonnentLesLignesDeLeurChassisSeulement) {
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
  // The statements of the service tools.
  EXPECT_TRUE(RecordSetCanal(*base, 25));
  EXPECT_FALSE(RecordSetCanal(*base, 99));
  EXPECT_TRUE(RecordSetFonction(*base, 1));
  EXPECT_TRUE(RecordSetCarte(*base, 1));
  EXPECT_TRUE(RecordSetCapteur(*base, 1));
  // Its statement names a table that it does not select from: a database has no answer to it.
  EXPECT_EQ(essai::NuméroDe([&] { static_cast<void>(RecordSetSL(*base, 1)); }), 3061);
}

}  // namespace
}  // namespace zuma::linux_
