#include "host/regard/choix.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>

#include "host/configuration.h"
#include "publication/place.h"

namespace zuma::host {

namespace fs = std::filesystem;
using publication::Lecteur;

namespace {

bool EstUneCarte(const std::string& fichier) {
  std::uint64_t mot = 0;
  std::ifstream(fichier, std::ios::binary).read(reinterpret_cast<char*>(&mot), sizeof mot);
  return mot == publication::kMagie;
}

std::string LaSeuleQuiTourne() {
  std::vector<std::string> vivantes;
  for (const auto& publiée : publication::Publications(publication::DossierDesPublications())) {
    if (publiée.vivante) vivantes.push_back(publiée.fichier);
  }
  if (vivantes.size() == 1) return vivantes.front();
  if (vivantes.empty()) {
    throw MauvaisUsage("no frame runs on this machine; `zuma list` shows what there is to look at");
  }
  std::string texte = "several frames run: choose one with --of";
  for (const std::string& fichier : vivantes) texte += "\n  " + fichier;
  throw MauvaisUsage(texte);
}

// Of the frame in question, or of the only one that is there.
std::string CelleDeLaBase(const std::string& base, std::optional<std::int32_t> chassis) {
  std::vector<std::string> trouvées;
  std::error_code ignorée;
  const fs::path chemin = fs::weakly_canonical(base, ignorée);
  for (const auto& publiée : publication::Publications(publication::DossierDesPublications())) {
    try {
      const Lecteur lecteur(publiée.fichier);
      const auto& sien = lecteur.LeChassis();
      const bool même = fs::weakly_canonical(sien.fichier, ignorée) == chemin &&
                        (!chassis || sien.index == *chassis);
      if (même) trouvées.push_back(publiée.fichier);
    } catch (const publication::Illisible&) {  // another one may be the right one
    }
  }
  if (!trouvées.empty()) return trouvées.front();
  throw MauvaisUsage("no frame of " + base +
                     " runs or was left by a host that died; `zuma list` shows what there is");
}

}  // namespace

std::string LaPublication(const std::string& où, std::optional<std::int32_t> chassis) {
  if (où.empty()) return LaSeuleQuiTourne();
  if (!fs::exists(où)) throw MauvaisUsage(où + " is not there");
  return EstUneCarte(où) ? où : CelleDeLaBase(où, chassis);
}

std::vector<std::size_t> ObjetsNommés(const publication::ChassisPublié& chassis,
                                      const std::vector<std::string>& noms) {
  std::vector<std::size_t> rangs;
  for (const std::string& nom : noms) {
    const auto siens = Cherche(chassis, nom);
    if (siens.empty()) {
      std::string texte = "nothing is called \"" + nom + "\" in this frame";
      const auto proches = LesPlusProches(chassis, nom);
      for (const std::string& proche : proches) {
        texte += (&proche == &proches.front() ? "; did you mean \"" : ", \"") + proche + "\"";
      }
      throw MauvaisUsage(texte + (proches.empty() ? "; `zuma show` lists what there is" : "?"));
    }
    for (const std::size_t rang : siens) {
      if (std::ranges::find(rangs, rang) == rangs.end()) rangs.push_back(rang);
    }
  }
  return rangs;
}

std::vector<std::size_t> ObjetsDAbord(const publication::ChassisPublié& chassis) {
  std::vector<std::size_t> rangs;
  for (std::size_t rang = 0; rang < chassis.objets.size(); ++rang) {
    if (chassis.objets[rang].genre != publication::Genre::Canal) rangs.push_back(rang);
  }
  return rangs;
}

double SecondesDepuis(const publication::Echantillon& échantillon) {
  const auto maintenant = std::chrono::steady_clock::now().time_since_epoch();
  return std::chrono::duration<double>(maintenant -
                                       std::chrono::nanoseconds(échantillon.Monotone()))
      .count();
}

}  // namespace zuma::host
