#include "instruments/liaison_en_port.h"

#include <utility>

namespace zuma {
namespace {

// False on a port that will not open.
bool Ouvre(ZED_LiaisonSerie& liaison) {
  try {
    liaison.OuvrePort();
  } catch (const Echec&) {
    return false;
  }
  return true;
}

// What `lit` reads from an open link; a link that fails is closed.
template <class Lit>
auto LitOuFerme(ZED_LiaisonSerie& liaison, Lit&& lit) -> decltype(lit()) {
  if (liaison.EtatPort() != 1) return {};
  try {
    return lit();
  } catch (const Echec&) {
    liaison.FermePort();
    return {};
  }
}

}  // namespace

void LiaisonEnPort::PortOuvert(bool ouvert) {
  if (!ouvert) {
    liaison_->FermePort();
  } else if (!PortOuvert()) {
    (void)Ouvre(*liaison_);
  }
}

void LiaisonEnPort::ConfigurePort(std::string_view réglages, bool ouvrir) {
  liaison_->FermePort();
  std::string gardé = std::move(réglages_.port);
  réglages_ = LitRéglages(réglages);
  if (réglages_.port.empty()) réglages_.port = std::move(gardé);
  réglages_.valides = réglages_.valides && NuméroPort() > 0;
  if (!réglages_.valides) return;
  liaison_->VitesseSérie(réglages_.ligne.vitesse);
  liaison_->ParitéSérie(réglages_.ligne.parité);
  liaison_->BitsDeDonnées(réglages_.ligne.bits);
  liaison_->BitsDeStop(réglages_.ligne.stop);
  liaison_->PortSérie(NuméroPort());
  if (ouvrir) réglages_.valides = Ouvre(*liaison_);
}

bool LiaisonEnPort::PortExiste() const {
  if (PortOuvert()) return true;
  const bool existe = Ouvre(*liaison_);
  liaison_->FermePort();
  return existe;
}

std::int32_t LiaisonEnPort::OctetsEnAttente() const {
  return LitOuFerme(*liaison_, [&] { return liaison_->OctetsReçus(); });
}

Octets LiaisonEnPort::LitEntrée(std::optional<std::int32_t> nombre) {
  return LitOuFerme(*liaison_, [&] { return liaison_->LitTampon(nombre); });
}

void LiaisonEnPort::EcritSortie(std::string_view octets) {
  if (!PortOuvert()) return;
  try {
    liaison_->EcritPort(octets);
  } catch (const Echec&) {
    return;  // lost on the way; a link that is gone shows when it is read
  }
}

}  // namespace zuma
