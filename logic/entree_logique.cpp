#include "logic/entree_logique.h"

#include "core/garde.h"

namespace zuma {

void EntréeLogique::ParamètresDepuisBD(const Ref<Recordset>& rstMonRecordSet) {
  Garde(*this, Forme::Procédure, "ParamètresDepuisBD", [&] {
    rstMonRecordSet->MoveFirst();
    NomDeEntréeLogique_ = VersTexte(LitChamp(*rstMonRecordSet, "Nom de l'Entrée Logique"));
    throw Echec(Numéro::PasConstruit);
  });
}

void EntréeLogique::Lien(const Ref<ZED_Securite>&, const ParamètresRef&, const Ref<ZED_Traduction>&,
                         Chassis*) {}

void EntréeLogique::Initialise() {
  Garde(*this, Forme::Méthode, "Initialise", [] { throw Echec(Numéro::PasConstruit); });
}

void EntréeLogique::MetàJour() {
  Garde(*this, Forme::Méthode, "MetàJour", [] { throw Echec(Numéro::PasConstruit); });
}

}  // namespace zuma
