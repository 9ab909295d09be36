#include "instruments/trames_laser.h"

#include <algorithm>
#include <array>

namespace zuma::trames_laser {
namespace {

using enum EnumEIRCommande;

constexpr char kRetourChariot = '\r';
constexpr char kFinDeRéponse = ':';
constexpr std::int32_t kPasDeMesure = 0x7FFFFF;
constexpr std::int32_t kModule = 0x1000000;

bool MoinsDeTrois(std::size_t longueur) {
  return longueur < 3;
}
bool AutreQueTrois(std::size_t longueur) {
  return longueur != 3;
}
bool AutreQueUn(std::size_t longueur) {
  return longueur != 1;
}
bool MoinsDeUn(std::size_t longueur) {
  return longueur < 1;
}

bool LettreEnTête(const Echange& échange, std::string_view réponse) {
  return réponse.ends_with(kFinDeRéponse) && réponse.starts_with(échange.lettre);
}
// The reverse of all the others. It must stay: the unit's reply is not to parse as theirs do.
bool LettreALaFin(const Echange& échange, std::string_view réponse) {
  return réponse.starts_with(kFinDeRéponse) && réponse.ends_with(échange.lettre);
}
bool Accusée(const Echange&, std::string_view réponse) {
  return réponse.ends_with(kFinDeRéponse);
}
bool Toujours(const Echange&, std::string_view) {
  return true;
}

// A state that is read tells 0 when it is on; one that is written is on with 1.
constexpr char kEnMarcheLu = '0';
constexpr std::string_view kEnMarcheEcrit = "1";

template <bool EtatLu::* kDrapeau>
void LitDrapeau(std::string_view, Octets& réponse, EtatLu& état) {
  état.*kDrapeau = réponse[1] == kEnMarcheLu;
}
template <bool EtatLu::* kDrapeau>
void EcritDrapeau(std::string_view envoyée, Octets&, EtatLu& état) {
  état.*kDrapeau = envoyée == kEnMarcheEcrit;
}
void OteLaLettre(std::string_view, Octets& réponse, EtatLu&) {
  réponse.erase(0, 1);
}
void LitLaser(std::string_view envoyée, Octets& réponse, EtatLu& état) {
  LitDrapeau<&EtatLu::LaserState>(envoyée, réponse, état);
  OteLaLettre(envoyée, réponse, état);
}
void LitMesure(std::string_view, Octets& réponse, EtatLu& état) {
  état.ReadValue = DécodeMesure(réponse);
}
void Oublie(std::string_view, Octets& réponse, EtatLu&) {
  réponse.clear();
}
void NePrendRien(std::string_view, Octets&, EtatLu&) {}

constexpr bool kSeule = false;
constexpr bool kAvecValeur = true;
constexpr bool kPrêtDAvance = true;

constexpr std::array<Echange, 13> kEchanges{{
    {ReadEcho, 'E', kSeule, &MoinsDeTrois, &LettreEnTête, &LitDrapeau<&EtatLu::EchoState>},
    {ReadZero, 'Z', kSeule, &MoinsDeTrois, &LettreEnTête, &LitDrapeau<&EtatLu::ZeroState>},
    {ReadUnit, 'U', kSeule, &MoinsDeTrois, &LettreALaFin, &OteLaLettre},
    {ReadTargetDistance, 'T', kSeule, &MoinsDeTrois, &LettreEnTête, &OteLaLettre, kPrêtDAvance},
    {ReadMeasuringType, 'M', kSeule, &MoinsDeTrois, &LettreEnTête, &OteLaLettre, kPrêtDAvance},
    {ReadLaserState, 'L', kSeule, &MoinsDeTrois, &LettreEnTête, &LitLaser, kPrêtDAvance},
    {ReadDataBinary, 'B', kSeule, &AutreQueTrois, &Toujours, &LitMesure},
    // The flag of the zero, not the echo's: this is how the laser's echo write behaves, and it
    // must stay.
    {WriteEcho, 'E', kAvecValeur, &AutreQueUn, &Accusée, &EcritDrapeau<&EtatLu::ZeroState>},
    {WriteZero, 'Z', kAvecValeur, &AutreQueUn, &Accusée, &EcritDrapeau<&EtatLu::ZeroState>},
    {WriteUnit, 'U', kAvecValeur, &MoinsDeUn, &Accusée, &Oublie},
    {WriteTargetDistance, 'T', kAvecValeur, &MoinsDeUn, &Accusée, &NePrendRien},
    {WriteMeasuringType, 'M', kAvecValeur, &MoinsDeUn, &Accusée, &NePrendRien},
    {writeLaserState, 'L', kAvecValeur, &AutreQueUn, &Accusée, &EcritDrapeau<&EtatLu::LaserState>},
}};

}  // namespace

const Echange* EchangeDe(EnumEIRCommande commande) noexcept {
  const auto* échange = std::ranges::find(kEchanges, commande, &Echange::commande);
  return échange == kEchanges.end() ? nullptr : échange;
}

Octets Question(const Echange& échange, std::string_view valeur) {
  Octets octets(1, échange.lettre);
  if (échange.avecValeur) octets += valeur;
  return octets += kRetourChariot;
}

double DécodeMesure(std::string_view octets) {
  const auto octet = [&](std::size_t rang) {
    return static_cast<std::int32_t>(static_cast<std::uint8_t>(octets[rang]));
  };
  const std::int32_t valeur = octet(0) + 256 * octet(1) + 65536 * octet(2);
  if (valeur == kPasDeMesure) return 0;
  return valeur > kPasDeMesure ? valeur - kModule : valeur;
}

}  // namespace zuma::trames_laser
