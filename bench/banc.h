#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "bench/lignes.h"
#include "core/chassis.h"
#include "host/problemes.h"
#include "outils/dossier_provisoire.h"
#include "platform/linux/base_sqlite.h"
#include "platform/linux/parametres.h"
#include "platform/linux/securite.h"
#include "platform/linux/traducteur.h"
#include "sim/machine_simulee.h"

namespace zuma::banc {

/// A database file of these rows, gone with the object.
class Base {
 public:
  explicit Base(const Lignes& lignes) { linux_::CréeBase(Chemin(), lignes.Toutes()); }
  [[nodiscard]] std::string Chemin() const { return dossier_.Fichier("banc.db"); }

 private:
  essai::DossierProvisoire dossier_;
};

/// Parameters of the benches, by their index in the rows.
namespace paramètre {
inline constexpr std::int32_t kType = 1;
inline constexpr std::int32_t kForme = 2;
inline constexpr std::int32_t kDiamètre = 3;
inline constexpr std::int32_t kUnité = 4;
inline constexpr std::int32_t kSection = 5;
inline constexpr std::int32_t kLongueur = 6;
inline constexpr std::int32_t kChoix = 7;
inline constexpr std::int32_t kDécalage = 8;
inline constexpr std::int32_t kActif = 9;
inline constexpr std::int32_t kInactif = 10;
inline constexpr std::int32_t kEtat = 100;    ///< first of those that logic inputs write
inline constexpr std::int32_t kVoulue = 200;  ///< first of those that commands write
inline constexpr std::int32_t kNombreEcrits = 32;
}  // namespace paramètre

[[nodiscard]] linux_::Parametres ParamètresDeBanc();

/// A frame loaded from its database and started on the simulated machine, in the host's order.
class Banc {
 public:
  explicit Banc(const Base& base);
  ~Banc();
  Banc(const Banc&) = delete;
  Banc& operator=(const Banc&) = delete;

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
  Ref<host::Recueil> recueil_ = Crée<host::Recueil>();
  sim::MachineSimulée machine_{*recueil_};
  Ref<linux_::Traducteur> traducteur_ = Crée<linux_::Traducteur>();
  linux_::Parametres paramètres_ = ParamètresDeBanc();
  Ref<linux_::Securite> sécurité_ = Crée<linux_::Securite>(machine_.horloge);
  Chassis chassis_;
  std::vector<sim::Bornes*> bornes_;
  unsigned tour_ = 0;
};

/// Reads and links a frame: what the host's start costs before the boards are touched.
void Charge(Chassis& chassis, const Base& base, const Ref<host::Recueil>& recueil,
            const Ref<ZED_Timer>& timer, const Ref<ZED_Securite>& sécurité,
            const ParamètresRef& paramètres, const Ref<ZED_Traduction>& traducteur);

}  // namespace zuma::banc
