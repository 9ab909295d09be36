#include "sim/esclave_modbus.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "sim/journal_borne.h"

namespace zuma::sim {
namespace {

constexpr double kSilence = 3.5;  // bytes

struct Refus : std::exception {
  explicit Refus(std::uint8_t c) : code(c) {}
  std::uint8_t code;
};

constexpr std::uint8_t kFonctionInconnue = 1;
constexpr std::uint8_t kAdresseInconnue = 2;
constexpr std::uint8_t kValeurRefusée = 3;

unsigned Lu(std::string_view t, std::size_t i) {
  if (i >= t.size()) throw Refus(kValeurRefusée);
  return static_cast<unsigned char>(t[i]);
}
std::uint16_t Lu16(std::string_view t, std::size_t i) {
  return static_cast<std::uint16_t>(Lu(t, i) << 8U | Lu(t, i + 1));
}

// Table form of the CRC, kept apart from the library's own bit by bit computation.
const std::array<std::uint16_t, 256>& TableCrc() {
  static const auto table = [] {
    std::array<std::uint16_t, 256> t{};
    for (unsigned i = 0; i < t.size(); ++i) {
      unsigned reste = i;
      for (int k = 0; k < 8; ++k) reste = (reste & 1U) != 0 ? (reste >> 1U) ^ 0xA001U : reste >> 1U;
      t[i] = static_cast<std::uint16_t>(reste);
    }
    return t;
  }();
  return table;
}

Octets AvecCrc(Octets trame) {
  unsigned crc = 0xFFFF;
  for (const char c : trame) {
    crc = (crc >> 8U) ^ TableCrc()[(crc ^ static_cast<unsigned char>(c)) & 0xFFU];
  }
  trame += static_cast<char>(crc & 0xFFU);
  trame += static_cast<char>(crc >> 8U);
  return trame;
}

}  // namespace

void EsclaveModbus::Reçoit(std::string_view octets, LigneSérie& ligne) {
  if (horloge_.Maintenant() < occupéJusquà_) return;
  Note(question_, octets);
  ligne.Réveille(kSilence * ligne.DuréeOctet());
}

void EsclaveModbus::Réveil(LigneSérie& ligne) {
  const Octets réponse = Traite(std::exchange(question_, {}));
  if (réponse.empty()) return;
  const double reste = std::max(0.0, latence - kSilence * ligne.DuréeOctet());
  ligne.Emet(réponse, reste);
  occupéJusquà_ =
      horloge_.Maintenant() + reste + static_cast<double>(réponse.size()) * ligne.DuréeOctet();
}

Octets EsclaveModbus::Traite(std::string_view question) {
  if (question.size() < 8 || AvecCrc(Octets(question.substr(0, question.size() - 2))) != question)
    return {};
  if (static_cast<std::uint8_t>(question[0]) != adresse_) return {};
  ++questions_;
  Octets corps;
  try {
    corps = Répond(question);
  } catch (const Refus& refus) {
    corps = {static_cast<char>(question[1] | 0x80), static_cast<char>(refus.code)};
  }
  const std::uint8_t adresse = fausseAdresse != 0 ? fausseAdresse : adresse_;
  if (fausseFonction != 0) corps[0] = static_cast<char>(fausseFonction);
  return AvecCrc(static_cast<char>(adresse) + corps);
}

Octets EsclaveModbus::LitBits(std::uint16_t premier, std::uint16_t nombre) const {
  Octets données(static_cast<std::size_t>((nombre + 7) / 8), '\0');
  for (unsigned i = 0; i < nombre; ++i) {
    const auto bit = bits.find(static_cast<std::uint16_t>(premier + i));
    if (bit == bits.end()) throw Refus(kAdresseInconnue);
    if (bit->second) données[i / 8] = static_cast<char>(données[i / 8] | (1 << (i % 8)));
  }
  return static_cast<char>(données.size()) + données;
}

Octets EsclaveModbus::LitRegistres(std::uint16_t premier, std::uint16_t nombre) const {
  Octets données(1, static_cast<char>(nombre * 2));
  for (unsigned i = 0; i < nombre; ++i) {
    const auto mot = registres.find(static_cast<std::uint16_t>(premier + i));
    if (mot == registres.end()) throw Refus(kAdresseInconnue);
    données += static_cast<char>(mot->second >> 8U);
    données += static_cast<char>(mot->second & 0xFFU);
  }
  return données;
}

Octets EsclaveModbus::Répond(std::string_view question) {
  const unsigned fonction = Lu(question, 1);
  const std::uint16_t premier = Lu16(question, 2);
  const std::uint16_t second = Lu16(question, 4);
  Octets écho(question.substr(1, 5));
  if (fonction == 1 || fonction == 2) return question[1] + LitBits(premier, second);
  if (fonction == 3 || fonction == 4) return question[1] + LitRegistres(premier, second);
  if (fonction == 8) return écho;
  if (fonction == 5) {
    bits[premier] = second == 0xFF00;
    return écho;
  }
  if (fonction == 6) {
    registres[premier] = second;
    return écho;
  }
  if (fonction == 15) {
    for (unsigned i = 0; i < second; ++i) {
      bits[static_cast<std::uint16_t>(premier + i)] =
          (Lu(question, 7 + i / 8) >> (i % 8) & 1U) != 0;
    }
    return écho;
  }
  if (fonction == 16) {
    if (Lu(question, 6) != second * 2U) throw Refus(kValeurRefusée);
    for (unsigned i = 0; i < second; ++i) {
      registres[static_cast<std::uint16_t>(premier + i)] = Lu16(question, 7 + std::size_t{2} * i);
    }
    return écho;
  }
  throw Refus(kFonctionInconnue);
}

}  // namespace zuma::sim
