#include "core/collections.h"

#include <gtest/gtest.h>

#include "core/chassis.h"
#include "outils/temoins.h"

namespace zuma {
namespace {

template <class Travail>
int NuméroDe(Travail&& travail) {
  try {
    travail();
  } catch (const Echec& e) {
    return e.NuméroErreur();
  }
  return 0;
}

class LesCollections : public testing::Test, protected essai::Banc {};

TEST_F(LesCollections, GardentLOrdreEtDesClésUniquesSansCasse) {
  Capteurs capteurs(plateforme);
  capteurs.Add("Été");
  capteurs.Add("1");
  capteurs.Add("01");
  EXPECT_EQ(NuméroDe([&] { capteurs.Add("ÉTÉ"); }), 457);
  EXPECT_EQ(capteurs.Item("éTé")->Key(), "Été");
  EXPECT_FALSE(capteurs.ItemIndex(Valeur("éTé")));
  EXPECT_TRUE(capteurs.ItemIndex(Valeur(std::int32_t{1})));
  EXPECT_FALSE(capteurs.ItemIndex(Valeur(Nul{})));
  EXPECT_EQ(NuméroDe([&] { (void)capteurs.Item("absent"); }), 5);
  EXPECT_EQ(NuméroDe([&] { capteurs.Remove("absent"); }), 5);
  capteurs.Remove("1");
  std::string ordre;
  for (const CapteurRef& c : capteurs) ordre += c->Key() + ";";
  EXPECT_EQ(ordre, "Été;01;");
  EXPECT_EQ(capteurs.Count(), 2);
}

TEST_F(LesCollections, RangentUnObjetExistantSansToucherSaClé) {
  Capteurs source(plateforme);
  Capteurs fils(plateforme);
  const CapteurRef force = source.Add("12");
  EXPECT_TRUE(fils.Référence(force, "1") == force);
  EXPECT_TRUE(fils.Add("2", force) == force);
  EXPECT_EQ(fils.Item("1")->Key(), "12");
  // Without key: enumerated, not found.
  fils.Add("", source.Add("13"));
  EXPECT_EQ(fils.Count(), 3);
  EXPECT_EQ(NuméroDe([&] { (void)fils.Item(""); }), 5);
}

TEST_F(LesCollections, TraitentLaCléNulleEtLesEchecsChacuneASaFaçon) {
  Capteurs capteurs(plateforme);
  Cartes cartes(plateforme);
  Canals canaux(plateforme);
  EntréeLogiques entrées(plateforme);
  SortieLogiques sorties(plateforme);
  EXPECT_FALSE(capteurs.Item(std::nullopt));
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
  sorties.Add("");
  sorties.Add("");
  EXPECT_EQ(sorties.Count(), 2);
}

}  // namespace
}  // namespace zuma
