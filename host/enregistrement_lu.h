#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "host/rangees.h"

namespace zuma::host {

/// One column of a recording.
struct ColonneLue {
  std::string nom;                ///< without its unit
  std::string unité;              ///< empty without one
  std::string label{};            ///< label of the object
  std::string étalonné{};         ///< date of the calibration, as its row said it
  std::string parQui{};           ///< who calibrated
  std::vector<double> valeurs{};  ///< no number where there was no reading
};

/// A recording that is finished.
struct EnregistrementLu {
  std::vector<double> secondes;      ///< of each row, from the start
  std::vector<ColonneLue> colonnes;  ///< in the order of the file
  std::vector<Lacune> lacunes;       ///< rows that are missing
  /// Something that was asked of a sensor.
  struct ActeLu {
    std::size_t rangée;  ///< it was done before this one
    Acte acte;           ///< what it was
  };
  std::vector<ActeLu> actes;  ///< in their order
  /// The file ends within a row: the copy was cut short, or the disk was full. That row is left
  /// out.
  bool coupé = false;
  std::size_t horloge = 0;     ///< rank of the clock among the columns, 0 without one
  std::optional<double> liéÀ;  ///< timer of the frame when it was linked, microseconds
  /// Start, frame, and "specimen ..." of the file beside it.
  std::vector<std::pair<std::string, std::string>> textes;
};

/// Reads a recording and the JSON file beside it, which may be missing. Throws `MauvaisUsage` with
/// the line for what is no recording.
[[nodiscard]] EnregistrementLu LitLEnregistrement(const std::string& fichier);
/// What a person is told of a recording that is cut.
[[nodiscard]] std::string TexteDeLaCoupure(const std::string& fichier);

}  // namespace zuma::host
