#include "publication/publication.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <cstring>

#include <unistd.h>

#include "platform/linux/securite.h"
#include "publication/mesures.h"

namespace zuma::publication {
namespace {

constexpr double kMicrosecondes = 1e6;
constexpr double kAuPlusTard = 0.05;  // seconds from one sample to the next
constexpr double kEntreDeux = 0.1;    // seconds between two events of one object's value
// All values together: what chatters must not push the stops out of their ring before its time.
constexpr double kValeursParSeconde = 50;
constexpr std::size_t kEvènements = 1024;  // places beyond those of the values
constexpr std::size_t kEnPlus = 64;        // samples beyond those of the rate, for the events
constexpr std::size_t kMarge = 65'536;     // bytes by which a description may grow

std::uint64_t Nanosecondes(auto durée) {
  return static_cast<std::uint64_t>(
      std::chrono::duration_cast<std::chrono::nanoseconds>(durée).count());
}

std::size_t EnMots(std::size_t octets) {
  return (octets + sizeof(Mot) - 1) / sizeof(Mot);
}

// Word `rang` of a text; the last one is filled with zeros.
std::uint64_t MotDuTexte(std::string_view texte, std::size_t rang) {
  std::uint64_t mot = 0;
  const std::string_view bout = texte.substr(rang * sizeof mot, sizeof mot);
  std::memcpy(&mot, bout.data(), bout.size());
  return mot;
}

// As much of a text as an event holds, cut between two characters of UTF-8.
std::string_view Tient(std::string_view texte) {
  std::size_t fin = std::min(texte.size(), kMotsDeTexte * sizeof(Mot));
  const auto suite = [&](std::size_t i) {
    return (static_cast<unsigned char>(texte[i]) & 0xC0U) == 0x80U;
  };
  while (fin != 0 && fin < texte.size() && suite(fin)) --fin;
  return texte.substr(0, fin);
}

// The words of the objects of a sample, one object behind the other.
class SuiteDObjets {
 public:
  explicit SuiteDObjets(Mot* premier) : mot_(premier) {}
  template <class Objet>
  void Ecrit(const Objet& objet) {
    const Mesure mesure = MesureDe(objet);
    const std::uint64_t haut = std::bit_cast<std::uint32_t>(static_cast<float>(mesure.âge));
    Pose(std::bit_cast<std::uint64_t>(mesure.valeur));
    Pose(haut << kDécalageDeLAge | mesure.état);
  }

 private:
  void Pose(std::uint64_t mot) { (mot_++)->store(mot, std::memory_order_release); }

