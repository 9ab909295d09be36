#include "host/ligne_lue.h"

#include <cmath>
#include <limits>
#include <utility>

#include "base/echec.h"

namespace zuma::host {
namespace {

constexpr std::string_view kLiaison = "Liaison Chassis / ";

}  // namespace

LigneLue::LigneLue(std::string_view table, const Recordset& lignes)
    : table_(table), lignes_(lignes) {
  for (const Champ& champ : lignes.Fields()) rangs_.try_emplace(champ.Name.Texte(), rangs_.size());
}

const Valeur* LigneLue::Cherche(std::string_view colonne) const {
  const auto rang = rangs_.find(std::string(colonne));
  return rang == rangs_.end() ? nullptr : &lignes_.Fields()[rang->second].Value;
}

std::string LigneLue::Désignation() const {
  const std::string index = Texte("Index");
  if (!index.empty() || !table_.starts_with(kLiaison)) return index;
  return "(" + Texte("Chassis") + ", " + Texte(table_.substr(kLiaison.size())) + ")";
}

std::optional<double> LigneLue::Nombre(std::string_view colonne) const {
  const Valeur* valeur = Cherche(colonne);
  if (valeur == nullptr || EstNulOuVide(*valeur)) return {};
  double nombre = 0;
  if (const auto* texte = std::get_if<std::string>(valeur)) {
    return LitNombre(*texte, nombre) ? std::optional(nombre) : std::nullopt;
  }
  return VersDouble(*valeur);
}

std::optional<std::int32_t> LigneLue::Entier(std::string_view colonne) const {
  using Bornes = std::numeric_limits<std::int32_t>;
  const std::optional<double> nombre = Nombre(colonne);
  if (!nombre || !(*nombre >= Bornes::min() && *nombre <= Bornes::max())) return {};
  return VersEntier32(*nombre);
}

std::string LigneLue::Texte(std::string_view colonne) const {
  const Valeur* valeur = Cherche(colonne);
  return valeur == nullptr || EstNul(*valeur) ? std::string() : VersTexte(*valeur);
}

bool LigneLue::Vrai(std::string_view colonne) const {
  const Valeur* valeur = Cherche(colonne);
  if (valeur == nullptr || EstNulOuVide(*valeur)) return false;
  try {
    return VersBooléen(*valeur);
  } catch (const Echec&) {
    return false;
  }
}

const Valeur* Lue(const Recordset& lignes, const linux_::ColonneDuSchéma& colonne) {
  return colonne.requise ? ChampNommé(lignes, colonne.nom) : ChercheChamp(lignes, colonne.nom);
}

void Constats::Dit(const LigneLue& ligne, Constat constat) {
  Dit(ligne.Table(), ligne.Désignation(), std::move(constat));
}

void Constats::Dit(std::string_view table, std::string ligne, Constat constat) {
  recueil_.Ajoute({.origine = Origine::Donnée,
                   .table = std::string(table),
                   .ligne = std::move(ligne),
                   .colonne = std::string(constat.colonne),
                   .trouvé = std::move(constat.trouvé),
                   .attendu = std::move(constat.attendu),
                   .texte = std::string(constat.texte),
                   .gravité = constat.gravité});
}

}  // namespace zuma::host
