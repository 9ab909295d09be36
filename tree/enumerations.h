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

/// All drivers of the library. A value stands at a board, at a function block or at a channel; what
/// each serves is told by its row, a `LigneDriver`.
enum class ENUM_DRIVER : std::int32_t {
  DrvAucun = 0,                        ///< none
  DrvPCL731_PCLD782B = 1,              ///< logic inputs of a PCL 731
  DrvPET48DIO_TB24P = 2,               ///< logic inputs of a PET 48 DIO, TB 24 P
  DrvACL8316_ACLD9182 = 3,             ///< logic inputs of an ACL 8316
  DrvA826PG_DB16B = 4,                 ///< logic inputs of an A 826 PG
  DrvACL6126_ACLD9182 = 5,             ///< logic inputs of an ACL 6126
  DrvPET48DIO_PCLD782B = 6,            ///< logic inputs of a PET 48 DIO, PCLD 782 B
  drvPCI9111HR_Vorlanex_EL = 7,        ///< logic inputs of a PCI 9111 HR
  DrvPCL731_PCLD7225 = 10,             ///< logic outputs of a PCL 731
  DrvPET48DIO_TB24R = 11,              ///< logic outputs of a PET 48 DIO, TB 24 R
  DrvACL8316_ACLD9185 = 12,            ///< logic outputs of an ACL 8316
  DrvA826PG_DB16R = 13,                ///< logic outputs of an A 826 PG
  DrvACL6126_ACLD9185 = 14,            ///< logic outputs of an ACL 6126
  DrvPET48DIO_PCLD7225 = 15,           ///< logic outputs of a PET 48 DIO, PCLD 7225
  drvPCI9111HR_Vorlanex_SL = 16,       ///< logic outputs of a PCI 9111 HR
  DrvPCL813_PCLD881 = 20,              ///< analog inputs of a PCL 813
  DrvACL8113 = 21,                     ///< analog inputs of an ACL 8113
  DrvACL8316_ACLD8125 = 22,            ///< analog inputs of an ACL 8316
  DrvIK121 = 23,                       ///< encoders of an IK 121
  DrvA826PG_DB8225 = 24,               ///< analog inputs of an A 826 PG
  drvpci7841 = 25,                     ///< rulers of a CAN card, first generation
  drvpci7841_2 = 26,                   ///< rulers of a CAN card, second generation
  drvPCI9111HR_Vorlanex_EA = 27,       ///< analog inputs of a PCI 9111 HR
  DrvPCL728 = 30,                      ///< analog outputs of a PCL 728
  DrvACL6128 = 31,                     ///< analog outputs of an ACL 6128
  DrvACL8316 = 32,                     ///< analog and frequency outputs of an ACL 8316
  DrvA826PG = 33,                      ///< analog outputs of an A 826 PG
  DrvACL6126 = 34,                     ///< analog outputs of an ACL 6126
  drvPCI9111HR_Vorlanex_SA = 35,       ///< analog output of a PCI 9111 HR
  drvPCI6208V_Vorlanex_SA = 36,        ///< analog outputs of a PCI 6208 V
  DrvWDT01 = 40,                       ///< watchdog board, driven by `Watchdog`
  DrvRègleMTS1Aimant = 200,            ///< channel: ruler with one magnet
  DrvRègleMTS3Aimants3 = 210,          ///< channel: ruler with three magnets, the third
  DrvRègleMTS3Aimants2_1 = 211,        ///< channel: ruler with three magnets, second less first
  DrvRègleMTSMultiMagnet = 220,        ///< channel: ruler with several magnets
  DrvModBus = 300,                     ///< blocks of a Modbus line
  DrvLvdtSolartron = 301,              ///< LVDT probes of a network
  DrvRS232 = 302,                      ///< board: serial line of balances and gauges
  drvPET48DIO = 1000,                  ///< board: PET 48 DIO
  DrvPCI9111HR = 1001,                 ///< board: PCI 9111 HR
  DrvPCI_6208_V = 1002,                ///< board: PCI 6208 V
  Drv_UMV4301_Modbus = 3001,           ///< drive on Modbus, UMV 4301
  Drv_VarioLS_K9_Modbus = 3002,        ///< drive on Modbus, Vario LS
  Drv_Thumler = 3003,                  ///< drive on USB
  Drv_EIR_LASER = 3004,                ///< laser extensometer
  Drv_UTS_0107 = 3005,                 ///< CBR tester
  Drv_Balance_GRAM = 3006,             ///< balance
  DrvSpiderV1 = 3009,                  ///< measuring amplifier as a board
  DrvConditionneurNumeriqueK9 = 3010,  ///< digital conditioner
  DrvConditionneurNumeriqueK9_V1_00 = 3011,  ///< digital conditioner, version 1.00
  DrvRS232BalanceLRPC31 = 30201,             ///< channel: balance that sends unasked
  DrvRS232IndicateurDEXAL = 30202,           ///< channel: indicator that sends unasked
  DrvRS232_Balance_JADEVER = 30203,          ///< channel: balance that sends unasked
  DrvSpider8 = 30204,                        ///< block: measuring amplifier
  DrvRS232METRO = 30205,                     ///< block: gauge alone on its line
  DrvRS232METRO_MUX = 30206,                 ///< block: gauges behind a multiplexer
};

}  // namespace zuma
