#pragma once

#include <array>
#include <cstdint>
#include <map>

#include "sim/horloge_virtuelle.h"
#include "sim/ligne_serie.h"

namespace zuma::sim {

/// Modbus RTU slave: coils, inputs and registers in memory, answers after the time that the bytes
/// take on the wire. Written from the protocol, not from the library's codec. A wrong CRC or
/// another address gets silence, as on a real bus; what it does not hold gets an exception.
class EsclaveModbus : public AppareilSérie {
 public:
  EsclaveModbus(HorlogeVirtuelle& horloge, std::uint8_t adresse)
      : horloge_(horloge), adresse_(adresse) {}

  void Reçoit(std::string_view octets, std::int32_t vitesse) override;
  [[nodiscard]] Octets Emet() override;

  /// Registers by address; one that is absent gets exception 2.
  std::map<std::uint16_t, std::uint16_t> registres;
  /// Coils and discrete inputs by address.
  std::map<std::uint16_t, bool> bits;
  /// Time before the first byte of an answer, in microseconds.
  double latence = 2000;
  /// Address put into answers instead of its own, when not 0.
  std::uint8_t fausseAdresse = 0;
  /// The same for the function.
  std::uint8_t fausseFonction = 0;

  [[nodiscard]] int Questions() const noexcept { return questions_; }

 protected:
  /// Byte count and data of an answer to functions 3 and 4.
  [[nodiscard]] virtual Octets LitRegistres(std::uint16_t premier, std::uint16_t nombre) const;

 private:
  [[nodiscard]] Octets Répond(std::string_view question);
  [[nodiscard]] Octets LitBits(std::uint16_t premier, std::uint16_t nombre) const;

  HorlogeVirtuelle& horloge_;
  std::uint8_t adresse_;
  Octets réponse_;
  double heureDeRéponse_ = 0;
  int questions_ = 0;
};

}  // namespace zuma::sim
