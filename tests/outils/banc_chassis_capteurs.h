#pragma once

#include <gtest/gtest.h>

#include "outils/banc_capteur.h"

namespace zuma::essai {

/// A frame with sensors "F1", "F2" and again "F2", channel "7" and input "Porte".
class DansUnChassis : public testing::Test, protected BancCapteur {
 protected:
  DansUnChassis() {
    chassis.ChargeErreur(registre);
    chassis.Cartes()->Add("1")->Fonctions()->Add("1")->Canals()->Add("7");
    for (const char* label : {"F1", "F2", "F2"}) {
      const std::string clé = std::to_string(chassis.Capteurs()->Count() + 1);
      const auto capteur = Lu(LigneDeCapteur());
      capteur->Label(label);
      capteur->Key(clé);
      chassis.Capteurs()->Add(clé, capteur);
    }
    chassis.EntréesLogiques()->Add("1")->Label("Porte");
  }
  void Lie(Capteur& capteur) { capteur.Lien(sécurité, paramètres, traducteur, &chassis); }
  Ref<Capteur> Lié(const Ligne& colonnes) {
    auto capteur = Lu(LigneDeCapteur(colonnes));
    Lie(*capteur);
    return capteur;
  }

  Chassis chassis{plateforme};
};

}  // namespace zuma::essai
