#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/en_cours.h"
#include "base/evenement.h"
#include "base/objet.h"
#include "base/poursuite.h"
#include "base/reglages_ligne.h"
#include "base/table_etalonnage.h"
#include "core/collections.h"
#include "platform/base_de_donnees.h"
#include "sensors/enumerations.h"
#include "sensors/parametres_eprouvette.h"
#include "sensors/regression.h"
#include "tree/canal.h"

namespace zuma {

class Chassis;
class EntréeLogique;
class FenêtreHôte;
class Variables;
struct DialogueSérie;
namespace trames_capteur {
struct Mesure;
}
/// Counted reference to the sensors of a frame, or of another sensor.
using CapteursRef = Ref<Capteurs>;
/// Counted reference to a sensor.
using CapteurRef = Ref<Capteur>;

/// How often something was asked of a sensor since the start: who watches it sees each act by the
/// count that moved, however short it was. Each goes round at 256.
struct GestesDuCapteur {
  std::uint8_t zéros = 0;          ///< zeros asked for
  std::uint8_t zérosRepris = 0;    ///< taken back
  std::uint8_t tares = 0;          ///< tares asked for
  std::uint8_t taresReprises = 0;  ///< taken back

  /// The same counts.
  bool operator==(const GestesDuCapteur&) const = default;
};

/// One named measurement in engineering units: the points of a channel through a calibration
/// table, or a value made from other sensors, from the clock or from a serial instrument.
///
/// `Chassis` makes it, reads its row, links it, starts it and refreshes it. Its limits are watched
/// on each refresh: a sensor that may stop the frame hands the cause to the safety object.
class Capteur : public Objet {
 public:
  /// A sensor of kind `capteurNormal`; `plateforme` outlives it.
  explicit Capteur(Plateforme& plateforme);
  /// Takes its calibration dialog off the screen.
  ~Capteur() override;

  using Objet::Key;
  /// True once a tare was taken and until it is cancelled.
  [[nodiscard]] bool EtatDeLaTare() const { return EtatDeLaTare_; }
  using Objet::TimerExact;
  /// Opens the calibration dialog as a child of the host's window, or brings it to the front;
  /// nothing on a sensor that the user may not calibrate.
  Valeur EtalonnageExterieur(FenêtreHôte* FeuilleMere_obj);
  /// Forgets the calibration dialog, and takes it off the screen.
  Valeur ResetFeuilleEtalonnage();
  /// The user may calibrate on the machine; the sensor then neither warns nor stops.
  [[nodiscard]] bool EtalonnageExterieurPossible() const { return EtalonnageExterieurPossible_; }
  ///@{
  /// The recordset of the sensor's row.
  [[nodiscard]] const Ref<Recordset>& LeRecordset() const { return LeRecordset_; }
  void LeRecordset(Ref<Recordset> lignes) { LeRecordset_ = std::move(lignes); }
  ///@}
  /// Name by which other rows refer to it; "" when it has none.
  [[nodiscard]] const std::string& Label() const { return Label_; }
  /// Remark of the calibration, of the row.
  [[nodiscard]] const std::string& CommentaireEtalonnage() const { return CommentaireEtalonnage_; }
  /// Changes that name; references that are resolved stay.
  void Label(std::string label) { Label_ = std::move(label); }

