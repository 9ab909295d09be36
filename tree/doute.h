#pragma once

#include <algorithm>
#include <optional>

namespace zuma {

/// Whether the answers of a Modbus slave can be told apart. Once a question has ended without its
/// answer, the next good answer may be the late one of that question: it proves nothing about the
/// question that is pending. A slave answers in order, so that all that was still on its way comes
/// within as long again as the first late answer took: the slave is left alone for that time, 0.1 s
/// at least, 0.5 s or ten time-outs at most, whichever is more, counted from its last word. One
/// that is dead says none and is asked as often as ever. Times in microseconds.
class Doute {
 public:
  /// The question sent at `envoi` has ended without its own answer, `attente` being the time-out of
  /// its board: the longer that is, the later an answer may come. A slave that was heard
  /// meanwhile is slow and not dead: while it works it hears nothing, and is left alone from now
  /// on.
  void SansRéponse(double envoi, double maintenant, double attente = 0) noexcept {
    calmeMaximal_ = std::max(kCalmeMaximal, kAttentes * attente);
    if (!depuis_) depuis_ = envoi;
    if (entendu_) entendu_ = maintenant;
  }
  /// A question has ended without its answer, and the slave has not been left alone since.
  [[nodiscard]] bool EnDoute() const noexcept { return depuis_.has_value(); }
  /// The slave was heard: from here on it is left alone.
  void Entend(double maintenant) noexcept {
    if (!depuis_) return;
    if (!entendu_) laissé_ = maintenant;
    entendu_ = maintenant;
  }
  /// The slave was heard late, and has been left alone for long enough: it hears the next question.
  [[nodiscard]] bool EstReposé(double maintenant) const noexcept {
    return entendu_ && maintenant - *entendu_ >= Calme();
  }
  /// True while the slave is left alone. The doubt ends with that time; without a word from the
  /// slave it lasts, and nothing is held up. A line that never falls silent is asked again after
  /// four of the longest rests, two seconds by default, in doubt as before.
  [[nodiscard]] bool Attend(double maintenant) noexcept {
    if (!entendu_) return false;
    if (EstReposé(maintenant)) {
      *this = {};
    } else if (maintenant - laissé_ > kCalmes * calmeMaximal_) {
      entendu_.reset();
    }
    return entendu_.has_value();
  }

 private:
  static constexpr double kCalmeMinimal = 100'000;
  static constexpr double kCalmeMaximal = 500'000;
  static constexpr double kAttentes = 10;  ///< time-outs that a late answer may take
  static constexpr double kCalmes = 4;     ///< rests that a line which is never silent may take
  [[nodiscard]] double Calme() const noexcept {
    return std::clamp(*entendu_ - *depuis_, kCalmeMinimal, calmeMaximal_);
  }

  std::optional<double> depuis_;   ///< sending of the first question without answer
  std::optional<double> entendu_;  ///< last word since
  double laissé_ = 0;              ///< first of these words
  double calmeMaximal_ = kCalmeMaximal;
};

}  // namespace zuma
