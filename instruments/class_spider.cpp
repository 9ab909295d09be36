#include "instruments/class_spider.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>

namespace zuma {
namespace {

using Lib = BibliothèqueSpider;

constexpr std::int32_t kMode = 1;
constexpr std::int32_t kCanauxConnus = 1;  // setting of the chain: channels that answer
constexpr double kPériode = 20'000;        // microseconds
constexpr float kEtatHorsService = 5050;

// Amplifiers that give a measure.
constexpr std::array<float, 15> kTypesMesurés{350, 351, 352, 420, 421, 450, 451, 452,
                                              453, 454, 455, 456, 501, 502, 503};

}  // namespace

double ClassSpider::ValeurCanal(std::int32_t IndexCanal_lng) const {
  if (IndexCanal_lng > NombreCanauxDisponible_) return 0;
  if (IndexCanal_lng < 1) {
    throw Echec(Numéro::IndiceHorsPlage, DescriptionDEchec(Numéro::IndiceHorsPlage) + " : canal " +
                                             std::to_string(IndexCanal_lng) +
                                             " de l'amplificateur, 1 ou plus attendu");
  }
  return valeurs_[static_cast<std::size_t>(IndexCanal_lng) - 1];
}

bool ClassSpider::EstLu(std::int32_t IndexCanal_lng) const noexcept {
  const auto rang = static_cast<std::size_t>(IndexCanal_lng) - 1;
  return rang < lues_.size() && lues_[rang];
}

// One whose settings cannot be read is of no known type, and is not measured.
bool ClassSpider::EstMesuré(std::int32_t canal) {
  float type = 0;
  float état = 0;
  (void)plateforme_.spider->S8_GetChanSettings(canal, Lib::kType, type);
  (void)plateforme_.spider->S8_GetChanSettings(canal, Lib::kEtat, état);
  return std::ranges::find(kTypesMesurés, type) != kTypesMesurés.end() && état != kEtatHorsService;
}

// Ten channels a device: those of a device that did not answer in full are left out.
void ClassSpider::Initialise(std::int32_t LePort_lng) {
  Lib& lib = *plateforme_.spider;
  NombreCanauxDisponible_ = 0;
  (void)lib.S8_InitAll(LePort_lng, kMode);
  std::int32_t connus = 0;
  (void)lib.S8_GetDevSettings(kCanauxConnus, connus);
  if (connus >= 1) {
    const std::int32_t nombre = connus / Lib::kCanauxParAppareil * Lib::kCanauxParAppareil;
    std::vector<std::int32_t> mesurés;
    for (std::int32_t canal = 0; canal < nombre; ++canal) {
      if (EstMesuré(canal)) mesurés.push_back(canal);
    }
    (void)lib.S8_ACQSetup(mesurés, static_cast<std::int32_t>(mesurés.size()));
    valeurs_.assign(static_cast<std::size_t>(nombre), 0);
    lues_.assign(static_cast<std::size_t>(nombre), false);
    NombreCanauxDisponible_ = nombre;
  }
  prochaineLecture_ = TimerExact_->LitMicrosecondes() + kPériode;
}

void ClassSpider::Refresh() {
  if (NombreCanauxDisponible_ <= 0 || TimerExact_->LitMicrosecondes() <= prochaineLecture_) return;
  const bool mesurés = plateforme_.spider->S8_MeasOneVal() == Lib::kRéussi;
  std::int32_t canal = 0;
  for (float& valeur : valeurs_) {
    float lue = valeur;
    const auto échec = plateforme_.spider->S8_GetChanSettings(canal, Lib::kMesure, lue);
    const bool bonne = échec == Lib::kRéussi && EstUneMesure(lue);
    if (bonne) valeur = lue;
    lues_[static_cast<std::size_t>(canal++)] = mesurés && bonne;
  }
  prochaineLecture_ += kPériode;
}

}  // namespace zuma
