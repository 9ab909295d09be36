// Creating, reading, writing back and every way a file can be bad.
#include "platform/linux/base_sqlite.h"

#include <fstream>
#include <limits>

#include <gtest/gtest.h>
#include <unistd.h>

#include "base/requetes.h"
#include "outils/cas.h"
#include "outils/dossier_provisoire.h"
#include "outils/numero.h"
#include "platform/linux/base_creation.h"
#include "platform/linux/dialecte_sql.h"
#include "platform/linux/schema.h"

namespace zuma::linux_ {
namespace {

namespace fs = std::filesystem;
using essai::Cas;
using essai::NuméroDe;
using testing::IsSubstring;

// While one lives, nothing in the folder can be written, by nobody.
class SansDroits {
 public:
  explicit SansDroits(fs::path dossier) : dossier_(std::move(dossier)) {
    Change(fs::perms(0555), fs::perms(0444));
    EXPECT_TRUE(!racine_ || ::seteuid(kPersonne) == 0);
  }
  ~SansDroits() {
    EXPECT_TRUE(!racine_ || ::seteuid(0) == 0);
    Change(fs::perms(0755), fs::perms(0644));
  }

 private:
  static constexpr uid_t kPersonne = 65534;
  void Change(fs::perms duDossier, fs::perms desFichiers) {
    fs::permissions(dossier_, duDossier);
    for (const auto& f : fs::directory_iterator(dossier_)) fs::permissions(f, desFichiers);
  }
  fs::path dossier_;
  bool racine_ = ::geteuid() == 0;
};

class UneBase : public testing::Test {
 protected:
  UneBase() { CréeBase(fichier, kLignes); }
  static Ref<Recordset> Capteur(BaseSqlite& base, int index = 7) {
    return base.OpenRecordset(requêtes::kCapteurs.ligne(index));
  }
  // A field as a new program would read it.
  Valeur Relit(std::string_view colonne, int index = 7) {
    BaseSqlite base(fichier, {.lectureSeule = true});
    return LitChamp(*Capteur(base, index), colonne);
  }
  // What another program does to the file.
  void Autre(const std::string& sql) {
    ConnexionSqlite(fichier, Accès::Ecriture, kSansAttente).Exécute(sql.c_str());
  }
  static int Modifie(Recordset& ligne, std::string_view colonne, const Valeur& valeur) {
    return NuméroDe([&] {
      ligne.Edit();
      ligne.Ecrit(colonne, valeur);
      ligne.Update();
    });
  }
  static int Nomme(Recordset& ligne, const Valeur& nom) {
    return Modifie(ligne, "Nom affiché", nom);
  }

