#include "base/suivi_des_echecs.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <functional>
#include <iterator>

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
  Dit("Plus d'échec depuis 10 s, après ", [heure](const Suite& suite) {
    return heure - suite.dernier > kCalme || heure < suite.dernier;
  });
}

void SuiviDesEchecs::Conclut(const Ref<ZED_Erreur>& registre) {
  Dit("Echec qui durait encore, après ",
      [&](const Suite& suite) { return suite.registre == registre; });
}

// Taken out first: a record may do anything when told, and fail again.
template <class Finie>
void SuiviDesEchecs::Dit(std::string_view début, Finie&& finie) {
  const auto reste = std::ranges::stable_partition(suites_, std::not_fn(finie));
  const std::vector<Suite> finies(std::make_move_iterator(reste.begin()),
                                  std::make_move_iterator(reste.end()));
  suites_.erase(reste.begin(), reste.end());
  for (const Suite& suite : finies) {
    if (suite.nombre == kIsolé) continue;
    std::array<char, 64> durée{};
    std::snprintf(durée.data(), durée.size(), "%.1f s", suite.dernier - suite.début);
    suite.registre->AjouteErreur(std::string(début) + std::to_string(suite.nombre) + " en " +
                                     durée.data() + " : " + suite.message,
                                 TableVariables(1));
  }
}

}  // namespace zuma
