#pragma once

#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include "platform/collaborateurs.h"
#include "platform/services.h"

// Plain collaborators of a simulated machine: they keep what they are told.
namespace zuma::sim {

/// Small files held in memory.
class FichiersEnMémoire : public Fichiers {
 public:
  void AjouteLigne(std::string_view, std::string_view ligne) override {
    lignes.emplace_back(ligne);
  }
  void Supprime(std::string_view) noexcept override { lignes.clear(); }
  std::vector<std::string> lignes;
};

/// Keeps why the process should have ended, and lets it go on.
class FinNotée : public FinDuProgramme {
 public:
  void ArrêteLeProgramme(std::string_view pourquoi) override {
    if (raison.empty()) raison = pourquoi;
  }
  std::string raison;  ///< the first one; empty while there is none
};

}  // namespace zuma::sim
