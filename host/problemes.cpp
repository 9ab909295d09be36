#include "host/problemes.h"

#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>

namespace zuma::host {
namespace {

constexpr std::ptrdiff_t kVariantes = 5;  // entries of one failure, by its variables

constexpr std::array<std::string_view, 4> kOrigines{"file", "data", "message", "failure"};

std::string_view Nom(Origine origine) {
  return kOrigines[static_cast<std::size_t>(origine)];
}

std::string Lieu(const Problème& p) {
  std::string lieu = p.table.empty() ? p.objet : "table " + p.table;
  if (!p.ligne.empty()) lieu += ", row " + p.ligne;
  if (!p.colonne.empty()) lieu += ", column " + p.colonne;
  return lieu;
}

std::string TexteDeVariable(const Valeur& valeur) {
  return EstNul(valeur) ? "Null" : VersTexte(valeur);
}

}  // namespace

void Recueil::Ajoute(Problème problème) {
  if (std::ranges::find(problèmes_, problème) != problèmes_.end()) return;
  problèmes_.push_back(std::move(problème));
}

// What fails on every pass has other variables each time: a few of them tell enough.
void Recueil::AjouteErreur(std::string_view message, const TableVariables& variables) {
  const auto connue = [&](const Problème& p) {
    return p.origine == Origine::Echec && p.texte.starts_with(message) &&
           (p.texte.size() == message.size() || p.texte[message.size()] == '\n');
  };
  if (std::ranges::count_if(problèmes_, connue) >= kVariantes) return;
  Problème problème{.origine = Origine::Echec};
  problème.texte = message;
  for (const auto& [nom, valeur] : variables) {
    if (EstNul(nom)) continue;
    problème.texte += "\n    " + VersTexte(nom) + " = " + TexteDeVariable(valeur);
  }
  Ajoute(std::move(problème));
}

void Recueil::Montre(std::string_view texte, const ObjetConcerné& objet) {
  Problème problème{.origine = Origine::Message};
  problème.objet = std::string(objet.classe) + " " + std::string(objet.clé);
  if (!objet.nom.empty()) problème.objet += " (" + std::string(objet.nom) + ")";
  problème.texte = texte;
  Ajoute(std::move(problème));
}

bool Recueil::AttendEncore(std::string_view texte, const ObjetConcerné& objet, int fois) {
  Montre(texte, objet);
  return fois < kPatience;
}

std::string Ligne(const Problème& p) {
  std::string ligne(Nom(p.origine));
  ligne += p.gravité == Gravité::Avertissement ? ", warning: " : ": ";
  const std::string lieu = Lieu(p);
  if (!lieu.empty()) ligne += lieu + ": ";
  ligne += p.texte;
  if (!p.trouvé.empty()) ligne += "; found " + p.trouvé;
  if (!p.attendu.empty()) ligne += "; expected " + p.attendu;
  return ligne;
}

std::string EnJson(const std::vector<Problème>& problèmes, int retrait) {
  nlohmann::ordered_json liste = nlohmann::ordered_json::array();
  for (const Problème& p : problèmes) {
    nlohmann::ordered_json objet{
        {"kind", Nom(p.origine)},
        {"severity", p.gravité == Gravité::Avertissement ? "warning" : "error"}};
    const auto ajoute = [&](const char* nom, const std::string& texte) {
      if (!texte.empty()) objet[nom] = texte;
    };
    ajoute("table", p.table);
    ajoute("row", p.ligne);
    ajoute("column", p.colonne);
    ajoute("object", p.objet);
    ajoute("text", p.texte);
    ajoute("found", p.trouvé);
    ajoute("expected", p.attendu);
    liste.push_back(std::move(objet));
  }
  // A database may hold bytes that are no UTF-8: they must not end the report.
  return liste.dump(retrait, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
}

}  // namespace zuma::host
