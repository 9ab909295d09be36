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

/// The board of one instrument on a simulated line, passed at 200 Hz.
class BancInstrument : public Banc {
 public:
  BancInstrument() {
    plateforme.liaisons = &liaisons;
    plateforme.horloge = horloge.Brut();
    chassis.ChargeErreur(registre);
    carte.TimerExact(horloge);
    carte.ChargeErreur(registre);
  }
  FonctionRef Ajoute(const char* type, const std::vector<std::int32_t>& numéros) {
    return AjouteBloc(carte, type,
                      {{"Type de Fonction", Texte(type)}, {"Nom de la Fonction", Texte("Bloc")}},
                      numéros, horloge, registre);
  }
  static Canal& Le(const FonctionRef& bloc, std::int32_t numéro) {
    return *bloc->Canals()->Item(CléDuCanal(numéro));
  }
  void Démarre(const char* driver, const char* réglages) {
    ligne->lignes = {
        {{"Driver de la Carte", Texte(driver)}, {"Configuration ModBus", Texte(réglages)}}};
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
  Carte& carte = *chassis.Cartes()->Add("1");
};

}  // namespace zuma::essai
