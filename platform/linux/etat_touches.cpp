#include "platform/linux/etat_touches.h"

#include <algorithm>
#include <array>
#include <string_view>

#include <linux/input-event-codes.h>

namespace zuma::linux_ {
namespace {

struct Touche {
  unsigned code;
  std::uint8_t virtuelle;
};

constexpr std::array<Touche, 31> kTouches{{
    {KEY_ENTER, touche::kRetour},
    {KEY_KPENTER, touche::kRetour},
    {KEY_LEFTSHIFT, touche::kMajuscule},
    {KEY_RIGHTSHIFT, touche::kMajuscule},
    {KEY_LEFTCTRL, touche::kContrôle},
    {KEY_RIGHTCTRL, touche::kContrôle},
    {KEY_LEFTALT, touche::kAlt},
    {KEY_RIGHTALT, touche::kAlt},
    {KEY_CAPSLOCK, touche::kVerrMaj},
    {KEY_NUMLOCK, touche::kVerrNum},
    {KEY_SCROLLLOCK, touche::kArrêtDéfil},
    {KEY_ESC, touche::kEchappement},
    {KEY_SPACE, touche::kEspace},
    {KEY_PAGEUP, touche::kPagePrécédente},
    {KEY_PAGEDOWN, touche::kPageSuivante},
    {KEY_END, touche::kFin},
    {KEY_HOME, touche::kDébut},
    {KEY_LEFT, touche::kGauche},
    {KEY_UP, touche::kHaut},
    {KEY_RIGHT, touche::kDroite},
    {KEY_DOWN, touche::kBas},
    {KEY_INSERT, touche::kInsertion},
    {KEY_DELETE, touche::kSuppression},
    {KEY_F11, touche::kF1 + 10},
    {KEY_F12, touche::kF1 + 11},
    {KEY_BACKSPACE, 8},
    {KEY_TAB, 9},
    {KEY_KPASTERISK, 106},
    {KEY_KPPLUS, 107},
    {KEY_KPMINUS, 109},
    {KEY_KPDOT, 110},
}};

// Keys in a row have codes in a row.
struct Rangée {
  unsigned première;
  std::string_view touches;
};

constexpr std::array<Rangée, 4> kQwerty{
    {{KEY_1, "1234567890"}, {KEY_Q, "QWERTYUIOP"}, {KEY_A, "ASDFGHJKL"}, {KEY_Z, "ZXCVBNM"}}};
constexpr std::array<Rangée, 4> kAzerty{
    {{KEY_1, "1234567890"}, {KEY_Q, "AZERTYUIOP"}, {KEY_A, "QSDFGHJKLM"}, {KEY_Z, "WXCVBN"}}};

// F1 to F10, then the digits of the keypad from the top row.
constexpr std::uint8_t kDernierF = 10;
constexpr std::array<Rangée, 4> kPavé{
    {{KEY_KP7, "789"}, {KEY_KP4, "456"}, {KEY_KP1, "123"}, {KEY_KP0, "0"}}};

std::uint8_t DansLesRangées(const std::array<Rangée, 4>& rangées, unsigned code) noexcept {
  for (const auto& [première, touches] : rangées) {
    if (code >= première && code - première < touches.size()) {
      return static_cast<std::uint8_t>(touches[code - première]);
    }
  }
  return 0;
}

}  // namespace

std::uint8_t ToucheVirtuelle(unsigned code, DispositionClavier disposition) noexcept {
  const auto connue = std::ranges::find(kTouches, code, &Touche::code);
  if (connue != kTouches.end()) return connue->virtuelle;
  if (code >= KEY_F1 && code - KEY_F1 < kDernierF) {
    return static_cast<std::uint8_t>(touche::kF1 + code - KEY_F1);
  }
  if (const std::uint8_t chiffre = DansLesRangées(kPavé, code); chiffre != 0) {
    return static_cast<std::uint8_t>(touche::kPavé0 + chiffre - '0');
  }
  return DansLesRangées(disposition == DispositionClavier::Azerty ? kAzerty : kQwerty, code);
}

void EtatTouches::Reçoit(unsigned code, int valeur) noexcept {
  const std::uint8_t touche = ToucheVirtuelle(code, disposition_);
  if (touche == 0) return;
  std::uint8_t& état = état_[touche];
  if (valeur == 1) {
    état = static_cast<std::uint8_t>((état ^ kToucheBasculée) | kToucheEnfoncée);
  } else if (valeur == 0) {
    état = static_cast<std::uint8_t>(état & ~kToucheEnfoncée);
  }
}

void EtatTouches::Verrou(std::uint8_t touche, bool allumé) noexcept {
  état_[touche] = static_cast<std::uint8_t>((état_[touche] & ~kToucheBasculée) |
                                            (allumé ? kToucheBasculée : 0));
}

}  // namespace zuma::linux_
