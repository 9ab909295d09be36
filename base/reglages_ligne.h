#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string_view>

#include "platform/liaison_serie.h"

namespace zuma {

/// Rates that a configuration may name for a serial line, in bauds.
inline constexpr std::array<std::int32_t, 16> kVitessesSérie{
    110,   300,   600,   1200,  2400,  4800,   9600,   14400,
    19200, 28800, 38400, 56000, 57600, 115200, 128000, 256000};
/// What any other rate gives, with a message.
inline constexpr std::int32_t kVitesseParDéfaut = 9600;

/// Settings of a serial line, as the links take them.
struct RéglagesLigne {
  std::int32_t port = 0;           ///< from 1; 0 is none
  std::int32_t vitesse = 0;        ///< bauds
  std::int32_t parité = 0;         ///< 0 none, 1 odd, 2 even, 3 mark, 4 space
  std::int32_t bitsDeDonnées = 0;  ///< 4 to 8
  std::int32_t bitsDeStop = 0;     ///< 1, 15 (one and a half) or 2
};

/// Writes the settings in the order that the links expect, then opens the port.
void OuvreLigne(ZED_LiaisonSerie& liaison, const RéglagesLigne& réglages);

/// Parts of a text of line settings ("2,9600,N,8,1"): port, rate, parity, data and stop bits.
inline constexpr std::size_t kPartiesDeLigne = 5;

/// What one kind of text accepts beside the rest.
struct FormeDeLigne {
  std::int32_t dernierPort;        ///< ports are 1 to this one
  std::int32_t vitesseDePlus = 0;  ///< one more rate; 0: none
  bool casseIndifférente = false;  ///< parity in small letters too
};

/// Takes the parts that are there, in their order. A part that is not accepted leaves its setting,
/// but for the rate, which then becomes 9600: false, somebody must be told.
[[nodiscard]] bool LitRéglagesLigne(std::span<const std::string_view> parties,
                                    const FormeDeLigne& forme, RéglagesLigne& réglages);

}  // namespace zuma
