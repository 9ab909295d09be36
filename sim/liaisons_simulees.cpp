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

void LiaisonSimulée::OuvrePort() {
  ++Ligne().ouvertures;
  tampon_.clear();
  ouverte_ = true;
}

void LiaisonSimulée::Relève() const {
  if (!ouverte_) throw Echec(Numéro::MatérielAbsent, "Port série simulé fermé");
  tampon_ += Ligne().Relève();
}

Octets LiaisonSimulée::LitTampon(std::optional<std::int32_t> nombre) {
  Relève();
  return Retire(tampon_, nombre);
}

void LiaisonSimulée::EcritPort(std::string_view octets) {
  if (!ouverte_) throw Echec(Numéro::MatérielAbsent, "Port série simulé fermé");
  Ligne().appareil->Reçoit(octets, vitesse_);
}

std::int32_t LiaisonSimulée::OctetsReçus() const {
  Relève();
  return static_cast<std::int32_t>(tampon_.size());
}

LigneSérie* PortSimulé::Ligne() const {
  const auto ligne = lignes_.find(NuméroPort());
  const bool là = ligne != lignes_.end() && !ligne->second.pannes.débranchée;
  if (!là) tampon_.clear();
  return là ? &ligne->second : nullptr;
}

bool PortSimulé::Ouvre() {
  LigneSérie* ligne = Ligne();
  if (ligne == nullptr) {
    ouvert_ = false;
    return false;
  }
  ++ligne->ouvertures;
  tampon_.clear();
  ouvert_ = true;
  return true;
}

void PortSimulé::Relève() const {
  if (PortOuvert()) tampon_ += Ligne()->Relève();
}

std::int32_t PortSimulé::OctetsEnAttente() const {
  Relève();
  return static_cast<std::int32_t>(tampon_.size());
}

Octets PortSimulé::LitEntrée(std::optional<std::int32_t> nombre) {
  Relève();
  return Retire(tampon_, nombre);
}

void PortSimulé::EcritSortie(std::string_view octets) {
  if (PortOuvert()) Ligne()->appareil->Reçoit(octets, Vitesse());
}

void PortSimulé::Vide() {
  Relève();
  tampon_.clear();
}

std::vector<std::string> PortSimulé::ListePorts() const {
  std::vector<std::string> ports;
  for (const auto& [numéro, ligne] : lignes_) {
    if (!ligne.pannes.débranchée) ports.push_back(std::to_string(numéro));
  }
  return ports;
}

void FabriqueLiaisonsSimulée::Applique(std::span<const PannePrévue> pannes, double secondes) {
  for (auto& [port, ligne] : lignes_) {
    ligne.pannes = {};
    ligne.secondes = secondes;
    for (const PannePrévue& panne : pannes) {
      const bool ici = panne.lieu == LieuDePanne::Partout ||
                       (panne.lieu == LieuDePanne::Port && panne.port == port);
      if (ici && panne.EstLà(secondes)) Ajoute(panne.genre, ligne.pannes);
    }
  }
}

LigneSérie* FabriqueLiaisonsSimulée::Ligne(std::int32_t port) {
  const auto ligne = lignes_.find(port);
  return ligne == lignes_.end() ? nullptr : &ligne->second;
}

LigneSérie& FabriqueLiaisonsSimulée::Attache(std::int32_t port, Ref<AppareilSérie> appareil) {
  LigneSérie& ligne = lignes_[port];
  ligne.hasard = Hasard(static_cast<std::uint32_t>(port) * 2'654'435'761U);
  ligne.appareil = std::move(appareil);
  return ligne;
}

Ref<ZED_LiaisonSerie> FabriqueLiaisonsSimulée::CréeLiaison() {
  return Crée<LiaisonSimulée>(lignes_);
}

}  // namespace zuma::sim
