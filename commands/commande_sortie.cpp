// Refresh of a command: from the value in units to the channel or the logic outputs.
#include <array>
#include <cmath>

#include "base/garde.h"
#include "base/publication.h"
#include "commands/commande.h"

namespace zuma {
void Commande::MetàJour() {
  Garde(
      *this, Forme::Méthode, "MetàJour", [&] { Rafraîchit(); },
      [&](Variables& v) {
        v.Ajoute("mblnEnabled", mblnEnabled);
        v.Ajoute("mdblValeurCouranteEnUnité", mdblValeurCouranteEnUnité);
        v.Ajoute("mdblMiniCommande", mdblMiniCommande);
        v.Ajoute("mdblMaxiCommande", mdblMaxiCommande);
        v.Ajoute("propSortieSaturée", propSortieSaturée);
      });
}

void Commande::Rafraîchit() {
  // In the order of the types; the first takes no action.
  static constexpr std::array<void (Commande::*)(), 5> kSorties{
      nullptr, &Commande::SortNormale, &Commande::SortToutOuRien, &Commande::SortServo,
      &Commande::SortRecopie};
  if (!mobjCanal) return;
  const bool recopie = TypeCommande_ == ENUM_TYPE_COMMANDE::Recopie;
  if (recopie && !CapteurDeRecopie_ && !maintenue_) return;
  if (!recopie && !mblnEnabled) {
    RelitLeCanal();
  } else if (const auto sortie = kSorties[static_cast<std::size_t>(TypeCommande_)]) {
    (this->*sortie)();
  }
  Publie();
}

void Commande::RelitLeCanal() {
  ValeurCouranteEnPoints_ = mobjCanal->ValeurCanal();
  mdblValeurCouranteEnUnité = TypeCommande_ == ENUM_TYPE_COMMANDE::ToutOuRien
                                  ? ValeurDesSorties()
                                  : table_.VersUnités(ValeurCouranteEnPoints_);
}

// The lines tell a direction only: the value stays where it has theirs.
double Commande::ValeurDesSorties() const {
  const auto active = [](const SortieLogiqueRef& sortie) {
    return sortie && sortie->ValeurCourante() == ENUM_ETAT_LOGIQUE::Actif;
  };
  const double valeur = mdblValeurCouranteEnUnité;
  if (active(sortie1_)) return valeur > 0 ? valeur : 1;
  if (active(sortie2_)) return valeur < 0 ? valeur : -1;
  return 0;
}

void Commande::SortNormale() {
  if (FréquenceDither_ != 0) {
    SortAvecDither(mdblValeurCouranteEnUnité);
    return;
  }
  propSortieSaturée = !EstDedans(mdblValeurCouranteEnUnité);
  EcritSiChangé(PointsSûrs(Borne(mdblValeurCouranteEnUnité)));
}

// Three-position valve: up, down, closed.
void Commande::SortToutOuRien() {
  const auto état = [](bool actif) {
    return actif ? ENUM_ETAT_LOGIQUE::Actif : ENUM_ETAT_LOGIQUE::Inactif;
  };
  sortie1_->ValeurCourante(état(mdblValeurCouranteEnUnité > 0));
  sortie2_->ValeurCourante(état(mdblValeurCouranteEnUnité < 0));
}

void Commande::SortServo() {
  const servo::Compensation compensation = CalculeCoefServo();
  const double corrigée = servo::Corrige(mdblValeurCouranteEnUnité, compensation, décalage_);
  if (std::isnan(corrigée)) {
    // A pressure sensor that gives no number must not hold the valve open through a stop.
    Ecrit(PointsSûrs(Borne(mdblValeurCouranteEnUnité)));
    throw Echec(Numéro::AppelIncorrect,
                DescriptionDEchec(Numéro::AppelIncorrect) +
                    " : pression illisible, commande envoyée sans correction");
  }
  if (FréquenceDither_ != 0) {
    SortAvecDither(corrigée);
  } else {
    propSortieSaturée = !EstDedans(corrigée);
    Ecrit(PointsSûrs(Borne(corrigée)));
  }
  if (!journal_) return;
  journal_({mdblValeurCouranteEnUnité, compensation, décalage_.Pour(compensation), corrigée,
            ValeurCouranteEnPoints_});
}

// The working limits in units are not applied: the output follows the sensor.
void Commande::SortRecopie() {
  mdblValeurCouranteEnUnité =
      maintenue_ ? mdblValeurInitiale : ExigeUnNombre(CapteurDeRecopie_->ValeurCourante());
  EcritSiChangé(PointsSûrs(mdblValeurCouranteEnUnité));
}

// `base` is the value asked for, corrected for a servo-valve. A plain command takes the limit that
// it reached as its value and carries the lateness of its toggles along; a servo one does neither.
// A value that was just assigned goes out between two toggles, which keep their times.
void Commande::SortAvecDither(double base) {
  const double t = Heure();
  const bool bascule = dither_.EstDû(t, FréquenceDither_);
  if (!bascule && sortie_) return;
  const bool normale = TypeCommande_ == ENUM_TYPE_COMMANDE::Normale;
  if (bascule) {
    dither_.Bascule();
    if (normale) {
      dither_.PlanifieAvecRetard(t, FréquenceDither_);
    } else {
      dither_.Planifie(t, FréquenceDither_);
    }
  }
  if (!EstDedans(base)) {
    propSortieSaturée = true;
    base = Borne(base);
    if (normale) mdblValeurCouranteEnUnité = base;
  }
  const double amplitude =
      AmplitudeUtilisable(base, AmplitudeDither_, mdblMiniCommande, mdblMaxiCommande);
  const double envoyée = dither_.Valeur(base, amplitude);
  if (EstDedans(envoyée)) propSortieSaturée = false;
  const double points = PointsSûrs(Borne(envoyée));
  if (bascule) {
    Ecrit(points);
  } else {
    EcritSiChangé(points);
  }
}

bool Commande::EstDedans(double unités) const {
  return unités > mdblMiniCommande && unités < mdblMaxiCommande;
}

double Commande::ExigeUnNombre(double valeur) {
  if (std::isnan(valeur)) throw Echec(Numéro::AppelIncorrect);
  return valeur;
}

// Compared with the limits a value that is no number would pass for the upper one.
double Commande::Borne(double unités) const {
  if (EstDedans(unités)) return unités;
  return ExigeUnNombre(unités) <= mdblMiniCommande ? mdblMiniCommande : mdblMaxiCommande;
}

double Commande::PointsSûrs(double unités) const {
  double points = table_.VersPoints(unités);
  if (points > mdblSécuritéMaxiEnPoints) points = mdblSécuritéMaxiEnPoints;
  if (points < mdblSécuritéMiniEnPoints) points = mdblSécuritéMiniEnPoints;
  return points;
}

servo::Compensation Commande::CalculeCoefServo() const {
  const auto pression = [](const CapteurRef& capteur) {
    return capteur ? std::optional(capteur->ValeurCourante()) : std::nullopt;
  };
  return servo::CalculeCoefServo(mdblValeurCouranteEnUnité,
                                 {pression(alimentation_), pression(utilisation_)});
}

void Commande::Ecrit(double points) {
  ValeurCouranteEnPoints_ = ExigeUnNombre(points);
  mobjCanal->ValeurCanal(points);
  sortie_ = true;
  mobjCanal->MetàJour();
}

// Equal points cost no board write.
void Commande::EcritSiChangé(double points) {
  if (points == mobjCanal->ValeurCanal()) {
    ValeurCouranteEnPoints_ = points;
    sortie_ = true;
  } else {
    Ecrit(points);
  }
}

void Commande::Publie() {
  if (!paramètre_) return;
  if (publiée_ != mdblValeurCouranteEnUnité) {
    publiée_ = mdblValeurCouranteEnUnité;
    texte_ = TexteDeNombre(mdblValeurCouranteEnUnité, LaPlateforme().réglages.séparateurDécimal);
  }
  zuma::Publie(*paramètre_, texte_, tampon_);
}

}  // namespace zuma
