#include "sensors/parametres_eprouvette.h"

#include <algorithm>

namespace zuma {

// The factor C scales the stress at each refresh and takes no part in the section; offset and
// selection are read at each refresh too: no handler.
const std::array<LigneParamètre, kNombreParamètres> kLignesParamètres{{
    {"Méthode de calcul de surface", "Méthode de calcul de surface",
     "MethodeCalculDeSurface_mobj_Change"},
    {"L", "L", "L_mobj_Change"},
    {"m", "M", "M_mobj_Change"},
    {"Unité de masse", "Unité de masse", "UniteMasse_mobj_Change"},
    {"Masse volumique", "Masse volumique", "MasseVolumique_mobj_Change"},
    {"Unité de masse volumique", "Unité de masse volumique", "UniteMasseVolumique_mobj_Change"},
    {"A", "A", "A_mobj_Change"},
    {"B", "B", "B_mobj_Change"},
    {"Facteur de convertion", "C", ""},
    {"D", "D", "D_mobj_Change"},
    {"E", "E", "E_mobj_Change"},
    {"H", "H", "H_mobj_Change"},
    {"N", "N", "N_mobj_Change"},
    {"S", "S", "S_mobj_Change"},
    {"Distance entre appuis sup", "Distance entre appuis sup", "Petit_L_mobj_Change"},
    {"Distance entre appuis inf", "Distance entre appuis inf", "Grand_L_mobj_Change"},
    {"Unite", "Unité", "UniteLongueur_mobj_Change"},
    {"Forme eprouvette", "Forme eprouvette", "FormeEprouvette_mobj_Change"},
    {"Type de contrainte", "Type de contrainte", "TypeDeCalcul_mobj_Change"},
    {"Offset", "Offset", ""},
    {"Parametre de sélection", "Parametre de sélection", ""},
}};

ParamètresEprouvette::~ParamètresEprouvette() {
  Délie();
}

void ParamètresEprouvette::Délie() noexcept {
  for (Lien& lien : liens_) {
    lien.Désabonne();
    lien.objet = nullptr;
  }
}

void ParamètresEprouvette::Lien::Désabonne() noexcept {
  if (abonné && objet) objet->Désabonne(abonnement);
  abonné = false;
}

void ParamètresEprouvette::Lie(const ParamètresPartagés& partagés, const Absent& absent,
                               const Change& change) {
  for (std::size_t rang = 0; rang < liens_.size(); ++rang) {
    Lien& lien = liens_[rang];
    const LigneParamètre& ligne = kLignesParamètres[rang];
    if (lien.index == 0) continue;
    const std::string nom = std::to_string(lien.index);
    const auto trouvé = std::ranges::find_if(partagés, [&](const Ref<ZED_Parametre>& parametre) {
      return parametre && parametre->NomParamètre() == nom;
    });
    if (trouvé == partagés.end()) {
      absent(ligne, lien.index);
      continue;
    }
    lien.Désabonne();
    lien.objet = *trouvé;
    if (ligne.gestionnaire.empty()) continue;
    lien.abonnement = lien.objet->Abonne([change, &ligne] { change(ligne); });
    lien.abonné = true;
  }
}

std::string_view ParamètresEprouvette::Texte(ParamEprouvette rang) const {
  return (*this)[rang]->LitValeur(tampon_);
}

double ParamètresEprouvette::Nombre(ParamEprouvette rang) const {
  double nombre = 0;
  const std::string_view texte = Texte(rang);
  return LitNombre(texte, nombre) ? nombre : VersDouble(Valeur(std::string(texte)));
}

std::optional<double> ParamètresEprouvette::NombreSûr(ParamEprouvette rang) const {
  double nombre = 0;
  if (!(*this)[rang] || !LitNombre(Texte(rang), nombre)) return {};
  return nombre;
}

}  // namespace zuma
