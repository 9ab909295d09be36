#include "bench/lignes.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <utility>

namespace zuma::banc {
namespace {

constexpr int kPoints = 20;
constexpr std::int32_t kPortsParCarte = 0x10;

// What the objects of a table have in common. `dernierPoint` closes the table of points, which is
// slightly bent so that every segment counts.
struct Commun {
  std::string_view table;
  std::vector<Champ> champs;
  double dernierPoint = 0;
};

std::vector<Champ> Communs(std::string_view table) {
  constexpr double kSansLimite = 1e9;
  const Commun communs[] = {
      {"Capteur",
       {Texte("Nom du Capteur", "Capteur"), Texte("Unité d'Etalonnage", "kN"),
        Réel("Sécurité Minimale en Unité", -kSansLimite),
        Réel("Sécurité Maximale en Unité", kSansLimite),
        Réel("Sécurité Minimale en Points", -kSansLimite),
        Réel("Sécurité Maximale en Points", kSansLimite), Réel("Temps d'Intégration du Canal", 1),
        Réel("Temps de Calcul de la Vitesse", 0.5), Réel("Recouvrement - Seuil bas %", 80),
        Réel("Recouvrement - Seuil haut %", 90),
        Entier("Recouvrement - Mini valeur pour recouvrement", 3)},
       57'000},
      {"Commande",
       {Texte("Nom de la Commande", "Commande"), Texte("Type de Commande", "Normale"),
        Réel("Sécurité Minimale en Unité", -1), Réel("Sécurité Maximale en Unité", 113),
        Réel("Sécurité Minimale en Points", 0), Réel("Sécurité Maximale en Points", 4095)},
       4095},
      {kEL, {Texte("Nom de l'Entrée Logique", "Entrée")}},
      {kSL, {Texte("Nom de la Sortie Logique", "Sortie")}},
  };
  auto [nom, champs, dernierPoint] = *std::ranges::find(communs, table, &Commun::table);
  for (int n = 1; n <= kPoints && dernierPoint != 0; ++n) {
    const double x = n - 1;
    const std::string point = "Point " + std::to_string(n);
    champs.push_back(Réel(point + " - Unité", x * (100 + x) / 20));
    champs.push_back(Réel(point + " - Point", x * dernierPoint / (kPoints - 1)));
  }
  return champs;
}

// The fields of `tous`, those of `champs` in their place or behind them.
std::vector<Champ> Avec(std::vector<Champ> tous, const std::vector<Champ>& champs) {
  for (const Champ& champ : champs) {
    const auto commun = std::ranges::find(tous, champ.Name, &Champ::Name);
    if (commun != tous.end()) {
      commun->Value = champ.Value;
    } else {
      tous.push_back(champ);
    }
  }
  return tous;
}

std::string Hexa(std::int32_t n) {
  std::array<char, 16> texte{};
  std::snprintf(texte.data(), texte.size(), "%X", static_cast<unsigned>(n));
  return texte.data();
}

}  // namespace

Lignes::Lignes(double fréquenceEA, double fréquenceEL) {
  lignes_.push_back({"Chassis",
                     {Entier("Index", kChassis), Texte("Nom du Chassis", "Banc"),
                      Réel("Frequence rafraichissement capteurs", fréquenceEA),
                      Réel("Frequence rafraichissement entrées logiques", fréquenceEL)}});
}

std::int32_t Lignes::Ajoute(std::string_view table, std::vector<Champ> champs) {
  champs.push_back(Entier("Index", ++index_));
  lignes_.push_back({std::string(table), std::move(champs)});
  return index_;
}

void Lignes::Lie(std::string_view table, std::int32_t index) {
  std::vector<Champ> champs{Entier("Chassis", kChassis), Entier(table, index)};
  if (table != "Carte" && table != "WatchDog") {
    champs.push_back(Texte("Label", std::to_string(index)));
  }
  if (table == "Capteur") champs.push_back(Entier("Index", index));
  lignes_.push_back({"Liaison Chassis / " + std::string(table), std::move(champs)});
}

void Lignes::Carte(std::string_view driver, std::string_view configuration,
                   const std::vector<Champ>& champs) {
  carte_ = Ajoute(
      "Carte",
      Avec({Texte("Nom de la Carte", "Carte"), Texte("Adresse", Hexa(adresse_)),
            Texte("Driver de la Carte", driver), Texte("Configuration ModBus", configuration)},
           champs));
  adresse_ += kPortsParCarte;
  Lie("Carte", carte_);
}

std::int32_t Lignes::Bloc(std::string_view type, std::string_view driver, std::int32_t canaux,
                          bool parFonction, const std::vector<Champ>& champs) {
  bloc_ = Ajoute("Fonction", Avec({Entier("Carte", carte_),
                                   Texte("Nom de la Fonction", type),
                                   Texte("Driver", driver),
                                   Texte("Type de Fonction", type),
                                   {"Mise à Jour par Fonction", Valeur(parFonction)},
                                   Entier("Nombre de Canaux", canaux)},
                                  champs));
  for (std::int32_t n = 0; n < canaux; ++n) Canal(n);
  return bloc_ + 1;
}

std::int32_t Lignes::Canal(std::int32_t numéro, const std::vector<Champ>& champs) {
  return Ajoute("Canal", Avec({Entier("Fonction", bloc_), Entier("Numéro du Canal", numéro),
                               Texte("Nom du Canal", "Canal")},
                              champs));
}

void Lignes::Watchdog(const std::vector<Champ>& champs) {
  Lie("WatchDog", Ajoute("WatchDog", Avec({Texte("Nom du Watchdog", "Watchdog")}, champs)));
}

std::int32_t Lignes::Objet(std::string_view table, const std::vector<Champ>& champs) {
  const std::int32_t index = Ajoute(table, Avec(Communs(table), champs));
  Lie(table, index);
  return index;
}

Lignes HuitCartes(double fréquenceEA, double fréquenceEL) {
  constexpr struct {
    std::string_view carte;
    std::string_view type;
    std::string_view driver;
    bool parFonction;
  } kCartes[] = {
      {"", kEA, kScan, false},
      {"", kEA, kScan, true},
      {"", kEA, "DrvACL8113", false},
      {"", kEA, "DrvPCL813_PCLD881", false},
      {"", kEA, "DrvA826PG_DB8225", false},
      {"", kEL, "DrvPCL731_PCLD782B", true},
      {"DrvPET48DIO", kEL, "DrvPET48DIO_TB24P", true},
      {"", kEL, "DrvACL6126_ACLD9182", true},
  };
  Lignes lignes(fréquenceEA, fréquenceEL);
  for (const auto& carte : kCartes) {
    lignes.Carte(carte.carte);
    lignes.Bloc(carte.type, carte.driver, 8, carte.parFonction);
  }
  return lignes;
}

}  // namespace zuma::banc
