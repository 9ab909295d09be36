#include "boards/regles_mts.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <string>
#include <utility>

namespace zuma::regles_mts {
namespace {

constexpr std::int32_t kSautBloc = 10000;
constexpr std::int32_t kSautSimple = 1000;
constexpr double kRelance = 200'000;  // microseconds of silence before a ruler is asked again
// More than the card's queue holds: a library that always has a frame must not stop the pass.
constexpr int kTramesMaximum = 4096;

std::int32_t Ecart(std::int32_t a, std::int32_t b) noexcept {
  return std::abs(a - b);  // 24-bit positions
}

constexpr std::uint8_t PoidsFort(std::int16_t mot) noexcept {
  return static_cast<std::uint8_t>(static_cast<std::uint16_t>(mot) >> 8U);
}
constexpr std::uint8_t PoidsFaible(std::int16_t mot) noexcept {
  return static_cast<std::uint8_t>(static_cast<std::uint16_t>(mot) & 0xFFU);
}

// Configured identifiers are 16-bit numbers; the bus knows no negative one.
constexpr std::uint32_t Identifiant(std::int16_t id) noexcept {
  return static_cast<std::uint16_t>(id);
}

}  // namespace

std::optional<std::int32_t> DécodePosition(std::span<const std::uint8_t> données) {
  if (données.size() < kOctetsPosition) return {};
  return Position(données[0], données[1], données[2]);
}

std::optional<Paire> DécodePaire(std::span<const std::uint8_t> données) {
  const auto première = DécodePosition(données);
  if (!première) return {};
  return Paire{*première, DécodePosition(données.subspan(kOctetsPosition)).value_or(0)};
}

std::array<std::uint8_t, 4> OctetsDeSérie(std::string_view numéro) {
  std::array<std::uint8_t, 4> octets{};
  bool lisible = numéro.size() == 2 * octets.size();
  for (std::size_t i = 0; lisible && i < octets.size(); ++i) {
    const char* paire = numéro.data() + 2 * i;
    const auto [reste, erreur] = std::from_chars(paire, paire + 2, octets[i], 16);
    lisible = erreur == std::errc() && reste == paire + 2;
  }
  if (!lisible) {
    throw Echec(Numéro::TypeIncompatible, DescriptionDEchec(Numéro::TypeIncompatible) + " : '" +
                                              std::string(numéro) +
                                              "' n'est pas un numéro de série de règle (8 "
                                              "chiffres hexadécimaux)");
  }
  return octets;
}

std::int32_t Lecture2moins1(const std::optional<Paire>& première,
                            const std::optional<Paire>& seconde) noexcept {
  if (!première || !seconde) return 0;
  const auto [p1, p2] = *première;
  return p1 != 0 && p2 != 0 && seconde->front() != 0 ? p2 - p1 : 0;
}

std::int32_t Lecture3(const std::optional<Paire>& première,
                      const std::optional<Paire>& seconde) noexcept {
  if (!première || !seconde) return 0;
  const auto [p1, p2] = *première;
  if (seconde->front() != 0) return seconde->front();
  return p2 != 0 ? p2 : p1;
}

bool AimantsSéparés(std::int32_t a, std::int32_t b) noexcept {
  const auto [petit, grand] = std::minmax({static_cast<double>(a), static_cast<double>(b)});
  return petit + petit / 100 <= grand - grand / 100;
}

void FiltreBloc(Mémoire& m) noexcept {
  if (!AimantsSéparés(m.c1, m.c2)) {
    m.c1 = m.q1;
    m.c2 = m.q2;
    return;
  }
  if (Ecart(m.c1, m.q1) >= kSautBloc) {
    if (m.q1 == 0) m.q1 = m.c1;
    m.c1 = m.q1;
  }
  if (Ecart(m.c2, m.q2) > kSautBloc - 1) {
    if (m.q2 == 0) m.q2 = m.c2;
    if (m.c2 == 0) m.c2 = m.q2;
  }
}

std::optional<std::int32_t> FiltreSimple(Mémoire& m, const Paire& lues, int aimant) noexcept {
  m.q1 = std::exchange(m.c1, lues[0]);
  m.q2 = std::exchange(m.c2, lues[1]);
  if (!AimantsSéparés(m.c1, m.c2)) {
    m.c1 = m.q1;
    m.c2 = m.q2;
    return {};
  }
  std::int32_t& courante = aimant == 1 ? m.c1 : m.c2;
  const std::int32_t précédente = aimant == 1 ? m.q1 : m.q2;
  // 0 is no position: the first one is taken whatever its size, with nothing to compare it with.
  const bool admise = précédente == 0 || Ecart(courante, précédente) < kSautSimple;
  if (courante != 0 && admise) return courante;
  courante = précédente;
  return {};
}

Courrier::Boîte* Courrier::La(std::int32_t poignée, std::uint32_t identifiant) noexcept {
  const auto boîte = std::ranges::find_if(boîtes_, [&](const Boîte& b) {
    return b.poignée == poignée && b.trame.identifiant == identifiant;
  });
  return boîte == boîtes_.end() ? nullptr : &*boîte;
}

void Courrier::Ouvre(std::int32_t poignée, std::uint32_t identifiant) {
  if (La(poignée, identifiant) != nullptr) return;
  boîtes_.push_back({.poignée = poignée, .trame = {.identifiant = identifiant}});
}

bool Courrier::Range(std::int32_t poignée, const TrameCAN& trame) noexcept {
  Boîte* boîte = La(poignée, trame.identifiant);
  if (boîte == nullptr) return false;
  boîte->trame = trame;
  boîte->pleine = true;
  return true;
}

bool Courrier::Prend(std::int32_t poignée, std::uint32_t identifiant, TrameCAN& trame) noexcept {
  Boîte* boîte = La(poignée, identifiant);
  if (boîte == nullptr || !std::exchange(boîte->pleine, false)) return false;
  trame = boîte->trame;
  return true;
}

void PortRègles::VideRéception() {
  TrameCAN trame;
  for (int i = 0; i < kTramesMaximum && Reçoit(trame); ++i) courrier_.Range(poignée_, trame);
}

// What came before the request is no answer to it.
bool PortRègles::Demande(std::uint32_t identifiant) {
  VideRéception();
  TrameCAN ancienne;
  courrier_.Prend(poignée_, identifiant, ancienne);
  return can_.CanSendMsg(poignée_, {.identifiant = identifiant, .distante = 1}) == 0;
}

Arrivée PortRègles::Relève(std::uint32_t identifiant, TrameCAN& trame) {
  if (courrier_.Prend(poignée_, identifiant, trame)) return Arrivée::Sienne;
  for (int i = 0; i < kTramesMaximum && Reçoit(trame); ++i) {
    if (trame.identifiant == identifiant) return Arrivée::Sienne;
    if (!courrier_.Range(poignée_, trame)) return Arrivée::Inconnue;
  }
  return Arrivée::Rien;
}

bool PortRègles::Attend(std::uint32_t identifiant, double attente, TrameCAN& trame) {
  const double fin = Maintenant() + attente * 1000;
  do {
    if (!Reçoit(trame)) continue;
    if (trame.identifiant == identifiant) return true;
    courrier_.Range(poignée_, trame);
  } while (Maintenant() <= fin);
  return false;
}

bool PortRègles::Echange(std::uint32_t identifiant, std::span<const std::uint8_t> octets,
                         std::uint32_t réponse) {
  TrameCAN trame{.identifiant = identifiant, .nombre = static_cast<std::uint8_t>(octets.size())};
  std::ranges::copy(octets, trame.données.begin());
  return can_.CanSendMsg(poignée_, trame) == 0 &&
         Attend(réponse, réglages_.attenteDémarrage, trame);
}

bool DémarreRègle(PortRègles& port, const IdentitéRègle& règle) {
  const DialogueRègles& d = port.LesRéglages().dialogue;
  const std::array<std::uint8_t, 4> série = OctetsDeSérie(règle.numéroDeSérie);
  const std::uint8_t noeud = PoidsFaible(règle.noeud);
  const auto sélection = std::to_array({série[0], série[1], série[2], série[3], noeud});
  const auto identifiant = [noeud](std::uint8_t commande, std::int16_t id) {
    return std::to_array({noeud, commande, PoidsFort(id), PoidsFaible(id)});
  };
  const auto mode = std::to_array({noeud, d.fixeMode, PoidsFaible(règle.mode)});
  port.VideRéception();
  return !(port.Echange(d.sélection, sélection, d.réponseSélection) &&
           port.Echange(d.demande, identifiant(d.fixePositionID, règle.positionID), d.réponse) &&
           port.Echange(d.demande, identifiant(d.fixeStatusID, règle.statusID), d.réponse) &&
           port.Echange(d.demande, mode, d.réponse));
}

std::optional<std::int32_t> LireRègleMono(PortRègles& port, std::int16_t positionID) {
  const std::uint32_t identifiant = Identifiant(positionID);
  if (!port.Demande(identifiant)) return {};
  TrameCAN trame;
  if (!port.Attend(identifiant, port.LesRéglages().attenteLecture, trame)) return 0;
  return DécodePosition(DonnéesUtiles(trame)).value_or(0);
}

std::optional<std::int32_t> LireRègle3Aimants(PortRègles& port, std::int16_t positionID,
                                              Lecture3Aimants lecture) {
  const std::uint32_t identifiant = Identifiant(positionID);
  const auto attend = [&]() -> std::optional<Paire> {
    TrameCAN trame;
    if (!port.Attend(identifiant, port.LesRéglages().attenteLecture, trame)) return {};
    return DécodePaire(DonnéesUtiles(trame));
  };
  if (!port.Demande(identifiant)) return {};
  const auto première = attend();
  if (!première) return 0;
  const auto seconde = attend();
  return lecture == Lecture3Aimants::DeuxMoinsUn ? Lecture2moins1(première, seconde)
                                                 : Lecture3(première, seconde);
}

std::int32_t LireRègleMulti(PortRègles& port, std::int16_t positionID, int aimant,
                            LectureSimple& état) {
  Mémoire& m = état.mémoire;
  état.reçue = false;
  if (!état.vu1) {
    état.vu1 = true;
    return m.c1;
  }
  if (!état.vu2) {
    état.vu2 = true;
    return m.c2;
  }
  std::int32_t résultat = aimant == 1 ? m.c1 : m.c2;
  TrameCAN trame;
  if (port.Relève(Identifiant(positionID), trame) == Arrivée::Sienne) {
    if (const auto lues = DécodePaire(DonnéesUtiles(trame))) {
      résultat = FiltreSimple(m, *lues, aimant).value_or(résultat);
      état.reçue = true;
    }
  }
  (void)port.Demande(Identifiant(positionID));
  return résultat;
}

std::optional<Paire> LireToutesPositions(PortRègles& port, std::int16_t positionID,
                                         LectureBloc& état) {
  Mémoire& m = état.mémoire;
  état.reçue = false;
  m.q1 = m.c1;
  m.q2 = m.c2;
  TrameCAN trame;
  const Arrivée arrivée = port.Relève(Identifiant(positionID), trame);
  const bool reçue = arrivée != Arrivée::Rien;
  if (reçue) {
    const auto lues = arrivée == Arrivée::Sienne ? DécodePaire(DonnéesUtiles(trame)) : std::nullopt;
    if (lues) {
      m.c1 = lues->front();
      m.c2 = lues->back();
      FiltreBloc(m);
      état.reçue = true;
    }
  } else if (état.heure && port.Maintenant() - *état.heure <= kRelance) {
    return {};
  }
  (void)port.Demande(Identifiant(positionID));
  état.heure = port.Maintenant();
  if (!reçue) return {};
  return Paire{m.c1, m.c2};
}

}  // namespace zuma::regles_mts
