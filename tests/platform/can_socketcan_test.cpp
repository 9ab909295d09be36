// The CAN adapter over a socket pair that carries the kernel's own frame records.
#include "platform/linux/can_socketcan.h"

#include <gtest/gtest.h>
#include <linux/can.h>
#include <sys/socket.h>
#include <unistd.h>

#include "outils/temoins.h"

namespace zuma::linux_ {
namespace {

class UnPortCAN : public testing::Test {
 public:
  UnPortCAN() {
    EXPECT_EQ(::socketpair(AF_UNIX, SOCK_SEQPACKET, 0, bouts), 0);
    poignée = can.CanOpenDriver(1, 1);
  }
  ~UnPortCAN() override { ::close(bouts[1]); }
  void Arrive(std::uint32_t id, std::initializer_list<std::uint8_t> octets) {
    can_frame trame{};
    trame.can_id = id;
    trame.can_dlc = static_cast<std::uint8_t>(octets.size());
    std::copy(octets.begin(), octets.end(), trame.data);
    ASSERT_GT(::send(bouts[1], &trame, sizeof trame, 0), 0);
  }
  can_frame Partie() {
    can_frame trame{};
    EXPECT_GT(::recv(bouts[1], &trame, sizeof trame, MSG_DONTWAIT), 0);
    return trame;
  }

  int bouts[2]{-1, -1};
  std::string demandée;
  Ref<essai::Registre> registre = Crée<essai::Registre>();
  CanSocketCAN can{registre, {}, [this](const std::string& nom) {
                     demandée += nom;
                     return bouts[0];
                   }};
  std::int32_t poignée = -1;
};

TEST_F(UnPortCAN, EnvoieEtReçoitDesTrames) {
  EXPECT_EQ(demandée, "can3");
  ASSERT_GT(poignée, 0);
  EXPECT_EQ(can.CanOpenDriver(1, 1), poignée) << "the same port is opened once";
  EXPECT_EQ(can.CanConfigPort(poignée, {.masqueAcceptation = 0x7FF}), 0);
  EXPECT_EQ(can.CanConfigPort(poignée + 1, {}), -1);

  EXPECT_EQ(can.CanSendMsg(poignée, {.identifiant = 0x7E5, .nombre = 3, .données = {1, 2, 3}}), 0);
  const can_frame partie = Partie();
  EXPECT_EQ(partie.can_id, 0x7E5U);
  EXPECT_EQ(partie.can_dlc, 3);
  EXPECT_EQ(partie.data[2], 3);
  EXPECT_EQ(partie.data[3], 0) << "blanks of the record are not data";
  EXPECT_EQ(can.CanSendMsg(poignée, {.identifiant = 0x1A1, .distante = 1}), 0);
  EXPECT_EQ(Partie().can_id, 0x1A1U | CAN_RTR_FLAG);

  TrameCAN trame;
  EXPECT_NE(can.CanRcvMsg(poignée, trame), 0) << "nothing waits, and it does not wait";
  Arrive(0x20000004U, {0, 0, 0, 0, 0, 0, 0, 0});  // an error report of the controller
  Arrive(0x1A1, {0x80, 0, 0, 9, 9, 9});
  ASSERT_EQ(can.CanRcvMsg(poignée, trame), 0);
  EXPECT_EQ(trame.identifiant, 0x1A1U);
  EXPECT_EQ(trame.nombre, 6);
  EXPECT_EQ(trame.données, (DonnéesCAN{0x80, 0, 0, 9, 9, 9, ' ', ' '}));
  Arrive(0x1A1 | CAN_RTR_FLAG, {});
  ASSERT_EQ(can.CanRcvMsg(poignée, trame), 0);
  EXPECT_EQ(trame.distante, 1);
  // Identifiers of 29 bits, and those that are not let through.
  const PortCAN réglages{.mode = 1, .codeAcceptation = 0x100, .masqueAcceptation = 0x0FF};
  EXPECT_EQ(can.CanConfigPort(poignée, réglages), 0);
  for (const std::uint32_t identifiant : {0x201U, 0x102U}) Arrive(identifiant, {1});
  ASSERT_EQ(can.CanRcvMsg(poignée, trame), 0);
  EXPECT_EQ(trame.identifiant, 0x102U);
  EXPECT_NE(can.CanRcvMsg(poignée, trame), 0);
  EXPECT_EQ(can.CanSendMsg(poignée, {.identifiant = 0x12345678}), 0);
  EXPECT_EQ(Partie().can_id, 0x12345678U | CAN_EFF_FLAG);
  EXPECT_TRUE(registre->entrées.empty());
}

TEST_F(UnPortCAN, SertAussiLaPremièreGénération) {
  EXPECT_EQ(can.W_7841_Config(1, 1, {.adresse = 8, .masque = 0xFF}), 0);
  Trame7841 trame{.identifiantBas = 0xEA, .identifiantHaut = 7, .nombre = 1, .données = {4}};
  EXPECT_EQ(can.W_7841_SendMsg(1, 1, trame), 0);
  EXPECT_EQ(Partie().can_id, 0x7EAU);
  EXPECT_NE(can.W_7841_RcvMsg(1, 1, trame), 1);
  Arrive(0x7E9, {4, 0xA1, 1});
  ASSERT_EQ(can.W_7841_RcvMsg(1, 1, trame), 1);
  EXPECT_EQ(trame.Identifiant(), 0x7E9U);
  EXPECT_EQ(trame.données[1], 0xA1);
}

TEST_F(UnPortCAN, DitUneFoisQuUnPortEstPerdu) {
  ::shutdown(bouts[1], SHUT_RDWR);
  TrameCAN trame;
  for (int i = 0; i < 5; ++i) {
    EXPECT_NE(can.CanRcvMsg(poignée, trame), 0);
    EXPECT_NE(can.CanSendMsg(poignée, {}), 0);
  }
  ASSERT_EQ(registre->entrées.size(), 1U);
  EXPECT_TRUE(registre->Contient("Port CAN 1 de la carte 1 (interface can3) inaccessible"));
  can.CanCloseDriver(poignée);
  can.CanCloseDriver(poignée);
  EXPECT_NE(can.CanRcvMsg(poignée, trame), 0);
}

// The real opening: refused for want of CAN sockets, or of the interface.
TEST(CanSocketCAN, DitPourquoiUnPortNeSOuvrePas) {
  const auto registre = Crée<essai::Registre>();
  CanSocketCAN can(registre, {{{0, 0}, "zumaabsent0"}});
  EXPECT_EQ(can.CanOpenDriver(0, 0), -1);
  EXPECT_EQ(can.W_7841_Config(0, 0, {}), -1);
  ASSERT_EQ(registre->entrées.size(), 1U) << "told once";
  EXPECT_TRUE(
      registre->Contient("Port CAN 0 de la carte 0 (interface zumaabsent0) inaccessible ("));
  EXPECT_TRUE(registre->Contient("chargez les modules can et can_raw") ||
              registre->Contient("l'interface n'existe pas"))
      << registre->entrées.front().message;
}

}  // namespace
}  // namespace zuma::linux_
