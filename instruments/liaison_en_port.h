#pragma once

#include <utility>

#include "platform/liaison_serie.h"
#include "platform/reglages_port.h"

namespace zuma {

/// The serial link of a board as the port of an instrument. What fails on the link is silence on
/// the port: a port that will not open stays closed, and one that is lost while it is read is
/// closed, so that its instrument opens it anew.
class LiaisonEnPort : public PortInstrument {
 public:
  /// `réglages`: what the link was or will be set up with, for those who ask.
  explicit LiaisonEnPort(Ref<ZED_LiaisonSerie> liaison, RéglagesInstrument réglages = {})
      : liaison_(std::move(liaison)), réglages_(std::move(réglages)) {}

  [[nodiscard]] bool PortOuvert() const override { return liaison_->EtatPort() == 1; }
  void PortOuvert(bool ouvert) override;
  /// A link is chosen by number: a device's name is not understood.
  void ConfigurePort(std::string_view réglages, bool ouvrir) override;
  /// A link tells by opening alone: a closed one is opened and closed again.
  [[nodiscard]] bool PortExiste() const override;
  [[nodiscard]] bool PortConfiguré() const override { return réglages_.valides; }
  [[nodiscard]] std::int32_t OctetsEnAttente() const override;
  [[nodiscard]] Octets LitEntrée(std::optional<std::int32_t> nombre = {}) override;
  void EcritSortie(std::string_view octets) override;
  /// Drops what was received; a link has no hold on what was sent.
  void RéinitialisePort() override { (void)LitEntrée(); }
  [[nodiscard]] std::int32_t NuméroPort() const override { return réglages_.NuméroPort(); }
  [[nodiscard]] std::int32_t Vitesse() const override { return réglages_.ligne.vitesse; }
  [[nodiscard]] std::string Parité() const override { return LettreParité(réglages_.ligne.parité); }
  [[nodiscard]] std::int32_t BitsDonnées() const override { return réglages_.ligne.bits; }
  [[nodiscard]] std::string BitsArrêt() const override { return TexteStop(réglages_.ligne.stop); }
  /// A link knows no other port.
  [[nodiscard]] std::vector<std::string> ListePorts() const override { return {}; }

 private:
  Ref<ZED_LiaisonSerie> liaison_;
  RéglagesInstrument réglages_;
};

}  // namespace zuma
