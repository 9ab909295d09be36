#include "sim/metro_simule.h"

#include <array>
#include <cstdio>
#include <utility>

namespace zuma::sim {

void METROSimulé::Reçoit(std::string_view octets, std::int32_t) {
  entrée_ += octets;
  for (auto fin = entrée_.find("\r\n"); fin != Octets::npos; fin = entrée_.find("\r\n")) {
    const std::string demande = entrée_.substr(0, fin);
    entrée_.erase(0, fin + 2);
    demandes.push_back(demande);
    if (!demande.empty() && !sourde) Répond(demande);
  }
}

void METROSimulé::Répond(const std::string& demande) {
  const int numéro = demande.front() - '0';
  if (demande.size() == 2) {
    actives[numéro] = demande.back() == 'E';
    return;
  }
  const auto jauge = jauges.find(numéro);
  if (jauge == jauges.end()) return;
  sortie_ += Mesure(numéro, jauge->second) + "\r\n";
  if (!suite.empty()) sortie_ += suite + "\r\n";
  heure_ = horloge_.Maintenant() + latence;
}

Octets METROSimulé::Mesure(int numéro, double valeur) const {
  std::array<char, 16> texte{};
  std::snprintf(texte.data(), texte.size(), "%+010.4f", valeur);
  const auto forcée = valeursForcées.find(numéro);
  const Octets champ = forcée == valeursForcées.end() ? Octets(texte.data()) : forcée->second;
  const Octets nombre = std::to_string(numéro);
  return multiplexeur_ ? nombre + "MW " + Octets(9, '0') + champ + " mm "
                       : nombre + " MW " + champ + " mm    ";
}

Octets METROSimulé::Emet() {
  if (horloge_.Maintenant() < heure_) return {};
  return std::exchange(sortie_, {});
}

}  // namespace zuma::sim
