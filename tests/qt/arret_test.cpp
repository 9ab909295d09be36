// A stop that is latched, against everything that an operator can still reach in the window.
#include <csignal>

#include "dialogs/choix_du_port.h"
#include "host/desktop/fin_demandee.h"
#include "host/interruption.h"
#include "outils/cas.h"
#include "qt/banc_bureau.h"

namespace zuma::essai {
namespace {

using Arrêt = std::function<void()>;

// Command 4 follows a sensor that users may calibrate, so that a reading moves an output.
constexpr auto kSuitUnCapteur =
    "UPDATE [Capteur] SET [Etalonnage par utilisateur]=-1 WHERE [Index]=4;"
    "UPDATE [Commande] SET [Capteur de recopie]='Déplacement' WHERE [Index]=4;";

class UnArrêtEnCours : public UnBureau {
 protected:
  UnArrêtEnCours() {
    // Boxes are read and answered while they hold whoever called.
    QObject::connect(&répond, &QTimer::timeout, [this] {
      auto* boîte = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      if (boîte == nullptr) return;
      dit += boîte->text() + " " + boîte->informativeText();
      QTest::keyClick(boîte, Qt::Key_Return);
    });
    répond.start(20);
  }
  [[nodiscard]] bool Latché() { return bureau->LaMarche().LaSécurité().Déclenchée(); }
  CommandeRef LaRecopie() { return LeChassis().Commandes()->Item("4"); }
  std::string Bandeau() { return Le<QLabel>("bandeau").text().toStdString(); }
  void Acquitte() { Clique<QPushButton>("acquitte"); }
  void ToucheUnCapteur(Qt::Key touche) {
    auto& table = Le<QAbstractItemView>("tableCapteurs");
    table.setFocus();
    QTest::keyClick(&table, touche);
  }

  // All that stands at the outputs, and what an operator may have begun.
  std::vector<double> Etat() {
    std::vector<double> état;
    for (const CarteRef& carte : *LeChassis().Cartes()) {
      for (const FonctionRef& bloc : carte->LesFonctions()) {
        const bool analogique = bloc->TypeDeFonction() == ENUM_TYPE_FONCTION::FctSortiesAnalogiques;
        const bool logique = bloc->TypeDeFonction() == ENUM_TYPE_FONCTION::FctSortiesLogiques;
        for (const CanalRef& canal : bloc->LesCanaux()) {
          const auto borne = bureau->LaMachine().Jumelle()->BorneDe(*canal);
          if (!borne || !(analogique || logique)) continue;
          état.push_back(analogique ? borne->TensionSortie() : borne->SortieLogique() ? 1 : 0);
        }
      }
    }
    const CapteurRef vérin = LeCapteur("Déplacement");
    for (const bool commencé : {LeChassis().Watchdog()->Enabled(), LaRecopie()->ModeEdition(),
                                vérin->ModeEdition(), vérin->EtatDeLaTare()}) {
      état.push_back(commencé ? 1 : 0);
    }
    return état;
  }
  // The measured value that an output follows is not quite still.
  static bool Bougé(const std::vector<double>& avant, const std::vector<double>& après) {
    constexpr double kBruit = 0.02;
    for (std::size_t i = 0; i < avant.size(); ++i) {
      if (std::abs(avant[i] - après[i]) > kBruit) return true;
    }
    return false;
  }
  // The frame anew, with its command in service and its sensor chosen.
  void Remet() {
    Ouvre(kSuitUnCapteur);
    LeChassis().Commandes()->Item("2")->Enabled(true);
    Choisit(*LeCapteur("Déplacement"));
    dit.clear();
    Laisse(250);  // a form leaves the screen
    bureau->Fenêtre().activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&bureau->Fenêtre()));
    ASSERT_TRUE(QTest::qWaitFor([&] { return Le<QLineEdit>("consigne2").isEnabled(); }));
  }
  // A menu is open: what is done over it, then its first action.
  void DansLeMenu(const char* nom, const Arrêt& arrêt) {
    QTimer::singleShot(50, &bureau->Fenêtre(), [this, nom, arrêt] {
      auto& menu = Le<QMenu>(nom);
      arrêt();
      QTest::keyClick(&menu, Qt::Key_Down);
      QTest::keyClick(&menu, Qt::Key_Return);
      menu.close();
    });
  }
  void MenuDeLaCommande() {
    QContextMenuEvent demande(QContextMenuEvent::Keyboard, {5, 5}, {5, 5});
    QApplication::sendEvent(&Le<QFrame>("commande4"), &demande);
  }
  // Another last point in a calibration form, then its button.
  static void Etalonne(QWidget* fenêtre, int colonne, const Arrêt& arrêt) {
    auto& grille = Trouve<QAbstractItemView>(fenêtre, "GrilleEtalonnage");
    grille.setCurrentIndex(grille.model()->index(1, colonne));
    QTest::keyClicks(&grille, "1");
    QTest::keyClicks(&Trouve<QLineEdit>(fenêtre, "Text1"), "5");
    QTest::keyClick(&Trouve<QLineEdit>(fenêtre, "Text1"), Qt::Key_Return);
    arrêt();
    essai::Clique(fenêtre, "BtnOK");
    if (fenêtre->isVisible()) {
      EXPECT_EQ(grille.model()->index(1, colonne).data().toString(), "15") << "kept";
    }
  }

