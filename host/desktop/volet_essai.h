#pragma once

#include <QWidget>
#include <array>
#include <memory>

#include "host/desktop/fiche_commande.h"
#include "host/desktop/graphique.h"
#include "host/desktop/textes.h"
#include "host/verbes/essai_compression.h"

class QDoubleSpinBox;
class QLabel;
class QPushButton;

namespace zuma::host {

/// The compression test of the demo: start, curves while it runs, end and results. It commands the
/// machine behind each pass, like any host.
class VoletEssai : public QWidget {
 public:
  VoletEssai(Chassis& chassis, const linux_::Securite& sécurité, const Textes& textes,
             Verrou verrou);

  /// True when the frame has what the test needs.
  [[nodiscard]] static bool Possible(Chassis& chassis, const linux_::Securite& sécurité);

  /// Begins a test; nothing while one runs or outputs must not be operated.
  void Commence();
  [[nodiscard]] bool EnCours() const { return essai_ && !essai_->Terminé(); }
  /// Behind each pass.
  void AprèsLaPasse(double secondes);
  /// Paints, unless nobody sees it.
  void Rafraîchit();
  /// The frame goes away.
  void Oublie() { essai_.reset(); }

 private:
  void Compose();
  [[nodiscard]] Graphique* UnGraphique(const char* nom, std::string_view abscisse);
  void Interrompt();
  void Dessine();
  [[nodiscard]] QString TexteDuBilan() const;

  Chassis& chassis_;
  const linux_::Securite& sécurité_;
  const Textes& textes_;
  Verrou verrou_;
  std::unique_ptr<EssaiCompression> essai_;  ///< the last one
  std::size_t dessinés_ = 0;                 ///< points of the test that the curves show
  QDoubleSpinBox* vitesse_;
  QPushButton* commence_;
  QPushButton* interrompt_;
  QLabel* bilan_;
  std::array<Graphique*, 2> graphiques_;
};

}  // namespace zuma::host
