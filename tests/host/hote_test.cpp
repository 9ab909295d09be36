// The few lines of a host of one's own.
#include "host/hote.h"

#include <csignal>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "core/chassis.h"
#include "host/configuration.h"
#include "host/verbes/verbes.h"
#include "outils/dossier_provisoire.h"

namespace zuma::essai {
namespace {

class UnHôte : public testing::Test {
 protected:
  DossierProvisoire dossier;
  std::string base = dossier.Fichier("demo.db");
  int écrite = host::Init({base});  // with the specimen's parameters beside it
  std::vector<std::string> lignes;
  host::Hôte hôte{{.fichier = base,
                   .simulation = true,
                   .cadence = host::Cadence::Libre,
                   .quandProblème = [this](const std::string& l) { lignes.push_back(l); }}};
};

TEST_F(UnHôte, TourneJusquACeQuElleVeutOuQuOnLArrête) {
  int mesures = 0;
  EXPECT_TRUE(hôte.Tourne([&] { return ++mesures < 5; }));
  EXPECT_EQ(mesures, 5);
  const double avant = hôte.Secondes();
  EXPECT_TRUE(hôte.Tourne({}, 0.5));
  EXPECT_NEAR(hôte.Secondes() - avant, 0.5, 0.01);
  EXPECT_FALSE(hôte.Tourne([] { return std::raise(SIGTERM) == 0; }));
  EXPECT_EQ(lignes, std::vector<std::string>());
  try {
    (void)hôte.Capteur("Farce");
    ADD_FAILURE() << "found";
  } catch (const host::MauvaisUsage& échec) {
    EXPECT_PRED_FORMAT2(testing::IsSubstring, "no sensor \"Farce\"", échec.what());
    EXPECT_PRED_FORMAT2(testing::IsSubstring, "Force, ", échec.what());
  }
}

// A stop is heard once, with its cause, outputs at rest; nothing moves by itself behind it.
TEST_F(UnHôte, EntendLArrêtEtLAcquitte) {
  std::vector<std::string> causes;
  zuma::Commande& vanne = hôte.Commande("Servovalve");
  hôte.QuandArrêt([&](const std::string& cause) {
    causes.push_back(cause);
    EXPECT_EQ(vanne.ValeurCouranteEnUnité(), 0);
  });
  vanne.Enabled(true);
  vanne.ValeurCouranteEnUnité(10);
  hôte.Tourne({}, 0.1);
  hôte.Arrête("essai");
  hôte.Tourne({}, 0.1);
  EXPECT_EQ(causes, std::vector<std::string>{"essai"});
  EXPECT_TRUE(hôte.EstArrêté());
  EXPECT_FALSE(hôte.RemetEnService());
  EXPECT_TRUE(hôte.Acquitte());
  hôte.Tourne({}, 0.1);
  EXPECT_FALSE(hôte.EstArrêté());
  EXPECT_EQ(vanne.ValeurCouranteEnUnité(), 0);
  EXPECT_EQ(causes.size(), 1U);
}

// Rows of the host's own that clash are told before anything is opened.
TEST(LesDriversDUnHôte, SontRefusésAvecCeQuiLesGêne) {
  const LigneDriver ligne{.valeur = ENUM_DRIVER::DrvModBus, .nom = "Mien"};
  try {
    const host::Hôte hôte({.fichier = "absent.db", .simulation = true, .drivers = {&ligne, 1}});
    ADD_FAILURE() << "taken";
  } catch (const host::MauvaisUsage& échec) {
    EXPECT_PRED_FORMAT2(testing::IsSubstring,
                        "drivers of the host: driver 'Mien': value 300 belongs to 'DrvModBus'",
                        échec.what());
  }
}

}  // namespace
}  // namespace zuma::essai
