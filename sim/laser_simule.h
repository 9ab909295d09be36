#pragma once

#include <string_view>

#include "sim/horloge_virtuelle.h"
#include "sim/ligne_serie.h"

namespace zuma::sim {

/// Laser extensometer. A request is a letter, a value when something is written, and a carriage
/// return; a write is answered ":", a read the letter, the value and ":", a measure three bytes.
/// What it does not understand it does not answer.
class LaserSimulé : public AppareilSérie {
 public:
  /// A device on the virtual clock.
  using AppareilSérie::AppareilSérie;

  void Reçoit(std::string_view octets, LigneSérie& ligne) override;

  double extension = 0;    ///< distance between the marks, in counts
  bool cibleVue = true;    ///< false: a measure tells that there is none
  double latence = 5'000;  ///< microseconds before an answer
  Octets réponseForcée;    ///< in place of every answer, when not empty

  /// Written by "1" and "0", read as "0" when on and "1" when off.
  bool laser = true;  ///< the laser is on
  bool écho = true;   ///< it repeats what it is sent
  bool zéro = false;  ///< counts from where the marks were when it was switched on
  // Kept and told as they are written.
  Octets unité = "I";     ///< kept and told as it is written
  Octets distance = "0";  ///< kept and told as it is written
  Octets type = "0";      ///< kept and told as it is written

 private:
  [[nodiscard]] Octets Répond(std::string_view demande);
  [[nodiscard]] Octets Mesure() const;
  [[nodiscard]] bool Ecrit(char lettre, std::string_view valeur);
  [[nodiscard]] Octets Lit(char lettre) const;

  Octets entrée_;
  double origine_ = 0;
};

}  // namespace zuma::sim
