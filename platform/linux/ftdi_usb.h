#pragma once

#include <memory>

#include "platform/ftdi.h"

struct ftdi_context;

namespace zuma::linux_ {

/// FTDI devices through libftdi. One device at a time is open. Statuses are those of the maker's
/// library: 0 good, 2 device not found, 3 device not opened, 4 input or output error.
class FtdiUsb final : public FTD2XX {
 public:
  FtdiUsb();
  ~FtdiUsb() override;
  FtdiUsb(const FtdiUsb&) = delete;
  FtdiUsb& operator=(const FtdiUsb&) = delete;

  [[nodiscard]] std::int32_t FT_Open(std::int32_t numéro, std::int32_t& poignée) override;
  void FT_Close(std::int32_t poignée) noexcept override;
  [[nodiscard]] std::int32_t FT_SetTimeouts(std::int32_t poignée, std::int32_t lecture,
                                            std::int32_t écriture) override;
  [[nodiscard]] std::int32_t FT_SetBaudRate(std::int32_t poignée, std::int32_t bauds) override;
  [[nodiscard]] std::int32_t FT_Purge(std::int32_t poignée, std::int32_t masque) override;
  [[nodiscard]] std::int32_t FT_Write(std::int32_t poignée, std::string_view octets) override;
  [[nodiscard]] std::int32_t FT_GetStatus(std::int32_t poignée, std::int32_t& réception,
                                          std::int32_t& émission) override;
  [[nodiscard]] std::int32_t FT_Read(std::int32_t poignée, std::int32_t nombre,
                                     Octets& octets) override;

 private:
  struct Libère {
    void operator()(ftdi_context* contexte) const noexcept;
  };
  [[nodiscard]] bool Ouvert(std::int32_t poignée) const noexcept;

  std::unique_ptr<ftdi_context, Libère> contexte_;
  std::int32_t poignée_ = 0;  ///< 0 while nothing is open
  std::int32_t dernière_ = 0;
  Octets reçus_;  ///< the library counts what waits, libftdi only reads it
};

}  // namespace zuma::linux_
