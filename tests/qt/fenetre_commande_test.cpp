// The command's calibration window.
#include "outils/cas.h"
#include "qt/banc_qt.h"

namespace zuma::essai {
namespace {

class LaFenêtreDeLaCommande : public UnChassisEnFenêtres {
 protected:
  void Ouvre() {
    if (!chassis) Charge();
    commande = (*chassis)->Commandes()->Item("4");
    (void)commande->EtalonnageExterieur(&mère);
    fenêtre = FenêtreAvec("CmbCapteurARecopier");
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

  std::unique_ptr<QWidget> hôte = std::make_unique<QWidget>();
  int rafraîchie = 0;
  qt::FenêtreQt mère{*hôte, [this] { ++rafraîchie; }};
  CommandeRef commande;
  QPointer<QWidget> fenêtre;
};

TEST_F(LaFenêtreDeLaCommande, EnregistreEtFaitRafraîchirLHôteSurOKSeulement) {
  for (const auto& [bouton, enBase] : Cas<const char*, const char*>{
           {"BtnCancel", "Force 100.0 4095.0"}, {"BtnOK", "Pression utilisation 250.0 4095.0"}}) {
    Ouvre();
    auto& capteurs = Trouve<QComboBox>(fenêtre, "CmbCapteurARecopier");
    const QPointF ici(5, 5);
    QWheelEvent molette(ici, capteurs.mapToGlobal(ici), {}, {0, -120}, Qt::NoButton, Qt::NoModifier,
                        Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&capteurs, &molette);
    EXPECT_EQ(capteurs.currentText(), "Force") << "the wheel chooses nothing";
    Change();
    Clique(fenêtre, bouton);
    EXPECT_TRUE(Disparaît(fenêtre));
    EXPECT_EQ(base.Lit("SELECT [Capteur de recopie]||' '||[Point 2 - Unité]||' '||"
                       "[Point 2 - Point] FROM Commande WHERE [Index]=4"),
              enBase);
    EXPECT_FALSE(commande->ModeEdition());
    EXPECT_EQ(rafraîchie, commande->PointX(2) == 250 ? 1 : 0);
  }
  EXPECT_EQ(rafraîchie, 1);
}

// Rows behind the last point bear a mark; a row in the middle comes and goes with its points.
TEST_F(LaFenêtreDeLaCommande, MarqueInsèreEtSupprimeDesRangées) {
  Ouvre();
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
  for (const bool toutPart : {false, true}) {
    Charge(linux_::kChassisDeDémonstration, true);
    Ouvre();
    Change();
    QStringList vu;
    Ensuite([&] {
      if (toutPart) {
        commande = {};
        chassis.reset();
        hôte.reset();
      }
      Répondra(vu);
    });
    Clique(fenêtre, "BtnOK");
    EXPECT_TRUE(vu.join('|').contains("3027")) << vu.join('|').toStdString();
    ASSERT_EQ(fenêtre.isNull(), toutPart);
    if (toutPart) continue;
    EXPECT_EQ(Trouve<QComboBox>(fenêtre, "CmbCapteurARecopier").currentText(),
              "Pression utilisation");
    chassis.reset();
    EXPECT_TRUE(Disparaît(fenêtre)) << "it goes with its frame, whoever holds the command";
  }
}

}  // namespace
}  // namespace zuma::essai
