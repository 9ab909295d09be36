#pragma once

#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "base/evenement.h"
#include "instruments/class_comm_packet.h"
#include "instruments/trames_laser.h"
#include "platform/collaborateurs.h"
#include "platform/plateforme.h"

namespace zuma {

/// State of the line.
enum class EnumEtatCommExtenso : std::int32_t {
  Pret = 0,             ///< a request can be sent
  EnCommunication = 1,  ///< a request is out
  EnErreur = 2,         ///< the last reply was wrong, or none came to four tries
};

/// Unit that the laser is set to.
enum class EnumUnite : std::int32_t { mm = 0, inch = 1 };

/// A state of the laser, as it is written.
enum class EnumState : std::int32_t { StateOFF = 0, StateON = 1, StateUNDEFINED = 99 };

/// Laser extensometer on a serial line. `Refresh`, called on every pass, keeps one exchange going
/// without ever waiting; the last measure and states stand ready. Whatever fails on the line ends
/// in `CommState` and `Timeout`; a collaborator that was not given fails with 91.
class LASER_EIR {
 public:
  /// A laser without a line. It needs no service but its line and clock.
  explicit LASER_EIR(Plateforme&) { LastError({}); }
  /// Leaves the port as `ClosePort` does.
  ~LASER_EIR();
  LASER_EIR(const LASER_EIR&) = delete;
  LASER_EIR& operator=(const LASER_EIR&) = delete;

  /// Clock of the exchanges.
  void TimerExact(Ref<ZED_Timer> timer) { TimerExact_ = std::move(timer); }
  /// Text of the last error. No failure of the protocol sets it.
  [[nodiscard]] const std::string& LastError() const { return LastError_; }
  ///@{
  /// The line, set up by its owner at 9600 bits per second, no parity, 8 data bits, 1 stop bit.
  void MaComm(Ref<PortInstrument> liaison) { MaComm_ = std::move(liaison); }
  [[nodiscard]] const Ref<PortInstrument>& MaComm() const { return MaComm_; }
  ///@}
  /// State of the line.
  [[nodiscard]] EnumEtatCommExtenso CommState() const { return CommState_; }
  /// True from the fourth try without an answer until the next right reply, and so while it is not
  /// known whose answer comes, or behind one with too many bytes.
  [[nodiscard]] bool Timeout() const { return Timeout_; }
  /// `Pret` gives up the exchange in progress.
  void CommState(EnumEtatCommExtenso état) { CommState_ = état; }
  /// Last good measure, in signed counts.
  [[nodiscard]] double ReadValue() const { return lu_.ReadValue; }
  ///@{
  /// States as the laser last told them; writing one keeps a wish and sends nothing.
  [[nodiscard]] bool LaserState() const { return lu_.LaserState; }
  void LaserState(bool voulu) { LaserStateVoulu_ = voulu ? 1 : 0; }
  [[nodiscard]] bool EchoState() const { return lu_.EchoState; }
  void EchoState(bool voulu) { EchoStateVoulu_ = voulu ? 1 : 0; }
  [[nodiscard]] bool ZeroState() const { return lu_.ZeroState; }
  void ZeroState(bool voulu) { ZeroStateVoulu_ = voulu ? 1 : 0; }
  ///@}
  /// Unit last written. Asks the laser for its own too: a later `Refresh` consumes that reply.
  [[nodiscard]] EnumUnite UnitState();
  /// Keeps the unit and sends it, without waiting.
  void UnitState(EnumUnite unité);

  /// Writes target distance, echo off, measuring type 1, millimetres and zero off. Waits for each
  /// answer, up to 300 milliseconds, and takes none as well as any: for the start-up. Never ends
  /// while an exchange is in progress: `CommState` must be `Pret`.
  void Initialise(std::int32_t DistanceCible_lng);
  /// The settings that `Initialise` would write, kept for a port that opens later: `Refresh` then
  /// writes them.
  void DistanceCible(std::int32_t distance);
  /// One step: opens a closed port, once a second at most, and writes the settings of `Initialise`
  /// to the laser behind it, one a step; takes what arrived; sends the next request. Ten measures
  /// are asked, then one state in its turn. A measure that jumps is taken one step later, when no
  /// further byte shows that the bytes before it were not its own. Behind a late answer a state is
  /// asked, whose answer cannot be taken for another.
  void Refresh();
  /// Sends a laser state, without waiting.
  void EnvoieLaserState(EnumState état);
  /// Opens a closed port and gives up the exchange in progress.
  void OpenPort();
  /// Leaves an open port open: closing is the link's business.
  void ClosePort();

  /// Event `Error`: registers a handler and returns its number, for `DésabonneError`.
  using AbonnéError = Evènement<const std::string&>::Abonné;
  /// Registers a handler; it gets the text of each error.
  int AbonneError(AbonnéError abonné) { return Error_.Abonne(std::move(abonné)); }
  /// Removes a handler; nothing on a number that is not there.
  void DésabonneError(int numéro) noexcept { Error_.Désabonne(numéro); }

  /// Good measures so far.
  [[nodiscard]] std::int32_t Mesures() const noexcept { return mesures_; }

 private:
  void LastError(std::string texte);
  void Demande(EnumEIRCommande commande, std::string_view valeur = {});
  void EnvoiePaquet();
  void Relève();
  void TraiteRéponse();
  void TraiteDansLeDoute();
  [[nodiscard]] bool EstSuspecte(double maintenant);
  void NoteLeSilence();
  [[nodiscard]] std::string_view Réglage(EnumEIRCommande commande) const;
  void RéglageFait();
  bool CommandeSynchrone(EnumEIRCommande commande, std::string_view valeur);
  [[nodiscard]] bool TientLePort(double maintenant);
  [[nodiscard]] bool ResteSansRéponse(double maintenant);
  void DemandeLaSuite(double maintenant, bool reprise);

  Evènement<const std::string&> Error_;
  std::string LastError_;
  Ref<ZED_Timer> TimerExact_;
  Ref<PortInstrument> MaComm_;
  EnumEtatCommExtenso CommState_ = EnumEtatCommExtenso::Pret;
  EnumEIRCommande commande_ = EnumEIRCommande::ReadEcho;  ///< the one that the reply belongs to
  ClassCommPacket paquet_;
  trames_laser::EtatLu lu_;
  bool Timeout_ = false;
  std::int32_t LaserStateVoulu_ = 0;
  std::int32_t EchoStateVoulu_ = 0;
  std::int32_t ZeroStateVoulu_ = 0;
  EnumUnite UnitState_ = EnumUnite::mm;

  // From one `Refresh` to the next.
  double dernierInstant_ = 0;  ///< of the last request or opening, microseconds
  std::int32_t reprises_ = 0;
  std::int32_t cycle_ = 0;  ///< measures asked since the last state
  std::size_t sélecteur_ = 0;
  bool enDoute_ = false;         ///< a question had no answer yet
  bool entendu_ = false;         ///< something came since: whose it is must be found out
  std::size_t repère_ = 0;       ///< state that is asked for that
  std::size_t réglagesDus_ = 0;  ///< settings that are still to be sent
  std::string distanceCible_;    ///< as written; empty before `Initialise`
  double dernierPas_ = std::numeric_limits<double>::infinity();  ///< of the measure, counts
  std::optional<double> suspecteDepuis_;  ///< instant at which a measure that jumps was there
  std::int32_t mesures_ = 0;
};

}  // namespace zuma
