// Reading, writing back and every way a file can be bad.
#include "platform/linux/base_sqlite.h"

#include <fstream>
#include <limits>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "core/requetes.h"
#include "outils/dossier_provisoire.h"
#include "platform/linux/base_creation.h"
#include "platform/linux/schema.h"

namespace zuma::linux_ {
namespace {

namespace fs = std::filesystem;

// Number of the failure of `action`, 0 when it succeeds.
template <class Action>
int Echoue(Action&& action) {
  try {
    action();
  } catch (const Echec& e) {
    EXPECT_FALSE(e.Description().empty());
    return e.NuméroErreur();
  }
  return 0;
}

Valeur Texte(const char* texte) {
  return Valeur(std::string(texte));
}

// While one lives, nothing in the folder can be written, by nobody.
class SansDroits {
 public:
  explicit SansDroits(fs::path dossier) : dossier_(std::move(dossier)) {
    Change(fs::perms(0555), fs::perms(0444));
    if (racine_ && ::seteuid(kPersonne) != 0) ADD_FAILURE() << "seteuid";
  }
  ~SansDroits() {
    if (racine_ && ::seteuid(0) != 0) ADD_FAILURE() << "seteuid";
    Change(fs::perms(0755), fs::perms(0644));
  }
  SansDroits(const SansDroits&) = delete;
  SansDroits& operator=(const SansDroits&) = delete;

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
  static Ref<Recordset> Capteur(BaseSqlite& base, int index) {
    return base.OpenRecordset(requêtes::kCapteurs.ligne(index));
  }
  // A field as a new program would read it.
  Valeur Relit(std::string_view colonne, int index = 7) {
    BaseSqlite base(fichier, {.lectureSeule = true});
    return LitChamp(*Capteur(base, index), colonne);
  }
  // What another program does to the file.
  void Autre(const char* sql) {
    ConnexionSqlite(fichier, Accès::Ecriture, kSansAttente).Exécute(sql);
  }
  static int Modifie(Recordset& ligne, std::string_view colonne, const Valeur& valeur) {
    return Echoue([&] {
      ligne.Edit();
      ligne.Ecrit(colonne, valeur);
      ligne.Update();
    });
  }

