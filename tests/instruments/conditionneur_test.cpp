// The digital conditioners over a simulated line: which module answers, its values, its failures.
#include <functional>
#include <optional>

#include <gtest/gtest.h>

#include "instruments/conditionneur_num_k9.h"
#include "instruments/conditionneur_num_k9_v1_00.h"
#include "instruments/instrument.h"
#include "instruments/trames_conditionneur.h"
#include "outils/arbre.h"
#include "sim/conditionneur_simule.h"
#include "sim/liaisons_simulees.h"

namespace zuma {
namespace {

using K9 = ClassConditionneurNum_K9;
using V1 = ClassConditionneurNum_K9_V1_00;
using essai::Texte;

double Lit(const K9& c, std::int32_t canal) {
  return c.ParCanalEA(canal);
}
double Lit(const V1& c, std::int32_t canal) {
  return c.ValeurCanal(canal);
}
constexpr double TimeOut(const K9*) {
  return 100e3;
}
constexpr double TimeOut(const V1*) {
  return 10e6;
}

// Names of the flags that are up.
template <class C>
std::vector<std::string> Levés(const C& c) {
  const std::pair<const char*, bool> tous[] = {{"Generale", c.ErreurGenerale()},
                                               {"Timeout", c.Timeout()},
                                               {"AdresseModbus", c.ErreurAdresseModbus()},
                                               {"CRC", c.ErreurCRC()},
                                               {"Diagnostic", c.ErreurDiagnostic()},
                                               {"Ecriture", c.ErreurEcriture()},
                                               {"Lecture", c.ErreurLecture()},
                                               {"ProblemeFonction", c.ErreurProblemeFonction()},
                                               {"Autre", c.ErreurAutre()}};
  std::vector<std::string> levés;
  for (const auto& [nom, levé] : tous) {
    if (levé) levés.emplace_back(nom);
  }
  return levés;
}
using Noms = std::vector<std::string>;

template <class C>
class UnConditionneur : public testing::Test, public essai::Banc {
 public:
  UnConditionneur() {
    plateforme.liaisons = &fabrique;
    Renouvelle();
    port = fabrique.CréePort();
  }
  void Renouvelle() {
    objet.emplace(plateforme);
    objet->TimerExact(horloge);
  }
  void Démarre(std::int32_t adresse = 9) {
    port->ConfigurePort("3,115200,N,8,1", true);
    EXPECT_FALSE(objet->Initialise(port, adresse)) << "the result stays false";
  }
  // Refreshes every millisecond.
  void Tourne(double secondes) {
    const double fin = horloge->Maintenant() + secondes * 1e6;
    while (horloge->Maintenant() < fin) {
      objet->Refresh();
      horloge->Avance(1000);
    }
  }

