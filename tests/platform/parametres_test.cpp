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
  for (const char* valeur : {"20", "20"}) e.p->ValeurParamètre(valeur);
  for (int i = 0; i < 2; ++i) e.p->Désabonne(b);
  e.p->ValeurParamètre("21");
  EXPECT_EQ(e.entendu, "a20 b20 a21 ");
}

TEST(Parametre, ChacunFinitParEntendreCeQuUnAutreARécrit) {
  Ecoute e;
  e.Abonne('a');
  e.p->Abonne([&] { e.p->ValeurParamètre("corrigé"); });
  e.Abonne('c');
  e.p->ValeurParamètre("brut");
  EXPECT_EQ(e.entendu, "abrut ccorrigé acorrigé ccorrigé ");

  const auto largeur = Crée<Parametre>("1", "B", "");
  const auto section = Crée<Parametre>("2", "S", "");
  largeur->Abonne([&] { section->ValeurParamètre(largeur->ValeurParamètre() + "²"); });
  section->Abonne([&] { largeur->ValeurParamètre("40"); });
  largeur->ValeurParamètre("30");
  EXPECT_EQ(largeur->ValeurParamètre() + section->ValeurParamètre(), "4040²");
}

TEST(Parametre, UneSuiteSansFinEchoueEtLaisseLeParamètreUtilisable) {
  Ecoute e;
  const int fou = e.p->Abonne([&] { e.p->ValeurParamètre(e.p->ValeurParamètre() + "x"); });
  EXPECT_THROW(e.p->ValeurParamètre("x"), Echec);
  e.p->Désabonne(fou);
  e.Abonne('a');
  e.p->ValeurParamètre("calme");
  EXPECT_EQ(e.entendu, "acalme ");
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
  for (const char* valeur : {"1", "2"}) e.p->ValeurParamètre(valeur);
  EXPECT_EQ(e.entendu, "soi z1 z2 n2 ");
}

TEST(Parametre, UnAbonnéPeutEchouerOuLâcherLaDernièreRéférence) {
  Ecoute e;
  e.p->Abonne([] { throw Echec(Numéro::TypeIncompatible); });
  e.Abonne('b');
  EXPECT_THROW(e.p->ValeurParamètre("1"), Echec);
  EXPECT_EQ(e.entendu, "b1 ");

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
  std::string lus;
  for (const auto& p : *lien) lus += p->Key() + p->NomParamètre() + p->ValeurParamètre() + " ";
  EXPECT_EQ(lus, "121220 3Laser1 ");
  EXPECT_FALSE(tous.Cherche(4));
}

}  // namespace
}  // namespace zuma::linux_
