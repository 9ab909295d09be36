#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "sim/horloge_virtuelle.h"
#include "sim/ligne_serie.h"

namespace zuma::sim {

/// A bench tester that pushes a piston into a specimen at a steady speed, on a binary protocol. It
/// runs once it was reset (function 7) and started (function 2), until it is stopped (function 3),
/// the specimen broken or not, or has no way left.
class TesteurCBRSimulé : public AppareilSérie {
 public:
  /// Kind of machine, as it tells it.
  enum class Genre : std::uint8_t { CBR = 0, Marshall = 1, UU = 2 };

  /// A machine at rest.
  explicit TesteurCBRSimulé(HorlogeVirtuelle& horloge, Genre genre = Genre::CBR)
      : AppareilSérie(horloge), genre_(genre) {}

  void Reçoit(std::string_view octets, LigneSérie& ligne) override;
  void MetEnMarche() override { DémarreAuPupitre(); }

  std::int32_t vitesseDeLigne = 0;  ///< the only rate at which it understands; 0 for any
  double précharge = 0;             ///< what the load cell shows at rest
  double latence = 5'000;           ///< microseconds before an answer

  /// Started at its own panel, or before the program.
  void DémarreAuPupitre();
  /// It runs.
  [[nodiscard]] bool EnMarche() const;
  /// What the load cell shows.
  [[nodiscard]] double Force() const;
  [[nodiscard]] double Déplacement() const;  ///< millimetres
  /// Functions received so far, but for the request of the measures.
  [[nodiscard]] const std::vector<int>& Commandes() const noexcept { return commandes_; }

 private:
  void Traite(int fonction, LigneSérie& ligne);
  void Répond(int fonction, std::string_view données, LigneSérie& ligne) const;
  void Arrête();
  [[nodiscard]] Octets Mesures() const;

  Genre genre_;
  Octets entrée_;
  bool prêt_ = false;
  bool enMarche_ = false;
  double départ_ = 0;   ///< microseconds
  double atteint_ = 0;  ///< way of the piston when it last stopped, millimetres
  std::vector<int> commandes_;
};

}  // namespace zuma::sim
