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

struct Candidate {
  std::string fichier;
  bool vivante;
  std::int32_t index;
  std::string base;
  std::uint64_t départ;
};

// What cannot be read is none: another one may be the right one.
std::vector<Candidate> Candidates() {
  std::vector<Candidate> candidates;
  for (const auto& publiée : publication::Publications(publication::DossierDesPublications())) {
    try {
      const Lecteur lecteur(publiée.fichier);
      candidates.push_back({publiée.fichier, publiée.vivante, lecteur.LeChassis().index,
                            lecteur.LeChassis().fichier, lecteur.DépartUtc()});
    } catch (const publication::Illisible&) {
      continue;
    }
  }
  return candidates;
}

// Those that run, or else those that dead hosts left.
std::vector<Candidate> VivantesDAbord(std::vector<Candidate> candidates) {
  if (std::ranges::any_of(candidates, &Candidate::vivante)) {
    std::erase_if(candidates, [](const Candidate& c) { return !c.vivante; });
  }
  return candidates;
}

[[noreturn]] void DemandeLaquelle(const std::vector<Candidate>& candidates, std::string texte) {
  for (const Candidate& candidate : candidates) {
    texte += "\n  " + candidate.fichier + "  (frame " + std::to_string(candidate.index) + ")";
  }
  throw MauvaisUsage(texte);
}

const Candidate& LaPlusRécente(const std::vector<Candidate>& candidates) {
  return *std::ranges::max_element(candidates, {}, &Candidate::départ);
}

std::string LaSeuleQuiTourne() {
  std::vector<Candidate> vivantes = Candidates();
  std::erase_if(vivantes, [](const Candidate& c) { return !c.vivante; });
  if (vivantes.size() == 1) return vivantes.front().fichier;
  if (vivantes.empty()) {
    throw MauvaisUsage("no frame runs on this machine; `zuma list` shows what there is to look at");
  }
  DemandeLaquelle(vivantes, "several frames run: choose one with --of");
}

// Of the frame in question, or of the only one that is there; of one that died more than once the
// last.
std::string CelleDeLaBase(const std::string& base, std::optional<std::int32_t> chassis) {
  std::error_code ignorée;
  const fs::path chemin = fs::weakly_canonical(base, ignorée);
  std::vector<Candidate> trouvées = Candidates();
  std::erase_if(trouvées, [&](const Candidate& c) {
    return fs::weakly_canonical(c.base, ignorée) != chemin || (chassis && c.index != *chassis);
  });
  trouvées = VivantesDAbord(std::move(trouvées));
  if (trouvées.empty()) {
    throw MauvaisUsage("no frame of " + base +
                       " runs or was left by a host that died; `zuma list` shows what there is");
  }
  const bool plusieurs = std::ranges::any_of(
      trouvées, [&](const Candidate& c) { return c.vivante || c.index != trouvées[0].index; });
  if (trouvées.size() > 1 && plusieurs) {
    DemandeLaquelle(trouvées, "several frames of " + base + " are there: name one of these files");
  }
  return LaPlusRécente(trouvées).fichier;
}

}  // namespace

std::string LaPublication(const std::string& où, std::optional<std::int32_t> chassis) {
  if (où.empty()) return LaSeuleQuiTourne();
  if (!fs::exists(où)) throw MauvaisUsage(où + " is not there");
  return EstUneCarte(où) ? où : CelleDeLaBase(où, chassis);
}

std::string LaDernièreBoîte() {
  const std::vector<Candidate> candidates = VivantesDAbord(Candidates());
  if (candidates.empty() || candidates.front().vivante) return LaSeuleQuiTourne();
  return LaPlusRécente(candidates).fichier;
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
