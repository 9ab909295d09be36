#pragma once

#include <limits>
#include <pybind11/pybind11.h>
#include <pybind11/stl.h>
#include <string>
#include <type_traits>

#include "base/valeur.h"

// How values cross between Python and the model.
namespace zuma::python::modele {

/// Class of Python, an `enum.IntEnum`, of an enumeration of the model.
template <class E>
pybind11::handle& ClasseDEnum() {
  static pybind11::handle classe;  // NOLINT: lives as long as the interpreter
  return classe;
}

/// The member of that value, or the plain number when it is none.
template <class E>
[[nodiscard]] pybind11::object MembreDEnum(E valeur) {
  const pybind11::int_ nombre(static_cast<long>(valeur));
  const auto membres = ClasseDEnum<E>().attr("_value2member_map_");
  return membres.attr("get")(nombre, nombre);
}

/// Takes whatever Python counts with: numbers of numpy too.
[[nodiscard]] bool EntierDePython(pybind11::handle source, long long& entier);
/// None, bool, int, float or str; false for anything else. Whole numbers beyond 32 bits are real
/// ones.
[[nodiscard]] bool ValeurDePython(pybind11::handle source, Valeur& valeur);
[[nodiscard]] pybind11::object ValeurEnPython(const Valeur& valeur);

}  // namespace zuma::python::modele

namespace pybind11::detail {

template <>
class type_caster<zuma::Valeur> {
 public:
  PYBIND11_TYPE_CASTER(zuma::Valeur, const_name("Optional[Union[bool, int, float, str]]"));

  bool load(handle source, bool) { return zuma::python::modele::ValeurDePython(source, value); }
  static handle cast(const zuma::Valeur& source, return_value_policy, handle) {
    return zuma::python::modele::ValeurEnPython(source).release();
  }
};

}  // namespace pybind11::detail

/// An enumeration `Enum` of the model, of class `texte` in Python. Any whole number is taken, as in
/// the model: what a number that is no member does is told there.
#define ZUMA_PYTHON_ENUM(Enum, texte)                                            \
  template <>                                                                    \
  class pybind11::detail::type_caster<Enum> {                                    \
   public:                                                                       \
    PYBIND11_TYPE_CASTER(Enum, const_name(texte));                               \
    bool load(handle source, bool) {                                             \
      long long entier = 0;                                                      \
      if (!zuma::python::modele::EntierDePython(source, entier)) return false;   \
      using Nombre = std::underlying_type_t<Enum>;                               \
      if (entier < static_cast<long long>(std::numeric_limits<Nombre>::min()) || \
          entier > static_cast<long long>(std::numeric_limits<Nombre>::max())) { \
        return false;                                                            \
      }                                                                          \
      value = static_cast<Enum>(entier);                                         \
      return true;                                                               \
    }                                                                            \
    static handle cast(Enum source, return_value_policy, handle) {               \
      return zuma::python::modele::MembreDEnum(source).release();                \
    }                                                                            \
  };
