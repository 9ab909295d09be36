#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>

#include "publication/lecture/disposition.h"

namespace zuma::publication {

/// A file is no publication, or not one that can be read here; the text says which and why.
struct Illisible : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// Memory that a publication lies in. Released with its last user.
class Zone {
 public:
  /// Memory behind an open file, which grows to `octets`: all of it is there from the start, so
  /// that no write meets a full disk or a page that is missing. Throws `std::system_error`.
  [[nodiscard]] static std::shared_ptr<Zone> DuFichier(int descripteur, std::size_t octets);
  /// Memory of this process alone. Throws `std::system_error`.
  [[nodiscard]] static std::shared_ptr<Zone> Privée(std::size_t octets);
  /// A publication that another process writes, or wrote, to look at. Throws `Illisible`.
  [[nodiscard]] static std::shared_ptr<const Zone> EnLecture(const std::string& fichier);
  ~Zone();
  Zone(const Zone&) = delete;
  Zone& operator=(const Zone&) = delete;

  ///@{
  /// All of it, as words.
  [[nodiscard]] std::span<Mot> Mots() noexcept { return {mots_, nombre_}; }
  [[nodiscard]] std::span<const Mot> Mots() const noexcept { return {mots_, nombre_}; }
  ///@}
  /// The process that writes there runs; always so for memory of this process.
  [[nodiscard]] bool EstTenue() const;

 private:
  void TouchePartout();
  Zone(int descripteur, std::size_t octets, int protection, int drapeaux);

  Mot* mots_ = nullptr;
  std::size_t nombre_ = 0;
  // Of a map to look at: its name may belong to another one tomorrow.
  int descripteur_ = -1;
};

/// The writer of an open publication runs.
[[nodiscard]] bool EstVerrouillé(int descripteur);

/// A word of the header.
[[nodiscard]] inline std::uint64_t Lit(std::span<const Mot> mots, EnTête champ) noexcept {
  return mots[RangDe(champ)].load(std::memory_order_acquire);
}

}  // namespace zuma::publication
