#pragma once

#include <cstdint>

namespace zuma {

/// Kind of a sensor: where its value comes from.
enum class ENUM_TYPE_CAPTEUR : std::int32_t {
  capteurNormal = 0,
  CapteurMoyen = 10,
  CapteurRecouvrement = 11,
  CapteurContrainte = 12,
  CapteurTemps = 13,
  CapteurRégression = 14,
  CapteurDeltaL = 15,
  CapteurCombinaison = 16,
  CapteurSelectionnable = 17,
  CapteurRéservé1 = 1000,
  CapteurRéservé2 = 1001,
  CapteurScout55 = 1002,
  CapteurLvdtSolartron = 1004,
  CapteurLePlusPetit = 1005,
};

/// State of a sensor after its last refresh; the spelling is part of the interface.
enum class ENUM_ETAT_CAPTEUR : std::int32_t {
  Correct = 0,
  LectureNonValide = 1,          ///< below the threshold of a valid reading
  DépassementNonDangeureux = 2,  ///< outside the limits, no stop wanted or allowed
  DépassementDangeureux = 3,     ///< outside the limits: fires the stop on each refresh
};

/// Kind of test, which settles the section's formula.
enum class ENUM_TYPE_CONTRAINTE : std::int32_t {
  surface = 0,
  TractionCompressionCylindre = 1,  ///< obsolete: a section of 0
  TractionCompressionPrisme = 2,    ///< obsolete: a section of 0
  Flexion = 3,
  Fendage = 4,
  Traction_Compression = 10,
  Compression = 11,
  Traction = 12,
};

enum class ENUM_FORME_EPROUVETTE : std::int32_t {
  Inconnue = 0,
  Prisme = 1,
  Cylindre = 2,
  TubeRond = 3,
  TronconDeTubeRond = 4,
  HexagoneRegulier = 5,
  Speciale = 99,
};

enum class ENUM_TYPE_CALCUL_SURFACE : std::int32_t { Dimension = 0, MasseVolumique = 1 };

/// State of a zero or a tare. `Calcule` is never entered.
enum class ENUM_OPERATION_MAV : std::int32_t { RienFaire = 0, Acquisition = 1, Calcule = 2 };

/// Place of the small sensor's value about the band of an overlap sensor.
enum class RECOUVREMENT_ETAT : std::int32_t {
  InferieurSeuilBas = 1,
  EntreLesSeuils = 2,
  SuperieurSeuilHaut = 3,
};

}  // namespace zuma
