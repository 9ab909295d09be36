// A recording: whole rows or none, what is missing told where it is missing, and no machine that
// waits for a disk.
#include <csignal>
#include <deque>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include "host/champ_csv.h"
#include "host/enregistreur.h"
#include "outils/cas.h"
#include "outils/chassis_publie.h"
#include "outils/programme.h"

namespace zuma {
namespace {

using essai::Lit;
using host::Ecrivain;
using host::Enregistreur;
using host::FichierEnAjout;
using host::SourceDeRangées;

// A size beyond which no file of this process grows, as a full disk without a disk.
class LimiteDeTaille {
 public:
  LimiteDeTaille() { ::getrlimit(RLIMIT_FSIZE, &avant_); }
  ~LimiteDeTaille() {
    Lève();
    std::signal(SIGXFSZ, signal_);
  }
  void Pose(std::uintmax_t octets) const { Règle(static_cast<rlim_t>(octets)); }
  void Lève() const { Règle(avant_.rlim_cur); }

 private:
  void Règle(rlim_t octets) const {
    const rlimit limite{octets, avant_.rlim_max};
    ::setrlimit(RLIMIT_FSIZE, &limite);
  }
  rlimit avant_{};
  void (*signal_)(int) = std::signal(SIGXFSZ, SIG_IGN);
};

// Rows that a test gives, some of them lost on the way.
class Déposées final : public SourceDeRangées {
 public:
  void Dépose(double secondes, double valeur) {
    file_.push_back({{secondes, manque_, {}}, valeur});
    manque_ = {};
  }
  void Perd(double secondes) { manque_.Ajoute({1, secondes, secondes}); }
  [[nodiscard]] std::size_t Colonnes() const override { return 1; }
  bool Retire(const std::function<void(const Rangée&)>& prend) override {
    if (file_.empty()) return false;
    auto& [rangée, valeur] = file_.front();
    rangée.valeurs = std::span(&valeur, 1);
    prend(rangée);
    file_.pop_front();
    return true;
  }
  [[nodiscard]] host::Lacune Manque() override { return manque_; }

