// The desktop window on the simulated press: what it shows, and what an operator does on it.
#include "host/depart.h"
#include "host/desktop/desktop.h"
#include "outils/cas.h"
#include "qt/banc_bureau.h"

namespace zuma::essai {
namespace {

using Colonne = host::TableCapteurs::Colonne;

class LeBureau : public UnBureau {
 protected:
  void Consigne(const char* texte, Qt::Key touche = Qt::Key_Return) {
    Tape("consigne2", texte);
    Laisse(250);
    Presse(touche);
  }
  void Presse(Qt::Key touche) { QTest::keyClick(&Le<QLineEdit>("consigne2"), touche); }
  QString Affichée() { return Le<QLineEdit>("consigne2").text(); }
  QString Bandeau() { return Le<QLabel>("bandeau").text(); }
  [[nodiscard]] bool Latché() { return bureau->LaMarche().LaSécurité().Déclenchée(); }

  const QString nbsp = QChar(QChar::Nbsp);
};

// Consigne 1: 100 % is 4095 points of a board of 0 to 10 V.
constexpr auto kConsigne1 = "2";
constexpr auto kPompe = "1";

TEST_F(LeBureau, MontreLesCapteursTelsQuIlsSontEtDansSaLangue) {
  for (const auto& [langue, virgule, bon, invalide] :
       Cas<const char*, char, const char*, const char*>{{"en", '.', "✓ ok", "○ not valid"},
                                                        {"fr", ',', "✓ correct", "○ non valide"}}) {
    Ouvre("UPDATE [Capteur] SET [Seuil de lecture non valide]=1e6 WHERE [Index]=15", langue);
    const CapteurRef vérin = LeCapteur("Déplacement");
    const int rang = Choisit(*vérin);
    QString valeur = Case(rang, Colonne::Valeur);
    EXPECT_TRUE(valeur.endsWith(nbsp + "mm"));
    EXPECT_EQ(valeur.indexOf(virgule), 2);
    valeur = valeur.section(nbsp, 0, 0).replace(virgule, '.');
    EXPECT_NEAR(valeur.toDouble(), Volts(vérin->Canal()) / 10 * 200, 0.05);
    EXPECT_NEAR(Case(rang, Colonne::Points).toDouble(), vérin->ValeurEnPoints(), 20);
    EXPECT_EQ(Case(rang, Colonne::Etat), bon);
    EXPECT_EQ(Case(rang, Colonne::Limites), "-1 … 201");
    const int rangDuFour = Choisit(*LeCapteur("Four 1"));
    EXPECT_EQ(Case(rangDuFour, Colonne::Etat), invalide);
    EXPECT_EQ(Case(rangDuFour, Colonne::Valeur), "–" + nbsp + "°C");
    // The specimen's words are recognised in any language of the window.
    EXPECT_TRUE(bureau->LeRecueil()->Problèmes().empty());
    vérin->Enabled_bln(false);
    Laisse(250);
    EXPECT_EQ(Case(rang, Colonne::Valeur), "–" + nbsp + "mm");
  }
}

TEST_F(LeBureau, EnregistreSansAttendreEtNEcritSurRien) {
  Ouvre();
  const std::string csv = base->dossier.Fichier("essai.csv");
  host::EnregistrementDuBureau& enregistrement = bureau->Fenêtre().LEnregistrement();
  enregistrement.Commence(csv);
  EXPECT_TRUE(QTest::qWaitFor([&] { return std::ranges::count(essai::Lit(csv), '\n') > 20; }));
  EXPECT_TRUE(Le<QLabel>("enregistrement").text().startsWith("recording"));
  enregistrement.Finit();
  EXPECT_THROW(enregistrement.Commence(csv), host::MauvaisUsage);
  EXPECT_FALSE(enregistrement.EnCours());
  bureau.reset();
  const std::string écrit = essai::Lit(csv);
  EXPECT_TRUE(écrit.starts_with("time [s],Force 100 kN [kN],")) << écrit.substr(0, 80);
  EXPECT_NE(essai::Lit(csv + ".json").find("Cylindre"), std::string::npos);
}

TEST_F(LeBureau, AppliqueUneConsigneSurEntréeEtSurSonBouton) {
  Ouvre();
  EXPECT_FALSE(Le<QLineEdit>("consigne2").isEnabled());
  Clique<QCheckBox>("service2");
  for (const auto& [texte, entrée, volts, lue] :
       Cas<const char*, bool, double, const char*>{{"50", true, 5, "50.00"},
                                                   {"25,5", false, 2.55, "25.50"},
                                                   {"abc", true, 2.55, "abc"},
                                                   {"1e999", true, 2.55, "1e999"},
                                                   {"150", true, 10, "100.00"}}) {
    Consigne(texte, entrée ? Qt::Key_Return : Qt::Key_End);
    if (!entrée) Clique<QPushButton>("applique2");
    EXPECT_NEAR(Volts(kConsigne1), volts, 0.003) << texte;
    EXPECT_EQ(Affichée(), lue);
  }
  EXPECT_TRUE(Le<QLabel>("saturee2").isVisible());
  Consigne("10", Qt::Key_Escape);
  EXPECT_EQ(Affichée(), "100.00");
  EXPECT_NEAR(Volts(kConsigne1), 10, 0.003);

  // Enter on what nobody typed does not write the rounded value back.
  const CommandeRef commande = LeChassis().Commandes()->Item(kConsigne1);
  commande->ValeurCouranteEnUnité(33.3333);
  Laisse(250);
  EXPECT_EQ(Affichée(), "33.33");
  Presse(Qt::Key_Return);
  EXPECT_EQ(commande->ValeurCouranteEnUnité(), 33.3333);
}

TEST_F(LeBureau, ArrêteEtNeBougePasEncoreUneFoisAcquitté) {
  Ouvre();
  Clique<QCheckBox>("service2");
  Consigne("50");
  Clique<QPushButton>("sortie1");
  EXPECT_NEAR(Volts(kConsigne1), 5, 0.003);
  EXPECT_TRUE(Ligne(kPompe));
  Tape("consigne2", "77");
  Clique<QPushButton>("arret");
  for (const bool arrêté : {true, false}) {
    EXPECT_EQ(Latché(), arrêté);
    EXPECT_EQ(Bandeau(), arrêté ? "■ STOP: asked for by the operator" : "No stop");
    EXPECT_EQ(Volts(kConsigne1), 0);
    EXPECT_FALSE(Ligne(kPompe));
    Laisse(300);
    EXPECT_EQ(Le<QLineEdit>("consigne2").isEnabled(), !arrêté);
    EXPECT_EQ(Le<QPushButton>("sortie1").isEnabled(), !arrêté);
    EXPECT_EQ(Affichée(), "0.00");
    Clique<QPushButton>("acquitte");
  }
}

// What the window shows may be late: the act itself asks, and a stop drops what was typed.
TEST_F(LeBureau, NObéitPlusDèsLArrêtMêmeAvantDeLeMontrer) {
  for (const bool acquitté : {false, true}) {
    Ouvre();
    Clique<QCheckBox>("service2");
    Consigne("77", Qt::Key_End);
    bureau->LeBattement().Arrête();
    if (acquitté) {
      QTest::keyClick(&bureau->Fenêtre(), Qt::Key_F12);
      EXPECT_TRUE(bureau->LaMarche().Acquitte());
    } else {
      bureau->LaMarche().Arrête();
      ASSERT_TRUE(Le<QLineEdit>("consigne2").isEnabled() && Le<QPushButton>("sortie1").isEnabled());
    }
    Presse(Qt::Key_Return);
    EXPECT_EQ(Volts(kConsigne1), 0);
    EXPECT_EQ(Affichée(), "0.00");
    if (acquitté) continue;
    Clique<QPushButton>("sortie1");
    EXPECT_FALSE(Ligne(kPompe) || Le<QPushButton>("sortie1").isChecked());
  }
}

// Out of service is not at rest: the output keeps what it was given.
TEST_F(LeBureau, MetAuReposUneCommandeHorsService) {
  Ouvre();
  const CommandeRef commande = LeChassis().Commandes()->Item(kConsigne1);
  const CanalRef canal = commande->Canal();
  for (const bool enFermant : {false, true}) {
    commande->Enabled(true);
    commande->ValeurCouranteEnUnité(50);
    commande->Enabled(false);
    Laisse(50);
    EXPECT_NEAR(Volts(kConsigne1), 5, 0.003);
    if (enFermant) {
      bureau->Fenêtre().close();
      bureau.reset();
    } else {
      QTest::mousePress(&Le<QPushButton>("arret"), Qt::LeftButton);  // not only once released
      EXPECT_EQ(Volts(kConsigne1), 0);
      QTest::mouseRelease(&Le<QPushButton>("arret"), Qt::LeftButton);
      Clique<QPushButton>("acquitte");
    }
    EXPECT_EQ(canal->ValeurCanal(), 0);
  }
}

TEST_F(LeBureau, DistingueCeQuiNAPasDeNom) {
  std::string sql = "UPDATE [Commande] SET [Nom de la Commande]='R&D' WHERE [Index]=3;";
  for (const auto& [table, colonne] :
       Cas<std::string, const char*>{{"Capteur", "Nom du Capteur"},
                                     {"Capteur", "Nom affiché"},
                                     {"Commande", "Nom de la Commande"},
                                     {"Entrée Logique", "Nom de l'Entrée Logique"},
                                     {"Sortie Logique", "Nom de la Sortie Logique"}}) {
    sql += "UPDATE [" + table + "] SET [" + colonne + "]='' WHERE [Index] IN (1,2);";
    sql +=
        "UPDATE [Liaison Chassis / " + table + "] SET Label=NULL WHERE [" + table + "] IN (1,2);";
  }
  OuvreMalgréTout(sql);
  EXPECT_EQ(Case(0, Colonne::Nom) + Case(1, Colonne::Nom), "#1#2");
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
  EXPECT_TRUE(QTest::qWaitFor([&] { return Bandeau() != "No stop"; }, 2000));
  EXPECT_EQ(Bandeau(),
            "■ STOP: Emergency stop fired by logic input Porte fermée, detected state: inactive");
  EXPECT_TRUE(Le<QLabel>("entree2").text().contains("inactive"));
  Clique<QPushButton>("acquitte");
  Laisse(300);
  EXPECT_TRUE(Latché()) << "it holds on: acknowledged, it comes back";
}

TEST_F(LeBureau, TareEtAnnuleParTouche) {
  Ouvre();
  const CapteurRef vérin = LeCapteur("Déplacement");
  const int rang = Choisit(*vérin);
  auto& vue = Le<QAbstractItemView>("tableCapteurs");
  QTest::keyClick(&vue, Qt::Key_T);
  Laisse(500);
  EXPECT_NEAR(vérin->ValeurCourante(), 0, 0.05);
  const QString marque = Case(rang, Colonne::Marques);
  EXPECT_TRUE(marque.startsWith("tared by ")) << marque.toStdString();
  EXPECT_NEAR(marque.section(' ', 2).toDouble(), vérin->ValeurTare(), 0.01);
  QTest::keyClick(&vue, Qt::Key_C);
  Laisse(250);
  EXPECT_NEAR(vérin->ValeurCourante(), 40, 0.05);
  EXPECT_EQ(Case(rang, Colonne::Marques), "");
  // A kind without zero does not offer it.
  Choisit(*LeCapteur("Contrainte"));
  EXPECT_FALSE(Le<QAction>("gesteZero").isEnabled() || Le<QAction>("gesteEtalonne").isEnabled());
}

TEST_F(LeBureau, OuvreLEntretienDUnConditionneur) {
  options.chassis = 4;
  Ouvre();
  const auto& feuille = *bureau->LaMachine().Services().fenêtres->FeuilleDuConditionneur();
  EXPECT_FALSE(Le<QAction>("carte21").isEnabled());
  Le<QAction>("carte22").trigger();
  EXPECT_TRUE(feuille.Chargée() && feuille.Mère() != nullptr);
}

// A box that answers the operator stands over a machine that goes on.
TEST_F(LeBureau, MontreAussiEnBoîteCeQuiRépondÀUnActe) {
  Ouvre();
  const auto passes = [&] { return bureau->LeBattement().LesMesures().passes; };
  const std::uint64_t avant = passes();
  std::uint64_t après = 0;
  const auto vivante = [&] { return passes() > avant + 20; };
  UneFoisQue([&] { return QApplication::activeModalWidget() != nullptr && vivante(); },
             [&] {
               après = passes();
               ASSERT_NE(QApplication::activeModalWidget(), nullptr);
               QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Return);
             });
  LeChassis().Commandes()->Item("4")->Montre("Error during data backup");
  EXPECT_GT(après, avant + 20);
  EXPECT_EQ(bureau->LeRecueil()->Problèmes().back().texte, "Error during data backup");
}

// Enter refuses; the button starts the frame, with its outputs at rest.
TEST_F(LeBureau, NeLanceUnChassisFautifQuÀLaDemande) {
  constexpr auto kSql = "UPDATE Capteur SET [Temps de Calcul de la Vitesse]='x' WHERE [Index]=1";
  EXPECT_THROW(Ouvre(kSql), host::DépartRefusé) << "without the option nobody is asked";
  options.malgréTout = true;
  for (const Qt::Key touche : {Qt::Key_Return, Qt::Key_Escape}) {
    QString liste;
    Ensuite([&liste, touche] {
      QWidget* boîte = FenêtreAvec("listeDuDepart");
      liste = Trouve<QPlainTextEdit>(boîte, "listeDuDepart").toPlainText();
      QTest::keyClick(boîte, touche);
    });
    EXPECT_THROW(host::Bureau{options}, host::DépartRefusé);
    EXPECT_TRUE(liste.startsWith("data: table Capteur, row 1, column Temps de Calcul"));
  }
  OuvreMalgréTout(kSql);
  EXPECT_TRUE(Latché());
}

TEST_F(LeBureau, GardeLesMessagesDuChargementEtDeLaMarche) {
  OuvreMalgréTout("UPDATE [Capteur] SET [Canal]=999 WHERE [Index]=4");
  const auto& messages = Le<QTreeWidget>("voletMessages");
  EXPECT_GT(bureau->LeRecueil()->Problèmes().size(), 0U);
  bureau->LeRecueil()->AjouteErreur("Une panne", {{Valeur(), Valeur()}, {"Variable x", 3.0}});
  Laisse(250);
  ASSERT_EQ(messages.topLevelItemCount(),
            static_cast<int>(bureau->LeRecueil()->Problèmes().size()));
  const auto vues = messages.findItems("Une panne", Qt::MatchExactly, 2);
  ASSERT_EQ(vues.size(), 1);
  EXPECT_EQ(vues[0]->child(0)->text(2), "Variable x = 3");
}

TEST_F(LeBureau, FinitLEssaiEtMetAuRepos) {
  const auto acquittéAvantLaPasseSuivante = [&] {
    bureau->LeBattement().Arrête();
    QTest::keyClick(&bureau->Fenêtre(), Qt::Key_F12);
    EXPECT_TRUE(bureau->LaMarche().Acquitte());
    bureau->LeBattement().Démarre();
  };
  for (const auto& [gêne, fin] : Cas<std::function<void()>, const char*>{
           {acquittéAvantLaPasseSuivante, "End: stop"},
           {[&] { LeCapteur("Force petite")->Enabled_bln(false); },
            "End: force not valid\nForce 10 kN: out of service\n"}}) {
    Ouvre();
    const CommandeRef valve = LeChassis().Commandes()->Item("1");
    valve->Enabled(true);
    valve->ValeurCouranteEnUnité(50);
    bureau->Fenêtre().CommenceLEssai();
    EXPECT_TRUE(QTest::qWaitFor([&] { return Ligne(kPompe); }, 2000));
    EXPECT_EQ(valve->ValeurCouranteEnUnité(), 0) << "no set point is left over for the pump";
    gêne();
    Laisse(1500);
    const QString bilan = Le<QLabel>("bilanEssai").text();
    EXPECT_TRUE(bilan.startsWith(fin)) << bilan.toStdString();
    EXPECT_FALSE(Ligne(kPompe));
    EXPECT_EQ(Volts("1"), 0);
  }
}

TEST_F(LeBureau, MèneLEssaiJusquALaRupture) {
  Ouvre();
  bureau->LeBattement().Arrête();
  Le<QDoubleSpinBox>("vitesseEssai").setValue(5);
  bureau->Fenêtre().CommenceLEssai();
  double t = bureau->LeBattement().Secondes();
  const auto& bilan = Le<QLabel>("bilanEssai");
  for (const double limite = t + 60; t < limite && !bilan.text().startsWith("End"); t += 0.001) {
    bureau->LaMachine().Jumelle()->AvanceJusquA(t);  // as fast as it goes
    bureau->LaMarche().Passe();
    bureau->Fenêtre().AprèsLaPasse(t);
    if (std::fmod(t, 0.1) < 0.001) QCoreApplication::processEvents();
  }
  const std::string texte = bilan.text().toStdString();
  EXPECT_TRUE(texte.starts_with("End: specimen broken\nMaximum: ")) << texte;
  EXPECT_NEAR(bilan.text().section(' ', 3, 3).toDouble(), 60, 0.5) << texte;
}

TEST_F(LeBureau, RefuseCeQuIlNeConnaîtPas) {
  Ouvre();
  options.langue = "klingon";
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
}  // namespace zuma::essai
