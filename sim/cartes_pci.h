#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <span>
#include <utility>
#include <vector>

#include "platform/pci_dask.h"
#include "sim/bornes.h"
#include "sim/pannes.h"

namespace zuma::sim {

/// A PCI board in its slot: its terminals, and what it was told.
struct CartePCISimulée {
  std::uint16_t type = 0;                     ///< as the library counts it
  Bornes bornes;                              ///< what stands at its terminals
  PannesDeCarte pannes;                       ///< hung: no conversion ends
  int portMort = -1;                          ///< logic port whose writes fail
  bool entréesPrêtes = false;                 ///< conversions were set up; none before
  bool sortiesBipolaires = false;             ///< of the polarity chosen
  bool sortiesPrêtes = false;                 ///< a polarity was chosen; nothing comes out before
  std::array<std::uint32_t, 2> motsEcrits{};  ///< last word written to each logic port
  int écritures = 0;                          ///< of whole logic ports
};

/// The library of the PCI boards with the boards of one machine. A board answers to the handle of
/// its last registration; no handle equals a board's number.
///
/// PCI 9111: ranges from 10 V (code 1) to 0.625 V (code 5), lines 0 to 15 on port 0 and 0 to 3 on
/// port 1, whose upper bits float; its output takes signed codes of 12 bits, the negative ones
/// being the upper half when it is unipolar. PCI 6208: eight outputs of 16 bits.
class BibliothèquePCISimulée : public BibliothèquePCI {
 public:
  /// Puts a board of that type in the machine; gives the one that is there already.
  CartePCISimulée& Enfiche(std::uint16_t type, std::uint16_t numéro);

  [[nodiscard]] std::int16_t Register_Card(std::uint16_t type, std::uint16_t numéro) override;
  std::int16_t AI_9111_Config(std::uint16_t carte, std::uint16_t source, std::uint16_t mode,
                              std::uint16_t trace) override;
  std::int16_t AI_ReadChannel(std::uint16_t carte, std::uint16_t canal, std::uint16_t gain,
                              std::uint16_t& valeur) override;
  std::int16_t AO_9111_Config(std::uint16_t carte, std::uint16_t polarité) override;
  std::int16_t AO_WriteChannel(std::uint16_t carte, std::uint16_t canal,
                               std::int16_t valeur) override;
  std::int16_t DI_ReadPort(std::uint16_t carte, std::uint16_t port, std::uint32_t& mot) override;
  std::int16_t DI_ReadLine(std::uint16_t carte, std::uint16_t port, std::uint16_t ligne,
                           std::uint16_t& état) override;
  std::int16_t DO_WritePort(std::uint16_t carte, std::uint16_t port, std::uint32_t mot) override;
  std::int16_t DO_WriteLine(std::uint16_t carte, std::uint16_t port, std::uint16_t ligne,
                            std::uint16_t état) override;

  /// Seed of the luck of all boards.
  void Graine(std::uint32_t graine);
  /// Puts the faults of that instant, and no other, on all boards.
  void Applique(std::span<const PannePrévue> pannes, double secondes);

  bool refuseTout = false;  ///< as when the driver of the boards hangs
  int refus = 0;            ///< calls that no board took, registrations aside
  /// Answer to a handle of no board.
  static constexpr std::int16_t kCarteAbsente = -9;
  /// Answer to a call that the board does not take.
  static constexpr std::int16_t kAppelRefusé = -1;

 private:
  [[nodiscard]] std::int16_t Refuse();
  [[nodiscard]] CartePCISimulée* La(std::uint16_t poignée, std::uint16_t type);

  std::map<std::pair<std::uint16_t, std::uint16_t>, CartePCISimulée> cartes_;  ///< type, number
  std::vector<CartePCISimulée*> enregistrées_;
};

}  // namespace zuma::sim
