#include "platform/linux/traducteur.h"

#include <gtest/gtest.h>

#include "outils/dossier_provisoire.h"
#include "platform/linux/utf8.h"

namespace zuma::linux_ {
namespace {

TEST(UTF8, ReconnaîtLesSéquencesBienFormées) {
  EXPECT_TRUE(EstUTF8("") && EstUTF8("a é € 𝄞"));
  // Continuation alone, cut short, overlong twice, surrogate, past U+10FFFF, Latin-1.
  for (const char* mauvais : {"\x80", "\xC3", "\xC0\xAF", "\xE0\x9F\xBF", "\xED\xA0\x80",
                              "\xF4\x90\x80\x80", "\xE9t\xE9"}) {
    EXPECT_FALSE(EstUTF8(mauvais)) << mauvais;
  }
}

TEST(Traducteur, LaTableIncluseEstSaineEtComplète) {
  Traducteur traducteur;
  EXPECT_EQ(traducteur.Langues(), (std::vector<std::string>{"Français", "English"}));
  EXPECT_EQ(traducteur.LangueCourante(), "Français");
  const auto problèmes = traducteur.AjouteTable(TraductionsIncluses());
  for (const auto& p : problèmes) ADD_FAILURE() << p.ligne << " : " << p.texte;

  // A text missing in one language shows as an empty cell.
  for (const std::string_view ligne : Découpe(TraductionsIncluses(), '\n')) {
    if (ligne.starts_with('#')) continue;
    EXPECT_EQ(ligne.find("\t\t"), std::string_view::npos) << ligne;
    EXPECT_FALSE(ligne.ends_with('\t')) << ligne;
  }
}

TEST(Traducteur, RetombeSurLeDéfautPuisSurLaClé) {
  Traducteur t;
  ASSERT_TRUE(t.AjouteTable("clé\tsection\tFrançais\tDeutsch\nVitesse\tZuma\t\tTempo\n").empty());
  EXPECT_EQ(t.Traduit("Vitesse", "par défaut", "Zuma"), "par défaut") << "empty cell";
  for (const char* clé : {"Vitesse", "inconnue"}) EXPECT_EQ(t.Traduit(clé, "", "Zuma"), clé);
  EXPECT_EQ(t.Traduit("Traction", "", "Autre"), "Traction");
  t.LangueCourante("Deutsch");
  EXPECT_EQ(t.Traduit("Vitesse", "", "Zuma"), "Tempo");
  EXPECT_EQ(t.Traduit("Flexion", "d", "Zuma"), "d") << "known before this language was";
  EXPECT_THROW(t.LangueCourante("Klingon"), Echec);
  EXPECT_EQ(t.LangueCourante(), "Deutsch");
}

TEST(Traducteur, DitLesLignesAbîméesEtPrendLesAutres) {
  Traducteur t;
  const auto problèmes = t.AjouteTable(
      "\xEF\xBB\xBF# commentaire\r\n"
      "clé\tsection\tEnglish\r\n"
      "bonne\tZuma\t a\\tb\\\\c\\n\r\n"
      "courte\tZuma\r\n"
      "longue\tZuma\tx\ty\r\n"
      "\tZuma\tsans clé\r\n"
      "latin\tZuma\t\xE9\r\n"
      "bonne\tZuma\tbis\r\n"
      "code\tZuma\t\\x\r\n"
      "\r\n"
      "fin\tZuma\tend");
  std::vector<std::size_t> lignes;
  for (const auto& p : problèmes) lignes.push_back(p.ligne);
  EXPECT_EQ(lignes, (std::vector<std::size_t>{4, 5, 6, 7, 8, 9}));
  t.LangueCourante("English");
  EXPECT_EQ(t.Traduit("bonne", "", "Zuma"), " a\tb\\c\n");
  EXPECT_EQ(t.Traduit("fin", "", "Zuma"), "end");
}

TEST(Traducteur, RefuseUneTableSansEnTêteValable) {
  for (const char* table : {"", "clé\tsection\nx\tZuma\n", "clé\tsection\tA\tA\n",
                            "clé\tsection\tA\t\n", "\xE9\tsection\tA\n"}) {
    Traducteur t;
    EXPECT_EQ(t.AjouteTable(table).size(), 1U) << table;
    EXPECT_EQ(t.Traduit("Flexion", "", "Zuma"), "Flexion");
    EXPECT_EQ(t.Langues().size(), 2U);
  }
  const essai::DossierProvisoire dossier;
  Traducteur t;
  EXPECT_EQ(t.AjouteFichier(dossier.Chemin() / "absent.tsv").size(), 1U);
  EXPECT_EQ(t.AjouteFichier(dossier.Chemin()).size(), 1U);
  std::ofstream(dossier.Chemin() / "t.tsv") << "clé\tsection\tFrançais\nOK\tZuma\tD'accord\n";
  EXPECT_TRUE(t.AjouteFichier(dossier.Chemin() / "t.tsv").empty());
  EXPECT_EQ(t.Traduit("OK", "", "Zuma"), "D'accord");
}

}  // namespace
}  // namespace zuma::linux_
