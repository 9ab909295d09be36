// The desktop window on the simulated press: what it shows, and what an operator does on it.
#include "host/desktop/bureau.h"

#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QContextMenuEvent>
#include <QDialog>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <QTreeWidget>

#include <gtest/gtest.h>

#include "host/configuration.h"
#include "host/depart.h"
#include "host/desktop/desktop.h"
#include "qt/banc_bureau.h"

namespace zuma {
namespace {

using Colonne = host::TableCapteurs::Colonne;
using LeBureau = essai::UnBureau;

// Consigne 1: 100 % is 4095 points of a board of 0 to 10 V.
constexpr auto kConsigne1 = "2";
constexpr auto kPompe = "1";

TEST_F(LeBureau, MontreLesCapteursTelsQuIlsSont) {
  Ouvre("UPDATE [Capteur] SET [Seuil de lecture non valide]=1e6 WHERE [Index]=15");
  const CapteurRef vérin = LeCapteur("Déplacement");
  const int rang = Choisit(*vérin);
  const QStringList valeur = Case(rang, Colonne::Valeur).split(QChar(QChar::Nbsp));
  ASSERT_EQ(valeur.size(), 2);
  EXPECT_EQ(valeur[1], "mm");
  EXPECT_NEAR(valeur[0].toDouble(), Volts(vérin->Canal()) / 10 * 200, 0.05);
  EXPECT_NEAR(Case(rang, Colonne::Points).toDouble(), vérin->ValeurEnPoints(), 20);
  EXPECT_EQ(Case(rang, Colonne::Etat), "✓ ok");
  EXPECT_EQ(Case(rang, Colonne::Limites), "-1 … 201");

  const CapteurRef four = LeCapteur("Four 1");
  const int rangDuFour = Choisit(*four);
  EXPECT_EQ(Case(rangDuFour, Colonne::Etat), "○ not valid");
  EXPECT_EQ(Case(rangDuFour, Colonne::Valeur), QString("–") + QChar(QChar::Nbsp) + "°C");
  // The specimen's words are recognised in any language of the window.
  EXPECT_TRUE(bureau->LeRecueil()->Problèmes().empty());

  vérin->Enabled_bln(false);
  Laisse(250);
  EXPECT_EQ(Case(rang, Colonne::Valeur), QString("–") + QChar(QChar::Nbsp) + "mm");
}

TEST_F(LeBureau, DitLesNombresDansSaLangue) {
  Ouvre({}, "fr");
  const int rang = Choisit(*LeCapteur("Déplacement"));
  const QString valeur = Case(rang, Colonne::Valeur).section(QChar(QChar::Nbsp), 0, 0);
  EXPECT_EQ(valeur.indexOf(','), 2) << valeur.toStdString();
  EXPECT_NEAR(QString(valeur).replace(',', '.').toDouble(), 40, 0.05);
  EXPECT_EQ(Case(rang, Colonne::Etat), "✓ correct");
}

TEST_F(LeBureau, AppliqueUneConsigneSurEntréeEtSurSonBouton) {
  Ouvre();
  EXPECT_FALSE(Le<QLineEdit>("consigne2").isEnabled());
  Clique<QCheckBox>("service2");
  const struct {
    const char* texte;
    bool entrée;  // or the button
    double volts;
    const char* lue;
  } cas[] = {{"50", true, 5, "50.00"},
             {"25,5", false, 2.55, "25.50"},
             {"abc", true, 2.55, "abc"},
             {"1e999", true, 2.55, "1e999"},
             {"150", true, 10, "100.00"}};
  for (const auto& c : cas) {
    Tape("consigne2", c.texte);
    Laisse(250);
    if (c.entrée) {
      QTest::keyClick(&Le<QLineEdit>("consigne2"), Qt::Key_Return);
    } else {
      Clique<QPushButton>("applique2");
    }
    EXPECT_NEAR(Volts(kConsigne1), c.volts, 0.003) << c.texte;
    EXPECT_EQ(Le<QLineEdit>("consigne2").text(), c.lue);
  }
  EXPECT_TRUE(Le<QLabel>("saturee2").isVisible());
  Tape("consigne2", "10");
  QTest::keyClick(&Le<QLineEdit>("consigne2"), Qt::Key_Escape);
  EXPECT_EQ(Le<QLineEdit>("consigne2").text(), "100.00");
  EXPECT_NEAR(Volts(kConsigne1), 10, 0.003);

  // Enter on what nobody typed does not write the rounded value back.
  const CommandeRef commande = LeChassis().Commandes()->Item(kConsigne1);
  commande->ValeurCouranteEnUnité(33.3333);
  Laisse(250);
  EXPECT_EQ(Le<QLineEdit>("consigne2").text(), "33.33");
  QTest::keyClick(&Le<QLineEdit>("consigne2"), Qt::Key_Return);
  EXPECT_EQ(commande->ValeurCouranteEnUnité(), 33.3333);
}

TEST_F(LeBureau, ArrêtePuisNeBougePlusJusquAUneNouvelleCommande) {
  Ouvre();
  for (const bool parTouche : {false, true}) {
    Clique<QCheckBox>("service2");
    Tape("consigne2", "50");
    QTest::keyClick(&Le<QLineEdit>("consigne2"), Qt::Key_Return);
    Clique<QPushButton>("sortie1");
    EXPECT_NEAR(Volts(kConsigne1), 5, 0.003);
    EXPECT_TRUE(Ligne(kPompe));
    Tape("consigne2", "77");
    if (parTouche) {
      // A modal dialog holds the window back, and not the stop.
      QDialog dialogue(&bureau->Fenêtre());
      QTimer::singleShot(50, &dialogue, [&] {
        QTest::keyClick(&dialogue, Qt::Key_F12);
        dialogue.close();
      });
      dialogue.exec();
    } else {
      Clique<QPushButton>("arret");
    }
    EXPECT_TRUE(bureau->LaMarche().LaSécurité().Déclenchée());
    EXPECT_EQ(Le<QLabel>("bandeau").text(), "■ STOP: asked for by the operator");
    EXPECT_EQ(Volts(kConsigne1), 0);
    EXPECT_FALSE(Ligne(kPompe));
    // Before the window has painted again, and after.
    for (const int attente : {0, 250}) {
      Laisse(attente);
      QTest::keyClick(&Le<QLineEdit>("consigne2"), Qt::Key_Return);
      Clique<QPushButton>("sortie1");
      Clique<QCheckBox>("watchdog");
      EXPECT_EQ(Volts(kConsigne1), 0);
      EXPECT_FALSE(Ligne(kPompe));
      EXPECT_FALSE(LeChassis().Watchdog()->Enabled());
    }
    EXPECT_FALSE(Le<QLineEdit>("consigne2").isEnabled());
    EXPECT_FALSE(Le<QPushButton>("sortie1").isEnabled());
    EXPECT_EQ(Le<QLineEdit>("consigne2").text(), "0.00");

    Clique<QPushButton>("acquitte");
    Laisse(300);
    EXPECT_FALSE(bureau->LaMarche().LaSécurité().Déclenchée());
    EXPECT_EQ(Le<QLabel>("bandeau").text(), "No stop");
    EXPECT_EQ(Le<QLineEdit>("consigne2").text(), "0.00");
    EXPECT_EQ(Volts(kConsigne1), 0);
    EXPECT_FALSE(Ligne(kPompe));
    EXPECT_TRUE(Le<QPushButton>("sortie1").isEnabled());
    if (!parTouche) Clique<QCheckBox>("service2");
  }
}

// What the window shows may be late: the act itself asks.
TEST_F(LeBureau, NObéitPlusDèsLArrêtMêmeAvantDeLeMontrer) {
  Ouvre();
  Clique<QCheckBox>("service2");
  Laisse(250);
  Tape("consigne2", "77");
  bureau->LaMarche().Arrête();
  ASSERT_TRUE(Le<QLineEdit>("consigne2").isEnabled());
  QTest::keyClick(&Le<QLineEdit>("consigne2"), Qt::Key_Return);
  EXPECT_EQ(Volts(kConsigne1), 0);
  EXPECT_EQ(Le<QLineEdit>("consigne2").text(), "0.00");
  ASSERT_TRUE(Le<QPushButton>("sortie1").isEnabled());
  Clique<QPushButton>("sortie1");
  EXPECT_FALSE(Ligne(kPompe));
  EXPECT_FALSE(Le<QPushButton>("sortie1").isChecked());
}

// Out of service is not at rest: the output keeps what it was given.
TEST_F(LeBureau, MetAuReposUneCommandeHorsService) {
  Ouvre();
  const CommandeRef commande = LeChassis().Commandes()->Item(kConsigne1);
  const auto commandePuisLaisse = [&] {
    commande->Enabled(true);
    commande->ValeurCouranteEnUnité(50);
    commande->Enabled(false);
    Laisse(50);
    EXPECT_NEAR(Volts(kConsigne1), 5, 0.003);
  };
  commandePuisLaisse();
  QTest::mousePress(&Le<QPushButton>("arret"), Qt::LeftButton);  // not only once released
  EXPECT_EQ(Volts(kConsigne1), 0);
  EXPECT_FALSE(commande->Enabled());
  QTest::mouseRelease(&Le<QPushButton>("arret"), Qt::LeftButton);
  Clique<QPushButton>("acquitte");
  commandePuisLaisse();
  const CanalRef canal = commande->Canal();
  bureau.reset();
  EXPECT_EQ(canal->ValeurCanal(), 0);
}

TEST_F(LeBureau, DistingueCeQuiNAPasDeNom) {
  std::string sql = "UPDATE [Commande] SET [Nom de la Commande]='R&D' WHERE [Index]=3;";
  for (const auto& [table, colonne] :
       {std::pair("Capteur", "Nom du Capteur"), std::pair("Capteur", "Nom affiché"),
        std::pair("Commande", "Nom de la Commande"),
        std::pair("Entrée Logique", "Nom de l'Entrée Logique"),
        std::pair("Sortie Logique", "Nom de la Sortie Logique")}) {
    sql += std::string("UPDATE [") + table + "] SET [" + colonne + "]='' WHERE [Index] IN (1,2);";
    sql += std::string("UPDATE [Liaison Chassis / ") + table + "] SET Label=NULL WHERE [" + table +
           "] IN (1,2);";
  }
  OuvreMalgréTout(sql);
  EXPECT_EQ(Case(0, Colonne::Nom), "#1");
  EXPECT_EQ(Case(1, Colonne::Nom), "#2");
  EXPECT_EQ(Le<QCheckBox>("service1").text(), "#1");
  EXPECT_EQ(Le<QCheckBox>("service3").text(), "R&&D") << "no key that operates it";
  EXPECT_TRUE(Le<QLabel>("entree2").text().contains("#2"));
  EXPECT_TRUE(Le<QPushButton>("sortie2").text().contains("#2"));
}

// Painting all of two hundred would hold the passes up.
TEST_F(LeBureau, BorneLeNombreDeCourbes) {
  Ouvre();
  auto& vue = Le<QAbstractItemView>("tableCapteurs");
  const auto coche = [&](int rang) {
    return vue.model()->index(rang, 0).data(Qt::CheckStateRole) == Qt::Checked;
  };
  int courbes = 0;
  for (int rang = 0; rang < vue.model()->rowCount(); ++rang) {
    vue.setCurrentIndex(vue.model()->index(rang, 0));
    if (!coche(rang)) Le<QAction>("gesteCourbe").trigger();
    courbes += coche(rang) ? 1 : 0;
  }
  EXPECT_EQ(courbes, host::TableCapteurs::kCourbesAuPlus);
}

TEST_F(LeBureau, MontreEnMotsLaCauseQueDonneLaMachine) {
  Ouvre();
  bureau->LaMachine().Jumelle()->presse.porteFermée = false;
  EXPECT_TRUE(QTest::qWaitFor([&] { return Le<QLabel>("bandeau").text() != "No stop"; }, 2000));
  EXPECT_EQ(Le<QLabel>("bandeau").text(),
            "■ STOP: Emergency stop fired by logic input Porte fermée, detected state: inactive");
  EXPECT_TRUE(Le<QLabel>("entree2").text().contains("inactive"));
  // It holds on: acknowledged, it comes back.
  Clique<QPushButton>("acquitte");
  Laisse(300);
  EXPECT_TRUE(bureau->LaMarche().LaSécurité().Déclenchée());
}

TEST_F(LeBureau, TareEtAnnuleParTouche) {
  Ouvre();
  const CapteurRef vérin = LeCapteur("Déplacement");
  const int rang = Choisit(*vérin);
  auto& vue = Le<QAbstractItemView>("tableCapteurs");
  QTest::keyClick(&vue, Qt::Key_T);
  EXPECT_TRUE(QTest::qWaitFor([&] { return vérin->EtatDeLaTare(); }, 2000));
  Laisse(250);
  EXPECT_NEAR(vérin->ValeurCourante(), 0, 0.05);
  EXPECT_TRUE(Case(rang, Colonne::Marques).startsWith("tared by 40.0"));
  QTest::keyClick(&vue, Qt::Key_C);
  Laisse(250);
  EXPECT_NEAR(vérin->ValeurCourante(), 40, 0.05);
  EXPECT_EQ(Case(rang, Colonne::Marques), "");

  // A kind without zero does not offer it.
  Choisit(*LeCapteur("Contrainte"));
  EXPECT_FALSE(Le<QAction>("gesteZero").isEnabled());
  EXPECT_FALSE(Le<QAction>("gesteEtalonne").isEnabled());
}

TEST_F(LeBureau, OuvreLesFeuillesDEtalonnage) {
  Ouvre("UPDATE [Capteur] SET [Etalonnage par utilisateur]=-1 WHERE [Index]=4");
  const CapteurRef vérin = LeCapteur("Déplacement");
  Choisit(*vérin);
  for (const Qt::Key touche : {Qt::Key_E, Qt::Key_Return}) {
    QTest::keyClick(&Le<QAbstractItemView>("tableCapteurs"), touche);
    EXPECT_TRUE(vérin->ModeEdition());
    vérin->ResetFeuilleEtalonnage();
  }
  const CommandeRef recopie = LeChassis().Commandes()->Item("4");
  QTimer::singleShot(50, &bureau->Fenêtre(), [&] {
    auto& menu = Le<QMenu>("menuCommande");
    QTest::keyClick(&menu, Qt::Key_Down);
    QTest::keyClick(&menu, Qt::Key_Return);
  });
  QContextMenuEvent demande(QContextMenuEvent::Keyboard, {5, 5}, {5, 5});
  QApplication::sendEvent(&Le<QFrame>("commande4"), &demande);
  EXPECT_TRUE(recopie->ModeEdition());
}

TEST_F(LeBureau, OuvreLEntretienDUnConditionneur) {
  options.chassis = 4;
  Ouvre();
  const auto& feuille = *bureau->LaMachine().Services().fenêtres->FeuilleDuConditionneur();
  EXPECT_FALSE(Le<QAction>("carte21").isEnabled());
  Le<QAction>("carte22").trigger();
  EXPECT_TRUE(feuille.Chargée());
  EXPECT_NE(feuille.Mère(), nullptr);
}

// A box that answers the operator stands over a machine that goes on.
TEST_F(LeBureau, MontreAussiEnBoîteCeQuiRépondÀUnActe) {
  Ouvre();
  const std::uint64_t avant = bureau->LeBattement().LesMesures().passes;
  std::uint64_t pendant = 0;
  QTimer::singleShot(200, &bureau->Fenêtre(), [&] {
    pendant = bureau->LeBattement().LesMesures().passes - avant;
    QWidget* const boîte = QApplication::activeModalWidget();
    ASSERT_NE(boîte, nullptr);
    QTest::keyClick(boîte, Qt::Key_Return);
  });
  LeChassis().Commandes()->Item("4")->Montre("Error during data backup");
  EXPECT_GT(pendant, 20U);
  EXPECT_EQ(bureau->LeRecueil()->Problèmes().back().texte, "Error during data backup");
}

// Enter refuses; the button starts the frame, with its outputs at rest.
TEST_F(LeBureau, NeLanceUnChassisFautifQuÀLaDemande) {
  constexpr auto kSql = "UPDATE Capteur SET [Temps de Calcul de la Vitesse]='x' WHERE [Index]=1";
  EXPECT_THROW(Ouvre(kSql), host::DépartRefusé) << "without the option nobody is asked";
  options.malgréTout = true;
  QString liste;
  const auto répond = [&](Qt::Key touche, const char* bouton) {
    essai::Ensuite([&liste, touche, bouton] {
      QWidget* boîte = essai::FenêtreAvec("listeDuDepart");
      liste = essai::Trouve<QPlainTextEdit>(boîte, "listeDuDepart").toPlainText();
      if (bouton != nullptr) return essai::Clique(boîte, bouton);
      QTest::keyClick(boîte, touche);
    });
  };
  for (const Qt::Key touche : {Qt::Key_Return, Qt::Key_Escape}) {
    répond(touche, nullptr);
    EXPECT_THROW(host::Bureau{options}, host::DépartRefusé);
    EXPECT_TRUE(liste.startsWith("data: table Capteur, row 1, column Temps de Calcul"));
  }
  répond({}, "lance");
  bureau.emplace(options);
  EXPECT_TRUE(bureau->LaMarche().LaSécurité().Déclenchée());
}

TEST_F(LeBureau, GardeLesMessagesDuChargementEtDeLaMarche) {
  OuvreMalgréTout("UPDATE [Capteur] SET [Canal]=999 WHERE [Index]=4");
  auto& messages = Le<QTreeWidget>("voletMessages");
  const auto duChargement = static_cast<int>(bureau->LeRecueil()->Problèmes().size());
  EXPECT_GT(duChargement, 0);
  bureau->LeRecueil()->AjouteErreur("Une panne", {{Valeur(), Valeur()}, {"Variable x", 3.0}});
  Laisse(250);
  ASSERT_EQ(messages.topLevelItemCount(),
            static_cast<int>(bureau->LeRecueil()->Problèmes().size()));
  bool vue = false;
  for (int i = 0; i < messages.topLevelItemCount(); ++i) {
    const QTreeWidgetItem& ligne = *messages.topLevelItem(i);
    vue = vue || (ligne.text(2) == "Une panne" && ligne.child(0)->text(2) == "Variable x = 3");
  }
  EXPECT_TRUE(vue);
}

TEST_F(LeBureau, FinitLEssaiSurUnArrêtAcquittéAvantLaPasseSuivante) {
  Ouvre();
  const CommandeRef valve = LeChassis().Commandes()->Item("1");
  valve->Enabled(true);
  valve->ValeurCouranteEnUnité(50);
  bureau->Fenêtre().CommenceLEssai();
  EXPECT_TRUE(QTest::qWaitFor([&] { return Ligne("1"); }, 2000));
  EXPECT_EQ(valve->ValeurCouranteEnUnité(), 0) << "no set point is left over for the pump";
  bureau->LeBattement().Arrête();
  QTest::keyClick(&bureau->Fenêtre(), Qt::Key_F12);
  EXPECT_TRUE(bureau->LaMarche().Acquitte());
  bureau->LeBattement().Démarre();
  Laisse(1500);
  EXPECT_TRUE(Le<QLabel>("bilanEssai").text().startsWith("End: stop"));
  EXPECT_FALSE(Ligne("1"));
  EXPECT_EQ(Volts("1"), 0);
}

TEST_F(LeBureau, FinitLEssaiSurUneForceNonValide) {
  Ouvre();
  bureau->Fenêtre().CommenceLEssai();
  EXPECT_TRUE(QTest::qWaitFor([&] { return Ligne("1"); }, 2000));
  LeCapteur("Force petite")->Enabled_bln(false);
  const auto& bilan = Le<QLabel>("bilanEssai");
  EXPECT_TRUE(QTest::qWaitFor([&] { return bilan.text().startsWith("End"); }, 2000));
  EXPECT_TRUE(bilan.text().startsWith("End: force not valid\nForce 10 kN: out of service\n"))
      << bilan.text().toStdString();
  EXPECT_FALSE(Ligne("1"));
  EXPECT_EQ(Volts("1"), 0);
}

TEST_F(LeBureau, MèneLEssaiJusquALaRupture) {
  Ouvre();
  bureau->LeBattement().Arrête();
  Le<QDoubleSpinBox>("vitesseEssai").setValue(5);
  bureau->Fenêtre().CommenceLEssai();
  double t = bureau->LeBattement().Secondes();
  const auto fini = [&] { return Le<QLabel>("bilanEssai").text().startsWith("End"); };
  for (const double limite = t + 60; t < limite && !fini(); t += 0.001) {
    bureau->LaMachine().Jumelle()->AvanceJusquA(t);  // as fast as it goes
    bureau->LaMarche().Passe();
    bureau->Fenêtre().AprèsLaPasse(t);
    if (std::fmod(t, 0.1) < 0.001) QCoreApplication::processEvents();
  }
  const QString bilan = Le<QLabel>("bilanEssai").text();
  EXPECT_TRUE(bilan.startsWith("End: specimen broken\nMaximum: ")) << bilan.toStdString();
  EXPECT_NEAR(bilan.section(' ', 3, 3).toDouble(), 60, 0.5) << bilan.toStdString();
}

TEST_F(LeBureau, MetLesSortiesAuReposQuandIlFerme) {
  Ouvre();
  Clique<QCheckBox>("service2");
  Tape("consigne2", "50");
  QTest::keyClick(&Le<QLineEdit>("consigne2"), Qt::Key_Return);
  const CanalRef canal = LeChassis().Commandes()->Item(kConsigne1)->Canal();
  EXPECT_EQ(canal->ValeurCanal(), 2047.5);
  bureau->Fenêtre().close();
  bureau.reset();
  EXPECT_EQ(canal->ValeurCanal(), 0);
}

TEST_F(LeBureau, RefuseCeQuIlNeConnaîtPas) {
  Ouvre();
  options.langue = "klingon";
  EXPECT_THROW(host::Bureau{options}, host::MauvaisUsage);
  options.langue = "";
  options.ports = {"four=/dev/ttyUSB0"};
  EXPECT_THROW(host::Bureau{options}, host::MauvaisUsage);
  options.ports.clear();
  options.chassis = 77;
  EXPECT_THROW(host::Bureau{options}, host::MauvaisUsage);
  // Without a screen: told, and no core dump.
  const QByteArray écran = qgetenv("DISPLAY"), wayland = qgetenv("WAYLAND_DISPLAY");
  for (const char* variable : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
    qunsetenv(variable);
  }
  EXPECT_THROW((void)host::Desktop(options), host::MauvaisUsage);
  qputenv("QT_QPA_PLATFORM", "offscreen");
  if (!écran.isEmpty()) qputenv("DISPLAY", écran);
  if (!wayland.isEmpty()) qputenv("WAYLAND_DISPLAY", wayland);
}

}  // namespace
}  // namespace zuma
