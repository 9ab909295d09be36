#pragma once

#include <atomic>
#include <limits>
#include <optional>
#include <vector>

#include "host/rangees.h"
#include "publication/lecture/lecteur.h"

namespace zuma::host {

/// The refreshes of the sensors as rows, from a publication: values of the objects chosen, with
/// their ages where they are wanted. Whoever is slower than the ring of samples is overtaken, and
/// told how many rows that cost.
class RangéesPubliées final : public SourceDeRangées {
 public:
  /// Rows from sample `premier` on; their seconds count from `origine` of the samples.
  RangéesPubliées(publication::Lecteur lecteur, std::vector<std::size_t> objets, bool avecAges,
                  std::uint64_t premier, double origine);

  [[nodiscard]] std::size_t Colonnes() const override { return valeurs_.size(); }
  bool Retire(const std::function<void(const Rangée&)>& prend) override;
  [[nodiscard]] Lacune Manque() override;

  /// From any thread: no row behind the last sample that there is now.
  void FinitIci();
  /// From any thread: samples that are not looked at yet.
  [[nodiscard]] std::uint64_t EnRetard() const noexcept;

 private:
  void Rattrape();
  [[nodiscard]] Lacune LacuneAvant(double secondes, std::uint64_t rafraîchissements);

  publication::Lecteur lecteur_;
  std::vector<std::size_t> objets_;
  bool avecAges_;
  double origine_;
  publication::Echantillon échantillon_;
  std::vector<double> valeurs_;
  std::atomic<std::uint64_t> suivant_;
  std::atomic<std::uint64_t> fin_ = std::numeric_limits<std::uint64_t>::max();
  std::optional<std::uint64_t> rafraîchissements_{};  ///< of the last row
  double secondes_ = 0;                               ///< of the last row
  std::atomic<std::uint64_t> rafraîchissementsALaFin_ = 0;
  std::atomic<double> secondesALaFin_ = 0;
};

}  // namespace zuma::host
