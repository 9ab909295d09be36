// The program as its user meets it: what it prints, where, and the code it ends with.
#include "outils/programme.h"

#include <algorithm>
#include <map>

#include <gtest/gtest.h>

#include "outils/cas.h"

namespace zuma {
namespace {

using essai::Cas;
using essai::Fin;
using essai::LeProgramme;
using nlohmann::json;
using testing::IsSubstring;

TEST_F(LeProgramme, EcritUneBaseSaineEtNEcraseRien) {
  const std::string base = dossier.Fichier("neuve.db");
  Fin fin = Lance("init " + base);
  EXPECT_EQ(fin.code, 0);
  EXPECT_PRED_FORMAT2(IsSubstring, base + " written", fin.sortie);
  EXPECT_EQ(fin.erreur, "");

  const Fin saine = Lance("check " + base);
  EXPECT_EQ(saine.code, 0);
  EXPECT_TRUE(saine.sortie.starts_with(
      "note: table Fonction, row 61: PCL 731, the inputs are on the first connector (ports 0 to "
      "2)\n"
      "note: table Fonction, row 62: PCL 731, the outputs are on the second connector (ports 4 to "
      "6)\nFrame 1: 10 boards, 21 blocks, "))
      << saine.sortie;
  EXPECT_TRUE(saine.sortie.ends_with(": no problem\n")) << saine.sortie;
  // An older one lacks the columns that came later.
  fin = Lance("check " + Base("ALTER TABLE Carte DROP COLUMN [ModBus - Time-out];"
                              "ALTER TABLE Canal DROP COLUMN [ModBus - Registre signé];"
                              "ALTER TABLE Capteur DROP COLUMN [Age maximal (s)]"));
  EXPECT_EQ(fin.sortie, saine.sortie);
  EXPECT_EQ(Lance("check " + base + " --json").sortie, "[]\n");

  const std::string contenu = essai::Lit(base);
  fin = Lance("init " + base);
  EXPECT_EQ(fin.code, 2);
  EXPECT_EQ(fin.erreur, "zuma: Fichier déjà existant : '" + base + "'\n");
  EXPECT_EQ(essai::Lit(base), contenu);
}

TEST_F(LeProgramme, DitCeQuIlNeComprendPas) {
  const std::string base = Base();
  const std::string texte = dossier.Fichier("texte.db");
  std::ofstream(texte) << "this is no database, however long it is made, and never was one\n";
  const std::string absent = dossier.Fichier("absent/x");
  for (const auto& [arguments, erreur] : Cas<std::string, std::string>{
           {"", "a command is required"},
           {"mesure", "mesure"},
           {"check", "FILE is required"},
           {"check " + base + " --bogus", "--bogus"},
           {"check " + base + " --frame un", "--frame"},
           {"check " + absent, "does not exist"},
           {"check " + base + " --frame 7",
            "zuma: " + base +
                " has no frame 7. Frames: 1 (Presse de démonstration), 2 (Instruments de "
                "démonstration), 3 (Bus de démonstration)"},
           {"check " + texte, "Fichier illisible comme base de données"},
           {"run " + texte + " --sim", "Fichier illisible comme base de données"},
           {"run " + base + " --frame 7 --sim", "has no frame 7"},
           {"run " + base + " --seconds -1", "--seconds"},
           {"run " + base + " --sim --port four=/dev/a", "--port \"four=/dev/a\": expected"},
           {"run " + base + " --port 4=/dev/a --port 4=/dev/b", "each number once"},
           {"dump " + base + " --sim --port 4=", "expected NUMBER=DEVICE, as in 4=/dev/ttyUSB0"},
           {"dump " + base + " --sim --can 1=can0", "expected CARD:PORT=INTERFACE, as in 1:0=can0"},
           {"dump " + base + " --sim --out " + absent, "there is no folder"},
           {"dump " + base + " --sim --json --out " + dossier.Fichier("v.txt"), "--json"},
           {"init " + absent, "Chemin introuvable"}}) {
    const Fin fin = Lance(arguments);
    EXPECT_EQ(fin.code, 2) << arguments;
    EXPECT_PRED_FORMAT2(IsSubstring, erreur, fin.erreur) << arguments;
    EXPECT_EQ(fin.sortie, "") << arguments;
  }
  for (const char* question : {"--help", "--version"}) {
    const Fin fin = Lance(question);
    EXPECT_EQ(fin.code, 0);
    EXPECT_FALSE(fin.sortie.empty());
    EXPECT_EQ(fin.erreur, "");
  }
}

// Place (table, row and column; none: in the text), what makes the mistake there (a value of the
// column, or a whole statement), and what is said of it.
const Cas<std::string, std::string, std::string, std::string, std::string> kProblèmes{
    {"Fonction", "11", "Driver", "='DrvPCL999'",
     "unknown text: it selects nothing; found \"DrvPCL999\"; expected the text of a block's "
     "driver\n"},
    {"Sortie Logique", "5", "Etat d'Activation",
     "UPDATE Carte SET [Driver de la Carte]='UTS-0107' WHERE [Index]=7; UPDATE [Sortie Logique] "
     "SET [Etat d'Activation]=0 WHERE [Index]=5",
     "a stop would start the tester behind this output; found 0; expected 1\n"},
    {"WatchDog", "1", "Temps en seconde",
     "UPDATE Carte SET [Driver de la Carte]='UTS-0107' WHERE [Index]=7",
     "board 7 (PET 48 DIO - Armoire TB 24) holds a pass for 1.2 s when its devices start or do not "
     "answer, and the watchdog trips once two passes take longer than its time: give it more, or "
     "put the board on another frame; found 0.2 s; expected more than 2.4 s\n"},
    {"Fonction", "12", "Type de Fonction", "='Entrée Analogique'",
     "the driver DrvACL8316 does not"},
    {"", "", "", "UPDATE [Liaison Chassis / Carte] SET Carte=99 WHERE Carte=10",
     "data: table Liaison Chassis / Carte, row (1, 99), column Carte: refers to a row that is not "
     "there; found 99; expected an Index of table Carte\n"},
    {"", "", "", "INSERT INTO [Liaison Chassis / Commande] (Chassis, Commande) VALUES (1, 3)",
     "data: table Liaison Chassis / Commande, row (1, 3), column Commande: linked twice to frame "
     "1; found 3; expected one row for each object of a frame\n"},
    {"Sortie Logique", "55", "Canal",
     "INSERT INTO [Sortie Logique] ([Index], Canal) VALUES (55, 4242)",
     "refers to a row that is not there; found 4242; expected an Index of table Canal\n"},
    {"Carte", "3", "Index",
     "CREATE TABLE Copie AS SELECT * FROM Carte; INSERT INTO Copie SELECT * FROM Carte WHERE "
     "[Index]=3; DROP TABLE Carte; ALTER TABLE Copie RENAME TO Carte",
     "the key is there twice; found 3; expected one row a key\n"},
    {"Canal", "1103", "Numéro du Canal", "='trois'",
     "unusable value; found \"trois\"; expected a whole number of 32 bits\n"},
    {"Canal", "6105", "Numéro du Canal", "=23",
     "the block does not read this line: the input stays at 0; found 23; expected 0 to 22\n"},
    {"Canal", "1103", "Numéro du Canal", "=9e300", "unusable value; found 9E+300"},
    {"Canal", "11101", "Position ID", "=(SELECT [Position ID] FROM Canal WHERE [Index]=11100)",
     "another ruler of the port has this identifier (channel 11100); found 385; expected an "
     "identifier of its own\n"},
    {"Fonction", "112", "Vitesse du CAN",
     "UPDATE Fonction SET [Numéro du port CAN]=0 WHERE [Index]=112; UPDATE Fonction SET [Vitesse "
     "du CAN]=250 WHERE [Index]=112",
     "the CAN port has another speed or mode already (channel 11100); found 250 kbit/s, 11 bits; "
     "expected 500 kbit/s, 11 bits\n"},
    {"Capteur", "1", "Somme de contrôle",
     "ALTER TABLE Capteur ADD COLUMN [Somme de contrôle] TEXT; UPDATE Capteur SET [Somme de "
     "contrôle]='0123456789ABCDEF' WHERE [Index]=1",
     "the row was changed outside the system, or damaged; found \"0123456789ABCDEF\"; expected "},
    {"Capteur", "4", "Offset", "=''",
     "an empty text: the row is not read any further; found \"\"; expected a value, or Null\n"},
    {"", "", "",
     "CREATE TABLE Copie AS SELECT * FROM Canal; UPDATE Copie SET [Index]=NULL WHERE "
     "[Index]=1101;UPDATE Copie SET Fonction='x' WHERE [Index]=1103; DROP TABLE Canal;ALTER TABLE "
     "Copie RENAME TO Canal",
     "data: table Canal, row Null, column Index: no value; found Null; expected a value\ndata: "
     "table Canal, row 1103, column Fonction: unusable value; found \"x\"; expected a whole"},
    {"", "", "", "UPDATE Carte SET Adresse='port' WHERE [Index]=2", "failure: Erreur N°13 ("},
    {"Canal", "1103", "Nom du Canal", "=CAST(x'46FF' AS TEXT)",
     "bytes that are no text; found \"F\uFFFD\"; expected UTF-8"},
    {"Fonction", "11", "Driver", "=char(27)||'[2J'||char(10)||'x'||char(155)||'1m'",
     "unknown text: it selects nothing; found \" [2J x 1m\"; expected"},
    {"", "", "",
     "ALTER TABLE Carte RENAME TO Vraie; CREATE VIEW Carte AS WITH RECURSIVE c(x) AS (SELECT 1 "
     "UNION ALL SELECT x+1 FROM c) SELECT x AS [Index] FROM c",
     "data: table Carte: Table absente de la base de données"},
    {"", "", "", "ALTER TABLE WatchDog DROP COLUMN [Temps en seconde]",
     "data: table WatchDog, column Temps en seconde: missing column: its objects cannot be "
     "loaded\n"}};

TEST_F(LeProgramme, DitChaqueProblèmeAvecSonLieu) {
  for (const auto& [table, ligne, colonne, change, texte] : kProblèmes) {
    const bool valeur = change.starts_with("=");
    const std::string sql =
        valeur ? "UPDATE [" + table + "] SET [" + colonne + "]" + change + " WHERE [Index]=" + ligne
               : change;
    const std::string dit = table.empty() ? texte
                                          : "data: table " + table + ", row " + ligne +
                                                ", column " + colonne + ": " + texte;
    SCOPED_TRACE(sql);
    const bool desBus = ligne == "11101" || ligne == "112";
    const Fin fin = Lance("check " + Base(sql) + (desBus ? " --frame 3" : " --frame 1"));
    EXPECT_EQ(fin.code, 1);
    EXPECT_PRED_FORMAT2(IsSubstring, dit, fin.sortie);
    EXPECT_TRUE(fin.sortie.ends_with(" problem(s)\n")) << fin.sortie;
    EXPECT_EQ(fin.erreur, "");
  }
}

// However many rows are wrong, the list ends, with what it leaves out.
TEST_F(LeProgramme, CompteLesProblèmesQuIlNeMontrePas) {
  const std::string base = Base(
      "INSERT INTO Canal ([Index], Fonction) WITH RECURSIVE c(x) AS (SELECT 1 UNION ALL SELECT x+1 "
      "FROM c LIMIT 12000) SELECT x+100000, 4242 FROM c");
  const Fin fin = Lance("check " + base);
  EXPECT_EQ(fin.code, 1);
  EXPECT_EQ(std::ranges::count(fin.sortie, '\n'), 10'004) << "two notes as well";
  EXPECT_PRED_FORMAT2(IsSubstring, "\nand 2000 more\n", fin.sortie);
  EXPECT_TRUE(fin.sortie.ends_with(": 12000 problem(s)\n"));
  const json problèmes = json::parse(Lance("check " + base + " --json").sortie);
  EXPECT_EQ(problèmes.size(), 10'001U);
  EXPECT_EQ(problèmes.back(), json({{"kind", "more"}, {"text", "and 2000 more"}}));
}

TEST_F(LeProgramme, MontreLesNomsCommeDuTexte) {
  const std::string base = Base(
      "UPDATE Canal SET [Nom du Canal]='A'||char(27,10,155)||CAST(x'FF' AS TEXT) WHERE "
      "[Index]=1101;"
      "UPDATE Chassis SET [Nom du Chassis]='F'||char(27)||']0;x'||char(7) WHERE [Index]=1");
  for (const char* forme : {" --lines", " --json"}) {
    const Fin fin = Lance("run " + base + " --sim --seconds 0.5" + forme);
    EXPECT_EQ(fin.code, 0) << fin.erreur;
    EXPECT_EQ(fin.sortie.find_first_of("\x1b\x07\xff"), std::string::npos);
    EXPECT_EQ(fin.sortie.find("\xc2\x9b"), std::string::npos);
    EXPECT_PRED_FORMAT2(IsSubstring, "A", fin.sortie);
  }
}

TEST_F(LeProgramme, DonneLesProblèmesEnJson) {
  const std::string base = Base("UPDATE Fonction SET Driver='DrvPCL999' WHERE [Index]=11");
  EXPECT_EQ(json::parse(Lance("check " + base + " --json").sortie),
            json::array({{{"kind", "data"},
                          {"severity", "error"},
                          {"table", "Fonction"},
                          {"row", "11"},
                          {"column", "Driver"},
                          {"text", "unknown text: it selects nothing"},
                          {"found", "\"DrvPCL999\""},
                          {"expected", "the text of a block's driver"}}}));
}

TEST_F(LeProgramme, TrouveUnChassisDerrièreUnAutreSansNom) {
  const std::string base = Base(
      "CREATE TABLE Copie AS SELECT * FROM Chassis; DROP TABLE Chassis; "
      "ALTER TABLE Copie RENAME TO Chassis; "
      "INSERT INTO Chassis ([Index]) VALUES (0), ('x');"
      "DELETE FROM Chassis WHERE [Index] BETWEEN 3 AND 9;"
      "INSERT INTO Chassis ([Index], [Nom du Chassis]) VALUES (40, 'Banc')");
  const Fin fin = Lance("check " + base + " --frame 77");
  EXPECT_EQ(fin.code, 2);
  EXPECT_PRED_FORMAT2(
      IsSubstring,
      "Frames: 1 (Presse de démonstration), 2 (Instruments de démonstration), 0, 40 (Banc).",
      fin.erreur);
  EXPECT_PRED_FORMAT2(IsSubstring, "Frame 40: 0 boards",
                      Lance("check " + base + " --frame 40").sortie);
}

TEST_F(LeProgramme, MontreDesValeursQuiSuiventLesBornes) {
  const Fin fin = Lance("run " + Base() + " --sim --lines --seconds 1");
  EXPECT_EQ(fin.code, 0);
  EXPECT_EQ(fin.erreur, "");
  std::string début = "0.50 s | ";
  for (const std::string_view ligne : Découpe(fin.sortie, '\n')) {
    if (ligne.find("| board 1 | block 11 | channel 0 | analog in | Force 100 kN | ") ==
        ligne.npos) {
      continue;
    }
    EXPECT_TRUE(ligne.starts_with(début) && ligne.ends_with(" V")) << ligne;
    EXPECT_NE(ligne.find(" points | "), ligne.npos) << ligne;
    début = début == "0.50 s | " ? "1.00 s | " : "twice";
  }
  EXPECT_EQ(début, "twice");

  const std::string résumé = Lance("run " + Base() + " --sim --seconds 2").sortie;
  EXPECT_EQ(std::ranges::count(résumé, '\n'), 2) << "a line a second";
  EXPECT_PRED_FORMAT2(IsSubstring, "2.00 s | 19 of 19 sensors ok | Force 100 kN ", résumé);

  const auto vues = Lance("run " + Base() + " --sim --seconds 1 --json").Vues();
  EXPECT_EQ(vues.size(), 2U);
  for (const json& vue : vues) {
    EXPECT_EQ(vue["frame"], "Presse de démonstration");
    int mesures = 0;
    for (const auto& canal : vue["channels"]) {
      if (canal["type"] != "analog in") continue;
      ++mesures;
      const double volts = std::stod(canal["terminal"].get<std::string>());
      constexpr double kPointsParVolt = 6553.6;
      constexpr double kUnPasDe12Bits = 16.5;
      EXPECT_NEAR(canal["points"], volts * kPointsParVolt, kUnPasDe12Bits) << canal.dump();
    }
    EXPECT_GE(mesures, 20);
  }
}

TEST_F(LeProgramme, LitLesInstrumentsQuUnCapteurInterroge) {
  const Fin fin = Lance("run " + Base() + " --frame 2 --sim --seconds 1 --json");
  std::map<std::string, double> attendus{
      {"Balance", 12.345}, {"Comparateur", 3.21}, {"Indicateur", 54.32}};
  const auto vues = fin.Vues();
  for (const auto& capteur : vues.at(1)["sensors"]) {
    const auto attendu = attendus.find(capteur["name"]);
    if (attendu == attendus.end()) continue;
    EXPECT_DOUBLE_EQ(capteur["value"], attendu->second) << capteur.dump();
    attendus.erase(attendu);
  }
  EXPECT_TRUE(attendus.empty());
  // This kind of balance stops the pass with a box, as it must.
  EXPECT_PRED_FORMAT2(IsSubstring, "message: Capteur 31 (Balance): Chaine complète recue",
                      fin.erreur);
}

TEST_F(LeProgramme, EnregistreChaqueRafraîchissement) {
  const std::string csv = dossier.Fichier("essai.csv");
  const Fin fin = Lance("run " + Base() + " --sim --seconds 1 --param 12=0 --csv " + csv);
  EXPECT_EQ(fin.code, 0) << fin.erreur;
  const std::string écrit = essai::Lit(csv);
  const auto lignes = Découpe(écrit, '\n');
  EXPECT_TRUE(écrit.starts_with("time [s],Force 100 kN [kN],Force 10 kN [kN],")) << lignes[0];
  EXPECT_NEAR(static_cast<double>(lignes.size()), 202, 3) << "one line for each refresh at 200 Hz";
  const auto colonnes = Découpe(lignes[0], ',').size();
  for (std::size_t i = 1; i + 1 < lignes.size(); ++i) {
    const auto champs = Découpe(lignes[i], ',');
    ASSERT_EQ(champs.size(), colonnes) << lignes[i];
    EXPECT_EQ(champs[colonnes - 2], "") << "not selected: missing, not 0";
  }
  const json description = json::parse(essai::Lit(csv + ".json"));
  EXPECT_EQ(description["sensors"].size(), colonnes - 1);
  EXPECT_EQ(description["specimen"]["parameter 5"], "50");
}

TEST_F(LeProgramme, VideLArbreDUnChassisQuiTourne) {
  const std::string commande = "dump " + Base() + " --sim ";
  const Fin texte = Lance(commande);
  EXPECT_EQ(texte.code, 0) << texte.erreur;
  EXPECT_EQ(texte.erreur, "");
  // The logic inputs of the press say that it is armed: nobody sets that but the running machine.
  EXPECT_PRED_FORMAT2(IsSubstring,
                      "    Canal connecté :               Armé\n"
                      "    Etat d'activation de l'EL :    1\n"
                      "    Valeur courante de l'EL :      Activé\n",
                      texte.sortie);

  const std::string fichier = dossier.Fichier("vidage.txt");
  for (int fois = 0; fois < 2; ++fois) EXPECT_EQ(Lance(commande + "--out " + fichier).sortie, "");
  // The simulated run repeats exactly.
  EXPECT_TRUE(essai::Lit(fichier) == texte.sortie + texte.sortie);
  EXPECT_EQ(Lance(commande + "--out /dev/full").code, 1);

  const json objets = json::parse(Lance(commande + "--json").sortie);
  std::ptrdiff_t lignes = 0;
  for (const auto& objet : objets) lignes += 5 + static_cast<int>(objet["lines"].size());
  EXPECT_EQ(lignes, std::ranges::count(texte.sortie, '\n'));
  EXPECT_EQ(objets[1]["class"], "Carte");
  EXPECT_EQ(objets[1]["lines"][1], json({{"label", "Adresse de la Carte"}, {"value", "220"}}));
}

// Whoever stops reading, or closes the terminal, must leave no output under its last set point: the
// program is to come to its own end and not to be cut off.
TEST_F(LeProgramme, FinitDeLuiMêmeQuandLeLecteurSEnVa) {
  const std::string code = dossier.Fichier("code");
  const std::string programme = "'" ZUMA_PROGRAMME "' run '" + Base() + "' --sim";
  const std::string finit = "; echo $? >" + code;
  // Long enough for the program to have started on a machine that does other things.
  const std::string après2s = "timeout --preserve-status --signal=";
  for (const std::string& script : {"{ " + programme + finit + "; } | head -1 >/dev/null",
                                    après2s + "INT 2 " + programme + " >/dev/null" + finit,
                                    après2s + "TERM 2 " + programme + " >/dev/null" + finit,
                                    après2s + "HUP 2 " + programme + " >/dev/null" + finit}) {
    std::filesystem::remove(code);
    ASSERT_EQ(std::system(script.c_str()), 0);
    EXPECT_EQ(essai::Lit(code), "0\n") << script;
  }
}

}  // namespace
}  // namespace zuma
