#include "logic/sortie_logique.h"

#include <algorithm>
#include <array>

#include "base/colonnes.h"
#include "base/garde.h"
#include "core/liaison.h"
#include "logic/etat_activation.h"
#include "tree/fonction.h"

namespace zuma {
namespace {

// Links that carry their outputs in their own cycle.
constexpr std::array kAvecLeurCycle{ENUM_DRIVER::DrvModBus, ENUM_DRIVER::Drv_UMV4301_Modbus};

}  // namespace

void SortieLogique::ParamètresDepuisBD(const Ref<Recordset>& rstMonRecordSet) {
  Garde(*this, Forme::Procédure, "ParamètresDepuisBD", [&] {
    Recordset& ligne = *rstMonRecordSet;
    ligne.MoveFirst();
    Key(colonnes::Texte(ligne, "Index"));
    NomDeLaSortieLogique_ = colonnes::Texte(ligne, "Nom de la Sortie Logique");
    LitEtatDActivation(ligne, mblnEtatActivation);
    const Valeur* canal = ChercheChamp(ligne, "Canal");
    if (canal != nullptr && !EstNul(*canal)) indexCanal_ = *canal;
  });
}

void SortieLogique::Lien(const Ref<ZED_Securite>&, const ParamètresRef&, const Ref<ZED_Traduction>&,
                         Chassis* MonChassis) {
  Garde(*this, Forme::Méthode, "Lien", [&] {
    liaison::LieLeCanal(*this, "Attention : La sortie logique '", MonChassis, indexCanal_,
                        mobjCanal);
  });
}

void SortieLogique::ValeurCourante(ENUM_ETAT_LOGIQUE valeur) {
  Garde(*this, Forme::Ecriture, "ValeurCourante", [&] {
    if (!mobjCanal) return;
    ValeurCourante_ = valeur;
    EcritLeNiveau();
    const Pointeur<Fonction> bloc = mobjCanal->Parent();
    if (std::ranges::find(kAvecLeurCycle, bloc->Driver_enm()) == kAvecLeurCycle.end()) {
      bloc->MetàJour();
    }
  });
}

void SortieLogique::MetàJour() {
  Garde(*this, Forme::Méthode, "MetàJour", [&] {
    if (mobjCanal) EcritLeNiveau();
  });
}

void SortieLogique::DéclencheAU() {
  Garde(*this, Forme::Méthode, "DéclencheAU", [&] {
    if (!mobjCanal) return;
    ValeurCourante_ = ENUM_ETAT_LOGIQUE::Inactif;
    EcritLeNiveau();
  });
}

void SortieLogique::EcritLeNiveau() {
  const bool actif = ValeurCourante_ == ENUM_ETAT_LOGIQUE::Actif;
  if (!actif && ValeurCourante_ != ENUM_ETAT_LOGIQUE::Inactif) return;
  mobjCanal->ValeurCanal(NiveauLogique(actif, mblnEtatActivation));
}

}  // namespace zuma
