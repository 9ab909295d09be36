// The program as its user meets it: what it prints, where, and the code it ends with.
#include "outils/programme.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <map>
#include <nlohmann/json.hpp>
#include <sstream>

#include <gtest/gtest.h>

namespace zuma {
namespace {

using essai::Fin;
using essai::LeProgramme;

TEST_F(LeProgramme, EcritUneBaseSaineEtNEcraseRien) {
  const std::string base = dossier.Fichier("neuve.db");
  Fin fin = Lance({"init", base});
  EXPECT_EQ(fin.code, 0);
  EXPECT_NE(fin.sortie.find(base + " written"), std::string::npos) << fin.sortie;
  EXPECT_EQ(fin.erreur, "");

  fin = Lance({"check", base});
  EXPECT_EQ(fin.code, 0);
  EXPECT_TRUE(fin.sortie.starts_with(
      "note: table Carte, row 6: PCL 731, the outputs are on the second connector (ports 4 to 6), "
      "the inputs on the first (ports 0 to 2)\nFrame 1: 10 boards, 21 blocks, "))
      << fin.sortie;
  EXPECT_TRUE(fin.sortie.ends_with(": no problem\n")) << fin.sortie;
  // An older one lacks the columns that came later.
  const Fin ancienne =
      Lance({"check", Base("ALTER TABLE Carte DROP COLUMN [ModBus - Time-out];"
                           "ALTER TABLE Canal DROP COLUMN [ModBus - Registre signé];"
                           "ALTER TABLE Capteur DROP COLUMN [Age maximal (s)]")});
  EXPECT_EQ(ancienne.code, 0);
  EXPECT_EQ(ancienne.sortie, fin.sortie);
  fin = Lance({"check", base, "--json"});
  EXPECT_EQ(fin.code, 0);
  EXPECT_EQ(fin.sortie, "[]\n");

  const std::string contenu = essai::Lit(base);
  fin = Lance({"init", base});
  EXPECT_EQ(fin.code, 2);
  EXPECT_EQ(fin.erreur, "zuma: Fichier déjà existant : '" + base + "'\n");
  EXPECT_EQ(essai::Lit(base), contenu);
}

TEST_F(LeProgramme, DitCeQuIlNeComprendPas) {
  const std::string base = Base();
  const std::string texte = dossier.Fichier("texte.db");
  std::ofstream(texte) << "this is no database, however long it is made, and never was one\n";
  const struct {
    std::vector<std::string> arguments;
    std::string erreur;
  } cas[] = {
      {{}, "a command is required"},
      {{"mesure"}, "mesure"},
      {{"check"}, "FILE is required"},
      {{"check", base, "--bogus"}, "--bogus"},
      {{"check", base, "--frame", "un"}, "--frame"},
      {{"check", dossier.Fichier("absente.db")}, "does not exist"},
      {{"check", base, "--frame", "7"},
       "zuma: " + base +
           " has no frame 7. Frames: 1 (Presse de démonstration), 2 (Instruments de "
           "démonstration), 3 (Bus de démonstration)"},
      {{"check", texte}, "Fichier illisible comme base de données"},
      {{"run", texte, "--sim"}, "Fichier illisible comme base de données"},
      {{"run", base, "--frame", "7", "--sim"}, "has no frame 7"},
      {{"run", base, "--seconds", "-1"}, "--seconds"},
      {{"run", base, "--sim", "--port", "four=/dev/ttyUSB0"},
       "--port \"four=/dev/ttyUSB0\": expected"},
      {{"run", base, "--port", "4=/dev/a", "--port", "4=/dev/b"}, "each number once"},
      {{"dump", base, "--sim", "--port", "4="}, "expected NUMBER=DEVICE, as in 4=/dev/ttyUSB0"},
      {{"dump", base, "--sim", "--can", "1=can0"}, "expected CARD:PORT=INTERFACE, as in 1:0=can0"},
      {{"dump", base, "--sim", "--out", dossier.Fichier("absent/v.txt")}, "there is no folder"},
      {{"dump", base, "--sim", "--json", "--out", dossier.Fichier("v.txt")}, "--json"},
      {{"init", dossier.Fichier("absent/neuve.db")}, "Chemin introuvable"},
  };
  for (const auto& c : cas) {
    const Fin fin = Lance(c.arguments);
    const std::string quoi = c.arguments.empty() ? "(rien)" : c.arguments.front();
    EXPECT_EQ(fin.code, 2) << quoi;
    EXPECT_NE(fin.erreur.find(c.erreur), std::string::npos) << quoi << ": " << fin.erreur;
    EXPECT_EQ(fin.sortie, "") << quoi;
  }
  for (const char* question : {"--help", "--version"}) {
    const Fin fin = Lance({question});
    EXPECT_EQ(fin.code, 0);
    EXPECT_FALSE(fin.sortie.empty());
    EXPECT_EQ(fin.erreur, "");
  }
}

TEST_F(LeProgramme, DitChaqueProblèmeAvecSonLieu) {
  const struct {
    std::string sql;
    std::string ligne;
    std::string chassis = "1";
  } cas[] = {
      {"UPDATE Fonction SET Driver='DrvPCL999' WHERE [Index]=11",
       "data: table Fonction, row 11, column Driver: unknown text: it selects nothing; found "
       "\"DrvPCL999\"; expected the text of a block's driver\n"},
      {"UPDATE Carte SET [Driver de la Carte]='UTS-0107' WHERE [Index]=7; "
       "UPDATE [Sortie Logique] SET [Etat d'Activation]=0 WHERE [Index]=5",
       "data: table Sortie Logique, row 5, column Etat d'Activation: a stop would start the tester "
       "behind this output; found 0; expected 1\n"},
      {"UPDATE Carte SET [Driver de la Carte]='UTS-0107' WHERE [Index]=7",
       "data: table WatchDog, row 1, column Temps en seconde: board 7 ("},
      {"UPDATE Carte SET [Driver de la Carte]='UTS-0107' WHERE [Index]=7",
       "give it more, or put the board on another frame; found 0.2 s; expected more than 2.4 s\n"},
      {"UPDATE Fonction SET [Type de Fonction]='Entrée Analogique' WHERE [Index]=12",
       "data: table Fonction, row 12, column Type de Fonction: the driver DrvACL8316 does not"},
      {"UPDATE [Liaison Chassis / Carte] SET Carte=99 WHERE Carte=10",
       "data: table Liaison Chassis / Carte, row (1, 99), column Carte: refers to a row that is "
       "not there; "
       "found 99; expected an Index of table Carte\n"},
      {"INSERT INTO [Liaison Chassis / Commande] (Chassis, Commande) VALUES (1, 3)",
       "data: table Liaison Chassis / Commande, row (1, 3), column Commande: linked twice to frame "
       "1; found 3; "
       "expected one row for each object of a frame\n"},
      {"INSERT INTO [Sortie Logique] ([Index], Canal) VALUES (55, 4242)",
       "data: table Sortie Logique, row 55, column Canal: refers to a row that is not there; found "
       "4242; expected an Index of table Canal\n"},
      {"CREATE TABLE Copie AS SELECT * FROM Carte; INSERT INTO Copie SELECT * FROM Carte "
       "WHERE [Index]=3; DROP TABLE Carte; ALTER TABLE Copie RENAME TO Carte",
       "data: table Carte, row 3, column Index: the key is there twice; found 3; expected one row "
       "a key\n"},
      {"UPDATE Canal SET [Numéro du Canal]='trois' WHERE [Index]=1103",
       "data: table Canal, row 1103, column Numéro du Canal: unusable value; found \"trois\"; "
       "expected a whole number of 32 bits\n"},
      {"UPDATE Canal SET [Numéro du Canal]=23 WHERE [Index]=6105",
       "data: table Canal, row 6105, column Numéro du Canal: the block does not read this line: "
       "the "
       "input stays at 0; found 23; expected 0 to 22\n"},
      {"UPDATE Canal SET [Numéro du Canal]=9e300 WHERE [Index]=1103", "found 9E+300"},
      {"UPDATE Canal SET [Position ID]=(SELECT [Position ID] FROM Canal WHERE [Index]=11100) WHERE "
       "[Index]=11101",
       "data: table Canal, row 11101, column Position ID: another ruler of the port has this "
       "identifier (channel 11100); found 385; expected an identifier of its own\n",
       "3"},
      {"UPDATE Fonction SET [Numéro du port CAN]=0 WHERE [Index]=112; UPDATE Fonction SET [Vitesse "
       "du CAN]=250 WHERE [Index]=112",
       "data: table Fonction, row 112, column Vitesse du CAN: the CAN port has another speed or "
       "mode "
       "already (channel 11100); found 250 kbit/s, 11 bits; expected 500 kbit/s, 11 bits\n",
       "3"},
      {"UPDATE Capteur SET [Offset]='' WHERE [Index]=4",
       "data: table Capteur, row 4, column Offset: an empty text: the row is not read any further; "
       "found \"\"; expected a value, or Null\n"},
      {"UPDATE Capteur SET S='' WHERE [Index]=12",
       "data: table Capteur, row 12, column S: an empty text: the row"},
      {"UPDATE [Entrée Logique] SET [Durée Anti-Rebond (s)]='' WHERE [Index]=1",
       "data: table Entrée Logique, row 1, column Durée Anti-Rebond (s): an empty text: the row"},
      {"CREATE TABLE Copie AS SELECT * FROM Canal; UPDATE Copie SET [Index]=NULL WHERE "
       "[Index]=1101;"
       "UPDATE Copie SET Fonction='x' WHERE [Index]=1103; DROP TABLE Canal;"
       "ALTER TABLE Copie RENAME TO Canal",
       "data: table Canal, row Null, column Index: no value; found Null; expected a value\n"
       "data: table Canal, row 1103, column Fonction: unusable value; found \"x\"; expected a "
       "whole"},
      {"UPDATE Carte SET Adresse='port' WHERE [Index]=2", "failure: Erreur N°13 ("},
      {"UPDATE Canal SET [Nom du Canal]=CAST(x'46FF' AS TEXT) WHERE [Index]=1103",
       "row 1103, column Nom du Canal: bytes that are no text; found \"F\uFFFD\"; expected UTF-8"},
      {"UPDATE Fonction SET Driver=char(27)||'[2J'||char(10)||'x'||char(155)||'1m' WHERE "
       "[Index]=11",
       "column Driver: unknown text: it selects nothing; found \" [2J x 1m\"; expected"},
      {"ALTER TABLE Carte RENAME TO Vraie; CREATE VIEW Carte AS WITH RECURSIVE c(x) AS "
       "(SELECT 1 UNION ALL SELECT x+1 FROM c) SELECT x AS [Index] FROM c",
       "data: table Carte: Table absente de la base de données"},
      {"DROP TABLE Commande", "Table absente de la base de données"},
      {"ALTER TABLE WatchDog DROP COLUMN [Temps en seconde]",
       "data: table WatchDog, column Temps en seconde: missing column: its objects cannot be "
       "loaded\n"},
  };
  for (const auto& c : cas) {
    const Fin fin = Lance({"check", Base(c.sql), "--frame", c.chassis});
    EXPECT_EQ(fin.code, 1) << c.sql;
    EXPECT_NE(fin.sortie.find(c.ligne), std::string::npos) << c.sql << "\n" << fin.sortie;
    EXPECT_TRUE(fin.sortie.ends_with(" problem(s)\n")) << fin.sortie;
    EXPECT_EQ(fin.erreur, "") << c.sql;
  }
}

// However many rows are wrong, the list ends, with what it leaves out.
TEST_F(LeProgramme, CompteLesProblèmesQuIlNeMontrePas) {
  const std::string base = Base(
      "INSERT INTO Canal ([Index], Fonction) WITH RECURSIVE c(x) AS (SELECT 1 UNION ALL SELECT x+1 "
      "FROM c LIMIT 12000) SELECT x+100000, 4242 FROM c");
  const Fin fin = Lance({"check", base});
  EXPECT_EQ(fin.code, 1);
  EXPECT_EQ(std::count(fin.sortie.begin(), fin.sortie.end(), '\n'), 10'003) << "a note as well";
  EXPECT_NE(fin.sortie.find("\nand 2000 more\n"), std::string::npos);
  EXPECT_TRUE(fin.sortie.ends_with(": 12000 problem(s)\n"));
  const auto problèmes = nlohmann::json::parse(Lance({"check", base, "--json"}).sortie);
  EXPECT_EQ(problèmes.size(), 10'001U);
  EXPECT_EQ(problèmes.back(), nlohmann::json({{"kind", "more"}, {"text", "and 2000 more"}}));
}

TEST_F(LeProgramme, MontreLesNomsCommeDuTexte) {
  const std::string base = Base(
      "UPDATE Canal SET [Nom du Canal]='A'||char(27,10,155)||CAST(x'FF' AS TEXT) WHERE "
      "[Index]=1101;"
      "UPDATE Chassis SET [Nom du Chassis]='F'||char(27)||']0;x'||char(7) WHERE [Index]=1");
  for (const char* json : {"--sim", "--json"}) {
    const Fin fin = Lance({"run", base, "--sim", "--seconds", "0.5", json});
    EXPECT_EQ(fin.code, 0) << fin.erreur;
    EXPECT_EQ(fin.sortie.find_first_of("\x1b\x07\xff"), std::string::npos);
    EXPECT_EQ(fin.sortie.find("\xc2\x9b"), std::string::npos);
    EXPECT_NE(fin.sortie.find("A"), std::string::npos);
  }
}

TEST_F(LeProgramme, DonneLesProblèmesEnJson) {
  const Fin fin =
      Lance({"check", Base("UPDATE Fonction SET Driver='DrvPCL999' WHERE [Index]=11"), "--json"});
  EXPECT_EQ(fin.code, 1);
  const auto problèmes = nlohmann::json::parse(fin.sortie);
  ASSERT_EQ(problèmes.size(), 1U) << fin.sortie;
  EXPECT_EQ(problèmes[0], nlohmann::json({{"kind", "data"},
                                          {"severity", "error"},
                                          {"table", "Fonction"},
                                          {"row", "11"},
                                          {"column", "Driver"},
                                          {"text", "unknown text: it selects nothing"},
                                          {"found", "\"DrvPCL999\""},
                                          {"expected", "the text of a block's driver"}}));
}

TEST_F(LeProgramme, TrouveUnChassisDerrièreUnAutreSansNom) {
  const std::string base = Base(
      "CREATE TABLE Copie AS SELECT * FROM Chassis; DROP TABLE Chassis; "
      "ALTER TABLE Copie RENAME TO Chassis; "
      "INSERT INTO Chassis ([Index]) VALUES (0); INSERT INTO Chassis ([Index]) VALUES ('x');"
      "DELETE FROM Chassis WHERE [Index] BETWEEN 3 AND 9;"
      "INSERT INTO Chassis ([Index], [Nom du Chassis]) VALUES (40, 'Banc')");
  const Fin fin = Lance({"check", base, "--frame", "77"});
  EXPECT_EQ(fin.code, 2);
  EXPECT_NE(
      fin.erreur.find(
          "Frames: 1 (Presse de démonstration), 2 (Instruments de démonstration), 0, 40 (Banc)."),
      std::string::npos)
      << fin.erreur;
  EXPECT_TRUE(Lance({"check", base, "--frame", "40"}).sortie.find("Frame 40: 0 boards") !=
              std::string::npos);
}

TEST_F(LeProgramme, MontreEnLignesDesValeursQuiSuiventLesBornes) {
  const Fin fin = Lance({"run", Base(), "--sim", "--seconds", "1"});
  EXPECT_EQ(fin.code, 0);
  EXPECT_EQ(fin.erreur, "");
  std::istringstream lignes(fin.sortie);
  int vues = 0;
  for (std::string ligne; std::getline(lignes, ligne);) {
    if (ligne.find("| board 1 | block 11 | channel 0 | analog in | Force 100 kN | ") ==
        std::string::npos) {
      continue;
    }
    EXPECT_TRUE(ligne.starts_with(vues == 0 ? "0.50 s | " : "1.00 s | ")) << ligne;
    EXPECT_NE(ligne.find(" points | "), std::string::npos) << ligne;
    EXPECT_TRUE(ligne.ends_with(" V")) << ligne;
    ++vues;
  }
  EXPECT_EQ(vues, 2);
}

TEST_F(LeProgramme, MontreEnJsonDesValeursQuiSuiventLesBornes) {
  const Fin fin = Lance({"run", Base(), "--sim", "--seconds", "1", "--json"});
  EXPECT_EQ(fin.code, 0);
  std::istringstream lignes(fin.sortie);
  int vues = 0;
  for (std::string ligne; std::getline(lignes, ligne); ++vues) {
    const auto vue = nlohmann::json::parse(ligne);
    EXPECT_EQ(vue["frame"], "Presse de démonstration");
    int mesures = 0;
    for (const auto& canal : vue["channels"]) {
      if (canal["type"] != "analog in") continue;
      ++mesures;
      const double volts = std::stod(canal["terminal"].get<std::string>());
      constexpr double kPointsParVolt = 6553.6;
      constexpr double kUnPasDe12Bits = 16.5;
      EXPECT_NEAR(canal["points"].get<double>(), volts * kPointsParVolt, kUnPasDe12Bits)
          << canal.dump();
    }
    EXPECT_GE(mesures, 20);
  }
  EXPECT_EQ(vues, 2);
}

TEST_F(LeProgramme, LitLesInstrumentsQuUnCapteurInterroge) {
  const Fin fin = Lance({"run", Base(), "--frame", "2", "--sim", "--seconds", "1", "--json"});
  const auto vue = nlohmann::json::parse(fin.sortie.substr(fin.sortie.find('\n') + 1));
  const std::map<std::string, double> attendus{
      {"Balance", 12.345}, {"Comparateur", 3.21}, {"Indicateur", 54.32}};
  int vus = 0;
  for (const auto& capteur : vue["sensors"]) {
    const auto attendu = attendus.find(capteur["name"]);
    if (attendu == attendus.end()) continue;
    EXPECT_DOUBLE_EQ(capteur["value"].get<double>(), attendu->second) << capteur.dump();
    ++vus;
  }
  EXPECT_EQ(vus, 3);
  EXPECT_NE(fin.erreur.find("message: Capteur 31 (Balance): Chaine complète recue"),
            std::string::npos)
      << "this kind of balance stops the pass with a box, as it must";
}

TEST_F(LeProgramme, EnregistreChaqueRafraîchissement) {
  const std::string csv = dossier.Fichier("essai.csv");
  const Fin fin =
      Lance({"run", Base(), "--sim", "--seconds", "1", "--csv", csv, "--param", "12=0"});
  EXPECT_EQ(fin.code, 0) << fin.erreur;
  std::istringstream lignes(essai::Lit(csv));
  std::string ligne;
  std::getline(lignes, ligne);
  EXPECT_TRUE(ligne.starts_with("time [s],Force 100 kN [kN],Force 10 kN [kN],")) << ligne;
  const auto colonnes = std::count(ligne.begin(), ligne.end(), ',');
  int nombre = 0;
  for (; std::getline(lignes, ligne); ++nombre) {
    EXPECT_EQ(std::count(ligne.begin(), ligne.end(), ','), colonnes) << ligne;
    const std::size_t avantDernière = ligne.rfind(',', ligne.rfind(',') - 1);
    EXPECT_TRUE(ligne.substr(avantDernière).starts_with(",,")) << "not selected: missing, not 0";
  }
  EXPECT_NEAR(nombre, 200, 3) << "one line for each refresh at 200 Hz";
  const auto description = nlohmann::json::parse(essai::Lit(csv + ".json"));
  EXPECT_EQ(description["sensors"].size(), static_cast<std::size_t>(colonnes));
  EXPECT_EQ(description["specimen"]["parameter 5"], "50");
}

TEST_F(LeProgramme, DitALaFinCeQuiAEchouéEtSertLeReste) {
  const Fin fin = Lance({"run",
                         Base("UPDATE Fonction SET Driver='DrvIK121' WHERE [Index]=11;"
                              "UPDATE Capteur SET [Point 2 - Point]=0 WHERE [Index]=1"),
                         "--sim", "--seconds", "0.6", "--start-anyway"});
  EXPECT_EQ(fin.code, 1);
  EXPECT_LT(fin.erreur.size(), 12'000U)
      << "a sensor that fails on each refresh is told a few times";
  EXPECT_NE(fin.erreur.find("failure: Erreur N°9 (Axe 0 absent de la carte"), std::string::npos)
      << fin.erreur;
  EXPECT_NE(fin.sortie.find("| Four zone 1 | "), std::string::npos);
}

TEST_F(LeProgramme, VideLArbreDUnChassisQuiTourne) {
  const std::string base = Base();
  const Fin texte = Lance({"dump", base, "--sim"});
  EXPECT_EQ(texte.code, 0) << texte.erreur;
  EXPECT_EQ(texte.erreur, "");
  // The logic inputs of the press say that it is armed: nobody sets that but the running machine.
  EXPECT_NE(texte.sortie.find("    Canal connecté :               Armé\n"
                              "    Etat d'activation de l'EL :    1\n"
                              "    Valeur courante de l'EL :      Activé\n"),
            std::string::npos);

  const std::string fichier = dossier.Fichier("vidage.txt");
  for (int fois = 0; fois < 2; ++fois) {
    EXPECT_EQ(Lance({"dump", base, "--sim", "--out", fichier}).sortie, "");
  }
  // The simulated run repeats exactly.
  EXPECT_TRUE(essai::Lit(fichier) == texte.sortie + texte.sortie);
  EXPECT_EQ(Lance({"dump", base, "--sim", "--out", "/dev/full"}).code, 1);

  const auto objets = nlohmann::json::parse(Lance({"dump", base, "--sim", "--json"}).sortie);
  std::ptrdiff_t lignes = 0;
  for (const auto& objet : objets) lignes += 5 + static_cast<int>(objet["lines"].size());
  EXPECT_EQ(lignes, std::ranges::count(texte.sortie, '\n'));
  EXPECT_EQ(objets[1]["class"], "Carte");
  EXPECT_EQ(objets[1]["lines"][1],
            nlohmann::json({{"label", "Adresse de la Carte"}, {"value", "220"}}));
}

// Whoever stops reading, or closes the terminal, must leave no output under its last set point: the
// program is to come to its own end and not to be cut off.
TEST_F(LeProgramme, FinitDeLuiMêmeQuandLeLecteurSEnVa) {
  const std::string code = dossier.Fichier("code");
  const std::string programme = "'" ZUMA_PROGRAMME "' run '" + Base() + "' --sim";
  ASSERT_EQ(
      std::system(("{ " + programme + "; echo $? >" + code + "; } | head -1 >/dev/null").c_str()),
      0);
  EXPECT_EQ(essai::Lit(code), "0\n");
  for (const std::string signal : {"INT", "TERM", "HUP"}) {
    std::filesystem::remove(code);
    // Long enough for the program to have started on a machine that does other things.
    const std::string script = "timeout --preserve-status --signal=" + signal + " 2 " + programme +
                               " >/dev/null; echo $? >" + code;
    ASSERT_EQ(std::system(script.c_str()), 0);
    EXPECT_EQ(essai::Lit(code), "0\n") << signal;
  }
}

}  // namespace
}  // namespace zuma
