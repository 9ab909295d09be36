#include "platform/linux/securite.h"

#include <algorithm>
#include <exception>
#include <utility>

#include "core/chassis.h"
#include "platform/linux/arret_du_chassis.h"

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
  const auto fait = [&chassis, registre = std::move(registre)](void (*geste)(Chassis&)) {
    const std::uint64_t avant = registre ? registre->Total() : 0;
    geste(chassis);
    return !registre || registre->Total() == avant;
  };
  Branche({.arrête = [fait] { return fait(&ArrêteLeChassis); },
           .maintient = [fait] { return fait(&MaintientLArrêt); },
           .complet = [&chassis] { return ArrêtAtteint(chassis); },
           .chassis = &chassis});
}

void Securite::Branche(Branchement branchement) {
  if (branchement.chassis != nullptr) Débranche(*branchement.chassis);
  if (!branchement.maintient) branchement.maintient = branchement.arrête;
  auto branchés = branchés_ ? *branchés_ : std::vector<Branchement>();
  branchés.push_back(std::move(branchement));
  branchés_ = std::make_shared<const std::vector<Branchement>>(std::move(branchés));
}

void Securite::Débranche(const Chassis& chassis) {
  if (!branchés_) return;
  std::vector<Branchement> branchés = *branchés_;
  std::erase_if(branchés, [&](const Branchement& b) { return b.chassis == &chassis; });
  branchés_ = branchés.empty()
                  ? nullptr
                  : std::make_shared<const std::vector<Branchement>>(std::move(branchés));
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
  if (Retient()) {
    Arrête(&Branchement::arrête);
  } else {
    Maintient();
  }
  return {};
}

void Securite::Maintient() {
  if (!déclenchée_ || enCours_) return;
  if (timer_->LitMicrosecondes() - conduite_ >= kReprise) Arrête(&Branchement::maintient);
}

// In doubt it is not complete.
bool Securite::ArrêtComplet() const noexcept {
  try {
    return complet_ && (!branchés_ || std::ranges::all_of(*branchés_, [](const Branchement& b) {
             return !b.complet || b.complet();
           }));
  } catch (...) {
    return false;
  }
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

void Securite::Arrête(Arrêt Branchement::* geste) {
  if (enCours_) {
    encore_ = true;
    return;
  }
  struct EnCours {
    Securite& moi;
    explicit EnCours(Securite& s) : moi(s) { moi.enCours_ = true; }
    ~EnCours() {
      moi.enCours_ = false;
      if (moi.timer_) moi.conduite_ = moi.timer_->LitMicrosecondes();
    }
  };
  const EnCours enCours(*this);
  for (Suivi& suivi : suivis_) suivi.servie = false;
  complet_ = false;
  encore_ = true;
  bool atteintes = true;
  for (int reprise = 0; encore_ && reprise < kReprises; ++reprise) {
    encore_ = false;
    atteintes = FaitPartout(std::exchange(geste, &Branchement::arrête));
  }
  if (!atteintes || encore_) return;
  complet_ = true;
  for (Suivi& suivi : suivis_) suivi.servie = true;
}

bool Securite::FaitPartout(Arrêt Branchement::* geste) const {
  const auto branchés = branchés_;
  if (!branchés) throw Echec::ObjetAbsent();
  bool atteintes = true;
  std::exception_ptr premier;
  for (const Branchement& branché : *branchés) {
    try {
      atteintes = (branché.*geste)() && atteintes;
    } catch (...) {
      if (!premier) premier = std::current_exception();
    }
  }
  if (premier) std::rethrow_exception(premier);
  return atteintes;
}

}  // namespace zuma::linux_
