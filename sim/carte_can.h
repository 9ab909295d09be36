#pragma once

#include <cstdint>
#include <deque>
#include <map>
#include <utility>
#include <vector>

#include "base/ref.h"
#include "platform/can.h"
#include "sim/horloge_virtuelle.h"

namespace zuma::sim {

class PortCANSimulé;

/// What a bus does to its traffic.
struct PannesCAN {
  bool sourde = false;   ///< what the card sends is lost on its way
  bool tardive = false;  ///< what devices send comes `kRetard` seconds late
  bool figée = false;    ///< each device sends again what it sent first
};

/// A device on a simulated CAN bus: it hears every frame that the card sends.
class AppareilCAN {
 public:
  virtual ~AppareilCAN() = default;
  /// Hears a frame of the card; what it answers goes to `bus`.
  virtual void Reçoit(const TrameCAN& trame, PortCANSimulé& bus) = 0;
  /// Called before the card looks at its queue, for devices that send unasked.
  virtual void Avance(PortCANSimulé&) {}
};

/// One port of the card with its bus. Frames reach the receive queue after the time that they take.
class PortCANSimulé {
 public:
  /// A bus without devices; frames travel by that clock.
  explicit PortCANSimulé(HorlogeVirtuelle& horloge) : horloge_(horloge) {}

  /// Puts a device on the bus.
  void Attache(Ref<AppareilCAN> appareil) { appareils_.push_back(std::move(appareil)); }
  /// A device sends a frame, which arrives `retard` microseconds from now.
  void Emet(const TrameCAN& trame, double retard);
  /// The time, microseconds.
  [[nodiscard]] double Maintenant() const noexcept { return horloge_.Maintenant(); }

  // The card's side.
  /// The card sends a frame: every device hears it.
  void Envoie(const TrameCAN& trame);
  /// The next frame that has arrived; false when there is none.
  [[nodiscard]] bool Reçoit(TrameCAN& trame);

  PannesCAN pannes;                ///< of this bus
  bool ouvert = false;             ///< by the second generation of calls
  PortCAN réglages;                ///< of the second generation
  Port7841 réglages7841;           ///< of the first generation
  std::vector<TrameCAN> envoyées;  ///< what the card sent, the last part of it
  int relevés = 0;                 ///< looks at the receive queue

 private:
  struct EnRoute {
    double heure;
    TrameCAN trame;
  };
  HorlogeVirtuelle& horloge_;
  std::vector<Ref<AppareilCAN>> appareils_;
  std::deque<EnRoute> file_;
  std::map<std::uint32_t, TrameCAN> figées_;  ///< by identifier
};

/// The two-port CAN card with both generations of its calls.
class CarteCANSimulée : public BibliothèqueCAN {
 public:
  /// A card without devices on its buses.
  explicit CarteCANSimulée(HorlogeVirtuelle& horloge) : horloge_(horloge) {}

  /// Bus of a port, made on first use.
  [[nodiscard]] PortCANSimulé& Port(std::int32_t carte, std::int32_t port);

  [[nodiscard]] std::int32_t CanOpenDriver(std::int32_t carte, std::int32_t port) override;
  [[nodiscard]] std::int32_t CanConfigPort(std::int32_t poignée, const PortCAN& réglages) override;
  [[nodiscard]] std::int32_t CanSendMsg(std::int32_t poignée, const TrameCAN& trame) override;
  [[nodiscard]] std::int32_t CanRcvMsg(std::int32_t poignée, TrameCAN& trame) override;
  void CanCloseDriver(std::int32_t poignée) noexcept override;
  [[nodiscard]] std::int32_t W_7841_Config(std::int32_t carte, std::int32_t port,
                                           const Port7841& réglages) override;
  [[nodiscard]] std::int32_t W_7841_SendMsg(std::int32_t carte, std::int32_t port,
                                            const Trame7841& trame) override;
  [[nodiscard]] std::int32_t W_7841_RcvMsg(std::int32_t carte, std::int32_t port,
                                           Trame7841& trame) override;

  /// Puts those faults on the buses of all ports.
  void Pannes(const PannesCAN& pannes);

  bool absente = false;       ///< every call fails
  bool muette = false;        ///< frames are lost on their way to the card
  bool refuseConfig = false;  ///< configurations alone fail

 private:
  using Place = std::pair<std::int32_t, std::int32_t>;
  [[nodiscard]] PortCANSimulé* Ouvert(std::int32_t poignée);

  HorlogeVirtuelle& horloge_;
  std::map<Place, PortCANSimulé> ports_;
};

}  // namespace zuma::sim
