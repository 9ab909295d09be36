#include "platform/linux/demo.h"

#include <array>
#include <string>
#include <string_view>
#include <utility>

#include "platform/linux/champs.h"
#include "platform/linux/demo_arbre.h"
#include "platform/linux/demo_bus.h"
#include "platform/linux/demo_instruments.h"
#include "platform/linux/demo_objets.h"
#include "platform/linux/demo_pci.h"

namespace zuma::linux_ {
namespace {

using namespace champs;
using namespace types_de_bloc;

constexpr std::array kCartes{
    CarteDémo{1, "ACL 8316 - Mesures", "220", {}},
    CarteDémo{2, "ACL 6128 - Consignes", "240", {}},
    CarteDémo{3, "ACL 8113 - Températures", "260", {}},
    CarteDémo{4, "PCL 813B - Pressions", "280", {}},
    CarteDémo{5, "PCL 728 - Consignes isolées", "2A0", {}},
    CarteDémo{6, "PCL 731 - Pupitre", "2C0", {}},
    CarteDémo{7, "PET 48 DIO - Armoire TB 24", "300", "DrvPET48DIO"},
    CarteDémo{8, "PET 48 DIO - Armoire PCLD", "310", "DrvPET48DIO"},
    CarteDémo{9, "A 826 PG - Extensométrie", "320", {}},
    CarteDémo{10, "ACL 6126 - Vérin auxiliaire", "340", {}},
};

constexpr std::array kBlocs{
    BlocDémo{11, kEA, "DrvACL8316_ACLD8125", false,
             "Force 100 kN;Force 10 kN;Déplacement vérin;Pression alimentation;"
             "Pression utilisation;Extensomètre;Température huile;Débit"},
    BlocDémo{12, kSA, "DrvACL8316", false, "Servovalve;Proportionnelle;Fréquence pompe", 2},
    BlocDémo{13, kEL, "DrvACL8316_ACLD9182", true,
             "Armé;Porte fermée;Fin de course haut;Fin de course bas;Arrêt d'urgence"},
    BlocDémo{14, kSL, "DrvACL8316_ACLD9185", true, "Pompe;Distributeur;Voyant;Sirène"},
    BlocDémo{21, kSA, "DrvACL6128", false, "Consigne 1;Consigne 2;Consigne 3;Consigne 4"},
    BlocDémo{31, kEA, "DrvACL8113", false,
             "Four zone 1;Four zone 2;Four zone 3;Eprouvette;Mors haut;Mors bas"},
    BlocDémo{41, kEA, "DrvPCL813_PCLD881", false,
             "Pression chambre 1;Pression chambre 2;Pression retour;Pression accumulateur"},
    BlocDémo{51, kSA, "DrvPCL728", false, "Limiteur de pression;Chauffage"},
    BlocDémo{61, kEL, "DrvPCL731_PCLD782B", true,
             "Départ essai;Départ réarmement;Auto manu;Montée;Descente;Acquittement"},
    BlocDémo{62, kSL, "DrvPCL731_PCLD7225", true,
             "Voyant marche;Voyant défaut;Voyant auto;Voyant manu"},
    BlocDémo{71, kEL, "DrvPET48DIO_TB24P", true,
             "Niveau huile;Colmatage filtre;Température haute;Thermique pompe"},
    BlocDémo{72, kSL, "DrvPET48DIO_TB24R", true,
             "Refroidissement;Filtration;Electrovanne 1;Electrovanne 2"},
    BlocDémo{81, kEL, "DrvPET48DIO_PCLD782B", true,
             "Mors haut serré;Mors bas serré;Verrou traverse;Carter fermé"},
    BlocDémo{82, kSL, "DrvPET48DIO_PCLD7225", true,
             "Serrage haut;Serrage bas;Verrouillage traverse;Eclairage"},
    BlocDémo{91, kEA, "DrvA826PG_DB8225", false, "Jauge 1;Jauge 2;Jauge 3;Jauge 4"},
    BlocDémo{92, kSA, "DrvA826PG", false, "Alimentation pont 1;Alimentation pont 2"},
    BlocDémo{93, kEL, "DrvA826PG_DB16P", true, "Pont présent;Zéro demandé"},
    BlocDémo{94, kSL, "DrvA826PG_DB16R", true, "Shunt jauge 1;Shunt jauge 2"},
    BlocDémo{101, kSA, "DrvACL6126", false, "Consigne vérin;Consigne amortisseur"},
    BlocDémo{102, kEL, "DrvACL6126_ACLD9182", true, "Vérin rentré;Vérin sorti"},
    BlocDémo{103, kSL, "DrvACL6126_ACLD9185", true, "Rentrée vérin;Sortie vérin"},
};

constexpr ChassisDémo kPresse{.index = kChassisDeDémonstration,
                              .nom = "Presse de démonstration",
                              .cartes = kCartes,
                              .blocs = kBlocs,
                              .colonnes = {},
                              .capteurs = {},
                              .commandes = {}};

// Labels of the well-known inputs. None is left empty: an empty one means every input without a
// label.
constexpr std::array<std::pair<std::string_view, std::string_view>, 11> kEntréesConnues{{
    {"Départ de cycle d'essai", "Départ essai"},
    {"Départ de cycle de réarmement", "Départ réarmement"},
    {"Départ de cyle manuel", "Départ manuel"},
    {"Entrée Auto/Manu", "Auto manu"},
    {"Entrée Armé", "Armé"},
    {"Entrée manuelle 1", "Montée"},
    {"Entrée manuelle 2", "Descente"},
    {"Entrée manuelle 3", "Manuelle 3"},
    {"Entrée manuelle 4", "Manuelle 4"},
    {"Entrée manuelle 5", "Manuelle 5"},
    {"Entrée manuelle 6", "Manuelle 6"},
}};

LigneDeBase Chassis() {
  LigneDeBase ligne{"Chassis",
                    {Entier("Index", kChassisDeDémonstration), Texte("Nom du Chassis", kPresse.nom),
                     Entier("Frequence rafraichissement capteurs", 200),
                     Entier("Frequence rafraichissement entrées logiques", 20)}};
  for (const auto& [colonne, label] : kEntréesConnues) {
    ligne.champs.push_back(Texte(colonne, label));
  }
  return ligne;
}

}  // namespace

std::vector<LigneDeBase> LignesDeDémonstration() {
  std::vector<LigneDeBase> lignes{Chassis()};
  AjouteLArbre(kPresse, lignes);
  AjouteLesObjetsDeDémonstration(lignes);
  for (const ChassisDémo* chassis : {&kDémoBus, &kDémoInstruments, &kDémoPCI})
    AjouteLeChassis(*chassis, lignes);
  return lignes;
}

}  // namespace zuma::linux_
