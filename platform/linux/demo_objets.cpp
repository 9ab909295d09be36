#include "platform/linux/demo_objets.h"

#include <array>
#include <string>
#include <string_view>
#include <utility>

#include "platform/linux/champs.h"
#include "platform/linux/demo.h"

namespace zuma::linux_ {
namespace {

using namespace champs;

constexpr double kPleineEchelle = 65536;
// Seconds; an input that stops the frame is not filtered.
constexpr double kAntiRebond = 0.02;

// Row of the object, and the link row that puts it on the frame with its label.
void Ajoute(std::vector<LigneDeBase>& lignes, std::string_view table, std::int32_t index,
            std::vector<Champ> champs, std::string_view label,
            std::int32_t chassis = kChassisDeDémonstration) {
  champs.insert(champs.begin(), Entier("Index", index));
  lignes.push_back({std::string(table), std::move(champs)});
  LigneDeBase lien{"Liaison Chassis / " + std::string(table),
                   {Entier("Chassis", chassis), Entier(table, index)}};
  if (table == "Capteur") lien.champs.push_back(Entier("Index", index));
  if (!label.empty()) lien.champs.push_back(Texte("Label", label));
  lignes.push_back(std::move(lien));
}

constexpr std::array kCapteurs{
    CapteurDémo{1, "Normal", "Force 100 kN", "Force grande", "kN", 1100, 100, -5, 95, true},
    CapteurDémo{2, "Normal", "Force 10 kN", "Force petite", "kN", 1101, 10, -1, 10.5},
    CapteurDémo{3, "Recouvrement", "Force", "Force", "kN", 0, 0, -5, 95, false,
                "Force petite;Force grande"},
    CapteurDémo{4, "Normal", "Déplacement vérin", "Déplacement", "mm", 1102, 200, -1, 201},
    CapteurDémo{5, "Normal", "Pression alimentation", "Pression alimentation", "bar", 1103, 250, -5,
                240},
    CapteurDémo{6, "Normal", "Pression utilisation", "Pression utilisation", "bar", 1104, 250, -5,
                240},
    CapteurDémo{7, "Normal", "Extensomètre", "Extensomètre", "mm", 1105, 1, -0.1, 1.1},
    CapteurDémo{8, "Temps", "Temps", "Temps", "s"},
    CapteurDémo{9, "Vitesse", "Vitesse de chargement", "Vitesse", "kN/s", 0, 0, -100, 100, false,
                "Force"},
    CapteurDémo{10, "Contrainte", "Contrainte cylindre", "Contrainte", "MPa", 0, 0, 0, 0, false,
                "Force"},
    CapteurDémo{11, "Contrainte", "Contrainte prisme", "Contrainte prisme", "MPa", 0, 0, 0, 0,
                false, "Force"},
    CapteurDémo{12, "DeltaL/L", "Déformation", "Déformation", "%", 0, 0, 0, 0, false,
                "Extensomètre"},
    CapteurDémo{13, "Combinaison", "Perte de charge", "Perte de charge", "bar", 0, 0, -250, 250,
                false, "Pression alimentation;Pression utilisation"},
    CapteurDémo{15, "Normal", "Four zone 1", "Four 1", "°C", 3100, 1000, -50, 1100},
    CapteurDémo{16, "Normal", "Four zone 2", "Four 2", "°C", 3101, 1000, -50, 1100},
    CapteurDémo{17, "Normal", "Four zone 3", "Four 3", "°C", 3102, 1000, -50, 1100},
    CapteurDémo{14, "Moyen", "Four moyen", "Four", "°C", 0, 0, -50, 1100, false,
                "Four 1;Four 2;Four 3"},
    CapteurDémo{18, "Selectionnable", "Grandeur choisie", "Choisie", "kN", 0, 0, -5, 95, false,
                "Force"},
    CapteurDémo{19, "PPC", "Plus fine cellule", "Plus fine", "kN", 0, 0, -5, 95, false,
                "Force petite;Force grande"},
};

// Columns that only one sensor needs. A number is the index of a shared parameter.
struct ColonneDémo {
  std::int32_t capteur;
  std::string_view colonne;
  std::string_view texte;
  std::int32_t paramètre = 0;
};

constexpr std::array kColonnes{
    ColonneDémo{7, "Etalonnage par utilisateur", "Vrai"},
    ColonneDémo{7, "Commentaire etalonnage",
                "Certificat 2024-113, classe 1. Base de mesure : 100 mm."},
    ColonneDémo{13, "Opérateur", "-"},
    ColonneDémo{18, "Valeur de selection", "1"},
    ColonneDémo{18, "Parametre de sélection", {}, 12},
    ColonneDémo{18, "S", {}, 12},
    ColonneDémo{10, "Type de contrainte", {}, 1},
    ColonneDémo{10, "Méthode de calcul de surface", {}, 2},
    ColonneDémo{10, "Unite", {}, 3},
    ColonneDémo{10, "Forme eprouvette", {}, 4},
    ColonneDémo{10, "D", {}, 5},
    ColonneDémo{10, "S", {}, 6},
    ColonneDémo{11, "Type de contrainte", {}, 1},
    ColonneDémo{11, "Méthode de calcul de surface", {}, 2},
    ColonneDémo{11, "Unite", {}, 3},
    ColonneDémo{11, "Forme eprouvette", {}, 7},
    ColonneDémo{11, "A", {}, 8},
    ColonneDémo{11, "B", {}, 9},
    ColonneDémo{11, "S", {}, 10},
    ColonneDémo{12, "S", {}, 11},
};

constexpr std::array<std::pair<std::int32_t, std::string_view>, 13> kParamètres{{
    {1, "Compression"},
    {2, "Par dimension"},
    {3, "mm"},
    {4, "Cylindre"},
    {5, "50"},
    {6, "0"},
    {7, "Prisme"},
    {8, "40"},
    {9, "40"},
    {10, "0"},
    {11, "100"},
    {12, "1"},
    {13, "120"},
}};

void AjouteLesFils(std::string_view fils, std::vector<Champ>& champs) {
  for (int n = 1; !fils.empty(); ++n) {
    const auto fin = fils.find(';');
    champs.push_back(Texte("Capteur Fils N° " + std::to_string(n), fils.substr(0, fin)));
    fils = fin == std::string_view::npos ? std::string_view() : fils.substr(fin + 1);
  }
}

// What sensors and commands have in common: unit, who calibrated, and the limits in units.
void AjouteLesLimites(std::string_view unité, double mini, double maxi,
                      std::vector<Champ>& champs) {
  champs.push_back(Texte("Unité d'Etalonnage", unité));
  champs.push_back(Texte("Date d'Etalonnage", "2024-03-01"));
  champs.push_back(Texte("Nom de l'Etalonneur", "Laboratoire"));
  champs.push_back(Réel("Sécurité Minimale en Unité", mini));
  champs.push_back(Réel("Sécurité Maximale en Unité", maxi));
}

// A channel, its limits in points, and a straight line from the origin to `échelle` at `points`.
struct VoieDémo {
  std::int32_t canal;
  double échelle;
  double points;
  double pointsMini;
  double pointsMaxi;
};
void AjouteLaVoie(const VoieDémo& voie, std::vector<Champ>& champs) {
  champs.push_back(Entier("Canal", voie.canal));
  champs.push_back(Réel("Sécurité Minimale en Points", voie.pointsMini));
  champs.push_back(Réel("Sécurité Maximale en Points", voie.pointsMaxi));
  champs.push_back(Réel("Point 2 - Unité", voie.échelle));
  champs.push_back(Réel("Point 2 - Point", voie.points));
}

void AjouteLeCapteur(const CapteurDémo& c, std::int32_t chassis, std::vector<LigneDeBase>& lignes) {
  std::vector<Champ> champs{
      Texte("Type de Capteur", c.type),
      Texte("Nom du Capteur", c.nom),
      Texte("Nom affiché", c.nom),
      Entier("Nombre de Lecture pour une Mise à Valeur", 10),
      Booléen("Remise à Zéro Autorisée", c.canal != 0),
      Booléen("Arrêt en Cas de Dépassement des sécurités", c.arrêt),
  };
  AjouteLesLimites(c.unité, c.mini, c.maxi, champs);
  if (c.canal != 0) {
    const double points = kPleineEchelle / c.échelle;
    AjouteLaVoie({c.canal, c.échelle, kPleineEchelle, c.mini * points, c.maxi * points}, champs);
    champs.push_back(Réel("Temps d'Intégration du Canal", 0.01));
  }
  if (c.type == "Recouvrement") {
    champs.push_back(Réel("Recouvrement - Seuil bas %", 80));
    champs.push_back(Réel("Recouvrement - Seuil haut %", 90));
    champs.push_back(Entier("Recouvrement - Mini valeur pour recouvrement", 5));
  }
  if (c.type == "Vitesse") champs.push_back(Réel("Temps de Calcul de la Vitesse", 0.5));
  for (const ColonneDémo& colonne : kColonnes) {
    if (colonne.capteur != c.index) continue;
    champs.push_back(colonne.paramètre != 0 ? Entier(colonne.colonne, colonne.paramètre)
                                            : Texte(colonne.colonne, colonne.texte));
  }
  AjouteLesFils(c.fils, champs);
  Ajoute(lignes, "Capteur", c.index, std::move(champs), c.label, chassis);
}

// The instruments that a sensor asks by itself stand on a frame of their own: one of them stops the
// pass with message boxes, as it must.
struct InstrumentDémo {
  std::int32_t index;
  std::string_view type;
  std::string_view nom;
  std::string_view unité;
  std::string_view ligne;
};
constexpr std::array kInstruments{
    InstrumentDémo{31, "Réservé 1", "Balance", "kg", "1,9600,E,7,1"},
    InstrumentDémo{32, "Réservé 2", "Comparateur", "mm", "2,4800,N,8,2"},
    InstrumentDémo{33, "Scout 55", "Indicateur", "g", "3,9600,N,8,1"},
    InstrumentDémo{34, "SOLARTRON LVDT", "Palpeur", "mm", {}},
};

void AjouteLInstrument(const InstrumentDémo& i, std::vector<LigneDeBase>& lignes) {
  std::vector<Champ> champs{
      Texte("Type de Capteur", i.type),
      Texte("Nom du Capteur", i.nom),
      Texte("Nom affiché", i.nom),
      Texte("Unité d'Etalonnage", i.unité),
      Réel("Sécurité Minimale en Unité", -1000),
      Réel("Sécurité Maximale en Unité", 1000),
  };
  if (!i.ligne.empty()) champs.push_back(Texte("Configuration RS", i.ligne));
  Ajoute(lignes, "Capteur", i.index, std::move(champs), i.nom, kChassisDesInstruments);
}

struct EntréeDémo {
  std::int32_t index;
  std::string_view nom;
  std::int32_t canal;
  std::string_view niveauAU = "Aucun";
};
constexpr std::array kEntrées{
    EntréeDémo{1, "Armé", 1300},
    EntréeDémo{2, "Porte fermée", 1301, "Désactivé"},
    EntréeDémo{3, "Fin de course haut", 1302},
    EntréeDémo{4, "Fin de course bas", 1303},
    EntréeDémo{5, "Arrêt d'urgence", 1304, "Activé"},
    EntréeDémo{6, "Départ essai", 6100},
    EntréeDémo{7, "Départ réarmement", 6101},
    EntréeDémo{8, "Auto manu", 6102},
    EntréeDémo{9, "Montée", 6103},
    EntréeDémo{10, "Descente", 6104},
};

struct SortieDémo {
  std::int32_t index;
  std::string_view nom;
  std::int32_t canal;
};
constexpr std::array kSorties{
    SortieDémo{1, "Pompe", 1400},           SortieDémo{2, "Distributeur", 1401},
    SortieDémo{3, "Voyant", 1402},          SortieDémo{4, "Sirène", 1403},
    SortieDémo{5, "Refroidissement", 7200}, SortieDémo{6, "Filtration", 7201},
};

constexpr std::array kCommandes{
    CommandeDémo{1, "Servo", "Servovalve", "%", 1200, -100, 100, -2047, 2047},
    CommandeDémo{2, "Normale", "Consigne 1", "%", 2100},
    CommandeDémo{3, "Normale", "Consigne 2", "%", 2101, 0, 100, 0, 4095, 25},
    CommandeDémo{4, "Recopie", "Recopie force", "kN", 2102, 0, 100, 0, 4095, 0, "Force"},
    CommandeDémo{5, "Tout ou Rien", "Refroidissement huile", "", 2103},
};

void AjouteLaCommande(const CommandeDémo& c, std::int32_t chassis,
                      std::vector<LigneDeBase>& lignes) {
  std::vector<Champ> champs{
      Texte("Nom de la Commande", c.nom),
      Texte("Type de Commande", c.type),
  };
  AjouteLesLimites(c.unité, c.mini, c.maxi, champs);
  if (c.canal != 0) {
    AjouteLaVoie({c.canal, c.maxi, c.pointsMaxi, c.pointsMini, c.pointsMaxi}, champs);
  }
  if (c.dither != 0) {
    champs.push_back(Réel("Fréquence dither", c.dither));
    champs.push_back(Réel("Amplitude dither", 1));
  }
  if (c.type == "Servo") {
    champs.push_back(Texte("Capteur Alimentation", "Pression alimentation"));
    champs.push_back(Texte("Capteur Utilisation", "Pression utilisation"));
  }
  if (!c.recopie.empty()) {
    champs.push_back(Texte("Capteur de recopie", c.recopie));
    champs.push_back(Texte("Commentaire etalonnage", "Certificat 2024-114."));
  }
  if (c.type == "Tout ou Rien") {
    champs.push_back(Texte("Sortie Logique 1", "Refroidissement"));
    champs.push_back(Texte("Sortie Logique 2", "Filtration"));
  }
  Ajoute(lignes, "Commande", c.index, std::move(champs), c.nom, chassis);
}

}  // namespace

std::vector<std::pair<std::int32_t, std::string>> ParamètresDeDémonstration() {
  return {kParamètres.begin(), kParamètres.end()};
}

void AjouteLesCapteurs(std::span<const CapteurDémo> capteurs, std::int32_t chassis,
                       std::vector<LigneDeBase>& lignes) {
  for (const CapteurDémo& capteur : capteurs) AjouteLeCapteur(capteur, chassis, lignes);
}

void AjouteLesCommandes(std::span<const CommandeDémo> commandes, std::int32_t chassis,
                        std::vector<LigneDeBase>& lignes) {
  for (const CommandeDémo& commande : commandes) AjouteLaCommande(commande, chassis, lignes);
}

void AjouteLesObjetsDeDémonstration(std::vector<LigneDeBase>& lignes) {
  AjouteLesCapteurs(kCapteurs, kChassisDeDémonstration, lignes);
  lignes.push_back({"Chassis",
                    {Entier("Index", kChassisDesInstruments),
                     Texte("Nom du Chassis", "Instruments de démonstration"),
                     Texte("Entrée Armé", "Armé"), Texte("Entrée Auto/Manu", "Auto manu")}});
  for (const InstrumentDémo& instrument : kInstruments) AjouteLInstrument(instrument, lignes);
  for (const EntréeDémo& e : kEntrées) {
    Ajoute(lignes, "Entrée Logique", e.index,
           {Texte("Nom de l'Entrée Logique", e.nom), Entier("Canal", e.canal),
            Texte("Niveau d'Arrêt d'Urgence", e.niveauAU),
            Réel("Durée Anti-Rebond (s)", e.niveauAU == "Aucun" ? kAntiRebond : 0)},
           e.nom);
  }
  for (const SortieDémo& s : kSorties) {
    Ajoute(lignes, "Sortie Logique", s.index,
           {Texte("Nom de la Sortie Logique", s.nom), Entier("Canal", s.canal)}, s.nom);
  }
  AjouteLesCommandes(kCommandes, kChassisDeDémonstration, lignes);
  Ajoute(lignes, "WatchDog", 1,
         {Texte("Nom du Watchdog", "Chien de garde"), Texte("Adresse", "380"),
          Réel("Temps en seconde", 0.2)},
         {});
}

}  // namespace zuma::linux_
