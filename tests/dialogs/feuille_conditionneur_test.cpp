// The maintenance form of the digital conditioners, without a window.
#include <optional>

#include <gtest/gtest.h>

#include "dialogs/feuille_conditionneur_numerique.h"
#include "instruments/conditionneur_num_k9.h"
#include "instruments/conditionneur_num_k9_v1_00.h"
#include "outils/temoins.h"
#include "platform/linux/traducteur.h"
#include "sim/conditionneur_simule.h"
#include "sim/liaisons_simulees.h"

namespace zuma {
namespace {

using Feuille = FeuilleConditionneurNumerique;

class FenêtresTémoins : public Fenêtres {
 public:
  void MontreModal(ChoixDuPort&) override {}
  void Montre(Feuille& quelle, FenêtreHôte*) override { montrée = &quelle; }
  Feuille* FeuilleDuConditionneur() override { return feuille ? &*feuille : nullptr; }
  void TraiteLesEvénements() override {}

  std::optional<Feuille> feuille;
  Feuille* montrée = nullptr;
};

class UneFeuille : public testing::Test, public essai::Banc {
 public:
  UneFeuille() {
    plateforme.fenêtres = &fenêtres;
    module->valeurs = {1, -2, 3};
  }
  Feuille& LaFeuille() { return *fenêtres.feuille; }
  template <class C>
  void Démarre(C& conditionneur) {
    conditionneur.TimerExact(horloge);
    const Ref<PortInstrument> port = fabrique.CréePort();
    port->ConfigurePort("3,9600,N,8,1", true);
    (void)conditionneur.Initialise(port, 9);
    for (int i = 0; i < 100; ++i) {
      conditionneur.Refresh();
      horloge->Avance(2000);
    }
  }

  Ref<sim::HorlogeVirtuelle> horloge = Crée<sim::HorlogeVirtuelle>(100);
  sim::FabriqueLiaisonsSimulée fabrique;
  Ref<sim::ConditionneurSimulé> module = Crée<sim::ConditionneurSimulé>(*horloge, std::uint8_t{9});
  sim::LigneSérie& ligne = fabrique.Attache(3, module);
  FenêtresTémoins fenêtres;
  const Feuille::Affichage& vue = fenêtres.feuille.emplace(Crée<linux_::Traducteur>()).LAffichage();
  FenêtreHôte mère;
};

TEST_F(UneFeuille, MontreLUneEtLAutreClasse) {
  ClassConditionneurNum_K9 ancien(plateforme);
  ancien.Reglage(&mère);
  EXPECT_EQ(fenêtres.montrée->Mère(), &mère);
  EXPECT_EQ(vue.com, "COM not found!");
  for (std::size_t i = 0; i < Feuille::kNombreDElements; ++i) {
    const std::string& texte = LaFeuille().Texte(static_cast<Feuille::Element>(i));
    EXPECT_FALSE(texte.empty() || texte.starts_with("Texte ")) << "every key has its words";
  }
  Démarre(ancien);
  ancien.LiaisonSerie()->PortOuvert(false);
  LaFeuille().BtnRetryConnection();
  EXPECT_TRUE(ancien.LiaisonSerie()->PortOuvert());
  LaFeuille().Timer();
  EXPECT_EQ(vue.lampe, Feuille::Lampe::Verte);
  EXPECT_EQ(vue.valeurs, (std::array<std::string, 3>{"1", "-2", "3"}));
  {
    ClassConditionneurNum_K9_V1_00 récent(plateforme);
    récent.Reglage(nullptr);
    ligne.pannes.parasitée = true;
    Démarre(récent);
    LaFeuille().Timer();
    EXPECT_EQ(vue.lampe, Feuille::Lampe::Rouge);
    EXPECT_EQ(vue.drapeaux[3].nom, "ErreurCRC");
    EXPECT_TRUE(vue.drapeaux[3].levé && !vue.drapeaux[2].levé);
    EXPECT_TRUE(LaFeuille().Chargée());
  }
  EXPECT_FALSE(LaFeuille().Chargée()) << "the object that it showed is gone";
  LaFeuille().BtnRetryConnection();
  ancien.Reglage(&mère);
  EXPECT_TRUE(LaFeuille().Chargée());
  LaFeuille().BtnQuitter();
  EXPECT_FALSE(LaFeuille().Chargée());
  ancien.Reglage(&mère);
  fenêtres.feuille.reset();  // before the object that it shows
}

TEST_F(UneFeuille, NommeLesRéglagesDuPort) {
  ClassConditionneurNum_K9 conditionneur(plateforme);
  const Ref<PortInstrument> port = fabrique.CréePort();
  conditionneur.LiaisonSerie(port);
  conditionneur.Reglage(nullptr);
  const std::pair<const char*, const char*> cas[] = {
      {"12,110,S,5,1", "COM:12 Baudrate:110 Parity:0 Data:5 Stop bit:1"},
      {"12,921600,O,8,1.5", "COM:12 Baudrate:921600 Parity:Odd Data:8 Stop bit:1.5"},
      {"12,1953125,M,7,2", "COM:12 Baudrate:1953125 Parity:1 Data:7 Stop bit:2"},
      {"12,9601,E,8,1", "COM:12 Baudrate:???? Parity:Even Data:8 Stop bit:1"},
      {"12,9600,N,8,1", "COM:12 Baudrate:9600 Parity:No Data:8 Stop bit:1"},
  };
  for (const auto& [réglages, texte] : cas) {
    port->ConfigurePort(réglages, false);
    LaFeuille().Timer();
    EXPECT_EQ(vue.com, texte);
  }
}

}  // namespace
}  // namespace zuma
