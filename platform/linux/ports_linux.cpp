#include "platform/linux/ports_linux.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string>

#if defined(__x86_64__) || defined(__i386__)
#include <sys/io.h>
#define ZUMA_PORTS_ES 1
#else
#define ZUMA_PORTS_ES 0
#endif

namespace zuma::linux_ {
namespace {

#if ZUMA_PORTS_ES

class Instructions final : public InstructionsES {
 public:
  int Demande(std::uint16_t début, std::uint16_t nombre) noexcept override {
    return ::ioperm(début, nombre, 1) == 0 ? 0 : errno;
  }
  std::uint32_t Lit(std::uint16_t port, unsigned octets) noexcept override {
    if (octets == 1) return ::inb(port);
    return octets == 2 ? ::inw(port) : ::inl(port);
  }
  void Ecrit(std::uint16_t port, std::uint32_t valeur, unsigned octets) noexcept override {
    if (octets == 1) {
      ::outb(static_cast<std::uint8_t>(valeur), port);
    } else if (octets == 2) {
      ::outw(static_cast<std::uint16_t>(valeur), port);
    } else {
      ::outl(valeur, port);
    }
  }
};

#else

class Instructions final : public InstructionsES {
 public:
  int Demande(std::uint16_t, std::uint16_t) noexcept override { return ENOSYS; }
  std::uint32_t Lit(std::uint16_t, unsigned) noexcept override { return ~std::uint32_t{0}; }
  void Ecrit(std::uint16_t, std::uint32_t, unsigned) noexcept override {}
};

#endif

std::string Conseil(int erreur) {
  switch (erreur) {
    case ENOSYS:
      return "ce processeur n'a pas de ports d'entrée-sortie, choisissez une autre carte";
    case EPERM:
      return "lancez le programme en root ou donnez-lui CAP_SYS_RAWIO (setcap cap_sys_rawio+ep), "
             "sans le verrouillage du noyau (lockdown)";
    default:
      return "vérifiez l'adresse de la carte";
  }
}

}  // namespace

InstructionsES& InstructionsDuProcesseur() noexcept {
  static Instructions instructions;
  return instructions;
}

bool PortsLinux::Permis(std::uint16_t port, unsigned octets) {
  const std::uint32_t dernier = std::uint32_t{port} + octets - 1;
  if (dernier > 0xFFFF) return false;
  const auto groupe = static_cast<std::uint16_t>(port / kParGroupe);
  const auto fin = static_cast<std::uint16_t>(dernier / kParGroupe);
  // A word may lie across two groups.
  return GroupePermis(groupe) && (fin == groupe || GroupePermis(fin));
}

bool PortsLinux::GroupePermis(std::uint16_t groupe) {
  Droit& droit = droits_[groupe];
  if (droit != Droit::Inconnu) return droit == Droit::Accordé;
  const int erreur =
      instructions_.Demande(static_cast<std::uint16_t>(groupe * kParGroupe), kParGroupe);
  droit = erreur == 0 ? Droit::Accordé : Droit::Refusé;
  if (erreur != 0) SignaleRefus(groupe, erreur);
  return erreur == 0;
}

void PortsLinux::SignaleRefus(std::uint16_t groupe, int erreur) {
  if (refusés_) return;
  refusés_ = true;
  if (!registre_) return;
  const unsigned début = groupe * unsigned{kParGroupe};
  std::array<char, 32> plage{};
  std::snprintf(plage.data(), plage.size(), "0x%04X-0x%04X", début, début + kParGroupe - 1);
  registre_->AjouteErreur("Ports d'entrée-sortie " + std::string(plage.data()) + " refusés (" +
                              std::strerror(erreur) + ") ; " + Conseil(erreur) +
                              ". Les cartes à ces adresses sont traitées comme absentes.",
                          TableVariables(1));
}

}  // namespace zuma::linux_