  /// Puts the zero back to 0, on an overlap sensor that of the small child too. A running
  /// acquisition goes on.
  void AnnuleRaz();
  /// Simple switch between small and large sensor on this sensor's own value. Not used by the
  /// refresh.
  void GestionRecouvrement();
  /// True while the calibration dialog exists.
  [[nodiscard]] bool ModeEdition() const { return static_cast<bool>(mobjFeuilleEtalonnage); }
  /// Starts learning the gap: large value less small value, one reading.
  void RecouvrementInitAcquisistion(const CapteurRef& PetitCapteur_obj,
                                    const CapteurRef& GrandCapteur_obj);
  /// One more reading of the gap, half of which is the new one.
  void RecouvrementAcquisistion(const CapteurRef& PetitCapteur_obj,
                                const CapteurRef& GrandCapteur_obj);
  /// Value of the sensor to show, by the place of the small one about the band. The names are
  /// keys of `CapteursFils_cobj`; thresholds in units.
  double RecouvrementLecture(const CapteursRef& CapteursFils_cobj, std::string& CapteurCourant_str,
                             const std::string& GrandCapteur_str,
                             const std::string& PetitCapteur_str, double SeuilBasUC_dbl,
                             double SeuilHautUC_dbl, double& EcartMoyen_dbl,
                             std::int32_t& NbValeurLues_lng);
  /// Shows another sensor. Going to the large one with enough readings gives it the gap as tare.
  void RecouvrementChangementCapteur(const CapteursRef& LesCapteurs_cobj,
                                     std::string& CapteurCourant_str,
                                     const std::string& NouveauCapteur_str,
                                     const std::string& PetitCapteur_str,
                                     const std::string& GrandCapteur_str, double EcartMoyen_dbl,
                                     std::int32_t NombreDeValeursLues_lng);
  /// Puts the tare back to 0. A running acquisition goes on and sets one afterwards.
  void AnnuleTare();
  /// Does nothing: a sensor holds nothing that must be closed.
  Valeur Décharge() { return {}; }
  /// Rows of the calibration table.
  [[nodiscard]] std::int16_t MaxPoints() const { return TableEtalonnage::kMaxPoints; }
  /// State of the zero; on an overlap sensor that of the small child.
  [[nodiscard]] ENUM_OPERATION_MAV EtatRAZ() const;
  /// `Acquisition` while a tare is being measured.
  [[nodiscard]] ENUM_OPERATION_MAV EtatTare() const { return musrOpérationCouranteDeTare; }
  /// Appends the sensor's block of the diagnostic dump to the text file `Ou` of the host. A failure
  /// goes to the caller.
  void AutoSave(const std::string& Ou) const;
  ///@{
  /// Integration time of the points, in seconds; 0 is none.
  [[nodiscard]] double TempsIntégration() const { return mdblTempsIntégration; }
  void TempsIntégration(double secondes) { mdblTempsIntégration = secondes; }
  ///@}
  /// Puts the cause in the first empty entry from 1 on, when the sensor is in danger. Nothing when
  /// none is left.
  void TesteAU(std::span<std::string> TableAUs);
  /// The sensor is in a dangerous overrun, or too old for a sensor that may stop the frame.
  [[nodiscard]] bool AU() const {
    return musrEtat == ENUM_ETAT_CAPTEUR::DépassementDangeureux || tropVieux_;
  }
  /// How old something is, and whether that is too old for it.
  struct AgeDeMesure {
    double secondes = 0;  ///< of the oldest
    bool vieux = false;   ///< older than it may be
    bool lue = true;      ///< a first value has come
  };
  /// `Age`, `EstVieux` and `EstLu` at once.
  [[nodiscard]] AgeDeMesure LAge() const;
  /// Seconds since the oldest of what the value is made from was read: its channel, the sensors
  /// below it, or its own instrument. 0 for the clock and for a sensor made from nothing.
  [[nodiscard]] double Age() const { return LAge().secondes; }
  /// Something that the value is made from is older than its device leaves it when all is well (see
  /// `Canal::AgeLimite`).
  [[nodiscard]] bool EstVieux() const { return LAge().vieux; }
  /// False while the instrument behind the sensor, or behind one in service that it is made from,
  /// has given nothing yet: the value is then no measure.
  [[nodiscard]] bool EstLu() const { return LAge().lue; }
  /// Its value comes neither from a channel nor from other sensors: it asks an instrument itself,
  /// or the host gives it.
  [[nodiscard]] bool EstDUnInstrument() const;
  /// Age in seconds beyond which the sensor is not valid and, when it may, stops the frame; 0 for
  /// none.
  [[nodiscard]] double AgeMaximal() const { return mdblAgeMaximal; }
  /// Lets the sensor stop the frame, as at start.
  Valeur AutoriseAU();
  /// Force of a stress on the present section, in the unit of child "1".
  [[nodiscard]] double ConvertionContrainteForce(double Contrainte_dbl);
  /// Keeps the sensor from stopping the frame.
  Valeur InterditAU();
  ///@{
  /// Writes the name of the row, and the one that the operator reads.
  void NomDuCapteur(std::string nom) { mstrNom = std::move(nom); }
  void NomAfficheDuCapteur(std::string nom) { NomAfficheDuCapteur_ = std::move(nom); }
  ///@}
  ///@{
  /// The name of the row, and the one that the operator reads.
  [[nodiscard]] const std::string& NomDuCapteur() const { return mstrNom; }
  [[nodiscard]] const std::string& NomAfficheDuCapteur() const { return NomAfficheDuCapteur_; }
  ///@}
  /// Minimum and maximum are being looked for.
  [[nodiscard]] bool AutoriseDétectionMaxi() const { return AutoriseDétectionMaxi_; }
  /// The sensor passed its selection in the last refresh.
  [[nodiscard]] bool CapteurSelectionne() const { return CapteurSelectionne_; }
  /// Switching detection on restarts the maximum from the present value.
  void AutoriseDétectionMaxi(bool autorise);
  /// Starts measuring a new zero over the configured number of readings, where the kind has one.
  /// Does not look at `RazAutorise_bln`: that is for the caller.
  void Raz();
  /// Starts measuring a tare so that the present input reads `ValeurApresTarage_var`. Nothing
  /// while one is being measured.
  void Tare(const Valeur& ValeurApresTarage_var = Valeur(0.0));
  /// Value in units that the last `Tare` asked for.
  [[nodiscard]] double ValeurApresTarage() const { return mdblValeurApresTarage; }
  /// Zeros of a sensor that is made from others are theirs.
  [[nodiscard]] const GestesDuCapteur& Gestes() const { return gestes_; }
  /// Restarts both extremes from the present value.
  void RazMaxiDétecté();
  /// Value in units, after tare and offset; 0 while not enabled.
  [[nodiscard]] double ValeurCourante() const { return Enabled_bln_ ? mdblValeurCourante : 0; }
  /// Points after zero and integration; 0 while not enabled.
  [[nodiscard]] double ValeurEnPoints() const {
    return Enabled_bln_ ? mdblValeurCouranteEnPoints : 0;
  }
  /// Writes the value in units, from outside the refresh; it is of now. The next refresh of a kind
  /// that
  /// computes one replaces it.
  void ValeurCourante(double valeur) {
    mdblValeurCourante = valeur;
    DateLaMesure();
  }
  /// An `ENUM_ETAT_CAPTEUR`, as a number.
  [[nodiscard]] std::int16_t Etat() const { return static_cast<std::int16_t>(musrEtat); }
  /// State at the moment of the last new maximum.
  [[nodiscard]] ENUM_ETAT_CAPTEUR EtatMaxi() const { return EtatMaxi_; }
  /// Sets the tare in units, taken off each value; `EtatDeLaTare` stays.
  void ValeurTare(double tare) { ValeurTare_ = tare; }
  /// "+", "-", "*" or "/" of a combination.
  void Operateur_str(std::string opérateur) { Operateur_str_ = std::move(opérateur); }
  /// The operator of a combination.
  [[nodiscard]] const std::string& Operateur_str() const { return Operateur_str_; }
  /// Tare in units, taken off each value; 0 for none.
  [[nodiscard]] double ValeurTare() const { return ValeurTare_; }
  ///@{
  /// Sensors that this one is made from, under "1", "2", ...; Nothing until linked.
  [[nodiscard]] CapteursRef CapteursFils() const { return CapteursFils_; }
  void CapteursFils(CapteursRef fils) { CapteursFils_ = std::move(fils); }
  ///@}
  using Objet::ChargeErreur;
  ///@{
  /// Largest and smallest value seen since the last restart, in units.
  [[nodiscard]] double MaxiDétecté() const { return mdblMaxiDétecté; }
  [[nodiscard]] double MiniDétecté() const { return mdblMiniDétecté; }
  ///@}
  /// Upper limit of the range in units, as deduced at start: of the row, or of the sensors below.
  [[nodiscard]] double MaxiCapteur() const { return MaxiCapteur_; }
  ///@{
  /// Limits in units, as configured.
  [[nodiscard]] double MaxiCapteurUnité() const { return mdblSécuritéMaxiEnUnité; }
  void MaxiCapteurUnité(double unités) { mdblSécuritéMaxiEnUnité = unités; }
  [[nodiscard]] double MiniCapteurUnité() const { return mdblSécuritéMiniEnUnité; }
  void MiniCapteurUnité(double unités) { mdblSécuritéMiniEnUnité = unités; }
  ///@}
  /// Lower limit in points, brought to units in spite of the name.
  [[nodiscard]] double MiniCapteurPoints() const;
  /// A reading below this absolute value is not valid; 0 switches the test off.
  [[nodiscard]] double SeuillLectureNonValide() const { return mdblSeuilDeLectureNonValide; }
  /// Upper limit in points, brought to units in spite of the name.
  [[nodiscard]] double MaxiCapteurPoints() const;
  /// Lower limit of the range in units, like `MaxiCapteur`.
  [[nodiscard]] double MiniCapteur() const { return MiniCapteur_; }
  ///@{
  /// Who calibrated it, as kept in the row.
  [[nodiscard]] const std::string& NomEtalonneur() const { return NomEtalonneur_; }
  void NomEtalonneur(std::string nom) { NomEtalonneur_ = std::move(nom); }
  ///@}
  ///@{
  /// The channel that it reads; Nothing on a sensor made from something else.
  [[nodiscard]] CanalRef Canal() const { return mobjCanal; }
  void Canal(CanalRef canal) { mobjCanal = std::move(canal); }
  ///@}
  /// When it was calibrated, as kept in the row; a text.
  [[nodiscard]] const std::string& DateEtalonnage() const { return DateEtalonnage_; }
  /// Kind of test that parameter "Type de contrainte" tells; shows a message on the obsolete ones.
  [[nodiscard]] ENUM_TYPE_CONTRAINTE TypeCalculContrainte();
  /// Writes the word of that kind to parameter "Type de contrainte"; a value that is no kind writes
  /// nothing. Without the parameter, failure 91.
  void TypeCalculContrainte(ENUM_TYPE_CONTRAINTE type);
  /// Name of its maximum for the operator, of the row; often empty.
  [[nodiscard]] const std::string& TexteMaxi() const { return TexteMaxi_; }
  ///@{
  /// Kind of the sensor. A number that is no kind computes nothing.
  [[nodiscard]] ENUM_TYPE_CAPTEUR TypeDeCapteur() const { return musrTypeDeCapteur; }
  void TypeDeCapteur(ENUM_TYPE_CAPTEUR type);
  ///@}
  /// Changes the text of the date; the row keeps its own until it is saved.
  void DateEtalonnage(std::string date) { DateEtalonnage_ = std::move(date); }
  /// The number in parameter "S": section, reference length or selected value by kind.
  [[nodiscard]] double dblSurfaceContrainte();
  /// The row lets the operator zero the sensor. `Raz` does not look at it.
  [[nodiscard]] bool RazAutorise_bln() const { return RazAutorise_bln_; }
  /// Writes that number as text to parameter "S". Without the parameter, failure 91.
  void dblSurfaceContrainte(double surface);
  void DéclencheAU() {}  ///< a sensor has no output to cut
  /// Unit of the value and of its limits.
  [[nodiscard]] const std::string& UnitéEtalonnage() const { return UnitéEtalonnage_; }
  /// Stores the unit and raises `UnitChange`, also when it is the same.
  void UnitéEtalonnage(const std::string& unité);
  /// Unit value of point `intIndex`, 0 to 20; outside, failure 9 in the error record.
  [[nodiscard]] double PointX(std::int16_t intIndex) const;
  ///@{
  /// Point value of point `intIndex`, likewise.
  [[nodiscard]] double PointY(std::int16_t intIndex) const;
  void PointY(std::int16_t intIndex, double points);
  void PointX(std::int16_t intIndex, double unités);
  ///@}

