#pragma once

#include <cstdint>

#include "boards/carte_es.h"

namespace zuma {

/// What the boards reached through the PCI library have in common: each is known by the handle that
/// its registration gave. The library's answers fail nothing, and it tells why in its own way: they
/// tell whether an output reached its board, and whether a conversion is one. Logic inputs of a
/// board that is missing read as 0.
class CartePCI : public Pilote {
 public:
  /// The board of that handle.
  CartePCI(const Matériel& matériel, std::uint16_t poignée)
      : matériel_(matériel), poignée_(poignée) {}

 protected:
  /// The library; fails with 91 where the host has none.
  [[nodiscard]] BibliothèquePCI& Lib() const { return *matériel_.plateforme.pci; }
  /// Settings of the installation.
  [[nodiscard]] const Réglages& LesRéglages() const { return matériel_.plateforme.réglages; }
  /// Handle that the registration gave.
  [[nodiscard]] std::uint16_t Poignée() const noexcept { return poignée_; }

 private:
  Matériel matériel_;
  std::uint16_t poignée_;
};

/// Registers the board of that type whose number stands in `Adresse`, and puts the handle there
/// instead, for its blocks and channels too. Started again, the board is registered under the same
/// number. Gives the library's answer, which is negative when there is no such board.
[[nodiscard]] std::int16_t EnregistreCartePCI(Carte& carte, std::uint16_t type);

}  // namespace zuma