  Ref<sim::HorlogeVirtuelle> horloge = Crée<sim::HorlogeVirtuelle>(100);
  sim::FabriqueLiaisonsSimulée fabrique;
  Ref<sim::ConditionneurSimulé> module = Crée<sim::ConditionneurSimulé>(*horloge, std::uint8_t{9});
  sim::LigneSérie& ligne = fabrique.Attache(3, module);
  Ref<PortInstrument> port;
  std::optional<C> objet;
};
using LesDeux = testing::Types<K9, V1>;
TYPED_TEST_SUITE(UnConditionneur, LesDeux);

TYPED_TEST(UnConditionneur, DistingueLesModules) {
  using Firmware = sim::ConditionneurSimulé::Firmware;
  constexpr bool première = std::is_same_v<TypeParam, K9>;
  const struct {
    Firmware firmware;
    std::uint8_t octets;
    double version;
  } cas[] = {{Firmware::Trois, 0, 1},
             {Firmware::Demandé, 0, première ? 99999 : 2},
             {Firmware::Trois, 4, 99999},
             {Firmware::Trois, 8, 99999}};
  for (const auto& attendu : cas) {
    this->Renouvelle();
    this->module->firmware = attendu.firmware;
    this->module->octetsForcés = attendu.octets;
    this->module->valeurs = {-2, 32767, 40000};
    this->Démarre();
    const TypeParam& c = *this->objet;
    EXPECT_EQ(c.version(), attendu.version) << int{attendu.octets};
    EXPECT_EQ(c.Initialised(), attendu.version != 99999) << int{attendu.octets};
    EXPECT_EQ(c.Adresse(), 9);
    EXPECT_EQ(Lit(c, 0), 0) << "nothing but detected";
    if (attendu.version == 99999) continue;
    this->Tourne(0.1);
    EXPECT_EQ(Levés(c), Noms{});
    EXPECT_EQ(Lit(c, 0), -2);
    EXPECT_EQ(Lit(c, 1), 32767);
    EXPECT_EQ(Lit(c, 2), 32767);
    EXPECT_EQ(Lit(c, 3), 0);
  }
}

TYPED_TEST(UnConditionneur, NInterrogePasCeQuiNePeutRépondre) {
  this->Démarre(128);
  this->Démarre(-1);
  this->port->PortOuvert(false);
  this->objet->Initialise(this->port, 9);
  this->objet->Initialise({}, 9);
  EXPECT_EQ(this->module->Questions(), 0);
  EXPECT_FALSE(this->objet->Initialised());
  EXPECT_EQ(Levés(*this->objet), Noms{});
}

// Whatever the line does at the start, the wait lasts as long as the time-out and no longer.
TYPED_TEST(UnConditionneur, NAttendAuDémarrageQueSonTimeOut) {
  const double attente = TimeOut(&*this->objet);
  for (bool sim::Pannes::* panne : {&sim::Pannes::muette, &sim::Pannes::parasitée}) {
    this->ligne.pannes = {};
    this->ligne.pannes.*panne = true;
    const double départ = this->horloge->Maintenant();
    this->Démarre();
    EXPECT_GE(this->horloge->Maintenant() - départ, attente);
    EXPECT_LT(this->horloge->Maintenant() - départ, attente + 10e3);
    EXPECT_TRUE(this->objet->Timeout());
    EXPECT_FALSE(this->objet->Initialised());
  }
  this->ligne.pannes = {};
  this->Démarre();
  EXPECT_TRUE(this->objet->Initialised()) << "a latched time-out does not end a new wait";
}

TYPED_TEST(UnConditionneur, RetientChaqueErreurEtContinue) {
  using Module = sim::ConditionneurSimulé;
  const struct {
    Noms drapeaux;
    std::function<void(Module&, sim::LigneSérie&)> abîme;
  } cas[] = {
      {{"Generale", "AdresseModbus"}, [](Module& m, auto&) { m.fausseAdresse = 8; }},
      {{"Generale", "CRC"}, [](Module&, auto& l) { l.pannes.parasitée = true; }},
      {{"Generale", "Lecture"}, [](Module& m, auto&) { m.premierRegistre = 2; }},
      {{"Generale", "ProblemeFonction"}, [](Module& m, auto&) { m.fausseFonction = 4; }},
      {{"Timeout"}, [](Module&, auto& l) { l.pannes.coupée = true; }},
  };
  const double attente = TimeOut(&*this->objet) / 1e6;
  for (const auto& c : cas) {
    this->Renouvelle();
    TypeParam& neuf = *this->objet;
    this->module->valeurs = {1, 2, 3};
    this->Démarre();
    this->Tourne(0.2);
    c.abîme(*this->module, this->ligne);
    this->module->valeurs = {4, 5, 6};
    this->Tourne(2 * attente + 0.2);
    EXPECT_EQ(Levés(neuf), c.drapeaux);
    EXPECT_EQ(Lit(neuf, 1), 2) << c.drapeaux.back() << ": no value of a wrong answer";
    EXPECT_TRUE(neuf.Initialised());
    this->module->fausseAdresse = this->module->fausseFonction = 0;
    this->module->premierRegistre = 1;
    this->module->valeurs = {4, 5, 6};
    this->ligne.pannes = {};
    this->Tourne(attente + 0.2);
    EXPECT_EQ(Lit(neuf, 1), 5);
    EXPECT_EQ(Levés(neuf), c.drapeaux) << "latched";
  }
}

TEST(DrapeauxDuConditionneur, SontCeuxDeChaqueCode) {
  const char* attendus[] = {"ErreurAutre",         "",  // an incomplete answer raises none
                            "ErreurAdresseModbus", "ErreurProblemeFonction",
                            "ErreurCRC",           "ErreurDiagnostic",
                            "ErreurEcriture",      "ErreurLecture"};
  for (const int code : {0, 2, 3, 4, 5, 6, 7}) {
    EXPECT_EQ(NomDuDrapeau(DrapeauDe(static_cast<OutilsModbus::Résultat>(code))), attendus[code]);
  }
}

using UnK9 = UnConditionneur<K9>;

TEST_F(UnK9, LitCinquanteFoisParSecondeEtRattrapeSonRetard) {
  Démarre();
  const auto lectures = [&](double secondes) {
    int nombre = 0;
    const double fin = horloge->Maintenant() + secondes * 1e6;
    while (horloge->Maintenant() < fin) {
      objet->Refresh();
      nombre += objet->MAJFaite() ? 1 : 0;
      horloge->Avance(500);
    }
    return nombre;
  };
  EXPECT_NEAR(lectures(2), 100, 1);
  horloge->Avance(200e3);
  EXPECT_NEAR(lectures(1), 60, 1) << "the ten that were missed come on top";
}

TEST_F(UnK9, DitQuilNePeutInterroger) {
  Démarre();
  horloge->Avance(50e3);
  objet->Refresh();  // leaves an answer awaited
  objet->Initialise(port, 9);
  EXPECT_EQ(messages.textes, (Noms{"Oups! Impossible d'interroger le module d'adresse 9 qui est "
                                   "connecté sur le COM 3"}));
  EXPECT_TRUE(objet->Initialised()) << "the answer awaited does as well";
}

using UnV1 = UnConditionneur<V1>;

TEST_F(UnV1, RetrouveSonModuleEnUneSeconde) {
  ligne.pannes.débranchée = true;  // before the frame is started
  Démarre();
  EXPECT_FALSE(objet->PortExistant());
  Tourne(3);
  EXPECT_FALSE(objet->Initialised());
  ligne.pannes.débranchée = false;
  Tourne(1.1);
  EXPECT_TRUE(objet->Initialised());
  module->valeurs = {7, 8, 9};
  Tourne(0.1);
  EXPECT_EQ(objet->ValeurCanal(2), 9);

  ligne.pannes.débranchée = true;
  objet->Refresh();
  EXPECT_FALSE(objet->Initialised());
  EXPECT_EQ(objet->ValeurCanal(2), 9);
  const int avant = module->Questions();
  Tourne(5);
  EXPECT_EQ(module->Questions(), avant);
  ligne.pannes = {.muette = true};
  Tourne(25);
  EXPECT_EQ(module->Questions(), avant + 3) << "ten seconds to wait, then one before the next try";
  ligne.pannes = {};
  Tourne(1.1);
  EXPECT_TRUE(objet->Initialised());
}

TEST_F(UnV1, MontreSonTimeOutAuDébutSeulement) {
  EXPECT_TRUE(objet->TimeoutAffichable()) << "time-out or not";
  ligne.pannes.muette = true;
  Démarre();
  EXPECT_TRUE(objet->Timeout());
  EXPECT_FALSE(objet->TimeoutAffichable());
}

TYPED_TEST(UnConditionneur, ServentLesCanauxDeLeurCarte) {
  constexpr bool première = std::is_same_v<TypeParam, K9>;
  Carte carte(this->plateforme);
  carte.TimerExact(this->horloge);
  carte.ChargeErreur(this->registre);
  const auto bloc = [&](const char* clé, const char* type, std::vector<std::int32_t> numéros) {
    return essai::AjouteBloc(carte, clé,
                             {{"Type de Fonction", Texte(type)},
                              {"Nom de la Fonction", Texte("Bloc")},
                              {"Driver", Texte("")}},
                             numéros, this->horloge, this->registre);
  };
  const FonctionRef valeurs = bloc("1", "Entrée Analogique", {0, 1, 2});
  const FonctionRef états = bloc("2", "Entrée Logique", {0, 1});
  essai::LitCarte(carte,
                  première ? "Conditionneur numerique K9" : "Conditionneur numerique K9 V1.00",
                  "3,115200,N,8,1", "9");
  EXPECT_EQ(carte.Service(), première ? ServiceCarte::ParFonction : ServiceCarte::CarteEntière);
  this->module->valeurs = {100, -200, 300};
  const auto tourne = [&](int fois) {
    for (; fois > 0; --fois) {
      carte.MetàJour();
      this->horloge->Avance(5000);
    }
  };
  const auto lus = [](const FonctionRef& f, std::int32_t combien) {
    std::vector<double> v;
    for (std::int32_t n = 0; n < combien; ++n) {
      v.push_back(f->Canals()->Item(essai::CléDuCanal(n))->ValeurCanal());
    }
    return v;
  };
  carte.Initialise();
  tourne(20);
  EXPECT_EQ(lus(valeurs, 3), (std::vector<double>{100, -200, 300}));
  EXPECT_EQ(lus(états, 2), (std::vector<double>{-1, 0}));
  this->ligne.pannes.parasitée = true;
  tourne(20);
  this->ligne.pannes = {};
  tourne(20);
  EXPECT_EQ(lus(états, 2), (std::vector<double>{-1, -1}));
  carte.Initialise();
  tourne(20);
  EXPECT_EQ(lus(états, 2), (std::vector<double>{-1, 0})) << "a start makes the object again";
  EXPECT_TRUE(this->registre->entrées.empty());
  this->ligne.pannes.débranchée = true;
  carte.Initialise();
  EXPECT_TRUE(this->registre->Contient("'3,115200,N,8,1' non détecté (port absent"));
  tourne(20);
  EXPECT_EQ(lus(états, 2), (std::vector<double>{0, 0}));
  EXPECT_EQ(this->registre->entrées.size(), 1U);
}

}  // namespace
}  // namespace zuma
