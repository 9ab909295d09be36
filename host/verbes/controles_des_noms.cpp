#include "host/verbes/controles_des_noms.h"

#include <algorithm>
#include <array>

namespace zuma::host {
namespace {

struct NomDeTable {
  std::string_view table;
  std::string_view colonne;
  std::string_view parent;  // empty: the whole table
};
constexpr std::array<NomDeTable, 13> kNoms{{
    {"Chassis", "Nom du Chassis", ""},
    {"Carte", "Nom de la Carte", ""},
    {"Fonction", "Nom de la Fonction", "Carte"},
    {"Canal", "Nom du Canal", "Fonction"},
    {"Capteur", "Nom du Capteur", ""},
    {"Commande", "Nom de la Commande", ""},
    {"Entrée Logique", "Nom de l'Entrée Logique", ""},
    {"Sortie Logique", "Nom de la Sortie Logique", ""},
    {"WatchDog", "Nom du Watchdog", ""},
    {"Liaison Chassis / Capteur", "Label", "Chassis"},
    {"Liaison Chassis / Commande", "Label", "Chassis"},
    {"Liaison Chassis / Entrée Logique", "Label", "Chassis"},
    {"Liaison Chassis / Sortie Logique", "Label", "Chassis"},
}};

// The capitals of Latin-1 in UTF-8 stand 0x20 before their small letters; one of them is a sign.
bool EstCapitaleAccentuée(char avant, char c) {
  const auto octet = static_cast<unsigned char>(c);
  return avant == '\xC3' && octet >= 0x80 && octet <= 0x9E && octet != 0x97;
}

char EnPetit(char avant, char c) {
  const bool capitale = (c >= 'A' && c <= 'Z') || EstCapitaleAccentuée(avant, c);
  return capitale ? static_cast<char>(c + ' ') : c;
}

}  // namespace

std::string NomRapproché(std::string_view nom) {
  std::string proche;
  char avant = ' ';
  for (const char c : SansBlancs(nom)) {
    if (c != ' ' || avant != ' ') proche += EnPetit(avant, c);
    avant = c;
  }
  return proche;
}

void ContrôleDesNoms::Prend(const LigneLue& ligne, Constats& constats) {
  const auto* nom = std::ranges::find(kNoms, ligne.Table(), &NomDeTable::table);
  if (nom == kNoms.end()) return;
  std::string exact = ligne.Texte(nom->colonne);
  if (exact.empty()) return;
  const std::int32_t parent = nom->parent.empty() ? 0 : ligne.Renvoi(nom->parent);
  const auto place =
      vus_.try_emplace({nom->table, parent, NomRapproché(exact)}, Nom{exact, ligne.Désignation()})
          .first;
  const Nom& premier = place->second;
  if (premier.exact == exact) return;
  constats.Dit(ligne, {.colonne = nom->colonne,
                       .gravité = Gravité::Avertissement,
                       .texte = "differs from another name by blanks or capitals alone",
                       .trouvé = Cite(exact),
                       .attendu = Cite(premier.exact) + " as in row " + premier.ligne +
                                  ", or another name altogether"});
}

void ContrôleLesColonnes(std::string_view table, const std::vector<std::string_view>& manquantes,
                         const Recordset& ligne, Constats& constats) {
  std::map<std::string, std::string_view> présentes;
  for (const Champ& champ : ligne.Fields())
    présentes.emplace(NomRapproché(champ.Name), champ.Name.Texte());
  for (const std::string_view colonne : manquantes) {
    const auto autre = présentes.find(NomRapproché(colonne));
    if (autre == présentes.end()) continue;
    constats.Dit(table, {},
                 {.colonne = colonne,
                  .texte = "the column is written otherwise",
                  .trouvé = Cite(autre->second),
                  .attendu = Cite(colonne)});
  }
}

}  // namespace zuma::host
