// Pictures of the windows for the documentation: zuma_images FOLDER. The values are those of the
// demo frames on the simulated machine.
#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <QWidget>
#include <clocale>
#include <cstdio>
#include <functional>

#include "core/recherche.h"
#include "dialogs/qt/fenetre_qt.h"
#include "dialogs/qt/fenetres_qt.h"
#include "instruments/cbr_utest.h"
#include "instruments/conditionneur_num_k9_v1_00.h"
#include "instruments/instrument.h"
#include "outils/chassis_de_demo.h"
#include "sim/liaisons_simulees.h"
#include "sim/testeur_cbr_simule.h"

namespace zuma {
namespace {

constexpr double kAppui = 25;  // kN on the specimen

/// Windows in English, pictures in one folder.
struct Atelier {
  QString dossier;
  Ref<linux_::Traducteur> mots = essai::EnAnglais();
  qt::FenêtresQt fenêtres{mots};
  host::Recueil messages;
  int fautes = 0;

  void Photographie(QWidget* fenêtre, const char* nom) {
    const QString fichier = dossier + "/" + nom + ".png";
    if (fenêtre == nullptr || !fenêtre->grab().save(fichier)) {
      std::fprintf(stderr, "%s could not be made\n", qPrintable(fichier));
      ++fautes;
    }
  }
};

// The newest window that holds an element of that name.
QWidget* FenêtreAvec(const char* nom) {
  for (QWidget* fenêtre : QApplication::topLevelWidgets()) {
    if (fenêtre->isVisible() && fenêtre->findChild<QWidget*>(nom) != nullptr) return fenêtre;
  }
  return nullptr;
}

// The press under load, as an operator would bring it there.
void Appuie(essai::ChassisDeDémo& chassis) {
  chassis.Passe(0.2);
  chassis->Watchdog()->Enabled(true);
  for (const char* sortie : {"Pompe", "Distributeur"}) {
    recherche::SortieLogiqueDeLabel(*chassis, sortie)->ValeurCourante(ENUM_ETAT_LOGIQUE::Actif);
  }
  const CommandeRef valve = chassis->Commandes()->Item("1");
  const CapteurRef force = recherche::CapteurDeLabel(*chassis, "Force");
  valve->Enabled(true);
  chassis.Passe(3);
  for (valve->ValeurCouranteEnUnité(10); force->ValeurCourante() < 0.5;) chassis.Passe(0.01);
  for (valve->ValeurCouranteEnUnité(1.5); force->ValeurCourante() < kAppui;) chassis.Passe(0.01);
  valve->ValeurCouranteEnUnité(0);
  chassis.Passe(0.5);
}

void Etalonnages(Atelier& atelier) {
  const essai::BaseDeDémo base;
  essai::ChassisDeDémo chassis(base.chemin, linux_::kChassisDeDémonstration, atelier.messages,
                               atelier.fenêtres, atelier.mots);
  Appuie(chassis);
  const CapteurRef capteur = chassis->Capteurs()->Item("7");
  (void)capteur->EtalonnageExterieur(nullptr);
  QApplication::processEvents();
  QWidget* const fenêtre = FenêtreAvec("TxtNomAffiche");
  atelier.Photographie(fenêtre, "dialogue-capteur");
  if (fenêtre != nullptr) fenêtre->close();
  (void)chassis->Commandes()->Item("4")->EtalonnageExterieur(nullptr);
  QApplication::processEvents();
  atelier.Photographie(FenêtreAvec("CmbCapteurARecopier"), "dialogue-commande");
}

void Conditionneur(Atelier& atelier) {
  const essai::BaseDeDémo base;
  essai::ChassisDeDémo chassis(base.chemin, linux_::kChassisDesAppareils, atelier.messages,
                               atelier.fenêtres, atelier.mots);
  const CarteRef carte = chassis->Cartes()->Item("22");
  for (int i = 0; i < 300; ++i) {
    chassis.Passe(0.005);
    carte->MetàJour();
  }
  instruments::De<ClassConditionneurNum_K9_V1_00>(*carte).Reglage(nullptr);
  QApplication::processEvents();
  atelier.Photographie(FenêtreAvec("LampeInitialise"), "dialogue-conditionneur");
}

// A tester on the second of three ports, at another speed than the first one tried.
void Port(Atelier& atelier) {
  const auto horloge = Crée<sim::HorlogeVirtuelle>(10);
  sim::FabriqueLiaisonsSimulée liaisons;
  const auto testeur = Crée<sim::TesteurCBRSimulé>(*horloge);
  testeur->vitesseDeLigne = 19200;
  for (const std::int32_t port : {3, 15, 16}) liaisons.Attache(port, testeur);
  Plateforme services;
  services.messages = &atelier.messages;
  services.fenêtres = &atelier.fenêtres;
  services.liaisons = &liaisons;
  services.horloge = horloge.Brut();
  CBR_UTEST_CLASS instrument(services);
  instrument.TimerExact(horloge);
  QTimer::singleShot(0, [&] {
    QWidget* const fenêtre = FenêtreAvec("BtnAutoScan");
    if (fenêtre != nullptr) fenêtre->findChild<QPushButton*>("BtnAutoScan")->click();
    atelier.Photographie(fenêtre, "dialogue-port");
    if (fenêtre != nullptr) fenêtre->findChild<QPushButton*>("BtnClose")->click();
  });
  (void)instrument.Initialise("");
}

}  // namespace
}  // namespace zuma

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: %s FOLDER\n", argv[0]);
    return 2;
  }
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  std::setlocale(LC_NUMERIC, "C");  // Qt takes the user's: simulated instruments speak with points
  zuma::Atelier atelier;
  atelier.dossier = argv[1];
  zuma::Etalonnages(atelier);
  zuma::Conditionneur(atelier);
  zuma::Port(atelier);
  for (const zuma::host::Problème& problème : atelier.messages.Problèmes()) {
    std::fprintf(stderr, "%s\n", zuma::host::Ligne(problème).c_str());
  }
  return atelier.fautes == 0 ? 0 : 1;
}
