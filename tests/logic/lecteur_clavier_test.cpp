// Names of the keys, and the kernel's key events behind them.
#include "logic/lecteur_clavier.h"

#include <filesystem>
#include <fstream>
#include <vector>

#include <gtest/gtest.h>
#include <linux/input-event-codes.h>

#include "outils/dossier_provisoire.h"
#include "platform/linux/clavier_evdev.h"
#include "sim/clavier_simule.h"

namespace zuma {
namespace {

using linux_::DispositionClavier;

struct Lecture {
  std::string_view nom;
  std::int32_t modificateurs = -1;
};

Lecture Lit(const EtatClavier& état) {
  Lecture lue;
  clavier::LitToucheEnfoncée(état, lue.nom, &lue.modificateurs);
  return lue;
}

TEST(LeLecteurDeClavier, NommeUneToucheSeule) {
  const struct {
    std::vector<std::uint8_t> touches;
    std::string_view nom;
    std::int32_t modificateurs;
  } cas[] = {
      {{}, "", 0},
      {{13}, "RETURN", 0},
      {{27}, "ESCAPE", 0},
      {{32}, "SPACE", 0},
      {{33}, "", 0},  // page up has no name
      {{34}, "NEXT", 0},
      {{35}, "END", 0},
      {{36}, "HOME", 0},
      {{37}, "LEFT", 0},
      {{38}, "UP", 0},
      {{39}, "RIGHT", 0},
      {{40}, "DOWN", 0},
      {{46}, "DELETE", 0},
      {{'0'}, "0", 0},
      {{'9'}, "9", 0},
      {{'A'}, "A", 0},
      {{'Z'}, "Z", 0},
      {{112}, "F1", 0},
      {{123}, "F12", 0},
      {{124}, "", 0},
      {{16}, "", 0},
      {{13, 16}, "RETURN", 128},
      {{13, 17, 18}, "RETURN", 96},
      {{16, 17, 18}, "", 96},
      {{'A', 'B'}, "", 0},
      {{16, 'A'}, "", 0},  // shift is scanned first
      {{13, 16, 'A'}, "", 0},
      {{33, 'A'}, "", 0},
  };
  for (const auto& c : cas) {
    EtatClavier état{};
    état[200] = 0x7F;  // not down: the top bit alone counts
    std::string message;
    for (const std::uint8_t touche : c.touches) {
      état[touche] = 0x80;
      message += std::to_string(touche) + " ";
    }
    const Lecture lue = Lit(état);
    EXPECT_EQ(lue.nom, c.nom) << message;
    EXPECT_EQ(lue.modificateurs, c.modificateurs) << message;
    std::string_view sansPoids;
    clavier::LitToucheEnfoncée(état, sansPoids);
    EXPECT_EQ(sansPoids, c.nom) << message;
  }
}

TEST(LeLecteurDeClavier, LâcheLesTouchesEtGardeLesVerrous) {
  sim::ClavierSimulé clavier;
  const std::uint8_t verrous[] = {20, 144, 145};
  for (const std::uint8_t verrou : verrous) clavier.Enfonce(verrou);
  clavier.Enfonce(13);
  clavier.Enfonce(65);
  clavier::LâcheLesTouches(clavier);
  EtatClavier attendu{};
  for (const std::uint8_t verrou : verrous) attendu[verrou] = 0x81;
  EXPECT_EQ(clavier.LitEtat(), attendu);
}

TEST(LesTouchesDuNoyau, SuiventLaDisposition) {
  const struct {
    unsigned code;
    int azerty;
    int qwerty;
  } cas[] = {
      {KEY_Q, 'A', 'Q'},        {KEY_A, 'Q', 'A'},   {KEY_W, 'Z', 'W'},       {KEY_Z, 'W', 'Z'},
      {KEY_L, 'L', 'L'},        {KEY_M, 0, 'M'},     {KEY_SEMICOLON, 'M', 0}, {KEY_0, '0', '0'},
      {KEY_9, '9', '9'},        {KEY_F1, 112, 112},  {KEY_F10, 121, 121},     {KEY_F12, 123, 123},
      {KEY_KP0, 96, 96},        {KEY_KP9, 105, 105}, {KEY_KPENTER, 13, 13},   {KEY_DELETE, 46, 46},
      {KEY_RIGHTSHIFT, 16, 16}, {KEY_POWER, 0, 0},   {KEY_CNT + 5U, 0, 0},
  };
  for (const auto& c : cas) {
    EXPECT_EQ(linux_::ToucheVirtuelle(c.code, DispositionClavier::Azerty), c.azerty) << c.code;
    EXPECT_EQ(linux_::ToucheVirtuelle(c.code, DispositionClavier::Qwerty), c.qwerty) << c.code;
  }
}

TEST(LesTouchesDuNoyau, NeComptentPasUneToucheLâchéeParLeProgrammeAvantUnNouvelAppui) {
  linux_::EtatTouches touches(DispositionClavier::Qwerty);
  touches.Reçoit(KEY_A, 1);
  EXPECT_EQ(touches.Etat()['A'], 0x81);
  touches.Ecrit({});
  touches.Reçoit(KEY_A, 2);  // auto-repeat
  EXPECT_EQ(Lit(touches.Etat()).nom, "");
  touches.Reçoit(KEY_A, 0);
  touches.Reçoit(KEY_A, 1);
  EXPECT_EQ(Lit(touches.Etat()).nom, "A");
  touches.Reçoit(KEY_POWER, 1);
  EXPECT_EQ(Lit(touches.Etat()).nom, "A");
}

TEST(LeClavierDeLaMachine, DitQuIlNYEnAPasEtNAAucuneToucheEnfoncée) {
  const essai::DossierProvisoire dossier;
  std::ofstream(dossier.Chemin() / "event0") << "ceci n'est pas un clavier";
  linux_::ClavierEvdev clavier(DispositionClavier::Azerty, dossier.Chemin().string());
  EXPECT_EQ(clavier.LitEtat(), EtatClavier{});
  EXPECT_NE(clavier.Défaut().find(dossier.Chemin().string()), std::string::npos);
  linux_::ClavierEvdev nulle(DispositionClavier::Azerty, (dossier.Chemin() / "rien").string());
  EXPECT_EQ(nulle.LitEtat(), EtatClavier{});
  EXPECT_FALSE(nulle.Défaut().empty());
}

}  // namespace
}  // namespace zuma
