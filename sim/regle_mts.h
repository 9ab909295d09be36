#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "platform/reglages.h"
#include "sim/carte_can.h"

namespace zuma::sim {

/// Magnetostrictive ruler on a simulated bus, with any number of magnets. It is started by either
/// generation of requests. Started by the second one, it answers each remote frame with its
/// identifier: one frame for one or two magnets, two positions in each further frame. Started by
/// the first one, it sends its first position by itself.
class RègleMTSSimulée : public AppareilCAN {
 public:
  /// `série`: the four bytes of the serial number, high byte first.
  RègleMTSSimulée(std::uint32_t série, std::vector<std::int32_t> positions,
                  DialogueRègles dialogue = {})
      : aimants(std::move(positions)), série_(série), d_(dialogue) {}

  void Reçoit(const TrameCAN& trame, PortCANSimulé& bus) override;
  void Avance(PortCANSimulé& bus) override;

  /// Positions of the magnets, in counts, -8388607 to 8388607.
  std::vector<std::int32_t> aimants;
  bool muette = false;  ///< it answers nothing
  /// Answers left before it falls silent, when given.
  std::optional<int> réponsesRestantes;
  /// Frames sent for one request, at the most.
  std::size_t tramesMaximum = 8;
  double latence = 300;   ///< microseconds before an answer
  double période = 1000;  ///< microseconds between frames sent unasked

  // What the second generation gives it.
  std::uint8_t noeud = 0x21;     ///< node
  std::uint32_t positionID = 0;  ///< identifier of its positions
  std::uint32_t statusID = 0;    ///< identifier of its states
  std::uint8_t mode = 0;         ///< how it measures
  // What it gives to the first one.
  std::uint16_t identifiantA = 0x181;        ///< of what it is told
  std::uint16_t identifiantB = 0x1A1;        ///< of its positions
  std::array<std::uint8_t, 5> paramètres{};  ///< as it was sent them
  bool enMarche = false;                     ///< it was started

 private:
  using Données = std::span<const std::uint8_t>;
  void Répond(PortCANSimulé& bus, std::uint32_t identifiant, Données octets);
  void RépondGénération1(Données demande, PortCANSimulé& bus);
  void RépondGénération2(Données demande, PortCANSimulé& bus);
  void EmetPositions(PortCANSimulé& bus);
  [[nodiscard]] bool EstSaSérie(Données octets) const;

  std::uint32_t série_;
  DialogueRègles d_;
  bool sélectionnée_ = false;
  double prochaine_ = 0;
};

}  // namespace zuma::sim
