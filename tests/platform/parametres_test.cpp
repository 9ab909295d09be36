#include "platform/linux/parametres.h"

#include <gtest/gtest.h>

namespace zuma::linux_ {
namespace {

struct Ecoute {
  Ref<Parametre> p = Crée<Parametre>("1", "Diamètre", "16");
  std::string entendu;
  int Abonne(char nom) {
    return p->Abonne([this, nom] { entendu += nom + p->ValeurParamètre() + " "; });
  }
};

TEST(Parametre, AvertitDansLOrdreEtSeulementDUnChangement) {
  Ecoute e;
  e.Abonne('a');
  const int b = e.Abonne('b');
  e.Abonne('c');
  e.p->ValeurParamètre("20");
  e.p->ValeurParamètre("20");
  EXPECT_EQ(e.entendu, "a20 b20 c20 ");
  e.p->Désabonne(b);
  e.p->Désabonne(b);
  e.p->ValeurParamètre("21");
  EXPECT_EQ(e.entendu, "a20 b20 c20 a21 c21 ");
}

TEST(Parametre, ChacunFinitParEntendreCeQuUnAutreARécrit) {
  Ecoute e;
  e.Abonne('a');
  e.p->Abonne([&] { e.p->ValeurParamètre("corrigé"); });
  e.Abonne('c');
  e.p->ValeurParamètre("brut");
  EXPECT_EQ(e.entendu, "abrut ccorrigé acorrigé ccorrigé ");
}

TEST(Parametre, DeuxParamètresQuiSEcriventSeRèglent) {
  const auto largeur = Crée<Parametre>("1", "B", "");
  const auto section = Crée<Parametre>("2", "S", "");
  largeur->Abonne([&] { section->ValeurParamètre(largeur->ValeurParamètre() + "²"); });
  section->Abonne([&] { largeur->ValeurParamètre("40"); });
  largeur->ValeurParamètre("30");
  EXPECT_EQ(largeur->ValeurParamètre(), "40");
  EXPECT_EQ(section->ValeurParamètre(), "40²");
}

TEST(Parametre, UneSuiteSansFinEchoueEtLaisseLeParamètreUtilisable) {
  const auto p = Crée<Parametre>("1", "P", "");
  const int fou = p->Abonne([&] { p->ValeurParamètre(p->ValeurParamètre() + "x"); });
  EXPECT_THROW(p->ValeurParamètre("x"), Echec);
  p->Désabonne(fou);
  int fois = 0;
  p->Abonne([&] { ++fois; });
  p->ValeurParamètre("calme");
  EXPECT_EQ(fois, 1);
}

TEST(Parametre, LesAbonnésVontEtViennentPendantLAvis) {
  Ecoute e;
  int soi = 0;
  int suivant = 0;
  soi = e.p->Abonne([&] {
    // Captures live in the handler that takes itself out: they must outlast the call.
    e.p->Désabonne(soi);
    e.p->Désabonne(suivant);
    e.Abonne('n');
    e.entendu += "soi ";
  });
  suivant = e.Abonne('s');
  e.Abonne('z');
  e.p->ValeurParamètre("1");
  EXPECT_EQ(e.entendu, "soi z1 ");
  e.p->ValeurParamètre("2");
  EXPECT_EQ(e.entendu, "soi z1 z2 n2 ");
}

TEST(Parametre, UnAbonnéQuiEchoueNePrivePasLesAutres) {
  Ecoute e;
  e.p->Abonne([] { throw Echec(Numéro::TypeIncompatible); });
  e.Abonne('b');
  EXPECT_THROW(e.p->ValeurParamètre("1"), Echec);
  EXPECT_EQ(e.entendu, "b1 ");
  EXPECT_EQ(e.p->ValeurParamètre(), "1");
}

TEST(Parametre, UnAbonnéPeutLâcherLaDernièreRéférence) {
  auto p = Crée<Parametre>("1", "P", "");
  int fois = 0;
  p->Abonne([&] {
    p = nullptr;
    ++fois;
  });
  p->Abonne([&] { ++fois; });
  p.Brut()->ValeurParamètre("1");
  EXPECT_EQ(fois, 2);
}

TEST(Parametres, SeTrouventParLeurIndex) {
  Parametres tous;
  tous.Ajoute(12, "16");
  const ParamètresRef lien = tous.Collection();
  tous.Ajoute(3, "1", "Laser");
  tous.Ajoute(12, "20");
  ASSERT_EQ(lien->size(), 2U);
  EXPECT_EQ(lien->at(0)->Key(), "12");
  EXPECT_EQ(lien->at(0)->NomParamètre(), "12");
  EXPECT_EQ(lien->at(0)->ValeurParamètre(), "20");
  EXPECT_EQ(lien->at(1)->Key(), "3");
  EXPECT_EQ(lien->at(1)->NomParamètre(), "Laser");
  EXPECT_FALSE(tous.Cherche(4));
}

}  // namespace
}  // namespace zuma::linux_
