#pragma once

#include <optional>
#include <vector>

#include "core/chassis.h"
#include "sim/borne.h"
#include "sim/cartes_pci.h"

namespace zuma::sim {

/// The PCI boards of a frame as twins behind a simulated library.
class MachinePCI {
 public:
  /// Puts the twin of every PCI board of a loaded frame in the machine, before it is started.
  void Branche(Chassis& chassis);
  /// The terminal that a channel sits on, its board started or not; none for a channel of any other
  /// board, or of a line that the board does not have.
  [[nodiscard]] std::optional<Borne> BorneDe(const Canal& canal) const;
  /// The library that the twins stand behind.
  [[nodiscard]] BibliothèquePCISimulée& Bibliothèque() noexcept { return bibliothèque_; }

 private:
  struct Enfichée {
    const Carte* carte;
    CartePCISimulée* jumelle;
  };

  BibliothèquePCISimulée bibliothèque_;
  std::vector<Enfichée> enfichées_;
};

}  // namespace zuma::sim
