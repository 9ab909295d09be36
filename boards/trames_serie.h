#pragma once

#include <array>
#include <bitset>
#include <cstdint>
#include <optional>
#include <string_view>
#include <tuple>

#include "base/valeur.h"

/// Frames of the serial balances, indicators and gauges. Pure functions on the bytes received: no
/// line here, and nothing fails. What cannot be read leaves the kept value.
namespace zuma::trames_serie {

///@{
/// LRPC frame, 6 bytes in any order: 0xA4 positive, 0xA8 negative; any other byte has its place
/// (0 the units, to 4) in its top 3 bits and its digit in the low 4. None unless the sign and each
/// place stand there once: a frame that lost a byte must not be read without its digit.
inline constexpr std::size_t kLongueurLRPC = 6;
[[nodiscard]] std::optional<double> DecortiqueUneTrame_dbl(std::string_view trame) noexcept;
///@}
/// Value of the first frame of `texte`, in thousandths, wherever it begins; none without a frame.
[[nodiscard]] std::optional<double> PremièreTrame(std::string_view texte) noexcept;
/// The same; `gardée` when there is none.
[[nodiscard]] double DecortiqueBuffer_dbl(std::string_view texte, double gardée) noexcept;

/// DEXAL frame, 9 characters, of which the first two are not looked at: up to six digits with a
/// point or comma among them, blanks before them alone, and a sign anywhere.
inline constexpr std::size_t kLongueurDEXAL = 9;
/// Value of a frame without its first character; none when it holds anything else.
[[nodiscard]] std::optional<double> DecortiqueUneTrameDEXAL_dbl(std::string_view trame) noexcept;
/// Value of the first whole frame of `texte`; `gardée` when there is none or it cannot be read.
[[nodiscard]] double DecortiqueBufferDEXAL_dbl(std::string_view texte, double gardée) noexcept;

/// Cuts all complete lines off `texte` and looks in them for the last weighing field, behind
/// ".W.:". True when one was found: `valeur` is then its number, or `gardée` when it is none.
bool DecortiqueJADEVER(Octets& texte, double& valeur, double gardée);

/// Values of the gauges by channel number, from 1; none for a gauge that gave none.
using TableMETRO = std::array<std::optional<double>, 33>;
/// The gauges that gave a value, by channel number.
using JaugesLues = std::bitset<std::tuple_size_v<TableMETRO>>;

/// Walks the lines of a METRO link: channel in character 1, code in 3 and 4, value in 6 to 15. A
/// line of code "MW" gives its value to the table, "#" and anything that is no number giving none.
/// True at a line of the active channel, whose value is known, with more behind it: what is left
/// stays in `texte`. The last line gives its value too, but nothing says yet that the frame ended.
/// `lues` tells the gauges whose value in the table is of this call.
bool Decortique_METRO(Octets& texte, std::int32_t canalActif, TableMETRO& table, JaugesLues& lues);

/// The same for the multiplexer, which answers one line for each request: code in characters 2 and
/// 3, value in 14 to 23. True on an answer that gave a value.
bool Decortique_METRO_MUX_2_4_8(Octets& texte, std::int32_t& canal, double& valeur);

}  // namespace zuma::trames_serie
