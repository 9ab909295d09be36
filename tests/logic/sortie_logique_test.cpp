// A logic output down to the lines of its board.
#include <gtest/gtest.h>

#include "outils/banc_logique.h"
#include "outils/cas.h"

namespace zuma::essai {
namespace {

using enum ENUM_ETAT_LOGIQUE;

constexpr std::int32_t kCanal = 13;

Ligne LigneDeSortie(int activation = 1, const Valeur& canal = kCanal) {
  return {{"Index", 21},
          {"Nom de la Sortie Logique", "Moteur"},
          {"Etat d'Activation", activation},
          {"Canal", canal}};
}

class UneSortieLogique : public testing::Test, protected BancLogique {
 protected:
  bool Ligne3() const { return (Lignes() & (1U << 3)) != 0; }
};

TEST_F(UneSortieLogique, EcritSonNiveauSurLaCarteAussitôt) {
  for (const auto& [activation, état, niveau] : Cas<int, ENUM_ETAT_LOGIQUE, double>{
           {1, Actif, -1}, {1, Inactif, 0}, {0, Actif, 0}, {0, Inactif, -1}}) {
    const auto sortie = Prêt<SortieLogique>(LigneDeSortie(activation));
    Ecritures();
    sortie->ValeurCourante(état);
    EXPECT_EQ(Ligne3(), niveau != 0);
    EXPECT_GT(Ecritures(), 0U);
    sortie->ValeurCourante(Inconnu);
    EXPECT_EQ(sortie->ValeurCourante(), Inconnu);
    sortie->MetàJour();
    EXPECT_EQ(sortie->Canal()->ValeurCanal(), niveau) << "an unknown state drives nothing";
  }
  EXPECT_TRUE(registre->entrées.empty());
}

TEST_F(UneSortieLogique, EstMiseAuReposParLArrêtQuiRafraîchitLesCartes) {
  const auto sortie = Prêt<SortieLogique>(LigneDeSortie());
  chassis.SortiesLogiques()->Référence(sortie, sortie->Key());
  sortie->ValeurCourante(Actif);
  Ecritures();
  sortie->DéclencheAU();
  EXPECT_EQ(sortie->ValeurCourante(), Inactif);
  EXPECT_EQ(Ecritures(), 0U);
  EXPECT_TRUE(Ligne3());
  sortie->ValeurCourante(Actif);
  chassis.DéclencheAU();
  EXPECT_FALSE(Ligne3()) << "within the call";
  // At rest a normally closed output is energised.
  const auto fermée = Prêt<SortieLogique>(LigneDeSortie(0));
  EXPECT_EQ(fermée->Canal()->ValeurCanal(), 0) << "the start leaves the channel alone";
  Ecritures();
  fermée->MetàJour();
  EXPECT_EQ(fermée->Canal()->ValeurCanal(), -1);
  EXPECT_EQ(Ecritures(), 0U) << "the block carries it out, later";
}

TEST_F(UneSortieLogique, SansCanalAccepteToutEtNeFaitRien) {
  for (const Valeur& index : {Valeur(Nul{}), Valeur(0), Valeur(99)}) {
    EXPECT_TRUE(messages.textes.empty());
    const auto sortie = Prêt<SortieLogique>(LigneDeSortie(1, index));
    sortie->ValeurCourante(Actif);
    EXPECT_EQ(sortie->ValeurCourante(), Inactif);
    sortie->MetàJour();
    sortie->DéclencheAU();
  }
  EXPECT_EQ(messages.textes, std::vector<std::string>{"Attention : La sortie logique 'Moteur' "
                                                      "utilise un canal d'index '99' qui n'a pas "
                                                      "été trouvé."});
  EXPECT_TRUE(registre->entrées.empty());
}

TEST_F(UneSortieLogique, LaisseSonCycleALaLiaisonModbus) {
  // Any exchange would fail: this block has no board and no line.
  const FonctionRef bloc = Crée<Fonction>(plateforme);
  bloc->ChargeErreur(registre);
  bloc->ParamètresDepuisBD(UneLigne({{"Driver", "DrvModBus"}}));
  const auto sortie = Prêt<SortieLogique>(LigneDeSortie());
  sortie->Canal()->Parent(bloc.Brut());
  sortie->ValeurCourante(Actif);
  EXPECT_EQ(sortie->Canal()->ValeurCanal(), -1);
  EXPECT_TRUE(registre->entrées.empty());
  sortie->Canal()->Parent(nullptr);
  sortie->ValeurCourante(Inactif);
  EXPECT_EQ(sortie->Canal()->ValeurCanal(), 0) << "written before the flush is found impossible";
  EXPECT_TRUE(Dit("Erreur N°91 "));
}

}  // namespace
}  // namespace zuma::essai
