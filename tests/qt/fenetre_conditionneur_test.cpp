// The maintenance window of the digital conditioners.
#include "instruments/conditionneur_num_k9_v1_00.h"
#include "instruments/instrument.h"
#include "outils/banc_instrument.h"
#include "qt/banc_qt.h"
#include "sim/conditionneur_simule.h"

namespace zuma::essai {
namespace {

class LaFenêtreDuConditionneur : public testing::Test, protected BancInstrument {
 protected:
  LaFenêtreDuConditionneur() { plateforme.fenêtres = &windows; }
  void Ouvre() {
    carte.Adresse(9);
    Démarre("Conditionneur numerique K9 V1.00", "3,9600,N,8,1");
    Passe(0.2);
    instruments::De<ClassConditionneurNum_K9_V1_00>(carte).Reglage(&mère);
    fenêtre = FenêtreAvec("LampeInitialise");
  }
  [[nodiscard]] QString Texte(const char* nom) const { return Trouve<QLabel>(fenêtre, nom).text(); }
  [[nodiscard]] QColor Disque() const {
    const QImage image =
        Trouve<QLabel>(fenêtre, "DisqueInitialise").pixmap(Qt::ReturnByValue).toImage();
    return image.pixelColor(image.rect().center());
  }

  Ref<sim::ConditionneurSimulé> module = Crée<sim::ConditionneurSimulé>(*horloge, std::uint8_t{9});
  sim::LigneSérie& prise = liaisons.Attache(3, module);
  qt::FenêtresQt windows{EnAnglais()};
  QWidget hôte;
  qt::FenêtreQt mère{hôte};
  QPointer<QWidget> fenêtre;
};

TEST_F(LaFenêtreDuConditionneur, MontreLeModuleVivant) {
  module->valeurs = {1, -2, 3};
  Ouvre();
  EXPECT_EQ(fenêtre->parentWidget(), &hôte);
  EXPECT_EQ(fenêtre->windowTitle(), "K9 digital conditioner");
  EXPECT_EQ(Texte("LblCOM"), "COM:3 Baudrate:9600 Parity:No Data:8 Stop bit:1");
  EXPECT_EQ(Texte("LampeInitialise"), "Initialised: yes");
  EXPECT_EQ(Texte("LblValeur2"), "-2");
  EXPECT_EQ(Texte("Drapeau3"), "ErreurCRC: no");
  const QColor verte = Disque();
  prise.pannes.parasitée = true;
  Passe(1);
  prise.pannes.débranchée = true;
  Passe(1);
  EXPECT_TRUE(QTest::qWaitFor([&] { return Texte("LampeInitialise") == "Initialised: no"; }, 2000));
  EXPECT_NE(Disque(), verte);
  prise.pannes = {};
  carte.LiaisonSerie2()->PortOuvert(false);
  Clique(fenêtre, "BtnRetryConnection");
  EXPECT_TRUE(carte.LiaisonSerie2()->PortOuvert());
}

TEST_F(LaFenêtreDuConditionneur, PartAvecSonObjetOuParSesBoutons) {
  const FeuilleConditionneurNumerique& feuille = *windows.FeuilleDuConditionneur();
  Ouvre();
  Clique(fenêtre, "BtnQuitter");
  EXPECT_TRUE(Disparaît(fenêtre) && !feuille.Chargée());
  Ouvre();
  fenêtre->close();
  EXPECT_FALSE(feuille.Chargée());
  Ouvre();
  carte.Initialise();  // makes another object
  EXPECT_TRUE(Disparaît(fenêtre));
}

}  // namespace
}  // namespace zuma::essai
