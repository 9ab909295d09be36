#include "instruments/trames_gram.h"

namespace zuma::trames_gram {
namespace {

// Longer than a record, so that nothing is lost of one that is still coming.
constexpr std::size_t kTexteGardé = 64;

}  // namespace

bool ExtraitEnregistrement(Octets& tampon) {
  const std::size_t fin = tampon.rfind(kFin);
  const bool complet = fin != Octets::npos && fin >= kLongueurEnregistrement;
  if (!complet || tampon.size() <= kLongueurEnregistrement + kFin.size()) {
    if (tampon.size() > kTexteGardé) tampon.erase(0, tampon.size() - kTexteGardé);
    return false;
  }
  // What stands behind it begins the next record, whose end alone would complete itself with this
  // one's last characters: a number without its sign, for one that lacks its unit.
  tampon.erase(fin, kFin.size());
  tampon.erase(0, fin - kLongueurEnregistrement);
  return true;
}

std::optional<double> Nombre(std::string_view enregistrement) noexcept {
  double nombre = 0;
  const bool lu = LitNombreSigné(enregistrement.substr(0, kLongueurNombre), nombre);
  return lu ? std::optional(nombre) : std::nullopt;
}

bool ContientUnEnregistrement(std::string_view reçus) noexcept {
  std::size_t signe = reçus.find('+');
  if (signe == std::string_view::npos) signe = reçus.find('-');
  if (signe == std::string_view::npos) return false;
  return reçus.find(kFin, signe) == signe + kLongueurEnregistrement;
}

}  // namespace zuma::trames_gram
