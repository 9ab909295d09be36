#include "platform/linux/schema.h"

#include <algorithm>
#include <array>

#include "platform/linux/connexion_sqlite.h"

namespace zuma::linux_ {
namespace {

constexpr auto kTexte = TypeColonne::Texte;
constexpr auto kEntier = TypeColonne::Entier;
constexpr auto kRéel = TypeColonne::Réel;
constexpr auto kBooléen = TypeColonne::Booléen;

// A column, or a row of numbered ones: '#' stands for the number.
struct Modèle {
  std::string_view nom;
  TypeColonne type;
  bool requise;
  bool nulAdmis;
  std::string_view défaut;
  int nombre = 0;
};

// Read by name, and a Null fails.
constexpr Modèle Requise(std::string_view nom, TypeColonne type, std::string_view défaut = {}) {
  return {nom, type, true, false, défaut};
}
// Read by name, a Null is passed over.
constexpr Modèle RequiseOuNulle(std::string_view nom, TypeColonne type) {
  return {nom, type, true, true, {}};
}
// Used when it is there, but a Null fails.
constexpr Modèle SansNul(std::string_view nom, TypeColonne type, std::string_view défaut) {
  return {nom, type, false, false, défaut};
}
constexpr Modèle Facultative(std::string_view nom, TypeColonne type) {
  return {nom, type, false, true, {}};
}
// Neighbours with the same number alternate: 1 of each, then 2 of each.
constexpr Modèle Fois(int nombre, Modèle modèle) {
  modèle.nombre = nombre;
  return modèle;
}

constexpr Modèle kIndex = Requise("Index", kEntier);
constexpr int kPoints = 20;
constexpr int kManuelles = 6;
constexpr int kFils = 10;

constexpr std::array kChassis{
    kIndex,
    Requise("Nom du Chassis", kTexte, "''"),
    Facultative("Frequence rafraichissement capteurs", kRéel),
    Facultative("Frequence rafraichissement entrées logiques", kRéel),
    Facultative("Départ de cycle d'essai", kTexte),
    Facultative("Départ de cycle de réarmement", kTexte),
    Facultative("Départ de cyle manuel", kTexte),
    Facultative("Entrée Auto/Manu", kTexte),
    Facultative("Entrée Armé", kTexte),
    Fois(kManuelles, Facultative("Entrée manuelle #", kTexte)),
};

// The address is a text: its digits are hexadecimal.
constexpr std::array kCarte{
    kIndex,
    SansNul("Adresse", kTexte, "'0'"),
    SansNul("Nom de la Carte", kTexte, "''"),
    Facultative("Driver de la Carte", kTexte),
    Facultative("Configuration ModBus", kTexte),
    Facultative("Config EIR", kTexte),
    Facultative("ModBus - Time-out", kRéel),
};

constexpr std::array kFonction{
    kIndex,
    Requise("Carte", kEntier),
    Facultative("Driver", kTexte),
    Facultative("Type de Fonction", kTexte),
    Requise("Nom de la Fonction", kTexte, "''"),
    SansNul("Mise à Jour par Fonction", kBooléen, "-1"),
    Facultative("Numéro du port CAN", kEntier),
    Facultative("Vitesse du CAN", kEntier),
    Facultative("Mode CAN", kTexte),
    Facultative("Temps", kRéel),
    Facultative("ModBus - Adresse", kTexte),
    Facultative("ModBus - Fonction", kTexte),
    Facultative("ModBus - Regitre départ", kEntier),
    Facultative("RS232 - COM", kEntier),
    Facultative("Nombre de Canaux", kEntier),
    Facultative("RS232 - Baud Rate", kEntier),
    Facultative("RS232 - Parity", kTexte),
    Facultative("RS232 - Data", kEntier),
    Facultative("RS232 - Stop", kRéel),
};

constexpr std::array kCanal{
    kIndex,
    Requise("Fonction", kEntier),
    Requise("Numéro du Canal", kEntier, "0"),
    Requise("Nom du Canal", kTexte, "''"),
    Facultative("N° de série", kTexte),
    Facultative("N° de Node", kEntier),
    Facultative("Mode opératoire", kEntier),
    Facultative("Nombre d'aimants", kEntier),
    Facultative("Position de l'aimant", kEntier),
    Facultative("Position ID", kEntier),
    Facultative("Status ID", kEntier),
    RequiseOuNulle("Driver canal", kTexte),
    Facultative("Canal en fréquence", kBooléen),
    Facultative("ModBus - Registre signé", kBooléen),
};

constexpr std::array kCapteur{
    kIndex,
    Requise("Type de Capteur", kTexte, "'Normal'"),
    Requise("Nom du Capteur", kTexte, "''"),
    Facultative("Nom affiché", kTexte),
    Requise("Seuil de Lecture Non Valide", kRéel, "0"),
    Requise("Remise à Zéro Autorisée", kBooléen, "0"),
    Requise("Arrêt en Cas de Dépassement des sécurités", kBooléen, "0"),
    Requise("Nombre de Lecture pour une Mise à Valeur", kEntier, "1"),
    Requise("Temps d'Intégration du Canal", kRéel, "0"),
    Requise("Nombre de Lecture Simultanée", kEntier, "1"),
    Requise("Sécurité Minimale en Unité", kRéel, "0"),
    Requise("Sécurité Maximale en Unité", kRéel, "0"),
    Requise("Sécurité Minimale en Points", kRéel, "0"),
    Requise("Sécurité Maximale en Points", kRéel, "0"),
    Requise("Unité d'Etalonnage", kTexte, "''"),
    Requise("Date d'Etalonnage", kTexte, "''"),
    Requise("Nom de l'Etalonneur", kTexte, "''"),
    RequiseOuNulle("Temps de Calcul de la Vitesse", kRéel),
    Fois(kPoints, Requise("Point # - Unité", kRéel, "0")),
    Fois(kPoints, Requise("Point # - Point", kRéel, "0")),
    RequiseOuNulle("Texte pour le maximum", kTexte),
    SansNul("Détection du maxi", kBooléen, "-1"),
    Facultative("Opérateur", kTexte),
    Facultative("Configuration RS", kTexte),
    Facultative("Recouvrement - Seuil bas %", kRéel),
    Facultative("Recouvrement - Seuil haut %", kRéel),
    Facultative("Recouvrement - Mini valeur pour recouvrement", kEntier),
    Facultative("Valeur de selection", kTexte),
    Facultative("EL de selection", kTexte),
    Facultative("Etat EL de selection", kTexte),
    Fois(kFils, Facultative("Capteur Fils N° #", kTexte)),
    Facultative("Canal", kEntier),
    Facultative("Méthode de calcul de surface", kEntier),
    Facultative("L", kEntier),
    Facultative("m", kEntier),
    Facultative("Unité de masse", kEntier),
    Facultative("Masse volumique", kEntier),
    Facultative("Unité de masse volumique", kEntier),
    Facultative("A", kEntier),
    Facultative("B", kEntier),
    Facultative("Facteur de convertion", kEntier),
    Facultative("D", kEntier),
    Facultative("E", kEntier),
    Facultative("H", kEntier),
    Facultative("N", kEntier),
    Facultative("S", kEntier),
    Facultative("Distance entre appuis sup", kEntier),
    Facultative("Distance entre appuis inf", kEntier),
    Facultative("Unite", kEntier),
    Facultative("Forme eprouvette", kEntier),
    Facultative("Type de contrainte", kEntier),
    Facultative("Offset", kEntier),
    Facultative("Parametre de sélection", kEntier),
    Facultative("Etalonnage par utilisateur", kBooléen),
    Facultative("Commentaire etalonnage", kTexte),
    Facultative("Age maximal (s)", kRéel),
};

constexpr std::array kCommande{
    kIndex,
    Requise("Nom de la Commande", kTexte, "''"),
    Requise("Valeur Initiale", kRéel, "0"),
    Requise("Date d'Etalonnage", kTexte, "''"),
    Requise("Nom de l'Etalonneur", kTexte, "''"),
    Requise("Unité d'Etalonnage", kTexte, "''"),
    Requise("Type de Commande", kTexte, "'Normale'"),
    Requise("Sécurité Minimale en Unité", kRéel, "0"),
    Requise("Sécurité Maximale en Unité", kRéel, "0"),
    Requise("Sécurité Minimale en Points", kRéel, "0"),
    Requise("Sécurité Maximale en Points", kRéel, "0"),
    RequiseOuNulle("Fréquence dither", kRéel),
    RequiseOuNulle("Amplitude dither", kRéel),
    Fois(kPoints, Requise("Point # - Unité", kRéel, "0")),
    Fois(kPoints, Requise("Point # - Point", kRéel, "0")),
    Facultative("Canal", kEntier),
    Facultative("Capteur Alimentation", kTexte),
    Facultative("Capteur Utilisation", kTexte),
    Facultative("Sortie Logique 1", kTexte),
    Facultative("Sortie Logique 2", kTexte),
    Facultative("Paramètre", kEntier),
    Facultative("Commentaire etalonnage", kTexte),
    Facultative("Capteur de recopie", kTexte),
};

// "Etat d'Activation" is a number, 0 or 1: a boolean would come back as -1 and mean nothing.
// "Etat si rien de connecte" stays last: any column read after it takes its effect away.
constexpr std::array kEntréeLogique{
    kIndex,
    Requise("Nom de l'Entrée Logique", kTexte, "''"),
    Requise("Etat d'Activation", kEntier, "1"),
    Requise("Niveau d'Arrêt d'Urgence", kTexte, "'Aucun'"),
    Facultative("Touche", kTexte),
    Facultative("Canal", kEntier),
    Facultative("Parametre Etat", kEntier),
    Facultative("Parametre Etat Actif", kEntier),
    Facultative("Parametre Etat Inactif", kEntier),
    Facultative("Parametre Defaut", kEntier),
    Facultative("Durée Anti-Rebond (s)", kRéel),
    Facultative("Etat si rien de connecte", kTexte),
};

constexpr std::array kSortieLogique{
    kIndex,
    Requise("Nom de la Sortie Logique", kTexte, "''"),
    Requise("Etat d'Activation", kEntier, "1"),
    Facultative("Canal", kEntier),
};

constexpr std::array kWatchDog{
    kIndex,
    Requise("Nom du Watchdog", kTexte, "''"),
    RequiseOuNulle("Adresse", kTexte),
    RequiseOuNulle("Temps en seconde", kRéel),
    Facultative("Pulse", kEntier),
};

constexpr Modèle kDuChassis = Requise("Chassis", kEntier);
constexpr Modèle kLabel = RequiseOuNulle("Label", kTexte);
constexpr std::array kLienCarte{kDuChassis, Requise("Carte", kEntier)};
// Its "Index" sets the order of the sensors.
constexpr std::array kLienCapteur{kIndex, kDuChassis, Requise("Capteur", kEntier), kLabel};
constexpr std::array kLienCommande{kDuChassis, Requise("Commande", kEntier), kLabel};
constexpr std::array kLienEntrée{kDuChassis, Requise("Entrée Logique", kEntier), kLabel};
constexpr std::array kLienSortie{kDuChassis, Requise("Sortie Logique", kEntier), kLabel};
constexpr std::array kLienWatchDog{kDuChassis, Requise("WatchDog", kEntier)};

struct ModèleDeTable {
  std::string_view nom;
  std::string_view objetLié;
  bool liaison;
  std::span<const Modèle> colonnes;
};

constexpr std::array<ModèleDeTable, 15> kTables{{
    {"Chassis", "Chassis", false, kChassis},
    {"Carte", "Carte", false, kCarte},
    {"Fonction", "Fonction", false, kFonction},
    {"Canal", "Canal", false, kCanal},
    {"Capteur", "Capteur", false, kCapteur},
    {"Commande", "Commande", false, kCommande},
    {"Entrée Logique", "Entrée logique", false, kEntréeLogique},
    {"Sortie Logique", "Sortie logique", false, kSortieLogique},
    {"WatchDog", "WatchDog", false, kWatchDog},
    {"Liaison Chassis / Carte", "Carte", true, kLienCarte},
    {"Liaison Chassis / Capteur", "Capteur", true, kLienCapteur},
    {"Liaison Chassis / Commande", "Commande", true, kLienCommande},
    {"Liaison Chassis / Entrée Logique", "Entrée logique", true, kLienEntrée},
    {"Liaison Chassis / Sortie Logique", "Sortie logique", true, kLienSortie},
    {"Liaison Chassis / WatchDog", "WatchDog", true, kLienWatchDog},
}};

ColonneDuSchéma Colonne(const Modèle& modèle, int numéro) {
  std::string nom(modèle.nom);
  if (modèle.nombre > 0) nom.replace(nom.find('#'), 1, std::to_string(numéro));
  return {std::move(nom), modèle.type, modèle.requise, modèle.nulAdmis, std::string(modèle.défaut)};
}

std::vector<ColonneDuSchéma> Colonnes(std::span<const Modèle> modèles) {
  std::vector<ColonneDuSchéma> colonnes;
  while (!modèles.empty()) {
    const int nombre = modèles.front().nombre;
    const auto fin = nombre == 0 ? modèles.begin() + 1
                                 : std::ranges::find_if(modèles, [nombre](const Modèle& m) {
                                     return m.nombre != nombre;
                                   });
    const auto groupe = modèles.first(static_cast<std::size_t>(fin - modèles.begin()));
    for (int numéro = 1; numéro <= std::max(nombre, 1); ++numéro) {
      for (const Modèle& modèle : groupe) colonnes.push_back(Colonne(modèle, numéro));
    }
    modèles = modèles.subspan(groupe.size());
  }
  return colonnes;
}

std::vector<TableDuSchéma> Construit() {
  std::vector<TableDuSchéma> tables;
  tables.reserve(kTables.size());
  for (const ModèleDeTable& m : kTables) {
    tables.push_back({m.nom, m.objetLié, m.liaison, Colonnes(m.colonnes)});
  }
  return tables;
}

std::string Déclaration(const ColonneDuSchéma& colonne) {
  std::string texte = NomSql(colonne.nom);
  texte.append(" ").append(NomDeType(colonne.type));
  if (colonne.nom == kIndex.nom) return texte += " PRIMARY KEY";
  if (!colonne.nulAdmis) texte += " NOT NULL";
  if (!colonne.défaut.empty()) texte.append(" DEFAULT ").append(colonne.défaut);
  return texte;
}

}  // namespace

const ColonneDuSchéma* TableDuSchéma::TrouveColonne(std::string_view colonne) const noexcept {
  const auto trouvée = std::ranges::find(colonnes, colonne, &ColonneDuSchéma::nom);
  return trouvée == colonnes.end() ? nullptr : &*trouvée;
}

std::span<const TableDuSchéma> TablesDuSchéma() {
  static const std::vector<TableDuSchéma> tables = Construit();
  return tables;
}

const TableDuSchéma* TrouveTable(std::string_view nom) {
  const auto tables = TablesDuSchéma();
  const auto table = std::ranges::find(tables, nom, &TableDuSchéma::nom);
  return table == tables.end() ? nullptr : &*table;
}

std::string InstructionDeCréation(const TableDuSchéma& table) {
  std::string sql = "CREATE TABLE " + NomSql(table.nom) + " (";
  for (const ColonneDuSchéma& colonne : table.colonnes) {
    if (&colonne != &table.colonnes.front()) sql += ", ";
    sql += Déclaration(colonne);
  }
  return sql += ")";
}

std::string_view NomDeType(TypeColonne type) noexcept {
  constexpr std::array<std::string_view, 5> kNoms{"", "TEXT", "INTEGER", "REAL", "BOOLEAN"};
  return kNoms[static_cast<std::size_t>(type)];
}

}  // namespace zuma::linux_
