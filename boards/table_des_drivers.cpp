#include "boards/table_des_drivers.h"

#include <array>

#include "boards/operations.h"
#include "instruments/operations.h"
#include "platform/reglages.h"
#include "tree/echange_modbus.h"
#include "tree/operations_arbre.h"

namespace zuma {
namespace {

using enum ENUM_DRIVER;

constexpr TypesServis kEL = TypeServi(ENUM_TYPE_FONCTION::FctEntréesLogiques);
constexpr TypesServis kSL = TypeServi(ENUM_TYPE_FONCTION::FctSortiesLogiques);
constexpr TypesServis kEA = TypeServi(ENUM_TYPE_FONCTION::FctEntréesAnalogiques);
constexpr TypesServis kSA = TypeServi(ENUM_TYPE_FONCTION::FctSortiesAnalogiques);
constexpr TypesServis kTous = kEL | kSL | kEA | kSA;

constexpr LigneDriver Bloc(ENUM_DRIVER valeur, std::string_view nom, std::string_view affichage,
                           std::string_view texte, TypesServis types,
                           const OpérationsPilote* pilote) {
  return {.valeur = valeur,
          .nom = nom,
          .affichage = affichage,
          .texteCarte = {},
          .texteFonction = texte,
          .texteCanal = {},
          .types = types,
          .pilote = pilote};
}

// The same text selects the driver of the whole board.
constexpr LigneDriver DuBlocEtDeLaCarte(LigneDriver ligne, const OpérationsCarte* carte = nullptr) {
  ligne.texteCarte = ligne.texteFonction;
  ligne.carte = carte;
  return ligne;
}

constexpr LigneDriver AuCanal(ENUM_DRIVER valeur, std::string_view nom, std::string_view texte,
                              const OpérationsPilote* pilote) {
  return {.valeur = valeur,
          .nom = nom,
          .affichage = {},
          .texteCarte = {},
          .texteFonction = {},
          .texteCanal = texte,
          .types = kEA,
          .pilote = pilote};
}

constexpr LigneDriver ALaCarte(ENUM_DRIVER valeur, std::string_view nom, std::string_view texte,
                               ServiceCarte service, const OpérationsCarte* carte = nullptr) {
  return {.valeur = valeur,
          .nom = nom,
          .affichage = {},
          .texteCarte = texte,
          .texteFonction = {},
          .texteCanal = {},
          .service = service,
          .carte = carte};
}

constexpr LigneDriver QuiAttend(LigneDriver ligne, AttenteCarte attente) {
  ligne.attente = attente;
  return ligne;
}

constexpr LigneDriver Câblé(std::string_view note, LigneDriver ligne, std::int16_t lignesLues = 0) {
  ligne.câblage = note;
  ligne.lignesLues = lignesLues;
  return ligne;
}

constexpr LigneDriver QuiDémarreParSaSortie(LigneDriver ligne) {
  ligne.sortieQuiDémarre = true;
  return ligne;
}

// Every how many seconds a device gives its readings when it is well, for their ages.
constexpr LigneDriver TousLes(double secondes, LigneDriver ligne) {
  ligne.période = secondes;
  return ligne;
}

// What each may hold a pass up for is the limit that the driver's own file sets to its wait;
// docs/passes.md has what the twins measure of it.
constexpr LigneDriver QuiRetient(LigneDriver ligne, RetenueDeDriver retenue) {
  ligne.retenue = retenue;
  return ligne;
}

double DUneTrame(const Réglages& réglages) {
  constexpr double kMillisecondes = 1000;
  return réglages.can.attenteLecture / kMillisecondes;
}
double DeDeuxTrames(const Réglages& réglages) {
  return 2 * DUneTrame(réglages);
}
template <int kMillisecondes>
double Constante(const Réglages& /*réglages*/) {
  return kMillisecondes / 1000.0;
}

constexpr RetenueDeDriver kUneTrame{.parCanal = true, .secondes = &DUneTrame};
constexpr RetenueDeDriver kDeuxTrames{.parCanal = true, .secondes = &DeDeuxTrames};

constexpr double kCycleDUnBus = 0.4;  // a walk over some blocks, with one that is silent
constexpr double kIndicateur = 0.5;   // of a balance that sends unasked

constexpr OpérationsPilote kModBus{.rafraîchitBloc = &echange_modbus::Rafraîchit};

constexpr auto kParFonction = ServiceCarte::ParFonction;
constexpr auto kCarteEntière = ServiceCarte::CarteEntière;

// In the order of the values.
const std::array<LigneDriver, 55> kTable{{
    // Read as one word, which leaves the last line out.
    Câblé("PCL 731, the inputs are on the first connector (ports 0 to 2)",
          Bloc(DrvPCL731_PCLD782B, "DrvPCL731_PCLD782B", "PCL 731 - PCLD 782 B",
               "DrvPCL731_PCLD782B", kEL, &pilotes::kPCL731Entrées),
          23),
    Bloc(DrvPET48DIO_TB24P, "DrvPET48DIO_TB24P", "PET 48 DIO - TB 24 P", "DrvPET48DIO_TB24P", kEL,
         &pilotes::kPET48EntréesTB24),
    Bloc(DrvACL8316_ACLD9182, "DrvACL8316_ACLD9182", "ACL 8316 - ACLD 9182", "DrvACL8316_ACLD9182",
         kEL, &pilotes::kACL8316Entrées),
    Bloc(DrvA826PG_DB16B, "DrvA826PG_DB16B", "A 826 PG - DB 16 P", "DrvA826PG_DB16P", kEL,
         &pilotes::kA826Entrées),
    Bloc(DrvACL6126_ACLD9182, "DrvACL6126_ACLD9182", "ACL 6126 - ACLD 9182", "DrvACL6126_ACLD9182",
         kEL, &pilotes::kACL6126Entrées),
    Bloc(DrvPET48DIO_PCLD782B, "DrvPET48DIO_PCLD782B", "PET 48 DIO - PCLD 782 B",
         "DrvPET48DIO_PCLD782B", kEL, &pilotes::kPET48EntréesPCLD),
    Bloc(drvPCI9111HR_Vorlanex_EL, "drvPCI9111HR_Vorlanex_EL", "PCI 9111 HR - Vorlanex EL",
         "DrvPCI9111HR/Vorlanex EL", kEL, &pilotes::kPCI9111Entrées),
    Câblé("PCL 731, the outputs are on the second connector (ports 4 to 6)",
          Bloc(DrvPCL731_PCLD7225, "DrvPCL731_PCLD7225", "PCL 731 - PCLD 7225",
               "DrvPCL731_PCLD7225", kSL, &pilotes::kPCL731Sorties)),
    Bloc(DrvPET48DIO_TB24R, "DrvPET48DIO_TB24R", "PET 48 DIO - TB 24 R", "DrvPET48DIO_TB24R", kSL,
         &pilotes::kPET48SortiesTB24),
    Bloc(DrvACL8316_ACLD9185, "DrvACL8316_ACLD9185", "ACL 8316 - ACLD 9185", "DrvACL8316_ACLD9185",
         kSL, &pilotes::kACL8316Sorties),
    Bloc(DrvA826PG_DB16R, "DrvA826PG_DB16R", "A 826 PG - DB 16 R", "DrvA826PG_DB16R", kSL,
         &pilotes::kA826Sorties),
    Bloc(DrvACL6126_ACLD9185, "DrvACL6126_ACLD9185", "ACL 6126 - ACLD 9185", "DrvACL6126_ACLD9185",
         kSL, &pilotes::kACL6126Sorties),
    Bloc(DrvPET48DIO_PCLD7225, "DrvPET48DIO_PCLD7225", "PET 48 DIO - PCLD 7225",
         "DrvPET48DIO_PCLD7225", kSL, &pilotes::kPET48SortiesPCLD),
    Bloc(drvPCI9111HR_Vorlanex_SL, "drvPCI9111HR_Vorlanex_SL", "PCI 9111 HR - Vorlanex SL",
         "DrvPCI9111HR/Vorlanex SL", kSL, &pilotes::kPCI9111Sorties),
    Bloc(DrvPCL813_PCLD881, "DrvPCL813_PCLD881", "PCL 813 - PCLD 881", "DrvPCL813_PCLD881", kEA,
         &pilotes::kPCL813Analogique),
    Bloc(DrvACL8113, "DrvACL8113", "ACL 8113", "DrvACL8113", kEA, &pilotes::kACL8113Analogique),
    Bloc(DrvACL8316_ACLD8125, "DrvACL8316_ACLD8125", "ACL 8316 - ACLD 8125", "DrvACL8316_ACLD8125",
         kEA, &pilotes::kACL8316Analogique),
    QuiRetient(Bloc(DrvIK121, "DrvIK121", "IK 121", "DrvIK121", kEA, &pilotes::kIK121),
               {.parCanal = true, .secondes = &Constante<1>}),
    Bloc(DrvA826PG_DB8225, "DrvA826PG_DB8225", "A 826 PG - DB 8225", "DrvA826PG_DB8225", kEA,
         &pilotes::kA826Analogique),
    DuBlocEtDeLaCarte(
        Bloc(drvpci7841, "drvpci7841", "PCI 7841", "DrvPCI7841", kEA, &pilotes::kPCI7841),
        &pilotes::kPCI7841Carte),
    QuiAttend(DuBlocEtDeLaCarte(Bloc(drvpci7841_2, "drvpci7841_2", "PCI 7841 - 2", "DrvPCI7841-2",
                                     kEA, &pilotes::kPCI7841B)),
              AttenteCarte::Réponse),
    Bloc(drvPCI9111HR_Vorlanex_EA, "drvPCI9111HR_Vorlanex_EA", "PCI 9111 HR - Vorlanex EA",
         "DrvPCI9111HR/Vorlanex EA", kEA, &pilotes::kPCI9111Analogique),
    Bloc(DrvPCL728, "DrvPCL728", "PCL 728", "DrvPCL728", kSA, &pilotes::kPCL728Sorties),
    Bloc(DrvACL6128, "DrvACL6128", "ACL 6128", "DrvACL6128", kSA, &pilotes::kACL6128Sorties),
    Bloc(DrvACL8316, "DrvACL8316", "ACL 8316", "DrvACL8316", kSA,
         &pilotes::kACL8316SortiesAnalogiques),
    Bloc(DrvA826PG, "DrvA826PG", "A 826 PG", "DrvA826PG", kSA, &pilotes::kA826SortiesAnalogiques),
    Bloc(DrvACL6126, "DrvACL6126", "ACL 6126", "DrvACL6126", kSA,
         &pilotes::kACL6126SortiesAnalogiques),
    Bloc(drvPCI9111HR_Vorlanex_SA, "drvPCI9111HR_Vorlanex_SA", "PCI 9111 HR - Vorlanex SA",
         "DrvPCI9111HR/Vorlanex SA", kSA, &pilotes::kPCI9111SortiesAnalogiques),
    Bloc(drvPCI6208V_Vorlanex_SA, "drvPCI6208V_Vorlanex_SA", "PCI 6208 V - Vorlanex SA",
         "DrvPCI6208V/Vorlanex SA", kSA, &pilotes::kPCI6208VSorties),
    // The watchdog board is driven by `Watchdog`, not through blocks.
    {.valeur = DrvWDT01,
     .nom = "DrvWDT01",
     .affichage = "WDT 01",
     .texteCarte = {},
     .texteFonction = "DrvWDT01",
     .texteCanal = {}},
    QuiRetient(AuCanal(DrvRègleMTS1Aimant, "DrvRègleMTS1Aimant", "Règle MTS 1 aimant",
                       &pilotes::kRègle1Aimant),
               kUneTrame),
    QuiRetient(AuCanal(DrvRègleMTS3Aimants3, "DrvRègleMTS3Aimants3",
                       "Règle MTS 3 aimants (lecture 3)", &pilotes::kRègle3Aimants3),
               kDeuxTrames),
    QuiRetient(AuCanal(DrvRègleMTS3Aimants2_1, "DrvRègleMTS3Aimants2_1",
                       "Règle MTS 3 aimants (lecture 2-1)", &pilotes::kRègle3Aimants2_1),
               kDeuxTrames),
    AuCanal(DrvRègleMTSMultiMagnet, "DrvRègleMTSMultiMagnet", "Règle MTS Multimagnet",
            &pilotes::kRègleMultimagnet),
    {.valeur = DrvModBus,
     .nom = "DrvModBus",
     .affichage = {},
     .texteCarte = "DrvModBus",
     .texteFonction = "DrvModBus",
     .texteCanal = {},
     .types = kTous,
     .service = ServiceCarte::BusAvecSuivante,
     .période = kCycleDUnBus,
     .surLaLigneDeLaCarte = true,
     .élagueLesSorties = true,
     .pilote = &kModBus,
     .carte = &opérations_arbre::kLigneSérie},
    {.valeur = DrvLvdtSolartron,
     .nom = "DrvLvdtSolartron",
     .affichage = {},
     .texteCarte = "Drv SOLARTRON LVDT",
     .texteFonction = "Drv SOLARTRON LVDT",
     .texteCanal = {},
     .types = kEA,
     .attente = AttenteCarte::Réponse,
     // One module a pass: the network is connected anew, which leaves the module out of service.
     .retenue = {.secondes = &Constante<500>},
     .pilote = &pilotes::kOrbit,
     .carte = &pilotes::kOrbitCarte},
    {.valeur = DrvRS232,
     .nom = "DrvRS232",
     .affichage = {},
     .texteCarte = "Drv RS 232",
     .texteFonction = "Drv RS 232",
     .texteCanal = {},
     .types = kEA,
     .pilote = &pilotes::kLigneRS232,
     .carte = &pilotes::kRS232Carte},
    {.valeur = drvPET48DIO,
     .nom = "drvPET48DIO",
     .affichage = {},
     .texteCarte = "DrvPET48DIO",
     .texteFonction = {},
     .texteCanal = {},
     .carte = &pilotes::kPET48Carte},
    ALaCarte(DrvPCI9111HR, "DrvPCI9111HR", "DrvPCI9111HR", kParFonction, &pilotes::kPCI9111Carte),
    ALaCarte(DrvPCI_6208_V, "DrvPCI_6208_V", "DrvPCI 6208 V", kParFonction,
             &pilotes::kPCI6208VCarte),
    {.valeur = Drv_UMV4301_Modbus,
     .nom = "Drv_UMV4301_Modbus",
     .affichage = {},
     .texteCarte = "Drv_UMV4301_Modbus",
     .texteFonction = "Drv_UMV4301_Modbus",
     .texteCanal = {},
     .service = ServiceCarte::BusSimple,
     .période = kCycleDUnBus,
     .carte = &opérations_arbre::kLigneSérie},
    {.valeur = Drv_VarioLS_K9_Modbus,
     .nom = "Drv_VarioLS_K9_Modbus",
     .affichage = {},
     .texteCarte = "Variateur LS Modbus et soft K9",
     .texteFonction = "Variateur LS Modbus et soft K9",
     .texteCanal = {},
     .service = kCarteEntière,
     .carte = &instruments::kVariateurLS},
    QuiRetient(QuiAttend(ALaCarte(Drv_Thumler, "Drv_Thumler", "Thumler", kCarteEntière,
                                  &instruments::kThumler),
                         AttenteCarte::Réponse),
               {.secondes = &Constante<53>}),
    TousLes(0.2, ALaCarte(Drv_EIR_LASER, "Drv_EIR_LASER", "Extensometre EIR LASER", kCarteEntière,
                          &instruments::kLaserEIR)),
    // The pauses of a start, well or silent.
    QuiDémarreParSaSortie(QuiRetient(QuiAttend(ALaCarte(Drv_UTS_0107, "Drv_UTS_0107", "UTS-0107",
                                                        kCarteEntière, &instruments::kTesteurCBR),
                                               AttenteCarte::Pauses),
                                     {.secondes = &Constante<1200>})),
    TousLes(kIndicateur, ALaCarte(Drv_Balance_GRAM, "Drv_Balance_GRAM", "Balance GRAM",
                                  kCarteEntière, &instruments::kBalanceGram)),
    // Not refreshed by the pass, which goes block by block here: the host refreshes the board.
    ALaCarte(DrvSpiderV1, "DrvSpiderV1", "Spider V1", kParFonction, &instruments::kSpider),
    ALaCarte(DrvConditionneurNumeriqueK9, "DrvConditionneurNumeriqueK9",
             "Conditionneur numerique K9", kParFonction, &instruments::kConditionneurK9),
    ALaCarte(DrvConditionneurNumeriqueK9_V1_00, "DrvConditionneurNumeriqueK9_V1_00",
             "Conditionneur numerique K9 V1.00", kCarteEntière, &instruments::kConditionneurK9V1),
    TousLes(kIndicateur, AuCanal(DrvRS232BalanceLRPC31, "DrvRS232BalanceLRPC31",
                                 "RS232 - Balance LRPC 31", &pilotes::kBalanceLRPC31)),
    TousLes(kIndicateur, AuCanal(DrvRS232IndicateurDEXAL, "DrvRS232IndicateurDEXAL",
                                 "RS232 - Indicateur DEXAL", &pilotes::kIndicateurDEXAL)),
    TousLes(kIndicateur, AuCanal(DrvRS232_Balance_JADEVER, "DrvRS232_Balance_JADEVER",
                                 "RS232 - Balance JADEVER", &pilotes::kBalanceJADEVER)),
    Bloc(DrvSpider8, "DrvSpider8", {}, "Drv RS232 - SPIDER", kEA, &pilotes::kSpider8),
    TousLes(0.2,
            Bloc(DrvRS232METRO, "DrvRS232METRO", {}, "Drv METRO RS232", kEA, &pilotes::kMETRO)),
    TousLes(0.8, Bloc(DrvRS232METRO_MUX, "DrvRS232METRO_MUX", {}, "Drv METRO RS232 MUX 2/4/8", kEA,
                      &pilotes::kMETRO_MUX)),
}};

}  // namespace

std::span<const LigneDriver> DriversDeZuma() noexcept {
  return kTable;
}

Ref<RegistreDesDrivers> CréeLesDrivers() {
  const auto registre = Crée<RegistreDesDrivers>();
  registre->Ajoute(kTable);
  return registre;
}

}  // namespace zuma
