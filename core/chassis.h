#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "base/objet.h"
#include "commands/commande.h"
#include "core/collections.h"
#include "logic/entree_logique.h"
#include "logic/sortie_logique.h"
#include "logic/watchdog.h"
#include "platform/base_de_donnees.h"
#include "sensors/capteur.h"
#include "tree/carte.h"

namespace zuma {

///@{
/// Counted reference; never Nothing from an accessor of the frame.
using CartesRef = Ref<Cartes>;
using CommandesRef = Ref<Commandes>;
using EntréeLogiquesRef = Ref<EntréeLogiques>;
using SortieLogiquesRef = Ref<SortieLogiques>;
///@}

class Variables;
namespace recherche {
class Annuaire;
}
namespace requêtes {
struct ObjetLié;
}

/// One test frame, and the only object that a host creates itself.
///
/// The host calls, in this order: `TimerExact`, `ChargeErreur`, `ChargeLeChassis`, `Lien`,
/// `MiseàJourDesLiens`, `Initialise`, then `MetàJour` in its loop, and `Décharge` at the end.
/// Nothing checks the order: a step left out shows as a failure in the error record later. All of
/// it runs on the host's thread.
class Chassis : public Objet {
 public:
  /// `plateforme` belongs to the host and outlives the frame.
  explicit Chassis(Plateforme& plateforme) : Objet(plateforme, "Chassis") {}
  ~Chassis() override;

  /// Appends the diagnostic dump of the whole frame to the text file `Ou` of the host, the watchdog
  /// apart. Each object opens and closes the file for itself. To be called between passes. A
  /// failure goes to the caller and ends the dump there.
  void AutoSave(const std::string& Ou) const;

  /// Closes what must be closed and ends the sensors. To be called before the frame is released;
  /// a failure goes to the caller.
  Valeur Décharge();
  /// Name of the frame's row; empty until it is loaded.
  [[nodiscard]] const std::string& Nom() const { return Nom_; }
  /// Does nothing: a host collects the causes from `Capteur.TesteAU` itself.
  void TesteAU(std::span<std::string> astrTableAUs);

  ///@{
  /// Rates in hertz; 0 is never due. Analog and logic outputs have no pass of their own:
  /// those two rates are kept for the dump.
  void FréquenceEA(double hertz) { mdblFréquenceEA = hertz; }
  [[nodiscard]] double FréquenceEA() const noexcept { return mdblFréquenceEA; }
  void FréquenceSA(double hertz) { mdblFréquenceSA = hertz; }
  void FréquenceEL(double hertz) { mdblFréquenceEL = hertz; }
  void FréquenceSL(double hertz) { mdblFréquenceSL = hertz; }
  ///@}

  /// The boards, in refresh order; empty when nothing was loaded.
  [[nodiscard]] CartesRef Cartes();
  /// Replaces the boards.
  void Cartes(CartesRef cartes) { Cartes_ = std::move(cartes); }
  /// The commands, in refresh order; empty when nothing was loaded.
  [[nodiscard]] CommandesRef Commandes();
  using Objet::TimerExact;
  /// The timer that its pass reads.
  [[nodiscard]] const Ref<ZED_Timer>& LeTimer() const noexcept { return Timer(); }
  /// The watchdog; one that does nothing when the frame has none.
  [[nodiscard]] WatchdogRef Watchdog();
  /// Replaces the commands.
  void Commandes(CommandesRef commandes) { Commandes_ = std::move(commandes); }
  /// Replaces the watchdog.
  void Watchdog(WatchdogRef watchdog) { Watchdog_ = std::move(watchdog); }

