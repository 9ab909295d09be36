#pragma once

#include <cstdint>

namespace zuma {

/// Kind of a sensor: where its value comes from.
enum class ENUM_TYPE_CAPTEUR : std::int32_t {
  capteurNormal = 0,            ///< the points of a channel, through a calibration table
  CapteurMoyen = 10,            ///< mean of the sensors below
  CapteurRecouvrement = 11,     ///< a small and a large sensor on one quantity
  CapteurContrainte = 12,       ///< a force divided by the section of the specimen
  CapteurTemps = 13,            ///< time since the start
  CapteurRégression = 14,       ///< slope of a sensor against time
  CapteurDeltaL = 15,           ///< a length divided by a reference length, per cent
  CapteurCombinaison = 16,      ///< sum, difference, product or quotient of sensors
  CapteurSelectionnable = 17,   ///< a sensor, while a parameter has a given value, else 0
  CapteurRéservé1 = 1000,       ///< a display on a serial line of its own
  CapteurRéservé2 = 1001,       ///< a gauge on a serial line of its own
  CapteurScout55 = 1002,        ///< an indicator on a serial line of its own
  CapteurLvdtSolartron = 1004,  ///< written from outside
  CapteurLePlusPetit = 1005,    ///< the selected sensor with the smallest range
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
  surface = 0,                      ///< none, or one that is not known: a section of 0
  TractionCompressionCylindre = 1,  ///< obsolete: a section of 0
  TractionCompressionPrisme = 2,    ///< obsolete: a section of 0
  Flexion = 3,                      ///< bending on two lower supports
  Fendage = 4,                      ///< splitting of a cylinder
  Traction_Compression = 10,
  Compression = 11,
  Traction = 12,
};

/// Shape of the specimen, which settles the formula of the section.
enum class ENUM_FORME_EPROUVETTE : std::int32_t {
  Inconnue = 0,  ///< not known: a section of 0
  Prisme = 1,
  Cylindre = 2,
  TubeRond = 3,
  TronconDeTubeRond = 4,  ///< piece cut lengthwise out of the wall of a tube
  HexagoneRegulier = 5,
  Speciale = 99,  ///< the operator gives the section
};

/// Where the section comes from: the dimensions, or mass, density and length.
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
