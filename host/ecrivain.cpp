#include "host/ecrivain.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstring>

#include "host/champ_csv.h"

namespace zuma::host {
namespace {

void AjouteSecondes(std::string& ligne, double secondes) {
  constexpr int kChiffres = 6;
  std::array<char, 32> texte{};
  const auto fin = std::to_chars(texte.data(), texte.data() + texte.size(), secondes,
                                 std::chars_format::fixed, kChiffres);
  ligne.append(texte.data(), fin.ptr);
}

// As many fields as any other line, and a comment to those who know comments.
std::string LigneDeLacune(const Lacune& lacune, std::size_t colonnes) {
  std::string ligne = "# " + std::to_string(lacune.rangées) + " rows lost from ";
  AjouteSecondes(ligne, lacune.de);
  ligne += " s to ";
  AjouteSecondes(ligne, lacune.à);
  return ligne + " s" + std::string(colonnes, ',') + "\n";
}

// Likewise. The words are those that a player of recordings knows.
std::string LigneDActe(const Acte& acte, std::size_t colonnes) {
  std::string ligne = "# " + std::string(MotDe(acte.acte));
  if (acte.acte == ActeSurCapteur::Tare) {
    ligne += " to ";
    AjouteNombre(ligne, acte.valeur);
  }
  return ChampCsv(ligne + " of " + acte.capteur) + std::string(colonnes, ',') + "\n";
}

}  // namespace

std::string_view MotDe(ActeSurCapteur acte) {
  constexpr std::array<std::string_view, 4> kMots{"zero undone", "tare undone", "zero", "tare"};
  return kMots.at(static_cast<std::size_t>(acte));
}

std::string Raison(int erreur) {
  struct Cas {
    int erreur;
    const char* texte;
  };
  constexpr std::array<Cas, 4> kCas{{
      {ENOSPC, "the disk is full"},
      {EDQUOT, "the quota of the disk is used up"},
      {EFBIG, "the file has reached the size limit"},
      {ENOENT, "the file was removed"},
  }};
  const auto* cas = std::ranges::find(kCas, erreur, &Cas::erreur);
  return cas != kCas.end() ? cas->texte : std::strerror(erreur);
}

std::string Phrase(const EtatDEnregistrement& état) {
  const std::string nombre = std::to_string(état.écrites) + " rows";
  const std::string perdues = ", " + std::to_string(état.perdues) + " LOST";
  if (état.erreur != 0) {
    return "RECORDING STOPPED: " + état.fichier + ": " + Raison(état.erreur) + "; " + nombre +
           " written, " + std::to_string(état.enAttente) + " waiting" + perdues;
  }
  return "recording " + état.fichier + ": " + nombre + (état.perdues == 0 ? "" : perdues);
}

Ecrivain::Ecrivain(FichierEnAjout& fichier, SourceDeRangées& rangées, std::string entête,
                   const Réglages& réglages)
    : fichier_(fichier), rangées_(rangées), réglages_(réglages), entête_(std::move(entête)) {}

void Ecrivain::Tour() {
  for (bool encore = true; encore;) {
    encore = Puise();
    erreur_ = Ecrit();
    while (lots_.size() > réglages_.lots) AbandonneLePremier();
  }
}

void Ecrivain::Conclut() {
  Tour();
  const Lacune manque = rangées_.Manque();
  if (manque.rangées != 0) {
    lots_.emplace_back();
    NoteLaLacune(manque);
    perdues_ += manque.rangées;
  }
  erreur_ = Ecrit();
  while (!lots_.empty()) AbandonneLePremier();
}

EtatDEnregistrement Ecrivain::Etat() const {
  return {.fichier = {},
          .erreur = erreur_,
          .écrites = écrites_,
          .enAttente = enAttente_,
          .perdues = perdues_};
}

// True while more is there than one part holds.
bool Ecrivain::Puise() {
  const auto prend = [this](const SourceDeRangées::Rangée& rangée) { Prend(rangée); };
  lots_.emplace_back();
  while (lots_.back().texte.size() < réglages_.octetsParLot) {
    if (rangées_.Retire(prend)) continue;
    if (lots_.back().texte.empty()) lots_.pop_back();
    return false;
  }
  return true;
}

void Ecrivain::Prend(const SourceDeRangées::Rangée& rangée) {
  if (rangée.avant.rangées != 0) {
    NoteLaLacune(rangée.avant);
    perdues_ += rangée.avant.rangées;
  }
  Lot& lot = lots_.back();
  for (const Acte& acte : rangée.actes) lot.texte += LigneDActe(acte, rangées_.Colonnes());
  AjouteSecondes(lot.texte, rangée.secondes);
  for (const double valeur : rangée.valeurs) {
    lot.texte += ',';
    if (std::isfinite(valeur)) AjouteNombre(lot.texte, valeur);
  }
  lot.texte += '\n';
  ++lot.rangées;
  ++enAttente_;
  lot.contenu.Ajoute({1, rangée.secondes, rangée.secondes});
}

void Ecrivain::NoteLaLacune(const Lacune& lacune) {
  lots_.back().texte += LigneDeLacune(lacune, rangées_.Colonnes());
  lots_.back().contenu.Ajoute(lacune);
}

// In the order of time: what stays for a later round is told lost or written before what follows.
int Ecrivain::Ecrit() {
  if (!entête_.empty()) {
    if (const int erreur = fichier_.Ajoute(entête_)) return erreur;
    entête_.clear();
  }
  for (; !lots_.empty(); lots_.pop_front()) {
    if (lacune_.rangées != 0) {
      if (const int erreur = fichier_.Ajoute(LigneDeLacune(lacune_, rangées_.Colonnes())))
        return erreur;
      lacune_ = {};
    }
    const Lot& lot = lots_.front();
    if (const int erreur = fichier_.Ajoute(lot.texte)) return erreur;
    écrites_ += lot.rangées;
    enAttente_ -= lot.rangées;
  }
  return 0;
}

void Ecrivain::AbandonneLePremier() {
  const Lot& lot = lots_.front();
  lacune_.Ajoute(lot.contenu);
  perdues_ += lot.rangées;
  enAttente_ -= lot.rangées;
  lots_.pop_front();
}

}  // namespace zuma::host
