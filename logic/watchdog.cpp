#include "logic/watchdog.h"

#include <cmath>

#include "base/colonnes.h"
#include "base/garde.h"
#include "base/outils_communs.h"
#include "core/liaison.h"
#include "logic/wdt_01.h"

namespace zuma {
namespace {

// Time given to the board by a stop, in seconds: shorter than what its refresh takes.
constexpr double kTempsDArrêt = 0.01;

// Pulse, in microseconds: half period, lag from which the schedule starts anew, step of repayment.
constexpr double kDemiPériode = 20'000;
constexpr double kRetardPerdu = 10'000;
constexpr double kRattrapage = 5'000;

}  // namespace

Watchdog::~Watchdog() {
  if (!EnCarte()) return;
  try {
    Garde(*this, Forme::Méthode, "Terminate", [&] { wdt_01::WDT_Stoppe(LaCarte()); });
  } catch (...) {
    // No error record either: there is nobody left to tell.
    return;
  }
}

void Watchdog::ParamètresDepuisBD(const Ref<Recordset>& rstMonRecordSet) {
  Garde(*this, Forme::Procédure, "ParamètresDepuisBD", [&] {
    Recordset& ligne = *rstMonRecordSet;
    ligne.MoveFirst();
    const Valeur& index = LitChamp(ligne, "Index");
    Key(EstNul(index) ? "0" : VersTexte(index));
    mstrNom = colonnes::Texte(ligne, "Nom du Watchdog");
    const Valeur& adresse = LitChamp(ligne, "Adresse");
    if (!EstNul(adresse)) mlngAdresse = OutilsCommuns::HexaVersLong(adresse);
    const Valeur& temps = LitChamp(ligne, "Temps en seconde");
    if (!EstNul(temps)) mdblTemps = colonnes::Nombre(temps, "Temps en seconde");
    const Valeur* pulse = ChercheChamp(ligne, "Pulse");
    if (pulse != nullptr && !EstNul(*pulse)) indexPulse_ = *pulse;
  });
}

void Watchdog::Lien(const Ref<ZED_Securite>&, const ParamètresRef&, const Ref<ZED_Traduction>&,
                    Chassis* MonChassis) {
  Garde(*this, Forme::Méthode, "Lien", [&] {
    liaison::LieLeCanal(*this, "Attention : Le watchdog '", MonChassis, indexPulse_, SortiePulse_);
  });
}

wdt_01::Liaison Watchdog::LaCarte() const {
  return {*LaPlateforme().ports, *Timer(), *this, static_cast<std::uint16_t>(mlngAdresse)};
}

// The board stays stopped, with its time when it has one.
void Watchdog::ChargeLeTemps() {
  if (!EnCarte()) return;
  if (mdblTemps != 0) wdt_01::WDT_ChargeTemps(LaCarte(), static_cast<float>(mdblTemps));
  wdt_01::WDT_Stoppe(LaCarte());
}

void Watchdog::Initialise() {
  Garde(*this, Forme::Méthode, "Initialise", [&] { ChargeLeTemps(); });
}

void Watchdog::Réarme() {
  Garde(*this, Forme::Méthode, "Réarme", [&] {
    mblnAU = false;
    arrêtAtteint_ = true;
    ChargeLeTemps();
  });
}

void Watchdog::Enabled(bool enService) {
  Garde(*this, Forme::Ecriture, "Enabled", [&] {
    mblnEnabled = enService;
    if (mblnAU || !EnCarte()) return;
    if (!enService) {
      wdt_01::WDT_Stoppe(LaCarte());
    } else if (mdblTemps != 0) {
      wdt_01::WDT_Arme(LaCarte());
    }
  });
}

void Watchdog::Temps(double secondes) {
  Garde(*this, Forme::Ecriture, "Temps", [&] {
    if (!std::isfinite(secondes)) throw Echec(Numéro::AppelIncorrect);
    mdblTemps = secondes;
    if (EnCarte() && mdblTemps != 0) {
      wdt_01::WDT_ChargeTemps(LaCarte(), static_cast<float>(mdblTemps));
    }
  });
}

void Watchdog::DéclencheAU() {
  Garde(*this, Forme::Méthode, "DéclencheAU", [&] {
    mblnAU = true;
    if (!EnCarte()) return;
    arrêtAtteint_ = false;
    wdt_01::WDT_ChargeTemps(LaCarte(), static_cast<float>(kTempsDArrêt));
    wdt_01::WDT_Arme(LaCarte());
    arrêtAtteint_ = true;
  });
}

bool Watchdog::CartePrête() const {
  return !EnCarte() || wdt_01::WDT_LitEtat(LaCarte()).prête;
}

void Watchdog::MetàJour() {
  Garde(*this, Forme::Méthode, "MetàJour", [&] {
    if (SortiePulse_) {
      RafraîchitLaSortie();
    } else if (mblnEnabled && mlngAdresse != 0) {
      RafraîchitLaCarte();
    }
  });
}

// The line "S" goes out over two passes, one byte at a time.
void Watchdog::RafraîchitLaCarte() {
  const wdt_01::Liaison carte = LaCarte();
  if (!wdt_01::WDT_LitEtat(carte).prête) return;
  wdt_01::WDT_EcritOctet(carte, mblnPhase ? std::uint8_t{'S'} : wdt_01::kRetourChariot);
  mblnPhase = !mblnPhase;
}

void Watchdog::RafraîchitLaSortie() {
  ZED_Timer& timer = *Timer();
  const double début = timer.LitMicrosecondes();
  if (!(timer.LitMicrosecondes() > mdblDernierPulse + kDemiPériode)) return;
  mblnNiveauPulse = !mblnNiveauPulse;
  SortiePulse_->ValeurCanal(mblnNiveauPulse ? kVrai : 0);
  SortiePulse_->MetàJour();
  const bool perdu = timer.LitMicrosecondes() > mdblDernierPulse + kRetardPerdu;
  mdblDernierPulse = perdu ? début : mdblDernierPulse + kRattrapage;
}

}  // namespace zuma
