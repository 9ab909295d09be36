#include "sim/liaisons_simulees.h"

#include <string>
#include <utility>

namespace zuma::sim {
namespace {

Octets Retire(Octets& tampon, std::optional<std::int32_t> nombre) {
  if (!nombre) return std::exchange(tampon, {});
  Octets lus = tampon.substr(0, static_cast<std::size_t>(*nombre));
  tampon.erase(0, lus.size());
  return lus;
}

}  // namespace

LigneSérie& LiaisonSimulée::Ligne() const {
  const auto ligne = lignes_.find(numéro_);
  if (ligne == lignes_.end() || ligne->second.pannes.débranchée) {
    throw Echec(Numéro::MatérielAbsent, "Port série simulé COM" + std::to_string(numéro_) +
                                            " absent : rien n'y est branché");
  }
  return ligne->second;
}

LigneSérie& LiaisonSimulée::Ouverte() const {
  if (!ouverte_) throw Echec(Numéro::MatérielAbsent, "Port série simulé fermé");
  return Ligne();
}

void LiaisonSimulée::OuvrePort() {
  Ligne().Ouvre(vitesse_);
  ouverte_ = true;
}

Octets LiaisonSimulée::LitTampon(std::optional<std::int32_t> nombre) {
  return Retire(Ouverte().Reçus(), nombre);
}

void LiaisonSimulée::EcritPort(std::string_view octets) {
  if (Ouverte().Ecrit(octets, vitesse_)) return;
  throw Echec(Numéro::MatérielAbsent, "Port série simulé COM" + std::to_string(numéro_) +
                                          " : écriture refusée, il a encore à émettre");
}

std::int32_t LiaisonSimulée::OctetsReçus() const {
  return static_cast<std::int32_t>(Ouverte().Reçus().size());
}

LigneSérie* PortSimulé::Ligne() const {
  const auto ligne = lignes_.find(NuméroPort());
  if (ligne == lignes_.end()) return nullptr;
  return ligne->second.pannes.débranchée ? nullptr : &ligne->second;
}

LigneSérie* PortSimulé::Ouverte() const {
  return ouvert_ ? Ligne() : nullptr;
}

bool PortSimulé::Ouvre() {
  LigneSérie* ligne = Ligne();
  ouvert_ = ligne != nullptr;
  if (ouvert_) ligne->Ouvre(Vitesse());
  return ouvert_;
}

std::int32_t PortSimulé::OctetsEnAttente() const {
  LigneSérie* ligne = Ouverte();
  return ligne == nullptr ? 0 : static_cast<std::int32_t>(ligne->Reçus().size());
}

Octets PortSimulé::LitEntrée(std::optional<std::int32_t> nombre) {
  LigneSérie* ligne = Ouverte();
  return ligne == nullptr ? Octets() : Retire(ligne->Reçus(), nombre);
}

void PortSimulé::EcritSortie(std::string_view octets) {
  LigneSérie* ligne = Ouverte();
  if (ligne != nullptr) (void)ligne->Ecrit(octets, Vitesse());  // refused: lost on the way
}

void PortSimulé::Vide() {
  if (LigneSérie* ligne = Ouverte()) ligne->Reçus().clear();
}

std::vector<std::string> PortSimulé::ListePorts() const {
  std::vector<std::string> ports;
  for (const auto& [numéro, ligne] : lignes_) {
    if (!ligne.pannes.débranchée) ports.push_back(std::to_string(numéro));
  }
  return ports;
}

// The faults of a line go on from where they were: what a stuck device has sent stays.
void FabriqueLiaisonsSimulée::Applique(std::span<const PannePrévue> pannes, double secondes) {
  for (auto& [port, ligne] : lignes_) {
    Pannes présentes;
    for (const PannePrévue& panne : pannes) {
      if (panne.FrappeLaLigne(port) && panne.EstLà(secondes)) Ajoute(panne.genre, présentes);
    }
    if (présentes.débranchée && !ligne.pannes.débranchée) ligne.Perd();
    ligne.pannes = présentes;
  }
}

void FabriqueLiaisonsSimulée::MetEnMarche(std::span<const PannePrévue> pannes) {
  for (auto& [port, ligne] : lignes_) {
    const std::int32_t numéro = port;
    if (Frappe(pannes, kAvantLeDépart, GenreDePanne::EnMarche,
               [numéro](const PannePrévue& panne) { return panne.FrappeLaLigne(numéro); })) {
      ligne.appareil->MetEnMarche();
    }
  }
}

void FabriqueLiaisonsSimulée::Graine(std::uint32_t graine) {
  graine_ = graine;
  for (auto& [port, ligne] : lignes_)
    ligne.hasard = Hasard::De(graine, static_cast<std::uint32_t>(port));
}

LigneSérie* FabriqueLiaisonsSimulée::Ligne(std::int32_t port) {
  const auto ligne = lignes_.find(port);
  return ligne == lignes_.end() ? nullptr : &ligne->second;
}

LigneSérie& FabriqueLiaisonsSimulée::Attache(std::int32_t port, Ref<AppareilSérie> appareil) {
  LigneSérie& ligne = lignes_[port];
  ligne.hasard = Hasard::De(graine_, static_cast<std::uint32_t>(port));
  ligne.Attache(std::move(appareil));
  return ligne;
}

Ref<ZED_LiaisonSerie> FabriqueLiaisonsSimulée::CréeLiaison() {
  return Crée<LiaisonSimulée>(lignes_);
}

}  // namespace zuma::sim