  QStringList dit;
  QTimer répond;
  QWidget possesseur;
  qt::FenêtreQt hôte{possesseur, [] {}};
};

// Each act: without a stop it moves something, with one nothing, whether the stop was there before
// or fires half-way.
TEST_F(UnArrêtEnCours, NeLaisseRienBouger) {
  const auto entrée = [&] { QTest::keyClick(&Le<QLineEdit>("consigne2"), Qt::Key_Return); };
  const Cas<const char*, std::function<void(const Arrêt&)>> actes{
      {"set point and Enter",
       [&](const Arrêt& arrêt) { Tape("consigne2", "77"), arrêt(), entrée(); }},
      {"set point and its button",
       [&](const Arrêt& arrêt) {
         Tape("consigne2", "77"), arrêt();
         Clique<QPushButton>("applique2");
       }},
      {"an output's toggle", [&](const Arrêt& a) { a(), Clique<QPushButton>("sortie1"); }},
      {"a toggle that is held",
       [&](const Arrêt& arrêt) {
         QTest::mousePress(&Le<QPushButton>("sortie1"), Qt::LeftButton);
         arrêt();
         QTest::mouseRelease(&Le<QPushButton>("sortie1"), Qt::LeftButton);
       }},
      {"the watchdog", [&](const Arrêt& a) { a(), Clique<QCheckBox>("watchdog"); }},
      {"tare", [&](const Arrêt& a) { a(), ToucheUnCapteur(Qt::Key_T); }},
      {"zero", [&](const Arrêt& a) { a(), ToucheUnCapteur(Qt::Key_Z); }},
      {"tare by an open menu",
       [&](const Arrêt& arrêt) {
         DansLeMenu("menuCapteur", arrêt);
         Le<QMenu>("menuCapteur").exec();
       }},
      {"calibration of a sensor", [&](const Arrêt& a) { a(), ToucheUnCapteur(Qt::Key_Return); }},
      {"the same by its key", [&](const Arrêt& a) { a(), ToucheUnCapteur(Qt::Key_E); }},
      {"calibration of a command by an open menu",
       [&](const Arrêt& arrêt) { DansLeMenu("menuCommande", arrêt), MenuDeLaCommande(); }},
      {"the test", [&](const Arrêt& a) { a(), Le<QPushButton>("commenceEssai").click(); }},
  };
  for (const auto& [nom, acte] : actes) {
    for (const char* quand : {"no stop", "stop before", "stop meanwhile"}) {
      const bool sans = quand == std::string("no stop");
      const bool avant = quand == std::string("stop before");
      Remet();
      std::vector<double> état;
      const Arrêt arrête = [&] {
        if (!sans && !Latché()) QTest::keyClick(&bureau->Fenêtre(), Qt::Key_F12);
        état = Etat();
      };
      if (avant) arrête();
      acte(arrête);
      EXPECT_EQ(Latché(), !sans) << nom << ", " << quand;
      const bool bougé = QTest::qWaitFor([&] { return Bougé(état, Etat()); }, sans ? 5000 : 300);
      EXPECT_EQ(bougé, sans) << nom << ", " << quand;
    }
  }
}

