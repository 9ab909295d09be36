#pragma once

#include <deque>
#include <string>
#include <utility>
#include <vector>

#include "sim/esclave_modbus.h"

namespace zuma::essai {

/// A Modbus slave behind a line that is slow or loses what goes one way. Answers queue: a late one
/// comes late, whatever was asked meanwhile.
class LigneRétive : public sim::AppareilSérie {
 public:
  LigneRétive(sim::HorlogeVirtuelle& horloge, Ref<sim::EsclaveModbus> appareil)
      : horloge_(horloge), appareil_(std::move(appareil)) {
    appareil_->latence = -1e9;  // it answers at once, and the line takes the time
  }

  void Reçoit(std::string_view octets, std::int32_t vitesse) override {
    questions.push_back(Octets(octets));
    heures.push_back(horloge_.Maintenant());
    if (perdQuestions > 0) return static_cast<void>(--perdQuestions);
    appareil_->Reçoit(octets, vitesse);
    Octets réponse = appareil_->Emet();
    if (perdRéponses > 0) return static_cast<void>(--perdRéponses);
    enRoute_.emplace_back(horloge_.Maintenant() + retard, std::move(réponse));
  }
  [[nodiscard]] Octets Emet() override {
    Octets octets;
    for (; !enRoute_.empty() && enRoute_.front().first <= horloge_.Maintenant();
         enRoute_.pop_front()) {
      octets += enRoute_.front().second;
    }
    return octets;
  }

  /// Kinds of the questions since the last call: "E" a write with the first value that it carries,
  /// "L" a read, "D" a write of one register with its address and value.
  [[nodiscard]] std::string Genres() {
    std::string genres;
    for (const Octets& q : std::exchange(questions, {})) {
      const auto mot = [&](std::size_t rang) {
        return std::to_string(static_cast<std::uint8_t>(q[rang]) * 256 +
                              static_cast<std::uint8_t>(q[rang + 1]));
      };
      if (q[1] != 16) {
        genres += "L ";
      } else if (mot(4) == "1") {
        genres += "D" + mot(2) + "=" + mot(7) + " ";
      } else {
        genres += "E" + mot(9) + " ";
      }
    }
    heures.clear();
    return genres;
  }

  std::vector<Octets> questions;
  std::vector<double> heures;  ///< of the questions, in microseconds
  double retard = 10'000;      ///< from a question to its whole answer, in microseconds
  int perdQuestions = 0;       ///< so many questions never arrive
  int perdRéponses = 0;        ///< so many answers never come back

 private:
  sim::HorlogeVirtuelle& horloge_;
  Ref<sim::EsclaveModbus> appareil_;
  std::deque<std::pair<double, Octets>> enRoute_;
};

}  // namespace zuma::essai
