#include "sim/liaisons_simulees.h"

#include <string>

namespace zuma::sim {
namespace {

void Abîme(const Pannes& pannes, Octets& octets) {
  if (pannes.muette) octets.clear();
  if (octets.empty()) return;
  if (pannes.coupée) octets.pop_back();
  if (pannes.parasitée && !octets.empty()) {
    char& milieu = octets[octets.size() / 2];
    milieu = static_cast<char>(milieu ^ 0x10);
  }
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
  LigneSérie& ligne = Ligne();
  Octets octets = ligne.appareil->Emet();
  Abîme(ligne.pannes, octets);
  tampon_ += octets;
}

Octets LiaisonSimulée::LitTampon(std::optional<std::int32_t> nombre) {
  Relève();
  if (!nombre) return std::exchange(tampon_, {});
  const Octets lus = tampon_.substr(0, static_cast<std::size_t>(*nombre));
  tampon_.erase(0, lus.size());
  return lus;
}

void LiaisonSimulée::EcritPort(std::string_view octets) {
  if (!ouverte_) throw Echec(Numéro::MatérielAbsent, "Port série simulé fermé");
  Ligne().appareil->Reçoit(octets, vitesse_);
}

std::int32_t LiaisonSimulée::OctetsReçus() const {
  Relève();
  return static_cast<std::int32_t>(tampon_.size());
}

LigneSérie& FabriqueLiaisonsSimulée::Attache(std::int32_t port, Ref<AppareilSérie> appareil) {
  LigneSérie& ligne = lignes_[port];
  ligne.appareil = std::move(appareil);
  return ligne;
}

Ref<ZED_LiaisonSerie> FabriqueLiaisonsSimulée::CréeLiaison() {
  return Crée<LiaisonSimulée>(lignes_);
}

}  // namespace zuma::sim
