#pragma once

#include <map>
#include <string>
#include <vector>

#include "platform/liaison_serie.h"
#include "platform/linux/port_serie.h"
#include "platform/port_regle.h"

namespace zuma::linux_ {

/// Names of the serial devices of the machine: those with a stable name first
/// (/dev/serial/by-id), then the numbered ones.
[[nodiscard]] std::vector<std::string> PortsDeLaMachine();

/// Which device a port number of the configuration stands for. Without an entry, port n is
/// /dev/ttyS(n-1).
using CarteDesPorts = std::map<std::int32_t, std::string>;

/// `ZED_LiaisonSerie` on a real device.
class LiaisonSérieLinux : public ZED_LiaisonSerie {
 public:
  /// A closed link; `ports` outlives it.
  explicit LiaisonSérieLinux(const CarteDesPorts& ports) : ports_(ports) {}

  void PortSérie(std::int32_t numéro) override { numéro_ = numéro; }
  void VitesseSérie(std::int32_t bauds) override { réglages_.vitesse = bauds; }
  [[nodiscard]] std::int32_t VitesseSérie() const override { return réglages_.vitesse; }
  void ParitéSérie(std::int32_t code) override { réglages_.parité = code; }
  void BitsDeDonnées(std::int32_t bits) override { réglages_.bits = bits; }
  void BitsDeStop(std::int32_t code) override { réglages_.stop = code; }
  [[nodiscard]] std::int32_t EtatPort() const override { return port_.Ouvert() ? 1 : 0; }
  void OuvrePort() override;
  void FermePort() noexcept override { port_.Ferme(); }
  [[nodiscard]] Octets LitTampon(std::optional<std::int32_t> nombre) override {
    return port_.Lit(nombre.value_or(-1));
  }
  void EcritPort(std::string_view octets) override { port_.Ecrit(octets); }
  [[nodiscard]] std::int32_t OctetsReçus() const override { return port_.EnAttente(); }

 private:
  const CarteDesPorts& ports_;
  std::int32_t numéro_ = 0;
  RéglagesPort réglages_;
  mutable PortSérieLinux port_;  // reading the count may find the device gone
};

/// `PortInstrument` on a real device.
class PortInstrumentLinux : public PortRéglé {
 public:
  /// A closed port; `ports` outlives it.
  explicit PortInstrumentLinux(const CarteDesPorts& ports) : ports_(ports) {}

  using PortRéglé::PortOuvert;
  [[nodiscard]] bool PortOuvert() const override { return port_.Ouvert(); }
  [[nodiscard]] bool PortExiste() const override;
  [[nodiscard]] std::int32_t OctetsEnAttente() const override { return port_.EnAttente(); }
  [[nodiscard]] Octets LitEntrée(std::optional<std::int32_t> nombre) override {
    return port_.Lit(nombre.value_or(-1));
  }
  void EcritSortie(std::string_view octets) override;
  [[nodiscard]] std::vector<std::string> ListePorts() const override { return PortsDeLaMachine(); }

 protected:
  [[nodiscard]] bool Ouvre() override;
  void Ferme() noexcept override { port_.Ferme(); }
  void Vide() override { port_.Vide(); }
  void Prend(RéglagesInstrument& réglages) override;

 private:
  const CarteDesPorts& ports_;
  std::string chemin_;  ///< of the device that the settings name
  mutable PortSérieLinux port_;
};

/// Makes real links.
class FabriqueLiaisonsLinux : public FabriqueLiaisons {
 public:
  /// Links of these devices; the factory outlives them.
  explicit FabriqueLiaisonsLinux(CarteDesPorts ports = {}) : ports_(std::move(ports)) {}
  [[nodiscard]] Ref<ZED_LiaisonSerie> CréeLiaison() override {
    return Crée<LiaisonSérieLinux>(ports_);
  }
  [[nodiscard]] Ref<PortInstrument> CréePort() override {
    return Crée<PortInstrumentLinux>(ports_);
  }

 private:
  CarteDesPorts ports_;
};

}  // namespace zuma::linux_
