// Stops of the CBR tester: each arrives, whatever the line, the machine and the host do meanwhile.
#include <algorithm>
#include <functional>

#include <gtest/gtest.h>

#include "outils/banc_instrument.h"
#include "sim/testeur_cbr_simule.h"

namespace zuma {
namespace {

using essai::Nombre;
using essai::Texte;
using Fonctions_ = std::vector<int>;

// A host's clock that serves one event while it sleeps.
class HorlogeQuiSert : public Horloge {
 public:
  explicit HorlogeQuiSert(sim::HorlogeVirtuelle& horloge) : horloge_(horloge) {}
  [[nodiscard]] std::string TexteHeure() const override { return {}; }
  void Dort(double secondes) override {
    const double fin = horloge_.Maintenant() + secondes * 1e6;
    if (événement && heure <= fin) {
      AvanceJusquà(heure);
      std::exchange(événement, nullptr)();
    }
    AvanceJusquà(fin);
  }
  void AvanceJusquà(double cible) {
    if (cible > horloge_.Maintenant()) horloge_.Avance(cible - horloge_.Maintenant());
  }
  std::function<void()> événement;
  double heure = 0;  ///< of the event, microseconds

 private:
  sim::HorlogeVirtuelle& horloge_;
};

class UnArrêtCBR : public testing::Test, public essai::BancInstrument {
 public:
  UnArrêtCBR() {
    plateforme.horloge = &sommeil;
    sortie->ParamètresDepuisBD(essai::UneLigne({{"Index", Nombre(1)},
                                                {"Nom de la Sortie Logique", Texte("Marche")},
                                                {"Etat d'Activation", Nombre(1)},
                                                {"Canal", Nombre(10)}}));
    sortie->Lien({}, {}, {}, &chassis);
  }
  void DémarreLaCarte() { Démarre("UTS-0107", "3,9600,N,8,1"); }
  void Lance() {
    sortie->ValeurCourante(ENUM_ETAT_LOGIQUE::Actif);
    Passe(2);
    ASSERT_TRUE(machine->EnMarche());
  }
  // Seconds until the machine stands still, at most `maximum`.
  double ArrêtéeEn(double maximum) {
    const double départ = horloge->Maintenant();
    while (machine->EnMarche() && horloge->Maintenant() - départ < maximum * 1e6) Passe(0.005);
    return (horloge->Maintenant() - départ) / 1e6;
  }
  Fonctions_ Depuis(std::size_t avant) const {
    return {machine->Commandes().begin() + static_cast<std::ptrdiff_t>(avant),
            machine->Commandes().end()};
  }

