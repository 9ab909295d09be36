// The frame codec over the real serial adapter, against an independent implementation of the
// protocol at the other end of the line.
#include <array>
#include <atomic>
#include <chrono>
#include <modbus/modbus.h>
#include <poll.h>
#include <string>
#include <thread>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include "core/outils_modbus.h"
#include "platform/linux/liaison_serie_linux.h"

namespace zuma::linux_ {
namespace {

using OutilsModbus::FormeValeurs;
using OutilsModbus::Résultat;
using OutilsModbus::Valeurs;

int OuvreBout() {
  const int maître = ::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK);
  ::grantpt(maître);
  ::unlockpt(maître);
  return maître;
}

// Two pseudo-terminals with a relay between their masters: a cable with a name at both ends.
class Câble {
 public:
  Câble() : relais_([this] { Relaie(); }) {}
  ~Câble() {
    fini_ = true;
    relais_.join();
    for (const int bout : bouts_) ::close(bout);
  }
  [[nodiscard]] std::string Bout(std::size_t rang) const { return ::ptsname(bouts_.at(rang)); }

 private:
  void Relaie() {
    while (!fini_) {
      std::array<pollfd, 2> attente{{{bouts_[0], POLLIN, 0}, {bouts_[1], POLLIN, 0}}};
      (void)::poll(attente.data(), attente.size(), 5);
      for (const std::size_t source : {std::size_t{0}, std::size_t{1}}) {
        std::array<char, 512> octets{};
        const ssize_t lus = ::read(bouts_.at(source), octets.data(), octets.size());
        if (lus > 0) (void)!::write(bouts_.at(1 - source), octets.data(), static_cast<size_t>(lus));
      }
    }
  }
  std::array<int, 2> bouts_{OuvreBout(), OuvreBout()};
  std::atomic<bool> fini_ = false;
  std::thread relais_;
};

constexpr int kEsclave = 17;
constexpr int kNombre = 32;

class Serveur {
 public:
  explicit Serveur(const std::string& port)
      : contexte_(::modbus_new_rtu(port.c_str(), 115200, 'N', 8, 1)),
        mémoire_(::modbus_mapping_new(kNombre, kNombre, kNombre, kNombre)) {
    ::modbus_set_slave(contexte_, kEsclave);
    ::modbus_set_indication_timeout(contexte_, 0, 100'000);
    // Behind a question to another slave it waits for that slave's answer, deaf to the next one.
    ::modbus_set_response_timeout(contexte_, 0, 50'000);
    ouvert_ = ::modbus_connect(contexte_) == 0;
    fil_ = std::thread([this] { Sert(); });
  }
  ~Serveur() {
    fini_ = true;
    fil_.join();
    ::modbus_close(contexte_);
    ::modbus_mapping_free(mémoire_);
    ::modbus_free(contexte_);
  }
  [[nodiscard]] bool Ouvert() const { return ouvert_; }
  modbus_mapping_t& Mémoire() { return *mémoire_; }
  /// Answers in the name of that slave instead of its own.
  void RépondEnTantQue(std::uint8_t esclave) { nom_ = esclave; }

 private:
  void Sert() {
    std::array<std::uint8_t, MODBUS_RTU_MAX_ADU_LENGTH> question{};
    while (!fini_) {
      const int longueur = ::modbus_receive(contexte_, question.data());
      if (longueur <= 0) continue;
      question[0] = nom_;
      (void)::modbus_reply(contexte_, question.data(), longueur, mémoire_);
    }
  }
  modbus_t* contexte_;
  modbus_mapping_t* mémoire_;
  std::atomic<std::uint8_t> nom_ = kEsclave;
  std::atomic<bool> fini_ = false;
  std::thread fil_;
  bool ouvert_ = false;
};

class UnPair : public testing::Test {
 protected:
  UnPair() {
    liaison.VitesseSérie(115200);
    liaison.BitsDeDonnées(8);
    liaison.BitsDeStop(1);
    liaison.PortSérie(1);
    liaison.OuvrePort();
  }
  Résultat Echange(std::uint8_t esclave, std::int32_t fonction, std::int32_t registre,
                   std::int32_t compte, std::span<const std::uint16_t> écrites = {}) {
    Octets question;
    OutilsModbus::ConstruitQuestion(esclave, fonction, registre, compte, écrites, question);
    (void)liaison.LitTampon({});
    liaison.EcritPort(question);
    Octets réponse;
    Résultat résultat = Résultat::Incomplète;
    const auto fin = std::chrono::steady_clock::now() + std::chrono::milliseconds(500);
    while (résultat == Résultat::Incomplète && std::chrono::steady_clock::now() < fin) {
      réponse += liaison.LitTampon({});
      résultat = OutilsModbus::DécodeRéponse(réponse, question, &valeurs, FormeValeurs::Mots);
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return résultat;
  }
  Câble câble;
  Serveur serveur{câble.Bout(1)};
  CarteDesPorts ports{{1, câble.Bout(0)}};
  LiaisonSérieLinux liaison{ports};
  Valeurs valeurs;
};

TEST_F(UnPair, LitEtEcritCeQueLePairTient) {
  ASSERT_TRUE(serveur.Ouvert());
  modbus_mapping_t& mémoire = serveur.Mémoire();
  for (int i = 0; i < kNombre; ++i) {
    mémoire.tab_registers[i] = static_cast<std::uint16_t>(1000 * i + 1);
    mémoire.tab_input_registers[i] = static_cast<std::uint16_t>(65535 - i);
  }
  ASSERT_EQ(Echange(kEsclave, 3, 4, 10), Résultat::Bonne);
  ASSERT_EQ(valeurs.Nombre(), 10);
  EXPECT_EQ(valeurs.Item(1), 4001);
  EXPECT_EQ(valeurs.Item(10), 13001);
  ASSERT_EQ(Echange(kEsclave, 4, 0, 3), Résultat::Bonne);
  EXPECT_EQ(valeurs.Item(3), 65533);
  const std::array<std::uint16_t, 3> consignes{0xFFFF, 12, 34};
  ASSERT_EQ(Echange(kEsclave, 16, 20, 3, consignes), Résultat::Bonne);
  EXPECT_EQ(mémoire.tab_registers[20], 0xFFFF);
  EXPECT_EQ(mémoire.tab_registers[22], 34);
  ASSERT_EQ(Echange(kEsclave, 6, 5, 1, std::span(consignes).first(1)), Résultat::Bonne);
  EXPECT_EQ(mémoire.tab_registers[5], 0xFFFF);
  const std::array<std::uint16_t, 10> bobines{1, 0, 1, 1, 0, 0, 1, 1, 1, 0};
  ASSERT_EQ(Echange(kEsclave, 15, 3, 10, bobines), Résultat::Bonne);
  for (std::size_t i = 0; i < bobines.size(); ++i) {
    EXPECT_EQ(mémoire.tab_bits[3 + i], bobines.at(i)) << i;
  }
}

TEST_F(UnPair, DitSesRefusEtSonSilence) {
  ASSERT_TRUE(serveur.Ouvert());
  const std::array<std::uint16_t, 1> une{1};
  EXPECT_EQ(Echange(kEsclave, 3, kNombre, 1), Résultat::LectureRefusée);
  EXPECT_EQ(Echange(kEsclave, 6, kNombre, 1, une), Résultat::EcritureRefusée);
  EXPECT_EQ(Echange(kEsclave, 16, kNombre, 1, une), Résultat::EcritureRefusée);
  EXPECT_EQ(Echange(kEsclave + 1, 3, 0, 1), Résultat::Incomplète) << "another slave stays silent";
  serveur.RépondEnTantQue(kEsclave + 1);
  EXPECT_EQ(Echange(kEsclave, 3, 0, 1), Résultat::AutreEsclave);
}

}  // namespace
}  // namespace zuma::linux_
