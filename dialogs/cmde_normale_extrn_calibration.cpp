#include "dialogs/cmde_normale_extrn_calibration.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

#include "commands/commande.h"
#include "core/chassis.h"
#include "core/recherche.h"
#include "dialogs/affichage_court.h"
#include "dialogs/fenetres_d_etalonnage.h"

namespace zuma {
namespace {

// The shortest text that reads back as this very number: a row that was only moved keeps its value.
Valeur EnTexte(double nombre) {
  constexpr int kToujours = 17;  // digits that are enough for every number
  std::string texte = TexteDeNombre(nombre);
  double relu = 0;
  for (int chiffres = 16; chiffres <= kToujours; ++chiffres) {
    if (LitNombre(texte, relu) && relu == nombre) break;
    std::array<char, 32> tampon{};
    const auto fin =
        std::to_chars(tampon.begin(), tampon.end(), nombre, std::chars_format::general, chiffres);
    texte.assign(tampon.begin(), fin.ptr);
    std::ranges::replace(texte, '.', ',');
  }
  return texte;
}

}  // namespace

const FeuilleEtalonnage::Modèle Cmde_Normale_Extrn_Calibration::kModèle{
    "Calibration Commande Externe", {"Unité", "Valeur de sortie"}, kUnités};

void Cmde_Normale_Extrn_Calibration::Montre(const Ref<Cmde_Normale_Extrn_Calibration>& moi,
                                            FenêtresDEtalonnage& fenêtres, FenêtreHôte* mère) {
  Ouvre(mère, [&] { fenêtres.Montre(moi, mère); });
}

void Cmde_Normale_Extrn_Calibration::Reçoit(Commande& commande) {
  if (commande.TypeCommande() != ENUM_TYPE_COMMANDE::Recopie) {
    commande.Montre("External calibration forbidden");
    Ferme();
    return;
  }
  commande_ = &commande;
}

void Cmde_Normale_Extrn_Calibration::Reçoit(Chassis& chassis) {
  if (commande_ == nullptr) return;
  chassis_ = chassis.Suivi();
  CmbCapteurARecopier = {};
  for (const CapteurRef& capteur : *chassis.Capteurs()) {
    CmbCapteurARecopier.textes.push_back(capteur->Label());
  }
  Remplit(*commande_, commande_->NomDeLaCommande());
  const CapteurRef suivi = commande_->CapteurDeRecopie();
  const auto& labels = CmbCapteurARecopier.textes;
  const auto choisi = suivi ? std::ranges::find(labels, suivi->Label()) : labels.end();
  if (choisi != labels.end()) {
    CmbCapteurARecopier.choisi = static_cast<std::size_t>(choisi - labels.begin());
  }
  choixRempli_ = CmbCapteurARecopier.choisi;
  Timer1();
}

void Cmde_Normale_Extrn_Calibration::OublieSonObjet() noexcept {
  commande_ = nullptr;
  Ferme();
}

void Cmde_Normale_Extrn_Calibration::Timer1() {
  if (commande_ == nullptr || chassis_.expired()) return Ferme();
  const CapteurRef suivi = commande_->CapteurDeRecopie();
  if (suivi) valeurCapteur_ = AffichageCourt(suivi->ValeurCourante());
  // Without a channel each reading would be a failure in the error record, five a second.
  AfficheSousLaTableSaisie(suivi ? suivi->ValeurCourante() : 0, &TableEtalonnage::VersPoints);
  valeurSortie_ = AffichageCourt(commande_->Canal() ? commande_->ValeurCouranteEnPoints() : 0);
}

std::string Cmde_Normale_Extrn_Calibration::CapteurChoisi() const {
  const auto& [textes, choisi] = CmbCapteurARecopier;
  return choisi ? textes.at(*choisi) : std::string();
}

// Tells its failures itself, in message boxes; those of the sensor's form go to the window that
// pressed the button.
void Cmde_Normale_Extrn_Calibration::BtnOK() {
  if (commande_ == nullptr || chassis_.expired()) return Ferme();
  // Its owner may take the command away when it hears of the calibration, and fail then.
  const Plateforme& plateforme = commande_->LaPlateforme();
  const std::string clé = commande_->Key();
  const std::string nom = commande_->NomDeLaCommande();
  try {
    Text1_LostFocus();
    Enregistre(*commande_);
  } catch (...) {
    const Echec échec = EchecCourant(0);
    plateforme.messages->Montre(
        "Erreur N°" + std::to_string(échec.NuméroErreur()) + " (" + échec.Description() + ")",
        {"Commande", clé, nom});
  }
}

// Everything is read before anything is written: neither row nor command is left half calibrated.
void Cmde_Normale_Extrn_Calibration::Enregistre(Commande& commande) {
  Recordset& ligne = *commande.LeRecordset();
  if (!TrouveLaLigne(commande, ligne)) return;
  const Points points = PointsSaisis();
  const std::string choisi = CapteurChoisi();
  // No choice is not a sensor without a label.
  const CapteurRef suivi =
      choisi.empty() ? CapteurRef() : recherche::CapteurDeLabel(*chassis_.lock(), choisi);
  const bool autre = CmbCapteurARecopier.choisi != choixRempli_;
  if (autre || OntChangé(points)) {
    ligne.Edit();
    if (autre) ligne.Ecrit("Capteur de recopie", choisi);
    EcritLesPoints(ligne, points, &EnTexte);
    Sauve(commande, ligne, OntChangé(points));
  }
  if (suivi) commande.CapteurDeRecopie(suivi);
  PorteLesPoints(commande, points);
  FenêtreHôte* const mère = Propriétaire();
  BtnCancel();
  if (mère != nullptr) mère->rafraichitTout();
}

void Cmde_Normale_Extrn_Calibration::BtnCancel() {
  Ferme();
  if (commande_ != nullptr) (void)std::exchange(commande_, nullptr)->ResetFeuilleEtalonnage();
}

}  // namespace zuma