  /// Reads the sensor's row, at the first record, and keeps the recordset. The frequency, in
  /// hertz, sizes the run of a slope.
  void ParamètresDepuisBD(const Ref<Recordset>& rstMonRecordSet, double FréquenceRafraichissement);
  /// Resolves the references of the row; what is not found is told in a message and stays Nothing.
  void Lien(const Ref<ZED_Securite>& MaSecurite_obj, const ParamètresRef& MesParametres_mobj,
            const Ref<ZED_Traduction>& Traducteur_obj, Chassis* MonChassis);
  /// Has an overlap sensor compare its children again, once they have found their own limits.
  void ReprendLesLimitesDesFils();
  /// Lets go of children and shared parameters: the sensor is no part of its frame any more.
  void Délie() noexcept;
  /// Writes name, key and channel on the file that the host has open under that file descriptor,
  /// for traces, and leaves it open. Without a channel the lines before it are written, and failure
  /// 91 goes to the error record.
  void Espion(std::int16_t intNumFich) const;
  /// Does nothing: `Lien` has resolved all references.
  void MiseàJourDesLiens() {}
  /// Prepares the first refresh: limits, clock, serial line.
  void Initialise();
  /// One refresh, of this sensor alone. Does not allocate unless it fails.
  void MetàJour();
  /// Enabling reaches the children too; disabling does not.
  void Enabled_bln(bool enService);
  /// False on a sensor that is out of service: its value reads 0.
  [[nodiscard]] bool Enabled_bln() const { return Enabled_bln_; }

