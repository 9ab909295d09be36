// What boards, blocks and channels make of their rows, good and bad.
#include <gtest/gtest.h>

#include "outils/recordset_fixe.h"
#include "outils/temoins.h"
#include "tree/carte.h"

namespace zuma {
namespace {

using essai::Avec;
using essai::Ligne;
using essai::Sans;
using essai::UneLigne;

const Valeur kNul{Nul{}};
Valeur Texte(const char* t) {
  return Valeur(std::string(t));
}
Valeur Nombre(std::int32_t n) {
  return Valeur(n);
}

class UneLigneDeCanal : public testing::Test, protected essai::Banc {
 protected:
  UneLigneDeCanal() { canal.ChargeErreur(registre); }
  void Lit(const Ligne& ligne) { canal.ParamètresDepuisBD(UneLigne(ligne)); }

  Ligne complète{{"Numéro du Canal", Nombre(3)},
                 {"Nom du Canal", Texte("Règle")},
                 {"N° de série", Texte("1A2B3C4D")},
                 {"N° de Node", Nombre(7)},
                 {"Mode opératoire", Nombre(2)},
                 {"Nombre d'aimants", Nombre(3)},
                 {"Position de l'aimant", Nombre(2)},
                 {"Position ID", Nombre(0x181)},
                 {"Status ID", Nombre(0x701)},
                 {"Driver canal", Texte("Règle MTS 3 aimants (lecture 2-1)")},
                 {"Canal en fréquence", Valeur(true)}};
  Canal canal{plateforme};
};

TEST_F(UneLigneDeCanal, EstLueEnEntier) {
  Lit(complète);
  EXPECT_EQ(canal.NuméroCanal(), 3);
  EXPECT_EQ(canal.Nom(), "Règle");
  EXPECT_EQ(canal.NuméroDeSérie(), "1A2B3C4D");
  EXPECT_EQ(canal.NuméroDeNoeud(), 7);
  EXPECT_EQ(canal.ModeOpératoire(), 2);
  EXPECT_EQ(canal.NombreDAimants(), 3);
  EXPECT_EQ(canal.PositionDeLAimant(), 2);
  EXPECT_EQ(canal.PositionID(), 0x181);
  EXPECT_EQ(canal.StatusID(), 0x701);
  EXPECT_EQ(canal.Driver(), ENUM_DRIVER::DrvRègleMTS3Aimants2_1);
  EXPECT_TRUE(canal.EnFréquence());
  EXPECT_TRUE(registre->entrées.empty());
}

TEST_F(UneLigneDeCanal, PasseLesColonnesFacultativesMaisPasLesDeuxPremières) {
  const struct {
    Ligne ligne;
    const char* échec;
  } cas[] = {
      {Sans(complète, "Numéro du Canal"), "Erreur N°3265 "},
      {Sans(complète, "Nom du Canal"), "Erreur N°3265 "},
      {Avec(complète, "Numéro du Canal", kNul), "Erreur N°94 "},
      {Avec(complète, "Nom du Canal", kNul), "Erreur N°94 "},
      {Avec(complète, "Numéro du Canal", Nombre(40000)), "Erreur N°6 "},
      {Avec(complète, "N° de Node", Texte("sept")), "Erreur N°94 "},
      {Sans(complète, "Driver canal"), "Erreur N°3265 "},
      {Sans(complète, "N° de série"), nullptr},
      {Avec(complète, "N° de Node", kNul), nullptr},
      {Avec(complète, "Mode opératoire", Texte("")), nullptr},
      {Avec(complète, "Canal en fréquence", kNul), nullptr},
      {Sans(complète, "Canal en fréquence"), nullptr},
  };
  for (const auto& c : cas) {
    registre->entrées.clear();
    Canal neuf(plateforme);
    neuf.ChargeErreur(registre);
    neuf.ParamètresDepuisBD(UneLigne(c.ligne));
    if (c.échec == nullptr) {
      EXPECT_TRUE(registre->entrées.empty());
    } else {
      ASSERT_EQ(registre->entrées.size(), 1U) << c.échec;
      EXPECT_TRUE(registre->entrées[0].message.starts_with(c.échec))
          << registre->entrées[0].message;
      EXPECT_EQ(registre->entrées[0].variables[1][0], Texte("Variable vData"));
    }
  }
}

TEST_F(UneLigneDeCanal, NeLitLeDriverQueDansUneTableAvecStatusID) {
  canal.Driver(ENUM_DRIVER::DrvACL8113);
  Lit(Sans(complète, "Status ID"));
  EXPECT_EQ(canal.Driver(), ENUM_DRIVER::DrvACL8113);
  Lit(Avec(complète, "Driver canal", Texte("inconnu")));
  EXPECT_EQ(canal.Driver(), ENUM_DRIVER::DrvAucun);
}

class UneLigneDeFonction : public testing::Test, protected essai::Banc {
 protected:
  UneLigneDeFonction() {
    fonction.ChargeErreur(registre);
    fonction.Canals()->Add("1");
    fonction.Canals()->Add("2")->Driver(ENUM_DRIVER::DrvRègleMTS1Aimant);
  }
  void Lit(const Ligne& ligne) { fonction.ParamètresDepuisBD(UneLigne(ligne)); }

