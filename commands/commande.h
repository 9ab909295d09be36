#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>

#include "base/objet.h"
#include "base/table_etalonnage.h"
#include "commands/dither.h"
#include "commands/servo.h"
#include "logic/sortie_logique.h"
#include "platform/base_de_donnees.h"
#include "sensors/capteur.h"
#include "tree/canal.h"

namespace zuma {

class Chassis;
class FenêtreHôte;

/// Kind of a command; 0 takes no action.
enum class ENUM_TYPE_COMMANDE : std::int32_t {
  Aucune = 0,
  Normale = 1,
  ToutOuRien = 2,
  Servo = 3,
  Recopie = 4,
};

/// One output of the frame in engineering units.
///
/// The value in units is limited, converted to points by the command's own calibration table,
/// limited again in points and written to a channel; an on/off command drives two logic outputs
/// instead; a copying one follows a sensor, enabled or not. Disabled, the command reads its channel
/// back, so that it is taken over from where the output is. A command without a channel does
/// nothing.
class Commande : public Objet {
 public:
  /// Hears of each refresh of an enabled servo command; see `servo::LigneDuJournal`.
  using JournalServo = std::function<void(const servo::Relevé&)>;

  /// A command of no kind yet; `plateforme` outlives it.
  explicit Commande(Plateforme& plateforme) : Objet(plateforme, "Commande") {}
  /// Takes its calibration form off the screen.
  ~Commande() override;

  using Objet::ChargeErreur;
  using Objet::TimerExact;

  /// Rows of the calibration table.
  [[nodiscard]] static std::int16_t MaxPoints() { return TableEtalonnage::kMaxPoints; }
  ///@{
  /// The row that the command was read from.
  [[nodiscard]] Ref<Recordset> LeRecordset() const { return LeRecordset_; }
  void LeRecordset(Ref<Recordset> ligne) { LeRecordset_ = std::move(ligne); }
  ///@}

  /// Drives the output to the initial value at once, without waiting for a dither. An on/off
  /// command closes whatever its initial value: no stop energises a line.
  void DéclencheAU();
  /// Appends the command's block of the diagnostic dump to the text file `Ou` of the host. A
  /// failure goes to the caller.
  void AutoSave(const std::string& Ou) const;
  void TesteAU(std::span<std::string>) {}  ///< a command raises no cause

  ///@{
  /// Enabling writes the present value to the channel, within the working limits only; disabling
  /// takes the value from the channel, or from the outputs of an on/off command, which moves
  /// neither way. Nothing without a channel.
  void Enabled(bool enService);
  [[nodiscard]] bool Enabled() const { return mblnEnabled; }
  ///@}

  /// Takes a copying command out of service and holds its output at the initial value, whatever its
  /// sensor says, from its next refresh until `Enabled` is set. Nothing on the other kinds.
  void MaintientAuRepos();
  /// True from `MaintientAuRepos` until the command is put in service.
  [[nodiscard]] bool MaintenueAuRepos() const { return maintenue_; }

  ///@{
  /// Dither: frequency in hertz, 0 for none, and peak-to-peak amplitude in units. What is no number
  /// is refused (5): it would keep the output from being written.
  [[nodiscard]] double FréquenceDither() const { return FréquenceDither_; }
  void FréquenceDither(double hertz);
  [[nodiscard]] double AmplitudeDither() const { return AmplitudeDither_; }
  void AmplitudeDither(double unités);
  ///@}
  ///@{
  /// Offset of the servo-valve in units, and its slope in units per unit of the use pressure. No
  /// column feeds them.
  [[nodiscard]] double OffsetServovalve() const { return décalage_.fixe; }
  void OffsetServovalve(double unités) { décalage_.fixe = unités; }
  [[nodiscard]] double PenteOffsetServovalve() const { return décalage_.pente; }
  void PenteOffsetServovalve(double pente) { décalage_.pente = pente; }
  ///@}

