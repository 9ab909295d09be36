#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace zuma {

/// State of the 256 virtual keys, by code: the top bit is set while the key is down, the low bit
/// changes each time it is pressed (the state of the three locks).
using EtatClavier = std::array<std::uint8_t, 256>;

/// Bit of a key that is down.
inline constexpr std::uint8_t kToucheEnfoncée = 0x80;
/// Bit that changes each time the key is pressed.
inline constexpr std::uint8_t kToucheBasculée = 0x01;

/// Codes of the virtual keys that the program knows; digits and capital letters are their own.
namespace touche {
inline constexpr std::uint8_t kRetour = 13;          ///< Enter
inline constexpr std::uint8_t kMajuscule = 16;       ///< Shift
inline constexpr std::uint8_t kContrôle = 17;        ///< Control
inline constexpr std::uint8_t kAlt = 18;             ///< Alt
inline constexpr std::uint8_t kVerrMaj = 20;         ///< Caps Lock
inline constexpr std::uint8_t kEchappement = 27;     ///< Escape
inline constexpr std::uint8_t kEspace = 32;          ///< space bar
inline constexpr std::uint8_t kPagePrécédente = 33;  ///< Page Up
inline constexpr std::uint8_t kPageSuivante = 34;    ///< Page Down
inline constexpr std::uint8_t kFin = 35;             ///< End
inline constexpr std::uint8_t kDébut = 36;           ///< Home
inline constexpr std::uint8_t kGauche = 37;          ///< arrow left
inline constexpr std::uint8_t kHaut = 38;            ///< arrow up
inline constexpr std::uint8_t kDroite = 39;          ///< arrow right
inline constexpr std::uint8_t kBas = 40;             ///< arrow down
inline constexpr std::uint8_t kInsertion = 45;       ///< Insert
inline constexpr std::uint8_t kSuppression = 46;     ///< Delete
inline constexpr std::uint8_t kPavé0 = 96;           ///< 0 of the numeric pad; 1 to 9 follow
inline constexpr std::uint8_t kF1 = 112;             ///< F1; the others follow
inline constexpr std::uint8_t kVerrNum = 144;        ///< Num Lock
inline constexpr std::uint8_t kArrêtDéfil = 145;     ///< Scroll Lock
}  // namespace touche

/// Keyboard of the operator, as a table of key states that the program may overwrite.
class Clavier {
 public:
  virtual ~Clavier() = default;
  /// Present state. Read on every refresh of an input with a key: it never waits and never fails;
  /// a keyboard that is missing or was pulled out has no key down.
  [[nodiscard]] virtual const EtatClavier& LitEtat() = 0;
  /// Overwrites the state: a key that is down and is written as released counts as down again
  /// once it was let go and pressed.
  virtual void EcritEtat(const EtatClavier& état) = 0;
  /// Why no keyboard can be read, for the integrator; empty when one can.
  [[nodiscard]] virtual std::string Défaut() const { return {}; }
};

}  // namespace zuma
