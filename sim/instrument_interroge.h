#pragma once

#include <string>
#include <string_view>

#include "sim/horloge_virtuelle.h"
#include "sim/ligne_serie.h"

namespace zuma::sim {

/// Words that the interrogated instruments speak.
struct Langage {
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
  InstrumentInterrogé(HorlogeVirtuelle& horloge, const Langage& langage, double départ)
      : valeur(départ), horloge_(horloge), langage_(langage) {}

  void Reçoit(std::string_view octets, std::int32_t vitesse) override;
  [[nodiscard]] Octets Emet() override;

  double valeur;
  double latence = 20'000;  ///< microseconds

 private:
  HorlogeVirtuelle& horloge_;
  const Langage& langage_;
  Octets reçus_;
  Octets réponse_;
  double heureDeRéponse_ = 0;
};

}  // namespace zuma::sim
