#include "platform/linux/demo_pci.h"

#include <array>

#include "platform/linux/demo.h"

namespace zuma::linux_ {
namespace {

using namespace types_de_bloc;

constexpr std::array kCartes{
    CarteDémo{31, "PCI 9111 HR - Mesures", "0", "DrvPCI9111HR"},
    CarteDémo{32, "PCI 6208 V - Consignes", "0", "DrvPCI 6208 V"},
    CarteDémo{33, "IK 121 - Codeurs", "3E0", {}},
    CarteDémo{34, "Palpeurs LVDT", "0", "Drv SOLARTRON LVDT"},
};

constexpr std::array kBlocs{
    BlocDémo{311, kEA, "DrvPCI9111HR/Vorlanex EA", false, "Force;Course;Pression;Température"},
    BlocDémo{312, kEL, "DrvPCI9111HR/Vorlanex EL", true, "Armé;Porte;Haut;Bas"},
    BlocDémo{313, kSL, "DrvPCI9111HR/Vorlanex SL", true, "Pompe;Vanne"},
    BlocDémo{314, kSA, "DrvPCI9111HR/Vorlanex SA", false, "Servovalve"},
    BlocDémo{321, kSA, "DrvPCI6208V/Vorlanex SA", false,
             "Consigne 1;Consigne 2;Consigne 3;Consigne 4;Consigne 5;Consigne 6"},
    BlocDémo{331, kEA, "DrvIK121", false, "Codeur 1;Codeur 2", kSansFréquence, false, 1},
    BlocDémo{341, kEA, "Drv SOLARTRON LVDT", false, "Palpeur 1;Palpeur 2;Palpeur 3"},
};

constexpr std::array kColonnes{
    ColonneDeLigne{"Canal", 34100, "N° de série", "112A345P01"},
    ColonneDeLigne{"Canal", 34101, "N° de série", "112A345P02"},
    ColonneDeLigne{"Canal", 34102, "N° de série", "112A345P03"},
};

constexpr double kPasDeCodeur = 65536 * 0.0001;  // millimetres at full scale, 0.1 µm a count

constexpr std::array kCapteurs{
    CapteurDémo{71, "Normal", "Force", "Force PCI", "kN", 31100, 50, -51, 51},
    CapteurDémo{72, "Normal", "Course", "Course", "mm", 31101, 100, -101, 101},
    CapteurDémo{73, "Normal", "Codeur 1", "Codeur 1", "mm", 33101, kPasDeCodeur, -500, 500},
    CapteurDémo{74, "Normal", "Codeur 2", "Codeur 2", "mm", 33102, kPasDeCodeur, -500, 500},
    CapteurDémo{75, "Normal", "Palpeur 1", "Palpeur LVDT 1", "mm", 34100, 10, -11, 11},
    CapteurDémo{76, "Normal", "Palpeur 3", "Palpeur LVDT 3", "mm", 34102, 10, -11, 11},
};

constexpr std::array kCommandes{
    CommandeDémo{21, "Recopie", "Servovalve", "kN", 31400, -50, 50, -2047, 2047, 0, "Force PCI"},
    CommandeDémo{22, "Recopie", "Consigne 1", "mm", 32100, -100, 100, -32767, 32767, 0, "Course"},
};

}  // namespace

const ChassisDémo kDémoPCI{.index = kChassisPCI,
                           .nom = "PCI, codeurs et palpeurs de démonstration",
                           .cartes = kCartes,
                           .blocs = kBlocs,
                           .colonnes = kColonnes,
                           .capteurs = kCapteurs,
                           .commandes = kCommandes};

}  // namespace zuma::linux_
