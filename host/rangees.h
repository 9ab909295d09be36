#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>

namespace zuma::host {

/// Rows that are missing in a row, and when: seconds of the first and the last one, or of their
/// neighbours where those alone are known.
struct Lacune {
  std::uint64_t rangées = 0;  ///< how many are missing
  double de = 0;              ///< seconds of the first
  double à = 0;               ///< seconds of the last

  /// The rows of a later moment are missing too.
  void Ajoute(const Lacune& suite) {
    if (suite.rangées == 0) return;
    if (rangées == 0) de = suite.de;
    rangées += suite.rangées;
    à = suite.à;
  }
};

/// What somebody asked of a sensor between two rows.
enum class ActeSurCapteur : std::uint8_t { ZéroRepris, TareReprise, Zéro, Tare };
/// The word for an act in a recording.
[[nodiscard]] std::string_view MotDe(ActeSurCapteur acte);
/// One act on one sensor.
struct Acte {
  ActeSurCapteur acte = ActeSurCapteur::Zéro;  ///< what was asked
  std::string capteur{};                       ///< its name
  double valeur = 0;                           ///< that it is to read, of a tare
};

/// Where the writer of a recording has its rows of numbers from.
class SourceDeRangées {
 public:
  /// One row of numbers, which stand for the call that gets them alone.
  struct Rangée {
    double secondes = 0;                ///< since the start of the recording
    Lacune avant{};                     ///< rows lost between the row before and this one
    std::span<const Acte> actes{};      ///< between those two
    std::span<const double> valeurs{};  ///< no number for a missing reading
  };
  virtual ~SourceDeRangées() = default;

  /// Numbers in each row.
  [[nodiscard]] virtual std::size_t Colonnes() const = 0;
  /// The next row goes to `prend`; false when there is none yet.
  virtual bool Retire(const std::function<void(const Rangée&)>& prend) = 0;
  /// Rows lost behind the last one that was given; asked for once all are.
  [[nodiscard]] virtual Lacune Manque() = 0;
};

}  // namespace zuma::host
