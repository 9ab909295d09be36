#include "base/reglages_ligne.h"

#include <algorithm>
#include <charconv>
#include <string>

#include "base/cles.h"

namespace zuma {
namespace {

struct Code {
  std::string_view texte;
  std::int32_t valeur;
};
constexpr std::array<Code, 5> kParités{{{"N", 0}, {"O", 1}, {"E", 2}, {"M", 3}, {"S", 4}}};
constexpr std::array<Code, 3> kBitsDeStop{{{"1", 1}, {"1.5", 15}, {"2", 2}}};

template <std::size_t N, class Même>
void LitCode(const std::array<Code, N>& codes, std::string_view texte, Même&& même,
             std::int32_t& destination) {
  for (const Code& code : codes) {
    if (même(code.texte, texte)) destination = code.valeur;
  }
}

// A whole number written without sign, blank or leading zero; 0 for anything else.
std::int32_t Entier(std::string_view texte) {
  std::int32_t nombre = 0;
  std::from_chars(texte.data(), texte.data() + texte.size(), nombre);
  return std::to_string(nombre) == texte ? nombre : 0;
}

void LitEntier(std::string_view texte, std::int32_t premier, std::int32_t dernier,
               std::int32_t& destination) {
  const std::int32_t nombre = Entier(texte);
  if (nombre >= premier && nombre <= dernier) destination = nombre;
}

bool LitVitesse(std::string_view texte, std::int32_t deplus, std::int32_t& vitesse) {
  const std::int32_t nombre = Entier(texte);
  const bool connue =
      nombre != 0 && (nombre == deplus || std::ranges::find(kVitessesSérie, nombre) !=
                                              std::ranges::end(kVitessesSérie));
  vitesse = connue ? nombre : kVitesseParDéfaut;
  return connue;
}

}  // namespace

void OuvreLigne(ZED_LiaisonSerie& liaison, const RéglagesLigne& réglages) {
  liaison.VitesseSérie(réglages.vitesse);
  liaison.ParitéSérie(réglages.parité);
  liaison.BitsDeDonnées(réglages.bitsDeDonnées);
  liaison.BitsDeStop(réglages.bitsDeStop);
  liaison.PortSérie(réglages.port);
  liaison.OuvrePort();
}

bool LitRéglagesLigne(std::span<const std::string_view> parties, const FormeDeLigne& forme,
                      RéglagesLigne& réglages) {
  const auto même = [&](std::string_view a, std::string_view b) {
    return forme.casseIndifférente ? MêmeClé(a, b) : a == b;
  };
  bool vitesseConnue = true;
  for (std::size_t rang = 0; rang < std::min(parties.size(), kPartiesDeLigne); ++rang) {
    const std::string_view partie = parties[rang];
    if (rang == 0) LitEntier(partie, 1, forme.dernierPort, réglages.port);
    if (rang == 1) vitesseConnue = LitVitesse(partie, forme.vitesseDePlus, réglages.vitesse);
    if (rang == 2) LitCode(kParités, partie, même, réglages.parité);
    if (rang == 3) LitEntier(partie, 4, 8, réglages.bitsDeDonnées);
    if (rang == 4) LitCode(kBitsDeStop, partie, même, réglages.bitsDeStop);
  }
  return vitesseConnue;
}

}  // namespace zuma
