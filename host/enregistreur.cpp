#include "host/enregistreur.h"

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <new>
#include <nlohmann/json.hpp>

#include "host/champ_csv.h"
#include "host/chassis_en_marche.h"
#include "platform/linux/texte_ligne.h"

namespace zuma::host {
namespace {

constexpr std::chrono::seconds kIntervalle{1};     // between two rounds of the writer
constexpr std::chrono::milliseconds kPatience{1};  // of simulated time, on the writer

std::string Maintenant() {
  const std::time_t t = std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
  std::tm utc{};
  ::gmtime_r(&t, &utc);
  char texte[32];
  std::strftime(texte, sizeof texte, "%Y-%m-%dT%H:%M:%SZ", &utc);
  return texte;
}

std::string Description(const std::string& fichier, const publication::ChassisPublié& chassis,
                        const std::vector<std::size_t>& objets,
                        const Enregistreur::Textes& spécimen, Contenu contenu) {
  nlohmann::ordered_json description{{"start", Maintenant()},
                                     {"frame", std::to_string(chassis.index)},
                                     {"frame_name", chassis.nom},
                                     {"recording", fichier}};
  auto& liste = description["sensors"] = nlohmann::ordered_json::array();
  for (const std::size_t rang : objets) {
    const publication::ObjetPublié& objet = chassis.objets.at(rang);
    liste.push_back({{"name", objet.nom},
                     {"label", objet.label},
                     {"unit", objet.unité},
                     {"calibrated", objet.étalonné},
                     {"calibrated_by", objet.parQui}});
  }
  if (contenu.rejouable) description["linked_at_us"] = chassis.horloge;
  auto& eprouvette = description["specimen"] = nlohmann::ordered_json::object();
  for (const auto& [nom, valeur] : spécimen) eprouvette[nom] = valeur;
  const std::string texte =
      description.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
  return linux_::SansSéquence(texte) + "\n";
}

std::string EnTêteCsv(const publication::ChassisPublié& chassis,
                      const std::vector<std::size_t>& objets, Contenu contenu) {
  std::string entête = "time [s]";
  const auto ajoute = [&](std::string nom, std::string_view unité) {
    if (!unité.empty()) nom.append(" [").append(unité).append("]");
    entête += "," + ChampCsv(nom);
  };
  for (const std::size_t rang : objets) {
    const publication::ObjetPublié& objet = chassis.objets.at(rang);
    ajoute(objet.nom, objet.unité);
    if (contenu.âges) ajoute(objet.nom + " age", "s");
  }
  if (!contenu.rejouable) return entête + "\n";
  ajoute(std::string(kColonneDeLHorloge), "us");
  for (const std::size_t rang : LesCanaux(chassis)) {
    ajoute(NomComplet(chassis.objets[rang]), kUnitéDesCanaux);
  }
  return entête + "\n";
}

}  // namespace

Enregistreur::Enregistreur(const std::string& fichier, Retard retard, Contenu contenu)
    : nom_(fichier), retard_(retard), contenu_(contenu), csv_(fichier), json_(fichier + ".json") {}

Enregistreur::~Enregistreur() {
  Termine();
  Ferme();
}

void Enregistreur::Commence(const publication::Lecteur& lecteur, std::vector<std::size_t> objets,
                            const Textes& spécimen, double origine) {
  const publication::ChassisPublié& chassis = lecteur.LeChassis();
  description_ = Description(nom_, chassis, objets, spécimen, contenu_);
  const std::string entête = EnTêteCsv(chassis, objets, contenu_);
  retardAuPlus_ = lecteur.Places() / 2;
  rangées_.emplace(lecteur, std::move(objets), contenu_, lecteur.Suivant(), origine);
  écrivain_.emplace(csv_, *rangées_, entête);
  fil_ = std::thread([this] { Tourne(); });
}

void Enregistreur::Suit() {
  while (retard_ == Retard::Attend && rangées_ && rangées_->EnRetard() > retardAuPlus_ && !finie_) {
    réveil_.notify_one();
    std::this_thread::sleep_for(kPatience);
  }
}

void Enregistreur::Termine() {
  if (rangées_) rangées_->FinitIci();
  {
    const std::lock_guard garde(verrou_);
    fin_ = true;
  }
  réveil_.notify_one();
}

void Enregistreur::Ferme() {
  if (fil_.joinable()) fil_.join();
}

EtatDEnregistrement Enregistreur::Etat() const {
  if (!écrivain_) return {.fichier = nom_};
  EtatDEnregistrement état = écrivain_->Etat();
  état.fichier = nom_;
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
    écrivain_->Conclut();
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

void Enregistre(ChassisEnMarche& marche, Enregistreur& enregistreur,
                const Enregistreur::Textes& spécimen) {
  const publication::Lecteur lecteur = marche.LaPublication().LeLecteur();
  enregistreur.Commence(lecteur, LesCapteurs(lecteur.LeChassis()), spécimen, 0);
}

bool FermeEtDit(Enregistreur& enregistreur) {
  enregistreur.Ferme();
  const EtatDEnregistrement état = enregistreur.Etat();
  if (!état.Complet()) std::fprintf(stderr, "zuma: %s\n", Phrase(état).c_str());
  return état.Complet();
}

}  // namespace zuma::host
