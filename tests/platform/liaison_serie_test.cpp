#include <chrono>
#include <thread>

#include <gtest/gtest.h>

#include "core/echec.h"
#include "outils/cas.h"
#include "platform/bout_de_ligne.h"
#include "platform/linux/liaison_serie_linux.h"

namespace zuma::linux_ {
namespace {

using essai::BoutDeLigne;
using namespace std::chrono_literals;

// The kernel hands bytes over asynchronously.
template <class Condition>
bool Attend(Condition&& condition) {
  const auto fin = std::chrono::steady_clock::now() + 3000ms;
  while (!condition()) {
    if (std::chrono::steady_clock::now() > fin) return false;
    std::this_thread::sleep_for(2ms);
  }
  return true;
}

TEST(LiaisonSérieLinux, PasseTousLesOctetsSansLesToucher) {
  BoutDeLigne bout;
  const CarteDesPorts ports{{3, bout.nom}};
  LiaisonSérieLinux liaison(ports);
  liaison.VitesseSérie(1953125);
  liaison.PortSérie(3);
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
  const CarteDesPorts ports{{1, bout.nom}};
  LiaisonSérieLinux liaison(ports);
  liaison.PortSérie(1);
  liaison.OuvrePort();
  bout.Débranche();
  EXPECT_TRUE(Attend([&] { return liaison.LitTampon({}).empty() && liaison.EtatPort() == 0; }));
  EXPECT_THROW(liaison.EcritPort("x"), Echec);
  bout.Branche();
  EXPECT_TRUE(Attend([&] { return liaison.OctetsReçus() == 0 && liaison.EtatPort() == 1; }));
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
      EXPECT_PRED_FORMAT2(testing::IsSubstring, nom, e.Description());
    }
    EXPECT_EQ(liaison.EtatPort(), 0);
  }
}

TEST(PortInstrumentLinux, LitSesRéglagesDUnSeulTexte) {
  for (const auto& [texte, port, ligne] :
       essai::Cas<const char*, const char*, std::optional<RéglagesPort>>{
           {"3,9600,N,8,1", "3", RéglagesPort{9600, 0, 8, 1}},
           {"/dev/ttyUSB0, 115200, E, 7, 2", "/dev/ttyUSB0", RéglagesPort{115200, 2, 7, 2}},
           {"19200,O,5,1.5", "", RéglagesPort{19200, 1, 5, 15}},
           {"3,9600,X,8,1", "3", {}},
           {"3,9600,N,9,1", "3", {}},
           {"3,-1,N,8,1", "3", {}},
           {"3,9600,N,8", "", {}},
           {"", "", {}},
           {",,,,", "", {}}}) {
    const RéglagesInstrument lus = LitRéglages(texte);
    EXPECT_EQ(lus.valides, ligne.has_value()) << texte;
    EXPECT_EQ(lus.port, port) << texte;
    EXPECT_TRUE(!ligne || lus.ligne == *ligne) << texte;
  }
}

TEST(PortInstrumentLinux, DitSiSonPortExisteEtSOuvreSansEchouer) {
  BoutDeLigne bout;
  const CarteDesPorts ports;
  PortInstrumentLinux port(ports);
  port.ConfigurePort(bout.nom + ",38400,N,8,1", true);
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
    if (!perdu) port.ConfigurePort(bout.nom + ",9600,N,8,1", true);
    EXPECT_FALSE(port.PortExiste());
    EXPECT_FALSE(port.PortOuvert());
    EXPECT_EQ(port.PortConfiguré(), perdu);
    port.PortOuvert(true);
    EXPECT_FALSE(port.PortConfiguré()) << "it was asked to open, and is not";
    bout.Branche();
    port.RéinitialisePort();
    EXPECT_TRUE(port.PortOuvert());
    EXPECT_TRUE(port.PortConfiguré());
  }
  port.ConfigurePort(bout.nom + ",9600,X,8,1", false);
  port.PortOuvert(true);
  EXPECT_FALSE(port.PortOuvert()) << "never with settings that were not understood";
}

}  // namespace
}  // namespace zuma::linux_
