#pragma once

#include <cmath>
#include <cstdint>
#include <span>

namespace zuma {

/// Library of the measuring amplifiers: a chain of devices of ten channels each, numbered from 0
/// over the whole chain. A call gives `kRéussi` when it went well.
class BibliothèqueSpider {
 public:
  static constexpr std::int32_t kRéussi = 0;              ///< result of a call that went well
  static constexpr std::int32_t kCanauxParAppareil = 10;  ///< channels of one device
  static constexpr std::int32_t kEtat = 2;                ///< setting: state of a channel
  static constexpr std::int32_t kType = 32;               ///< setting: type of its amplifier
  static constexpr std::int32_t kMesure = 256;            ///< setting: last value measured

  virtual ~BibliothèqueSpider() = default;
  /// Opens the chain on a port.
  virtual std::int32_t S8_InitAll(std::int32_t port, std::int32_t mode) = 0;
  /// Channels that answer, with setting 1.
  virtual std::int32_t S8_GetDevSettings(std::int32_t réglage, std::int32_t& nombre) = 0;
  /// Value of a setting of a channel, from 0: one of `kEtat`, `kType`, `kMesure`.
  virtual std::int32_t S8_GetChanSettings(std::int32_t canal, std::int32_t réglage,
                                          float& valeur) = 0;
  /// Channels that the next measures take.
  virtual std::int32_t S8_ACQSetup(std::span<const std::int32_t> canaux, std::int32_t nombre) = 0;
  /// Channels that are tared.
  virtual std::int32_t S8_TareSetup(std::span<const std::int32_t> canaux, std::int32_t nombre) = 0;
  /// Measures the channels of the set-up once; takes as long as a conversion.
  virtual std::int32_t S8_MeasOneVal() = 0;
  /// Closes the devices.
  virtual void S8_CloseDevice() noexcept = 0;
  /// Closes the port.
  virtual void S8_ClosePort() noexcept = 0;
};

/// True for a value that an amplifier of 16 bits can give in any unit: nothing guards the values on
/// their way, and what is left of a garbled one is no number, or beyond all measure.
[[nodiscard]] inline bool EstUneMesure(float valeur) noexcept {
  constexpr float kPlusGrande = 1e9F;
  constexpr float kPlusPetite = 1e-12F;  // but for 0
  const float grandeur = std::fabs(valeur);
  return grandeur == 0 || (grandeur >= kPlusPetite && grandeur <= kPlusGrande);
}

}  // namespace zuma
