// A frame whose load or start left entries is not run, and one that others write to while it loads
// is loaded whole.
#include "host/depart.h"

#include <chrono>
#include <thread>

#include <gtest/gtest.h>

#include "arret/montage.h"
#include "host/parametres.h"
#include "outils/cas.h"
#include "outils/programme.h"

namespace zuma {
namespace {

using essai::Fin;
using nlohmann::json;
using testing::IsSubstring;
using namespace std::string_literals;

// A cell behind the limits of the force cell: without them the press goes on to its full pressure.
constexpr auto kCelluleIllisible =
    "UPDATE Capteur SET [Temps de Calcul de la Vitesse]='x' WHERE [Index]=1";
constexpr auto kLaCellule =
    "data: table Capteur, row 1, column Temps de Calcul de la Vitesse: unusable value; found "
    "\"x\"; expected a number\n";
// Fails at the start alone: the board has no axis 0. And a sensor that fails on each refresh.
constexpr auto kBlocSansAxe =
    "UPDATE Fonction SET Driver='DrvIK121' WHERE [Index]=11;"
    "UPDATE Capteur SET [Point 2 - Point]=0 WHERE [Index]=1";

class UnDépart : public essai::LeProgramme {
 protected:
  // A start of frame 1 on the simulated machine, with that answer to what it left.
  std::unique_ptr<host::ChassisEnMarche> Démarre(const std::string& base,
                                                 const host::MalgréTout& réponse) {
    recueil = Crée<host::Recueil>();
    machine = host::MachineSimulée(*recueil, host::Cadence::Libre);
    return std::make_unique<host::ChassisEnMarche>(base, 1, *machine, recueil,
                                                   host::LitLesParamètres(base, {}), réponse);
  }
  Ref<host::Recueil> recueil;
  std::unique_ptr<host::Machine> machine;
};

TEST_F(UnDépart, EstRefuséParChaqueVerbeQuandQuelqueChoseAEchoué) {
  for (const auto& [sql, dit, état] : essai::Cas<const char*, const char*, const char*>{
           {kCelluleIllisible, kLaCellule, "Nothing was started and no output was touched."},
           {"INSERT INTO [Liaison Chassis / Capteur] ([Index], Chassis, Capteur, Label) "
            "SELECT 999, Chassis, Capteur, Label FROM [Liaison Chassis / Capteur] WHERE Capteur=2",
            "data: table Liaison Chassis / Capteur, row 999, column Capteur: linked twice to frame "
            "1; found 2; expected one row for each object of a frame\n",
            "Nothing was started"},
           {kBlocSansAxe, "failure: Erreur N°9 (Axe 0 absent de la carte",
            "It was started, stopped at once, and its outputs were put to rest."}}) {
    for (const std::string& verbe :
         {"run --sim --fast --seconds 0.3 "s, "dump --sim --seconds 0.1 "s,
          "compression --fault overrange --out " + dossier.Fichier("essai") + " "}) {
      SCOPED_TRACE(verbe + sql);
      const Fin refus = Lance(verbe + Base(sql));
      EXPECT_EQ(refus.code, 1);
      EXPECT_EQ(refus.sortie, "");
      for (const char* morceau : {dit, état, "zuma: frame 1 is not run: ", "start-anyway"}) {
        EXPECT_PRED_FORMAT2(IsSubstring, morceau, refus.erreur);
      }
      EXPECT_PRED_FORMAT2(testing::IsNotSubstring, "Four zone", refus.erreur) << "what is good";
    }
  }
}

TEST_F(UnDépart, RefuséDonneSaListeEnDonnées) {
  const Fin refus = Lance("run " + Base(kCelluleIllisible) + " --sim --json");
  EXPECT_EQ(refus.code, 1);
  const json liste = json::parse(refus.sortie)["refused"];
  ASSERT_GE(liste.size(), 2U);
  EXPECT_EQ(liste[0]["column"], "Temps de Calcul de la Vitesse");
  EXPECT_EQ(liste[1]["kind"], "failure");

  // What is wrong with other frames does not count.
  const Fin autre = Lance("run --sim --fast --seconds 0.1 " +
                          Base("UPDATE Capteur SET [Temps de Calcul de la Vitesse]='x' "
                               "WHERE [Index]=31; UPDATE Canal SET [Numéro du Canal]='x' "
                               "WHERE [Index] IN (SELECT [Index] FROM Canal WHERE Fonction>=300)"));
  EXPECT_EQ(autre.code, 0) << autre.erreur;
}

// With the option the frame runs behind a stop, which keeps its outputs at rest.
TEST_F(UnDépart, MalgréToutTientLArrêtJusquÀLAcquittement) {
  for (const char* sql : {kCelluleIllisible, kBlocSansAxe}) {
    const Fin fin = Lance("run " + Base(sql) + " --sim --fast --seconds 0.6 --json --start-anyway");
    EXPECT_EQ(fin.code, 1) << sql;
    EXPECT_PRED_FORMAT2(IsSubstring, "frame 1 is started although", fin.erreur);
    EXPECT_LT(fin.erreur.size(), 12'000U) << "what fails on each refresh is told a few times";
    EXPECT_PRED_FORMAT2(IsSubstring, "lancé bien que", fin.Vues().at(0)["stop_causes"].dump());
    EXPECT_PRED_FORMAT2(IsSubstring, "\"Four zone 1\"", fin.sortie) << "the rest is served";
  }
  int demandes = 0;
  const auto marche = Démarre(Base(kCelluleIllisible), [&](const host::DépartRefusé& refus) {
    EXPECT_PRED_FORMAT2(IsSubstring, kLaCellule, refus.Liste());
    return ++demandes > 0;
  });
  EXPECT_EQ(demandes, 1) << "asked once for what the load left";
  EXPECT_TRUE(marche->LaSécurité().Déclenchée());
  EXPECT_TRUE(marche->Acquitte());
  EXPECT_FALSE(marche->LaSécurité().Déclenchée());
}

// A simulated machine that gives up at the end of the start, when an output already moves.
class MachineQuiLâche : public arret::MachineÀLEcoute {
 public:
  using MachineÀLEcoute::MachineÀLEcoute;
  void Branche(Chassis& chassis) override {
    MachineÀLEcoute::Branche(chassis);
    consigne_ = chassis.Commandes()->Item("2").Brut();
    borne = sim.BorneDe(*consigne_->Canal());
  }
  void Rapporte(ZED_Erreur&) const override {
    consigne_->Enabled(true);
    consigne_->ValeurCouranteEnUnité(50);
    EXPECT_GT(borne->TensionSortie(), 4);
    throw std::runtime_error("the machine is gone");
  }
  std::optional<zuma::sim::Borne> borne;

 private:
  Commande* consigne_ = nullptr;
};

TEST_F(UnDépart, QuiTourneCourtLaisseLesSortiesAuRepos) {
  recueil = Crée<host::Recueil>();
  MachineQuiLâche lâche(*recueil);
  const std::string base = Base();
  EXPECT_THROW(host::ChassisEnMarche(base, 1, lâche, recueil, host::LitLesParamètres(base, {})),
               std::runtime_error);
  ASSERT_TRUE(lâche.borne);
  EXPECT_EQ(lâche.borne->TensionSortie(), 0);
}

// Two states of a base, written by turns while the frame is loaded: name and limit of a sensor, and
// the name of the frame, which is read last of all, are those of one state.
TEST_F(UnDépart, NEstPasCoupéParQuiEcritPendantLeChargement) {
  const std::string base = Base(
      "PRAGMA journal_mode=WAL; UPDATE Capteur SET [Nom du Capteur]='1' WHERE [Index] IN (1, 7); "
      "UPDATE Chassis SET [Nom du Chassis]='1' WHERE [Index]=1");
  const std::jthread autre([&](const std::stop_token& fin) {
    linux_::ConnexionSqlite écrit(base, linux_::Accès::Ecriture, std::chrono::milliseconds(1000));
    écrit.Exécute("PRAGMA synchronous=OFF");
    for (int n = 100; !fin.stop_requested(); ++n) {
      const std::string état = std::to_string(n);
      const std::string sql =
          "BEGIN; UPDATE Capteur SET [Nom du Capteur]='" + état + "' WHERE [Index] IN (1, 7); " +
          "UPDATE Chassis SET [Nom du Chassis]='" + état + "' WHERE [Index]=1; COMMIT";
      écrit.Exécute(sql.c_str());
    }
  });
  for (int fois = 0; fois < 5; ++fois) {
    const auto marche = Démarre(base, {});
    Chassis& chassis = marche->LeChassis();
    EXPECT_EQ(chassis.Capteurs()->Item("1")->NomDuCapteur(), chassis.Nom());
    EXPECT_EQ(chassis.Capteurs()->Item("7")->NomDuCapteur(), chassis.Nom());
  }
}

TEST_F(UnDépart, DitUneBaseTenueParUnAutreSansAttendre) {
  const std::string base = Base();
  linux_::ConnexionSqlite autre(base, linux_::Accès::Ecriture, std::chrono::milliseconds(0));
  for (const std::string verbe : {"run --sim ", "check ", "dump --sim "}) {
    autre.Exécute("BEGIN EXCLUSIVE");
    const auto début = std::chrono::steady_clock::now();
    const Fin fin = Lance(verbe + base);
    EXPECT_LT(std::chrono::steady_clock::now() - début, std::chrono::seconds(5)) << verbe;
    EXPECT_EQ(fin.code, 2) << verbe;
    EXPECT_PRED_FORMAT2(
        IsSubstring,
        "Another program is writing to it: let it finish or close it, then start again.",
        fin.erreur);
    autre.Exécute("COMMIT");
  }
  // A frame that runs holds nothing: others save.
  const auto marche = Démarre(base, {});
  autre.Exécute("UPDATE Capteur SET [Nom du Capteur]='F' WHERE [Index]=1");
}

}  // namespace
}  // namespace zuma
