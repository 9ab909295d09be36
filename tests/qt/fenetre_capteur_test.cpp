// The sensor's calibration window, as its operator uses it.
#include "outils/cas.h"
#include "qt/banc_qt.h"

namespace zuma::essai {
namespace {

class LaFenêtreDuCapteur : public UnChassisEnFenêtres {
 protected:
  LaFenêtreDuCapteur() {
    base.Exécute("UPDATE Capteur SET [Etalonnage par utilisateur] = -1 WHERE [Index] = 1");
  }
  void Ouvre(FenêtreHôte* mère = nullptr) {
    if (!chassis) Charge();
    capteur = (*chassis)->Capteurs()->Item("1");
    (void)capteur->EtalonnageExterieur(mère);
    fenêtre = FenêtreAvec("TxtNomAffiche");
    grille = &Trouve<QTableView>(fenêtre, "GrilleEtalonnage");
    text1 = &Trouve<QLineEdit>(fenêtre, "Text1");
  }
  void CliqueLaCase(int rangée, int colonne) const {
    const QRect place = grille->visualRect(grille->model()->index(rangée - 1, colonne));
    QTest::mouseClick(grille->viewport(), Qt::LeftButton, {}, place.center());
  }
  [[nodiscard]] QString Case(int rangée, int colonne, int rôle = Qt::DisplayRole) const {
    return grille->model()->index(rangée - 1, colonne).data(rôle).toString();
  }

