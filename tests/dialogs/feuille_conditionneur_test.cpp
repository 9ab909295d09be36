// The maintenance form of the digital conditioners, without a window.
#include <optional>

#include <gtest/gtest.h>

#include "dialogs/feuille_conditionneur_numerique.h"
#include "instruments/conditionneur_num_k9.h"
#include "instruments/conditionneur_num_k9_v1_00.h"
#include "instruments/instrument.h"
#include "outils/banc_instrument.h"
#include "platform/linux/traducteur.h"
#include "sim/conditionneur_simule.h"

namespace zuma::essai {
namespace {

using Feuille = FeuilleConditionneurNumerique;

class FenêtresTémoins : public FenêtresDEssai {
 public:
  Feuille* FeuilleDuConditionneur() override { return feuille ? &*feuille : nullptr; }
  std::optional<Feuille> feuille{Crée<linux_::Traducteur>()};
};

class UneFeuille : public testing::Test, public BancInstrument {
 public:
  UneFeuille() { plateforme.fenêtres = &témoin; }
  // The conditioner of a board that has started and been refreshed, on the form.
  template <class C>
  void Montre(const char* driver) {
    carte.Adresse(9);
    Démarre(driver, "3,9600,N,8,1");
    Passe(0.2);
    instruments::De<C>(carte).Reglage(&mère);
  }

  Ref<sim::ConditionneurSimulé> module = Crée<sim::ConditionneurSimulé>(*horloge, std::uint8_t{9});
  sim::LigneSérie& prise = liaisons.Attache(3, module);
  FenêtresTémoins témoin;
  const Feuille& feuille = *témoin.feuille;
  const Feuille::Affichage& vue = feuille.LAffichage();
  FenêtreHôte mère;
};

TEST_F(UneFeuille, MontreLUneEtLAutreClasse) {
  module->valeurs = {1, -2, 3};
  Montre<ClassConditionneurNum_K9>("Conditionneur numerique K9");
  EXPECT_EQ(feuille.Mère(), &mère);
  for (std::size_t i = 0; i < Feuille::kNombreDElements; ++i) {
    const std::string& texte = feuille.Texte(static_cast<Feuille::Element>(i));
    EXPECT_FALSE(texte.empty() || texte.starts_with("Texte ")) << "every key has its words";
  }
  EXPECT_EQ(vue.lampe, Feuille::Lampe::Verte);
  EXPECT_EQ(vue.valeurs, (std::array<std::string, 3>{"1", "-2", "3"}));

  module->valeurs = {4, 5, 6};
  Montre<ClassConditionneurNum_K9_V1_00>("Conditionneur numerique K9 V1.00");
  EXPECT_EQ(vue.valeurs, (std::array<std::string, 3>{"4", "5", "6"}));
  horloge->Avance(100'000);  // the module has said its say
  prise.pannes.parasitée = true;
  carte.Initialise();
  EXPECT_FALSE(feuille.Chargée()) << "the object that it showed is gone";
  témoin.feuille->BtnRetryConnection();
  instruments::De<ClassConditionneurNum_K9_V1_00>(carte).Reglage(nullptr);
  EXPECT_EQ(vue.lampe, Feuille::Lampe::Rouge);
  EXPECT_EQ(vue.drapeaux[3].nom, "ErreurCRC");
  EXPECT_TRUE(vue.drapeaux[3].levé && !vue.drapeaux[2].levé);
  carte.LiaisonSerie2()->PortOuvert(false);
  témoin.feuille->BtnRetryConnection();
  EXPECT_TRUE(carte.LiaisonSerie2()->PortOuvert());
  EXPECT_TRUE(feuille.Chargée());
  témoin.feuille.reset();  // before the object that it shows
}

TEST_F(UneFeuille, NommeLesRéglagesDuPort) {
  ClassConditionneurNum_K9 conditionneur(plateforme);
  conditionneur.Reglage(nullptr);
  EXPECT_EQ(vue.com, "COM not found!");
  const Ref<PortInstrument> port = liaisons.CréePort();
  conditionneur.LiaisonSerie(port);
  const std::pair<const char*, const char*> cas[] = {
      {"12,110,S,5,1", "COM:12 Baudrate:110 Parity:0 Data:5 Stop bit:1"},
      {"12,921600,O,8,1.5", "COM:12 Baudrate:921600 Parity:Odd Data:8 Stop bit:1.5"},
      {"12,1953125,M,7,2", "COM:12 Baudrate:1953125 Parity:1 Data:7 Stop bit:2"},
      {"12,9601,E,8,1", "COM:12 Baudrate:???? Parity:Even Data:8 Stop bit:1"},
  };
  for (const auto& [réglages, texte] : cas) {
    port->ConfigurePort(réglages, false);
    témoin.feuille->Timer();
    EXPECT_EQ(vue.com, texte);
  }
  témoin.feuille->BtnQuitter();
  EXPECT_FALSE(feuille.Chargée());
}

}  // namespace
}  // namespace zuma::essai
