#include "publication/lecture/objets.h"

#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>
#include <numeric>

#include "base/cles.h"
#include "publication/lecture/zone.h"

namespace zuma::publication {
namespace {

using Json = nlohmann::ordered_json;

constexpr std::array<std::string_view, 6> kMots{"sensor", "command",  "input",
                                                "output", "watchdog", "channel"};

// The texts of an object by their names in the description.
struct Texte {
  const char* nom;
  std::string ObjetPublié::* champ;
};
constexpr std::array<Texte, 10> kTextes{{{"key", &ObjetPublié::clé},
                                         {"label", &ObjetPublié::label},
                                         {"name", &ObjetPublié::nom},
                                         {"unit", &ObjetPublié::unité},
                                         {"driver", &ObjetPublié::driver},
                                         {"board", &ObjetPublié::carte},
                                         {"block", &ObjetPublié::bloc},
                                         {"channel", &ObjetPublié::canal},
                                         {"calibrated", &ObjetPublié::étalonné},
                                         {"calibrated_by", &ObjetPublié::parQui}}};
struct Nombre {
  const char* nom;
  std::optional<double> ObjetPublié::* champ;
};
constexpr std::array<Nombre, 3> kNombres{
    {{"min", &ObjetPublié::mini}, {"max", &ObjetPublié::maxi}, {"rest", &ObjetPublié::repos}}};

Json EnJson(const ObjetPublié& objet) {
  Json json{{"kind", MotDe(objet.genre)}};
  for (const auto& [nom, champ] : kTextes) {
    if (!(objet.*champ).empty()) json[nom] = objet.*champ;
  }
  for (const auto& [nom, champ] : kNombres) {
    if (objet.*champ) json[nom] = *(objet.*champ);
  }
  return json;
}

ObjetPublié LitLObjet(const Json& json) {
  ObjetPublié objet;
  const auto* mot = std::ranges::find(kMots, json.value("kind", std::string()));
  if (mot == kMots.end()) throw Illisible("an object of an unknown kind");
  objet.genre = static_cast<Genre>(mot - kMots.begin());
  for (const auto& [nom, champ] : kTextes) objet.*champ = json.value(nom, std::string());
  for (const auto& [nom, champ] : kNombres) {
    if (const auto nombre = json.find(nom); nombre != json.end() && nombre->is_number()) {
      objet.*champ = nombre->get<double>();
    }
  }
  return objet;
}

// Levenshtein, with two rows.
std::size_t Distance(std::string_view a, std::string_view b) {
  std::vector<std::size_t> avant(b.size() + 1), rangée(b.size() + 1);
  std::iota(avant.begin(), avant.end(), std::size_t{0});
  for (std::size_t i = 0; i < a.size(); ++i) {
    rangée[0] = i + 1;
    for (std::size_t j = 0; j < b.size(); ++j) {
      const std::size_t change = avant[j] + (MêmeClé(a.substr(i, 1), b.substr(j, 1)) ? 0 : 1);
      rangée[j + 1] = std::min({avant[j + 1] + 1, rangée[j] + 1, change});
    }
    std::swap(avant, rangée);
  }
  return avant.back();
}

}  // namespace

std::string AuLieuDeLaMachine(const ChassisPublié& chassis) {
  if (!chassis.rejoué.empty()) return "replay of " + chassis.rejoué;
  return chassis.simulé ? "simulated" : "";
}

std::string EnJson(const ChassisPublié& chassis) {
  Json json{
      {"database", chassis.fichier},    {"frame", chassis.index},    {"name", chassis.nom},
      {"simulated", chassis.simulé},    {"rate", chassis.fréquence}, {"program", chassis.programme},
      {"linked_at_us", chassis.horloge}};
  if (!chassis.rejoué.empty()) json["replay_of"] = chassis.rejoué;
  auto& paramètres = json["parameters"] = Json::object();
  for (const auto& [nom, valeur] : chassis.paramètres) paramètres[nom] = valeur;
  auto& objets = json["objects"] = Json::array();
  for (const ObjetPublié& objet : chassis.objets) objets.push_back(EnJson(objet));
  return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

ChassisPublié LitLaDescription(std::string_view texte) {
  try {
    const Json json = Json::parse(texte);
    ChassisPublié chassis{.fichier = json.value("database", ""),
                          .index = json.value("frame", 0),
                          .nom = json.value("name", ""),
                          .simulé = json.value("simulated", false),
                          .rejoué = json.value("replay_of", ""),
                          .fréquence = json.value("rate", 0.0),
                          .programme = json.value("program", ""),
                          .horloge = json.value("linked_at_us", 0.0),
                          .paramètres = {},
                          .objets = {}};
    const Json paramètres = json.value("parameters", Json::object());
    for (const auto& [nom, valeur] : paramètres.items()) {
      chassis.paramètres.emplace_back(nom, valeur.get<std::string>());
    }
    const Json objets = json.value("objects", Json::array());
    for (const Json& objet : objets) chassis.objets.push_back(LitLObjet(objet));
    return chassis;
  } catch (const Json::exception& échec) {
    throw Illisible(std::string("its description cannot be read: ") + échec.what());
  }
}

std::string_view MotDe(Genre genre) {
  return kMots.at(static_cast<std::size_t>(genre));
}

std::string NomComplet(const ObjetPublié& objet) {
  if (objet.genre == Genre::Canal) return objet.carte + "/" + objet.bloc + "/" + objet.nom;
  return objet.nom.empty() ? objet.label : objet.nom;
}

std::vector<std::size_t> Cherche(const ChassisPublié& chassis, std::string_view nom) {
  std::optional<Genre> genre;
  if (const std::size_t deuxPoints = nom.find(':'); deuxPoints != std::string_view::npos) {
    const auto* mot = std::ranges::find(kMots, nom.substr(0, deuxPoints));
    if (mot != kMots.end()) {
      genre = static_cast<Genre>(mot - kMots.begin());
      nom.remove_prefix(deuxPoints + 1);
    }
  }
  std::vector<std::size_t> parLabel, parNom, parCanal;
  for (std::size_t rang = 0; rang < chassis.objets.size(); ++rang) {
    const ObjetPublié& objet = chassis.objets[rang];
    if (genre && objet.genre != *genre) continue;
    const bool canal = objet.genre == Genre::Canal;
    if (MêmeClé(canal ? NomComplet(objet) : objet.label, nom)) parLabel.push_back(rang);
    if (MêmeClé(objet.nom, nom)) (canal ? parCanal : parNom).push_back(rang);
  }
  if (!parLabel.empty()) return parLabel;
  return parNom.empty() ? parCanal : parNom;
}

std::vector<std::string> LesPlusProches(const ChassisPublié& chassis, std::string_view nom) {
  constexpr std::size_t kAuPlus = 3;
  std::vector<std::pair<std::size_t, std::string>> proches;
  for (const ObjetPublié& objet : chassis.objets) {
    for (const std::string& sien : {objet.label, NomComplet(objet), objet.nom}) {
      if (sien.empty()) continue;
      const std::size_t distance = Distance(sien, nom);
      if (distance <= std::max<std::size_t>(2, nom.size() / 2))
        proches.emplace_back(distance, sien);
    }
  }
  std::ranges::sort(proches);
  std::vector<std::string> noms;
  for (const auto& [distance, sien] : proches) {
    if (noms.size() < kAuPlus && std::ranges::find(noms, sien) == noms.end()) noms.push_back(sien);
  }
  return noms;
}

}  // namespace zuma::publication
