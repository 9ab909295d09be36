#pragma once

#include <atomic>
#include <limits>
#include <optional>
#include <string_view>
#include <vector>

#include "host/rangees.h"
#include "publication/lecture/lecteur.h"

namespace zuma::host {

/// Ranks of the sensors of a frame: what is recorded when nobody says otherwise.
[[nodiscard]] std::vector<std::size_t> LesCapteurs(const publication::ChassisPublié& chassis);
/// Those of its channels.
[[nodiscard]] std::vector<std::size_t> LesCanaux(const publication::ChassisPublié& chassis);

///@{
/// Titles of what a recording holds that is to be played again.
inline constexpr std::string_view kColonneDeLHorloge = "clock";
inline constexpr std::string_view kUnitéDesCanaux = "points";
///@}

/// What a recording holds besides the values chosen.
struct Contenu {
  bool âges = false;  ///< each reading is followed by its age in seconds
  /// All that it takes to compute the sensors again: behind the values the frame's timer in
  /// microseconds, then each channel in points where it was read since the row before; and what was
  /// asked of the sensors.
  bool rejouable = false;
};

/// The refreshes of the sensors as rows, from a publication: values of the objects chosen, and
/// what else is wanted. Whoever is slower than the ring of samples is overtaken, and
/// told how many rows that cost. No lock stands between them and the pass: one side adds to a ring
/// of fixed samples, the other takes from it.
class RangéesPubliées final : public SourceDeRangées {
 public:
  /// Rows from sample `premier` on; their seconds count from `origine` of the samples.
  RangéesPubliées(publication::Lecteur lecteur, std::vector<std::size_t> objets, Contenu contenu,
                  std::uint64_t premier, double origine);

  [[nodiscard]] std::size_t Colonnes() const override { return valeurs_.size(); }
  bool Retire(const std::function<void(const Rangée&)>& prend) override;
  [[nodiscard]] Lacune Manque() override;

  /// From any thread: no row behind the last sample that there is now.
  void FinitIci();
  /// From any thread: samples that are not looked at yet.
  [[nodiscard]] std::uint64_t EnRetard() const noexcept;

 private:
  void PrendLesValeurs(double secondes);
  void PrendLesActes();
  void Rattrape();
  [[nodiscard]] Lacune LacuneAvant(double secondes, std::uint64_t rafraîchissements);

  publication::Lecteur lecteur_;
  std::vector<std::size_t> objets_;
  Contenu contenu_;
  std::vector<std::size_t> canaux_{};  ///< where the recording is to be played again
  std::vector<Acte> actes_{};
  std::uint64_t évènement_ = 0;  ///< the next one to look at
  publication::EvènementLu lu_{};
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
