#include "host/depart.h"

#include <array>
#include <cstdio>
#include <set>
#include <string_view>
#include <utility>

#include "host/problemes.h"
#include "host/verifie_donnees.h"

namespace zuma::host {
namespace {

std::string Lignes(const std::vector<Problème>& problèmes) {
  std::string texte;
  for (const Problème& problème : problèmes) texte += Ligne(problème) + "\n";
  return texte;
}

constexpr std::array<std::string_view, 2> kEtats{
    "Nothing was started and no output was touched.",
    "It was started, stopped at once, and its outputs were put to rest.",
};

std::string Refus(std::int32_t chassis, Etape étape, const std::vector<Problème>& problèmes) {
  const std::string numéro = std::to_string(chassis);
  return "frame " + numéro + " is not run: its load, link or start left " +
         std::to_string(problèmes.size()) + " entries.\n" + Lignes(problèmes) +
         std::string(kEtats[static_cast<std::size_t>(étape)]) +
         "\nMend what is listed (zuma check FILE --frame " + numéro +
         " tells more), then start again. A device that does not answer keeps its frame from "
         "starting too: connect it, or take it out of the configuration. --start-anyway starts "
         "without what failed, limits and stops included; outputs stay at rest until the stop is "
         "acknowledged.";
}

// Rows of a frame: table and "Index".
using Rangées = std::set<std::pair<std::string_view, std::string>>;

template <class Objets>
void Relève(std::string_view table, const Objets& objets, Rangées& rangées) {
  for (const auto& objet : objets) rangées.emplace(table, objet->Key());
}

Rangées RangéesDe(Chassis& chassis, std::int32_t index) {
  Rangées rangées{{"Chassis", std::to_string(index)}, {"WatchDog", chassis.Watchdog()->Key()}};
  Relève("Carte", *chassis.Cartes(), rangées);
  for (const CarteRef& carte : *chassis.Cartes()) {
    Relève("Fonction", *carte->Fonctions(), rangées);
    for (const FonctionRef& bloc : *carte->Fonctions()) Relève("Canal", *bloc->Canals(), rangées);
  }
  Relève("Capteur", *chassis.Capteurs(), rangées);
  Relève("Commande", *chassis.Commandes(), rangées);
  Relève("Entrée Logique", *chassis.EntréesLogiques(), rangées);
  Relève("Sortie Logique", *chassis.SortiesLogiques(), rangées);
  return rangées;
}

}  // namespace

DépartRefusé::DépartRefusé(std::int32_t chassis, Etape étape, std::vector<Problème> problèmes)
    : std::runtime_error(Refus(chassis, étape, problèmes)),
      chassis_(chassis),
      problèmes_(std::move(problèmes)) {}

std::string DépartRefusé::Liste() const {
  return Lignes(problèmes_);
}

MalgréTout SelonLOption(bool malgréTout) {
  if (!malgréTout) return {};
  return [](const DépartRefusé& refus) {
    std::fprintf(stderr,
                 "zuma: frame %d is started although its load, link or start left entries; its "
                 "outputs are at rest until the stop is acknowledged:\n%s",
                 refus.LeChassis(), refus.Liste().c_str());
    return true;
  };
}

std::vector<Problème> ProblèmesDesDonnées(BaseDeDonnées& base, Chassis& chassis,
                                          std::int32_t index) {
  const Rangées rangées = RangéesDe(chassis, index);
  Recueil recueil;
  VérifieLesDonnées(
      base, *chassis.LaPlateforme().drivers, recueil,
      [&](const linux_::TableDuSchéma& table, const Recordset& ligne) {
        const Valeur* clé = ChampNommé(ligne, table.liaison ? "Chassis" : "Index");
        if (clé == nullptr || EstNul(*clé)) return false;
        return rangées.contains({table.liaison ? "Chassis" : table.nom, VersTexte(*clé)});
      });
  return recueil.Problèmes();
}

}  // namespace zuma::host
