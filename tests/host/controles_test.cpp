// What loads without a word and does not do what was meant: each mistake with its place, what was
// found, what was expected and how bad it is. The demo database holds none.
#include <algorithm>
#include <array>

#include <gtest/gtest.h>

#include "host/verbes/controles_des_noms.h"
#include "host/verbes/verifie_le_sens.h"
#include "outils/chassis_de_demo.h"

namespace zuma {
namespace {

using host::Gravité;
using host::Problème;
using enum host::Gravité;

std::vector<Problème> Vérifie(const std::string& sql, const char* paramètre = "100") {
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

// A row, and what makes the mistake in it: the value of the column ("=..."), of any columns, or a
// whole statement.
struct Cas {
  std::string table, ligne, colonne;
  Gravité gravité;
  std::string change, texte, trouvé, attendu;  // the beginning of the text, a part of the last
};

// "Point 1" of the sensors and commands of the demo is (0, 0), "Point 2" the full scale.
const Cas kFautes[] = {
    {"Capteur", "1", "Point 3 - Unité", Erreur, "[Point 3 - Unité]=50, [Point 3 - Point]=70000",
     "the table has no inverse", "50 for 70000 points in row 3",
     "units that go on from 100 for 65536 points in row 2"},
    {"Capteur", "1", "Point 3 - Unité", Avertissement,
     "[Remise à Zéro Autorisée]=0, [Point 3 - Unité]=100, [Point 3 - Point]=70000",
     "the table has no inverse", "100 for 70000 points in row 3", "units that go on"},
    {"Commande", "3", "Point 3 - Unité", Erreur, "[Point 3 - Unité]=50, [Point 3 - Point]=5000",
     "the table has no inverse", "50 for 5000 points in row 3", "units that go on"},
    {"Capteur", "1", "Point 3 - Point", Avertissement,
     "[Point 3 - Unité]=100, [Point 3 - Point]=65536", "the row is there twice",
     "100 for 65536 points in row 3", "other points than 100 for 65536 points in row 2"},
    {"Capteur", "1", "Point 3 - Point", Erreur, "[Point 3 - Unité]=101, [Point 3 - Point]=65536",
     "two values for the same points", "101 for 65536 points in row 3", "other points"},
    {"Capteur", "1", "Point 1 - Point", Erreur, "[Point 1 - Unité]=-1, [Point 2 - Point]=0",
     "all rows have the same points", "0", "rows of different points"},
    {"Capteur", "1", "Point 1 - Unité", Avertissement,
     "[Point 1 - Unité]=5, [Point 1 - Point]=3000", "zeroing is allowed",
     "5 for 3000 points in row 1", "a row of 0"},
    {"Capteur", "1", "Point 3 - Unité", Avertissement,
     "[Point 4 - Unité]=120, [Point 4 - Point]=80000, [Point 1 - Unité]=-1, [Point 1 - Point]=-655",
     "an empty row has rows behind it", "0 for 0 points in row 3", "the empty ones behind"},

    {"Capteur", "3", "Sécurité Minimale en Unité", Erreur, "=96",
     "the limits are the wrong way round", "96", "less than 95, the Sécurité Maximale en Unité"},
    {"Capteur", "1", "Sécurité Minimale en Points", Erreur,
     "[Sécurité Minimale en Points]=0, [Sécurité Maximale en Points]=0", "no value lies inside",
     "0", "less than 0"},
    {"Capteur", "3", "Recouvrement - Seuil bas %", Erreur, "='95,5'",
     "the limits are the wrong way round", "95,5", "less than 90"},
    {"Entrée Logique", "1", "Durée Anti-Rebond (s)", Avertissement,
     "[Durée Anti-Rebond (s)]=0.02, [Niveau d'Arrêt d'Urgence]='Activé'", "a stop comes later",
     "0,02 s", "0 on an input that stops"},
    {"Fonction", "141", "ModBus - Fonction", Erreur, "=NULL", "a Modbus block without a function",
     "Null", "3 or 4"},
    {"Fonction", "141", "ModBus - Fonction", Erreur, "='10'", "the function does not do", "\"10\"",
     "3 or 4"},
    {"Carte", "15", "Configuration ModBus", Erreur, "='10,19200,N,8,1,1.5'",
     "a drive on a slow line", "19200 Bd", "38400 Bd or more"},
    {"Commande", "5", "Canal", Erreur, "=NULL", "an on/off command without a channel", "Null",
     "an Index of table Canal"},
    {"Capteur", "12", "S", Erreur, "=NULL", "without a reference length", "Null",
     "the index of a parameter"},
    {"Capteur", "18", "S", Erreur, "=0", "without it nothing selects", "0",
     "the index of a parameter"},

    {"Fonction", "142", "Index", Erreur,
     "DELETE FROM Canal WHERE Fonction=142 AND [Numéro du Canal]=-1",
     "a Modbus block without an error channel", "no channel -1 in table Canal",
     "a channel with Numéro du Canal -1"},
    {"WatchDog", "1", "Pulse", Avertissement, "Adresse='0', Pulse=6203", "a pulse on a PCL 731",
     "6203", "connector 2"},
    {"Sortie Logique", "4", "Canal", Erreur,
     "UPDATE [Sortie Logique] SET Canal=1403 WHERE [Index]=3", "another object of the frame",
     "1403, also of table Sortie Logique, row 3", "a channel of its own"},
    {"WatchDog", "1", "Pulse", Erreur, "=1403", "another object of the frame",
     "1403, also of table Sortie Logique, row 4", "a channel of its own"},
    {"Capteur", "16", "Nom du Capteur", Avertissement, "='four  ZONE 1 '",
     "differs from another name", "\"four  ZONE 1 \"", "\"Four zone 1\" as in row 15"},
    {"Liaison Chassis / Commande", "(1, 3)", "Label", Avertissement,
     "UPDATE [Liaison Chassis / Commande] SET Label='consigne 1' WHERE Commande=3",
     "differs from another name", "\"consigne 1\"", "\"Consigne 1\" as in row (1, 2)"},
    {"Fonction", "", "Temps", Erreur, "ALTER TABLE Fonction RENAME COLUMN Temps TO temps",
     "the column is written otherwise", "\"temps\"", "\"Temps\""}};

TEST(LesContrôles, TrouventCeQuiEstFaux) {
  for (const Cas& c : kFautes) {
    std::string sql = c.change.starts_with("=") ? "[" + c.colonne + "]" + c.change : c.change;
    constexpr std::array kInstructions{"UPDATE ", "DELETE ", "ALTER "};
    const auto commence = [&](const char* mot) { return sql.starts_with(mot); };
    if (std::ranges::none_of(kInstructions, commence)) {
      sql = "UPDATE [" + c.table + "] SET " + sql + " WHERE [Index]=" + c.ligne;
    }
    SCOPED_TRACE(sql);
    const std::vector<Problème> problèmes = Vérifie(sql);
    ASSERT_EQ(problèmes.size(), 1U) << host::EnJson(problèmes);
    const Problème& p = problèmes.front();
    EXPECT_EQ(p.table + "/" + p.ligne + "/" + p.colonne, c.table + "/" + c.ligne + "/" + c.colonne);
    EXPECT_EQ(p.gravité, c.gravité);
    EXPECT_TRUE(p.texte.starts_with(c.texte)) << p.texte;
    EXPECT_EQ(p.trouvé, c.trouvé);
    EXPECT_PRED_FORMAT2(testing::IsSubstring, c.attendu, p.attendu);
  }
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

// The table of sensor 1, from its first row on, and empty behind.
std::string Points(const std::vector<std::pair<int, int>>& points) {
  std::string sql = "UPDATE Capteur SET ";
  for (std::size_t n = 0; n < 3; ++n) {
    const auto [unité, point] = n < points.size() ? points[n] : std::pair(0, 0);
    const std::string colonne = "[Point " + std::to_string(n + 1);
    sql += colonne + " - Unité]=" + std::to_string(unité) + ", " + colonne +
           " - Point]=" + std::to_string(point) + (n < 2 ? ", " : " WHERE [Index]=1");
  }
  return sql;
}

// What looks like a mistake and is none, in the demo first of all.
TEST(LesContrôles, LaissentCeQuiEstVoulu) {
  for (const std::string& sql : std::vector<std::string>{
           "",
           // The zero in the middle of a table, upwards and downwards, and a table that ends in it.
           Points({{-100, -65536}, {0, 0}, {100, 65536}}),
           Points({{100, -65536}, {0, 0}, {-100, 65536}}), Points({{100, 1000}, {50, 520}}),
           // One row is a line through the origin; no row leaves points.
           Points({{100, 1000}}), Points({}),
           // A row that the line through the others meets, wherever it stands.
           Points({{50, 32768}, {0, 0}, {100, 65536}}),
           // Thresholds of a sensor that has none.
           "UPDATE Capteur SET [Recouvrement - Seuil bas %]=5, [Recouvrement - Seuil haut %]=1 "
           "WHERE [Index]=1",
           // A column that is read by its name in whatever case.
           "ALTER TABLE [Liaison Chassis / Capteur] RENAME COLUMN Label TO label",
           // An on/off command: its logic outputs write, and may share a channel with it.
           "UPDATE Commande SET Canal=1403 WHERE [Index]=5",
           // Two frames may drive one channel, each in its time.
           "UPDATE Commande SET Canal=2100 WHERE [Index]=3;"
           "UPDATE [Liaison Chassis / Commande] SET Chassis=2 WHERE Commande=3"}) {
    EXPECT_EQ(host::EnJson(Vérifie(sql)), "[]") << sql;
  }
}

TEST(UnNomRapproché, PerdBlancsEtCapitales) {
  EXPECT_EQ(host::NomRapproché("  ÉTAT  de l'Arrêt×Œ "), "état de l'arrêt×Œ");
}

}  // namespace
}  // namespace zuma
