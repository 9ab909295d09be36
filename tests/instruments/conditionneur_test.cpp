// The digital conditioners over a simulated line: which module answers, its values, its failures.
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

// The flags that are up: general, time-out, address, checksum, diagnostic, write, read, function,
// other.
template <class C>
std::string Levés(const C& c) {
  std::string levés;
  const char* lettre = "GTACDWRFO";
  for (const bool levé : {c.ErreurGenerale(), c.Timeout(), c.ErreurAdresseModbus(), c.ErreurCRC(),
                          c.ErreurDiagnostic(), c.ErreurEcriture(), c.ErreurLecture(),
                          c.ErreurProblemeFonction(), c.ErreurAutre()}) {
    if (levé) levés += *lettre;
    ++lettre;
  }
  return levés;
}

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
             {Firmware::Trois, 4, 99999}};
  for (const auto& attendu : cas) {
    this->Renouvelle();
    this->module->firmware = attendu.firmware;
    this->module->octetsForcés = attendu.octets;
    this->module->valeurs = {-2, 32767, 40000};
    this->Démarre();
    const TypeParam& c = *this->objet;
    EXPECT_EQ(c.version(), attendu.version) << int{attendu.octets};
    EXPECT_EQ(c.Initialised(), attendu.version != 99999) << int{attendu.octets};
    if (attendu.version == 99999) continue;
    this->Tourne(0.1);
    EXPECT_EQ(Lit(c, 0), -2);
    EXPECT_EQ(Lit(c, 1), 32767);
    EXPECT_EQ(Lit(c, 2), 32767);
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
  EXPECT_EQ(Levés(*this->objet), "");
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
    const char* drapeaux;
    void (*abîme)(Module&, sim::Pannes&);
  } cas[] = {
      {"GA", [](Module& m, auto&) { m.fausseAdresse = 8; }},
      {"GC", [](Module&, auto& pannes) { pannes.parasitée = true; }},
      {"GR", [](Module& m, auto&) { m.premierRegistre = 2; }},
      {"GF", [](Module& m, auto&) { m.fausseFonction = 4; }},
      {"T", [](Module&, auto& pannes) { pannes.coupée = true; }},
  };
  const double attente = TimeOut(&*this->objet) / 1e6;
  for (const auto& c : cas) {
    this->Renouvelle();
    this->module->valeurs = {1, 2, 3};
    this->Démarre();
    this->Tourne(0.2);
    c.abîme(*this->module, this->ligne.pannes);
    this->module->valeurs = {4, 5, 6};
    this->Tourne(2 * attente);
    EXPECT_EQ(Lit(*this->objet, 1), 2) << c.drapeaux << ": no value of a wrong answer";
    this->module->fausseAdresse = this->module->fausseFonction = 0;
    this->module->premierRegistre = 1;
    this->ligne.pannes = {};
    this->Tourne(attente + 0.2);
    EXPECT_EQ(Lit(*this->objet, 1), 5);
    EXPECT_EQ(Levés(*this->objet), c.drapeaux) << "latched";
  }
}

TEST(DrapeauxDuConditionneur, TiennentCompteDesCodesQuUneLectureNApportePas) {
  using OutilsModbus::Résultat;
  EXPECT_EQ(NomDuDrapeau(DrapeauDe(Résultat::Inconnue)), "ErreurAutre");
  EXPECT_EQ(NomDuDrapeau(DrapeauDe(Résultat::Diagnostic)), "ErreurDiagnostic");
  EXPECT_EQ(NomDuDrapeau(DrapeauDe(Résultat::EcritureRefusée)), "ErreurEcriture");
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
  ASSERT_EQ(messages.textes.size(), 1U);
  EXPECT_EQ(messages.textes[0],
            "Oups! Impossible d'interroger le module d'adresse 9 qui est connecté sur le COM 3");
  EXPECT_TRUE(objet->Initialised()) << "the answer awaited does as well";
}

using UnV1 = UnConditionneur<V1>;

TEST_F(UnV1, RetrouveSonModuleEnUneSeconde) {
  ligne.pannes.débranchée = true;  // before the frame is started
  Démarre();
  Tourne(3);
  EXPECT_FALSE(objet->PortExistant());
  EXPECT_TRUE(objet->TimeoutAffichable()) << "in the first ten seconds, time-out or not";
  ligne.pannes = {};
  Tourne(1.1);
  EXPECT_TRUE(objet->Initialised());
  module->valeurs = {7, 8, 9};
  Tourne(0.1);

  ligne.pannes.débranchée = true;
  objet->Refresh();
  EXPECT_FALSE(objet->Initialised());
  EXPECT_EQ(objet->ValeurCanal(2), 9) << "kept";
  const int avant = module->Questions();
  Tourne(5);
  EXPECT_EQ(module->Questions(), avant);
  ligne.pannes = {.muette = true};
  Tourne(25);
  EXPECT_EQ(module->Questions(), avant + 3) << "ten seconds to wait, then one before the next try";
  EXPECT_TRUE(objet->Timeout());
  EXPECT_FALSE(objet->TimeoutAffichable());
  ligne.pannes = {};
  Tourne(1.1);
  EXPECT_TRUE(objet->Initialised());
}

TYPED_TEST(UnConditionneur, SertLesCanauxDeSaCarte) {
  constexpr bool première = std::is_same_v<TypeParam, K9>;
  Carte carte(this->plateforme);
  carte.TimerExact(this->horloge);
  carte.ChargeErreur(this->registre);
  for (const char* type : {"Entrée Analogique", "Entrée Logique"}) {
    essai::AjouteBloc(carte, type,
                      {{"Type de Fonction", Texte(type)},
                       {"Nom de la Fonction", Texte("Bloc")},
                       {"Driver", Texte("")}},
                      {0, 1, 2}, this->horloge, this->registre);
  }
  essai::LitCarte(carte,
                  première ? "Conditionneur numerique K9" : "Conditionneur numerique K9 V1.00",
                  "3,115200,N,8,1", "9");
  EXPECT_EQ(carte.Service(), première ? ServiceCarte::ParFonction : ServiceCarte::CarteEntière);
  // Refreshes the board, then reads the channels of both blocks.
  const auto lus = [&] {
    for (int i = 0; i < 20; ++i) {
      carte.MetàJour();
      this->horloge->Avance(5000);
    }
    std::vector<double> valeurs;
    for (const FonctionRef& bloc : *carte.Fonctions()) {
      for (const CanalRef& canal : bloc->LesCanaux()) valeurs.push_back(canal->ValeurCanal());
    }
    return valeurs;
  };
  using Valeurs = std::vector<double>;
  this->module->valeurs = {100, -200, 300};
  carte.Initialise();
  EXPECT_EQ(lus(), (Valeurs{100, -200, 300, -1, 0, 0}));
  this->ligne.pannes.parasitée = true;
  EXPECT_EQ(lus(), (Valeurs{100, -200, 300, -1, -1, 0}));
  this->ligne.pannes = {};
  carte.Initialise();
  EXPECT_EQ(lus(), (Valeurs{100, -200, 300, -1, 0, 0})) << "a start makes the object again";
  EXPECT_TRUE(this->registre->entrées.empty());
  this->ligne.pannes.débranchée = true;
  carte.Initialise();
  EXPECT_EQ(lus(), (Valeurs{0, 0, 0, 0, 0, 0}));
  EXPECT_TRUE(this->registre->Contient("'3,115200,N,8,1' non détecté (port absent"));
  EXPECT_EQ(this->registre->entrées.size(), 1U);
}

}  // namespace
}  // namespace zuma
