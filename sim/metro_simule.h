#pragma once

#include <map>
#include <string>
#include <vector>

#include "sim/horloge_virtuelle.h"
#include "sim/ligne_serie.h"

namespace zuma::sim {

/// METRO gauges on one line: each is asked by its number on a line of its own, "nE" and "nD" enable
/// and disable it. A measure is a line of at least 22 characters, or 27 behind a multiplexer.
class METROSimulé : public AppareilSérie {
 public:
  /// No gauge yet; `multiplexeur` puts them behind one.
  METROSimulé(HorlogeVirtuelle& horloge, bool multiplexeur)
      : AppareilSérie(horloge), multiplexeur_(multiplexeur) {}

  void Reçoit(std::string_view octets, LigneSérie& ligne) override;

  std::map<int, double> jauges;          ///< by number, in millimetres
  std::map<int, Octets> valeursForcées;  ///< 10 characters in place of a value
  std::string suite;                     ///< line behind each measure, when not empty
  bool refuse = false;                   ///< an absent gauge is answered for, with an error
  bool sourde = false;                   ///< asked in vain
  double latence = 20'000;               ///< microseconds before an answer
  std::vector<std::string> demandes;     ///< lines received, the last of them
  std::map<int, bool> actives;           ///< enabled gauges

 private:
  [[nodiscard]] Octets Ligne(int numéro, const char* code, const Octets& champ) const;
  [[nodiscard]] Octets Champ(int numéro, double valeur) const;
  void Répond(const std::string& demande, LigneSérie& ligne);

  bool multiplexeur_;
  Octets entrée_;
};

}  // namespace zuma::sim
