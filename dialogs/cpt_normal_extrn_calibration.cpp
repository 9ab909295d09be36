#include "dialogs/cpt_normal_extrn_calibration.h"

#include <utility>

#include "dialogs/affichage_court.h"
#include "dialogs/fenetres_d_etalonnage.h"
#include "sensors/capteur.h"

namespace zuma {
namespace {

Valeur EnNombre(double nombre) {
  return nombre;
}

}  // namespace

const FeuilleEtalonnage::Modèle Cpt_Normal_Extrn_Calibration::kModèle{
    "Calibration Capteur Externe", {"Valeur brute", "Valeur courante"}, kUnités};

void Cpt_Normal_Extrn_Calibration::Reçoit(Capteur& capteur) {
  if (!capteur.EtalonnageExterieurPossible()) {
    capteur.Montre("External calibration forbidden");
    Ferme();
    return;
  }
  capteur_ = &capteur;
  Remplit(capteur, capteur.NomDuCapteur());
  nomRempli_ = TxtNomAffiche = capteur.NomAfficheDuCapteur();
  unitéRemplie_ = TxtUnite = capteur.UnitéEtalonnage();
  // The box begins with what is so: a sensor may have a tare already.
  tare_ = capteur.EtatDeLaTare();
}

void Cpt_Normal_Extrn_Calibration::Montre(const Ref<Cpt_Normal_Extrn_Calibration>& moi,
                                          FenêtresDEtalonnage& fenêtres, FenêtreHôte* mère) {
  Timer1();
  Ouvre(mère, [&] { fenêtres.Montre(moi, mère); });
}

void Cpt_Normal_Extrn_Calibration::OublieSonObjet() noexcept {
  capteur_ = nullptr;
  Ferme();
}

void Cpt_Normal_Extrn_Calibration::ChkTare(bool cochée) {
  tare_ = cochée;
  if (capteur_ == nullptr) return;
  if (cochée) {
    capteur_->Tare();
  } else {
    capteur_->AnnuleTare();
  }
}

void Cpt_Normal_Extrn_Calibration::Timer1() {
  if (capteur_ == nullptr) return;
  valeurBrute_ = AffichageCourt(capteur_->ValeurEnPoints());
  valeurCourante_ = AffichageCourt(capteur_->ValeurCourante());
  AfficheSousLaTableSaisie(capteur_->ValeurEnPoints(), &TableEtalonnage::VersUnités);
}

// Everything is read before anything is written: neither row nor sensor is left half calibrated.
void Cpt_Normal_Extrn_Calibration::BtnOK() {
  if (capteur_ == nullptr) return;
  Text1_LostFocus();
  Recordset& ligne = *capteur_->LeRecordset();
  if (!TrouveLaLigne(*capteur_, ligne)) return;
  const Points points = PointsSaisis();
  Enregistre(ligne, points);
  capteur_->NomAfficheDuCapteur(TxtNomAffiche);
  PorteLesPoints(*capteur_, points);
  // Last: who hears of the unit finds its table, and may cancel the form or let the sensor go.
  capteur_->UnitéEtalonnage(TxtUnite);
  BtnCancel();
}

// A form in which nothing was typed needs no database that can be written.
void Cpt_Normal_Extrn_Calibration::Enregistre(Recordset& ligne, const Points& points) {
  const bool nom = TxtNomAffiche != nomRempli_;
  const bool table = TxtUnite != unitéRemplie_ || OntChangé(points);
  if (!nom && !table) return;
  ligne.Edit();
  if (nom) ligne.Ecrit("Nom affiché", TxtNomAffiche);
  if (TxtUnite != unitéRemplie_) ligne.Ecrit("Unité d'Etalonnage", TxtUnite);
  EcritLesPoints(ligne, points, &EnNombre);
  Sauve(*capteur_, ligne, table);
}

void Cpt_Normal_Extrn_Calibration::BtnCancel() {
  Ferme();
  if (capteur_ != nullptr) (void)std::exchange(capteur_, nullptr)->ResetFeuilleEtalonnage();
}

}  // namespace zuma
