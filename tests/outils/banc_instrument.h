#pragma once

#include <functional>
#include <string>
#include <vector>

#include "core/chassis.h"
#include "outils/arbre.h"
#include "outils/fenetres_d_essai.h"
#include "sim/horloge_virtuelle.h"
#include "sim/liaisons_simulees.h"

namespace zuma::essai {

/// A frame on the simulated clock with the board of one instrument, on simulated lines, and more
/// boards where a test wants them. Passed at 200 Hz.
class BancInstrument : public Banc {
 public:
  BancInstrument() {
    plateforme.liaisons = &liaisons;
    plateforme.horloge = horloge.Brut();
    chassis.ChargeErreur(registre);
  }
  /// A block of that type, of these fields beside it.
  FonctionRef Ajoute(const char* type, const std::vector<std::int32_t>& numéros,
                     const Ligne& champs = {}) {
    return AjouteSur(carte, type, numéros, champs);
  }
  FonctionRef AjouteSur(Carte& sur, const char* type, const std::vector<std::int32_t>& numéros,
                        const Ligne& champs = {}) {
    Ligne tous{{"Type de Fonction", type}, {"Nom de la Fonction", "Bloc"}};
    tous.insert(tous.end(), champs.begin(), champs.end());
    return AjouteBloc(sur, std::to_string(sur.Fonctions()->Count() + 1), tous, numéros, horloge,
                      registre);
  }
  Carte& AjouteCarte(const std::string& clé) {
    Carte& une = *chassis.Cartes()->Add(clé);
    une.TimerExact(horloge);
    une.ChargeErreur(registre);
    return une;
  }
  static Canal& Le(const FonctionRef& bloc, std::int32_t numéro) {
    return *bloc->Canals()->Item(CléDuCanal(numéro));
  }
  /// Values of its channels.
  static std::vector<double> Lues(const FonctionRef& bloc) {
    std::vector<double> lues;
    for (const CanalRef& canal : *bloc->Canals()) lues.push_back(canal->ValeurCanal());
    return lues;
  }
  /// Reads the row of a channel: these fields beside its number and its name.
  static void LitCanal(Canal& canal, Ligne champs) {
    champs.push_back({"Numéro du Canal", canal.NuméroCanal()});
    champs.push_back({"Nom du Canal", "c"});
    canal.ParamètresDepuisBD(UneLigne(std::move(champs)));
  }
  void Démarre(const char* driver, const char* réglages = "", const char* adresse = nullptr) {
    ligne->lignes = {{{"Driver de la Carte", driver}, {"Configuration ModBus", réglages}}};
    if (adresse != nullptr) ligne->lignes[0].push_back({"Adresse", adresse});
    carte.ParamètresDepuisBD(ligne);
    carte.Initialise();
  }
  [[nodiscard]] std::string Réglages() const {
    return VersTexte(*ChercheChamp(*ligne, "Configuration ModBus"));
  }
  void Passe(double secondes) {
    for (int i = 0; i < static_cast<int>(secondes * 200); ++i) {
      horloge->Avance(5000);
      carte.MetàJour();
    }
  }

  Ref<sim::HorlogeVirtuelle> horloge = Crée<sim::HorlogeVirtuelle>(10);
  sim::FabriqueLiaisonsSimulée liaisons;
  FenêtresDEssai fenêtres;
  Ref<RecordsetFixe> ligne = Crée<RecordsetFixe>(std::vector<Ligne>());
  Chassis chassis{plateforme};
  Carte& carte = AjouteCarte("1");
};

}  // namespace zuma::essai
