#pragma once

#include <string>
#include <utility>
#include <vector>

#include "core/recherche.h"
#include "outils/arbre.h"
#include "outils/banc_capteur.h"
#include "sim/bus_ports.h"
#include "sim/cartes_simples.h"
#include "sim/clavier_simule.h"

// A bench for logic objects and commands.
namespace zuma::essai {

inline constexpr std::int32_t kCanalDeCommande = 10;

/// Row of a command: 0 to 100 units over 100 to 4100 points, 40 points a unit; limits 10 to 90
/// units, and 300 to 3500 points: 5 to 85 units.
inline Ligne LigneDeCommande(const char* type = "Normale", const Ligne& champs = {}) {
  Ligne ligne{{"Nom de la Commande", "Vérin"},      {"Valeur Initiale", "20,0"},
              {"Date d'Etalonnage", "12/03/2024"},  {"Nom de l'Etalonneur", "Durand"},
              {"Unité d'Etalonnage", "mm/s"},       {"Type de Commande", type},
              {"Sécurité Minimale en Unité", 10},   {"Sécurité Maximale en Unité", 90},
              {"Sécurité Minimale en Points", 300}, {"Sécurité Maximale en Points", 3500},
              {"Fréquence dither", Nul{}},          {"Amplitude dither", 0},
              {"Canal", kCanalDeCommande}};
  for (int i = 1; i <= 20; ++i) {
    const std::string point = "Point " + std::to_string(i);
    ligne.push_back({point + " - Unité", i == 2 ? 100 : 0});
    ligne.push_back({point + " - Point", i > 2 ? 0 : i == 2 ? 4100 : 100});
  }
  return Avec(ligne, champs);
}
/// A frame with a board of analog outputs (channels 10 and 11) and one of logic outputs (channels
/// 12 to 14) on a simulated bus, a keyboard, and the collaborators of the sensors' bench.
class BancLogique : public BancCapteur {
 public:
  BancLogique() {
    plateforme.ports = &bus;
    plateforme.clavier = &clavier;
    bus.Attache(0x2A0, 16, analogiques_);
    bus.Attache(0x300, 16, logiques_);
    bus.Journalise(true);
    chassis.ChargeErreur(registre);
    chassis.TimerExact(timer);
    Enfiche("1", "2A0", "DrvPCL728", "Sortie Analogique", {0, 1});
    Enfiche("2", "300", "DrvPCL731_PCLD7225", "Sortie Logique", {2, 3, 4});
    Ecritures();
  }

  [[nodiscard]] CanalRef CanalDe(std::int32_t clé) {
    return recherche::CanalDeClé(chassis, std::to_string(clé));
  }
  /// Number of writes on the bus since the last call.
  std::size_t Ecritures() {
    const std::size_t nombre = bus.Ecritures().size();
    bus.OublieEcritures();
    return nombre;
  }
  /// Logic outputs that are energised, bit 0 the first one: the board drives its relays low.
  [[nodiscard]] std::uint32_t Lignes() const {
    return ~logiques_.bornes.sortiesLogiques & 0xFFFFFFU;
  }
  /// True when the record has one entry and it contains `morceau`. Empties the record.
  bool Dit(std::string_view morceau) {
    const bool dit = registre->entrées.size() == 1 && registre->Contient(morceau);
    registre->entrées.clear();
    return dit;
  }

  /// An object read from its row, linked to the frame and started.
  template <class T>
  Ref<T> Prêt(const Ligne& ligne) {
    const Ref<T> objet = Lu<T>(ligne);
    Lie(*objet);
    objet->Initialise();
    return objet;
  }
  template <class T>
  Ref<T> Lu(const Ligne& ligne) {
    const Ref<T> objet = Crée<T>(plateforme);
    objet->ChargeErreur(registre);
    objet->TimerExact(timer);
    objet->ParamètresDepuisBD(UneLigne(ligne));
    return objet;
  }
  template <class T>
  void Lie(T& objet) {
    objet.Lien(sécurité, paramètres, traducteur, &chassis);
  }
  void Lie(Commande& commande) { commande.Lien(&chassis, paramètres, traducteur); }

  sim::BusPorts bus;
  sim::ClavierSimulé clavier;
  Chassis chassis{plateforme};

 private:
  void Enfiche(const char* clé, const char* adresse, const char* driver, const char* type,
               const std::vector<std::int32_t>& numéros) {
    const CarteRef carte = chassis.Cartes()->Add(clé);
    carte->ChargeErreur(registre);
    carte->TimerExact(timer);
    const Ligne bloc{{"Driver", driver},
                     {"Type de Fonction", type},
                     {"Nom de la Fonction", "Bloc"},
                     {"Mise à Jour par Fonction", false}};
    AjouteBloc(*carte, "1", bloc, numéros, timer, registre);
    LitCarte(*carte, "", "", adresse);
    carte->Initialise();
  }

  sim::CarteSortiesParPaires analogiques_{8};
  sim::CartePCL731 logiques_;
};

}  // namespace zuma::essai
