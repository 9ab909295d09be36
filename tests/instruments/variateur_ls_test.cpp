// The variable-speed drive over a simulated line: start, set points, states, failures.
#include "instruments/variateur_ls.h"

#include <gtest/gtest.h>

#include "outils/arbre.h"
#include "sim/collaborateurs.h"
#include "sim/esclave_modbus.h"
#include "sim/liaisons_simulees.h"

namespace zuma {
namespace {

using essai::Nombre;
using essai::Texte;

TEST(ConsigneDuVariateur, TientEnTroisRegistres) {
  const struct {
    double valeur;
    std::array<std::uint16_t, 3> registres;
  } cas[] = {
      {12.34, {1, 12, 34}}, {-0.5, {0xFFFF, 0, 50}},       {0, {0, 0, 0}},
      {0.999, {1, 1, 0}},   {-1500.01, {0xFFFF, 1500, 1}},
  };
  for (const auto& c : cas) EXPECT_EQ(VariateurLS::Consigne(c.valeur), c.registres) << c.valeur;
  EXPECT_THROW((void)VariateurLS::Consigne(70000), Echec);
}

TEST(AttenteDuVariateur, DonnePlusAuxLiaisonsRapides) {
  EXPECT_EQ(VariateurLS::TimeOut(10, 9600), 15'000);
  EXPECT_EQ(VariateurLS::TimeOut(10, 19200), 15'000);
  EXPECT_EQ(VariateurLS::TimeOut(10, 38400), 150'000);
}

class UnVariateur : public testing::Test, public essai::Banc {
 public:
  UnVariateur() {
    plateforme.liaisons = &fabrique;
    plateforme.fichiers = &fichiers;
    plateforme.horloge = horloge.Brut();
    carte.TimerExact(horloge);
    carte.ChargeErreur(registre);
    consigne = Ajoute("1", "Sortie Analogique", "10", 500, {-1, 0});
    sorties = Ajoute("2", "Sortie Logique", "10", 500, {0, 3});
    états = Ajoute("3", "Entrée Logique", "3", 600, {-1, 0, 9, 20});
    vitesse = Ajoute("4", "Entrée Analogique", "3", 600, {0});
    esclave->registres = {{1032, 7}, {1146, 7}, {600, 0x0201}, {601, 0x1234}, {602, 0}};
    essai::LitCarte(carte, "Variateur LS Modbus et soft K9", "4,38400,N,8,1,0.7");
    carte.Initialise();
  }
  FonctionRef Ajoute(const char* clé, const char* type, const char* fonction, std::int32_t départ,
                     const std::vector<std::int32_t>& numéros) {
    return essai::AjouteBloc(carte, clé,
                             {{"Driver", Texte("Variateur LS Modbus et soft K9")},
                              {"Type de Fonction", Texte(type)},
                              {"Nom de la Fonction", Texte("Bloc")},
                              {"ModBus - Adresse", Texte("05")},
                              {"ModBus - Fonction", Texte(fonction)},
                              {"ModBus - Regitre départ", Nombre(départ)}},
                             numéros, horloge, registre);
  }
  void Passe(int fois) {
    for (; fois > 0; --fois) {
      carte.MetàJour();
      horloge->Avance(2000);
    }
  }
  static Canal& Le(const FonctionRef& bloc, std::int32_t numéro) {
    return *bloc->Canals()->Item(essai::CléDuCanal(numéro));
  }

  Ref<sim::HorlogeVirtuelle> horloge = Crée<sim::HorlogeVirtuelle>(10);
  sim::FabriqueLiaisonsSimulée fabrique;
  sim::FichiersEnMémoire fichiers;
  Ref<sim::EsclaveModbus> esclave = Crée<sim::EsclaveModbus>(*horloge, std::uint8_t{5});
  sim::LigneSérie& ligne = fabrique.Attache(4, esclave);
  Carte carte{plateforme};
  FonctionRef consigne, sorties, états, vitesse;
};

TEST_F(UnVariateur, DémarrePuisEcritEtLitTourATour) {
  Le(consigne, 0).ValeurCanal(12.34);
  Le(sorties, 3).ValeurCanal(kVrai);
  Le(sorties, 0).ValeurCanal(1);  // only -1 counts
  Passe(1);
  EXPECT_EQ(esclave->registres[1032], 0);
  EXPECT_EQ(esclave->registres[1146], 2);
  Passe(100);
  const std::array<std::uint16_t, 5> attendus{1, 12, 34, 7, 8};
  for (std::uint16_t i = 0; i < attendus.size(); ++i) {
    EXPECT_EQ(esclave->registres[static_cast<std::uint16_t>(500 + i)], attendus[i]) << i;
  }
  EXPECT_EQ(Le(états, 0).ValeurCanal(), -1) << "bit 0 of the low byte of the first word";
  EXPECT_EQ(Le(états, 9).ValeurCanal(), -1) << "bit 1 of its high byte";
  EXPECT_EQ(Le(états, 20).ValeurCanal(), -1) << "bit 4 of the second word";
  EXPECT_EQ(Le(vitesse, 0).ValeurCanal(), 0x1234);
  Le(consigne, 0).ValeurCanal(0);
  Passe(100);
  EXPECT_EQ(esclave->registres[500], 0);
  EXPECT_EQ(esclave->registres[503], 0) << "no ramp at rest";
  EXPECT_TRUE(registre->entrées.empty());
}

TEST_F(UnVariateur, SigneUnePanneSansRetenirLaBoucle) {
  Passe(100);
  ligne.pannes.parasitée = true;
  Passe(200);
  EXPECT_EQ(Le(consigne, -1).ValeurCanal(), -1);
  EXPECT_EQ(Le(états, -1).ValeurCanal(), -1);
  ASSERT_GE(fichiers.lignes.size(), 3U);
  EXPECT_EQ(fichiers.lignes[2].substr(8), ",Erreur CRC,3");
  EXPECT_EQ(fichiers.lignes[2].substr(0, 3), "08:");
  ligne.pannes = {};
  Passe(100);
  EXPECT_EQ(Le(consigne, -1).ValeurCanal(), 0);
  fichiers.lignes.clear();
  ligne.pannes.muette = true;
  Passe(1000);
  EXPECT_EQ(Le(consigne, -1).ValeurCanal(), 0) << "silence alone never counts to ten";
  EXPECT_TRUE(fichiers.lignes.empty());
}

TEST_F(UnVariateur, DitQuIlNeDémarrePasEtContinue) {
  ligne.pannes.muette = true;
  Passe(1);
  ASSERT_EQ(messages.textes.size(), 1U);
  EXPECT_EQ(messages.textes[0],
            "Internal program speed controler stopped. Please Call K9 (++00 (0)0 00 00 00 00).");
  ligne.pannes = {};
  Le(consigne, 0).ValeurCanal(1);
  Passe(100);
  EXPECT_EQ(esclave->registres[501], 1);
  EXPECT_EQ(messages.textes.size(), 1U);
}

}  // namespace
}  // namespace zuma
