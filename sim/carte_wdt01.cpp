#include "sim/carte_wdt01.h"

#include <charconv>
#include <utility>

namespace zuma::sim {
namespace {

constexpr double kMicrosecondes = 1'000'000;
constexpr std::size_t kLignesGardées = 1024;
constexpr std::size_t kLongueurMaximale = 32;
constexpr std::uint8_t kBusVide = 0xFF;
constexpr char kFinDeLigne = '\r';

}  // namespace

std::uint8_t CarteWDT01::Inp(std::uint16_t port) {
  if (port != base_ + 1) return kBusVide;
  const double maintenant = timer_->LitMicrosecondes();
  Avance(maintenant);
  unsigned état = 0;
  if (armée_) état |= kArmée;
  if (déclenchée_) état |= kDéclenchée;
  if (refusée_) état |= kRefusée;
  if (!enPanne_ && maintenant >= occupéeJusquà_) état |= kPrête;
  return static_cast<std::uint8_t>(état);
}

void CarteWDT01::Outp(std::uint16_t port, std::uint8_t octet) {
  if (port != base_) return;
  const double maintenant = timer_->LitMicrosecondes();
  Avance(maintenant);
  if (enPanne_ || maintenant < occupéeJusquà_) {
    ++perdus_;
    return;
  }
  occupéeJusquà_ = maintenant + duréeOctet_;
  const auto caractère = static_cast<char>(octet);
  if (caractère == kFinDeLigne) {
    Exécute(maintenant);
  } else if (reçue_.size() < kLongueurMaximale) {
    reçue_ += caractère;
  }
}

bool CarteWDT01::ContactFermé() {
  Avance(timer_->LitMicrosecondes());
  return !déclenchée_;
}

void CarteWDT01::Avance(double maintenant) {
  if (armée_ && temps_ != 0 && maintenant > échéance_) déclenchée_ = true;
}

void CarteWDT01::Exécute(double maintenant) {
  const std::string ligne = std::exchange(reçue_, {});
  if (ligne.empty()) return;
  journal_.push_back({passe_, ligne});
  if (journal_.size() > kLignesGardées) journal_.pop_front();
  refusée_ = false;
  if (ligne == "S") {
    armée_ = true;
    échéance_ = maintenant + temps_ * kMicrosecondes;
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
