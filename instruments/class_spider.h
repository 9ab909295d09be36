#pragma once

#include <cstdint>
#include <vector>

#include "platform/collaborateurs.h"
#include "platform/plateforme.h"

namespace zuma {

/// Measuring amplifier read at a fixed pace of 50 Hz, one value for each channel of its chain. A
/// host may use it without a frame. A chain that is not there has no channels, and a value that
/// cannot be read, or is none that an amplifier gives, stays as it was.
class ClassSpider {
 public:
  /// No channels before `Initialise`; `plateforme` outlives this.
  explicit ClassSpider(Plateforme& plateforme) : plateforme_(plateforme) {}

  /// Channels of the whole devices that answered, measured or not; 0 without a device.
  [[nodiscard]] std::int32_t NombreCanauxDisponible() const noexcept {
    return NombreCanauxDisponible_;
  }
  /// Last value of a channel, from 1, in single precision and in the amplifier's own unit; 0 above
  /// the count. An index below 1 fails with 9.
  [[nodiscard]] double ValeurCanal(std::int32_t IndexCanal_lng) const;
  /// The last measure that was due gave this channel its value.
  [[nodiscard]] bool EstLu(std::int32_t IndexCanal_lng) const noexcept;
  /// Timer of the pace; to be given before the start.
  void TimerExact(Ref<ZED_Timer> timer) { TimerExact_ = std::move(timer); }
  /// Opens the chain on that port and sets its channels up for measuring: those with an amplifier
  /// of a known type that is in order. Fails with 91 on a platform without the library.
  void Initialise(std::int32_t LePort_lng);
  /// Measures all channels when the next read is due; takes as long as one conversion. Reads that
  /// were missed are made up for, one on each call.
  void Refresh();

 private:
  [[nodiscard]] bool EstMesuré(std::int32_t canal);

  Plateforme& plateforme_;
  Ref<ZED_Timer> TimerExact_;
  std::vector<float> valeurs_;
  std::vector<bool> lues_;
  std::int32_t NombreCanauxDisponible_ = 0;
  double prochaineLecture_ = 0;  ///< microseconds
};

}  // namespace zuma
