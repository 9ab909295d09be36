#pragma once

namespace zuma {

class ChoixDuPort;
class FeuilleConditionneurNumerique;

/// A window of the host, the parent of those that the library asks for.
class FenêtreHôte {
 public:
  virtual ~FenêtreHôte() = default;
};

/// Shows the forms of the instruments. What a form holds, accepts and does is its own business
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
  /// Lets the windows live while a form is at work.
  virtual void TraiteLesEvénements() = 0;
};

}  // namespace zuma
