// Balances and indicators that send unasked, each read by a channel on the line of its block.
#include <cmath>
#include <limits>
#include <optional>
#include <string_view>

#include "boards/blocs.h"
#include "boards/ecoute_serie.h"
#include "boards/operations.h"
#include "boards/trames_serie.h"

namespace zuma::pilotes {
namespace {

constexpr double kSilence = 1'000'000;             // microseconds
constexpr std::string_view kSansPoids = "+99999";  // sent while there is no weight
constexpr std::size_t kLRPCMinimum = 6;            // a frame is read once more than this came in
constexpr double kMillièmes = 1000;                // of the unit in LRPC frames

// What a serial channel has received and not yet decoded.
struct TamponSérie : EtatPilote {
  Octets reçu;
  bool entamé = false;  // a frame began and is not complete
  // Of the last reopening or first byte, microseconds; long ago at first.
  double heure = -std::numeric_limits<double>::infinity();
};

// The line of a channel for one refresh: what came in, and the time since it last began anew.
class Ecoute {
 public:
  explicit Ecoute(Canal& canal)
      : bloc_(canal.Parent()), tampon_(canal.Etat<TamponSérie>()), ligne_(bloc_->RS()) {
    ecoute_serie::Relève(*ligne_, tampon_.reçu);
  }

  [[nodiscard]] TamponSérie& Tampon() noexcept { return tampon_; }
  [[nodiscard]] bool EstSilencieuse() const {
    return bloc_->LeTimer()->LitMicrosecondes() - tampon_.heure > kSilence;
  }
  void MarqueLHeure() { tampon_.heure = bloc_->LeTimer()->LitMicrosecondes(); }
  /// Drops what came in, so that half a record finds no other half, and opens the line anew.
  void Recommence() {
    tampon_.reçu.clear();
    tampon_.entamé = false;
    MarqueLHeure();  // a port that does not open is tried again after the same silence
    ecoute_serie::Rouvre(*ligne_);
  }
  /// True on a line that was lost, by unplugging for instance: tried again after each silence.
  [[nodiscard]] bool EstPerdue() {
    if (ligne_->EtatPort() == 1) return false;
    if (EstSilencieuse()) Recommence();
    return true;
  }
  /// True when something waits to be decoded; its first byte starts the time.
  [[nodiscard]] bool AReçu() {
    if (tampon_.reçu.empty()) return false;
    if (!tampon_.entamé) MarqueLHeure();
    tampon_.entamé = true;
    return true;
  }

 private:
  Pointeur<Fonction> bloc_;
  TamponSérie& tampon_;
  LiaisonSérieRef ligne_;
};

// The line is opened anew every second, even while it brings frames.
void LitLRPC(Canal& canal) {
  Ecoute écoute(canal);
  TamponSérie& tampon = écoute.Tampon();
  if (écoute.EstSilencieuse()) {
    écoute.Recommence();
    return;
  }
  if (tampon.reçu == kSansPoids || tampon.reçu.size() <= kLRPCMinimum) return;
  const auto lue = trames_serie::PremièreTrame(tampon.reçu);
  if (lue) canal.ValeurCanal(*lue / kMillièmes);
  // What is no frame may end with the beginning of one.
  tampon.reçu.erase(0, lue ? Octets::npos : tampon.reçu.size() - trames_serie::kLongueurLRPC + 1);
}

// A listener that came in the midst of a frame finds its place again byte by byte: nothing parts
// one frame from the next, and one lost byte would keep the old value for ever.
void LitDEXAL(Canal& canal) {
  Ecoute écoute(canal);
  TamponSérie& tampon = écoute.Tampon();
  if (écoute.EstPerdue() || !écoute.AReçu()) return;
  if (tampon.reçu.size() < trames_serie::kLongueurDEXAL) {
    if (écoute.EstSilencieuse()) écoute.Recommence();
    return;
  }
  std::optional<double> lue;
  while (!lue && tampon.reçu.size() >= trames_serie::kLongueurDEXAL) {
    lue = trames_serie::DecortiqueUneTrameDEXAL_dbl(
        std::string_view(tampon.reçu).substr(1, trames_serie::kLongueurDEXAL - 1));
    if (!lue) tampon.reçu.erase(0, 1);
  }
  if (!lue) return;
  canal.ValeurCanal(*lue);
  tampon.reçu.clear();
  tampon.entamé = false;
}

void LitJADEVER(Canal& canal) {
  Ecoute écoute(canal);
  TamponSérie& tampon = écoute.Tampon();
  if (écoute.EstPerdue() || !écoute.AReçu()) return;
  if (écoute.EstSilencieuse()) {
    écoute.Recommence();
    return;
  }
  constexpr double kSansNombre = std::numeric_limits<double>::quiet_NaN();  // an overload
  double valeur = kSansNombre;
  const std::size_t avant = tampon.reçu.size();
  const bool trouvée = trames_serie::DecortiqueJADEVER(tampon.reçu, valeur, kSansNombre);
  if (trouvée && std::isfinite(valeur)) canal.ValeurCanal(valeur);
  if (tampon.reçu.size() < avant) tampon.entamé = false;
}

// A board whose blocks have lines of their own needs none.
void DémarreCarteRS232(Carte& carte) {
  if (!carte.Configuration().empty()) carte.OuvreLigneSérie();
}

}  // namespace

const OpérationsCarte kRS232Carte{.démarre = &DémarreCarteRS232};
const OpérationsPilote kLigneRS232{.démarreBloc = &ecoute_serie::OuvreLaLigne,
                                   .rafraîchitBloc = &RafraîchitLesCanaux};
const OpérationsPilote kBalanceLRPC31{.rafraîchitCanal = &LitLRPC};
const OpérationsPilote kIndicateurDEXAL{.rafraîchitCanal = &LitDEXAL};
const OpérationsPilote kBalanceJADEVER{.rafraîchitCanal = &LitJADEVER};

}  // namespace zuma::pilotes
