#include "tree/retenues.h"

#include <algorithm>
#include <array>

#include "tree/carte.h"

namespace zuma {
namespace {

using enum ENUM_DRIVER;

/// What one device of a driver costs: one for each board, or one for each channel.
struct Retenue {
  ENUM_DRIVER driver;
  bool parCanal;
  double (*secondes)(const Réglages&);
};

constexpr double kMillisecondes = 1000;

double DUneTrame(const Réglages& réglages) {
  return réglages.can.attenteLecture / kMillisecondes;
}
double DeDeuxTrames(const Réglages& réglages) {
  return 2 * DUneTrame(réglages);
}

// Each is the limit that the driver's own file sets to its wait; docs/passes.md has what the twins
// measure of it.
constexpr std::array<Retenue, 7> kRetenues{{
    {DrvIK121, true, [](const Réglages&) { return 0.001; }},
    {DrvRègleMTS1Aimant, true, &DUneTrame},
    {DrvRègleMTS3Aimants3, true, &DeDeuxTrames},
    {DrvRègleMTS3Aimants2_1, true, &DeDeuxTrames},
    // One module a pass: the network is connected anew, which leaves the module out of service.
    {DrvLvdtSolartron, false, [](const Réglages&) { return 0.5; }},
    {Drv_Thumler, false, [](const Réglages&) { return 0.053; }},
    // The pauses of a start, well or silent.
    {Drv_UTS_0107, false, [](const Réglages&) { return 1.2; }},
}};

double Coûte(ENUM_DRIVER driver, bool parCanal, const Réglages& réglages) {
  const auto ligne = std::ranges::find(kRetenues, driver, &Retenue::driver);
  if (ligne == kRetenues.end() || ligne->parCanal != parCanal) return 0;
  return ligne->secondes(réglages);
}

}  // namespace

double RetenueDUnePasse(Carte& carte) {
  const Réglages& réglages = carte.LaPlateforme().réglages;
  double secondes = Coûte(carte.Driver_enm(), false, réglages);
  for (const FonctionRef& bloc : carte.LesFonctions()) {
    for (const CanalRef& canal : bloc->LesCanaux()) {
      secondes += Coûte(canal->Driver(), true, réglages);
    }
  }
  return secondes;
}

}  // namespace zuma
