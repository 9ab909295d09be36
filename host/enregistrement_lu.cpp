#include "host/enregistrement_lu.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <limits>
#include <nlohmann/json.hpp>

#include "host/configuration.h"
#include "host/rangees_publiees.h"
#include "platform/linux/texte_ligne.h"

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

// Empty for what is no text: a file that somebody wrote by hand.
std::string Texte(const nlohmann::json& objet, const char* clé) {
  const auto champ = objet.find(clé);
  return champ != objet.end() && champ->is_string() ? champ->get<std::string>() : std::string();
}

// The sensors stand first, in the order of the description, each with its age where ages were
// recorded; behind them the clock and the channels. Names do not tell them apart: a sensor may bear
// that of its channel.
void RepèreLesColonnes(const nlohmann::json& capteurs, EnregistrementLu& lu) {
  std::vector<ColonneLue>& colonnes = lu.colonnes;
  const auto nom = [&](std::size_t i) { return linux_::UneSeuleLigne(Texte(capteurs[i], "name")); };
  const bool âges = colonnes.size() > 1 && colonnes[1].nom == colonnes[0].nom + " age" &&
                    (capteurs.size() < 2 || nom(1) != colonnes[1].nom);
  const std::size_t pas = âges ? 2 : 1;
  if (capteurs.size() * pas > colonnes.size()) return;
  for (std::size_t i = 0; i < capteurs.size(); ++i) {
    ColonneLue& colonne = colonnes[i * pas];
    if (colonne.nom != nom(i)) return;  // the description of another recording
    colonne.label = Texte(capteurs[i], "label");
    colonne.étalonné = Texte(capteurs[i], "calibrated");
    colonne.parQui = Texte(capteurs[i], "calibrated_by");
  }
  const std::size_t horloge = capteurs.size() * pas;
  if (horloge < colonnes.size() && colonnes[horloge].nom == kColonneDeLHorloge &&
      colonnes[horloge].unité == "us") {
    lu.horloge = horloge;
  }
}

void LitLaDescription(const std::string& fichier, EnregistrementLu& enregistrement) {
  std::ifstream flux(fichier);
  const auto json = nlohmann::json::parse(flux, nullptr, false);
  if (!json.is_object()) return;
  for (const char* nom : {"start", "frame", "frame_name"}) {
    if (std::string texte = Texte(json, nom); !texte.empty()) {
      enregistrement.textes.emplace_back(nom, std::move(texte));
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
  const auto estUnObjet = [](const nlohmann::json& capteur) { return capteur.is_object(); };
  if (capteurs == json.end() || !capteurs->is_array()) return;
  if (std::ranges::all_of(*capteurs, estUnObjet)) RepèreLesColonnes(*capteurs, enregistrement);
}

// The numbers of a row, none where it is not whole.
std::optional<std::vector<double>> LitLaRangée(const std::vector<std::string>& champs,
                                               std::size_t attendus) {
  if (champs.size() != attendus) return {};
  std::vector<double> nombres(attendus);
  for (std::size_t i = 0; i < attendus; ++i) {
    if (!LitLeNombre(champs[i], nombres[i])) return {};
  }
  return std::isfinite(nombres[0]) ? std::optional(std::move(nombres)) : std::nullopt;
}

/// The lines behind the header, one by one.
class LecteurDeLignes {
 public:
  LecteurDeLignes(const std::string& fichier, EnregistrementLu& lu) : fichier_(fichier), lu_(lu) {}

  void Prend(const std::string& ligne, bool entière) {
    ++numéro_;
    Lacune lacune;
    if (LitLaLacune(ligne, lacune)) {
      coupée_ = 0;  // half a row that a failing disk kept counts among the rows lost
      lu_.lacunes.push_back(lacune);
      return;
    }
    const std::vector<std::string> champs = Champs(ligne);
    if (auto acte = LitLActe(champs.front())) {
      lu_.actes.push_back({lu_.secondes.size(), std::move(*acte)});
      return;
    }
    if (coupée_ != 0) Refuse(coupée_);
    const auto nombres = LitLaRangée(champs, lu_.colonnes.size() + 1);
    if (!nombres || !entière) {
      coupée_ = numéro_;
      return;
    }
    lu_.secondes.push_back(nombres->front());
    for (std::size_t i = 1; i < nombres->size(); ++i) {
      lu_.colonnes[i - 1].valeurs.push_back((*nombres)[i]);
    }
  }
  // What is cut at the very end is a copy cut short, or a disk that was full.
  void Finit() { lu_.coupé = coupée_ != 0; }

 private:
  [[noreturn]] void Refuse(std::size_t numéro) const {
    throw MauvaisUsage(fichier_ + ", line " + std::to_string(numéro) + ": no row of " +
                       std::to_string(lu_.colonnes.size() + 1) +
                       " numbers; a recording that still runs is converted once it is finished");
  }

  const std::string& fichier_;
  EnregistrementLu& lu_;
  std::size_t numéro_ = 1;
  std::size_t coupée_ = 0;  ///< line of a row that is not whole, until the next line is read
};

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
  LecteurDeLignes lignes(fichier, lu);
  while (std::getline(flux, ligne)) lignes.Prend(ligne, !flux.eof());
  lignes.Finit();
  LitLaDescription(fichier + ".json", lu);
  return lu;
}

std::string TexteDeLaCoupure(const std::string& fichier) {
  return fichier +
         " ends within a row, which is left out: the copy was cut short, or the disk full";
}

}  // namespace zuma::host
