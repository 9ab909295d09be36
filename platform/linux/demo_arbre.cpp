#include "platform/linux/demo_arbre.h"

#include <algorithm>
#include <string>

#include "platform/linux/champs.h"

namespace zuma::linux_ {
namespace {

using namespace champs;

constexpr std::int32_t kBlocsParCarte = 10;
constexpr std::int32_t kCanauxParBloc = 100;
constexpr std::int32_t kRangDErreur = 99;
constexpr std::int32_t kNuméroDErreur = -1;
constexpr double kFréquenceCapteurs = 200;  // hertz
constexpr double kFréquenceEntrées = 20;    // hertz

void AjouteLaCarte(const CarteDémo& carte, std::int32_t chassis, std::vector<LigneDeBase>& lignes) {
  lignes.push_back(
      {"Carte",
       {Entier("Index", carte.index), Texte("Nom de la Carte", carte.nom),
        Texte("Adresse", carte.adresse), TexteOuNul("Driver de la Carte", carte.driver),
        TexteOuNul("Configuration ModBus", carte.configuration)}});
  lignes.push_back(
      {"Liaison Chassis / Carte", {Entier("Chassis", chassis), Entier("Carte", carte.index)}});
}

// Returns the number of channels added.
std::int32_t AjouteLesCanaux(const BlocDémo& bloc, std::vector<LigneDeBase>& lignes) {
  std::int32_t nombre = 0;
  const auto ajoute = [&](std::int32_t rang, std::int32_t numéro, std::string_view nom) {
    lignes.push_back(
        {"Canal",
         {Entier("Index", bloc.index * kCanauxParBloc + rang), Entier("Fonction", bloc.index),
          Entier("Numéro du Canal", numéro), Texte("Nom du Canal", nom),
          Booléen("Canal en fréquence", numéro == bloc.canalFréquence && numéro >= 0)}});
  };
  for (const std::string_view nom : Découpe(bloc.canaux, ';')) {
    const std::int32_t numéro = bloc.premier + nombre++;
    ajoute(numéro, numéro, nom);
  }
  if (bloc.avecErreur) {
    ajoute(kRangDErreur, kNuméroDErreur, "Défaut de liaison");
    ++nombre;
  }
  return nombre;
}

void AjouteLeBloc(const BlocDémo& bloc, std::vector<LigneDeBase>& lignes) {
  const std::int32_t nombre = AjouteLesCanaux(bloc, lignes);
  lignes.push_back(
      {"Fonction",
       {Entier("Index", bloc.index), Entier("Carte", bloc.index / kBlocsParCarte),
        Texte("Nom de la Fonction", bloc.type), TexteOuNul("Driver", bloc.driver),
        Texte("Type de Fonction", bloc.type), Booléen("Mise à Jour par Fonction", bloc.parFonction),
        Entier("Nombre de Canaux", nombre)}});
}

void Complète(const ColonneDeLigne& c, std::vector<LigneDeBase>& lignes) {
  const Champ clé = Entier("Index", c.index);
  const auto ligne = std::ranges::find_if(lignes, [&](const LigneDeBase& l) {
    return l.table == c.table && !l.champs.empty() && l.champs.front().Name == clé.Name &&
           l.champs.front().Value == clé.Value;
  });
  if (ligne == lignes.end()) return;
  ligne->champs.push_back(c.texte.empty() ? Réel(c.colonne, c.nombre) : Texte(c.colonne, c.texte));
}

}  // namespace

void AjouteLArbre(const ChassisDémo& chassis, std::vector<LigneDeBase>& lignes) {
  for (const CarteDémo& carte : chassis.cartes) AjouteLaCarte(carte, chassis.index, lignes);
  for (const BlocDémo& bloc : chassis.blocs) AjouteLeBloc(bloc, lignes);
  for (const ColonneDeLigne& colonne : chassis.colonnes) Complète(colonne, lignes);
}

void AjouteLeChassis(const ChassisDémo& chassis, std::vector<LigneDeBase>& lignes) {
  lignes.push_back({"Chassis",
                    {Entier("Index", chassis.index), Texte("Nom du Chassis", chassis.nom),
                     Réel("Frequence rafraichissement capteurs", kFréquenceCapteurs),
                     Réel("Frequence rafraichissement entrées logiques", kFréquenceEntrées),
                     Texte("Entrée Armé", "Armé"), Texte("Entrée Auto/Manu", "Auto manu")}});
  AjouteLArbre(chassis, lignes);
  AjouteLesCapteurs(chassis.capteurs, chassis.index, lignes);
  AjouteLesCommandes(chassis.commandes, chassis.index, lignes);
}

}  // namespace zuma::linux_
