// A recording: whole rows or none, what is missing told where it is missing, and no machine that
// waits for a disk.
#include <csignal>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include "host/champ_csv.h"
#include "host/enregistreur.h"
#include "outils/allocations.h"
#include "outils/cas.h"
#include "outils/chassis_de_demo.h"
#include "outils/fenetres_d_essai.h"
#include "outils/programme.h"

namespace zuma {
namespace {

using essai::Lit;
using host::Ecrivain;
using host::Enregistreur;
using host::FichierEnAjout;
using host::FileDeRangées;

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

class UnEnregistrement : public essai::LeProgramme {
 protected:
  // Rows of one value, the second, at the seconds from `de` on.
  void Dépose(int de, int nombre) {
    for (int s = de; s < de + nombre; ++s) {
      rangées.Dépose(s, [&](std::span<double> valeurs) { valeurs[0] = s; });
    }
  }
  std::string csv = dossier.Fichier("essai.csv");
  FileDeRangées rangées{1, 2};
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

TEST_F(UnEnregistrement, DitLesRangéesQuiNOntPasEuDePlace) {
  FichierEnAjout fichier(csv);
  Ecrivain écrivain(fichier, rangées, "time [s],F\n");
  const auto avant = essai::Allocations();
  Dépose(0, 5);
  EXPECT_EQ(essai::Allocations(), avant);
  écrivain.Tour();
  rangées.Dépose(5, [](std::span<double> valeurs) { valeurs[0] = std::nan(""); });
  Dépose(6, 2);
  EXPECT_EQ(rangées.Perdues(), 4U);
  écrivain.Conclut(rangées.Manque());
  EXPECT_EQ(écrivain.Etat().écrites, 4U);
  EXPECT_EQ(Lit(csv),
            "time [s],F\n0.000000,0\n1.000000,1\n# 3 rows lost from 2.000000 s to 4.000000 s,\n"
            "5.000000,\n6.000000,6\n# 1 rows lost from 7.000000 s to 7.000000 s,\n");
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
  écrivain.Conclut({});
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

// Far faster than any disk: rows wait in simulated time, and are lost and told in a machine's.
TEST_F(UnEnregistrement, CompteToutesSesRangées) {
  constexpr std::uint64_t kNombre = 20'000;
  host::Recueil messages;
  essai::FenêtresDEssai fenêtres;
  const essai::ChassisDeDémo chassis(Base(), 1, messages, fenêtres, essai::EnAnglais());
  for (const auto retard : {Enregistreur::Retard::Attend, Enregistreur::Retard::Perd}) {
    const std::string nom = dossier.Fichier(std::to_string(static_cast<int>(retard)) + ".csv");
    Enregistreur enregistreur(nom, retard);
    enregistreur.Commence(*chassis, {});
    const auto avant = essai::Allocations();
    for (std::uint64_t i = 0; i < kNombre; ++i) enregistreur.Note(static_cast<double>(i));
    EXPECT_EQ(essai::Allocations(), avant);
    enregistreur.Termine();
    enregistreur.Ferme();
    const host::EtatDEnregistrement état = enregistreur.Etat();
    EXPECT_EQ(état.écrites + état.perdues, kNombre);
    EXPECT_TRUE(état.Complet() || retard == Enregistreur::Retard::Perd);
    const std::string écrit = Lit(nom);
    const auto lignes = Découpe(écrit, '\n');
    std::uint64_t vues = 0;
    for (std::size_t i = 1; i + 1 < lignes.size(); ++i) {
      EXPECT_EQ(std::ranges::count(lignes[i], ','), std::ranges::count(lignes[0], ','));
      vues += lignes[i].starts_with("# ") ? std::stoull(std::string(lignes[i].substr(2))) : 1;
    }
    EXPECT_EQ(vues, kNombre);
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
    const std::string script = "(while ! [ -s " + fichier + " ]; do sleep 0.1; done; " + pendant +
                               ") & { (" + avant + "'" ZUMA_PROGRAMME "' run " + Base() +
                               " --sim --json --seconds 4 --csv " + fichier + "; echo $? >" +
                               dossier.Fichier("code") + ") 2>" + dossier.Fichier("erreur") +
                               "; } | cat >" + dossier.Fichier("sortie");
    ASSERT_EQ(std::system(script.c_str()), 0);
    EXPECT_EQ(Lit(dossier.Fichier("code")), "1\n");
    const essai::Fin fin{1, Lit(dossier.Fichier("sortie")), Lit(dossier.Fichier("erreur"))};
    EXPECT_TRUE(fin.erreur.starts_with("zuma: RECORDING STOPPED: " + fichier + ": " + raison))
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
