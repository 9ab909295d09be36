#pragma once

#include <cstdint>

namespace zuma::sim {

/// Dimensions and materials of the simulated press. Metres, newtons, pascals, seconds.
struct RéglagesPresse {
  double aireVérin = 0.01;             ///< of the piston, square metres
  double course = 0.2;                 ///< of the piston
  double vitesseMaximale = 0.01;       ///< valve wide open, no load
  double pressionPompe = 21e6;         ///< of the supply
  double pressionRepos = 0.5e6;        ///< in the use chamber, without load
  double montéePression = 0.5;         ///< time constant of the supply
  double constanteServovalve = 0.005;  ///< time constant of the valve
  double bandeMorte = 0.01;            ///< of the full opening, each side
  double fuite = 1e-12;                ///< m/s of piston for each pascal of use pressure
  double contact = 0.05;               ///< piston position where the platen meets the specimen
  double raideurBâti = 2e7;            ///< of the frame, newtons per metre
  double raideurEprouvette = 4.9e8;    ///< of the specimen, newtons per metre
  double hauteurEprouvette = 0.1;      ///< of the specimen
  double rupture = 60'000;             ///< force at which the specimen breaks
  double résidu = 0.03;                ///< share of the stiffness left by the break
};

/// A servo-hydraulic press in a few equations: a valve whose flow goes with the root of its
/// pressure drop, a cylinder without mass, a frame and a specimen as springs in series, and a
/// break. Enough for a controller to be wrong on it.
class Presse {
 public:
  /// Stands without pressure, the platen clear of the specimen.
  explicit Presse(RéglagesPresse réglages = {}) : réglages_(réglages), position_(0.04) {}

  /// Moves the model by `secondes`.
  void Avance(double secondes);

  // What the outputs of the frame do.
  double servovalve = 0;      ///< -1 to 1; positive loads
  bool pompe = false;         ///< the pump runs
  bool distributeur = false;  ///< the distributor lets oil to the valve
  // What people and hardware do.
  bool porteFermée = true;   ///< the door is closed
  bool boutonAU = false;     ///< the emergency button is pressed
  bool chaîneFermée = true;  ///< contact of the watchdog

  // What the sensors of the frame see.
  [[nodiscard]] double Force() const noexcept { return force_; }        ///< newtons
  [[nodiscard]] double Position() const noexcept { return position_; }  ///< metres
  ///@{
  /// Pressures before and behind the valve, pascals.
  [[nodiscard]] double PressionAlimentation() const noexcept { return alimentation_; }
  [[nodiscard]] double PressionUtilisation() const noexcept;
  ///@}
  [[nodiscard]] double Raccourcissement() const noexcept;  ///< of the specimen, metres
  /// The specimen is broken.
  [[nodiscard]] bool Cassée() const noexcept { return cassée_; }
  ///@{
  /// The piston stands at the upper or the lower end of its way.
  [[nodiscard]] bool FinDeCourseHaut() const noexcept;
  [[nodiscard]] bool FinDeCourseBas() const noexcept;
  ///@}
  /// The safety chain lets oil through: watchdog, emergency button and door all agree.
  [[nodiscard]] bool Armée() const noexcept { return chaîneFermée && !boutonAU && porteFermée; }
  /// Dimensions and materials; they count from the next step on.
  [[nodiscard]] RéglagesPresse& Réglages() noexcept { return réglages_; }
  /// A new specimen, the platen where it is.
  void ChangeEprouvette() noexcept { cassée_ = false; }

 private:
  void Pas(double dt);
  [[nodiscard]] double Vitesse() const;
  [[nodiscard]] double RaideurEprouvette() const noexcept;
  void CalculeForce() noexcept;

  RéglagesPresse réglages_;
  double position_;
  double tiroir_ = 0;
  double alimentation_ = 0;
  double force_ = 0;
  bool cassée_ = false;
};

}  // namespace zuma::sim
