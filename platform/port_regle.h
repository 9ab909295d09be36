#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "platform/liaison_serie.h"
#include "platform/reglages_port.h"

namespace zuma {

/// What the ports of instruments have in common, whatever opens them: their settings, and a wish to
/// be open that outlives a try in vain. A reset goes on with that wish.
class PortRéglé : public PortInstrument {
 public:
  using PortInstrument::PortOuvert;
  void PortOuvert(bool ouvert) override;
  void ConfigurePort(std::string_view réglages, bool ouvrir) override;
  [[nodiscard]] bool PortConfiguré() const override { return réglages_.valides && !manqué_; }
  void RéinitialisePort() override;
  ///@{
  /// The settings as they are now, whether the port is open or not.
  [[nodiscard]] std::int32_t NuméroPort() const override { return réglages_.NuméroPort(); }
  [[nodiscard]] std::int32_t Vitesse() const override { return réglages_.ligne.vitesse; }
  [[nodiscard]] std::string Parité() const override { return LettreParité(réglages_.ligne.parité); }
  [[nodiscard]] std::int32_t BitsDonnées() const override { return réglages_.ligne.bits; }
  [[nodiscard]] std::string BitsArrêt() const override { return TexteStop(réglages_.ligne.stop); }
  ///@}

 protected:
  PortRéglé() = default;
  /// Starts with settings; the port stays closed until it is told to open.
  explicit PortRéglé(RéglagesInstrument réglages) : réglages_(std::move(réglages)) {}

  /// Opens the closed port with the settings; false when it does not open, nothing thrown.
  [[nodiscard]] virtual bool Ouvre() = 0;
  /// Closes the port; nothing on a closed one.
  virtual void Ferme() noexcept = 0;
  /// Drops what waits in both directions.
  virtual void Vide() = 0;
  /// The settings are new, and may be refused by their `valides`.
  virtual void Prend(RéglagesInstrument&) {}

  /// The settings as they are now.
  [[nodiscard]] const RéglagesInstrument& LesRéglages() const noexcept { return réglages_; }

 private:
  RéglagesInstrument réglages_;
  bool manqué_ = false;  ///< to be open, and the last try failed
};

}  // namespace zuma
