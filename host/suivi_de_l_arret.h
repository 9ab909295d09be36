#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/chassis.h"
#include "host/problemes.h"

namespace zuma::host {

/// Which outputs a stop has reached, by name. One that it misses is told once in the error record,
/// and once more when it is reached after all.
class SuiviDeLArrêt {
 public:
  /// How far a stop has come at one output.
  enum class Portée : std::uint8_t {
    Atteinte,  ///< it is at rest
    Attendue,  ///< its link has not confirmed it yet
    Manquée    ///< not confirmed within `kDélai`, or its write failed
  };
  /// One output that is followed.
  struct Sortie {
    std::string nom;                 ///< its name
    std::function<bool()> atteinte;  ///< asks the object
    bool directe;  ///< a write either goes out or fails: there is nothing to wait for
    Portée portée = Portée::Atteinte;  ///< how far it has come
    std::optional<double> depuis{};    ///< it is not reached, microseconds
  };
  /// Microseconds within which a link has to confirm; longer than the time-out of any of them.
  static constexpr double kDélai = 1e6;

  /// Follows nothing yet. What is missed goes to `recueil`, in the words of `traducteur`.
  SuiviDeLArrêt(Ref<Recueil> recueil, Ref<ZED_Traduction> traducteur)
      : recueil_(std::move(recueil)), traducteur_(std::move(traducteur)) {}

  /// Commands and logic outputs that have a channel, and the watchdog board.
  void Suit(Chassis& chassis);
  /// Looks at them while a stop is latched, and longer at those that it missed. `maintenant` is the
  /// frame's timer.
  void Observe(bool arrêt, double maintenant);
  /// The end of the program: what is not reached now is missed.
  void Conclut();

  /// Empty while no stop is latched and none missed anything.
  [[nodiscard]] const std::vector<Sortie>& Sorties() const noexcept;
  /// Names of the outputs that are missed.
  [[nodiscard]] std::vector<std::string> Manquées() const;

 private:
  void Regarde(Sortie& sortie, double maintenant);
  void Change(Sortie& sortie, Portée portée);
  void Consigne(std::string_view texte, const Sortie& sortie);

  Ref<Recueil> recueil_;
  Ref<ZED_Traduction> traducteur_;
  std::vector<Sortie> sorties_;
  int arrêts_ = 0;
  std::size_t manquées_ = 0;
  bool arrêt_ = false;
};

}  // namespace zuma::host
