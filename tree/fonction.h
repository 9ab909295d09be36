#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/objet.h"
#include "base/reglages_ligne.h"
#include "core/collections.h"
#include "platform/base_de_donnees.h"
#include "tree/canal.h"
#include "tree/echange_modbus.h"
#include "tree/etat_pilote.h"
#include "tree/ligne_driver.h"

namespace zuma {

/// Counted reference to the channels of a block.
using CanalsRef = Ref<Canals>;
/// Counted reference to a serial link.
using LiaisonSérieRef = Ref<ZED_LiaisonSerie>;

/// One functional block of a board: like channels behind one driver, at one address. It opens the
/// hardware link at start and carries the exchange of each cycle.
class Fonction : public Objet, public TientUnEtat {
 public:
  /// A block of no board yet; `plateforme` outlives it.
  explicit Fonction(Plateforme& plateforme) : Objet(plateforme, "Fonction") {}
  ~Fonction() override;

  /// The channel numbered -1, error indicator of a Modbus link; Nothing when there is none.
  [[nodiscard]] CanalRef CanalErreurModbus() const { return CanalErreurModbus_; }
  /// Driver of the block, of its row.
  [[nodiscard]] ENUM_DRIVER Driver_enm() const { return ligne_->valeur; }
  /// Row of that driver; `kSansDriver` without one.
  [[nodiscard]] const LigneDriver& LeDriver() const { return *ligne_; }
  /// Closes what must be closed before the frame is released. Failures go to the caller.
  void Décharge();

  using Objet::ChargeErreur;
  /// Appends the function's block of the diagnostic dump to the text file `Ou` of the host, then
  /// the blocks of its channels. A failure goes to the caller.
  void AutoSave(const std::string& Ou) const;
  /// Hands the call to each channel, in order.
  void DéclencheAU();
  void Lien() {}  ///< nothing to resolve

  ///@{
  /// Channels of the block; an empty collection is made on first access.
  [[nodiscard]] CanalsRef Canals();
  void Canals(CanalsRef canaux) { Canals_ = std::move(canaux); }
  ///@}

  /// Makes and reads the channels of the block, in the order of "Numéro du Canal".
  void ChargeLesCanaux(const Ref<BaseDeDonnées>& dtbMaBase, std::int32_t lngIndexDeLaFonction);

  ///@{
  /// The board, as long as there is one.
  [[nodiscard]] Carte* Parent() const { return Parent_.Brut(); }
  void Parent(Carte* parent);
  ///@}

  /// Kind of its channels.
  [[nodiscard]] ENUM_TYPE_FONCTION TypeDeFonction() const { return TypeDeFonction_; }
  ///@{
  /// Stores the base address and hands it to every channel.
  void Adresse(std::int32_t adresse);
  [[nodiscard]] std::int32_t Adresse() const { return mlngAdresse; }
  ///@}
  /// Number of channels that the row tells.
  [[nodiscard]] std::int32_t NombreDeCanaux() const { return NombreDeCanaux_; }
  /// Name of the block, of its row.
  [[nodiscard]] const std::string& NomDeLaFonction() const { return NomDeLaFonction_; }

  /// Opens the hardware link and starts each channel.
  void Initialise();
  using Objet::TimerExact;
  /// The block's exchange with the hardware, by its driver.
  void MetàJour();
  /// Reads the block's row at the current record. Call after `ChargeLesCanaux`: the channels take
  /// their type and, without a driver of their own, their driver from here.
  void ParamètresDepuisBD(const Ref<Recordset>& rstMonRecordSet);

  ///@{
  /// Serial link of the block; Nothing until given or opened by a serial driver.
  void RS(LiaisonSérieRef liaison) { RS_ = std::move(liaison); }
  [[nodiscard]] LiaisonSérieRef RS() const { return RS_; }
  ///@}

  ///@{
  /// False takes the block out of service; it never comes back by itself.
  [[nodiscard]] bool Enabled() const { return Enabled_; }
  void Enabled(bool enService) { Enabled_ = enService; }
  ///@}
  ///@{
  /// A request is on the wire and its answer is awaited.
  [[nodiscard]] bool RafraichissementEnCours() const { return RafraichissementEnCours_; }
  void RafraichissementEnCours(bool enCours) { RafraichissementEnCours_ = enCours; }
  ///@}
  /// Address of its Modbus slave, 1 to 247.
  [[nodiscard]] std::int32_t ModbusAdresse() const { return ModbusAdresse_; }
  /// Modbus function by which it exchanges: 1 to 4 read, 5, 6, 15 and 16 write.
  [[nodiscard]] std::int32_t ModbusFonction() const { return ModbusFonction_; }
  /// First Modbus register or coil, counted from 0.
  [[nodiscard]] std::int32_t ModbusRegistreDeDepart() const { return ModbusRegistreDeDepart_; }

