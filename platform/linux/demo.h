#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "platform/linux/base_creation.h"

namespace zuma::linux_ {

/// `Index` of the demonstration frame.
inline constexpr std::int32_t kChassisDeDémonstration = 1;
/// `Index` of the frame with the sensors that ask an instrument on a serial line.
inline constexpr std::int32_t kChassisDesInstruments = 2;

/// `Index` of the frame with rulers on CAN, balances and gauges on serial lines, and drives.
inline constexpr std::int32_t kChassisDesBus = 3;
/// `Index` of the frame whose boards are instruments.
inline constexpr std::int32_t kChassisDesAppareils = 4;
/// `Index` of the frame with PCI boards, encoders and LVDT probes.
inline constexpr std::int32_t kChassisPCI = 5;

/// A whole frame to try the system with: one board of each port-mapped family, the digital board
/// in both wirings, at addresses that do not overlap. Block b of board c has the Index 10c + b,
/// channel n of block f 100f + n.
[[nodiscard]] std::vector<LigneDeBase> LignesDeDémonstration();

/// The shared parameters that its sensors refer to, by index: the specimen's description.
[[nodiscard]] std::vector<std::pair<std::int32_t, std::string>> ParamètresDeDémonstration();

}  // namespace zuma::linux_
