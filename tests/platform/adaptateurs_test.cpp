#include <cmath>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <limits>
#include <sstream>
#include <stdexcept>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "core/chassis.h"
#include "outils/cas.h"
#include "outils/dossier_provisoire.h"
#include "outils/numero.h"
#include "outils/temoins.h"
#include "platform/linux/compteurs_linux.h"
#include "platform/linux/fichiers_linux.h"
#include "platform/linux/fin_du_programme.h"
#include "platform/linux/ftdi_usb.h"
#include "platform/linux/horloge_systeme.h"
#include "platform/linux/messages_terminal.h"
#include "platform/linux/minuterie.h"
#include "platform/linux/plateforme_linux.h"
#include "platform/linux/ports_linux.h"
#include "tree/journal_modbus.h"

namespace zuma::linux_ {
namespace {

using essai::Cas;
using essai::DossierProvisoire;
using essai::Lit;
using essai::NuméroDe;

// A device that is lost must not leave the others moving, even when it fails again meanwhile.
TEST(LaFinDuProgramme, VientDerrièreLeDernierGesteEtMalgréLui) {
  for (const bool lève : {false, true}) {
    FinDuProgrammeLinux fin(nullptr);
    fin.Avant([&] {
      fin.ArrêteLeProgramme("encore");
      std::fputs("au repos\n", stderr);
      if (lève) throw std::runtime_error("panne");
    });
    EXPECT_EXIT(fin.ArrêteLeProgramme("perdu"), testing::ExitedWithCode(EXIT_FAILURE),
                "zuma : perdu\nau repos\n");
  }
}

TEST(Horloge, DortAuMoinsLeTempsDemandéEtDonneLHeureLocale) {
  HorlogeSystème horloge;
  Minuterie minuterie;
  const double début = minuterie.LitMicrosecondes();
  // Nothing to wait for: a day's sleep here would hang the test.
  for (const double secondes : {0.02, 0.0, -1.0, std::nan("")}) horloge.Dort(secondes);
  EXPECT_GE(minuterie.LitMicrosecondes() - début, 20000);

  ::setenv("TZ", "XXX-5:30", 1);  // five hours and a half ahead of UTC
  ::tzset();
  const std::string texte = horloge.TexteHeure();
  const double décalée = std::fmod(static_cast<double>(std::time(nullptr)) + 5.5 * 3600, 86400);
  ::unsetenv("TZ");
  ::tzset();
  int h = 0;
  int m = 0;
  int s = 0;
  ASSERT_TRUE(std::sscanf(texte.c_str(), "%2d:%2d:%2d", &h, &m, &s) == 3 && texte.size() == 8);
  EXPECT_NEAR(std::remainder(h * 3600 + m * 60 + s - décalée, 86400), 0, 2);
}

TEST(Compteurs, ComptentParPoignée) {
  const auto timer = Crée<essai::Minuterie>();
  CompteursLinux compteurs(timer);
  const std::int16_t a = compteurs.Ouvre("a");
  timer->heure = 700;
  const std::int16_t b = compteurs.Ouvre("b");
  timer->heure = 1000;
  EXPECT_EQ(compteurs.Lit(a), 1000);
  EXPECT_EQ(compteurs.Lit(b), 300);
  for (const int inconnue : {static_cast<int>(a), static_cast<int>(a), 0, -1, 9}) {
    compteurs.Ferme(static_cast<std::int16_t>(inconnue));
    EXPECT_THROW((void)compteurs.Lit(static_cast<std::int16_t>(inconnue)), Echec);
  }
  EXPECT_EQ(compteurs.Ouvre("c"), a);
  EXPECT_EQ(compteurs.Lit(a), 0);
  timer->heure = 1e13;
  EXPECT_EQ(compteurs.Lit(b), std::numeric_limits<std::int32_t>::max());
}

TEST(Fichiers, RangeLesCheminsSousLaRacine) {
  const FichiersLinux fichiers("/racine");
  for (const auto& [donné, réel] : Cas<const char*, const char*>{
           {R"(c:\K9\journaux\Erreur été.txt)", "/racine/c/K9/journaux/Erreur été.txt"},
           {R"(D:\a.txt)", "/racine/d/a.txt"},
           {R"(\a\.\b.txt)", "/racine/a/b.txt"},
           {"/etc/passwd", "/racine/etc/passwd"},
           {"..a/b..", "/racine/..a/b.."}}) {
    EXPECT_EQ(fichiers.Réel(donné), réel) << donné;
  }
  for (const char* interdit : {R"(c:\..\x)", "..", "a/../../x", R"(a\..)"}) {
    EXPECT_THROW((void)fichiers.Réel(interdit), Echec) << interdit;
  }
}

TEST(Fichiers, AjouteDesLignesEtSupprime) {
  const DossierProvisoire dossier;
  FichiersLinux fichiers(dossier.Chemin());
  constexpr std::string_view kJournal = R"(c:\journaux\é.txt)";
  const auto journal = dossier.Chemin() / "c/journaux/é.txt";
  EXPECT_EQ(NuméroDe([&] { fichiers.AjouteLigne(kJournal, "perdue"); }), 76);
  fichiers.CréeDossier(kJournal);
  fichiers.AjouteLigne(kJournal, "14:03:22,Erreur CRC,3");
  fichiers.AjouteLigne(kJournal, "deux\nlignes");
  EXPECT_EQ(Lit(journal), "14:03:22,Erreur CRC,3\ndeux lignes\n");

  for (const std::string_view nom : {kJournal, kJournal, std::string_view(),
                                     std::string_view("c:\\journaux"), std::string_view("..")}) {
    fichiers.Supprime(nom);
  }
  EXPECT_FALSE(std::filesystem::exists(journal));
  EXPECT_TRUE(std::filesystem::exists(journal.parent_path()));

  // A link does not lead out of the root.
  const DossierProvisoire dehors;
  std::filesystem::create_symlink(dehors.Fichier("dehors.txt"), dossier.Chemin() / "x.txt");
  std::ofstream(dehors.Fichier("dehors.txt")) << "intact";
  EXPECT_THROW(fichiers.AjouteLigne("x.txt", "écrasé"), Echec);
  EXPECT_EQ(Lit(dehors.Fichier("dehors.txt")), "intact");
}

// A dump goes where the host says; no name within it forges a line.
TEST(Fichiers, AjouteUnBlocAuFichierQueLHôteNomme) {
  const DossierProvisoire dossier;
  const std::string fichier = dossier.Fichier("hôte.txt");
  const std::string lien = dossier.Fichier("lien.txt");
  std::ofstream(fichier) << "avant\n";
  std::filesystem::create_symlink(fichier, lien);
  FichiersLinux fichiers(dossier.Chemin() / "installation");
  const std::string bloc[] = {"  un\n\x1b[2J", "", "é  "};
  fichiers.AjouteBloc(lien, bloc);
  EXPECT_EQ(Lit(fichier), "avant\n  un  [2J\n\né  \n");

  const std::string tube = dossier.Fichier("tube");
  ASSERT_EQ(::mkfifo(tube.c_str(), 0600), 0);
  EXPECT_EQ(NuméroDe([&] { fichiers.AjouteBloc(tube, bloc); }), 75) << "nobody reads it";
  const std::string coupé = fichier + std::string("\0x", 2);
  EXPECT_EQ(NuméroDe([&] { fichiers.AjouteBloc(coupé, bloc); }), 76);
  EXPECT_EQ(NuméroDe([&] { fichiers.EcritBloc(-1, bloc); }), 52);
  EXPECT_EQ(Lit(fichier), "avant\n  un  [2J\n\né  \n");
}

TEST(Messages, EcritUneLigneEtNAttendQueSIlYAQuelquUn) {
  std::ostringstream seule;
  MessagesTerminal(seule).Montre("Canal\x1b[2J introuvable\n", {"Capteur", "12", "Force"});
  EXPECT_EQ(seule.str(), "[Capteur 12 Force] Canal [2J introuvable \n");

  std::ostringstream sortie;
  std::istringstream réponses("\n");
  MessagesTerminal messages(sortie, &réponses);
  for (int i = 0; i < 3; ++i) messages.Montre("m", {"", "", ""});
  // Answered once, then the input ended during the second question: the third is not asked.
  constexpr std::string_view kQuestion = "Entrée pour continuer... ";
  EXPECT_EQ(sortie.str(), "m\n" + std::string(kQuestion) + "m\n" + std::string(kQuestion) + "m\n");
}

// The USB adapter where no device is plugged: every call says so, and none is fatal.
TEST(FtdiUsb, DitUnAppareilAbsent) {
  FtdiUsb usb;
  std::int32_t poignée = 0;
  std::int32_t réception = 0;
  std::int32_t émission = 0;
  Octets octets;
  for (const std::int32_t absent : {250, -1}) EXPECT_EQ(usb.FT_Open(absent, poignée), 2);
  EXPECT_EQ(usb.FT_SetTimeouts(poignée, 1000, 1000), 3);
  EXPECT_EQ(usb.FT_SetBaudRate(poignée, 1953125), 3);
  EXPECT_EQ(usb.FT_Purge(poignée, FTD2XX::kPurgeRéception), 3);
  EXPECT_EQ(usb.FT_Write(poignée, "$A"), 3);
  EXPECT_EQ(usb.FT_GetStatus(poignée, réception, émission), 3);
  EXPECT_EQ(usb.FT_Read(poignée, 10, octets), 3);
  usb.FT_Close(poignée);
}

using Demandes = std::vector<std::pair<int, int>>;

/// Ports in memory, in the order of the bus; ports from `refusés` on are refused.
class PortsEnMémoire : public InstructionsES {
 public:
  int Demande(std::uint16_t début, std::uint16_t nombre) noexcept override {
    demandes.emplace_back(début, nombre);
    return début < refusés ? 0 : EPERM;
  }
  std::uint32_t Lit(std::uint16_t port, unsigned octets) noexcept override {
    std::uint32_t valeur = 0;
    std::memcpy(&valeur, &mémoire[port], octets);
    return valeur;
  }
  void Ecrit(std::uint16_t port, std::uint32_t valeur, unsigned octets) noexcept override {
    std::memcpy(&mémoire[port], &valeur, octets);
  }
  std::vector<std::uint8_t> mémoire = std::vector<std::uint8_t>(0x10004);
  Demandes demandes;
  unsigned refusés = 0x10000;
};

TEST(PortsLinux, DemandeChaqueGroupeUneFois) {
  PortsEnMémoire mémoire;
  PortsLinux ports({}, mémoire);
  ports.Outp(0x300, 0xA5);
  ports.Outpw(0x306, 0xBEEF);
  ports.Outpd(0x30C, 0x12345678);
  EXPECT_EQ(ports.Inp(0x300), 0xA5);
  EXPECT_EQ(ports.Inpw(0x306), 0xBEEF);
  EXPECT_EQ(ports.Inpd(0x30C), 0x12345678U);
  EXPECT_EQ(mémoire.demandes, (Demandes{{0x300, 16}}));
  (void)ports.Inpw(0x31F);  // across two groups
  EXPECT_EQ(mémoire.demandes, (Demandes{{0x300, 16}, {0x310, 16}, {0x320, 16}}));
  EXPECT_FALSE(ports.Refusés());
}

TEST(PortsLinux, RefusésIlsSontCommeUneCarteAbsente) {
  PortsEnMémoire mémoire;
  mémoire.refusés = 0x310;
  const auto registre = Crée<essai::Registre>();
  PortsLinux ports(registre, mémoire);
  EXPECT_EQ(ports.Inp(0x340), 0xFF);
  EXPECT_EQ(ports.Inpw(0x342), 0xFFFF);
  EXPECT_EQ(ports.Inpd(0x350), 0xFFFFFFFFU);
  ports.Outp(0x340, 1);
  EXPECT_EQ(ports.Inpw(0x30F), 0xFFFF);  // half of it refused
  ports.Outpw(0x30F, 0);
  EXPECT_EQ(ports.Inpw(0xFFFF), 0xFFFF);  // past the last port
  EXPECT_EQ(mémoire.mémoire, PortsEnMémoire().mémoire);
  EXPECT_TRUE(ports.Refusés());
  ASSERT_EQ(registre->entrées.size(), 1U);
  EXPECT_TRUE(registre->Contient("0x0340-0x034F"));
  EXPECT_TRUE(registre->Contient("CAP_SYS_RAWIO"));
}

RéglagesLinux Choix(const std::filesystem::path& dossier, const char* langue = "") {
  RéglagesLinux choix;
  choix.dossier = dossier;
  choix.langue = langue;
  return choix;
}

TEST(PlateformeLinux, SertUnChassisSansRienDAutre) {
  const DossierProvisoire dossier;
  PlateformeLinux machine(Choix(dossier.Chemin() / "fichiers", "English"));
  Chassis chassis(machine.services);
  chassis.TimerExact(machine.timer);
  chassis.ChargeErreur(machine.registre);
  machine.securite->Branche(chassis, machine.registre);
  chassis.MetàJour();
  EXPECT_EQ(machine.registre->Total(), 0U);
  EXPECT_EQ(machine.traducteur->LangueCourante(), "English");
  // The journal of the drives has its folder from the start.
  machine.services.fichiers->AjouteLigne(kJournalModbus, "ligne");

  machine.securite->PositionneCauseAU("porte");
  (void)machine.securite->DéclencheSécurité();
  EXPECT_TRUE(machine.securite->ArrêtComplet());
}

TEST(PlateformeLinuxDeathTest, LaFinLaisseSaRaison) {
  const DossierProvisoire dossier;
  RéglagesLinux choix = Choix(dossier.Chemin() / "fichiers");
  choix.registre.fichier = dossier.Chemin() / "Erreur.txt";
  EXPECT_EXIT(
      {
        PlateformeLinux machine(choix);
        machine.services.fin->ArrêteLeProgramme("liaison perdue");
      },
      testing::ExitedWithCode(EXIT_FAILURE), "liaison perdue");
  EXPECT_PRED_FORMAT2(testing::IsSubstring, "liaison perdue", Lit(choix.registre.fichier));
}

TEST(PlateformeLinux, DitUneFoisChaqueBibliothèqueQuIlNAPas) {
  const DossierProvisoire dossier;
  PlateformeLinux machine(Choix(dossier.Chemin() / "fichiers"));
  std::int32_t nombre = 5;
  EXPECT_NE(machine.services.orbit->OrbitSetaddr(0, 1, "A0"), 0);
  EXPECT_NE(machine.services.spider->S8_GetDevSettings(1, nombre), 0);
  EXPECT_EQ(nombre, 0);
  EXPECT_EQ(machine.registre->Total(), 2U);
  EXPECT_LT(machine.services.pci->Register_Card(BibliothèquePCI::kType9111, 1000), 0);
  EXPECT_EQ(machine.registre->Total(), 3U);
}

TEST(PlateformeLinux, UnDossierImpossibleSeLitDansLeRegistre) {
  const DossierProvisoire dossier;
  std::ofstream(dossier.Chemin() / "obstacle") << "x";
  PlateformeLinux machine(Choix(dossier.Chemin() / "obstacle"));
  EXPECT_EQ(machine.registre->Total(), 1U);
  EXPECT_THROW(PlateformeLinux(Choix(dossier.Chemin(), "?")), Echec);
}

}  // namespace
}  // namespace zuma::linux_
