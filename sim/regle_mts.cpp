#include "sim/regle_mts.h"

#include <algorithm>

namespace zuma::sim {
namespace {

constexpr double kDuréeTrame = 130;  // microseconds on the wire

void Ajoute(std::vector<std::uint8_t>& octets, std::int32_t position) {
  const std::uint32_t brute =
      static_cast<std::uint32_t>(position < 0 ? position + 0xFFFFFF : position);
  for (const unsigned décalage : {16U, 8U, 0U}) {
    octets.push_back(static_cast<std::uint8_t>(brute >> décalage & 0xFFU));
  }
}

}  // namespace

bool RègleMTSSimulée::EstSaSérie(Données octets) const {
  std::uint32_t lue = 0;
  for (const std::uint8_t octet : octets) lue = lue << 8U | octet;
  return octets.size() == 4 && lue == série_;
}

void RègleMTSSimulée::Répond(PortCANSimulé& bus, std::uint32_t identifiant, Données octets) {
  if (muette || (réponsesRestantes && (*réponsesRestantes)-- <= 0)) return;
  TrameCAN trame{.identifiant = identifiant, .nombre = static_cast<std::uint8_t>(octets.size())};
  std::ranges::copy(octets, trame.données.begin());
  bus.Emet(trame, latence);
}

void RègleMTSSimulée::EmetPositions(PortCANSimulé& bus) {
  std::vector<std::uint8_t> octets;
  std::size_t trames = 0;
  for (std::size_t i = 0; i < aimants.size() && trames < tramesMaximum; i += 2) {
    octets.clear();
    Ajoute(octets, aimants[i]);
    if (aimants.size() > 1) Ajoute(octets, i + 1 < aimants.size() ? aimants[i + 1] : 0);
    TrameCAN trame{.identifiant = positionID, .nombre = static_cast<std::uint8_t>(octets.size())};
    std::ranges::copy(octets, trame.données.begin());
    if (!muette) bus.Emet(trame, latence + static_cast<double>(++trames) * kDuréeTrame);
  }
}

void RègleMTSSimulée::Reçoit(const TrameCAN& trame, PortCANSimulé& bus) {
  const Données octets = Données(trame.données).first(trame.nombre);
  if (trame.distante != 0) {
    if (enMarche && trame.identifiant == positionID) EmetPositions(bus);
  } else if (trame.identifiant == d_.sélection && octets.size() == 5) {
    sélectionnée_ = EstSaSérie(octets.first(4));
    if (!sélectionnée_) return;
    noeud = octets[4];
    Répond(bus, d_.réponseSélection, octets);
  } else if (trame.identifiant == d_.demande) {
    // Both generations share the identifier: the second one has selected the ruler before.
    if (sélectionnée_) {
      RépondGénération2(octets, bus);
    } else {
      RépondGénération1(octets, bus);
    }
  } else if (trame.identifiant == identifiantA && octets.size() == 2 && octets[0] == d_.marche &&
             octets[1] == noeud) {
    enMarche = true;
    prochaine_ = bus.Maintenant() + période;
  }
}

void RègleMTSSimulée::RépondGénération2(Données demande, PortCANSimulé& bus) {
  if (demande.size() < 3 || demande[0] != noeud) return;
  if (demande.size() == 4) {
    const std::uint32_t identifiant = 256U * demande[2] + demande[3];
    if (demande[1] == d_.fixePositionID) positionID = identifiant;
    if (demande[1] == d_.fixeStatusID) statusID = identifiant;
  } else if (demande[1] == d_.fixeMode) {
    mode = demande[2];
    enMarche = true;
  }
  Répond(bus, d_.réponse, demande);
}

void RègleMTSSimulée::RépondGénération1(Données demande, PortCANSimulé& bus) {
  const auto répondNombre = [&](std::uint16_t nombre) {
    Répond(bus, d_.réponse,
           std::to_array({demande[0], static_cast<std::uint8_t>(nombre & 0xFFU),
                          static_cast<std::uint8_t>(nombre >> 8U)}));
  };
  if (demande.size() == 5 && demande[0] == d_.identité && EstSaSérie(demande.subspan(1))) {
    répondNombre(noeud);
    return;
  }
  if (demande.size() < 2 || demande[1] != noeud) return;
  if (demande.size() == 2 && demande[0] == d_.positionID) répondNombre(identifiantA);
  if (demande.size() == 2 && demande[0] == d_.statusID) répondNombre(identifiantB);
  const auto rang = std::ranges::find(d_.paramètres, demande[0]) - d_.paramètres.begin();
  if (demande.size() == 3 && rang < 5) {
    paramètres[static_cast<std::size_t>(rang)] = demande[2];
    Répond(bus, d_.réponse, demande);
  }
}

void RègleMTSSimulée::Avance(PortCANSimulé& bus) {
  if (!enMarche || sélectionnée_ || muette || aimants.empty()) return;
  while (prochaine_ <= bus.Maintenant()) {
    std::vector<std::uint8_t> octets;
    Ajoute(octets, aimants.front());
    TrameCAN trame{.identifiant = identifiantB, .nombre = 3};
    std::ranges::copy(octets, trame.données.begin());
    bus.Emet(trame, prochaine_ - bus.Maintenant());
    prochaine_ += période;
  }
}

}  // namespace zuma::sim
