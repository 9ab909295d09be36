#pragma once

#include <string>

#include "core/objet.h"
#include "platform/base_de_donnees.h"

namespace zuma {

class Chassis;

/// One named on/off output of the frame.
class SortieLogique : public Objet {
 public:
  explicit SortieLogique(Plateforme& plateforme) : Objet(plateforme, "Sortie logique") {}

  [[nodiscard]] const std::string& Label() const { return Label_; }
  void Label(std::string label) { Label_ = std::move(label); }

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
};

using SortieLogiqueRef = Ref<SortieLogique>;

}  // namespace zuma
