#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>

#include "dialogs/choix_du_port.h"
#include "instruments/trames_utest.h"
#include "platform/collaborateurs.h"
#include "platform/plateforme.h"

namespace zuma {

/// Link to a CBR, Marshall or UU tester that reports a force and a displacement (`Drv_UTS_0107`).
/// One exchange at a time, at the pace of `Refresh`. `TimerExact` is given before anything else.
///
/// A stop that was asked is owed until the machine says that it does not run: it is sent again
/// every second, whatever happened to the cable or to its frame, and no start is carried out
/// before.
///
/// **Hazard**: starting moves the machine, and `Refresh` then holds its caller for 1.2 s; a stop
/// holds it for 0.2 s, after up to 0.1 s of the exchange that was going on. The host's clock may
/// serve events meanwhile: a stop given by one of them ends a start at the end of its present
/// pause.
class CBR_UTEST_CLASS : public TesteurDePort {
 public:
  /// Makes its own serial port with the services of `plateforme`, which outlive it.
  explicit CBR_UTEST_CLASS(Plateforme& plateforme);

  /// Clock of the exchanges.
  void TimerExact(Ref<ZED_Timer> timer) { TimerExact_ = std::move(timer); }
  /// Settings of the port in use or looked for, such as "3,9600,N,8,1"; empty before `Initialise`.
  [[nodiscard]] const std::string& Settings() const noexcept { return mstrSettings; }
  ///@{
  /// Force and displacement of the last good answer, in the machine's own units.
  [[nodiscard]] double ForceCourante() const noexcept { return mdblForceCourante; }
  [[nodiscard]] double DeplacementCourant() const noexcept { return mdblDeplacementCourant; }
  ///@}
  ///@{
  /// The kind of machine, told by each start; all three False before the first one.
  [[nodiscard]] bool TestCBR() const noexcept { return EstUn(trames_utest::Machine::CBR); }
  ///@}
  [[nodiscard]] bool TestPort(const std::string& Settings_str) override;
  ///@{
  /// The kind of machine, see `TestCBR`.
  [[nodiscard]] bool TestMarshall() const noexcept {
    return EstUn(trames_utest::Machine::Marshall);
  }
  [[nodiscard]] bool TestUU() const noexcept { return EstUn(trames_utest::Machine::UU); }
  ///@}
  /// The port is there and open, and the machine answers.
  [[nodiscard]] bool EtatMachine() const;
  /// The port is there.
  [[nodiscard]] bool EtatCom() const;
  /// The machine left its requests without a good answer, until the next good one.
  [[nodiscard]] bool Timeout() const noexcept { return mblnTimeout; }
  /// Starts anew with the present settings; the machine is stopped. A stop that is owed stays so.
  void ResetMachine();
  /// The machine said that it runs.
  [[nodiscard]] bool IsRunning() const noexcept { return mblnIsRunning; }
  /// Asks for a start, carried out by `Refresh`.
  void Marche() noexcept { mblnMarche = true; }
  /// Asks for a stop, carried out by `Refresh` before a start asked at the same time. That start is
  /// not forgotten, unless `AnnuleMarche` was called or the machine has stopped answering: it is
  /// carried out once the machine does not run.
  void Arrete() noexcept;
  /// Opens the port and stops the machine. A port that does not work is asked for in the form,
  /// again and again until one does: then True. False, at once, when the host has no windows to ask
  /// in: `Refresh` then tries that port every second.
  bool Initialise(std::string Settings_str);
  /// One step of the exchange: takes what came in, and asks for the measures or carries out a stop
  /// or a start when no answer is awaited.
  void Refresh();

  // For the board.

  /// Withdraws a start that was asked and not carried out yet.
  void AnnuleMarche() noexcept { mblnMarche = false; }
  /// A stop was asked and its frame has not left yet.
  [[nodiscard]] bool ArrêtEnAttente() const noexcept { return mblnArrêt; }
  /// A stop was asked, and the machine has not said since that it does not run.
  [[nodiscard]] bool ArrêtDû() const noexcept { return arrêtDû_; }
  /// The machine was not started from here, and said within the last second that it does not run.
  [[nodiscard]] bool EstAuRepos() const;
  /// The machine runs although nothing here started it: at its own panel, or before the program.
  [[nodiscard]] bool TourneSansOrdre() const noexcept {
    return étatConnu_ && mblnIsRunning && !partie_ && !arrêtDû_;
  }
  /// A good answer has told since `Initialise` whether the machine runs.
  [[nodiscard]] bool EtatConnu() const noexcept { return étatConnu_; }

  /// What was wrong with answers since the last good one.
  struct Erreurs {
    bool somme = false;       ///< a check sum was wrong
    bool fonction = false;    ///< it answered another function
    bool sansEntête = false;  ///< bytes without a frame came in
    /// The same faults.
    friend bool operator==(const Erreurs&, const Erreurs&) = default;
  };
  /// What was wrong with answers since the last good one.
  [[nodiscard]] const Erreurs& LesErreurs() const noexcept { return erreurs_; }

  /// Good measures so far.
  [[nodiscard]] std::int32_t Mesures() const noexcept { return mesures_; }

 private:
  enum class Echange : std::int32_t { Repos = 0, Identification = 1, Mesures = 2 };
  /// What sleeps between two frames, so that an event served meanwhile does not begin it again.
  enum class Séquence : std::uint8_t { Aucune, Départ, Arrêt };
  class EnCours;

  [[nodiscard]] bool EstUn(trames_utest::Machine machine) const noexcept {
    return machine_ == machine;
  }
  [[nodiscard]] bool PortUtilisable() const;
  [[nodiscard]] bool EnRetard() const;
  [[nodiscard]] std::string DemandeLePort();
  void Envoie(trames_utest::Demande demande);
  void Attend(double secondes);
  void SuitLIdentification();
  void SuitLesMesures();
  void AccepteLaRéponse() noexcept;
  void ProchaineDemande();
  void AbandonneLEchange() noexcept;
  void PrendLEtat(bool enMarche);
  void RetrouveLePort();
  void EnvoieLArrêt();
  [[nodiscard]] bool RépèteLArrêt();
  void Démarre();
  void EffaceLesErreurs() noexcept;
  [[nodiscard]] double Maintenant() const { return TimerExact_->LitMicrosecondes(); }

  Plateforme& plateforme_;
  Ref<PortInstrument> port_;
  std::string mstrSettings;
  std::optional<trames_utest::Machine> machine_;
  bool mblnMarche = false;
  bool mblnArrêt = false;
  bool arrêtDû_ = false;
  bool partie_ = false;       ///< started from here, and no stop was confirmed since
  bool étatConnu_ = false;    ///< told by a good answer since `Initialise`
  std::uint32_t arrêts_ = 0;  ///< stops asked so far
  Séquence séquence_ = Séquence::Aucune;
  bool mblnTimeout = false;
  Erreurs erreurs_;
  bool mblnIsRunning = false;
  double mdblForceCourante = 0;
  double mdblDeplacementCourant = 0;
  Octets tampon_;
  Echange échange_ = Echange::Repos;
  std::int32_t essais_ = 0;
  double heureDEnvoi_ = 0;   ///< microseconds, like the others
  double heureDArrêt_ = 0;   ///< of the last stop sent
  double heureDuRepos_ = 0;  ///< of the last answer that told a machine at rest
  double heureDuPort_ = 0;   ///< of the last try to open the port
  Ref<ZED_Timer> TimerExact_;
  std::int32_t mesures_ = 0;
};

}  // namespace zuma
