#include "host/hote.h"

#include <cstdio>
#include <utility>

#include "host/chassis_en_marche.h"
#include "host/configuration.h"
#include "host/drivers_charges.h"
#include "host/interruption.h"
#include "host/parametres.h"

namespace zuma::host {
namespace {

constexpr double kPasDePasse = 0.001;  // seconds between passes

// The object of that label; otherwise the text says which ones there are.
template <class Objets>
auto& Trouve(const Objets& objets, std::string_view quoi, std::string_view label) {
  std::string présents;
  for (const auto& objet : objets) {
    if (objet->Label() == label) return *objet;
    présents += (présents.empty() ? "" : ", ") + std::string(objet->Label());
  }
  throw MauvaisUsage("no " + std::string(quoi) + " \"" + std::string(label) +
                     "\" in this frame; there are: " + présents);
}

std::unique_ptr<Machine> LaMachine(const ChoixDHôte& choix, Recueil& messages) {
  const auto drivers = LesDrivers({}, choix.drivers);
  if (choix.simulation) return MachineSimulée(messages, choix.cadence, drivers);
  return MachineRéelle(messages, choix.raccordement, drivers);
}

}  // namespace

Hôte::Hôte(ChoixDHôte choix)
    : choix_(std::move(choix)),
      interruption_(std::make_unique<Interruption>()),
      recueil_(Crée<Recueil>()),
      machine_(LaMachine(choix_, *recueil_)) {
  if (!choix_.quandProblème) {
    choix_.quandProblème = [](const std::string& ligne) {
      std::fprintf(stderr, "%s\n", ligne.c_str());
    };
  }
  MalgréTout malgréTout;
  if (choix_.malgréTout) malgréTout = [](const DépartRefusé&) { return true; };
  marche_ = std::make_unique<ChassisEnMarche>(choix_.fichier, choix_.chassis, *machine_, recueil_,
                                              LitLesParamètres(choix_.fichier, {}), malgréTout);
  marche_->GardeLesArrêts(choix_.arrêts.empty() ? DossierDesArrêts(choix_.fichier) : choix_.arrêts);
  DitLesNouveaux();
}

Hôte::~Hôte() {
  marche_ = nullptr;
  machine_->Rapporte(*recueil_);
  try {
    DitLesNouveaux();
  } catch (...) {  // a listener of the host that fails must not hide how the program ends
  }
}

zuma::Chassis& Hôte::LeChassis() {
  return marche_->LeChassis();
}
zuma::Capteur& Hôte::Capteur(std::string_view label) {
  return Trouve(*LeChassis().Capteurs(), "sensor", label);
}
zuma::Commande& Hôte::Commande(std::string_view label) {
  return Trouve(*LeChassis().Commandes(), "command", label);
}
zuma::EntréeLogique& Hôte::EntréeLogique(std::string_view label) {
  return Trouve(*LeChassis().EntréesLogiques(), "logic input", label);
}
zuma::SortieLogique& Hôte::SortieLogique(std::string_view label) {
  return Trouve(*LeChassis().SortiesLogiques(), "logic output", label);
}

void Hôte::QuandArrêt(std::function<void(const std::string& cause)> écoute) {
  quandArrêt_ = std::move(écoute);
}

bool Hôte::Tourne(const std::function<bool()>& continue_, std::optional<double> secondes) {
  const double fin = secondes ? secondes_ + *secondes : 0;
  while (!Interruption::Demandée() && machine_->Fini().empty()) {
    if (secondes && secondes_ >= fin) return true;
    const std::uint64_t avant = LeChassis().RafraichissementsEA();
    Passe();
    if (continue_ && LeChassis().RafraichissementsEA() != avant && !continue_()) return true;
  }
  return false;
}

void Hôte::Passe() {
  secondes_ = machine_->AvanceJusquA(secondes_ + kPasDePasse);
  marche_->Passe();
  DitLesNouveaux();
  if (!EstArrêté()) {
    arrêtDit_ = false;
  } else if (!std::exchange(arrêtDit_, true) && quandArrêt_) {
    const auto causes = marche_->LaSécurité().Causes();
    quandArrêt_(causes.empty() ? std::string() : causes.front().texte);
  }
}

void Hôte::DitLesNouveaux() {
  const auto& problèmes = recueil_->Problèmes();
  while (dits_ < problèmes.size()) choix_.quandProblème(Ligne(problèmes[dits_++]));
}

void Hôte::Arrête(std::string_view cause) {
  marche_->Arrête(cause);
}
bool Hôte::EstArrêté() const {
  return marche_->LaSécurité().Déclenchée();
}
bool Hôte::Acquitte() {
  return marche_->Acquitte();
}
bool Hôte::RemetEnService() {
  return marche_->RemetEnService();
}

}  // namespace zuma::host
