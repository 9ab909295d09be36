#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/collaborateurs.h"
#include "platform/linux/registre_erreurs.h"
#include "platform/services.h"

namespace zuma {
class Chassis;
}

namespace zuma::linux_ {

/// Safety object: latches the causes of a stop, stops every frame that is plugged in, and lets the
/// host acknowledge. It moves nothing else: after a stop the host acknowledges, then gives new
/// commands.
///
/// - One cause is one origin. A sensor's text carries its present value and changes on every
///   refresh: what stands before the value tells the origin (see `Bornes`).
/// - A cause that keeps being raised stops once, and from then on maintains the stop ten times a
///   second (`kReprise`), so that nothing that a host moves meanwhile stays moved. Raised again
///   after a second of silence it has come back, and stops anew, acknowledged or not.
/// - Whatever is in doubt stops: a cause without text, a list that is full, no memory left, a
///   stop that failed or left outputs unreached on the last try.
/// - A cause raised while the stop is being driven is latched, and the stop is driven once more
///   when the present drive ends.
/// - With several frames a stop of one is a stop of all, and one that fails keeps none from it.
class Securite final : public ZED_Securite {
 public:
  /// One cause of the stop that is latched.
  struct Cause {
    std::string texte;       ///< as first raised
    std::string heure;       ///< local time of the first raise, "hh:mm:ss"; empty without a clock
    std::uint64_t fois = 1;  ///< how often it was raised
  };
  /// Puts the outputs in their safe state; false when some were not reached.
  using Arrêt = std::function<bool()>;
  /// How one frame is stopped.
  struct Branchement {
    Arrêt arrête{};     ///< puts the outputs at rest
    Arrêt maintient{};  ///< the same for a stop that goes on; empty: `arrête`
    Arrêt complet{};    ///< false while an output is not where the stop put it; empty: always true
    const Chassis* chassis = nullptr;  ///< for `Débranche`; Nothing: any
  };

  /// Causes that are kept; those behind them are counted alone.
  static constexpr std::size_t kCausesGardées = 64;
  static constexpr double kSilence = 1e6;  ///< microseconds after which a cause has come back
  static constexpr double kReprise = 1e5;  ///< microseconds between two drives of a stop that holds

  /// No frame is plugged in yet. Silence and maintenance are timed by `timer`.
  explicit Securite(Ref<ZED_Timer> timer, Pointeur<const Horloge> horloge = {});

  /// One more frame to stop, by `ArrêteLeChassis`; it outlives this, or `Débranche` is called
  /// first. Plugged a second time it takes its own place. With the frame's error record, a stop
  /// during which it grew counts as one that left outputs unreached.
  void Branche(Chassis& chassis, Ref<RegistreErreurs> registre = {});
  /// **Hazard**: what arms a watchdog board closes the contact that the board has opened: give a
  /// `maintient` that leaves it alone.
  void Branche(Branchement branchement);
  /// A stop with no more than its own act, driven anew while it holds.
  void Branche(Arrêt arrêt) { Branche(Branchement{.arrête = std::move(arrêt)}); }
  ///@{
  /// Forgets one frame, or all.
  void Débranche(const Chassis& chassis);
  void Débranche() noexcept { branchés_ = nullptr; }
  ///@}
  /// Takes, in all its languages, the text that stands between origin and value in a cause. To
  /// be called again when a table is added to the translator. Without it the whole text is the
  /// origin, and every new value of a sensor a new cause.
  void Bornes(ZED_Traduction& traducteur);

  void PositionneCauseAU(std::string_view cause) noexcept override;
  /// Fails when the stop itself fails (with 91 when no frame is plugged): the cause stays latched
  /// and the next raise drives again.
  Valeur DéclencheSécurité() override;
  /// For the host's loop: drives a latched stop again when it is due, whether its danger still
  /// holds or not. Fails as the stop does.
  void Maintient();

  /// True from the first cause to the acknowledgement.
  [[nodiscard]] bool Déclenchée() const noexcept { return déclenchée_; }
  /// True when the stop was last driven to its end and every output is where the stop put it.
  [[nodiscard]] bool ArrêtComplet() const noexcept;
  /// The causes in the order in which they came; the first one fired the stop.
  [[nodiscard]] const std::vector<Cause>& Causes() const noexcept { return causes_; }
  /// Raises whose cause could not be kept.
  [[nodiscard]] std::uint64_t Perdues() const noexcept { return perdues_; }
  /// Forgets the causes. One that still holds fires again at the next refresh. False, and nothing
  /// done, while the stop is being driven.
  bool Acquitte() noexcept;

 private:
  struct Suivi {
    std::string origine;
    double dernière = 0;  // time of the last raise, microseconds
    bool servie = false;  // the stop was driven for it and reached all outputs
  };

  [[nodiscard]] std::string_view Origine(std::string_view cause) const noexcept;
  [[nodiscard]] bool Retient() noexcept;
  [[nodiscard]] bool EncoreTenue(std::size_t rang, double maintenant) noexcept;
  void Ajoute(std::string_view origine, double maintenant);
  void Arrête(Arrêt Branchement::* geste);
  [[nodiscard]] bool FaitPartout(Arrêt Branchement::* geste) const;

  Ref<ZED_Timer> timer_;
  Pointeur<const Horloge> horloge_;
  // Shared, and never changed: a frame may be unplugged while the stop runs.
  std::shared_ptr<const std::vector<Branchement>> branchés_;
  std::vector<std::string> bornes_;
  std::string enAttente_;  // cause of the raise under way
  bool connue_ = false;    // it has one
  std::vector<Cause> causes_;
  std::vector<Suivi> suivis_;  // one for each cause
  std::uint64_t perdues_ = 0;
  bool déclenchée_ = false;
  bool complet_ = true;
  double conduite_ = 0;  // time of the last drive, microseconds
  bool enCours_ = false;
  bool encore_ = false;
};

}  // namespace zuma::linux_
