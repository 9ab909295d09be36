#pragma once

#include <cstdint>
#include <string>

#include "base/objet.h"
#include "platform/base_de_donnees.h"
#include "tree/canal.h"

namespace zuma {

class Chassis;
namespace wdt_01 {
struct Liaison;
}

/// Proof to the external hardware that the control program is alive: when the refresh stops, the
/// hardware drops the safety chain. Two forms: a logic channel that keeps toggling (`SortiePulse`),
/// or else a WDT 01 board at a port address. With neither it does nothing.
///
/// The operations other than `MetàJour` wait for the board while it is not ready, until it answers
/// or the host's message box gives it up, which is a failure of the operation.
class Watchdog : public Objet {
 public:
  /// A watchdog of neither form; `plateforme` outlives it.
  explicit Watchdog(Plateforme& plateforme) : Objet(plateforme, "WatchDog") {}
  /// Stops the board.
  ~Watchdog() override;

  using Objet::ChargeErreur;
  using Objet::TimerExact;

  /// Makes the board the hardware side of the stop: it is armed with 10 ms. `MetàJour` goes on
  /// refreshing it while `Enabled` says so, and a fast pass keeps it from tripping: whoever stops
  /// clears `Enabled` behind this. A pulse goes on. Latched until `Réarme`.
  void DéclencheAU();

  /// Appends the watchdog's block of the diagnostic dump to the text file `Ou` of the host: the
  /// dump of a frame leaves it out. A failure goes to the caller.
  void AutoSave(const std::string& Ou) const;

  ///@{
  /// Base port of the board, of which the low 16 bits count; 0 for no board.
  void Adresse(std::int32_t adresse) { mlngAdresse = adresse; }
  [[nodiscard]] std::int32_t Adresse() const { return mlngAdresse; }
  ///@}
  ///@{
  /// Arms or stops the board; after a stop only the flag is stored, until `Réarme`.
  void Enabled(bool enService);
  [[nodiscard]] bool Enabled() const { return mblnEnabled; }
  ///@}
  /// True from a stop until `Réarme`.
  [[nodiscard]] bool EnArrêt() const { return mblnAU; }
  /// False while a stop has not reached the board: it was given up before it had taken all.
  [[nodiscard]] bool ArrêtAtteint() const { return arrêtAtteint_; }
  /// False while the board would make its caller wait; true without a board.
  [[nodiscard]] bool CartePrête() const;
  /// The channel that it toggles; Nothing for a board.
  [[nodiscard]] CanalRef SortiePulse() const { return SortiePulse_; }
  ///@{
  /// Time-out of the board in seconds; 0 for none: the board is then never armed. What is no
  /// number is refused (5).
  void Temps(double secondes);
  [[nodiscard]] double Temps() const { return mdblTemps; }
  ///@}

  /// Reads the watchdog's row, at the first record.
  void ParamètresDepuisBD(const Ref<Recordset>& rstMonRecordSet);
  /// Resolves the pulse channel.
  void Lien(const Ref<ZED_Securite>& MaSecurite_obj, const ParamètresRef& MesParametres_mobj,
            const Ref<ZED_Traduction>& Traducteur_obj, Chassis* MonChassis);
  /// Does nothing: `Lien` has resolved all references.
  void MiseàJourDesLiens() {}
  /// Gives the board its time and leaves it stopped.
  void Initialise();
  /// Clears the latch, gives the board its time back and leaves it stopped until `Enabled`.
  void Réarme();
  /// Refreshes the board, one byte when it is ready for it, or toggles the pulse every 20 ms at
  /// most. Never waits.
  void MetàJour();

  [[nodiscard]] std::string_view NomPourErreur() const override { return mstrNom; }

 private:
  [[nodiscard]] bool EnCarte() const { return !SortiePulse_ && mlngAdresse != 0; }
  [[nodiscard]] wdt_01::Liaison LaCarte() const;
  void ChargeLeTemps();
  void RafraîchitLaCarte();
  void RafraîchitLaSortie();

  std::int32_t mlngAdresse = 0;
  std::string mstrNom;
  bool mblnEnabled = false;
  double mdblTemps = 0;
  bool mblnAU = false;
  bool arrêtAtteint_ = true;
  CanalRef SortiePulse_;
  bool mblnNiveauPulse = false;
  double mdblDernierPulse = 0;  ///< microseconds
  Valeur indexPulse_;
  bool mblnPhase = false;  ///< the byte "S" comes next, and not the carriage return
};

/// Counted reference to a watchdog.
using WatchdogRef = Ref<Watchdog>;

}  // namespace zuma
