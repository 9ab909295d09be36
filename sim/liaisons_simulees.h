#pragma once

#include <map>
#include <span>
#include <string>
#include <vector>

#include "platform/liaison_serie.h"
#include "platform/port_regle.h"
#include "sim/ligne_serie.h"

namespace zuma::sim {

/// The simulated ports by number.
using Lignes = std::map<std::int32_t, LigneSérie>;

/// `ZED_LiaisonSerie` on the simulated lines: the port number chooses the device.
class LiaisonSimulée : public ZED_LiaisonSerie {
 public:
  /// A closed link; `lignes` outlives it.
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
  LigneSérie& Ouverte() const;

  Lignes& lignes_;
  std::int32_t numéro_ = 0;
  std::int32_t vitesse_ = 9600;
  bool ouverte_ = false;
};

/// `PortInstrument` on the simulated lines. A line that is unplugged is lost at once and found
/// again when it is plugged back.
class PortSimulé : public PortRéglé {
 public:
  /// A closed port; `lignes` outlives it.
  explicit PortSimulé(Lignes& lignes) : lignes_(lignes) {}

  using PortRéglé::PortOuvert;
  [[nodiscard]] bool PortOuvert() const override { return ouvert_ && Ligne() != nullptr; }
  [[nodiscard]] bool PortExiste() const override { return Ligne() != nullptr; }
  [[nodiscard]] std::int32_t OctetsEnAttente() const override;
  [[nodiscard]] Octets LitEntrée(std::optional<std::int32_t> nombre) override;
  void EcritSortie(std::string_view octets) override;
  /// Numbers of the ports that are there.
  [[nodiscard]] std::vector<std::string> ListePorts() const override;

 protected:
  [[nodiscard]] bool Ouvre() override;
  void Ferme() noexcept override { ouvert_ = false; }
  void Vide() override;

 private:
  [[nodiscard]] LigneSérie* Ligne() const;
  [[nodiscard]] LigneSérie* Ouverte() const;

  Lignes& lignes_;
  bool ouvert_ = false;
};

/// Makes links to the devices attached to port numbers.
class FabriqueLiaisonsSimulée : public FabriqueLiaisons {
 public:
  /// Puts a device on a port, and gives the line, whose faults can be set at any time.
  LigneSérie& Attache(std::int32_t port, Ref<AppareilSérie> appareil);
  [[nodiscard]] Ref<ZED_LiaisonSerie> CréeLiaison() override;
  [[nodiscard]] Ref<PortInstrument> CréePort() override { return Crée<PortSimulé>(lignes_); }
  /// A line by its port; none where nothing is attached.
  [[nodiscard]] LigneSérie* Ligne(std::int32_t port);
  /// Seed of the luck of all lines.
  void Graine(std::uint32_t graine);
  /// Lets what can run do so, as found by a program that starts, where such a fault strikes.
  void MetEnMarche(std::span<const PannePrévue> pannes);
  /// Puts the faults of that instant, and no other, on all lines.
  void Applique(std::span<const PannePrévue> pannes, double secondes);

 private:
  Lignes lignes_;
  std::uint32_t graine_ = 0;
};

}  // namespace zuma::sim
