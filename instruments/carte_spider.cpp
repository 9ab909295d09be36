// The measuring amplifier as a board.
#include "instruments/class_spider.h"
#include "instruments/instrument.h"
#include "instruments/operations.h"

namespace zuma::instruments {
namespace {

void Démarre(Carte& carte) {
  De<ClassSpider>(carte).Initialise(carte.Adresse());
}

// Analog input n is channel n + 1 of the amplifier. A negative number is told once the other
// channels have their value.
void Rafraîchit(Carte& carte) {
  auto& spider = De<ClassSpider>(carte);
  spider.Refresh();
  std::int32_t àVérifier = 1;
  for (const FonctionRef& bloc : carte.LesFonctions()) {
    if (bloc->TypeDeFonction() != ENUM_TYPE_FONCTION::FctEntréesAnalogiques) continue;
    for (const CanalRef& canal : bloc->LesCanaux()) {
      const std::int32_t index = canal->NuméroCanal() + 1;
      if (index >= 1) {
        canal->TientValeurCanal(spider.ValeurCanal(index));
        if (spider.EstLu(index)) canal->DateLaLecture();
      } else {
        àVérifier = index;
      }
    }
  }
  (void)spider.ValeurCanal(àVérifier);
}

}  // namespace

// The refresh pass serves this board block by block and never refreshes the board itself: its
// channels move at the frame's start, at a stop and when the host calls `Carte.MetàJour`. It must
// stay so: the host settles when a pass may wait for a conversion.
const OpérationsCarte kSpider{.démarre = &Démarre, .rafraîchit = &Rafraîchit};

}  // namespace zuma::instruments
