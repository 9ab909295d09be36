// Modbus blocks on a board, against a slave on a simulated line.
#include <gtest/gtest.h>

#include "outils/arbre.h"
#include "sim/esclave_modbus.h"
#include "sim/liaisons_simulees.h"

namespace zuma {
namespace {

using essai::Nombre;
using essai::Texte;

class UneCarteModbus : public testing::Test, protected essai::Banc {
 public:
  UneCarteModbus() {
    plateforme.liaisons = &fabrique;
    carte.TimerExact(horloge);
    carte.ChargeErreur(registre);
  }

  FonctionRef Ajoute(const char* clé, const char* type, const char* fonctionHexa,
                     std::int32_t départ, const std::vector<std::int32_t>& numéros,
                     bool parFonction = true) {
    return essai::AjouteBloc(carte, clé,
                             {{"Driver", Texte("DrvModBus")},
                              {"Type de Fonction", Texte(type)},
                              {"Nom de la Fonction", Texte("Bloc")},
                              {"Mise à Jour par Fonction", Valeur(parFonction)},
                              {"ModBus - Adresse", Texte("05")},
                              {"ModBus - Fonction", Texte(fonctionHexa)},
                              {"ModBus - Regitre départ", Nombre(départ)}},
                             numéros, horloge, registre);
  }

  void Démarre() {
    essai::LitCarte(carte, "DrvModBus", "3,19200,N,8,1");
    carte.Initialise();
  }

  // One pass of the host every 5 milliseconds.
  void Passe(int fois) {
    for (; fois > 0; --fois) {
      carte.MetàJour();
      horloge->Avance(5000);
    }
  }
  static double Valeur_(const FonctionRef& bloc, std::int32_t numéro) {
    return bloc->Canals()->Item(essai::CléDuCanal(numéro))->ValeurCanal();
  }

