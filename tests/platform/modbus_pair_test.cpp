// The frame codec over the real serial adapter, against an independent implementation of the
// protocol at the other end of the line.
#include <array>
#include <chrono>
#include <modbus/modbus.h>
#include <thread>

#include <gtest/gtest.h>

#include "core/outils_modbus.h"
#include "platform/bout_de_ligne.h"
#include "platform/linux/liaison_serie_linux.h"

namespace zuma::linux_ {
namespace {

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
    const auto fin = std::chrono::steady_clock::now() + std::chrono::milliseconds(500);
    while (résultat == Résultat::Incomplète && std::chrono::steady_clock::now() < fin) {
      réponse += liaison.LitTampon({});
      résultat = OutilsModbus::DécodeRéponse(réponse, question, &valeurs, FormeValeurs::Mots);
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return résultat;
  }
  essai::BoutDeLigne bout;
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
