#pragma once

#include "dialogs/feuille_etalonnage.h"

namespace zuma {

class Capteur;
class FenêtresDEtalonnage;

/// Form on which a user calibrates a sensor on the machine: the live raw and present values beside
/// the table of points, the displayed name and the unit. Column 0 of the grid holds points, column
/// 1 units.
///
/// The sensor owns the form, from `Capteur.EtalonnageExterieur` to `ResetFeuilleEtalonnage`, and
/// takes it off the screen when it goes.
class Cpt_Normal_Extrn_Calibration final : public FeuilleEtalonnage {
 public:
  /// Column of the points.
  static constexpr int kPoints = 0;
  /// Column of the units.
  static constexpr int kUnités = 1;

  Cpt_Normal_Extrn_Calibration() : FeuilleEtalonnage(kModèle) {}

  /// Takes the sensor and fills the form from it. A sensor that users may not calibrate is told in
  /// a message, and the form closes.
  void Reçoit(Capteur& capteur);
  /// Gives the form its window, or brings the one that it has to the front.
  void Montre(const Ref<Cpt_Normal_Extrn_Calibration>& moi, FenêtresDEtalonnage& fenêtres,
              FenêtreHôte* mère);
  /// The sensor goes away.
  void OublieSonObjet() noexcept override;

  /// Name that the operator reads, as it is being typed.
  std::string TxtNomAffiche;
  /// Unit, as it is being typed.
  std::string TxtUnite;
  /// Live points of the sensor.
  [[nodiscard]] const std::string& LblValeurBrute() const noexcept { return valeurBrute_; }
  /// Live value of the sensor.
  [[nodiscard]] const std::string& LblValeurCourante() const noexcept { return valeurCourante_; }
  ///@{
  /// Checked takes a tare to 0, unchecked cancels it. A tare stays whatever button ends the form.
  [[nodiscard]] bool ChkTare() const noexcept { return tare_; }
  void ChkTare(bool cochée);
  ///@}

  void Timer1() override;
  /// Writes what changed of name, unit and points to the sensor's row, then all to the sensor. A
  /// record that is no longer that of the sensor is told in a message, and the form closes. Any
  /// other failure goes to the caller, with row, sensor and form as they were.
  void BtnOK() override;
  void BtnCancel() override;

 private:
  static const Modèle kModèle;
  void Enregistre(Recordset& ligne, const Points& points);

  Capteur* capteur_ = nullptr;
  std::string nomRempli_;
  std::string unitéRemplie_;
  std::string valeurBrute_;
  std::string valeurCourante_;
  bool tare_ = false;
};

}  // namespace zuma
