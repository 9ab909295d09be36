#include "core/recherche.h"

#include <algorithm>

#include "core/chassis.h"

namespace zuma::recherche {
namespace {

template <class Objets, class Fais>
void PourChaqueCanal(Objets& cartes, Fais&& fais) {
  for (const CarteRef& carte : cartes) {
    for (const FonctionRef& fonction : carte->LesFonctions()) {
      for (const CanalRef& canal : *fonction->Canals()) fais(canal);
    }
  }
}

// The object of a table that still bears that name; the first one of a walk otherwise. A name that
// is in no table is nobody's.
template <class T, class Nom, class Parcours>
Ref<T> Trouve(const Annuaire* annuaire, Annuaire::Table<T> Annuaire::* table, std::string_view nom,
              Nom&& nomDe, Parcours&& parcours) {
  if (annuaire != nullptr) {
    const auto place = (annuaire->*table).find(std::string(nom));
    if (place == (annuaire->*table).end()) return {};
    if (nomDe(*place->second) == nom) return place->second;
  }
  Ref<T> trouvé;
  parcours([&](const Ref<T>& objet) {
    if (!trouvé && nomDe(*objet) == nom) trouvé = objet;
  });
  return trouvé;
}

template <class T, class Objets>
Ref<T> DeLabel(const Annuaire* annuaire, Annuaire::Table<T> Annuaire::* table, const Objets& objets,
               std::string_view label) {
  return Trouve(
      annuaire, table, label, [](const T& objet) { return std::string_view(objet.Label()); },
      [&](auto&& fais) { std::ranges::for_each(objets, fais); });
}

}  // namespace

Annuaire::Annuaire(Chassis& chassis) : chassis_(chassis) {
  PourChaqueCanal(*chassis.Cartes(),
                  [&](const CanalRef& canal) { canaux.emplace(canal->Key(), canal); });
  const auto range = [](auto& table, const auto& objets) {
    for (const auto& objet : objets) table.emplace(objet->Label(), objet);
  };
  range(capteurs, *chassis.Capteurs());
  range(entrées, *chassis.EntréesLogiques());
  range(sorties, *chassis.SortiesLogiques());
  chassis.annuaire_ = this;
}

Annuaire::~Annuaire() {
  chassis_.annuaire_ = nullptr;
}

CanalRef CanalDeClé(Chassis& chassis, std::string_view clé) {
  return Trouve(
      chassis.LAnnuaire(), &Annuaire::canaux, clé,
      [](const Canal& canal) { return std::string_view(canal.Key()); },
      [&](auto&& fais) { PourChaqueCanal(*chassis.Cartes(), fais); });
}

CapteurRef CapteurDeLabel(Chassis& chassis, std::string_view label) {
  return DeLabel(chassis.LAnnuaire(), &Annuaire::capteurs, *chassis.Capteurs(), label);
}

EntréeLogiqueRef EntréeLogiqueDeLabel(Chassis& chassis, std::string_view label) {
  return DeLabel(chassis.LAnnuaire(), &Annuaire::entrées, *chassis.EntréesLogiques(), label);
}

SortieLogiqueRef SortieLogiqueDeLabel(Chassis& chassis, std::string_view label) {
  return DeLabel(chassis.LAnnuaire(), &Annuaire::sorties, *chassis.SortiesLogiques(), label);
}

Ref<ZED_Parametre> ParamètreDeClé(const ParamètresPartagés& paramètres, std::string_view clé) {
  for (const Ref<ZED_Parametre>& paramètre : paramètres) {
    if (paramètre && paramètre->Key() == clé) return paramètre;
  }
  return {};
}

}  // namespace zuma::recherche