TEST_F(UnArrêtEnCours, RefuseCeQueLesFeuillesOuvertesEnregistreraient) {
  for (const auto& [élément, colonne, refus] :
       Cas<const char*, int, const char*>{{"CmbCapteurARecopier", 0, "Nothing was saved"},
                                          {"TxtNomAffiche", 1, "Nothing was saved"},
                                          {"TxtNomAffiche", -1, "The tare could not be changed"}}) {
    for (const bool sans : {true, false}) {
      Remet();
      (void)(colonne == 0 ? LaRecopie()->EtalonnageExterieur(&hôte)
                          : LeCapteur("Déplacement")->EtalonnageExterieur(&hôte));
      QWidget* const fenêtre = FenêtreAvec(élément);
      std::vector<double> état;
      const Arrêt arrête = [&] {
        if (!sans) essai::Clique(fenêtre, "arretDuDialogue");
        état = Etat();
      };
      if (colonne < 0) {
        arrête();
        QTest::keyClick(&Trouve<QCheckBox>(fenêtre, "ChkTare"), Qt::Key_Space);
      } else {
        Etalonne(fenêtre, colonne, arrête);
      }
      Laisse(400);
      EXPECT_EQ(Latché(), !sans);
      EXPECT_EQ(Bougé(état, Etat()), sans) << refus;
      const QString texte = dit.join('|');
      EXPECT_EQ(texte.contains(refus) && texte.contains("A stop is latched"), !sans)
          << texte.toStdString();
    }
  }
}

// What is held down still asks for the stop.
TEST_F(UnArrêtEnCours, NEstPasAcquittéTantQuIlEstTenu) {
  Ouvre();
  QWidget& fenêtre = bureau->Fenêtre();
  auto& bouton = Le<QPushButton>("arret");
  for (const auto& [nom, presse, lâche] : Cas<const char*, Arrêt, Arrêt>{
           {"key", [&] { QTest::keyPress(&fenêtre, Qt::Key_F12); },
            [&] { QTest::keyRelease(&fenêtre, Qt::Key_F12); }},
           {"mouse", [&] { QTest::mousePress(&bouton, Qt::LeftButton); },
            [&] { QTest::mouseRelease(&bouton, Qt::LeftButton); }},
           {"button by its key", [&] { QTest::keyPress(&bouton, Qt::Key_Space); },
            [&] { QTest::keyRelease(&bouton, Qt::Key_Space); }}}) {
    presse();
    for (int i = 0; i < 4; ++i) {
      EXPECT_TRUE(Latché()) << nom;
      Le<QPushButton>("acquitte").click();
    }
    EXPECT_NE(Bandeau().find("held down"), std::string::npos) << nom;
    lâche();
    EXPECT_TRUE(Latché()) << nom;
    EXPECT_EQ(Bandeau().find("held down"), std::string::npos) << nom;
    Acquitte();
    EXPECT_FALSE(Latché()) << nom;
  }
  // A cause that nobody has seen is not acknowledged.
  QTest::keyClick(&fenêtre, Qt::Key_F12);
  bureau->LaMarche().Arrête("the door was open for a moment");
  Acquitte();
  EXPECT_TRUE(Latché());
  EXPECT_NE(Bandeau().find("door"), std::string::npos);
  Acquitte();
  EXPECT_FALSE(Latché());
  // The release of a key that is held may go to another program.
  const auto touche = [&](QEvent::Type type, bool répétée) {
    QKeyEvent évènement(type, Qt::Key_F12, Qt::NoModifier, {}, répétée);
    QApplication::sendEvent(&fenêtre, &évènement);
  };
  touche(QEvent::KeyPress, false);
  QEvent ailleurs(QEvent::ApplicationDeactivate);
  QApplication::sendEvent(qApp, &ailleurs);
  Acquitte();
  EXPECT_FALSE(Latché());
  touche(QEvent::KeyRelease, true);
  touche(QEvent::KeyPress, true);
  EXPECT_TRUE(Latché()) << "it was held all the time";
  Acquitte();
  EXPECT_TRUE(Latché());
}

