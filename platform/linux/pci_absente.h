#pragma once

#include <cstdint>
#include <utility>

#include "platform/linux/bibliotheques_absentes.h"
#include "platform/pci_dask.h"

namespace zuma::linux_ {

/// PCI boards without their library: no board is ever found, no reading changes.
class PciAbsente final : public BibliothèquePCI, private BibliothèqueAbsente {
 public:
  /// Tells what is missing in `registre`.
  explicit PciAbsente(Ref<ZED_Erreur> registre)
      : BibliothèqueAbsente(std::move(registre), "des cartes PCI 9111 HR et PCI 6208 V",
                            "BibliothèquePCI") {}
  [[nodiscard]] std::int16_t Register_Card(std::uint16_t, std::uint16_t) override {
    return Refuse();
  }
  std::int16_t AI_9111_Config(std::uint16_t, std::uint16_t, std::uint16_t, std::uint16_t) override {
    return Refuse();
  }
  std::int16_t AI_ReadChannel(std::uint16_t, std::uint16_t, std::uint16_t,
                              std::uint16_t&) override {
    return Refuse();
  }
  std::int16_t AO_9111_Config(std::uint16_t, std::uint16_t) override { return Refuse(); }
  std::int16_t AO_WriteChannel(std::uint16_t, std::uint16_t, std::int16_t) override {
    return Refuse();
  }
  std::int16_t DI_ReadPort(std::uint16_t, std::uint16_t, std::uint32_t&) override {
    return Refuse();
  }
  std::int16_t DI_ReadLine(std::uint16_t, std::uint16_t, std::uint16_t, std::uint16_t&) override {
    return Refuse();
  }
  std::int16_t DO_WritePort(std::uint16_t, std::uint16_t, std::uint32_t) override {
    return Refuse();
  }
  std::int16_t DO_WriteLine(std::uint16_t, std::uint16_t, std::uint16_t, std::uint16_t) override {
    return Refuse();
  }

 private:
  std::int16_t Refuse() { return static_cast<std::int16_t>(Manque(-1)); }
};

}  // namespace zuma::linux_
