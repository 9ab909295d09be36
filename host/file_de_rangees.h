#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace zuma::host {

/// Rows that are missing in a row, and when: seconds of the first and the last one.
struct Lacune {
  std::uint64_t rangées = 0;
  double de = 0;
  double à = 0;

  /// The rows of a later moment are missing too.
  void Ajoute(const Lacune& suite) {
    if (suite.rangées == 0) return;
    if (rangées == 0) de = suite.de;
    rangées += suite.rangées;
    à = suite.à;
  }
};

/// Rows of numbers on their way from the pass to the writer: one thread adds, another takes. All
/// memory is had at construction; adding neither allocates, locks nor waits. A row that finds no
/// room is counted, and the next one that does carries the count: what is missing is known where it
/// is missing.
class FileDeRangées {
 public:
  struct EnTête {
    double secondes = 0;
    Lacune avant{};  ///< rows lost between the row before and this one
  };

  FileDeRangées(std::size_t colonnes, std::size_t capacité)
      : colonnes_(colonnes), têtes_(capacité), valeurs_(capacité * colonnes) {}

  [[nodiscard]] std::size_t Colonnes() const { return colonnes_; }

  /// Adding side: one row, whose numbers `remplit` writes in place. False, and the row lost, when
  /// there is no room.
  template <class Remplit>
  bool Dépose(double secondes, Remplit&& remplit) {
    if (Pleine()) {
      ++perdues_;
      manque_.Ajoute({1, secondes, secondes});
      return false;
    }
    const std::uint64_t rang = écrites_.load(std::memory_order_relaxed);
    têtes_[rang % têtes_.size()] = {secondes, manque_};
    manque_ = {};
    remplit(Valeurs(rang));
    écrites_.store(rang + 1, std::memory_order_release);
    return true;
  }
  /// Adding side.
  [[nodiscard]] bool Pleine() const {
    return écrites_.load(std::memory_order_relaxed) - lues_.load(std::memory_order_acquire) ==
           têtes_.size();
  }
  /// Adding side: all rows lost so far, and those that no row has told yet.
  [[nodiscard]] std::uint64_t Perdues() const { return perdues_; }
  [[nodiscard]] const Lacune& Manque() const { return manque_; }

  /// Taking side: the oldest row goes to `prend`; false when there is none.
  template <class Prend>
  bool Retire(Prend&& prend) {
    const std::uint64_t rang = lues_.load(std::memory_order_relaxed);
    if (rang == écrites_.load(std::memory_order_acquire)) return false;
    prend(têtes_[rang % têtes_.size()], std::span<const double>(Valeurs(rang)));
    lues_.store(rang + 1, std::memory_order_release);
    return true;
  }

 private:
  std::span<double> Valeurs(std::uint64_t rang) {
    return std::span(valeurs_).subspan(rang % têtes_.size() * colonnes_, colonnes_);
  }

  std::size_t colonnes_;
  std::vector<EnTête> têtes_;
  std::vector<double> valeurs_;
  std::uint64_t perdues_ = 0;
  Lacune manque_;
  std::atomic<std::uint64_t> écrites_ = 0;
  std::atomic<std::uint64_t> lues_ = 0;
};

}  // namespace zuma::host
