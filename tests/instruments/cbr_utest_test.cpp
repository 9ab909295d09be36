// The CBR tester: its frames, its exchanges, its board from the machine to the channels, and its
// stops: each arrives, whatever the line, the machine and the host do meanwhile.
#include "instruments/cbr_utest.h"

#include <algorithm>
#include <functional>

#include <gtest/gtest.h>

#include "outils/banc_instrument.h"
#include "outils/cas.h"
#include "sim/testeur_cbr_simule.h"

namespace zuma {
namespace {

using essai::Cas;
using trames_utest::Code;
using Fonctions_ = std::vector<int>;

Octets Trame(int fonction, const Octets& données) {
  Octets trame("UTEST\0n\0f", 9);
  trame[6] = static_cast<char>(10 + données.size());
  trame[8] = static_cast<char>(fonction);
  trame += données;
  char somme = 0;
  for (const char octet : trame) somme = static_cast<char>(somme ^ octet);
  return trame + somme;
}

const Octets kMesures = Trame(11, Octets("\2\0\0\0\x40\xE2\1\0\x40\xE2\1\0", 12));

TEST(LesTramesUTEST, ReçoiventLeurCodeEtSeDécodent) {
  Octets fausse = kMesures;
  fausse[12] = static_cast<char>(fausse[12] ^ 1);
  for (const auto& [quoi, reçus, code] : Cas<const char*, Octets, Code>{
           {"no header", "UTES" + kMesures.substr(5), Code::SansEntête},
           {"garbage, then a frame", "UTE\xFF" + kMesures, Code::Bonne},
           {"eight bytes", kMesures.substr(0, 8), Code::Incomplète},
           {"all but the last byte", kMesures.substr(0, 21), Code::Incomplète},
           {"one bit wrong", fausse, Code::SommeFausse},
           {"other function", Trame(1, "ab"), Code::AutreFonction},
           {"echo of a request", Trame(11, ""), Code::Incomplète},
           {"two frames", kMesures + kMesures, Code::SommeFausse}}) {
    Octets tampon = reçus;
    EXPECT_EQ(trames_utest::Analyse(tampon, trames_utest::kMesures), code) << quoi;
  }
  // A signed force and a displacement that is not.
  for (const auto& [octets, force, déplacement] :
       Cas<Octets, double, double>{{"\xFF\xFF\xFF\xFF", -0.00001, 4294967.295},
                                   {Octets("\0\0\0\x80", 4), -21474.83648, 2147483.648}}) {
    const auto lues = trames_utest::DécodeMesures(Trame(11, "\2..." + octets + octets));
    EXPECT_DOUBLE_EQ(lues.force, force);
    EXPECT_DOUBLE_EQ(lues.déplacement, déplacement);
  }
}

// A line that keeps what it is asked, with the time in milliseconds, and answers by function.
class Pupitre : public sim::AppareilSérie {
 public:
  using AppareilSérie::AppareilSérie;
  void Branche(sim::LigneSérie& ligne) override { ligne.débit = 1'000'000'000; }
  void Reçoit(std::string_view octets, sim::LigneSérie& ligne) override {
    if ((demande_ += octets).size() < Trame(0, "").size()) return;
    const int fonction = static_cast<unsigned char>(demande_.at(8));
    EXPECT_EQ(std::exchange(demande_, {}), Trame(fonction, ""));
    fonctions.push_back(fonction);
    heures.push_back(horloge_.Maintenant() / 1000);
    ligne.Emet(réponses[fonction], 0);
  }

  std::map<int, Octets> réponses;
  Fonctions_ fonctions;
  std::vector<double> heures;

 private:
  Octets demande_;
};

class UnTesteurCBR : public testing::Test, public essai::BancInstrument {
 public:
  UnTesteurCBR() {
    liaisons.Attache(2, pupitre);
    testeur.TimerExact(horloge);
    EXPECT_TRUE(testeur.Initialise("2,9600,N,8,1"));
  }
  void Envoie(const Octets& octets) {
    liaisons.Ligne(2)->Emet(octets, 0);
    horloge->Avance(1);
  }
  // Functions sent by one refresh, `attente` milliseconds after the last one.
  Fonctions_ Demandées(double attente = 0) {
    horloge->Avance(attente * 1000);
    pupitre->fonctions.clear();
    pupitre->heures.clear();
    départ = horloge->Maintenant() / 1000;
    testeur.Refresh();
    return pupitre->fonctions;
  }
  double départ = 0;
  Ref<Pupitre> pupitre = Crée<Pupitre>(*horloge);
  CBR_UTEST_CLASS testeur{plateforme};
};

TEST_F(UnTesteurCBR, RedemandeDixFoisPuisDitLeTempsDépassé) {
  EXPECT_EQ(Demandées(), (Fonctions_{11}));
  EXPECT_EQ(Demandées(99), (Fonctions_{})) << "still time to answer";
  for (int i = 1; i <= 10; ++i) {
    EXPECT_EQ(Demandées(100), (Fonctions_{11, 11})) << "again, then the next request";
  }
  EXPECT_TRUE(testeur.EtatMachine());
  EXPECT_EQ(Demandées(100), (Fonctions_{11}));
  EXPECT_TRUE(testeur.Timeout() && testeur.EtatCom() && !testeur.EtatMachine());
  Envoie(kMesures + kMesures);
  EXPECT_EQ(Demandées(), (Fonctions_{11}));
  EXPECT_TRUE(testeur.LesErreurs().somme && testeur.Timeout());
  Envoie(kMesures);
  EXPECT_EQ(Demandées(), (Fonctions_{11}));
  EXPECT_TRUE(testeur.EtatMachine() && testeur.IsRunning() && !testeur.LesErreurs().somme);
  EXPECT_DOUBLE_EQ(testeur.ForceCourante(), 1.23456);
}

TEST_F(UnTesteurCBR, RedemandeUneIdentificationInachevéeTantQuIlResteUnEssai) {
  pupitre->réponses[1] = "UTEST";
  for (const int ratés : {9, 10}) {
    testeur.ResetMachine();
    for (int i = 0; i <= ratés; ++i) (void)Demandées(100);
    testeur.Marche();
    Envoie(kMesures + "x");  // a wrong check sum ends the exchange and counts for none
    EXPECT_EQ(Demandées(), (Fonctions_{3, 7, 2, 1}));
    EXPECT_EQ(Demandées(), ratés == 9 ? (Fonctions_{1, 11}) : (Fonctions_{11})) << ratés;
    EXPECT_EQ(testeur.Timeout(), ratés == 10);
  }
  const std::pair<Octets, CBR_UTEST_CLASS::Erreurs> fausses[] = {
      {"?", {.sansEntête = true}}, {Trame(2, ""), {.fonction = true}}};
  for (const auto& [réponse, erreurs] : fausses) {
    testeur.Marche();
    testeur.ResetMachine();  // forgets the start, the time-out and the errors
    EXPECT_EQ(Demandées(), (Fonctions_{11}));
    EXPECT_FALSE(testeur.Timeout());
    pupitre->réponses[1] = réponse;
    testeur.ResetMachine();
    testeur.Marche();
    (void)Demandées();
    (void)Demandées();
    EXPECT_EQ(testeur.LesErreurs(), erreurs);
  }
}

TEST_F(UnTesteurCBR, DémarreEtArrêteParUneSuiteDePauses) {
  testeur.Marche();
  testeur.Arrete();
  EXPECT_EQ(Demandées(), (Fonctions_{3})) << "the stop first";
  EXPECT_NEAR(pupitre->heures.front() - départ, 100, 1);
  EXPECT_NEAR(horloge->Maintenant() / 1000 - départ, 200, 1);
  EXPECT_EQ(Demandées(), (Fonctions_{11})) << "no start while the machine may still run";
  Envoie(Trame(11, Octets(12, '\0')));
  for (const char* genre : {"\1\1", "\3\1"}) {  // an unknown kind changes nothing
    pupitre->réponses[1] = Trame(1, genre);
    testeur.Marche();
    EXPECT_EQ(Demandées(), (Fonctions_{3, 7, 2, 1}));
    const double attendues[] = {0, 500, 1000, 1100};
    for (std::size_t i = 0; i < 4; ++i) EXPECT_NEAR(pupitre->heures[i] - départ, attendues[i], 1);
    EXPECT_NEAR(horloge->Maintenant() / 1000 - départ, 1200, 1);
    testeur.Refresh();
    EXPECT_TRUE(testeur.TestMarshall() && !testeur.TestCBR() && !testeur.TestUU());
    Envoie(kMesures);
  }
}

// A host's clock that serves one event while it sleeps.
struct HorlogeQuiSert : Horloge {
  explicit HorlogeQuiSert(sim::HorlogeVirtuelle& h) : horloge(h) {}
  [[nodiscard]] std::string TexteHeure() const override { return {}; }
  void Dort(double secondes) override {
    const double fin = horloge.Maintenant() + secondes * 1e6;
    if (événement && heure <= fin) {
      AvanceJusquà(heure);
      std::exchange(événement, nullptr)();
    }
    AvanceJusquà(fin);
  }
  void AvanceJusquà(double cible) { horloge.Avance(std::max(0.0, cible - horloge.Maintenant())); }
  sim::HorlogeVirtuelle& horloge;
  std::function<void()> événement;
  double heure = 0;  ///< of the event, microseconds
};

class UneCarteCBR : public testing::Test, public essai::BancInstrument {
 public:
  UneCarteCBR() {
    plateforme.horloge = &sommeil;
    sortie->ParamètresDepuisBD(essai::UneLigne({{"Index", 1},
                                                {"Nom de la Sortie Logique", "Marche"},
                                                {"Etat d'Activation", 1},
                                                {"Canal", 10}}));
    sortie->Lien({}, {}, {}, &chassis);
  }
  void DémarreLaCarte(const char* réglages = "3,9600,N,8,1") { Démarre("UTS-0107", réglages); }
  void Lance() {
    sortie->ValeurCourante(ENUM_ETAT_LOGIQUE::Actif);
    Passe(2);
    ASSERT_TRUE(machine->EnMarche());
  }
  // Seconds until the machine stands still, at most a minute.
  double ArrêtéeEn() {
    const double départ = Secondes();
    while (machine->EnMarche() && Secondes() - départ < 60) Passe(0.005);
    return Secondes() - départ;
  }
  [[nodiscard]] double Secondes() const { return horloge->Maintenant() / 1e6; }
  // What the machine was told since it had been told `avant`.
  [[nodiscard]] Fonctions_ Depuis(std::size_t avant) const {
    return {machine->Commandes().begin() + static_cast<std::ptrdiff_t>(avant),
            machine->Commandes().end()};
  }

