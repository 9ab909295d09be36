#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace zuma {

/// The object on whose behalf a message is shown.
struct ObjetConcerné {
  std::string_view classe;  ///< class word, as in error messages
  std::string_view clé;     ///< `Index` of its row, as text
  std::string_view nom;     ///< name of the object; empty until its row is read
};

/// Modal notice to the integrator or the operator.
class BoîteDeMessage {
 public:
  virtual ~BoîteDeMessage() = default;
  /// Shows the text and returns once it has been answered.
  virtual void Montre(std::string_view texte, const ObjetConcerné& objet) = 0;
};

/// Access to the I/O ports of the machine. Nothing here reports a failure: an absent board reads
/// as whatever the bus gives.
class PortsES {
 public:
  virtual ~PortsES() = default;
  ///@{
  /// Reads a port: a byte, a word, a double word.
  [[nodiscard]] virtual std::uint8_t Inp(std::uint16_t port) = 0;
  [[nodiscard]] virtual std::uint16_t Inpw(std::uint16_t port) = 0;
  [[nodiscard]] virtual std::uint32_t Inpd(std::uint16_t port) = 0;
  ///@}
  ///@{
  /// Writes a port: a byte, a word, a double word.
  virtual void Outp(std::uint16_t port, std::uint8_t octet) = 0;
  virtual void Outpw(std::uint16_t port, std::uint16_t mot) = 0;
  virtual void Outpd(std::uint16_t port, std::uint32_t mot) = 0;
  ///@}
};

/// Library of high-resolution event counters, named and read by handle.
class CompteursFins {
 public:
  virtual ~CompteursFins() = default;
  /// Opens a counter that starts at 0 and counts microseconds.
  [[nodiscard]] virtual std::int16_t Ouvre(std::string_view nom) = 0;
  /// Microseconds since it was opened, at most 2147483647. A handle that is not open fails with 9.
  [[nodiscard]] virtual std::int32_t Lit(std::int16_t poignée) = 0;
  /// Gives the handle back; nothing on one that is not open.
  virtual void Ferme(std::int16_t poignée) noexcept = 0;
};

/// Time of the day, for texts that a person reads, and sleep of the process. It can be set at any
/// moment: what waits or measures a time asks `ZED_Timer`.
class Horloge {
 public:
  virtual ~Horloge() = default;
  /// Local time as "hh:mm:ss".
  [[nodiscard]] virtual std::string TexteHeure() const = 0;
  /// Stops the calling thread for that long.
  virtual void Dort(double secondes) = 0;
};

/// Text files: small ones of the installation, written line by line under its paths, and those that
/// the host itself names or has open.
class Fichiers {
 public:
  virtual ~Fichiers() = default;
  /// Opens for appending, writes one line and closes. Fails when the folder is not there.
  virtual void AjouteLigne(std::string_view chemin, std::string_view ligne) = 0;
  /// Deletes the file if it exists; never fails.
  virtual void Supprime(std::string_view chemin) noexcept = 0;

  /// Opens for appending a file of the host's own system, not of the installation, writes the lines
  /// at once and closes. Makes the file, but not its folder: fails without that (76), and when not
  /// all was written (75).
  virtual void AjouteBloc(std::string_view chemin, std::span<const std::string> lignes) = 0;
  /// Writes the lines on the file that the host has open under that number of its system, and
  /// leaves it open. Fails on a number that is not open for writing (52).
  virtual void EcritBloc(std::int16_t numéro, std::span<const std::string> lignes) = 0;
};

/// The end of the whole process, for the few failures after which nothing may go on.
class FinDuProgramme {
 public:
  virtual ~FinDuProgramme() = default;
  /// Ends the process; what a host does before that must take no longer than a stop. A test double
  /// may return or throw, and so may the service when asked again: the operation then fails.
  virtual void ArrêteLeProgramme(std::string_view raison) = 0;
  /// The end was asked for, and the host is doing its last act.
  [[nodiscard]] virtual bool EnCours() const { return false; }
};

}  // namespace zuma
