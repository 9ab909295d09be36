#pragma once

#include <cstdint>

#include "base/valeur.h"
#include "instruments/trames_laser.h"

namespace zuma {

/// Life of a request, as its packet tells it.
enum class EnumPacketState : std::int32_t {
  CommReady = 0,
  OnComm = 1,
  Timeout = 2,
  SansEmploi = 3,  ///< the protocol makes no use of it
};

/// The one request in flight: there is no queue, it is cleared and filled again for each request.
/// Command, value and reply alone matter; the rest is carried and asked by nobody, since retries
/// and time-out are the laser's own.
struct ClassCommPacket {
  bool AutoDelOnReply = true;
  EnumEIRCommande CommandToSend = EnumEIRCommande::ReadEcho;
  Octets ValueToSend;
  Octets ReceivedValue;  ///< what came back so far
  std::int32_t CommRequestMaxCount = 3;
  std::int32_t CommRequestCount = 0;
  float SendingTime = 0;
  EnumPacketState PacketState = EnumPacketState::CommReady;
  std::int32_t CommTimeOutValue = 1;

  /// Everything as at creation.
  void PacketClear() { *this = {}; }
};

}  // namespace zuma
