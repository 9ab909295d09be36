// References of a command to its channel, sensors, logic outputs and parameter.
#include "base/garde.h"
#include "commands/commande.h"
#include "core/chassis.h"
#include "core/liaison.h"
#include "core/recherche.h"

namespace zuma {
namespace {

constexpr std::string_view kSujet = "Attention : La commande '";
// Of a masculine noun too: support knows these messages as they stand.
constexpr std::string_view kFin = "' qui n'a pas été trouvée.";

}  // namespace

void Commande::Lien(Chassis* MonZuma_obj, const ParamètresRef& MesParametres_mobj,
                    const Ref<ZED_Traduction>& Traducteur_obj) {
  Garde(*this, Forme::Méthode, "Lien", [&] {
    traducteur_ = Traducteur_obj;
    chassis_ = MonZuma_obj != nullptr ? MonZuma_obj->Suivi() : std::weak_ptr<Chassis>();
    if (MonZuma_obj != nullptr) LieAuChassis(*MonZuma_obj);
    if (!MesParametres_mobj || indexParamètre_ == 0) return;
    const std::string clé = std::to_string(indexParamètre_);
    const Ref<ZED_Parametre> trouvé = recherche::ParamètreDeClé(*MesParametres_mobj, clé);
    if (trouvé) {
      paramètre_ = trouvé;
    } else {
      Montre(
          liaison::Introuvable(kSujet, *this, "' utilise le paramètre ayant l'index '", clé, kFin));
    }
  });
}

void Commande::LieAuChassis(Chassis& chassis) {
  using recherche::CapteurDeLabel;
  using recherche::SortieLogiqueDeLabel;
  liaison::LieLeCanal(*this, kSujet, &chassis, indexCanal_, mobjCanal);
  LieLeLabel(labelAlimentation_,
             "' utilise comme capteur d'alimentation le capteur ayant le label '",
             CapteurDeLabel(chassis, labelAlimentation_), alimentation_);
  LieLeLabel(labelUtilisation_, "' utilise comme capteur d'utilisation le capteur ayant le label '",
             CapteurDeLabel(chassis, labelUtilisation_), utilisation_);
  LieLeLabel(labelSortie1_, "' utilise comme une 'sortie logique 1' ayant le label '",
             SortieLogiqueDeLabel(chassis, labelSortie1_), sortie1_);
  LieLeLabel(labelSortie2_, "' utilise comme une 'sortie logique 2' ayant le label '",
             SortieLogiqueDeLabel(chassis, labelSortie2_), sortie2_);
  LieLeLabel(labelRecopie_, "' utilise comme capteur de recopie le capteur ayant le label '",
             CapteurDeLabel(chassis, labelRecopie_), CapteurDeRecopie_);
}

template <class T>
void Commande::LieLeLabel(const std::string& label, std::string_view utilise, const Ref<T>& trouvé,
                          Ref<T>& cible) const {
  if (label.empty()) return;
  if (trouvé) {
    cible = trouvé;
  } else {
    Montre(liaison::Introuvable(kSujet, *this, utilise, label, kFin));
  }
}

}  // namespace zuma
