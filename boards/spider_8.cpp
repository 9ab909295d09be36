#include "boards/spider_8.h"

#include <numeric>

#include "boards/operations.h"

namespace zuma {
namespace {

constexpr std::int32_t kPort = 90;
constexpr std::int32_t kMode = 1;

// State of an amplifier that a block opened.
struct EtatSpider : EtatPilote {
  bool ouvert = false;
  std::vector<std::int32_t> Spider_Canaux;  ///< its channels, from 0, in the order of the block's
};

}  // namespace

void spider_8::Démarre(Fonction& bloc) {
  BibliothèqueSpider& lib = *bloc.LaPlateforme().spider;
  EtatSpider& état = bloc.Etat<EtatSpider>();
  (void)lib.S8_InitAll(kPort, kMode);
  état.ouvert = true;
  const std::int32_t nombre = bloc.LesCanaux().Count();
  état.Spider_Canaux.resize(static_cast<std::size_t>(nombre));
  std::iota(état.Spider_Canaux.begin(), état.Spider_Canaux.end(), 0);
  (void)lib.S8_ACQSetup(état.Spider_Canaux, nombre);
  (void)lib.S8_TareSetup(état.Spider_Canaux, nombre);
}

// A read that fails, or gives what no amplifier does, leaves the channel with the value that it
// had.
void spider_8::Rafraîchit(Fonction& bloc) {
  BibliothèqueSpider& lib = *bloc.LaPlateforme().spider;
  const auto& rangs = bloc.Etat<EtatSpider>().Spider_Canaux;
  const bool mesuré = lib.S8_MeasOneVal() == BibliothèqueSpider::kRéussi;
  std::size_t rang = 0;
  for (const CanalRef& canal : bloc.LesCanaux()) {
    if (rang >= rangs.size()) throw Echec(Numéro::IndiceHorsPlage);
    auto valeur = static_cast<float>(canal->ValeurCanal());
    const auto échec = lib.S8_GetChanSettings(rangs[rang++], BibliothèqueSpider::kMesure, valeur);
    if (échec != BibliothèqueSpider::kRéussi || !EstUneMesure(valeur)) continue;
    canal->TientValeurCanal(valeur);
    if (mesuré) canal->DateLaLecture();
  }
}

void spider_8::Termine(Fonction& bloc) noexcept {
  EtatSpider* const état = bloc.EtatOuRien<EtatSpider>();
  if (état == nullptr || !état->ouvert) return;
  état->ouvert = false;
  bloc.LaPlateforme().spider->S8_CloseDevice();
  bloc.LaPlateforme().spider->S8_ClosePort();
}

namespace pilotes {

// A discharge leaves the amplifier open: it is closed at the block's end alone.
const OpérationsPilote kSpider8{.démarreBloc = &spider_8::Démarre,
                                .rafraîchitBloc = &spider_8::Rafraîchit,
                                .termineBloc = &spider_8::Termine};

}  // namespace pilotes
}  // namespace zuma
