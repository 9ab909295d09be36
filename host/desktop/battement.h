#pragma once

#include <QTimer>
#include <chrono>
#include <cstdint>
#include <functional>
#include <string_view>

namespace zuma::host {

/// The heart beat of a window: passes of the frame from a timer of the window's thread, as often as
/// once a millisecond. The timer is armed again behind each pass only: paint, input and other
/// timers get their turn, and an event loop that a pass opens (a form of the library) starts no
/// other pass. Event loops of the window's own, of a menu or a dialog, go on beating.
class Battement {
 public:
  struct Travail {
    /// Lets the machine come to those seconds after the start; gives the time that it is by then.
    std::function<double(double)> avance;
    std::function<void()> passe;
    /// What the host does behind a pass, at that time, also when it failed.
    std::function<void(double)> ensuite;
    /// Told of a failure that came out of one of them; the beat goes on.
    std::function<void(std::string_view)> échec;
  };
  /// What a host must know of its own punctuality, in milliseconds since start or reset.
  struct Mesures {
    std::uint64_t passes = 0;
    double parSeconde = 0;       ///< over the last second
    double plusLonguePasse = 0;  ///< of the pass alone
    double plusLongEcart = 0;    ///< from the end of a pass to the beginning of the next one
  };

  explicit Battement(Travail travail);
  Battement(const Battement&) = delete;
  Battement& operator=(const Battement&) = delete;

  void Démarre();
  void Arrête();
  /// False before the start, after the end and in a pass: whatever waits then holds the machine.
  [[nodiscard]] bool EntreDeuxPasses() const noexcept { return enMarche_ && !enPasse_; }
  [[nodiscard]] const Mesures& LesMesures() const noexcept { return mesures_; }
  void OublieLesMesures();
  /// Seconds of the machine after the start, at the last pass.
  [[nodiscard]] double Secondes() const noexcept { return secondes_; }

 private:
  using Instant = std::chrono::steady_clock::time_point;

  void Bat();
  void UnePasse();
  template <class Fait>
  void Tente(Fait&& fait);
  void CompteLaSeconde(Instant maintenant);

  Travail travail_;
  QTimer minuterie_;
  bool enMarche_ = false;
  bool enPasse_ = false;
  double secondes_ = 0;
  Instant départ_{};
  Instant finDePasse_{};
  Instant débutDeSeconde_{};
  std::uint64_t passesDeLaSeconde_ = 0;
  Mesures mesures_;
};

}  // namespace zuma::host
