#include <cstdio>

#include "core/chassis.h"
#include "host/interruption.h"
#include "host/machine.h"
#include "host/problemes.h"
#include "host/session.h"
#include "host/verbes.h"
#include "host/vue.h"
#include "platform/linux/parametres.h"
#include "platform/linux/securite.h"
#include "platform/linux/traducteur.h"

namespace zuma::host {
namespace {

constexpr double kPasDePasse = 0.001;     // seconds between passes
constexpr double kPeriodeTerminal = 0.1;  // seconds between views on a terminal
constexpr double kPeriodeLignes = 0.5;    // the same on a pipe

/// A frame on its machine, in the host's order, from load to release.
class Essai {
 public:
  Essai(const OptionsRun& options, Machine& machine, const Ref<Recueil>& recueil)
      : options_(options), machine_(machine), recueil_(recueil), chassis_(machine.Services()) {
    const Ref<BaseDeDonnées> base = OuvreLaBase(options.fichier, false);
    ExigeChassis(*base, options.fichier, options.chassis);
    sécurité_->Branche(chassis_);
    sécurité_->Bornes(*traducteur_);
    chassis_.TimerExact(machine.Timer());
    chassis_.ChargeErreur(recueil);
    chassis_.ChargeLeChassis(base, options.chassis);
    chassis_.Lien(base, std::to_string(options.chassis), sécurité_, paramètres_.Collection(),
                  traducteur_);
    chassis_.MiseàJourDesLiens();
    machine.Branche(chassis_);
    chassis_.Initialise();
  }

  // Outputs go to rest before the frame is released: a program that ends must not leave a machine
  // under its last set point.
  ~Essai() {
    try {
      chassis_.DéclencheAU();
      chassis_.Décharge();
    } catch (...) {
      recueil_->AjouteErreur(EchecCourant(__LINE__).what(), {});
    }
  }
  Essai(const Essai&) = delete;
  Essai& operator=(const Essai&) = delete;

  void Tourne() {
    const double période = terminal_.EstTerminal() ? kPeriodeTerminal : kPeriodeLignes;
    double prochaineVue = période;
    double secondes = 0;
    while (!Interruption::Demandée() && !(options_.secondes && secondes >= *options_.secondes)) {
      secondes += kPasDePasse;
      machine_.AvanceJusquA(secondes);
      chassis_.MetàJour();
      if (secondes + kPasDePasse / 2 < prochaineVue) continue;
      prochaineVue += période;
      Montre(secondes);
    }
  }

 private:
  void Montre(double secondes) {
    if (options_.json) {
      std::printf("%s\n", VueEnJson(chassis_, machine_, secondes).c_str());
      std::fflush(stdout);
    } else if (terminal_.EstTerminal()) {
      terminal_.Montre(VueVivante(chassis_, machine_, terminal_, secondes));
    } else {
      terminal_.Montre(VueEnLignes(chassis_, machine_, secondes));
    }
  }

  const OptionsRun& options_;
  Machine& machine_;
  Ref<Recueil> recueil_;
  Terminal terminal_;
  Ref<linux_::Traducteur> traducteur_ = Crée<linux_::Traducteur>();
  linux_::Parametres paramètres_;
  Ref<linux_::Securite> sécurité_ = Crée<linux_::Securite>(machine_.Timer());
  Chassis chassis_;
};

void ImprimeLesProblèmes(const Recueil& recueil) {
  for (const Problème& problème : recueil.Problèmes()) {
    std::fprintf(stderr, "%s\n", Ligne(problème).c_str());
  }
}

}  // namespace

int Run(const OptionsRun& options) {
  const auto recueil = Crée<Recueil>();
  const auto machine = options.simulation ? MachineSimulée(*recueil) : MachineRéelle(*recueil);
  {
    const Interruption interruption;
    Essai essai(options, *machine, recueil);
    essai.Tourne();
  }
  ImprimeLesProblèmes(*recueil);
  return recueil->Problèmes().empty() ? kBon : kProblèmes;
}

}  // namespace zuma::host
