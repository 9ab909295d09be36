#include "host/enregistreur.h"

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <limits>
#include <new>
#include <nlohmann/json.hpp>

#include "host/champ_csv.h"
#include "host/lecture.h"
#include "platform/linux/texte_ligne.h"

namespace zuma::host {
namespace {

constexpr std::chrono::seconds kIntervalle{1};     // between two rounds of the writer
constexpr std::chrono::milliseconds kPatience{1};  // of simulated time, on the writer
constexpr std::size_t kRangées = 8192;             // 8 s at the fastest rate of a frame

std::string Maintenant() {
  const std::time_t t = std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
  std::tm utc{};
  ::gmtime_r(&t, &utc);
  char texte[32];
  std::strftime(texte, sizeof texte, "%Y-%m-%dT%H:%M:%SZ", &utc);
  return texte;
}

std::string Description(const std::string& fichier, Chassis& chassis,
                        const std::vector<std::pair<std::string, std::string>>& spécimen) {
  nlohmann::ordered_json description{{"start", Maintenant()},
                                     {"frame", chassis.Key()},
                                     {"frame_name", chassis.Nom()},
                                     {"recording", fichier}};
  auto& liste = description["sensors"] = nlohmann::ordered_json::array();
  for (const CapteurRef& capteur : *chassis.Capteurs()) {
    liste.push_back({{"name", capteur->NomDuCapteur()},
                     {"label", capteur->Label()},
                     {"unit", capteur->UnitéEtalonnage()},
                     {"calibrated", capteur->DateEtalonnage()},
                     {"calibrated_by", capteur->NomEtalonneur()}});
  }
  auto& eprouvette = description["specimen"] = nlohmann::ordered_json::object();
  for (const auto& [nom, valeur] : spécimen) eprouvette[nom] = valeur;
  const std::string texte =
      description.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
  return linux_::SansSéquence(texte) + "\n";
}

}  // namespace

Enregistreur::Enregistreur(const std::string& fichier, Retard retard, Ages âges)
    : nom_(fichier), retard_(retard), âges_(âges), csv_(fichier), json_(fichier + ".json") {}

Enregistreur::~Enregistreur() {
  Termine();
  Ferme();
}

void Enregistreur::Commence(Chassis& chassis,
                            const std::vector<std::pair<std::string, std::string>>& spécimen) {
  std::string entête = "time [s]";
  for (const CapteurRef& capteur : *chassis.Capteurs()) {
    capteurs_.push_back(capteur);
    entête += "," + ChampCsv(capteur->NomDuCapteur() + " [" + capteur->UnitéEtalonnage() + "]");
    if (âges_ == Ages::Avec) entête += "," + ChampCsv(capteur->NomDuCapteur() + " age [s]");
  }
  const std::size_t parCapteur = âges_ == Ages::Avec ? 2 : 1;
  try {
    description_ = Description(nom_, chassis, spécimen);
    rangées_.emplace(capteurs_.size() * parCapteur, kRangées);
    écrivain_.emplace(csv_, *rangées_, entête + "\n");
    fil_ = std::thread([this] { Tourne(); });
  } catch (...) {
    capteurs_.clear();  // they would outlive their frame
    throw;
  }
}

void Enregistreur::Note(double secondes) {
  while (retard_ == Retard::Attend && rangées_->Pleine() && !finie_) {
    réveil_.notify_one();
    std::this_thread::sleep_for(kPatience);
  }
  rangées_->Dépose(secondes, [this](std::span<double> valeurs) {
    auto valeur = valeurs.begin();
    for (const CapteurRef& capteur : capteurs_) {
      *valeur++ = LectureDe(*capteur).value_or(std::numeric_limits<double>::quiet_NaN());
      if (âges_ == Ages::Avec) *valeur++ = capteur->Age();
    }
  });
}

void Enregistreur::Termine() noexcept {
  capteurs_.clear();
}

void Enregistreur::Ferme() {
  if (!fil_.joinable()) return;
  {
    const std::lock_guard garde(verrou_);
    fin_ = true;
  }
  réveil_.notify_one();
  fil_.join();
}

EtatDEnregistrement Enregistreur::Etat() const {
  if (!écrivain_) return {.fichier = nom_};
  EtatDEnregistrement état = écrivain_->Etat();
  état.fichier = nom_;
  état.perdues += rangées_->Perdues();
  if (état.erreur == 0) état.erreur = erreur_;
  return état;
}

void Enregistreur::Tourne() {
  try {
    while (!AttendLaFin()) {
      DécritDansLeJson();
      écrivain_->Tour();
    }
    DécritDansLeJson();
    écrivain_->Conclut(rangées_->Manque());
  } catch (const std::bad_alloc&) {
    erreur_ = ENOMEM;  // the recording ends here; the machine does not
  } catch (...) {
    erreur_ = EIO;
  }
  finie_ = true;
}

void Enregistreur::DécritDansLeJson() {
  if (description_.empty()) return;
  erreur_ = json_.Ajoute(description_);
  if (erreur_ == 0) description_.clear();
}

bool Enregistreur::AttendLaFin() {
  std::unique_lock garde(verrou_);
  if (!fin_) réveil_.wait_for(garde, kIntervalle);
  return fin_;
}

bool FermeEtDit(Enregistreur& enregistreur) {
  enregistreur.Ferme();
  const EtatDEnregistrement état = enregistreur.Etat();
  if (!état.Complet()) std::fprintf(stderr, "zuma: %s\n", Phrase(état).c_str());
  return état.Complet();
}

}  // namespace zuma::host
