#pragma once

#include <string>

#include "core/objet.h"
#include "logic/enumerations.h"
#include "platform/base_de_donnees.h"

namespace zuma {

class Chassis;

/// One named on/off output of the frame.
class SortieLogique : public Objet {
 public:
  explicit SortieLogique(Plateforme& plateforme) : Objet(plateforme, "Sortie logique") {}

  [[nodiscard]] const std::string& Label() const { return Label_; }
  void Label(std::string label) { Label_ = std::move(label); }

  [[nodiscard]] ENUM_ETAT_LOGIQUE ValeurCourante() const { return ValeurCourante_; }
  void ValeurCourante(ENUM_ETAT_LOGIQUE valeur) { ValeurCourante_ = valeur; }

  void ParamètresDepuisBD(const Ref<Recordset>& rstMonRecordSet);
  void Lien(const Ref<ZED_Securite>& MaSecurite_obj, const ParamètresRef& MesParametres_mobj,
            const Ref<ZED_Traduction>& Traducteur_obj, Chassis* MonChassis);
  void MiseàJourDesLiens() {}
  void Initialise();
  void DéclencheAU();

  [[nodiscard]] std::string_view NomPourErreur() const override { return NomDeLaSortieLogique_; }

 private:
  std::string Label_;
  std::string NomDeLaSortieLogique_;
  ENUM_ETAT_LOGIQUE ValeurCourante_ = ENUM_ETAT_LOGIQUE::Inactif;
};

using SortieLogiqueRef = Ref<SortieLogique>;

}  // namespace zuma
