#pragma once

#include <cstdint>
#include <string_view>

#include "platform/clavier.h"

namespace zuma::clavier {

///@{
/// Weights of the keys held with another one, in `modificateurs`.
inline constexpr std::int32_t kAvecMajuscule = 128;
inline constexpr std::int32_t kAvecContrôle = 64;
inline constexpr std::int32_t kAvecAlt = 32;
///@}

/// Name of the one key that is down: "RETURN", "F1", "A" ..., empty when none is, when two are, or
/// when the key has no name. Keys are scanned by rising code, and shift, control and alt found
/// after another key go to `modificateurs`: a letter pressed with one of them gives no name, since
/// their codes are lower.
void LitToucheEnfoncée(const EtatClavier& état, std::string_view& nom,
                       std::int32_t* modificateurs = nullptr) noexcept;

/// Releases every key, so that one left down at start does not count as pressed. The locks keep
/// their state.
void LâcheLesTouches(Clavier& clavier);

}  // namespace zuma::clavier