  /// Event `UnitChange`: registers a handler and returns its number, for `DésabonneUnitChange`.
  using AbonnéUnité = Evènement<const std::string&>::Abonné;
  /// Registers a handler of `UnitChange`; it gets the new unit.
  int AbonneUnitChange(AbonnéUnité abonné) { return UnitChange_.Abonne(std::move(abonné)); }
  /// Removes a handler; nothing on a number that is not there.
  void DésabonneUnitChange(int numéro) noexcept { UnitChange_.Désabonne(numéro); }

  [[nodiscard]] std::string_view NomPourErreur() const override { return mstrNom; }

 private:
  struct Calcul;   // the kinds' small functions
  struct Genre;    // a kind's row
  struct Lecture;  // the reading of a row
  struct Vidage;   // the lines of the dump
  /// Working values of one refresh.
  struct Passe {
    double dblOffset = 0;
    double AncienZéroEnPoints = 0;
    double dblMoyenne = 0;
    double DeltaT = 0;
    double Intégation = 0;
    bool tenue = false;  ///< the value is held, and what is being measured with it
    Poursuite chacun;    ///< what failed is told behind the refresh
  };

  void LitLaConfigurationRS();
  void LieAuChassis(Chassis& chassis);
  void LieLesFils(Chassis& chassis);
  void LieLesParamètres(const ParamètresPartagés& partagés);
  void DéduitLesLimites();
  void PrépareLeRecouvrement();
  void CalculeSurface();
  [[nodiscard]] double SectionDeLEprouvette(double& kLongueur);
  void ReporteLaSection(double inscrite, double section);
  [[nodiscard]] ENUM_TYPE_CONTRAINTE TypeContrainteDepuisTexte(const std::string& texte);
  [[nodiscard]] ENUM_FORME_EPROUVETTE FormeDepuisTexte(const std::string& texte);
  [[nodiscard]] ENUM_TYPE_CALCUL_SURFACE MéthodeSurfaceDepuisTexte(const std::string& texte);
  [[nodiscard]] double ContrainteDepuisForce(double force, double surface) const;

