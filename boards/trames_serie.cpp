#include "boards/trames_serie.h"

#include <algorithm>

namespace zuma::trames_serie {
namespace {

constexpr std::array<double, 6> kPuissances{1, 10, 100, 1000, 10'000, 100'000};

constexpr std::uint8_t kPositive = 0xA4;
constexpr std::uint8_t kNégative = 0xA8;
constexpr std::size_t kPlacesLRPC = 5;

constexpr std::string_view kFinDeLigne = "\r\n";
constexpr std::string_view kMarqueJADEVER = ".W.:";

bool EstChiffre(char c) noexcept {
  return c >= '0' && c <= '9';
}

// The number of a weighing field: what follows its last digit is the unit.
std::optional<double> NombreDuChamp(std::string_view champ) noexcept {
  const auto fin = champ.find_last_of("0123456789");
  double nombre = 0;
  if (fin == std::string_view::npos || !LitNombreSigné(champ.substr(0, fin + 1), nombre)) {
    return {};
  }
  return nombre;
}

struct FormeMETRO {
  std::size_t longueurMinimale;  ///< a shorter line is the rest of one
  std::size_t code, valeur;
};
constexpr FormeMETRO kSimple{.longueurMinimale = 22, .code = 2, .valeur = 5};
constexpr FormeMETRO kMultiplexeur{.longueurMinimale = 27, .code = 1, .valeur = 13};
constexpr std::size_t kLongueurCode = 2;
constexpr std::size_t kLongueurValeur = 10;

// The next complete line, cut off the text with its ending; fragments are dropped. None when no
// line is complete.
std::optional<Octets> ProchaineLigne(Octets& texte, const FormeMETRO& forme) {
  while (true) {
    const auto fin = texte.find(kFinDeLigne);
    if (fin == Octets::npos) return {};
    Octets ligne = texte.substr(0, fin);
    texte.erase(0, fin + kFinDeLigne.size());
    if (ligne.size() >= forme.longueurMinimale) return ligne;
  }
}

struct LigneMETRO {
  std::int32_t canal = 0;
  bool mesure = false;
  std::optional<double> valeur;
};

LigneMETRO DécodeLigne(std::string_view ligne, const FormeMETRO& forme) noexcept {
  LigneMETRO lue;
  lue.mesure = ligne.substr(forme.code, kLongueurCode) == "MW";
  if (EstChiffre(ligne.front())) lue.canal = ligne.front() - '0';
  double nombre = 0;
  if (LitNombreSigné(ligne.substr(forme.valeur, kLongueurValeur), nombre)) lue.valeur = nombre;
  return lue;
}

}  // namespace

std::optional<double> DecortiqueUneTrame_dbl(std::string_view trame) noexcept {
  if (trame.size() != kLongueurLRPC) return {};
  double valeur = 0;
  unsigned vus = 0;  // one bit for each place, then one for the sign
  bool négative = false;
  for (const char c : trame) {
    const auto octet = static_cast<std::uint8_t>(c);
    const bool signe = octet == kPositive || octet == kNégative;
    const std::size_t place = signe ? kPlacesLRPC : octet / 32U;
    const unsigned chiffre = octet & 0x0FU;
    if (!signe && (place >= kPlacesLRPC || chiffre > 9)) return {};
    if ((vus >> place & 1U) != 0) return {};
    vus |= 1U << place;
    if (signe) {
      négative = octet == kNégative;
    } else {
      valeur += chiffre * kPuissances[place];
    }
  }
  return négative ? -valeur : valeur;
}

std::optional<double> PremièreTrame(std::string_view texte) noexcept {
  std::optional<double> lue;
  for (; !lue && texte.size() >= kLongueurLRPC; texte.remove_prefix(1)) {
    lue = DecortiqueUneTrame_dbl(texte.substr(0, kLongueurLRPC));
  }
  return lue;
}

double DecortiqueBuffer_dbl(std::string_view texte, double gardée) noexcept {
  return PremièreTrame(texte).value_or(gardée);
}

std::optional<double> DecortiqueUneTrameDEXAL_dbl(std::string_view trame) noexcept {
  double valeur = 0;
  double diviseur = 1;
  std::size_t places = 0;
  std::optional<bool> négative;
  bool fini = false;  // nothing but blanks and the sign stand before the number
  for (std::size_t i = trame.size(); i > 1; --i) {
    const char c = trame[i - 1];
    if (c == '+' || c == '-') {
      if (négative) return {};
      négative = c == '-';
    } else if (c == ' ') {
      fini = true;
    } else if (fini || places == kPuissances.size()) {
      return {};
    } else if ((c == '.' || c == ',') && diviseur == 1) {
      diviseur = kPuissances[places];
    } else if (EstChiffre(c)) {
      valeur += (c - '0') * kPuissances[places++];
    } else {
      return {};
    }
  }
  if (places == 0) return {};
  valeur /= diviseur;
  return négative.value_or(false) ? -valeur : valeur;
}

double DecortiqueBufferDEXAL_dbl(std::string_view texte, double gardée) noexcept {
  if (texte.size() < kLongueurDEXAL) return gardée;
  return DecortiqueUneTrameDEXAL_dbl(texte.substr(1, kLongueurDEXAL - 1)).value_or(gardée);
}

bool DecortiqueJADEVER(Octets& texte, double& valeur, double gardée) {
  const auto fin = texte.rfind(kFinDeLigne);
  if (fin == Octets::npos) return false;
  const Octets trame = texte.substr(0, fin);
  texte.erase(0, fin + kFinDeLigne.size());
  const auto marque = trame.rfind(kMarqueJADEVER);
  if (marque == Octets::npos) return false;
  std::string_view champ = std::string_view(trame).substr(marque + kMarqueJADEVER.size());
  champ = champ.substr(0, std::min(champ.find(':'), champ.find(kFinDeLigne)));
  valeur = NombreDuChamp(champ).value_or(gardée);
  return true;
}

bool Decortique_METRO(Octets& texte, std::int32_t canalActif, TableMETRO& table, JaugesLues& lues) {
  lues.reset();
  while (const auto ligne = ProchaineLigne(texte, kSimple)) {
    const LigneMETRO lue = DécodeLigne(*ligne, kSimple);
    const auto numéro = static_cast<std::size_t>(lue.canal);
    if (lue.mesure) table[numéro] = lue.valeur;
    if (lue.mesure) lues[numéro] = lue.valeur.has_value();
    if (texte.empty()) return false;
    if (lue.canal == canalActif && table[numéro]) return true;
  }
  return false;
}

bool Decortique_METRO_MUX_2_4_8(Octets& texte, std::int32_t& canal, double& valeur) {
  while (const auto ligne = ProchaineLigne(texte, kMultiplexeur)) {
    const LigneMETRO lue = DécodeLigne(*ligne, kMultiplexeur);
    if (!lue.mesure || !lue.valeur) continue;
    canal = lue.canal;
    valeur = *lue.valeur;
    return true;
  }
  return false;
}

}  // namespace zuma::trames_serie
