#pragma once

#include <string>
#include <vector>

#include "bench/lignes.h"
#include "boards/table_des_drivers.h"
#include "core/chassis.h"
#include "host/problemes.h"
#include "outils/dossier_provisoire.h"
#include "platform/linux/parametres.h"
#include "platform/linux/securite.h"
#include "platform/linux/traducteur.h"
#include "sim/machine_simulee.h"

namespace zuma::banc {

/// Shared parameters, by their index in the rows. From `kEtats` on stand those that logic inputs
/// and commands write, 64 of them.
enum Param : std::int32_t {
  kType = 1,
  kForme,
  kDiamètre,
  kUnité,
  kSection,
  kLongueur,
  kChoix,
  kDécalage,
  kActif,
  kInactif,
  kEtats,
  kDernier = kEtats + 63
};

/// A frame loaded from a database of its own and started on the simulated machine, in the host's
/// order.
class Banc {
 public:
  explicit Banc(const Lignes& lignes) : Banc(lignes.Toutes(), kChassis) {}
  /// Frame `chassis` of a whole database.
  Banc(const std::vector<linux_::LigneDeBase>& lignes, std::int32_t chassis);
  ~Banc();
  Banc(const Banc&) = delete;
  Banc& operator=(const Banc&) = delete;

  /// Reads and links another frame from the same rows: what a host's start costs before the
  /// boards are touched.
  void Charge(Chassis& chassis) const;
  [[nodiscard]] Chassis& LeChassis() { return chassis_; }
  [[nodiscard]] sim::MachineSimulée& LaMachine() { return machine_; }
  [[nodiscard]] linux_::Securite& LaSécurité() { return *sécurité_; }
  /// Time on the simulated clock, microseconds.
  [[nodiscard]] double Maintenant() const { return machine_.horloge->Maintenant(); }
  /// What the library complained of, one line each; empty when all is well.
  [[nodiscard]] std::string Plaintes() const;
  /// Terminals, once for each board.
  [[nodiscard]] const std::vector<sim::Bornes*>& LesBornes() const { return bornes_; }
  /// Moves every analog terminal a little, and a quarter of the logic lines.
  void Bouge();

 private:
  [[nodiscard]] std::string Fichier() const { return dossier_.Fichier("banc.db"); }

  std::int32_t index_;
  essai::DossierProvisoire dossier_;
  Ref<host::Recueil> recueil_ = Crée<host::Recueil>();
  sim::MachineSimulée machine_{*recueil_, CréeLesDrivers()};
  Ref<linux_::Traducteur> traducteur_ = Crée<linux_::Traducteur>();
  linux_::Parametres paramètres_;
  Ref<linux_::Securite> sécurité_ = Crée<linux_::Securite>(machine_.horloge);
  Chassis chassis_{machine_.services};
  std::vector<sim::Bornes*> bornes_;
  unsigned tour_ = 0;
};

}  // namespace zuma::banc
