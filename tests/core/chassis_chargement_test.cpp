// A frame loaded from a real file, then with each column spoiled in turn: what is wrong is told,
// and the rest loads.
#include <ctime>
#include <set>

#include <gtest/gtest.h>

#include "outils/base_alteree.h"
#include "outils/cas.h"
#include "outils/chassis_de_demo.h"
#include "outils/temoins.h"
#include "platform/linux/base_sqlite.h"
#include "platform/linux/schema.h"

namespace zuma {
namespace {

// A file that another program changes before each of its statements.
class BaseQuiChange : public linux_::BaseSqlite {
 public:
  explicit BaseQuiChange(const std::string& chemin)
      : BaseSqlite(chemin), autre_(chemin, linux_::Accès::Ecriture, std::chrono::milliseconds(0)) {
    autre_.Exécute("PRAGMA journal_mode=WAL; PRAGMA synchronous=OFF");
    Change();
  }
  void Change() {
    const std::string sql = "UPDATE Capteur SET [Nom du Capteur]='" + std::to_string(++fois_) + "'";
    autre_.Exécute(sql.c_str());
  }
  [[nodiscard]] Ref<Recordset> OpenRecordset(std::string_view instruction, int type) override {
    Change();
    return BaseSqlite::OpenRecordset(instruction, type);
  }

