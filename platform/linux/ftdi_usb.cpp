#include "platform/linux/ftdi_usb.h"

#include <algorithm>
#include <array>
#include <ftdi.h>

namespace zuma::linux_ {
namespace {

constexpr std::int32_t kBon = 0;
constexpr std::int32_t kIntrouvable = 2;
constexpr std::int32_t kFermé = 3;
constexpr std::int32_t kErreurLigne = 4;

// Milliseconds after which the chip hands over a packet that is not full.
constexpr unsigned char kLatence = 1;

std::int32_t Etat(int résultat) {
  return résultat < 0 ? kErreurLigne : kBon;
}

}  // namespace

void FtdiUsb::Libère::operator()(ftdi_context* contexte) const noexcept {
  ::ftdi_free(contexte);
}

FtdiUsb::FtdiUsb() : contexte_(::ftdi_new()) {}

FtdiUsb::~FtdiUsb() {
  FT_Close(poignée_);
}

bool FtdiUsb::Ouvert(std::int32_t poignée) const noexcept {
  return poignée_ != 0 && poignée == poignée_;
}

std::int32_t FtdiUsb::FT_Open(std::int32_t numéro, std::int32_t& poignée) {
  if (!contexte_) return kIntrouvable;
  FT_Close(poignée_);
  ftdi_device_list* liste = nullptr;
  const int nombre = ::ftdi_usb_find_all(contexte_.get(), &liste, 0, 0);
  const ftdi_device_list* appareil = liste;
  for (std::int32_t i = 0; i < numéro && appareil != nullptr; ++i) appareil = appareil->next;
  const bool ouvert = nombre > 0 && numéro >= 0 && appareil != nullptr &&
                      ::ftdi_usb_open_dev(contexte_.get(), appareil->dev) == 0;
  ::ftdi_list_free(&liste);
  if (!ouvert) return kIntrouvable;
  reçus_.clear();
  poignée_ = poignée = ++dernière_;
  return Etat(::ftdi_set_latency_timer(contexte_.get(), kLatence));
}

void FtdiUsb::FT_Close(std::int32_t poignée) noexcept {
  if (!Ouvert(poignée)) return;
  (void)::ftdi_usb_close(contexte_.get());
  poignée_ = 0;
}

std::int32_t FtdiUsb::FT_SetTimeouts(std::int32_t poignée, std::int32_t lecture,
                                     std::int32_t écriture) {
  if (!Ouvert(poignée)) return kFermé;
  contexte_->usb_read_timeout = lecture;
  contexte_->usb_write_timeout = écriture;
  return kBon;
}

std::int32_t FtdiUsb::FT_SetBaudRate(std::int32_t poignée, std::int32_t bauds) {
  return Ouvert(poignée) ? Etat(::ftdi_set_baudrate(contexte_.get(), bauds)) : kFermé;
}

std::int32_t FtdiUsb::FT_Purge(std::int32_t poignée, std::int32_t masque) {
  if (!Ouvert(poignée)) return kFermé;
  if (masque == kPurgeEmission) return Etat(::ftdi_tcoflush(contexte_.get()));
  reçus_.clear();
  return Etat(::ftdi_tciflush(contexte_.get()));
}

std::int32_t FtdiUsb::FT_Write(std::int32_t poignée, std::string_view octets) {
  if (!Ouvert(poignée)) return kFermé;
  const auto* données = reinterpret_cast<const unsigned char*>(octets.data());
  const int écrits = ::ftdi_write_data(contexte_.get(), données, static_cast<int>(octets.size()));
  return écrits == static_cast<int>(octets.size()) ? kBon : kErreurLigne;
}

// A write has left the machine when it returns: nothing ever waits to be sent.
std::int32_t FtdiUsb::FT_GetStatus(std::int32_t poignée, std::int32_t& réception,
                                   std::int32_t& émission) {
  if (!Ouvert(poignée)) return kFermé;
  std::array<unsigned char, 256> tampon{};
  const int lus = ::ftdi_read_data(contexte_.get(), tampon.data(), static_cast<int>(tampon.size()));
  if (lus < 0) return kErreurLigne;
  reçus_.append(tampon.begin(), tampon.begin() + lus);
  réception = static_cast<std::int32_t>(reçus_.size());
  émission = 0;
  return kBon;
}

std::int32_t FtdiUsb::FT_Read(std::int32_t poignée, std::int32_t nombre, Octets& octets) {
  if (!Ouvert(poignée)) return kFermé;
  octets = reçus_.substr(0, static_cast<std::size_t>(std::max(nombre, 0)));
  reçus_.erase(0, octets.size());
  return kBon;
}

}  // namespace zuma::linux_
