#include "instruments/cbr_utest.h"

#include <utility>
#include <vector>

namespace zuma {

using trames_utest::Code;
using trames_utest::Demande;

namespace {

constexpr double kDélaiDeRéponse = 100'000;  // microseconds
constexpr std::int32_t kEssais = 10;
constexpr double kPause = 0.1;          // seconds, around a stop and at the end of a start
constexpr double kPauseDeDépart = 0.5;  // seconds
constexpr double kScrutation = 0.001;   // seconds between two looks at a port under trial

std::vector<std::string> Vitesses() {
  return {"9600", "19200", "38400", "57600", "115200"};
}

}  // namespace

CBR_UTEST_CLASS::CBR_UTEST_CLASS(Plateforme& plateforme)
    : plateforme_(plateforme), port_(plateforme.liaisons->CréePort()) {}

bool CBR_UTEST_CLASS::PortUtilisable() const {
  return port_->PortExiste() && port_->PortConfiguré();
}

bool CBR_UTEST_CLASS::EtatCom() const {
  return port_->PortExiste();
}

bool CBR_UTEST_CLASS::EtatMachine() const {
  return PortUtilisable() && !mblnTimeout;
}

bool CBR_UTEST_CLASS::EnRetard() const {
  return TimerExact_->LitMicrosecondes() - heureDEnvoi_ >= kDélaiDeRéponse;
}

void CBR_UTEST_CLASS::Attend(double secondes) {
  plateforme_.horloge->Dort(secondes);
}

void CBR_UTEST_CLASS::EffaceLesErreurs() noexcept {
  mblnTimeout = false;
  erreurs_ = {};
}

void CBR_UTEST_CLASS::Envoie(Demande demande) {
  tampon_.clear();
  const trames_utest::Trame trame = trames_utest::ConstruitDemande(demande);
  port_->EcritSortie({trame.data(), trame.size()});
  échange_ = demande == Demande::Identification ? Echange::Identification
             : demande == Demande::Mesures      ? Echange::Mesures
                                                : Echange::Repos;
  heureDEnvoi_ = TimerExact_->LitMicrosecondes();
}

bool CBR_UTEST_CLASS::TestPort(const std::string& Settings_str) {
  port_->ConfigurePort(Settings_str, true);
  if (!PortUtilisable()) return false;
  Envoie(Demande::Identification);
  bool trouvé = false;
  do {
    Attend(kScrutation);
    tampon_ += port_->LitEntrée();
    trouvé = trames_utest::Analyse(tampon_, trames_utest::kIdentification) == Code::Bonne;
  } while (!trouvé && !EnRetard());
  échange_ = Echange::Repos;
  return trouvé;
}

std::string CBR_UTEST_CLASS::DemandeLePort() {
  UTS_0107_Configuration feuille(*plateforme_.fenêtres, *this, port_->ListePorts(), Vitesses());
  plateforme_.fenêtres->MontreModal(feuille);
  return std::string(SansBlancs(feuille.Settings()));
}

bool CBR_UTEST_CLASS::Initialise(std::string Settings_str) {
  while (true) {
    // Before the port is configured: a first start stops nothing, only a reset reaches the machine.
    Envoie(Demande::Arrêt);
    EffaceLesErreurs();
    tampon_.clear();
    échange_ = Echange::Repos;
    essais_ = 0;
    port_->ConfigurePort(Settings_str, true);
    if (PortUtilisable()) break;
    if (!plateforme_.fenêtres) return false;
    Settings_str = DemandeLePort();
  }
  mblnMarche = false;
  mstrSettings = std::move(Settings_str);
  return true;
}

void CBR_UTEST_CLASS::ResetMachine() {
  (void)Initialise(mstrSettings);
}

void CBR_UTEST_CLASS::AccepteLaRéponse() noexcept {
  essais_ = 0;
  EffaceLesErreurs();
  échange_ = Echange::Repos;
}

// Only an answer that began is waited for: without a header the identification is given up at once.
void CBR_UTEST_CLASS::SuitLIdentification() {
  const Code code = trames_utest::Analyse(tampon_, trames_utest::kIdentification);
  if (code == Code::Bonne) {
    const auto machine = trames_utest::DécodeIdentification(tampon_);
    if (machine) machine_ = machine;
    AccepteLaRéponse();
    return;
  }
  if (code == Code::Incomplète) {
    if (!EnRetard()) return;
    if (++essais_ < kEssais + 1) {
      Envoie(Demande::Identification);
    } else {
      mblnTimeout = true;
    }
  }
  erreurs_.sansEntête |= code == Code::SansEntête;
  erreurs_.somme |= code == Code::SommeFausse;
  erreurs_.fonction |= code == Code::AutreFonction;
  échange_ = Echange::Repos;
}

void CBR_UTEST_CLASS::SuitLesMesures() {
  const Code code = trames_utest::Analyse(tampon_, trames_utest::kMesures);
  if (code == Code::Bonne) {
    const trames_utest::Mesures mesures = trames_utest::DécodeMesures(tampon_);
    mblnIsRunning = mesures.enMarche;
    mdblForceCourante = mesures.force;
    mdblDeplacementCourant = mesures.déplacement;
    AccepteLaRéponse();
    return;
  }
  if (code == Code::SommeFausse) {
    erreurs_.somme = true;
  } else {
    if (!EnRetard()) return;
    if (++essais_ > kEssais) {
      mblnTimeout = true;
    } else {
      Envoie(Demande::Mesures);
    }
  }
  échange_ = Echange::Repos;
}

// The sequence ends with the identification, so that a start also tells the kind of machine.
void CBR_UTEST_CLASS::Démarre() {
  Envoie(Demande::Arrêt);
  Attend(kPauseDeDépart);
  Envoie(Demande::Départ7);
  Attend(kPauseDeDépart);
  Envoie(Demande::Départ2);
  Attend(kPause);
  Envoie(Demande::Identification);
  Attend(kPause);
  mblnMarche = false;
}

void CBR_UTEST_CLASS::ProchaineDemande() {
  if (mblnArrêt) {
    Attend(kPause);
    Envoie(Demande::Arrêt);
    Attend(kPause);
    mblnArrêt = false;
  } else if (mblnMarche) {
    Démarre();
  } else {
    Envoie(Demande::Mesures);
  }
}

// Whatever an exchange ended in, the next request leaves in the same pass. One that was sent again
// for want of an answer is not awaited either: the measures are asked for right behind it, and this
// must stay, since the machine is used to that pace.
void CBR_UTEST_CLASS::Refresh() {
  tampon_ += port_->LitEntrée();
  if (échange_ == Echange::Identification) {
    SuitLIdentification();
  } else if (échange_ == Echange::Mesures) {
    SuitLesMesures();
  }
  if (échange_ == Echange::Repos) ProchaineDemande();
}

}  // namespace zuma
