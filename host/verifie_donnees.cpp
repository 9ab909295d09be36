#include "host/verifie_donnees.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <map>
#include <set>
#include <utility>

#include "core/echec.h"
#include "host/ligne_lue.h"
#include "tree/driver_table.h"

namespace zuma::host {
namespace {

using linux_::ColonneDuSchéma;
using linux_::TableDuSchéma;
using linux_::TypeColonne;

using Clés = std::map<std::string_view, std::set<std::int32_t>>;

std::string Texte(const Valeur& valeur) {
  if (EstNul(valeur)) return "Null";
  if (const auto* texte = std::get_if<std::string>(&valeur)) return "\"" + *texte + "\"";
  return VersTexte(valeur);
}

struct Attente {
  TypeColonne type;
  std::string_view texte;
  bool (*convient)(const Valeur&);
};

bool Nombre(const Valeur& v) {
  double nombre = 0;
  const auto* texte = std::get_if<std::string>(&v);
  return texte == nullptr || LitNombre(*texte, nombre);
}

bool Entier(const Valeur& v) {
  if (!Nombre(v)) return false;
  const double nombre = VersDouble(v);
  return nombre == std::trunc(nombre) && nombre >= std::numeric_limits<std::int32_t>::min() &&
         nombre <= std::numeric_limits<std::int32_t>::max();
}

bool Booléen(const Valeur& v) {
  try {
    (void)VersBooléen(v);
    return true;
  } catch (const Echec&) {
    return false;
  }
}

constexpr std::array<Attente, 3> kAttentes{{
    {TypeColonne::Entier, "a whole number of 32 bits", &Entier},
    {TypeColonne::Réel, "a number", &Nombre},
    {TypeColonne::Booléen, "true or false", &Booléen},
}};

// Columns whose text selects something: any other text silently selects nothing.
struct Choix {
  std::string_view table;
  std::string_view colonne;
  bool (*connu)(const Valeur&);
  std::string_view attendu;
};

bool TypeConnu(const Valeur& v) {
  constexpr std::array<std::string_view, 4> kTypes{"Entrée Logique", "Sortie Logique",
                                                   "Entrée Analogique", "Sortie Analogique"};
  return std::ranges::find(kTypes, VersTexte(v)) != kTypes.end();
}

template <ENUM_DRIVER (*kCherche)(const Valeur&) noexcept>
bool DriverConnu(const Valeur& v) {
  return kCherche(v) != ENUM_DRIVER::DrvAucun;
}

constexpr std::array<Choix, 4> kChoix{{
    {"Carte", "Driver de la Carte", &DriverConnu<&DriverDeCarte>, "the text of a board's driver"},
    {"Fonction", "Driver", &DriverConnu<&DriverDeFonction>, "the text of a block's driver"},
    {"Canal", "Driver canal", &DriverConnu<&DriverDeCanal>, "the text of a channel's driver"},
    {"Fonction", "Type de Fonction", &TypeConnu,
     "Entrée Logique, Sortie Logique, Entrée Analogique or Sortie Analogique"},
}};

// Columns that name a row of another table.
struct Renvoi {
  std::string_view table;
  std::string_view colonne;
  std::string_view cible;
};
constexpr std::array<Renvoi, 7> kRenvois{{
    {"Fonction", "Carte", "Carte"},
    {"Canal", "Fonction", "Fonction"},
    {"Capteur", "Canal", "Canal"},
    {"Commande", "Canal", "Canal"},
    {"Entrée Logique", "Canal", "Canal"},
    {"Sortie Logique", "Canal", "Canal"},
    {"WatchDog", "Pulse", "Canal"},
}};

// Columns where an empty text is not taken for Null, by the beginning of their names: the load of
// the row fails there.
struct SansVide {
  std::string_view table;
  std::string_view début;
};
constexpr std::array<SansVide, 13> kSansVide{{
    {"Chassis", "Frequence"},
    {"Carte", "Adresse"},
    {"Fonction", "Mise à Jour"},
    {"Fonction", "Numéro du port CAN"},
    {"Fonction", "Vitesse du CAN"},
    {"Fonction", "Nombre de Canaux"},
    {"Canal", "Numéro du Canal"},
    {"Capteur", ""},
    {"Commande", ""},
    {"Entrée Logique", "Durée"},
    {"Entrée Logique", "Niveau"},
    {"WatchDog", "Adresse"},
    {"WatchDog", "Temps"},
}};

// Of a whole table, what is a text may be empty.
bool VideFaitEchouer(std::string_view table, const ColonneDuSchéma& colonne) {
  return std::ranges::any_of(kSansVide, [&](const SansVide& s) {
    return s.table == table && colonne.nom.starts_with(s.début) &&
           (!s.début.empty() || colonne.type != TypeColonne::Texte);
  });
}

class Vérification {
 public:
  Vérification(BaseDeDonnées& base, Recueil& recueil, LignesVérifiées lesquelles)
      : base_(base), recueil_(recueil), lesquelles_(std::move(lesquelles)) {}

