#include "platform/reglages_port.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>
#include <vector>

#include "base/valeur.h"

namespace zuma {
namespace {

constexpr std::string_view kLettresParité = "NOEMS";
constexpr std::array<std::pair<std::string_view, std::int32_t>, 3> kStops{
    {{"1", 1}, {"1.5", 15}, {"2", 2}}};

bool LitEntier(std::string_view texte, std::int32_t& entier) {
  const auto [reste, erreur] = std::from_chars(texte.data(), texte.data() + texte.size(), entier);
  return erreur == std::errc() && reste == texte.data() + texte.size();
}

}  // namespace

std::int32_t RéglagesInstrument::NuméroPort() const noexcept {
  std::string_view texte = port;
  if (texte.starts_with("COM") || texte.starts_with("com")) texte.remove_prefix(3);
  std::int32_t numéro = 0;
  return LitEntier(texte, numéro) ? numéro : 0;
}

RéglagesInstrument LitRéglages(std::string_view texte) {
  RéglagesInstrument lus;
  std::vector<std::string_view> champs = Découpe(texte, ',');
  for (std::string_view& champ : champs) champ = SansBlancs(champ);
  if (champs.size() == 5) {
    lus.port = champs.front();
    champs.erase(champs.begin());
  }
  if (champs.size() != 4) return lus;
  const auto parité =
      champs[1].size() == 1 ? kLettresParité.find(champs[1]) : std::string_view::npos;
  const auto stop =
      std::ranges::find(kStops, champs[3], &std::pair<std::string_view, std::int32_t>::first);
  lus.valides = LitEntier(champs[0], lus.ligne.vitesse) && lus.ligne.vitesse > 0 &&
                parité != std::string_view::npos && LitEntier(champs[2], lus.ligne.bits) &&
                lus.ligne.bits >= 5 && lus.ligne.bits <= 8 && stop != kStops.end();
  if (!lus.valides) return lus;
  lus.ligne.parité = static_cast<std::int32_t>(parité);
  lus.ligne.stop = stop->second;
  return lus;
}

std::string LettreParité(std::int32_t code) {
  const bool connue = code >= 0 && static_cast<std::size_t>(code) < kLettresParité.size();
  return {kLettresParité[connue ? static_cast<std::size_t>(code) : 0]};
}

std::string TexteStop(std::int32_t code) {
  const auto stop =
      std::ranges::find(kStops, code, &std::pair<std::string_view, std::int32_t>::second);
  return std::string(stop == kStops.end() ? kStops.front().first : stop->first);
}

}  // namespace zuma
