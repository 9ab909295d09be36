// Kinds that ask an instrument on a line of their own, one answer at a time.
#include <array>

#include "sensors/capteur_genres.h"
#include "sensors/trames_capteur.h"

namespace zuma {

/// What one kind says and how it takes the answers.
struct DialogueSérie {
  std::string_view demande;
  std::string_view silence;     ///< shown before the line is reset, when not empty
  std::string_view réémission;  ///< shown before asking again, when not empty
};

namespace {

constexpr double kSilence = 5'000'000;  // microseconds without a request answered

constexpr DialogueSérie kRéservé1{
    "\x1B"
    "P",
    "Pas de réponse (ou alors incorrecte) de la balance", "Réémission"};
constexpr DialogueSérie kRéservé2{"\x02", {}, {}};
constexpr DialogueSérie kScout55{"\x02MSV?;\x03", {}, {}};

}  // namespace

ZED_LiaisonSerie& Capteur::Liaison() {
  if (!LiaisonSerie_) LiaisonSerie_ = LaPlateforme().liaisons->CréeLiaison();
  return *LiaisonSerie_;
}

void Capteur::MarqueLEmission() {
  mdblHeureEmission = Timer()->LitMicrosecondes();
}

void Capteur::DémarreLaLigne(const DialogueSérie& dialogue) {
  OuvreLigne(Liaison(), réglagesRS_);
  Liaison().EcritPort(dialogue.demande);
  MarqueLEmission();
}

void Capteur::Calcul::DémarreRéservé1(Capteur& c) {
  c.DémarreLaLigne(kRéservé1);
}
void Capteur::Calcul::DémarreRéservé2(Capteur& c) {
  c.DémarreLaLigne(kRéservé2);
}
void Capteur::Calcul::DémarreScout55(Capteur& c) {
  c.DémarreLaLigne(kScout55);
}

// Not on the time of day, which can be set at any moment: put back an hour it would hold the next
// question for that hour.
bool Capteur::EstSilencieux() const {
  return Timer()->LitMicrosecondes() - mdblHeureEmission > kSilence;
}

// Takes what came in; after a silence, opens the line anew and asks again.
void Capteur::EcouteLaLigne(const DialogueSérie& dialogue) {
  // A port that could not be opened has nothing to read, and reading must not keep it from its
  // next trial.
  if (Liaison().EtatPort() == 1) mstrTamponRS += Liaison().LitTampon();
  if (!EstSilencieux()) return;
  if (!dialogue.silence.empty()) Montre(dialogue.silence);
  mstrTamponRS.clear();
  MarqueLEmission();  // a port that does not open is tried again after the same silence
  Liaison().FermePort();
  Liaison().OuvrePort();
  if (!dialogue.réémission.empty()) Montre(dialogue.réémission);
  Liaison().EcritPort(dialogue.demande);
  MarqueLEmission();
}

// The line is asked again before the answer is used, so that an unreadable one is told and the
// next one comes.
void Capteur::Redemande(const DialogueSérie& dialogue) {
  mstrTamponRS.clear();
  Liaison().EcritPort(dialogue.demande);
}

void Capteur::PrendLaMesure(const std::optional<trames_capteur::Mesure>& mesure) {
  if (!mesure) return;
  if (!mesure->nombre) throw Echec(Numéro::NullIncorrect);
  mdblValeurCourante = table_.VersUnités(*mesure->nombre);
  DateLaMesure();
  if (mesure->unité) UnitéEtalonnage_ = *mesure->unité;
}

void Capteur::Calcul::Réservé1(Capteur& c, Passe&) {
  c.EcouteLaLigne(kRéservé1);
  const auto trame = trames_capteur::TrameSignée(c.mstrTamponRS);
  if (!trame) return;
  c.Montre("Chaine complète recue");
  c.Redemande(kRéservé1);
  c.MarqueLEmission();
  c.PrendLaMesure(trames_capteur::DécodeRéservé1(*trame));
}

void Capteur::Calcul::Réservé2(Capteur& c, Passe&) {
  c.EcouteLaLigne(kRéservé2);
  const auto trame = trames_capteur::TrameSignée(c.mstrTamponRS);
  if (!trame) return;
  c.Redemande(kRéservé2);
  c.MarqueLEmission();
  c.PrendLaMesure(trames_capteur::DécodeRéservé2(*trame));
}

// The emission is not marked on an answer: the line is opened anew every 5 seconds even when the
// instrument answers, which it needs.
void Capteur::Calcul::Scout55(Capteur& c, Passe&) {
  c.EcouteLaLigne(kScout55);
  const auto mesure = trames_capteur::DécodeScout55(c.mstrTamponRS);
  if (!mesure) return;
  c.Redemande(kScout55);
  if (!mesure->nombre) return;
  c.mdblValeurCourante = *mesure->nombre;
  c.DateLaMesure();
}

}  // namespace zuma
