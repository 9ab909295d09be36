#include "host/desktop/desktop.h"

#include <QApplication>
#include <QMessageBox>
#include <QTimer>
#include <clocale>
#include <cstdio>
#include <cstdlib>

#include <unistd.h>

#include "host/configuration.h"
#include "host/desktop/boite_de_depart.h"
#include "host/desktop/bureau.h"
#include "host/desktop/fin_demandee.h"
#include "host/desktop/spectateur.h"
#include "host/desktop/traducteur_du_chassis.h"
#include "host/interruption.h"
#include "host/regard/choix.h"

namespace zuma::host {
namespace {

// A failure that comes out of a handler must not end the program with the outputs as they are.
class Application : public QApplication {
 public:
  using QApplication::QApplication;

  void Consigne(Ref<Recueil> recueil) { recueil_ = std::move(recueil); }
  bool notify(QObject* objet, QEvent* évènement) override {
    try {
      return QApplication::notify(objet, évènement);
    } catch (const std::exception& e) {
      if (recueil_) recueil_->AjouteErreur(e.what(), {});
    }
    return false;
  }

 private:
  Ref<Recueil> recueil_;
};

bool EstDonnée(const char* variable) {
  const char* valeur = std::getenv(variable);
  return valeur != nullptr && *valeur != '\0';
}

// Without a screen the toolkit ends the program by itself, and with a core dump.
void ExigeUnEcran(const OptionsDesktop& options) {
  if (EstDonnée("QT_QPA_PLATFORM")) return;
  if (!options.image.empty()) {
    ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
  } else if (!EstDonnée("DISPLAY") && !EstDonnée("WAYLAND_DISPLAY")) {
    throw MauvaisUsage(
        "no screen: neither DISPLAY nor WAYLAND_DISPLAY is set. Start it from a desktop session, "
        "or watch the frame in the terminal with zuma run");
  }
}

// Started from an icon there is no terminal to read.
bool SansTerminal() {
  return ::isatty(STDERR_FILENO) != 1 && QGuiApplication::platformName() != "offscreen";
}

template <class Fenêtre>
void PrévoitLImage(const OptionsDesktop& options, Fenêtre& fenêtre, bool& écrite) {
  fenêtre.resize(Fenêtre::kTaille);  // nobody looks at the screen
  QTimer::singleShot(static_cast<int>(options.après * 1000), &fenêtre, [&] {
    écrite = fenêtre.grab().save(EnQt(options.image));
    fenêtre.close();
  });
}

int Rapporte(const Recueil& recueil, std::string_view fini) {
  if (!fini.empty()) {
    std::fprintf(stderr, "zuma: the process ends here: %s\n", std::string(fini).c_str());
  }
  for (const Problème& problème : recueil.Problèmes()) {
    std::fprintf(stderr, "%s\n", Ligne(problème).c_str());
  }
  return recueil.Problèmes().empty() && fini.empty() ? kBon : kProblèmes;
}

int Montre(const OptionsDesktop& options, Application& application) {
  Ref<Recueil> recueil;
  std::string fini;
  bool imageEcrite = options.image.empty();
  {
    Bureau bureau(options);
    recueil = bureau.LeRecueil();
    application.Consigne(recueil);
    bureau.Fenêtre().MontreLOnglet(options.onglet);
    // Also out of a dialog's event loop, and whatever other windows stand open.
    bureau.Fenêtre().QuandFermée([] { QCoreApplication::exit(); });
    bureau.Fenêtre().show();
    if (!options.image.empty()) PrévoitLImage(options, bureau.Fenêtre(), imageEcrite);
    bureau.LeBattement().Démarre();
    if (options.essai) bureau.Fenêtre().CommenceLEssai();
    if (!Interruption::Demandée()) QApplication::exec();
    fini = bureau.LaMachine().Fini();
  }
  if (!imageEcrite) throw MauvaisUsage(options.image + " cannot be written");
  return Rapporte(*recueil, fini);
}

// The window of a frame that another program runs.
int Regarde(const OptionsDesktop& options) {
  const Textes textes(TraducteurEn(options.langue));
  Spectateur fenêtre(LaPublication(options.fichier, options.chassis), textes);
  bool imageEcrite = options.image.empty();
  fenêtre.show();
  if (!options.image.empty()) PrévoitLImage(options, fenêtre, imageEcrite);
  if (!Interruption::Demandée()) QApplication::exec();
  if (!imageEcrite) throw MauvaisUsage(options.image + " cannot be written");
  return kBon;
}

}  // namespace

int Desktop(const OptionsDesktop& options) {
  ExigeUnEcran(options);
  const Interruption interruption;
  int nombre = 1;
  char nom[] = "zuma";
  char* arguments[] = {nom, nullptr};
  Application application(nombre, arguments);
  const FinDemandée fin;
  std::setlocale(LC_NUMERIC, "C");  // the toolkit takes the user's: instruments speak with points
  try {
    return options.attache ? Regarde(options) : Montre(options, application);
  } catch (const DépartRefusé& refus) {
    if (SansTerminal()) MontreLeRefus(refus);
    throw;
  } catch (const std::exception& e) {
    if (SansTerminal()) QMessageBox::critical(nullptr, "zuma", EnQt(e.what()));
    throw;
  }
}

}  // namespace zuma::host
