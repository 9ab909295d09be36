#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace zuma {

/// The eight data bytes of a frame: what a frame does not use is blank.
using DonnéesCAN = std::array<std::uint8_t, 8>;
/// Data of a frame that carries none.
inline constexpr DonnéesCAN kDonnéesVides{' ', ' ', ' ', ' ', ' ', ' ', ' ', ' '};

/// Frame of the `Can*` calls, in memory order.
struct TrameCAN {
  /// Identifier of 11 or 29 bits.
  std::uint32_t identifiant = 0;
  std::uint8_t distante = 0;  ///< 1 asks for the frame of that identifier
  std::uint8_t nombre = 0;    ///< data bytes, 0 to 8
  /// Data bytes, the first `nombre` of which count.
  DonnéesCAN données = kDonnéesVides;
};
static_assert(offsetof(TrameCAN, distante) == 4 && offsetof(TrameCAN, nombre) == 5 &&
              offsetof(TrameCAN, données) == 6);

/// Frame of the `W_7841_*` calls, in memory order.
struct Trame7841 {
  std::uint8_t identifiantBas = 0;     ///< low byte of the identifier
  std::uint8_t identifiantHaut = 0;    ///< its high byte
  std::uint8_t distante = 0;           ///< 1 asks for the frame of that identifier
  std::uint8_t nombre = 0;             ///< data bytes, 0 to 8
  DonnéesCAN données = kDonnéesVides;  ///< the first `nombre` count

  /// Identifier of 16 bits, from its two bytes.
  [[nodiscard]] constexpr std::uint32_t Identifiant() const noexcept {
    return identifiantBas + 256U * identifiantHaut;
  }
  ///@{
  /// The same frame in the form of the other calls, and back; an identifier has 16 bits here.
  [[nodiscard]] constexpr TrameCAN EnTrameCAN() const noexcept {
    return {
        .identifiant = Identifiant(), .distante = distante, .nombre = nombre, .données = données};
  }
  [[nodiscard]] static constexpr Trame7841 De(const TrameCAN& trame) noexcept {
    return {.identifiantBas = static_cast<std::uint8_t>(trame.identifiant & 0xFFU),
            .identifiantHaut = static_cast<std::uint8_t>(trame.identifiant >> 8U & 0xFFU),
            .distante = trame.distante,
            .nombre = trame.nombre,
            .données = trame.données};
  }
  ///@}
};
static_assert(sizeof(Trame7841) == 12);

/// Port settings of `CanConfigPort`.
struct PortCAN {
  std::int32_t mode = 0;                ///< 0: identifiers of 11 bits, 1: of 29
  std::uint32_t codeAcceptation = 0;    ///< identifiers let through, with
  std::uint32_t masqueAcceptation = 0;  ///< the bits set here left out of the comparison
  std::int32_t codeVitesse = 0;         ///< 0: 125, 1: 250, 2: 500 kbit/s, 3: any other
};

/// Port settings of `W_7841_Config`.
struct Port7841 {
  std::uint8_t adresse = 0;             ///< port number shifted left by 3
  std::uint8_t masque = 0;              ///< as the controller takes it
  std::array<std::uint8_t, 2> temps{};  ///< bus timing registers; 0, 0 for an unknown speed
};

/// Library of the two-port CAN card, both generations of its calls. Nothing here waits and nothing
/// throws: a card that is missing answers like one that fails, and the library tells why in its own
/// way.
class BibliothèqueCAN {
 public:
  virtual ~BibliothèqueCAN() = default;

  /// Opens a port and gives its handle; -1 when it cannot be opened.
  [[nodiscard]] virtual std::int32_t CanOpenDriver(std::int32_t carte, std::int32_t port) = 0;
  /// -1 on failure.
  [[nodiscard]] virtual std::int32_t CanConfigPort(std::int32_t poignée,
                                                   const PortCAN& réglages) = 0;
  /// 0 when the frame went to the card.
  [[nodiscard]] virtual std::int32_t CanSendMsg(std::int32_t poignée, const TrameCAN& trame) = 0;
  /// 0 when a frame was waiting; it is then removed from the receive queue.
  [[nodiscard]] virtual std::int32_t CanRcvMsg(std::int32_t poignée, TrameCAN& trame) = 0;
  /// Closes a port; nothing on a handle that is not open.
  virtual void CanCloseDriver(std::int32_t poignée) noexcept = 0;

  /// 0 when the port is ready.
  [[nodiscard]] virtual std::int32_t W_7841_Config(std::int32_t carte, std::int32_t port,
                                                   const Port7841& réglages) = 0;
  /// 0 when the frame went to the card.
  [[nodiscard]] virtual std::int32_t W_7841_SendMsg(std::int32_t carte, std::int32_t port,
                                                    const Trame7841& trame) = 0;
  /// 1 when a frame was waiting; it is then removed from the receive queue.
  [[nodiscard]] virtual std::int32_t W_7841_RcvMsg(std::int32_t carte, std::int32_t port,
                                                   Trame7841& trame) = 0;
};

}  // namespace zuma