  void Rafraîchit(Passe& passe);
  void CalculeLaValeur(Passe& passe);
  void CalculeDuCanal(Passe& passe);
  void SuitLesExtrêmes();
  void DétecteLesExtrêmes();
  [[nodiscard]] bool LitLOffset(Passe& passe);
  void TientLaValeur(Passe& passe);
  [[nodiscard]] bool EntréeLAutorise() const;
  [[nodiscard]] bool EstSélectionné() const;
  void Refuse();
  [[nodiscard]] double Intègre(double points, Passe& passe);
  void ContrôleLesLimites();
  void SortDesLimites();
  void DateLaMesure() {
    heureDeMesure_ = LaPlateforme().heureDePasse;
    mesuré_ = true;
  }
  void ContrôleLAge();
  void Compte(std::uint8_t GestesDuCapteur::* geste);
  [[nodiscard]] std::string CauseDuDépassement() const;
  [[nodiscard]] std::string CauseDeLAge() const;
  void DéclencheLArrêt(std::string (Capteur::*cause)() const);
  [[nodiscard]] std::string Traduit(std::string_view clé) const;
  [[nodiscard]] std::string EnTexte(double nombre) const;
  [[nodiscard]] bool AccumuleMAV(double valeur, double zéro, std::int32_t nbLectures,
                                 double& moyenne);
  void CommenceMAV(ENUM_OPERATION_MAV& opération);
  void AvanceLeZéro(Passe& passe);
  void AvanceLaTare(Passe& passe);
  void RemplitLesVariables(Variables& v, const Passe& passe) const;
  [[nodiscard]] CapteurRef Fils(std::size_t rang) const;
  [[nodiscard]] CapteurRef FilsOuRien(std::size_t rang) const;
  [[nodiscard]] CapteurRef PetitCapteur() const;
  /// Stands for as long as the children are asked; fails on a sensor found below itself.
  [[nodiscard]] EnCours Descend() const;
  [[nodiscard]] ZED_LiaisonSerie& Liaison();
  void MarqueLEmission();
  void DémarreLaLigne(const DialogueSérie& dialogue);
  [[nodiscard]] bool EstSilencieux() const;
  void EcouteLaLigne(const DialogueSérie& dialogue);
  void Redemande(const DialogueSérie& dialogue);
  void PrendLaMesure(const std::optional<trames_capteur::Mesure>& mesure);

