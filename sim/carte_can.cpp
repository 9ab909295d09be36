#include "sim/carte_can.h"

#include <algorithm>

#include "sim/journal_borne.h"
#include "sim/pannes.h"

namespace zuma::sim {
namespace {

constexpr std::int32_t kEchec = -1;
// A handle tells card and port; none is 0 or 1, which other calls answer.
constexpr std::int32_t kPremièrePoignée = 0x100;
constexpr std::int32_t kPortsParCarte = 2;

}  // namespace

void PortCANSimulé::Emet(const TrameCAN& trame, double retard) {
  if (pannes.tardive) retard += kRetard * 1e6;
  if (!pannes.figée) figées_.clear();
  const TrameCAN& envoyée =
      pannes.figée ? figées_.try_emplace(trame.identifiant, trame).first->second : trame;
  const EnRoute nouvelle{horloge_.Maintenant() + retard, envoyée};
  const auto place = std::ranges::upper_bound(file_, nouvelle.heure, {}, &EnRoute::heure);
  file_.insert(place, nouvelle);
}

void PortCANSimulé::Envoie(const TrameCAN& trame) {
  Note(envoyées, trame);
  if (pannes.sourde) return;
  for (const Ref<AppareilCAN>& appareil : appareils_) appareil->Reçoit(trame, *this);
}

bool PortCANSimulé::Reçoit(TrameCAN& trame) {
  ++relevés;
  for (const Ref<AppareilCAN>& appareil : appareils_) appareil->Avance(*this);
  if (file_.empty() || file_.front().heure > horloge_.Maintenant()) return false;
  trame = file_.front().trame;
  file_.pop_front();
  return true;
}

PortCANSimulé& CarteCANSimulée::Port(std::int32_t carte, std::int32_t port) {
  return ports_.try_emplace({carte, port}, horloge_).first->second;
}

void CarteCANSimulée::Pannes(const PannesCAN& pannes) {
  for (auto& [place, port] : ports_) port.pannes = pannes;
}

PortCANSimulé* CarteCANSimulée::Ouvert(std::int32_t poignée) {
  const std::int32_t rang = poignée - kPremièrePoignée;
  if (absente || rang < 0) return nullptr;
  PortCANSimulé& port = Port(rang / kPortsParCarte, rang % kPortsParCarte);
  return port.ouvert ? &port : nullptr;
}

std::int32_t CarteCANSimulée::CanOpenDriver(std::int32_t carte, std::int32_t port) {
  if (absente || port < 0 || port >= kPortsParCarte) return kEchec;
  Port(carte, port).ouvert = true;
  return kPremièrePoignée + carte * kPortsParCarte + port;
}

std::int32_t CarteCANSimulée::CanConfigPort(std::int32_t poignée, const PortCAN& réglages) {
  PortCANSimulé* port = Ouvert(poignée);
  if (port == nullptr || refuseConfig) return kEchec;
  port->réglages = réglages;
  return 0;
}

std::int32_t CarteCANSimulée::CanSendMsg(std::int32_t poignée, const TrameCAN& trame) {
  PortCANSimulé* port = Ouvert(poignée);
  if (port == nullptr) return kEchec;
  port->Envoie(trame);
  return 0;
}

std::int32_t CarteCANSimulée::CanRcvMsg(std::int32_t poignée, TrameCAN& trame) {
  PortCANSimulé* port = Ouvert(poignée);
  return port != nullptr && port->Reçoit(trame) && !muette ? 0 : kEchec;
}

void CarteCANSimulée::CanCloseDriver(std::int32_t poignée) noexcept {
  if (PortCANSimulé* port = Ouvert(poignée)) port->ouvert = false;
}

std::int32_t CarteCANSimulée::W_7841_Config(std::int32_t carte, std::int32_t port,
                                            const Port7841& réglages) {
  if (absente || refuseConfig) return kEchec;
  PortCANSimulé& configuré = Port(carte, port);
  configuré.réglages7841 = réglages;
  configuré.ouvert = true;
  return 0;
}

std::int32_t CarteCANSimulée::W_7841_SendMsg(std::int32_t carte, std::int32_t port,
                                             const Trame7841& trame) {
  if (absente || !Port(carte, port).ouvert) return kEchec;
  Port(carte, port).Envoie(trame.EnTrameCAN());
  return 0;
}

std::int32_t CarteCANSimulée::W_7841_RcvMsg(std::int32_t carte, std::int32_t port,
                                            Trame7841& trame) {
  TrameCAN reçue;
  if (absente || !Port(carte, port).ouvert || !Port(carte, port).Reçoit(reçue) || muette) {
    return 0;
  }
  trame = Trame7841::De(reçue);
  return 1;
}

}  // namespace zuma::sim
