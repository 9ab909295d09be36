#pragma once

#include <cstdint>
#include <memory>

#include "base/ref.h"

namespace zuma {

class ChoixDuPort;
class Capteur;
class Chassis;
class Commande;
class FeuilleConditionneurNumerique;
class ZED_Traduction;

/// A window of the host, the parent of those that the library asks for.
class FenêtreHôte {
 public:
  FenêtreHôte() = default;
  FenêtreHôte(const FenêtreHôte&) = delete;
  FenêtreHôte& operator=(const FenêtreHôte&) = delete;
  virtual ~FenêtreHôte() = default;
  /// Handle of the window in its window system, by which another one is made its child; 0 when it
  /// has none.
  [[nodiscard]] virtual std::uintptr_t hwnd() const { return 0; }
  /// Asked once a command was calibrated: shows the new table. A host without it fails with 438.
  virtual void rafraichitTout() { throw Echec(Numéro::OpérationAbsente); }
  /// For who keeps the window longer than a call: empty once it is gone.
  [[nodiscard]] std::weak_ptr<FenêtreHôte> Suivie() const noexcept { return moi_; }

 private:
  std::shared_ptr<FenêtreHôte> moi_{this, [](FenêtreHôte*) {}};
};

/// A calibration form, as the object that it calibrates sees it: it stands from
/// `EtalonnageExterieur` to `ResetFeuilleEtalonnage`.
class FeuilleTenue {
 public:
  virtual ~FeuilleTenue() = default;
  /// The object goes away: the form leaves the screen and touches it no more.
  virtual void OublieSonObjet() noexcept = 0;
};

/// What an object hands over to be calibrated.
struct DemandeDEtalonnage {
  Ref<FeuilleTenue>& feuille;  ///< its form; made when there is none, and kept whatever follows
  /// Translator of the texts of the form.
  const Ref<ZED_Traduction>& traducteur;
  FenêtreHôte* mère;  ///< none when null
};

/// Shows the forms of the library. What a form holds, accepts and does is its own business
/// (`dialogs/`); here it only gets a window.
class Fenêtres {
 public:
  virtual ~Fenêtres() = default;
  /// Shows the form modally: returns once it is hidden.
  virtual void MontreModal(ChoixDuPort& feuille) = 0;
  /// The single form of the digital conditioners, which belongs to the host like its translator;
  /// null where the host has none.
  [[nodiscard]] virtual FeuilleConditionneurNumerique* FeuilleDuConditionneur() { return nullptr; }
  /// Shows the form as a child of `mère` (none when null) and returns at once; the form lives until
  /// it is unloaded.
  virtual void Montre(FeuilleConditionneurNumerique& feuille, FenêtreHôte* mère) = 0;
  ///@{
  /// Shows the calibration form of a sensor, or of a command that follows one of the sensors of its
  /// frame, or brings it to the front, and returns at once. A form on the screen keeps what is
  /// being typed in it.
  virtual void Etalonne(Capteur& capteur, const DemandeDEtalonnage& demande) = 0;
  virtual void Etalonne(Commande& commande, const Ref<Chassis>& chassis,
                        const DemandeDEtalonnage& demande) = 0;
  ///@}
  /// Lets the windows live while a form is at work.
  virtual void TraiteLesEvénements() = 0;
};

}  // namespace zuma