  /// Puts every output in its safe state at once: commands to their initial value, logic outputs
  /// to rest, watchdog armed to trip, boards written in this call. One that fails keeps no other
  /// from being driven. What did not get there is told by `SortiesNonAtteintes`.
  void DéclencheAU();
  /// Names of the commands, then of the logic outputs, whose present value has not reached their
  /// device as far as the link can tell: a write that failed, or one that the device behind a
  /// serial link or bus has not confirmed yet. To be asked again for as long as a stop is latched.
  /// An output without a channel is none.
  [[nodiscard]] std::vector<std::string> SortiesNonAtteintes();

  /// The logic inputs, in refresh order; empty when nothing was loaded.
  [[nodiscard]] EntréeLogiquesRef EntréesLogiques();
  /// The manual inputs found by label, at most six.
  [[nodiscard]] EntréeLogiquesRef EntréesManuelles();
  /// Replaces the logic inputs.
  void EntréesLogiques(EntréeLogiquesRef entrées) { EntréesLogiques_ = std::move(entrées); }
  /// The logic outputs, in refresh order; empty when nothing was loaded.
  [[nodiscard]] SortieLogiquesRef SortiesLogiques();
  /// Replaces the logic outputs.
  void SortiesLogiques(SortieLogiquesRef sorties) { SortiesLogiques_ = std::move(sorties); }
  /// The sensors; behind `Lien` in the order of their dependencies.
  [[nodiscard]] CapteursRef Capteurs();
  ///@{
  /// Well-known inputs, Nothing when no input bears their label. `AU` is the "Entrée Armé" input.
  [[nodiscard]] EntréeLogiqueRef DépartEssai() const { return DépartEssai_; }
  [[nodiscard]] EntréeLogiqueRef DépartRéarme() const { return DépartRéarme_; }
  [[nodiscard]] EntréeLogiqueRef AutoManu() const { return AutoManu_; }
  [[nodiscard]] EntréeLogiqueRef AU() const { return AU_; }
  ///@}
  /// Replaces the sensors.
  void Capteurs(CapteursRef capteurs) { Capteurs_ = std::move(capteurs); }

  /// One pass: time, rates, commands, watchdog, boards, sensors, logic inputs. Never waits. Must
  /// not be re-entered.
  void MetàJour();
  /// The next pass refreshes channels, sensors and logic inputs whatever the time: for a host whose
  /// instants are set from outside, as those of a recording are.
  void ExigeUnRafraîchissement();
  /// How often the sensors were refreshed: a recorder takes a line each time it moves.
  [[nodiscard]] std::uint64_t RafraichissementsEA() const noexcept { return rafraichissementsEA_; }
  /// Starts boards and objects, once.
  void Initialise();
  /// Lets sensors, commands and logic I/O resolve their references.
  void MiseàJourDesLiens();
  /// Builds the frame's tree from the database; only once on one object.
  void ChargeLeChassis(const Ref<BaseDeDonnées>& dtbMaBase, std::int32_t lngIndexChassis);
  /// Links the objects, finds the well-known inputs, sorts the sensors in the order of their
  /// dependencies. `NomDuChassis` is the frame's index as text.
  void Lien(const Ref<BaseDeDonnées>& dtbMaBase, const std::string& NomDuChassis,
            const Ref<ZED_Securite>& MaSecurite_obj = {}, const ParamètresRef& MesParam = {},
            const Ref<ZED_Traduction>& Traducteur_obj = {});
  /// Reads the labels of the well-known inputs from the current record.
  void ParamètresDepuisBD(const Ref<Recordset>& rstMonRecordSet);
  using Objet::ChargeErreur;

  [[nodiscard]] std::string_view NomPourErreur() const override { return Nom_; }
  /// For who may outlive the frame: empty once it is gone.
  [[nodiscard]] std::weak_ptr<Chassis> Suivi() const noexcept { return moi_; }
  /// For the searches of `core/recherche.h`: null but while `Lien` links the objects.
  [[nodiscard]] const recherche::Annuaire* LAnnuaire() const noexcept { return annuaire_; }

 private:
  friend class recherche::Annuaire;
  static constexpr std::size_t kNombreManuelles = 6;
  struct Dues {
    bool ea = false;
    bool el = false;
    bool wd = false;
  };

