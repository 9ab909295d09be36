#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "sensors/capteur.h"

namespace zuma::host {

/// Why a sensor must not be believed.
struct DéfautCapteur {
  /// What can be wrong with a reading.
  enum class Genre : std::uint8_t {
    HorsService,     ///< out of service
    NonSélectionné,  ///< its selection is not met
    SansCanal,       ///< no channel, or one that was not found
    NonValide,       ///< below the threshold of a valid reading
    Dépassement,     ///< outside its limits
    PasUnNombre,     ///< the value is no number
    Figé,            ///< the value does not move any more
  };
  Genre genre = Genre::HorsService;  ///< what is wrong
  std::string capteur;  ///< its name: a sensor that others are made from fails by itself
};

/// The genre in words.
[[nodiscard]] std::string_view Texte(DéfautCapteur::Genre genre) noexcept;

/// What is wrong with the present reading of a sensor, or of one that it is made from; none while
/// it is good. The small cell of an overlap may be beyond its range: the large one is read then.
[[nodiscard]] std::optional<DéfautCapteur> DéfautDe(const Capteur& capteur);

/// Tells a reading that has stopped moving, to a millionth of the sensor's range: a converter or a
/// line that hangs gives its last value for ever, and that value is good to all other looks.
class SuiviDuMouvement {
 public:
  /// Once for each refresh, at that time.
  void Note(const Capteur& capteur, double secondes);
  /// Seconds over which the readings were the same. A host that stands still reads nothing.
  [[nodiscard]] double Immobile() const noexcept { return noté_ - dernier_; }

 private:
  double valeur_ = 0;
  double noté_ = 0;
  double dernier_ = 0;  ///< instant of the last movement
};

}  // namespace zuma::host
