#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <utility>

#include "base/objet.h"
#include "platform/base_de_donnees.h"
#include "tree/etat_pilote.h"
#include "tree/ligne_driver.h"

namespace zuma {

/// Full scale of every analog reading, in points, whatever the board's resolution.
inline constexpr double kPleineEchelle = 65536;

/// One hardware channel of a block. `ValeurCanal` is the meeting point of the program: the
/// hardware side fills or empties it, sensors, commands and logic objects read or write it.
class Canal : public Objet, public TientUnEtat {
 public:
  /// A channel of no block yet; `plateforme` outlives it.
  explicit Canal(Plateforme& plateforme) : Objet(plateforme, "Canal") {}

  using Objet::ChargeErreur;
  using Objet::TimerExact;

  /// Appends the channel's block of the diagnostic dump to the text file `Ou` of the host. A
  /// failure goes to the caller.
  void AutoSave(const std::string& Ou) const;

  void DéclencheAU() {}  ///< an input or an output alone has nothing to cut
  void Lien() {}         ///< nothing to resolve

  /// Reads the channel's row, at the recordset's current record.
  void ParamètresDepuisBD(const Ref<Recordset>& rstMonRecordSet);

  ///@{
  /// Gain code of the channel; boards with automatic range write the code found here.
  void Gain(const Valeur& gain);
  [[nodiscard]] std::int16_t Gain() const { return mintGain; }
  ///@}

  /// Name of the channel, of its row.
  [[nodiscard]] const std::string& Nom() const { return Nom_; }

  /// Starts the channel on its board.
  void Initialise();
  /// Exchanges the value with the board; nothing on a channel out of service. Holds the caller
  /// for as long as the board's conversions take.
  void MetàJour();

  /// Value in points: 65536 for the full scale of an analog channel, -1 or 0 for a logic one.
  [[nodiscard]] double ValeurCanal() const { return mdblValeurCanal; }
  /// Stores the value for the next `MetàJour`; touches no hardware.
  void ValeurCanal(double points) {
    TientValeurCanal(points);
    DateLaLecture();
  }
  /// The same for a value that is not of now: it keeps its age.
  void TientValeurCanal(double points) {
    mdblValeurCanal = points;
    CanalRafraichit_ = true;
    baissée_ = baissée_ || points != kVrai;
  }

  /// Seconds since the value was last read or written, by the passes of the frame; before the first
  /// one, since the start.
  [[nodiscard]] double Age() const { return LaPlateforme().heureDePasse - heureDeLecture_; }
  /// Age beyond which a reading is old: five times the period at which the device gives its
  /// readings, and a second at least.
  [[nodiscard]] double AgeLimite() const { return âgeLimite_; }
  /// `Age` is beyond `AgeLimite`.
  [[nodiscard]] bool EstVieux() const { return Age() > âgeLimite_; }
  /// What has become of the readings since the last look: nothing to tell, too old from now on, or
  /// of
  /// now again.
  enum class Suite : std::uint8_t { Rien, Perdue, Retrouvée };
  /// For the frame, now and then. Told at the second look: one pass that waited long is no loss of
  /// what it reads last. `durée` is the time without a reading, seconds.
  [[nodiscard]] Suite Regarde(double& durée);
  /// False while the value is still the 0 of before the first reading.
  [[nodiscard]] bool EstLu() const { return lue_; }

  /// Of an output: the value that the channel holds is the one that last reached its device, as far
  /// as the link can tell. A board that takes writes blindly counts as reached once it was written;
  /// a device that answers, once it has confirmed. False while nothing was written yet, and on a
  /// channel that no driver serves.
  [[nodiscard]] bool Atteint() const { return valeurAtteinte_ == mdblValeurCanal; }

  ///@{
  /// The block, as long as there is one.
  [[nodiscard]] Fonction* Parent() const { return Parent_.Brut(); }
  void Parent(Fonction* parent);
  ///@}

