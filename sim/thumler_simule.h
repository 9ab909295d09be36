#pragma once

#include <map>
#include <string>
#include <vector>

#include "platform/ftdi.h"

namespace zuma::sim {

/// The Thumler drive behind its USB link: halt, set point and run commands, and a question that is
/// answered with speed and load. It runs at its set point as soon as it is told to.
class ThumlerSimulé : public FTD2XX {
 public:
  [[nodiscard]] std::int32_t FT_Open(std::int32_t numéro, std::int32_t& poignée) override;
  void FT_Close(std::int32_t) noexcept override { ouvert_ = false; }
  [[nodiscard]] std::int32_t FT_SetTimeouts(std::int32_t, std::int32_t, std::int32_t) override {
    return Etat();
  }
  [[nodiscard]] std::int32_t FT_SetBaudRate(std::int32_t, std::int32_t bauds) override {
    vitesseLigne = bauds;
    return Etat();
  }
  [[nodiscard]] std::int32_t FT_Purge(std::int32_t poignée, std::int32_t masque) override;
  [[nodiscard]] std::int32_t FT_Write(std::int32_t poignée, std::string_view octets) override;
  [[nodiscard]] std::int32_t FT_GetStatus(std::int32_t, std::int32_t& réception,
                                          std::int32_t& émission) override;
  [[nodiscard]] std::int32_t FT_Read(std::int32_t, std::int32_t nombre, Octets& octets) override;

  /// Runs at its set point before any program has started.
  void MetEnMarche() noexcept {
    enMarche_ = true;
    consigne_ = 50;
  }
  /// It runs.
  [[nodiscard]] bool EnMarche() const noexcept { return enMarche_; }
  /// Set point that it was told last.
  [[nodiscard]] int Consigne() const noexcept { return consigne_; }

  bool branché = true;                 ///< the device is there
  bool muet = false;                   ///< its answers are lost
  bool sourd = false;                  ///< what it is sent is lost
  bool figé = false;                   ///< it goes on with the answer that it gave first
  double charge = 0;                   ///< second field of the answer
  std::int32_t vitesseLigne = 0;       ///< bauds set by the library
  std::string réponseForcée;           ///< answer in place of the true one, when not empty
  std::vector<std::string> commandes;  ///< what was written, the last part of it

 private:
  [[nodiscard]] std::int32_t Etat() const noexcept { return ouvert_ && branché ? 0 : 3; }
  void Répond();

  bool ouvert_ = false;
  bool enMarche_ = false;
  int consigne_ = 0;
  Octets sortie_;
  Octets figée_;
};

}  // namespace zuma::sim
