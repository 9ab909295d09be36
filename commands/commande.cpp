#include "commands/commande.h"

#include "core/garde.h"

namespace zuma {

void Commande::ParamètresDepuisBD(const Ref<Recordset>& rstMonRecordSet) {
  Garde(*this, Forme::Procédure, "ParamètresDepuisBD", [&] {
    rstMonRecordSet->MoveFirst();
    NomDeLaCommande_ = VersTexte(LitChamp(*rstMonRecordSet, "Nom de la Commande"));
    throw Echec(Numéro::PasConstruit);
  });
}

void Commande::Lien(Chassis*, const ParamètresRef&, const Ref<ZED_Traduction>&) {}

void Commande::Initialise() {
  Garde(*this, Forme::Méthode, "Initialise", [] { throw Echec(Numéro::PasConstruit); });
}

void Commande::MetàJour() {
  Garde(*this, Forme::Méthode, "MetàJour", [] { throw Echec(Numéro::PasConstruit); });
}

void Commande::DéclencheAU() {
  Garde(*this, Forme::Méthode, "DéclencheAU", [] { throw Echec(Numéro::PasConstruit); });
}

}  // namespace zuma
