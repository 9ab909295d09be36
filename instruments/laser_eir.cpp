#include "instruments/laser_eir.h"

#include <array>

namespace zuma {
namespace {

using enum EnumEtatCommExtenso;
using enum EnumEIRCommande;

constexpr double kRéouverture = 1e6;  // microseconds
constexpr double kAttente = 100'000;  // microseconds
constexpr std::int32_t kReprises = 3;
constexpr std::int32_t kEssaisSynchrones = 3;
constexpr std::int32_t kMesuresParEtat = 10;
constexpr std::array kEtatsLus{ReadLaserState, ReadEcho, ReadZero};

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

void LASER_EIR::TraiteRéponse() {
  paquet_.ReceivedValue += MaComm_->LitEntrée();
  const trames_laser::Echange* échange = trames_laser::EchangeDe(commande_);
  if (échange == nullptr || échange->incomplète(paquet_.ReceivedValue.size())) return;
  if (échange->prêtDAvance) CommState_ = Pret;
  if (!échange->valide(*échange, paquet_.ReceivedValue)) {
    CommState_ = EnErreur;
    return;
  }
  échange->prend(paquet_.ValueToSend, paquet_.ReceivedValue, lu_);
  CommState_ = Pret;
  Timeout_ = false;
}

// Hazard: nothing bounds the wait for `Pret`. On one thread nobody ends an exchange that is in
// progress here, so the caller must see to it that there is none. The later loop is bounded.
bool LASER_EIR::CommandeSynchrone(EnumEIRCommande commande, std::string_view valeur) {
  for (std::int32_t essai = 0; essai < kEssaisSynchrones; ++essai) {
    while (CommState_ != Pret) (void)TimerExact_->LitMicrosecondes();
    Demande(commande, valeur);
    const double envoi = TimerExact_->LitMicrosecondes();
    do {
      TraiteRéponse();
      if (CommState_ == Pret) return true;
    } while (TimerExact_->LitMicrosecondes() - envoi < kAttente);
    CommState_ = Pret;
  }
  return false;
}

void LASER_EIR::Initialise(std::int32_t DistanceCible_lng) {
  CommandeSynchrone(WriteTargetDistance, std::to_string(DistanceCible_lng));
  CommandeSynchrone(WriteEcho, "0");
  CommandeSynchrone(WriteMeasuringType, "1");
  CommandeSynchrone(WriteUnit, "M");
  CommandeSynchrone(WriteZero, "0");
}

void LASER_EIR::Refresh() {
  if (CommState_ == EnErreur) {
    CommState_ = Pret;
    return;
  }
  const double maintenant = TimerExact_->LitMicrosecondes();
  if (!TientLePort(maintenant)) return;
  const bool reprise = CommState_ == EnCommunication && ResteSansRéponse(maintenant);
  if (CommState_ == Pret) DemandeLaSuite(maintenant, reprise);
}

bool LASER_EIR::TientLePort(double maintenant) {
  if (MaComm_->PortOuvert()) return true;
  if (maintenant - dernierInstant_ < kRéouverture) return false;
  dernierInstant_ = maintenant;
  OpenPort();
  return MaComm_->PortOuvert();
}

// True when the time is over and the request is to be made again; the fourth time is an error.
bool LASER_EIR::ResteSansRéponse(double maintenant) {
  TraiteRéponse();
  if (CommState_ != EnCommunication || maintenant - dernierInstant_ < kAttente) return false;
  const bool reprise = reprises_ < kReprises;
  ++reprises_;
  CommState_ = reprise ? Pret : EnErreur;
  if (!reprise) Timeout_ = true;
  return reprise;
}

// A retry moves no count and goes by the counts as they stand: behind the tenth measure it asks a
// state, behind a state a measure.
void LASER_EIR::DemandeLaSuite(double maintenant, bool reprise) {
  dernierInstant_ = maintenant;
  if (!reprise) reprises_ = 0;
  if (cycle_ < kMesuresParEtat) {
    if (!reprise) ++cycle_;
    Demande(ReadDataBinary);
    return;
  }
  if (!reprise) {
    sélecteur_ = (sélecteur_ + 1) % static_cast<std::int32_t>(kEtatsLus.size());
    cycle_ = 0;
  }
  Demande(kEtatsLus[static_cast<std::size_t>(sélecteur_)]);
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
