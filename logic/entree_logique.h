#pragma once

#include <array>
#include <span>
#include <string>

#include "base/evenement.h"
#include "base/objet.h"
#include "logic/enumerations.h"
#include "platform/base_de_donnees.h"
#include "tree/canal.h"

namespace zuma {

class Chassis;

/// One named on/off input of the frame: a guard door, a start button, a limit switch.
///
/// Its source is a logic channel, a key of the keyboard, both (either makes it active), or with
/// neither whatever the host assigns. The state is filtered against contact bounce from the second
/// reading on, `Change` is raised when it changes, and an input set for it asks for the emergency
/// stop by itself.
class EntréeLogique : public Objet {
 public:
  /// A handler of `Change`; it gets the new state.
  using AbonnéChange = Evènement<ENUM_ETAT_LOGIQUE>::Abonné;

  /// An input without a source; `plateforme` outlives it.
  explicit EntréeLogique(Plateforme& plateforme) : Objet(plateforme, "Entrée logique") {}

  using Objet::ChargeErreur;
  using Objet::TimerExact;

  ///@{
  /// Lets the input ask for the stop, when its row gives a state that does.
  void AutoriseAU() { mblnAutoriseAU = true; }
  void InterditAU() { mblnAutoriseAU = false; }
  ///@}
  /// Appends the input's block of the diagnostic dump to the text file `Ou` of the host. A failure
  /// goes to the caller.
  void AutoSave(const std::string& Ou) const;

  void DéclencheAU() {}                    ///< an input has nothing to cut
  void TesteAU(std::span<std::string>) {}  ///< an input tells its cause when it asks for the stop

  ///@{
  /// Name of the input, of the row.
  void NomDeEntréeLogique(std::string nom) { NomDeEntréeLogique_ = std::move(nom); }
  [[nodiscard]] const std::string& NomDeEntréeLogique() const { return NomDeEntréeLogique_; }
  ///@}
  ///@{
  /// Name by which the frame's row and other programs refer to it; "" when it has none.
  [[nodiscard]] const std::string& Label() const { return Label_; }
  void Label(std::string label) { Label_ = std::move(label); }
  ///@}

  /// Reads the input's row, at the first record. An emergency stop level that is none of the
  /// three known texts is a failure, told once the rest of the row has been read.
  void ParamètresDepuisBD(const Ref<Recordset>& rstMonRecordSet);
  /// Does nothing: `Lien` has resolved all references.
  void MiseàJourDesLiens() {}

  /// Source channel. Without one an empty channel is made and kept: the input still counts as
  /// unconnected, since that channel has no name, but the host can no longer assign its state.
  [[nodiscard]] CanalRef Canal();
  /// Name of the key, empty for none.
  [[nodiscard]] const std::string& Touche() const { return Touche_; }

  /// Filtered state, or the forced one.
  [[nodiscard]] ENUM_ETAT_LOGIQUE ValeurCourante() const {
    return mblnForcée ? musrValeurForcée : musrValeurCourante;
  }
  /// State of an unconnected input, set by the host; nothing on an input with a channel.
  void ValeurCourante(ENUM_ETAT_LOGIQUE valeur);

  /// Resolves channel and parameters, and keeps safety object and translator.
  void Lien(const Ref<ZED_Securite>& MaSecurite_obj, const ParamètresRef& MesParametres_mobj,
            const Ref<ZED_Traduction>& Traducteur_obj, Chassis* MonChassis);
  /// Releases the keys that are down. The next reading is the first one again.
  void Initialise();
  /// Reads the source, filters it, asks for the stop for as long as its condition holds, and
  /// publishes the state. To be called when the channel's block has been refreshed.
  void MetàJour();

  ///@{
  /// Forcing changes what `ValeurCourante` shows and nothing else: filter, event, stop and
  /// parameters go on from the real source.
  void ForceON() { Force(ENUM_ETAT_LOGIQUE::Actif); }
  void ForceOFF() { Force(ENUM_ETAT_LOGIQUE::Inactif); }
  void LibereEntreeLogique() { mblnForcée = false; }
  ///@}

  /// Event `Change(NewValue_usr)`, after the stored state changed: registers a handler and returns
  /// its number, for `DésabonneChange`.
  int AbonneChange(AbonnéChange abonné) { return Change_.Abonne(std::move(abonné)); }
  /// Removes a handler; nothing on a number that is not there.
  void DésabonneChange(int numéro) noexcept { Change_.Désabonne(numéro); }

  [[nodiscard]] std::string_view NomPourErreur() const override { return NomDeEntréeLogique_; }

 private:
  enum RangParamètre : std::uint8_t { Etat, EtatActif, EtatInactif, Défaut, kNombreDeRangs };
  struct ParamètreLié {
    Valeur index;
    Ref<ZED_Parametre> paramètre;
  };

  /// False for a text that is no level.
  bool PrendLeNiveauDAU(const Valeur& niveau);
  void LitLesChamps(const Recordset& ligne);
  void LieLesParamètres(const ParamètresPartagés& paramètres);
  void Force(ENUM_ETAT_LOGIQUE état);
  void Rafraîchit();
  [[nodiscard]] bool CanalNommé() const { return mobjCanal && !mobjCanal->Nom().empty(); }
  [[nodiscard]] bool LaToucheEstEnfoncée() const;
  [[nodiscard]] bool LeCanalEstActif() const;
  [[nodiscard]] ENUM_ETAT_LOGIQUE LitLaSource();
  void Filtre(ENUM_ETAT_LOGIQUE brut);
  void Prend(ENUM_ETAT_LOGIQUE état);
  [[nodiscard]] bool DoitArrêter() const;
  void DéclencheLArrêt();
  void Publie();

  CanalRef mobjCanal;
  std::string NomDeEntréeLogique_;
  std::string Label_;
  // Inactive until its source or its host says otherwise.
  ENUM_ETAT_LOGIQUE musrValeurCourante = ENUM_ETAT_LOGIQUE::Inactif;
  bool mblnEtatActivation = false;
  bool mblnAutoriseAU = false;
  ENUM_ETAT_AU_LOGIQUE musrEtatAU = ENUM_ETAT_AU_LOGIQUE::Aucun;
  Ref<ZED_Securite> Securite_;
  std::string Touche_;
  double mdblAntiRebond = 0;  ///< seconds
  Ref<ZED_Traduction> Traducteur_;
  bool mblnLue = false;  ///< a source has really been read
  bool mblnForcée = false;
  ENUM_ETAT_LOGIQUE musrValeurForcée = ENUM_ETAT_LOGIQUE::Inactif;
  Valeur indexCanal_;
  std::array<ParamètreLié, kNombreDeRangs> paramètres_;
  std::array<std::string, 2> tampons_;  ///< room for the texts of two parameters
  ENUM_ETAT_LOGIQUE musrEtatSiRien = ENUM_ETAT_LOGIQUE::Inconnu;
  bool filtreAmorcé_ = false;  ///< has had a real reading since the start
  ENUM_ETAT_LOGIQUE dernierBrut_ = ENUM_ETAT_LOGIQUE::Inactif;
  double heureDuBrut_ = 0;  ///< when the source took that state, in seconds
  Evènement<ENUM_ETAT_LOGIQUE> Change_;
};

/// Counted reference to a logic input.
using EntréeLogiqueRef = Ref<EntréeLogique>;

}  // namespace zuma
