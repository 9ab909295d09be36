#pragma once

#include <map>

#include "platform/liaison_serie.h"
#include "sim/ligne_serie.h"

namespace zuma::sim {

/// `ZED_LiaisonSerie` on the simulated lines: the port number chooses the device.
class LiaisonSimulée : public ZED_LiaisonSerie {
 public:
  using Lignes = std::map<std::int32_t, LigneSérie>;
  explicit LiaisonSimulée(Lignes& lignes) : lignes_(lignes) {}

  void PortSérie(std::int32_t numéro) override { numéro_ = numéro; }
  void VitesseSérie(std::int32_t bauds) override { vitesse_ = bauds; }
  [[nodiscard]] std::int32_t VitesseSérie() const override { return vitesse_; }
  void ParitéSérie(std::int32_t) override {}
  void BitsDeDonnées(std::int32_t) override {}
  void BitsDeStop(std::int32_t) override {}
  [[nodiscard]] std::int32_t EtatPort() const override { return ouverte_ ? 1 : 0; }
  void OuvrePort() override;
  void FermePort() noexcept override { ouverte_ = false; }
  [[nodiscard]] Octets LitTampon(std::optional<std::int32_t> nombre) override;
  void EcritPort(std::string_view octets) override;
  [[nodiscard]] std::int32_t OctetsReçus() const override;

 private:
  LigneSérie& Ligne() const;
  void Relève() const;

  Lignes& lignes_;
  std::int32_t numéro_ = 0;
  std::int32_t vitesse_ = 9600;
  bool ouverte_ = false;
  mutable Octets tampon_;
};

/// Makes links to the devices attached to port numbers.
class FabriqueLiaisonsSimulée : public FabriqueLiaisons {
 public:
  /// Puts a device on a port, and gives the line, whose faults can be set at any time.
  LigneSérie& Attache(std::int32_t port, Ref<AppareilSérie> appareil);
  [[nodiscard]] Ref<ZED_LiaisonSerie> CréeLiaison() override;
  /// Instruments with a port object of their own have no simulated line yet: Nothing.
  [[nodiscard]] Ref<PortInstrument> CréePort() override { return {}; }

 private:
  LiaisonSimulée::Lignes lignes_;
};

}  // namespace zuma::sim