  Ref<sim::HorlogeVirtuelle> horloge = Crée<sim::HorlogeVirtuelle>();
  sim::FabriqueLiaisonsSimulée fabrique;
  Ref<sim::EsclaveModbus> esclave = Crée<sim::EsclaveModbus>(*horloge, std::uint8_t{5});
  sim::LigneSérie& ligne = fabrique.Attache(3, esclave);
  Carte carte{plateforme};
};

TEST_F(UneCarteModbus, LitSansAttendreEtSertTousLesBlocs) {
  const FonctionRef mesures = Ajoute("1", "Entrée Analogique", "3", 100, {-1, 0, 1, 2});
  const FonctionRef états = Ajoute("2", "Entrée Logique", "2", 0, {-1, 0, 5, 7}, true);
  esclave->registres = {{100, 0}, {101, 40000}, {102, 65535}};
  esclave->bits = {{0, true}, {1, false}, {2, false}};
  Démarre();
  EXPECT_TRUE(registre->entrées.empty());
  carte.MetàJour();
  EXPECT_TRUE(mesures->RafraichissementEnCours());
  carte.MetàJour();
  EXPECT_TRUE(mesures->RafraichissementEnCours()) << "the answer is still on the wire";
  Passe(12);
  EXPECT_EQ(Valeur_(mesures, 0), 0);
  EXPECT_EQ(Valeur_(mesures, 1), 40000);
  EXPECT_EQ(Valeur_(mesures, 2), 65535) << "words are unsigned";
  EXPECT_EQ(Valeur_(mesures, -1), 0);
  EXPECT_EQ(Valeur_(états, 5), 0);
  EXPECT_EQ(Valeur_(états, 7), -1) << "input 0 is the low bit of the only byte";
  EXPECT_TRUE(registre->entrées.empty());
  EXPECT_EQ(mesures->RS(), carte.RS()) << "blocks without a line of their own take the board's";
}

TEST_F(UneCarteModbus, RangeLesBitsDUnBlocLogique) {
  const FonctionRef parFonction = Ajoute("1", "Entrée Logique", "3", 10, {-1, 0, 7, 15}, true);
  // Three channels and the error channel ask for three registers: bytes 0x81 0x01 ...
  esclave->registres = {{10, 0x8101}, {11, 0x0000}, {12, 0x0005}};
  Démarre();
  Passe(6);
  EXPECT_EQ(Valeur_(parFonction, 0), -1) << "high bit of the first byte";
  EXPECT_EQ(Valeur_(parFonction, 7), -1);
  EXPECT_EQ(Valeur_(parFonction, 15), -1);
  esclave->registres[10] = 0x7EFE;
  Passe(6);
  EXPECT_EQ(Valeur_(parFonction, 0), 0);
  EXPECT_EQ(Valeur_(parFonction, 7), 0);
  EXPECT_EQ(Valeur_(parFonction, 15), 0);
}

TEST_F(UneCarteModbus, LitUnRegistreParCanalLogique) {
  const FonctionRef parCanal = Ajoute("1", "Entrée Logique", "3", 10, {-1, 0, 1, 2}, false);
  esclave->registres = {{10, 0x0001}, {11, 0xFF00}, {12, 0x0080}};
  Démarre();
  Passe(6);
  EXPECT_EQ(Valeur_(parCanal, 0), -1);
  EXPECT_EQ(Valeur_(parCanal, 1), 0) << "only the low byte of a register counts";
  EXPECT_EQ(Valeur_(parCanal, 2), -1);
}

TEST_F(UneCarteModbus, EcritLesConsignes) {
  const FonctionRef consignes = Ajoute("1", "Sortie Analogique", "10", 200, {-1, 0, 1, 2});
  consignes->Canals()->Item("10")->ValeurCanal(1234.5);
  consignes->Canals()->Item("11")->ValeurCanal(-2);
  consignes->Canals()->Item("12")->ValeurCanal(65535.4);
  Démarre();
  Passe(4);
  EXPECT_EQ(esclave->registres[200], 1235);
  EXPECT_EQ(esclave->registres[201], 0xFFFE);
  EXPECT_EQ(esclave->registres[202], 65535);
  EXPECT_EQ(consignes->Canals()->Item("11")->ValeurCanal(), -2);
  consignes->Canals()->Item("11")->ValeurCanal(70000);
  Passe(4);
  EXPECT_TRUE(registre->Contient("Erreur N°6 ")) << "a set point out of a register is told";
}

TEST_F(UneCarteModbus, LèveLeCanalDErreurAprèsDixEchecsEtLeRetire) {
  const FonctionRef bloc = Ajoute("1", "Entrée Analogique", "4", 0, {-1, 0});
  esclave->registres = {{0, 77}};
  Démarre();
  Passe(4);
  ASSERT_EQ(Valeur_(bloc, 0), 77);
  const struct {
    const char* quoi;
    void (*abîme)(UneCarteModbus&);
    int passesParEchec;
  } cas[] = {
      {"silence", [](UneCarteModbus& t) { t.ligne.pannes.muette = true; }, 12},
      {"parasites", [](UneCarteModbus& t) { t.ligne.pannes.parasitée = true; }, 4},
      {"coupures", [](UneCarteModbus& t) { t.ligne.pannes.coupée = true; }, 12},
      {"autre esclave", [](UneCarteModbus& t) { t.esclave->fausseAdresse = 6; }, 4},
      {"registre absent", [](UneCarteModbus& t) { t.esclave->registres.clear(); }, 4},
      {"port débranché", [](UneCarteModbus& t) { t.ligne.pannes.débranchée = true; }, 1},
  };
  for (const auto& c : cas) {
    c.abîme(*this);
    int passes = 0;
    while (Valeur_(bloc, -1) == 0 && passes < 200) {
      Passe(1);
      ++passes;
    }
    EXPECT_EQ(Valeur_(bloc, -1), -1) << c.quoi;
    EXPECT_GE(passes, 10) << c.quoi << ": fewer than ten exchanges";
    EXPECT_LE(passes, c.passesParEchec * 10 + 12) << c.quoi;
    EXPECT_EQ(Valeur_(bloc, 0), 77) << c.quoi << ": the value holds";
    ligne.pannes = {};
    esclave->fausseAdresse = 0;
    esclave->registres = {{0, 77}};
    Passe(20);
    EXPECT_EQ(Valeur_(bloc, -1), 0) << c.quoi << ": a good answer clears it";
  }
}

TEST_F(UneCarteModbus, DitUnPortQuiNeSOuvrePasParLeCanalDErreur) {
  const FonctionRef bloc = Ajoute("1", "Entrée Analogique", "4", 0, {-1, 0});
  essai::LitCarte(carte, "DrvModBus", "4,19200,N,8,1");  // nothing is plugged there
  carte.Initialise();
  EXPECT_EQ(registre->entrées.size(), 1U);
  registre->entrées.clear();
  Passe(10);
  EXPECT_EQ(Valeur_(bloc, -1), -1);
  EXPECT_EQ(registre->entrées.size(), 10U);
  EXPECT_FALSE(registre->Contient("Erreur N°91 ")) << "the port is named, not a missing object";
}

TEST_F(UneCarteModbus, AccepteEncoreUneRéponseACinquanteMillisecondes) {
  const FonctionRef bloc = Ajoute("1", "Entrée Analogique", "3", 0, {-1, 0});
  esclave->registres = {{0, 5}};
  Démarre();
  carte.MetàJour();
  horloge->Avance(50'000 - 1);  // the pass's own read of the clock makes it 50 ms exactly
  carte.MetàJour();
  EXPECT_EQ(Valeur_(bloc, 0), 5);
  esclave->registres = {{0, 6}};
  while (!bloc->RafraichissementEnCours()) carte.MetàJour();
  horloge->Avance(50'000);
  carte.MetàJour();
  EXPECT_EQ(Valeur_(bloc, 0), 5) << "one microsecond too late";
}

}  // namespace
}  // namespace zuma
