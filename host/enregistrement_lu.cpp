#include "host/enregistrement_lu.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <limits>
#include <nlohmann/json.hpp>

#include "host/configuration.h"

namespace zuma::host {
namespace {

// The fields of a line of RFC 4180; the recorder writes no line ends inside them.
std::vector<std::string> Champs(const std::string& ligne) {
  std::vector<std::string> champs(1);
  bool cité = false;
  for (std::size_t i = 0; i < ligne.size(); ++i) {
    const char c = ligne[i];
    if (c == '"' && cité && i + 1 < ligne.size() && ligne[i + 1] == '"') {
      champs.back() += c;
      ++i;
    } else if (c == '"') {
      cité = !cité;
    } else if (c == ',' && !cité) {
      champs.emplace_back();
    } else {
      champs.back() += c;
    }
  }
  return champs;
}

// "name [unit]"; the apostrophe that keeps a spreadsheet from computing is none of the name.
ColonneLue Titre(std::string titre) {
  constexpr std::string_view kFormules = "=+-@";
  if (titre.size() > 1 && titre[0] == '\'' && kFormules.find(titre[1]) != std::string_view::npos) {
    titre.erase(0, 1);
  }
  const std::size_t crochet = titre.rfind(" [");
  if (!titre.ends_with(']') || crochet == std::string::npos) return {titre, {}};
  return {titre.substr(0, crochet), titre.substr(crochet + 2, titre.size() - crochet - 3)};
}

bool LitLeNombre(const std::string& champ, double& nombre) {
  if (champ.empty()) {
    nombre = std::numeric_limits<double>::quiet_NaN();
    return true;
  }
  const auto lu = std::from_chars(champ.data(), champ.data() + champ.size(), nombre);
  return lu.ec == std::errc() && lu.ptr == champ.data() + champ.size();
}

bool LitLaLacune(const std::string& ligne, Lacune& lacune) {
  unsigned long long rangées = 0;
  if (std::sscanf(ligne.c_str(), "# %llu rows lost from %lf s to %lf s", &rangées, &lacune.de,
                  &lacune.à) != 3) {
    return false;
  }
  lacune.rangées = rangées;
  return true;
}

// "# tare to 0 of NAME", behind it empty fields; see the writer of recordings.
std::optional<Acte> LitLActe(const std::string& champ) {
  for (const ActeSurCapteur acte : {ActeSurCapteur::ZéroRepris, ActeSurCapteur::TareReprise,
                                    ActeSurCapteur::Zéro, ActeSurCapteur::Tare}) {
    const std::string début = "# " + std::string(MotDe(acte)) + " ";
    if (!champ.starts_with(début)) continue;
    const std::string_view reste = std::string_view(champ).substr(début.size());
    constexpr std::string_view kDe = "of ";
    double valeur = 0;
    const std::size_t nom = acte == ActeSurCapteur::Tare ? reste.find(kDe) : 0;
    const bool lu = nom == 0 || std::sscanf(champ.c_str(), "# tare to %lf", &valeur) == 1;
    if (!lu || nom == std::string_view::npos || !reste.substr(nom).starts_with(kDe)) return {};
    return Acte{acte, std::string(reste.substr(nom + kDe.size())), valeur};
  }
  return {};
}

void LitLaDescription(const std::string& fichier, EnregistrementLu& enregistrement) {
  std::ifstream flux(fichier);
  const auto json = nlohmann::json::parse(flux, nullptr, false);
  if (!json.is_object()) return;
  for (const char* nom : {"start", "frame", "frame_name"}) {
    if (json.contains(nom) && json[nom].is_string()) {
      enregistrement.textes.emplace_back(nom, json[nom].get<std::string>());
    }
  }
  if (json.contains("linked_at_us") && json["linked_at_us"].is_number()) {
    enregistrement.liéÀ = json["linked_at_us"].get<double>();
  }
  if (const auto éprouvette = json.find("specimen"); éprouvette != json.end()) {
    for (const auto& [nom, valeur] : éprouvette->items()) {
      if (valeur.is_string()) {
        enregistrement.textes.emplace_back("specimen " + nom, valeur.get<std::string>());
      }
    }
  }
  const auto capteurs = json.find("sensors");
  if (capteurs == json.end() || !capteurs->is_array()) return;
  for (const auto& capteur : *capteurs) {
    const auto colonne = std::ranges::find(enregistrement.colonnes,
                                           capteur.value("name", std::string()), &ColonneLue::nom);
    if (colonne == enregistrement.colonnes.end()) continue;
    colonne->label = capteur.value("label", std::string());
    colonne->étalonné = capteur.value("calibrated", std::string());
    colonne->parQui = capteur.value("calibrated_by", std::string());
  }
}

}  // namespace

EnregistrementLu LitLEnregistrement(const std::string& fichier) {
  std::ifstream flux(fichier);
  std::string ligne;
  EnregistrementLu lu;
  if (!std::getline(flux, ligne) || !ligne.starts_with("time [s]")) {
    throw MauvaisUsage(fichier + " is no recording: its first line does not begin with time [s]");
  }
  for (std::string& titre : Champs(ligne)) lu.colonnes.push_back(Titre(std::move(titre)));
  lu.colonnes.erase(lu.colonnes.begin());
  for (int numéro = 2; std::getline(flux, ligne); ++numéro) {
    Lacune lacune;
    if (LitLaLacune(ligne, lacune)) {
      lu.lacunes.push_back(lacune);
      continue;
    }
    const std::vector<std::string> champs = Champs(ligne);
    if (auto acte = LitLActe(champs.front())) {
      lu.actes.push_back({lu.secondes.size(), std::move(*acte)});
      continue;
    }
    bool bonne = champs.size() == lu.colonnes.size() + 1;
    double nombre = 0;
    for (std::size_t i = 0; bonne && i < champs.size(); ++i) {
      bonne = LitLeNombre(champs[i], nombre) && (i != 0 || std::isfinite(nombre));
      (i == 0 ? lu.secondes : lu.colonnes[i - 1].valeurs).push_back(nombre);
    }
    if (!bonne) {
      throw MauvaisUsage(fichier + ", line " + std::to_string(numéro) + ": no row of " +
                         std::to_string(lu.colonnes.size() + 1) +
                         " numbers; a recording that still runs is converted once it is finished");
    }
  }
  LitLaDescription(fichier + ".json", lu);
  return lu;
}

}  // namespace zuma::host
