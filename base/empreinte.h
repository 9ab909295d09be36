#pragma once

#include <cstdint>
#include <string_view>

namespace zuma {

/// Hash of bytes (FNV-1a, 64 bits). It tells what changed by chance or by hand, and keeps nobody
/// out.
class Empreinte {
 public:
  ///@{
  /// Takes more bytes in, in their order.
  constexpr void Ajoute(unsigned char octet) noexcept { valeur_ = (valeur_ ^ octet) * kFacteur; }
  constexpr void Ajoute(std::string_view octets) noexcept {
    for (const char c : octets) Ajoute(static_cast<unsigned char>(c));
  }
  ///@}
  /// Hash of what was taken in so far.
  [[nodiscard]] constexpr std::uint64_t Valeur() const noexcept { return valeur_; }

 private:
  static constexpr std::uint64_t kFacteur = 1099511628211U;
  std::uint64_t valeur_ = 14695981039346656037U;
};

}  // namespace zuma
