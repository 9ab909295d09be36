#include "host/verbes/tableau.h"

#include <cmath>
#include <cstdio>

#include "host/regard/choix.h"
#include "host/regard/textes.h"
#include "platform/linux/texte_ligne.h"

namespace zuma::host {

using publication::Echantillon;
using publication::Genre;
using publication::Lecteur;
using publication::Mesure;
using publication::ObjetPublié;

namespace {

constexpr std::size_t kLargeurGenre = 9;
constexpr std::size_t kLargeurNom = 28;
constexpr std::size_t kLargeurNombre = 12;
constexpr std::size_t kLargeurUnité = 9;

Ton TonDe(const std::string& état) {
  if (état.starts_with("DANGER") || état.starts_with("not reached")) return Ton::Danger;
  return état == "ok" ? Ton::Bon : Ton::Attention;
}

}  // namespace

std::string LigneDeLObjet(const ObjetPublié& objet, const Mesure& mesure, const Terminal& terminal,
                          bool changé) {
  std::string nombre = ValeurEnTexte(objet, mesure);
  std::string unité = objet.genre == Genre::Watchdog ? "s" : objet.unité;
  if (nombre.size() > unité.size() && nombre.ends_with(" " + unité)) {
    nombre.resize(nombre.size() - unité.size() - 1);
  } else {
    unité.clear();
  }
  const std::string état = EtatEnTexte(objet, mesure);
  return std::string(changé ? "* " : "  ") +
         AGauche(publication::MotDe(objet.genre), kLargeurGenre) +
         AGauche(NomComplet(objet), kLargeurNom) + " " +
         terminal.Colore(ADroite(nombre, kLargeurNombre), changé ? Ton::Titre : Ton::Normal) + " " +
         AGauche(unité, kLargeurUnité) + terminal.Colore(état, TonDe(état));
}

nlohmann::ordered_json ObjetEnJson(const ObjetPublié& objet, const Mesure& mesure) {
  nlohmann::ordered_json json{{"kind", publication::MotDe(objet.genre)},
                              {"name", objet.nom},
                              {"label", objet.label},
                              {"key", objet.clé},
                              {"value", nullptr},
                              {"unit", objet.unité},
                              {"state", EtatEnTexte(objet, mesure)},
                              {"age_s", mesure.âge}};
  if (objet.genre == Genre::Entrée || objet.genre == Genre::Sortie) {
    json["value"] = ValeurEnTexte(objet, mesure);
  } else if (std::isfinite(mesure.valeur)) {
    json["value"] = mesure.valeur;
  }
  if (objet.genre == Genre::Canal) json["channel"] = NomComplet(objet);
  return json;
}

std::string LigneDuChassis(const Lecteur& lecteur, const Echantillon& échantillon, bool vivante) {
  const publication::ChassisPublié& chassis = lecteur.LeChassis();
  const std::string machine = publication::AuLieuDeLaMachine(chassis);
  std::string ligne = "frame " + std::to_string(chassis.index) + "  " + chassis.nom + "  " +
                      chassis.fichier + (machine.empty() ? "" : "  (" + machine + ")") + "  ";
  if (vivante) {
    ligne += "run by " + chassis.programme + ", process " + std::to_string(lecteur.Processus());
    const double depuis = SecondesDepuis(échantillon);
    if (depuis > 1) ligne += ", SILENT for " + NombreEnTexte(depuis, 1) + " s";
  } else {
    ligne += lecteur.EstFini() ? "ended" : "its host died";
  }
  ligne += ", " + NombreEnTexte(échantillon.Secondes(), 1) + " s";
  if (échantillon.Arrêt()) ligne += "  STOP LATCHED";
  return linux_::UneSeuleLigne(ligne);
}

nlohmann::ordered_json ChassisEnJson(const Lecteur& lecteur, const Echantillon& échantillon,
                                     bool vivante) {
  const publication::ChassisPublié& chassis = lecteur.LeChassis();
  return {{"frame", chassis.index},
          {"name", chassis.nom},
          {"database", chassis.fichier},
          {"simulated", chassis.simulé},
          {"replay_of", chassis.rejoué},
          {"running", vivante},
          {"program", chassis.programme},
          {"pid", lecteur.Processus()},
          {"start", HeureUtc(lecteur.DépartUtc())},
          {"time_s", échantillon.Secondes()},
          {"pass", échantillon.Passe()},
          {"silent_s", vivante ? nlohmann::ordered_json(SecondesDepuis(échantillon)) : nullptr},
          {"stop", échantillon.Arrêt()}};
}

void DitQuIlNYARien(const Lecteur& lecteur) {
  std::fprintf(stderr, "zuma: frame %d, process %d, has given no sample yet\n",
               static_cast<int>(lecteur.LeChassis().index), lecteur.Processus());
}

void ImprimeEnJson(const nlohmann::ordered_json& json) {
  const std::string texte =
      json.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
  std::printf("%s\n", linux_::UneSeuleLigne(texte).c_str());
}

}  // namespace zuma::host
