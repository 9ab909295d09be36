#pragma once

#include "dialogs/choix_du_port.h"
#include "dialogs/feuille_etalonnage.h"

namespace zuma {

class Chassis;
class Commande;
class FenêtresDEtalonnage;

/// Form on which a technician edits the calibration table of a copying command and chooses the
/// sensor that it follows. Column 0 of the grid holds units, column 1 points.
///
/// The command owns the form, from `Commande.EtalonnageExterieur` to `ResetFeuilleEtalonnage`, and
/// takes it off the screen when it goes. Until `BtnOK` the command goes on with its old table.
class Cmde_Normale_Extrn_Calibration final : public FeuilleEtalonnage {
 public:
  /// Column of the units.
  static constexpr int kUnités = 0;
  /// Column of the points.
  static constexpr int kPoints = 1;

  Cmde_Normale_Extrn_Calibration() : FeuilleEtalonnage(kModèle) {}

  /// Gives the form its window, or brings the one that it has to the front.
  void Montre(const Ref<Cmde_Normale_Extrn_Calibration>& moi, FenêtresDEtalonnage& fenêtres,
              FenêtreHôte* mère);
  /// Takes the command. One that copies no sensor is told in a message, and the form hides.
  void Reçoit(Commande& commande);
  /// Takes the frame whose sensors can be followed, and fills the form.
  void Reçoit(Chassis& chassis);
  /// The command goes away. Once its frame alone went, the next refresh closes the form.
  void OublieSonObjet() noexcept override;

  /// The sensors' labels.
  ListeDeChoix CmbCapteurARecopier;
  /// Live value of the sensor chosen.
  [[nodiscard]] const std::string& LblValeurCapteur() const noexcept { return valeurCapteur_; }
  /// Live points of the channel; 0 without one.
  [[nodiscard]] const std::string& LblValeurSortie() const noexcept { return valeurSortie_; }

  void Timer1() override;
  /// Writes what changed of sensor and points to the command's row, then to the command, closes,
  /// and asks the owner for `rafraichitTout`. A failure is told in a message and leaves what was
  /// not yet written as it was; the form then stays.
  void BtnOK() override;
  void BtnCancel() override;

 private:
  static const Modèle kModèle;

  void Enregistre(Commande& commande);
  [[nodiscard]] std::string CapteurChoisi() const;

  Commande* commande_ = nullptr;
  std::optional<std::size_t> choixRempli_;
  std::weak_ptr<Chassis> chassis_;
  std::string valeurCapteur_;
  std::string valeurSortie_;
};

}  // namespace zuma
