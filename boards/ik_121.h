#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "boards/carte_es.h"

namespace zuma {

/// IK 121: counters of two encoders, axes 1 and 2. Its value is a count and not a point of the
/// common scale. Latch, control words and the use of the third word of a latch are settings.
///
/// A board that does not latch fails the read (31999) once `kAttenteLatch` is over, and so do one
/// that is gone and a count that no encoder can have reached since the last read; the channel keeps
/// its value.
class IK_121 : public CarteES {
 public:
  /// Counts are points: the mean of a channel's reads gets no scale.
  static constexpr double kPleineEchelle = 65536;

  /// Patience for one latch, microseconds; a board that works takes a few.
  static constexpr double kAttenteLatch = 1000;

  /// Sixteen ports, at the base cut to a multiple of 16 below 0x1000.
  IK_121(const Matériel& matériel, std::uint16_t base)
      : CarteES(matériel, static_cast<std::uint16_t>(base & 0xFF0U)) {}

  /// Starts both axes.
  void IK121_Initialise();
  /// Resets the counter of one axis and starts it. An axis other than 1 and 2 fails with 9.
  void IK121_InitialiseAxe(std::int16_t axe);
  /// Count of an axis through latch 0 or 1; anything else fails with 9.
  [[nodiscard]] std::int64_t IK121_Lecture(std::int16_t axe, std::int32_t latch);

  // As the operations of analog inputs ask for it.

  /// Starts both axes.
  void DémarreAnalogique(bool) { IK121_Initialise(); }
  /// The count the other way round, by the latch of the settings. `axe` is the channel's number.
  [[nodiscard]] double LitAnalogique(std::int16_t axe, std::int16_t& gain);

 private:
  struct Dernier {
    std::int64_t compte = 0;
    double heure = 0;  ///< microseconds
  };
  /// Gives the status word that tells the latch.
  std::uint16_t AttendLatch(std::int16_t axe, std::size_t rang);
  void ExigeUnMouvementPossible(std::int16_t axe, std::int64_t compte);
  [[nodiscard]] std::uint16_t Choisit(std::int16_t axe, std::uint16_t registre);
  [[nodiscard]] std::uint16_t LitRegistre(std::int16_t axe, std::uint16_t registre);
  void EcritRegistre(std::int16_t axe, std::uint16_t registre, std::uint16_t mot);

  std::array<Dernier, 2> derniers_;  ///< good counts of the axes
};

/// Count that the three words of a latch make, low one first. With `Signe` it has 32 bits, and one
/// that has more fails with 6; with `Compte` it has 48.
[[nodiscard]] std::int64_t CompteIK121(std::span<const std::uint16_t, 3> mots,
                                       MotHautIK121 motHaut);

}  // namespace zuma
