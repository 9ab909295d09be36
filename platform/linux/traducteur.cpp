#include "platform/linux/traducteur.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <iterator>
#include <set>
#include <utility>

#include "base/echec.h"
#include "platform/linux/utf8.h"

namespace zuma::linux_ {
namespace {

constexpr std::string_view kBOM = "\xEF\xBB\xBF";
constexpr std::size_t kColonnesFixes = 2;  // key and section

// Cell without its escapes; false on an escape that does not exist.
bool Déchappe(std::string_view cellule, std::string& texte) {
  texte.clear();
  for (std::size_t i = 0; i < cellule.size(); ++i) {
    if (cellule[i] != '\\') {
      texte += cellule[i];
      continue;
    }
    constexpr std::string_view kCodes = "tn\\";
    constexpr std::string_view kValeurs = "\t\n\\";
    const std::size_t code = ++i < cellule.size() ? kCodes.find(cellule[i]) : kCodes.npos;
    if (code == kCodes.npos) return false;
    texte += kValeurs[code];
  }
  return true;
}

}  // namespace

// What is known of a table while it is read.
struct Traducteur::Lecture {
  std::vector<std::size_t> rangs;  // of the table's languages in `langues_`
  std::set<std::pair<std::string, std::string>> vues;
};

Traducteur::Traducteur() {
  (void)AjouteTable(TraductionsIncluses());
}

std::vector<Traducteur::Problème> Traducteur::AjouteTable(std::string_view table) {
  if (table.starts_with(kBOM)) table.remove_prefix(kBOM.size());
  std::vector<Problème> problèmes;
  Lecture en;
  std::size_t numéro = 0;
  for (std::string_view ligne : Découpe(table, '\n')) {
    ++numéro;
    if (ligne.ends_with('\r')) ligne.remove_suffix(1);
    if (ligne.empty() || ligne.starts_with('#')) continue;
    const bool entête = en.rangs.empty();
    std::string refus;
    if (!EstUTF8(ligne)) {
      refus = "ce n'est pas de l'UTF-8";
    } else {
      const auto champs = Découpe(ligne, '\t');
      refus = entête ? LitEntête(champs, en) : LitTextes(champs, en);
    }
    if (!refus.empty()) problèmes.push_back({numéro, refus});
    // Without its header no line of the table can be understood.
    if (entête && !refus.empty()) return problèmes;
  }
  if (en.rangs.empty()) problèmes.push_back({0, "table vide"});
  return problèmes;
}

std::string Traducteur::LitEntête(const std::vector<std::string_view>& champs, Lecture& en) {
  if (champs.size() <= kColonnesFixes) return "l'en-tête ne nomme aucune langue";
  const std::set<std::string_view> noms(champs.begin() + kColonnesFixes, champs.end());
  if (noms.contains("") || noms.size() != champs.size() - kColonnesFixes) {
    return "l'en-tête a une langue sans nom ou en double";
  }
  for (std::size_t i = kColonnesFixes; i < champs.size(); ++i) {
    en.rangs.push_back(RangDeLangue(std::string(champs[i])));
  }
  return {};
}

std::string Traducteur::LitTextes(const std::vector<std::string_view>& champs, Lecture& en) {
  const std::size_t attendues = kColonnesFixes + en.rangs.size();
  if (champs.size() != attendues) {
    return std::to_string(champs.size()) + " colonnes au lieu de " + std::to_string(attendues);
  }
  std::vector<std::string> cellules(champs.size());
  for (std::size_t i = 0; i < champs.size(); ++i) {
    if (!Déchappe(champs[i], cellules[i])) {
      return "échappement inconnu dans '" + std::string(champs[i]) + "'";
    }
  }
  if (cellules[0].empty()) return "clé vide";
  if (!en.vues.emplace(cellules[1], cellules[0]).second) {
    return "clé '" + cellules[0] + "' en double";
  }
  Textes& textes = sections_[cellules[1]][cellules[0]];
  textes.resize(std::max(textes.size(), langues_.size()));
  for (std::size_t i = 0; i < en.rangs.size(); ++i) {
    if (!cellules[kColonnesFixes + i].empty()) {
      textes[en.rangs[i]] = std::move(cellules[kColonnesFixes + i]);
    }
  }
  return {};
}

std::size_t Traducteur::RangDeLangue(const std::string& nom) {
  const auto connue = std::ranges::find(langues_, nom);
  if (connue == langues_.end()) {
    langues_.push_back(nom);
    return langues_.size() - 1;
  }
  return static_cast<std::size_t>(connue - langues_.begin());
}

std::vector<Traducteur::Problème> Traducteur::AjouteFichier(const std::filesystem::path& fichier) {
  std::error_code erreur;
  if (!std::filesystem::is_regular_file(fichier, erreur)) {
    return {{0, "'" + fichier.string() + "' n'est pas un fichier lisible"}};
  }
  std::ifstream flux(fichier, std::ios::binary);
  const std::string table{std::istreambuf_iterator<char>(flux), {}};
  if (!flux) return {{0, "'" + fichier.string() + "' : " + std::strerror(errno)}};
  return AjouteTable(table);
}

void Traducteur::LangueCourante(std::string langue) {
  const auto connue = std::ranges::find(langues_, langue);
  if (connue == langues_.end()) {
    std::string liste;
    for (const std::string& l : langues_) liste += (liste.empty() ? "" : ", ") + l;
    throw Echec(Numéro::AppelIncorrect, "Langue '" + langue + "' inconnue (" + liste + ")");
  }
  courante_ = static_cast<std::size_t>(connue - langues_.begin());
}

std::string Traducteur::Traduit(std::string_view clé, std::string_view défaut,
                                std::string_view section) const {
  const std::string_view sans = défaut.empty() ? clé : défaut;
  const auto laSection = sections_.find(section);
  if (laSection == sections_.end()) return std::string(sans);
  const auto trouvés = laSection->second.find(clé);
  if (trouvés == laSection->second.end()) return std::string(sans);
  const Textes& textes = trouvés->second;
  if (courante_ >= textes.size() || textes[courante_].empty()) return std::string(sans);
  return textes[courante_];
}

}  // namespace zuma::linux_
