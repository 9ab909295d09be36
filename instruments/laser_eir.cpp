#include "instruments/laser_eir.h"

#include <array>
#include <cmath>
#include <utility>

namespace zuma {
namespace {

using enum EnumEtatCommExtenso;
using enum EnumEIRCommande;

constexpr double kRéouverture = 1e6;  // microseconds
constexpr double kAttente = 100'000;  // microseconds
constexpr std::int32_t kReprises = 3;
constexpr std::int32_t kEssaisSynchrones = 3;
constexpr std::int32_t kMesuresParEtat = 10;
constexpr std::size_t kOctetsDeMesure = 3;
constexpr double kBouge = 200;      // counts from one measure to the next that prove nothing
constexpr double kSilence = 2'000;  // microseconds; a byte at 9600 bits per second takes half of it
constexpr std::array kEtatsLus{ReadLaserState, ReadEcho, ReadZero};
constexpr std::array kRéglages{WriteTargetDistance, WriteEcho, WriteMeasuringType, WriteUnit,
                               WriteZero};
constexpr std::size_t kOctetsDEtat = 3;  // letter, digit, colon

std::size_t Suivant(std::size_t état) {
  return (état + 1) % kEtatsLus.size();
}

}  // namespace

LASER_EIR::~LASER_EIR() {
  if (MaComm_) ClosePort();
}

void LASER_EIR::LastError(std::string texte) {
  LastError_ = std::move(texte);
  Error_.Lève(LastError_);
}

void LASER_EIR::Demande(EnumEIRCommande commande, std::string_view valeur) {
  paquet_.PacketClear();
  paquet_.CommandToSend = commande;
  paquet_.ValueToSend = valeur;
  suspecteDepuis_.reset();
  EnvoiePaquet();
}

// A command that sends nothing occupies the line like the others: its time-out frees it.
void LASER_EIR::EnvoiePaquet() {
  CommState_ = EnCommunication;
  commande_ = paquet_.CommandToSend;
  const trames_laser::Echange* échange = trames_laser::EchangeDe(commande_);
  if (échange != nullptr) {
    MaComm_->EcritSortie(trames_laser::Question(*échange, paquet_.ValueToSend));
  }
}

void LASER_EIR::Relève() {
  paquet_.ReceivedValue += MaComm_->LitEntrée();
}

void LASER_EIR::TraiteRéponse() {
  const trames_laser::Echange* échange = trames_laser::EchangeDe(commande_);
  if (échange == nullptr || échange->incomplète(paquet_.ReceivedValue.size())) return;
  if (échange->prêtDAvance) CommState_ = Pret;
  if (!échange->valide(*échange, paquet_.ReceivedValue)) {
    CommState_ = EnErreur;
    return;
  }
  const double avant = lu_.ReadValue;
  échange->prend(paquet_.ValueToSend, paquet_.ReceivedValue, lu_);
  if (commande_ == ReadDataBinary) {
    dernierPas_ = std::abs(lu_.ReadValue - avant);
    ++mesures_;
  }
  CommState_ = Pret;
  Timeout_ = false;
  RéglageFait();
}

// A setting is over once it is answered, or was tried as often as a question is.
void LASER_EIR::RéglageFait() {
  if (réglagesDus_ != 0 && commande_ == kRéglages[kRéglages.size() - réglagesDus_]) --réglagesDus_;
}

// What comes behind a question without answer may belong to that one, and nothing in a measure
// tells: each answer behind it would be taken for that of the next question, for ever. The answer
// to a state names it. The laser answers in order, so that with it all that was late has passed.
void LASER_EIR::TraiteDansLeDoute() {
  Octets& reçus = paquet_.ReceivedValue;
  const trames_laser::Echange* échange = trames_laser::EchangeDe(commande_);
  if (reçus.empty() || échange == nullptr) return;
  if (!std::exchange(entendu_, true)) repère_ = sélecteur_;
  if (commande_ == ReadDataBinary) {
    // No measure is taken: three bytes of a late state would be one.
    if (reçus.size() >= kOctetsDeMesure) CommState_ = Pret;
    return;
  }
  if (reçus.size() > kOctetsDEtat) reçus.erase(0, reçus.size() - kOctetsDEtat);
  if (échange->incomplète(reçus.size()) || !échange->valide(*échange, reçus)) return;
  TraiteRéponse();
  enDoute_ = entendu_ = false;
}

// A byte that the laser did not send puts each measure behind it one byte off, with nothing to tell
// it but a fourth byte. A measure that is far from what the last ones promise waits for that byte.
bool LASER_EIR::EstSuspecte(double maintenant) {
  if (commande_ != ReadDataBinary || paquet_.ReceivedValue.size() < kOctetsDeMesure) return false;
  if (paquet_.ReceivedValue.size() > kOctetsDeMesure) {
    Timeout_ = true;
    return false;
  }
  const double pas = std::abs(trames_laser::DécodeMesure(paquet_.ReceivedValue) - lu_.ReadValue);
  if (pas <= kBouge + 2 * dernierPas_ || pas == std::abs(lu_.ReadValue)) return false;
  if (!suspecteDepuis_) suspecteDepuis_ = maintenant;
  return maintenant - *suspecteDepuis_ < kSilence;
}

// Hazard: nothing bounds the wait for `Pret`. On one thread nobody ends an exchange that is in
// progress here, so the caller must see to it that there is none. The later loop is bounded.
bool LASER_EIR::CommandeSynchrone(EnumEIRCommande commande, std::string_view valeur) {
  for (std::int32_t essai = 0; essai < kEssaisSynchrones; ++essai) {
    while (CommState_ != Pret) (void)TimerExact_->LitMicrosecondes();
    Demande(commande, valeur);
    const double envoi = TimerExact_->LitMicrosecondes();
    do {
      Relève();
      TraiteRéponse();
      if (CommState_ == Pret) return true;
    } while (TimerExact_->LitMicrosecondes() - envoi < kAttente);
    NoteLeSilence();
    CommState_ = Pret;
  }
  return false;
}

void LASER_EIR::DistanceCible(std::int32_t distance) {
  distanceCible_ = std::to_string(distance);
  UnitState_ = EnumUnite::mm;
}

void LASER_EIR::Initialise(std::int32_t DistanceCible_lng) {
  DistanceCible(DistanceCible_lng);
  for (const EnumEIRCommande réglage : kRéglages) CommandeSynchrone(réglage, Réglage(réglage));
}

std::string_view LASER_EIR::Réglage(EnumEIRCommande commande) const {
  if (commande == WriteTargetDistance) return distanceCible_;
  if (commande == WriteMeasuringType) return "1";
  if (commande == WriteUnit) return UnitState_ == EnumUnite::mm ? "M" : "I";
  return "0";
}

// An answer that came, whole or not, is not still on its way.
void LASER_EIR::NoteLeSilence() {
  enDoute_ = enDoute_ || paquet_.ReceivedValue.empty();
  Timeout_ = Timeout_ || entendu_;
}

void LASER_EIR::Refresh() {
  if (CommState_ == EnErreur) {
    CommState_ = Pret;
    return;
  }
  const double maintenant = TimerExact_->LitMicrosecondes();
  if (!TientLePort(maintenant)) return;
  if (CommState_ == Pret) (void)MaComm_->LitEntrée();  // the rest of a wrong answer
  const bool reprise = CommState_ == EnCommunication && ResteSansRéponse(maintenant);
  if (CommState_ == Pret) DemandeLaSuite(maintenant, reprise);
}

bool LASER_EIR::TientLePort(double maintenant) {
  if (MaComm_->PortOuvert()) return true;
  if (maintenant - dernierInstant_ < kRéouverture) return false;
  dernierInstant_ = maintenant;
  OpenPort();
  if (!MaComm_->PortOuvert()) return false;
  réglagesDus_ = distanceCible_.empty() ? 0 : kRéglages.size();
  return true;
}

// True when the time is over and the request is to be made again; the fourth time is an error.
bool LASER_EIR::ResteSansRéponse(double maintenant) {
  Relève();
  if (enDoute_) {
    TraiteDansLeDoute();
  } else if (!EstSuspecte(maintenant)) {
    TraiteRéponse();
  }
  if (CommState_ != EnCommunication || maintenant - dernierInstant_ < kAttente) return false;
  NoteLeSilence();
  const bool reprise = reprises_ < kReprises;
  ++reprises_;
  CommState_ = reprise ? Pret : EnErreur;
  if (reprise) return true;
  Timeout_ = true;
  RéglageFait();
  return false;
}

// Behind a late answer states are asked until one of them tells where the laser is; each time
// another one, so that a late answer is not taken for it. That moves no count.
//
// A laser behind a port that was not there has its settings of before, or those of its factory: in
// inches a measure would be wrong by 25, with nothing to tell it. They go out before the first
// measure.
//
// A retry moves no count and goes by the counts as they stand: behind the tenth measure it asks a
// state, behind a state a measure. The first state asked is the echo.
void LASER_EIR::DemandeLaSuite(double maintenant, bool reprise) {
  dernierInstant_ = maintenant;
  if (!reprise) reprises_ = 0;
  if (entendu_) {
    repère_ = Suivant(repère_);
    Demande(kEtatsLus[repère_]);
    return;
  }
  if (réglagesDus_ != 0) {
    const EnumEIRCommande réglage = kRéglages[kRéglages.size() - réglagesDus_];
    Demande(réglage, Réglage(réglage));
    return;
  }
  if (cycle_ < kMesuresParEtat) {
    if (!reprise) ++cycle_;
    Demande(ReadDataBinary);
    return;
  }
  if (!reprise) {
    sélecteur_ = Suivant(sélecteur_);
    cycle_ = 0;
  }
  Demande(kEtatsLus[sélecteur_]);
}

// The reply cannot be there yet, so the unit kept is what is known.
EnumUnite LASER_EIR::UnitState() {
  Demande(ReadUnit);
  return UnitState_;
}

void LASER_EIR::UnitState(EnumUnite unité) {
  UnitState_ = unité;
  Demande(WriteUnit, unité == EnumUnite::mm ? "M" : "I");
}

void LASER_EIR::EnvoieLaserState(EnumState état) {
  Demande(writeLaserState, std::to_string(static_cast<std::int32_t>(état)));
}

void LASER_EIR::OpenPort() {
  if (MaComm_->PortOuvert()) return;
  MaComm_->PortOuvert(true);
  CommState_ = Pret;
}

// Opens, as `OpenPort` does, and must: whoever shares the link still needs it.
void LASER_EIR::ClosePort() {
  if (MaComm_->PortOuvert()) MaComm_->PortOuvert(true);
}

}  // namespace zuma
