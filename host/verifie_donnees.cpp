#include "host/verifie_donnees.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <map>
#include <optional>
#include <set>
#include <unordered_set>
#include <utility>

#include "base/echec.h"
#include "base/somme_de_controle.h"
#include "host/ligne_lue.h"
#include "platform/linux/utf8.h"
#include "tree/registre_des_drivers.h"

namespace zuma::host {
namespace {

using linux_::ColonneDuSchéma;
using linux_::TableDuSchéma;
using linux_::TypeColonne;

using Clés = std::map<std::string_view, std::unordered_set<std::int32_t>>;

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
  bool (*connu)(const RegistreDesDrivers& drivers, const Valeur&);
  std::string_view attendu;
};

bool TypeConnu(const RegistreDesDrivers& /*drivers*/, const Valeur& v) {
  constexpr std::array<std::string_view, 4> kTypes{"Entrée Logique", "Sortie Logique",
                                                   "Entrée Analogique", "Sortie Analogique"};
  return std::ranges::find(kTypes, VersTexte(v)) != kTypes.end();
}

template <auto kCherche>
bool DriverConnu(const RegistreDesDrivers& drivers, const Valeur& v) {
  return &(drivers.*kCherche)(v) != &kSansDriver;
}

constexpr std::array<Choix, 4> kChoix{{
    {"Carte", "Driver de la Carte", &DriverConnu<&RegistreDesDrivers::DeCarte>,
     "the text of a board's driver"},
    {"Fonction", "Driver", &DriverConnu<&RegistreDesDrivers::DeFonction>,
     "the text of a block's driver"},
    {"Canal", "Driver canal", &DriverConnu<&RegistreDesDrivers::DeCanal>,
     "the text of a channel's driver"},
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

// What is looked at in one column of a table; found once for all its rows.
struct ColonneLue {
  const ColonneDuSchéma* colonne;
  std::size_t rang;  // among the fields of a row
  const Attente* attente;
  const Choix* choix;
  std::string_view cible;                        // table that it refers to
  const std::unordered_set<std::int32_t>* clés;  // of that table; none where it refers to nothing
};

// The first of `liste` that holds for `critère`, or none.
template <class Liste, class Critère>
auto Premier(const Liste& liste, Critère&& critère) {
  const auto trouvé = std::ranges::find_if(liste, critère);
  return trouvé == liste.end() ? nullptr : &*trouvé;
}

class Vérification {
 public:
  Vérification(BaseDeDonnées& base, const RegistreDesDrivers& drivers, Recueil& recueil,
               LignesVérifiées lesquelles, Avancement* avancement)
      : base_(base),
        drivers_(drivers),
        recueil_(recueil),
        lesquelles_(std::move(lesquelles)),
        avancement_(avancement) {}

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
    auto& clés = clés_[table.nom];
    PourChaqueLigne(table, [&](const Recordset& lignes) {
      const Valeur* index = ChampNommé(lignes, "Index");
      if (index == nullptr || EstNul(*index) || !Entier(*index)) return;
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
    for (double rang = 0; !lignes->FinDeTable(); lignes->MoveNext(), ++rang) {
      travail(*lignes);
      if (avancement_ != nullptr) avancement_->Montre(table.nom, rang / lignes->RecordCount());
    }
  }

  void VérifieTable(const TableDuSchéma& table) {
    std::vector<ColonneLue> colonnes;
    PourChaqueLigne(table, [&](const Recordset& lignes) {
      if (colonnes.empty()) colonnes = Colonnes(table, lignes);
      const auto champs = lignes.Fields();
      for (const ColonneLue& colonne : colonnes) {
        VérifieValeur(table, lignes, colonne, champs[colonne.rang].Value);
      }
      if (!SommeTient(lignes)) {
        Signale(table, lignes, kColonneSomme, "the row was changed outside the system, or damaged",
                Texte(LitChamp(lignes, kColonneSomme)), SommeDeContrôle(champs));
      }
    });
  }

  // Of an object that is linked twice, the load of a frame takes one row.
  void VérifieLesDoublons(const TableDuSchéma& table) {
    const auto objet = std::ranges::find_if(table.colonnes, [&](const ColonneDuSchéma& colonne) {
      return colonne.nom != "Chassis" && clés_.contains(colonne.nom);
    });
    if (objet == table.colonnes.end()) return;
    std::unordered_set<std::uint64_t> vus;  // both keys in one number
    PourChaqueLigne(table, [&](const Recordset& lignes) {
      const Valeur* chassis = ChampNommé(lignes, "Chassis");
      const Valeur* lié = ChampNommé(lignes, objet->nom);
      if (chassis == nullptr || lié == nullptr || EstNul(*chassis) || EstNul(*lié)) return;
      if (!Entier(*chassis) || !Entier(*lié)) return;
      const auto haut = static_cast<std::uint32_t>(VersEntier32(*chassis));
      const auto bas = static_cast<std::uint32_t>(VersEntier32(*lié));
      if (vus.insert(std::uint64_t{haut} << 32 | bas).second) return;
      Signale(table, lignes, objet->nom, "linked twice to frame " + VersTexte(*chassis),
              Texte(*lié), "one row for each object of a frame");
    });
  }

  // The columns that are there; those that are not and have to be are told.
  std::vector<ColonneLue> Colonnes(const TableDuSchéma& table, const Recordset& lignes) {
    const auto champs = lignes.Fields();
    std::vector<ColonneLue> lues;
    for (const ColonneDuSchéma& colonne : table.colonnes) {
      const Valeur* valeur = Lue(lignes, colonne);
      if (valeur == nullptr) {
        if (!colonne.requise) continue;  // an older database: its default stays in place
        recueil_.Ajoute({.origine = Origine::Donnée,
                         .table = std::string(table.nom),
                         .colonne = colonne.nom,
                         .texte = "missing column: its objects cannot be loaded"});
        continue;
      }
      const auto champ =
          std::ranges::find_if(champs, [&](const Champ& c) { return &c.Value == valeur; });
      const auto rang = static_cast<std::size_t>(champ - champs.begin());
      const auto deLaColonne = [&](const auto& ligne) {
        return ligne.table == table.nom && ligne.colonne == colonne.nom;
      };
      // A link table refers to the tables that its columns are named after.
      const Renvoi* renvoi = Premier(kRenvois, deLaColonne);
      const std::string_view cible =
          renvoi != nullptr ? renvoi->cible : std::string_view(colonne.nom);
      const bool renvoie = renvoi != nullptr || (table.liaison && clés_.contains(cible));
      lues.push_back({&colonne, rang,
                      Premier(kAttentes, [&](const Attente& a) { return a.type == colonne.type; }),
                      Premier(kChoix, deLaColonne), cible, renvoie ? &clés_.at(cible) : nullptr});
    }
    return lues;
  }

  void VérifieValeur(const TableDuSchéma& table, const Recordset& lignes, const ColonneLue& lue,
                     const Valeur& valeur) {
    const std::string_view nom = lue.colonne->nom;
    if (EstNul(valeur)) {
      if (!lue.colonne->nulAdmis) Signale(table, lignes, nom, "no value", "Null", "a value");
      return;
    }
    if (EstTexteVide(valeur)) {
      if (VideFaitEchouer(table.nom, *lue.colonne)) {
        Signale(table, lignes, nom, "an empty text: the row is not read any further", Texte(valeur),
                lue.colonne->nulAdmis ? "a value, or Null" : "a value");
      }
      return;
    }
    const auto* texte = std::get_if<std::string>(&valeur);
    if (texte != nullptr && !linux_::EstUTF8(*texte)) {
      Signale(table, lignes, nom, "bytes that are no text", Texte(valeur), "UTF-8");
      return;
    }
    if (lue.attente != nullptr && !lue.attente->convient(valeur)) {
      Signale(table, lignes, nom, "unusable value", Texte(valeur), lue.attente->texte);
      return;
    }
    if (lue.choix != nullptr && !lue.choix->connu(drivers_, valeur)) {
      Signale(table, lignes, nom, "unknown text: it selects nothing", Texte(valeur),
              lue.choix->attendu);
    }
    if (lue.clés != nullptr && VersDouble(valeur) != 0 &&
        !lue.clés->contains(VersEntier32(valeur))) {
      Signale(table, lignes, nom, "refers to a row that is not there", Texte(valeur),
              "an Index of table " + std::string(lue.cible));
    }
  }

  void Signale(const TableDuSchéma& table, const Recordset& lignes, std::string_view colonne,
               std::string_view texte, std::string trouvé, std::string_view attendu) {
    if (lesquelles_ && !lesquelles_(table, lignes)) return;
    const Valeur* index = ChampNommé(lignes, "Index");
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
  const RegistreDesDrivers& drivers_;
  Recueil& recueil_;
  LignesVérifiées lesquelles_;
  Avancement* avancement_;
  Clés clés_;
  std::set<std::string_view> illisibles_;
};

}  // namespace

void VérifieLesDonnées(BaseDeDonnées& base, const RegistreDesDrivers& drivers, Recueil& recueil,
                       LignesVérifiées lesquelles, Avancement* avancement) {
  Vérification(base, drivers, recueil, std::move(lesquelles), avancement).Parcourt();
}

}  // namespace zuma::host
