#include <chrono>
#include <filesystem>
#include <thread>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include "core/echec.h"
#include "platform/linux/liaison_serie_linux.h"

namespace zuma::linux_ {
namespace {

using namespace std::chrono_literals;

/// The other end of a line: a pseudo-terminal, reached under a name that can be pulled and put
/// back like a cable.
class BoutDeLigne {
 public:
  BoutDeLigne() { Branche(); }
  ~BoutDeLigne() {
    Débranche();
    std::filesystem::remove_all(dossier_);
  }
  void Branche() {
    maître_ = ::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK);
    ::grantpt(maître_);
    ::unlockpt(maître_);
    std::filesystem::create_symlink(::ptsname(maître_), Nom());
  }
  void Débranche() {
    if (maître_ < 0) return;
    ::close(maître_);
    maître_ = -1;
    std::filesystem::remove(Nom());
  }
  [[nodiscard]] std::string Nom() const { return (dossier_ / "port").string(); }
  void Envoie(std::string_view octets) const {
    ASSERT_EQ(::write(maître_, octets.data(), octets.size()), static_cast<ssize_t>(octets.size()));
  }
  [[nodiscard]] std::string Reçu() const {
    char tampon[256];
    const ssize_t n = ::read(maître_, tampon, sizeof tampon);
    return {tampon, static_cast<std::size_t>(n > 0 ? n : 0)};
  }

