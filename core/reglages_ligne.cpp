#include "core/reglages_ligne.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "core/collections.h"

namespace zuma {
namespace {

constexpr std::int32_t kVitesseParDéfaut = 9600;

struct Code {
  std::string_view texte;
  std::int32_t valeur;
};
constexpr std::array<Code, 4> kPorts{{{"1", 1}, {"2", 2}, {"3", 3}, {"4", 4}}};
constexpr std::array<std::string_view, 16> kVitesses{
    "110",   "300",   "600",   "1200",  "2400",  "4800",   "9600",   "14400",
    "19200", "28800", "38400", "56000", "57600", "115200", "128000", "256000"};
constexpr std::array<Code, 5> kParités{{{"N", 0}, {"O", 1}, {"E", 2}, {"M", 3}, {"S", 4}}};
constexpr std::array<Code, 5> kBitsDeDonnées{{{"4", 4}, {"5", 5}, {"6", 6}, {"7", 7}, {"8", 8}}};
constexpr std::array<Code, 3> kBitsDeStop{{{"1", 1}, {"1.5", 15}, {"2", 2}}};

template <std::size_t N>
void Lit(const std::array<Code, N>& codes, std::string_view texte, std::int32_t& destination) {
  const auto trouvé =
      std::ranges::find_if(codes, [&](const Code& code) { return MêmeClé(code.texte, texte); });
  if (trouvé != codes.end()) destination = trouvé->valeur;
}

// The parts of a comma-separated text, one after the other.
class Parties {
 public:
  explicit Parties(std::string_view texte) : reste_(texte) {}
  std::string_view Suivante() {
    if (épuisé_) throw Echec(Numéro::IndiceHorsPlage);
    const auto virgule = reste_.find(',');
    const std::string_view partie = reste_.substr(0, virgule);
    épuisé_ = virgule == std::string_view::npos;
    if (!épuisé_) reste_.remove_prefix(virgule + 1);
    return partie;
  }

 private:
  std::string_view reste_;
  bool épuisé_ = false;
};

bool LitVitesse(std::string_view texte, std::int32_t& vitesse) {
  vitesse = kVitesseParDéfaut;
  if (std::ranges::find(kVitesses, texte) == kVitesses.end()) return false;
  std::from_chars(texte.data(), texte.data() + texte.size(), vitesse);
  return true;
}

}  // namespace

void OuvreLigne(ZED_LiaisonSerie& liaison, const RéglagesLigne& réglages) {
  liaison.VitesseSérie(réglages.vitesse);
  liaison.ParitéSérie(réglages.parité);
  liaison.BitsDeDonnées(réglages.bitsDeDonnées);
  liaison.BitsDeStop(réglages.bitsDeStop);
  liaison.PortSérie(réglages.port);
  liaison.OuvrePort();
}

void LitRéglagesLigne(std::string_view texte, RéglagesLigne& réglages,
                      const std::function<void()>& vitesseInconnue) {
  Parties parties(texte);
  Lit(kPorts, parties.Suivante(), réglages.port);
  if (!LitVitesse(parties.Suivante(), réglages.vitesse)) vitesseInconnue();
  Lit(kParités, parties.Suivante(), réglages.parité);
  Lit(kBitsDeDonnées, parties.Suivante(), réglages.bitsDeDonnées);
  Lit(kBitsDeStop, parties.Suivante(), réglages.bitsDeStop);
}

}  // namespace zuma
