#pragma once

#include <cstdint>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include "core/chassis.h"
#include "host/problemes.h"

namespace zuma::host {

/// How far a frame had come when it was looked at.
enum class Etape {
  Chargé,  ///< loaded and linked: nothing has been touched
  Démarré  ///< started, and its stop fired: its outputs are at rest
};

/// A frame whose load, link or start left entries. It is not run unless somebody wants it to: with
/// one limit that could not be read, a sensor no longer stops the machine.
class DépartRefusé : public std::runtime_error {
 public:
  /// Problems of frame `chassis`, found at that stage.
  DépartRefusé(std::int32_t chassis, Etape étape, std::vector<Problème> problèmes);

  /// What is wrong, as it was met.
  [[nodiscard]] const std::vector<Problème>& Problèmes() const { return problèmes_; }
  /// The problems for people, one a line.
  [[nodiscard]] std::string Liste() const;
  /// "Index" of the frame.
  [[nodiscard]] std::int32_t LeChassis() const { return chassis_; }

 private:
  std::int32_t chassis_;
  std::vector<Problème> problèmes_;
};

/// Whether the frame is run all the same; none says no.
using MalgréTout = std::function<bool(const DépartRefusé&)>;

/// The answer of an option of the command line. Yes is told, with the list, on the error output.
[[nodiscard]] MalgréTout SelonLOption(bool malgréTout);

/// What is wrong with the data of that frame, row by row.
[[nodiscard]] std::vector<Problème> ProblèmesDesDonnées(BaseDeDonnées& base, Chassis& chassis,
                                                        std::int32_t index);

}  // namespace zuma::host
