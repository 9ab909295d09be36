#include "core/collections.h"

#include <gtest/gtest.h>

#include "core/chassis.h"
#include "outils/numero.h"
#include "outils/temoins.h"

namespace zuma {
namespace {

using essai::NuméroDe;

class LesCollections : public testing::Test, protected essai::Banc {};

TEST_F(LesCollections, GardentLOrdreEtDesClésUniquesSansCasse) {
  Capteurs capteurs(plateforme);
  for (const char* clé : {"Été", "1", "01"}) capteurs.Add(clé);
  EXPECT_EQ(NuméroDe([&] { capteurs.Add("ÉTÉ"); }), 457);
  EXPECT_EQ(capteurs.Item("éTé")->Key(), "Été");
  EXPECT_FALSE(capteurs.ItemIndex("éTé"));
  EXPECT_TRUE(capteurs.ItemIndex(1));
  EXPECT_FALSE(capteurs.ItemIndex(Nul{}));
  EXPECT_EQ(NuméroDe([&] { capteurs.Remove("absent"); }), 5);
  capteurs.Remove("1");
  EXPECT_EQ(NuméroDe([&] { (void)capteurs.Item("1"); }), 5);
  std::string ordre;
  for (const CapteurRef& c : capteurs) ordre += c->Key() + ";";
  EXPECT_EQ(ordre, "Été;01;");
  // An object of another collection keeps its key; without key it is enumerated, and not found.
  Capteurs fils(plateforme);
  EXPECT_EQ(fils.Référence(capteurs.Item("01"), "1"), capteurs.Item("01"));
  EXPECT_EQ(fils.Item("1")->Key(), "01");
  fils.Add("", capteurs.Item("été"));
  EXPECT_EQ(fils.Count(), 2);
  EXPECT_EQ(NuméroDe([&] { (void)fils.Item(""); }), 5);
  std::string demandés;
  fils.RetireSi([&](const CapteurRef& c) {
    demandés += c->Key() + ";";
    return c->Key() == "01";
  });
  EXPECT_EQ(demandés, "01;Été;");
  EXPECT_EQ(NuméroDe([&] { (void)fils.Item("1"); }), 5);
  ASSERT_EQ(fils.Count(), 1);
  EXPECT_EQ((*fils.begin())->Key(), "Été");
}

TEST_F(LesCollections, TraitentLaCléNulleEtLesEchecsChacuneASaFaçon) {
  Cartes cartes(plateforme);
  Canals canaux(plateforme);
  EntréeLogiques entrées(plateforme);
  SortieLogiques sorties(plateforme);
  EXPECT_FALSE(Capteurs(plateforme).Item(std::nullopt));
  EXPECT_FALSE(sorties.Item(std::nullopt));
  EXPECT_EQ(NuméroDe([&] { (void)cartes.Item(std::nullopt); }), 5);
  // Everything caught: an empty result, nothing raised, nothing stored.
  EXPECT_FALSE(canaux.Item("9"));
  canaux.Add("1");
  EXPECT_FALSE(canaux.Add("1"));
  canaux.Remove("9");
  EXPECT_EQ(canaux.Count(), 1);
  // Only `Item` caught.
  EXPECT_FALSE(entrées.Item("9"));
  EXPECT_EQ(NuméroDe([&] { entrées.Remove("9"); }), 5);
  // Always with key on boards: the empty key is a key like another.
  cartes.Add("");
  EXPECT_EQ(NuméroDe([&] { cartes.Add(""); }), 457);
  for (int i = 0; i < 2; ++i) sorties.Add("");
  EXPECT_EQ(sorties.Count(), 2);
}

}  // namespace
}  // namespace zuma
