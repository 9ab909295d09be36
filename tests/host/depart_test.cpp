// A frame whose load or start left entries is not run, and one that others write to while it loads
// is loaded whole.
#include "host/depart.h"

#include <chrono>
#include <nlohmann/json.hpp>
#include <thread>

#include <gtest/gtest.h>

#include "host/chassis_en_marche.h"
#include "host/parametres.h"
#include "outils/programme.h"
#include "sim/machine_simulee.h"

namespace zuma {
namespace {

using essai::Fin;
using nlohmann::json;

// A cell behind the limits of the force cell: without them the press goes on to its full pressure.
constexpr auto kCelluleIllisible =
    "UPDATE Capteur SET [Temps de Calcul de la Vitesse]='x' WHERE [Index]=1";
constexpr auto kLaCellule =
    "data: table Capteur, row 1, column Temps de Calcul de la Vitesse: unusable value; found "
    "\"x\"; expected a number\n";
// Fails at the start alone: the board has no axis 0.
constexpr auto kBlocSansAxe = "UPDATE Fonction SET Driver='DrvIK121' WHERE [Index]=11";

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
  const std::string essai = dossier.Fichier("essai");
  const std::vector<std::string> verbes[] = {
      {"run", "--sim", "--fast", "--seconds", "0.3"},
      {"dump", "--sim", "--seconds", "0.1"},
      {"compression", "--fault", "overrange", "--out", essai},
  };
  const struct {
    const char* sql;
    std::string dit;
    std::string état;
  } cas[] = {
      {kCelluleIllisible, kLaCellule, "Nothing was started and no output was touched."},
      {"INSERT INTO [Liaison Chassis / Capteur] ([Index], Chassis, Capteur, Label) "
       "SELECT 999, Chassis, Capteur, Label FROM [Liaison Chassis / Capteur] WHERE Capteur=2",
       "data: table Liaison Chassis / Capteur, row 999, column Capteur: linked twice to frame 1; "
       "found 2; expected one row for each object of a frame\n",
       "Nothing was started"},
      {kBlocSansAxe, "failure: Erreur N°9 (Axe 0 absent de la carte",
       "It was started, stopped at once, and its outputs were put to rest."},
  };
  for (const auto& c : cas) {
    for (std::vector<std::string> arguments : verbes) {
      arguments.insert(arguments.begin() + 1, Base(c.sql));
      SCOPED_TRACE(arguments.front() + ": " + c.sql);
      const Fin refus = Lance(arguments);
      EXPECT_EQ(refus.code, 1);
      EXPECT_EQ(refus.sortie, "");
      for (const std::string& morceau : {c.dit, c.état, std::string("zuma: frame 1 is not run: "),
                                         std::string("start-anyway")}) {
        EXPECT_NE(refus.erreur.find(morceau), std::string::npos) << refus.erreur;
      }
      EXPECT_EQ(refus.erreur.find("Four zone"), std::string::npos) << "what is good is not listed";
    }
  }
}

TEST_F(UnDépart, RefuséDonneSaListeEnDonnées) {
  const Fin refus = Lance({"run", Base(kCelluleIllisible), "--sim", "--json"});
  EXPECT_EQ(refus.code, 1);
  const json liste = json::parse(refus.sortie)["refused"];
  ASSERT_GE(liste.size(), 2U);
  EXPECT_EQ(liste[0], json({{"kind", "data"},
                            {"severity", "error"},
                            {"table", "Capteur"},
                            {"row", "1"},
                            {"column", "Temps de Calcul de la Vitesse"},
                            {"text", "unusable value"},
                            {"found", "\"x\""},
                            {"expected", "a number"}}));
  EXPECT_EQ(liste[1]["kind"], "failure");
}

TEST_F(UnDépart, NeTientPasCompteDesAutresChassis) {
  const Fin fin = Lance({"run",
                         Base("UPDATE Capteur SET [Temps de Calcul de la Vitesse]='x' "
                              "WHERE [Index]=31; UPDATE Canal SET [Numéro du Canal]='x' "
                              "WHERE [Index] IN (SELECT [Index] FROM Canal WHERE Fonction>=300)"),
                         "--sim", "--fast", "--seconds", "0.1"});
  EXPECT_EQ(fin.code, 0) << fin.erreur;
}

// With the option the frame runs behind a stop, which keeps its outputs at rest.
TEST_F(UnDépart, MalgréToutTientLArrêtJusquÀLAcquittement) {
  for (const char* sql : {kCelluleIllisible, kBlocSansAxe}) {
    const Fin fin = Lance(
        {"run", Base(sql), "--sim", "--fast", "--seconds", "0.6", "--json", "--start-anyway"});
    EXPECT_EQ(fin.code, 1) << sql;
    EXPECT_NE(fin.erreur.find("frame 1 is started although"), std::string::npos) << fin.erreur;
    const json vue = json::parse(fin.sortie);
    ASSERT_FALSE(vue["stop_causes"].empty()) << sql;
    EXPECT_NE(vue["stop_causes"][0].get<std::string>().find("lancé bien que"), std::string::npos);
  }
  int demandes = 0;
  const auto marche = Démarre(Base(kCelluleIllisible), [&](const host::DépartRefusé& refus) {
    EXPECT_NE(refus.Liste().find(kLaCellule), std::string::npos);
    return ++demandes > 0;
  });
  EXPECT_EQ(demandes, 1) << "asked once for what the load left";
  EXPECT_TRUE(marche->LaSécurité().Déclenchée());
  EXPECT_TRUE(marche->Acquitte());
  EXPECT_FALSE(marche->LaSécurité().Déclenchée());
}

// A simulated machine that gives up at the end of the start, when an output already moves.
class MachineQuiLâche : public host::Machine {
 public:
  explicit MachineQuiLâche(host::Machine& vraie) : vraie_(vraie) {}
  Plateforme& Services() override { return vraie_.Services(); }
  Ref<ZED_Timer> Timer() override { return vraie_.Timer(); }
  double AvanceJusquA(double secondes) override { return vraie_.AvanceJusquA(secondes); }
  void Branche(Chassis& chassis) override {
    vraie_.Branche(chassis);
    chassis_ = &chassis;
  }
  void Rapporte(ZED_Erreur&) const override {
    const CommandeRef consigne = chassis_->Commandes()->Item("2");
    consigne->Enabled(true);
    consigne->ValeurCouranteEnUnité(50);
    borne = vraie_.Jumelle()->BorneDe(*consigne->Canal());
    EXPECT_GT(borne->TensionSortie(), 4);
    throw std::runtime_error("the machine is gone");
  }
  mutable std::optional<sim::Borne> borne;

