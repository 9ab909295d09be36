#pragma once

#include <cstdint>

#include "instruments/conditionneur_commun.h"

namespace zuma {

/// Digital conditioner on Modbus, reduced form for both firmwares: one exchange behind the other,
/// as fast as the refresh. It finds a module that is plugged in late, again or silent for a second
/// by itself. A good answer lowers no flag, five seconds without a fault do.
class ClassConditionneurNum_K9_V1_00 : private ConditionneurCommun {
 public:
  /// A conditioner without a line; `plateforme` outlives this.
  explicit ClassConditionneurNum_K9_V1_00(Plateforme& plateforme)
      : ConditionneurCommun(plateforme, kTimeOut) {}

  /// Value of a channel in the module's raw units, -32768 to 32767; 0 for no such channel.
  [[nodiscard]] double ValeurCanal(std::int32_t IndexCanal) const;
  using ConditionneurCommun::LiaisonSerie;
  using ConditionneurCommun::TimerExact;
  /// The machine has the port now; false without a link.
  [[nodiscard]] bool PortExistant() const;
  using ConditionneurCommun::Adresse;
  using ConditionneurCommun::ErreurGenerale;
  using ConditionneurCommun::Initialised;
  using ConditionneurCommun::Mesures;
  using ConditionneurCommun::Périmé;
  using ConditionneurCommun::Timeout;
  /// True in the first 10 s of the clock's life, time-out or not. Advice to a display, and no more.
  [[nodiscard]] bool TimeoutAffichable() const;
  using ConditionneurCommun::ErreurAdresseModbus;
  using ConditionneurCommun::ErreurAutre;
  using ConditionneurCommun::ErreurCRC;
  using ConditionneurCommun::ErreurDiagnostic;
  using ConditionneurCommun::ErreurEcriture;
  using ConditionneurCommun::ErreurLecture;
  using ConditionneurCommun::ErreurProblemeFonction;
  using ConditionneurCommun::version;
  /// Keeps link and address for later tries, then finds out which module answers at `adresse` (0 to
  /// 127) if the link is open. Blocks until the answer or for 10 s. The result is false in all
  /// cases, and hosts know it: `Initialised` tells.
  bool Initialise(Ref<PortInstrument> MaLiaisonSerie, std::int32_t adresse);
  /// One step of the reading, or, while no module is initialised, of its detection, which is tried
  /// again a second after it came to nothing; never waits.
  void Refresh();
  using ConditionneurCommun::Reglage;

 private:
  static constexpr double kTimeOut = 10e6;  ///< microseconds, like all that follow
  static constexpr double kAffichage = 10e6;
  static constexpr double kEntreDeuxEssais = 1e6;

  /// Asks which module is there; false when it cannot be asked.
  bool DemandeQuiEstLà();
  void Reconnaît();
  void Lit();
  void SurveilleLePort();
  void Cherche();
  [[nodiscard]] double ValeurAffichée(std::int32_t index) const override {
    return ValeurCanal(index);
  }

  double dernierEssai_ = 0;
  bool détectionEnCours_ = false;  ///< a refresh asked which module is there
};

}  // namespace zuma
