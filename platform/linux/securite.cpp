#include "platform/linux/securite.h"

#include <algorithm>
#include <utility>

#include "core/chassis.h"

namespace zuma::linux_ {
namespace {

constexpr std::string_view kTexteValeur = "Texte valeur courante UC";
constexpr std::size_t kTexteRéservé = 512;
// Drives in a row when each one raises new causes; the next refresh goes on.
constexpr int kReprises = 8;

}  // namespace

Securite::Securite(Ref<ZED_Timer> timer, Pointeur<const Horloge> horloge)
    : timer_(std::move(timer)), horloge_(horloge) {
  // Taken once: a stop must not depend on memory that is left.
  enAttente_.reserve(kTexteRéservé);
  causes_.reserve(kCausesGardées);
  suivis_.reserve(kCausesGardées);
}

void Securite::Branche(Chassis& chassis, Ref<RegistreErreurs> registre) {
  Branche([&chassis, registre = std::move(registre)] {
    const std::uint64_t avant = registre ? registre->Total() : 0;
    chassis.DéclencheAU();
    return !registre || registre->Total() == avant;
  });
}

void Securite::Bornes(ZED_Traduction& traducteur) {
  bornes_.clear();
  const std::string langue = traducteur.LangueCourante();
  for (const std::string& l : traducteur.Langues()) {
    traducteur.LangueCourante(l);
    std::string borne = traducteur.Traduit(kTexteValeur);
    // A text of blanks would cut names apart.
    if (!SansBlancs(borne).empty()) bornes_.push_back(std::move(borne));
  }
  traducteur.LangueCourante(langue);
}

void Securite::PositionneCauseAU(std::string_view cause) noexcept {
  try {
    enAttente_ = cause;
    connue_ = !cause.empty();
  } catch (...) {
    connue_ = false;  // no memory: the stop is driven without its text
  }
}

Valeur Securite::DéclencheSécurité() {
  déclenchée_ = true;
  if (Retient()) Arrête();
  return {};
}

bool Securite::Acquitte() noexcept {
  if (enCours_) return false;
  causes_.clear();
  suivis_.clear();
  perdues_ = 0;
  déclenchée_ = false;
  return true;
}

std::string_view Securite::Origine(std::string_view cause) const noexcept {
  for (const std::string& borne : bornes_) {
    const std::size_t fin = cause.rfind(borne);
    if (fin != std::string_view::npos) return cause.substr(0, fin);
  }
  return cause;
}

// True when the stop is to be driven.
bool Securite::Retient() noexcept {
  try {
    const double maintenant = timer_->LitMicrosecondes();
    if (std::exchange(connue_, false)) {
      const std::string_view origine = Origine(enAttente_);
      const auto suivi = std::ranges::find(suivis_, origine, &Suivi::origine);
      if (suivi != suivis_.end()) {
        return !EncoreTenue(static_cast<std::size_t>(suivi - suivis_.begin()), maintenant);
      }
      if (suivis_.size() < kCausesGardées) {
        Ajoute(origine, maintenant);
        return true;
      }
    }
  } catch (...) {
    connue_ = false;  // in doubt
  }
  ++perdues_;
  return true;
}

bool Securite::EncoreTenue(std::size_t rang, double maintenant) noexcept {
  Suivi& suivi = suivis_[rang];
  ++causes_[rang].fois;
  const bool tenue = (suivi.servie || enCours_) && maintenant - suivi.dernière < kSilence;
  suivi.dernière = maintenant;
  return tenue;
}

void Securite::Ajoute(std::string_view origine, double maintenant) {
  Cause cause{enAttente_, horloge_ ? horloge_->TexteHeure() : std::string()};
  Suivi suivi{std::string(origine), maintenant};
  causes_.push_back(std::move(cause));
  suivis_.push_back(std::move(suivi));
}

void Securite::Arrête() {
  if (enCours_) {
    encore_ = true;
    return;
  }
  struct EnCours {
    bool& drapeau;
    explicit EnCours(bool& d) : drapeau(d) { drapeau = true; }
    ~EnCours() { drapeau = false; }
  };
  const EnCours enCours(enCours_);
  for (Suivi& suivi : suivis_) suivi.servie = false;
  complet_ = false;
  encore_ = true;
  bool atteintes = true;
  for (int reprise = 0; encore_ && reprise < kReprises; ++reprise) {
    encore_ = false;
    const std::shared_ptr<const Arrêt> arrêt = arrêt_;
    if (!arrêt) throw Echec::ObjetAbsent();
    atteintes = (*arrêt)();
  }
  if (!atteintes || encore_) return;
  complet_ = true;
  for (Suivi& suivi : suivis_) suivi.servie = true;
}

}  // namespace zuma::linux_