  /// Tells in the error record, once, that readings of the block are old, and once that they are of
  /// now again. For the frame, now and then.
  void SurveilleSesLectures();

  [[nodiscard]] std::string_view NomPourErreur() const override { return NomDeLaFonction_; }
  /// Ends with the block: its channels may outlive it.
  [[nodiscard]] const Vie& LaVie() const noexcept { return vie_; }

  // For the drivers.

  /// One read for the whole block when true, channel by channel otherwise.
  [[nodiscard]] bool MAJParFonction() const { return MAJParFonction_mbln; }
  /// The largest `NbLecture` of the channels, worked out by `Initialise`.
  [[nodiscard]] std::int16_t NbLecture() const { return mintNbLecture; }
  /// Base address as the drivers take it: the low 16 bits.
  [[nodiscard]] std::uint16_t Base() const { return static_cast<std::uint16_t>(mlngAdresse); }
  /// Driver object of the block's board, of the class that the block's driver row opens.
  template <class T>
  [[nodiscard]] T& PiloteDe() const {
    return static_cast<T&>(*pilote_);
  }
  /// The channels, without the cost of a new reference; fails with 91 before the first access.
  [[nodiscard]] const zuma::Canals& LesCanaux() const { return *Canals_; }
  /// Settings of the block's serial line.
  [[nodiscard]] RéglagesLigne LigneSérie() const {
    return {mintPort, mlngVitesse, mlngParité, mlngBitsDonnées, mlngBitsStop};
  }
  /// Port of the CAN card, of the row.
  [[nodiscard]] std::int32_t PortCAN() const { return mlngPortCAN; }
  /// Kilobits per second.
  [[nodiscard]] std::int16_t VitesseCAN() const { return mintVitesseCAN; }
  /// "11 bits" or "29 bits".
  [[nodiscard]] const std::string& ModeCAN() const { return mstrModeCAN; }
  /// State of the block's Modbus exchange.
  [[nodiscard]] EchangeModbus& Modbus_Echange() { return Modbus_Echange_; }
  /// The timer of its frame; Nothing without one.
  [[nodiscard]] const Ref<ZED_Timer>& LeTimer() const { return Timer(); }
  /// The board; its absence is a failure (91).
  [[nodiscard]] Carte* LaCarte() const;

 private:
  struct Lecture;
  void ConfigureCanaux();
  void MessageRS232(std::string_view quoi, std::string_view suite = "'.") const;

  std::int16_t mintPort = 0;
  std::int32_t mlngVitesse = 0;
  std::int32_t mlngBitsDonnées = 0;
  std::int32_t mlngParité = 0;
  std::int32_t mlngBitsStop = 0;
  CanalsRef Canals_;
  CanalRef CanalErreurModbus_;
  ENUM_TYPE_FONCTION TypeDeFonction_ = ENUM_TYPE_FONCTION::FctAucune;
  std::string NomDeLaFonction_;
  std::int32_t mlngAdresse = 0;
  bool MAJParFonction_mbln = true;
  std::int16_t mintNbLecture = 1;
  double mdblTemps = 0;
  std::int32_t mlngPortCAN = 0;
  std::int16_t mintVitesseCAN = 0;
  std::string mstrModeCAN;
  bool Enabled_ = true;
  bool RafraichissementEnCours_ = false;
  LiaisonSérieRef RS_;
  std::int32_t ModbusAdresse_ = 0;
  std::int32_t ModbusFonction_ = 0;
  std::int32_t ModbusRegistreDeDepart_ = 0;
  std::int32_t NombreDeCanaux_ = 0;
  EchangeModbus Modbus_Echange_;
  std::int32_t annonces_ = 0;  ///< of readings lost and found
  PointeurSuivi<Carte> Parent_;
  Vie vie_;

  // Resolved at load and start, so that the pass looks nothing up.
  const LigneDriver* ligne_ = &kSansDriver;
  const OpérationsPilote* opérations_ = nullptr;
  PointeurSuivi<Pilote> pilote_;
};

/// Counted reference to a block.
using FonctionRef = Ref<Fonction>;

}  // namespace zuma
