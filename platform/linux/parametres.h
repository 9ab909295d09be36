#pragma once

#include <list>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "platform/collaborateurs.h"

namespace zuma::linux_ {

/// Shared parameter that tells its listeners, in the order of their registration, that its text
/// has changed; a text equal to the one it holds tells nothing.
///
/// A handler may do anything to the parameter it is told about:
/// - Write it: every listener is told again, once the present round is over. A chain of such
///   writes that does not settle ends after `kTours` rounds in a failure of the first write; the
///   last text stays.
/// - Subscribe: the new listener is told from the next change on.
/// - Unsubscribe itself or others: those not yet told in this round are not told any more.
/// - Fail: the others are told all the same, then the first failure goes to the writer.
class Parametre final : public ZED_Parametre, public std::enable_shared_from_this<Parametre> {
 public:
  /// Rounds of changes within one write.
  static constexpr int kTours = 16;

  /// Key, name and first text.
  Parametre(std::string clé, std::string nom, std::string valeur)
      : clé_(std::move(clé)), nom_(std::move(nom)), valeur_(std::move(valeur)) {}

  [[nodiscard]] std::string Key() const override { return clé_; }
  [[nodiscard]] std::string NomParamètre() const override { return nom_; }
  [[nodiscard]] std::string ValeurParamètre() const override { return valeur_; }
  [[nodiscard]] std::string_view LitValeur(std::string&) const override { return valeur_; }
  void ValeurParamètre(std::string valeur) override;
  int Abonne(Abonné abonné) override;
  void Désabonne(int numéro) noexcept override;

 private:
  struct Abonnement {
    int numéro = 0;
    Abonné abonné;
    bool vivant = true;  // a dead one goes after the round: its handler may be running
  };

  void Diffuse();
  void FaitUnTour(std::exception_ptr& échec);

  std::string clé_;
  std::string nom_;
  std::string valeur_;
  std::list<Abonnement> abonnements_;
  int dernierNuméro_ = 0;
  bool enDiffusion_ = false;
  bool changéeDepuis_ = false;
};

/// The parameters of a host that brings none. A configuration names a parameter by an index:
/// sensors look for it among the names, commands and logic inputs among the keys, so both are the
/// index's text here. A laser board looks for a name of its own, which `nom` gives.
class Parametres {
 public:
  /// Adds a parameter, or writes `valeur` to the one of this index.
  Ref<Parametre> Ajoute(std::int32_t index, std::string valeur = {}, std::string nom = {});
  /// The parameter of this index, or Nothing.
  [[nodiscard]] Ref<Parametre> Cherche(std::int32_t index) const;
  /// What `Chassis.Lien` takes; parameters added later show in it.
  [[nodiscard]] const ParamètresRef& Collection() const noexcept { return collection_; }

 private:
  std::map<std::int32_t, Ref<Parametre>> parametres_;
  ParamètresRef collection_ = Crée<ParamètresPartagés>();  // in the order of their addition
};

}  // namespace zuma::linux_
