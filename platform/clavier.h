#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace zuma {

/// State of the 256 virtual keys, by code: the top bit is set while the key is down, the low bit
/// changes each time it is pressed (the state of the three locks).
using EtatClavier = std::array<std::uint8_t, 256>;

inline constexpr std::uint8_t kToucheEnfoncée = 0x80;
inline constexpr std::uint8_t kToucheBasculée = 0x01;

/// Codes of the virtual keys that the program knows; digits and capital letters are their own.
namespace touche {
inline constexpr std::uint8_t kRetour = 13;
inline constexpr std::uint8_t kMajuscule = 16;
inline constexpr std::uint8_t kContrôle = 17;
inline constexpr std::uint8_t kAlt = 18;
inline constexpr std::uint8_t kVerrMaj = 20;
inline constexpr std::uint8_t kEchappement = 27;
inline constexpr std::uint8_t kEspace = 32;
inline constexpr std::uint8_t kPagePrécédente = 33;
inline constexpr std::uint8_t kPageSuivante = 34;
inline constexpr std::uint8_t kFin = 35;
inline constexpr std::uint8_t kDébut = 36;
inline constexpr std::uint8_t kGauche = 37;
inline constexpr std::uint8_t kHaut = 38;
inline constexpr std::uint8_t kDroite = 39;
inline constexpr std::uint8_t kBas = 40;
inline constexpr std::uint8_t kInsertion = 45;
inline constexpr std::uint8_t kSuppression = 46;
inline constexpr std::uint8_t kPavé0 = 96;
inline constexpr std::uint8_t kF1 = 112;
inline constexpr std::uint8_t kVerrNum = 144;
inline constexpr std::uint8_t kArrêtDéfil = 145;
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
