#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace zuma::publication {

/// What an object of a publication is.
enum class Genre : std::uint8_t { Capteur, Commande, Entrée, Sortie, Watchdog, Canal };

/// One object of a running frame, as it is described to who looks.
struct ObjetPublié {
  Genre genre = Genre::Capteur;   ///< what it is
  std::string clé{};              ///< "Index" of its row
  std::string label{};            ///< empty for a channel
  std::string nom{};              ///< its name
  std::string unité{};            ///< of its value and its limits
  std::string driver{};           ///< of a channel
  std::string carte{};            ///< of a channel: board, then block
  std::string bloc{};             ///< of a channel
  std::optional<double> mini{};   ///< limits in units
  std::optional<double> maxi{};   ///< none without limits
  std::string étalonné{};         ///< date of the calibration, as its row says it
  std::string parQui{};           ///< who calibrated
  std::optional<double> repos{};  ///< of a command: what a stop sets it to, in units
  std::string canal{};            ///< behind it: "board/block/channel"; empty for none
};

/// A frame that is published.
struct ChassisPublié {
  std::string fichier{};    ///< configuration database, as the host named it
  std::int32_t index = 0;   ///< of the frame
  std::string nom{};        ///< its name
  bool simulé = false;      ///< it runs on twins
  std::string rejoué{};     ///< recording that is played again in the place of a machine
  double fréquence = 0;     ///< of the sensors, hertz
  std::string programme{};  ///< name of the one that runs it
  double horloge = 0;       ///< the frame's timer when it was linked, microseconds
  /// Shared parameters, index and text.
  std::vector<std::pair<std::string, std::string>> paramètres{};
  std::vector<ObjetPublié> objets{};  ///< in the order of their values in a sample
};

/// What stands in the place of a machine: "simulated", "replay of FILE", nothing for a machine.
[[nodiscard]] std::string AuLieuDeLaMachine(const ChassisPublié& chassis);

/// The description as JSON text.
[[nodiscard]] std::string EnJson(const ChassisPublié& chassis);
/// What `EnJson` wrote; fields that are missing stay empty. Throws `Illisible`.
[[nodiscard]] ChassisPublié LitLaDescription(std::string_view json);

/// Word for what an object is: "sensor", "command", "input", "output", "watchdog", "channel".
[[nodiscard]] std::string_view MotDe(Genre genre);
/// What a person calls it: its name; a channel "board/block/channel".
[[nodiscard]] std::string NomComplet(const ObjetPublié& objet);
/// Ranks of the objects of that name, in whatever case: those of that label, else of that name,
/// else channels. A name with a kind before it ("sensor:Force") means that kind alone.
[[nodiscard]] std::vector<std::size_t> Cherche(const ChassisPublié& chassis, std::string_view nom);
/// The names that differ the least from `nom`, three at most, nearest first.
[[nodiscard]] std::vector<std::string> LesPlusProches(const ChassisPublié& chassis,
                                                      std::string_view nom);

}  // namespace zuma::publication
