#include "base/cles.h"

#include "base/empreinte.h"

namespace zuma {
namespace {

// Lower-case of one byte of UTF-8: ASCII letters, and the second byte of "À" to "Þ" (0xC3 0x80 to
// 0xC3 0x9E, but 0x97 which is the multiplication sign).
constexpr unsigned char Minuscule(unsigned char précédent, unsigned char c) {
  const bool ascii = c >= 'A' && c <= 'Z';
  const bool latin = précédent == 0xC3 && c >= 0x80 && c <= 0x9E && c != 0x97;
  return ascii || latin ? static_cast<unsigned char>(c + 0x20) : c;
}

}  // namespace

bool MêmeClé(std::string_view a, std::string_view b) noexcept {
  if (a.size() != b.size()) return false;
  unsigned char précédentA = 0;
  unsigned char précédentB = 0;
  for (std::size_t i = 0; i < a.size(); ++i) {
    const auto ca = static_cast<unsigned char>(a[i]);
    const auto cb = static_cast<unsigned char>(b[i]);
    if (Minuscule(précédentA, ca) != Minuscule(précédentB, cb)) return false;
    précédentA = ca;
    précédentB = cb;
  }
  return true;
}

std::size_t EmpreinteDeClé::operator()(std::string_view clé) const noexcept {
  Empreinte empreinte;
  unsigned char précédent = 0;
  for (const char caractère : clé) {
    const auto c = static_cast<unsigned char>(caractère);
    empreinte.Ajoute(Minuscule(précédent, c));
    précédent = c;
  }
  return empreinte.Valeur();
}

}  // namespace zuma
