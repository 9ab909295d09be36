#pragma once

#include <cstdint>
#include <string>

#include "publication/lecture/lecteur.h"

namespace zuma::host {

/// How much of a stop is kept, in seconds.
struct Fenêtre {
  double avant = 10;  ///< before the stop
  double après = 5;   ///< behind the stop
};

/// Writes the stop that event `arrêt` began as a case: a folder of its own in `dossier`, named
/// after the moment and the cause, with
/// - `samples.csv`: every object at every sample, seconds counted from the stop;
/// - `case.json`: frame, description, events, and the account in words;
/// - `stop.svg`: one page with the account and the curves.
///
/// It is there whole or not at all, and never takes the place of another. Returns its path, empty
/// for a stop that is overwritten. Throws `std::runtime_error` with the reason.
std::string EcritLeCas(const publication::Lecteur& lecteur, std::uint64_t arrêt,
                       const std::string& dossier, const Fenêtre& fenêtre);

/// True when the folder holds a case of that stop.
[[nodiscard]] bool EstGardé(const publication::Lecteur& lecteur, std::uint64_t arrêt,
                            const std::string& dossier);

/// The page of a stop. Empty when it is overwritten.
[[nodiscard]] std::string PageDeLArrêt(const publication::Lecteur& lecteur, std::uint64_t arrêt,
                                       const Fenêtre& fenêtre);

/// Takes old cases away. The newest 100 never go; beyond them those older than 30 days do. Folders
/// that hold no case are left alone.
void RetireLesVieuxCas(const std::string& dossier);

}  // namespace zuma::host