  CapteurRef capteur;
  QPointer<QWidget> fenêtre;
  QTableView* grille = nullptr;
  QLineEdit* text1 = nullptr;
};

TEST_F(LaFenêtreDuCapteur, EnregistreCeQuiEstTapé) {
  Ouvre();
  EXPECT_EQ(grille->model()->headerData(0, Qt::Horizontal).toString(), "Raw value");
  CliqueLaCase(2, 0);
  EXPECT_TRUE(text1->isVisible() && text1->hasFocus());
  EXPECT_EQ(text1->selectedText(), "65536");
  EXPECT_EQ(text1->geometry(), grille->visualRect(grille->model()->index(1, 0)));
  QTest::keyClicks(text1, "30000");
  QTest::keyClick(text1, Qt::Key_Tab);
  EXPECT_EQ(text1->selectedText(), "100") << "Tab goes to the next cell";
  QTest::keyClicks(text1, "50,5");
  QTest::keyClick(text1, Qt::Key_Return);
  EXPECT_TRUE(!text1->isVisible() && grille->hasFocus());
  EXPECT_EQ(grille->currentIndex(), grille->model()->index(2, 1)) << "Enter goes down";
  QTest::keyClicks(grille, "9");
  QTest::keyClicks(text1, "9");
  EXPECT_EQ(text1->text(), "99") << "a typed character begins anew";
  QTest::keyClick(text1, Qt::Key_Up);
  EXPECT_EQ(Case(3, 1), "99");
  QTest::keyClick(grille, Qt::Key_F2);
  EXPECT_EQ(text1->selectedText(), "50,5");
  QTest::keyClicks(text1, "-1.5");
  auto& unité = Trouve<QLineEdit>(fenêtre, "TxtUnite");
  unité.clear();
  QTest::keyClicks(&unité, "daN");
  QTest::keyClick(&unité, Qt::Key_Return);
  ASSERT_TRUE(fenêtre && fenêtre->isVisible()) << "Enter in a field is no OK";
  Clique(fenêtre, "BtnOK");
  EXPECT_TRUE(Disparaît(fenêtre));
  EXPECT_EQ(base.Lit("SELECT [Point 2 - Point]||' '||[Point 2 - Unité]||' '||[Point 3 - Unité]||' '"
                     "||[Unité d'Etalonnage] FROM Capteur WHERE [Index]=1"),
            "30000.0 -1.5 99.0 daN");
}

TEST_F(LaFenêtreDuCapteur, NeLaissePasserQueDesNombres) {
  Ouvre();
  for (const auto& [frappé, collé, attendu] :
       Cas<const char*, const char*, const char*>{{"1a2 e,k5", "", "12,5"},
                                                  {"", "  -3,25 kN\n", "-3,25"},
                                                  {"7", "8", "78"},
                                                  {"", "1e5", "65536"},
                                                  {"", "12\t34", "65536"},
                                                  {"", "12\n34", "65536"},
                                                  {"", "abc", "65536"}}) {
    CliqueLaCase(2, 0);
    QTest::keyClicks(text1, frappé);
    QApplication::clipboard()->setText(collé);
    if (*collé != 0) QTest::keySequence(text1, QKeySequence::Paste);
    EXPECT_EQ(text1->text(), attendu) << frappé << " / " << collé;
    QTest::keyClick(text1, Qt::Key_Escape);
    EXPECT_TRUE(!text1->isVisible() && fenêtre->isVisible());
    EXPECT_EQ(Case(2, 0), "65536") << "Escape leaves the cell";
  }
}

TEST_F(LaFenêtreDuCapteur, DitCeQuiNePeutPasEtreEnregistré) {
  Ouvre();
  CliqueLaCase(3, 0);
  QTest::keyClicks(text1, "1-2");
  QStringList vu;
  Répondra(vu);
  Clique(fenêtre, "BtnOK");
  const QString dit = vu.join('|');
  EXPECT_TRUE(dit.contains("Nothing was saved") && dit.contains("Point 3 - Point"))
      << dit.toStdString();
  ASSERT_TRUE(fenêtre && fenêtre->isVisible());
  EXPECT_EQ(Case(3, 0), "1-2") << "what was typed is kept";
  EXPECT_FALSE(Case(3, 0, Qt::ToolTipRole).isEmpty()) << "no number: it is marked";
}

TEST_F(LaFenêtreDuCapteur, SuitLeCapteur) {
  Ouvre();
  QTest::keyClick(&Trouve<QCheckBox>(fenêtre, "ChkTare"), Qt::Key_Space);
  EXPECT_NE(capteur->EtatTare(), ENUM_OPERATION_MAV::RienFaire);
  chassis->Passe(0.1);
  const QLabel& brute = Trouve<QLabel>(fenêtre, "LblValeurBrute");
  const QString avant = brute.text();
  EXPECT_TRUE(QTest::qWaitFor([&] { return brute.text() != avant; }, 2000));
  chassis.reset();
  capteur = {};
  EXPECT_TRUE(Disparaît(fenêtre)) << "it goes with its sensor";
}

TEST_F(LaFenêtreDuCapteur, SeFermeEtSertDeNouveau) {
  Ouvre();
  CliqueLaCase(2, 0);
  QTest::keyClicks(text1, "1");
  fenêtre->close();
  EXPECT_TRUE(capteur->ModeEdition()) << "the sensor keeps the form";
  Ouvre();  // before the window that was closed is gone
  QTest::qWait(300);
  ASSERT_TRUE(fenêtre && fenêtre->isVisible());
  EXPECT_EQ(Case(2, 0), "65536");
  QStringList chemin;
  for (int i = 0; i < 60 && !chemin.endsWith("BtnCancel"); ++i) {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    const QString ici = QApplication::focusWidget()->objectName();
    if (!chemin.endsWith(ici)) chemin << ici;
  }
  EXPECT_EQ(chemin.join(' '), "GrilleEtalonnage ChkTare CommentaireEtalonnage BtnOK BtnCancel");
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
  EXPECT_TRUE(Disparaît(fenêtre)) << "without a mouse";
  EXPECT_FALSE(capteur->ModeEdition());
}

TEST_F(LaFenêtreDuCapteur, AppartientALaFenêtreDeLHôte) {
  auto hôte = std::make_unique<QWidget>();
  auto autre = std::make_unique<QWidget>();
  qt::FenêtreQt mère(*hôte);
  qt::FenêtreQt marâtre(*autre);
  struct : FenêtreHôte {
    std::uintptr_t hwnd() const override { return poignée; }
    std::uintptr_t poignée = 0;
  } étrangère;
  QWindow sansWidget;
  étrangère.poignée = sansWidget.winId();
  Ouvre(&étrangère);
  EXPECT_EQ(fenêtre->windowHandle()->transientParent(), &sansWidget);
  Ouvre(&mère);
  EXPECT_EQ(fenêtre->parentWidget(), hôte.get());
  const QPointer<QWidget> première = fenêtre;
  Ouvre(&marâtre);
  EXPECT_EQ(fenêtre, première) << "brought to the front";
  EXPECT_EQ(fenêtre->parentWidget(), autre.get());
  hôte.reset();
  ASSERT_TRUE(fenêtre);
  CliqueLaCase(2, 0);
  autre.reset();
  EXPECT_FALSE(fenêtre) << "it ends with its owner";
  Ouvre();
  EXPECT_TRUE(fenêtre->isVisible());
}

}  // namespace
}  // namespace zuma::essai
