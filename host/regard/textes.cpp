#include "host/regard/textes.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <ctime>

#include "host/champ_csv.h"
#include "platform/linux/texte_ligne.h"

namespace zuma::host {

using publication::ChassisPublié;
using publication::EvènementLu;
using publication::Genre;
using publication::GenreDEvènement;
using publication::Mesure;
using publication::ObjetPublié;

namespace {

constexpr std::uint64_t kNanosecondes = 1'000'000'000;

bool EstLogique(Genre genre) {
  return genre == Genre::Entrée || genre == Genre::Sortie;
}

std::string_view NiveauEnTexte(double valeur) {
  if (std::isnan(valeur)) return "unknown";
  return valeur != 0 ? "on" : "off";
}

std::string EtatDuCapteur(const Mesure& mesure) {
  constexpr std::array<std::string_view, 4> kEtats{"ok", "not valid", "overrun", "DANGER"};
  if (!mesure.Est(publication::kEnService)) return "off";
  if (!mesure.Est(publication::kSélectionné)) return "not selected";
  if (mesure.Est(publication::kSorti)) return "DANGER";
  const std::uint32_t rang = mesure.EtatDuCapteur();
  return std::string(kEtats[rang < kEtats.size() ? rang : 0]);
}

// The first bit that tells something, for each kind of object; "ok" when none does.
std::string EtatDAutre(Genre genre, const Mesure& mesure) {
  struct Ligne {
    Genre genre;
    publication::Etat bit;
    bool attendu;  ///< of the bit, when there is something to tell
    std::string_view texte;
  };
  constexpr std::array<Ligne, 9> kLignes{
      {{Genre::Commande, publication::kMaintenu, true, "held by a stop"},
       {Genre::Commande, publication::kAtteint, false, "not reached"},
       {Genre::Commande, publication::kSaturé, true, "saturated"},
       {Genre::Commande, publication::kEnService, false, "off"},
       {Genre::Sortie, publication::kAtteint, false, "not reached"},
       {Genre::Watchdog, publication::kEnArrêt, true, "stopped"},
       {Genre::Watchdog, publication::kEnService, false, "off"},
       {Genre::Canal, publication::kEnService, false, "off"},
       {Genre::Canal, publication::kLu, false, "not read yet"}}};
  for (const Ligne& ligne : kLignes) {
    if (ligne.genre == genre && mesure.Est(ligne.bit) == ligne.attendu) {
      return std::string(ligne.texte);
    }
  }
  return "ok";
}

}  // namespace

std::string HeureUtc(std::uint64_t nanosecondes) {
  const auto secondes = static_cast<std::time_t>(nanosecondes / kNanosecondes);
  std::tm utc{};
  ::gmtime_r(&secondes, &utc);
  std::array<char, 32> texte{};
  const std::size_t fin = std::strftime(texte.data(), texte.size(), "%Y-%m-%dT%H:%M:%S", &utc);
  std::array<char, 16> reste{};
  std::snprintf(reste.data(), reste.size(), ".%03uZ",
                static_cast<unsigned>(nanosecondes % kNanosecondes / 1'000'000));
  return std::string(texte.data(), fin) + reste.data();
}

std::uint64_t MomentUtc(const publication::Lecteur& lecteur, double secondes) {
  return lecteur.DépartUtc() +
         static_cast<std::uint64_t>(std::max(secondes, 0.0) * static_cast<double>(kNanosecondes));
}

std::string NombreEnTexte(double nombre, int chiffres) {
  if (!std::isfinite(nombre)) return "-";
  if (std::fabs(nombre) < std::pow(10, -chiffres) / 2) nombre = 0;  // no "-0.000"
  std::array<char, 400> texte{};
  std::snprintf(texte.data(), texte.size(), "%.*f", chiffres, nombre);
  return texte.data();
}

std::string PointsEnTexte(double points) {
  if (!std::isfinite(points)) return "-";
  std::array<char, 32> texte{};
  std::snprintf(texte.data(), texte.size(), "%.6g", points);
  return texte.data();
}

std::string LimiteEnTexte(const std::optional<double>& limite) {
  std::string texte;
  if (limite) AjouteNombre(texte, *limite);
  return limite ? texte : "none";
}

std::string ValeurEnTexte(const ObjetPublié& objet, const Mesure& mesure) {
  if (EstLogique(objet.genre)) return std::string(NiveauEnTexte(mesure.valeur));
  if (objet.genre == Genre::Watchdog) return NombreEnTexte(mesure.valeur) + " s";
  const std::string nombre =
      objet.genre == Genre::Canal ? PointsEnTexte(mesure.valeur) : NombreEnTexte(mesure.valeur);
  return objet.unité.empty() ? nombre : nombre + " " + objet.unité;
}

std::string EtatEnTexte(const ObjetPublié& objet, const Mesure& mesure) {
  std::string texte =
      objet.genre == Genre::Capteur ? EtatDuCapteur(mesure) : EtatDAutre(objet.genre, mesure);
  if (mesure.Est(publication::kVieux) && objet.driver != "DrvAucun") {
    texte += ", old since " + NombreEnTexte(mesure.âge, 1) + " s";
  }
  return texte;
}

std::string Désignation(const ObjetPublié& objet) {
  return std::string(publication::MotDe(objet.genre)) + " " + NomComplet(objet);
}

std::string_view MotDe(GenreDEvènement genre) {
  constexpr std::array<std::string_view, 16> kMots{
      "start",      "stop",      "cause",       "at rest",    "NOT AT REST", "acknowledged",
      "in service", "set point", "input",       "output",     "entry",       "description changed",
      "zero",       "tare to",   "zero undone", "tare undone"};
  const auto rang = static_cast<std::size_t>(genre);
  return rang < kMots.size() ? kMots[rang] : "?";
}

std::string Phrase(const ChassisPublié& chassis, const EvènementLu& évènement) {
  std::string phrase(MotDe(évènement.genre));
  if (évènement.objet) {
    const ObjetPublié& objet = chassis.objets[*évènement.objet];
    phrase += "  " + Désignation(objet);
    constexpr std::array kChiffrés{GenreDEvènement::Consigne, GenreDEvènement::Entrée,
                                   GenreDEvènement::Sortie, GenreDEvènement::Tare};
    if (std::ranges::find(kChiffrés, évènement.genre) != kChiffrés.end())
      phrase += " = " + ValeurEnTexte(objet, {évènement.valeur, 0, 0});
  }
  if (!évènement.texte.empty()) phrase += "  " + évènement.texte;
  return linux_::UneSeuleLigne(phrase);
}

}  // namespace zuma::host
