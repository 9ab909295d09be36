// What loads without a word and does not do what was meant: each mistake with its place, what was
// found, what was expected and how bad it is. The demo database holds none.
#include <chrono>

#include <gtest/gtest.h>

#include "host/controles_des_noms.h"
#include "host/verifie_le_sens.h"
#include "outils/chassis_de_demo.h"

namespace zuma {
namespace {

using host::Gravité;
using host::Problème;
using enum host::Gravité;

std::vector<Problème> Vérifie(const std::string& sql, const char* paramètre = "") {
  const essai::BaseDeDémo base;
  if (!sql.empty()) base.Exécute(sql.c_str());
  linux_::Parametres paramètres;
  for (const auto& [n, valeur] : linux_::ParamètresDeDémonstration()) {
    (void)paramètres.Ajoute(n, n == 11 ? paramètre : valeur);
  }
  host::Recueil recueil;
  host::VérifieLeSens(*host::OuvreLaBase(base.chemin, true), paramètres.Collection(), recueil);
  return recueil.Problèmes();
}

struct Cas {
  std::string sql;
  std::string table, ligne, colonne;
  Gravité gravité;
  std::string texte;  // its beginning
  std::string trouvé;
  std::string attendu;  // a part of it
};

// "Point 1" of the sensors and commands of the demo is (0, 0), "Point 2" the full scale.
const Cas kEtalonnages[] = {
    {"UPDATE Capteur SET [Point 3 - Unité]=50, [Point 3 - Point]=70000 WHERE [Index]=1", "Capteur",
     "1", "Point 3 - Unité", Erreur, "the table has no inverse", "50 for 70000 points in row 3",
     "units that go on from 100 for 65536 points in row 2"},
    {"UPDATE Capteur SET [Remise à Zéro Autorisée]=0, [Point 3 - Unité]=100, "
     "[Point 3 - Point]=70000 WHERE [Index]=1",
     "Capteur", "1", "Point 3 - Unité", Avertissement, "the table has no inverse",
     "100 for 70000 points in row 3", "units that go on"},
    {"UPDATE Commande SET [Point 3 - Unité]=50, [Point 3 - Point]=5000 WHERE [Index]=3", "Commande",
     "3", "Point 3 - Unité", Erreur, "the table has no inverse", "50 for 5000 points in row 3",
     "units that go on"},
    {"UPDATE Capteur SET [Point 3 - Unité]=100, [Point 3 - Point]=65536 WHERE [Index]=1", "Capteur",
     "1", "Point 3 - Point", Avertissement, "the row is there twice",
     "100 for 65536 points in row 3", "other points than 100 for 65536 points in row 2"},
    {"UPDATE Capteur SET [Point 3 - Unité]=101, [Point 3 - Point]=65536 WHERE [Index]=1", "Capteur",
     "1", "Point 3 - Point", Erreur, "two values for the same points",
     "101 for 65536 points in row 3", "other points"},
    {"UPDATE Capteur SET [Point 1 - Unité]=-1, [Point 2 - Point]=0 WHERE [Index]=1", "Capteur", "1",
     "Point 1 - Point", Erreur, "all rows have the same points", "0", "rows of different points"},
    {"UPDATE Capteur SET [Point 1 - Unité]=5, [Point 1 - Point]=3000 WHERE [Index]=1", "Capteur",
     "1", "Point 1 - Unité", Avertissement, "zeroing is allowed", "5 for 3000 points in row 1",
     "a row of 0"},
    {"UPDATE Capteur SET [Point 4 - Unité]=120, [Point 4 - Point]=80000, [Point 1 - Unité]=-1, "
     "[Point 1 - Point]=-655 WHERE [Index]=1",
     "Capteur", "1", "Point 3 - Unité", Avertissement, "an empty row has rows behind it",
     "0 for 0 points in row 3", "the empty ones behind"},
};

const Cas kLignes[] = {
    {"UPDATE Capteur SET [Sécurité Minimale en Unité]=96 WHERE [Index]=3", "Capteur", "3",
     "Sécurité Minimale en Unité", Erreur, "the limits are the wrong way round", "96",
     "less than 95, the Sécurité Maximale en Unité"},
    {"UPDATE Capteur SET [Sécurité Maximale en Points]=-1e6 WHERE [Index]=4", "Capteur", "4",
     "Sécurité Minimale en Points", Erreur, "the limits are the wrong way round", "-327,68",
     "less than -1000000"},
    {"UPDATE Capteur SET [Sécurité Minimale en Points]=0, [Sécurité Maximale en Points]=0 WHERE "
     "[Index]=1",
     "Capteur", "1", "Sécurité Minimale en Points", Erreur, "no value lies inside", "0",
     "less than 0"},
    {"UPDATE Capteur SET [Recouvrement - Seuil bas %]='95,5' WHERE [Index]=3", "Capteur", "3",
     "Recouvrement - Seuil bas %", Erreur, "the limits are the wrong way round", "95,5",
     "less than 90"},
    {"UPDATE Commande SET [Sécurité Maximale en Unité]=-200 WHERE [Index]=1", "Commande", "1",
     "Sécurité Minimale en Unité", Erreur, "the limits are the wrong way round", "-100",
     "less than -200"},
    {"UPDATE [Entrée Logique] SET [Durée Anti-Rebond (s)]=0.02, [Niveau d'Arrêt d'Urgence]="
     "'Activé' WHERE [Index]=1",
     "Entrée Logique", "1", "Durée Anti-Rebond (s)", Avertissement, "a stop comes later", "0,02 s",
     "0 on an input that stops"},
    {"UPDATE Fonction SET [ModBus - Fonction]=NULL WHERE [Index]=141", "Fonction", "141",
     "ModBus - Fonction", Erreur, "a Modbus block without a function", "Null", "3 or 4"},
    {"UPDATE Fonction SET [ModBus - Fonction]='10' WHERE [Index]=141", "Fonction", "141",
     "ModBus - Fonction", Erreur, "the function does not do", "\"10\"", "3 or 4"},
    {"UPDATE Fonction SET [ModBus - Fonction]='5' WHERE [Index]=142", "Fonction", "142",
     "ModBus - Fonction", Erreur, "the function does not do", "\"5\"", "1, 2, 3 or 4"},
    {"UPDATE Fonction SET [ModBus - Fonction]='3' WHERE [Index]=143", "Fonction", "143",
     "ModBus - Fonction", Erreur, "the function does not do", "\"3\"", "6 or 10"},
    {"UPDATE Carte SET [Configuration ModBus]='10,19200,N,8,1,1.5' WHERE [Index]=15", "Carte", "15",
     "Configuration ModBus", Erreur, "a drive on a slow line", "19200 Bd", "38400 Bd or more"},
    {"UPDATE Commande SET Canal=NULL WHERE [Index]=5", "Commande", "5", "Canal", Erreur,
     "an on/off command without a channel", "Null", "an Index of table Canal"},
    {"UPDATE Capteur SET S=NULL WHERE [Index]=12", "Capteur", "12", "S", Erreur,
     "without a reference length", "Null", "the index of a parameter"},
    {"UPDATE Capteur SET S=0 WHERE [Index]=18", "Capteur", "18", "S", Erreur,
     "without it nothing selects", "0", "the index of a parameter"},
};

const Cas kRenvois[] = {
    {"DELETE FROM Canal WHERE Fonction=142 AND [Numéro du Canal]=-1", "Fonction", "142", "Index",
     Erreur, "a Modbus block without an error channel", "no channel -1 in table Canal",
     "a channel with Numéro du Canal -1"},
    {"UPDATE WatchDog SET Adresse='0', Pulse=6203 WHERE [Index]=1", "WatchDog", "1", "Pulse",
     Avertissement, "a pulse on a PCL 731", "6203", "connector 2"},
    {"UPDATE [Sortie Logique] SET Canal=1403 WHERE [Index]=3", "Sortie Logique", "4", "Canal",
     Erreur, "another object of the frame", "1403, also of table Sortie Logique, row 3",
     "a channel of its own"},
    {"UPDATE Commande SET Canal=2100 WHERE [Index]=3", "Commande", "3", "Canal", Erreur,
     "another object of the frame", "2100, also of table Commande, row 2", "a channel of its own"},
    {"UPDATE WatchDog SET Pulse=1403 WHERE [Index]=1", "WatchDog", "1", "Pulse", Erreur,
     "another object of the frame", "1403, also of table Sortie Logique, row 4",
     "a channel of its own"},
    {"UPDATE Capteur SET [Nom du Capteur]='four  ZONE 1 ' WHERE [Index]=16", "Capteur", "16",
     "Nom du Capteur", Avertissement, "differs from another name", "\"four  ZONE 1 \"",
     "\"Four zone 1\" as in row 15"},
    {"UPDATE [Liaison Chassis / Commande] SET Label='consigne 1' WHERE Commande=3",
     "Liaison Chassis / Commande", "(1, 3)", "Label", Avertissement, "differs from another name",
     "\"consigne 1\"", "\"Consigne 1\" as in row (1, 2)"},
    {"ALTER TABLE Fonction RENAME COLUMN Temps TO temps", "Fonction", "", "Temps", Erreur,
     "the column is written otherwise", "\"temps\"", "\"Temps\""},
};

void TrouveChacun(std::span<const Cas> tous) {
  for (const Cas& c : tous) {
    const std::vector<Problème> problèmes = Vérifie(c.sql, "100");
    ASSERT_EQ(problèmes.size(), 1U) << c.sql << "\n" << host::EnJson(problèmes);
    const Problème& p = problèmes.front();
    EXPECT_EQ(p.table, c.table) << c.sql;
    EXPECT_EQ(p.ligne, c.ligne) << c.sql;
    EXPECT_EQ(p.colonne, c.colonne) << c.sql;
    EXPECT_EQ(p.gravité, c.gravité) << c.sql;
    EXPECT_TRUE(p.texte.starts_with(c.texte)) << p.texte;
    EXPECT_EQ(p.trouvé, c.trouvé) << c.sql;
    EXPECT_NE(p.attendu.find(c.attendu), std::string::npos) << p.attendu;
  }
}

TEST(LesContrôles, NeTrouventRienDansLaBaseDeDémonstration) {
  EXPECT_EQ(host::EnJson(Vérifie("", "100")), "[]");
}
TEST(LesContrôles, TrouventCeQuiNEstPasUnEtalonnage) {
  TrouveChacun(kEtalonnages);
}
TEST(LesContrôles, TrouventCeQuUneLigneDitDeFaux) {
  TrouveChacun(kLignes);
}
TEST(LesContrôles, TrouventCeQueDesLignesSeDisputent) {
  TrouveChacun(kRenvois);
}

TEST(LesContrôles, TrouventUnParamètreVide) {
  for (const char* vide : {"", "cent"}) {
    const auto problèmes = Vérifie("UPDATE Capteur SET [Offset]=11 WHERE [Index]=4", vide);
    ASSERT_EQ(problèmes.size(), 2U) << vide;  // parameter 11 is also the reference length
    EXPECT_EQ(problèmes[0].ligne + " " + problèmes[0].colonne, "4 Offset");
    EXPECT_EQ(problèmes[1].ligne + " " + problèmes[1].colonne, "12 S");
    EXPECT_EQ(problèmes[0].trouvé, std::string("parameter 11 = \"") + vide + "\"");
  }
}

// What looks like a mistake and is none.
TEST(LesContrôles, LaissentCeQuiEstVoulu) {
  for (const char* sql : {
           // The zero in the middle of a table, upwards and downwards, and a table that ends in it.
           "UPDATE Capteur SET [Point 1 - Unité]=-100, [Point 1 - Point]=-65536, [Point 2 - "
           "Unité]=0,"
           "[Point 2 - Point]=0, [Point 3 - Unité]=100, [Point 3 - Point]=65536 WHERE [Index]=1",
           "UPDATE Capteur SET [Point 1 - Unité]=100, [Point 1 - Point]=-65536, [Point 2 - "
           "Unité]=0,"
           "[Point 2 - Point]=0, [Point 3 - Unité]=-100, [Point 3 - Point]=65536 WHERE [Index]=1",
           "UPDATE Capteur SET [Point 1 - Unité]=100, [Point 1 - Point]=1000, [Point 2 - Unité]=50,"
           "[Point 2 - Point]=520 WHERE [Index]=1",
           // One row is a line through the origin; no row leaves points.
           "UPDATE Capteur SET [Point 1 - Unité]=100, [Point 1 - Point]=1000, [Point 2 - Unité]=0,"
           "[Point 2 - Point]=0 WHERE [Index]=1",
           "UPDATE Capteur SET [Point 2 - Unité]=0, [Point 2 - Point]=0 WHERE [Index]=1",
           // A row that the line through the others meets, wherever it stands.
           "UPDATE Capteur SET [Point 1 - Unité]=50, [Point 1 - Point]=32768, [Point 2 - Unité]=0,"
           "[Point 2 - Point]=0, [Point 3 - Unité]=100, [Point 3 - Point]=65536 WHERE [Index]=1",
           // Thresholds of a sensor that has none.
           "UPDATE Capteur SET [Recouvrement - Seuil bas %]=0, [Recouvrement - Seuil haut %]=0 "
           "WHERE [Index]=1",
           "UPDATE Capteur SET [Recouvrement - Seuil bas %]=5, [Recouvrement - Seuil haut %]=1 "
           "WHERE [Index]=1",
           // A column that is read by its name in whatever case.
           "ALTER TABLE [Liaison Chassis / Capteur] RENAME COLUMN Label TO label",
           // An on/off command: its logic outputs write, and may share a channel with it.
           "UPDATE Commande SET Canal=1403 WHERE [Index]=5",
           // Two frames may drive one channel, each in its time.
           "UPDATE Commande SET Canal=2100 WHERE [Index]=3;"
           "UPDATE [Liaison Chassis / Commande] SET Chassis=2 WHERE Commande=3",
       }) {
    EXPECT_EQ(host::EnJson(Vérifie(sql, "100")), "[]") << sql;
  }
}

TEST(UnNomRapproché, PerdBlancsEtCapitales) {
  EXPECT_EQ(host::NomRapproché("  ÉTAT  de l'Arrêt×Œ "), "état de l'arrêt×Œ");
}

}  // namespace
}  // namespace zuma
