#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/collaborateurs.h"
#include "platform/pci_dask.h"

namespace zuma::linux_ {

/// Device of the comedi library; only the library knows what is in it.
struct AppareilComedi;
/// Range of a channel, laid out as the library has it. Unit 0 is the volt.
struct CalibreComedi {
  double min;          ///< lowest value
  double max;          ///< highest value
  unsigned int unité;  ///< 0: volt
};

/// The calls of the comedi library that the boards need, under the library's own names.
struct AppelsComedi {
  ///@{
  /// What the library's manual says of the call of that name.
  AppareilComedi* (*comedi_open)(const char* fichier);
  int (*comedi_close)(AppareilComedi* appareil);
  int (*comedi_errno)();
  const char* (*comedi_strerror)(int erreur);
  const char* (*comedi_get_board_name)(AppareilComedi* appareil);
  int (*comedi_find_subdevice_by_type)(AppareilComedi* appareil, int type, unsigned int premier);
  int (*comedi_get_n_channels)(AppareilComedi* appareil, unsigned int partie);
  unsigned int (*comedi_get_maxdata)(AppareilComedi* appareil, unsigned int partie,
                                     unsigned int voie);
  CalibreComedi* (*comedi_get_range)(AppareilComedi* appareil, unsigned int partie,
                                     unsigned int voie, unsigned int calibre);
  int (*comedi_data_read)(AppareilComedi* appareil, unsigned int partie, unsigned int voie,
                          unsigned int calibre, unsigned int référence, unsigned int* code);
  int (*comedi_data_write)(AppareilComedi* appareil, unsigned int partie, unsigned int voie,
                           unsigned int calibre, unsigned int référence, unsigned int code);
  int (*comedi_dio_bitfield2)(AppareilComedi* appareil, unsigned int partie, unsigned int masque,
                              unsigned int* bits, unsigned int première);
  ///@}
};

/// Calls of the installed library, which stays loaded to the end of the program. None when it is
/// missing or lacks a call; `manque` then says why.
[[nodiscard]] const AppelsComedi* ChargeComedi(std::string& manque);

/// PCI boards through the comedi library and the kernel's drivers. Nothing of it is loaded before a
/// board is registered.
///
/// A board is found by its model in the name that its driver gives it; board n of a type is the
/// n-th of /dev/comedi0, /dev/comedi1 and so on that has it. One that cannot be opened could be any
/// board, so none is counted past it: a command must not reach another actuator. Registered again,
/// a board is opened anew under the handle that it had.
///
/// The drivers know lines 0 to 15 of the 9111. Its port 1 is refused, but for a word that sets none
/// of its lines. What is missing, and the first call that a board refuses, is told in the error
/// record with what to do.
class PciComedi final : public BibliothèquePCI {
 public:
  /// Gives the library's calls; none, and why in `manque`, when they cannot be had.
  using Chargement = std::function<const AppelsComedi*(std::string& manque)>;
  /// What is missing is told in `registre`.
  explicit PciComedi(Ref<ZED_Erreur> registre, Chargement charge = &ChargeComedi)
      : registre_(std::move(registre)), charge_(std::move(charge)) {}

  [[nodiscard]] std::int16_t Register_Card(std::uint16_t type, std::uint16_t numéro) override;
  /// Conversions start by software alone: source 1, mode 0, no trace.
  std::int16_t AI_9111_Config(std::uint16_t carte, std::uint16_t source, std::uint16_t mode,
                              std::uint16_t trace) override;
  std::int16_t AI_ReadChannel(std::uint16_t carte, std::uint16_t canal, std::uint16_t gain,
                              std::uint16_t& valeur) override;
  /// The polarity is that of the board's jumper. 0: codes from 0 to 10 V; 1: signed codes.
  std::int16_t AO_9111_Config(std::uint16_t carte, std::uint16_t polarité) override;
  std::int16_t AO_WriteChannel(std::uint16_t carte, std::uint16_t canal,
                               std::int16_t valeur) override;
  std::int16_t DI_ReadPort(std::uint16_t carte, std::uint16_t port, std::uint32_t& mot) override;
  std::int16_t DI_ReadLine(std::uint16_t carte, std::uint16_t port, std::uint16_t ligne,
                           std::uint16_t& état) override;
  std::int16_t DO_WritePort(std::uint16_t carte, std::uint16_t port, std::uint32_t mot) override;
  std::int16_t DO_WriteLine(std::uint16_t carte, std::uint16_t port, std::uint16_t ligne,
                            std::uint16_t état) override;

 private:
  struct Modèle;
  struct Partie;
  struct Ferme {
    int (*comedi_close)(AppareilComedi*);
    void operator()(AppareilComedi* appareil) const noexcept { comedi_close(appareil); }
  };
  using Appareil = std::unique_ptr<AppareilComedi, Ferme>;
  /// Input whose conversion was the last one: channel and range.
  using Aiguillage = std::pair<unsigned int, unsigned int>;
  struct Carte {
    const Modèle* modèle = nullptr;
    std::uint16_t numéro = 0;
    Appareil appareil;  ///< none while the board is missing
    std::string fichier;
    std::array<unsigned int, 4> parties{};   ///< subdevices by kind
    std::array<unsigned int, 5> calibres{};  ///< range by gain code less 1
    std::optional<Aiguillage> aiguillage;
    std::optional<bool> bipolaire;
    std::string dit;  ///< what was told of it last
  };

  [[nodiscard]] Carte& LaCarte(const Modèle& modèle, std::uint16_t numéro);
  /// The board of a handle when it is there and has such a part.
  [[nodiscard]] Carte* La(std::uint16_t poignée, int genre);
  /// Opens the board. Gives what keeps it from being used, empty when nothing does.
  [[nodiscard]] std::string Ouvre(Carte& carte);
  [[nodiscard]] std::string Reconnaît(Carte& carte) const;
  [[nodiscard]] std::string ReconnaîtPartie(Carte& carte, const Partie& partie) const;
  [[nodiscard]] bool TrouveLesCalibres(Carte& carte) const;
  void Signale(Carte& carte, const std::string& message);
  /// The library's answer to a call, as this interface gives it; a failure is told.
  std::int16_t Répond(Carte& carte, bool réussi, std::string_view appel);
  /// Writes and reads lines of the first logic port.
  std::int16_t Echange(Carte& carte, int genre, std::uint32_t masque, unsigned int& bits);
  std::int16_t RefuseLigne(Carte& carte);

  Ref<ZED_Erreur> registre_;
  Chargement charge_;
  const AppelsComedi* appels_ = nullptr;
  std::vector<Carte> cartes_;  ///< a handle is the rank from `kPremièrePoignée`
  std::string dit_;            ///< what was told of the library last
};

}  // namespace zuma::linux_
