#pragma once

#include <utility>

#include "platform/collaborateurs.h"
#include "platform/pci_dask.h"

namespace zuma::linux_ {

/// Library of the PCI boards where it cannot be had: it finds no board, as one that was asked in an
/// empty machine, and says once in the error record why and what to do. A host that has the boards'
/// library puts its own implementation in `Plateforme::pci`.
class PciAbsente final : public BibliothèquePCI {
 public:
  explicit PciAbsente(Ref<ZED_Erreur> registre) : registre_(std::move(registre)) {}

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

 private:
  std::int16_t Refuse();

  Ref<ZED_Erreur> registre_;
  bool dit_ = false;
};

}  // namespace zuma::linux_
