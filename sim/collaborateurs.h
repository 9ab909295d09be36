#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/collaborateurs.h"
#include "platform/services.h"
#include "sim/journal_borne.h"

// Plain collaborators of a simulated machine: they keep what they are told.
namespace zuma::sim {

/// Text files held in memory, all paths in one.
class FichiersEnMémoire : public Fichiers {
 public:
  void AjouteLigne(std::string_view, std::string_view ligne) override {
    Note(lignes, std::string(ligne));
  }
  void Supprime(std::string_view) noexcept override { lignes.clear(); }
  void AjouteBloc(std::string_view, std::span<const std::string> bloc) override {
    blocs.insert(blocs.end(), bloc.begin(), bloc.end());
  }
  void EcritBloc(std::int16_t, std::span<const std::string> bloc) override { AjouteBloc({}, bloc); }
  std::vector<std::string> lignes;  ///< of the installation
  std::vector<std::string> blocs;   ///< lines that went to the host's own files
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
