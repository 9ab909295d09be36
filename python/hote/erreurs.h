#pragma once

#include <pybind11/pybind11.h>
#include <stdexcept>
#include <string>
#include <vector>

#include "host/problemes.h"

namespace zuma::python {

/// A failure that reaches the caller as class `classe` of `zuma.errors`.
class Erreur : public std::runtime_error {
 public:
  /// `nom`: a literal, the name of the class.
  Erreur(const char* nom, const std::string& texte) : std::runtime_error(texte), classe(nom) {}
  const char* classe;  ///< of `zuma.errors`
};

/// The problems as objects of `zuma.errors.Problem`.
[[nodiscard]] pybind11::list EnPython(const std::vector<host::Problème>& problèmes);

/// Failures of the host and of this module become exceptions of `zuma.errors`.
void TraduitLesErreurs();

}  // namespace zuma::python
