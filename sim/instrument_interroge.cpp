#include "sim/instrument_interroge.h"

#include <array>
#include <cstdio>

#include "sim/journal_borne.h"

namespace zuma::sim {
namespace {

Octets Formate(const char* format, double valeur) {
  std::array<char, 32> texte{};
  std::snprintf(texte.data(), texte.size(), format, valeur);
  return texte.data();
}

// An instrument with even parity set by hand sends bit 7 along.
Octets AvecParité(Octets octets) {
  for (std::size_t i = 0; i < octets.size(); i += 3)
    octets[i] = static_cast<char>(octets[i] | 0x80);
  return octets;
}

}  // namespace

const Langage kBalance14{
    "\x1bP", [](double valeur) { return AvecParité(Formate("%+011.3fkg \r", valeur)); }};
const Langage kComparateur10{"\x02", [](double valeur) { return Formate("%+08.3f  \r", valeur); }};
const Langage kIndicateurMSV{"\x02MSV?;\x03",
                             [](double valeur) { return Formate("%.2f g\r\n", valeur); }};

void InstrumentInterrogé::Reçoit(std::string_view octets, LigneSérie& ligne) {
  Note(reçus_, octets);
  if (reçus_.find(langage_.question) == Octets::npos) return;
  reçus_.clear();
  ligne.Emet(langage_.réponse(valeur), latence);
}

}  // namespace zuma::sim