 private:
  std::deque<std::pair<Rangée, double>> file_;
  host::Lacune manque_;
};

class UnEnregistrement : public essai::LeProgramme {
 protected:
  // Rows of one value, the second, at the seconds from `de` on.
  void Dépose(int de, int nombre) {
    for (int s = de; s < de + nombre; ++s) rangées.Dépose(s, s);
  }
  std::string csv = dossier.Fichier("essai.csv");
  Déposées rangées;
};

TEST(ChampCsv, RendUnNomInoffensif) {
  for (const auto& [nom, champ] : essai::Cas<std::string, std::string>{
           {"Force [kN]", "Force [kN]"},
           {"a,b", "\"a,b\""},
           {"a;b", "\"a;b\""},
           {"dit \"F\"", "\"dit \"\"F\"\"\""},
           {"deux\r\nlignes\x1b[2J", "deux  lignes [2J"},
           {"=1+1", "'=1+1"},
           {"+F", "'+F"},
           {"-F", "'-F"},
           {"@F,G", "\"'@F,G\""},
           {"\t=F", "' =F"},
           {"\rF", "' F"},
           {"C1 \xC2\x9B, \u202E\u2028 \xFF", "\"C1  ,    \uFFFD\""},
           {"", ""}}) {
    EXPECT_EQ(host::ChampCsv(nom), champ);
  }
}

TEST_F(UnEnregistrement, DitLesRangéesQuiManquentOùEllesManquent) {
  FichierEnAjout fichier(csv);
  Ecrivain écrivain(fichier, rangées, "time [s],F\n");
  rangées.Dépose(0, 0.1);
  rangées.Dépose(1, 1.0 / 3);
  for (int s = 2; s < 5; ++s) rangées.Perd(s);
  écrivain.Tour();
  rangées.Dépose(5, std::nan(""));
  rangées.Dépose(6, 6e22);
  rangées.Perd(7);
  écrivain.Conclut();
  EXPECT_EQ(écrivain.Etat().écrites, 4U);
  EXPECT_EQ(écrivain.Etat().perdues, 4U);
  EXPECT_EQ(Lit(csv),
            "time [s],F\n0.000000,0.1\n1.000000,0.3333333333333333\n"
            "# 3 rows lost from 2.000000 s to 4.000000 s,\n"
            "5.000000,\n6.000000,6e+22\n# 1 rows lost from 7.000000 s to 7.000000 s,\n");
}

// A reader that comes back when the ring has turned knows how many refreshes it did not see.
TEST(DesRangéesPubliées, ComptentCellesQuiSontDépassées) {
  essai::ChassisPubliéDeDémo démo;
  essai::DossierProvisoire dossier;
  publication::Place place({"petite.db", 1, true}, dossier.Chemin());
  publication::Publication petite(démo.marche->LeChassis(), place, {}, {.secondes = 0});
  host::RangéesPubliées rangées(petite.LeLecteur(), {0}, {}, 0, 0);
  std::uint64_t vues = 0, perdues = 0;
  const auto retire = [&](int auPlus) {
    while (auPlus-- > 0 && rangées.Retire([&](const SourceDeRangées::Rangée& rangée) {
      ++vues;
      perdues += rangée.avant.rangées;
      if (rangée.avant.rangées != 0) {
        EXPECT_LT(rangée.avant.de, rangée.avant.à);
      }
    })) {
    }
  };
  const std::uint64_t avant = démo.marche->LeChassis().RafraichissementsEA();
  const auto passe = [&](double durée) { démo.Passe(durée, [&] { petite.Publie(); }); };
  passe(0.1);
  retire(5);
  passe(3);
  retire(1000);
  EXPECT_GT(perdues, 0U);
  passe(3);
  rangées.FinitIci();
  const std::uint64_t rafraîchies = démo.marche->LeChassis().RafraichissementsEA() - avant;
  passe(3);
  retire(1000);
  perdues += rangées.Manque().rangées;
  EXPECT_EQ(vues + perdues, rafraîchies);
}

TEST_F(UnEnregistrement, SurUnDisquePleinGardePuisDitCeQuiManque) {
  FichierEnAjout fichier(csv);
  Ecrivain écrivain(fichier, rangées, "time [s],F\n", {.lots = 2});
  Dépose(0, 2);
  écrivain.Tour();
  const std::string écrit = Lit(csv);
  const LimiteDeTaille limite;
  limite.Pose(écrit.size() + 5);
  for (int s = 2; s < 8; s += 2) {
    Dépose(s, 2);
    écrivain.Tour();
    EXPECT_EQ(écrivain.Etat().erreur, EFBIG);
    EXPECT_EQ(Lit(csv), écrit) << "no half row";
  }
  EXPECT_EQ(écrivain.Etat().enAttente, 4U);
  EXPECT_EQ(écrivain.Etat().perdues, 2U);
  limite.Lève();
  écrivain.Tour();
  EXPECT_EQ(écrivain.Etat().erreur, 0);
  EXPECT_EQ(Lit(csv), écrit +
                          "# 2 rows lost from 2.000000 s to 3.000000 s,\n4.000000,4\n"
                          "5.000000,5\n6.000000,6\n7.000000,7\n");

  limite.Pose(1);
  Dépose(8, 1);
  écrivain.Conclut();
  EXPECT_EQ(écrivain.Etat().perdues, 3U) << "given up at the end";
  EXPECT_FALSE(écrivain.Etat().Complet());
}

// What was begun and cannot be cut off again: a pipe gives nothing back.
TEST(UnFichierEnAjout, NeJointPasUnTexteCoupéAuSuivant) {
  int bouts[2];
  ASSERT_EQ(::pipe2(bouts, O_NONBLOCK), 0);
  FichierEnAjout fichier(bouts[1]);
  const std::string trop(std::size_t{1} << 21U, 'x');
  EXPECT_EQ(fichier.Ajoute(trop), EAGAIN);
  std::string lu(trop.size(), '\0');
  const ssize_t coupé = ::read(bouts[0], lu.data(), lu.size());
  ASSERT_GT(coupé, 0);
  for (const char* texte : {"1,2\n", "3,4\n"}) EXPECT_EQ(fichier.Ajoute(texte), 0);
  const ssize_t reste = ::read(bouts[0], lu.data(), lu.size());
  EXPECT_EQ(lu.substr(0, static_cast<std::size_t>(reste)), "\n1,2\n3,4\n");
  ::close(bouts[0]);
}

TEST_F(UnEnregistrement, RefuseCeQuiExisteEtNeLaisseRienDeVide) {
  const auto rien = [&] {
    return !std::filesystem::exists(csv) && !std::filesystem::exists(csv + ".json");
  };
  for (const char* fin : {"", ".json"}) {
    std::ofstream(csv + fin) << "12 months of work\n";
    const essai::Fin refus = Lance("run " + Base() + " --sim --seconds 1 --csv " + csv);
    EXPECT_EQ(refus.code, 2);
    EXPECT_EQ(refus.erreur, "zuma: " + csv + fin +
                                " is there already and is not overwritten: give another name, or "
                                "move it away\n");
    EXPECT_EQ(Lit(csv + fin), "12 months of work\n");
    std::filesystem::remove(csv + fin);
    EXPECT_TRUE(rien());
  }
  // A start that is refused recorded nothing: the name stays free.
  const std::string mauvaise = Base("UPDATE Carte SET Adresse='port' WHERE [Index]=2");
  EXPECT_EQ(Lance("run " + mauvaise + " --sim --csv " + csv).code, 1);
  EXPECT_TRUE(rien());
  EXPECT_EQ(Lance("run " + Base() + " --sim --csv " + dossier.Fichier("absent/x.csv")).code, 2);
}

// Far faster than any disk: simulated time waits for the writer.
TEST_F(UnEnregistrement, EnTempsSimuléNePerdAucuneRangée) {
  essai::ChassisPubliéDeDémo démo;
  Enregistreur enregistreur(csv, Enregistreur::Retard::Attend);
  const std::uint64_t avant = démo.marche->LeChassis().RafraichissementsEA();
  Enregistre(*démo.marche, enregistreur, {});
  démo.Passe(100, [&] { enregistreur.Suit(); });
  enregistreur.Termine();
  const std::uint64_t attendues = démo.marche->LeChassis().RafraichissementsEA() - avant;
  démo.Passe(0.1);
  enregistreur.Ferme();
  EXPECT_TRUE(enregistreur.Etat().Complet());
  EXPECT_EQ(enregistreur.Etat().écrites, attendues);
  const std::string écrit = Lit(csv);
  const auto lignes = Découpe(écrit, '\n');
  EXPECT_EQ(lignes.size(), attendues + 2);
  for (std::size_t i = 1; i + 1 < lignes.size(); ++i) {
    ASSERT_EQ(std::ranges::count(lignes[i], ','), std::ranges::count(lignes[0], ','));
  }
}

TEST_F(UnEnregistrement, QuiSArrêteEstDitEtNArrêtePasLaMachine) {
  const std::string fichier = dossier.Fichier("d/x.csv");
  // What the shell does before the program, and beside it once rows are in the file.
  for (const auto& [avant, pendant, raison] : essai::Cas<std::string, std::string, std::string>{
           {"ulimit -f 40; ", ":", "the file has reached the size limit"},
           {"", "rm -r " + dossier.Fichier("d"), "the file was removed"}}) {
    SCOPED_TRACE(raison);
    std::filesystem::remove_all(dossier.Fichier("d"));
    std::filesystem::create_directory(dossier.Fichier("d"));
    const std::string script =
        "(for i in $(seq 40); do [ -s " + fichier + " ] && break; sleep 0.1; done; " + pendant +
        ") & { (" + avant + "'" ZUMA_PROGRAMME "' run " + Base() +
        " --sim --json --seconds 4 --csv " + fichier + "; echo $? >" + dossier.Fichier("code") +
        ") 2>" + dossier.Fichier("erreur") + "; } | cat >" + dossier.Fichier("sortie");
    ASSERT_EQ(std::system(script.c_str()), 0);
    EXPECT_EQ(Lit(dossier.Fichier("code")), "1\n");
    const essai::Fin fin{1, Lit(dossier.Fichier("sortie")), Lit(dossier.Fichier("erreur"))};
    EXPECT_NE(fin.erreur.find("zuma: RECORDING STOPPED: " + fichier + ": " + raison),
              std::string::npos)
        << fin.erreur;
    const auto vues = fin.Vues();
    ASSERT_EQ(vues.size(), 8U) << "the machine goes on to its end";
    EXPECT_EQ(vues[7]["recording"]["stopped"], true);
    EXPECT_EQ(vues[7]["recording"]["reason"], raison);
    EXPECT_TRUE(!std::filesystem::exists(fichier) || Lit(fichier).ends_with("\n"));
  }
}

}  // namespace
}  // namespace zuma
