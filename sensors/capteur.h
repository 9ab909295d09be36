#pragma once

#include <string>

#include "core/collections.h"
#include "core/objet.h"
#include "platform/base_de_donnees.h"
#include "sensors/enumerations.h"

namespace zuma {

class Chassis;
using CapteursRef = Ref<Capteurs>;

/// One named measurement in engineering units.
class Capteur : public Objet {
 public:
  explicit Capteur(Plateforme& plateforme) : Objet(plateforme, "Capteur") {}

  [[nodiscard]] const std::string& Label() const { return Label_; }
  void Label(std::string label) { Label_ = std::move(label); }
  [[nodiscard]] bool ModeEdition() const { return false; }
  [[nodiscard]] ENUM_TYPE_CAPTEUR TypeDeCapteur() const { return musrTypeDeCapteur; }
  void TypeDeCapteur(ENUM_TYPE_CAPTEUR type) { musrTypeDeCapteur = type; }
  /// Sensors that this one is made from; Nothing until linked.
  [[nodiscard]] CapteursRef CapteursFils() const { return CapteursFils_; }
  void CapteursFils(CapteursRef fils) { CapteursFils_ = std::move(fils); }
  [[nodiscard]] const std::string& NomDuCapteur() const { return mstrNom; }

  [[nodiscard]] double ValeurCourante() const { return mdblValeurCourante; }

  void ParamètresDepuisBD(const Ref<Recordset>& rstMonRecordSet, double FréquenceRafraichissement);
  void Lien(const Ref<ZED_Securite>& MaSecurite_obj, const ParamètresRef& MesParametres_mobj,
            const Ref<ZED_Traduction>& Traducteur_obj, Chassis* MonChassis);
  void MiseàJourDesLiens() {}
  void Initialise();
  void MetàJour();
  void DéclencheAU() {}
  Valeur Décharge() { return {}; }

  [[nodiscard]] std::string_view NomPourErreur() const override { return mstrNom; }

 private:
  std::string Label_;
  std::string mstrNom;
  ENUM_TYPE_CAPTEUR musrTypeDeCapteur = ENUM_TYPE_CAPTEUR::capteurNormal;
  double mdblValeurCourante = 0;
  CapteursRef CapteursFils_;
};

using CapteurRef = Ref<Capteur>;

}  // namespace zuma
