#pragma once

#include <cstdint>

namespace zuma {

/// Kind of a function block and of its channels; 0 is none.
enum class ENUM_TYPE_FONCTION : std::int32_t {
  FctAucune = 0,
  FctEntréesLogiques = 1,
  FctSortiesLogiques = 2,
  FctEntréesAnalogiques = 3,
  FctSortiesAnalogiques = 4,
};

/// All drivers. A value stands at a board, at a function block or at a channel; what each serves
/// is told by `driver_table`.
enum class ENUM_DRIVER : std::int32_t {
  DrvAucun = 0,
  DrvPCL731_PCLD782B = 1,
  DrvPET48DIO_TB24P = 2,
  DrvACL8316_ACLD9182 = 3,
  DrvA826PG_DB16B = 4,
  DrvACL6126_ACLD9182 = 5,
  DrvPET48DIO_PCLD782B = 6,
  drvPCI9111HR_Vorlanex_EL = 7,
  DrvPCL731_PCLD7225 = 10,
  DrvPET48DIO_TB24R = 11,
  DrvACL8316_ACLD9185 = 12,
  DrvA826PG_DB16R = 13,
  DrvACL6126_ACLD9185 = 14,
  DrvPET48DIO_PCLD7225 = 15,
  drvPCI9111HR_Vorlanex_SL = 16,
  DrvPCL813_PCLD881 = 20,
  DrvACL8113 = 21,
  DrvACL8316_ACLD8125 = 22,
  DrvIK121 = 23,
  DrvA826PG_DB8225 = 24,
  drvpci7841 = 25,
  drvpci7841_2 = 26,
  drvPCI9111HR_Vorlanex_EA = 27,
  DrvPCL728 = 30,
  DrvACL6128 = 31,
  DrvACL8316 = 32,
  DrvA826PG = 33,
  DrvACL6126 = 34,
  drvPCI9111HR_Vorlanex_SA = 35,
  drvPCI6208V_Vorlanex_SA = 36,
  DrvWDT01 = 40,
  DrvRègleMTS1Aimant = 200,
  DrvRègleMTS3Aimants3 = 210,
  DrvRègleMTS3Aimants2_1 = 211,
  DrvRègleMTSMultiMagnet = 220,
  DrvModBus = 300,
  DrvLvdtSolartron = 301,
  DrvRS232 = 302,
  drvPET48DIO = 1000,
  DrvPCI9111HR = 1001,
  DrvPCI_6208_V = 1002,
  Drv_UMV4301_Modbus = 3001,
  Drv_VarioLS_K9_Modbus = 3002,
  Drv_Thumler = 3003,
  Drv_EIR_LASER = 3004,
  Drv_UTS_0107 = 3005,
  Drv_Balance_GRAM = 3006,
  DrvSpiderV1 = 3009,
  DrvConditionneurNumeriqueK9 = 3010,
  DrvConditionneurNumeriqueK9_V1_00 = 3011,
  DrvRS232BalanceLRPC31 = 30201,
  DrvRS232IndicateurDEXAL = 30202,
  DrvRS232_Balance_JADEVER = 30203,
  DrvSpider8 = 30204,
  DrvRS232METRO = 30205,
  DrvRS232METRO_MUX = 30206,
};

}  // namespace zuma