 private:
  static std::filesystem::path Dossier() {
    std::string modèle = (std::filesystem::temp_directory_path() / "zuma-serie-XXXXXX").string();
    return ::mkdtemp(modèle.data());
  }
  std::filesystem::path dossier_ = Dossier();
  int maître_ = -1;
};

// The kernel hands bytes over asynchronously.
template <class Condition>
bool Attend(Condition&& condition, std::chrono::milliseconds délai = 2000ms) {
  const auto fin = std::chrono::steady_clock::now() + délai;
  while (!condition()) {
    if (std::chrono::steady_clock::now() > fin) return false;
    std::this_thread::sleep_for(2ms);
  }
  return true;
}

TEST(LiaisonSérieLinux, PasseTousLesOctetsSansLesToucher) {
  BoutDeLigne bout;
  const CarteDesPorts ports{{3, bout.Nom()}};
  LiaisonSérieLinux liaison(ports);
  liaison.VitesseSérie(1953125);
  liaison.PortSérie(3);
  EXPECT_EQ(liaison.EtatPort(), 0);
  liaison.OuvrePort();
  EXPECT_EQ(liaison.EtatPort(), 1);

  std::string tous;
  for (int i = 0; i < 256; ++i) tous += static_cast<char>(i);
  liaison.EcritPort(tous);
  std::string reçu;
  EXPECT_TRUE(Attend([&] { return (reçu += bout.Reçu()).size() == tous.size(); }));
  EXPECT_EQ(reçu, tous);

  EXPECT_EQ(liaison.LitTampon({}), "") << "a read never waits";
  bout.Envoie(tous);
  EXPECT_TRUE(Attend([&] { return liaison.OctetsReçus() == 256; }));
  EXPECT_EQ(liaison.LitTampon(3), tous.substr(0, 3));
  EXPECT_EQ(liaison.LitTampon({}), tous.substr(3));
}

TEST(LiaisonSérieLinux, GuéritDUnCâbleDébranchéPuisRebranché) {
  BoutDeLigne bout;
  const CarteDesPorts ports{{1, bout.Nom()}};
  LiaisonSérieLinux liaison(ports);
  liaison.PortSérie(1);
  liaison.OuvrePort();
  bout.Débranche();
  EXPECT_TRUE(Attend([&] { return liaison.LitTampon({}).empty() && liaison.EtatPort() == 0; }));
  EXPECT_THROW(liaison.EcritPort("x"), Echec);
  bout.Branche();
  EXPECT_TRUE(Attend(
      [&] {
        (void)liaison.OctetsReçus();
        return liaison.EtatPort() == 1;
      },
      3000ms));
  bout.Envoie("ok");
  EXPECT_TRUE(Attend([&] { return liaison.OctetsReçus() == 2; }));
  liaison.FermePort();
  EXPECT_EQ(liaison.LitTampon({}), "");
  EXPECT_EQ(liaison.EtatPort(), 0) << "a closed port stays closed";
}

TEST(LiaisonSérieLinux, DitQuelPortManqueEtQueFaire) {
  const CarteDesPorts ports{{1, "/nulle/part"}, {2, "/dev/null"}};
  for (const auto& [numéro, nom] : ports) {
    LiaisonSérieLinux liaison(ports);
    liaison.PortSérie(numéro);
    try {
      liaison.OuvrePort();
      ADD_FAILURE() << nom;
    } catch (const Echec& e) {
      EXPECT_NE(e.Description().find(nom), std::string::npos) << e.Description();
    }
    EXPECT_EQ(liaison.EtatPort(), 0);
  }
}

TEST(PortInstrumentLinux, LitSesRéglagesDUnSeulTexte) {
  const struct {
    const char* texte;
    bool valide;
    const char* port;
    RéglagesPort ligne;
  } cas[] = {
      {"3,9600,N,8,1", true, "3", {9600, 0, 8, 1}},
      {"/dev/ttyUSB0, 115200, E, 7, 2", true, "/dev/ttyUSB0", {115200, 2, 7, 2}},
      {"19200,O,5,1.5", true, "", {19200, 1, 5, 15}},
      {"3,9600,X,8,1", false, "3", {}},
      {"3,9600,N,9,1", false, "3", {}},
      {"3,-1,N,8,1", false, "3", {}},
      {"3,9600,N,8", false, "", {}},
      {"", false, "", {}},
      {",,,,", false, "", {}},
  };
  for (const auto& c : cas) {
    const RéglagesInstrument lus = LitRéglages(c.texte);
    EXPECT_EQ(lus.valides, c.valide) << c.texte;
    EXPECT_EQ(lus.port, c.port) << c.texte;
    if (c.valide) {
      EXPECT_TRUE(lus.ligne == c.ligne) << c.texte;
    }
  }
}

TEST(PortInstrumentLinux, DitSiSonPortExisteEtSOuvreSansEchouer) {
  BoutDeLigne bout;
  const CarteDesPorts ports;
  PortInstrumentLinux port(ports);
  port.ConfigurePort(bout.Nom() + ",38400,N,8,1", true);
  EXPECT_TRUE(port.PortExiste());
  EXPECT_TRUE(port.PortConfiguré());
  EXPECT_TRUE(port.PortOuvert());
  EXPECT_EQ(port.Vitesse(), 38400);
  EXPECT_EQ(port.Parité(), "N");
  EXPECT_EQ(port.BitsArrêt(), "1");
  port.EcritSortie("abc");
  EXPECT_TRUE(Attend([&] { return bout.Reçu() == "abc"; }));
  bout.Envoie("reste");
  EXPECT_TRUE(Attend([&] { return port.OctetsEnAttente() == 5; }));
  port.RéinitialisePort();
  EXPECT_EQ(port.LitEntrée({}), "");

  // Pulled and put back, then absent when it is set up: a reset finds it both times.
  for (const bool perdu : {true, false}) {
    bout.Débranche();
    if (perdu) (void)port.LitEntrée({});
    if (!perdu) port.ConfigurePort(bout.Nom() + ",9600,N,8,1", true);
    EXPECT_FALSE(port.PortExiste());
    EXPECT_FALSE(port.PortOuvert());
    EXPECT_EQ(port.PortConfiguré(), perdu);
    port.PortOuvert(true);  // in vain
    bout.Branche();
    port.RéinitialisePort();
    EXPECT_TRUE(port.PortOuvert());
    EXPECT_TRUE(port.PortConfiguré());
  }
}

}  // namespace
}  // namespace zuma::linux_
