// A recording that is played again: today's frame on yesterday's test.
#include <bit>
#include <cmath>
#include <span>

#include <gtest/gtest.h>

#include "core/recherche.h"
#include "host/configuration.h"
#include "host/enregistrement_lu.h"
#include "host/enregistreur.h"
#include "outils/chassis_publie.h"

namespace zuma {
namespace {

using essai::ChassisPubliéDeDémo;
using host::EnregistrementLu;

// What an operator does, called behind each pass with the number of passes so far.
using Opérateur = std::function<void(Chassis&, int)>;

class LeRejeu : public testing::Test {
 protected:
  // The whole recording of a run.
  EnregistrementLu Enregistre(ChassisPubliéDeDémo& essai, const std::string& nom,
                              const Opérateur& opère = {}, bool rejouable = false) {
    host::Enregistreur enregistreur(dossier.Fichier(nom), host::Enregistreur::Retard::Attend,
                                    {.rejouable = rejouable});
    host::Enregistreur::Textes spécimen;
    for (const auto& paramètre : *essai.marche->LesParamètres().Collection()) {
      spécimen.emplace_back("parameter " + paramètre->Key(), paramètre->ValeurParamètre());
    }
    host::Enregistre(*essai.marche, enregistreur, spécimen);
    int passes = 0;
    essai.Passe(3, [&] {
      if (opère) opère(essai.marche->LeChassis(), passes);
      ++passes;
      enregistreur.Suit();
    });
    enregistreur.Termine();
    EXPECT_TRUE(host::FermeEtDit(enregistreur));
    return host::LitLEnregistrement(dossier.Fichier(nom));
  }
  // Names of the columns of `b` in which one reading at least differs, to the last bit.
  static std::vector<std::string> Différentes(const EnregistrementLu& a,
                                              const EnregistrementLu& b) {
    EXPECT_EQ(a.secondes, b.secondes);
    const auto égaux = [](double x, double y) {
      return std::bit_cast<std::uint64_t>(x) == std::bit_cast<std::uint64_t>(y);
    };
    std::vector<std::string> noms;
    for (std::size_t i = 0; i < b.colonnes.size(); ++i) {
      EXPECT_EQ(a.colonnes[i].nom, b.colonnes[i].nom);
      if (!std::ranges::equal(a.colonnes[i].valeurs, b.colonnes[i].valeurs, égaux)) {
        noms.push_back(b.colonnes[i].nom);
      }
    }
    return noms;
  }

  // Channels that are not read for each row, and yet stand in two rows that follow each other. The
  // start has a rhythm of its own.
  static std::vector<std::string> LuesDeuxFois(const EnregistrementLu& lu) {
    std::vector<std::string> noms;
    for (const auto& colonne : std::span(lu.colonnes).subspan(lu.horloge)) {
      const auto lue = [](double valeur) { return std::isfinite(valeur); };
      const auto suite = [&](double a, double b) { return lue(a) && lue(b); };
      const auto valeurs = std::span(colonne.valeurs).subspan(2);
      const auto nombre = static_cast<std::size_t>(std::ranges::count_if(valeurs, lue));
      const bool deuxFois = std::ranges::adjacent_find(valeurs, suite) != valeurs.end();
      if (nombre < valeurs.size() / 2 && deuxFois) noms.push_back(colonne.nom);
    }
    return noms;
  }

  essai::DossierProvisoire dossier;
};

// Filters, slopes, clocks, selections, an overlap, and all that an operator does to sensors.
TEST_F(LeRejeu, DonneLesMêmesLecturesAuBitPrès) {
  const Opérateur opère = [](Chassis& chassis, int passes) {
    const auto capteur = [&](const char* label) {
      return recherche::CapteurDeLabel(chassis, label);
    };
    if (passes == 400) capteur("Force")->Raz();
    if (passes == 403) capteur("Temps")->Raz();
    if (passes == 900) capteur("Déplacement")->Tare(Valeur(12.5));
    if (passes == 2000) capteur("Déplacement")->AnnuleTare();
    if (passes == 2300) capteur("Force")->AnnuleRaz();
  };
  for (const std::int32_t chassis : {1, 3, 4, 5}) {
    const std::string nom = std::to_string(chassis) + ".csv";
    EnregistrementLu alors;
    {
      ChassisPubliéDeDémo essai(chassis);
      alors = Enregistre(essai, nom, chassis == 1 ? opère : Opérateur{}, true);
    }
    EXPECT_EQ(alors.actes.empty(), chassis != 1);
    EXPECT_EQ(LuesDeuxFois(alors), std::vector<std::string>{}) << "frame " << chassis;
    ChassisPubliéDeDémo essai(chassis, "", dossier.Fichier(nom));
    const double départ = essai.machine->Timer()->LitMicrosecondes();
    const EnregistrementLu rejoué = Enregistre(essai, "re" + nom);
    const double écoulé = essai.machine->Timer()->LitMicrosecondes() - départ;
    EXPECT_GT(écoulé, 2.9e6) << "filters of inputs count by it";
    EXPECT_GT(rejoué.secondes.size(), 500U);
    EXPECT_EQ(Différentes(alors, rejoué), std::vector<std::string>{}) << "frame " << chassis;
    EXPECT_TRUE(essai.machine->AuBout());
  }
}

TEST_F(LeRejeu, MontreLEtalonnageDAujourdHuiSurLEssaiDHier) {
  EnregistrementLu alors;
  {
    ChassisPubliéDeDémo essai(1);
    alors = Enregistre(essai, "hier.csv", {}, true);
  }
  ChassisPubliéDeDémo essai(1,
                            "UPDATE Capteur SET [Point 2 - Unité]=[Point 2 - Unité]*1.01 WHERE "
                            "[Nom du Capteur]='Déplacement vérin'",
                            dossier.Fichier("hier.csv"));
  const EnregistrementLu rejoué = Enregistre(essai, "aujourdhui.csv");
  EXPECT_EQ(Différentes(alors, rejoué), (std::vector<std::string>{"Déplacement vérin"}));
}

TEST_F(LeRejeu, RefuseCeQuiNeSeRejouePas) {
  {
    ChassisPubliéDeDémo essai(1);
    (void)Enregistre(essai, "sans.csv");
  }
  EXPECT_THROW(ChassisPubliéDeDémo(1, "", dossier.Fichier("sans.csv")), host::MauvaisUsage);
  {
    ChassisPubliéDeDémo essai(1);
    (void)Enregistre(essai, "avec.csv", {}, true);
  }
  EXPECT_THROW(ChassisPubliéDeDémo(3, "", dossier.Fichier("avec.csv")), host::MauvaisUsage)
      << "another frame";
  EXPECT_EQ(host::ParamètresEnregistrés(dossier.Fichier("avec.csv")).size(), 13U);
}

}  // namespace
}  // namespace zuma
