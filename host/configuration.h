#pragma once

#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>

#include "platform/base_de_donnees.h"

namespace zuma::host {

/// What was asked cannot be done as asked; the text says what to do instead.
struct MauvaisUsage : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// Opens the configuration. A file that is not one is misuse of the program, and so is one that
/// another program keeps locked for more than 0.1 s: the text says what to do. Reads end after
/// their time, and at once when the program is asked to end.
[[nodiscard]] Ref<BaseDeDonnées> OuvreLaBase(const std::string& fichier, bool lectureSeule);

/// The reads of a load as one, see `LecturesCohérentes`. A base that stays locked is misuse too.
[[nodiscard]] std::unique_ptr<const LecturesCohérentes> FigeLaBase(const Ref<BaseDeDonnées>& base,
                                                                   const std::string& fichier);

/// Throws `MauvaisUsage`, with the frames that are there, when the frame is not.
void ExigeChassis(BaseDeDonnées& base, const std::string& fichier, std::int32_t chassis);

}  // namespace zuma::host
