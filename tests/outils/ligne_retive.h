#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "sim/esclave_modbus.h"

namespace zuma::essai {

/// Draws from 0 to below `n`, the same ones in each run.
class Tirage {
 public:
  std::uint32_t operator()(std::uint32_t n) {
    return (graine_ = graine_ * 1'664'525 + 1'013'904'223) / 65'536 % n;
  }

 private:
  std::uint32_t graine_ = 1;
};

/// A Modbus slave behind a fast gateway that is slow to answer or loses what goes one way. It hears
/// questions while answers are on their way: a late one comes late, whatever was asked meanwhile.
class LigneRétive : public sim::AppareilSérie {
 public:
  LigneRétive(sim::HorlogeVirtuelle& horloge, Ref<sim::EsclaveModbus> appareil)
      : AppareilSérie(horloge), appareil_(std::move(appareil)) {}

  void Branche(sim::LigneSérie& ligne) override { ligne.débit = 1'000'000'000; }
  void Reçoit(std::string_view octets, sim::LigneSérie& ligne) override {
    if (question_.empty()) heure_ = horloge_.Maintenant();
    question_ += octets;
    ligne.Réveille(1.5 * ligne.DuréeOctet());
  }
  void Réveil(sim::LigneSérie& ligne) override {
    questions.push_back(std::exchange(question_, {}));
    heures.push_back(heure_);
    if (perdQuestions > 0) return static_cast<void>(--perdQuestions);
    const Octets réponse = appareil_->Traite(questions.back());
    if (perdRéponses > 0) return static_cast<void>(--perdRéponses);
    ligne.Emet(réponse, retard);
  }

  /// Draws how slow it is, and what it loses next.
  void Change(Tirage& tire) {
    constexpr std::array<double, 5> kRetards{10'000, 10'000, 60'000, 150'000, 600'000};
    if (tire(4) == 0) retard = kRetards[tire(kRetards.size())];
    perdQuestions = tire(3) == 0 ? static_cast<int>(tire(3)) : 0;
    perdRéponses = tire(3) == 0 ? static_cast<int>(tire(3)) : 0;
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
      genres += q[1] != 16 ? "L" : mot(4) == "1" ? "D" + mot(2) + "=" + mot(7) : "E" + mot(9);
      genres += " ";
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
  Ref<sim::EsclaveModbus> appareil_;
  Octets question_;
  double heure_ = 0;  ///< of its first byte
};

}  // namespace zuma::essai
