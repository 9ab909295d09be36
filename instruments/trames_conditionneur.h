#pragma once

#include <cstdint>

#include "base/outils_modbus.h"

/// What the data of a digital conditioner's answers mean: bytes in, values out.
namespace zuma::trames_conditionneur {

/// Channels of a module.
inline constexpr std::int32_t kNombreDeCanaux = 3;
/// Bytes of all channels, one word each.
inline constexpr std::int32_t kOctetsDesCanaux = 2 * kNombreDeCanaux;
/// A module of another kind.
inline constexpr double kVersionInconnue = 99999;

///@{
/// Data byte counts that tell the firmwares apart when one register is asked: the first one gives
/// all its channels whatever is asked, the second one what is asked.
inline constexpr std::int32_t kOctetsVersion1 = kOctetsDesCanaux;
inline constexpr std::int32_t kOctetsVersion2 = 2;
///@}

/// Value of channel `index`, from 0: a big-endian signed word in the module's raw units. Data that
/// do not hold it fail with 9.
[[nodiscard]] double ValeurDuCanal(const OutilsModbus::Valeurs& octets, std::int32_t index);

}  // namespace zuma::trames_conditionneur