  Mot* mot_;
};

// Objects of a frame, none of which is Nothing.
template <class Refs>
void EcritChacun(SuiteDObjets& suite, const Refs& objets) {
  for (const auto& objet : objets) suite.Ecrit(*objet.Brut());
}

// Where everything lies, in words.
Plan Planifie(std::size_t octetsDeDescription, std::size_t mots, double fréquence,
              const Réglages& réglages) {
  Plan plan{.description = kMotsDEnTête,
            .descriptionPlaces = EnMots(octetsDeDescription + octetsDeDescription / 4 + kMarge)};
  plan.évènements = plan.description + plan.descriptionPlaces;
  plan.placesDEvènements =
      kEvènements + static_cast<std::size_t>(réglages.secondes * kValeursParSeconde);
  plan.échantillons = plan.évènements + plan.placesDEvènements * kMotsDEvènement;
  const double parSeconde = std::isfinite(fréquence) ? std::max(fréquence, 0.0) : 0.0;
  const double voulus =
      réglages.secondes * (parSeconde + 1 / kAuPlusTard + kValeursParSeconde) + kEnPlus;
  const std::size_t reste =
      std::max(EnMots(réglages.octetsAuPlus), plan.échantillons) - plan.échantillons;
  const auto auPlus = static_cast<double>(reste / mots);
  plan.places = static_cast<std::size_t>(std::max<double>(kEnPlus, std::min(voulus, auPlus)));
  plan.mots = mots;
  plan.total = plan.échantillons + plan.places * mots;
  return plan;
}

// A stop waits for what has a channel; the lines of an on-off command are logic outputs.
bool EstUneSortie(const Commande& commande) {
  return commande.Canal() && commande.TypeCommande() != ENUM_TYPE_COMMANDE::Aucune &&
         commande.TypeCommande() != ENUM_TYPE_COMMANDE::ToutOuRien;
}

}  // namespace

Réglages RéglagesDuSystème() {
  Réglages réglages;
  const char* voulues = std::getenv("ZUMA_PUBLICATION_SECONDS");
  if (voulues == nullptr) return réglages;
  double secondes = 0;
  const auto lu = std::from_chars(voulues, voulues + std::strlen(voulues), secondes);
  if (lu.ec == std::errc() && *lu.ptr == '\0' && secondes > 0) réglages.secondes = secondes;
  return réglages;
}

Publication::Publication(Chassis& chassis, Place& place, ChassisPublié sujet,
                         const Réglages& réglages)
    : chassis_(chassis),
      sujet_(std::move(sujet)),
      objets_(chassis),
      durées_(réglages.durées ? réglages.durées : chassis.LeTimer()),
      debout_(static_cast<bool>(réglages.durées)) {
  const std::string json = EnJson(Décrit(chassis_, objets_, sujet_));
  const std::size_t mots = RangDe(MotDEchantillon::kNombre) + objets_.Nombre() * kMotsParObjet;
  plan_ = Planifie(json.size(), mots, chassis.FréquenceEA(), réglages);
  zone_ = place.Réserve(plan_.total * sizeof(Mot));
  mots_ = zone_->Mots();
  départ_ = chassis_.LeTimer()->LitMicrosecondes() / kMicrosecondes;
  rafraîchissements_ = chassis_.RafraichissementsEA();
  EcritLEnTête();
  EcritLaDescription(json);
  // A reader that comes from here on finds a map that is whole.
  Pose(EnTête::Magie, kMagie);
  RepèreLesSuivis();
  Note(GenreDEvènement::Départ, sujet_.nom);
}

Publication::~Publication() {
  Pose(EnTête::Fini, 1);
}

void Publication::Pose(EnTête champ, std::uint64_t mot) {
  mots_[RangDe(champ)].store(mot, std::memory_order_release);
}

void Publication::EcritLEnTête() {
  Pose(EnTête::Version, kVersion);
  Pose(EnTête::Ordre, kOrdre);
  Pose(EnTête::Taille, plan_.total);
  Pose(EnTête::Processus, static_cast<std::uint64_t>(::getpid()));
  Pose(EnTête::DépartUtc, Nanosecondes(std::chrono::system_clock::now().time_since_epoch()));
  Pose(EnTête::Description, plan_.description);
  Pose(EnTête::DescriptionPlaces, plan_.descriptionPlaces);
  Pose(EnTête::Echantillons, plan_.échantillons);
  Pose(EnTête::EchantillonsPlaces, plan_.places);
  Pose(EnTête::EchantillonMots, plan_.mots);
  Pose(EnTête::Evènements, plan_.évènements);
  Pose(EnTête::EvènementsPlaces, plan_.placesDEvènements);
}

// One that has outgrown its room stays as it was: names and units are still right.
void Publication::EcritLaDescription(std::string_view json) {
  if (json.size() > plan_.descriptionPlaces * sizeof(Mot)) return;
  Pose(EnTête::Génération, 2 * génération_ + 1);
  const auto mots = mots_.subspan(plan_.description, plan_.descriptionPlaces);
  for (std::size_t i = 0; i < EnMots(json.size()); ++i) {
    mots[i].store(MotDuTexte(json, i), std::memory_order_release);
  }
  Pose(EnTête::DescriptionOctets, json.size());
  Pose(EnTête::Génération, 2 * ++génération_);
}

void Publication::Redécrit() {
  EcritLaDescription(EnJson(Décrit(chassis_, objets_, sujet_)));
  Note(GenreDEvènement::Description, "");
}

double Publication::Temps() const noexcept {
  const double fréquence = std::max(chassis_.FréquenceEA(), 1 / kAuPlusTard);
  return static_cast<double>(plan_.places - kEnPlus) / fréquence;
}

// Ranks are those of `ObjetsDuChassis`.
void Publication::RepèreLesSuivis() {
  gestes_ = chassis_.LaPlateforme().gestes;
  for (const CapteurRef& capteur : objets_.capteurs) gestesDits_.push_back(capteur->Gestes());
  std::size_t rang = objets_.capteurs.size();
  for (const CommandeRef& commande : objets_.commandes) {
    if (EstUneSortie(*commande)) {
      sorties_.push_back({rang, [c = commande.Brut()] { return c->Atteinte(); }});
    }
    // What follows a sensor moves with every refresh, and its sensor is there to be looked at.
    if (commande->TypeCommande() != ENUM_TYPE_COMMANDE::Recopie) {
      suivis_.push_back({GenreDEvènement::Consigne, rang,
                         [c = commande.Brut()] { return c->ValeurCouranteEnUnité(); }});
    }
    ++rang;
  }
  for (const EntréeLogiqueRef& entrée : objets_.entrées) {
    suivis_.push_back({GenreDEvènement::Entrée, rang++,
                       [e = entrée.Brut()] { return NiveauDe(e->ValeurCourante()); }});
  }
  for (const SortieLogiqueRef& sortie : objets_.sorties) {
    if (sortie->Canal()) sorties_.push_back({rang, [s = sortie.Brut()] { return s->Atteinte(); }});
    suivis_.push_back({GenreDEvènement::Sortie, rang++,
                       [s = sortie.Brut()] { return NiveauDe(s->ValeurCourante()); }});
  }
  if (!objets_.chien->SortiePulse() && objets_.chien->Adresse() != 0) {
    sorties_.push_back({rang, [c = objets_.chien.Brut()] { return c->ArrêtAtteint(); }});
  }
  for (Suivi& suivi : suivis_) suivi.valeur = suivi.lit();
}

void Publication::Publie() {
  ++passes_;
  const double heure = chassis_.LaPlateforme().heureDePasse;
  secondes_ = heure - départ_;
  durée_ = std::max(durée_, durées_->LitMicrosecondes() / kMicrosecondes - heure);
  SuitLArrêt();
  SuitLesSorties();
  SuitLesValeurs();
  const std::uint64_t rafraîchissements = chassis_.RafraichissementsEA();
  const bool rafraîchi = rafraîchissements != rafraîchissements_;
  rafraîchissements_ = rafraîchissements;
  if (rafraîchi || évènement_ || secondes_ - dernier_ >= kAuPlusTard) Echantillonne(rafraîchi);
}

std::span<Mot> Publication::LaPlace(std::uint64_t échantillon) {
  return mots_.subspan(plan_.échantillons + échantillon % plan_.places * plan_.mots, plan_.mots);
}

void Publication::Echantillonne(bool rafraîchi) {
  {
    EnEcriture place(LaPlace(échantillons_), échantillons_);
    place.Ecrit(RangDe(MotDEchantillon::Secondes), secondes_);
    place.Ecrit(RangDe(MotDEchantillon::Monotone),
                Nanosecondes(std::chrono::steady_clock::now().time_since_epoch()));
    place.Ecrit(RangDe(MotDEchantillon::Passe), passes_);
    place.Ecrit(RangDe(MotDEchantillon::Durée), durée_);
    place.Ecrit(RangDe(MotDEchantillon::Arrêt), std::uint64_t{arrêt_});
    place.Ecrit(RangDe(MotDEchantillon::Rafraîchi), std::uint64_t{rafraîchi});
    place.Ecrit(RangDe(MotDEchantillon::Rafraîchissements), rafraîchissements_);
    place.Ecrit(RangDe(MotDEchantillon::Horloge),
                debout_ ? chassis_.LeTimer()->LitMicrosecondes()
                        : chassis_.LaPlateforme().heureDePasse * kMicrosecondes);
    SuiteDObjets suite(place.Depuis(RangDe(MotDEchantillon::kNombre)));
    EcritChacun(suite, objets_.capteurs);
    if (rafraîchi && gestes_ != chassis_.LaPlateforme().gestes) SuitLesGestes();
    EcritChacun(suite, objets_.commandes);
    EcritChacun(suite, objets_.entrées);
    EcritChacun(suite, objets_.sorties);
    suite.Ecrit(*objets_.chien);
    EcritChacun(suite, objets_.canaux);
  }
  Pose(EnTête::EchantillonsEcrits, ++échantillons_);
  dernier_ = secondes_;
  durée_ = 0;
  évènement_ = false;
}

void Publication::Consigne(GenreDEvènement genre, std::uint64_t objet, double valeur,
                           std::string_view texte) {
  texte = Tient(texte);
  {
    const std::size_t rang = évènements_ % plan_.placesDEvènements;
    EnEcriture place(mots_.subspan(plan_.évènements + rang * kMotsDEvènement, kMotsDEvènement),
                     évènements_);
    place.Ecrit(RangDe(MotDEvènement::Secondes), secondes_);
    place.Ecrit(RangDe(MotDEvènement::Passe), passes_);
    place.Ecrit(RangDe(MotDEvènement::Genre), static_cast<std::uint64_t>(genre));
    place.Ecrit(RangDe(MotDEvènement::Objet), objet);
    place.Ecrit(RangDe(MotDEvènement::Valeur), valeur);
    place.Ecrit(RangDe(MotDEvènement::Octets), static_cast<std::uint64_t>(texte.size()));
    for (std::size_t i = 0; i < EnMots(texte.size()); ++i) {
      place.Ecrit(RangDe(MotDEvènement::kNombre) + i, MotDuTexte(texte, i));
    }
  }
  Pose(EnTête::EvènementsEcrits, ++évènements_);
  évènement_ = true;
}

void Publication::Note(GenreDEvènement genre, std::string_view texte) {
  Consigne(genre, kSansObjet, 0, texte);
}

void Publication::NoteLAcquittement() {
  if (arrêt_) FinitLArrêt();
}

void Publication::SuitLArrêt() {
  if (sécurité_ == nullptr) return;
  if (!sécurité_->Déclenchée()) {
    if (arrêt_) FinitLArrêt();
    return;
  }
  if (!arrêt_) CommenceLArrêt();
  for (const auto& causes = sécurité_->Causes(); causes_ < causes.size(); ++causes_) {
    Note(causes_ == 0 ? GenreDEvènement::Arrêt : GenreDEvènement::Cause, causes[causes_].texte);
  }
}

void Publication::CommenceLArrêt() {
  arrêt_ = true;
  passeDeLArrêt_ = passes_;
  causes_ = 0;
  attendues_ = sorties_.size();
  for (SortieSuivie& sortie : sorties_) sortie.attendue = true;
  if (sécurité_->Causes().empty()) Note(GenreDEvènement::Arrêt, "");
}

void Publication::FinitLArrêt() {
  arrêt_ = false;
  for (SortieSuivie& sortie : sorties_) {
    if (std::exchange(sortie.attendue, false)) {
      Consigne(GenreDEvènement::Manquée, sortie.rang, 0, "");
    }
  }
  attendues_ = 0;
  Note(GenreDEvènement::Acquitté, "");
}

void Publication::SuitLesSorties() {
  if (attendues_ == 0) return;
  for (SortieSuivie& sortie : sorties_) {
    if (!sortie.attendue || !sortie.atteinte()) continue;
    sortie.attendue = false;
    --attendues_;
    Consigne(GenreDEvènement::Atteinte, sortie.rang, 0, "");
  }
}

// What changes all the time is told ten times a second, all of it together fifty times, each in its
// turn, and as it is in the end; what a stop sets is told with the stop.
void Publication::SuitLesValeurs() {
  crédit_ = std::min(crédit_ + (secondes_ - créditÀ_) * kValeursParSeconde, kValeursParSeconde);
  créditÀ_ = secondes_;
  std::size_t rang = premierSuivi_;
  for (std::size_t i = 0; i < suivis_.size(); ++i, ++rang) {
    if (rang >= suivis_.size()) rang = 0;
    Suivi& suivi = suivis_[rang];
    const double valeur = suivi.lit();
    if (valeur == suivi.valeur || (std::isnan(valeur) && std::isnan(suivi.valeur))) continue;
    const bool duArrêt = passes_ == passeDeLArrêt_;
    if (secondes_ - suivi.dit < kEntreDeux && !duArrêt) continue;
    if (crédit_ < 1 && !duArrêt) continue;
    crédit_ = std::max(crédit_ - 1, 0.0);
    premierSuivi_ = rang + 1;
    suivi.valeur = valeur;
    suivi.dit = secondes_;
    Consigne(suivi.genre, suivi.rang, valeur, "");
  }
}

// Told with the refresh that first felt them, and before its sample is there for others.
void Publication::SuitLesGestes() {
  struct Acte {
    std::uint8_t GestesDuCapteur::* compte;
    GenreDEvènement genre;
  };
  constexpr std::array<Acte, 4> kActes{{
      {&GestesDuCapteur::zérosRepris, GenreDEvènement::ZéroRepris},
      {&GestesDuCapteur::taresReprises, GenreDEvènement::TareReprise},
      {&GestesDuCapteur::zéros, GenreDEvènement::Zéro},
      {&GestesDuCapteur::tares, GenreDEvènement::Tare},
  }};
  gestes_ = chassis_.LaPlateforme().gestes;
  for (std::size_t rang = 0; rang < gestesDits_.size(); ++rang) {
    const Capteur& capteur = *objets_.capteurs[rang];
    if (capteur.Gestes() == gestesDits_[rang]) continue;
    for (const Acte& acte : kActes) {
      if (capteur.Gestes().*acte.compte == gestesDits_[rang].*acte.compte) continue;
      const bool tare = acte.genre == GenreDEvènement::Tare;
      Consigne(acte.genre, rang, tare ? capteur.ValeurApresTarage() : 0, "");
    }
    gestesDits_[rang] = capteur.Gestes();
  }
}

}  // namespace zuma::publication
