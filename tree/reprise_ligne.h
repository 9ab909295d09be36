#pragma once

#include "platform/collaborateurs.h"
#include "platform/liaison_serie.h"

namespace zuma {

/// Opens a serial line anew that is closed, every second.
class RepriseDeLigne {
 public:
  /// True when the line is open. One that is closed is tried a second after it was first seen so,
  /// then every second; the failure of a try goes to the caller.
  [[nodiscard]] bool Ouverte(ZED_LiaisonSerie& ligne, ZED_Timer& timer) {
    if (ligne.EtatPort() == 1) {
      essai_ = 0;
      return true;
    }
    const double maintenant = timer.LitMicrosecondes();
    const bool due = essai_ != 0 && maintenant >= essai_;
    if (due || essai_ == 0) essai_ = maintenant + kEntreDeuxEssais;
    if (!due) return false;
    ligne.FermePort();
    ligne.OuvrePort();
    return true;
  }

 private:
  static constexpr double kEntreDeuxEssais = 1'000'000;  // microseconds

  double essai_ = 0;  ///< time of the next try; 0 while the line is open
};

}  // namespace zuma
