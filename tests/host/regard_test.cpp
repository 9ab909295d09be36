// A stop that is kept, and the verbs that look at a frame of another program.
#include <chrono>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "host/courbe.h"
#include "host/regard/cas.h"
#include "host/regard/gardien.h"
#include "host/regard/recit.h"
#include "outils/cas.h"
#include "outils/chassis_publie.h"
#include "outils/programme.h"

namespace zuma {
namespace {

namespace fs = std::filesystem;
using testing::IsSubstring;

std::vector<fs::path> Cas(const fs::path& dossier) {
  std::error_code absent;
  std::vector<fs::path> cas;
  for (fs::directory_iterator i(dossier, absent), fin; i != fin; ++i) cas.push_back(i->path());
  std::ranges::sort(cas);
  return cas;
}

bool Contient(const std::vector<std::string>& lignes, std::string_view texte) {
  return std::ranges::any_of(
      lignes, [&](const std::string& ligne) { return ligne.find(texte) != std::string::npos; });
}

TEST(UnArrêtGardé, EstLàEntierEtNEnRemplaceAucun) {
  essai::ChassisPubliéDeDémo démo;
  démo.Passe(11);
  démo.marche->Arrête("porte <ouverte> / à gauche");
  démo.Passe(2);
  démo.marche->Acquitte();
  démo.Passe(5);
  const publication::Lecteur lecteur(démo.Fichier());
  const auto arrêts = host::LesArrêts(lecteur);
  ASSERT_EQ(arrêts.size(), 1U);
  const std::string stops = démo.base.dossier.Fichier("stops");
  const fs::path un = host::EcritLeCas(lecteur, arrêts[0], stops, {});
  const fs::path autre = host::EcritLeCas(lecteur, arrêts[0], stops, {});
  EXPECT_NE(un, autre);
  EXPECT_EQ(Cas(stops).size(), 2U);
  EXPECT_TRUE(un.string().ends_with("-porte-ouverte-à-gauche")) << un;

  const std::string csv = essai::Lit(un / "samples.csv");
  const auto lignes = Découpe(csv, '\n');
  ASSERT_GT(lignes.size(), 3000U) << "10 s before and 5 s behind, at 200 Hz";
  EXPECT_TRUE(lignes[1].starts_with("-9.99") || lignes[1].starts_with("-10.0")) << lignes[1];
  EXPECT_GT(std::stod(std::string(lignes[lignes.size() - 2])), 4.98);
  const auto json = nlohmann::json::parse(essai::Lit(un / "case.json"));
  EXPECT_EQ(json["What fired?"][0], "porte <ouverte> / à gauche");
  EXPECT_EQ(json["Which did not?"][0], "all did");
  EXPECT_PRED_FORMAT2(IsSubstring, "in the pass of the stop: command Servovalve",
                      json["When did the outputs come to rest?"][0].get<std::string>());
  EXPECT_PRED_FORMAT2(IsSubstring, "acknowledged",
                      json["What did the operator do next?"][0].get<std::string>());
  const std::string page = essai::Lit(un / "stop.svg");
  EXPECT_PRED_FORMAT2(IsSubstring, "porte &lt;ouverte&gt; / à gauche", page);
  EXPECT_PRED_FORMAT2(IsSubstring, "<polyline", page);
}

TEST(UnArrêtGardé, DitLeCapteurSaLimiteEtLaSortieQuiNAPasSuivi) {
  essai::ChassisPubliéDeDémo démo(3);
  démo.Passe(2);
  démo.machine->Jumelle()->liaisons.Ligne(10)->pannes.muette = true;
  démo.marche->Arrête("perdue");
  démo.Passe(3);
  const publication::Lecteur lecteur(démo.Fichier());
  const auto récit = host::Raconte(lecteur, host::LesArrêts(lecteur).at(0), 5);
  ASSERT_TRUE(récit);
  EXPECT_FALSE(récit->auRepos.empty());
  EXPECT_TRUE(Contient(récit->pasAuRepos, "was not at rest")) << "the drive's bus is silent";
}

TEST(UnArrêtGardé, EstEcritALaFinEtUnDossierInterditNArrêteRien) {
  essai::ChassisPubliéDeDémo démo;
  const std::string stops = démo.base.dossier.Fichier("stops");
  std::ofstream(démo.base.dossier.Fichier("fichier")) << "x";
  démo.marche->GardeLesArrêts(démo.base.dossier.Fichier("fichier"));
  démo.Passe(0.1);
  démo.marche->Arrête("une");
  démo.Passe(0.1);
  démo.marche->GardeLesArrêts(stops);
  démo.Passe(0.1);
  const std::string laissée = démo.base.dossier.Fichier("laissée.pub");
  fs::copy_file(démo.Fichier(), laissée);  // as if the host had died here
  démo.marche.reset();                     // before the five seconds are over
  ASSERT_EQ(Cas(stops).size(), 1U);
  EXPECT_TRUE(Cas(stops)[0].string().ends_with("-une"));

  // The next host keeps what it finds, once.
  for (const char* dossier : {"stops", "autres"}) {
    const std::string où = démo.base.dossier.Fichier(dossier);
    const essai::ChassisPubliéDeDémo suivant;
    host::GardienDesArrêts(publication::Lecteur(suivant.Fichier()), où, laissée);
    ASSERT_EQ(Cas(où).size(), 1U) << dossier;
    EXPECT_TRUE(Cas(où)[0].string().ends_with("-une"));
  }
}

TEST(UnArrêtGardé, EstEssayéEncoreQuandLeDossierRevient) {
  essai::ChassisPubliéDeDémo démo;
  const std::string stops = démo.base.dossier.Fichier("stops");
  std::ofstream(stops) << "in the way";
  démo.marche->Arrête("une");
  démo.Passe(6);
  const host::GardienDesArrêts gardien(publication::Lecteur(démo.Fichier()), stops);
  std::this_thread::sleep_for(std::chrono::milliseconds(200));  // a try that fails, or none yet
  fs::remove(stops);
  for (int i = 0; i < 200 && Cas(stops).empty(); ++i) {
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
  }
  EXPECT_EQ(Cas(stops).size(), 1U);
}

// Its pass reads the input before it stops: the event of the input comes behind that of the stop.
TEST(UnArrêtGardé, NommeLEntréeQuiLADéclenché) {
  essai::ChassisPubliéDeDémo démo;
  démo.Passe(1);
  démo.machine->Jumelle()->presse.boutonAU = true;
  démo.Passe(1);
  const publication::Lecteur lecteur(démo.Fichier());
  const auto récit = host::Raconte(lecteur, host::LesArrêts(lecteur).at(0), 5);
  ASSERT_TRUE(récit);
  EXPECT_TRUE(Contient(récit->valeurs, "Arrêt d'urgence went on in the pass of the stop"));
}

TEST(LesVieuxCas, SEnVontSaufLesCentDerniersEtCeQuiNEnEstPas) {
  const essai::DossierProvisoire dossier;
  const auto crée = [&](int numéro, std::chrono::hours âge, const char* fichier) {
    const fs::path cas = dossier.Fichier("cas" + std::to_string(numéro));
    fs::create_directory(cas);
    std::ofstream(cas / fichier) << "{}";
    fs::last_write_time(cas / fichier, fs::file_time_type::clock::now() - âge);
  };
  constexpr std::chrono::hours kJour{24};
  crée(0, 400 * kJour, "notes.txt");
  for (int i = 1; i <= 99; ++i) crée(i, 200 * kJour - std::chrono::hours(i), "case.json");
  host::RetireLesVieuxCas(dossier.Chemin());
  EXPECT_EQ(Cas(dossier.Chemin()).size(), 100U) << "fewer than a hundred cases, however old";
  for (int i = 100; i <= 103; ++i) crée(i, 20 * kJour, "case.json");
  crée(104, 100 * kJour, "case.json");
  std::ofstream(dossier.Fichier("cas1/photo.jpg")) << "the operator's own";
  host::RetireLesVieuxCas(dossier.Chemin());
  EXPECT_EQ(Cas(dossier.Chemin()).size(), 102U);
  for (const auto& [cas, reste] : essai::Cas<int, bool>{
           {0, true}, {1, true}, {2, false}, {3, false}, {4, false}, {5, true}, {104, true}}) {
    EXPECT_EQ(fs::exists(dossier.Fichier("cas" + std::to_string(cas))), reste) << cas;
  }
}

class LesRegards : public essai::LeProgramme {
 protected:
  // Runs `commandes` of the shell while another program runs the frame; $z is this program.
  std::string PendantQuElleTourne(const std::string& commandes) {
    const std::string sortie = dossier.Fichier("sortie");
    const std::string script =
        "export ZUMA_PUBLICATIONS=" + dossier.Fichier("pub") +
        "; mkdir -p $ZUMA_PUBLICATIONS; cd " + dossier.Chemin().string() +
        "; z='" ZUMA_PROGRAMME "'; \"$z\" run " + Base() +
        " --sim --seconds 60 >/dev/null 2>&1 & h=$!; for i in $(seq 100); do "
        "[ \"$(ZUMA_PUBLICATIONS=" +
        dossier.Fichier("pub") +
        " '" ZUMA_PROGRAMME
        "' list --json 2>/dev/null)\" ] && break; sleep 0.1; done; export ZUMA_PUBLICATIONS=" +
        dossier.Fichier("pub") + "; z='" ZUMA_PROGRAMME "'; cd " + dossier.Chemin().string() +
        "; (" + commandes + ") >" + sortie + " 2>&1; kill $h 2>/dev/null; wait $h 2>/dev/null";
    (void)std::system(script.c_str());
    return essai::Lit(sortie);
  }
};

TEST_F(LesRegards, MontrentSuiventEnregistrentEtLisentLaBoîteNoire) {
  const std::string dit = PendantQuElleTourne(
      "$z list; $z show 'Force 100 kN' armé; $z show Fource; echo code $?; "
      "$z watch armé --seconds 0.5 --json | tail -1; $z scope 'Force 100 kN' --seconds 0.5 | wc "
      "-l; "
      "$z scope 'Force 100 kN' --trigger 'Force 100 kN' '>' -5 --wait 0.2; echo code $?; "
      "$z scope 'Force 100 kN' --seconds 0.3 --svg x.svg; $z record armé --out r.csv --seconds "
      "0.5; "
      "$z run demo1.db --sim; echo code $?; kill -9 $h; sleep 0.2; "
      "$z blackbox; $z show armé; $z diff demo1.db demo1.db; echo same $?");
  for (const char* texte :
       {"frame 1  Presse de démonstration", "19 sensors", "sensor   Force 100 kN",
        "did you mean \"Force", "code 2", "\"value\":\"on\"", "the trigger did not come",
        "x.svg written", "recording r.csv: ", "is run by process", "its host died",
        "outputs as they were last written", "events", "same 0"}) {
    EXPECT_PRED_FORMAT2(IsSubstring, texte, dit);
  }
  EXPECT_TRUE(essai::Lit(dossier.Fichier("r.csv")).starts_with("time [s],Armé\n"));
}

// Read back by another program: what it is told must be in the file itself.
TEST_F(LesRegards, DisentQuUneCarteNAPasEncoreDEchantillon) {
  essai::ChassisPubliéDeDémo démo;
  publication::Place place({"vide.db", 1, true}, dossier.Chemin());
  const publication::Publication vide(démo.marche->LeChassis(), place, {}, {.secondes = 1});
  for (const char* verbe : {"blackbox --json ", "blackbox ", "show --of "}) {
    const essai::Fin fin = Lance(verbe + place.Fichier());
    EXPECT_GE(fin.code, 0) << verbe;
    EXPECT_PRED_FORMAT2(IsSubstring, "no sample yet", fin.erreur) << verbe;
  }
}

TEST_F(LesRegards, ConvertissentUnEnregistrementPourDAutresProgrammes) {
  const std::string csv = dossier.Fichier("essai.csv");
  ASSERT_EQ(Lance("run " + Base() + " --sim --fast --seconds 3 --csv " + csv).code, 0);
  std::ofstream(csv, std::ios::app)
      << "# 7 rows lost from 3.000000 s to 3.030000 s" << std::string(19, ',') << "\n";
  const essai::Fin pleine =
      Lance("--version >/dev/null; ulimit -f 40; '" ZUMA_PROGRAMME "' convert " + csv);
  EXPECT_EQ(pleine.code, 1);
  EXPECT_PRED_FORMAT2(IsSubstring, "essai.h5 cannot be written", pleine.erreur);
  ASSERT_EQ(Lance("convert " + csv).code, 0) << "nothing of the try before stands in the way";
  ASSERT_EQ(Lance("convert " + csv + " --to csvw").code, 0);
  EXPECT_EQ(Lance("convert " + csv).code, 2) << "never written over";
  const std::string python =
      "import csv, h5py, json, math, sys\n"
      "f = h5py.File(sys.argv[1] + '.h5'); c = f['Force 100 kN']\n"
      "rows = [r for r in csv.reader(open(sys.argv[1] + '.csv')) if not r[0].startswith('#')][1:]\n"
      "assert len(rows) == len(c) == len(f['time']) > 500, len(rows)\n"
      "assert [float(r[1]) for r in rows] == list(c)\n"
      "assert c.attrs['unit'] == 'kN' and c.attrs['calibrated'] == '2024-03-01', dict(c.attrs)\n"
      "assert 'Cylindre' in ' '.join(map(str, f.attrs.values())), dict(f.attrs)\n"
      "assert list(f['gap rows']) == [7] and list(f['gap to']) == [3.03]\n"
      "m = json.load(open(sys.argv[1] + '.csv-metadata.json'))\n"
      "assert m['url'] == 'essai.csv'\n"
      "assert [t['titles'] for t in m['tableSchema']['columns']][:2] == ['time [s]', 'Force 100 kN "
      "[kN]']\n"
      "print('all there')\n";
  std::ofstream(dossier.Fichier("lit.py")) << python;
  const std::string sortie = dossier.Fichier("lu");
  (void)std::system(("/usr/bin/python3 " + dossier.Fichier("lit.py") + " " +
                     dossier.Fichier("essai") + " >" + sortie + " 2>&1")
                        .c_str());
  EXPECT_EQ(essai::Lit(sortie), "all there\n");

  std::ofstream(csv, std::ios::app) << "4.0,1\n5.0" << std::string(19, ',') << "\n";
  EXPECT_PRED_FORMAT2(IsSubstring, "no row of 20 numbers", Lance("convert " + csv).erreur);
}

}  // namespace
}  // namespace zuma
