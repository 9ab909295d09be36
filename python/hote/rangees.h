#pragma once

#include <cstddef>
#include <functional>
#include <utility>
#include <vector>

namespace zuma::python {

/// Rows of numbers that grow with each refresh of the sensors: seconds first, then each source.
class Rangées {
 public:
  /// One row has a place for each source behind its time.
  explicit Rangées(std::vector<std::function<double()>> sources) : sources_(std::move(sources)) {}
  /// One row more.
  void Prend(double secondes) {
    nombres_.push_back(secondes);
    for (const auto& source : sources_) nombres_.push_back(source());
  }
  /// No row from now on: what the sources look at is going away.
  void Termine() noexcept { finies_ = true; }
  /// `Termine` was called.
  [[nodiscard]] bool EstFinie() const noexcept { return finies_; }
  /// Numbers of one row.
  [[nodiscard]] std::size_t Colonnes() const noexcept { return sources_.size() + 1; }
  /// All of them, row by row.
  [[nodiscard]] const std::vector<double>& Nombres() const noexcept { return nombres_; }

 private:
  std::vector<std::function<double()>> sources_;
  std::vector<double> nombres_;
  bool finies_ = false;
};

}  // namespace zuma::python
