// The schema, the creation of a file, and a whole frame loaded from one.
#include "platform/linux/schema.h"

#include <algorithm>
#include <map>
#include <set>

#include <gtest/gtest.h>

#include "core/chassis.h"
#include "outils/dossier_provisoire.h"
#include "outils/temoins.h"
#include "platform/linux/base_creation.h"
#include "platform/linux/base_sqlite.h"
#include "platform/linux/demo.h"
#include "tree/driver_table.h"

namespace zuma::linux_ {
namespace {

namespace fs = std::filesystem;

TEST(LeSchéma, NommeChaqueColonneUneFois) {
  const std::map<std::string_view, std::size_t> nombres{
      {"Chassis", 15},        {"Carte", 7},          {"Fonction", 19},
      {"Canal", 14},          {"Capteur", 103},      {"Commande", 61},
      {"Entrée Logique", 12}, {"Sortie Logique", 4}, {"WatchDog", 5}};
  for (const TableDuSchéma& table : TablesDuSchéma()) {
    std::set<std::string> noms;
    for (const ColonneDuSchéma& c : table.colonnes) {
      EXPECT_TRUE(noms.insert(c.nom).second) << table.nom << " " << c.nom;
      // A row made of defaults must load: no Null where the loader wants a value, except keys.
      const bool clé = c.type == TypeColonne::Entier && c.requise && c.défaut.empty();
      EXPECT_TRUE(c.nulAdmis || !c.défaut.empty() || clé) << table.nom << " " << c.nom;
    }
    const auto nombre = nombres.find(table.nom);
    if (nombre != nombres.end()) {
      EXPECT_EQ(noms.size(), nombre->second) << table.nom;
    }
    EXPECT_EQ(table.liaison, nombre == nombres.end()) << table.nom;
  }
  EXPECT_EQ(TrouveTable("Capteurs"), nullptr);
}

TEST(LeSchéma, GardeLesPlacesEtLesTypesQuiComptent) {
  const TableDuSchéma* capteur = TrouveTable("Capteur");
  ASSERT_NE(capteur, nullptr);
  const auto* unité = capteur->TrouveColonne("Point 1 - Unité");
  ASSERT_NE(unité, nullptr);
  EXPECT_EQ((unité + 1)->nom, "Point 1 - Point");
  EXPECT_EQ((unité + 39)->nom, "Point 20 - Point");
  EXPECT_EQ(capteur->TrouveColonne("Point 21 - Unité"), nullptr);
  EXPECT_NE(capteur->TrouveColonne("Capteur Fils N° 1"), nullptr);
  const TableDuSchéma* entrée = TrouveTable("Entrée Logique");
  ASSERT_NE(entrée, nullptr);
  EXPECT_EQ(entrée->colonnes.back().nom, "Etat si rien de connecte");
  EXPECT_EQ(entrée->TrouveColonne("Etat d'Activation")->type, TypeColonne::Entier);
}

class UneCréation : public testing::Test, protected essai::Banc {
 protected:
  static int Crée(const std::string& chemin, const std::vector<LigneDeBase>& lignes) {
    try {
      CréeBase(chemin, lignes);
    } catch (const Echec& e) {
      return e.NuméroErreur();
    }
    return 0;
  }
  essai::DossierProvisoire dossier;
  std::string fichier = dossier.Fichier("base.db");
};

TEST_F(UneCréation, NeLaisseRienDerrièreUnEchec) {
  const struct {
    LigneDeBase ligne;
    int échec;
  } cas[] = {
      {{"Balance", {}}, 3078},
      {{"Carte", {{"Couleur", Valeur(1)}}}, 3061},
      {{"Carte", {{"Nom de la Carte", Valeur(Nul{})}}}, 94},
      {{"Carte", {{"Index", Valeur(std::string("un"))}}}, 13},
      {{"Canal", {{"Index", Valeur(1)}}}, 94},
  };
  for (const auto& c : cas) {
    EXPECT_EQ(Crée(fichier, {{"Carte", {{"Index", Valeur(1)}}}, c.ligne}), c.échec);
    EXPECT_TRUE(fs::is_empty(dossier.Chemin())) << c.échec;
  }
  EXPECT_EQ(Crée(dossier.Fichier("pas/là.db"), {}), 76);
  EXPECT_EQ(Crée(fichier, {{"Carte", {{"Index", Valeur(1)}}}, {"Carte", {}}}), 0);
  EXPECT_EQ(Crée(fichier, {}), 58);
  EXPECT_EQ(BaseSqlite(fichier).OpenRecordset("SELECT ALL * FROM [Carte]")->RecordCount(), 2)
      << "an existing file is not touched";
}

TEST_F(UneCréation, DonneUneDémonstrationQuiSeCharge) {
  ASSERT_EQ(Crée(fichier, LignesDeDémonstration()), 0);
  const auto base = zuma::Crée<BaseSqlite>(fichier);
  EXPECT_TRUE(base->ProblèmesDIntégrité().empty());

  Chassis chassis(plateforme);
  chassis.TimerExact(timer);
  chassis.ChargeErreur(registre);
  chassis.ChargeLeChassis(base, kChassisDeDémonstration);
  chassis.Lien(base, std::to_string(kChassisDeDémonstration));
  chassis.MiseàJourDesLiens();
  EXPECT_TRUE(messages.textes.empty()) << messages.textes.front();
  EXPECT_TRUE(registre->entrées.empty()) << registre->entrées.front().message;
  EXPECT_EQ(chassis.Nom(), "Presse de démonstration");

  // Every driver of the port-mapped I/O boards stands there, on the type of block it serves.
  std::set<ENUM_DRIVER> servis;
  std::vector<std::int32_t> adresses;
  for (const CarteRef& carte : *chassis.Cartes()) {
    adresses.push_back(carte->Adresse());
    for (const FonctionRef& bloc : carte->LesFonctions()) {
      EXPECT_TRUE(LigneDuDriver(bloc->Driver_enm()).Sert(bloc->TypeDeFonction())) << bloc->Key();
      EXPECT_EQ(bloc->Canals()->Count(), bloc->NombreDeCanaux()) << bloc->Key();
      EXPECT_GE(bloc->Canals()->Count(), 2);
      EXPECT_EQ(bloc->Adresse(), carte->Adresse());
      servis.insert(bloc->Driver_enm());
      std::int16_t numéro = 0;
      for (const CanalRef& canal : *bloc->Canals()) {
        EXPECT_EQ(canal->NuméroCanal(), numéro++);
        EXPECT_FALSE(canal->Nom().empty());
      }
    }
  }
  for (const LigneDriver& ligne : TableDesDrivers()) {
    const bool surUnBus = ligne.nom.starts_with("drvpci") || ligne.nom.starts_with("drvPCI") ||
                          ligne.valeur >= ENUM_DRIVER::DrvRègleMTS1Aimant;
    const bool codeurs = ligne.valeur == ENUM_DRIVER::DrvIK121;
    if (ligne.pilote == nullptr || surUnBus || codeurs) continue;
    EXPECT_TRUE(servis.contains(ligne.valeur)) << ligne.nom;
  }
  constexpr std::int32_t kPlusGrandeCarte = 16;
  std::ranges::sort(adresses);
  for (std::size_t i = 1; i < adresses.size(); ++i) {
    EXPECT_GE(adresses[i] - adresses[i - 1], kPlusGrandeCarte);
  }
}

}  // namespace
}  // namespace zuma::linux_
