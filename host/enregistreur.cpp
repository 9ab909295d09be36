#include "host/enregistreur.h"

#include <charconv>
#include <chrono>
#include <ctime>
#include <fstream>
#include <nlohmann/json.hpp>

#include "host/configuration.h"
#include "host/lecture.h"

namespace zuma::host {
namespace {

constexpr double kIntervalle = 1;  // seconds between two appends
constexpr std::size_t kTampon = 1U << 20U;

// A name as a field: quoted when it holds what separates fields.
std::string Champ(const std::string& texte) {
  if (texte.find_first_of(",\"\n") == std::string::npos) return texte;
  std::string sortie = "\"";
  for (const char c : texte) sortie += c == '"' ? std::string("\"\"") : std::string(1, c);
  return sortie + "\"";
}

void AjouteNombre(std::string& ligne, double nombre) {
  char texte[32];
  const auto fin =
      std::to_chars(texte, texte + sizeof texte, nombre, std::chars_format::general, 9);
  ligne.append(texte, fin.ptr);
}

std::string Maintenant() {
  const std::time_t t = std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
  std::tm utc{};
  ::gmtime_r(&t, &utc);
  char texte[32];
  std::strftime(texte, sizeof texte, "%Y-%m-%dT%H:%M:%SZ", &utc);
  return texte;
}

}  // namespace

Enregistreur::Enregistreur(const std::string& fichier, Chassis& chassis,
                           const std::vector<std::pair<std::string, std::string>>& spécimen)
    : fichier_(std::fopen(fichier.c_str(), "w")) {
  if (!fichier_) throw MauvaisUsage(fichier + " cannot be written");
  nlohmann::ordered_json description{{"start", Maintenant()},
                                     {"frame", chassis.Key()},
                                     {"frame_name", chassis.Nom()},
                                     {"recording", fichier}};
  auto& liste = description["sensors"] = nlohmann::ordered_json::array();
  tampon_.reserve(kTampon);
  tampon_ += "time [s]";
  for (const CapteurRef& capteur : *chassis.Capteurs()) {
    capteurs_.push_back(capteur);
    tampon_ += "," + Champ(capteur->NomDuCapteur() + " [" + capteur->UnitéEtalonnage() + "]");
    liste.push_back({{"name", capteur->NomDuCapteur()},
                     {"label", capteur->Label()},
                     {"unit", capteur->UnitéEtalonnage()},
                     {"calibrated", capteur->DateEtalonnage()},
                     {"calibrated_by", capteur->NomEtalonneur()}});
  }
  tampon_ += "\n";
  auto& eprouvette = description["specimen"] = nlohmann::ordered_json::object();
  for (const auto& [nom, valeur] : spécimen) eprouvette[nom] = valeur;
  std::ofstream json(fichier + ".json");
  json << description.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) << "\n";
  if (!json.flush()) throw MauvaisUsage(fichier + ".json cannot be written");
  Ecrit();
}

Enregistreur::~Enregistreur() {
  Ecrit();
}

void Enregistreur::Note(double secondes) {
  AjouteNombre(tampon_, secondes);
  for (const CapteurRef& capteur : capteurs_) {
    tampon_ += ',';
    if (const auto lecture = LectureDe(*capteur)) AjouteNombre(tampon_, *lecture);
  }
  tampon_ += '\n';
  ++lignes_;
  if (secondes - dernièreEcriture_ < kIntervalle) return;
  dernièreEcriture_ = secondes;
  Ecrit();
}

void Enregistreur::Ecrit() {
  const bool écrit =
      std::fwrite(tampon_.data(), 1, tampon_.size(), fichier_.get()) == tampon_.size() &&
      std::fflush(fichier_.get()) == 0;
  complet_ = complet_ && écrit;
  tampon_.clear();
}

}  // namespace zuma::host
