#pragma once

#include <span>
#include <string>
#include <string_view>

// The proof that every stop arrives, or is told: each kind of output under each unkindness.
namespace zuma::arret {

struct Sortie;
struct Rudesse;

/// Rows: every kind of output, from its command or logic output to the terminal of its twin.
[[nodiscard]] std::span<const Sortie> Sorties();
/// Columns: what is done to the machine, and when the stop comes.
[[nodiscard]] std::span<const Rudesse> Rudesses();
[[nodiscard]] std::string_view Nom(const Sortie& sortie);
[[nodiscard]] std::string_view Nom(const Rudesse& rudesse);

/// What one stop did. Times are in seconds of the machine, from the instant of the stop.
struct Verdict {
  bool bougeait = false;     ///< the terminal had left its rest: without that nothing is shown
  double délai = 0;          ///< stated time within which the terminal is at rest, or told
  double repos = 0;          ///< from when on the terminal was at rest; infinite: never
  double dite = 0;           ///< from when on the output was named as not reached; infinite: never
  double niLUnNiLAutre = 0;  ///< time beyond the stated one without rest and without a word
  bool clémente = false;     ///< nothing was done to the machine: there is nothing to tell
  bool reprise = true;       ///< somebody tries again: it must be at rest in the end
  std::string plainte;       ///< what made the trial itself fail

  /// At rest within the stated time, or told by name until it is; and at rest in the end where
  /// somebody tries again, since every link works by then. In kind conditions without a word.
  [[nodiscard]] bool Tient() const {
    return bougeait && plainte.empty() && niLUnNiLAutre == 0 && (!reprise || repos < kJamais) &&
           (!clémente || dite == kJamais);
  }
  static constexpr double kJamais = 1e9;
};

/// Who drives the stop.
enum class Hôte {
  Fourni,  ///< the program's own: outputs first, again for as long as the stop is latched
  Nu       ///< one that calls `Chassis.DéclencheAU` once, and no more
};
/// A host that only calls `DéclencheAU` does not stop refreshing a watchdog board.
[[nodiscard]] bool Concerne(Hôte hôte, const Sortie& sortie);

/// Makes a frame with that output, sets it going, stops it under that unkindness.
[[nodiscard]] Verdict Essaie(const Sortie& sortie, const Rudesse& rudesse,
                             Hôte hôte = Hôte::Fourni);

/// Ends the program on an output behind a link that is dead for the first 0.3 s of that end: true
/// when it moved before, and is at rest behind it.
[[nodiscard]] bool FinitAuRepos(const Sortie& sortie, bool exigée);

/// All that a verdict tells.
[[nodiscard]] std::string EnLong(const Verdict& verdict);
/// A verdict in a few characters: "12 ms", "told 5.3 s", "FAILED".
[[nodiscard]] std::string EnBref(const Verdict& verdict);

}  // namespace zuma::arret
