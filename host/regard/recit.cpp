#include "host/regard/recit.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "host/regard/textes.h"
#include "platform/linux/texte_ligne.h"

namespace zuma::host {

using publication::Echantillon;
using publication::EvènementLu;
using publication::Genre;
using publication::GenreDEvènement;
using publication::Lecteur;
using publication::Lu;
using publication::ObjetPublié;

namespace {

constexpr double kAvant = 0.2;  // seconds in which an input may have led to the stop

std::string Passes(std::uint64_t depuis) {
  if (depuis == 0) return "in the pass of the stop";
  return std::to_string(depuis) + (depuis == 1 ? " pass later" : " passes later");
}

std::string Après(double secondes) {
  return (secondes < 0 ? "" : "+") + NombreEnTexte(secondes) + " s";
}

std::string Limites(const ObjetPublié& objet) {
  return "limits " + LimiteEnTexte(objet.mini) + " to " + LimiteEnTexte(objet.maxi) + " " +
         objet.unité;
}

// Sensors that fire the stop in the sample of the stop.
void NoteLesCapteurs(const Lecteur& lecteur, Récit& récit) {
  Echantillon échantillon;
  const std::uint64_t numéro = lecteur.PremierDepuis(récit.secondes);
  // One goes with each stop; a later one shows what became of the values since.
  if (lecteur.Lit(numéro, échantillon) != Lu::Bon || échantillon.Passe() != récit.passe) {
    récit.valeurs.emplace_back("not known of the sensors: their samples are overwritten");
    return;
  }
  const auto& objets = lecteur.LeChassis().objets;
  for (std::size_t rang = 0; rang < objets.size(); ++rang) {
    const publication::Mesure mesure = échantillon[rang];
    if (objets[rang].genre != Genre::Capteur || !mesure.Est(publication::kSorti)) continue;
    const bool dedans = mesure.valeur > objets[rang].mini.value_or(-INFINITY) &&
                        mesure.valeur < objets[rang].maxi.value_or(INFINITY);
    récit.valeurs.push_back(
        Désignation(objets[rang]) + " read " + PointsEnTexte(mesure.valeur) + " " +
        objets[rang].unité + ", " + Limites(objets[rang]) +
        (dedans ? "; it is tested before tare and offset, in points and for its age" : ""));
  }
}

class Narration {
 public:
  Narration(const Lecteur& lecteur, Récit& récit, double fin)
      : lecteur_(lecteur), récit_(récit), fin_(fin) {}

  void Suit() {
    EvènementLu évènement;
    for (std::uint64_t n = lecteur_.PremierEvènement(); n < lecteur_.EvènementSuivant(); ++n) {
      if (lecteur_.Lit(n, évènement) == Lu::Bon) Prend(évènement);
    }
  }

 private:
  void Prend(const EvènementLu& e) {
    const double t = e.secondes - récit_.secondes;
    // The input that fires the stop moves in its pass, and is told behind it.
    const bool avant = e.numéro < récit_.évènement;
    if (e.genre == GenreDEvènement::Entrée && t >= -kAvant && (avant || e.passe == récit_.passe)) {
      NoteLEntrée(e, t);
    }
    if (avant) return;
    if (e.secondes > fin_ || fini_) return;
    if (e.numéro != récit_.évènement && e.genre == GenreDEvènement::Arrêt) {
      récit_.ensuite.push_back(Après(t) + ": another stop: " + e.texte);
      fini_ = true;
      return;
    }
    const bool cause = e.genre == GenreDEvènement::Arrêt || e.genre == GenreDEvènement::Cause;
    if (cause) récit_.causes.push_back(linux_::UneSeuleLigne(e.texte));
    if (e.genre == GenreDEvènement::Atteinte) NoteLaSortie(e, t);
    if (e.genre == GenreDEvènement::Manquée && e.objet) {
      récit_.pasAuRepos.push_back(Objet(e) + " was not at rest when the stop was acknowledged");
    }
    constexpr std::array kGestes{GenreDEvènement::Acquitté,   GenreDEvènement::EnService,
                                 GenreDEvènement::Consigne,   GenreDEvènement::Sortie,
                                 GenreDEvènement::Zéro,       GenreDEvènement::Tare,
                                 GenreDEvènement::ZéroRepris, GenreDEvènement::TareReprise};
    const bool geste = std::ranges::find(kGestes, e.genre) != kGestes.end();
    // What changes in the pass of the stop is the stop's own doing.
    if (geste && e.passe != récit_.passe) {
      récit_.ensuite.push_back(Après(t) + ": " + Phrase(lecteur_.LeChassis(), e));
    }
  }

