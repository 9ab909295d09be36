// The LVDT network: from modules that come and go to the channels.
#include <gtest/gtest.h>

#include "outils/allocations.h"
#include "outils/banc_instrument.h"
#include "sim/orbit_simule.h"

namespace zuma {
namespace {

using Valeurs = std::vector<double>;

class UnRéseauOrbit : public testing::Test, public essai::BancInstrument {
 public:
  UnRéseauOrbit() {
    plateforme.orbit = &réseau;
    for (int i = 0; i < 3; ++i) {
      const std::string identité = "A" + std::to_string(i);
      LitCanal(Le(i), {{"N° de série", identité}});
      réseau.Module(identité).compte = static_cast<std::int16_t>(100 * (i + 1));
    }
  }
  ~UnRéseauOrbit() override { chassis.Cartes({}); }
  Canal& Le(std::int32_t numéro) { return BancInstrument::Le(bloc, numéro); }
  void Démarre() { BancInstrument::Démarre("Drv SOLARTRON LVDT"); }
  // Refreshes of the block, and the microseconds that they took.
  double Passe(int nombre) {
    const double départ = horloge->Maintenant();
    for (int i = 0; i < nombre; ++i) bloc->MetàJour();
    return horloge->Maintenant() - départ;
  }

  sim::OrbitSimulé réseau{*horloge};
  FonctionRef bloc = Ajoute("Entrée Analogique", {0, 1, 2}, {{"Driver", "Drv SOLARTRON LVDT"}});
};

TEST_F(UnRéseauOrbit, LitUnCanalParCycleATourDeRôle) {
  Démarre();
  for (const Valeurs& après : {Valeurs{200, 0, 0}, {200, 400, 0}, {200, 400, 600}}) {
    Passe(1);
    EXPECT_EQ(Lues(bloc), après);
  }
  réseau.Module("A0").compte = -32768;
  réseau.Module("A1").compte = 32767;
  Le(1).NbLecture(4);
  const auto avant = essai::Allocations();
  Passe(2);
  EXPECT_EQ(essai::Allocations(), avant);
  EXPECT_EQ(Lues(bloc), (Valeurs{-65536, 65534, 600})) << "the first one again behind the last";
  EXPECT_EQ(réseau.Module("A1").lectures, 5);
}

TEST_F(UnRéseauOrbit, DitQuIlNyAAucunModule) {
  réseau.sansCarte = true;
  Démarre();
  ASSERT_EQ(registre->entrées.size(), 4U) << "and each channel that is refused";
  const std::string& message = registre->entrées[0].message;
  EXPECT_TRUE(message.starts_with(
      "Erreur d'initialisation (Aucun de module détecté - probablement débranché) du carte "
      "Solartron à la ligne "))
      << message;
  EXPECT_TRUE(message.ends_with(" de la méthode Initialise de l'objet Carte ().")) << message;
  EXPECT_LT(Passe(3), 100) << "channels out of service: no attempt to connect again";
}

TEST_F(UnRéseauOrbit, SeReconnecteQuandUnModuleNeRépondPlus) {
  réseau.Débranche("A1");
  Démarre();
  Passe(3);
  EXPECT_EQ(Lues(bloc), (Valeurs{200, 0, 600})) << "out of service since the start";

  réseau.Rebranche("A1");
  réseau.Débranche("A0");  // for a moment: it has lost its address
  réseau.Rebranche("A0");
  réseau.Module("A0").compte = 300;
  Le(0).NbLecture(2);
  EXPECT_GE(Passe(1), 500'000);
  EXPECT_EQ(Le(0).ValeurCanal(), 400) << "the lost reading counts as the last, the next one is new";
  Passe(3);
  EXPECT_EQ(Lues(bloc), (Valeurs{600, 400, 600})) << "the whole board started anew, A1 with it";

  réseau.Débranche("A0");
  Le(0).NbLecture(10);
  plateforme.heureDePasse = 100;
  EXPECT_LT(Passe(30), 510'000) << "one reconnection for a module that is gone";
  EXPECT_FALSE(Le(0).EnService());
  EXPECT_EQ(Lues(bloc), (Valeurs{600, 400, 600})) << "its value stays";
  EXPECT_EQ(Le(0).Age(), 100) << "and is not of now";
  EXPECT_EQ(Le(2).Age(), 0);
  EXPECT_EQ(registre->entrées.size(), 2U) << "each of the two that were refused, once";
  EXPECT_TRUE(registre->Contient("Module Orbit 'A0' refusé"));
}

}  // namespace
}  // namespace zuma