 private:
  linux_::ConnexionSqlite autre_;
  int fois_ = 0;
};

class UnChassisDansUnFichier : public testing::Test, public essai::Banc, public essai::BaseDeDémo {
 public:
  [[nodiscard]] Ref<BaseDeDonnées> Base() const { return Crée<linux_::BaseSqlite>(chemin); }
  void Charge(Chassis& chassis, const Ref<BaseDeDonnées>& base, std::int32_t index = 1,
              bool lie = true) {
    registre->entrées.clear();
    chassis.TimerExact(timer);
    chassis.ChargeErreur(registre);
    chassis.ChargeLeChassis(base, index);
    if (lie) chassis.Lien(base, std::to_string(index));
  }
  // Makes the table again without its key.
  static std::string SansClé(const std::string& table) {
    return "CREATE TABLE Copie AS SELECT * FROM [" + table + "]; DROP TABLE [" + table +
           "]; ALTER TABLE Copie RENAME TO [" + table + "]; ";
  }
};

TEST_F(UnChassisDansUnFichier, ChargeLArbreEtSesEntréesConnues) {
  Exécute(R"(
      INSERT INTO Chassis ([Index], [Nom du Chassis], [Entrée Armé], [Entrée Auto/Manu],
        [Départ de cycle d'essai], [Départ de cycle de réarmement], [Entrée manuelle 1],
        [Entrée manuelle 2], [Entrée manuelle 6])
        VALUES (94, 'Presse', 'ARME', 'arme', 'PARTIR', '-', 'PARTIR', 'm2', 'm6');
      INSERT INTO [Entrée Logique] ([Index], [Nom de l'Entrée Logique])
        VALUES (931, 'a'), (932, 'a'), (933, 'a'), (934, 'a');
      INSERT INTO [Liaison Chassis / Entrée Logique] (Chassis, [Entrée Logique], Label)
        VALUES (94, 931, 'ARME'), (94, 932, 'PARTIR'), (95, 933, 'ARME'), (94, 934, 'm6');)");
  const Ref<BaseDeDonnées> base = Base();
  Chassis chassis(plateforme);
  Charge(chassis, base, 94);
  EXPECT_FALSE(registre->Contient("de l'objet Chassis"));
  EXPECT_EQ(chassis.Key(), "94");
  EXPECT_EQ(chassis.Nom(), "Presse");
  ASSERT_EQ(chassis.EntréesLogiques()->Count(), 3) << "one belongs to another frame";
  EXPECT_EQ(chassis.AU()->Key(), "931");
  EXPECT_FALSE(chassis.AutoManu()) << "case counts";
  EXPECT_EQ(chassis.DépartEssai()->Key(), "932");
  EXPECT_FALSE(chassis.DépartRéarme());
  EXPECT_EQ(chassis.EntréesManuelles()->Count(), 2);
  chassis.ChargeLeChassis(base, 94);
  EXPECT_TRUE(registre->Contient("Erreur N°457 (")) << "a frame loads once";
}

TEST_F(UnChassisDansUnFichier, DitUnIndexSansLigneEtUneBaseAbsente) {
  const Ref<BaseDeDonnées> base = Base();
  Chassis vide(plateforme);
  Charge(vide, base, 99);
  EXPECT_TRUE(registre->Contient("Erreur N°3021 (")) << "no row to read the name from";
  EXPECT_EQ(vide.Cartes()->Count(), 0);
  vide.Lien(base, "un");
  EXPECT_TRUE(registre->Contient("Erreur N°13 ("));
  Chassis sansBase(plateforme);
  Charge(sansBase, {});
  EXPECT_TRUE(registre->Contient("Erreur N°91 ("));
}

// The first ones, and those of the error besides.
TEST_F(UnChassisDansUnFichier, ElagueLesSortiesDUnBlocModbus) {
  Exécute(R"(
      UPDATE Fonction SET [Type de Fonction]='Sortie Logique', [Nombre de Canaux]=2 WHERE [Index]=143;
      DELETE FROM Canal WHERE Fonction=143;
      INSERT INTO Canal ([Index], Fonction, [Numéro du Canal])
        VALUES (9001, 143, -1), (9002, 143, 0), (9003, 143, 1), (9004, 143, 2), (9005, 143, 3);)");
  Chassis chassis(plateforme);
  Charge(chassis, Base(), 3, false);
  std::vector<int> gardés;
  for (const auto& canal : *chassis.Cartes()->Item("14")->Fonctions()->Item("143")->Canals()) {
    gardés.push_back(canal->NuméroCanal());
  }
  EXPECT_EQ(gardés, (std::vector{-1, 0, 1}));
}

// A load is one read, whether its host began it or not; behind it nothing is held.
TEST_F(UnChassisDansUnFichier, SeLitDUnSeulTenant) {
  const auto base = Crée<BaseQuiChange>(chemin);
  const auto noms = [&] {
    Chassis chassis(plateforme);
    Charge(chassis, base);
    EXPECT_TRUE(registre->entrées.empty()) << registre->entrées.front().message;
    std::set<std::string> lus;
    for (const CapteurRef& capteur : *chassis.Capteurs()) lus.insert(capteur->NomDuCapteur());
    EXPECT_GT(chassis.Capteurs()->Count(), 1);
    return lus;
  };
  const auto seul = noms();
  EXPECT_EQ(seul.size(), 1U);
  std::set<std::string> àSonHôte;
  {
    const LecturesCohérentes lectures(base);
    àSonHôte = noms();
    EXPECT_EQ(noms(), àSonHôte) << "what the host began goes on behind a load";
  }
  EXPECT_EQ(àSonHôte.size(), 1U);
  EXPECT_NE(àSonHôte, seul);
  // As long as a file is read, its log cannot be emptied.
  linux_::ConnexionSqlite autre(chemin, linux_::Accès::Ecriture, std::chrono::milliseconds(0));
  linux_::InstructionSqlite vide(autre, "PRAGMA wal_checkpoint(TRUNCATE)");
  ASSERT_TRUE(vide.Suivante());
  EXPECT_EQ(linux_::LitColonne(vide.Brut(), 0, linux_::TypeColonne::Entier), Valeur(0));
}

// A file without any index, and objects that refer to one another: four times as many cost four
// times as much, in time of the processor. Sixteen times would be a search through all for each.
TEST_F(UnChassisDansUnFichier, ChargeEnProportionDuNombre) {
  const auto durée = [&](int nombre) {
    std::filesystem::remove(chemin);
    linux_::CréeBase(chemin, {});
    std::string sql =
        "CREATE TABLE c AS WITH RECURSIVE c(x) AS (SELECT 1 UNION ALL SELECT x+1 FROM c LIMIT " +
        std::to_string(nombre) + ") SELECT x FROM c;";
    sql += R"(
        INSERT INTO Chassis ([Index], [Nom du Chassis]) VALUES (1, 'a');
        INSERT INTO Carte ([Index]) SELECT x FROM c WHERE x%20=0;
        INSERT INTO [Liaison Chassis / Carte] SELECT 1, x FROM c WHERE x%20=0;
        INSERT INTO Fonction ([Index], Carte) SELECT x, x FROM c WHERE x%20=0;
        INSERT INTO Canal ([Index], Fonction) SELECT x, x-x%20 FROM c WHERE x>=20;
        INSERT INTO Capteur ([Index], Canal, [Capteur Fils N° 1], [Type de Capteur]) SELECT x, x,
          CASE WHEN x%2 THEN 'l'||(x+1) END, CASE WHEN x%2 THEN 'Moyen' ELSE 'Normal' END FROM c;
        INSERT INTO [Liaison Chassis / Capteur] SELECT x, 1, x, 'l'||x FROM c;)";
    for (const char* table : {"Carte", "Fonction", "Canal", "Capteur"}) sql += SansClé(table);
    Exécute(sql.c_str());
    const auto base = Crée<linux_::BaseSqlite>(
        chemin, linux_::RéglagesBase{.bornes = {.durée = std::chrono::hours(1)}});
    Chassis chassis(plateforme);
    const std::clock_t début = std::clock();
    {
      const LecturesCohérentes lectures(base);
      Charge(chassis, base);
    }
    const std::clock_t fin = std::clock();
    EXPECT_TRUE(registre->entrées.empty()) << registre->entrées.front().message;
    EXPECT_EQ(chassis.Capteurs()->Count(), nombre);
    EXPECT_TRUE(chassis.Capteurs()->Item("1")->CapteursFils()->Item("1"));
    return static_cast<double>(fin - début);
  };
  (void)durée(300);
  const double peu = durée(500);
  EXPECT_LT(durée(2000) / peu, 8);
}

// Each column of the tables, taken away, Null, and for the tables of the tree of the wrong kind.
// The schema says which of these a load cannot pass over.
TEST_F(UnChassisDansUnFichier, SurvitAChaqueColonneAbîmée) {
  const Ref<BaseDeDonnées> base = Base();
  Chassis bon(plateforme);
  Charge(bon, base);
  ASSERT_TRUE(registre->entrées.empty());
  // True when the load told something.
  const auto dit = [&](std::string_view table, std::string_view colonne,
                       const std::optional<Valeur>& valeur, bool entier) {
    Chassis chassis(plateforme);
    const auto abîmée =
        Crée<essai::BaseAltérée>(base, std::string(table), std::string(colonne), valeur);
    Charge(chassis, abîmée, 1, entier);
    if (colonne != "Index") {
      EXPECT_EQ(chassis.Cartes()->Count(), bon.Cartes()->Count()) << table << ", " << colonne;
      EXPECT_EQ(chassis.Capteurs()->Count(), bon.Capteurs()->Count()) << table << ", " << colonne;
      EXPECT_EQ(chassis.EntréesLogiques()->Count(), bon.EntréesLogiques()->Count()) << colonne;
    }
    const bool échec = !registre->entrées.empty();
    if (entier) {
      chassis.Initialise();  // without a machine: fails, and tells
      chassis.MetàJour();
    }
    return échec;
  };
  for (const std::string_view table :
       {"Chassis", "Carte", "Fonction", "Canal", "Capteur", "Commande", "Entrée Logique",
        "Sortie Logique", "WatchDog"}) {
    const bool arbre =
        std::string_view("Chassis Carte Fonction Canal").find(table) != std::string_view::npos;
    for (const auto& colonne : linux_::TrouveTable(table)->colonnes) {
      const std::string_view nom = colonne.nom;
      // Columns that the statements themselves name are the database's business; a Null that
      // selects nothing passes the load, and `check` tells it.
      const bool nommée = nom == "Index" || nom == "Carte" || nom == "Fonction";
      const bool choix =
          nom == "Détection du maxi" || nom == "Type de Commande" || nom == "Etat d'Activation";
      const bool absente = dit(table, nom, {}, arbre);
      const bool nulle = dit(table, nom, Nul{}, arbre);
      EXPECT_TRUE(nommée || nom == "Nom de la Fonction" || absente == colonne.requise)
          << table << ", " << nom << " absente";
      EXPECT_TRUE(nommée || nulle == (!colonne.nulAdmis && !choix))
          << table << ", " << nom << " Null";
      if (!arbre) continue;
      dit(table, nom, "douze", true);
      dit(table, nom, 1e12, true);
    }
  }
}

// What is there twice, or has no number, is told with table and row; what stands behind it loads.
TEST_F(UnChassisDansUnFichier, ChargeCeQuiSuitUneLigneFautive) {
  const auto deuxFois = [](const std::string& table, const char* index) {
    return SansClé(table) + "INSERT INTO [" + table + "] SELECT * FROM [" + table +
           "] WHERE [Index]=" + index;
  };
  const auto compte = [](Chassis& chassis) {
    std::vector<int> nombres{chassis.Cartes()->Count(), chassis.Capteurs()->Count(),
                             chassis.Commandes()->Count(), chassis.EntréesLogiques()->Count(),
                             chassis.SortiesLogiques()->Count()};
    for (const CarteRef& carte : *chassis.Cartes()) {
      nombres.push_back(carte->Fonctions()->Count());
      for (const FonctionRef& bloc : *carte->Fonctions()) {
        nombres.push_back(bloc->Canals()->Count());
      }
    }
    return nombres;
  };
  for (const auto& [sql, dit] : essai::Cas<std::string, std::string>{
           {"", ""},
           // Columns that are read by their name, in the case of another program.
           {"ALTER TABLE [Liaison Chassis / Capteur] RENAME COLUMN Label TO label; "
            "ALTER TABLE [Liaison Chassis / Entrée Logique] RENAME COLUMN Label TO LABEL; "
            "ALTER TABLE Capteur RENAME COLUMN [Index] TO [INDEX]; "
            "ALTER TABLE Capteur RENAME COLUMN [Remise à Zéro Autorisée] TO [REMISE À ZÉRO "
            "AUTORISÉE]; "
            "ALTER TABLE Commande RENAME COLUMN [Nom de la Commande] TO [nom de la commande]",
            ""},
           {"INSERT INTO [Liaison Chassis / Capteur] ([Index], Chassis, Capteur) SELECT 999, 1, 2",
            "Erreur N°457 (Clé déjà présente dans la collection : '2' : table 'Capteur', ligne 2)"},
           {deuxFois("Carte", "2"), "'2' : table 'Carte', ligne 2) à"},
           {deuxFois("Fonction", "11"), "'11' : table 'Fonction', ligne 11) à"},
           {deuxFois("Canal", "1100"), " : table 'Canal', ligne 1100) à"},
           {deuxFois("Commande", "1"), "'1' : table 'Commande', ligne 1) à"},
           {deuxFois("Entrée Logique", "1"), "'1' : table 'Entrée Logique', ligne 1) à"},
           {deuxFois("Sortie Logique", "1"), "'1' : table 'Sortie Logique', ligne 1) à"},
           {SansClé("Canal") + "INSERT INTO Canal (Fonction, [Numéro du Canal]) VALUES (11, -5)",
            " : table 'Canal') à"},
       }) {
    SCOPED_TRACE(sql);
    const essai::BaseDeDémo fautive;
    const auto base = Crée<linux_::BaseSqlite>(fautive.chemin);
    Chassis bon(plateforme);
    Charge(bon, base);
    fautive.Exécute(sql.c_str());
    Chassis chassis(plateforme);
    Charge(chassis, base);
    EXPECT_EQ(compte(chassis), compte(bon));
    EXPECT_EQ(registre->entrées.size(), dit.empty() ? 0U : 1U);
    EXPECT_TRUE(dit.empty() || registre->Contient(dit))
        << (registre->entrées.empty() ? "" : registre->entrées.front().message);
  }
}

}  // namespace
}  // namespace zuma
