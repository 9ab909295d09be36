#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "base/valeur.h"

/// Modbus RTU frames as published by the Modbus Organization: serial line V1.02, application
/// protocol V1.1b3. Bytes in, bytes out: no port here.
namespace zuma::OutilsModbus {

/// What an answer turned out to be. The numbers stand in journals.
enum class Résultat : std::int8_t {
  Bonne = -1,
  Inconnue = 0,
  Incomplète = 1,
  AutreEsclave = 2,
  AutreFonction = 3,
  Crc = 4,
  Diagnostic = 5,
  EcritureRefusée = 6,
  LectureRefusée = 7
};

/// How the data of an answer are handed over: byte by byte, or as unsigned big-endian words.
enum class FormeValeurs : std::uint8_t { Octets, Mots };

/// What settles how long the answer to a read is: the question, or the byte count that the answer
/// announces. The latter is for devices that give another number of registers than was asked.
enum class Longueur : std::uint8_t { Demandée, Annoncée };

/// List of values numbered from 1, in fixed memory: the largest frame fits.
class Valeurs {
 public:
  /// Values of the largest frame: the byte count of an answer is one byte.
  static constexpr std::size_t kCapacité = 255;

  /// Forgets all values.
  void Vide() noexcept { nombre_ = 0; }
  /// Appends; a list that is full fails with 9.
  void Ajoute(std::uint16_t valeur);
  /// How many there are.
  [[nodiscard]] std::int32_t Nombre() const noexcept { return static_cast<std::int32_t>(nombre_); }
  /// The value at `rang`, from 1; out of the list fails with 9.
  [[nodiscard]] std::uint16_t Item(std::int32_t rang) const;
  /// All of them, in order; valid until the list changes.
  [[nodiscard]] std::span<const std::uint16_t> Toutes() const noexcept {
    return {valeurs_.data(), nombre_};
  }

 private:
  std::array<std::uint16_t, kCapacité> valeurs_{};
  std::size_t nombre_ = 0;
};

/// CRC-16 of Modbus (polynomial 0xA001 reflected, start 0xFFFF), sent low byte first.
[[nodiscard]] std::uint16_t Crc16(std::string_view octets) noexcept;

/// A number as one register: rounded half away from zero, a negative one in two's complement. Out
/// of -32768 to 65535 fails with 6.
[[nodiscard]] std::uint16_t Registre(double nombre);

/// Builds the whole frame with its CRC into `question`, whose memory is used again. Functions 1 to
/// 4 ask for `compte` items; 5, 6, 8, 15 and 16 carry `valeurs`, whose number is what counts for
/// 15 and 16. An unknown function, a count out of the protocol's range or a write without value
/// fails with 5, a slave that is no byte or a register that is no word with 6.
void ConstruitQuestion(std::int32_t esclave, std::int32_t fonction, std::int32_t premierRegistre,
                       std::int32_t compte, std::span<const std::uint16_t> valeurs,
                       Octets& question);

/// Silence that ends a frame at `bauds`, in microseconds: 3.5 bytes of eleven bits (Modbus over
/// serial line, RTU framing). Until then a slave may still be speaking, and hears no question.
[[nodiscard]] double Silence(std::int32_t bauds) noexcept;

/// Number of bytes of the full answer to `question`; 0 when it is no question.
[[nodiscard]] std::int32_t LongueurTrame(std::string_view question) noexcept;

/// Number of bytes of the sound answer that `octets` begins with, whatever was asked; 0 when it
/// begins with none, or with one that is not whole yet.
[[nodiscard]] std::size_t LongueurRéponse(std::string_view octets) noexcept;

/// Analyses what was received so far. On a good read the data go to `valeurs` in `forme`, when
/// given. Bytes beyond the expected length are left alone.
[[nodiscard]] Résultat DécodeRéponse(std::string_view réponse, std::string_view question,
                                     Valeurs* valeurs, FormeValeurs forme,
                                     Longueur mesure = Longueur::Demandée) noexcept;

}  // namespace zuma::OutilsModbus