  /// Does nothing: `Lien` has resolved all references.
  void MiseàJourDesLiens() {}
  /// Computes the output and writes it, or reads it back; mirrors the value to the parameter.
  void MetàJour();
  /// Resolves channel, sensors, logic outputs and parameter.
  void Lien(Chassis* MonZuma_obj, const ParamètresRef& MesParametres_mobj,
            const Ref<ZED_Traduction>& Traducteur_obj);
  ///@{
  /// Name by which other rows refer to it; "" when it has none.
  [[nodiscard]] const std::string& Label() const { return Label_; }
  void Label(std::string label) { Label_ = std::move(label); }
  ///@}
  /// Takes the limits and the initial value of the row, and starts the dither's schedule.
  void Initialise();
  /// Reads the command's row, at the first record, and keeps the recordset.
  void ParamètresDepuisBD(const Ref<Recordset>& rstMonRecordSet);
  /// True while a calibration form exists.
  [[nodiscard]] bool ModeEdition() const { return static_cast<bool>(feuille_); }
  /// Opens the calibration form of a copying command as a child of the host's window, or brings it
  /// to the front; nothing on the other kinds. The host's window is asked for `rafraichitTout` once
  /// a calibration was kept.
  Valeur EtalonnageExterieur(FenêtreHôte* FeuilleMere_obj);
  /// Forgets the calibration form, and takes it off the screen.
  Valeur ResetFeuilleEtalonnage();

  /// The value asked for, or the one sent, reached a working limit; the limits themselves count.
  [[nodiscard]] bool SortieSaturée() const { return propSortieSaturée; }
  /// Its kind, of the row.
  [[nodiscard]] ENUM_TYPE_COMMANDE TypeCommande() const { return TypeCommande_; }
  /// Value of the channel; without one, failure 91.
  [[nodiscard]] double ValeurCouranteEnPoints() const;
  ///@{
  /// Value asked for, before the correction of a servo-valve; that of the channel when disabled,
  /// and of an on/off command the state of its outputs: its value where that is of their sign, else
  /// 1 or -1. Assigning limits it and drives the output at once, on the present side of a dither. A
  /// value that is no number is refused (5).
  [[nodiscard]] double ValeurCouranteEnUnité() const { return mdblValeurCouranteEnUnité; }
  void ValeurCouranteEnUnité(double unités);
  ///@}

  ///@{
  /// Kept for hosts that set it: it stores nothing and gives Nothing.
  void SélectionDeDébit(const Ref<Objet>&) {}
  [[nodiscard]] CanalRef SélectionDeDébit() const { return {}; }
  ///@}

  /// Value of the row in units, to which a stop drives the output.
  [[nodiscard]] double ValeurInitiale() const { return mdblValeurInitiale; }
  ///@{
  /// Working limits in units.
  [[nodiscard]] double MiniCommande() const { return mdblMiniCommande; }
  [[nodiscard]] double MaxiCommande() const { return mdblMaxiCommande; }
  ///@}
  ///@{
  /// Name of the command, of the row.
  void NomDeLaCommande(std::string nom) { NomDeLaCommande_ = std::move(nom); }
  [[nodiscard]] const std::string& NomDeLaCommande() const { return NomDeLaCommande_; }
  ///@}
  ///@{
  /// Safety limits of the row. Those in points are the last clamp before the channel.
  [[nodiscard]] double SécuritéMiniEnPoints() const { return mdblSécuritéMiniEnPoints; }
  [[nodiscard]] double SécuritéMaxiEnPoints() const { return mdblSécuritéMaxiEnPoints; }
  [[nodiscard]] double SécuritéMiniEnUnité() const { return mdblSécuritéMiniEnUnité; }
  [[nodiscard]] double SécuritéMaxiEnUnité() const { return mdblSécuritéMaxiEnUnité; }
  ///@}
  /// Unit of the value and of its limits, "kN" say.
  [[nodiscard]] const std::string& UnitéEtalonnage() const { return UnitéEtalonnage_; }
  ///@{
  /// Who calibrated it, as kept in the row.
  [[nodiscard]] const std::string& NomEtalonneur() const { return NomEtalonneur_; }
  void NomEtalonneur(std::string nom) { NomEtalonneur_ = std::move(nom); }
  ///@}
  ///@{
  /// When it was calibrated, as kept in the row; a text.
  [[nodiscard]] const std::string& DateEtalonnage() const { return DateEtalonnage_; }
  void DateEtalonnage(std::string date) { DateEtalonnage_ = std::move(date); }
  ///@}
  /// The channel that it writes; Nothing when the row names none.
  [[nodiscard]] CanalRef Canal() const { return mobjCanal; }
  /// The last refresh gave the channel a value, and that value has reached the device as far as its
  /// link can tell. An on/off command is where its logic outputs are, and a command out of service
  /// where its channel is. True without a channel.
  [[nodiscard]] bool Atteinte() const;
  ///@{
  /// Source of a copying command; writing replaces the one that `Lien` found.
  [[nodiscard]] CapteurRef CapteurDeRecopie() const { return CapteurDeRecopie_; }
  void CapteurDeRecopie(CapteurRef capteur) { CapteurDeRecopie_ = std::move(capteur); }
  ///@}