  [[nodiscard]] std::string Objet(const EvènementLu& e) const {
    return Désignation(lecteur_.LeChassis().objets[*e.objet]);
  }

  void NoteLEntrée(const EvènementLu& e, double t) {
    if (!e.objet) return;
    récit_.valeurs.push_back(
        Objet(e) + " went " +
        ValeurEnTexte(lecteur_.LeChassis().objets[*e.objet], {e.valeur, 0, 0}) + " " +
        (e.passe == récit_.passe ? Passes(0) : Après(t) + " from the stop"));
  }

  void NoteLaSortie(const EvènementLu& e, double t) {
    if (!e.objet) return;
    const std::string quand =
        Passes(e.passe - récit_.passe) + (e.passe == récit_.passe ? "" : " (" + Après(t) + ")");
    // Those of one pass in one sentence.
    if (quand == quand_) {
      récit_.auRepos.back() += ", " + Objet(e);
    } else {
      récit_.auRepos.push_back(quand + ": " + Objet(e));
    }
    quand_ = quand;
  }

  const Lecteur& lecteur_;
  Récit& récit_;
  double fin_;
  bool fini_ = false;
  std::string quand_;  ///< of the output that came to rest last
};

// Outputs that the last sample in hand shows unreached, while the stop lasts.
void NoteLesAttendues(const Lecteur& lecteur, Récit& récit, double fin) {
  Echantillon échantillon;
  std::uint64_t numéro = lecteur.PremierDepuis(fin);
  if (numéro >= lecteur.Suivant() && numéro > 0) --numéro;
  if (lecteur.Lit(numéro, échantillon) != Lu::Bon || !échantillon.Arrêt()) return;
  const auto& objets = lecteur.LeChassis().objets;
  for (std::size_t rang = 0; rang < objets.size(); ++rang) {
    const bool sortie =
        (objets[rang].genre == Genre::Commande || objets[rang].genre == Genre::Sortie) &&
        !objets[rang].canal.empty();
    if (!sortie || échantillon[rang].Est(publication::kAtteint)) continue;
    récit.pasAuRepos.push_back(Désignation(objets[rang]) + " was not at rest " +
                               NombreEnTexte(échantillon.Secondes() - récit.secondes) +
                               " s after the stop");
  }
}

}  // namespace

std::vector<std::uint64_t> LesArrêts(const Lecteur& lecteur) {
  std::vector<std::uint64_t> arrêts;
  EvènementLu évènement;
  for (std::uint64_t n = lecteur.PremierEvènement(); n < lecteur.EvènementSuivant(); ++n) {
    if (lecteur.Lit(n, évènement) == Lu::Bon && évènement.genre == GenreDEvènement::Arrêt) {
      arrêts.push_back(n);
    }
  }
  return arrêts;
}

std::optional<Récit> Raconte(const Lecteur& lecteur, std::uint64_t arrêt, double après) {
  EvènementLu évènement;
  if (lecteur.Lit(arrêt, évènement) != Lu::Bon) return {};
  Récit récit;
  récit.évènement = arrêt;
  récit.secondes = évènement.secondes;
  récit.passe = évènement.passe;
  NoteLesCapteurs(lecteur, récit);
  Narration(lecteur, récit, récit.secondes + après).Suit();
  NoteLesAttendues(lecteur, récit, récit.secondes + après);
  return récit;
}

std::vector<Paragraphe> EnMots(const Récit& récit) {
  const auto ou = [](const std::vector<std::string>& réponses, const char* sinon) {
    return réponses.empty() ? std::vector<std::string>{sinon} : réponses;
  };
  return {{"What fired?", ou(récit.causes, "a stop without a cause in words")},
          {"Which value against which limit?",
           ou(récit.valeurs, "no sensor was in danger and no logic input moved just before")},
          {"When did the outputs come to rest?", ou(récit.auRepos, "none is known to have")},
          {"Which did not?", ou(récit.pasAuRepos, "all did")},
          {"What did the operator do next?", ou(récit.ensuite, "nothing that was seen")}};
}

}  // namespace zuma::host
