#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "platform/linux/base_creation.h"

namespace zuma::linux_ {

struct CapteurDémo {
  std::int32_t index;
  std::string_view type;
  std::string_view nom;
  std::string_view label;
  std::string_view unité;
  std::int32_t canal = 0;
  double échelle = 0;  // units at full scale
  double mini = 0;
  double maxi = 0;
  bool arrêt = false;
  std::string_view fils{};  // labels, between ';'
};

struct CommandeDémo {
  std::int32_t index;
  std::string_view type;
  std::string_view nom;
  std::string_view unité;
  std::int32_t canal = 0;
  double mini = 0;
  double maxi = 100;
  double pointsMini = 0;
  double pointsMaxi = 4095;
  double dither = 0;
  std::string_view recopie{};  // label of the sensor that a copying command follows
};

void AjouteLesCapteurs(std::span<const CapteurDémo> capteurs, std::int32_t chassis,
                       std::vector<LigneDeBase>& lignes);
void AjouteLesCommandes(std::span<const CommandeDémo> commandes, std::int32_t chassis,
                        std::vector<LigneDeBase>& lignes);

/// Sensors, commands, logic inputs and outputs and the watchdog of the demonstration frame, on the
/// channels of `LignesDeDémonstration`.
void AjouteLesObjetsDeDémonstration(std::vector<LigneDeBase>& lignes);

}  // namespace zuma::linux_
