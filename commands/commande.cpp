// State of a command: start, properties, in and out of service.
#include "commands/commande.h"

#include <utility>

#include "base/garde.h"

namespace zuma {

namespace {

constexpr double kMicrosecondes = 1'000'000;

}  // namespace

Commande::~Commande() {
  (void)Commande::ResetFeuilleEtalonnage();
}

Valeur Commande::ResetFeuilleEtalonnage() {
  const auto feuille = std::exchange(feuille_, nullptr);
  if (feuille) feuille->OublieSonObjet();
  return {};
}

Valeur Commande::EtalonnageExterieur(FenêtreHôte* FeuilleMere_obj) {
  return Garde(*this, Forme::Méthode, "EtalonnageExterieur", [&]() -> Valeur {
    if (TypeCommande_ != ENUM_TYPE_COMMANDE::Recopie) return {};
    LaPlateforme().fenêtres->Etalonne(*this, chassis_.lock(),
                                      {feuille_, traducteur_, FeuilleMere_obj});
    return {};
  });
}

double Commande::Heure() const {
  return Timer()->LitMicrosecondes() / kMicrosecondes;
}

void Commande::Initialise() {
  Garde(*this, Forme::Méthode, "Initialise", [&] {
    mdblMaxiCommande = mdblSécuritéMaxiEnUnité;
    mdblMiniCommande = mdblSécuritéMiniEnUnité;
    mdblValeurCouranteEnUnité = mdblValeurInitiale;
    dither_.Recale(Heure());
  });
}

// A stop drops the lines of an on/off command whatever its initial value, which would energise one
// for as long as the frame takes to get there.
void Commande::DéclencheAU() {
  Garde(
      *this, Forme::Méthode, "DéclencheAU",
      [&] { Envoie(TypeCommande_ == ENUM_TYPE_COMMANDE::ToutOuRien ? 0 : mdblValeurInitiale); },
      [&](Variables& v) { v.Ajoute("mdblValeurInitiale", mdblValeurInitiale); });
}

void Commande::ValeurCouranteEnUnité(double unités) {
  Garde(*this, Forme::Ecriture, "ValeurCouranteEnUnité", [&] {
    if (ExigeUnNombre(unités) > mdblMaxiCommande) unités = mdblMaxiCommande;
    if (unités < mdblMiniCommande) unités = mdblMiniCommande;
    Envoie(unités);
  });
}

// Sent at once, and not at the next toggle of a dither: neither a stop nor its caller waits.
void Commande::Envoie(double unités) {
  mdblValeurCouranteEnUnité = unités;
  sortie_ = false;
  MetàJour();
}

bool Commande::Atteinte() const {
  if (!mobjCanal) return true;
  if (TypeCommande_ == ENUM_TYPE_COMMANDE::ToutOuRien) {
    return (!sortie1_ || sortie1_->Atteinte()) && (!sortie2_ || sortie2_->Atteinte());
  }
  return (sortie_ || !mblnEnabled) && mobjCanal->Atteint();
}

double Commande::ValeurCouranteEnPoints() const {
  return Garde(*this, Forme::Lecture, "ValeurCouranteEnPoints",
               [&] { return mobjCanal->ValeurCanal(); });
}

void Commande::Enabled(bool enService) {
  Garde(*this, Forme::Ecriture, "Enabled", [&] {
    if (!mobjCanal) return;
    const bool étaitEnService = std::exchange(mblnEnabled, enService);
    maintenue_ = maintenue_ && !enService;
    if (enService) {
      MetEnService(!étaitEnService);
    } else {
      MetHorsService();
    }
  });
}

// A copying command follows its sensor whatever its state, through a stop too: unheld, its output
// would move during the stop, at the acknowledgement, or at the end of the program.
void Commande::MaintientAuRepos() {
  if (TypeCommande_ != ENUM_TYPE_COMMANDE::Recopie) return;
  mblnEnabled = false;
  maintenue_ = true;
}

// Whatever the type. The safety limits in points are not applied here, though every refresh does.
// The channel of an on/off command drives nothing: it is given what it holds. A dither starts its
// wave afresh.
void Commande::MetEnService(bool reprise) {
  const bool deSesSorties = reprise && TypeCommande_ == ENUM_TYPE_COMMANDE::ToutOuRien;
  const double tenue =
      deSesSorties ? table_.VersUnités(mobjCanal->ValeurCanal()) : mdblValeurCouranteEnUnité;
  propSortieSaturée = !EstDedans(tenue);
  const double bornée = Borne(tenue);
  mdblValeurCouranteEnUnité = deSesSorties ? ValeurDesSorties() : bornée;
  Ecrit(table_.VersPoints(bornée));
  if (FréquenceDither_ != 0) dither_.Recale(Heure());
}

void Commande::FréquenceDither(double hertz) {
  Garde(*this, Forme::Ecriture, "FréquenceDither",
        [&] { FréquenceDither_ = ExigeUnNombre(hertz); });
}

void Commande::AmplitudeDither(double unités) {
  Garde(*this, Forme::Ecriture, "AmplitudeDither",
        [&] { AmplitudeDither_ = ExigeUnNombre(unités); });
}

// The value becomes what the channel stands for; that of a servo-valve without its correction. A
// pressure that is no number leaves the value asked for, which is what the channel was given.
void Commande::MetHorsService() {
  dither_.Recale(Heure());
  if (TypeCommande_ == ENUM_TYPE_COMMANDE::ToutOuRien) {
    mdblValeurCouranteEnUnité = ValeurDesSorties();
    return;
  }
  const double unités = table_.VersUnités(mobjCanal->ValeurCanal());
  const servo::Compensation compensation = CalculeCoefServo();
  mdblValeurCouranteEnUnité = ExigeUnNombre(TypeCommande_ == ENUM_TYPE_COMMANDE::Servo
                                                ? servo::Décorrige(unités, compensation, décalage_)
                                                : unités);
}

double Commande::PointX(std::int16_t intIndex) const {
  return Garde(*this, Forme::Lecture, "PointX", [&] { return table_.PointX(intIndex); });
}
void Commande::PointX(std::int16_t intIndex, const Valeur& unités) {
  Garde(*this, Forme::Ecriture, "PointX", [&] { table_.PointX(intIndex, VersDouble(unités)); });
}
double Commande::PointY(std::int16_t intIndex) const {
  return Garde(*this, Forme::Lecture, "PointY", [&] { return table_.PointY(intIndex); });
}
void Commande::PointY(std::int16_t intIndex, double points) {
  Garde(*this, Forme::Ecriture, "PointY", [&] { table_.PointY(intIndex, points); });
}

}  // namespace zuma
