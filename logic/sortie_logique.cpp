#include "logic/sortie_logique.h"

#include "core/garde.h"

namespace zuma {

void SortieLogique::ParamètresDepuisBD(const Ref<Recordset>& rstMonRecordSet) {
  Garde(*this, Forme::Procédure, "ParamètresDepuisBD", [&] {
    rstMonRecordSet->MoveFirst();
    NomDeLaSortieLogique_ = VersTexte(LitChamp(*rstMonRecordSet, "Nom de la Sortie Logique"));
    throw Echec(Numéro::PasConstruit);
  });
}

void SortieLogique::Lien(const Ref<ZED_Securite>&, const ParamètresRef&, const Ref<ZED_Traduction>&,
                         Chassis*) {}

void SortieLogique::Initialise() {
  Garde(*this, Forme::Méthode, "Initialise", [] { throw Echec(Numéro::PasConstruit); });
}

void SortieLogique::DéclencheAU() {
  Garde(*this, Forme::Méthode, "DéclencheAU", [] { throw Echec(Numéro::PasConstruit); });
}

}  // namespace zuma
