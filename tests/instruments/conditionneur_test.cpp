// The digital conditioners over a simulated line: which module answers, its values, its failures.
#include <array>

#include <gtest/gtest.h>

#include "instruments/conditionneur_num_k9.h"
#include "instruments/conditionneur_num_k9_v1_00.h"
#include "instruments/instrument.h"
#include "outils/banc_instrument.h"
#include "outils/cas.h"
#include "sim/conditionneur_simule.h"

namespace zuma {
namespace {

using K9 = ClassConditionneurNum_K9;
using V1 = ClassConditionneurNum_K9_V1_00;
using Module = sim::ConditionneurSimulé;
using Valeurs = std::vector<double>;

// The flags that are up.
template <class C>
std::string Levés(const C& c) {
  const std::pair<char, bool> drapeaux[] = {
      {'G', c.ErreurGenerale()},      {'T', c.Timeout()},
      {'A', c.ErreurAdresseModbus()}, {'C', c.ErreurCRC()},
      {'D', c.ErreurDiagnostic()},    {'E', c.ErreurEcriture()},
      {'L', c.ErreurLecture()},       {'F', c.ErreurProblemeFonction()},
      {'*', c.ErreurAutre()}};
  std::string levés;
  for (const auto& [lettre, levé] : drapeaux) levés.append(levé ? 1 : 0, lettre);
  return levés;
}

// The conditioner of a board, with its six channels.
template <class C>
class UnConditionneur : public testing::Test, public essai::BancInstrument {
 public:
  static constexpr bool kPremière = std::is_same_v<C, K9>;
  static constexpr double kTimeOut = kPremière ? 0.1 : 10;  // seconds

  C& Objet() { return instruments::De<C>(carte); }
  void Démarre(std::int32_t adresse = 9) {
    carte.Adresse(adresse);
    BancInstrument::Démarre(
        kPremière ? "Conditionneur numerique K9" : "Conditionneur numerique K9 V1.00",
        "3,115200,N,8,1");
  }
  // Refreshes every millisecond; gives the number of those that brought values.
  int Tourne(double secondes) {
    int lectures = 0;
    const double fin = horloge->Maintenant() + secondes * 1e6;
    while (horloge->Maintenant() < fin) {
      const double début = horloge->Maintenant();
      carte.MetàJour();
      EXPECT_LT(horloge->Maintenant() - début, 500) << "a refresh never waits";
      if constexpr (kPremière) lectures += Objet().MAJFaite() ? 1 : 0;
      horloge->Avance(1000 - (horloge->Maintenant() - début));
    }
    return lectures;
  }
  [[nodiscard]] Valeurs Canaux() const {
    Valeurs valeurs = Lues(blocs[0]);
    for (const double état : Lues(blocs[1])) valeurs.push_back(état);
    return valeurs;
  }