  void Parcourt() {
    for (const TableDuSchéma& table : linux_::TablesDuSchéma()) RelèveClés(table);
    for (const TableDuSchéma& table : linux_::TablesDuSchéma()) {
      VérifieTable(table);
      if (table.liaison) VérifieLesDoublons(table);
    }
  }

 private:
  // The rows of a table; Nothing when it cannot be read, which is told once.
  Ref<Recordset> Ouvre(const TableDuSchéma& table) {
    try {
      return base_.OpenRecordset("SELECT * FROM [" + std::string(table.nom) + "]");
    } catch (const Echec& e) {
      if (!illisibles_.insert(table.nom).second) return {};
      recueil_.Ajoute(
          {.origine = Origine::Donnée, .table = std::string(table.nom), .texte = e.Description()});
    }
    return {};
  }

  void RelèveClés(const TableDuSchéma& table) {
    std::set<std::int32_t>& clés = clés_[table.nom];
    PourChaqueLigne(table, [&](const Recordset& lignes) {
      const Valeur* index = ChercheChamp(lignes, "Index");
      if (index == nullptr || !Entier(*index) || EstNul(*index)) return;
      const std::int32_t clé = VersEntier32(*index);
      if (!clés.insert(clé).second) {
        Signale(table, lignes, "Index", "the key is there twice", Texte(*index), "one row a key");
      }
    });
  }

  template <class Travail>
  void PourChaqueLigne(const TableDuSchéma& table, Travail&& travail) {
    const Ref<Recordset> lignes = Ouvre(table);
    if (!lignes) return;
    for (; !lignes->FinDeTable(); lignes->MoveNext()) travail(*lignes);
  }

  void VérifieTable(const TableDuSchéma& table) {
    bool colonnesVues = false;
    PourChaqueLigne(table, [&](const Recordset& lignes) {
      if (!colonnesVues) VérifieColonnes(table, lignes);
      colonnesVues = true;
      for (const ColonneDuSchéma& colonne : table.colonnes) {
        const Valeur* valeur = ChercheChamp(lignes, colonne.nom);
        if (valeur != nullptr) VérifieValeur(table, lignes, colonne, *valeur);
      }
    });
  }

  // Of an object that is linked twice, the load of a frame takes one row.
  void VérifieLesDoublons(const TableDuSchéma& table) {
    const auto objet = std::ranges::find_if(table.colonnes, [&](const ColonneDuSchéma& colonne) {
      return colonne.nom != "Chassis" && clés_.contains(colonne.nom);
    });
    if (objet == table.colonnes.end()) return;
    std::set<std::pair<std::int32_t, std::int32_t>> vus;
    PourChaqueLigne(table, [&](const Recordset& lignes) {
      const Valeur* chassis = ChercheChamp(lignes, "Chassis");
      const Valeur* lié = ChercheChamp(lignes, objet->nom);
      if (chassis == nullptr || lié == nullptr || EstNul(*chassis) || EstNul(*lié)) return;
      if (!Entier(*chassis) || !Entier(*lié)) return;
      if (vus.emplace(VersEntier32(*chassis), VersEntier32(*lié)).second) return;
      Signale(table, lignes, objet->nom, "linked twice to frame " + VersTexte(*chassis),
              Texte(*lié), "one row for each object of a frame");
    });
  }

