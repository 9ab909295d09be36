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
#include "tree/fonction.h"
#include "tree/ligne_driver.h"
#include "tree/materiel.h"
#include "tree/reprise_ligne.h"

namespace zuma {

/// Counted reference to the blocks of a board.
using FonctionsRef = Ref<Fonctions>;

/// One I/O board, bus or instrument: everything reached through one address or one line.
class Carte : public Objet {
 public:
  /// Starts a fresh journal of Modbus errors.
  explicit Carte(Plateforme& plateforme);
  ~Carte() override;

  using Objet::ChargeErreur;
  using Objet::TimerExact;

  /// Appends the board's block of the diagnostic dump to the text file `Ou` of the host, then the
  /// blocks of its function blocks. A failure goes to the caller.
  void AutoSave(const std::string& Ou) const;
  /// Has the next writes reach the board, those that it should hold already too. Outputs are cut by
  /// their commands and logic outputs.
  void DéclencheAU();
  /// Driver of the board, of its row.
  [[nodiscard]] ENUM_DRIVER Driver_enm() const { return ligne_->valeur; }
  /// Row of that driver; `kSansDriver` without one.
  [[nodiscard]] const LigneDriver& LeDriver() const { return *ligne_; }
  /// Keeps the shared parameters and finds the one that "Config EIR" names for a laser board; the
  /// last of that name counts, none is told in a message. The host calls it, the frame does not.
  void Lien(ParamètresRef MesParametres_obj = {});
  /// Makes and reads the blocks of the board, each after its channels.
  void ChargeLesFonctions(const Ref<BaseDeDonnées>& dtbMaBase, std::int32_t lngIndexDeLaCarte);
  ///@{
  /// Name of the board, of its row.
  void NomDeLaCarte(std::string nom) { NomDeLaCarte_ = std::move(nom); }
  [[nodiscard]] const std::string& NomDeLaCarte() const { return NomDeLaCarte_; }
  ///@}
  /// Reads the board's row, at the first record, and keeps the recordset.
  void ParamètresDepuisBD(const Ref<Recordset>& rstMonRecordSet);
  ///@{
  /// Port address, or the handle that the board's library returned.
  [[nodiscard]] std::int32_t Adresse() const { return Adresse_; }
  /// Also writes the address to each block.
  void Adresse(std::int32_t adresse);
  ///@}
  ///@{
  /// Blocks of the board; an empty collection is made on first access.
  [[nodiscard]] FonctionsRef Fonctions();
  void Fonctions(FonctionsRef fonctions) { Fonctions_ = std::move(fonctions); }
  ///@}
  ///@{
  /// Turn mark of a bus board; Nothing at start.
  [[nodiscard]] FonctionRef FonctionSuivante() const { return FonctionSuivante_; }
  void FonctionSuivante(FonctionRef fonction) { FonctionSuivante_ = std::move(fonction); }
  ///@}
  /// Exchanges with the board or instrument at once, whatever the rates.
  void MetàJour();
  /// Opens the board's link, then starts each block.
  void Initialise();

  [[nodiscard]] std::string_view NomPourErreur() const override { return NomDeLaCarte_; }
  /// Ends with the board: its blocks, and the channels that its drivers serve, may outlive it.
  [[nodiscard]] const Vie& LaVie() const noexcept { return vie_; }

  // For the pass and the drivers.

  /// How the pass serves the board.
  [[nodiscard]] ServiceCarte Service() const { return ligne_->service; }
  /// How long a refresh may make its caller wait.
  [[nodiscard]] AttenteCarte Attente() const { return ligne_->attente; }
  /// One step of a bus board: keeps one exchange going. `enMain` follows the type of the block in
  /// hand, for the error table. Failures go to the caller.
  void SertLeBus(std::optional<ENUM_TYPE_FONCTION>& enMain);
  /// The blocks, without the cost of a new reference.
  [[nodiscard]] const zuma::Fonctions& LesFonctions();
  /// Driver object of class `T` for the board at `base`, made on first use.
  template <class T>
  [[nodiscard]] T& PiloteDe(std::uint16_t base);
  /// The timer of its frame; Nothing without one.
  [[nodiscard]] const Ref<ZED_Timer>& LeTimer() const { return Timer(); }
  /// Serial link of the board, made on first access.
  [[nodiscard]] LiaisonSérieRef RS();
  /// What opens the line of a bus anew.
  [[nodiscard]] RepriseDeLigne& Reprise() { return reprise_; }
  /// Writes the line settings in their order and opens the board's serial link.
  void OuvreLigneSérie();
  /// Settings text of its line or instrument, of the row.
  [[nodiscard]] const std::string& Configuration() const { return Configuration_; }
  /// Time that a Modbus slave of the board has for its answer, the limit included, in milliseconds.
  [[nodiscard]] double TimeOutModbus() const { return TimeOutModbus_; }
  /// Keeps the settings that an instrument ended up with for the board's next start, and writes
  /// them to its row for the next load.
  void EnregistreConfiguration(const std::string& réglages);
  /// Second serial interface of the board, set up from one text; made on first access.
  [[nodiscard]] Ref<PortInstrument> LiaisonSerie2();
  /// Parameter that "Config EIR" names, found by `Lien`; Nothing when there is none.
  [[nodiscard]] const Ref<ZED_Parametre>& ParamètreEIR() const { return mobjParamEIR_; }
  /// Ramp of the drive's set point, in tenths of the configuration's unit.
  [[nodiscard]] std::int32_t ConsigneRampe() const { return mintConsigneRampe; }

 private:
  struct PiloteOuvert {
    std::uint16_t base;
    std::unique_ptr<Pilote> pilote;
  };

  void DécodeConfiguration();
  void LitTimeOut(const Valeur& valeur);
  void DébuteSurLeBus(std::optional<ENUM_TYPE_FONCTION>& enMain);
  void PoursuitLeBus(std::optional<ENUM_TYPE_FONCTION>& enMain);
  void Débute(const FonctionRef& fonction);
  void AvanceFonctionSuivante();

  std::int32_t Adresse_ = 0;
  std::string NomDeLaCarte_;
  FonctionsRef Fonctions_;
  FonctionRef FonctionSuivante_;
  const Fonction* sansEchange_ = nullptr;  ///< last block whose exchange did not start; compared
  RepriseDeLigne reprise_;
  LiaisonSérieRef RS_;
  Ref<PortInstrument> LiaisonSerie2_;
  std::string Configuration_;
  RéglagesLigne réglages_;  ///< read from `Configuration_`
  std::int32_t mintConsigneRampe = 5;
  double TimeOutModbus_ = 50;
  std::string mstrConfigEIR;
  ParamètresRef MesParametres_;
  Ref<ZED_Parametre> mobjParamEIR_;
  Ref<Recordset> LeRecordset_;
  std::vector<PiloteOuvert> pilotes_;
  const LigneDriver* ligne_ = &kSansDriver;
  Vie vie_;
};

/// Counted reference to a board.
using CarteRef = Ref<Carte>;

/// Looks through the driver objects of the board; makes one of class `T` when `base` has none.
template <class T>
T& Carte::PiloteDe(std::uint16_t base) {
  for (const PiloteOuvert& ouvert : pilotes_) {
    auto* pilote = ouvert.base == base ? dynamic_cast<T*>(ouvert.pilote.get()) : nullptr;
    if (pilote != nullptr) return *pilote;
  }
  auto nouveau = std::make_unique<T>(Matériel{LaPlateforme(), Timer()}, base);
  T& pilote = *nouveau;
  pilotes_.push_back({base, std::move(nouveau)});
  return pilote;
}

}  // namespace zuma