  HorlogeQuiSert sommeil{*horloge};
  Ref<sim::TesteurCBRSimulé> machine = Crée<sim::TesteurCBRSimulé>(*horloge);
  sim::Pannes& pannes = liaisons.Attache(3, machine).pannes;
  Canal& marche = Le(Ajoute("Sortie Logique", {0}), 0);
  FonctionRef mesures = Ajoute("Entrée Analogique", {0, 1});
  FonctionRef états = Ajoute("Entrée Logique", {0, 1});
  SortieLogiqueRef sortie = chassis.SortiesLogiques()->Add("1");
};

TEST_F(UneCarteCBR, DémarreSurOrdreSeulementEtMesure) {
  marche.ValeurCanal(-1);  // left there before the frame started
  DémarreLaCarte();
  Passe(1);
  EXPECT_EQ(machine->Commandes(), Fonctions_{}) << "nothing moves by itself";
  marche.ValeurCanal(0);
  carte.MetàJour();
  marche.ValeurCanal(1);
  Passe(1);
  EXPECT_EQ(machine->Commandes(), (Fonctions_{3})) << "that level is no order";
  marche.ValeurCanal(-1);
  Passe(10);
  EXPECT_EQ(machine->Commandes(), (Fonctions_{3, 3, 7, 2, 1}));
  EXPECT_EQ(Le(états, 0).ValeurCanal(), -1);
  EXPECT_EQ(Le(états, 1).ValeurCanal(), 0);
  EXPECT_GT(machine->Déplacement(), 0.15) << "1.27 mm in a minute";
  EXPECT_NEAR(Le(mesures, 0).ValeurCanal(), machine->Force(), 0.02);
  EXPECT_NEAR(Le(mesures, 1).ValeurCanal(), machine->Déplacement(), 0.005);
  carte.Initialise();
  EXPECT_FALSE(machine->EnMarche()) << "a second start reaches it";
  Passe(1);
  EXPECT_EQ(Le(états, 0).ValeurCanal(), 0);
  pannes.muette = true;
  Passe(1.5);
  EXPECT_EQ(Le(états, 1).ValeurCanal(), -1);
}

TEST_F(UneCarteCBR, ArrêteLaMachineDansLAppelDeLArrêtDUrgence) {
  DémarreLaCarte();
  for (int décalage = 0; décalage < 40; décalage += 7) {  // wherever the exchange stands
    Lance();
    horloge->Avance(1000.0 * décalage);
    carte.MetàJour();
    const double départ = Secondes();
    chassis.DéclencheAU();
    EXPECT_FALSE(machine->EnMarche()) << décalage;
    EXPECT_LT(Secondes() - départ, 0.35);
  }
  // A start that was asked in the middle of an exchange and overtaken by the stop is forgotten.
  pannes.muette = true;
  carte.MetàJour();
  const std::size_t avant = machine->Commandes().size();
  sortie->ValeurCourante(ENUM_ETAT_LOGIQUE::Actif);
  carte.MetàJour();
  chassis.DéclencheAU();
  Passe(2);
  EXPECT_EQ(Depuis(avant), (Fonctions_{3, 3, 3})) << "the stop alone, each second in the silence";
  EXPECT_FALSE(sortie->Atteinte()) << "it stands still, but did not say so";
  pannes.muette = false;
  Passe(3);
  EXPECT_TRUE(sortie->Atteinte());
  Passe(5);
  chassis.DéclencheAU();
  EXPECT_LE(Depuis(avant).size(), 4U) << "a machine that stands still is left alone";
}

// Given each second while no pass runs, and the port missing from the start.
// Found running, then with its port missing, where the stop is given each second and no pass runs.
TEST_F(UneCarteCBR, ArrêteUneMachineQueRienIciNaMiseEnMarche) {
  machine->DémarreAuPupitre();
  DémarreLaCarte();
  EXPECT_TRUE(registre->Contient("la machine tourne sans que")) << "told with the start";
  for (std::size_t fois = 1; fois <= 2; ++fois) {
    Passe(5);
    EXPECT_EQ(registre->entrées.size(), fois) << "once";
    EXPECT_TRUE(machine->EnMarche() && !sortie->Atteinte()) << "nobody asked for a stop";
    chassis.DéclencheAU();
    EXPECT_TRUE(!machine->EnMarche() && sortie->Atteinte()) << "known by the end of the call";
    Passe(1);
    machine->DémarreAuPupitre();
  }
  Passe(1);
  sortie->ValeurCourante(ENUM_ETAT_LOGIQUE::Inactif);
  Passe(0.1);
  EXPECT_FALSE(machine->EnMarche()) << "the output written with the level that it has";

  machine->DémarreAuPupitre();
  pannes.débranchée = true;
  carte.Initialise();
  for (int seconde = 1; seconde <= 6; ++seconde) {
    pannes.débranchée = seconde < 6;
    horloge->Avance(1e6);
    chassis.DéclencheAU();
    EXPECT_FALSE(sortie->Atteinte());
  }
  EXPECT_LT(ArrêtéeEn(), 1.3);
  Passe(1);
  EXPECT_TRUE(sortie->Atteinte());
}

TEST_F(UneCarteCBR, TermineUnDépartALaFinDeSaPause) {
  DémarreLaCarte();
  const auto parLaPasse = [&] {
    sortie->ValeurCourante(ENUM_ETAT_LOGIQUE::Inactif);
    carte.MetàJour();
  };
  const auto deuxFois = [&] {
    sommeil.heure += 50'000;  // while the first one sleeps
    sommeil.événement = [&] { chassis.DéclencheAU(); };
    chassis.DéclencheAU();
  };
  const std::function<void()> arrêts[] = {[&] { chassis.DéclencheAU(); }, parLaPasse, deuxFois};
  for (const auto& arrête : arrêts) {
    for (const double après : {0.0, 0.2, 0.6, 1.05, 1.15}) {  // seconds of the start
      SCOPED_TRACE(testing::Message() << "stop " << &arrête - arrêts << " after " << après);
      sommeil.événement = nullptr;
      sortie->ValeurCourante(ENUM_ETAT_LOGIQUE::Inactif);
      Passe(2);
      const std::size_t avant = machine->Commandes().size();
      sortie->ValeurCourante(ENUM_ETAT_LOGIQUE::Actif);
      double arrivé = 0;
      sommeil.heure = horloge->Maintenant() + 30'000 + après * 1e6;
      sommeil.événement = [&] {
        arrivé = Secondes();
        arrête();
      };
      while (sommeil.événement) Passe(0.005);
      (void)ArrêtéeEn();
      EXPECT_LT(Secondes() - arrivé, 1.1);
      Passe(3);
      EXPECT_FALSE(machine->EnMarche());
      const Fonctions_ reçues = Depuis(avant);
      EXPECT_EQ(reçues.back(), 3) << "the stop is the last word";
      EXPECT_EQ(std::ranges::count(reçues, 2), après < 0.9 ? 0 : 1) << "the start went no further";
    }
  }
}

TEST_F(UneCarteCBR, ArrêteAvantUnDépartDemandéDerrièreEntreDeuxPasses) {
  DémarreLaCarte();
  for (const bool muette : {false, true}) {
    Lance();
    const std::size_t avant = machine->Commandes().size();
    pannes.muette = muette;
    sortie->ValeurCourante(ENUM_ETAT_LOGIQUE::Inactif);
    sortie->ValeurCourante(ENUM_ETAT_LOGIQUE::Actif);
    Passe(3);
    EXPECT_TRUE(muette || Depuis(avant) == (Fonctions_{3, 3, 7, 2, 1}));
    pannes.muette = false;
    Passe(5);
    EXPECT_EQ(machine->EnMarche(), !muette) << "too late for a start once it answers again";
  }
}

TEST_F(UneCarteCBR, NeRetardeNiLArrêtNiLaPasseDesCartesDerrièreElle) {
  chassis.TimerExact(horloge);
  DémarreLaCarte();
  // A block without a line fails on each refresh of its board.
  Carte& derrière = AjouteCarte("2");
  double rafraîchie = 0;
  (void)AjouteSur(derrière, "Entrée Analogique", {-1, 0},
                  {{"Driver", "DrvModBus"}, {"ModBus - Fonction", "3"}});
  registre->réaction = [&] { rafraîchie = std::min(rafraîchie, Secondes()); };
  const auto retard = [&](auto&& appel) {
    rafraîchie = 1e9;
    const double départ = Secondes();
    appel();
    EXPECT_GT(Secondes(), départ + 0.2) << "the tester takes its pauses";
    return rafraîchie - départ;
  };
  horloge->Avance(2e6);
  marche.ValeurCanal(-1);
  EXPECT_LT(retard([&] { chassis.MetàJour(); }), 0.001);
  EXPECT_TRUE(machine->EnMarche());
  marche.ValeurCanal(0);
  EXPECT_LT(retard([&] { chassis.DéclencheAU(); }), 0.001);
  EXPECT_FALSE(machine->EnMarche());
}

TEST_F(UneCarteCBR, DitUnPortInutilisableEtResteSansEchange) {
  for (const char* réglages : {"9,9600,N,8,1", "3,9600,X,8,1"}) {
    registre->entrées.clear();
    DémarreLaCarte(réglages);
    Passe(2);
    ASSERT_EQ(registre->entrées.size(), 1U) << réglages;
    EXPECT_TRUE(registre->Contient("'" + std::string(réglages) + "'"));
    EXPECT_EQ(Le(états, 1).ValeurCanal(), -1);
  }
}

TEST_F(UneCarteCBR, DemandeUnPortPuisLEcritOuDitPourquoiNon) {
  machine->vitesseDeLigne = 38400;
  plateforme.fenêtres = &fenêtres;
  fenêtres.opérateur = [&](ChoixDuPort& feuille) {
    if (fenêtres.montrées > 1) feuille.BtnAutoScan();  // closed at first with nothing chosen
  };
  ligne->panne = Numéro::BaseEnLectureSeule;
  DémarreLaCarte("9,9600,N,8,1");
  EXPECT_TRUE(registre->Contient("Erreur N°3027"));
  machine->précharge = 0.25;
  Passe(0.2);
  EXPECT_EQ(Le(mesures, 0).ValeurCanal(), 0.25) << "the exchange goes on";
  ligne->panne.reset();
  carte.Initialise();
  EXPECT_EQ(Réglages(), "3,38400,N,8,1");
  EXPECT_EQ(fenêtres.montrées, 2) << "what was chosen is not asked again";
}

}  // namespace
}  // namespace zuma
