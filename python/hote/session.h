#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <limits>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "host/chassis_en_marche.h"
#include "host/machine.h"
#include "hote/rangees.h"
#include "modele/vie.h"
#include "publication/description.h"
#include "sim/machine_simulee.h"

namespace zuma::python {

/// What somebody chooses who opens a frame.
struct Choix {
  std::string fichier;     ///< configuration database
  std::int32_t chassis{};  ///< "Index" of the frame
  bool simulation{};       ///< on twins
  double rythme{};         ///< of the simulated machine, in times of the real pace; 0: as it can
  bool malgréTout{};       ///< started although it left entries, its stop latched
  bool gardeLesArrêts{};   ///< each stop becomes a case
  std::string arrêts{};    ///< in that folder; empty: "stops" beside the database
  std::uint32_t graine{};  ///< of the luck of the simulated machine
  std::vector<std::string> ports{};       ///< "number=device"
  std::vector<std::string> can{};         ///< "card:port=interface"
  std::vector<std::string> paramètres{};  ///< "index=value"
  std::vector<std::string> drivers{};     ///< libraries of drivers
  std::vector<std::string> pannes{};      ///< of the simulated machine, from its start on
};

/// Keeps the problems of a frame, and tells of those of one act whether they are new or not: a
/// refusal that comes again is one all the same.
class RecueilDeSession final : public host::Recueil {
 public:
  void AjouteErreur(std::string_view message, const TableVariables& variables) override;
  void Montre(std::string_view texte, const ObjetConcerné& objet) override;
  /// What was told since the last call.
  [[nodiscard]] std::string Retire() { return std::exchange(dernier_, {}); }

 private:
  void Note(std::string_view texte);
  std::string dernier_;
};

/// A frame that is open, with its machine: passes when it is told to, and at rest by whatever way
/// it ends. One thread, that of its construction; every other is refused.
class Session : public std::enable_shared_from_this<Session> {
 public:
  /// Why a run came to its end.
  enum class Fin : std::uint8_t {
    Point,  ///< the sensors were refreshed, at the instant asked for
    Temps,  ///< the time has gone by
    Arrêt   ///< a stop was latched meanwhile
  };
  /// An instant that never comes.
  static constexpr double kJamais = std::numeric_limits<double>::infinity();

  /// Opens and starts the frame; throws what `ChassisEnMarche` throws.
  explicit Session(Choix choix);
  ~Session();
  /// The model's own objects answer from here on; behind the constructor, with the interpreter's
  /// lock.
  void OuvreLeModèle();
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  /// Puts the outputs to rest and releases the frame; nothing once it is closed.
  void Ferme();
  /// The same from another thread, the interpreter being about to end: a run ends first, by
  /// `FrameEnded`.
  void FermeALaFin();
  /// In a child process: the frame belongs to its parent, and nothing is touched, ever.
  void Abandonne() noexcept { abandonnée_ = true; }
  /// It is neither closed nor another process's.
  [[nodiscard]] bool EstOuverte() const noexcept { return marche_ && !abandonnée_; }
  /// Throws for a frame that is closed and on another thread than its own.
  void Exige() const;
  /// The same for what must move nothing while a stop is latched.
  void ExigeSansArrêt() const;

  ///@{
  /// The parts of an open frame.
  [[nodiscard]] host::ChassisEnMarche& LaMarche() const { return Exige(), *marche_; }
  [[nodiscard]] const publication::ObjetsDuChassis& LesObjets() const { return Exige(), *objets_; }
  [[nodiscard]] sim::MachineSimulée* LaJumelle() const { return Exige(), machine_->Jumelle(); }
  [[nodiscard]] const host::Recueil& LeRecueil() const { return *recueil_; }
  [[nodiscard]] const Choix& LeChoix() const noexcept { return choix_; }
  ///@}
  /// Seconds since the start, by the machine's clock.
  [[nodiscard]] double Secondes() const noexcept { return secondes_; }
  /// Passes since the start.
  [[nodiscard]] std::uint64_t Passes() const noexcept { return passes_; }
  /// File of its publication.
  [[nodiscard]] std::string Publication() const;
  /// The values of the sensors, no number where there is no reading.
  void LitLesValeurs(double* valeurs) const;

