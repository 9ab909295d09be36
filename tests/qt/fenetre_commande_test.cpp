// The command's calibration window.
#include <QAction>
#include <QComboBox>
#include <QLineEdit>
#include <QTableView>
#include <QWheelEvent>

#include "dialogs/qt/fenetre_qt.h"
#include "qt/banc_qt.h"

namespace zuma {
namespace {

using essai::Clique;
using essai::Trouve;

class LaFenêtreDeLaCommande : public essai::UnChassisEnFenêtres {
 protected:
  void Ouvre(FenêtreHôte* mère) {
    if (!chassis) Charge();
    commande = (*chassis)->Commandes()->Item("4");
    (void)commande->EtalonnageExterieur(mère);
    fenêtre = essai::FenêtreAvec("CmbCapteurARecopier");
  }
  // Another sensor and another last point.
  void Change() const {
    auto& capteurs = Trouve<QComboBox>(fenêtre, "CmbCapteurARecopier");
    QTest::keyClicks(&capteurs, "Pression");
    QTest::keyClick(&capteurs, Qt::Key_Down);
    auto& grille = Trouve<QTableView>(fenêtre, "GrilleEtalonnage");
    grille.setCurrentIndex(grille.model()->index(1, 0));
    QTest::keyClick(&grille, Qt::Key_Return);
    QTest::keyClicks(&Trouve<QLineEdit>(fenêtre, "Text1"), "250.0");
  }
  [[nodiscard]] std::string EnBase(const std::string& colonne) const {
    return base.Lit("SELECT [" + colonne + "] FROM Commande WHERE [Index] = 4");
  }

  std::unique_ptr<QWidget> hôte = std::make_unique<QWidget>();
  CommandeRef commande;
  QPointer<QWidget> fenêtre;
};

TEST_F(LaFenêtreDeLaCommande, EnregistreEtFaitRafraîchirLHôte) {
  int rafraîchie = 0;
  qt::FenêtreQt mère(*hôte, [&] { ++rafraîchie; });
  Ouvre(&mère);
  EXPECT_EQ(Trouve<QComboBox>(fenêtre, "CmbCapteurARecopier").currentText(), "Force");
  Change();
  Clique(fenêtre, "BtnOK");
  EXPECT_TRUE(essai::Disparaît(fenêtre));
  EXPECT_EQ(EnBase("Capteur de recopie"), "Pression utilisation");
  EXPECT_EQ(EnBase("Point 2 - Unité"), "250.0");
  EXPECT_EQ(EnBase("Point 2 - Point"), "4095.0");
  EXPECT_EQ(commande->CapteurDeRecopie()->Label(), "Pression utilisation");
  EXPECT_EQ(commande->PointX(2), 250);
  EXPECT_EQ(rafraîchie, 1);
}

TEST_F(LaFenêtreDeLaCommande, NeGardeRienSansOK) {
  qt::FenêtreQt mère(*hôte);
  Ouvre(&mère);
  Change();
  Clique(fenêtre, "BtnCancel");
  EXPECT_TRUE(essai::Disparaît(fenêtre));
  EXPECT_EQ(EnBase("Capteur de recopie"), "Force");
  EXPECT_EQ(commande->PointX(2), 100);
  EXPECT_FALSE(commande->ModeEdition());
}

TEST_F(LaFenêtreDeLaCommande, NeChoisitRienÀLaMolette) {
  qt::FenêtreQt mère(*hôte);
  Ouvre(&mère);
  auto& capteurs = Trouve<QComboBox>(fenêtre, "CmbCapteurARecopier");
  const QPointF ici(5, 5);
  QWheelEvent molette(ici, capteurs.mapToGlobal(ici), {}, {0, -120}, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
  QCoreApplication::sendEvent(&capteurs, &molette);
  EXPECT_EQ(capteurs.currentText(), "Force");
}

// Rows behind the last point bear a mark; a row in the middle comes and goes with its points.
TEST_F(LaFenêtreDeLaCommande, MarqueInsèreEtSupprimeDesRangées) {
  qt::FenêtreQt mère(*hôte);
  Ouvre(&mère);
  auto& grille = Trouve<QTableView>(fenêtre, "GrilleEtalonnage");
  const auto inutile = [&](int rangée) {
    return !grille.model()->index(rangée, 0).data(Qt::ToolTipRole).toString().isEmpty();
  };
  const auto texte = [&](int rangée) { return grille.model()->index(rangée, 0).data().toString(); };
  EXPECT_FALSE(inutile(1));
  EXPECT_TRUE(inutile(2));
  grille.setCurrentIndex(grille.model()->index(1, 0));
  Trouve<QAction>(fenêtre, "InsereRangee").trigger();
  EXPECT_FALSE(inutile(2));
  EXPECT_EQ(texte(1) + texte(2), "0100");
  Trouve<QAction>(fenêtre, "SupprimeRangee").trigger();
  EXPECT_EQ(texte(1), "100");
  EXPECT_TRUE(inutile(2));
}

TEST_F(LaFenêtreDeLaCommande, PeutPartirPendantSonMessage) {
  qt::FenêtreQt mère(*hôte);
  for (const bool toutPart : {false, true}) {
    Charge(linux_::kChassisDeDémonstration, true);
    Ouvre(&mère);
    Change();
    QStringList vu;
    essai::Ensuite([&] {
      if (toutPart) {
        commande = {};
        chassis.reset();
        hôte.reset();
      }
      essai::Répondra(vu);
    });
    Clique(fenêtre, "BtnOK");
    EXPECT_TRUE(vu.join('|').contains("3027")) << vu.join('|').toStdString();
    ASSERT_EQ(fenêtre.isNull(), toutPart);
    if (toutPart) continue;
    EXPECT_EQ(Trouve<QComboBox>(fenêtre, "CmbCapteurARecopier").currentText(),
              "Pression utilisation");
    chassis.reset();
    EXPECT_TRUE(essai::Disparaît(fenêtre)) << "it goes with its frame, whoever holds the command";
  }
}

}  // namespace
}  // namespace zuma
