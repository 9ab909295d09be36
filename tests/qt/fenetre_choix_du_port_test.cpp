// The window in which the port of an instrument is chosen or found.
#include "instruments/cbr_utest.h"
#include "outils/banc_instrument.h"
#include "qt/banc_qt.h"
#include "sim/testeur_cbr_simule.h"

namespace zuma::essai {
namespace {

class LeChoixDuPortEnFenêtre : public testing::Test, protected TesteurDePort {
 protected:
  bool TestPort(const std::string& réglages) override {
    essayés.push_back(réglages);
    if (réaction) réaction();
    return false;
  }
  void Montre(const std::function<void(QWidget*)>& geste) {
    Ensuite([geste] { geste(FenêtreAvec("BtnAutoScan")); });
    fenêtres.MontreModal(feuille);
    EXPECT_FALSE(feuille.Visible());
    EXPECT_TRUE(FenêtresAvec("BtnAutoScan").empty());
  }

  qt::FenêtresQt fenêtres{EnAnglais()};
  GRAM_Configuration feuille{fenêtres, *this, {"/dev/a", "/dev/b"}, {"1200", "9600"}};
  std::vector<std::string> essayés;
  std::function<void()> réaction;
};

TEST_F(LeChoixDuPortEnFenêtre, RendLeChoixDeLOpérateur) {
  Montre([&](QWidget* fenêtre) {
    EXPECT_EQ(fenêtre->windowTitle(), "Port of the GRAM balance");
    QTest::keyClick(&Trouve<QComboBox>(fenêtre, "CmbListeCOM"), Qt::Key_End);
    QTest::keyClick(&Trouve<QComboBox>(fenêtre, "CmbListeBaudrate"), Qt::Key_Home);
    Clique(fenêtre, "BtnClose");
  });
  EXPECT_EQ(feuille.Settings(), "/dev/b,1200,N,8,1");
}

TEST_F(LeChoixDuPortEnFenêtre, DitUneRechercheVaineOuImpossible) {
  Montre([&](QWidget* fenêtre) {
    const QLabel& avis = Trouve<QLabel>(fenêtre, "LblAvis");
    Clique(fenêtre, "BtnAutoScan");
    EXPECT_EQ(essayés, (std::vector<std::string>{"/dev/a,1200,N,8,1", "/dev/a,9600,N,8,1",
                                                 "/dev/b,1200,N,8,1", "/dev/b,9600,N,8,1"}));
    EXPECT_EQ(avis.text(), "No instrument answered on any port.");
    réaction = [] { throw Echec(Numéro::MatérielAbsent, "unplugged"); };
    Clique(fenêtre, "BtnAutoScan");
    EXPECT_EQ(avis.text() + Trouve<QLabel>(fenêtre, "LblEtat").text(), "unplugged");
    EXPECT_TRUE(Trouve<QPushButton>(fenêtre, "BtnAutoScan").isEnabled());
    QTest::keyClick(fenêtre, Qt::Key_Escape);
  });
}

TEST_F(LeChoixDuPortEnFenêtre, SeFermePendantUneRechercheEtÀLaFinDuProgramme) {
  Montre([&](QWidget* fenêtre) {
    réaction = [&, fenêtre] {
      EXPECT_EQ(Trouve<QLabel>(fenêtre, "LblEtat").text(), "/dev/a,1200,N,8,1");
      EXPECT_TRUE(Trouve<QProgressBar>(fenêtre, "Recherche").isVisible());
      feuille.BtnAutoScan();  // an impatient operator
      Ensuite([fenêtre] { Clique(fenêtre, "BtnClose"); });
    };
    Clique(fenêtre, "BtnAutoScan");
  });
  EXPECT_EQ(essayés.size(), 1U);
  Montre([&](QWidget*) { feuille.BtnClose(); });
  GRAM_Configuration autre(fenêtres, *this, {}, {});
  Ensuite([&] {
    QCoreApplication::exit();
    EXPECT_THROW(fenêtres.MontreModal(autre), Echec) << "nobody can answer any more";
  });
  QCoreApplication::exec();
  EXPECT_FALSE(autre.Visible());
}

TEST(LeTesteurCBREnFenêtre, EstTrouvéSurSonPort) {
  BancInstrument banc;
  qt::FenêtresQt fenêtres{EnAnglais()};
  banc.plateforme.fenêtres = &fenêtres;
  const auto testeur = Crée<sim::TesteurCBRSimulé>(*banc.horloge);
  testeur->vitesseDeLigne = 19200;
  banc.liaisons.Attache(15, testeur);
  CBR_UTEST_CLASS instrument(banc.plateforme);
  instrument.TimerExact(banc.horloge);
  Ensuite([] {
    QWidget* const fenêtre = FenêtreAvec("BtnAutoScan");
    Clique(fenêtre, "BtnAutoScan");
    EXPECT_EQ(Trouve<QLabel>(fenêtre, "LblEtat").text(), "15,19200,N,8,1 : Find!");
    EXPECT_EQ(Trouve<QComboBox>(fenêtre, "CmbListeBaudrate").currentText(), "19200");
    fenêtre->close();
  });
  EXPECT_TRUE(instrument.Initialise(""));
  EXPECT_EQ(instrument.Settings(), "15,19200,N,8,1");
}

}  // namespace
}  // namespace zuma::essai
