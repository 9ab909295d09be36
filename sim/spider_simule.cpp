#include "sim/spider_simule.h"

#include <algorithm>

namespace zuma::sim {
namespace {

constexpr std::int32_t kRéussi = 0;
constexpr std::int32_t kEchec = -1;

struct Réglage {
  std::int32_t numéro;
  float VoieSpider::* champ;
};
constexpr std::array<Réglage, 3> kRéglages{{
    {BibliothèqueSpider::kEtat, &VoieSpider::état},
    {BibliothèqueSpider::kType, &VoieSpider::type},
    {BibliothèqueSpider::kMesure, &VoieSpider::mesure},
}};

VoieSpider& VoieDe(ChaîneSpider& chaîne, std::int32_t canal) {
  const auto rang = static_cast<std::size_t>(canal);
  constexpr std::size_t kVoies = BibliothèqueSpider::kCanauxParAppareil;
  return chaîne.at(rang / kVoies).at(rang % kVoies);
}

}  // namespace

VoieSpider& SpiderSimulé::Voie(std::int32_t port, std::int32_t canal) {
  return VoieDe(chaînes_.at(port), canal);
}

VoieSpider* SpiderSimulé::Trouve(std::int32_t canal) noexcept {
  if (muet || chaîne_ == nullptr || canal < 0) return nullptr;
  const auto voies = static_cast<std::int32_t>(chaîne_->size()) * kCanauxParAppareil;
  return canal < voies ? &VoieDe(*chaîne_, canal) : nullptr;
}

template <class Travail>
std::int32_t SpiderSimulé::PourChaque(std::span<const std::int32_t> canaux, std::int32_t nombre,
                                      Travail&& travail) {
  std::int32_t résultat = muet || chaîne_ == nullptr ? kEchec : kRéussi;
  for (const std::int32_t canal : canaux.first(static_cast<std::size_t>(nombre))) {
    if (VoieSpider* voie = Trouve(canal)) {
      travail(*voie);
    } else {
      résultat = kEchec;
    }
  }
  return résultat;
}

std::int32_t SpiderSimulé::S8_InitAll(std::int32_t port, std::int32_t) {
  chaîne_ = nullptr;
  port_ = port;
  const auto chaîne = chaînes_.find(port);
  if (muet || chaîne == chaînes_.end() || chaîne->second.empty()) return kEchec;
  chaîne_ = &chaîne->second;
  return kRéussi;
}

std::int32_t SpiderSimulé::S8_GetDevSettings(std::int32_t réglage, std::int32_t& nombre) {
  if (muet || chaîne_ == nullptr || réglage != 1) return kEchec;
  nombre = annoncées.value_or(static_cast<std::int32_t>(chaîne_->size()) * kCanauxParAppareil);
  return kRéussi;
}

std::int32_t SpiderSimulé::S8_GetChanSettings(std::int32_t canal, std::int32_t réglage,
                                              float& valeur) {
  const VoieSpider* voie = Trouve(canal);
  const auto connu = std::ranges::find(kRéglages, réglage, &Réglage::numéro);
  if (voie == nullptr || connu == kRéglages.end()) return kEchec;
  valeur = voie->*connu->champ;
  return kRéussi;
}

std::int32_t SpiderSimulé::S8_ACQSetup(std::span<const std::int32_t> canaux, std::int32_t nombre) {
  if (chaîne_ != nullptr) {
    for (AppareilSpider& appareil : *chaîne_) {
      for (VoieSpider& voie : appareil) voie.choisie = false;
    }
  }
  return PourChaque(canaux, nombre, [](VoieSpider& voie) { voie.choisie = true; });
}

std::int32_t SpiderSimulé::S8_TareSetup(std::span<const std::int32_t> canaux, std::int32_t nombre) {
  return PourChaque(canaux, nombre, [](VoieSpider& voie) { voie.tare = voie.grandeur; });
}

std::int32_t SpiderSimulé::S8_MeasOneVal() {
  if (muet || chaîne_ == nullptr) return kEchec;
  ++mesures;
  dernièreMesure = horloge_.Maintenant();
  horloge_.Avance(duréeMesure);
  for (AppareilSpider& appareil : *chaîne_) {
    for (VoieSpider& voie : appareil) {
      if (voie.choisie) voie.mesure = static_cast<float>(voie.grandeur - voie.tare);
    }
  }
  return kRéussi;
}

void SpiderSimulé::S8_CloseDevice() noexcept {
  chaîne_ = nullptr;
}

}  // namespace zuma::sim
