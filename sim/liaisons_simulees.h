#pragma once

#include <map>
#include <span>
#include <string>
#include <vector>

#include "platform/liaison_serie.h"
#include "platform/reglages_port.h"
#include "sim/ligne_serie.h"

namespace zuma::sim {

/// The simulated ports by number.
using Lignes = std::map<std::int32_t, LigneSérie>;

/// `ZED_LiaisonSerie` on the simulated lines: the port number chooses the device.
class LiaisonSimulée : public ZED_LiaisonSerie {
 public:
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

/// `PortInstrument` on the simulated lines. A line that is unplugged is lost at once and found
/// again when it is plugged back.
class PortSimulé : public PortInstrument {
 public:
  explicit PortSimulé(Lignes& lignes) : lignes_(lignes) {}

  [[nodiscard]] bool PortOuvert() const override { return ouvert_ && Ligne() != nullptr; }
  void PortOuvert(bool ouvert) override;
  void ConfigurePort(std::string_view réglages, bool ouvrir) override;
  [[nodiscard]] bool PortExiste() const override { return Ligne() != nullptr; }
  [[nodiscard]] bool PortConfiguré() const override { return réglages_.valides && !manqué_; }
  [[nodiscard]] std::int32_t OctetsEnAttente() const override;
  [[nodiscard]] Octets LitEntrée(std::optional<std::int32_t> nombre) override;
  void EcritSortie(std::string_view octets) override;
  void RéinitialisePort() override;
  [[nodiscard]] std::int32_t NuméroPort() const override { return réglages_.NuméroPort(); }
  [[nodiscard]] std::int32_t Vitesse() const override { return réglages_.ligne.vitesse; }
  [[nodiscard]] std::string Parité() const override { return LettreParité(réglages_.ligne.parité); }
  [[nodiscard]] std::int32_t BitsDonnées() const override { return réglages_.ligne.bits; }
  [[nodiscard]] std::string BitsArrêt() const override { return TexteStop(réglages_.ligne.stop); }
  /// Numbers of the ports that are there.
  [[nodiscard]] std::vector<std::string> ListePorts() const override;

 private:
  [[nodiscard]] LigneSérie* Ligne() const;
  void Relève() const;

  Lignes& lignes_;
  RéglagesInstrument réglages_;
  bool ouvert_ = false;
  bool manqué_ = false;  ///< to be open, and the last try failed
  mutable Octets tampon_;
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
  /// Puts the faults of that instant, and no other, on all lines.
  void Applique(std::span<const PannePrévue> pannes, double secondes);

 private:
  Lignes lignes_;
};

}  // namespace zuma::sim