  // Identity and calibration record.
  std::string Label_;
  std::string mstrNom;
  std::string NomAfficheDuCapteur_;
  ENUM_TYPE_CAPTEUR musrTypeDeCapteur = ENUM_TYPE_CAPTEUR::capteurNormal;
  const Genre* genre_ = nullptr;  ///< row of the kind, none for a number that is no kind
  bool estNormal_ = false;        ///< that kind, which most sensors are of, for the pass
  std::string UnitéEtalonnage_;
  std::string DateEtalonnage_;
  std::string NomEtalonneur_;
  std::string CommentaireEtalonnage_;
  bool EtalonnageExterieurPossible_ = false;
  Ref<Recordset> LeRecordset_;
  Ref<FeuilleTenue> mobjFeuilleEtalonnage;
  Evènement<const std::string&> UnitChange_;

  // Values.
  double mdblValeurCourante = 0;
  double ValeurTare_ = 0;
  double mdblValeurCouranteEnPoints = 0;
  ENUM_ETAT_CAPTEUR musrEtat = ENUM_ETAT_CAPTEUR::Correct;
  bool AutoriseDétectionMaxi_ = true;
  double mdblMaxiDétecté = 0;
  double mdblMiniDétecté = 0;
  ENUM_ETAT_CAPTEUR EtatMaxi_ = ENUM_ETAT_CAPTEUR::Correct;
  bool Enabled_bln_ = true;
  bool CapteurSelectionne_ = false;

