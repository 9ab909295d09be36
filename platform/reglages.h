#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace zuma {

/// Bus timing registers of the CAN card for one speed.
struct TempsCAN {
  std::int32_t vitesse;                   ///< kilobits per second
  std::array<std::uint8_t, 2> registres;  ///< bus timing registers 0 and 1
};

/// Identifiers and command bytes of the magnetostrictive rulers, both card generations. In each
/// request of the first generation the command is the first data byte; in the second one it comes
/// behind the node.
struct DialogueRègles {
  std::uint16_t demande = 0x7EA;           ///< requests
  std::uint16_t réponse = 0x7E9;           ///< their answers
  std::uint16_t sélection = 0x7E5;         ///< selection by serial number, second generation
  std::uint16_t réponseSélection = 0x7E4;  ///< answer to a selection
  // First generation.
  std::uint8_t identité = 1;    ///< with the serial number: gives the node
  std::uint8_t positionID = 2;  ///< with the node: gives the first identifier
  std::uint8_t statusID = 3;    ///< with the node: gives the second identifier
  std::uint8_t marche = 4;      ///< with the node, on the first identifier
  std::array<std::uint8_t, 5> paramètres{0x10, 0x11, 0x12, 0x13, 0x14};  ///< one for each parameter
  // Second generation.
  std::uint8_t fixePositionID = 4;  ///< with the identifier of the position message
  std::uint8_t fixeStatusID = 5;    ///< with the identifier of the status message
  std::uint8_t fixeMode = 6;        ///< with the mode: the ruler starts
};

/// The CAN card and its rulers.
struct RéglagesCAN {
  /// Serial number, 8 hexadecimal digits, of the ruler that driver 25 starts.
  std::string numéroDeSérie = "00000001";
  /// Time-out of each answer while a ruler is started, in milliseconds.
  double attenteDémarrage = 100;
  /// Time-out of a position frame, in milliseconds. The pass waits this long for a dead ruler.
  double attenteLecture = 10;
  /// Identifiers and commands of the rulers.
  DialogueRègles dialogue;
  /// Timing for a controller clocked at 16 MHz that samples near 80 % of a bit. A speed that is not
  /// listed leaves the registers at 0.
  std::array<TempsCAN, 7> temps{{{20, {24, 0x1C}},
                                 {125, {3, 0x1C}},
                                 {250, {1, 0x1C}},
                                 {500, {0, 0x1C}},
                                 {615, {0, 0x19}},
                                 {800, {0, 0x16}},
                                 {1000, {0, 0x14}}}};
};

/// How the third word of a latch of the encoder board joins the count.
enum class MotHautIK121 : std::uint8_t {
  Signe,   ///< gives the sign alone: the count has 32 bits
  Compte,  ///< bits 32 to 47 of the count
};

/// The encoder board IK 121.
struct RéglagesIK121 {
  std::array<std::uint16_t, 2> demandeLatch{1, 2};  ///< control words that request latch 0, latch 1
  std::uint16_t départCompteur = 0x08;              ///< control word that starts the counter
  std::int32_t latch = 0;                           ///< latch that channels read, 0 or 1
  MotHautIK121 motHaut = MotHautIK121::Signe;       ///< how a latch is read
};

/// What a calibration on site leaves in its row beside the table. Nothing by default: date and
/// person are the laboratory's.
struct RéglagesEtalonnage {
  std::string personne;             ///< who calibrates; empty: neither person nor date is written
  std::string (*date)() = nullptr;  ///< the date to write; none leaves the one that stands there
};

/// Settings of the installation, given once with the platform.
struct Réglages {
  /// Between units and decimals in numbers shown to people.
  char séparateurDécimal = ',';
  /// Settling delay of the ACL 8316 around each step of a conversion, in microseconds.
  double stabilisationACL8316 = 10;
  /// Clock of the frequency output of the ACL 8316, in hertz.
  double horlogeACL8316 = 2'000'000;
  ///@{
  /// Settings of one device, or of one part of the work.
  RéglagesCAN can;
  RéglagesIK121 ik121;
  RéglagesEtalonnage étalonnage;
  ///@}
  /// Output polarity of the PCI 9111: 0 from 0 to 10 V, 1 from -10 to 10 V.
  std::uint16_t polaritéPCI9111 = 1;
  /// First register that the digital conditioners are asked for.
  std::int32_t premierRegistreConditionneur = 1;
  /// Measure of the USB drive that is its speed, 0 or 1: a stop is repeated until it reads 0. -1:
  /// none is, and an answer alone confirms a stop.
  std::int32_t vitesseThumler = 0;
  /// What ends a request to a METRO multiplexer, behind the number of the gauge.
  std::string finDeDemandeMETRO = "\r\n";
};

}  // namespace zuma
