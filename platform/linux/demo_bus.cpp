#include "platform/linux/demo_bus.h"

#include <array>

#include "platform/linux/demo.h"

namespace zuma::linux_ {
namespace {

using namespace types_de_bloc;

constexpr std::array kCartes{
    CarteDémo{11, "CAN - Règles", "1", "DrvPCI7841-2"},
    CarteDémo{12, "CAN - Règle d'origine", "2", "DrvPCI7841"},
    CarteDémo{13, "Balances et palpeurs", "0", {}},
    CarteDémo{14, "Bus Modbus", "0", "DrvModBus", "9,19200,N,8,1"},
    CarteDémo{15, "Variateur de traverse", "0", "Variateur LS Modbus et soft K9",
              "10,38400,N,8,1,1.5"},
    CarteDémo{16, "Variateur UMV", "0", "Drv_UMV4301_Modbus", "11,9600,N,8,1"},
    CarteDémo{17, "Agitateur", "0", "Thumler"},
};

constexpr std::array kBlocs{
    BlocDémo{111, kEA, "DrvPCI7841-2", false, "Traverse;Entrefer;Plateau"},
    BlocDémo{112, kEA, "DrvPCI7841-2", true, "Mors haut;Mors bas"},
    BlocDémo{121, kEA, "DrvPCI7841", false, "Règle d'origine"},
    BlocDémo{131, kEA, "Drv RS 232", false, "Balance LRPC"},
    BlocDémo{132, kEA, "Drv RS 232", false, "Indicateur DEXAL"},
    BlocDémo{133, kEA, "Drv RS 232", false, "Balance JADEVER"},
    BlocDémo{134, kEA, "Drv METRO RS232", false, "Palpeur", kSansFréquence, false, 1},
    BlocDémo{135, kEA, "Drv METRO RS232 MUX 2/4/8", false, "Palpeur 1;Palpeur 2", kSansFréquence,
             false, 1},
    BlocDémo{141, kEA, "DrvModBus", false, "Température 1;Température 2;Débit;Niveau",
             kSansFréquence, true},
    BlocDémo{142, kEL, "DrvModBus", true,
             "Pompe 1;Pompe 2;Filtre;Niveau bas;Vanne 1;Vanne 2;Vanne 3;Vanne 4", kSansFréquence,
             true},
    BlocDémo{143, kSA, "DrvModBus", false, "Consigne 1;Consigne 2", kSansFréquence, true},
    BlocDémo{151, kSA, "Variateur LS Modbus et soft K9", false, "Vitesse demandée", kSansFréquence,
             true},
    BlocDémo{152, kSL, "Variateur LS Modbus et soft K9", true, "Frein;Ventilation"},
    BlocDémo{153, kEL, "Variateur LS Modbus et soft K9", true, "Prêt;En marche;En vitesse",
             kSansFréquence, true},
    BlocDémo{154, kEA, "Variateur LS Modbus et soft K9", false, "Vitesse"},
    BlocDémo{161, kEA, "DrvModBus", false, "Courant;Couple", kSansFréquence, true},
    BlocDémo{171, kSA, {}, false, "Vitesse demandée"},
    BlocDémo{172, kEA, {}, false, "Vitesse;Charge"},
};

constexpr ColonneDeLigne Canal(std::int32_t canal, std::string_view colonne, double nombre) {
  return {"Canal", canal, colonne, {}, nombre};
}
constexpr ColonneDeLigne Canal(std::int32_t canal, std::string_view colonne,
                               std::string_view texte) {
  return {"Canal", canal, colonne, texte};
}
constexpr ColonneDeLigne Bloc(std::int32_t bloc, std::string_view colonne, double nombre) {
  return {"Fonction", bloc, colonne, {}, nombre};
}
constexpr ColonneDeLigne Bloc(std::int32_t bloc, std::string_view colonne, std::string_view texte) {
  return {"Fonction", bloc, colonne, texte};
}

// A ruler, or one magnet of it.
struct RègleDémo {
  std::int32_t canal;
  std::string_view driver;
  std::string_view série;
  double noeud;
  double aimant;
};
constexpr std::array kRègles{
    RègleDémo{11100, "Règle MTS 1 aimant", "0000A101", 1, 1},
    RègleDémo{11101, "Règle MTS 3 aimants (lecture 2-1)", "0000A102", 2, 1},
    RègleDémo{11102, "Règle MTS 3 aimants (lecture 3)", "0000A103", 3, 1},
    RègleDémo{11200, "Règle MTS Multimagnet", "0000A104", 4, 1},
    RègleDémo{11201, "Règle MTS Multimagnet", "0000A104", 4, 2},
};

struct LigneDémo {
  std::int32_t bloc;
  double port;
};
constexpr std::array kLignes{LigneDémo{131, 4}, LigneDémo{132, 5}, LigneDémo{133, 6},
                             LigneDémo{134, 7}, LigneDémo{135, 8}};

constexpr std::array kBalances{
    Canal(13100, "Driver canal", "RS232 - Balance LRPC 31"),
    Canal(13200, "Driver canal", "RS232 - Indicateur DEXAL"),
    Canal(13300, "Driver canal", "RS232 - Balance JADEVER"),
};

struct ModbusDémo {
  std::int32_t bloc;
  std::string_view adresse;   // hexadecimal
  std::string_view fonction;  // hexadecimal
  double registre;
};
constexpr std::array kModbus{ModbusDémo{141, "1", "3", 0},    ModbusDémo{142, "1", "2", 0},
                             ModbusDémo{143, "1", "10", 100}, ModbusDémo{151, "5", "10", 500},
                             ModbusDémo{152, "5", "10", 500}, ModbusDémo{153, "5", "3", 600},
                             ModbusDémo{154, "5", "3", 600},  ModbusDémo{161, "2", "3", 0}};

constexpr std::size_t kColonnesParRègle = 8;
constexpr std::size_t kColonnesParLigne = 5;
constexpr std::size_t kColonnesParEchange = 3;
constexpr std::size_t kColonnesDeBlocCAN = 3;

constexpr auto Colonnes() {
  std::array<ColonneDeLigne,
             kRègles.size() * kColonnesParRègle + kLignes.size() * kColonnesParLigne +
                 kModbus.size() * kColonnesParEchange + kBalances.size() + 2 * kColonnesDeBlocCAN>
      colonnes{};
  std::size_t n = 0;
  for (const RègleDémo& r : kRègles) {
    colonnes[n++] = Canal(r.canal, "Driver canal", r.driver);
    colonnes[n++] = Canal(r.canal, "N° de série", r.série);
    colonnes[n++] = Canal(r.canal, "N° de Node", r.noeud);
    colonnes[n++] = Canal(r.canal, "Mode opératoire", 1);
    colonnes[n++] = Canal(r.canal, "Nombre d'aimants", 2);
    colonnes[n++] = Canal(r.canal, "Position de l'aimant", r.aimant);
    colonnes[n++] = Canal(r.canal, "Position ID", 0x180 + r.noeud);
    colonnes[n++] = Canal(r.canal, "Status ID", 0x200 + r.noeud);
  }
  for (const LigneDémo& l : kLignes) {
    colonnes[n++] = Bloc(l.bloc, "RS232 - COM", l.port);
    colonnes[n++] = Bloc(l.bloc, "RS232 - Baud Rate", 9600);
    colonnes[n++] = Bloc(l.bloc, "RS232 - Parity", "No parity");
    colonnes[n++] = Bloc(l.bloc, "RS232 - Data", 8);
    colonnes[n++] = Bloc(l.bloc, "RS232 - Stop", 1);
  }
  for (const ModbusDémo& m : kModbus) {
    colonnes[n++] = Bloc(m.bloc, "ModBus - Adresse", m.adresse);
    colonnes[n++] = Bloc(m.bloc, "ModBus - Fonction", m.fonction);
    colonnes[n++] = Bloc(m.bloc, "ModBus - Regitre départ", m.registre);
  }
  for (const ColonneDeLigne& balance : kBalances) colonnes[n++] = balance;
  for (const std::int32_t bloc : {111, 112}) {
    colonnes[n++] = Bloc(bloc, "Numéro du port CAN", bloc - 111);
    colonnes[n++] = Bloc(bloc, "Vitesse du CAN", 500);
    colonnes[n++] = Bloc(bloc, "Mode CAN", "11 bits");
  }
  return colonnes;
}

constexpr auto kColonnes = Colonnes();

constexpr double kCompte = 65536 * 0.005;  // millimetres at full scale of a ruler of 5 µm a count
constexpr double kUnité = 65536;           // instruments that give their unit

constexpr std::array kCapteurs{
    CapteurDémo{41, "Normal", "Traverse", "Traverse", "mm", 11100, kCompte, -5000, 5000},
    CapteurDémo{42, "Normal", "Entrefer", "Entrefer", "mm", 11101, kCompte, -5000, 5000},
    CapteurDémo{43, "Normal", "Plateau", "Plateau", "mm", 11102, kCompte, -5000, 5000},
    CapteurDémo{44, "Normal", "Mors haut", "Mors haut", "mm", 11200, kCompte, -5000, 5000},
    CapteurDémo{45, "Normal", "Mors bas", "Mors bas", "mm", 11201, kCompte, -5000, 5000},
    CapteurDémo{46, "Normal", "Règle d'origine", "Origine", "mm", 12100, kCompte, -5000, 5000},
    CapteurDémo{47, "Normal", "Balance LRPC", "LRPC", "kg", 13100, kUnité, -1, 30},
    CapteurDémo{48, "Normal", "Indicateur DEXAL", "DEXAL", "kg", 13200, kUnité, -1, 30},
    CapteurDémo{49, "Normal", "Balance JADEVER", "JADEVER", "kg", 13300, kUnité, -1, 30},
    CapteurDémo{50, "Normal", "Palpeur", "Palpeur", "mm", 13401, kUnité, -20, 20},
    CapteurDémo{51, "Normal", "Palpeur 2", "Palpeur 2", "mm", 13502, kUnité, -20, 20},
    CapteurDémo{52, "Normal", "Température 1", "Température 1", "°C", 14100, 6553.6, -50, 300},
    CapteurDémo{53, "Normal", "Vitesse de traverse", "Vitesse", "tr/min", 15400, 655.36, -500, 500},
    CapteurDémo{54, "Normal", "Vitesse d'agitation", "Agitation", "tr/min", 17200, kUnité, -1, 999},
};

// The drives follow a weight, so that the view shows them at work without a test program.
constexpr std::array kCommandes{
    CommandeDémo{11, "Recopie", "Vitesse demandée", "tr/min", 15100, -100, 100, -100, 100, 0,
                 "JADEVER"},
    CommandeDémo{12, "Recopie", "Agitation demandée", "tr/min", 17100, 0, 500, 0, 500, 0, "DEXAL"},
};

}  // namespace

const ChassisDémo kDémoBus{.index = kChassisDesBus,
                           .nom = "Bus de démonstration",
                           .cartes = kCartes,
                           .blocs = kBlocs,
                           .colonnes = kColonnes,
                           .capteurs = kCapteurs,
                           .commandes = kCommandes};

}  // namespace zuma::linux_
