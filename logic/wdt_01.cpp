#include "logic/wdt_01.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "base/outils_communs.h"
#include "platform/attente.h"

namespace zuma::wdt_01 {
namespace {

using OutilsCommuns::BitDeMot;

constexpr double kDélai = 1'000'000;  // microseconds
constexpr int kBitPrête = 7;

// Fails once the message box gives the board up: what waits behind it, a stop above all, goes on.
void AppelleAuSecours(const Liaison& liaison, int fois) {
  constexpr std::string_view kTexte = "TimeOut Watch dog";
  const Objet& objet = liaison.objet;
  const ObjetConcerné concerné{objet.MotDeClasse(), objet.Key(), objet.NomPourErreur()};
  if (MontreEnAttente(*objet.LaPlateforme().messages, kTexte, concerné, fois)) return;
  throw Echec(Numéro::MatérielAbsent, std::string(kTexte) + " : carte abandonnée");
}

}  // namespace

Etat WDT_LitEtat(const Liaison& liaison) {
  const std::uint8_t octet = liaison.ports.Inp(static_cast<std::uint16_t>(liaison.base + 1));
  return {BitDeMot(octet, 0), BitDeMot(octet, 1), BitDeMot(octet, 2), BitDeMot(octet, kBitPrête)};
}

bool WDT_EcritOctet(const Liaison& liaison, std::uint8_t octet) {
  const double échéance = liaison.timer.LitMicrosecondes() + kDélai;
  int fois = 0;
  while (!WDT_LitEtat(liaison).prête) {
    if (liaison.timer.LitMicrosecondes() <= échéance) continue;
    AppelleAuSecours(liaison, ++fois);
  }
  liaison.ports.Outp(liaison.base, octet);
  return fois == 0;
}

void WDT_EcritLigne(const Liaison& liaison, std::string_view ligne) {
  for (const char c : ligne.substr(0, ligne.find(static_cast<char>(kRetourChariot)))) {
    WDT_EcritOctet(liaison, static_cast<std::uint8_t>(c));
  }
  WDT_EcritOctet(liaison, kRetourChariot);
}

// The return first: it ends what the board may have received of a line.
void WDT_Stoppe(const Liaison& liaison) {
  WDT_EcritOctet(liaison, kRetourChariot);
  WDT_EcritLigne(liaison, "E");
}

void WDT_Arme(const Liaison& liaison) {
  WDT_EcritLigne(liaison, "S");
}

void WDT_ChargeTemps(const Liaison& liaison, float secondes) {
  WDT_EcritOctet(liaison, kRetourChariot);
  const std::string ligne = LigneDuTemps(secondes);
  WDT_Stoppe(liaison);
  WDT_EcritLigne(liaison, ligne);
}

// The shortest decimal text of the number: 0.01 and not 0.00999999977648258.
std::string LigneDuTemps(float secondes) {
  std::array<char, 64> tampon{};
  const auto fin =
      std::to_chars(tampon.begin(), tampon.end(), std::fabs(secondes), std::chars_format::fixed)
          .ptr;
  return "T=" + std::string(tampon.begin(), fin);
}

}  // namespace zuma::wdt_01
