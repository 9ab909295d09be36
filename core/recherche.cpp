#include "core/recherche.h"

#include "core/chassis.h"

namespace zuma::recherche {
namespace {

template <class Objets>
auto DeLabel(const Objets& objets, std::string_view label) {
  for (const auto& objet : objets) {
    if (objet->Label() == label) return objet;
  }
  return std::remove_cvref_t<decltype(*objets.begin())>();
}

}  // namespace

CanalRef CanalDeClé(Chassis& chassis, std::string_view clé) {
  for (const CarteRef& carte : *chassis.Cartes()) {
    for (const FonctionRef& fonction : carte->LesFonctions()) {
      for (const CanalRef& canal : *fonction->Canals()) {
        if (canal->Key() == clé) return canal;
      }
    }
  }
  return {};
}

CapteurRef CapteurDeLabel(Chassis& chassis, std::string_view label) {
  return DeLabel(*chassis.Capteurs(), label);
}

EntréeLogiqueRef EntréeLogiqueDeLabel(Chassis& chassis, std::string_view label) {
  return DeLabel(*chassis.EntréesLogiques(), label);
}

SortieLogiqueRef SortieLogiqueDeLabel(Chassis& chassis, std::string_view label) {
  return DeLabel(*chassis.SortiesLogiques(), label);
}

Ref<ZED_Parametre> ParamètreDeClé(const ParamètresPartagés& paramètres, std::string_view clé) {
  for (const Ref<ZED_Parametre>& paramètre : paramètres) {
    if (paramètre && paramètre->Key() == clé) return paramètre;
  }
  return {};
}

}  // namespace zuma::recherche
