#include "publication/description.h"

#include <cmath>

#include "tree/carte.h"
#include "tree/fonction.h"

namespace zuma::publication {

std::string NomDuCanal(const CanalRef& canal) {
  if (!canal) return {};
  const Fonction* bloc = canal->Parent();
  if (bloc == nullptr || bloc->LaCarte() == nullptr) return canal->Nom();
  return bloc->LaCarte()->NomDeLaCarte() + "/" + bloc->NomDeLaFonction() + "/" + canal->Nom();
}

namespace {

// JSON knows no other numbers.
std::optional<double> Fini(double nombre) {
  return std::isfinite(nombre) ? std::optional(nombre) : std::nullopt;
}

ObjetPublié Décrit(const Capteur& capteur) {
  ObjetPublié objet{.genre = Genre::Capteur};
  objet.clé = capteur.Key();
  objet.label = capteur.Label();
  objet.nom = capteur.NomDuCapteur();
  objet.unité = capteur.UnitéEtalonnage();
  objet.mini = Fini(capteur.MiniCapteur());
  objet.maxi = Fini(capteur.MaxiCapteur());
  objet.étalonné = capteur.DateEtalonnage();
  objet.parQui = capteur.NomEtalonneur();
  objet.canal = NomDuCanal(capteur.Canal());
  return objet;
}

ObjetPublié Décrit(const Commande& commande) {
  ObjetPublié objet{.genre = Genre::Commande};
  objet.clé = commande.Key();
  objet.label = commande.Label();
  objet.nom = commande.NomDeLaCommande();
  objet.unité = commande.UnitéEtalonnage();
  objet.mini = Fini(commande.MiniCommande());
  objet.maxi = Fini(commande.MaxiCommande());
  objet.repos = Fini(commande.ValeurInitiale());
  objet.étalonné = commande.DateEtalonnage();
  objet.parQui = commande.NomEtalonneur();
  objet.canal = NomDuCanal(commande.Canal());
  return objet;
}

ObjetPublié Décrit(EntréeLogique& entrée) {
  ObjetPublié objet{.genre = Genre::Entrée};
  objet.clé = entrée.Key();
  objet.label = entrée.Label();
  objet.nom = entrée.NomDeEntréeLogique();
  objet.canal = NomDuCanal(entrée.Canal());
  return objet;
}

ObjetPublié Décrit(const SortieLogique& sortie) {
  ObjetPublié objet{.genre = Genre::Sortie};
  objet.clé = sortie.Key();
  objet.label = sortie.Label();
  objet.nom = sortie.NomDeLaSortieLogique();
  objet.canal = NomDuCanal(sortie.Canal());
  return objet;
}

ObjetPublié Décrit(const Watchdog& chien) {
  ObjetPublié objet{.genre = Genre::Watchdog};
  objet.clé = chien.Key();
  objet.nom = chien.NomPourErreur();
  objet.canal = NomDuCanal(chien.SortiePulse());
  return objet;
}

ObjetPublié Décrit(const Canal& canal) {
  ObjetPublié objet{.genre = Genre::Canal};
  objet.clé = canal.Key();
  objet.nom = canal.Nom();
  objet.unité = "points";
  const Fonction* bloc = canal.Parent();
  const LigneDriver* ligne = &canal.LeDriver();
  if (bloc != nullptr) {
    objet.bloc = bloc->NomDeLaFonction();
    objet.carte = bloc->LaCarte()->NomDeLaCarte();
    if (ligne->valeur == ENUM_DRIVER::DrvAucun) ligne = &bloc->LeDriver();
  }
  objet.driver = ligne->nom;
  return objet;
}

template <class Refs>
void DécritChacun(const Refs& objets, std::vector<ObjetPublié>& publiés) {
  for (const auto& objet : objets) publiés.push_back(Décrit(*objet));
}

}  // namespace

ObjetsDuChassis::ObjetsDuChassis(Chassis& chassis)
    : capteurs(chassis.Capteurs()->begin(), chassis.Capteurs()->end()),
      commandes(chassis.Commandes()->begin(), chassis.Commandes()->end()),
      entrées(chassis.EntréesLogiques()->begin(), chassis.EntréesLogiques()->end()),
      sorties(chassis.SortiesLogiques()->begin(), chassis.SortiesLogiques()->end()),
      chien(chassis.Watchdog()) {
  for (const CarteRef& carte : *chassis.Cartes()) {
    for (const FonctionRef& bloc : carte->LesFonctions()) {
      canaux.insert(canaux.end(), bloc->LesCanaux().begin(), bloc->LesCanaux().end());
    }
  }
}

std::size_t ObjetsDuChassis::Nombre() const {
  return capteurs.size() + commandes.size() + entrées.size() + sorties.size() + 1 + canaux.size();
}

ChassisPublié Décrit(const Chassis& chassis, const ObjetsDuChassis& objets, ChassisPublié sujet) {
  sujet.nom = chassis.Nom();
  sujet.fréquence = chassis.FréquenceEA();
  sujet.objets.clear();
  DécritChacun(objets.capteurs, sujet.objets);
  DécritChacun(objets.commandes, sujet.objets);
  DécritChacun(objets.entrées, sujet.objets);
  DécritChacun(objets.sorties, sujet.objets);
  sujet.objets.push_back(Décrit(*objets.chien));
  DécritChacun(objets.canaux, sujet.objets);
  return sujet;
}

}  // namespace zuma::publication
