#pragma once

#include <string>

#include "sim/horloge_virtuelle.h"
#include "sim/ligne_serie.h"

namespace zuma::sim {

/// A balance or indicator that sends its frame at a steady rate and takes no request.
class BalanceSimulée : public AppareilSérie {
 public:
  /// A device on the virtual clock.
  using AppareilSérie::AppareilSérie;

  void Branche(LigneSérie& ligne) override { ligne.Réveille(0); }
  void Reçoit(std::string_view, LigneSérie&) override {}
  /// Time for the next frame.
  void Réveil(LigneSérie& ligne) override;

  double poids = 0;          ///< in the unit of the display
  double période = 100'000;  ///< microseconds between two frames
  Octets trameForcée;        ///< sent in place of the true one, when not empty

 protected:
  /// The next frame that it sends.
  [[nodiscard]] virtual Octets Trame() const = 0;
};

/// Five digits and a sign, each with its place in its top bits; the display in thousandths.
class BalanceLRPC31Simulée : public BalanceSimulée {
 public:
  using BalanceSimulée::BalanceSimulée;
  /// Rotation of the bytes in a frame: a listener may begin anywhere.
  std::size_t début = 0;

 protected:
  [[nodiscard]] Octets Trame() const override;
};

/// Start, state, sign and six characters of number with two decimals.
class IndicateurDEXALSimulé : public BalanceSimulée {
 public:
  using BalanceSimulée::BalanceSimulée;

 protected:
  [[nodiscard]] Octets Trame() const override;
};

/// Lines of text, the net weight behind "N.W.:".
class BalanceJADEVERSimulée : public BalanceSimulée {
 public:
  using BalanceSimulée::BalanceSimulée;
  std::string unité = "kg";  ///< as the line of text tells it

 protected:
  [[nodiscard]] Octets Trame() const override;
};

}  // namespace zuma::sim
