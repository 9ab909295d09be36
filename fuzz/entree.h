#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>

/// Bytes of one run, taken from the front; zeros once they are used up.
class Entrée {
 public:
  Entrée(const std::uint8_t* données, std::size_t taille)
      : reste_(reinterpret_cast<const char*>(données), taille) {}

  std::uint8_t Octet() {
    if (reste_.empty()) return 0;
    const auto octet = static_cast<std::uint8_t>(reste_.front());
    reste_.remove_prefix(1);
    return octet;
  }
  /// Up to `nombre` bytes.
  std::string_view Octets(std::size_t nombre) {
    const std::string_view pris = reste_.substr(0, nombre);
    reste_.remove_prefix(pris.size());
    return pris;
  }
  [[nodiscard]] std::string_view Reste() const { return reste_; }

 private:
  std::string_view reste_;
};

/// Ends the run as a finding when a property does not hold.
inline void Exige(bool propriété, const char* quoi) {
  if (propriété) return;
  std::fprintf(stderr, "Propriété fausse : %s\n", quoi);
  std::abort();
}
