// The stop of the shipped host, watched at the terminals of the simulated machine.
#include <cmath>

#include <gtest/gtest.h>

#include "host/chassis_en_marche.h"
#include "host/parametres.h"
#include "host/verbes/gestes_capteur.h"
#include "host/verbes/vue.h"
#include "outils/cas.h"
#include "outils/programme.h"
#include "sim/bus_modbus.h"
#include "sim/machine_simulee.h"

namespace zuma {
namespace {

using Noms = std::vector<std::string>;

class LArrêt : public essai::LeProgramme {
 protected:
  void Démarre(std::int32_t chassis = 1, const std::string& sql = {}) {
    const std::string base = Base(sql);
    marche.emplace(base, chassis, *machine, recueil, host::LitLesParamètres(base, {}));
  }
  void Passe(double durée, double pas = 0.001, const std::function<void()>& ensuite = {}) {
    secondes = machine->AvanceJusquA(secondes);  // a stop that waited took its time
    for (const double fin = secondes + durée; secondes < fin;) {
      secondes = machine->AvanceJusquA(secondes + pas);
      marche->Passe();
      if (ensuite) ensuite();
    }
  }
  CommandeRef Commande(const char* clé) { return marche->LeChassis().Commandes()->Item(clé); }
  SortieLogiqueRef Pompe() { return marche->LeChassis().SortiesLogiques()->Item("1"); }
  double Volts(const char* commande) {
    return jumelle.BorneDe(*Commande(commande)->Canal())->TensionSortie();
  }
  bool PompeEnMarche() { return jumelle.BorneDe(*Pompe()->Canal())->SortieLogique(); }
  // A servo-valve in service, a command out of service that has been left where it is, a pump.
  void Bouge() {
    Commande("1")->Enabled(true);
    Commande("1")->ValeurCouranteEnUnité(40);
    Commande("2")->Enabled(true);
    Commande("2")->ValeurCouranteEnUnité(50);
    Commande("2")->Enabled(false);
    Pompe()->ValeurCourante(ENUM_ETAT_LOGIQUE::Actif);
    ASSERT_FALSE(AuRepos());
  }
  bool AuRepos() {
    return std::abs(Volts("1")) < 0.01 && std::abs(Volts("2")) < 0.01 && !PompeEnMarche();
  }
  Noms Textes() {
    Noms textes;
    for (const host::Problème& problème : recueil->Problèmes()) textes.push_back(problème.texte);
    return textes;
  }
  std::uint16_t Consigne() {
    auto* bus = dynamic_cast<sim::BusModbus*>(jumelle.liaisons.Ligne(10)->appareil.Brut());
    return bus->Esclave(5)->registres[500];
  }

