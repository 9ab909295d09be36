#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

#include "publication/exclusivite.h"
#include "publication/lecture/zone.h"

namespace zuma::publication {

/// Which frame is published.
struct Identité {
  std::string fichier;     ///< configuration database
  std::int32_t index = 1;  ///< of the frame in it
  bool simulé = false;     ///< twins move no machine: a simulated host goes beside a real one
  bool rejoué = false;     ///< nor does a recording that is played again
};

/// Name of the map: readable, and one for each database, whatever way leads to it.
[[nodiscard]] std::string NomDeFichier(const Identité& identité);

/// Another host runs the frame, which must not have two masters.
struct DéjàEnMarche : std::runtime_error {
  /// `quoi` names the frame, `processus` is the one that runs it.
  DéjàEnMarche(const std::string& quoi, int processus)
      : std::runtime_error(
            quoi + " is run by " +
            (processus == 0 ? "another process" : "process " + std::to_string(processus)) +
            " already: end that one first"),
        pid(processus) {}
  /// Process that runs the frame; 0 when it cannot be known.
  int pid;
};

/// The place of a frame among those that are published: a file that belongs to this process as long
/// as it runs. What a host left that died goes aside, under the same name with ".before" behind it,
/// and is there until the next one dies. Read and written by its user, read by the group.
class Place {
 public:
  /// Takes the place. Throws `DéjàEnMarche`; any other failure leaves a place without a file, whose
  /// `Défaut` says why: a machine runs without being looked at.
  Place(const Identité& identité, const std::string& dossier);
  /// Takes the file away: what ended as it should has nothing to tell.
  ~Place();
  Place(const Place&) = delete;
  Place& operator=(const Place&) = delete;

  /// Memory for the map, in the file where there is one. Once.
  [[nodiscard]] std::shared_ptr<Zone> Réserve(std::size_t octets);
  /// The file; empty for none.
  [[nodiscard]] std::string Fichier() const;
  /// Where the map of a host that died was put aside when this place was taken; empty for none.
  [[nodiscard]] const std::string& MiseDeCôté() const noexcept { return miseDeCôté_; }
  /// Why nobody can look; empty while all is well.
  [[nodiscard]] const std::string& Défaut() const noexcept { return défaut_; }

 private:
  void Prend(const Identité& identité);
  [[nodiscard]] bool Essaie(const Identité& identité);
  void DitLeDéfaut(std::string_view pourquoi);

  std::string fichier_;
  std::string défaut_;
  std::string miseDeCôté_;
  std::optional<Exclusivité> machine_;  ///< of a frame that moves one
  int descripteur_ = -1;
};

}  // namespace zuma::publication
