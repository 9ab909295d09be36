#include "base/valeur.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

#include "base/echec.h"

namespace zuma {
namespace {

// Every conversion from a `Valeur` to a number passes here, so that Null and bad text fail alike.
double NombreDe(const Valeur& v, std::source_location où) {
  struct Visite {
    std::source_location où;
    double operator()(Nul) const { throw Echec(Numéro::NullIncorrect, où); }
    double operator()(bool b) const { return b ? kVrai : 0; }
    double operator()(std::int32_t n) const { return n; }
    double operator()(double d) const { return d; }
    double operator()(const std::string& texte) const {
      double nombre = 0;
      if (!LitNombre(texte, nombre)) {
        throw Echec(Numéro::TypeIncompatible,
                    DescriptionDEchec(Numéro::TypeIncompatible) + " : '" + texte + "'", où);
      }
      return nombre;
    }
  };
  return std::visit(Visite{où}, v);
}

template <class Entier>
Entier Rétrécit(double v, std::source_location où) {
  const double arrondi = std::nearbyint(v);  // round half to even in the default mode
  if (!(arrondi >= std::numeric_limits<Entier>::min() &&
        arrondi <= std::numeric_limits<Entier>::max())) {
    throw Echec(Numéro::Dépassement, où);
  }
  return static_cast<Entier>(arrondi);
}

bool EgalSansCasse(std::string_view a, std::string_view minuscules) {
  return std::ranges::equal(a, minuscules, [](char x, char y) {
    return (x >= 'A' && x <= 'Z' ? static_cast<char>(x + ('a' - 'A')) : x) == y;
  });
}

}  // namespace

bool EstTexteVide(const Valeur& v) noexcept {
  const auto* texte = std::get_if<std::string>(&v);
  return texte != nullptr && texte->empty();
}

bool EstNulOuVide(const Valeur& v) noexcept {
  return EstNul(v) || EstTexteVide(v);
}

std::int16_t VersEntier16(double v, std::source_location où) {
  return Rétrécit<std::int16_t>(v, où);
}
std::int16_t VersEntier16(const Valeur& v, std::source_location où) {
  return Rétrécit<std::int16_t>(NombreDe(v, où), où);
}
std::int32_t VersEntier32(double v, std::source_location où) {
  return Rétrécit<std::int32_t>(v, où);
}
std::int32_t VersEntier32(const Valeur& v, std::source_location où) {
  return Rétrécit<std::int32_t>(NombreDe(v, où), où);
}
double VersDouble(const Valeur& v, std::source_location où) {
  return NombreDe(v, où);
}

bool VersBooléen(const Valeur& v, std::source_location où) {
  if (const auto* texte = std::get_if<std::string>(&v)) {
    const std::string_view t = SansBlancs(*texte);
    if (EgalSansCasse(t, "true") || EgalSansCasse(t, "vrai")) return true;
    if (EgalSansCasse(t, "false") || EgalSansCasse(t, "faux")) return false;
  }
  return NombreDe(v, où) != 0;
}

std::string VersTexte(const Valeur& v, std::source_location où) {
  struct Visite {
    std::source_location où;
    std::string operator()(Nul) const { throw Echec(Numéro::NullIncorrect, où); }
    std::string operator()(bool b) const { return b ? "Vrai" : "Faux"; }
    std::string operator()(std::int32_t n) const { return std::to_string(n); }
    std::string operator()(double d) const { return TexteDeNombre(d); }
    std::string operator()(const std::string& texte) const { return texte; }
  };
  return std::visit(Visite{où}, v);
}

double Divise(double dividende, double diviseur, std::source_location où) {
  if (diviseur == 0) throw Echec(Numéro::DivisionParZéro, où);
  return dividende / diviseur;
}

bool LitNombre(std::string_view texte, double& nombre) noexcept {
  const std::string_view t = SansBlancs(texte);
  std::array<char, 64> tampon{};
  if (t.empty() || t.size() > tampon.size()) return false;
  // Only the characters of a decimal number: from_chars would also take "inf" and "nan".
  if (t.find_first_not_of("+-0123456789.,eE") != std::string_view::npos) return false;
  const std::size_t début = t.front() == '+' ? 1 : 0;
  if (début == 1 && t.size() > 1 && t[1] == '-') return false;
  const auto fin = std::ranges::copy(t.substr(début), tampon.begin()).out;
  std::replace(tampon.begin(), fin, ',', '.');
  double lu = 0;
  const auto [reste, erreur] = std::from_chars(tampon.begin(), fin, lu);
  if (erreur != std::errc() || reste != fin || !std::isfinite(lu)) return false;
  nombre = lu;
  return true;
}

bool LitNombreSigné(std::string_view texte, double& nombre) noexcept {
  const std::string_view t = SansBlancs(texte);
  const bool blancs = t.size() > 1 && (t[0] == '+' || t[0] == '-') && t[1] == ' ';
  if (!blancs) return LitNombre(t, nombre);
  const std::string_view chiffres = SansBlancs(t.substr(1));
  if (chiffres.starts_with('+') || chiffres.starts_with('-')) return false;
  if (!LitNombre(chiffres, nombre)) return false;
  if (t[0] == '-') nombre = -nombre;
  return true;
}

std::string TexteDeNombre(double nombre, char séparateur) {
  constexpr int kChiffres = 15;
  std::array<char, 40> tampon{};
  const auto [fin, erreur] = std::to_chars(tampon.begin(), tampon.end(), nombre == 0 ? 0 : nombre,
                                           std::chars_format::general, kChiffres);
  std::string texte(tampon.begin(), erreur == std::errc() ? fin : tampon.begin());
  std::ranges::replace(texte, '.', séparateur);
  std::ranges::replace(texte, 'e', 'E');
  return texte;
}

std::vector<std::string_view> Découpe(std::string_view texte, char séparateur) {
  std::vector<std::string_view> parties;
  while (true) {
    const auto fin = texte.find(séparateur);
    parties.push_back(texte.substr(0, fin));
    if (fin == std::string_view::npos) return parties;
    texte.remove_prefix(fin + 1);
  }
}

std::string_view SansBlancs(std::string_view texte) noexcept {
  constexpr std::string_view kBlancs = " \t\r\n";
  const auto début = texte.find_first_not_of(kBlancs);
  if (début == std::string_view::npos) return {};
  return texte.substr(début, texte.find_last_not_of(kBlancs) - début + 1);
}

}  // namespace zuma
