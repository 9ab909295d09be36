#pragma once

#include <array>
#include <cstdint>
#include <map>

#include "sim/horloge_virtuelle.h"
#include "sim/ligne_serie.h"

namespace zuma::sim {

/// Modbus RTU slave: coils, inputs and registers in memory. Written from the protocol, not from the
/// library's codec. A question ends at a silence of three and a half bytes. A wrong CRC or another
/// address gets silence, as on a real bus; what it does not hold gets an exception. From the end of
/// a question to that of its answer it works and hears nothing: its one receiver is busy or, on a
/// pair of wires, its driver holds the line. What was asked meanwhile is lost, or is garbage when
/// only its end was heard.
class EsclaveModbus : public AppareilSérie {
 public:
  /// A slave that answers to that address.
  EsclaveModbus(HorlogeVirtuelle& horloge, std::uint8_t adresse)
      : AppareilSérie(horloge), adresse_(adresse) {}

  void Reçoit(std::string_view octets, LigneSérie& ligne) override;
  /// The silence behind a question.
  void Réveil(LigneSérie& ligne) override;
  /// The whole answer to a whole question; none to one that is not for it or not sound.
  [[nodiscard]] virtual Octets Traite(std::string_view question);

  /// Registers by address; one that is absent gets exception 2.
  std::map<std::uint16_t, std::uint16_t> registres;
  /// Coils and discrete inputs by address.
  std::map<std::uint16_t, bool> bits;
  /// Time between the last byte of a question and the first one of its answer, in microseconds;
  /// the silence that ends a question at the least.
  double latence = 2000;
  /// Address put into answers instead of its own, when not 0.
  std::uint8_t fausseAdresse = 0;
  /// The same for the function.
  std::uint8_t fausseFonction = 0;

  /// Sound questions that were for it, so far.
  [[nodiscard]] int Questions() const noexcept { return questions_; }

 protected:
  /// Byte count and data of an answer to functions 3 and 4.
  [[nodiscard]] virtual Octets LitRegistres(std::uint16_t premier, std::uint16_t nombre) const;

 private:
  [[nodiscard]] Octets Répond(std::string_view question);
  [[nodiscard]] Octets LitBits(std::uint16_t premier, std::uint16_t nombre) const;

  std::uint8_t adresse_;
  Octets question_;
  double occupéJusquà_ = 0;
  int questions_ = 0;
};

}  // namespace zuma::sim