  Ref<host::Recueil> recueil = Crée<host::Recueil>();
  std::unique_ptr<host::Machine> machine = host::MachineSimulée(*recueil, host::Cadence::Libre);
  sim::MachineSimulée& jumelle = *machine->Jumelle();
  std::optional<host::ChassisEnMarche> marche;
  double secondes = 0;
};

TEST_F(LArrêt, DéclencheLeChienDeGardeQuelleQueSoitLaCadence) {
  Démarre();
  sim::CarteWDT01& chien = *jumelle.ChienDeGarde();
  for (const double pas : {0.0005, 0.001, 0.002, 0.005}) {
    ASSERT_TRUE(marche->RemetEnService());
    Passe(0.5, pas);
    EXPECT_TRUE(chien.EstArmée() && chien.ContactFermé()) << pas;
    marche->Arrête();
    Passe(0.03, pas);
    EXPECT_FALSE(chien.ContactFermé()) << pas;
    marche->LeChassis().Watchdog()->Enabled(true);  // a host that forgets itself
    Passe(0.4, pas, [&] { EXPECT_FALSE(chien.ContactFermé()) << pas; });
    marche->Arrête("another cause");
    Passe(0.4, pas, [&] { EXPECT_FALSE(chien.ContactFermé()) << pas; });
    EXPECT_FALSE(marche->RemetEnService());
    ASSERT_TRUE(marche->Acquitte());
    Passe(0.5, pas, [&] { EXPECT_FALSE(chien.EstArmée()) << pas; });
  }
  EXPECT_EQ(Textes(), Noms());
}

TEST_F(LArrêt, NAttendPasUneCarteQuiNeRépondPlus) {
  // Looks at the terminals while the stop waits for the board.
  struct Témoin : BoîteDeMessage, AttenteLimitée {
    void Montre(std::string_view, const ObjetConcerné&) override {}
    bool AttendEncore(std::string_view texte, const ObjetConcerné& objet, int fois) override {
      if (regarde) regarde();
      return suivante->AttendEncore(texte, objet, fois);
    }
    host::Recueil* suivante = nullptr;
    std::function<void()> regarde;
  } témoin;
  témoin.suivante = recueil.Brut();
  machine->Services().messages = &témoin;
  Démarre();
  sim::CarteWDT01& chien = *jumelle.ChienDeGarde();
  ASSERT_TRUE(marche->RemetEnService());
  Passe(0.1);
  Bouge();
  chien.Panne(true);
  int regards = 0;
  témoin.regarde = [&] { regards += AuRepos() ? 1 : 100; };
  const double avant = jumelle.horloge->Maintenant();
  marche->Arrête();
  EXPECT_LT(jumelle.horloge->Maintenant() - avant, 1.01e6);
  EXPECT_EQ(regards, AttenteLimitée::kPatience);
  EXPECT_TRUE(AuRepos());
  EXPECT_FALSE(marche->LaSécurité().ArrêtComplet());
  ASSERT_FALSE(recueil->Problèmes().empty());

  // A stop that is owed to the board waits for it without holding the passes.
  chien.OublieLesLignes();
  const double passes = jumelle.horloge->Maintenant();
  Passe(0.5);
  EXPECT_LT(jumelle.horloge->Maintenant() - passes, 0.6e6);
  chien.Panne(false);
  Passe(0.2);
  EXPECT_EQ(chien.Lignes(), (std::deque<std::string>{"E", "T=0.01", "S"}));
  EXPECT_FALSE(chien.ContactFermé());
  EXPECT_TRUE(marche->LaSécurité().ArrêtComplet());

  // Acknowledgement and end do not hang either.
  chien.Panne(true);
  const double acquitté = jumelle.horloge->Maintenant();
  EXPECT_TRUE(marche->Acquitte());
  EXPECT_LT(jumelle.horloge->Maintenant() - acquitté, 3e6);
  marche.reset();
  EXPECT_LT(jumelle.horloge->Maintenant() - acquitté, 6e6);
}

TEST_F(LArrêt, TientTantQuIlNEstPasAcquitté) {
  Démarre();
  Passe(0.1);
  Bouge();
  marche->Arrête();
  EXPECT_TRUE(AuRepos());
  Bouge();
  Passe(0.11);
  EXPECT_TRUE(AuRepos()) << "what a host moves in a stop comes back";
  EXPECT_EQ(Textes(), Noms());

  jumelle.presse.porteFermée = false;  // a danger that holds through the acknowledgement
  Passe(0.2);
  ASSERT_TRUE(marche->Acquitte());
  Bouge();
  Passe(0.16);
  EXPECT_TRUE(AuRepos());
  jumelle.presse.porteFermée = true;
  Passe(0.2);
  ASSERT_TRUE(marche->Acquitte());
  Bouge();
  Passe(0.5);
  EXPECT_FALSE(AuRepos()) << "acknowledged, it lets new commands through";
}

TEST_F(LArrêt, TientLesRecopiesAuReposJusquÀLeurRemiseEnService) {
  Démarre(3);
  Passe(2);
  EXPECT_EQ(Consigne(), 1);
  marche->Arrête();
  Passe(0.5);
  bool bouge = false;
  const auto regarde = [&] { bouge = bouge || Consigne() != 0; };
  Passe(1, 0.001, regarde);
  EXPECT_FALSE(jumelle.bus.Thumler().EnMarche());
  ASSERT_TRUE(marche->Acquitte());
  Passe(1, 0.001, regarde);
  EXPECT_FALSE(bouge) << "neither in the stop nor on its acknowledgement";
  ASSERT_TRUE(marche->RemetEnService());
  Passe(1);
  EXPECT_EQ(Consigne(), 1);
  EXPECT_TRUE(jumelle.bus.Thumler().EnMarche());
}

// A command may follow what a sensor reads.
TEST_F(LArrêt, LaisseLesLecturesCommeEllesSont) {
  Démarre(1, "UPDATE Capteur SET [Remise à Zéro Autorisée] = 1");
  Capteur& capteur = *marche->LeChassis().Capteurs()->Item("1");
  Passe(0.5);
  // Whether the sensor is tared behind the key, a zero began, and the extremes began anew.
  using Faits = std::tuple<bool, bool, bool>;
  const auto fait = [&](char touche) {
    host::FaitLeGeste(touche, capteur, marche->LaSécurité().Déclenchée());
    const bool zéro = capteur.EtatRAZ() != ENUM_OPERATION_MAV::RienFaire;
    const bool extrêmes = capteur.MaxiDétecté() == capteur.MiniDétecté();
    Passe(0.5);
    return Faits(capteur.EtatDeLaTare(), zéro, extrêmes);
  };
  for (const auto& [touche, arrêt, attendus] :
       essai::Cas<char, bool, Faits>{{'t', true, {false, false, false}},
                                     {'t', false, {true, false, false}},
                                     {'c', true, {true, false, false}},
                                     {'c', false, {false, false, false}},
                                     {'z', true, {false, false, false}},
                                     {'z', false, {false, true, false}},
                                     {'m', true, {false, false, true}}}) {
    if (arrêt) marche->Arrête();
    EXPECT_EQ(fait(touche), attendus) << touche << arrêt;
    ASSERT_TRUE(marche->Acquitte());
  }
}

// A board whose library refuses the write, and takes it later.
TEST_F(LArrêt, NommeLesSortiesQuIlNAtteintPas) {
  Démarre(
      5,
      "INSERT INTO [Sortie Logique] ([Index], [Nom de la Sortie Logique], [Etat d'Activation], "
      "Canal) VALUES (55, 'Pompe PCI', 1, 31300); INSERT INTO [Liaison Chassis / Sortie Logique] "
      "(Chassis, [Sortie Logique], Label) VALUES (5, 55, 'Pompe PCI')");
  auto& carte = jumelle.pci.Bibliothèque().Enfiche(BibliothèquePCI::kType9111, 0);
  Passe(0.1);
  marche->LeChassis().SortiesLogiques()->Item("55")->ValeurCourante(ENUM_ETAT_LOGIQUE::Actif);
  carte.portMort = 0;
  const auto vue = [&] {
    const auto json = nlohmann::json::parse(host::VueEnJson(
        {marche->LeChassis(), *machine, marche->LaSécurité(), marche->LeSuivi(), 0, 0, 0}));
    Noms manquées;
    for (const auto& sortie : json["stop_outputs"]) {
      if (sortie["state"] != "reached") manquées.push_back(sortie["name"]);
    }
    return manquées;
  };
  marche->Arrête();
  Passe(2);
  EXPECT_FALSE(marche->LaSécurité().ArrêtComplet());
  EXPECT_EQ(vue(), Noms{"Pompe PCI"});
  EXPECT_EQ(Textes(), Noms{"Sortie non atteinte par l'arrêt 1 : Pompe PCI"});
  ASSERT_TRUE(marche->Acquitte());
  Passe(0.2);
  EXPECT_EQ(vue(), Noms{"Pompe PCI"}) << "an acknowledgement does not make it reached";
  marche->Arrête();
  carte.portMort = -1;
  Passe(0.2);
  EXPECT_TRUE(marche->LaSécurité().ArrêtComplet());
  EXPECT_EQ(vue(), Noms{});
  EXPECT_EQ(Textes().back(), "Sortie atteinte après coup par l'arrêt 2 : Pompe PCI");
  carte.portMort = 0;
  marche.reset();
  EXPECT_EQ(Textes().size(), 2U) << "at rest already: the end has nothing to miss";
}

}  // namespace
}  // namespace zuma
