#pragma once

#include <optional>

/// Stress from force and section: kilonewtons, square centimetres, megapascals.
namespace zuma::contrainte {

/// 1 kN/cm² is 10 MPa.
inline constexpr double kMPaParKNParCm2 = 10;

/// Stress of a force; 0 on a section of 0. `facteur` scales the result when given.
[[nodiscard]] double DepuisForce(double force, double surface, std::optional<double> facteur);

/// Force of a stress, the inverse of `DepuisForce`; fails with 11 on a factor of 0.
[[nodiscard]] double VersForce(double contrainte, double surface, std::optional<double> facteur);

}  // namespace zuma::contrainte
