#include "host/verbes/vue.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <nlohmann/json.hpp>

#include "host/regard/textes.h"
#include "platform/linux/texte_ligne.h"
#include "sensors/lecture.h"

namespace zuma::host {

using linux_::UneSeuleLigne;

namespace {

constexpr std::size_t kLargeurNom = 22;
constexpr std::size_t kLargeurValeur = 9;
constexpr std::size_t kLargeurMesure = 11;
constexpr std::size_t kLargeurUnité = 8;
constexpr std::size_t kLargeurBorne = 18;
constexpr std::size_t kLargeurCellule = kLargeurNom + kLargeurValeur + kLargeurBorne + 12;

std::string Secondes(double secondes) {
  std::array<char, 32> texte{};
  std::snprintf(texte.data(), texte.size(), "%.2f s", secondes);
  return texte.data();
}

std::string Millisecondes(double millisecondes) {
  std::array<char, 32> texte{};
  std::snprintf(texte.data(), texte.size(), "%.3f ms", millisecondes);
  return texte.data();
}

bool EstLogique(const Canal& canal) {
  return canal.TypeCanal() == ENUM_TYPE_FONCTION::FctEntréesLogiques ||
         canal.TypeCanal() == ENUM_TYPE_FONCTION::FctSortiesLogiques;
}

std::string ValeurDuCanal(const Canal& canal) {
  if (!EstLogique(canal)) return PointsEnTexte(canal.ValeurCanal());
  return canal.ValeurCanal() != 0 ? "on" : "off";
}

std::string_view Genre(const Canal& canal) {
  constexpr std::array<std::string_view, 5> kGenres{"none", "logic in", "logic out", "analog in",
                                                    "analog out"};
  const auto rang = static_cast<std::size_t>(canal.TypeCanal());
  return kGenres[rang < kGenres.size() ? rang : 0];
}

std::string_view Unité(const Canal& canal) {
  return EstLogique(canal) ? "" : "points";
}

Ton TonDuCanal(const Canal& canal) {
  if (!EstLogique(canal)) return Ton::Normal;
  return canal.ValeurCanal() != 0 ? Ton::Bon : Ton::Discret;
}

std::string Cellule(const Canal& canal, const Machine& machine, const Terminal& terminal) {
  const std::string valeur = ADroite(ValeurDuCanal(canal), kLargeurValeur);
  return "  " + ADroite(std::to_string(canal.NuméroCanal()), 2) + " " +
         AGauche(canal.Nom(), kLargeurNom) + terminal.Colore(valeur, TonDuCanal(canal)) + " " +
         AGauche(Unité(canal), 7) +
         terminal.Colore(AGauche(machine.Borne(canal), kLargeurBorne), Ton::Discret);
}

std::string Titre(const Carte& carte) {
  std::array<char, 16> adresse{};
  std::snprintf(adresse.data(), adresse.size(), "%X", static_cast<unsigned>(carte.Adresse()));
  return "Board " + carte.Key() + "  " + UneSeuleLigne(carte.NomDeLaCarte()) + "  (address " +
         adresse.data() + " hex)";
}

struct EtatAffiché {
  std::string_view texte;
  Ton ton;
};

EtatAffiché Etat(const Capteur& capteur) {
  constexpr std::array<EtatAffiché, 4> kEtats{{{"ok", Ton::Bon},
                                               {"not valid", Ton::Discret},
                                               {"overrun", Ton::Attention},
                                               {"DANGER", Ton::Danger}}};
  if (!capteur.Enabled_bln()) return {"off", Ton::Discret};
  if (!capteur.CapteurSelectionne()) return {"not selected", Ton::Discret};
  const auto rang = static_cast<std::size_t>(capteur.Etat());
  return kEtats[rang < kEtats.size() ? rang : 0];
}

// A dash in place of a reading that is missing.
std::string Lecture(const Capteur& capteur) {
  const auto lecture = LectureDe(capteur);
  return lecture ? NombreEnTexte(*lecture) : "-";
}

std::string Durée(double secondes) {
  std::array<char, 32> texte{};
  std::snprintf(texte.data(), texte.size(), "%.1f s", secondes);
  return texte.data();
}

std::string LigneDuCapteur(const Capteur& capteur, const Terminal& terminal, bool choisi) {
  const EtatAffiché état = Etat(capteur);
  const bool vieux = EstAncien(capteur);
  return std::string(choisi ? "> " : "  ") + AGauche(capteur.NomDuCapteur(), kLargeurNom) +
         ADroite(Lecture(capteur), kLargeurMesure) + " " +
         AGauche(capteur.UnitéEtalonnage(), kLargeurUnité) +
         terminal.Colore(AGauche(état.texte, kLargeurMesure), état.ton) + "min " +
         ADroite(NombreEnTexte(capteur.MiniDétecté()), kLargeurMesure) + "  max " +
         ADroite(NombreEnTexte(capteur.MaxiDétecté()), kLargeurMesure) +
         (capteur.EtatDeLaTare() ? "  tared" : "") +
         (vieux ? terminal.Colore("  old since " + Durée(capteur.Age()), Ton::Attention) : "");
}

std::string_view Texte(SuiviDeLArrêt::Portée portée) {
  constexpr std::array<std::string_view, 3> kPortées{"reached", "not confirmed yet", "NOT REACHED"};
  return kPortées[static_cast<std::size_t>(portée)];
}

// What waits for an act of the operator behind a stop: nothing of it comes back by itself.
std::vector<std::string> HorsService(Chassis& chassis) {
  std::vector<std::string> noms;
  for (const CommandeRef& commande : *chassis.Commandes()) {
    if (commande->MaintenueAuRepos()) noms.push_back(commande->NomDeLaCommande());
  }
  const WatchdogRef chien = chassis.Watchdog();
  const bool carte = !chien->SortiePulse() && chien->Adresse() != 0;
  if (carte && !chien->Enabled()) noms.emplace_back(chien->NomPourErreur());
  return noms;
}

void AjouteLArrêt(const Instantané& vue, const Terminal& terminal,
                  std::vector<std::string>& lignes) {
  for (const linux_::Securite::Cause& cause : vue.sécurité.Causes()) {
    lignes.push_back(terminal.Colore("STOP  " + UneSeuleLigne(cause.texte), Ton::Danger) +
                     "   (a acknowledges)");
  }
  const auto& sorties = vue.suivi.Sorties();
  if (!sorties.empty()) {
    const auto atteintes = std::ranges::count(sorties, SuiviDeLArrêt::Portée::Atteinte,
                                              &SuiviDeLArrêt::Sortie::portée);
    lignes.push_back("The stop has reached " + std::to_string(atteintes) + " of " +
                     std::to_string(sorties.size()) + " outputs");
  }
  for (const std::string& nom : vue.suivi.Manquées()) {
    lignes.push_back(terminal.Colore(
        "NOT REACHED  " + UneSeuleLigne(nom) + "   cut the machine off", Ton::Danger));
  }
  for (const std::string& nom : HorsService(vue.chassis)) {
    lignes.push_back(terminal.Colore("Out of service: " + UneSeuleLigne(nom), Ton::Attention) +
                     "   (e enables)");
  }
}

nlohmann::ordered_json EnJson(const EtatDEnregistrement& état) {
  nlohmann::ordered_json json{{"file", état.fichier},
                              {"stopped", état.erreur != 0},
                              {"rows", état.écrites},
                              {"rows_waiting", état.enAttente},
                              {"rows_lost", état.perdues}};
  if (état.erreur != 0) json["reason"] = Raison(état.erreur);
  return json;
}

// What stands below the head of the view, from line `haut` on, no further than the last page.
void FaitDéfiler(std::vector<std::string>& lignes, std::size_t entête, std::size_t place,
                 std::size_t& haut) {
  const std::size_t corps = lignes.size() - entête;
  const std::size_t page = place > entête + 1 ? place - entête - 1 : 1;
  haut = std::min(haut, corps > page ? corps - page : 0);
  const auto début = lignes.begin() + static_cast<std::ptrdiff_t>(entête);
  lignes.erase(début, début + static_cast<std::ptrdiff_t>(haut));
}

template <class Travail>
void PourChaqueCanal(Chassis& chassis, Travail&& travail) {
  for (const CarteRef& carte : *chassis.Cartes()) {
    for (const FonctionRef& bloc : *carte->Fonctions()) {
      for (const CanalRef& canal : *bloc->Canals()) travail(*carte, *bloc, *canal);
    }
  }
}

}  // namespace

std::vector<std::string> VueVivante(const Instantané& vue, const Terminal& terminal,
                                    std::size_t& haut) {
  Chassis& chassis = vue.chassis;
  std::vector<std::string> lignes;
  lignes.push_back(
      terminal.Colore(UneSeuleLigne(chassis.Nom()), Ton::Titre) + "   " + Secondes(vue.secondes) +
      "   j k choose, t tare, z zero, m extremes, s stop, e enable, f fault (simulated), "
      "space b scroll, q quit");
  lignes.push_back(
      terminal.Colore("longest pass " + Millisecondes(vue.plusLonguePasse), Ton::Discret));
  if (!vue.panne.empty()) {
    lignes.back() += terminal.Colore("   fault: " + std::string(vue.panne), Ton::Attention);
  }
  if (vue.enregistrement) {
    const Ton ton = vue.enregistrement->erreur != 0    ? Ton::Danger
                    : vue.enregistrement->perdues != 0 ? Ton::Attention
                                                       : Ton::Discret;
    lignes.push_back(terminal.Colore(Phrase(*vue.enregistrement), ton));
  }
  AjouteLArrêt(vue, terminal, lignes);
  const std::size_t entête = lignes.size();
  std::int32_t rangCapteur = 0;
  for (const CapteurRef& capteur : *chassis.Capteurs()) {
    lignes.push_back(LigneDuCapteur(*capteur, terminal, rangCapteur++ == vue.capteurChoisi));
  }
  const std::size_t parLigne = std::max<std::size_t>(1, terminal.Colonnes() / kLargeurCellule);
  for (const CarteRef& carte : *chassis.Cartes()) {
    lignes.push_back(terminal.Colore(Titre(*carte), Ton::Titre));
    for (const FonctionRef& bloc : *carte->Fonctions()) {
      lignes.push_back(" Block " + bloc->Key() + "  " + UneSeuleLigne(bloc->NomDeLaFonction()));
      std::size_t rang = 0;
      for (const CanalRef& canal : *bloc->Canals()) {
        if (rang++ % parLigne == 0) lignes.emplace_back();
        lignes.back() += Cellule(*canal, vue.machine, terminal);
      }
    }
  }
  FaitDéfiler(lignes, entête, terminal.Lignes(), haut);
  return lignes;
}

std::string VueEnResume(const Instantané& vue) {
  constexpr int kMontrés = 4;
  std::string ligne = Secondes(vue.secondes);
  if (!vue.sécurité.Causes().empty()) {
    ligne += " | STOP " + vue.sécurité.Causes().front().texte;
  }
  for (const std::string& nom : vue.suivi.Manquées()) ligne += " | NOT REACHED " + nom;
  std::string montrés;
  int bons = 0, rang = 0;
  for (const CapteurRef& capteur : *vue.chassis.Capteurs()) {
    if (Etat(*capteur).ton == Ton::Bon && !EstAncien(*capteur)) ++bons;
    if (rang++ >= kMontrés) continue;
    montrés += " | " + capteur->NomDuCapteur() + " " + Lecture(*capteur) + " " +
               capteur->UnitéEtalonnage();
  }
  ligne += " | " + std::to_string(bons) + " of " + std::to_string(rang) + " sensors ok" + montrés +
           " | longest pass " + Millisecondes(vue.plusLonguePasse);
  if (vue.enregistrement) ligne += " | " + Phrase(*vue.enregistrement);
  return UneSeuleLigne(ligne);
}

std::vector<std::string> VueEnLignes(const Instantané& vue) {
  std::vector<std::string> lignes;
  const std::string heure = Secondes(vue.secondes);
  lignes.push_back(heure + " | longest pass | " + Millisecondes(vue.plusLonguePasse));
  if (vue.enregistrement) lignes.push_back(heure + " | recording | " + Phrase(*vue.enregistrement));
  for (const linux_::Securite::Cause& cause : vue.sécurité.Causes()) {
    lignes.push_back(heure + " | stop | " + cause.texte);
  }
  for (const SuiviDeLArrêt::Sortie& sortie : vue.suivi.Sorties()) {
    lignes.push_back(heure + " | stop output | " + sortie.nom + " | " +
                     std::string(Texte(sortie.portée)));
  }
  for (const std::string& nom : HorsService(vue.chassis)) {
    lignes.push_back(heure + " | out of service | " + nom);
  }
  for (const CapteurRef& capteur : *vue.chassis.Capteurs()) {
    lignes.push_back(heure + " | sensor " + capteur->Key() + " | " + capteur->NomDuCapteur() +
                     " | " + Lecture(*capteur) + " " + capteur->UnitéEtalonnage() + " | " +
                     std::string(Etat(*capteur).texte) +
                     (EstAncien(*capteur) ? " | old since " + Durée(capteur->Age()) : "") +
                     " | min " + NombreEnTexte(capteur->MiniDétecté()) + " | max " +
                     NombreEnTexte(capteur->MaxiDétecté()));
  }
  PourChaqueCanal(vue.chassis, [&](const Carte& carte, const Fonction& bloc, const Canal& canal) {
    std::string ligne = heure + " | board " + carte.Key() + " | block " + bloc.Key() +
                        " | channel " + std::to_string(canal.NuméroCanal()) + " | " +
                        std::string(Genre(canal)) + " | " + canal.Nom() + " | " +
                        ValeurDuCanal(canal);
    if (!Unité(canal).empty()) ligne += " " + std::string(Unité(canal));
    const std::string borne = vue.machine.Borne(canal);
    if (!borne.empty()) ligne += " | " + borne;
    lignes.push_back(std::move(ligne));
  });
  for (std::string& ligne : lignes) ligne = UneSeuleLigne(ligne);
  return lignes;
}

std::string VueEnJson(const Instantané& vue) {
  nlohmann::ordered_json json{{"time_s", vue.secondes},
                              {"frame", vue.chassis.Nom()},
                              {"longest_pass_ms", vue.plusLonguePasse}};
  if (vue.enregistrement) json["recording"] = EnJson(*vue.enregistrement);
  auto& causes = json["stop_causes"] = nlohmann::ordered_json::array();
  for (const linux_::Securite::Cause& cause : vue.sécurité.Causes()) causes.push_back(cause.texte);
  auto& sorties = json["stop_outputs"] = nlohmann::ordered_json::array();
  for (const SuiviDeLArrêt::Sortie& sortie : vue.suivi.Sorties()) {
    sorties.push_back({{"name", sortie.nom}, {"state", Texte(sortie.portée)}});
  }
  json["out_of_service"] = HorsService(vue.chassis);
  auto& capteurs = json["sensors"] = nlohmann::ordered_json::array();
  for (const CapteurRef& capteur : *vue.chassis.Capteurs()) {
    const auto lecture = LectureDe(*capteur);
    capteurs.push_back({{"name", capteur->NomDuCapteur()},
                        {"value", lecture ? nlohmann::ordered_json(*lecture) : nullptr},
                        {"unit", capteur->UnitéEtalonnage()},
                        {"state", Etat(*capteur).texte},
                        {"age_s", capteur->Age()},
                        {"old", EstAncien(*capteur)},
                        {"min", capteur->MiniDétecté()},
                        {"max", capteur->MaxiDétecté()}});
  }
  auto& canaux = json["channels"] = nlohmann::ordered_json::array();
  PourChaqueCanal(vue.chassis, [&](const Carte& carte, const Fonction& bloc, const Canal& canal) {
    nlohmann::ordered_json objet{{"board", carte.Key()},
                                 {"block", bloc.Key()},
                                 {"channel", canal.NuméroCanal()},
                                 {"type", Genre(canal)},
                                 {"name", canal.Nom()}};
    if (EstLogique(canal)) {
      objet["on"] = canal.ValeurCanal() != 0;
    } else {
      objet["points"] = canal.ValeurCanal();
    }
    const std::string borne = vue.machine.Borne(canal);
    if (!borne.empty()) objet["terminal"] = borne;
    canaux.push_back(std::move(objet));
  });
  // What JSON lets through as it stands, a terminal may obey.
  return UneSeuleLigne(json.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace));
}

}  // namespace zuma::host