  Ref<Module> module = Crée<Module>(*horloge, std::uint8_t{9});
  sim::LigneSérie& prise = liaisons.Attache(3, module);
  std::array<FonctionRef, 2> blocs{Ajoute("Entrée Analogique", {0, 1, 2}),
                                   Ajoute("Entrée Logique", {0, 1, 2})};
};
using LesDeux = testing::Types<K9, V1>;
TYPED_TEST_SUITE(UnConditionneur, LesDeux);

TYPED_TEST(UnConditionneur, DistingueLesModules) {
  using Firmware = Module::Firmware;
  for (const auto& [firmware, octets, version] : essai::Cas<Firmware, std::uint8_t, double>{
           {Firmware::Trois, 0, 1},
           {Firmware::Demandé, 0, this->kPremière ? 99999.0 : 2.0},
           {Firmware::Trois, 4, 99999}}) {
    this->module->firmware = firmware;
    this->module->octetsForcés = octets;
    this->module->valeurs = {-2, 32767, 40000};
    this->Démarre();
    this->Tourne(0.1);
    EXPECT_EQ(this->carte.Service() == ServiceCarte::ParFonction, this->kPremière);
    EXPECT_EQ(this->Objet().version(), version);
    const bool connu = version != 99999;
    EXPECT_EQ(this->Canaux(),
              connu ? (Valeurs{-2, 32767, 32767, -1, 0, 0}) : (Valeurs{0, 0, 0, 0, 0, -1}));
    EXPECT_EQ(this->registre->Contient("ce module n'est pas connu"), !connu);
    this->registre->entrées.clear();
  }
}

// Whatever the line does at the start, the wait lasts as long as the time-out and no longer; what
// cannot answer is not asked.
TYPED_TEST(UnConditionneur, NAttendAuDémarrageQueSonTimeOut) {
  this->Démarre(128);
  this->Démarre(-1);
  this->prise.pannes.débranchée = true;
  this->Démarre();
  EXPECT_TRUE(this->registre->Contient("'3,115200,N,8,1' non détecté (port absent"));
  EXPECT_EQ(this->registre->entrées.size(), 3U);
  this->Objet().Initialise({}, 9);
  EXPECT_EQ(this->module->Questions(), 0);
  EXPECT_EQ(Levés(this->Objet()), "");
  for (bool sim::Pannes::* panne :
       {&sim::Pannes::muette, &sim::Pannes::parasitée, &sim::Pannes::babillarde}) {
    this->prise.pannes = {};
    this->prise.pannes.*panne = true;
    const double départ = this->horloge->Maintenant();
    this->Démarre();
    EXPECT_NEAR((this->horloge->Maintenant() - départ) / 1e6, this->kTimeOut, 0.001);
    EXPECT_TRUE(this->Objet().Timeout());
    EXPECT_FALSE(this->Objet().Initialised());
  }
  this->prise.pannes = {};
  EXPECT_FALSE(this->Objet().Initialise(this->carte.LiaisonSerie2(), 9)) << "as hosts know it";
  EXPECT_TRUE(this->Objet().Initialised()) << "a latched time-out does not end a new wait";
}

// Whatever keeps the values away, they are told as old, then the module as lost; once it answers
// again all comes back, an error too.
TYPED_TEST(UnConditionneur, DitChaqueErreurEtSonSilenceEtContinue) {
  using Gêne = void (*)(Module&, sim::Pannes&);
  const std::pair<std::string, Gêne> cas[] = {
      {"GA", [](Module& m, auto&) { m.fausseAdresse = 8; }},
      {"GC", [](Module&, auto& pannes) { pannes.parasitée = true; }},
      {"GL", [](Module& m, auto&) { m.premierRegistre = 2; }},
      {"GF", [](Module& m, auto&) { m.fausseFonction = 4; }},
      {"T", [](Module&, auto& pannes) { pannes.coupée = true; }},
      {"T", [](Module&, auto& pannes) { pannes.muette = true; }}};
  this->prise.débit = 1'000'000'000;  // whole answers: what is left of a wrong one is another fault
  for (const auto& [drapeaux, gêne] : cas) {
    SCOPED_TRACE(drapeaux);
    this->module->valeurs = {1, 2, 3};
    this->Démarre();  // makes the object again
    this->Tourne(0.2);
    EXPECT_EQ(this->Canaux(), (Valeurs{1, 2, 3, -1, 0, 0}));
    gêne(*this->module, this->prise.pannes);
    this->module->valeurs = {4, 5, 6};
    this->Tourne(0.25);
    const double erreur = drapeaux[0] == 'G' ? -1 : 0;
    EXPECT_EQ(this->Canaux(), (Valeurs{1, 2, 3, -1, erreur, 0}));
    this->Tourne(0.25);
    EXPECT_EQ(this->Canaux(), (Valeurs{1, 2, 3, -1, erreur, -1})) << "old";
    this->Tourne(0.75);
    EXPECT_EQ(this->Canaux(), (Valeurs{1, 2, 3, 0, erreur, -1})) << "lost";
    EXPECT_TRUE((!this->kPremière && erreur == 0) || Levés(this->Objet()) == drapeaux);
    this->module->fausseAdresse = this->module->fausseFonction = 0;
    this->module->premierRegistre = 1;
    this->prise.pannes = {};
    this->Tourne(this->kPremière || erreur != 0 ? 2.2 : 11);
    EXPECT_EQ(this->Canaux(), (Valeurs{4, 5, 6, -1, erreur, 0})) << "latched";
    this->Tourne(5);
    EXPECT_EQ(this->Canaux(), (Valeurs{4, 5, 6, -1, 0, 0}));
    EXPECT_EQ(Levés(this->Objet()), "");
  }
}

using UnK9 = UnConditionneur<K9>;

TEST_F(UnK9, LitCinquanteFoisParSecondeEtRattrapeSonRetard) {
  Démarre();
  EXPECT_NEAR(Tourne(2), 100, 1);
  horloge->Avance(200e3);
  EXPECT_NEAR(Tourne(1), 60, 1) << "the ten that were missed come on top";
  horloge->Avance(50e3);
  Objet().Refresh();  // leaves an answer awaited
  Objet().Initialise(carte.LiaisonSerie2(), 9);
  ASSERT_EQ(messages.textes.size(), 1U);
  EXPECT_EQ(messages.textes[0],
            "Oups! Impossible d'interroger le module d'adresse 9 qui est connecté sur le COM 3");
  EXPECT_TRUE(Objet().Initialised()) << "the answer awaited does as well";
}

using UnV1 = UnConditionneur<V1>;

TEST_F(UnV1, RetrouveSonModuleSansAttendre) {
  module->firmware = Module::Firmware::Demandé;
  module->valeurs = {7, 8, 9};
  prise.pannes.débranchée = true;  // before the frame is started
  Démarre();
  Tourne(3);
  EXPECT_FALSE(Objet().PortExistant());
  EXPECT_TRUE(Objet().TimeoutAffichable()) << "in the first ten seconds, time-out or not";
  prise.pannes = {};
  Tourne(1.1);
  EXPECT_EQ(Canaux(), (Valeurs{7, 8, 9, -1, 0, 0}));

  prise.pannes.débranchée = true;
  Tourne(0.001);
  EXPECT_EQ(Canaux(), (Valeurs{7, 8, 9, 0, 0, 0})) << "kept, and told";
  carte.LiaisonSerie2()->PortOuvert(true);  // somebody tries in vain
  const int avant = module->Questions();
  Tourne(5);
  EXPECT_EQ(module->Questions(), avant);
  prise.pannes = {.muette = true};
  Tourne(31);
  EXPECT_EQ(module->Questions(), avant + 3) << "ten seconds to wait, then one before the next try";
  EXPECT_TRUE(Objet().Timeout());
  EXPECT_FALSE(Objet().TimeoutAffichable());
  prise.pannes = {};
  Tourne(11);
  EXPECT_EQ(Objet().version(), 2) << "no other answer is taken for that of the detection";
  EXPECT_EQ(Canaux(), (Valeurs{7, 8, 9, -1, 0, 0}));
}

}  // namespace
}  // namespace zuma
