#include "platform/linux/ports_linux.h"

#include <cerrno>
#include <map>

#include <gtest/gtest.h>

#include "outils/temoins.h"

namespace zuma::linux_ {
namespace {

using Demandes = std::vector<std::pair<int, int>>;

/// Ports in memory, byte by byte in the order of the bus; ports from `refusés` on are refused.
class PortsEnMémoire : public InstructionsES {
 public:
  int Demande(std::uint16_t début, std::uint16_t nombre) noexcept override {
    demandes.emplace_back(début, nombre);
    return début < refusés ? 0 : EPERM;
  }
  std::uint32_t Lit(std::uint16_t port, unsigned octets) noexcept override {
    std::uint32_t valeur = 0;
    for (unsigned i = 0; i < octets; ++i) valeur |= std::uint32_t{mémoire[port + i]} << (8 * i);
    return valeur;
  }
  void Ecrit(std::uint16_t port, std::uint32_t valeur, unsigned octets) noexcept override {
    for (unsigned i = 0; i < octets; ++i) {
      mémoire[port + i] = static_cast<std::uint8_t>(valeur >> (8 * i));
    }
  }
  std::map<unsigned, std::uint8_t> mémoire;
  Demandes demandes;
  unsigned refusés = 0x10000;
};

TEST(PortsLinux, DemandeChaqueGroupeUneFois) {
  PortsEnMémoire mémoire;
  PortsLinux ports({}, mémoire);
  ports.Outp(0x300, 0xA5);
  ports.Outpw(0x306, 0xBEEF);
  ports.Outpd(0x30C, 0x12345678);
  EXPECT_EQ(ports.Inp(0x300), 0xA5);
  EXPECT_EQ(ports.Inpw(0x306), 0xBEEF);
  EXPECT_EQ(ports.Inpd(0x30C), 0x12345678U);
  EXPECT_EQ(mémoire.demandes, (Demandes{{0x300, 16}}));
  (void)ports.Inpw(0x31F);  // across two groups
  EXPECT_EQ(mémoire.demandes, (Demandes{{0x300, 16}, {0x310, 16}, {0x320, 16}}));
  EXPECT_FALSE(ports.Refusés());
}

TEST(PortsLinux, RefusésIlsSontCommeUneCarteAbsente) {
  PortsEnMémoire mémoire;
  mémoire.refusés = 0x310;
  const auto registre = Crée<essai::Registre>();
  PortsLinux ports(registre, mémoire);
  EXPECT_EQ(ports.Inp(0x340), 0xFF);
  EXPECT_EQ(ports.Inpw(0x342), 0xFFFF);
  EXPECT_EQ(ports.Inpd(0x350), 0xFFFFFFFFU);
  ports.Outp(0x340, 1);
  EXPECT_EQ(ports.Inpw(0x30F), 0xFFFF);  // half of it refused
  ports.Outpw(0x30F, 0);
  EXPECT_EQ(ports.Inpw(0xFFFF), 0xFFFF);  // past the last port
  EXPECT_TRUE(mémoire.mémoire.empty());
  EXPECT_TRUE(ports.Refusés());
  ASSERT_EQ(registre->entrées.size(), 1U);
  EXPECT_TRUE(registre->Contient("0x0340-0x034F"));
  EXPECT_TRUE(registre->Contient("CAP_SYS_RAWIO"));
}

}  // namespace
}  // namespace zuma::linux_
