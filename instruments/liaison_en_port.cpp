#include "instruments/liaison_en_port.h"

#include <utility>

namespace zuma {
namespace {

// False on a port that will not open.
bool OuvreLaLiaison(ZED_LiaisonSerie& liaison) {
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

bool LiaisonEnPort::Ouvre() {
  return OuvreLaLiaison(*liaison_);
}

void LiaisonEnPort::Prend(RéglagesInstrument& réglages) {
  réglages.valides = réglages.valides && réglages.NuméroPort() > 0;
  if (!réglages.valides) return;
  liaison_->VitesseSérie(réglages.ligne.vitesse);
  liaison_->ParitéSérie(réglages.ligne.parité);
  liaison_->BitsDeDonnées(réglages.ligne.bits);
  liaison_->BitsDeStop(réglages.ligne.stop);
  liaison_->PortSérie(réglages.NuméroPort());
}

bool LiaisonEnPort::PortExiste() const {
  if (PortOuvert()) return true;
  const bool existe = OuvreLaLiaison(*liaison_);
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