  ///@{
  /// Calibration table, units and points of row 1 to 20; outside 0 to 20, failure 9.
  [[nodiscard]] double PointX(std::int16_t intIndex) const;
  void PointX(std::int16_t intIndex, const Valeur& unités);
  [[nodiscard]] double PointY(std::int16_t intIndex) const;
  void PointY(std::int16_t intIndex, double points);
  ///@}
  /// Remark of the calibration, of the row.
  [[nodiscard]] const std::string& CommentaireEtalonnage() const { return CommentaireEtalonnage_; }

  /// Diagnosis of a servo command; an empty function ends it.
  void Journal(JournalServo journal) { journal_ = std::move(journal); }

  [[nodiscard]] std::string_view NomPourErreur() const override { return NomDeLaCommande_; }

 private:
  struct Colonnes;
  struct Vidage;  // the lines of the dump

  void LitLigne(const Recordset& ligne);
  void LieAuChassis(Chassis& chassis);
  template <class T>
  void LieLeLabel(const std::string& label, std::string_view utilise, const Ref<T>& trouvé,
                  Ref<T>& cible) const;

  [[nodiscard]] double Heure() const;
  [[nodiscard]] double ValeurDesSorties() const;
  void Envoie(double unités);
  static double ExigeUnNombre(double valeur);
  [[nodiscard]] bool EstDedans(double unités) const;
  [[nodiscard]] double Borne(double unités) const;
  [[nodiscard]] double PointsSûrs(double unités) const;
  [[nodiscard]] servo::Compensation CalculeCoefServo() const;
  void Ecrit(double points);
  void EcritSiChangé(double points);

  void Rafraîchit();
  void RelitLeCanal();
  void MetEnService(bool reprise);
  void MetHorsService();
  void SortNormale();
  void SortToutOuRien();
  void SortServo();
  void SortRecopie();
  void SortAvecDither(double base);
  void Publie();

  bool mblnEnabled = false;
  bool maintenue_ = false;
  std::string NomDeLaCommande_;
  CanalRef mobjCanal;
  std::string DateEtalonnage_;
  std::string NomEtalonneur_;
  std::string UnitéEtalonnage_;
  double mdblMaxiCommande = 0;
  double mdblMiniCommande = 0;
  double mdblValeurInitiale = 0;
  double mdblValeurCouranteEnUnité = 0;
  double ValeurCouranteEnPoints_ = 0;  ///< last points computed or read back
  bool sortie_ = false;                ///< the value asked for was given to the channel
  bool propSortieSaturée = false;
  double mdblSécuritéMaxiEnUnité = 0;
  double mdblSécuritéMiniEnUnité = 0;
  double mdblSécuritéMaxiEnPoints = 0;
  double mdblSécuritéMiniEnPoints = 0;
  SortieLogiqueRef sortie1_;
  SortieLogiqueRef sortie2_;
  ENUM_TYPE_COMMANDE TypeCommande_ = ENUM_TYPE_COMMANDE::Aucune;
  Ref<ZED_Parametre> paramètre_;
  double FréquenceDither_ = 0;
  double AmplitudeDither_ = 0;
  servo::Décalage décalage_;
  TableEtalonnage table_;
  Dither dither_;
  std::int32_t indexCanal_ = 0;
  std::string labelAlimentation_;
  std::string labelUtilisation_;
  std::string labelSortie1_;
  std::string labelSortie2_;
  std::int32_t indexParamètre_ = 0;
  CapteurRef alimentation_;
  CapteurRef utilisation_;
  Ref<Recordset> LeRecordset_;
  Ref<FeuilleTenue> feuille_;
  Ref<ZED_Traduction> traducteur_;
  std::weak_ptr<Chassis> chassis_;
  std::string CommentaireEtalonnage_;
  CapteurRef CapteurDeRecopie_;
  std::string labelRecopie_;
  std::string Label_;
  JournalServo journal_;

  // Text last published, made again only when the value changes.
  std::optional<double> publiée_;
  std::string texte_;
  std::string tampon_;
};

/// Counted reference to a command.
using CommandeRef = Ref<Commande>;

}  // namespace zuma