  // Limits and processing.
  double MaxiCapteur_ = 0;
  double MiniCapteur_ = 0;
  double mdblSécuritéMiniEnUnité = 0;
  double mdblSécuritéMaxiEnUnité = 0;
  double mdblSécuritéMiniEnPoints = 0;
  double mdblSécuritéMaxiEnPoints = 0;
  double mdblSeuilDeLectureNonValide = 0;
  double mdblAgeMaximal = 0;  ///< seconds
  bool tropVieux_ = false;    ///< the last refresh stopped the frame for its age
  double heureDeMesure_ = 0;  ///< of a value that came without a channel, seconds
  bool mesuré_ = false;       ///< such a value came
  bool RazAutorise_bln_ = false;
  bool mblnArrêtSiDépassement = false;
  bool mblnAutoriseAU = true;
  double mdblTempsIntégration = 0;    ///< seconds
  double mdblTempsCalculVitesse = 0;  ///< seconds
  double mdblFréquenceRafraichissement = 0;
  std::string Operateur_str_;
  std::string TexteMaxi_;
  TableEtalonnage table_;

  // Zero, tare, filter and clock; times in microseconds.
  std::int32_t mlngNbLecturePourRAZ = 1;
  double mdblSommeCanalPourMAV = 0;
  std::int16_t mintNbLectureEffectuées = 0;
  ENUM_OPERATION_MAV musrOpérationCouranteDeRAZ = ENUM_OPERATION_MAV::RienFaire;
  ENUM_OPERATION_MAV musrOpérationCouranteDeTare = ENUM_OPERATION_MAV::RienFaire;
  double ValeurDeRAZ_mdbl = 0;
  double mdblValeurApresTarage = 0;
  bool EtatDeLaTare_ = false;
  GestesDuCapteur gestes_;
  double mdblAncienneValeurEnPoints = 0;
  double mdblAncienTemps = 0;
  double mdblDépartCapteurTemps = 0;
  double MémoTemps = 0;
  double MémoMaxi = 0;
  std::unique_ptr<Régression> régression_;  ///< of a slope alone

  // Overlap.
  std::string CapteurCourant_str_;
  std::string GrandCapteur_str_;
  std::string PetitCapteur_str_;
  double mdblSeuilBasPourCent = 0;
  double SeuilBasUC_dbl_ = 0;
  double mdblSeuilHautPourCent = 0;
  double SeuilHautUC_dbl_ = 0;
  std::int32_t mlngNbValeursMini = 0;
  std::int32_t NbValeurLues_lng_ = 0;
  double EcartMoyen_dbl_ = 0;
  RECOUVREMENT_ETAT musrEtatRecouvrement = RECOUVREMENT_ETAT::InferieurSeuilBas;

  // Serial line of the kinds that ask an instrument by themselves.
  std::string mstrConfigurationRS;
  RéglagesLigne réglagesRS_;
  Octets mstrTamponRS;
  double mdblHeureEmission = 0;  ///< microseconds
  Ref<ZED_LiaisonSerie> LiaisonSerie_;

  // Selection.
  std::string mstrValeurSelection;
  std::string mstrLabelELSelection;
  std::string mstrEtatELSelection;
  Ref<EntréeLogique> mobjELSelection;

  // Links.
  CanalRef mobjCanal;
  CapteursRef CapteursFils_;
  mutable bool descend_ = false;             ///< the children are being asked
  std::vector<std::string> mastrLabelsFils;  ///< labels of the children "1", "2", ...
  std::int32_t mlngIndexCanal = 0;
  Ref<ZED_Securite> MaSecurite_obj_;
  Ref<ZED_Traduction> Traducteur_obj_;
  ParamètresEprouvette paramètres_;
  double mdblSurfaceCalculée = 0;  ///< square centimetres
  bool reporteLaSection_ = false;  ///< the section is being written back to "S"
};

}  // namespace zuma