  void ChargeCartes(const Ref<BaseDeDonnées>& base, std::int32_t chassis);
  void ChargeCapteurs(const Ref<BaseDeDonnées>& base, std::int32_t chassis);
  void ChargeCommandes(const Ref<BaseDeDonnées>& base, std::int32_t chassis);
  void ChargeEntréesLogiques(const Ref<BaseDeDonnées>& base, std::int32_t chassis);
  void ChargeSortiesLogiques(const Ref<BaseDeDonnées>& base, std::int32_t chassis);
  void ChargeWatchDog(const Ref<BaseDeDonnées>& base, std::int32_t chassis);
  void LitLaLigne(const Ref<BaseDeDonnées>& base, std::int32_t chassis);
  template <class Collection, class LitLigne>
  void ChargeObjets(std::string_view nom, const Ref<BaseDeDonnées>& base, std::int32_t chassis,
                    const requêtes::ObjetLié& requête, Collection& collection, LitLigne&& lit);
  void ElagueLesSortiesModbus();
  void LieLesObjets(const Ref<ZED_Securite>& sécurité, const ParamètresRef& paramètres,
                    const Ref<ZED_Traduction>& traducteur);
  void RepèreLesEntréesConnues();
  void TrieLesCapteurs();
  void Ecarte(const zuma::Capteurs& restants);
  void DateLeDépart();
  [[nodiscard]] Dues CalculeLesDues();
  void SurveilleLesLectures(std::span<const CarteRef> cartes);
  void SertLeWatchdog();
  void SertLaCarte(Carte& carte, const Dues& dues);
  // The object of an accessor, created when absent, without the cost of a new reference.
  template <class T>
  T* OuVide(Ref<T>& objet) {
    if (!objet) objet = Crée<T>(LaPlateforme());
    return objet.Brut();
  }
  void RemplitLesVariables(Variables& v) const;

  const recherche::Annuaire* annuaire_ = nullptr;
  std::shared_ptr<Chassis> moi_{this, [](Chassis*) {}};
  std::string Nom_;
  CartesRef Cartes_;
  CapteursRef Capteurs_;
  CommandesRef Commandes_;
  EntréeLogiquesRef EntréesLogiques_;
  SortieLogiquesRef SortiesLogiques_;
  WatchdogRef Watchdog_;
  Ref<ZED_Securite> MaSecurite_obj_;
  EntréeLogiqueRef DépartEssai_;
  EntréeLogiqueRef DépartRéarme_;
  EntréeLogiqueRef AutoManu_;
  EntréeLogiqueRef AU_;
  EntréeLogiquesRef EntréesManuelles_;
  double mdblFréquenceEA = 200;
  double mdblFréquenceSA = 20;
  double mdblFréquenceEL = 20;
  double mdblFréquenceSL = 10;
  double mdblFréquenceWD = 500;
  double HeurePrécédenteMàJEA = 0;  ///< marks, in seconds
  double HeurePrécédenteMàJSA = 0;
  double HeurePrécédenteMàJEL = 0;
  double HeurePrécédenteMàJSL = 0;
  double HeurePrécédenteMàJWD = 0;
  double Heure = 0;  ///< last time read, in seconds
  std::uint64_t rafraichissementsEA_ = 0;
  std::string mstrLabelDépartEssai;
  std::string mstrLabelDépartRéarme;
  std::string mstrLabelDépartManuel;  ///< read, matched against nothing
  std::string mstrLabelAutoManu;
  std::string mstrLabelArmé;
  std::array<std::string, kNombreManuelles> mstrLabelManuelle;
  /// Type of the block in hand in a pass, for the error table.
  std::optional<ENUM_TYPE_FONCTION> typeEnMain_;
  std::optional<double> prochaineSurveillance_;  ///< seconds
};

}  // namespace zuma
