#include "sim/carte_wdt01.h"

#include <charconv>
#include <utility>

namespace zuma::sim {
namespace {

constexpr double kMicrosecondes = 1'000'000;
constexpr std::size_t kLignesGardées = 1024;
constexpr std::size_t kLongueurMaximale = 32;
constexpr std::uint16_t kDonnées = 0;
constexpr std::uint16_t kEtat = 1;
constexpr std::uint8_t kBusVide = 0xFF;
constexpr char kFinDeLigne = '\r';

}  // namespace

std::uint8_t CarteWDT01::Lit(std::uint16_t décalage) {
  if (décalage != kEtat) return kBusVide;
  Avance();
  unsigned état = 0;
  if (armée_) état |= kArmée;
  if (déclenchée_) état |= kDéclenchée;
  if (refusée_) état |= kRefusée;
  if (!pannes.bloquée && horloge_.Maintenant() >= occupéeJusquà_) état |= kPrête;
  return static_cast<std::uint8_t>(état);
}

void CarteWDT01::Ecrit(std::uint16_t décalage, std::uint8_t octet) {
  if (décalage != kDonnées) return;
  Avance();
  if (pannes.bloquée || horloge_.Maintenant() < occupéeJusquà_) {
    ++perdus_;
    return;
  }
  occupéeJusquà_ = horloge_.Maintenant() + duréeOctet_;
  const auto caractère = static_cast<char>(octet);
  if (caractère == kFinDeLigne) {
    Exécute();
  } else if (reçue_.size() < kLongueurMaximale) {
    reçue_ += caractère;
  }
}

bool CarteWDT01::ContactFermé() {
  Avance();
  return !déclenchée_;
}

void CarteWDT01::Avance() {
  if (armée_ && temps_ != 0 && horloge_.Maintenant() > échéance_) déclenchée_ = true;
}

void CarteWDT01::Exécute() {
  const std::string ligne = std::exchange(reçue_, {});
  if (ligne.empty()) return;
  lignes_.push_back(ligne);
  if (lignes_.size() > kLignesGardées) lignes_.pop_front();
  refusée_ = false;
  if (ligne == "S") {
    armée_ = true;
    échéance_ = horloge_.Maintenant() + temps_ * kMicrosecondes;
  } else if (ligne == "E") {
    armée_ = false;
    déclenchée_ = false;
  } else if (ligne.starts_with("T=") && !armée_) {
    double lu = 0;
    const char* const fin = ligne.data() + ligne.size();
    const auto [reste, erreur] = std::from_chars(ligne.data() + 2, fin, lu);
    refusée_ = erreur != std::errc() || reste != fin || !(lu >= 0);
    if (!refusée_) temps_ = lu;
  } else {
    refusée_ = true;
  }
}

}  // namespace zuma::sim
