#include <array>
#include <chrono>
#include <filesystem>
#include <modbus/modbus.h>
#include <thread>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include "base/echec.h"
#include "base/outils_modbus.h"
#include "outils/cas.h"
#include "outils/dossier_provisoire.h"
#include "platform/linux/liaison_serie_linux.h"

namespace zuma::linux_ {
namespace {

using namespace std::chrono_literals;

/// The other end of a line: a pseudo-terminal as the system makes it, reached under a name that can
/// be pulled and put back like a cable.
class BoutDeLigne {
 public:
  BoutDeLigne() { Branche(); }
  ~BoutDeLigne() { Débranche(); }
  void Branche() {
    maître = ::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK);
    ::grantpt(maître);
    ::unlockpt(maître);
    std::filesystem::create_symlink(::ptsname(maître), nom);
  }
  void Débranche() {
    ::close(std::exchange(maître, -1));
    std::filesystem::remove(nom);
  }
  void Envoie(const Octets& octets) const { (void)!::write(maître, octets.data(), octets.size()); }
  [[nodiscard]] Octets Reçu() const {
    Octets tampon(256, '\0');
    const ssize_t n = ::read(maître, tampon.data(), tampon.size());
    return tampon.substr(0, static_cast<std::size_t>(n > 0 ? n : 0));
  }

  const essai::DossierProvisoire dossier;
  const std::string nom = dossier.Fichier("port");
  int maître = -1;
};

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

// --- The frame codec over it, against an independent implementation of the protocol

using OutilsModbus::FormeValeurs;
using OutilsModbus::Résultat;

constexpr int kEsclave = 17;
constexpr int kNombre = 32;

class UnPair : public testing::Test {
 protected:
  UnPair() {
    liaison.VitesseSérie(115200);
    liaison.BitsDeDonnées(8);
    liaison.BitsDeStop(1);
    liaison.PortSérie(1);
    liaison.OuvrePort();
    ::modbus_set_socket(pair, bout.maître);
    ::modbus_set_slave(pair, kEsclave);
    ::modbus_set_indication_timeout(pair, 0, 100'000);
    // Behind a question to another slave it waits for that slave's answer.
    ::modbus_set_response_timeout(pair, 0, 50'000);
  }
  ~UnPair() override {
    ::modbus_mapping_free(mémoire);
    ::modbus_free(pair);
  }
  Résultat Echange(std::uint8_t esclave, std::int32_t fonction, std::int32_t registre,
                   std::int32_t compte, std::span<const std::uint16_t> écrites = {}) {
    Octets question;
    OutilsModbus::ConstruitQuestion(esclave, fonction, registre, compte, écrites, question);
    (void)liaison.LitTampon({});
    liaison.EcritPort(question);
    std::array<std::uint8_t, MODBUS_RTU_MAX_ADU_LENGTH> lue{};
    int longueur = 0;
    while ((longueur = ::modbus_receive(pair, lue.data())) == 0) continue;
    if (longueur > 0) {
      lue[0] = nom;
      (void)::modbus_reply(pair, lue.data(), longueur, mémoire);
    }
    Octets réponse;
    Résultat résultat = Résultat::Incomplète;
    const auto fin = std::chrono::steady_clock::now() + 500ms;
    while (résultat == Résultat::Incomplète && std::chrono::steady_clock::now() < fin) {
      réponse += liaison.LitTampon({});
      résultat = OutilsModbus::DécodeRéponse(réponse, question, &valeurs, FormeValeurs::Mots);
      std::this_thread::sleep_for(1ms);
    }
    return résultat;
  }
  BoutDeLigne bout;
  modbus_t* pair = ::modbus_new_rtu(bout.nom.c_str(), 115200, 'N', 8, 1);
  modbus_mapping_t* mémoire = ::modbus_mapping_new(kNombre, kNombre, kNombre, kNombre);
  std::uint8_t nom = kEsclave;  // in whose name it answers
  CarteDesPorts ports{{1, bout.nom}};
  LiaisonSérieLinux liaison{ports};
  OutilsModbus::Valeurs valeurs;
};

TEST_F(UnPair, LitEtEcritCeQueLePairTient) {
  for (int i = 0; i < kNombre; ++i) {
    mémoire->tab_registers[i] = static_cast<std::uint16_t>(1000 * i + 1);
    mémoire->tab_input_registers[i] = static_cast<std::uint16_t>(65535 - i);
  }
  ASSERT_EQ(Echange(kEsclave, 3, 4, 10), Résultat::Bonne);
  EXPECT_EQ(valeurs.Nombre(), 10);
  EXPECT_EQ(valeurs.Item(1), 4001);
  EXPECT_EQ(valeurs.Item(10), 13001);
  ASSERT_EQ(Echange(kEsclave, 4, 0, 3), Résultat::Bonne);
  EXPECT_EQ(valeurs.Item(3), 65533);
  const std::array<std::uint16_t, 3> consignes{0xFFFF, 12, 34};
  ASSERT_EQ(Echange(kEsclave, 16, 20, 3, consignes), Résultat::Bonne);
  EXPECT_EQ(mémoire->tab_registers[20], 0xFFFF);
  EXPECT_EQ(mémoire->tab_registers[22], 34);
  ASSERT_EQ(Echange(kEsclave, 6, 5, 1, std::span(consignes).first(1)), Résultat::Bonne);
  EXPECT_EQ(mémoire->tab_registers[5], 0xFFFF);
  const std::array<std::uint16_t, 10> bobines{1, 0, 1, 1, 0, 0, 1, 1, 1, 0};
  ASSERT_EQ(Echange(kEsclave, 15, 3, 10, bobines), Résultat::Bonne);
  for (std::size_t i = 0; i < bobines.size(); ++i) {
    EXPECT_EQ(mémoire->tab_bits[3 + i], bobines.at(i)) << i;
  }
}

TEST_F(UnPair, DitSesRefusEtSonSilence) {
  const std::array<std::uint16_t, 1> une{1};
  EXPECT_EQ(Echange(kEsclave, 3, kNombre, 1), Résultat::LectureRefusée);
  EXPECT_EQ(Echange(kEsclave, 6, kNombre, 1, une), Résultat::EcritureRefusée);
  EXPECT_EQ(Echange(kEsclave, 16, kNombre, 1, une), Résultat::EcritureRefusée);
  EXPECT_EQ(Echange(kEsclave + 1, 3, 0, 1), Résultat::Incomplète) << "another slave stays silent";
  nom = kEsclave + 1;
  EXPECT_EQ(Echange(kEsclave, 3, 0, 1), Résultat::AutreEsclave);
}

}  // namespace
}  // namespace zuma::linux_
