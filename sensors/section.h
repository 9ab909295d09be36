#pragma once

#include <string_view>

#include "sensors/enumerations.h"

/// Section of a specimen, or the equivalent section by which a force is divided to get the
/// standard stress of a bending or splitting test.
namespace zuma::section {

/// Factor of a unit to the base units: centimetres, grams, grams per cubic decimetre. Letter case
/// is ignored; an unknown unit gives 0, hence a section of 0.
[[nodiscard]] double CoefficientUnité(std::string_view unité) noexcept;

/// Specimen as the operator describes it, lengths in the operator's unit. A dimension left out
/// is 0.
struct Eprouvette {
  ENUM_TYPE_CONTRAINTE essai = ENUM_TYPE_CONTRAINTE::surface;     ///< kind of test
  ENUM_FORME_EPROUVETTE forme = ENUM_FORME_EPROUVETTE::Inconnue;  ///< shape
  /// Dimensions, or mass and density.
  ENUM_TYPE_CALCUL_SURFACE méthode = ENUM_TYPE_CALCUL_SURFACE::Dimension;
  double A = 0;                ///< side of a prism or a hexagon
  double B = 0;                ///< other side of a prism, chord of a tube section
  double D = 0;                ///< outer diameter
  double E = 0;                ///< wall of a tube
  double H = 0;                ///< height
  double L = 0;                ///< length, for the section from mass and density
  double S = 0;                ///< section given by the operator
  double Grand_L = 0;          ///< distance between the lower supports
  double Petit_L = 0;          ///< distance between the upper supports
  double masse = 0;            ///< mass
  double masseVolumique = 0;   ///< density
  double kLongueur = 1;        ///< factors of the three units
  double kMasse = 1;           ///< of the mass, to grams
  double kMasseVolumique = 1;  ///< of the density, to grams per cubic decimetre
};

/// Section in square centimetres; 0 for what has no formula or lacks a dimension. Bending with
/// equal support distances fails with 11.
[[nodiscard]] double Calcule(const Eprouvette& éprouvette);

}  // namespace zuma::section
