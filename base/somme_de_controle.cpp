#include "base/somme_de_controle.h"

#include <array>
#include <charconv>
#include <variant>

#include "base/empreinte.h"

namespace zuma {
namespace {

// A value as text that no other value has; a number is the same in whatever type it comes.
struct EnToutesLettres {
  Empreinte& empreinte;
  void operator()(Nul) const {}
  void operator()(bool v) const { empreinte.Ajoute(std::string_view(v ? "oui" : "non")); }
  void operator()(std::int32_t v) const { (*this)(static_cast<double>(v)); }
  void operator()(double v) const {
    std::array<char, 32> texte{};
    const auto fin = std::to_chars(texte.begin(), texte.end(), v == 0 ? 0 : v).ptr;
    empreinte.Ajoute('n');
    empreinte.Ajoute(std::string_view(texte.begin(), fin));
  }
  void operator()(const std::string& v) const {
    empreinte.Ajoute('t');
    empreinte.Ajoute(v);
  }
};

}  // namespace

std::string SommeDeContrôle(std::span<const Champ> champs) {
  Empreinte empreinte;
  for (const auto& [nom, valeur] : champs) {
    if (EstNul(valeur) || nom == kColonneSomme) continue;
    empreinte.Ajoute(nom.Texte());
    empreinte.Ajoute('\0');
    std::visit(EnToutesLettres{empreinte}, valeur);
    empreinte.Ajoute('\0');
  }
  constexpr std::size_t kChiffres = 16;
  std::array<char, kChiffres> texte{};
  const auto fin = std::to_chars(texte.begin(), texte.end(), empreinte.Valeur(), 16).ptr;
  const std::string chiffres(texte.begin(), fin);
  return std::string(kChiffres - chiffres.size(), '0') + chiffres;
}

bool SommeTient(const Recordset& ligne) {
  const Valeur* somme = ChercheChamp(ligne, kColonneSomme);
  if (somme == nullptr || EstNulOuVide(*somme)) return true;
  return *somme == Valeur(SommeDeContrôle(ligne.Fields()));
}

std::string LigneChangée(std::string_view sujet, std::string_view nom) {
  std::string texte = "Attention : ";
  texte.append(sujet).append(" '").append(nom).append(
      "' a une ligne qui ne répond pas à sa somme de contrôle : changée hors du système, ou "
      "abîmée. "
      "Vérifier son étalonnage, puis vider la colonne 'Somme de contrôle'.");
  return texte;
}

}  // namespace zuma
