#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "platform/linux/base_creation.h"

namespace zuma::linux_ {

/// One sensor of a frame, as its row says it.
struct CapteurDémo {
  std::int32_t index;      ///< of its row, and of its link
  std::string_view type;   ///< text of its kind
  std::string_view nom;    ///< its name
  std::string_view label;  ///< of its link
  std::string_view unité;  ///< of its value
  std::int32_t canal = 0;  ///< "Index"; 0 for none
  double échelle = 0;      ///< units at full scale
  ///@{
  /// Limits in units.
  double mini = 0;
  double maxi = 0;
  ///@}
  bool arrêt = false;       ///< it stops the frame beyond them
  std::string_view fils{};  ///< labels of its sensors, between ';'
};

/// One command of a frame, as its row says it.
struct CommandeDémo {
  std::int32_t index;      ///< of its row
  std::string_view type;   ///< text of its kind
  std::string_view nom;    ///< its name, and its label
  std::string_view unité;  ///< of its value
  std::int32_t canal = 0;  ///< "Index"; 0 for none
  ///@{
  /// Limits in units and in points; the calibration is a line through 0 and the upper ones.
  double mini = 0;
  double maxi = 100;
  double pointsMini = 0;
  double pointsMaxi = 4095;
  ///@}
  double dither = 0;           ///< hertz, of 1 unit from peak to peak; 0 for none
  std::string_view recopie{};  ///< label of the sensor that a copying command follows
};

///@{
/// Adds the rows of these objects, and the links that tie them to the frame.
void AjouteLesCapteurs(std::span<const CapteurDémo> capteurs, std::int32_t chassis,
                       std::vector<LigneDeBase>& lignes);
void AjouteLesCommandes(std::span<const CommandeDémo> commandes, std::int32_t chassis,
                        std::vector<LigneDeBase>& lignes);
///@}

/// Sensors, commands, logic inputs and outputs and the watchdog of the demonstration frame, on the
/// channels of `LignesDeDémonstration`.
void AjouteLesObjetsDeDémonstration(std::vector<LigneDeBase>& lignes);

}  // namespace zuma::linux_
