#pragma once

namespace zuma {

/// Settings of the installation, given once with the platform.
struct Réglages {
  /// Between units and decimals in numbers shown to people.
  char séparateurDécimal = ',';
  /// Settling delay of the ACL 8316 around each step of a conversion, in microseconds.
  double stabilisationACL8316 = 10;
  /// Clock of the frequency output of the ACL 8316, in hertz.
  double horlogeACL8316 = 2'000'000;
};

}  // namespace zuma
