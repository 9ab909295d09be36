#include "host/verbes/controles_croises.h"

#include <array>
#include <map>
#include <utility>

namespace zuma::host {
namespace {

using enum Gravité;

void ExigeUnCanalDErreur(const Relevé& relevé, Constats& constats) {
  for (const auto& [clé, bloc] : relevé.blocs) {
    if (bloc.driver != "DrvModBus" || bloc.canalDErreur) continue;
    constats.Dit("Fonction", std::to_string(clé),
                 {.colonne = "Index",
                  .texte = "a Modbus block without an error channel: a slave that is silent is not "
                           "told, and one register less is exchanged",
                  .trouvé = "no channel -1 in table Canal",
                  .attendu = "a channel with Numéro du Canal -1"});
  }
}

// Where the pulse leaves this board is not where its first connector was wired to.
void ContrôleLesImpulsions(const Relevé& relevé, Constats& constats) {
  for (const Relevé::Pilote& pilote : relevé.pilotes) {
    if (pilote.table != "WatchDog") continue;
    const Relevé::Bloc* bloc = relevé.BlocDuCanal(pilote.canal);
    if (bloc == nullptr || bloc->driver != "DrvPCL731_PCLD7225") continue;
    constats.Dit("WatchDog", std::to_string(pilote.clé),
                 {.colonne = pilote.colonne,
                  .gravité = Avertissement,
                  .texte = "a pulse on a PCL 731 comes from its second connector: a relay on the "
                           "first hears none and keeps the machine cut off",
                  .trouvé = std::to_string(pilote.canal),
                  .attendu = "a channel of another board, or the wire on connector 2"});
  }
}

// Two objects of one frame: the last one that writes in a pass wins. On two frames it is allowed.
void ExigeUnSeulPilote(const Relevé& relevé, Constats& constats) {
  std::multimap<std::pair<std::string_view, std::int32_t>, std::int32_t> chassis;
  for (const Relevé::Lien& lien : relevé.liens) {
    chassis.emplace(std::pair(lien.objet, lien.clé), lien.chassis);
  }
  std::map<std::pair<std::int32_t, std::int32_t>, const Relevé::Pilote*> pris;
  for (const Relevé::Pilote& pilote : relevé.pilotes) {
    const auto [début, fin] = chassis.equal_range({pilote.table, pilote.clé});
    for (auto lien = début; lien != fin; ++lien) {
      const auto [place, libre] = pris.try_emplace({lien->second, pilote.canal}, &pilote);
      const Relevé::Pilote& premier = *place->second;
      if (libre || (premier.table == pilote.table && premier.clé == pilote.clé)) continue;
      constats.Dit(pilote.table, std::to_string(pilote.clé),
                   {.colonne = pilote.colonne,
                    .texte = "another object of the frame writes to the same channel",
                    .trouvé = std::to_string(pilote.canal) + ", also of table " +
                              std::string(premier.table) + ", row " + std::to_string(premier.clé),
                    .attendu = "a channel of its own"});
    }
  }
}

}  // namespace

void ContrôleLesRenvois(const Relevé& relevé, Constats& constats) {
  constexpr std::array kContrôles{&ExigeUnCanalDErreur, &ContrôleLesImpulsions, &ExigeUnSeulPilote};
  for (const auto contrôle : kContrôles) contrôle(relevé, constats);
}

}  // namespace zuma::host
