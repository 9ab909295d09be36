#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "platform/collaborateurs.h"
#include "platform/plateforme.h"

namespace zuma {

/// What every object of the tree has: its key, the timer and the error record handed down by its
/// loader, and the names that its messages bear.
class Objet {
 public:
  virtual ~Objet() = default;
  Objet(const Objet&) = delete;
  Objet& operator=(const Objet&) = delete;

  /// `Index` of the object's row as decimal text; its key in the collections.
  [[nodiscard]] const std::string& Key() const { return Key_; }
  /// Set by the collection that makes the object.
  void Key(std::string clé) { Key_ = std::move(clé); }

  /// Hands over the high-resolution timer.
  virtual void TimerExact(Ref<ZED_Timer> timer) { TimerExact_ = std::move(timer); }

  /// Hands over the error record; returns an empty value.
  virtual Valeur ChargeErreur(Ref<ZED_Erreur> objLclErreur) {
    objLclErreur_ = std::move(objLclErreur);
    return {};
  }

  /// Class word of messages.
  [[nodiscard]] std::string_view MotDeClasse() const { return motDeClasse_; }
  /// Name of the object in messages, empty until its row is read.
  [[nodiscard]] virtual std::string_view NomPourErreur() const = 0;
  /// The error record of its loader; Nothing without one.
  [[nodiscard]] const Ref<ZED_Erreur>& Erreur() const { return objLclErreur_; }
  /// The services of the machine, the host's.
  [[nodiscard]] Plateforme& LaPlateforme() const { return plateforme_; }

  /// Shows a message of this object to the integrator and waits for the answer.
  void Montre(std::string_view texte) const;

 protected:
  /// `motDeClasse` is kept as it is: a literal.
  Objet(Plateforme& plateforme, std::string_view motDeClasse)
      : plateforme_(plateforme), motDeClasse_(motDeClasse) {}

  /// The timer of its loader; Nothing without one.
  [[nodiscard]] const Ref<ZED_Timer>& Timer() const { return TimerExact_; }

 private:
  Plateforme& plateforme_;
  std::string_view motDeClasse_;
  std::string Key_;
  Ref<ZED_Timer> TimerExact_;
  Ref<ZED_Erreur> objLclErreur_;
};

}  // namespace zuma
