#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/chassis.h"
#include "host/depart.h"
#include "host/horloge_de_passe.h"
#include "host/machine.h"
#include "host/problemes.h"
#include "host/suivi_de_l_arret.h"
#include "platform/linux/parametres.h"
#include "platform/linux/securite.h"
#include "platform/linux/traducteur.h"
#include "publication/publication.h"

namespace zuma::host {

class GardienDesArrêts;

/// A frame on its machine, from load to release, in the order that a host follows. It is published
/// as long as it runs, so that other programs may look at it.
class ChassisEnMarche {
 public:
  /// Loads, links and starts frame `index`. A file or frame that is not there is misuse. Throws
  /// `publication::DéjàEnMarche`, nothing being touched, when another process runs that frame.
  /// Causes of a stop are told in the translator's language. Throws `DépartRefusé`, its outputs at
  /// rest, when load, link or start left entries in `recueil` and `malgréTout` does not take it all
  /// the same; then its stop is fired, and latched until it is acknowledged.
  ChassisEnMarche(const std::string& fichier, std::int32_t index, Machine& machine,
                  const Ref<Recueil>& recueil, linux_::Parametres paramètres,
                  const MalgréTout& malgréTout = {},
                  Ref<ZED_Traduction> traducteur = Crée<linux_::Traducteur>());
  /// Puts the outputs to rest before the frame is released: a program that ends must not leave a
  /// machine under its last set point.
  ~ChassisEnMarche();
  ChassisEnMarche(const ChassisEnMarche&) = delete;
  ChassisEnMarche& operator=(const ChassisEnMarche&) = delete;

  /// The frame; it ends with this object.
  [[nodiscard]] Chassis& LeChassis() { return chassis_; }
  /// Its safety object, which latches the causes of a stop.
  [[nodiscard]] linux_::Securite& LaSécurité() { return *sécurité_; }
  /// Which outputs a stop has reached.
  [[nodiscard]] const SuiviDeLArrêt& LeSuivi() const { return suivi_; }
  /// Its shared parameters.
  [[nodiscard]] const linux_::Parametres& LesParamètres() const { return paramètres_; }
  /// What other programs see of it.
  [[nodiscard]] publication::Publication& LaPublication() { return *publication_; }
  /// Keeps each stop from now on as a case in that folder; see `EcritLeCas`.
  void GardeLesArrêts(const std::string& dossier);
  /// One pass, and before the first one behind a refresh of the sensors the instruments that the
  /// pass leaves to the host: their exchange may take as long as a conversion, and what they give
  /// is felt by the sensors before anybody sees it as read.
  void Passe();
  /// Fires the stop for the operator: latched like any other.
  void Arrête(std::string_view cause = "stop asked at the keyboard");
  /// Acknowledges a stop. Nothing moves: outputs stay at rest until new commands, copying commands
  /// are held at rest and the watchdog board stays stopped until `RemetEnService`, or until the one
  /// or the other is enabled by itself. False while the stop is being driven.
  bool Acquitte();
  /// The operator's third act, behind release and acknowledgement: enables the watchdog, and the
  /// copying commands that the stop holds. False, and nothing done, while a stop is latched.
  bool RemetEnService();

 private:
  ChassisEnMarche(Machine& machine, const publication::Identité& identité,
                  const Ref<Recueil>& recueil, linux_::Parametres paramètres,
                  Ref<ZED_Traduction> traducteur);
  std::vector<Problème> Charge(const std::string& fichier, std::int32_t index);
  void Démarre(const publication::Identité& identité);
  void Publie();
  void MaintientLArrêt();
  void MetAuRepos();
  void FinitAuRepos();
  void SertLesLiens();

  Machine& machine_;
  publication::Place place_;
  Ref<Recueil> recueil_;
  Ref<ZED_Traduction> traducteur_;
  linux_::Parametres paramètres_;
  Ref<linux_::Securite> sécurité_;
  Chassis chassis_;
  SuiviDeLArrêt suivi_;
  std::optional<publication::Publication> publication_;
  std::size_t publiés_ = 0;  ///< of the problems
  std::unique_ptr<GardienDesArrêts> gardien_;
  Ref<HorlogeDePasse> horloge_;
  bool démarré_ = false;
  bool rafraîchi_ = false;          ///< the sensors, in the last pass
  std::vector<CarteRef> laissées_;  ///< boards whose instrument the pass does not refresh
};

/// Where the stops of a frame are kept unless somebody says otherwise: beside its database.
[[nodiscard]] std::string DossierDesArrêts(const std::string& fichier);

}  // namespace zuma::host
