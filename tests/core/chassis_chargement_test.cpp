// A frame loaded from a real file, then with each column spoiled in turn: what is wrong is told,
// and the rest loads.
#include <gtest/gtest.h>

#include "core/chassis.h"
#include "outils/base_alteree.h"
#include "outils/dossier_provisoire.h"
#include "outils/temoins.h"
#include "platform/linux/base_creation.h"
#include "platform/linux/base_sqlite.h"
#include "platform/linux/demo.h"
#include "platform/linux/schema.h"

namespace zuma {
namespace {

using linux_::LigneDeBase;

Valeur Texte(const char* t) {
  return Valeur(std::string(t));
}
Valeur Nombre(std::int32_t n) {
  return Valeur(n);
}

class UnChassisDansUnFichier : public testing::Test, public essai::Banc {
 public:
  Ref<BaseDeDonnées> Base(const std::vector<LigneDeBase>& lignes) {
    const std::string chemin = dossier.Fichier("base" + std::to_string(++fichiers) + ".db");
    linux_::CréeBase(chemin, lignes);
    return Crée<linux_::BaseSqlite>(chemin);
  }
  void Charge(Chassis& chassis, const Ref<BaseDeDonnées>& base, std::int32_t index = 1) {
    chassis.TimerExact(timer);
    chassis.ChargeErreur(registre);
    chassis.ChargeLeChassis(base, index);
    chassis.Lien(base, std::to_string(index));
    chassis.MiseàJourDesLiens();
  }
  essai::DossierProvisoire dossier;
  int fichiers = 0;
};

TEST_F(UnChassisDansUnFichier, ChargeLArbreEtSesEntréesConnues) {
  const Ref<BaseDeDonnées> base = Base({
      {"Chassis",
       {{"Index", Nombre(4)},
        {"Nom du Chassis", Texte("Presse")},
        {"Frequence rafraichissement capteurs", Nombre(50)},
        {"Entrée Armé", Texte("ARME")},
        {"Entrée Auto/Manu", Texte("arme")},
        {"Départ de cycle d'essai", Texte("PARTIR")},
        {"Départ de cycle de réarmement", Texte("-")},
        {"Entrée manuelle 1", Texte("PARTIR")},
        {"Entrée manuelle 2", Texte("m2")},
        {"Entrée manuelle 3", Texte("m3")},
        {"Entrée manuelle 4", Texte("m4")},
        {"Entrée manuelle 5", Texte("m5")},
        {"Entrée manuelle 6", Texte("m6")}}},
      {"Entrée Logique", {{"Index", Nombre(31)}, {"Nom de l'Entrée Logique", Texte("a")}}},
      {"Entrée Logique", {{"Index", Nombre(32)}, {"Nom de l'Entrée Logique", Texte("b")}}},
      {"Entrée Logique", {{"Index", Nombre(33)}, {"Nom de l'Entrée Logique", Texte("c")}}},
      {"Liaison Chassis / Entrée Logique",
       {{"Chassis", Nombre(4)}, {"Entrée Logique", Nombre(31)}, {"Label", Texte("ARME")}}},
      {"Liaison Chassis / Entrée Logique",
       {{"Chassis", Nombre(4)}, {"Entrée Logique", Nombre(32)}, {"Label", Texte("PARTIR")}}},
      {"Liaison Chassis / Entrée Logique",
       {{"Chassis", Nombre(5)}, {"Entrée Logique", Nombre(33)}, {"Label", Texte("ARME")}}},
  });
  Chassis chassis(plateforme);
  Charge(chassis, base, 4);
  EXPECT_FALSE(registre->Contient("de l'objet Chassis"));
  EXPECT_EQ(chassis.Key(), "4");
  EXPECT_EQ(chassis.Nom(), "Presse");
  ASSERT_EQ(chassis.EntréesLogiques()->Count(), 2) << "the third belongs to another frame";
  ASSERT_TRUE(chassis.AU());
  EXPECT_EQ(chassis.AU()->Key(), "31");
  EXPECT_FALSE(chassis.AutoManu()) << "case counts";
  ASSERT_TRUE(chassis.DépartEssai());
  EXPECT_EQ(chassis.DépartEssai()->Key(), "32");
  EXPECT_FALSE(chassis.DépartRéarme());
  EXPECT_EQ(chassis.EntréesManuelles()->Count(), 1);

  chassis.ChargeLeChassis(base, 4);
  EXPECT_TRUE(registre->Contient("Erreur N°457 (")) << "a frame loads once";
}

TEST_F(UnChassisDansUnFichier, DitUnIndexSansLigneEtUneTableAbsente) {
  const Ref<BaseDeDonnées> base = Base(linux_::LignesDeDémonstration());
  Chassis vide(plateforme);
  Charge(vide, base, 99);
  EXPECT_TRUE(registre->Contient("Erreur N°3021 (")) << "no row to read the name from";
  EXPECT_EQ(vide.Cartes()->Count(), 0);
  vide.Initialise();
  vide.MetàJour();

  registre->entrées.clear();
  Chassis sansBase(plateforme);
  Charge(sansBase, {});
  EXPECT_TRUE(registre->Contient("Erreur N°91 ("));

  registre->entrées.clear();
  Chassis autre(plateforme);
  Charge(autre, base, 1);
  autre.Lien(base, "un");
  EXPECT_TRUE(registre->Contient("Erreur N°13 ("));
}

TEST_F(UnChassisDansUnFichier, RetientLesDéfautsSansColonneDeFréquence) {
  const Ref<BaseDeDonnées> base = Base(linux_::LignesDeDémonstration());
  for (const std::optional<Valeur>& valeur :
       {std::optional<Valeur>(), std::optional<Valeur>(Nul{})}) {
    Chassis chassis(plateforme);
    Charge(chassis, Crée<essai::BaseAltérée>(base, "Chassis", "Frequence rafraichissement capteurs",
                                             valeur));
    EXPECT_FALSE(registre->Contient("de l'objet Chassis"));
    EXPECT_GT(chassis.Cartes()->Count(), 0);
  }
}

// Each column of the tables loaded here, taken away, Null, and of the wrong kind. The schema says
// which of these a load cannot pass over.
// The same for the objects that a host talks to: taken away and Null.
TEST_F(UnChassisDansUnFichier, SurvitAChaqueColonneDObjetAbîmée) {
  const Ref<BaseDeDonnées> base = Base(linux_::LignesDeDémonstration());
  for (const char* nom : {"Capteur", "Commande", "Entrée Logique", "Sortie Logique", "WatchDog"}) {
    for (const auto& colonne : linux_::TrouveTable(nom)->colonnes) {
      if (colonne.nom == "Index") continue;
      for (const std::optional<Valeur>& valeur :
           {std::optional<Valeur>(), std::optional<Valeur>(Nul{})}) {
        registre->entrées.clear();
        Chassis chassis(plateforme);
        chassis.TimerExact(timer);
        chassis.ChargeErreur(registre);
        chassis.ChargeLeChassis(Crée<essai::BaseAltérée>(base, nom, colonne.nom, valeur), 1);
        // A Null that selects nothing passes the load; `check` tells it.
        const bool choix = colonne.nom == "Détection du maxi" ||
                           colonne.nom == "Type de Commande" || colonne.nom == "Etat d'Activation";
        const bool échoue = valeur ? !colonne.nulAdmis && !choix : colonne.requise;
        EXPECT_EQ(!registre->entrées.empty(), échoue)
            << nom << ", " << colonne.nom << (valeur ? " Null" : " absente");
        EXPECT_EQ(chassis.Capteurs()->Count(), 19);
        EXPECT_EQ(chassis.EntréesLogiques()->Count(), 10);
      }
    }
  }
}

TEST_F(UnChassisDansUnFichier, SurvitAChaqueColonneAbîmée) {
  const Ref<BaseDeDonnées> base = Base(linux_::LignesDeDémonstration());
  Chassis bon(plateforme);
  Charge(bon, base);
  ASSERT_TRUE(registre->entrées.empty());
  const std::int32_t cartes = bon.Cartes()->Count();
  for (const char* nom : {"Chassis", "Carte", "Fonction", "Canal"}) {
    for (const auto& colonne : linux_::TrouveTable(nom)->colonnes) {
      const struct {
        const char* quoi;
        std::optional<Valeur> valeur;
      } cas[] = {{"absente", {}},
                 {"Null", Nul{}},
                 {"texte", Texte("douze")},
                 {"trop grande", Valeur(1e12)}};
      for (const auto& c : cas) {
        registre->entrées.clear();
        Chassis chassis(plateforme);
        Charge(chassis, Crée<essai::BaseAltérée>(base, nom, colonne.nom, c.valeur));
        const bool absente = !c.valeur;
        const bool nulle = c.valeur && EstNul(*c.valeur);
        // Columns that the statements themselves name are the database's business.
        const bool dansLInstruction = colonne.nom == "Index" || colonne.nom == "Carte" ||
                                      colonne.nom == "Fonction" ||
                                      (absente && colonne.nom == "Nom de la Fonction");
        if ((absente || nulle) && !dansLInstruction) {
          const bool échoue = absente ? colonne.requise : !colonne.nulAdmis;
          EXPECT_EQ(!registre->entrées.empty(), échoue)
              << nom << ", " << colonne.nom << " " << c.quoi;
        }
        if (colonne.nom != "Index") {
          EXPECT_EQ(chassis.Cartes()->Count(), cartes)
              << nom << ", " << colonne.nom << " " << c.quoi;
        }
        chassis.Initialise();  // without a machine: fails, and tells
        chassis.MetàJour();
      }
    }
  }
}

}  // namespace
}  // namespace zuma
