#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/ref.h"
#include "base/valeur.h"

namespace zuma {

/// Serial link whose line settings are written one by one before `OuvrePort`.
class ZED_LiaisonSerie {
 public:
  virtual ~ZED_LiaisonSerie() = default;

  virtual void PortSérie(std::int32_t numéro) = 0;  ///< port number, from 1
  ///@{
  /// Rate in bauds; the read gives what was written last.
  virtual void VitesseSérie(std::int32_t bauds) = 0;
  [[nodiscard]] virtual std::int32_t VitesseSérie() const = 0;
  ///@}
  virtual void ParitéSérie(std::int32_t code) = 0;    ///< 0 none, 1 odd, 2 even, 3 mark, 4 space
  virtual void BitsDeDonnées(std::int32_t bits) = 0;  ///< 4 to 8
  virtual void BitsDeStop(std::int32_t code) = 0;     ///< 1, 15 (one and a half) or 2
  /// 1 when the port is open.
  [[nodiscard]] virtual std::int32_t EtatPort() const = 0;
  /// Opens with the settings written so far. A missing or busy port is a failure.
  virtual void OuvrePort() = 0;
  /// Closes; nothing on a closed port.
  virtual void FermePort() noexcept = 0;
  /// What was received so far (at most `nombre` bytes when given), removed from the buffer.
  [[nodiscard]] virtual Octets LitTampon(std::optional<std::int32_t> nombre = {}) = 0;
  /// Sends the bytes. A port that is closed, gone or full is a failure (31999).
  virtual void EcritPort(std::string_view octets) = 0;
  /// Bytes waiting in the input buffer.
  [[nodiscard]] virtual std::int32_t OctetsReçus() const = 0;
};

/// Serial port of the instruments, set up from one text such as "3,9600,N,8,1". Nothing here fails:
/// a port that cannot be opened stays closed, a closed or lost one takes bytes to nowhere and gives
/// none, and the instrument's silence tells.
class PortInstrument {
 public:
  virtual ~PortInstrument() = default;

  /// True while the port is open.
  [[nodiscard]] virtual bool PortOuvert() const = 0;
  /// Opens or closes; settings that were not understood open nothing.
  virtual void PortOuvert(bool ouvert) = 0;
  /// Takes port and line settings from `réglages` (without a port in the text: the port kept);
  /// opens the port when `ouvrir`.
  virtual void ConfigurePort(std::string_view réglages, bool ouvrir) = 0;
  /// The machine has the device now.
  [[nodiscard]] virtual bool PortExiste() const = 0;
  /// The last settings were understood, and the port could be opened when that was asked.
  [[nodiscard]] virtual bool PortConfiguré() const = 0;
  /// Bytes in the input buffer; 0 on a closed port.
  [[nodiscard]] virtual std::int32_t OctetsEnAttente() const = 0;
  /// What was received so far (at most `nombre` bytes when given), removed from the buffer.
  [[nodiscard]] virtual Octets LitEntrée(std::optional<std::int32_t> nombre = {}) = 0;
  /// Sends the bytes; lost without a word on a port that is closed or gone.
  virtual void EcritSortie(std::string_view octets) = 0;
  /// Drops what waits in both directions. A port that was to be open and is not is tried again, so
  /// that a late or lost adapter is found.
  virtual void RéinitialisePort() = 0;
  /// Number of the port, from 1; 0 when it is named by its device.
  [[nodiscard]] virtual std::int32_t NuméroPort() const = 0;
  /// Rate in bauds.
  [[nodiscard]] virtual std::int32_t Vitesse() const = 0;
  /// Letter of the parity: "N", "O", "E", "M", "S".
  [[nodiscard]] virtual std::string Parité() const = 0;
  /// Data bits, 5 to 8.
  [[nodiscard]] virtual std::int32_t BitsDonnées() const = 0;
  /// Stop bits as text: "1", "1.5", "2".
  [[nodiscard]] virtual std::string BitsArrêt() const = 0;
  /// Names of the ports that a form may offer.
  [[nodiscard]] virtual std::vector<std::string> ListePorts() const = 0;
};

/// Makes the links that boards, blocks and sensors create for themselves.
class FabriqueLiaisons {
 public:
  virtual ~FabriqueLiaisons() = default;
  /// A new link of a block or board, closed.
  [[nodiscard]] virtual Ref<ZED_LiaisonSerie> CréeLiaison() = 0;
  /// A new port of an instrument, closed.
  [[nodiscard]] virtual Ref<PortInstrument> CréePort() = 0;
};

}  // namespace zuma
