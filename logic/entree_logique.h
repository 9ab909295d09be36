#pragma once

#include <string>

#include "core/objet.h"
#include "logic/enumerations.h"
#include "platform/base_de_donnees.h"

namespace zuma {

class Chassis;

/// One named on/off input of the frame.
class EntréeLogique : public Objet {
 public:
  explicit EntréeLogique(Plateforme& plateforme) : Objet(plateforme, "Entrée logique") {}

  [[nodiscard]] const std::string& Label() const { return Label_; }
  void Label(std::string label) { Label_ = std::move(label); }

  [[nodiscard]] ENUM_ETAT_LOGIQUE ValeurCourante() const { return musrValeurCourante; }

  void ParamètresDepuisBD(const Ref<Recordset>& rstMonRecordSet);
  void Lien(const Ref<ZED_Securite>& MaSecurite_obj, const ParamètresRef& MesParametres_mobj,
            const Ref<ZED_Traduction>& Traducteur_obj, Chassis* MonChassis);
  void MiseàJourDesLiens() {}
  void Initialise();
  void MetàJour();
  void DéclencheAU() {}

  [[nodiscard]] std::string_view NomPourErreur() const override { return NomDeEntréeLogique_; }

 private:
  std::string Label_;
  std::string NomDeEntréeLogique_;
  ENUM_ETAT_LOGIQUE musrValeurCourante = ENUM_ETAT_LOGIQUE::Inactif;
};

using EntréeLogiqueRef = Ref<EntréeLogique>;

}  // namespace zuma
