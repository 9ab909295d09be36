#include "instruments/echange_conditionneur.h"

#include <algorithm>
#include <utility>

namespace zuma {
namespace {

using OutilsModbus::Résultat;
using enum DrapeauConditionneur;

constexpr std::int32_t kLitRegistres = 3;
constexpr int kLecturesAuPlus = 100;
constexpr double kRémission = 5'000'000;  // microseconds

constexpr std::array<std::string_view, kNombreDeDrapeaux> kNoms{
    "ErreurGenerale", "Timeout",       "ErreurAdresseModbus",    "ErreurCRC",  "ErreurDiagnostic",
    "ErreurEcriture", "ErreurLecture", "ErreurProblemeFonction", "ErreurAutre"};

constexpr std::array<std::pair<Résultat, DrapeauConditionneur>, 7> kDrapeaux{{
    {Résultat::Inconnue, ErreurAutre},
    {Résultat::AutreEsclave, ErreurAdresseModbus},
    {Résultat::AutreFonction, ErreurProblemeFonction},
    {Résultat::Crc, ErreurCRC},
    {Résultat::Diagnostic, ErreurDiagnostic},
    {Résultat::EcritureRefusée, ErreurEcriture},
    {Résultat::LectureRefusée, ErreurLecture},
}};

// A line that babbles never runs empty: what is left of it spoils one exchange and no more.
void VideLEntrée(PortInstrument& port) {
  int lectures = 0;
  while (!port.LitEntrée().empty() && ++lectures < kLecturesAuPlus) {
  }
}

}  // namespace

std::string_view NomDuDrapeau(DrapeauConditionneur drapeau) noexcept {
  return kNoms[static_cast<std::size_t>(drapeau)];
}

DrapeauConditionneur DrapeauDe(Résultat résultat) noexcept {
  const auto* ligne =
      std::ranges::find(kDrapeaux, résultat, &std::pair<Résultat, DrapeauConditionneur>::first);
  return ligne == kDrapeaux.end() ? ErreurAutre : ligne->second;
}

bool EchangeConditionneur::EnvoieRequête(const Ligne& ligne, std::int32_t adresse,
                                         std::int32_t premierRegistre, std::int32_t nbRegistres,
                                         Envoi envoi) {
  if (envoi == Envoi::Forcé) enAttente_ = false;
  if (enAttente_) return false;
  OutilsModbus::ConstruitQuestion(adresse, kLitRegistres, premierRegistre, nbRegistres, {},
                                  question_);
  VideLEntrée(ligne.port);
  réponse_.clear();
  if (envoi == Envoi::Forcé) ligne.port.RéinitialisePort();
  ligne.port.EcritSortie(question_);
  enAttente_ = true;
  heureDEnvoi_ = ligne.timer.LitMicrosecondes();
  return true;
}

// An answer is as long as it announces, and not as the question makes it: that tells the firmwares
// apart.
bool EchangeConditionneur::LitRéponse(const Ligne& ligne) {
  if (!enAttente_) return false;
  réponse_ += ligne.port.LitEntrée();
  const Résultat résultat = OutilsModbus::DécodeRéponse(réponse_, question_, &données_,
                                                        OutilsModbus::FormeValeurs::Octets,
                                                        OutilsModbus::Longueur::Annoncée);
  if (résultat == Résultat::Incomplète) {
    (void)Echoit(ligne.timer);
    return false;
  }
  enAttente_ = false;
  if (résultat == Résultat::Bonne) {
    BaisseLesAnciens(ligne.timer);
    return true;
  }
  Lève(ErreurGenerale, ligne.timer);
  Lève(DrapeauDe(résultat), ligne.timer);
  return false;
}

void EchangeConditionneur::BaisseLesAnciens(ZED_Timer& timer) {
  if (!heureDeFaute_ || timer.LitMicrosecondes() - *heureDeFaute_ < kRémission) return;
  drapeaux_ = {};
  heureDeFaute_.reset();
}

// The wait always ends: an exchange that a wrong answer ended lasts until its time-out too, so that
// noise on the line cannot hold the host for ever. It goes by its own sending: a time-out latched
// before does not cut it short.
bool EchangeConditionneur::AttendRéponse(const Ligne& ligne) {
  while (!LitRéponse(ligne)) {
    if (Echoit(ligne.timer)) return false;
  }
  return true;
}

bool EchangeConditionneur::Echoit(ZED_Timer& timer) {
  if (timer.LitMicrosecondes() - heureDEnvoi_ < timeOut_) return false;
  enAttente_ = false;
  Lève(Timeout, timer);
  return true;
}

}  // namespace zuma
