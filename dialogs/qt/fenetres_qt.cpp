#include "dialogs/qt/fenetres_qt.h"

#include <QApplication>
#include <utility>

#include "dialogs/qt/fenetre_capteur.h"
#include "dialogs/qt/fenetre_choix_du_port.h"
#include "dialogs/qt/fenetre_commande.h"
#include "dialogs/qt/fenetre_conditionneur.h"
#include "dialogs/qt/proprietaire.h"

namespace zuma::qt {
namespace {

void ExigeUneApplication() {
  if (qApp == nullptr) throw Echec::ObjetAbsent();
}

}  // namespace

FenêtresQt::FenêtresQt(Ref<ZED_Traduction> traducteur)
    : mots_(traducteur), conditionneur_(std::move(traducteur)) {}

FenêtresQt::~FenêtresQt() {
  for (const QPointer<FenêtreDeFeuille>& fenêtre : fenêtres_) delete fenêtre;
}

// A form that nobody closed is one that nobody could see: the program is ending, and asking again
// would never end.
void FenêtresQt::MontreModal(ChoixDuPort& feuille) {
  ExigeUneApplication();
  FenêtreChoixDuPort fenêtre(feuille, mots_);
  FenêtreChoixDuPort* const avant = std::exchange(choix_, &fenêtre);
  MontreAuDessus(fenêtre);
  choix_ = avant;
  if (!feuille.Visible()) return;
  feuille.BtnClose();
  throw Echec::ObjetAbsent();
}

template <class Fenêtre, class Feuille>
void FenêtresQt::Présente(Feuille& feuille, const auto& crée, FenêtreHôte* mère) {
  ExigeUneApplication();
  std::erase_if(fenêtres_, [](const auto& fenêtre) { return !fenêtre; });
  for (const QPointer<FenêtreDeFeuille>& fenêtre : fenêtres_) {
    const auto* const sienne = dynamic_cast<const Fenêtre*>(fenêtre.data());
    if (sienne != nullptr && sienne->Sert(feuille)) return fenêtre->Présente(mère);
  }
  fenêtres_.emplace_back(crée());
  fenêtres_.back()->Présente(mère);
}

void FenêtresQt::Montre(FeuilleConditionneurNumerique& feuille, FenêtreHôte* mère) {
  Présente<FenêtreConditionneur>(
      feuille, [&] { return new FenêtreConditionneur(feuille, mots_); }, mère);
}

void FenêtresQt::Montre(Ref<Cpt_Normal_Extrn_Calibration> feuille, FenêtreHôte* mère) {
  Présente<FenêtreCapteur>(
      *feuille, [&] { return new FenêtreCapteur(feuille, mots_, refus_); }, mère);
}

void FenêtresQt::Montre(Ref<Cmde_Normale_Extrn_Calibration> feuille, FenêtreHôte* mère) {
  Présente<FenêtreCommande>(
      *feuille, [&] { return new FenêtreCommande(feuille, mots_, refus_); }, mère);
}

void FenêtresQt::TraiteLesEvénements() {
  if (choix_ != nullptr) choix_->Relit();
  QCoreApplication::processEvents();
}

}  // namespace zuma::qt
