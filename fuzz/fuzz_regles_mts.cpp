// Ruler frames and filters on any bytes: positions stay within 24 bits, and a filter never gives a
// position that neither the frame nor the memory held.
#include "boards/regles_mts.h"
#include "fuzz/entree.h"

using namespace zuma;
using namespace zuma::regles_mts;

namespace {

bool Plausible(std::int32_t position) {
  return position >= -8388607 && position <= 8388607;
}

bool EstUneDe(std::int32_t position, std::int32_t a, std::int32_t b) {
  return position == a || position == b;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* données, std::size_t taille) {
  Entrée entrée(données, taille);
  Mémoire bloc;
  Mémoire simple;
  std::optional<Paire> précédente;
  while (!entrée.Reste().empty()) {
    TrameCAN trame{.nombre = entrée.Octet()};
    const int aimant = 1 + (trame.nombre >> 7U);
    for (std::uint8_t& octet : trame.données) octet = entrée.Octet();
    const auto lues = DécodePaire(DonnéesUtiles(trame));
    if (lues) {
      Exige(Plausible(lues->front()) && Plausible(lues->back()), "position sur 24 bits");
      bloc.q1 = bloc.c1;
      bloc.q2 = bloc.c2;
      const Mémoire avant = bloc;
      bloc.c1 = lues->front();
      bloc.c2 = lues->back();
      FiltreBloc(bloc);
      Exige(EstUneDe(bloc.c1, avant.q1, lues->front()), "bloc, aimant 1");
      Exige(EstUneDe(bloc.c2, avant.q2, lues->back()), "bloc, aimant 2");
      const Mémoire stockée = simple;
      const auto prise = FiltreSimple(simple, *lues, aimant);
      Exige(EstUneDe(simple.c1, stockée.c1, lues->front()), "simple, aimant 1");
      Exige(EstUneDe(simple.c2, stockée.c2, lues->back()), "simple, aimant 2");
      Exige(!prise || *prise != 0, "0 n'est pas une position");
    }
    Exige(Plausible(Lecture3(précédente, lues)), "lecture 3");
    (void)Lecture2moins1(précédente, lues);
    précédente = lues;
  }
  try {
    (void)OctetsDeSérie({reinterpret_cast<const char*>(données), taille});
    Exige(taille == 8, "numéro de série");
  } catch (const Echec&) {
  }
  return 0;
}
