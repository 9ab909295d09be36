#include "logic/watchdog.h"

#include "core/garde.h"

namespace zuma {

void Watchdog::ParamètresDepuisBD(const Ref<Recordset>& rstMonRecordSet) {
  Garde(*this, Forme::Procédure, "ParamètresDepuisBD", [&] {
    rstMonRecordSet->MoveFirst();
    mstrNom = VersTexte(LitChamp(*rstMonRecordSet, "Nom du Watchdog"));
    throw Echec(Numéro::PasConstruit);
  });
}

void Watchdog::Lien(const Ref<ZED_Securite>&, const ParamètresRef&, const Ref<ZED_Traduction>&,
                    Chassis*) {}

}  // namespace zuma
