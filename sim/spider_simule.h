#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <vector>

#include "platform/spider.h"
#include "sim/horloge_virtuelle.h"

namespace zuma::sim {

/// One channel of a measuring amplifier.
struct VoieSpider {
  float type = 450;      ///< of its amplifier
  float état = 0;        ///< 5050 is out of order
  double grandeur = 0;   ///< at its input
  double tare = 0;       ///< taken off each measure
  float mesure = 0;      ///< last value measured
  bool choisie = false;  ///< the next measures take it
};

/// The channels of one device.
using AppareilSpider = std::array<VoieSpider, BibliothèqueSpider::kCanauxParAppareil>;

/// The devices on one port.
using ChaîneSpider = std::vector<AppareilSpider>;

/// Library of the measuring amplifiers with the chains on its ports; one of them is open at a time.
/// A tare takes what stands at the input away from every later measure.
class SpiderSimulé : public BibliothèqueSpider {
 public:
  /// No chain on any port yet.
  explicit SpiderSimulé(HorlogeVirtuelle& horloge) : horloge_(horloge) {}

  /// Chain on a port, without device on first use.
  [[nodiscard]] ChaîneSpider& Chaîne(std::int32_t port) { return chaînes_[port]; }
  /// Channel of a chain, from 0; its device must be there.
  [[nodiscard]] VoieSpider& Voie(std::int32_t port, std::int32_t canal);

  std::int32_t S8_InitAll(std::int32_t port, std::int32_t mode) override;
  std::int32_t S8_GetDevSettings(std::int32_t réglage, std::int32_t& nombre) override;
  std::int32_t S8_GetChanSettings(std::int32_t canal, std::int32_t réglage, float& valeur) override;
  std::int32_t S8_ACQSetup(std::span<const std::int32_t> canaux, std::int32_t nombre) override;
  std::int32_t S8_TareSetup(std::span<const std::int32_t> canaux, std::int32_t nombre) override;
  std::int32_t S8_MeasOneVal() override;
  void S8_CloseDevice() noexcept override;
  void S8_ClosePort() noexcept override { port_.reset(); }

  bool muet = false;                      ///< switched off: every call fails
  std::optional<std::int32_t> annoncées;  ///< channels told in place of those that are there
  double duréeMesure = 1000;              ///< microseconds
  std::optional<double> dernièreMesure;   ///< when it began
  int mesures = 0;                        ///< since the start
  /// A chain is open.
  [[nodiscard]] bool AppareilOuvert() const noexcept { return chaîne_ != nullptr; }
  /// The port that is open; none.
  [[nodiscard]] std::optional<std::int32_t> PortOuvert() const noexcept { return port_; }

 private:
  [[nodiscard]] VoieSpider* Trouve(std::int32_t canal) noexcept;
  template <class Travail>
  std::int32_t PourChaque(std::span<const std::int32_t> canaux, std::int32_t nombre,
                          Travail&& travail);

  HorlogeVirtuelle& horloge_;
  std::map<std::int32_t, ChaîneSpider> chaînes_;
  ChaîneSpider* chaîne_ = nullptr;
  std::optional<std::int32_t> port_;
};

}  // namespace zuma::sim