  static constexpr std::chrono::milliseconds kSansAttente{0};
  const std::vector<LigneDeBase> kLignes{
      {"Capteur", {{"Index", Valeur(7)}, {"Nom du Capteur", Texte("Force")}}},
      {"Capteur", {{"Index", Valeur(8)}, {"Nom du Capteur", Texte("Course")}}}};
  essai::DossierProvisoire dossier;
  std::string fichier = dossier.Fichier("presse.db");
};

TEST_F(UneBase, RendLesValeursDansLeurType) {
  Autre(R"(CREATE TABLE Essai ("Index" INTEGER PRIMARY KEY, V BOOLEAN, F YESNO, E INTEGER,
            G INTEGER, R REAL, T TEXT, N TEXT, B, L))");
  Autre("INSERT INTO Essai VALUES (1, -1, 0, -2147483648, 2147483648, 3, '1,5', NULL, x'00FF', 4)");
  BaseSqlite base(fichier);
  const auto lignes = base.OpenRecordset("SELECT ALL* FROM [Essai] WHERE [Essai]![Index]=1");
  const std::vector<std::pair<std::string, Valeur>> attendus{
      {"Index", Valeur(1)},        {"V", Valeur(true)},
      {"F", Valeur(false)},        {"E", Valeur(std::numeric_limits<std::int32_t>::min())},
      {"G", Valeur(2147483648.0)}, {"R", Valeur(3.0)},
      {"T", Texte("1,5")},         {"N", Valeur(Nul{})},
      {"B", Valeur(Nul{})},        {"L", Valeur(4)}};
  ASSERT_EQ(lignes->Fields().size(), attendus.size());
  for (std::size_t i = 0; i < attendus.size(); ++i) {
    EXPECT_EQ(lignes->Fields()[i].Name, attendus[i].first);
    EXPECT_EQ(lignes->Fields()[i].Value, attendus[i].second) << attendus[i].first;
  }
}

TEST_F(UneBase, SeParcourtDuPremierEnregistrementALaFin) {
  BaseSqlite base(fichier);
  const auto lignes = base.OpenRecordset("SELECT [Index] FROM Capteur ORDER BY [Capteur]![Index]");
  EXPECT_EQ(lignes->RecordCount(), 2);
  EXPECT_EQ(LitChamp(*lignes, "Index"), Valeur(7));
  lignes->MoveNext();
  EXPECT_EQ(LitChamp(*lignes, "Index"), Valeur(8));
  lignes->MoveNext();
  EXPECT_TRUE(lignes->FinDeTable());
  EXPECT_EQ(Echoue([&] { lignes->MoveNext(); }), 3021);
  EXPECT_EQ(Echoue([&] { static_cast<void>(lignes->Fields()); }), 3021);
  EXPECT_EQ(Echoue([&] { lignes->Edit(); }), 3021);
  lignes->MoveFirst();
  EXPECT_EQ(LitChamp(*lignes, "Index"), Valeur(7));
  const auto vide = Capteur(base, 99);
  EXPECT_TRUE(vide->FinDeTable());
  EXPECT_EQ(Echoue([&] { vide->MoveFirst(); }), 3021);
}

TEST_F(UneBase, GardeCeQuiEstEcritDansLeTypeDeLaColonne) {
  const struct {
    const char* colonne;
    Valeur donnée;
    Valeur gardée;
    int échec;
  } cas[] = {
      {"Point 1 - Unité", Valeur(0.1), Valeur(0.1), 0},
      {"Point 2 - Unité", Texte(" 12,5 "), Valeur(12.5), 0},
      {"Point 3 - Unité", Texte("-1.5e3"), Valeur(-1500.0), 0},
      {"Point 4 - Unité", Texte("douze"), Valeur(0.0), 13},
      {"Point 4 - Unité", Texte(""), Valeur(0.0), 13},
      {"Point 5 - Unité", Valeur(std::numeric_limits<double>::quiet_NaN()), Valeur(0.0), 6},
      {"Point 5 - Unité", Valeur(std::numeric_limits<double>::infinity()), Valeur(0.0), 6},
      {"Point 6 - Unité", Valeur(Nul{}), Valeur(0.0), 94},
      {"Canal", Valeur(2.5), Valeur(2), 0},
      {"L", Valeur(3e9), Valeur(Nul{}), 6},
      {"Remise à Zéro Autorisée", Valeur(true), Valeur(true), 0},
      {"Nom affiché", Texte("L'effort \"max\"; é"), Texte("L'effort \"max\"; é"), 0},
      {"Unité d'Etalonnage", Valeur(1.5), Texte("1,5"), 0},
      {"Commentaire etalonnage", Valeur(Nul{}), Valeur(Nul{}), 0},
      {"Colonne absente", Valeur(1), Valeur(Nul{}), 3265},
  };
  for (const auto& c : cas) {
    SCOPED_TRACE(c.colonne);
    BaseSqlite base(fichier);
    const auto ligne = Capteur(base, 7);
    EXPECT_EQ(Modifie(*ligne, c.colonne, c.donnée), c.échec);
    if (c.échec == 3265) continue;
    EXPECT_EQ(LitChamp(*ligne, c.colonne), c.gardée);
    EXPECT_EQ(Relit(c.colonne), c.gardée);
  }
  EXPECT_EQ(Relit("Point 1 - Unité", 8), Valeur(0.0));
}

// The recordset of a calibration stays open for hours, and others write meanwhile.
TEST_F(UneBase, NEcritQueCeQuiEstDonnéOùCeQuiAÉtéLuTientEncore) {
  const struct {
    const char* autre;
    std::vector<const char*> dits;  // in the refusal; none when the write is to go through
  } cas[] = {
      {"UPDATE Capteur SET [Nom du Capteur]='Course 2' WHERE [Index]=8", {}},
      {"UPDATE Capteur SET [Nom affiché]='F2', [Nom de l'Etalonneur]='Labo', "
       "[Date d'Etalonnage]='3 mai' WHERE [Index]=7",
       {"'Nom affiché', lue Null, trouvée 'F2', à écrire 'Effort'", "'Labo'", "'3 mai'"}},
      {"UPDATE Capteur SET [Point 1 - Unité]=0.1 WHERE [Index]=7",
       {"'Capteur'", "'Point 1 - Unité', lue '0', trouvée '0,1'"}},
      {"UPDATE Capteur SET [Index]=99 WHERE [Index]=7; UPDATE Capteur SET [Index]=7 WHERE "
       "[Index]=8;"
       "UPDATE Capteur SET [Index]=8 WHERE [Index]=99",
       {"'Nom du Capteur', lue 'Force', trouvée 'Course'"}},
  };
  for (const auto& c : cas) {
    SCOPED_TRACE(c.autre);
    fs::remove(fichier);
    CréeBase(fichier, kLignes);
    Ref<Recordset> ligne = Capteur(*Crée<BaseSqlite>(fichier), 7);
    Autre(c.autre);
    std::string refus;
    try {
      ligne->Edit();
      ligne->Ecrit("NOM AFFICHÉ", Texte("Effort"));
      ligne->Update();
    } catch (const Echec& e) {
      EXPECT_EQ(e.NuméroErreur(), 3197);
      refus = e.Description();
    }
    EXPECT_EQ(refus.empty(), c.dits.empty()) << refus;
    for (const char* dit : c.dits) EXPECT_NE(refus.find(dit), std::string::npos) << refus;
    EXPECT_EQ(Relit("Nom affiché") == Texte("Effort"), c.dits.empty());
    EXPECT_EQ(Relit("Nom affiché", 8), Valeur(Nul{}));
  }

  const Ref<Recordset> ligne = Capteur(*Crée<BaseSqlite>(fichier), 7);
  EXPECT_EQ(Echoue([&] { ligne->Ecrit("Nom affiché", Texte("x")); }), 3020);
  EXPECT_EQ(Echoue([&] { ligne->Update(); }), 3020);
  ligne->Edit();
  ligne->Ecrit("Nom affiché", Texte("oublié"));
  EXPECT_EQ(LitChamp(*ligne, "Nom affiché"), Valeur(Nul{}));
  ligne->MoveFirst();
  EXPECT_EQ(Echoue([&] { ligne->Update(); }), 3020);
  EXPECT_EQ(Relit("Nom affiché"), Valeur(Nul{}));
}

TEST_F(UneBase, EcritToutOuRien) {
  BaseSqlite base(fichier);
  const auto ligne = Capteur(base, 7);
  ligne->Edit();
  ligne->Ecrit("Nom affiché", Texte("Effort"));
  ligne->Ecrit("Point 1 - Point", Valeur(Nul{}));
  EXPECT_EQ(Echoue([&] { ligne->Update(); }), 94);
  EXPECT_EQ(Relit("Nom affiché"), Valeur(Nul{}));
  EXPECT_EQ(LitChamp(*ligne, "Nom affiché"), Valeur(Nul{}));
  // The edit is still open: it can be put right and saved.
  ligne->Ecrit("Point 1 - Point", Valeur(100));
  EXPECT_EQ(Echoue([&] { ligne->Update(); }), 0);
  EXPECT_EQ(Relit("Nom affiché"), Texte("Effort"));
  EXPECT_EQ(Relit("Point 1 - Point"), Valeur(100.0));
}

TEST_F(UneBase, DitPourquoiUneEcritureEstRefusée) {
  BaseSqlite base(fichier, {.attenteVerrou = kSansAttente});
  const auto ligne = Capteur(base, 7);
  {
    ConnexionSqlite autre(fichier, Accès::Ecriture, kSansAttente);
    autre.Exécute("BEGIN EXCLUSIVE");
    EXPECT_EQ(Modifie(*ligne, "Nom affiché", Texte("x")), 3260);
    EXPECT_EQ(Echoue([&] { Capteur(base, 7); }), 3260);
    EXPECT_EQ(Echoue([&] { BaseSqlite(fichier, {.attenteVerrou = kSansAttente}); }), 3260);
  }
  EXPECT_EQ(Relit("Nom affiché"), Valeur(Nul{}));
  EXPECT_EQ(Echoue([&] { ligne->Update(); }), 0) << "the same edit, once the lock is gone";
  EXPECT_EQ(Relit("Nom affiché"), Texte("x"));

  BaseSqlite lecture(fichier, {.lectureSeule = true});
  EXPECT_EQ(Modifie(*Capteur(lecture, 7), "Nom affiché", Texte("y")), 3027);
  EXPECT_EQ(
      Modifie(*base.OpenRecordset("SELECT [Nom affiché] FROM Capteur"), "Nom affiché", Texte("y")),
      3027);

  Autre("DELETE FROM Capteur WHERE [Index]=7");
  EXPECT_EQ(Modifie(*ligne, "Nom affiché", Texte("y")), 3167);
  const auto huit = Capteur(base, 8);
  fs::remove(fichier);
  EXPECT_EQ(Modifie(*huit, "Nom affiché", Texte("y")), 53)
      << "a write to a file that is no longer there would be lost";
}

// Between the two operations all is read as it stood at the first, whether the file lets others
// write meanwhile or not; behind them nothing is held.
TEST_F(UneBase, LitDUnSeulTenant) {
  for (const auto& [journal, écriturePendant] : {std::pair{"DELETE", 3260}, std::pair{"WAL", 0}}) {
    SCOPED_TRACE(journal);
    Autre(
        (std::string("UPDATE Capteur SET [Nom du Capteur]='Force'; PRAGMA journal_mode=") + journal)
            .c_str());
    const auto base = Crée<BaseSqlite>(fichier, RéglagesBase{.attenteVerrou = kSansAttente});
    const auto renomme = [&] { Autre("UPDATE Capteur SET [Nom du Capteur]='Effort'"); };
    const auto nom = [&] { return LitChamp(*Capteur(*base, 7), "Nom du Capteur"); };
    {
      const LecturesCohérentes lectures(base);
      EXPECT_EQ(Echoue(renomme), écriturePendant);
      EXPECT_EQ(nom(), Texte("Force"));
      EXPECT_NE(Modifie(*Capteur(*base, 7), "Nom affiché", Texte("x")), 0) << "reads alone";
      EXPECT_EQ(nom(), Texte("Force")) << "a write that is refused ends nothing";
    }
    EXPECT_EQ(Echoue(renomme), 0);
    EXPECT_EQ(nom(), Texte("Effort"));
    EXPECT_EQ(Modifie(*Capteur(*base, 7), "Nom affiché", Texte("x")), 0);
  }
  Autre("PRAGMA journal_mode=DELETE");
  const auto base = Crée<BaseSqlite>(fichier, RéglagesBase{.attenteVerrou = kSansAttente});
  ConnexionSqlite autre(fichier, Accès::Ecriture, kSansAttente);
  autre.Exécute("BEGIN EXCLUSIVE");
  EXPECT_EQ(Echoue([&] { const LecturesCohérentes lectures(base); }), 3260);
  autre.Exécute("COMMIT");
  EXPECT_EQ(Echoue([&] { const LecturesCohérentes lectures(base); }), 0) << "tried again";
}

TEST_F(UneBase, RefuseUnIndexEnDouble) {
  Autre("CREATE TABLE Essai ([Index] INTEGER, T TEXT)");
  Autre("INSERT INTO Essai VALUES (1, 'a'), (1, 'b')");
  BaseSqlite base(fichier);
  EXPECT_EQ(Modifie(*base.OpenRecordset("SELECT ALL * FROM Essai"), "T", Texte("c")), 3075);
  const auto lignes = base.OpenRecordset("SELECT ALL * FROM Essai WHERE T='c'");
  EXPECT_EQ(lignes->RecordCount(), 0);
}

TEST_F(UneBase, LitUnFichierProtégé) {
  const SansDroits lecteur(dossier.Chemin());
  BaseSqlite base(fichier);
  const auto ligne = Capteur(base, 7);
  EXPECT_EQ(LitChamp(*ligne, "Nom du Capteur"), Texte("Force"));
  EXPECT_EQ(Modifie(*ligne, "Nom affiché", Texte("x")), 3027);
}

TEST_F(UneBase, NuméroteLesInstructionsRefusées) {
  BaseSqlite base(fichier);
  const struct {
    const char* instruction;
    int échec;
  } cas[] = {
      {"SELECT ALL * FROM [Balance] WHERE [Balance]![Index]=1", 3078},
      {"SELECT ALL * FROM [Capteur] WHERE [Capteur]![Indexe]=1", 3061},
      {"SELECT \"Indexe\" FROM [Capteur]", 3061},
      {"SELECT ALL * FROM", 3075},
      {"", 3075},
      {"DELETE FROM [Capteur]", 3075},
      {"SELECT [Index] FROM [Capteur]; DELETE FROM [Capteur]", 3075},
      {"SELECT [Index] FROM [Capteur];  ", 0},
      {"PRAGMA writable_schema=ON", 3075},
      {"SELECT load_extension('x')", 3075},
  };
  for (const auto& c : cas) {
    EXPECT_EQ(Echoue([&] { base.OpenRecordset(c.instruction); }), c.échec) << c.instruction;
  }
  EXPECT_EQ(base.OpenRecordset("SELECT ALL * FROM [Capteur]")->RecordCount(), 2);
}

TEST_F(UneBase, NExécuteRienDeCeQueLeFichierContient) {
  Autre(
      "CREATE TRIGGER piège AFTER UPDATE ON Capteur BEGIN "
      "UPDATE Capteur SET [Point 1 - Unité]=999; END");
  Autre("CREATE VIEW Vue AS SELECT [Index], [Nom affiché] FROM Capteur");
  BaseSqlite base(fichier);
  EXPECT_EQ(Modifie(*Capteur(base, 7), "Nom affiché", Texte("x")), 0);
  EXPECT_EQ(Relit("Point 1 - Unité"), Valeur(0.0));
  const auto problèmes = base.ProblèmesDIntégrité();
  ASSERT_EQ(problèmes.size(), 2U);
  EXPECT_NE(problèmes[0].texte.find("déclencheur piège"), std::string::npos);
  EXPECT_NE(problèmes[1].texte.find("jamais lu : vue Vue"), std::string::npos);
}

// Nothing that a file holds keeps its reader for ever, nor takes all its memory.
TEST_F(UneBase, FinitDeLireQuoiQueLeFichierDemande) {
  Autre(R"(ALTER TABLE Carte RENAME TO Vraie; CREATE VIEW Carte AS
            WITH RECURSIVE c(x) AS (SELECT 1 UNION ALL SELECT x+1 FROM c) SELECT x AS [Index] FROM c;
           ALTER TABLE Commande RENAME TO Autre; CREATE VIEW Commande AS SELECT * FROM Autre;
           CREATE TABLE Grande AS WITH RECURSIVE c(x) AS
             (SELECT 1 UNION ALL SELECT x+1 FROM c LIMIT 20000) SELECT x AS [Index] FROM c)");
  constexpr const char* kSansFin = "SELECT a.* FROM Grande a, Grande b, Grande c WHERE b.[Index]=0";
  constexpr auto kDurée = std::chrono::milliseconds(200);
  BaseSqlite base(fichier, {.bornes = {.durée = kDurée, .mémoire = 100'000}});
  for (const auto& [instruction, échec] : {std::pair{"SELECT ALL * FROM [Carte]", 3078},
                                           {"SELECT ALL * FROM [Commande]", 3078},
                                           {"SELECT ALL * FROM [Grande]", 3035},
                                           {kSansFin, 3059},
                                           {"SELECT [Index] FROM [Capteur]", 0}}) {
    EXPECT_EQ(Echoue([&] { base.OpenRecordset(instruction); }), échec) << instruction;
  }
  // The time is that of a whole load: nothing is read behind it, and all again after it.
  base.DébuteLesLectures();
  EXPECT_EQ(Echoue([&] { Capteur(base, 7); }), 0);
  EXPECT_EQ(Echoue([&] { base.OpenRecordset(kSansFin); }), 3059);
  EXPECT_EQ(Echoue([&] { Capteur(base, 7); }), 3059);
  base.FinitLesLectures();
  EXPECT_EQ(Echoue([&] { Capteur(base, 7); }), 0);

  static bool fin;
  fin = false;
  BaseSqlite autre(fichier, {.bornes = {.durée = std::chrono::hours(1), .interrompue = [] {
                                          return std::exchange(fin, true);  // the second look
                                        }}});
  EXPECT_EQ(Echoue([&] { autre.OpenRecordset(kSansFin); }), 3059);
  EXPECT_EQ(Echoue([&] { autre.OpenRecordset("SELECT [Index] FROM [Capteur]"); }), 3059);
  // Nor is a file that there was no time for a damaged one.
  const auto problèmes = BaseSqlite(fichier, {.bornes = {.durée = {}}}).ProblèmesDIntégrité();
  ASSERT_EQ(problèmes.size(), 1U);
  EXPECT_FALSE(problèmes[0].certain) << problèmes[0].texte;
}

// However a copy ends, it ends the load with it: none outlives the transaction and takes, in the
// place of the file, the calibration that is saved next.
TEST_F(UneBase, EcritDansLeFichierAprèsUneCopieManquée) {
  for (const char* table : {"Canal", "Capteur", "Commande"}) {
    Autre((std::string("ALTER TABLE ") + table + " RENAME TO Vraie; CREATE TABLE " + table +
           " AS SELECT * FROM Vraie; DROP TABLE Vraie; INSERT INTO " + table +
           "([Index]) WITH RECURSIVE c(x) AS (SELECT 10 UNION ALL SELECT x+1 FROM c LIMIT 3000) "
           "SELECT x FROM c")
              .c_str());
  }
  static int regards;
  bool jusquAuBout = false;
  for (int coupé = 0; !jusquAuBout; ++coupé) {
    ASSERT_LT(coupé, 1000);
    regards = coupé;
    BaseSqlite base(fichier, {.bornes = {.durée = std::chrono::hours(1), .interrompue = [] {
                                           return regards-- == 0;  // that look alone
                                         }}});
    const int échec = Echoue([&] { base.DébuteLesLectures(); });
    jusquAuBout = regards >= 0;
    EXPECT_EQ(échec, jusquAuBout ? 0 : 3059) << coupé;
    base.FinitLesLectures();
    regards = -1;
    EXPECT_EQ(Modifie(*Capteur(base, 7), "Point 1 - Point", Valeur(coupé + 1.0)), 0);
    EXPECT_EQ(Relit("Point 1 - Point"), Valeur(coupé + 1.0)) << coupé;
  }
}

// What a program that died in a save left is put right by whoever opens the file next, a reader
// too; one that may not write says what is to be done instead of giving what is half written.
TEST_F(UneBase, RétablitCeQuUneSauvegardeCoupéeALaissé) {
  const struct {
    const char* journal;
    const char* suffixe;
    const char* sauvegarde;
    Valeur attendu;
  } cas[] = {
      {"DELETE", "-journal", "PRAGMA cache_size=1; BEGIN; UPDATE Capteur SET [Nom du Capteur]='x'",
       Texte("Force")},
      {"WAL", "-wal", "UPDATE Capteur SET [Nom du Capteur]='Effort'", Texte("Effort")},
  };
  for (const auto& c : cas) {
    SCOPED_TRACE(c.journal);
    const std::string coupé = dossier.Fichier(std::string("coupé") + c.suffixe + ".db");
    {
      ConnexionSqlite autre(fichier, Accès::Ecriture, kSansAttente);
      autre.Exécute((std::string("PRAGMA journal_mode=") + c.journal).c_str());
      autre.Exécute(c.sauvegarde);
      autre.Exécute("CREATE TABLE Gros AS SELECT zeroblob(100000)");  // what spills to the file
      fs::copy_file(fichier, coupé);
      fs::copy_file(fichier + c.suffixe, coupé + c.suffixe);
    }
    {
      const SansDroits lecteur(dossier.Chemin());
      std::string refus;
      try {
        BaseSqlite base(coupé, {.lectureSeule = true});
      } catch (const Echec& e) {
        refus = e.Description();
      }
      EXPECT_NE(refus.find("à rétablir"), std::string::npos) << refus;
    }
    BaseSqlite base(coupé, {.lectureSeule = true});
    EXPECT_EQ(LitChamp(*Capteur(base, 7), "Nom du Capteur"), c.attendu);
    EXPECT_TRUE(base.ProblèmesDIntégrité().empty());
    EXPECT_EQ(Modifie(*Capteur(base, 7), "Nom affiché", Texte("y")), 3027);
  }
}

TEST_F(UneBase, RefuseCeQuiNEstPasUneBase) {
  const auto écrit = [&](const char* nom, const std::string& contenu) {
    std::ofstream(dossier.Fichier(nom), std::ios::binary) << contenu;
  };
  écrit("vide.db", "");
  écrit("texte.db", std::string(5000, 'x'));
  écrit("court.db", "SQLite format 3");
  const struct {
    std::string chemin;
    int échec;
  } cas[] = {
      {dossier.Fichier("absente.db"), 53}, {dossier.Fichier("pas/là.db"), 53},
      {dossier.Fichier("vide.db"), 3343},  {dossier.Fichier("texte.db"), 3343},
      {dossier.Fichier("court.db"), 3343}, {dossier.Chemin().string(), 3343},
  };
  for (const auto& c : cas) {
    EXPECT_EQ(Echoue([&] { BaseSqlite base(c.chemin); }), c.échec) << c.chemin;
  }
  EXPECT_FALSE(fs::exists(dossier.Fichier("absente.db")));
}

// Cut anywhere, or with bytes turned over, a file is refused, reported or still right: it never
// ends the process and never passes for sound when rows are missing.
TEST_F(UneBase, SignaleUnFichierAbîmé) {
  std::ifstream entrée(fichier, std::ios::binary);
  const std::string entier{std::istreambuf_iterator<char>(entrée), {}};
  ASSERT_TRUE(BaseSqlite(fichier).ProblèmesDIntégrité().empty());

  constexpr std::size_t kPage = 4096;
  std::vector<std::string> abîmés;
  for (std::size_t taille = 100; taille < entier.size(); taille += kPage / 2) {
    abîmés.push_back(entier.substr(0, taille));
  }
  std::size_t page = 0;
  while ((page = entier.find("Force", page)) == std::string::npos) FAIL() << "no row in the file";
  std::string retournée = entier;
  for (std::size_t i = page - page % kPage; i < page - page % kPage + 12; ++i) {
    retournée[i] = static_cast<char>(~retournée[i]);
  }
  abîmés.push_back(retournée);

  for (const std::string& abîmé : abîmés) {
    const std::string chemin = dossier.Fichier("abîmé.db");
    std::ofstream(chemin, std::ios::binary | std::ios::trunc) << abîmé;
    bool sain = true;
    const int échec = Echoue([&] { sain = BaseSqlite(chemin).ProblèmesDIntégrité().empty(); });
    EXPECT_TRUE(échec == 3343 || !sain) << abîmé.size() << " bytes, failure " << échec;
    // Reading it may fail with its number, nothing worse.
    const int lecture = Echoue([&] {
      BaseSqlite base(chemin);
      static_cast<void>(Capteur(base, 7)->RecordCount());
    });
    EXPECT_TRUE(lecture == 0 || lecture == 3343) << lecture;
  }
}

}  // namespace
}  // namespace zuma::linux_
