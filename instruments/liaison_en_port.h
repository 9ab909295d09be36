#pragma once

#include <utility>

#include "platform/port_regle.h"

namespace zuma {

/// The serial link of a board as the port of an instrument. What fails on the link is silence on
/// the port: a port that will not open stays closed, and one that is lost while it is read is
/// closed, so that its instrument opens it anew.
class LiaisonEnPort : public PortRéglé {
 public:
  /// `réglages`: what the link was or will be set up with by its owner, for those who ask.
  explicit LiaisonEnPort(Ref<ZED_LiaisonSerie> liaison, RéglagesInstrument réglages = {})
      : PortRéglé(Valides(std::move(réglages))), liaison_(std::move(liaison)) {}

  using PortRéglé::PortOuvert;
  [[nodiscard]] bool PortOuvert() const override { return liaison_->EtatPort() == 1; }
  /// A link tells by opening alone: a closed one is opened and closed again.
  [[nodiscard]] bool PortExiste() const override;
  [[nodiscard]] std::int32_t OctetsEnAttente() const override;
  [[nodiscard]] Octets LitEntrée(std::optional<std::int32_t> nombre = {}) override;
  void EcritSortie(std::string_view octets) override;
  /// A link knows no other port.
  [[nodiscard]] std::vector<std::string> ListePorts() const override { return {}; }

 protected:
  [[nodiscard]] bool Ouvre() override;
  void Ferme() noexcept override { liaison_->FermePort(); }
  /// A link has no hold on what was sent.
  void Vide() override { (void)LitEntrée(); }
  /// A link is chosen by number: a device's name is not understood.
  void Prend(RéglagesInstrument& réglages) override;

 private:
  [[nodiscard]] static RéglagesInstrument Valides(RéglagesInstrument réglages) {
    réglages.valides = true;
    return réglages;
  }

  Ref<ZED_LiaisonSerie> liaison_;
};

}  // namespace zuma
