#pragma once

#include <cstdint>

#include "sim/esclave_modbus.h"

namespace zuma::sim {

/// Where the registers of a drive lie, as a configuration says it.
struct RegistresDeVariateur {
  std::uint16_t consigne = 500;  ///< sign, whole part, hundredths, ramp, logic outputs
  std::uint16_t état = 600;      ///< states, speed in hundredths, 0
};

/// Variable-speed drive with a motor behind its registers. Its internal program must have been
/// stopped and started (1032 to 1, then to 0, then 1146 to 2) before it follows its set point. The
/// speed follows the set point at the ramp, given in tenths of the speed's unit each second; a ramp
/// of 0 lets it coast down.
class VariateurSimulé : public EsclaveModbus {
 public:
  /// A drive whose program was not started yet.
  VariateurSimulé(HorlogeVirtuelle& horloge, std::uint8_t adresse,
                  RegistresDeVariateur registresDuVariateur = {});

  [[nodiscard]] Octets Traite(std::string_view question) override;
  /// Its program was started before, and the motor turns.
  void MetEnMarche() override;

  /// Speed of the motor now, in the unit of the set point.
  [[nodiscard]] double Vitesse();
  /// Its internal program runs: it follows set points.
  [[nodiscard]] bool Prêt() const;

 private:
  void Tourne();
  [[nodiscard]] double Consigne() const;
  [[nodiscard]] std::uint16_t Registre(std::uint16_t adresse) const;
  void PublieLEtat();

  RegistresDeVariateur places_;
  bool arrêté_ = false;  ///< the program was stopped once, as the start demands
  double vitesse_ = 0;
  double heure_ = 0;  ///< of the last step, in microseconds
};

}  // namespace zuma::sim
