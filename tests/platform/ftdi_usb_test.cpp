// The USB adapter where no device is plugged: every call says so, and none is fatal.
#include "platform/linux/ftdi_usb.h"

#include <gtest/gtest.h>

namespace zuma::linux_ {
namespace {

TEST(FtdiUsb, DitUnAppareilAbsent) {
  FtdiUsb usb;
  std::int32_t poignée = 0;
  std::int32_t réception = 0;
  std::int32_t émission = 0;
  Octets octets;
  constexpr std::int32_t kAucunAppareilDeCeNuméro = 250;
  EXPECT_EQ(usb.FT_Open(kAucunAppareilDeCeNuméro, poignée), 2);
  EXPECT_EQ(usb.FT_Open(-1, poignée), 2);
  EXPECT_EQ(usb.FT_SetTimeouts(poignée, 1000, 1000), 3);
  EXPECT_EQ(usb.FT_SetBaudRate(poignée, 1953125), 3);
  EXPECT_EQ(usb.FT_Purge(poignée, FTD2XX::kPurgeRéception), 3);
  EXPECT_EQ(usb.FT_Write(poignée, "$A"), 3);
  EXPECT_EQ(usb.FT_GetStatus(poignée, réception, émission), 3);
  EXPECT_EQ(usb.FT_Read(poignée, 10, octets), 3);
  usb.FT_Close(poignée);
}

}  // namespace
}  // namespace zuma::linux_
