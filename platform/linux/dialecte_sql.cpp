#include "platform/linux/dialecte_sql.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace zuma::linux_ {
namespace {

bool EstChiffre(char c) {
  return c >= '0' && c <= '9';
}
// Bytes of accented letters count as letters.
bool EstLettre(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' ||
         static_cast<unsigned char>(c) >= 0x80;
}
bool EstDeMot(char c) {
  return EstLettre(c) || EstChiffre(c);
}

// Length of the leading run of `texte` that satisfies `critère`.
template <class Critère>
std::size_t Longueur(std::string_view texte, Critère critère) {
  const auto fin = std::ranges::find_if_not(texte, critère);
  return static_cast<std::size_t>(fin - texte.begin());
}

std::size_t Blancs(std::string_view texte) {
  return Longueur(texte, [](char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; });
}

// Length of `= ANY (` at the start of `texte`, 0 when something else stands there.
std::size_t LongueurDeAny(std::string_view texte) {
  constexpr std::string_view kMot = "ANY";
  std::size_t n = 1;
  n += Blancs(texte.substr(n));
  const auto mot = texte.substr(n, kMot.size());
  const auto même = [](char a, char b) { return (a >= 'a' ? a - ('a' - 'A') : a) == b; };
  if (!std::ranges::equal(mot, kMot, même)) return 0;
  n += kMot.size();
  n += Blancs(texte.substr(n));
  return n < texte.size() && texte[n] == '(' ? n + 1 : 0;
}

// Length of the bracketed name or quoted text at the start of `texte`; all of it when it is not
// closed.
std::size_t LongueurDeCitation(std::string_view texte) {
  const char fermeture = texte.front() == '[' ? ']' : texte.front();
  const auto fin = texte.find(fermeture, 1);
  return fin == std::string_view::npos ? texte.size() : fin + 1;
}

class Traducteur {
 public:
  explicit Traducteur(std::string_view instruction) : reste_(instruction) {
    sql_.reserve(instruction.size() + 1);
  }

  std::string Traduit() {
    while (!reste_.empty()) Avance();
    return std::move(sql_);
  }

 private:
  void Avance() {
    const char c = reste_.front();
    if (c == '[' || c == '\'' || c == '"') return Copie(LongueurDeCitation(reste_));
    if (c == '!' && !reste_.substr(1).starts_with('=')) return Remplace(1, ".");
    if (c == '=') return Egal();
    if (EstChiffre(c)) return Nombre();
    if (EstLettre(c)) return Copie(Longueur(reste_, EstDeMot));
    Copie(1);
  }

  void Egal() {
    const std::size_t any = LongueurDeAny(reste_);
    if (any == 0) return Copie(1);
    const bool colle = !sql_.empty() && EstDeMot(sql_.back());
    Remplace(any, colle ? " IN (" : "IN (");
  }

  void Nombre() {
    Copie(Longueur(reste_, [](char c) { return EstChiffre(c) || c == '.'; }));
    if (!reste_.empty() && EstLettre(reste_.front())) sql_ += ' ';
  }

  void Copie(std::size_t n) { Remplace(n, reste_.substr(0, n)); }
  void Remplace(std::size_t n, std::string_view par) {
    sql_ += par;
    reste_.remove_prefix(n);
  }

  std::string_view reste_;
  std::string sql_;
};

// Not so: what begins a citation, a parameter or a comment, and "=".
bool SansRôle(char c) {
  constexpr auto kRôles = [] {
    std::array<bool, 256> rôles{};
    for (const char rôle : std::string_view("['\"?:@$-/=")) {
      rôles[static_cast<unsigned char>(rôle)] = true;
    }
    return rôles;
  }();
  return !kRôles[static_cast<unsigned char>(c)];
}

// Length of the whole number at the start of `texte`; 0 when that is, or may be, something else: a
// fraction, a power of ten, hexadecimal digits, a number beyond 64 bits.
std::size_t LongueurDEntier(std::string_view texte) {
  constexpr std::string_view kSuites = ".eExX_";
  constexpr std::size_t kPlusLong = 18;
  const std::size_t n = Longueur(texte, EstChiffre);
  const bool continue_ = n < texte.size() && kSuites.find(texte[n]) != kSuites.npos;
  return continue_ || n > kPlusLong ? 0 : n;
}

}  // namespace

std::string TraduitPourSqlite(std::string_view instruction) {
  return Traducteur(instruction).Traduit();
}

FormeDInstruction SépareLesNombres(std::string_view instruction) {
  FormeDInstruction forme;
  forme.texte.reserve(instruction.size());
  std::size_t copiés = 0;
  std::size_t place = 0;
  while ((place += Longueur(instruction.substr(place), SansRôle)) < instruction.size()) {
    const char c = instruction[place];
    if (c == '[' || c == '\'' || c == '"') {
      place += LongueurDeCitation(instruction.substr(place));
      continue;
    }
    if (c != '=') return {std::string(instruction), {}};
    ++place;
    place += Blancs(instruction.substr(place));
    const std::string_view nombre =
        instruction.substr(place, LongueurDEntier(instruction.substr(place)));
    if (nombre.empty()) continue;
    std::from_chars(nombre.begin(), nombre.end(), forme.nombres.emplace_back());
    forme.texte.append(instruction, copiés, place - copiés) += '?';
    copiés = place += nombre.size();
  }
  forme.texte.append(instruction, copiés);
  return forme;
}

}  // namespace zuma::linux_
