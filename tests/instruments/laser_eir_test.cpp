// The laser extensometer: its protocol on bytes, its turn of requests over a simulated line, and
// its board.
#include "instruments/laser_eir.h"

#include <functional>

#include <gtest/gtest.h>

#include "instruments/liaison_en_port.h"
#include "outils/allocations.h"
#include "outils/banc_instrument.h"
#include "outils/cas.h"
#include "platform/linux/parametres.h"
#include "sim/laser_simule.h"

namespace zuma {
namespace {

using enum EnumEIRCommande;

// What a reply does: a word, or the letters of the states that it sets and the measure, from all
// off and a measure of 7.
std::string Effet(EnumEIRCommande commande, const char* envoyée, const Octets& reçue) {
  const auto* échange = trames_laser::EchangeDe(commande);
  if (échange == nullptr) return "muette";
  if (échange->incomplète(reçue.size())) return "incomplète";
  if (!échange->valide(*échange, reçue)) return "fausse";
  trames_laser::EtatLu état{.ReadValue = 7};
  Octets réponse = reçue;
  échange->prend(envoyée, réponse, état);
  return std::string(état.LaserState ? "L" : "") + (état.EchoState ? "E" : "") +
         (état.ZeroState ? "Z" : "") + TexteDeNombre(état.ReadValue);
}

TEST(TramesDuLaser, JugeChaqueRéponse) {
  for (const auto& [commande, envoyée, reçue, effet] :
       essai::Cas<EnumEIRCommande, const char*, Octets, const char*>{
           {ReadEcho, "", "E0", "incomplète"},
           {ReadEcho, "", "E0:", "E7"},
           {ReadEcho, "", "E1:", "7"},
           {ReadEcho, "", "Z0:", "fausse"},
           {ReadEcho, "", "E0;", "fausse"},
           {ReadZero, "", "Z0:", "Z7"},
           {ReadUnit, "", "UM:", "fausse"},
           {ReadUnit, "", ":MU", "7"},
           {ReadTargetDistance, "", "T12:", "7"},
           {ReadMeasuringType, "", "T1:", "fausse"},
           {ReadLaserState, "", "L0:", "L7"},
           {ReadDataBinary, "", "abcd", "incomplète"},
           {ReadDataBinary, "", Octets("\x01\x02\x00", 3), "513"},
           {ReadDataBinary, "", "\xFF\xFF\x7F", "0"},
           {ReadDataBinary, "", Octets("\x00\x00\x80", 3), "-8388608"},
           {WriteEcho, "1", ":", "Z7"},
           {WriteZero, "1", "?", "fausse"},
           {WriteUnit, "M", "", "incomplète"},
           {WriteTargetDistance, "5", "T5:", "7"},
           {writeLaserState, "1", ":", "L7"},
           {writeLaserState, "1", "L:", "incomplète"},
           {ReadCounts, "", ":", "muette"},
           {ActionNextSegment, "", ":", "muette"}}) {
    EXPECT_EQ(Effet(commande, envoyée, reçue), effet) << reçue;
  }
}

// The laser, and all that it is asked.
class LaserEcouté : public sim::LaserSimulé {
 public:
  using LaserSimulé::LaserSimulé;
  void Reçoit(std::string_view octets, sim::LigneSérie& ligne) override {
    demandes += octets;
    LaserSimulé::Reçoit(octets, ligne);
  }
  Octets demandes;
};

class UneCarteLaser : public testing::Test, public essai::BancInstrument {
 public:
  UneCarteLaser() {
    essai::LitCarte(carte, "Extensometre EIR LASER", "3,9600,N,8,1");
    laser->demandes.reserve(1000);
    prise.débit = 115'200;  // an answer within each pass
  }
  // Passes of 10 ms, and what the laser was asked in them.
  Octets Passe(int fois) {
    laser->demandes.clear();
    for (; fois > 0; --fois) {
      carte.MetàJour();
      horloge->Avance(10'000);
    }
    return laser->demandes;
  }
  [[nodiscard]] double Mesure() const { return Le(mesure, 0).ValeurCanal(); }
  // Measure, and states: beam, echo, zero, silence.
  [[nodiscard]] std::string Lus() const {
    std::string lus = TexteDeNombre(Mesure()) + " ";
    for (const double état : Lues(états)) lus += état == -1 ? '1' : '0';
    return lus;
  }

  Ref<LaserEcouté> laser = Crée<LaserEcouté>(*horloge);
  sim::LigneSérie& prise = liaisons.Attache(3, laser);
  FonctionRef mesure = Ajoute("Entrée Analogique", {0, 1});
  FonctionRef états = Ajoute("Entrée Logique", {0, 1, 2, 3});
};

TEST_F(UneCarteLaser, MesureDixFoisPuisLitUnEtatTourATour) {
  laser->extension = -1234;
  carte.Initialise();
  EXPECT_EQ(laser->demandes, "T1\rE0\rM1\rUM\rZ0\r") << "1 without a parameter";
  const Octets dix = "B\rB\rB\rB\rB\rB\rB\rB\rB\rB\r";
  EXPECT_EQ(Passe(33), dix + "E\r" + dix + "Z\r" + dix + "L\r");
  (void)Passe(1);
  EXPECT_EQ(Lus(), "-1234 1000");
  EXPECT_EQ(Le(mesure, 1).ValeurCanal(), 0) << "no value has that number";
  laser->écho = laser->zéro = true;
  laser->laser = false;
  const std::int64_t avant = essai::Allocations();
  for (int i = 0; i < 34; ++i) {
    carte.MetàJour();
    horloge->Avance(10'000);
  }
  EXPECT_EQ(essai::Allocations(), avant);
  EXPECT_EQ(Lus(), "0 0110") << "no measure without beam";
  while (Passe(1) != "E\r") continue;
  EXPECT_EQ(Passe(9), dix.substr(2));
  prise.pannes.muette = true;
  EXPECT_EQ(Passe(11), "B\rE\r") << "behind the tenth measure a try again asks the last state";
  prise.pannes.muette = false;
  EXPECT_EQ(Passe(12), "E\rZ\rB\r");
  prise.pannes.muette = true;
  laser->demandes.clear();
  carte.Initialise();
  EXPECT_EQ(laser->demandes, "T1\rT1\rT1\rE0\rE0\rE0\rM1\rM1\rM1\rUM\rUM\rUM\rZ0\rZ0\rZ0\r");
  EXPECT_TRUE(registre->entrées.empty());
}

TEST_F(UneCarteLaser, PrendSaDistanceDansUnParamètre) {
  linux_::Parametres paramètres;
  const auto distance = paramètres.Ajoute(1, "250", "Distance");
  carte.ParamètresDepuisBD(essai::UneLigne({{"Config EIR", "Distance"}}));
  carte.Lien(paramètres.Collection());
  (void)Passe(1);
  carte.Initialise();
  (void)Passe(1);
  carte.Initialise();  // in the midst of an exchange
  EXPECT_TRUE(laser->demandes.ends_with("T250\rE0\rM1\rUM\rZ0\r"));
  distance->ValeurParamètre("loin");
  carte.Initialise();
  EXPECT_TRUE(registre->Contient("paramètre 'Distance' = 'loin'"));
}

TEST_F(UneCarteLaser, DitLeSilenceALaQuatrièmeFoisEtGardeSaMesure) {
  carte.Initialise();
  laser->extension = 77;
  (void)Passe(1);
  for (int fois = 0; fois < 2; ++fois) {
    prise.pannes.muette = true;
    (void)Passe(1);
    EXPECT_EQ(Passe(39), "B\rB\rB\r") << "behind the one that is out";
    EXPECT_EQ(Lus(), "77 0000");
    (void)Passe(1);
    EXPECT_EQ(Lus(), "77 0001");
    prise.pannes.muette = false;
    if (fois == 0) (void)Passe(4);
  }
  EXPECT_EQ(Passe(6), "B\rE\rB\rB\rB\r") << "and a state that tells whose answers come";
  EXPECT_EQ(Lus(), "77 0000");
  for (const char* parasite : {"ab", "abcd", "???", ""}) {
    laser->réponseForcée = parasite;
    (void)Passe(300);
  }
  EXPECT_EQ(Mesure(), 77) << "measures again after garbage";
}

// Whatever a byte too many, a byte lost or a late answer does to the frames, at whatever instant it
// falls and however often the laser is looked at: no measure is wrong, and the next ones are right.
TEST_F(UneCarteLaser, RetrouveSesTrames) {
  using Gêne = std::function<void()>;
  // The longest pause without measure, and how long the disturbance lasts, in milliseconds.
  const essai::Cas<const char*, Gêne, int, int> cas{
      {"octet parasite", [&] { prise.Emet("\x5A", 0); }, 150, 20},
      {"deux octets", [&] { prise.Emet("E0", 0); }, 150, 20},
      {"octet perdu", [&] { prise.pannes.coupée = true; }, 170, 20},
      {"réponse en retard de 110 ms", [&] { laser->latence = 110'000; }, 400, 20},
      {"réponse en retard de 350 ms", [&] { laser->latence = 350'000; }, 900, 20},
      {"réponses lentes", [&] { laser->latence = 110'000; }, 900, 260},
      {"question perdue", [&] { prise.pannes.sourde = true; }, 400, 20}};
  prise.débit = 0;
  int changées = 0;
  for (const auto& [quoi, gêne, pauseMax, durée] : cas) {
    for (const int passe : {1000, 5000, 10'000}) {
      for (int essai = 0; essai < 8 * 11; ++essai) {
        SCOPED_TRACE(testing::Message() << quoi << " " << passe << " " << essai);
        const int phase = essai / 11 * 3;
        const int échange = essai % 11;  // ten measures and a state
        const auto tourne = [&](int millisecondes, int phaseEnMicrosecondes = 0) {
          int immobile = 0;
          int plusLongue = 0;
          double avant = Mesure();
          horloge->Avance(phaseEnMicrosecondes);
          for (int t = 0; t < millisecondes * 1000; t += passe) {
            horloge->Avance(passe);
            laser->extension += passe / 1000.0;
            carte.MetàJour();
            immobile = Mesure() == avant ? immobile + passe / 1000 : 0;
            plusLongue = std::max(plusLongue, immobile);
            changées += Mesure() == avant ? 0 : 1;
            avant = Mesure();
            EXPECT_NEAR(avant, laser->extension, 1000);
          }
          return plusLongue;
        };
        laser->extension = 70'000;
        carte.Initialise();
        horloge->Avance(20'000);
        for (int i = 0; i < 300 && std::abs(Mesure() - laser->extension) > 100; ++i) {
          carte.MetàJour();
          horloge->Avance(passe);
        }
        ASSERT_LT(tourne(200), 35);
        laser->demandes.clear();
        while (laser->demandes.size() / 2 < static_cast<std::size_t>(échange)) tourne(passe / 1000);
        gêne();
        const int pause = tourne(durée, phase * 800);
        prise.pannes = {};
        laser->latence = 5000;
        EXPECT_LT(pause + tourne(pauseMax + 50), pauseMax);
        EXPECT_LT(tourne(200), 35);
        EXPECT_TRUE(Lus().ends_with("0"));
        if (HasFailure()) return;
      }
    }
  }
  EXPECT_GT(changées, 10'000);
}

TEST_F(UneCarteLaser, RessaieChaqueSecondeUnPortAbsentOuPerdu) {
  laser->extension = 5;
  prise.pannes.débranchée = true;
  carte.Initialise();
  EXPECT_TRUE(registre->Contient("COM3 absent"));
  for (int fois = 1; fois <= 2; ++fois) {
    (void)Passe(205);
    EXPECT_TRUE(Lus().ends_with("1")) << "an old measure is told as one";
    prise.pannes.débranchée = false;
    (void)Passe(80);
    EXPECT_EQ(prise.ouvertures, fois - 1) << "not before its second is over";
    (void)Passe(40);
    EXPECT_EQ(prise.ouvertures, fois);
    EXPECT_TRUE(Lus().starts_with("5 ") && Lus().ends_with("0"));
    const std::size_t réglé = laser->demandes.find("E0\rM1\rUM\rZ0\r");
    EXPECT_LT(réglé, laser->demandes.find('B')) << "measures of a laser in inches are none";
    laser->demandes.clear();
    prise.pannes.débranchée = true;
  }
  EXPECT_EQ(registre->entrées.size(), 1U);
}

TEST_F(UneCarteLaser, SertUnHôteSansCarte) {
  const auto port = Crée<LiaisonEnPort>(liaisons.CréeLiaison());
  port->ConfigurePort("COM4,9600,N,8,1", true);
  EXPECT_FALSE(port->PortConfiguré() || port->PortExiste());
  port->ConfigurePort("3,9600,N,8,1", false);
  EXPECT_TRUE(port->PortConfiguré() && port->PortExiste() && !port->PortOuvert());
  {
    LASER_EIR seul(plateforme);
    seul.TimerExact(horloge);
    seul.MaComm(port);
    seul.OpenPort();
    seul.LaserState(true);
    seul.EchoState(true);
    seul.ZeroState(true);
    EXPECT_EQ(laser->demandes, "") << "wishes";
    seul.EnvoieLaserState(EnumState::StateUNDEFINED);
    seul.UnitState(EnumUnite::inch);
    EXPECT_EQ(seul.UnitState(), EnumUnite::inch);
    horloge->Avance(10'000);
    seul.Refresh();
    EXPECT_EQ(seul.CommState(), EnumEtatCommExtenso::EnErreur) << "its own unit does not parse";
    seul.Refresh();
    EXPECT_EQ(seul.CommState(), EnumEtatCommExtenso::Pret);
    EXPECT_EQ(laser->demandes, "L99\rUI\rU\r") << "that pass does nothing else";
    seul.ClosePort();
  }
  EXPECT_TRUE(port->PortOuvert());
}

}  // namespace
}  // namespace zuma
