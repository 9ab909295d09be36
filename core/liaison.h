#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/objet.h"
#include "tree/canal.h"

namespace zuma {
class Chassis;
}

/// What the objects of a frame share when they resolve their references. A reference that is not
/// found is told to the integrator and stays Nothing; the load goes on.
namespace zuma::liaison {

/// True for the index 0, as a number or as text.
[[nodiscard]] bool EstZéro(const Valeur& index);

/// Key of the object of that row index; none when the index is Null or 0, which means no object.
[[nodiscard]] std::optional<std::string> CléDIndex(const Valeur& index);

/// Text of a reference that was not found: `sujet` + name + `utilise` + `référence` + `fin`.
[[nodiscard]] std::string Introuvable(std::string_view sujet, const Objet& objet,
                                      std::string_view utilise, std::string_view référence,
                                      std::string_view fin);

/// Channel of that row index, when there is a frame and an index. `sujet` begins the message, up
/// to the quote before the object's name.
void LieLeCanal(const Objet& objet, std::string_view sujet, Chassis* chassis, const Valeur& index,
                CanalRef& canal);

}  // namespace zuma::liaison
