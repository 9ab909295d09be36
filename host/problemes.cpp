#include "host/problemes.h"

#include <array>
#include <nlohmann/json.hpp>

#include "base/empreinte.h"
#include "platform/linux/texte_ligne.h"

namespace zuma::host {

using linux_::SansSéquence;
using linux_::UneSeuleLigne;

namespace {

constexpr int kVariantes = 5;  // entries of one failure, by its variables

constexpr std::array<std::string_view, 4> kOrigines{"file", "data", "message", "failure"};

std::string_view Nom(Origine origine) {
  return kOrigines[static_cast<std::size_t>(origine)];
}

constexpr std::array kChamps{&Problème::table,  &Problème::ligne,   &Problème::colonne,
                             &Problème::trouvé, &Problème::attendu, &Problème::objet,
                             &Problème::texte};

std::uint64_t EmpreinteDe(const Problème& p) {
  Empreinte empreinte;
  empreinte.Ajoute(static_cast<unsigned char>(p.origine));
  for (const auto champ : kChamps) {
    empreinte.Ajoute(p.*champ);
    empreinte.Ajoute('\0');
  }
  return empreinte.Valeur();
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

bool Recueil::Ajoute(Problème problème) {
  if (!connus_.insert(EmpreinteDe(problème)).second) return false;
  if (problèmes_.size() < kGardés) problèmes_.push_back(std::move(problème));
  return true;
}

// What fails on every pass has other variables each time: a few of them tell enough.
void Recueil::AjouteErreur(std::string_view message, const TableVariables& variables) {
  int& variantes = variantes_[std::string(message)];
  if (variantes >= kVariantes) return;
  Problème problème{.origine = Origine::Echec};
  problème.texte = UneSeuleLigne(message);
  for (const auto& [nom, valeur] : variables) {
    if (EstNul(nom)) continue;
    problème.texte += "\n    " + UneSeuleLigne(VersTexte(nom) + " = " + TexteDeVariable(valeur));
  }
  if (Ajoute(std::move(problème))) ++variantes;
}

void Recueil::Montre(std::string_view texte, const ObjetConcerné& objet) {
  Problème problème{.origine = Origine::Message};
  problème.objet = std::string(objet.classe) + " " + std::string(objet.clé);
  if (!objet.nom.empty()) problème.objet += " (" + std::string(objet.nom) + ")";
  problème.texte = UneSeuleLigne(texte);
  Ajoute(std::move(problème));
}

bool Recueil::AttendEncore(std::string_view texte, const ObjetConcerné& objet, int fois) {
  Montre(texte, objet);
  return fois < kPatience;
}

std::string Ligne(const Problème& p) {
  std::string ligne(Nom(p.origine));
  ligne += p.gravité == Gravité::Avertissement ? ", warning: " : ": ";
  const std::string lieu = UneSeuleLigne(Lieu(p));
  if (!lieu.empty()) ligne += lieu + ": ";
  ligne += SansSéquence(p.texte);  // of a failure, with its variables below one another
  if (!p.trouvé.empty()) ligne += "; found " + UneSeuleLigne(p.trouvé);
  if (!p.attendu.empty()) ligne += "; expected " + UneSeuleLigne(p.attendu);
  return ligne;
}

std::string EtDAutres(std::size_t enPlus) {
  return "and " + std::to_string(enPlus) + " more";
}

std::string EnJson(const std::vector<Problème>& problèmes, int retrait, std::size_t enPlus) {
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
  if (enPlus != 0) liste.push_back({{"kind", "more"}, {"text", EtDAutres(enPlus)}});
  // A database may hold bytes that are no UTF-8: they must not end the report. And what JSON lets
  // through as it stands, a terminal may obey.
  return SansSéquence(
      liste.dump(retrait, ' ', false, nlohmann::ordered_json::error_handler_t::replace));
}

}  // namespace zuma::host
