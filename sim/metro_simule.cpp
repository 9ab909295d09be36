#include "sim/metro_simule.h"

#include <array>
#include <cstdio>

#include "sim/journal_borne.h"

namespace zuma::sim {

void METROSimulé::Reçoit(std::string_view octets, LigneSérie& ligne) {
  Note(entrée_, octets);
  for (auto fin = entrée_.find("\r\n"); fin != Octets::npos; fin = entrée_.find("\r\n")) {
    const std::string demande = entrée_.substr(0, fin);
    entrée_.erase(0, fin + 2);
    Note(demandes, demande);
    if (!demande.empty() && !sourde) Répond(demande, ligne);
  }
}

void METROSimulé::Répond(const std::string& demande, LigneSérie& ligne) {
  const int numéro = demande.front() - '0';
  if (demande.size() == 2) {
    actives[numéro] = demande.back() == 'E';
    return;
  }
  const auto jauge = jauges.find(numéro);
  Octets réponse;
  if (jauge != jauges.end()) {
    réponse = Ligne(numéro, "MW", Champ(numéro, jauge->second));
  } else if (refuse) {
    réponse = Ligne(numéro, "ER", Octets(10, '0'));
  }
  if (!réponse.empty() && !suite.empty()) réponse += suite + "\r\n";
  ligne.Emet(réponse, latence);
}

Octets METROSimulé::Champ(int numéro, double valeur) const {
  const auto forcée = valeursForcées.find(numéro);
  if (forcée != valeursForcées.end()) return forcée->second;
  std::array<char, 16> texte{};
  std::snprintf(texte.data(), texte.size(), "%+010.4f", valeur);
  return texte.data();
}

// Behind a multiplexer a gauge that is there has a blank at character 4.
Octets METROSimulé::Ligne(int numéro, const char* code, const Octets& champ) const {
  const Octets nombre = std::to_string(numéro);
  if (!multiplexeur_) return nombre + " " + code + " " + champ + " mm    \r\n";
  const bool mesure = jauges.contains(numéro);
  return nombre + code + (mesure ? " " : "?") + Octets(9, '0') + champ + " mm \r\n";
}

}  // namespace zuma::sim