// A menu, a list or a dialog is open: passes go on, key and buttons stop the machine.
TEST_F(UnArrêtEnCours, SArrêteSousToutCeQuiEstOuvert) {
  Ouvre(kSuitUnCapteur);
  QDialog dialogue(&bureau->Fenêtre());
  new QVBoxLayout(&dialogue);
  auto& liste = Le<QComboBox>("etendue");
  const auto menu = [&](const char* nom) { return &Le<QMenu>(nom); };
  const auto déroule = [&] {
    liste.showPopup();
    (void)QTest::qWaitFor([&] { return !liste.view()->isVisible(); }, 20000);
  };
  for (const auto& [nom, ouvre, ouvert, ferme] :
       Cas<const char*, Arrêt, std::function<QWidget*()>, Arrêt>{
           {"menu", [&] { menu("menuFichier")->exec(); }, [&] { return menu("menuFichier"); },
            [&] { menu("menuFichier")->close(); }},
           {"context menu", [&] { MenuDeLaCommande(); }, [&] { return menu("menuCommande"); },
            [&] { menu("menuCommande")->close(); }},
           {"list", déroule, [&] { return liste.view(); }, [&] { liste.hidePopup(); }},
           {"dialog", [&] { dialogue.exec(); }, [&] { return &dialogue; },
            [&] { dialogue.close(); }}}) {
    for (const bool parTouche : {true, false}) {
      (void)bureau->LaMarche().Acquitte();
      const auto passes = [&] { return bureau->LeBattement().LesMesures().passes; };
      const std::uint64_t avant = passes();
      const auto vivante = [&] { return passes() > avant + 10; };
      UneFoisQue(vivante, [&] {
        EXPECT_TRUE(vivante()) << nom << parTouche;
        if (parTouche) {
          QTest::keyClick(ouvert(), Qt::Key_F12);
        } else if (ouvert() == &dialogue) {
          essai::Clique(&dialogue, "arretDuDialogue");
        } else {
          const auto& bouton = Le<QPushButton>("arret");
          QTest::mouseClick(bureau->Fenêtre().windowHandle(), Qt::LeftButton, {},
                            bouton.mapTo(&bureau->Fenêtre(), bouton.rect().center()));
        }
        EXPECT_TRUE(Latché()) << nom << parTouche;
        ferme();
      });
      ouvre();
    }
  }
}

// A form of the library inside a pass: no pass comes to look.
TEST_F(UnArrêtEnCours, FinitParUnSignalMêmeSiUneFeuilleTientLaPasse) {
  struct : TesteurDePort {
    bool TestPort(const std::string&) override {
      QThread::msleep(10);
      ++essais;
      return false;
    }
    int essais = 0;
  } instrument;
  for (const bool enRecherche : {false, true}) {
    const host::Interruption interruption;
    const host::FinDemandée fin;
    Ouvre();
    const CommandeRef commande = LeChassis().Commandes()->Item("2");
    commande->Enabled(true);
    commande->ValeurCouranteEnUnité(50);
    const CanalRef canal = commande->Canal();
    Fenêtres& fenêtres = *bureau->LaMachine().Services().fenêtres;
    // More tries than anybody waits for.
    GRAM_Configuration feuille(fenêtres, instrument, {"/dev/a"},
                               std::vector<std::string>(enRecherche ? 2000 : 1, "9600"));
    bool tenue = false;
    LeChassis().EntréesLogiques()->Item("2")->AbonneChange([&](ENUM_ETAT_LOGIQUE) {
      if (tenue) return;
      tenue = true;
      QTimer::singleShot(50, qApp, [&] {
        std::raise(SIGTERM);
        if (enRecherche) essai::Clique(FenêtreAvec("BtnAutoScan"), "BtnAutoScan");
      });
      fenêtres.MontreModal(feuille);
    });
    bureau->LaMachine().Jumelle()->presse.porteFermée = false;
    EXPECT_NE(canal->ValeurCanal(), 0);
    QCoreApplication::exec();
    EXPECT_TRUE(tenue && !feuille.Visible());
    EXPECT_LT(instrument.essais, 500);
    bureau.reset();
    EXPECT_EQ(canal->ValeurCanal(), 0);
  }
}

}  // namespace
}  // namespace zuma::essai
