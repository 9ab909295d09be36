#include "instruments/balance_gram.h"

#include <utility>
#include <vector>

#include "instruments/trames_gram.h"

namespace zuma {
namespace {

constexpr double kSilence = 500'000;                // microseconds
constexpr double kEntreDeuxRecherches = 5'000'000;  // microseconds
constexpr double kEcoute = 0.1;                     // seconds

std::vector<std::string> Vitesses() {
  return {"1200", "2400", "4800", "9600", "19200", "38400"};
}

}  // namespace

BalanceGram_CLASS::BalanceGram_CLASS(Plateforme& plateforme)
    : plateforme_(plateforme), port_(plateforme.liaisons->CréePort()) {}

void BalanceGram_CLASS::TimerExact(Ref<ZED_Timer> timer) {
  TimerExact_ = std::move(timer);
  if (TimerExact_) heureEnregistrement_ = TimerExact_->LitMicrosecondes();
}

bool BalanceGram_CLASS::PortUtilisable() const {
  return port_->PortExiste() && port_->PortConfiguré();
}

// What came before belongs to another line, or to this one before it was cut: it ends here, so that
// the half of a record finds no other half.
void BalanceGram_CLASS::Configure(const std::string& réglages) {
  if (!tampon_.empty()) tampon_ = trames_gram::kFin;
  port_->ConfigurePort(réglages, true);
}

bool BalanceGram_CLASS::TestPort(const std::string& Settings_str) {
  Configure(Settings_str);
  if (!PortUtilisable()) return false;
  plateforme_.horloge->Dort(kEcoute);
  return trames_gram::ContientUnEnregistrement(port_->LitEntrée());
}

bool BalanceGram_CLASS::Initialise(std::string Settings_str, bool AvecRechercheAuto) {
  réglagesDonnés_ = Settings_str;
  Configure(Settings_str);
  const bool utilisable = PortUtilisable();
  if (utilisable) {
    BalanceConnectee_ = true;
  } else if (AvecRechercheAuto) {
    DemandeLePort(Settings_str);
  }
  mstrSettings = std::move(Settings_str);
  return utilisable;
}

// What was chosen is also what is looked for when it is lost. Without a choice the given port goes
// on being looked for.
void BalanceGram_CLASS::DemandeLePort(std::string& réglages) {
  réglages.clear();
  if (plateforme_.fenêtres) {
    GRAM_Configuration feuille(*plateforme_.fenêtres, *this, port_->ListePorts(), Vitesses());
    plateforme_.fenêtres->MontreModal(feuille);
    réglages = SansBlancs(feuille.Settings());
  }
  if (!réglages.empty()) {
    réglagesDonnés_ = réglages;
    Configure(réglages);
    BalanceConnectee_ = true;
    return;
  }
  heureRecherche_ = TimerExact_->LitMicrosecondes();
  if (plateforme_.messages) {
    plateforme_.messages->Montre(
        "GRAM balance not found.",
        {.classe = "BalanceGram_CLASS", .clé = {}, .nom = réglagesDonnés_});
  }
}

void BalanceGram_CLASS::Refresh() {
  if (BalanceConnectee_) {
    Ecoute();
  } else {
    Cherche();
  }
}

void BalanceGram_CLASS::Ecoute() {
  tampon_ += port_->LitEntrée();
  const double maintenant = TimerExact_->LitMicrosecondes();
  if (trames_gram::ExtraitEnregistrement(tampon_)) {
    heureEnregistrement_ = maintenant;
    Accepte();
  } else if (maintenant - heureEnregistrement_ > kSilence) {
    BalanceConnectee_ = false;
  }
}

void BalanceGram_CLASS::Accepte() {
  const std::optional<double> nombre = trames_gram::Nombre(tampon_);
  if (!nombre) return;
  mdblValeurCourante = *nombre;
  unité_.assign(tampon_, trames_gram::kLongueurNombre, trames_gram::kLongueurUnité);
  ++mesures_;
}

// Every 5 s, whether the last try found the port or not. A port found again leaves the balance the
// time of a record: without it the next refresh, which comes sooner, would give it up again.
void BalanceGram_CLASS::Cherche() {
  const double maintenant = TimerExact_->LitMicrosecondes();
  if (maintenant - heureRecherche_ <= kEntreDeuxRecherches) return;
  heureRecherche_ = maintenant;
  (void)Initialise(réglagesDonnés_, false);
  BalanceConnectee_ = port_->PortConfiguré();
  if (BalanceConnectee_) heureEnregistrement_ = maintenant;
}

}  // namespace zuma
