#pragma once

#include <string>
#include <string_view>

#include "sim/horloge_virtuelle.h"
#include "sim/ligne_serie.h"

namespace zuma::sim {

/// Words that the interrogated instruments speak.
struct Langage {
  /// What it is asked with.
  std::string_view question;
  /// The answer that tells `valeur`.
  Octets (*réponse)(double valeur);
};

extern const Langage kBalance14;      ///< 14 characters: sign, number, unit of three
extern const Langage kComparateur10;  ///< 10 characters, the ninth tells millimetres
extern const Langage kIndicateurMSV;  ///< "MSV?" and a number in grams

/// An instrument that answers its one question, a little later, with the quantity it shows.
class InstrumentInterrogé : public AppareilSérie {
 public:
  /// Shows `départ` until another value is set.
  InstrumentInterrogé(HorlogeVirtuelle& horloge, const Langage& langage, double départ)
      : AppareilSérie(horloge), valeur(départ), langage_(langage) {}

  void Reçoit(std::string_view octets, LigneSérie& ligne) override;

  double valeur;            ///< the quantity that it shows
  double latence = 20'000;  ///< microseconds

 private:
  const Langage& langage_;
  Octets reçus_;
};

}  // namespace zuma::sim
