#include "platform/linux/pci_absente.h"

namespace zuma::linux_ {
namespace {

constexpr std::int16_t kPasDeCarte = -1;

}  // namespace

std::int16_t PciAbsente::Refuse() {
  if (!dit_ && registre_) {
    registre_->AjouteErreur(
        "La bibliothèque des cartes PCI 9111 HR et PCI 6208 V n'existe pas pour ce système. Ces "
        "cartes sont traitées comme absentes : entrées à 0, sorties sans effet. Essayez la "
        "configuration sur la machine simulée (zuma run --sim) ou donnez à la plateforme votre "
        "propre bibliothèque (Plateforme::pci).",
        TableVariables(1));
  }
  dit_ = true;
  return kPasDeCarte;
}

std::int16_t PciAbsente::Register_Card(std::uint16_t, std::uint16_t) {
  return Refuse();
}
std::int16_t PciAbsente::AI_9111_Config(std::uint16_t, std::uint16_t, std::uint16_t,
                                        std::uint16_t) {
  return Refuse();
}
std::int16_t PciAbsente::AI_ReadChannel(std::uint16_t, std::uint16_t, std::uint16_t,
                                        std::uint16_t&) {
  return Refuse();
}
std::int16_t PciAbsente::AO_9111_Config(std::uint16_t, std::uint16_t) {
  return Refuse();
}
std::int16_t PciAbsente::AO_WriteChannel(std::uint16_t, std::uint16_t, std::int16_t) {
  return Refuse();
}
std::int16_t PciAbsente::DI_ReadPort(std::uint16_t, std::uint16_t, std::uint32_t&) {
  return Refuse();
}
std::int16_t PciAbsente::DI_ReadLine(std::uint16_t, std::uint16_t, std::uint16_t, std::uint16_t&) {
  return Refuse();
}
std::int16_t PciAbsente::DO_WritePort(std::uint16_t, std::uint16_t, std::uint32_t) {
  return Refuse();
}
std::int16_t PciAbsente::DO_WriteLine(std::uint16_t, std::uint16_t, std::uint16_t, std::uint16_t) {
  return Refuse();
}

}  // namespace zuma::linux_
