#pragma once

#include <vector>

#include "core/chassis.h"
#include "publication/lecture/objets.h"

namespace zuma::publication {

/// The objects of a frame, in the order of their values in a sample.
struct ObjetsDuChassis {
  /// Takes the objects that the frame has now, and keeps them alive.
  explicit ObjetsDuChassis(Chassis& chassis);
  /// How many there are: values of one sample.
  [[nodiscard]] std::size_t Nombre() const;

  ///@{
  /// One kind of objects; kinds and objects stand in the order of a sample. `canaux` are those of
  /// all boards, block by block.
  std::vector<CapteurRef> capteurs;
  std::vector<CommandeRef> commandes;
  std::vector<EntréeLogiqueRef> entrées;
  std::vector<SortieLogiqueRef> sorties;
  WatchdogRef chien;
  std::vector<CanalRef> canaux;
  ///@}
};

/// "board/block/channel"; empty for none.
[[nodiscard]] std::string NomDuCanal(const CanalRef& canal);

/// How they are at present. `sujet` brings what the host alone knows.
[[nodiscard]] ChassisPublié Décrit(const Chassis& chassis, const ObjetsDuChassis& objets,
                                   ChassisPublié sujet);

}  // namespace zuma::publication
