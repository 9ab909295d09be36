// Loading of a frame from its database.
#include <optional>
#include <string>

#include "base/colonnes.h"
#include "base/garde.h"
#include "base/lignes.h"
#include "base/requetes.h"
#include "core/chassis.h"

namespace zuma {
namespace {

// Sensors are built before the frame's own rate is read.
constexpr double kFréquenceDesCapteurs = 200;

// The label lives in the link row: one object bears another label on another frame.
template <class T>
void LitLabel(BaseDeDonnées& base, const requêtes::ObjetLié& requête, std::int32_t index,
              std::int32_t chassis, T& objet) {
  const auto liaison = base.OpenRecordset(requête.liaison(index, chassis));
  if (liaison->RecordCount() == 0) return;
  liaison->MoveFirst();
  const Valeur& label = LitChamp(*liaison, "Label");
  if (!EstNul(label)) objet.Label(VersTexte(label));
}

}  // namespace

void Chassis::ChargeLeChassis(const Ref<BaseDeDonnées>& dtbMaBase, std::int32_t lngIndexChassis) {
  Garde(*this, Forme::Méthode, "ChargeLeChassis", [&] {
    std::optional<LecturesCohérentes> lectures;
    if (dtbMaBase->LecturesACommencer()) lectures.emplace(dtbMaBase);
    ChargeCartes(dtbMaBase, lngIndexChassis);
    ChargeCapteurs(dtbMaBase, lngIndexChassis);
    ChargeCommandes(dtbMaBase, lngIndexChassis);
    ChargeEntréesLogiques(dtbMaBase, lngIndexChassis);
    ChargeSortiesLogiques(dtbMaBase, lngIndexChassis);
    ChargeWatchDog(dtbMaBase, lngIndexChassis);
    LitLaLigne(dtbMaBase, lngIndexChassis);
    Key(std::to_string(lngIndexChassis));
  });
}

void Chassis::LitLaLigne(const Ref<BaseDeDonnées>& base, std::int32_t chassis) {
  const auto ligne = base->OpenRecordset(requêtes::LigneDuChassis(chassis));
  Nom_ = colonnes::Texte(*ligne, "Nom du Chassis");
  const auto litFréquence = [&](std::string_view colonne, double& fréquence) {
    const Valeur* valeur = ChercheChamp(*ligne, colonne);
    if (valeur == nullptr || EstNul(*valeur)) return;
    fréquence = colonnes::EnNommant(colonne, [&] { return VersDouble(*valeur); });
  };
  litFréquence("Frequence rafraichissement capteurs", mdblFréquenceEA);
  litFréquence("Frequence rafraichissement entrées logiques", mdblFréquenceEL);
}

template <class Collection, class LitLigne>
void Chassis::ChargeObjets(std::string_view nom, const Ref<BaseDeDonnées>& base,
                           std::int32_t chassis, const requêtes::ObjetLié& requête,
                           Collection& collection, LitLigne&& lit) {
  Garde(*this, Forme::Procédure, nom, [&] {
    const auto liste = base->OpenRecordset(requête.liste(chassis));
    lignes::PourChacune(*this, Forme::Procédure, nom, requête.table, *liste,
                        [&](std::int32_t index) {
                          const std::string clé = std::to_string(index);
                          collection.Add(clé);
                          const auto objet = collection.Item(clé);
                          objet->TimerExact(Timer());
                          objet->ChargeErreur(Erreur());
                          lit(index, *objet);
                          if (requête.liaison != nullptr) {
                            if constexpr (requires { objet->Label(std::string()); }) {
                              LitLabel(*base, requête, index, chassis, *objet);
                            }
                          }
                        });
  });
}

void Chassis::ChargeCartes(const Ref<BaseDeDonnées>& base, std::int32_t chassis) {
  ChargeObjets("ChargeCartes", base, chassis, requêtes::kCartes, *Cartes(),
               [&](std::int32_t index, Carte& carte) {
                 carte.ChargeLesFonctions(base, index);
                 carte.ParamètresDepuisBD(base->OpenRecordset(requêtes::kCartes.ligne(index)));
               });
  Garde(*this, Forme::Procédure, "ChargeCartes", [&] { ElagueLesSortiesModbus(); });
}

// A Modbus block of logic outputs keeps exactly its number of channels, the first ones; negative
// numbers, such as the error channel's, do not count.
void Chassis::ElagueLesSortiesModbus() {
  for (const CarteRef& carte : *Cartes()) {
    for (const FonctionRef& fonction : carte->LesFonctions()) {
      if (!fonction->LeDriver().élagueLesSorties ||
          fonction->TypeDeFonction() != ENUM_TYPE_FONCTION::FctSortiesLogiques) {
        continue;
      }
      std::int32_t gardés = 0;
      fonction->Canals()->RetireSi([&](const CanalRef& canal) {
        return canal->NuméroCanal() >= 0 && ++gardés > fonction->NombreDeCanaux();
      });
    }
  }
}

void Chassis::ChargeCapteurs(const Ref<BaseDeDonnées>& base, std::int32_t chassis) {
  ChargeObjets("ChargeCapteurs", base, chassis, requêtes::kCapteurs, *Capteurs(),
               [&](std::int32_t index, Capteur& capteur) {
                 capteur.ParamètresDepuisBD(base->OpenRecordset(requêtes::kCapteurs.ligne(index)),
                                            kFréquenceDesCapteurs);
               });
}

void Chassis::ChargeCommandes(const Ref<BaseDeDonnées>& base, std::int32_t chassis) {
  ChargeObjets(
      "ChargeCommandes", base, chassis, requêtes::kCommandes, *Commandes(),
      [&](std::int32_t index, Commande& commande) {
        commande.ParamètresDepuisBD(base->OpenRecordset(requêtes::kCommandes.ligne(index)));
      });
}

void Chassis::ChargeEntréesLogiques(const Ref<BaseDeDonnées>& base, std::int32_t chassis) {
  ChargeObjets(
      "ChargeEntréesLogiques", base, chassis, requêtes::kEntréesLogiques, *EntréesLogiques(),
      [&](std::int32_t index, EntréeLogique& entrée) {
        entrée.ParamètresDepuisBD(base->OpenRecordset(requêtes::kEntréesLogiques.ligne(index)));
      });
}

void Chassis::ChargeSortiesLogiques(const Ref<BaseDeDonnées>& base, std::int32_t chassis) {
  ChargeObjets(
      "ChargeSortiesLogiques", base, chassis, requêtes::kSortiesLogiques, *SortiesLogiques(),
      [&](std::int32_t index, SortieLogique& sortie) {
        sortie.ParamètresDepuisBD(base->OpenRecordset(requêtes::kSortiesLogiques.ligne(index)));
      });
}

// The frame has a single watchdog: with several linked rows the last one wins.
void Chassis::ChargeWatchDog(const Ref<BaseDeDonnées>& base, std::int32_t chassis) {
  Valeur index;
  const auto garde = [&](auto&& travail) {
    Garde(*this, Forme::Procédure, "ChargeWatchDog", travail, [&](Variables& v) {
      v.Ajoute("IndexChassis", chassis);
      v.Ajoute("IndexDelEntréeLogique", index);
    });
  };
  const auto charge = [&](std::int32_t n) {
    Watchdog()->TimerExact(Timer());
    Watchdog()->ChargeErreur(Erreur());
    Watchdog()->ParamètresDepuisBD(base->OpenRecordset(requêtes::kWatchDog.ligne(n)));
  };
  garde([&] {
    const auto liste = base->OpenRecordset(requêtes::kWatchDog.liste(chassis));
    if (liste->RecordCount() == 0) return;
    for (liste->MoveFirst(); !liste->FinDeTable(); liste->MoveNext()) {
      garde([&] {
        index = LitChamp(*liste, "Index");
        lignes::EnNommant(requêtes::kWatchDog.table, *liste, charge);
      });
    }
  });
}

}  // namespace zuma
