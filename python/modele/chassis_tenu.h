#pragma once

#include <memory>
#include <string>
#include <utility>

#include "core/chassis.h"
#include "modele/plateforme.h"

namespace zuma::python::modele {

/// A frame that Python makes, with its own copy of the platform. It ends at rest.
class ChassisTenu {
 public:
  explicit ChassisTenu(std::shared_ptr<Machinerie> machinerie);

  /// A new one; it lasts up to its last handle.
  [[nodiscard]] static std::unique_ptr<PoignéeDe<Chassis>> Crée(const PlateformeTenue& plateforme);
  /// The one behind a handle; null for a frame that somebody else holds.
  [[nodiscard]] static ChassisTenu* De(const PoignéeDe<Chassis>& poignée) {
    return static_cast<ChassisTenu*>(poignée.LaPartOuRien());
  }

  /// Who is told of a stop.
  void Sécurité(Ref<ZED_Securite> sécurité) { sécurité_ = std::move(sécurité); }
  /// Latches the cause, and puts the outputs to rest whatever comes of it.
  void Arrête(const std::string& cause);
  /// Puts to rest what was moved, and discharges; once.
  void Décharge();
  /// The same without the interpreter's lock, for the end.
  void Finit();

 private:
  std::shared_ptr<Machinerie> machinerie_;
  Données données_;  ///< what `services_` points at, whatever Python gives the platform later
  Plateforme services_;
  Ref<ZED_Securite> sécurité_;
  std::weak_ptr<Laisse> laisse_;
  bool déchargé_ = false;
  Chassis chassis_;  // goes first
};

}  // namespace zuma::python::modele