  ///@{
  /// Conversions averaged by one channel read.
  void NbLecture(std::int16_t nombre) { mintNbLecture = nombre; }
  [[nodiscard]] std::int16_t NbLecture() const { return mintNbLecture; }
  ///@}

  /// Identifier of a ruler's position message.
  [[nodiscard]] std::int16_t PositionID() const { return PositionID_; }

  ///@{
  /// Base address of its board, handed down by the block.
  void Adresse(std::int32_t adresse) { mlngAdresse = adresse; }
  [[nodiscard]] std::int32_t Adresse() const { return mlngAdresse; }
  ///@}

  ///@{
  /// Handle of the CAN port behind the channel, as the library of the card gave it.
  void HandlePort(std::int32_t poignée) { HandlePort_ = poignée; }
  [[nodiscard]] std::int32_t HandlePort() const { return HandlePort_; }
  ///@}

  ///@{
  /// Driver of the channel; of its row, else that of its block. A number that no row of the
  /// registry has serves nothing.
  [[nodiscard]] ENUM_DRIVER Driver() const { return musrDriver; }
  void Driver(ENUM_DRIVER driver);
  ///@}
  /// Row of that driver; `kSansDriver` without one.
  [[nodiscard]] const LigneDriver& LeDriver() const { return *ligne_; }

  ///@{
  /// Kind of the channel, that of its block.
  void TypeCanal(ENUM_TYPE_FONCTION type);
  [[nodiscard]] ENUM_TYPE_FONCTION TypeCanal() const { return musrTypeCanal; }
  ///@}

  /// Place of the channel on its board; -1 is the link's error indicator on Modbus blocks.
  [[nodiscard]] std::int16_t NuméroCanal() const { return NuméroCanal_; }

  /// True once a value was written or read.
  [[nodiscard]] bool CanalRafraichit() const { return CanalRafraichit_; }

  [[nodiscard]] std::string_view NomPourErreur() const override { return Nom_; }

  // For the drivers.

  /// Hexadecimal serial number of the device behind the channel.
  [[nodiscard]] const std::string& NuméroDeSérie() const { return mstrNuméroDeSérie; }
  ///@{
  /// Node of the device on its bus, from the row or as the device told it.
  [[nodiscard]] std::int16_t NuméroDeNoeud() const { return mintNode; }
  void NuméroDeNoeud(std::int16_t noeud) { mintNode = noeud; }
  ///@}
  /// Mode that a ruler is told at its start, of the row.
  [[nodiscard]] std::int16_t ModeOpératoire() const { return mintMode; }
  /// Magnets on the ruler, of the row.
  [[nodiscard]] std::int16_t NombreDAimants() const { return mintNombreAimants; }
  /// Which of the magnets this channel reads, of the row; 0 when the row leaves it Null.
  [[nodiscard]] std::int16_t PositionDeLAimant() const { return mintPositionAimant; }
  /// Identifier of a ruler's status message.
  [[nodiscard]] std::int16_t StatusID() const { return StatusID_; }
  ///@{
  /// The device holds `valeur`, or the present value: from here on `Atteint` compares with it.
  void MarqueAtteint(double valeur) { valeurAtteinte_ = valeur; }
  void MarqueAtteint() { valeurAtteinte_ = mdblValeurCanal; }
  ///@}
  /// What the device holds is not known any more: a write failed, or the device was lost.
  void OublieAtteint() { valeurAtteinte_ = std::numeric_limits<double>::quiet_NaN(); }
  /// The value is of the present pass.
  void DateLaLecture() {
    DateLeDépart();
    lue_ = true;
  }
  /// Settles `AgeLimite`; nothing is old before the refresh that reads it was due, seconds.
  void RetientLAgeLimite(double périodeDuChassis = 0);
  /// Ages count from here.
  void DateLeDépart() { heureDeLecture_ = LaPlateforme().heureDePasse; }
  /// A level other than true was written since the last call: a driver that is looked at once a
  /// pass sees a stop that changes nothing, and one that a start follows at once.
  [[nodiscard]] bool PrendLaBaisse() noexcept { return std::exchange(baissée_, false); }
  /// This analog output is a frequency output.
  [[nodiscard]] bool EnFréquence() const { return mblnCanalEnFréquence; }
  /// The words of this Modbus input are numbers with a sign, -32768 to 32767, and not 0 to 65535.
  [[nodiscard]] bool RegistreSigné() const { return registreSigné_; }
  ///@{
  /// False makes `MetàJour` do nothing; the value stays.
  void EnService(bool enService) { mblnEnService = enService; }
  [[nodiscard]] bool EnService() const { return mblnEnService; }
  ///@}
  /// Base address as the drivers take it: the low 16 bits.
  [[nodiscard]] std::uint16_t Base() const { return static_cast<std::uint16_t>(mlngAdresse); }
  /// Driver object of the channel's board, of the class that the channel's driver row opens.
  template <class T>
  [[nodiscard]] T& PiloteDe() const {
    return static_cast<T&>(*pilote_);
  }
  /// Reads `NbLecture` conversions and sets the value to their mean, brought from the board's
  /// full scale to the common one. A conversion that gave no number is no reading: the value stays.
  /// `NbLecture` of 0 or less fails with 11.
  template <class Lecture>
  void LitMoyenne(Lecture&& conversion, double pleineEchelleCarte) {
    SommeTemp = 0;
    for (IndexLecture = 1; IndexLecture <= mintNbLecture; ++IndexLecture) {
      SommeTemp += static_cast<double>(conversion(mintGain));
    }
    const double moyenne = Divise(SommeTemp, std::max<std::int16_t>(mintNbLecture, 0));
    if (!std::isfinite(moyenne)) return;
    mdblValeurCanal = moyenne * kPleineEchelle / pleineEchelleCarte;
    DateLaLecture();
  }

