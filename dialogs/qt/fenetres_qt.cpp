#include "dialogs/qt/fenetres_qt.h"

#include <QCoreApplication>
#include <utility>

namespace zuma::qt {

FenêtresQt::FenêtresQt(Ref<ZED_Traduction> traducteur) : traducteur_(std::move(traducteur)) {}

void FenêtresQt::MontreModal(ChoixDuPort&) {}
void FenêtresQt::Montre(FeuilleConditionneurNumerique&, FenêtreHôte*) {}
void FenêtresQt::Montre(Ref<Cpt_Normal_Extrn_Calibration>, FenêtreHôte*) {}
void FenêtresQt::Montre(Ref<Cmde_Normale_Extrn_Calibration>, FenêtreHôte*) {}
void FenêtresQt::TraiteLesEvénements() {
  QCoreApplication::processEvents();
}

}  // namespace zuma::qt
