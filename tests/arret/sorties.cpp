// Every kind of output: how it stands in a frame, and how its twin's terminal is read.
#include <array>
#include <cmath>

#include "arret/sortie.h"
#include "arret/table_d_arret.h"
#include "sim/bus_modbus.h"
#include "sim/testeur_cbr_simule.h"

namespace zuma::arret {
namespace {

using banc::Entier;
using banc::kEL;
using banc::kSA;
using banc::kSL;
using banc::Réel;
using banc::Texte;

constexpr std::int32_t kConsigne = 100;  ///< register of the Modbus set point
constexpr std::int32_t kConsigneVariateur = 500;

// With points as units, for what takes numbers and not codes.
void AjouteLObjet(Lignes& lignes, std::string_view type, std::int32_t canal, bool droite = false) {
  if (type == kSL) {
    lignes.Objet(kSL, {Texte("Nom de la Sortie Logique", Montage::kSujet), Entier("Canal", canal)});
    return;
  }
  std::vector<Champ> champs{Texte("Nom de la Commande", Montage::kSujet), Entier("Canal", canal)};
  for (int n = 1; droite && n <= 20; ++n) {
    for (const char* colonne : {" - Unité", " - Point"}) {
      champs.push_back(Réel("Point " + std::to_string(n) + colonne, n == 2 ? 1000 : 0));
    }
  }
  lignes.Objet("Commande", champs);
}

// --- Boards whose terminals are lines and voltages

void MonteCarte(Lignes& lignes, const Sortie& s) {
  lignes.Carte(s.driverCarte, {},
               s.driverCarte.starts_with("DrvPCI") ? std::vector{Texte("Adresse", "0")}
                                                   : std::vector<Champ>{});
  const std::int32_t canal = lignes.Bloc(s.type, s.driver, 2, s.type == kSL);
  AjouteLObjet(lignes, s.type, canal + 1);
}

void MonteAvecUneImpulsion(Lignes& lignes, const Sortie& s) {
  lignes.Carte(s.driverCarte);
  const std::int32_t canal = lignes.Bloc(kSL, s.driver, 2, true);
  lignes.Watchdog({Entier("Pulse", canal)});
  AjouteLObjet(lignes, kSL, canal + 1);
}

void MonteFréquence(Lignes& lignes, const Sortie& s) {
  lignes.Carte();
  lignes.Bloc(kSA, s.driver, 0, false);
  AjouteLObjet(lignes, kSA, lignes.Canal(0, {{"Canal en fréquence", Valeur(true)}}));
}

// The library refuses the board and all that is asked of it.
void RefuseLaCarte(Montage& m, bool refuse) {
  m.machine.sim.pci.Bibliothèque().refuseTout = refuse;
}

bool BorneAuRepos(Montage& m) {
  const CanalRef canal = m.LObjet().Canal();
  const auto borne = m.machine.sim.BorneDe(*canal);
  if (!borne) return false;
  if (canal->TypeCanal() == ENUM_TYPE_FONCTION::FctSortiesLogiques) return !borne->SortieLogique();
  return canal->EnFréquence() ? borne->DeLaCarte().fréquence == 0 : borne->TensionSortie() == 0;
}

// --- Modbus block

std::vector<Champ> Modbus(std::string_view adresse, std::string_view fonction,
                          std::int32_t registre) {
  return {Texte("ModBus - Adresse", adresse), Texte("ModBus - Fonction", fonction),
          Entier("ModBus - Regitre départ", registre)};
}

void MonteModbus(Lignes& lignes, const Sortie& s) {
  lignes.Carte(s.driverCarte, "9,9600,N,8,1");
  lignes.Bloc("Entrée Analogique", "DrvModBus", 2, false, Modbus("1", "3", 0));
  lignes.Canal(-1);
  const std::int32_t canal = lignes.Bloc(kSA, "DrvModBus", 1, false, Modbus("1", "10", kConsigne));
  lignes.Canal(-1);
  AjouteLObjet(lignes, kSA, canal, true);
}

// The set point in a slave: the motor of a drive takes its own time behind it.
template <std::int32_t kPort, std::uint8_t kAdresse, std::int32_t kRegistre>
std::uint16_t& Registre(Montage& m) {
  auto& bus = dynamic_cast<sim::BusModbus&>(*m.machine.sim.liaisons.Ligne(kPort)->appareil);
  return bus.Esclave(kAdresse)->registres[kRegistre];
}
constexpr auto kModbus = &Registre<9, 1, kConsigne>;
constexpr auto kVariateur = &Registre<10, 5, kConsigneVariateur>;
template <auto kRegistre>
bool RegistreAuRepos(Montage& m) {
  return kRegistre(m) == 0;
}
template <auto kRegistre>
void RegistreEnMarche(Montage& m) {
  kRegistre(m) = 1;
}

// --- Variable-speed drive

void MonteVariateur(Lignes& lignes, const Sortie& s) {
  lignes.Carte(s.driverCarte, "10,38400,N,8,1,600");
  const std::int32_t canal =
      lignes.Bloc(kSA, s.driverCarte, 1, false, Modbus("5", "10", kConsigneVariateur));
  lignes.Bloc(kEL, s.driverCarte, 2, true, Modbus("5", "3", 600));
  AjouteLObjet(lignes, kSA, canal, true);
}

// --- USB drive

void MonteThumler(Lignes& lignes, const Sortie& s) {
  lignes.Carte(s.driverCarte, {}, {Texte("Adresse", "0")});
  const std::int32_t canal = lignes.Bloc(kSA, {}, 1, false);
  AjouteLObjet(lignes, kSA, canal, true);
}

// --- CBR tester

void MonteTesteur(Lignes& lignes, const Sortie& s) {
  lignes.Carte(s.driverCarte, "12,9600,N,8,1");
  const std::int32_t canal = lignes.Bloc(kSL, {}, 1, true);
  AjouteLObjet(lignes, kSL, canal);
}

sim::TesteurCBRSimulé& Testeur(Montage& m) {
  return dynamic_cast<sim::TesteurCBRSimulé&>(*m.machine.sim.liaisons.Ligne(12)->appareil);
}

// --- Watchdog board: its contact opens

void MonteChienDeGarde(Lignes& lignes, const Sortie&) {
  lignes.Watchdog({Texte("Adresse", "700"), Réel("Temps en seconde", 0.5)});
}

constexpr double kPasse = 0.005;   // what is written at once, in the pass of the stop
constexpr double kBus = 0.35;      // a bus of two blocks at 9600 bauds comes round
constexpr double kTesteur = 0.45;  // the exchange that goes on, and the machine's own pauses
constexpr double kContact = 0.02;  // the board's ten milliseconds

constexpr std::string_view kPET48 = "DrvPET48DIO";
constexpr std::string_view kPCI9111 = "DrvPCI9111HR";

// A line or a voltage of a port-mapped board, which takes what it is written blindly.
constexpr Sortie SurUnPort(std::string_view nom, std::string_view type, std::string_view driver,
                           std::string_view driverCarte = {},
                           decltype(Sortie::monte) monte = &MonteCarte) {
  return {nom, monte, &BorneAuRepos, kPasse, type, driver, driverCarte};
}

// The same of a board behind a library, which can refuse.
constexpr Sortie SurPCI(std::string_view nom, std::string_view type, std::string_view driver,
                        std::string_view driverCarte) {
  Sortie sortie = SurUnPort(nom, type, driver, driverCarte);
  sortie.débranche = &RefuseLaCarte;
  return sortie;
}

// Behind a link.
constexpr Sortie SurUnLien(std::string_view nom, std::string_view driverCarte, double délai,
                           decltype(Sortie::monte) monte, decltype(Sortie::auRepos) auRepos,
                           decltype(Sortie::enMarcheAvant) enMarcheAvant) {
  return {nom, monte, auRepos, délai, {}, {}, driverCarte, enMarcheAvant};
}

constexpr std::array kSorties{
    SurUnPort("logic, PCL 731", kSL, "DrvPCL731_PCLD7225"),
    SurUnPort("logic, PET 48 TB 24", kSL, "DrvPET48DIO_TB24R", kPET48),
    SurUnPort("logic, PET 48 PCLD", kSL, "DrvPET48DIO_PCLD7225", kPET48),
    SurUnPort("logic, ACL 8316", kSL, "DrvACL8316_ACLD9185"),
    SurUnPort("logic, ACL 6126", kSL, "DrvACL6126_ACLD9185"),
    SurUnPort("logic, A 826 PG", kSL, "DrvA826PG_DB16R"),
    SurUnPort("analog, PCL 728", kSA, "DrvPCL728"),
    SurUnPort("analog, ACL 6128", kSA, "DrvACL6128"),
    SurUnPort("analog, ACL 6126", kSA, "DrvACL6126"),
    SurUnPort("analog, A 826 PG", kSA, "DrvA826PG"),
    SurUnPort("analog, ACL 8316", kSA, "DrvACL8316"),
    SurUnPort("frequency, ACL 8316", kSA, "DrvACL8316", {}, &MonteFréquence),
    SurPCI("logic, PCI 9111", kSL, "DrvPCI9111HR/Vorlanex SL", kPCI9111),
    SurPCI("analog, PCI 9111", kSA, "DrvPCI9111HR/Vorlanex SA", kPCI9111),
    SurPCI("analog, PCI 6208", kSA, "DrvPCI6208V/Vorlanex SA", "DrvPCI 6208 V"),
    SurUnLien("Modbus block", "DrvModBus", kBus, &MonteModbus, &RegistreAuRepos<kModbus>,
              &RegistreEnMarche<kModbus>),
    SurUnLien("Modbus block, UMV", "Drv_UMV4301_Modbus", kBus, &MonteModbus,
              &RegistreAuRepos<kModbus>, &RegistreEnMarche<kModbus>),
    SurUnLien("variable-speed drive", "Variateur LS Modbus et soft K9", kBus, &MonteVariateur,
              &RegistreAuRepos<kVariateur>, &RegistreEnMarche<kVariateur>),
    SurUnLien(
        "USB drive", "Thumler", kPasse, &MonteThumler,
        [](Montage& m) { return !m.machine.sim.bus.Thumler().EnMarche(); },
        [](Montage& m) { m.machine.sim.bus.Thumler().MetEnMarche(); }),
    SurUnLien(
        "CBR tester", "UTS-0107", kTesteur, &MonteTesteur,
        [](Montage& m) { return !Testeur(m).EnMarche(); },
        [](Montage& m) { Testeur(m).DémarreAuPupitre(); }),
    Sortie{.nom = "watchdog board",
           .monte = &MonteChienDeGarde,
           .auRepos = [](Montage& m) { return !m.machine.sim.ChienDeGarde()->ContactFermé(); },
           .délai = kContact,
           .metEnRoute = [](Montage& m) { m.marche->LeChassis().Watchdog()->Enabled(true); }},
    SurUnPort("beside a pulse, PET 48", kSL, "DrvPET48DIO_TB24R", kPET48, &MonteAvecUneImpulsion),
    SurUnPort("beside a pulse, PCL 731", kSL, "DrvPCL731_PCLD7225", {}, &MonteAvecUneImpulsion),
};

}  // namespace

std::span<const Sortie> Sorties() {
  return kSorties;
}
std::string_view Nom(const Sortie& sortie) {
  return sortie.nom;
}

}  // namespace zuma::arret
