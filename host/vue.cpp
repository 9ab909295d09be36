#include "host/vue.h"

#include <array>
#include <cstdio>
#include <nlohmann/json.hpp>

namespace zuma::host {
namespace {

constexpr std::size_t kLargeurNom = 22;
constexpr std::size_t kLargeurValeur = 9;
constexpr std::size_t kLargeurBorne = 18;
constexpr std::size_t kLargeurCellule = kLargeurNom + kLargeurValeur + kLargeurBorne + 12;

std::string Secondes(double secondes) {
  std::array<char, 32> texte{};
  std::snprintf(texte.data(), texte.size(), "%.2f s", secondes);
  return texte.data();
}

bool EstLogique(const Canal& canal) {
  return canal.TypeCanal() == ENUM_TYPE_FONCTION::FctEntréesLogiques ||
         canal.TypeCanal() == ENUM_TYPE_FONCTION::FctSortiesLogiques;
}

std::string ValeurDuCanal(const Canal& canal) {
  if (!EstLogique(canal)) return TexteDeNombre(canal.ValeurCanal());
  return canal.ValeurCanal() != 0 ? "on" : "off";
}

std::string_view Genre(const Canal& canal) {
  constexpr std::array<std::string_view, 5> kGenres{"none", "logic in", "logic out", "analog in",
                                                    "analog out"};
  const auto rang = static_cast<std::size_t>(canal.TypeCanal());
  return kGenres[rang < kGenres.size() ? rang : 0];
}

std::string_view Unité(const Canal& canal) {
  return EstLogique(canal) ? "" : "points";
}

Ton TonDuCanal(const Canal& canal) {
  if (!EstLogique(canal)) return Ton::Normal;
  return canal.ValeurCanal() != 0 ? Ton::Bon : Ton::Discret;
}

std::string Cellule(const Canal& canal, const Machine& machine, const Terminal& terminal) {
  const std::string valeur = ADroite(ValeurDuCanal(canal), kLargeurValeur);
  return "  " + ADroite(std::to_string(canal.NuméroCanal()), 2) + " " +
         AGauche(canal.Nom(), kLargeurNom) + terminal.Colore(valeur, TonDuCanal(canal)) + " " +
         AGauche(Unité(canal), 6) +
         terminal.Colore(AGauche(machine.Borne(canal), kLargeurBorne), Ton::Discret);
}

std::string Titre(const Carte& carte) {
  std::array<char, 16> adresse{};
  std::snprintf(adresse.data(), adresse.size(), "%X", static_cast<unsigned>(carte.Adresse()));
  return "Board " + carte.Key() + "  " + carte.NomDeLaCarte() + "  (address " + adresse.data() +
         " hex)";
}

template <class Travail>
void PourChaqueCanal(Chassis& chassis, Travail&& travail) {
  for (const CarteRef& carte : *chassis.Cartes()) {
    for (const FonctionRef& bloc : *carte->Fonctions()) {
      for (const CanalRef& canal : *bloc->Canals()) travail(*carte, *bloc, *canal);
    }
  }
}

}  // namespace

std::vector<std::string> VueVivante(Chassis& chassis, const Machine& machine,
                                    const Terminal& terminal, double secondes) {
  std::vector<std::string> lignes;
  lignes.push_back(terminal.Colore(chassis.Nom(), Ton::Titre) + "   " + Secondes(secondes) +
                   "   Ctrl-C ends");
  const std::size_t parLigne = std::max<std::size_t>(1, terminal.Colonnes() / kLargeurCellule);
  for (const CarteRef& carte : *chassis.Cartes()) {
    lignes.push_back(terminal.Colore(Titre(*carte), Ton::Titre));
    for (const FonctionRef& bloc : *carte->Fonctions()) {
      lignes.push_back(" Block " + bloc->Key() + "  " + bloc->NomDeLaFonction());
      std::size_t rang = 0;
      for (const CanalRef& canal : *bloc->Canals()) {
        if (rang++ % parLigne == 0) lignes.emplace_back();
        lignes.back() += Cellule(*canal, machine, terminal);
      }
    }
  }
  return lignes;
}

std::vector<std::string> VueEnLignes(Chassis& chassis, const Machine& machine, double secondes) {
  std::vector<std::string> lignes;
  PourChaqueCanal(chassis, [&](const Carte& carte, const Fonction& bloc, const Canal& canal) {
    std::string ligne = Secondes(secondes) + " | board " + carte.Key() + " | block " + bloc.Key() +
                        " | channel " + std::to_string(canal.NuméroCanal()) + " | " +
                        std::string(Genre(canal)) + " | " + canal.Nom() + " | " +
                        ValeurDuCanal(canal);
    if (!Unité(canal).empty()) ligne += " " + std::string(Unité(canal));
    const std::string borne = machine.Borne(canal);
    if (!borne.empty()) ligne += " | " + borne;
    lignes.push_back(std::move(ligne));
  });
  return lignes;
}

std::string VueEnJson(Chassis& chassis, const Machine& machine, double secondes) {
  nlohmann::ordered_json vue{{"time_s", secondes}, {"frame", chassis.Nom()}};
  auto& canaux = vue["channels"] = nlohmann::ordered_json::array();
  PourChaqueCanal(chassis, [&](const Carte& carte, const Fonction& bloc, const Canal& canal) {
    nlohmann::ordered_json objet{{"board", carte.Key()},
                                 {"block", bloc.Key()},
                                 {"channel", canal.NuméroCanal()},
                                 {"type", Genre(canal)},
                                 {"name", canal.Nom()}};
    if (EstLogique(canal)) {
      objet["on"] = canal.ValeurCanal() != 0;
    } else {
      objet["points"] = canal.ValeurCanal();
    }
    const std::string borne = machine.Borne(canal);
    if (!borne.empty()) objet["terminal"] = borne;
    canaux.push_back(std::move(objet));
  });
  return vue.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
}

}  // namespace zuma::host
