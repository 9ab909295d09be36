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
using Element = Feuille::Element;

class FenêtresTémoins : public Fenêtres {
 public:
  void MontreModal(ChoixDuPort&) override {}
  void Montre(Feuille& quelle, FenêtreHôte* mère) override {
    montrée = &quelle;
    sous = mère;
  }
  Feuille* FeuilleDuConditionneur() override { return feuille ? &*feuille : nullptr; }
  void TraiteLesEvénements() override {}

  std::optional<Feuille> feuille;
  Feuille* montrée = nullptr;
  FenêtreHôte* sous = nullptr;
};

// A port whose settings no real one has.
class PortBavard : public sim::PortSimulé {
 public:
  explicit PortBavard(sim::Lignes& lignes) : PortSimulé(lignes) {}
  [[nodiscard]] std::int32_t NuméroPort() const override { return 12; }
  [[nodiscard]] std::int32_t Vitesse() const override { return vitesse; }
  [[nodiscard]] std::string Parité() const override { return parité; }
  [[nodiscard]] std::int32_t BitsDonnées() const override { return bits; }
  [[nodiscard]] std::string BitsArrêt() const override { return stop; }
  std::int32_t vitesse = 9600;
  std::string parité, stop;
  std::int32_t bits = 8;
};

class UneFeuille : public testing::Test, public essai::Banc {
 public:
  UneFeuille() {
    plateforme.fenêtres = &fenêtres;
    fenêtres.feuille.emplace(Ref<ZED_Traduction>());
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
  FenêtreHôte mère;
};

TEST_F(UneFeuille, MontreLUneEtLAutreClasse) {
  ClassConditionneurNum_K9 ancien(plateforme);
  ancien.Reglage(&mère);
  EXPECT_EQ(fenêtres.montrée, &LaFeuille());
  EXPECT_EQ(fenêtres.sous, &mère);
  EXPECT_EQ(LaFeuille().Mère(), &mère);
  EXPECT_EQ(LaFeuille().LAffichage().com, "COM not found!");
  EXPECT_EQ(LaFeuille().LAffichage().lampe, Feuille::Lampe::Rouge);
  Démarre(ancien);
  ligne.pannes.débranchée = true;
  ancien.LiaisonSerie()->PortOuvert(false);
  ligne.pannes = {};
  LaFeuille().BtnInitialise();
  EXPECT_FALSE(ancien.LiaisonSerie()->PortOuvert());
  LaFeuille().BtnRetryConnection();
  EXPECT_TRUE(ancien.LiaisonSerie()->PortOuvert());
  {
    ClassConditionneurNum_K9_V1_00 récent(plateforme);
    Démarre(récent);
    for (const bool premier : {true, false}) {
      if (!premier) récent.Reglage(nullptr);
      LaFeuille().Timer();
      const Feuille::Affichage& vue = LaFeuille().LAffichage();
      EXPECT_EQ(vue.com, "COM:3 Baudrate:9600 Parity:No Data:8 Stop bit:1");
      EXPECT_EQ(vue.lampe, Feuille::Lampe::Verte);
      EXPECT_EQ(vue.valeurs, (std::array<std::string, 3>{"1", "-2", "3"}));
    }
    ligne.pannes.parasitée = true;
    Démarre(récent);
    LaFeuille().Timer();
    const Feuille::Affichage& vue = LaFeuille().LAffichage();
    EXPECT_EQ(vue.lampe, Feuille::Lampe::Rouge);
    EXPECT_EQ(vue.drapeaux[3].nom, "ErreurCRC");
    EXPECT_TRUE(vue.drapeaux[3].levé);
    EXPECT_FALSE(vue.drapeaux[2].levé);
    EXPECT_TRUE(LaFeuille().Chargée());
  }
  EXPECT_FALSE(LaFeuille().Chargée()) << "the object that it showed is gone";
  LaFeuille().Timer();
  LaFeuille().BtnRetryConnection();

  ancien.Reglage(&mère);
  EXPECT_TRUE(LaFeuille().Chargée());
  LaFeuille().BtnQuitter();
  EXPECT_FALSE(LaFeuille().Chargée());
  ancien.Reglage(&mère);
  fenêtres.feuille.reset();  // before the object
  ancien.Reglage(&mère);
}

TEST_F(UneFeuille, NommeTousLesRéglagesDuPort) {
  ClassConditionneurNum_K9 conditionneur(plateforme);
  sim::Lignes lignes;
  const auto port = Crée<PortBavard>(lignes);
  conditionneur.LiaisonSerie(port);
  conditionneur.Reglage(nullptr);
  const struct {
    std::int32_t vitesse;
    const char* parité;
    std::int32_t bits;
    const char* stop;
    const char* texte;
  } cas[] = {
      {110, "S", 4, "1", "110 Parity:0 Data:4 Stop bit:1"},
      {921600, "O", 8, "1.5", "921600 Parity:Odd Data:8 Stop bit:1.5"},
      {1953125, "M", 5, "2", "1953125 Parity:1 Data:5 Stop bit:2"},
      {9601, "E", 3, "0", "???? Parity:Even Data:?? Stop bit:??"},
      {0, "", 9, "", "???? Parity:??? Data:?? Stop bit:??"},
  };
  for (const auto& c : cas) {
    port->vitesse = c.vitesse;
    port->parité = c.parité;
    port->bits = c.bits;
    port->stop = c.stop;
    LaFeuille().Timer();
    EXPECT_EQ(LaFeuille().LAffichage().com, std::string("COM:12 Baudrate:") + c.texte);
  }
}

TEST_F(UneFeuille, ParleLaLangueDeLOpérateur) {
  ClassConditionneurNum_K9 conditionneur(plateforme);
  conditionneur.Reglage(nullptr);
  EXPECT_EQ(LaFeuille().Texte(Element::Titre), "Feuille Conditionneur Numérique K9");
  EXPECT_EQ(LaFeuille().Texte(Element::BoutonQuitter), "Texte Bouton Quitter");
  const auto traducteur = Crée<linux_::Traducteur>();
  traducteur->LangueCourante("English");
  fenêtres.feuille.emplace(traducteur);
  conditionneur.Reglage(nullptr);
  EXPECT_EQ(LaFeuille().Texte(Element::Titre), "K9 digital conditioner");
  // Every key has its words.
  for (std::size_t i = 0; i < Feuille::kNombreDElements; ++i) {
    const std::string& texte = LaFeuille().Texte(static_cast<Element>(i));
    EXPECT_FALSE(texte.empty() || texte.starts_with("Texte ")) << texte;
  }
}

}  // namespace
}  // namespace zuma
