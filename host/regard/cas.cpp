#include "host/regard/cas.h"

#include <algorithm>
#include <cctype>
#include <chrono>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

#include "host/champ_csv.h"
#include "host/courbe.h"
#include "host/regard/recit.h"
#include "host/regard/textes.h"
#include "platform/linux/texte_ligne.h"

namespace zuma::host {

namespace fs = std::filesystem;
using publication::Echantillon;
using publication::Genre;
using publication::Lecteur;
using publication::Lu;
using publication::ObjetPublié;

namespace {

using Json = nlohmann::ordered_json;

constexpr std::size_t kCourbes = 6;
constexpr std::size_t kColonnes = 2;

// All samples of the window, in order; those that are overwritten are missing.
template <class Prend>
void Parcourt(const Lecteur& lecteur, const Récit& récit, const Fenêtre& fenêtre, Prend&& prend) {
  Echantillon échantillon;
  for (auto n = lecteur.PremierDepuis(récit.secondes - fenêtre.avant); n < lecteur.Suivant(); ++n) {
    if (lecteur.Lit(n, échantillon) != Lu::Bon) continue;
    if (échantillon.Secondes() > récit.secondes + fenêtre.après) return;
    prend(échantillon);
  }
}

std::string Csv(const Lecteur& lecteur, const Récit& récit, const Fenêtre& fenêtre) {
  const auto& objets = lecteur.LeChassis().objets;
  std::string texte = "time [s],pass,stop";
  for (const ObjetPublié& objet : objets) {
    texte += "," + ChampCsv(Désignation(objet) + " [" + objet.unité + "]");
  }
  texte += "\n";
  Parcourt(lecteur, récit, fenêtre, [&](const Echantillon& échantillon) {
    texte += NombreEnTexte(échantillon.Secondes() - récit.secondes, 6) + "," +
             std::to_string(échantillon.Passe()) + "," + (échantillon.Arrêt() ? "1" : "0");
    for (std::size_t rang = 0; rang < objets.size(); ++rang) {
      const double valeur = échantillon[rang].valeur;
      texte += ",";
      if (std::isfinite(valeur)) AjouteNombre(texte, valeur);
    }
    texte += "\n";
  });
  return texte;
}

Json EvènementsEnJson(const Lecteur& lecteur, const Récit& récit, const Fenêtre& fenêtre) {
  Json liste = Json::array();
  publication::EvènementLu e;
  for (auto n = lecteur.PremierEvènement(); n < lecteur.EvènementSuivant(); ++n) {
    const bool dedans = lecteur.Lit(n, e) == Lu::Bon &&
                        e.secondes >= récit.secondes - fenêtre.avant &&
                        e.secondes <= récit.secondes + fenêtre.après;
    if (!dedans) continue;
    liste.push_back({{"time_s", e.secondes - récit.secondes},
                     {"pass", e.passe},
                     {"event", MotDe(e.genre)},
                     {"text", Phrase(lecteur.LeChassis(), e)}});
  }
  return liste;
}

std::string EnJson(const Lecteur& lecteur, const Récit& récit, const Fenêtre& fenêtre) {
  Json json{{"stop", HeureUtc(MomentUtc(lecteur, récit.secondes))},
            {"pass", récit.passe},
            {"seconds_since_start", récit.secondes}};
  for (const Paragraphe& paragraphe : EnMots(récit))
    json[paragraphe.question] = paragraphe.réponses;
  json["events"] = EvènementsEnJson(lecteur, récit, fenêtre);
  json["frame"] = Json::parse(publication::EnJson(lecteur.LeChassis()));
  return linux_::SansSéquence(json.dump(2, ' ', false, Json::error_handler_t::replace)) + "\n";
}

// What tells most: sensors in danger, then commands, then the sensors that moved furthest for their
// range.
std::vector<std::size_t> ObjetsALaPage(const Lecteur& lecteur, const Récit& récit,
                                       const Fenêtre& fenêtre) {
  const auto& objets = lecteur.LeChassis().objets;
  struct Vu {
    double mini = INFINITY, maxi = -INFINITY;
    bool enDanger = false;
  };
  std::vector<Vu> vus(objets.size());
  Parcourt(lecteur, récit, fenêtre, [&](const Echantillon& échantillon) {
    for (std::size_t rang = 0; rang < objets.size(); ++rang) {
      const publication::Mesure mesure = échantillon[rang];
      vus[rang].enDanger = vus[rang].enDanger || mesure.Est(publication::kSorti);
      if (!std::isfinite(mesure.valeur)) continue;
      vus[rang].mini = std::min(vus[rang].mini, mesure.valeur);
      vus[rang].maxi = std::max(vus[rang].maxi, mesure.valeur);
    }
  });
  std::vector<std::pair<double, std::size_t>> poids;  // the heaviest is the least
  for (std::size_t rang = 0; rang < objets.size(); ++rang) {
    const bool capteur = objets[rang].genre == Genre::Capteur;
    const bool commande = objets[rang].genre == Genre::Commande && !objets[rang].canal.empty();
    const double course = vus[rang].maxi - vus[rang].mini;
    if ((!capteur && !commande) || !(course > 0)) continue;
    const double étendue = objets[rang].maxi.value_or(0) - objets[rang].mini.value_or(0);
    const double part = étendue > 0 ? std::min(course / étendue, 1.0) : 0.0;
    poids.emplace_back(-((capteur && vus[rang].enDanger ? 3 : 0) + (commande ? 2 : 0) + part),
                       rang);
  }
  std::ranges::sort(poids);
  std::vector<std::size_t> choisis;
  for (const auto& [pois, rang] : poids) {
    if (choisis.size() < kCourbes) choisis.push_back(rang);
  }
  return choisis;
}

std::vector<Courbe> Courbes(const Lecteur& lecteur, const Récit& récit, const Fenêtre& fenêtre) {
  const auto& objets = lecteur.LeChassis().objets;
  const std::vector<std::size_t> choisis = ObjetsALaPage(lecteur, récit, fenêtre);
  std::vector<Courbe> courbes;
  for (const std::size_t rang : choisis) {
    const ObjetPublié& objet = objets[rang];
    Courbe courbe{objet.nom, "seconds from the stop", objet.unité, {}, 0.0, {}};
    if (objet.mini) courbe.limites.push_back(*objet.mini);
    if (objet.maxi) courbe.limites.push_back(*objet.maxi);
    courbes.push_back(std::move(courbe));
  }
  Parcourt(lecteur, récit, fenêtre, [&](const Echantillon& échantillon) {
    for (std::size_t i = 0; i < choisis.size(); ++i) {
      const double valeur = échantillon[choisis[i]].valeur;
      if (!std::isfinite(valeur)) continue;
      courbes[i].points.emplace_back(échantillon.Secondes() - récit.secondes, valeur);
    }
  });
  return courbes;
}

// A long sentence over several lines, broken at its blanks.
void AjouteEnLignes(std::vector<LigneDePage>& page, std::string phrase) {
  constexpr std::size_t kAuPlus = 140;
  while (phrase.size() > kAuPlus) {
    const std::size_t blanc = phrase.rfind(' ', kAuPlus);
    if (blanc == std::string::npos || blanc == 0) break;
    page.push_back({phrase.substr(0, blanc)});
    phrase.erase(0, blanc + 1);
  }
  page.push_back({std::move(phrase)});
}

std::string Page(const Lecteur& lecteur, const Récit& récit, const Fenêtre& fenêtre) {
  const publication::ChassisPublié& chassis = lecteur.LeChassis();
  const std::string machine = publication::AuLieuDeLaMachine(chassis);
  std::vector<LigneDePage> texte{
      {"Stop of frame " + std::to_string(chassis.index) + " " + chassis.nom + ", " +
           HeureUtc(MomentUtc(lecteur, récit.secondes)) + ", pass " + std::to_string(récit.passe) +
           (machine.empty() ? machine : " (" + machine + ")"),
       true}};
  constexpr std::size_t kRéponses = 12;
  for (const Paragraphe& paragraphe : EnMots(récit)) {
    texte.push_back({paragraphe.question, true});
    for (std::size_t i = 0; i < std::min(paragraphe.réponses.size(), kRéponses); ++i) {
      AjouteEnLignes(texte, paragraphe.réponses[i]);
    }
    if (paragraphe.réponses.size() > kRéponses) {
      texte.push_back({"and " + std::to_string(paragraphe.réponses.size() - kRéponses) +
                       " more, see case.json"});
    }
  }
  return EnSvg(Courbes(lecteur, récit, fenêtre), kColonnes, texte);
}

constexpr std::string_view kDébutDeReste = ".case-";

// What a cause leaves in a file's name; letters beyond ASCII stay, and whole.
std::string EnNom(const std::string& cause) {
  constexpr std::size_t kAuPlus = 40;
  std::string nom;
  for (const char c : linux_::UneSeuleLigne(cause)) {
    const auto octet = static_cast<unsigned char>(c);
    const bool suite = (octet & 0xC0U) == 0x80U;
    if (nom.size() >= kAuPlus && !suite) break;
    if (octet >= 0x80U || std::isalnum(octet) != 0) {
      nom += c;
    } else if (!nom.empty() && nom.back() != '-') {
      nom += '-';
    }
  }
  while (nom.ends_with('-')) nom.pop_back();
  return nom.empty() ? "stop" : nom;
}

// On the disk before it is named: behind a stop the main switch is often the next thing that moves.
void Scelle(const fs::path& chemin) {
  const int descripteur = ::open(chemin.c_str(), O_RDONLY | O_CLOEXEC);
  if (descripteur < 0) return;
  (void)::fsync(descripteur);
  ::close(descripteur);
}

void EcritLeFichier(const fs::path& chemin, const std::string& texte) {
  std::ofstream flux(chemin, std::ios::binary);
  flux << texte;
  flux.close();
  if (!flux) throw std::runtime_error(chemin.string() + " cannot be written");
  Scelle(chemin);
}

std::string NomDuCas(const Lecteur& lecteur, const Récit& récit) {
  std::string heure = HeureUtc(MomentUtc(lecteur, récit.secondes));
  std::ranges::replace(heure, ':', '-');
  return heure + "-" + EnNom(récit.causes.empty() ? std::string() : récit.causes.front());
}

// Renames where nothing stands: a folder in the way makes it fail.
std::string Installe(const fs::path& fait, const fs::path& dossier, const std::string& nom) {
  constexpr int kEssais = 1000;
  for (int essai = 1; essai < kEssais; ++essai) {
    const fs::path voulu = dossier / (essai == 1 ? nom : nom + "-" + std::to_string(essai));
    std::error_code erreur;
    if (fs::create_directory(voulu, erreur) && !erreur) {
      fs::rename(fait, voulu);  // over the folder that was made here, and is empty
      return voulu;
    }
    if (erreur) throw fs::filesystem_error("cannot be made", voulu, erreur);
  }
  throw std::runtime_error((dossier / nom).string() + ": too many cases of that name");
}

}  // namespace

std::string EcritLeCas(const Lecteur& lecteur, std::uint64_t arrêt, const std::string& dossier,
                       const Fenêtre& fenêtre) {
  const auto récit = Raconte(lecteur, arrêt, fenêtre.après);
  if (!récit) return {};
  fs::create_directories(dossier);
  std::string modèle = (fs::path(dossier) / (std::string(kDébutDeReste) + "XXXXXX")).string();
  if (::mkdtemp(modèle.data()) == nullptr) throw std::runtime_error(dossier + " takes no case");
  try {
    EcritLeFichier(fs::path(modèle) / "samples.csv", Csv(lecteur, *récit, fenêtre));
    EcritLeFichier(fs::path(modèle) / "case.json", EnJson(lecteur, *récit, fenêtre));
    EcritLeFichier(fs::path(modèle) / "stop.svg", Page(lecteur, *récit, fenêtre));
    fs::permissions(modèle, fs::perms(0750));
    Scelle(modèle);
    std::string installé = Installe(modèle, dossier, NomDuCas(lecteur, *récit));
    Scelle(dossier);
    return installé;
  } catch (...) {
    std::error_code ignorée;
    fs::remove_all(modèle, ignorée);
    throw;
  }
}

bool EstGardé(const Lecteur& lecteur, std::uint64_t arrêt, const std::string& dossier) {
  const auto récit = Raconte(lecteur, arrêt, Fenêtre().après);
  return récit && fs::exists(fs::path(dossier) / NomDuCas(lecteur, *récit));
}

std::string PageDeLArrêt(const Lecteur& lecteur, std::uint64_t arrêt, const Fenêtre& fenêtre) {
  const auto récit = Raconte(lecteur, arrêt, fenêtre.après);
  return récit ? Page(lecteur, *récit, fenêtre) : std::string();
}

namespace {

// Not when somebody has put more into it.
void RetireLeCas(const fs::path& cas) {
  std::error_code ignorée;
  for (const char* fichier : {"samples.csv", "case.json", "stop.svg"}) {
    fs::remove(cas / fichier, ignorée);
  }
  fs::remove(cas, ignorée);
}

}  // namespace

void RetireLesVieuxCas(const std::string& dossier) {
  constexpr std::size_t kGardés = 100;
  constexpr std::chrono::hours kAge{24 * 30};
  constexpr std::chrono::hours kAgeDUnReste{1};
  const auto maintenant = fs::file_time_type::clock::now();
  std::vector<std::pair<fs::file_time_type, fs::path>> cas, restes;
  std::error_code erreur;
  for (fs::directory_iterator i(dossier, erreur), fin; !erreur && i != fin; i.increment(erreur)) {
    std::error_code absent;
    // What a process left that was killed while it wrote.
    const bool reste = i->path().filename().string().starts_with(kDébutDeReste);
    const auto date = fs::last_write_time(reste ? i->path() : i->path() / "case.json", absent);
    if (!absent) (reste ? restes : cas).emplace_back(date, i->path());
  }
  for (const auto& [date, chemin] : restes) {
    if (date < maintenant - kAgeDUnReste) RetireLeCas(chemin);
  }
  if (cas.size() <= kGardés) return;
  std::ranges::sort(cas, std::greater<>());
  for (auto vieux = cas.begin() + kGardés; vieux != cas.end(); ++vieux) {
    if (vieux->first < maintenant - kAge) RetireLeCas(vieux->second);
  }
}

}  // namespace zuma::host