  static constexpr std::chrono::milliseconds kSansAttente{0};
  const std::vector<LigneDeBase> kLignes{{"Capteur", {{"Index", 7}, {"Nom du Capteur", "Force"}}},
                                         {"Capteur", {{"Index", 8}, {"Nom du Capteur", "Course"}}}};
  essai::DossierProvisoire dossier;
  std::string fichier = dossier.Fichier("presse.db");
};

TEST_F(UneBase, RendLesValeursDansLeurType) {
  Autre(R"(CREATE TABLE Essai ("Index" INTEGER PRIMARY KEY, V BOOLEAN, F YESNO, E INTEGER,
            G INTEGER, R REAL, T TEXT, N TEXT, B, L);
           INSERT INTO Essai VALUES
            (1, -1, 0, -2147483648, 2147483648, 3, '1,5', NULL, x'00FF', 4))");
  BaseSqlite base(fichier);
  const auto lignes = base.OpenRecordset("SELECT ALL* FROM [Essai] WHERE [Essai]![Index]=1");
  std::vector<std::pair<std::string, Valeur>> lus;
  for (const Champ& champ : lignes->Fields()) lus.emplace_back(champ.Name, champ.Value);
  const decltype(lus) attendus{
      {"Index", 1},        {"V", true}, {"F", false}, {"E", std::numeric_limits<int>::min()},
      {"G", 2147483648.0}, {"R", 3.0},  {"T", "1,5"}, {"N", Nul{}},
      {"B", Nul{}},        {"L", 4}};
  EXPECT_EQ(lus, attendus);
}

TEST_F(UneBase, SeParcourtDuPremierEnregistrementALaFin) {
  BaseSqlite base(fichier);
  const auto lignes = base.OpenRecordset("SELECT [Index] FROM Capteur ORDER BY [Capteur]![Index]");
  EXPECT_EQ(lignes->RecordCount(), 2);
  for (const int index : {7, 8}) {
    EXPECT_EQ(LitChamp(*lignes, "Index"), Valeur(index));
    lignes->MoveNext();
  }
  EXPECT_TRUE(lignes->FinDeTable());
  EXPECT_EQ(NuméroDe([&] { lignes->MoveNext(); }), 3021);
  EXPECT_EQ(NuméroDe([&] { static_cast<void>(lignes->Fields()); }), 3021);
  EXPECT_EQ(NuméroDe([&] { lignes->Edit(); }), 3021);
  lignes->MoveFirst();
  EXPECT_EQ(LitChamp(*lignes, "Index"), Valeur(7));
  const auto vide = Capteur(base, 99);
  EXPECT_TRUE(vide->FinDeTable());
  EXPECT_EQ(NuméroDe([&] { vide->MoveFirst(); }), 3021);
}

TEST_F(UneBase, GardeCeQuiEstEcritDansLeTypeDeLaColonne) {
  constexpr double kInfini = std::numeric_limits<double>::infinity();
  for (const auto& [colonne, donnée, gardée, échec] : Cas<const char*, Valeur, Valeur, int>{
           {"Point 1 - Unité", 0.1, 0.1, 0},
           {"Point 2 - Unité", " 12,5 ", 12.5, 0},
           {"Point 3 - Unité", "-1.5e3", -1500.0, 0},
           {"Point 4 - Unité", "douze", 0.0, 13},
           {"Point 4 - Unité", "", 0.0, 13},
           {"Point 5 - Unité", std::numeric_limits<double>::quiet_NaN(), 0.0, 6},
           {"Point 5 - Unité", kInfini, 0.0, 6},
           {"Point 6 - Unité", Nul{}, 0.0, 94},
           {"Canal", 2.5, 2, 0},
           {"L", 3e9, Nul{}, 6},
           {"Remise à Zéro Autorisée", true, true, 0},
           {"Nom affiché", "L'effort \"max\"; é", "L'effort \"max\"; é", 0},
           {"Unité d'Etalonnage", 1.5, "1,5", 0},
           {"Commentaire etalonnage", Nul{}, Nul{}, 0}}) {
    SCOPED_TRACE(colonne);
    BaseSqlite base(fichier);
    const auto ligne = Capteur(base);
    EXPECT_EQ(Modifie(*ligne, colonne, donnée), échec);
    EXPECT_EQ(LitChamp(*ligne, colonne), gardée);
    EXPECT_EQ(Relit(colonne), gardée);
  }
  EXPECT_EQ(Relit("Point 1 - Unité", 8), Valeur(0.0));
  EXPECT_EQ(Modifie(*Capteur(*Crée<BaseSqlite>(fichier)), "Colonne absente", 1), 3265);
}

// The recordset of a calibration stays open for hours, and others write meanwhile.
TEST_F(UneBase, NEcritQueCeQuiEstDonnéOùCeQuiAÉtéLuTientEncore) {
  // What the other one writes, and what the refusal says: nothing when the write is to go through.
  for (const auto& [autre, dits] : Cas<std::string, std::vector<const char*>>{
           {"UPDATE Capteur SET [Nom du Capteur]='Course 2' WHERE [Index]=8", {}},
           {"UPDATE Capteur SET [Nom affiché]='F2', [Nom de l'Etalonneur]='Labo', "
            "[Date d'Etalonnage]='3 mai' WHERE [Index]=7",
            {"'Nom affiché', lue Null, trouvée 'F2', à écrire 'Effort'", "'Labo'", "'3 mai'"}},
           {"UPDATE Capteur SET [Point 1 - Unité]=0.1 WHERE [Index]=7",
            {"'Capteur'", "'Point 1 - Unité', lue '0', trouvée '0,1'"}},
           {"UPDATE Capteur SET [Index]=99 WHERE [Index]=7; UPDATE Capteur SET [Index]=7 WHERE "
            "[Index]=8; UPDATE Capteur SET [Index]=8 WHERE [Index]=99",
            {"'Nom du Capteur', lue 'Force', trouvée 'Course'"}}}) {
    SCOPED_TRACE(autre);
    fs::remove(fichier);
    CréeBase(fichier, kLignes);
    const Ref<Recordset> ligne = Capteur(*Crée<BaseSqlite>(fichier));
    Autre(autre);
    std::string refus;
    try {
      ligne->Edit();
      ligne->Ecrit("NOM AFFICHÉ", "Effort");
      ligne->Update();
    } catch (const Echec& e) {
      EXPECT_EQ(e.NuméroErreur(), 3197);
      refus = e.Description();
    }
    EXPECT_EQ(refus.empty(), dits.empty()) << refus;
    for (const char* dit : dits) EXPECT_PRED_FORMAT2(IsSubstring, dit, refus);
    EXPECT_EQ(Relit("Nom affiché") == Valeur("Effort"), dits.empty());
    EXPECT_EQ(Relit("Nom affiché", 8), Valeur(Nul{}));
  }

  const Ref<Recordset> ligne = Capteur(*Crée<BaseSqlite>(fichier));
  EXPECT_EQ(NuméroDe([&] { ligne->Ecrit("Nom affiché", "x"); }), 3020);
  ligne->Edit();
  ligne->Ecrit("Nom affiché", "oublié");
  EXPECT_EQ(LitChamp(*ligne, "Nom affiché"), Valeur(Nul{}));
  ligne->MoveFirst();
  EXPECT_EQ(NuméroDe([&] { ligne->Update(); }), 3020);
  EXPECT_EQ(Relit("Nom affiché"), Valeur(Nul{}));
}

TEST_F(UneBase, EcritToutOuRien) {
  BaseSqlite base(fichier);
  const auto ligne = Capteur(base);
  ligne->Edit();
  ligne->Ecrit("Nom affiché", "Effort");
  ligne->Ecrit("Point 1 - Point", Nul{});
  EXPECT_EQ(NuméroDe([&] { ligne->Update(); }), 94);
  EXPECT_EQ(Relit("Nom affiché"), Valeur(Nul{}));
  EXPECT_EQ(LitChamp(*ligne, "Nom affiché"), Valeur(Nul{}));
  // The edit is still open: it can be put right and saved.
  ligne->Ecrit("Point 1 - Point", 100);
  EXPECT_EQ(NuméroDe([&] { ligne->Update(); }), 0);
  EXPECT_EQ(Relit("Nom affiché"), Valeur("Effort"));
  EXPECT_EQ(Relit("Point 1 - Point"), Valeur(100.0));
}

TEST_F(UneBase, DitPourquoiUneEcritureEstRefusée) {
  BaseSqlite base(fichier, {.attenteVerrou = kSansAttente});
  const auto ligne = Capteur(base);
  {
    ConnexionSqlite autre(fichier, Accès::Ecriture, kSansAttente);
    autre.Exécute("BEGIN EXCLUSIVE");
    EXPECT_EQ(Nomme(*ligne, "x"), 3260);
    EXPECT_EQ(NuméroDe([&] { Capteur(base); }), 3260);
    EXPECT_EQ(NuméroDe([&] { BaseSqlite(fichier, {.attenteVerrou = kSansAttente}); }), 3260);
  }
  EXPECT_EQ(Relit("Nom affiché"), Valeur(Nul{}));
  EXPECT_EQ(NuméroDe([&] { ligne->Update(); }), 0) << "the same edit, once the lock is gone";
  EXPECT_EQ(Relit("Nom affiché"), Valeur("x"));

  BaseSqlite lecture(fichier, {.lectureSeule = true});
  EXPECT_EQ(Nomme(*Capteur(lecture), "y"), 3027);
  EXPECT_EQ(Nomme(*base.OpenRecordset("SELECT [Nom affiché] FROM Capteur"), "y"), 3027);
  {
    const SansDroits lecteur(dossier.Chemin());
    BaseSqlite protégée(fichier);
    EXPECT_EQ(LitChamp(*Capteur(protégée), "Nom du Capteur"), Valeur("Force"));
    EXPECT_EQ(Nomme(*Capteur(protégée), "y"), 3027);
  }
  Autre(
      "CREATE TABLE Essai ([Index] INTEGER, T TEXT); INSERT INTO Essai VALUES (1, 'a'), (1, 'b')");
  EXPECT_EQ(Modifie(*base.OpenRecordset("SELECT ALL * FROM Essai"), "T", "c"), 3075);
  EXPECT_EQ(base.OpenRecordset("SELECT ALL * FROM Essai WHERE T='c'")->RecordCount(), 0);

  Autre("DELETE FROM Capteur WHERE [Index]=7");
  EXPECT_EQ(Nomme(*ligne, "y"), 3167);
  const auto huit = Capteur(base, 8);
  fs::remove(fichier);
  EXPECT_EQ(Nomme(*huit, "y"), 53) << "a write to a file that is no longer there would be lost";
}

// Between the two operations all is read as it stood at the first, whether the file lets others
// write meanwhile or not; behind them nothing is held.
TEST_F(UneBase, LitDUnSeulTenant) {
  const RéglagesBase réglages{.attenteVerrou = kSansAttente};
  for (const auto& [journal, écriturePendant] : {std::pair{"WAL", 0}, std::pair{"DELETE", 3260}}) {
    SCOPED_TRACE(journal);
    Autre(std::string("UPDATE Capteur SET [Nom du Capteur]='Force'; PRAGMA journal_mode=") +
          journal);
    const auto base = Crée<BaseSqlite>(fichier, réglages);
    const auto renomme = [&] { Autre("UPDATE Capteur SET [Nom du Capteur]='Effort'"); };
    const auto nom = [&] { return LitChamp(*Capteur(*base), "Nom du Capteur"); };
    {
      const LecturesCohérentes lectures(base);
      EXPECT_EQ(NuméroDe(renomme), écriturePendant);
      EXPECT_EQ(nom(), Valeur("Force"));
      EXPECT_NE(Nomme(*Capteur(*base), "x"), 0) << "reads alone";
      EXPECT_EQ(nom(), Valeur("Force")) << "a write that is refused ends nothing";
    }
    EXPECT_EQ(NuméroDe(renomme), 0);
    EXPECT_EQ(nom(), Valeur("Effort"));
    EXPECT_EQ(Nomme(*Capteur(*base), "x"), 0);
  }
  const auto base = Crée<BaseSqlite>(fichier, réglages);
  ConnexionSqlite autre(fichier, Accès::Ecriture, kSansAttente);
  autre.Exécute("BEGIN EXCLUSIVE");
  EXPECT_EQ(NuméroDe([&] { const LecturesCohérentes lectures(base); }), 3260);
  autre.Exécute("COMMIT");
  EXPECT_EQ(NuméroDe([&] { const LecturesCohérentes lectures(base); }), 0) << "tried again";
}

TEST_F(UneBase, NuméroteLesInstructionsRefusées) {
  BaseSqlite base(fichier);
  for (const auto& [instruction, échec] :
       Cas<const char*, int>{{"SELECT ALL * FROM [Balance] WHERE [Balance]![Index]=1", 3078},
                             {"SELECT ALL * FROM [Capteur] WHERE [Capteur]![Indexe]=1", 3061},
                             {"SELECT \"Indexe\" FROM [Capteur]", 3061},
                             {"SELECT ALL * FROM", 3075},
                             {"", 3075},
                             {"DELETE FROM [Capteur]", 3075},
                             {"SELECT [Index] FROM [Capteur]; DELETE FROM [Capteur]", 3075},
                             {"SELECT [Index] FROM [Capteur];  ", 0},
                             {"PRAGMA writable_schema=ON", 3075},
                             {"SELECT load_extension('x')", 3075}}) {
    EXPECT_EQ(NuméroDe([&] { base.OpenRecordset(instruction); }), échec) << instruction;
  }
  EXPECT_EQ(base.OpenRecordset("SELECT ALL * FROM [Capteur]")->RecordCount(), 2);
}

TEST_F(UneBase, NExécuteRienDeCeQueLeFichierContient) {
  Autre(
      "CREATE TRIGGER piège AFTER UPDATE ON Capteur BEGIN UPDATE Capteur SET "
      "[Point 1 - Unité]=999; END; CREATE VIEW Vue AS SELECT [Index] FROM Capteur");
  BaseSqlite base(fichier);
  EXPECT_EQ(Nomme(*Capteur(base), "x"), 0);
  EXPECT_EQ(Relit("Point 1 - Unité"), Valeur(0.0));
  const auto problèmes = base.ProblèmesDIntégrité();
  ASSERT_EQ(problèmes.size(), 2U);
  EXPECT_PRED_FORMAT2(IsSubstring, "déclencheur piège", problèmes[0].texte);
  EXPECT_PRED_FORMAT2(IsSubstring, "jamais lu : vue Vue", problèmes[1].texte);
}

// Nothing that a file holds keeps its reader for ever, nor takes all its memory.
TEST_F(UneBase, FinitDeLireQuoiQueLeFichierDemande) {
  Autre(R"(ALTER TABLE Carte RENAME TO Vraie; CREATE VIEW Carte AS
            WITH RECURSIVE c(x) AS (SELECT 1 UNION ALL SELECT x+1 FROM c) SELECT x AS [Index] FROM c;
           ALTER TABLE Commande RENAME TO Autre; CREATE VIEW Commande AS SELECT * FROM Autre;
           CREATE TABLE Grande AS WITH RECURSIVE c(x) AS
             (SELECT 1 UNION ALL SELECT x+1 FROM c LIMIT 20000) SELECT x AS [Index] FROM c)");
  constexpr const char* kSansFin = "SELECT a.* FROM Grande a, Grande b, Grande c WHERE b.[Index]=0";
  BaseSqlite base(fichier,
                  {.bornes = {.durée = std::chrono::milliseconds(200), .mémoire = 100'000}});
  for (const auto& [instruction, échec] :
       Cas<const char*, int>{{"SELECT ALL * FROM [Carte]", 3078},
                             {"SELECT ALL * FROM [Commande]", 3078},
                             {"SELECT ALL * FROM [Grande]", 3035},
                             {kSansFin, 3059},
                             {"SELECT [Index] FROM [Capteur]", 0}}) {
    EXPECT_EQ(NuméroDe([&] { base.OpenRecordset(instruction); }), échec) << instruction;
  }
  // The time is that of a whole load: nothing is read behind it, and all again after it.
  base.DébuteLesLectures();
  EXPECT_EQ(NuméroDe([&] { Capteur(base); }), 0);
  EXPECT_EQ(NuméroDe([&] { base.OpenRecordset(kSansFin); }), 3059);
  EXPECT_EQ(NuméroDe([&] { Capteur(base); }), 3059);
  base.FinitLesLectures();
  EXPECT_EQ(NuméroDe([&] { Capteur(base); }), 0);

  static bool fin;
  fin = false;
  BaseSqlite autre(fichier, {.bornes = {.durée = std::chrono::hours(1), .interrompue = [] {
                                          return std::exchange(fin, true);  // the second look
                                        }}});
  EXPECT_EQ(NuméroDe([&] { autre.OpenRecordset(kSansFin); }), 3059);
  EXPECT_EQ(NuméroDe([&] { autre.OpenRecordset("SELECT [Index] FROM [Capteur]"); }), 3059);
  // Nor is a file that there was no time for a damaged one.
  const auto problèmes = BaseSqlite(fichier, {.bornes = {.durée = {}}}).ProblèmesDIntégrité();
  ASSERT_EQ(problèmes.size(), 1U);
  EXPECT_FALSE(problèmes[0].certain) << problèmes[0].texte;
}

// However a copy ends, it ends the load with it: none outlives the transaction and takes, in the
// place of the file, the calibration that is saved next.
TEST_F(UneBase, EcritDansLeFichierAprèsUneCopieManquée) {
  for (const char* table : {"Canal", "Capteur", "Commande"}) {
    Autre(std::string("ALTER TABLE ") + table + " RENAME TO Vraie; CREATE TABLE " + table +
          " AS SELECT * FROM Vraie; DROP TABLE Vraie; INSERT INTO " + table +
          "([Index]) WITH RECURSIVE c(x) AS (SELECT 10 UNION ALL SELECT x+1 FROM c LIMIT 3000) "
          "SELECT x FROM c");
  }
  static int regards;
  bool jusquAuBout = false;
  for (int coupé = 0; !jusquAuBout; ++coupé) {
    ASSERT_LT(coupé, 1000);
    regards = coupé;
    BaseSqlite base(fichier, {.bornes = {.durée = std::chrono::hours(1), .interrompue = [] {
                                           return regards-- == 0;  // that look alone
                                         }}});
    const int échec = NuméroDe([&] { base.DébuteLesLectures(); });
    jusquAuBout = regards >= 0;
    EXPECT_EQ(échec, jusquAuBout ? 0 : 3059) << coupé;
    base.FinitLesLectures();
    regards = -1;
    EXPECT_EQ(Modifie(*Capteur(base), "Point 1 - Point", coupé + 1.0), 0);
    EXPECT_EQ(Relit("Point 1 - Point"), Valeur(coupé + 1.0)) << coupé;
  }
}

// What a program that died in a save left is put right by whoever opens the file next, a reader
// too; one that may not write says what is to be done instead of giving what is half written.
TEST_F(UneBase, RétablitCeQuUneSauvegardeCoupéeALaissé) {
  for (const auto& [suffixe, sauvegarde, attendu] : Cas<std::string, const char*, Valeur>{
           {"-journal",
            "PRAGMA journal_mode=DELETE; PRAGMA cache_size=1; BEGIN; "
            "UPDATE Capteur SET [Nom du Capteur]='x'",
            "Force"},
           {"-wal", "PRAGMA journal_mode=WAL; UPDATE Capteur SET [Nom du Capteur]='Effort'",
            "Effort"}}) {
    SCOPED_TRACE(suffixe);
    const std::string coupé = dossier.Fichier("coupé" + suffixe + ".db");
    {
      ConnexionSqlite autre(fichier, Accès::Ecriture, kSansAttente);
      autre.Exécute(sauvegarde);
      autre.Exécute("CREATE TABLE Gros AS SELECT zeroblob(100000)");  // what spills to the file
      fs::copy_file(fichier, coupé);
      fs::copy_file(fichier + suffixe, coupé + suffixe);
    }
    {
      const SansDroits lecteur(dossier.Chemin());
      try {
        BaseSqlite base(coupé, {.lectureSeule = true});
        ADD_FAILURE() << "given as it stands";
      } catch (const Echec& e) {
        EXPECT_PRED_FORMAT2(IsSubstring, "à rétablir", e.Description());
      }
    }
    BaseSqlite base(coupé, {.lectureSeule = true});
    EXPECT_EQ(LitChamp(*Capteur(base), "Nom du Capteur"), attendu);
    EXPECT_TRUE(base.ProblèmesDIntégrité().empty());
    EXPECT_EQ(Nomme(*Capteur(base), "y"), 3027);
  }
}

TEST_F(UneBase, RefuseCeQuiNEstPasUneBase) {
  const auto numéro = [&] { return NuméroDe([&] { BaseSqlite base(dossier.Fichier("x.db")); }); };
  EXPECT_EQ(numéro(), 53);
  EXPECT_FALSE(fs::exists(dossier.Fichier("x.db")));
  for (const std::string& contenu :
       {std::string(), std::string(5000, 'x'), std::string("SQLite format 3")}) {
    std::ofstream(dossier.Fichier("x.db"), std::ios::binary) << contenu;
    EXPECT_EQ(numéro(), 3343) << contenu;
  }
  EXPECT_EQ(NuméroDe([&] { BaseSqlite base(dossier.Fichier("pas/là.db")); }), 53);
  EXPECT_EQ(NuméroDe([&] { BaseSqlite base(dossier.Chemin().string()); }), 3343);
}

// Cut anywhere, or with bytes turned over, a file is refused, reported or still right: it never
// ends the process and never passes for sound when rows are missing.
TEST_F(UneBase, SignaleUnFichierAbîmé) {
  const std::string entier = essai::Lit(fichier);
  ASSERT_TRUE(BaseSqlite(fichier).ProblèmesDIntégrité().empty());

  constexpr std::size_t kPage = 4096;
  std::vector<std::string> abîmés;
  for (std::size_t taille = 100; taille < entier.size(); taille += kPage / 2) {
    abîmés.push_back(entier.substr(0, taille));
  }
  abîmés.push_back(entier);
  const std::size_t rangée = entier.find("Force");
  ASSERT_NE(rangée, std::string::npos);
  for (std::size_t i = 0; i < 12; ++i) abîmés.back()[rangée - rangée % kPage + i] ^= '\xff';

  for (const std::string& abîmé : abîmés) {
    const std::string chemin = dossier.Fichier("abîmé.db");
    std::ofstream(chemin, std::ios::binary | std::ios::trunc) << abîmé;
    bool sain = true;
    const int échec = NuméroDe([&] { sain = BaseSqlite(chemin).ProblèmesDIntégrité().empty(); });
    EXPECT_TRUE(échec == 3343 || !sain) << abîmé.size() << " bytes, failure " << échec;
    // Reading it may fail with its number, nothing worse.
    const int lecture = NuméroDe([&] {
      BaseSqlite base(chemin);
      static_cast<void>(Capteur(base)->RecordCount());
    });
    EXPECT_TRUE(lecture == 0 || lecture == 3343) << lecture;
  }
}

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
    return NuméroDe([&] { CréeBase(chemin, lignes); });
  };
  const LigneDeBase bonne{"Carte", {{"Index", 1}}};
  for (const auto& [ligne, échec] :
       Cas<LigneDeBase, int>{{{"Balance", {}}, 3078},
                             {{"Carte", {{"Couleur", 1}}}, 3061},
                             {{"Carte", {{"Nom de la Carte", Nul{}}}}, 94},
                             {{"Carte", {{"Index", "un"}}}, 13},
                             {{"Canal", {{"Index", 1}}}, 94}}) {
    EXPECT_EQ(crée(fichier, {bonne, ligne}), échec);
    EXPECT_TRUE(fs::is_empty(dossier.Chemin())) << échec;
  }
  EXPECT_EQ(crée(dossier.Fichier("pas/là.db"), {}), 76);
  EXPECT_EQ(crée(fichier, {bonne, {"Carte", {}}}), 0);
  EXPECT_EQ(crée(fichier, {}), 58);
  EXPECT_EQ(BaseSqlite(fichier).OpenRecordset("SELECT ALL * FROM [Carte]")->RecordCount(), 2)
      << "an existing file is not touched";
}

// --- The system's statements, as the database gets them

using namespace requêtes;

TEST(LeDialecte, TraduitCeQuiDiffèreEtRienDAutre) {
  for (const auto& [instruction, sql] : Cas<std::string, std::string>{
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

TEST(LeDialecte, SépareLesNombresDeCeQuiEstCommun) {
  using Nombres = std::vector<std::int64_t>;
  for (const auto& [instruction, texte, nombres] : Cas<std::string, std::string, Nombres>{
           {kCapteurs.ligne(12), "SELECT ALL * FROM [Capteur] WHERE (([Capteur]![Index])=?)", {12}},
           {"a=12AND b >=  3", "a=?AND b >=  ?", {12, 3}},
           {"'=1' [=2] \"=3\" a=4 b = 'c", "'=1' [=2] \"=3\" a=? b = 'c", {4}},
           // Not whole numbers, or too long.
           {"a=1.5 b=1e5 c=0x1F d=1_0", "a=1.5 b=1e5 c=0x1F d=1_0", {}},
           {"a=9999999999999999999", "a=9999999999999999999", {}},
           // Parameters and comments of the statement's own.
           {"a=1 AND b=?", "a=1 AND b=?", {}},
           {"a=1 AND b=:c", "a=1 AND b=:c", {}},
           {"a=1 -- b=2", "a=1 -- b=2", {}},
           {"a=1 /* b=2 */", "a=1 /* b=2 */", {}}}) {
    const FormeDInstruction forme = SépareLesNombres(instruction);
    EXPECT_EQ(forme.texte, texte);
    EXPECT_EQ(forme.nombres, nombres) << instruction;
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
  void DonnentCellesDeLeurChassis();
  essai::DossierProvisoire dossier;
  Ref<BaseDeDonnées> base;
};

TEST_F(LesInstructions, DonnentLesLignesDeLeurChassisSeulement) {
  DonnentCellesDeLeurChassis();
  const LecturesCohérentes lectures(base);
  DonnentCellesDeLeurChassis();
}

// More statements than are kept, and some whose number is no parameter; two columns of one name.
TEST_F(LesInstructions, SontRelancéesAvecDAutresNombres) {
  const LecturesCohérentes lectures(base);
  const auto premier = base->OpenRecordset(kCapteurs.ligne(2));
  for (int n = -100; n <= 12; ++n) {
    const bool là = n == 2 || n == 12;
    const std::string nombre = std::to_string(n);
    EXPECT_EQ(Index("SELECT [Index] FROM Carte WHERE [Index] IN (" + nombre + ") AND 1=1"),
              là || n == 1 ? Lus{n} : Lus{});
    EXPECT_EQ(Index(kCapteurs.ligne(n)), là || n == 1 ? Lus{n} : Lus{});
    EXPECT_EQ(Index(kCapteurs.liaison(n, 1), "Capteur"), là ? Lus{n} : Lus{});
  }
  EXPECT_EQ(LitChamp(*premier, "Index"), Valeur(2)) << "a recordset stays what it was";
  const std::string deux =
      "SELECT f.[Index], c.[Index], c.[Numéro du Canal] FROM Fonction f, Canal c "
      "WHERE c.Fonction=f.[Index] AND c.[Index]=25";
  EXPECT_EQ(Index(deux), Lus{2});
  EXPECT_EQ(Index(deux, "Numéro du Canal"), Lus{3});
}

void LesInstructions::DonnentCellesDeLeurChassis() {
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
  EXPECT_EQ(NuméroDe([&] { static_cast<void>(RecordSetSL(*base, 1)); }), 3061);
}

}  // namespace
}  // namespace zuma::linux_
