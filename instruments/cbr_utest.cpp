#include "instruments/cbr_utest.h"

#include <array>
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
constexpr double kRépétition =
    1'000'000;                        // microseconds between two sendings of a stop that is owed
constexpr double kSilence = 100'000;  // microseconds, the pause around a stop that is sent again
constexpr double kFraîcheur = 1'000'000;        // microseconds for which an answer counts
constexpr double kEntreDeuxEssais = 1'000'000;  // microseconds between two tries to open the port

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
  return Maintenant() - heureDEnvoi_ >= kDélaiDeRéponse;
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
  heureDEnvoi_ = Maintenant();
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
  partie_ = étatConnu_ = false;
  while (true) {
    // Before the port is configured: a first start stops nothing, only a reset reaches the machine.
    Envoie(Demande::Arrêt);
    EffaceLesErreurs();
    tampon_.clear();
    échange_ = Echange::Repos;
    essais_ = 0;
    port_->ConfigurePort(Settings_str, true);
    if (PortUtilisable() || !plateforme_.fenêtres) break;
    Settings_str = DemandeLePort();
  }
  mblnMarche = false;
  heureDuPort_ = Maintenant();
  mstrSettings = std::move(Settings_str);
  return PortUtilisable();
}

void CBR_UTEST_CLASS::ResetMachine() {
  (void)Initialise(mstrSettings);
}

void CBR_UTEST_CLASS::Arrete() noexcept {
  mblnArrêt = arrêtDû_ = true;
  ++arrêts_;
}

bool CBR_UTEST_CLASS::EstAuRepos() const {
  return étatConnu_ && !mblnIsRunning && !partie_ && Maintenant() - heureDuRepos_ < kFraîcheur;
}

void CBR_UTEST_CLASS::AccepteLaRéponse() noexcept {
  essais_ = 0;
  EffaceLesErreurs();
  échange_ = Echange::Repos;
}

// A start that waits for a stop to be confirmed must not move the machine once it answers again.
void CBR_UTEST_CLASS::AbandonneLEchange() noexcept {
  mblnTimeout = true;
  if (arrêtDû_) mblnMarche = false;
}

// The answer is to a request that left behind the stop, unless that one has still to leave.
void CBR_UTEST_CLASS::PrendLEtat(bool enMarche) {
  mblnIsRunning = enMarche;
  étatConnu_ = true;
  if (enMarche) return;
  heureDuRepos_ = Maintenant();
  if (arrêtDû_ && !mblnArrêt) arrêtDû_ = partie_ = false;
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
      AbandonneLEchange();
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
    PrendLEtat(mesures.enMarche);
    mdblForceCourante = mesures.force;
    mdblDeplacementCourant = mesures.déplacement;
    ++mesures_;
    AccepteLaRéponse();
    return;
  }
  if (code == Code::SommeFausse) {
    erreurs_.somme = true;
  } else {
    if (!EnRetard()) return;
    if (++essais_ > kEssais) {
      AbandonneLEchange();
    } else {
      Envoie(Demande::Mesures);
    }
  }
  échange_ = Echange::Repos;
}

// Ends with its scope, whatever an event that a pause serves may throw.
class CBR_UTEST_CLASS::EnCours {
 public:
  EnCours(Séquence& place, Séquence séquence) : place_(place) { place_ = séquence; }
  ~EnCours() { place_ = Séquence::Aucune; }
  EnCours(const EnCours&) = delete;
  EnCours& operator=(const EnCours&) = delete;

 private:
  Séquence& place_;
};

void CBR_UTEST_CLASS::EnvoieLArrêt() {
  const EnCours cours(séquence_, Séquence::Arrêt);
  Attend(kPause);
  Envoie(Demande::Arrêt);
  heureDArrêt_ = heureDEnvoi_;
  Attend(kPause);
  mblnArrêt = false;
}

// A stop that is owed keeps its pauses when it is sent again, but holds nobody: nothing else is
// asked meanwhile. True while that is so.
bool CBR_UTEST_CLASS::RépèteLArrêt() {
  const double âge = Maintenant() - heureDArrêt_;
  if (âge >= kRépétition) {
    Envoie(Demande::Arrêt);
    heureDArrêt_ = heureDEnvoi_;
    return true;
  }
  // An exchange that began before may last one more.
  return âge < kSilence || âge >= kRépétition - 2 * kSilence;
}

// The sequence ends with the identification, so that a start also tells the kind of machine. A stop
// given during a pause ends it there: the two are one order and its contrary, and the machine must
// not move behind the second.
void CBR_UTEST_CLASS::Démarre() {
  struct Pas {
    Demande demande;
    double pause;
  };
  static constexpr std::array<Pas, 4> kDépart{{{Demande::Arrêt, kPauseDeDépart},
                                               {Demande::Départ7, kPauseDeDépart},
                                               {Demande::Départ2, kPause},
                                               {Demande::Identification, kPause}}};
  const std::uint32_t arrêts = arrêts_;
  const EnCours cours(séquence_, Séquence::Départ);
  mblnMarche = false;
  partie_ = true;
  for (const Pas& pas : kDépart) {
    Envoie(pas.demande);
    Attend(pas.pause);
    if (arrêts_ != arrêts) break;
  }
  if (arrêts_ == arrêts) mblnMarche = false;  // asked again meanwhile: it is the same start
}

void CBR_UTEST_CLASS::ProchaineDemande() {
  if (mblnMarche && !arrêtDû_) Démarre();
  if (mblnArrêt) {
    EnvoieLArrêt();
  } else if (échange_ == Echange::Repos && !(arrêtDû_ && RépèteLArrêt())) {
    Envoie(Demande::Mesures);
  }
}

// A port that is lost or was never there is looked for.
void CBR_UTEST_CLASS::RetrouveLePort() {
  if (port_->PortOuvert() || Maintenant() - heureDuPort_ < kEntreDeuxEssais) return;
  heureDuPort_ = Maintenant();
  port_->RéinitialisePort();
}

// Whatever an exchange ended in, the next request leaves in the same pass. One that was sent again
// for want of an answer is not awaited either: the measures are asked for right behind it, and this
// must stay, since the machine is used to that pace.
//
// Called by an event that a pause serves, it only sends a stop: the start that sleeps below ends
// there.
void CBR_UTEST_CLASS::Refresh() {
  if (séquence_ != Séquence::Aucune) {
    if (séquence_ == Séquence::Départ && mblnArrêt) EnvoieLArrêt();
    return;
  }
  RetrouveLePort();
  tampon_ += port_->LitEntrée();
  if (échange_ == Echange::Identification) {
    SuitLIdentification();
  } else if (échange_ == Echange::Mesures) {
    SuitLesMesures();
  }
  if (échange_ == Echange::Repos) ProchaineDemande();
}

}  // namespace zuma
