#include "core/suivi_des_echecs.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace zuma {
namespace {

constexpr double kCalme = 10;         // seconds
constexpr std::size_t kAuPlus = 256;  // failures at a time; more are told each time
constexpr std::uint64_t kIsolé = 1;

}  // namespace

bool SuiviDesEchecs::Répète(const Signature& signature, double heure) {
  const auto suite = std::ranges::find(suites_, signature, &Suite::signature);
  if (suite == suites_.end()) return false;
  suite->dernier = heure;
  ++suite->nombre;
  return true;
}

void SuiviDesEchecs::Retient(const Signature& signature, double heure, const std::string& message,
                             const Ref<ZED_Erreur>& registre) {
  if (suites_.size() >= kAuPlus) return;
  suites_.push_back({signature, message, registre, heure, heure, kIsolé});
}

void SuiviDesEchecs::Examine(double heure) {
  const auto finie = [heure](const Suite& suite) { return heure - suite.dernier > kCalme; };
  for (const Suite& suite : suites_) {
    if (finie(suite) && suite.nombre > kIsolé) DitLaFin(suite);
  }
  std::erase_if(suites_, finie);
}

void SuiviDesEchecs::DitLaFin(const Suite& suite) {
  std::array<char, 64> durée{};
  std::snprintf(durée.data(), durée.size(), "%.1f s", suite.dernier - suite.début);
  suite.registre->AjouteErreur("Plus d'échec depuis 10 s, après " + std::to_string(suite.nombre) +
                                   " en " + durée.data() + " : " + suite.message,
                               TableVariables(1));
}

}  // namespace zuma