  HorlogeQuiSert sommeil{*horloge};
  Ref<sim::TesteurCBRSimulé> machine = Crée<sim::TesteurCBRSimulé>(*horloge);
  sim::Pannes& pannes = liaisons.Attache(3, machine).pannes;
  Canal& marche = Le(Ajoute("Sortie Logique", {0}), 0);
  FonctionRef états = Ajoute("Entrée Logique", {0, 1});
  SortieLogiqueRef sortie = chassis.SortiesLogiques()->Add("1");
};

TEST_F(UnArrêtCBR, ArriveDèsQueLaLigneLeLaissePasser) {
  const struct {
    const char* quoi;
    bool tournait;  // before the program
    double dehors;  // seconds with the cable out, from the stop on
    bool répété;    // given again each second, and no pass runs
    double délai;   // seconds from the cable's return
  } cas[] = {
      {"its frame lost", false, 0, false, 1.3},
      {"cable out", false, 5, false, 1.3},
      {"cable out, no pass", false, 5, true, 1.5},
      {"port missing at start", true, 5, false, 2.3},
  };
  for (const auto& c : cas) {
    SCOPED_TRACE(c.quoi);
    if (c.tournait) {
      machine->DémarreAuPupitre();
      pannes.débranchée = true;
      carte.Initialise();
    } else {
      DémarreLaCarte();
      sortie->ValeurCourante(ENUM_ETAT_LOGIQUE::Inactif);
      Lance();
    }
    pannes.débranchée = true;
    chassis.DéclencheAU();
    if (!c.répété) Passe(c.dehors);
    for (int i = 0; c.répété && i < c.dehors; ++i) {
      horloge->Avance(1e6);
      chassis.DéclencheAU();
    }
    EXPECT_TRUE(machine->EnMarche());
    EXPECT_FALSE(sortie->Atteinte());
    pannes.débranchée = false;
    if (c.répété) {
      horloge->Avance(1e6);
      chassis.DéclencheAU();
      horloge->Avance(20'000);  // its frame on the wire
      EXPECT_FALSE(machine->EnMarche());
    }
    EXPECT_LT(ArrêtéeEn(60), c.délai);
    Passe(1);
    EXPECT_TRUE(sortie->Atteinte());
    const std::size_t avant = machine->Commandes().size();
    Passe(5);
    chassis.DéclencheAU();
    EXPECT_EQ(Depuis(avant), Fonctions_{}) << "a machine that stands still is left alone";
  }
}

TEST_F(UnArrêtCBR, EstRépétéChaqueSecondeTantQueLaMachineNeDitRien) {
  DémarreLaCarte();
  Lance();
  pannes.muette = true;
  std::size_t avant = machine->Commandes().size();
  chassis.DéclencheAU();
  Passe(5);
  EXPECT_EQ(Depuis(avant), (Fonctions_{3, 3, 3, 3, 3, 3}));
  EXPECT_FALSE(sortie->Atteinte()) << "it stands still, but did not say so";
  pannes.muette = false;
  avant = machine->Commandes().size();
  Passe(3);
  EXPECT_LE(Depuis(avant).size(), 1U);
  EXPECT_EQ(Le(états, 0).ValeurCanal(), 0);
}

TEST_F(UnArrêtCBR, EstUnOrdrePourUneMachineQueRienIciNaMiseEnMarche) {
  machine->DémarreAuPupitre();
  DémarreLaCarte();
  EXPECT_TRUE(registre->Contient("la machine tourne sans que")) << "told with the start";
  for (std::size_t fois = 1; fois <= 2; ++fois) {
    Passe(5);
    EXPECT_EQ(registre->entrées.size(), fois) << "once";
    EXPECT_TRUE(machine->EnMarche()) << "nobody asked for a stop";
    EXPECT_FALSE(sortie->Atteinte());
    chassis.DéclencheAU();
    EXPECT_FALSE(machine->EnMarche());
    EXPECT_TRUE(sortie->Atteinte()) << "known by the end of the call";
    Passe(1);
    machine->DémarreAuPupitre();
  }
  Passe(1);
  sortie->ValeurCourante(ENUM_ETAT_LOGIQUE::Inactif);
  Passe(0.1);
  EXPECT_FALSE(machine->EnMarche()) << "the output written with the level that it has";
}

TEST_F(UnArrêtCBR, TermineUnDépartALaFinDeSaPause) {
  DémarreLaCarte();
  const std::function<void()> arrêts[] = {[&] { chassis.DéclencheAU(); },
                                          [&] {
                                            sortie->ValeurCourante(ENUM_ETAT_LOGIQUE::Inactif);
                                            carte.MetàJour();
                                          },
                                          [&] {
                                            sommeil.heure +=
                                                50'000;  // and again, while the first one sleeps
                                            sommeil.événement = [&] { chassis.DéclencheAU(); };
                                            chassis.DéclencheAU();
                                          }};
  for (std::size_t i = 0; i < std::size(arrêts); ++i) {
    for (const double après : {0.0, 0.2, 0.6, 1.05, 1.15}) {  // seconds of the start
      SCOPED_TRACE(testing::Message() << "stop " << i << " after " << après);
      sommeil.événement = nullptr;
      sortie->ValeurCourante(ENUM_ETAT_LOGIQUE::Inactif);
      Passe(2);
      const std::size_t avant = machine->Commandes().size();
      sortie->ValeurCourante(ENUM_ETAT_LOGIQUE::Actif);
      double arrivé = 0;
      sommeil.heure = horloge->Maintenant() + 30'000 + après * 1e6;
      sommeil.événement = [&] {
        arrivé = horloge->Maintenant();
        arrêts[i]();
      };
      while (sommeil.événement) Passe(0.005);
      (void)ArrêtéeEn(60);
      EXPECT_LT(horloge->Maintenant() - arrivé, 1.1e6);
      Passe(3);
      EXPECT_FALSE(machine->EnMarche());
      const Fonctions_ reçues = Depuis(avant);
      EXPECT_EQ(reçues.back(), 3) << "the stop is the last word";
      EXPECT_EQ(std::ranges::count(reçues, 2), après < 0.9 ? 0 : 1) << "the start went no further";
    }
  }
}

TEST_F(UnArrêtCBR, PartAvantUnDépartDemandéDerrièreLuiEntreDeuxPasses) {
  DémarreLaCarte();
  for (const bool muette : {false, true}) {
    Lance();
    const std::size_t avant = machine->Commandes().size();
    pannes.muette = muette;
    sortie->ValeurCourante(ENUM_ETAT_LOGIQUE::Inactif);
    sortie->ValeurCourante(ENUM_ETAT_LOGIQUE::Actif);
    Passe(3);
    if (!muette) {
      EXPECT_EQ(Depuis(avant), (Fonctions_{3, 3, 7, 2, 1}));
      EXPECT_TRUE(machine->EnMarche());
      continue;
    }
    pannes.muette = false;
    Passe(5);
    EXPECT_FALSE(machine->EnMarche()) << "too late for a start once the machine answers again";
  }
}

}  // namespace
}  // namespace zuma
