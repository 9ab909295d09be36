#include "sim/thumler_simule.h"

#include <cstdio>

#include "sim/journal_borne.h"

namespace zuma::sim {

std::int32_t ThumlerSimulé::FT_Open(std::int32_t numéro, std::int32_t& poignée) {
  if (!branché) return 2;
  ouvert_ = true;
  poignée = 100 + numéro;
  return 0;
}

std::int32_t ThumlerSimulé::FT_Purge(std::int32_t, std::int32_t masque) {
  if (masque == kPurgeRéception) sortie_.clear();
  return Etat();
}

std::int32_t ThumlerSimulé::FT_Write(std::int32_t, std::string_view octets) {
  if (Etat() != 0) return Etat();
  Note(commandes, std::string(octets));
  if (sourd) return 0;
  if (octets == "$H") enMarche_ = false;
  if (octets == "$R") enMarche_ = true;
  if (octets.size() == 5 && octets.starts_with("$V")) {
    consigne_ = std::stoi(std::string(octets.substr(2)));
  }
  if (octets == "$A") Répond();
  return 0;
}

void ThumlerSimulé::Répond() {
  if (muet) return;
  char texte[32];
  std::snprintf(texte, sizeof texte, "A %05d;%07.2f\n", enMarche_ ? consigne_ : 0, charge);
  sortie_ = réponseForcée.empty() ? texte : réponseForcée;
  if (!figé) figée_.clear();
  if (figé && figée_.empty()) figée_ = sortie_;
  if (figé) sortie_ = figée_;
}

std::int32_t ThumlerSimulé::FT_GetStatus(std::int32_t, std::int32_t& réception,
                                         std::int32_t& émission) {
  réception = static_cast<std::int32_t>(sortie_.size());
  émission = 0;
  return Etat();
}

std::int32_t ThumlerSimulé::FT_Read(std::int32_t, std::int32_t nombre, Octets& octets) {
  octets = sortie_.substr(0, static_cast<std::size_t>(nombre));
  sortie_.erase(0, octets.size());
  return Etat();
}

}  // namespace zuma::sim
