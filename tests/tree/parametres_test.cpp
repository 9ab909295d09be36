// What boards, blocks and channels make of their rows, good and bad.
#include <gtest/gtest.h>

#include "outils/banc_capteur.h"
#include "tree/carte.h"

namespace zuma {
namespace {

using essai::Avec;
using essai::Ligne;
using essai::Sans;

class DesLignes : public testing::Test, protected essai::BancCapteur {
 protected:
  /// A board, block or channel made of that row, and what it told.
  template <class T>
  Ref<T> Lu(const Ligne& ligne) {
    registre->entrées.clear();
    messages.textes.clear();
    const auto objet = Crée<T>(plateforme);
    objet->ChargeErreur(registre);
    objet->ParamètresDepuisBD(essai::UneLigne(ligne));
    return objet;
  }
  /// The last row was read without a failure, or stopped by this one alone.
  void Attend(const char* échec) const {
    ASSERT_EQ(registre->entrées.size(), échec == nullptr ? 0U : 1U);
    EXPECT_TRUE(échec == nullptr || registre->Contient(échec)) << registre->entrées[0].message;
  }

  const Ligne canal{
      {"Numéro du Canal", 3},      {"Nom du Canal", "Règle"},
      {"N° de série", "1A2B3C4D"}, {"N° de Node", 7},
      {"Mode opératoire", 4},      {"Nombre d'aimants", 5},
      {"Position de l'aimant", 2}, {"Position ID", 0x181},
      {"Status ID", 0x701},        {"Driver canal", "Règle MTS 3 aimants (lecture 2-1)"},
      {"Canal en fréquence", true}};
  const Ligne bloc{{"Driver", "DrvA826PG_DB16P"},     {"Type de Fonction", "Entrée Analogique"},
                   {"Nom de la Fonction", "Efforts"}, {"Mise à Jour par Fonction", false},
                   {"ModBus - Adresse", "1F"},        {"ModBus - Fonction", "10"},
                   {"ModBus - Regitre départ", 1032}, {"Nombre de Canaux", 4}};
  const Ligne carte{{"Adresse", "2A0"},
                    {"Nom de la Carte", "Bus"},
                    {"Driver de la Carte", "DrvModBus"},
                    {"Configuration ModBus", "2,19200,E,8,1"},
                    {"Config EIR", "12"}};
};

TEST_F(DesLignes, DonnentUnCanal) {
  const auto c = Lu<Canal>(canal);
  EXPECT_EQ(c->Nom() + c->NuméroDeSérie(), "Règle1A2B3C4D");
  EXPECT_EQ((std::vector<int>{c->NuméroCanal(), c->NuméroDeNoeud(), c->ModeOpératoire(),
                              c->NombreDAimants(), c->PositionDeLAimant(), c->PositionID(),
                              c->StatusID(), c->EnFréquence()}),
            (std::vector<int>{3, 7, 4, 5, 2, 0x181, 0x701, 1}));
  EXPECT_EQ(c->Driver(), ENUM_DRIVER::DrvRègleMTS3Aimants2_1);
  Attend(nullptr);
  // The driver counts only in a table with "Status ID".
  c->ParamètresDepuisBD(essai::UneLigne(Sans(Avec(canal, "Driver canal", ""), "Status ID")));
  EXPECT_EQ(c->Driver(), ENUM_DRIVER::DrvRègleMTS3Aimants2_1);
  c->ParamètresDepuisBD(essai::UneLigne(Avec(canal, "Driver canal", "inconnu")));
  EXPECT_EQ(c->Driver(), ENUM_DRIVER::DrvAucun);
}

TEST_F(DesLignes, DisentLaColonneQuiManqueAUnCanal) {
  const struct {
    Ligne ligne;
    const char* échec;
  } cas[] = {
      {Sans(canal, "Numéro du Canal"), "Erreur N°3265 "},
      {Sans(canal, "Driver canal"), "Erreur N°3265 "},
      {Avec(canal, "Nom du Canal", Nul{}), "Erreur N°94 "},
      {Avec(canal, "Numéro du Canal", 40000), "Erreur N°6 "},
      {Sans(canal, "N° de série"), nullptr},
      {Avec(canal, "N° de Node", Nul{}), nullptr},
      {Avec(canal, "Mode opératoire", ""), nullptr},
      {Sans(canal, "Canal en fréquence"), nullptr},
  };
  for (const auto& c : cas) {
    Lu<Canal>(c.ligne);
    Attend(c.échec);
  }
  Lu<Canal>(Avec(canal, "N° de Node", "sept"));
  EXPECT_EQ(registre->entrées[0].variables[1],
            (TableVariables::value_type{"Variable vData", "sept"}));
}

TEST_F(DesLignes, DonnentUnBlocDontLesCanauxOntLeTypeEtLeDriver) {
  Fonction f(plateforme);
  f.ChargeErreur(registre);
  f.Canals()->Add("1");
  f.Canals()->Add("2")->Driver(ENUM_DRIVER::DrvRègleMTS1Aimant);
  f.ParamètresDepuisBD(essai::UneLigne(bloc));
  Attend(nullptr);
  EXPECT_EQ((std::vector<int>{f.MAJParFonction(), f.ModbusAdresse(), f.ModbusFonction(),
                              f.ModbusRegistreDeDepart(), f.NombreDeCanaux()}),
            (std::vector<int>{0, 0x1F, 16, 1032, 4}));
  EXPECT_EQ(f.Canals()->Item("1")->Driver(), ENUM_DRIVER::DrvA826PG_DB16B);
  EXPECT_EQ(f.Canals()->Item("2")->Driver(), ENUM_DRIVER::DrvRègleMTS1Aimant);
  EXPECT_EQ(f.Canals()->Item("2")->TypeCanal(), ENUM_TYPE_FONCTION::FctEntréesAnalogiques);
}

TEST_F(DesLignes, DisentCeQuUnBlocRefuse) {
  const std::string refus = "Unauthorized RS232 - ";
  const struct {
    const char* colonne;
    Valeur valeur;
    std::vector<std::string> messages;
    const char* échec = nullptr;
  } cas[] = {
      {"RS232 - Baud Rate",
       12345,
       {refus + "Baud Rate for function 'Efforts'. Default baud rate : 9600"}},
      {"RS232 - Baud Rate", -15872, {}},  // low half of 115200
      {"RS232 - Baud Rate", 38400, {}, " : colonne 'RS232 - Baud Rate')"},
      {"RS232 - Parity", "Odd", {refus + "Parity  for function 'Efforts'."}},
      {"RS232 - Parity", "Space parity", {}},
      {"RS232 - Data", 9, {refus + "Data  for function 'Efforts'."}},
      {"RS232 - Data", 4, {}},
      {"RS232 - Data", Nul{}, {}},
      {"RS232 - Stop", 1.25, {refus + "Stop  for function 'Efforts'."}},
      {"RS232 - Stop", "1,5", {}},
      {"Temps", "abc", {}, " : colonne 'Temps')"},
      {"ModBus - Adresse", "0x1F", {}, " : colonne 'ModBus - Adresse')"},
      {"Nombre de Canaux", 1e12, {}, " : colonne 'Nombre de Canaux')"},
  };
  for (const auto& c : cas) {
    EXPECT_EQ(Lu<Fonction>(Avec(bloc, c.colonne, c.valeur))->NomPourErreur(), "Efforts");
    EXPECT_EQ(messages.textes, c.messages);
    Attend(c.échec);
  }
}

TEST_F(DesLignes, DonnentUneCarteEtSaLigne) {
  const struct {
    const char* configuration;
    const char* trace;
    std::size_t messages;
  } cas[] = {
      {"2,19200,E,8,1", "v19200 a2 d8 s1 p2 [ouvre]", 0},
      {"20,1953125,S,4,1.5", "v1953125 a4 d4 s15 p20 [ouvre]", 0},
      {"21,9601,X,9,3", "v9600 a0 d0 s0 p0 [ouvre]", 1},
      {"1, 9600,N ,8,2", "v9600 a0 d8 s2 p1 [ouvre]", 1},
      {"1,9600", "v9600 a0 d0 s0 p1 [ouvre]", 0},
      {"1,9600,N,8,1,1.5", "v9600 a0 d8 s1 p1 [ouvre]", 0},
  };
  for (const auto& c : cas) {
    lignes.ligne->trace.clear();
    const auto lue = Lu<Carte>(Avec(carte, "Configuration ModBus", c.configuration));
    lue->Fonctions()->Add("1");
    lue->Adresse(lue->Adresse());
    lue->Initialise();
    EXPECT_EQ(lue->Fonctions()->Item("1")->Adresse(), 0x2A0);
    EXPECT_EQ(lignes.ligne->trace, c.trace) << c.configuration;
    EXPECT_EQ(messages.textes.size(), c.messages) << c.configuration;
    Attend(nullptr);
  }
}

TEST_F(DesLignes, DisentCeQuiManqueAUneCarte) {
  constexpr auto kAucun = ENUM_DRIVER::DrvAucun;
  const struct {
    Ligne ligne;
    const char* échec;
    ENUM_DRIVER driver;
  } cas[] = {
      {Sans(carte, "Adresse"), nullptr, ENUM_DRIVER::DrvModBus},
      {Avec(carte, "Driver de la Carte", Nul{}), nullptr, kAucun},
      {Avec(carte, "Configuration ModBus", Nul{}), nullptr, ENUM_DRIVER::DrvModBus},
      {Avec(carte, "Config EIR", Nul{}), nullptr, ENUM_DRIVER::DrvModBus},
      {Avec(carte, "Adresse", "port"), "colonne 'Adresse'", kAucun},
      {Avec(carte, "Nom de la Carte", Nul{}), "Erreur N°94 ", kAucun},
      {Avec(carte, "Configuration ModBus", "1,9600,N,8,1,vite"), "colonne 'Configuration ModBus'",
       ENUM_DRIVER::DrvModBus},
  };
  for (const auto& c : cas) {
    EXPECT_EQ(Lu<Carte>(c.ligne)->Driver_enm(), c.driver);
    Attend(c.échec);
  }
}

TEST_F(DesLignes, CherchentPourLeLaserLeParamètreDeSaConfiguration) {
  paramètres->push_back({});
  const auto douze = Partage(12, "");
  const std::vector<std::string> perdu{"Parameter not found. Please check card 'Bus'."};
  const Ligne laser = Avec(carte, "Driver de la Carte", "Extensometre EIR LASER");
  const struct {
    Ligne ligne;
    ParamètresRef donnés;
    bool trouvé;
    std::vector<std::string> messages;
  } cas[] = {
      {laser, paramètres, true, {}},
      {laser, {}, false, {}},
      {Avec(laser, "Config EIR", "13"), paramètres, false, perdu},
      {Avec(laser, "Config EIR", ""), paramètres, false, {}},
      {Avec(carte, "Config EIR", "13"), paramètres, false, {}},
  };
  for (const auto& c : cas) {
    const auto lue = Lu<Carte>(c.ligne);
    lue->Lien(c.donnés);
    EXPECT_EQ(lue->ParamètreEIR() == douze, c.trouvé);
    EXPECT_EQ(messages.textes, c.messages);
  }
}

}  // namespace
}  // namespace zuma
