#pragma once

#include <pybind11/pybind11.h>
#include <span>
#include <string>
#include <vector>

namespace zuma::python::modele {

/// Calls `teste` on a list of texts as the model does on a table of causes, entry 0 left alone, and
/// brings what it wrote back into the list.
template <class Teste>
void SurDesCauses(const pybind11::list& causes, Teste&& teste) {
  auto textes = causes.cast<std::vector<std::string>>();
  teste(std::span<std::string>(textes));
  for (std::size_t i = 0; i < textes.size(); ++i) causes[i] = textes[i];
}

}  // namespace zuma::python::modele
