#pragma once

#include <cstdint>

#include "base/valeur.h"
#include "instruments/trames_laser.h"

namespace zuma {

/// Life of a request, as its packet tells it.
enum class EnumPacketState : std::int32_t {
  CommReady = 0,   ///< nothing is asked
  OnComm = 1,      ///< its reply is awaited
  Timeout = 2,     ///< its reply did not come
  SansEmploi = 3,  ///< the protocol makes no use of it
};

/// The one request in flight: there is no queue, it is cleared and filled again for each request.
/// Command, value and reply alone matter; the rest is carried and asked by nobody, since retries
/// and time-out are the laser's own.
struct ClassCommPacket {
  bool AutoDelOnReply = true;                                 ///< carried, asked by nobody
  EnumEIRCommande CommandToSend = EnumEIRCommande::ReadEcho;  ///< what is asked
  Octets ValueToSend;                                         ///< what the command carries
  Octets ReceivedValue;                                       ///< what came back so far
  std::int32_t CommRequestMaxCount = 3;                       ///< carried, asked by nobody
  std::int32_t CommRequestCount = 0;                          ///< carried, asked by nobody
  float SendingTime = 0;                                      ///< carried, asked by nobody
  EnumPacketState PacketState = EnumPacketState::CommReady;   ///< carried, asked by nobody
  std::int32_t CommTimeOutValue = 1;                          ///< carried, asked by nobody

  /// Everything as at creation.
  void PacketClear() { *this = {}; }
};

}  // namespace zuma