  void VérifieColonnes(const TableDuSchéma& table, const Recordset& lignes) {
    for (const ColonneDuSchéma& colonne : table.colonnes) {
      if (ChercheChamp(lignes, colonne.nom) != nullptr) continue;
      recueil_.Ajoute({.origine = Origine::Donnée,
                       .table = std::string(table.nom),
                       .colonne = colonne.nom,
                       .texte = colonne.requise ? "missing column: its objects cannot be loaded"
                                                : "missing column: its default stays in place"});
    }
  }

  void VérifieValeur(const TableDuSchéma& table, const Recordset& lignes,
                     const ColonneDuSchéma& colonne, const Valeur& valeur) {
    if (EstNul(valeur)) {
      if (!colonne.nulAdmis) {
        Signale(table, lignes, colonne.nom, "no value", "Null", "a value");
      }
      return;
    }
    if (EstTexteVide(valeur)) {
      if (VideFaitEchouer(table.nom, colonne)) {
        Signale(table, lignes, colonne.nom, "an empty text: the row is not read any further",
                Texte(valeur), colonne.nulAdmis ? "a value, or Null" : "a value");
      }
      return;
    }
    const auto* attente = std::ranges::find(kAttentes, colonne.type, &Attente::type);
    if (attente != kAttentes.end() && !attente->convient(valeur)) {
      Signale(table, lignes, colonne.nom, "unusable value", Texte(valeur), attente->texte);
      return;
    }
    VérifieChoix(table, lignes, colonne.nom, valeur);
    VérifieRenvoi(table, lignes, colonne.nom, valeur);
  }

  void VérifieChoix(const TableDuSchéma& table, const Recordset& lignes, std::string_view colonne,
                    const Valeur& valeur) {
    for (const Choix& choix : kChoix) {
      if (choix.table != table.nom || choix.colonne != colonne || choix.connu(valeur)) continue;
      Signale(table, lignes, colonne, "unknown text: it selects nothing", Texte(valeur),
              choix.attendu);
    }
  }

  // A link table refers to the tables that its columns are named after.
  void VérifieRenvoi(const TableDuSchéma& table, const Recordset& lignes, std::string_view colonne,
                     const Valeur& valeur) {
    std::string_view cible;
    if (table.liaison && clés_.contains(colonne)) cible = colonne;
    for (const Renvoi& renvoi : kRenvois) {
      if (renvoi.table == table.nom && renvoi.colonne == colonne) cible = renvoi.cible;
    }
    if (cible.empty() || VersDouble(valeur) == 0) return;
    if (clés_[cible].contains(VersEntier32(valeur))) return;
    Signale(table, lignes, colonne, "refers to a row that is not there", Texte(valeur),
            "an Index of table " + std::string(cible));
  }

  void Signale(const TableDuSchéma& table, const Recordset& lignes, std::string_view colonne,
               std::string_view texte, std::string trouvé, std::string_view attendu) {
    if (lesquelles_ && !lesquelles_(table, lignes)) return;
    const Valeur* index = ChercheChamp(lignes, "Index");
    recueil_.Ajoute(
        {.origine = Origine::Donnée,
         .table = std::string(table.nom),
         .ligne = index == nullptr ? LigneLue(table.nom, lignes).Désignation() : Texte(*index),
         .colonne = std::string(colonne),
         .trouvé = std::move(trouvé),
         .attendu = std::string(attendu),
         .texte = std::string(texte)});
  }

  BaseDeDonnées& base_;
  Recueil& recueil_;
  LignesVérifiées lesquelles_;
  Clés clés_;
  std::set<std::string_view> illisibles_;
};

}  // namespace

void VérifieLesDonnées(BaseDeDonnées& base, Recueil& recueil, LignesVérifiées lesquelles) {
  Vérification(base, recueil, std::move(lesquelles)).Parcourt();
}

}  // namespace zuma::host