 private:
  void LitLigne(const Recordset& ligne, Valeur& vData);
  void LitDriver(const Recordset& ligne, Valeur& vData);
  void Résout();

  std::int16_t mintGain = 0;
  std::int16_t mintNbLecture = 1;
  double mdblValeurCanal = 0;
  double heureDeLecture_ = 0;  ///< seconds
  bool lue_ = false;
  std::uint8_t regards_ = 0;      ///< looks at which the reading was old, two at most
  double heureAvantLaPerte_ = 0;  ///< seconds
  double âgeLimite_ = 1;          ///< seconds
  double valeurAtteinte_ = std::numeric_limits<double>::quiet_NaN();
  std::string Nom_;
  std::int16_t NuméroCanal_ = 0;
  std::int32_t mlngAdresse = 0;
  std::string mstrNuméroDeSérie;
  bool mblnCanalEnFréquence = false;
  bool registreSigné_ = false;
  ENUM_TYPE_FONCTION musrTypeCanal = ENUM_TYPE_FONCTION::FctAucune;
  ENUM_DRIVER musrDriver = ENUM_DRIVER::DrvAucun;
  std::int16_t mintNode = 0;
  std::int16_t mintMode = 0;
  std::int16_t PositionID_ = 0;
  std::int16_t StatusID_ = 0;
  std::int32_t HandlePort_ = 0;
  std::int16_t mintNombreAimants = 0;
  std::int16_t mintPositionAimant = 0;
  bool mblnEnService = true;
  bool CanalRafraichit_ = false;
  bool baissée_ = false;
  std::int32_t IndexLecture = 0;
  double SommeTemp = 0;
  PointeurSuivi<Fonction> Parent_;

  // Resolved when driver or type change, so that the pass looks nothing up.
  const LigneDriver* ligne_ = &kSansDriver;
  const OpérationsPilote* opérations_ = nullptr;
  PointeurSuivi<Pilote> pilote_;
};

/// Counted reference to a channel.
using CanalRef = Ref<Canal>;

}  // namespace zuma
