#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "base/ref.h"
#include "base/valeur.h"

// The objects that a host hands to a frame. A host may bring its own; ready-made ones stand in
// platform/linux and sim.
namespace zuma {

/// High-resolution timer (`TimerExact`).
class ZED_Timer {
 public:
  virtual ~ZED_Timer() = default;
  /// Monotonic time in microseconds since an arbitrary origin. Read on every pass and inside
  /// busy waits: it must cost little and never fail. Every wait and every silence is counted on it
  /// and none on the time of day, which can be set at any moment: put back an hour it would hold a
  /// pass for that hour.
  [[nodiscard]] virtual double LitMicrosecondes() = 0;
};

/// Two columns, text and value; row 0 stays empty (Null, Null).
using TableVariables = std::vector<std::array<Valeur, 2>>;

/// Error record: receives one entry for each failed operation.
class ZED_Erreur {
 public:
  virtual ~ZED_Erreur() = default;
  /// Stores the entry and returns. Called from inside a failed operation, so it must not fail.
  virtual void AjouteErreur(std::string_view message, const TableVariables& variables) = 0;
};

/// Safety object: the one place where a stop is decided and told to the operator.
class ZED_Securite {
 public:
  virtual ~ZED_Securite() = default;
  /// Keeps the cause, a complete text in the operator's language.
  virtual void PositionneCauseAU(std::string_view cause) = 0;
  /// Fires the stop; expected to end in `Chassis.DéclencheAU`. Returns an empty value.
  virtual Valeur DéclencheSécurité() = 0;
};

/// One shared parameter: a named text that tells its listeners when it changes.
class ZED_Parametre {
 public:
  /// A handler of `Change`; it asks for the new text itself.
  using Abonné = std::function<void()>;

  virtual ~ZED_Parametre() = default;
  /// Key in the host's collection, the decimal text of its index.
  [[nodiscard]] virtual std::string Key() const = 0;
  /// Name, compared exactly with the names of the configuration.
  [[nodiscard]] virtual std::string NomParamètre() const = 0;
  /// The present text, a copy.
  [[nodiscard]] virtual std::string ValeurParamètre() const = 0;
  /// The same text for the refresh pass, which must not allocate: a view of the parameter's own
  /// text where it has one, else a copy left in `tampon`. It holds until either changes.
  [[nodiscard]] virtual std::string_view LitValeur(std::string& tampon) const {
    tampon = ValeurParamètre();
    return tampon;
  }
  /// Stores the text and raises `Change` in the listeners.
  virtual void ValeurParamètre(std::string valeur) = 0;
  /// Event `Change`: registers a handler and returns its number, for `Désabonne`.
  virtual int Abonne(Abonné abonné) = 0;
  /// Removes a handler; nothing on a number that is not there.
  virtual void Désabonne(int numéro) noexcept = 0;
};

/// The host's parameters, in its order.
using ParamètresPartagés = std::vector<Ref<ZED_Parametre>>;
/// The host's parameters as a frame holds them; Nothing without any.
using ParamètresRef = Ref<ParamètresPartagés>;

/// Translator of the operator's texts.
class ZED_Traduction {
 public:
  virtual ~ZED_Traduction() = default;
  ///@{
  /// Name of the language that texts are given in, one of `Langues`.
  [[nodiscard]] virtual std::string LangueCourante() const = 0;
  virtual void LangueCourante(std::string langue) = 0;
  ///@}
  /// The languages known.
  [[nodiscard]] virtual std::vector<std::string> Langues() const = 0;
  /// Translation of `clé` in `section`; without one the default, without a default the key.
  [[nodiscard]] virtual std::string Traduit(std::string_view clé, std::string_view défaut = {},
                                            std::string_view section = "Zuma") const = 0;
};

}  // namespace zuma
