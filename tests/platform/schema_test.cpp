// The schema, and the creation of a file.
#include "platform/linux/schema.h"

#include <gtest/gtest.h>

#include "outils/cas.h"
#include "outils/dossier_provisoire.h"
#include "outils/numero.h"
#include "platform/linux/base_creation.h"
#include "platform/linux/base_sqlite.h"

namespace zuma::linux_ {
namespace {

TEST(LeSchéma, DonneUneValeurÀChaqueColonneQuiEnVeutUne) {
  for (const TableDuSchéma& table : TablesDuSchéma()) {
    for (const ColonneDuSchéma& c : table.colonnes) {
      // A row made of defaults must load: no Null where the loader wants a value, except keys.
      const bool clé = c.type == TypeColonne::Entier && c.requise && c.défaut.empty();
      EXPECT_TRUE(c.nulAdmis || !c.défaut.empty() || clé) << table.nom << " " << c.nom;
    }
  }
  // Any column read after it would take its effect away, and a boolean would come back as -1.
  const TableDuSchéma& entrée = *TrouveTable("Entrée Logique");
  EXPECT_EQ(entrée.colonnes.back().nom, "Etat si rien de connecte");
  EXPECT_EQ(entrée.TrouveColonne("Etat d'Activation")->type, TypeColonne::Entier);
}

TEST(UneCréation, NeLaisseRienDerrièreUnEchec) {
  const essai::DossierProvisoire dossier;
  const std::string fichier = dossier.Fichier("base.db");
  const auto crée = [](const std::string& chemin, const std::vector<LigneDeBase>& lignes) {
    return essai::NuméroDe([&] { CréeBase(chemin, lignes); });
  };
  const LigneDeBase bonne{"Carte", {{"Index", 1}}};
  for (const auto& [ligne, échec] :
       essai::Cas<LigneDeBase, int>{{{"Balance", {}}, 3078},
                                    {{"Carte", {{"Couleur", 1}}}, 3061},
                                    {{"Carte", {{"Nom de la Carte", Nul{}}}}, 94},
                                    {{"Carte", {{"Index", "un"}}}, 13},
                                    {{"Canal", {{"Index", 1}}}, 94}}) {
    EXPECT_EQ(crée(fichier, {bonne, ligne}), échec);
    EXPECT_TRUE(std::filesystem::is_empty(dossier.Chemin())) << échec;
  }
  EXPECT_EQ(crée(dossier.Fichier("pas/là.db"), {}), 76);
  EXPECT_EQ(crée(fichier, {bonne, {"Carte", {}}}), 0);
  EXPECT_EQ(crée(fichier, {}), 58);
  EXPECT_EQ(BaseSqlite(fichier).OpenRecordset("SELECT ALL * FROM [Carte]")->RecordCount(), 2)
      << "an existing file is not touched";
}

}  // namespace
}  // namespace zuma::linux_
