#pragma once

#include <cstdint>

#include "instruments/conditionneur_commun.h"

namespace zuma {

/// Digital conditioner on Modbus, first form: a general channel model, read at a fixed 50 Hz. Only
/// the first firmware is known to it. A good answer lowers no flag, five seconds without a fault
/// do.
class ClassConditionneurNum_K9 : private ConditionneurCommun {
 public:
  /// A conditioner without a line; `plateforme` outlives this.
  explicit ClassConditionneurNum_K9(Plateforme& plateforme)
      : ConditionneurCommun(plateforme, kTimeOut) {}

  ///@{
  /// Channel counts: nothing fills them, they stay 0.
  [[nodiscard]] std::int32_t NombreEA() const { return 0; }
  [[nodiscard]] std::int32_t NombreEL() const { return 0; }
  [[nodiscard]] std::int32_t NombreSA() const { return 0; }
  [[nodiscard]] std::int32_t NombreSL() const { return 0; }
  ///@}
  /// Value of an analog input in the module's raw units, -32768 to 32767; 0 for no such channel.
  [[nodiscard]] double ParCanalEA(std::int32_t IndexCanal) const;
  /// State of a logic input; false for no such channel.
  [[nodiscard]] bool ParCanalEL(std::int32_t IndexCanal) const;
  ///@{
  /// Value of an output, kept here: nothing is ever written to a module, and no known module has
  /// outputs.
  void ParCanalSA(std::int32_t IndexCanal, double valeur);
  void ParCanalSL(std::int32_t IndexCanal, bool valeur);
  ///@}
  using ConditionneurCommun::Adresse;
  using ConditionneurCommun::Initialised;
  using ConditionneurCommun::LiaisonSerie;
  using ConditionneurCommun::Mesures;
  using ConditionneurCommun::Périmé;
  using ConditionneurCommun::TimerExact;
  ///@{
  /// Never set.
  [[nodiscard]] double DateDernierRaffraichissement() const { return 0; }
  [[nodiscard]] bool FullRefreshed() const { return false; }
  ///@}
  using ConditionneurCommun::ErreurAdresseModbus;
  using ConditionneurCommun::ErreurAutre;
  using ConditionneurCommun::ErreurCRC;
  using ConditionneurCommun::ErreurDiagnostic;
  using ConditionneurCommun::ErreurEcriture;
  using ConditionneurCommun::ErreurGenerale;
  using ConditionneurCommun::ErreurLecture;
  using ConditionneurCommun::ErreurProblemeFonction;
  using ConditionneurCommun::Timeout;
  using ConditionneurCommun::version;
  /// The last refresh brought values.
  [[nodiscard]] bool MAJFaite() const { return MAJFaite_; }
  /// Finds out which module answers at `adresse` (0 to 127) on an open link; with anything else
  /// nothing is done. Blocks until the answer or for 100 ms. The result is false in all cases, and
  /// hosts know it: `Initialised` tells.
  bool Initialise(Ref<PortInstrument> MaLiaisonSerie, std::int32_t adresse);
  /// One step of the reading, every 20 ms; never waits. The schedule adds to itself: after a stall
  /// the readings follow each other as fast as they are answered until it is caught up.
  void Refresh();
  using ConditionneurCommun::Reglage;

 private:
  static constexpr double kTimeOut = 100'000;  ///< microseconds, like the period
  static constexpr double kPériode = 20'000;

  [[nodiscard]] const ClassCanalElementK9* Trouve(ENUM_TYPE_FONCTION type,
                                                  std::int32_t index) const;
  void Lit();
  void Ecrit(ENUM_TYPE_FONCTION type, std::int32_t index, double valeur);
  [[nodiscard]] double ValeurAffichée(std::int32_t index) const override {
    return ParCanalEA(index);
  }

  bool MAJFaite_ = false;
  double prochaineLecture_ = 0;  ///< microseconds
};

}  // namespace zuma