 private:
  host::Machine& vraie_;
  Chassis* chassis_ = nullptr;
};

TEST_F(UnDépart, QuiTourneCourtLaisseLesSortiesAuRepos) {
  recueil = Crée<host::Recueil>();
  machine = host::MachineSimulée(*recueil, host::Cadence::Libre);
  MachineQuiLâche lâche(*machine);
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
      écrit.Exécute(("BEGIN; UPDATE Capteur SET [Nom du Capteur]='" + état +
                     "' WHERE [Index] IN (1, 7); UPDATE Chassis SET [Nom du Chassis]='" + état +
                     "' WHERE [Index]=1; COMMIT")
                        .c_str());
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
  for (const char* verbe : {"run", "check", "dump"}) {
    autre.Exécute("BEGIN EXCLUSIVE");
    const auto début = std::chrono::steady_clock::now();
    std::vector<std::string> arguments{verbe, base};
    if (std::string(verbe) != "check") arguments.emplace_back("--sim");
    const Fin fin = Lance(arguments);
    EXPECT_LT(std::chrono::steady_clock::now() - début, std::chrono::seconds(5)) << verbe;
    EXPECT_EQ(fin.code, 2) << verbe;
    EXPECT_NE(fin.erreur.find("Another program is writing to it: let it finish or close it, then "
                              "start again."),
              std::string::npos)
        << fin.erreur;
    autre.Exécute("COMMIT");
  }
  // A frame that runs holds nothing: others save.
  const auto marche = Démarre(base, {});
  autre.Exécute("UPDATE Capteur SET [Nom du Capteur]='F' WHERE [Index]=1");
}

}  // namespace
}  // namespace zuma
