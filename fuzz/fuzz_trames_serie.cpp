// Serial decoders on any bytes: they end, give numbers within their frames' reach, and consume no
// more than complete lines.
#include <cmath>

#include "boards/trames_serie.h"
#include "fuzz/entree.h"

using namespace zuma;
using namespace zuma::trames_serie;

namespace {

constexpr double kGardée = 7;

void Balances(std::string_view texte) {
  // Five places of four bits each.
  Exige(std::fabs(DecortiqueBuffer_dbl(texte, kGardée)) <= 15 * 11111, "LRPC");
  Exige(texte.size() >= kLongueurLRPC || DecortiqueBuffer_dbl(texte, kGardée) == kGardée,
        "LRPC sans trame");
  Exige(std::fabs(DecortiqueBufferDEXAL_dbl(texte, kGardée)) <= 999999, "DEXAL");
  Octets reste(texte);
  double valeur = 0;
  (void)DecortiqueJADEVER(reste, valeur, kGardée);
  Exige(std::isfinite(valeur), "JADEVER");
  Exige(texte.ends_with(reste) && reste.find("\r\n") == Octets::npos, "JADEVER reste");
}

void Jauges(std::string_view texte, std::int32_t actif) {
  Octets reste(texte);
  TableMETRO table;
  JaugesLues lues;
  const bool fini = Decortique_METRO(reste, actif, table, lues);
  Exige(!fini || table[static_cast<std::size_t>(actif)].has_value(), "METRO sans valeur");
  Exige(!fini || !reste.empty(), "METRO fini sans suite");
  Exige(texte.ends_with(reste), "METRO reste");
  reste = texte;
  std::int32_t canal = -1;
  double valeur = 0;
  const bool répondu = Decortique_METRO_MUX_2_4_8(reste, canal, valeur);
  Exige(!répondu || (canal >= 0 && canal <= 9 && std::isfinite(valeur)), "MUX");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* données, std::size_t taille) {
  Entrée entrée(données, taille);
  const std::int32_t actif = entrée.Octet() % 10;
  Balances(entrée.Reste());
  Jauges(entrée.Reste(), actif);
  return 0;
}
