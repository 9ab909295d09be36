#include "host/desktop/bureau.h"

#include <QDate>
#include <QString>
#include <algorithm>
#include <utility>

#include "host/configuration.h"
#include "host/desktop/boite_de_depart.h"
#include "host/desktop/traducteur_du_chassis.h"
#include "host/drivers_charges.h"
#include "host/parametres.h"

namespace zuma::host {
namespace {

constexpr std::chrono::seconds kRapport{1};

std::unique_ptr<Machine> LaMachine(const OptionsDesktop& options, BoîteDeMessage& messages) {
  const Raccordement raccordement = LitLesPorts(options.ports, options.can);
  const auto drivers = LesDrivers(options.drivers);
  if (options.simulation) return MachineSimulée(messages, Cadence::Réelle, drivers);
  return MachineRéelle(messages, raccordement, drivers);
}

// A picture is taken without anybody who could answer.
MalgréTout LeChoix(const OptionsDesktop& options, const Textes& textes) {
  if (!options.malgréTout || !options.image.empty()) return SelonLOption(options.malgréTout);
  return [&](const DépartRefusé& refus) { return DemandeLeDépart(refus, textes); };
}

}  // namespace

Bureau::Bureau(const OptionsDesktop& options)
    : traducteur_(TraducteurEn(options.langue)),
      textes_(traducteur_),
      machine_(host::LaMachine(options, messages_)),
      fenêtres_(traducteur_) {
  machine_->Services().fenêtres = &fenêtres_;
  machine_->Services().réglages.étalonnage = {options.personne, [] {
                                                const QDate jour = QDate::currentDate();
                                                return jour.toString(Qt::ISODate).toStdString();
                                              }};
  // A command may follow what a sensor reads behind a calibration, a tare or a zero, and a servo
  // one at rest is corrected by its pressures: none of them while a stop is latched. A save that
  // moves nothing yet would move the output by itself after the acknowledgement. Extremes, curves
  // and the maintenance form of a conditioner move no output.
  fenêtres_.Refuse([this] {
    const bool arrêt = marche_ && marche_->LaSécurité().Déclenchée();
    return arrêt ? textes_("Refus pendant un arret") : QString();
  });
  marche_ = std::make_unique<ChassisEnMarche>(options.fichier, options.chassis, *machine_, recueil_,
                                              LitLesParamètres(options.fichier, options.paramètres),
                                              LeChoix(options, textes_), traducteur_);
  fenêtre_ = std::make_unique<FenêtrePrincipale>(*marche_, battement_, recueil_, textes_,
                                                 options.simulation);
  marche_->GardeLesArrêts(options.arrêts.empty() ? DossierDesArrêts(options.fichier)
                                                 : options.arrêts);
  QObject::connect(&rapports_, &QTimer::timeout, &rapports_, [this] {
    machine_->Rapporte(*recueil_);
    SuitLesEtalonnages();
  });
  rapports_.start(kRapport);
}

// Who looks from outside sees units, limits and dates as a form has left them.
void Bureau::SuitLesEtalonnages() {
  const auto ouverte = [](const auto& objet) { return objet->ModeEdition(); };
  Chassis& chassis = marche_->LeChassis();
  const bool enCours = std::ranges::any_of(*chassis.Capteurs(), ouverte) ||
                       std::ranges::any_of(*chassis.Commandes(), ouverte);
  if (std::exchange(étalonne_, enCours) && !enCours) marche_->LaPublication().Redécrit();
}

Bureau::~Bureau() {
  battement_.Arrête();
  rapports_.stop();
  if (fenêtre_) {
    fenêtre_->Fige();
    fenêtre_->hide();
  }
  marche_.reset();
  machine_->Rapporte(*recueil_);
}

Battement::Travail Bureau::Travail() {
  return {.avance = [this](double secondes) { return machine_->AvanceJusquA(secondes); },
          .passe = [this] { marche_->Passe(); },
          .ensuite = [this](double secondes) { AprèsLaPasse(secondes); },
          .échec = [this](std::string_view texte) { recueil_->AjouteErreur(texte, {}); }};
}

// After the failure of some machines nothing may go on.
void Bureau::AprèsLaPasse(double secondes) {
  fenêtre_->AprèsLaPasse(secondes);
  if (!machine_->Fini().empty()) fenêtre_->close();
}

}  // namespace zuma::host
