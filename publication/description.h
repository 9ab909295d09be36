#pragma once

#include <vector>

#include "core/chassis.h"
#include "publication/lecture/objets.h"

namespace zuma::publication {

/// The objects of a frame, in the order of their values in a sample.
struct ObjetsDuChassis {
  explicit ObjetsDuChassis(Chassis& chassis);
  [[nodiscard]] std::size_t Nombre() const;

  std::vector<CapteurRef> capteurs;
  std::vector<CommandeRef> commandes;
  std::vector<EntréeLogiqueRef> entrées;
  std::vector<SortieLogiqueRef> sorties;
  WatchdogRef chien;
  std::vector<CanalRef> canaux;
};

/// "board/block/channel"; empty for none.
[[nodiscard]] std::string NomDuCanal(const CanalRef& canal);

/// How they are at present. `sujet` brings what the host alone knows.
[[nodiscard]] ChassisPublié Décrit(const Chassis& chassis, const ObjetsDuChassis& objets,
                                   ChassisPublié sujet);

}  // namespace zuma::publication
