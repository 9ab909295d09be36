#include "sensors/capteur.h"

#include "core/garde.h"

namespace zuma {

void Capteur::ParamètresDepuisBD(const Ref<Recordset>& rstMonRecordSet, double) {
  Garde(*this, Forme::Procédure, "ParamètresDepuisBD", [&] {
    rstMonRecordSet->MoveFirst();
    mstrNom = VersTexte(LitChamp(*rstMonRecordSet, "Nom du Capteur"));
    throw Echec(Numéro::PasConstruit);
  });
}

void Capteur::Lien(const Ref<ZED_Securite>&, const ParamètresRef&, const Ref<ZED_Traduction>&,
                   Chassis*) {}

void Capteur::Initialise() {
  Garde(*this, Forme::Méthode, "Initialise", [] { throw Echec(Numéro::PasConstruit); });
}

void Capteur::MetàJour() {
  Garde(*this, Forme::Méthode, "MetàJour", [] { throw Echec(Numéro::PasConstruit); });
}

}  // namespace zuma