  /// Runs passes up to the first refresh of the sensors at or behind `point`, up to `fin` (both in
  /// seconds since the start), or up to a stop unless `àTravers`. Whatever is thrown from within
  /// fires the stop first.
  Fin Avance(double point, double fin, bool àTravers);
  /// The same up to `fin`, and each `période` seconds, behind a refresh, `continue_` is asked.
  /// `Point` when it said no.
  Fin Tourne(double fin, double période, bool àTravers, const std::function<bool()>& continue_);
  /// That many passes.
  void Pas(std::int64_t nombre);
  /// Runs `fin - Secondes()` seconds as fast as the simulated machine can.
  void AvanceVite(double fin);
  /// Times that many passes in a loop that does nothing else, for comparison: seconds.
  double MesureLaBoucle(std::int64_t nombre);

  /// An act on the frame: what the library tells of it is thrown as `Refused`.
  template <class Acte>
  void Fait(Acte&& acte) {
    Exige();
    (void)recueil_->Retire();
    modele::Séjour séjour(machine_->Services());
    acte();
    séjour.Conclut();
    ExigeSansReproche();
  }
  /// Acknowledges; false while the cause lasts.
  bool Acquitte();

  ///@{
  /// Heard behind the pass in which a stop is latched, and for each new problem. Nothing: nobody.
  void QuandArrêt(std::function<void(const std::string&)> écoute) { quandArrêt_ = écoute; }
  void QuandProblème(std::function<void(const host::Problème&)> écoute) { quandProblème_ = écoute; }
  ///@}
  /// From now on the rows go there, for as long as somebody else holds them.
  void Enregistre(const std::shared_ptr<Rangées>& rangées) { rangées_.emplace_back(rangées); }

  ///@{
  /// A tare of that sensor begins; and whether its readings still feel how it is taken: the refresh
  /// that completes a tare takes it off twice.
  void CommenceUneTare(const Capteur& capteur) { tares_.emplace_back(&capteur, false); }
  [[nodiscard]] bool Tare(const Capteur& capteur) const;
  ///@}

  /// Voltages and states that terminals of the simulated machine are held at.
  struct Tenue {
    sim::Borne borne;  ///< where
    double volts;      ///< of an analog input; of a logic one, other than 0 for true
    bool logique;      ///< which of both
  };
  std::map<std::string, Tenue> tenues;  ///< by the key of the channel

 private:
  class EnMarche;
  void ExigeLeFil() const;
  void Libère();
  void SuitLeRafraîchissement();
  void ExigeSansReproche();
  void Passe();
  void AttendLHeure(double secondes) const;
  void Regarde();
  void RègleLaMontre();
  [[nodiscard]] Fin AvanceDéjà(double point, double fin, bool àTravers);
  template <class Boucle>
  auto SousGarde(Boucle&& boucle);
  void ArrêteQuoiQuIlArrive(const std::string& cause);
  void DitLArrêt();
  void DitLesProblèmes();

  using Instant = std::chrono::steady_clock;
  Choix choix_;
  Ref<RecueilDeSession> recueil_;
  std::shared_ptr<host::Machine> machine_;
  std::shared_ptr<host::ChassisEnMarche> marche_;
  std::unique_ptr<publication::ObjetsDuChassis> objets_;
  std::function<void(const std::string&)> quandArrêt_;
  std::function<void(const host::Problème&)> quandProblème_;
  std::vector<std::weak_ptr<Rangées>> rangées_;
  std::vector<std::pair<const Capteur*, bool>> tares_;  ///< begun here, and whether measured
  std::atomic<std::thread::id> fil_ = std::this_thread::get_id();
  bool abandonnée_ = false;
  std::atomic<bool> enMarche_ = false;
  std::atomic<bool> finit_ = false;  ///< the interpreter is about to end
  bool vite_ = false;
  bool arrêtDit_ = false;
  std::size_t dits_ = 0;
  double secondes_ = 0;
  std::uint64_t passes_ = 0;
  ///@{
  /// Where pace and signals are counted from.
  double origine_ = 0;
  Instant::time_point montre_;
  Instant::time_point prochainRegard_;
  ///@}
};

}  // namespace zuma::python
