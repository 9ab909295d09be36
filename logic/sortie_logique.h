#pragma once

#include <span>
#include <string>

#include "base/objet.h"
#include "logic/enumerations.h"
#include "platform/base_de_donnees.h"
#include "tree/canal.h"

namespace zuma {

class Chassis;

/// One named on/off output of the frame. The polarity comes from the configuration, and a change
/// reaches the board at once. Without a channel an output accepts everything and does nothing.
class SortieLogique : public Objet {
 public:
  /// An output at rest without a channel; `plateforme` outlives it.
  explicit SortieLogique(Plateforme& plateforme) : Objet(plateforme, "Sortie logique") {}

  using Objet::ChargeErreur;
  using Objet::TimerExact;

  /// Puts the output at rest. The channel is written and not flushed: the stop refreshes the
  /// boards afterwards.
  void DéclencheAU();
  /// Appends the output's block of the diagnostic dump to the text file `Ou` of the host. A failure
  /// goes to the caller.
  void AutoSave(const std::string& Ou) const;

  void TesteAU(std::span<std::string>) {}  ///< an output raises no cause
  /// Does nothing: `Lien` has resolved all references.
  void MiseàJourDesLiens() {}

  /// State that it was given last.
  [[nodiscard]] ENUM_ETAT_LOGIQUE ValeurCourante() const { return ValeurCourante_; }
  /// The channel that it writes; Nothing when the row names none.
  [[nodiscard]] CanalRef Canal() const { return mobjCanal; }
  /// The present state has reached the device, as far as its link can tell; true without a channel.
  [[nodiscard]] bool Atteinte() const { return !mobjCanal || mobjCanal->Atteint(); }
  /// Stores the state and drives the board at once; the two Modbus links wait for their own cycle.
  /// A state that is neither active nor inactive is stored and drives nothing.
  void ValeurCourante(ENUM_ETAT_LOGIQUE valeur);

  /// Reads the output's row, at the first record.
  void ParamètresDepuisBD(const Ref<Recordset>& rstMonRecordSet);
  /// Resolves the channel.
  void Lien(const Ref<ZED_Securite>& MaSecurite_obj, const ParamètresRef& MesParametres_mobj,
            const Ref<ZED_Traduction>& Traducteur_obj, Chassis* MonChassis);
  ///@{
  /// Name by which other rows refer to it; "" when it has none.
  [[nodiscard]] const std::string& Label() const { return Label_; }
  void Label(std::string label) { Label_ = std::move(label); }
  ///@}
  /// State at rest; the channel is left alone.
  void Initialise() { ValeurCourante_ = ENUM_ETAT_LOGIQUE::Inactif; }
  /// Writes the present state to the channel; the block's own refresh carries it out.
  void MetàJour();
  ///@{
  /// Name of the output, of the row.
  void NomDeLaSortieLogique(std::string nom) { NomDeLaSortieLogique_ = std::move(nom); }
  [[nodiscard]] const std::string& NomDeLaSortieLogique() const { return NomDeLaSortieLogique_; }
  ///@}

  [[nodiscard]] std::string_view NomPourErreur() const override { return NomDeLaSortieLogique_; }

 private:
  void EcritLeNiveau();

  CanalRef mobjCanal;
  std::string NomDeLaSortieLogique_;
  ENUM_ETAT_LOGIQUE ValeurCourante_ = ENUM_ETAT_LOGIQUE::Inactif;
  bool mblnEtatActivation = false;
  Valeur indexCanal_;
  std::string Label_;
};

/// Counted reference to a logic output.
using SortieLogiqueRef = Ref<SortieLogique>;

}  // namespace zuma
