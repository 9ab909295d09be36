// What boards, blocks and channels make of their rows, good and bad.
#include <gtest/gtest.h>

#include "outils/banc_capteur.h"
#include "outils/cas.h"
#include "tree/carte.h"

namespace zuma::essai {
namespace {

using Textes = std::vector<std::string>;

class DesLignes : public testing::Test, protected BancCapteur {
 protected:
  /// A board, block or channel made of that row, and what it told.
  template <class T>
  Ref<T> Lu(const Ligne& ligne) {
    registre->entrées.clear();
    messages.textes.clear();
    const auto objet = Crée<T>(plateforme);
    objet->ChargeErreur(registre);
    objet->ParamètresDepuisBD(UneLigne(ligne));
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

TEST_F(DesLignes, DonnentLeurDriverAuxCanaux) {
  // That of a channel counts only in a table with "Status ID".
  const auto c = Lu<Canal>(canal);
  for (const auto& [ligne, driver] :
       Cas<Ligne, ENUM_DRIVER>{{canal, ENUM_DRIVER::DrvRègleMTS3Aimants2_1},
                               {Sans(Avec(canal, "Driver canal", ""), "Status ID"),
                                ENUM_DRIVER::DrvRègleMTS3Aimants2_1},
                               {Avec(canal, "Driver canal", "inconnu"), ENUM_DRIVER::DrvAucun}}) {
    c->ParamètresDepuisBD(UneLigne(ligne));
    EXPECT_EQ(c->Driver(), driver);
  }
  Fonction f(plateforme);
  f.ChargeErreur(registre);
  f.Canals()->Add("1");
  f.Canals()->Add("2")->Driver(ENUM_DRIVER::DrvRègleMTS1Aimant);
  f.ParamètresDepuisBD(UneLigne(bloc));
  EXPECT_EQ(f.Canals()->Item("1")->Driver(), ENUM_DRIVER::DrvA826PG_DB16B);
  EXPECT_EQ(f.Canals()->Item("2")->Driver(), ENUM_DRIVER::DrvRègleMTS1Aimant);
  EXPECT_EQ(f.Canals()->Item("2")->TypeCanal(), ENUM_TYPE_FONCTION::FctEntréesAnalogiques);
  EXPECT_EQ(f.ModbusAdresse(), 0x1F);
}

TEST_F(DesLignes, DisentLaColonneQuiManqueAUnCanal) {
  for (const auto& [ligne, échec] :
       Cas<Ligne, const char*>{{Sans(canal, "Numéro du Canal"), "Erreur N°3265 "},
                               {Sans(canal, "Driver canal"), "Erreur N°3265 "},
                               {Avec(canal, "Nom du Canal", Nul{}), "Erreur N°94 "},
                               {Avec(canal, "Numéro du Canal", 40000), "Erreur N°6 "},
                               {Sans(canal, "N° de série"), nullptr},
                               {Avec(canal, "N° de Node", Nul{}), nullptr},
                               {Avec(canal, "Mode opératoire", ""), nullptr},
                               {Sans(canal, "Canal en fréquence"), nullptr}}) {
    Lu<Canal>(ligne);
    Attend(échec);
  }
  Lu<Canal>(Avec(canal, "N° de Node", "sept"));
  EXPECT_EQ(registre->entrées[0].variables[1],
            (TableVariables::value_type{"Variable vData", "sept"}));
}

TEST_F(DesLignes, DisentCeQuUnBlocRefuse) {
  const auto refus = [](const std::string& quoi) { return Textes{"Unauthorized RS232 - " + quoi}; };
  for (const auto& [colonne, valeur, dits, échec] : Cas<const char*, Valeur, Textes, const char*>{
           {"RS232 - Baud Rate", 12345,
            refus("Baud Rate for function 'Efforts'. Default baud rate : 9600"), nullptr},
           {"RS232 - Baud Rate", -15872, {}, nullptr},  // low half of 115200
           {"RS232 - Baud Rate", 38400, {}, " : colonne 'RS232 - Baud Rate')"},
           {"RS232 - Parity", "Odd", refus("Parity  for function 'Efforts'."), nullptr},
           {"RS232 - Parity", "Space parity", {}, nullptr},
           {"RS232 - Data", 9, refus("Data  for function 'Efforts'."), nullptr},
           {"RS232 - Data", 4, {}, nullptr},
           {"RS232 - Data", Nul{}, {}, nullptr},
           {"RS232 - Stop", 1.25, refus("Stop  for function 'Efforts'."), nullptr},
           {"RS232 - Stop", "1,5", {}, nullptr},
           {"Temps", "abc", {}, " : colonne 'Temps')"},
           {"ModBus - Adresse", "0x1F", {}, " : colonne 'ModBus - Adresse')"},
           {"Nombre de Canaux", 1e12, {}, " : colonne 'Nombre de Canaux')"}}) {
    EXPECT_EQ(Lu<Fonction>(Avec(bloc, colonne, valeur))->NomPourErreur(), "Efforts");
    EXPECT_EQ(messages.textes, dits);
    Attend(échec);
  }
}

TEST_F(DesLignes, DonnentUneCarteEtSaLigne) {
  for (const auto& [configuration, trace, dits] : Cas<const char*, std::string, std::size_t>{
           {"2,19200,E,8,1", "v19200 a2 d8 s1 p2 ", 0},
           {"20,1953125,S,4,1.5", "v1953125 a4 d4 s15 p20 ", 0},
           {"21,9601,X,9,3", "v9600 a0 d0 s0 p0 ", 1},
           {"1, 9600,N ,8,2", "v9600 a0 d8 s2 p1 ", 1},
           {"1,9600", "v9600 a0 d0 s0 p1 ", 0},
           {"1,9600,N,8,1,1.5", "v9600 a0 d8 s1 p1 ", 0}}) {
    lignes.ligne->trace.clear();
    const auto lue = Lu<Carte>(Avec(carte, "Configuration ModBus", configuration));
    lue->Fonctions()->Add("1");
    lue->Adresse(lue->Adresse());
    lue->Initialise();
    EXPECT_EQ(lue->Fonctions()->Item("1")->Adresse(), 0x2A0);
    EXPECT_EQ(lignes.ligne->trace, trace + "[ouvre]") << configuration;
    EXPECT_EQ(messages.textes.size(), dits) << configuration;
    Attend(nullptr);
  }
}

TEST_F(DesLignes, DisentCeQuiManqueAUneCarte) {
  constexpr auto kAucun = ENUM_DRIVER::DrvAucun;
  constexpr auto kModbus = ENUM_DRIVER::DrvModBus;
  constexpr auto kConfiguration = "Configuration ModBus";
  for (const auto& [ligne, échec, driver] : Cas<Ligne, const char*, ENUM_DRIVER>{
           {Sans(carte, "Adresse"), nullptr, kModbus},
           {Avec(carte, "Driver de la Carte", Nul{}), nullptr, kAucun},
           {Avec(carte, kConfiguration, Nul{}), nullptr, kModbus},
           {Avec(carte, "Config EIR", Nul{}), nullptr, kModbus},
           {Avec(carte, "Adresse", "port"), "colonne 'Adresse'", kAucun},
           {Avec(carte, "Nom de la Carte", Nul{}), "Erreur N°94 ", kAucun},
           {Avec(carte, kConfiguration, "1,9600,N,8,1,x"), "'Configuration ModBus'", kModbus}}) {
    EXPECT_EQ(Lu<Carte>(ligne)->Driver_enm(), driver);
    Attend(échec);
  }
}

TEST_F(DesLignes, CherchentPourLeLaserLeParamètreDeSaConfiguration) {
  paramètres->push_back({});
  const auto douze = Partage(12, "");
  const Textes perdu{"Parameter not found. Please check card 'Bus'."};
  const Ligne laser = Avec(carte, "Driver de la Carte", "Extensometre EIR LASER");
  for (const auto& [ligne, donnés, trouvé, dits] : Cas<Ligne, ParamètresRef, bool, Textes>{
           {laser, paramètres, true, {}},
           {laser, {}, false, {}},
           {Avec(laser, "Config EIR", "13"), paramètres, false, perdu},
           {Avec(laser, "Config EIR", ""), paramètres, false, {}},
           {Avec(carte, "Config EIR", "13"), paramètres, false, {}}}) {
    const auto lue = Lu<Carte>(ligne);
    lue->Lien(donnés);
    EXPECT_EQ(lue->ParamètreEIR() == douze, trouvé);
    EXPECT_EQ(messages.textes, dits);
  }
}

}  // namespace
}  // namespace zuma::essai
