// A logic output down to the lines of its board.
#include "logic/sortie_logique.h"

#include <gtest/gtest.h>

#include "outils/banc_logique.h"

namespace zuma {
namespace {

using essai::Avec;
using essai::Ligne;
using essai::Nombre;
using essai::Texte;
using enum ENUM_ETAT_LOGIQUE;

constexpr std::int32_t kCanal = 13;
constexpr std::uint32_t kMasque = 1U << 3;

Ligne LigneDeSortie(int activation = 1) {
  return {{"Index", Nombre(21)},
          {"Nom de la Sortie Logique", Texte("Moteur")},
          {"Etat d'Activation", Nombre(activation)},
          {"Canal", Nombre(kCanal)}};
}

class UneSortieLogique : public testing::Test, protected essai::BancLogique {
 protected:
  bool Ligne3() const { return (Lignes() & kMasque) != 0; }
};

TEST_F(UneSortieLogique, EcritSonNiveauSurLaCarteAussitôt) {
  const struct {
    int activation;
    ENUM_ETAT_LOGIQUE état;
    double niveau;
  } cas[] = {{1, Actif, -1}, {1, Inactif, 0}, {0, Actif, 0}, {0, Inactif, -1}};
  for (const auto& c : cas) {
    const auto sortie = Prêt<SortieLogique>(LigneDeSortie(c.activation));
    Ecritures();
    sortie->ValeurCourante(c.état);
    EXPECT_EQ(sortie->Canal()->ValeurCanal(), c.niveau);
    EXPECT_EQ(Ligne3(), c.niveau != 0);
    EXPECT_GT(Ecritures(), 0U);
    sortie->ValeurCourante(Inconnu);
    EXPECT_EQ(sortie->ValeurCourante(), Inconnu);
    sortie->MetàJour();
    EXPECT_EQ(sortie->Canal()->ValeurCanal(), c.niveau) << "an unknown state drives nothing";
  }
  EXPECT_TRUE(registre->entrées.empty());
}

TEST_F(UneSortieLogique, AuReposExciteUneSortieNormalementFermée) {
  const auto sortie = Prêt<SortieLogique>(LigneDeSortie(0));
  EXPECT_EQ(sortie->Key(), "21");
  sortie->Canal()->ValeurCanal(0);
  sortie->Initialise();
  EXPECT_EQ(sortie->Canal()->ValeurCanal(), 0) << "the start leaves the channel alone";
  Ecritures();
  sortie->MetàJour();
  EXPECT_EQ(sortie->Canal()->ValeurCanal(), -1);
  EXPECT_EQ(Ecritures(), 0U) << "the block carries it out, later";
}

TEST_F(UneSortieLogique, EstMiseAuReposParLArrêtQuiRafraîchitLesCartes) {
  const auto sortie = Prêt<SortieLogique>(LigneDeSortie());
  chassis.SortiesLogiques()->Référence(sortie, "21");
  sortie->ValeurCourante(Actif);
  Ecritures();
  sortie->DéclencheAU();
  EXPECT_EQ(sortie->ValeurCourante(), Inactif);
  EXPECT_EQ(Ecritures(), 0U);
  EXPECT_TRUE(Ligne3());
  sortie->ValeurCourante(Actif);
  chassis.DéclencheAU();
  EXPECT_FALSE(Ligne3()) << "within the call";
}

TEST_F(UneSortieLogique, SansCanalAccepteToutEtNeFaitRien) {
  const struct {
    Valeur canal;
    const char* message;
  } cas[] = {
      {Valeur(Nul{}), nullptr},
      {Nombre(0), nullptr},
      {Nombre(99),
       "Attention : La sortie logique 'Moteur' utilise un canal d'index '99' qui n'a pas été "
       "trouvé."},
  };
  for (const auto& c : cas) {
    messages.textes.clear();
    const auto sortie = Prêt<SortieLogique>(Avec(LigneDeSortie(), "Canal", c.canal));
    sortie->ValeurCourante(Actif);
    EXPECT_EQ(sortie->ValeurCourante(), Inactif);
    sortie->MetàJour();
    sortie->DéclencheAU();
    EXPECT_EQ(messages.textes.size(), c.message == nullptr ? 0U : 1U);
    if (c.message != nullptr) {
      EXPECT_EQ(messages.textes[0], c.message);
    }
  }
  EXPECT_TRUE(registre->entrées.empty());
}

TEST_F(UneSortieLogique, LaisseLeursCyclesAuxLiaisonsModbus) {
  for (const char* driver : {"DrvModBus", "Drv_UMV4301_Modbus"}) {
    // Any exchange would fail: this block has no board and no line.
    const FonctionRef bloc = Crée<Fonction>(plateforme);
    bloc->ChargeErreur(registre);
    const CanalRef sienne = CanalDe(kCanal);
    Fonction* const avant = sienne->Parent();
    bloc->ParamètresDepuisBD(essai::UneLigne({{"Driver", Texte(driver)}}));
    const auto sortie = Prêt<SortieLogique>(LigneDeSortie());
    sienne->Parent(bloc.Brut());
    sortie->ValeurCourante(Actif);
    EXPECT_EQ(sienne->ValeurCanal(), -1);
    EXPECT_TRUE(registre->entrées.empty()) << driver;
    sienne->Parent(nullptr);
    sortie->ValeurCourante(Inactif);
    EXPECT_EQ(sienne->ValeurCanal(), 0) << "written before the flush is found impossible";
    EXPECT_TRUE(registre->Contient("Erreur N°91 "));
    registre->entrées.clear();
    sienne->Parent(avant);
  }
}

}  // namespace
}  // namespace zuma
