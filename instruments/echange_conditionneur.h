#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "base/outils_modbus.h"
#include "platform/collaborateurs.h"
#include "platform/liaison_serie.h"

namespace zuma {

/// What a conditioner reports of its line.
enum class DrapeauConditionneur : std::uint8_t {
  ErreurGenerale,          ///< a wrong answer, of whatever kind
  Timeout,                 ///< no answer in time
  ErreurAdresseModbus,     ///< answer of another slave
  ErreurCRC,               ///< wrong check sum
  ErreurDiagnostic,        ///< wrong diagnostic answer
  ErreurEcriture,          ///< a write was refused
  ErreurLecture,           ///< a read was refused
  ErreurProblemeFonction,  ///< answer of another function
  ErreurAutre              ///< anything else
};
/// How many there are.
inline constexpr std::size_t kNombreDeDrapeaux = 9;

/// Name of a flag, as the classes bear it.
[[nodiscard]] std::string_view NomDuDrapeau(DrapeauConditionneur drapeau) noexcept;

/// Flag that a wrong answer raises beside `ErreurGenerale`.
[[nodiscard]] DrapeauConditionneur DrapeauDe(OutilsModbus::Résultat résultat) noexcept;

/// One question to the module and the wait for its answer. The flags are latched: a good answer
/// lowers none, but for one that comes when nothing was wrong for five seconds.
class EchangeConditionneur {
 public:
  /// An answer later than `timeOut` microseconds is no answer.
  explicit EchangeConditionneur(double timeOut) : timeOut_(timeOut) {}

  /// The line and the clock of an exchange.
  struct Ligne {
    PortInstrument& port;  ///< line to the module
    ZED_Timer& timer;      ///< its clock
  };
  /// What becomes of a request while an answer is awaited.
  enum class Envoi : std::uint8_t {
    SiLibre,  ///< refused while an answer is awaited
    Forcé     ///< drops the exchange in progress and resets the port
  };

  /// Asks slave `adresse` for `nbRegistres` registers from `premierRegistre` on. False, and nothing
  /// sent, while an answer is awaited.
  bool EnvoieRequête(const Ligne& ligne, std::int32_t adresse, std::int32_t premierRegistre,
                     std::int32_t nbRegistres, Envoi envoi);
  /// Looks at what came in: true on a good answer, whose data `Données` then holds. A wrong one
  /// raises its flags and ends the exchange, and so does the time-out.
  bool LitRéponse(const Ligne& ligne);
  /// Waits for a good answer: false once the time-out has passed. A wrong answer does not shorten
  /// the wait.
  bool AttendRéponse(const Ligne& ligne);

  /// An answer is awaited.
  [[nodiscard]] bool EnAttente() const noexcept { return enAttente_; }
  /// Data bytes of the last good answer.
  [[nodiscard]] const OutilsModbus::Valeurs& Données() const noexcept { return données_; }
  /// True while that flag is raised.
  [[nodiscard]] bool Levé(DrapeauConditionneur drapeau) const noexcept {
    return drapeaux_[static_cast<std::size_t>(drapeau)];
  }

 private:
  void Lève(DrapeauConditionneur drapeau, ZED_Timer& timer) {
    drapeaux_[static_cast<std::size_t>(drapeau)] = true;
    heureDeFaute_ = timer.LitMicrosecondes();
  }
  void BaisseLesAnciens(ZED_Timer& timer);
  bool Echoit(ZED_Timer& timer);

  double timeOut_;
  bool enAttente_ = false;
  double heureDEnvoi_ = 0;  ///< microseconds
  std::optional<double> heureDeFaute_;
  Octets question_;
  Octets réponse_;
  OutilsModbus::Valeurs données_;
  std::array<bool, kNombreDeDrapeaux> drapeaux_{};
};

}  // namespace zuma
