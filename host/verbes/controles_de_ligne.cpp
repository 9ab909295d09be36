#include "host/verbes/controles_de_ligne.h"

#include <algorithm>
#include <array>

#include "base/echec.h"
#include "base/outils_communs.h"
#include "host/verbes/controle_etalonnage.h"

namespace zuma::host {
namespace {

using enum Gravité;

std::string Montre(double nombre) {
  return TexteDeNombre(nombre);
}

// The first limit below the second, and not equal where nothing lies between two equal ones.
struct Bornes {
  std::string_view table, basse, haute;
};
constexpr std::array<Bornes, 5> kBornes{{
    {"Capteur", "Sécurité Minimale en Unité", "Sécurité Maximale en Unité"},
    {"Capteur", "Sécurité Minimale en Points", "Sécurité Maximale en Points"},
    {"Capteur", "Recouvrement - Seuil bas %", "Recouvrement - Seuil haut %"},
    {"Commande", "Sécurité Minimale en Unité", "Sécurité Maximale en Unité"},
    {"Commande", "Sécurité Minimale en Points", "Sécurité Maximale en Points"},
}};

bool PeutArrêter(const LigneLue& l) {
  return l.Vrai("Arrêt en Cas de Dépassement des sécurités") &&
         !l.Vrai("Etalonnage par utilisateur");
}

void ExigeDesBornesDansLOrdre(const LigneLue& l, Constats& constats) {
  for (const Bornes& b : kBornes) {
    if (b.table != l.Table()) continue;
    const bool seuils = b.basse.starts_with("Recouvrement");
    if (seuils && l.Texte("Type de Capteur") != "Recouvrement") continue;
    const auto basse = l.Nombre(b.basse);
    const auto haute = l.Nombre(b.haute);
    if (!basse || !haute || *basse < *haute) continue;
    if (*basse == *haute && (seuils || !PeutArrêter(l))) continue;
    constats.Dit(l, {.colonne = b.basse,
                     .texte = *basse == *haute ? "no value lies inside the limits: it always stops"
                                               : "the limits are the wrong way round",
                     .trouvé = Montre(*basse),
                     .attendu = "less than " + Montre(*haute) + ", the " + std::string(b.haute)});
  }
}

// "Point 1 - Unité" and so on.
std::string ColonneDuPoint(std::size_t rangée, std::string_view fin) {
  return "Point " + std::to_string(rangée) + std::string(fin);
}
constexpr std::string_view kUnité = " - Unité";
constexpr std::string_view kPoint = " - Point";

TableEtalonnage::Colonne LitLaColonne(const LigneLue& l, std::string_view fin) {
  TableEtalonnage::Colonne colonne{};
  for (std::size_t i = 1; i < colonne.size(); ++i) {
    colonne[i] = l.Nombre(ColonneDuPoint(i, fin)).value_or(0);
  }
  return colonne;
}

// Kinds whose value is not made by a table of their own.
bool SansTable(std::string_view genre) {
  constexpr std::array<std::string_view, 11> kSans{
      "Moyen",       "Recouvrement",   "Contrainte", "Temps",    "Vitesse",       "DeltaL/L",
      "Combinaison", "Selectionnable", "PPC",        "Scout 55", "SOLARTRON LVDT"};
  return std::ranges::find(kSans, genre) != kSans.end();
}

void ExigeUneTableUtile(const LigneLue& l, Constats& constats) {
  const bool commande = l.Table() == "Commande";
  if (!commande && SansTable(l.Texte("Type de Capteur"))) return;
  const bool zéro = !commande && l.Vrai("Remise à Zéro Autorisée");
  for (DéfautDeTable& d : DéfautsDeLaTable(LitLaColonne(l, kUnité), LitLaColonne(l, kPoint),
                                           {.inverse = commande || zéro, .zéro = zéro})) {
    const std::string colonne = ColonneDuPoint(d.rangée, d.points ? kPoint : kUnité);
    constats.Dit(l, {colonne, d.gravité, d.texte, std::move(d.trouvé), std::move(d.attendu)});
  }
}

void ExigeUnArrêtSansFiltre(const LigneLue& l, Constats& constats) {
  const std::string niveau = l.Texte("Niveau d'Arrêt d'Urgence");
  const double filtre = l.Nombre("Durée Anti-Rebond (s)").value_or(0);
  if ((niveau != "Activé" && niveau != "Désactivé") || filtre <= 0) return;
  constats.Dit(l, {.colonne = "Durée Anti-Rebond (s)",
                   .gravité = Avertissement,
                   .texte = "a stop comes later by the filter of its input",
                   .trouvé = Montre(filtre) + " s",
                   .attendu = "0 on an input that stops"});
}

void ExigeUnCanal(const LigneLue& l, Constats& constats) {
  if (l.Texte("Type de Commande") != "Tout ou Rien" || l.Renvoi("Canal") != 0) return;
  constats.Dit(l, {.colonne = "Canal",
                   .texte = "an on/off command without a channel moves nothing",
                   .trouvé = l.Texte("Canal").empty() ? "Null" : l.Texte("Canal"),
                   .attendu = "an Index of table Canal"});
}

// The functions that a block of each type can do its work with.
struct FonctionsModbus {
  std::string_view type;
  std::array<std::int32_t, 4> codes;  // 0 fills up
  std::string_view attendu;
};
constexpr std::array<FonctionsModbus, 4> kFonctions{{
    {"Entrée Logique", {1, 2, 3, 4}, "1, 2, 3 or 4, which read"},
    {"Sortie Logique", {5, 6, 15, 16}, "5, 6, F or 10 (hexadecimal), which write"},
    {"Entrée Analogique", {3, 4}, "3 or 4, which read registers"},
    {"Sortie Analogique", {6, 16}, "6 or 10 (hexadecimal), which write registers"},
}};

std::int32_t Hexa(const std::string& texte) {
  try {
    return texte.empty() ? 0 : OutilsCommuns::HexaVersLong(texte);
  } catch (const Echec&) {
    return 0;
  }
}

void ExigeUneFonctionModbus(const LigneLue& l, Constats& constats) {
  if (l.Texte("Driver") != "DrvModBus") return;
  const std::string type = l.Texte("Type de Fonction");
  const auto* permises = std::ranges::find(kFonctions, type, &FonctionsModbus::type);
  const std::string texte = l.Texte("ModBus - Fonction");
  const std::int32_t code = Hexa(texte);
  if (permises == kFonctions.end()) return;  // its type is told as unknown
  if (code != 0 && std::ranges::find(permises->codes, code) != permises->codes.end()) return;
  constats.Dit(l, {.colonne = "ModBus - Fonction",
                   .texte = code == 0 ? "a Modbus block without a function exchanges nothing"
                                      : "the function does not do what the block's type needs",
                   .trouvé = texte.empty() ? "Null" : Cite(texte),
                   .attendu = std::string(permises->attendu)});
}

// Slower, the time for an answer ends before the answer of a real drive.
void ExigeUneLigneRapide(const LigneLue& l, Constats& constats) {
  constexpr double kAuMoins = 38400;  // bits per second
  if (l.Texte("Driver de la Carte") != "Variateur LS Modbus et soft K9") return;
  const std::string ligne = l.Texte("Configuration ModBus");
  const auto champs = Découpe(ligne, ',');
  double vitesse = 0;
  if (champs.size() < 2 || !LitNombre(champs[1], vitesse) || vitesse >= kAuMoins) return;
  constats.Dit(l, {.colonne = "Configuration ModBus",
                   .texte = "a drive on a slow line cannot answer in time",
                   .trouvé = Montre(vitesse) + " Bd",
                   .attendu = "38400 Bd or more"});
}

bool EstUnNombre(const std::string& texte) {
  double nombre = 0;
  return LitNombre(texte, nombre);
}

// What the specimen's parameter has to hold for a kind of sensor.
void ExigeUnParamètreRempli(const LigneLue& l, std::string_view colonne, bool nombre,
                            const ParamètresRef& paramètres, Constats& constats) {
  const std::int32_t index = l.Renvoi(colonne);
  if (index == 0 || !paramètres) return;
  const std::string nom = std::to_string(index);
  for (const auto& paramètre : *paramètres) {
    if (paramètre->NomParamètre() != nom) continue;
    const std::string valeur = paramètre->ValeurParamètre();
    if (nombre ? EstUnNombre(valeur) : !valeur.empty()) return;
    constats.Dit(l, {.colonne = colonne,
                     .texte = "the parameter of the sensor is empty or no number",
                     .trouvé = "parameter " + nom + " = " + Cite(valeur),
                     .attendu = nombre ? "a number" : "a text"});
    return;
  }
}

void ExigeOffsetEtS(const LigneLue& l, const ParamètresRef& paramètres, Constats& constats) {
  const std::string genre = l.Texte("Type de Capteur");
  const bool choix = genre == "Selectionnable";
  if ((choix || genre == "DeltaL/L") && l.Renvoi("S") == 0) {
    constats.Dit(l, {.colonne = "S",
                     .texte = choix ? "without it nothing selects the sensor: its value never moves"
                                    : "without a reference length the sensor reads 0",
                     .trouvé = l.Texte("S").empty() ? "Null" : l.Texte("S"),
                     .attendu = "the index of a parameter"});
  }
  ExigeUnParamètreRempli(l, "Offset", true, paramètres, constats);
  ExigeUnParamètreRempli(l, "S", !choix, paramètres, constats);
}

struct Contrôle {
  std::string_view table;
  void (*contrôle)(const LigneLue&, Constats&);
};
constexpr std::array<Contrôle, 8> kContrôles{{
    {"Capteur", &ExigeDesBornesDansLOrdre},
    {"Capteur", &ExigeUneTableUtile},
    {"Commande", &ExigeDesBornesDansLOrdre},
    {"Commande", &ExigeUneTableUtile},
    {"Commande", &ExigeUnCanal},
    {"Entrée Logique", &ExigeUnArrêtSansFiltre},
    {"Fonction", &ExigeUneFonctionModbus},
    {"Carte", &ExigeUneLigneRapide},
}};

}  // namespace

void ContrôleLaLigne(const LigneLue& ligne, const ParamètresRef& paramètres, Constats& constats) {
  for (const Contrôle& c : kContrôles) {
    if (c.table == ligne.Table()) c.contrôle(ligne, constats);
  }
  if (ligne.Table() == "Capteur") ExigeOffsetEtS(ligne, paramètres, constats);
}

}  // namespace zuma::host
