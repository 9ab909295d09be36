#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "dialogs/feuille_conditionneur_numerique.h"
#include "instruments/canal_element_k9.h"
#include "instruments/echange_conditionneur.h"
#include "platform/plateforme.h"

namespace zuma {

/// What the two classes of the digital conditioner have in common. Each of them gives out what
/// belongs to it.
class ConditionneurCommun : protected ConditionneurAffiché {
 public:
  /// Clock of the exchanges; an operation that needs it fails with 91 when there is none.
  void TimerExact(Ref<ZED_Timer> timer) { TimerExact_ = std::move(timer); }
  /// The line to the module; Nothing leaves it unasked.
  void LiaisonSerie(Ref<PortInstrument> liaison) { LiaisonSerie_ = std::move(liaison); }
  /// The line to the module; Nothing while it has none.
  [[nodiscard]] const Ref<PortInstrument>& LiaisonSerie() const { return LiaisonSerie_; }
  /// A module of a known kind has answered, and within the last second.
  [[nodiscard]] bool Initialised() const { return Initialised_ && !muet_; }
  /// The values are older than 0.3 s, or none was read yet: beyond fifteen readings that are
  /// missing they are not of now.
  [[nodiscard]] bool Périmé() const { return périmé_; }
  /// Modbus slave, 0 to 127.
  [[nodiscard]] std::int32_t Adresse() const { return Adresse_; }
  /// A wrong answer came lately, of whatever kind. Latched like the others below.
  [[nodiscard]] bool ErreurGenerale() const { return Levé(DrapeauConditionneur::ErreurGenerale); }
  /// An answer did not come in time.
  [[nodiscard]] bool Timeout() const { return Levé(DrapeauConditionneur::Timeout); }
  /// Another slave answered.
  [[nodiscard]] bool ErreurAdresseModbus() const {
    return Levé(DrapeauConditionneur::ErreurAdresseModbus);
  }
  /// The check sum of an answer was wrong.
  [[nodiscard]] bool ErreurCRC() const { return Levé(DrapeauConditionneur::ErreurCRC); }
  /// A diagnostic answer was wrong.
  [[nodiscard]] bool ErreurDiagnostic() const {
    return Levé(DrapeauConditionneur::ErreurDiagnostic);
  }
  /// The module refused a write.
  [[nodiscard]] bool ErreurEcriture() const { return Levé(DrapeauConditionneur::ErreurEcriture); }
  /// The module refused a read.
  [[nodiscard]] bool ErreurLecture() const { return Levé(DrapeauConditionneur::ErreurLecture); }
  /// An answer was of another function.
  [[nodiscard]] bool ErreurProblemeFonction() const {
    return Levé(DrapeauConditionneur::ErreurProblemeFonction);
  }
  /// An answer was wrong in any other way.
  [[nodiscard]] bool ErreurAutre() const { return Levé(DrapeauConditionneur::ErreurAutre); }
  /// Firmware of the module: 1 or 2; 99999 for any other; 0 before an answer.
  [[nodiscard]] double version() const { return version_; }
  /// Hands the object to the host's maintenance form and shows it as a child of `FeuilleMere_obj`;
  /// nothing where the host has no windows.
  void Reglage(FenêtreHôte* FeuilleMere_obj);

  /// Good measures so far.
  [[nodiscard]] std::int32_t Mesures() const noexcept { return mesures_; }

 protected:
  /// `timeOut`: of an exchange, in microseconds.
  ConditionneurCommun(Plateforme& plateforme, double timeOut)
      : plateforme_(plateforme), échange_(timeOut) {}

  /// True when a module can be asked: link given, port open, address from 0 to 127.
  [[nodiscard]] static bool PeutInterroger(const Ref<PortInstrument>& liaison,
                                           std::int32_t adresse);
  /// Asks the module for its registers, from the first one of the settings on. False, and nothing
  /// sent,
  /// while an answer is awaited.
  bool EnvoieRequête(std::int32_t nbRegistres, EchangeConditionneur::Envoi envoi);
  /// The three analog channels, at 0 when they are new: those that were read keep their values.
  void CréeLesCanaux();
  /// Gives each channel its value from a good answer; false, and nothing changed, when the answer
  /// is too short to hold them.
  bool MetLesValeurs();
  /// Ages the values; at the end of each refresh.
  void Surveille();
  /// The module counts as heard: the time without a word begins here.
  void EstEntendu() {
    heureEntendue_ = Maintenant();
    muet_ = false;
  }
  /// What an exchange runs on; fails with 91 without line or clock.
  [[nodiscard]] EchangeConditionneur::Ligne Ligne() const { return {*LiaisonSerie_, *TimerExact_}; }
  /// The clock, microseconds.
  [[nodiscard]] double Maintenant() const { return TimerExact_->LitMicrosecondes(); }
  /// True while that flag is raised.
  [[nodiscard]] bool Levé(DrapeauConditionneur drapeau) const { return échange_.Levé(drapeau); }

  [[nodiscard]] Ref<PortInstrument> PortAffiché() const override { return LiaisonSerie_; }
  [[nodiscard]] bool InitialiséAffiché() const override { return Initialised(); }
  [[nodiscard]] Drapeaux DrapeauxAffichés() const override;

  Plateforme& plateforme_;                   ///< services of the machine
  EchangeConditionneur échange_;             ///< exchange in progress, and its flags
  std::vector<ClassCanalElementK9> canaux_;  ///< of the module, once it is known
  Ref<PortInstrument> LiaisonSerie_;         ///< line to the module
  std::int32_t Adresse_ = 0;                 ///< its slave
  bool Initialised_ = false;                 ///< a module of a known kind has answered
  double version_ = 0;                       ///< its firmware; 0 before an answer

 private:
  Ref<ZED_Timer> TimerExact_;
  std::int32_t mesures_ = 0;
  std::optional<double> heureDesValeurs_;  ///< of the last ones read, microseconds
  double heureEntendue_ = 0;               ///< microseconds
  bool périmé_ = true;
  bool muet_ = false;
};

}  // namespace zuma
