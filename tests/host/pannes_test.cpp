// Faults of the simulated machine as a user plans them: each kind does what its name says, and
// frames of buses and instruments tell them: values and their ages, error channels, and how long a
// pass takes.
#include "host/pannes.h"

#include <algorithm>
#include <set>

#include <gtest/gtest.h>

#include "host/chassis_en_marche.h"
#include "host/machine.h"
#include "outils/cas.h"
#include "outils/programme.h"
#include "sim/bus_modbus.h"
#include "sim/cartes_pci.h"
#include "sim/machine_simulee.h"

namespace zuma {
namespace {

using essai::Cas;
using nlohmann::json;
using testing::IsSubstring;
using Noms = std::set<std::string>;

class DesBusEnPanne : public essai::LeProgramme {
 protected:
  // What a run of that frame told, and its views.
  std::vector<json> Tourne(const std::string& chassis, const std::string& panne,
                           const std::string& options, const std::string& sql = {}) {
    fin = Lance("run " + Base(sql) + " --sim --fast --frame " + chassis + " --fault " + panne +
                " --json " + options);
    return fin.Vues();
  }
  /// Blocks whose error indicator is up.
  static Noms EnDéfaut(const json& vue) {
    Noms blocs;
    for (const auto& canal : vue["channels"]) {
      if (canal["channel"] != -1) continue;
      if (canal.contains("on") ? canal["on"] == true : canal["points"] != 0) {
        blocs.insert(canal["block"]);
      }
    }
    return blocs;
  }
  static Noms Vieux(const json& vue) {
    Noms noms;
    for (const auto& capteur : vue["sensors"]) {
      if (capteur["old"].get<bool>()) noms.insert(capteur["name"]);
    }
    return noms;
  }
  static json Capteur(const json& vue, const std::string& nom) {
    for (const auto& capteur : vue["sensors"]) {
      if (capteur["name"] == nom) return capteur["value"];
    }
    ADD_FAILURE() << nom;
    return {};
  }
  essai::Fin fin{};
};
using DesAges = DesBusEnPanne;
using DesPannes = DesBusEnPanne;

TEST_F(DesBusEnPanne, DisentLeurDéfautTiennentEtReviennent) {
  const Noms tous{"141", "142", "143", "151", "153", "161"};
  // The longest pass is in milliseconds.
  for (const auto& [panne, défauts, passe] : Cas<std::string, Noms, double>{
           {"silence", tous, 35},  // three rulers of 10 ms each
           {"garbage", tous, 5},
           {"crc", tous, 5},
           {"cut", tous, 5},  // an answer cut short is waited for, like silence
           {"babble", tous, 5},
           {"unplug", tous, 35},
           {"deaf", tous, 35},
           {"late", {"161"}, 35},  // a late slave is asked twice a second, told at the tenth time
           {"crc:9", {"141", "142", "143"}, 5},
           {"silence:can", {}, 35}}) {
    SCOPED_TRACE(panne);
    const auto vues = Tourne("3", panne + "@2-6", "--seconds 8");
    ASSERT_EQ(vues.size(), 16U);
    for (const json& vue : vues) {
      const double heure = vue["time_s"];
      const bool tenue = heure > 5.4 && heure < 6;
      if (tenue || heure < 2 || heure > 6.9) {
        EXPECT_EQ(EnDéfaut(vue), tenue ? défauts : Noms()) << heure;
      }
    }
    EXPECT_LT(vues.back()["longest_pass_ms"], passe);
    for (const char* nom :
         {"Traverse", "Règle d'origine", "Balance LRPC", "Indicateur DEXAL", "Balance JADEVER",
          "Palpeur", "Palpeur 2", "Température 1", "Vitesse de traverse"}) {
      EXPECT_NE(Capteur(vues[14], nom), Capteur(vues[15], nom)) << nom;
    }
    if (panne == "cut" || panne.find(':') != panne.npos) continue;
    EXPECT_EQ(Capteur(vues[7], "Température 1"), Capteur(vues[10], "Température 1"))
        << "a value without a good answer stays";
  }
}

// A drive that no longer obeys ends the process, and the user is told why.
TEST_F(DesBusEnPanne, FinissentAvecLEntraînementUSB) {
  const auto vues = Tourne("3", "unplug:usb@2", "--seconds 8");
  EXPECT_EQ(fin.code, 1);
  EXPECT_PRED_FORMAT2(IsSubstring, "the process ends here: Thumler : FT_", fin.erreur);
  EXPECT_LE(vues.size(), 4U);
}

// A drive that follows a sensor must not go on at its last set point when the program ends, not
// even behind an exchange that outlasts the usual rest.
TEST_F(DesBusEnPanne, LaissentLesEntraînementsAuRepos) {
  const auto recueil = Crée<host::Recueil>();
  const auto machine = host::MachineSimulée(*recueil, host::Cadence::Libre);
  sim::MachineSimulée& jumelle = *machine->Jumelle();
  const std::string base = Base("UPDATE Carte SET [ModBus - Time-out]=1800");
  std::optional<host::ChassisEnMarche> marche(std::in_place, base, 3, *machine, recueil,
                                              linux_::Parametres());
  sim::LigneSérie& ligne = *jumelle.liaisons.Ligne(10);
  auto& registres = dynamic_cast<sim::BusModbus&>(*ligne.appareil).Esclave(5)->registres;
  for (double t = 0; t < 2.3;) {
    t = machine->AvanceJusquA(t + 0.001);
    marche->Passe();
    if (t < 2) continue;
    EXPECT_TRUE(registres[500] == 1 && jumelle.bus.Thumler().EnMarche());
    ligne.pannes.muette = true;
  }
  marche.reset();
  EXPECT_EQ(registres[500], 0);
  EXPECT_EQ(registres[501], 0);
  EXPECT_FALSE(jumelle.bus.Thumler().EnMarche());
  EXPECT_FALSE(recueil->Problèmes().empty());
}

TEST_F(DesAges, DisentCeQuiNEstPlusLu) {
  const Noms bus{"Traverse",       "Entrefer",     "Plateau",          "Mors haut",
                 "Mors bas",       "Balance LRPC", "Indicateur DEXAL", "Balance JADEVER",
                 "Palpeur",        "Palpeur 2",    "Température 1",    "Vitesse de traverse",
                 "Règle d'origine"};
  const Noms instruments{"Allongement", "Jauge A", "Pont A", "Force CBR", "Enfoncement", "Poids"};
  for (const auto& [chassis, panne, attendus] :
       Cas<std::string, std::string, Noms>{{"3", "silence@1.2-6", bus},
                                           {"3", "unplug@1.2-6", bus},
                                           {"4", "silence@1.2-6", instruments},
                                           {"4", "unplug@1.2-6", instruments}}) {
    const auto vues = Tourne(chassis, panne, "--seconds 18");
    ASSERT_EQ(vues.size(), 36U) << fin.erreur;
    for (const json& vue : vues) {
      const double heure = vue["time_s"];
      SCOPED_TRACE(chassis + " " + panne + " at " + std::to_string(heure));
      const bool tenue = heure > 5.4 && heure < 6;
      if (!tenue && heure >= 1.9 && heure <= 17) continue;
      EXPECT_EQ(Vieux(vue), tenue ? attendus : Noms());
    }
    for (const char* dit : {" retrouvées après ", " perdues : "}) {
      EXPECT_PRED_FORMAT2(IsSubstring, dit, fin.erreur);
    }
  }
}

// An instrument that was silent from the start has given nothing yet, and no 0.
TEST_F(DesAges, NePrennentPasPourUnZéroCeQuiNAJamaisParlé) {
  for (const auto& [chassis, muets] : Cas<std::string, Noms>{
           {"3",
            {"Balance LRPC", "Indicateur DEXAL", "Balance JADEVER", "Palpeur", "Température 1"}},
           {"4", {"Allongement", "Jauge A", "Force CBR", "Poids"}}}) {
    const auto vues = Tourne(chassis, "silence", "--seconds 18 --start-anyway");
    ASSERT_FALSE(vues.empty()) << fin.erreur;
    Noms sansValeur;
    for (const auto& capteur : vues.back()["sensors"]) {
      if (capteur["value"].is_null()) sansValeur.insert(capteur["name"]);
    }
    EXPECT_TRUE(std::ranges::includes(sansValeur, muets)) << vues.back()["sensors"].dump();
  }
}

TEST_F(DesAges, VontAvecLesLecturesDansUnEnregistrement) {
  const std::string csv = dossier.Fichier("a.csv");
  (void)Tourne("3", "silence@1-9", "--seconds 4 --ages --csv " + csv);
  const std::string écrit = essai::Lit(csv);
  const auto lignes = Découpe(écrit, '\n');
  const auto noms = Découpe(lignes[0], ',');
  const auto colonne = std::ranges::find(noms, "Température 1 age [s]") - noms.begin();
  ASSERT_LT(colonne, std::ssize(noms)) << fin.erreur;
  const std::string âge(Découpe(lignes.at(lignes.size() - 2), ',')[static_cast<size_t>(colonne)]);
  EXPECT_NEAR(std::stod(âge), 3, 0.5);
}

TEST_F(DesAges, ArrêtentLeChassisAuDelàDuMaximum) {
  for (const auto& [maximum, arrêt, arrête] : Cas<std::string, std::string, bool>{
           {"1.5", "-1", true}, {"3", "-1", false}, {"1.5", "0", false}}) {
    const auto vues = Tourne("3", "silence@2-4", "--seconds 18",
                             "UPDATE [Capteur] SET [Age maximal (s)]=" + maximum +
                                 ", [Arrêt en Cas de Dépassement des sécurités]=" + arrêt +
                                 " WHERE [Nom du Capteur]='Température 1'");
    ASSERT_FALSE(vues.empty()) << fin.erreur;
    const std::string causes = vues.back()["stop_causes"].dump();
    EXPECT_EQ(causes.find("Lecture trop ancienne du Température 1") != causes.npos, arrête);
    EXPECT_EQ(causes == "[]", !arrête) << causes;
  }
}

TEST_F(DesPannes, FontCeQuEllesDisent) {
  for (const auto& [chassis, panne, code, texte] : Cas<const char*, std::string, int, const char*>{
           {"1", "bounce@2-3", 0, "l'entrée logique Porte fermée"},
           {"1", "dead:0x220@2-3", 0, "l'entrée logique Arrêt d'urgence, état détecté : actif"},
           {"1", "hang", 1, "TimeOut Watch dog"},
           {"1", "dead:boards@3", 0, "l'entrée logique Arrêt d'urgence"},
           {"3", "unplug:9", 1, "COM9 absent"},
           {"3", "deaf:can", 1, "initialiser le CAN"},
           {"3", "running:usb", 1, "Thumler : trouvé en marche"},
           {"4", "running", 1, "la machine tourne sans que ce programme l'ait mise en marche"},
           {"4", "deaf:13", 1, "'13,9600,N,8,1' non détecté"}}) {
    (void)Tourne(chassis, panne, "--seconds 4");
    EXPECT_EQ(fin.code, code) << panne;
    EXPECT_PRED_FORMAT2(IsSubstring, texte, fin.sortie + fin.erreur) << chassis << " " << panne;
  }
}

// A place is struck and its neighbour is not; a pulled PCI board is a refusal that is told.
TEST_F(DesPannes, FrappentLeurLieuSeul) {
  (void)Tourne("1", "bounce:0x2C0@2-3", "--seconds 4");
  EXPECT_EQ(fin.code, 0) << fin.erreur;
  EXPECT_PRED_FORMAT2(testing::IsNotSubstring, "l'entrée logique", fin.sortie);

  sim::BibliothèquePCISimulée pci;
  sim::CartePCISimulée& carte = pci.Enfiche(BibliothèquePCI::kType9111, 0);
  const auto poignée = static_cast<std::uint16_t>(pci.Register_Card(BibliothèquePCI::kType9111, 0));
  const auto pannes = host::LitLesPannes("dead:boards@2-3", 0);
  std::uint32_t mot = 0;
  for (const auto& [secondes, lue] : {std::pair(1.0, true), std::pair(2.5, false)}) {
    pci.Applique(pannes, secondes);
    EXPECT_EQ(pci.DI_ReadPort(poignée, 0, mot) == 0, lue) << secondes;
    EXPECT_EQ(pci.DO_WritePort(poignée, 0, secondes < 2 ? 0x5U : 0U) == 0, lue) << secondes;
  }
  EXPECT_EQ(carte.bornes.sortiesLogiques & 0xFFFFU, 0x5U) << "its terminals stand";
}

TEST_F(DesPannes, SuiventLeurGraine) {
  const auto tourne = [&](const std::string& graine) {
    return Tourne("3", "random", "--seconds 4 --fault lose --start-anyway --seed " + graine);
  };
  const auto première = tourne("7");
  EXPECT_EQ(tourne("7"), première);
  EXPECT_NE(tourne("8"), première);

  const auto tirées = host::LitLesPannes("random@2-30", 7);
  EXPECT_GT(tirées.size(), 5U);
  double dernière = 2;
  for (const sim::PannePrévue& panne : tirées) {
    EXPECT_TRUE(panne.début >= dernière && panne.fin > panne.début && panne.fin <= 30);
    dernière = panne.fin;
  }
}

// The clock of the day is wrong for a while; the time that passes is not.
TEST_F(DesPannes, RèglentLHeureDuJour) {
  const auto recueil = Crée<host::Recueil>();
  const auto machine = host::MachineSimulée(*recueil, host::Cadence::Libre);
  sim::MachineSimulée& jumelle = *machine->Jumelle();
  jumelle.pannes = host::LitLesPannes("clock:-7200@2-4", 0);
  for (const auto& [secondes, heure] : Cas<double, const char*>{
           {1, "08:00:01"}, {3, "06:00:03"}, {3.9, "06:00:03"}, {5, "08:00:05"}}) {
    EXPECT_NEAR(machine->AvanceJusquA(secondes), secondes, 1e-3);
    EXPECT_EQ(jumelle.horloge->TexteHeure(), heure);
  }
}

TEST_F(DesPannes, RefusentUnePanneMalDite) {
  const std::string base = Base();
  for (const auto& [options, erreur] :
       Cas<std::string, const char*>{{"--sim --fault fire", "no such kind"},
                                     {"--sim --fault crc:lpt", "no such place \"lpt\""},
                                     {"--sim --fault dead:0xZZ", "no such place \"0xZZ\""},
                                     {"--sim --fault running@3", "found at the start"},
                                     {"--sim --fault clock:nan", "no such place \"nan\""},
                                     {"--sim --fault clock:inf", "no such place \"inf\""},
                                     {"--sim --fault bounce:9", "does not strike there"},
                                     {"--sim --fault garbage:can", "does not strike there"},
                                     {"--sim --fault clock:can", "does not strike there"},
                                     {"--sim --fault crc@soon", "unreadable time"},
                                     {"--sim --fault crc@4-2", "unreadable time"},
                                     {"--fault crc", "add --sim"},
                                     {"--seed 3", "add --sim"}}) {
    fin = Lance("run " + base + " --frame 3 --seconds 1 " + options);
    EXPECT_EQ(fin.code, 2) << options;
    EXPECT_PRED_FORMAT2(IsSubstring, erreur, fin.erreur) << options;
  }
}

}  // namespace
}  // namespace zuma
