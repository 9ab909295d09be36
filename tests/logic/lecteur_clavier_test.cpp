// Names of the keys, and the kernel's key events behind them.
#include "logic/lecteur_clavier.h"

#include <fstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <linux/input-event-codes.h>

#include "outils/cas.h"
#include "outils/dossier_provisoire.h"
#include "platform/linux/clavier_evdev.h"
#include "sim/clavier_simule.h"

namespace zuma::essai {
namespace {

using linux_::DispositionClavier;

std::string Nom(const EtatClavier& état, std::int32_t* modificateurs = nullptr) {
  std::string_view nom = "F1";  // of the look before
  clavier::LitToucheEnfoncée(état, nom, modificateurs);
  return std::string(nom);
}

void Vérifie(const std::vector<std::uint8_t>& touches, const char* nom, int modificateurs = 0) {
  EtatClavier état{};
  état[200] = 0x7F;  // not down: the top bit alone counts
  for (const std::uint8_t touche : touches) état[touche] = 0x80;
  std::int32_t lus = -1;
  EXPECT_EQ(Nom(état, &lus), nom) << testing::PrintToString(touches);
  EXPECT_EQ(lus, modificateurs) << testing::PrintToString(touches);
}

TEST(LeLecteurDeClavier, NommeUneToucheSeule) {
  const Cas<std::uint8_t, const char*> cas{
      {13, "RETURN"}, {27, "ESCAPE"}, {32, "SPACE"}, {33, ""},   {34, "NEXT"},
      {35, "END"},    {36, "HOME"},   {37, "LEFT"},  {38, "UP"}, {39, "RIGHT"},
      {40, "DOWN"},   {46, "DELETE"}, {'0', "0"},    {'9', "9"}, {'Z', "Z"},
      {112, "F1"},    {123, "F12"},   {124, ""},     {16, ""}};
  for (const auto& [touche, nom] : cas) Vérifie({touche}, nom);
  Vérifie({}, "");
  Vérifie({13, 16}, "RETURN", 128);
  Vérifie({13, 17, 18}, "RETURN", 96);
  Vérifie({'A', 'B'}, "");
  Vérifie({16, 'A'}, "");  // shift is scanned first
  Vérifie({13, 16, 'A'}, "");
}

TEST(LeLecteurDeClavier, LâcheLesTouchesEtGardeLesVerrous) {
  sim::ClavierSimulé clavier;
  EtatClavier attendu{};
  for (const std::uint8_t verrou : {touche::kVerrMaj, touche::kVerrNum, touche::kArrêtDéfil}) {
    clavier.Enfonce(verrou);
    attendu[verrou] = 0x81;
  }
  clavier.Enfonce(13);
  clavier::LâcheLesTouches(clavier);
  EXPECT_EQ(clavier.LitEtat(), attendu);
}

TEST(LesTouchesDuNoyau, SuiventLaDisposition) {
  const Cas<unsigned, int, int> cas{
      {KEY_Q, 'A', 'Q'},    {KEY_W, 'Z', 'W'},     {KEY_M, 0, 'M'},     {KEY_SEMICOLON, 'M', 0},
      {KEY_0, '0', '0'},    {KEY_F12, 123, 123},   {KEY_KP9, 105, 105}, {KEY_RIGHTSHIFT, 16, 16},
      {KEY_DELETE, 46, 46}, {KEY_KPENTER, 13, 13}, {KEY_POWER, 0, 0},   {KEY_CNT + 5U, 0, 0}};
  for (const auto& [code, azerty, qwerty] : cas) {
    EXPECT_EQ(linux_::ToucheVirtuelle(code, DispositionClavier::Azerty), azerty) << code;
    EXPECT_EQ(linux_::ToucheVirtuelle(code, DispositionClavier::Qwerty), qwerty) << code;
  }
}

TEST(LesTouchesDuNoyau, NeComptentPasUneToucheLâchéeParLeProgrammeAvantUnNouvelAppui) {
  linux_::EtatTouches touches(DispositionClavier::Qwerty);
  touches.Reçoit(KEY_A, 1);
  EXPECT_EQ(touches.Etat()['A'], 0x81);
  touches.Ecrit({});
  touches.Reçoit(KEY_A, 2);  // auto-repeat
  EXPECT_EQ(Nom(touches.Etat()), "");
  touches.Reçoit(KEY_A, 0);
  touches.Reçoit(KEY_A, 1);
  touches.Reçoit(KEY_POWER, 1);
  EXPECT_EQ(Nom(touches.Etat()), "A");
}

TEST(LeClavierDeLaMachine, DitQuIlNYEnAPasEtNAAucuneToucheEnfoncée) {
  const DossierProvisoire dossier;
  std::ofstream(dossier.Chemin() / "event0") << "ceci n'est pas un clavier";
  for (const std::string& chemin :
       {dossier.Chemin().string(), (dossier.Chemin() / "rien").string()}) {
    linux_::ClavierEvdev clavier(DispositionClavier::Azerty, chemin);
    EXPECT_EQ(clavier.LitEtat(), EtatClavier{});
    EXPECT_NE(clavier.Défaut().find(chemin), std::string::npos);
  }
}

}  // namespace
}  // namespace zuma::essai
