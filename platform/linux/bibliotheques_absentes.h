#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <utility>

#include "platform/collaborateurs.h"
#include "platform/orbit.h"
#include "platform/spider.h"

namespace zuma::linux_ {

/// What the stand-ins of libraries that this system does not have share: the first call that needs
/// one is told in the error record, with what to do.
class BibliothèqueAbsente {
 protected:
  /// `quoi` names the devices and `interface` the class that a host would bring; both are literals.
  BibliothèqueAbsente(Ref<ZED_Erreur> registre, std::string_view quoi, std::string_view interface)
      : registre_(std::move(registre)), quoi_(quoi), interface_(interface) {}
  /// Tells it once; gives `réponse`.
  std::int32_t Manque(std::int32_t réponse);

 private:
  Ref<ZED_Erreur> registre_;
  std::string_view quoi_;
  std::string_view interface_;
  bool dit_ = false;
};

/// LVDT network without its library: no module is ever found.
class OrbitAbsent final : public RéseauOrbit, private BibliothèqueAbsente {
 public:
  /// Tells what is missing in `registre`.
  explicit OrbitAbsent(Ref<ZED_Erreur> registre);
  [[nodiscard]] std::int32_t ConnectToOrbitNetworks() override { return Manque(0); }
  void DisconnectFromOrbitNetworks() noexcept override {}
  std::int32_t OrbitRst(std::int32_t) override { return Manque(kEchecDeLecture); }
  [[nodiscard]] std::int32_t OrbitSetaddr(std::int32_t, std::int32_t, std::string_view) override {
    return Manque(kEchecDeLecture);
  }
  [[nodiscard]] std::int32_t OrbitRead1(std::int32_t, std::int32_t, std::int32_t&) override {
    return Manque(kEchecDeLecture);
  }
};

/// Measuring amplifiers without their library: no device is ever found, no value changes.
class SpiderAbsent final : public BibliothèqueSpider, private BibliothèqueAbsente {
 public:
  /// Tells what is missing in `registre`.
  explicit SpiderAbsent(Ref<ZED_Erreur> registre);
  std::int32_t S8_InitAll(std::int32_t, std::int32_t) override { return Manque(kEchec); }
  std::int32_t S8_GetDevSettings(std::int32_t, std::int32_t& nombre) override {
    nombre = 0;
    return Manque(kEchec);
  }
  std::int32_t S8_GetChanSettings(std::int32_t, std::int32_t, float&) override {
    return Manque(kEchec);
  }
  std::int32_t S8_ACQSetup(std::span<const std::int32_t>, std::int32_t) override {
    return Manque(kEchec);
  }
  std::int32_t S8_TareSetup(std::span<const std::int32_t>, std::int32_t) override {
    return Manque(kEchec);
  }
  std::int32_t S8_MeasOneVal() override { return Manque(kEchec); }
  void S8_CloseDevice() noexcept override {}
  void S8_ClosePort() noexcept override {}

 private:
  static constexpr std::int32_t kEchec = -1;
};

}  // namespace zuma::linux_
