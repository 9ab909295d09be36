#include "platform/linux/valeur_sqlite.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <string>

#include "base/colonnes.h"
#include "base/echec.h"

namespace zuma::linux_ {
namespace {

struct Motif {
  std::string_view début;
  TypeColonne type;
};

// Beginnings of declared types. The first that fits decides.
constexpr std::array kMotifs{
    Motif{"BOOL", TypeColonne::Booléen},   Motif{"BIT", TypeColonne::Booléen},
    Motif{"YESNO", TypeColonne::Booléen},  Motif{"INT", TypeColonne::Entier},
    Motif{"LONG", TypeColonne::Entier},    Motif{"SMALLINT", TypeColonne::Entier},
    Motif{"TINYINT", TypeColonne::Entier}, Motif{"BYTE", TypeColonne::Entier},
    Motif{"REAL", TypeColonne::Réel},      Motif{"DOUBLE", TypeColonne::Réel},
    Motif{"FLOAT", TypeColonne::Réel},     Motif{"SINGLE", TypeColonne::Réel},
    Motif{"NUMERIC", TypeColonne::Réel},   Motif{"DECIMAL", TypeColonne::Réel},
    Motif{"TEXT", TypeColonne::Texte},     Motif{"VARCHAR", TypeColonne::Texte},
    Motif{"CHAR", TypeColonne::Texte},     Motif{"MEMO", TypeColonne::Texte},
};

char Majuscule(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

Valeur Entier(sqlite3_int64 n) {
  constexpr sqlite3_int64 kMini = std::numeric_limits<std::int32_t>::min();
  constexpr sqlite3_int64 kMaxi = std::numeric_limits<std::int32_t>::max();
  if (n >= kMini && n <= kMaxi) return static_cast<std::int32_t>(n);
  return static_cast<double>(n);
}

std::string Texte(sqlite3_value* valeur) {
  const auto* octets = reinterpret_cast<const char*>(sqlite3_value_text(valeur));
  const int longueur = sqlite3_value_bytes(valeur);
  return octets == nullptr ? std::string()
                           : std::string(octets, static_cast<std::size_t>(longueur));
}

Valeur Convertit(const Valeur& valeur, TypeColonne type) {
  switch (type) {
    case TypeColonne::Texte:
      return VersTexte(valeur);
    case TypeColonne::Entier:
      return VersEntier32(valeur);
    case TypeColonne::Réel:
      return VersDouble(valeur);
    case TypeColonne::Booléen:
      return VersBooléen(valeur);
    case TypeColonne::Quelconque:
      break;
  }
  return valeur;
}

}  // namespace

TypeColonne TypeDéclaré(std::string_view déclaration) noexcept {
  const auto même = [](char a, char b) { return Majuscule(a) == b; };
  const auto motif = std::ranges::find_if(kMotifs, [&](const Motif& m) {
    return std::ranges::equal(déclaration.substr(0, m.début.size()), m.début, même);
  });
  return motif == kMotifs.end() ? TypeColonne::Quelconque : motif->type;
}

// Through the value itself, found once: each question to the statement looks for it anew.
Valeur LitColonne(sqlite3_stmt* instruction, int rang, TypeColonne type) {
  sqlite3_value* const valeur = sqlite3_column_value(instruction, rang);
  switch (sqlite3_value_type(valeur)) {
    case SQLITE_INTEGER: {
      const sqlite3_int64 n = sqlite3_value_int64(valeur);
      return type == TypeColonne::Booléen ? Valeur(n != 0) : Entier(n);
    }
    case SQLITE_FLOAT: {
      const double d = sqlite3_value_double(valeur);
      return type == TypeColonne::Booléen ? Valeur(d != 0) : Valeur(d);
    }
    case SQLITE_TEXT:
      return Texte(valeur);
    default:
      return Nul{};
  }
}

Valeur PourColonne(const Valeur& valeur, TypeColonne type, std::string_view colonne,
                   std::source_location où) {
  if (EstNul(valeur)) return valeur;
  return colonnes::EnNommant(colonne, [&] {
    Valeur convertie = Convertit(valeur, type);
    const auto* nombre = std::get_if<double>(&convertie);
    if (nombre != nullptr && !std::isfinite(*nombre)) throw Echec(Numéro::Dépassement, où);
    return convertie;
  });
}

}  // namespace zuma::linux_
