#include "platform/linux/demo_instruments.h"

#include <array>

#include "platform/linux/demo.h"

namespace zuma::linux_ {
namespace {

using namespace types_de_bloc;

constexpr std::array kCartes{
    CarteDémo{21, "Extensomètre laser", "0", "Extensometre EIR LASER", "12,9600,N,8,1"},
    CarteDémo{22, "Conditionneur", "5", "Conditionneur numerique K9 V1.00", "13,9600,N,8,1"},
    CarteDémo{23, "Conditionneur d'origine", "6", "Conditionneur numerique K9", "14,9600,N,8,1"},
    CarteDémo{24, "Presse CBR", "0", "UTS-0107", "15,9600,N,8,1"},
    CarteDémo{25, "Balance de laboratoire", "0", "Balance GRAM", "16,9600,N,8,1"},
    CarteDémo{26, "Amplificateur", "5A", "Spider V1"},
    CarteDémo{27, "Amplificateur, par bloc", "0", {}},
};

constexpr std::array kBlocs{
    BlocDémo{211, kEA, {}, false, "Allongement"},
    BlocDémo{212, kEL, {}, false, "Laser;Echo;Zéro;Hors délai"},
    BlocDémo{221, kEA, {}, false, "Jauge A;Jauge B;Jauge C"},
    BlocDémo{222, kEL, {}, false, "Initialisé;Erreur"},
    BlocDémo{231, kEA, {}, false, "Pont A;Pont B;Pont C"},
    BlocDémo{232, kEL, {}, false, "Initialisé;Erreur"},
    BlocDémo{241, kEA, {}, false, "Force;Enfoncement"},
    BlocDémo{242, kEL, {}, false, "En marche;Hors délai"},
    BlocDémo{243, kSL, {}, false, "Marche"},
    BlocDémo{251, kEA, {}, false, "Poids"},
    BlocDémo{252, kEL, {}, false, "Connectée"},
    BlocDémo{261, kEA, {}, false, "Voie 1;Voie 2;Voie 3;Voie 4"},
    BlocDémo{271, kEA, "Drv RS232 - SPIDER", true, "Voie 1;Voie 2"},
};

constexpr std::array kColonnes{
    ColonneDeLigne{"Carte", 21, "Config EIR", "13"},
};

constexpr double kUnité = 65536;             // instruments that give their unit
constexpr double kMicron = kUnité / 1000.0;  // counts of a micrometre, in millimetres

constexpr std::array kCapteurs{
    CapteurDémo{61, "Normal", "Allongement", "Allongement", "mm", 21100, kMicron, -500, 500},
    CapteurDémo{62, "Normal", "Jauge A", "Jauge A", "mV", 22100, kMicron, -40, 40},
    CapteurDémo{63, "Normal", "Pont A", "Pont A", "mV", 23100, kMicron, -40, 40},
    CapteurDémo{64, "Normal", "Force CBR", "Force CBR", "kN", 24100, kUnité, -1, 60},
    CapteurDémo{65, "Normal", "Enfoncement", "Enfoncement", "mm", 24101, kUnité, -1, 60},
    CapteurDémo{66, "Normal", "Poids", "Poids", "g", 25100, kUnité, -10, 6000},
    CapteurDémo{67, "Normal", "Amplificateur 1", "Amplificateur 1", "mV/V", 26100, kUnité, -10, 10},
    CapteurDémo{68, "Normal", "Amplificateur 2", "Amplificateur 2", "mV/V", 27101, kUnité, -10, 10},
};

}  // namespace

const ChassisDémo kDémoInstruments{.index = kChassisDesAppareils,
                                   .nom = "Appareils de démonstration",
                                   .cartes = kCartes,
                                   .blocs = kBlocs,
                                   .colonnes = kColonnes,
                                   .capteurs = kCapteurs,
                                   .commandes = {}};

}  // namespace zuma::linux_