  Ligne complète{
      {"Driver", Texte("DrvA826PG_DB16P")},      {"Type de Fonction", Texte("Entrée Analogique")},
      {"Nom de la Fonction", Texte("Efforts")},  {"Mise à Jour par Fonction", Valeur(false)},
      {"ModBus - Adresse", Texte("1F")},         {"ModBus - Fonction", Texte("10")},
      {"ModBus - Regitre départ", Nombre(1032)}, {"Nombre de Canaux", Nombre(4)}};
  Fonction fonction{plateforme};
};

TEST_F(UneLigneDeFonction, DonneTypeEtDriverAuxCanaux) {
  Lit(complète);
  EXPECT_TRUE(registre->entrées.empty());
  EXPECT_EQ(fonction.Driver_enm(), ENUM_DRIVER::DrvA826PG_DB16B);
  EXPECT_EQ(fonction.TypeDeFonction(), ENUM_TYPE_FONCTION::FctEntréesAnalogiques);
  EXPECT_FALSE(fonction.MAJParFonction());
  EXPECT_EQ(fonction.ModbusAdresse(), 0x1F);
  EXPECT_EQ(fonction.ModbusFonction(), 16);
  EXPECT_EQ(fonction.ModbusRegistreDeDepart(), 1032);
  EXPECT_EQ(fonction.NombreDeCanaux(), 4);
  EXPECT_EQ(fonction.Canals()->Item("1")->Driver(), ENUM_DRIVER::DrvA826PG_DB16B);
  EXPECT_EQ(fonction.Canals()->Item("2")->Driver(), ENUM_DRIVER::DrvRègleMTS1Aimant);
  EXPECT_EQ(fonction.Canals()->Item("2")->TypeCanal(), ENUM_TYPE_FONCTION::FctEntréesAnalogiques);
}

TEST_F(UneLigneDeFonction, DitCeQuElleRefuseDeLaLigneSérie) {
  const struct {
    const char* colonne;
    Valeur valeur;
    const char* message;
    const char* échec;
  } cas[] = {
      {"RS232 - Baud Rate", Nombre(12345),
       "Unauthorized RS232 - Baud Rate for function 'Efforts'. Default baud rate : 9600", nullptr},
      {"RS232 - Baud Rate", Nombre(19200), nullptr, nullptr},
      {"RS232 - Baud Rate", Nombre(-15872), nullptr, nullptr},  // low half of 115200
      {"RS232 - Baud Rate", Nombre(38400), nullptr, "Erreur N°6 "},
      {"RS232 - Baud Rate", kNul, nullptr, nullptr},
      {"RS232 - Parity", Texte("Odd"), "Unauthorized RS232 - Parity  for function 'Efforts'.",
       nullptr},
      {"RS232 - Parity", Texte("Space parity"), nullptr, nullptr},
      {"RS232 - Data", Nombre(9), "Unauthorized RS232 - Data  for function 'Efforts'.", nullptr},
      {"RS232 - Data", Nombre(4), nullptr, nullptr},
      {"RS232 - Stop", Valeur(1.25), "Unauthorized RS232 - Stop  for function 'Efforts'.", nullptr},
      {"RS232 - Stop", Texte("1,5"), nullptr, nullptr},
  };
  for (const auto& c : cas) {
    registre->entrées.clear();
    messages.textes.clear();
    Lit(Avec(complète, c.colonne, c.valeur));
    if (c.message == nullptr) {
      EXPECT_TRUE(messages.textes.empty()) << c.colonne;
    } else {
      ASSERT_EQ(messages.textes.size(), 1U) << c.colonne;
      EXPECT_EQ(messages.textes[0], c.message);
    }
    EXPECT_EQ(registre->Contient("Erreur N°"), c.échec != nullptr) << c.colonne;
    if (c.échec != nullptr) {
      EXPECT_TRUE(registre->Contient(c.échec));
    }
  }
}

TEST_F(UneLigneDeFonction, NommeLaColonneQuiLArrêteEtGardeCeQuiPrécède) {
  for (const auto& [colonne, valeur] : Ligne{{"Temps", Texte("abc")},
                                             {"ModBus - Adresse", Texte("0x1F")},
                                             {"Nombre de Canaux", Valeur(1e12)},
                                             {"RS232 - Baud Rate", Nombre(57600)}}) {
    registre->entrées.clear();
    Fonction neuve(plateforme);
    neuve.ChargeErreur(registre);
    neuve.ParamètresDepuisBD(UneLigne(Avec(complète, colonne, valeur)));
    ASSERT_EQ(registre->entrées.size(), 1U) << colonne;
    EXPECT_TRUE(registre->Contient(" : colonne '" + colonne + "')")) << colonne;
    EXPECT_TRUE(registre->Contient("de l'objet Fonction (Efforts)."));
  }
}

class UneLigneDeCarte : public testing::Test, protected essai::Banc {
 protected:
  Ligne complète{{"Adresse", Texte("2A0")},
                 {"Nom de la Carte", Texte("Bus")},
                 {"Driver de la Carte", Texte("DrvModBus")},
                 {"Configuration ModBus", Texte("2,19200,E,8,1")},
                 {"Config EIR", Texte("12")}};
};

TEST_F(UneLigneDeCarte, DonneSonAdresseAuxBlocsEtDécodeSaLigne) {
  class Liaison : public ZED_LiaisonSerie {
   public:
    void PortSérie(std::int32_t n) override { Note('p', n); }
    void VitesseSérie(std::int32_t n) override { Note('v', n); }
    [[nodiscard]] std::int32_t VitesseSérie() const override { return 0; }
    void ParitéSérie(std::int32_t n) override { Note('a', n); }
    void BitsDeDonnées(std::int32_t n) override { Note('d', n); }
    void BitsDeStop(std::int32_t n) override { Note('s', n); }
    [[nodiscard]] std::int32_t EtatPort() const override { return 1; }
    void OuvrePort() override { trace += "ouvre"; }
    void FermePort() noexcept override {}
    [[nodiscard]] Octets LitTampon(std::optional<std::int32_t>) override { return {}; }
    void EcritPort(std::string_view) override {}
    [[nodiscard]] std::int32_t OctetsReçus() const override { return 0; }
    void Note(char quoi, std::int32_t n) { trace += quoi + std::to_string(n) + " "; }
    std::string trace;
  };
  class Fabrique : public FabriqueLiaisons {
   public:
    [[nodiscard]] Ref<ZED_LiaisonSerie> CréeLiaison() override { return liaison; }
    [[nodiscard]] Ref<PortInstrument> CréePort() override { return {}; }
    Ref<Liaison> liaison = Crée<Liaison>();
  };
  const struct {
    const char* configuration;
    const char* trace;
    std::size_t messages;
  } cas[] = {
      {"2,19200,E,8,1", "v19200 a2 d8 s1 p2 ouvre", 0},
      {"20,1953125,S,4,1.5", "v1953125 a4 d4 s15 p20 ouvre", 0},
      {"21,9601,X,9,3", "v9600 a0 d0 s0 p0 ouvre", 1},
      {"1, 9600,N ,8,2", "v9600 a0 d8 s2 p1 ouvre", 1},
      {"1,9600", "v9600 a0 d0 s0 p1 ouvre", 0},
      {"1,9600,N,8,1,1.5", "v9600 a0 d8 s1 p1 ouvre", 0},
  };
  for (const auto& c : cas) {
    Fabrique fabrique;
    plateforme.liaisons = &fabrique;
    messages.textes.clear();
    Carte carte(plateforme);
    carte.ChargeErreur(registre);
    carte.Fonctions()->Add("1");
    carte.ParamètresDepuisBD(
        UneLigne(Avec(complète, "Configuration ModBus", Texte(c.configuration))));
    carte.Initialise();
    EXPECT_EQ(carte.Fonctions()->Item("1")->Adresse(), 0x2A0);
    EXPECT_EQ(fabrique.liaison->trace, c.trace) << c.configuration;
    EXPECT_EQ(messages.textes.size(), c.messages) << c.configuration;
  }
  EXPECT_TRUE(registre->entrées.empty());
}

TEST_F(UneLigneDeCarte, PasseUneColonneAbsenteEtDitUneAdresseIllisible) {
  const struct {
    Ligne ligne;
    const char* échec;
    ENUM_DRIVER driver;
  } cas[] = {
      {Sans(complète, "Adresse"), nullptr, ENUM_DRIVER::DrvModBus},
      {Avec(complète, "Driver de la Carte", kNul), nullptr, ENUM_DRIVER::DrvAucun},
      {Avec(complète, "Driver de la Carte", Texte("drvmodbus")), nullptr, ENUM_DRIVER::DrvAucun},
      {Sans(complète, "Configuration ModBus"), nullptr, ENUM_DRIVER::DrvModBus},
      {Avec(complète, "Config EIR", kNul), nullptr, ENUM_DRIVER::DrvModBus},
      {Avec(complète, "Adresse", Texte("port")), "colonne 'Adresse'", ENUM_DRIVER::DrvAucun},
      {Avec(complète, "Nom de la Carte", kNul), "Erreur N°94 ", ENUM_DRIVER::DrvAucun},
  };
  for (const auto& c : cas) {
    registre->entrées.clear();
    Carte carte(plateforme);
    carte.ChargeErreur(registre);
    carte.ParamètresDepuisBD(UneLigne(c.ligne));
    EXPECT_EQ(carte.Driver_enm(), c.driver);
    EXPECT_EQ(registre->entrées.size(), c.échec == nullptr ? 0U : 1U);
    if (c.échec != nullptr) {
      EXPECT_TRUE(registre->Contient(c.échec));
    }
  }
}

TEST_F(UneLigneDeCarte, CherchePourLeLaserLeParamètreDeSaConfiguration) {
  class Parametre : public ZED_Parametre {
   public:
    [[nodiscard]] std::string Key() const override { return "1"; }
    [[nodiscard]] std::string NomParamètre() const override { return "12"; }
    [[nodiscard]] std::string ValeurParamètre() const override { return {}; }
    void ValeurParamètre(std::string) override {}
    int Abonne(Abonné) override { return 1; }
    void Désabonne(int) noexcept override {}
  };
  const auto paramètres = Crée<ParamètresPartagés>();
  paramètres->push_back({});
  paramètres->push_back(Crée<Parametre>());
  const Ligne laser = Avec(complète, "Driver de la Carte", Texte("Extensometre EIR LASER"));
  const struct {
    Ligne ligne;
    ParamètresRef paramètres;
    std::size_t messages;
  } cas[] = {
      {laser, paramètres, 0},
      {laser, {}, 0},
      {Avec(laser, "Config EIR", Texte("13")), paramètres, 1},
      {Avec(laser, "Config EIR", Texte("")), paramètres, 0},
      {Avec(complète, "Config EIR", Texte("13")), paramètres, 0},
  };
  for (const auto& c : cas) {
    messages.textes.clear();
    Carte carte(plateforme);
    carte.ChargeErreur(registre);
    carte.ParamètresDepuisBD(UneLigne(c.ligne));
    carte.Lien(c.paramètres);
    ASSERT_EQ(messages.textes.size(), c.messages);
    if (c.messages != 0) {
      EXPECT_EQ(messages.textes[0], "Parameter not found. Please check card 'Bus'.");
    }
  }
  EXPECT_TRUE(registre->entrées.empty());
}

}  // namespace
}  // namespace zuma
