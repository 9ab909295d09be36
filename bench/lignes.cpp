#include "bench/lignes.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <iterator>
#include <utility>

namespace zuma::banc {
namespace {

constexpr double kSansLimite = 1e9;
constexpr int kPoints = 20;
constexpr double kPointsParLigne = 3000;
constexpr std::int32_t kPortsParCarte = 0x10;

struct BlocDeBanc {
  std::string_view carte;
  std::string_view type;
  std::string_view driver;
  bool parFonction;
};

// Every family that reads something, eight channels each.
constexpr std::array<BlocDeBanc, 8> kHuitCartes{{
    {{}, kEA, kScan, false},
    {{}, kEA, kScan, true},
    {{}, kEA, "DrvACL8113", false},
    {{}, kEA, "DrvPCL813_PCLD881", false},
    {{}, kEA, "DrvA826PG_DB8225", false},
    {{}, kEL, "DrvPCL731_PCLD782B", true},
    {"DrvPET48DIO", kEL, "DrvPET48DIO_TB24P", true},
    {{}, kEL, "DrvACL6126_ACLD9182", true},
}};

// A table that is slightly bent, so that every segment counts. `pleine` is its last point.
void AjouteTable(std::vector<Champ>& champs, double pleine) {
  for (int n = 1; n <= kPoints; ++n) {
    const double x = n - 1;
    const std::string point = "Point " + std::to_string(n);
    champs.push_back(Réel(point + " - Unité", x * (100 + x) / 20));
    champs.push_back(Réel(point + " - Point", x * pleine / (kPoints - 1)));
  }
}

std::string Hexa(std::int32_t n) {
  std::array<char, 16> texte{};
  std::snprintf(texte.data(), texte.size(), "%X", static_cast<unsigned>(n));
  return texte.data();
}

}  // namespace

Champ Texte(std::string_view colonne, std::string_view texte) {
  return {std::string(colonne), Valeur(std::string(texte))};
}
Champ Entier(std::string_view colonne, std::int32_t n) {
  return {std::string(colonne), Valeur(n)};
}
Champ Réel(std::string_view colonne, double x) {
  return {std::string(colonne), Valeur(x)};
}
Champ Fils(int rang, std::int32_t capteur) {
  return Texte("Capteur Fils N° " + std::to_string(rang), std::to_string(capteur));
}

Lignes::Lignes(double fréquenceEA, double fréquenceEL) {
  lignes_.push_back({"Chassis",
                     {Entier("Index", kChassis), Texte("Nom du Chassis", "Banc"),
                      Réel("Frequence rafraichissement capteurs", fréquenceEA),
                      Réel("Frequence rafraichissement entrées logiques", fréquenceEL)}});
}

std::int32_t Lignes::Ajoute(std::string_view table, std::vector<Champ> champs,
                            std::vector<Champ> encore) {
  champs.push_back(Entier("Index", ++index_));
  for (Champ& champ : encore) {
    const auto commun = std::ranges::find(champs, champ.Name, &Champ::Name);
    if (commun != champs.end()) {
      commun->Value = std::move(champ.Value);
    } else {
      champs.push_back(std::move(champ));
    }
  }
  lignes_.push_back({std::string(table), std::move(champs)});
  return index_;
}

void Lignes::Lie(std::string_view table, std::int32_t index) {
  std::vector<Champ> champs{Entier("Chassis", kChassis), Entier(table, index)};
  if (table != "Carte") champs.push_back(Texte("Label", std::to_string(index)));
  if (table == "Capteur") champs.push_back(Entier("Index", index));
  lignes_.push_back({"Liaison Chassis / " + std::string(table), std::move(champs)});
}

void Lignes::Carte(std::string_view driver) {
  carte_ = Ajoute("Carte",
                  {Texte("Nom de la Carte", "Carte " + Hexa(adresse_)),
                   Texte("Adresse", Hexa(adresse_)), Texte("Driver de la Carte", driver)},
                  {});
  adresse_ += kPortsParCarte;
  Lie("Carte", carte_);
}

std::int32_t Lignes::Bloc(std::string_view type, std::string_view driver, std::int32_t canaux,
                          bool parFonction) {
  const std::int32_t bloc = Ajoute("Fonction",
                                   {Entier("Carte", carte_),
                                    Texte("Nom de la Fonction", type),
                                    Texte("Driver", driver),
                                    Texte("Type de Fonction", type),
                                    {"Mise à Jour par Fonction", Valeur(parFonction)},
                                    Entier("Nombre de Canaux", canaux)},
                                   {});
  for (std::int32_t n = 0; n < canaux; ++n) {
    Ajoute("Canal",
           {Entier("Fonction", bloc), Entier("Numéro du Canal", n), Texte("Nom du Canal", "Canal")},
           {});
  }
  return bloc + 1;
}

std::int32_t Lignes::Capteur(std::string_view type, std::vector<Champ> champs) {
  const std::int32_t index = Ajoute(
      "Capteur",
      {Texte("Type de Capteur", type), Texte("Nom du Capteur", type),
       Texte("Unité d'Etalonnage", "kN"), Réel("Sécurité Minimale en Unité", -kSansLimite),
       Réel("Sécurité Maximale en Unité", kSansLimite),
       Réel("Sécurité Minimale en Points", -kSansLimite),
       Réel("Sécurité Maximale en Points", kSansLimite), Réel("Temps de Calcul de la Vitesse", 0.5),
       Entier("Recouvrement - Seuil bas %", 80), Entier("Recouvrement - Seuil haut %", 90),
       Entier("Recouvrement - Mini valeur pour recouvrement", 3)},
      std::move(champs));
  Lie("Capteur", index);
  return index;
}

std::int32_t Lignes::CapteurNormal(std::int32_t canal, std::vector<Champ> champs) {
  std::vector<Champ> tous{Entier("Canal", canal), Réel("Temps d'Intégration du Canal", 1)};
  AjouteTable(tous, kPointsParLigne * (kPoints - 1));
  std::ranges::move(champs, std::back_inserter(tous));
  return Capteur("Normal", std::move(tous));
}

std::int32_t Lignes::Commande(std::string_view type, std::int32_t canal,
                              std::vector<Champ> champs) {
  constexpr double kDernierCode = 4095;
  std::vector<Champ> communs{Texte("Type de Commande", type),
                             Texte("Nom de la Commande", type),
                             Entier("Canal", canal),
                             Réel("Sécurité Minimale en Unité", -1),
                             Réel("Sécurité Maximale en Unité", 113),
                             Réel("Sécurité Minimale en Points", 0),
                             Réel("Sécurité Maximale en Points", kDernierCode)};
  AjouteTable(communs, kDernierCode);
  const std::int32_t index = Ajoute("Commande", std::move(communs), std::move(champs));
  Lie("Commande", index);
  return index;
}

std::int32_t Lignes::EntréeLogique(std::int32_t canal, std::vector<Champ> champs) {
  const std::int32_t index =
      Ajoute("Entrée Logique", {Texte("Nom de l'Entrée Logique", "Entrée"), Entier("Canal", canal)},
             std::move(champs));
  Lie("Entrée Logique", index);
  return index;
}

std::int32_t Lignes::SortieLogique(std::int32_t canal, std::vector<Champ> champs) {
  const std::int32_t index = Ajoute(
      "Sortie Logique", {Texte("Nom de la Sortie Logique", "Sortie"), Entier("Canal", canal)},
      std::move(champs));
  Lie("Sortie Logique", index);
  return index;
}

Lignes HuitCartes(double fréquenceEA, double fréquenceEL) {
  Lignes lignes(fréquenceEA, fréquenceEL);
  for (const BlocDeBanc& bloc : kHuitCartes) {
    lignes.Carte(bloc.carte);
    lignes.Bloc(bloc.type, bloc.driver, 8, bloc.parFonction);
  }
  return lignes;
}

}  // namespace zuma::banc
