// The port-mapped boards through blocks and channels, against twins made from the register maps.
#include <cmath>
#include <memory>

#include <gtest/gtest.h>

#include "boards/carte_es.h"
#include "boards/exacticks.h"
#include "boards/gain_automatique.h"
#include "outils/banc_instrument.h"
#include "outils/cas.h"
#include "sim/carte_acl8316.h"
#include "sim/cartes_simples.h"
#include "sim/compteurs_virtuels.h"

namespace zuma {
namespace {

using essai::Cas;
using Jumeau = std::shared_ptr<sim::CarteSimulée>;

constexpr double kPointsParVolt = 6553.6;

class DesCartes : public testing::Test, public essai::BancInstrument {
 public:
  DesCartes() {
    plateforme.ports = &bus;
    plateforme.compteurs = &compteurs;
  }
  ~DesCartes() override { chassis.Cartes({}); }
  FonctionRef Bloc(Carte& sur, const char* driver, const char* type,
                   const std::vector<std::int32_t>& numéros, bool parFonction = true) {
    return AjouteSur(sur, type, numéros,
                     {{"Driver", driver}, {"Mise à Jour par Fonction", parFonction}});
  }
  // Plugs a board and starts it.
  void Branche(const Jumeau& jumeau, Carte& une, const char* driver = "") {
    const std::string adresse = std::to_string(20 + chassis.Cartes()->Count()) + "0";
    if (jumeau) {
      bus.Attache(static_cast<std::uint16_t>(std::stoi(adresse, nullptr, 16)), 16, *jumeau);
      jumeaux.push_back(jumeau);
    }
    essai::LitCarte(une, driver, "", adresse.c_str());
    une.Initialise();
  }
  Carte& Suivante() { return AjouteCarte(std::to_string(chassis.Cartes()->Count() + 1)); }
  // One block on a board of its own, started.
  FonctionRef Monte(const Jumeau& jumeau, const char* driver, const char* type,
                    const std::vector<std::int32_t>& numéros, bool parFonction = true) {
    Carte& une = Suivante();
    const FonctionRef bloc = Bloc(une, driver, type, numéros, parFonction);
    Branche(jumeau, une, std::string_view(driver).starts_with("DrvPET") ? "DrvPET48DIO" : "");
    return bloc;
  }
  Jumeau ACL8316() { return std::make_shared<sim::CarteACL8316>(*horloge); }
  Jumeau A826() { return std::make_shared<sim::CarteA826>(*horloge); }
  Jumeau Entrées12Bits() { return std::make_shared<sim::CarteEntrées12Bits>(*horloge); }
  static Jumeau ACL6126() { return std::make_shared<sim::CarteSortiesParPaires>(6U, true); }
  static Jumeau PET48() { return std::make_shared<sim::CartePET48>(); }
  static Jumeau PCL731() { return std::make_shared<sim::CartePCL731>(); }
  // Writes on a channel alone.
  static void Ecrit(Canal& canal, double valeur) {
    canal.ValeurCanal(valeur);
    canal.MetàJour();
  }
  static void ParCanal(const FonctionRef& bloc) {
    for (const CanalRef& canal : *bloc->Canals()) canal->MetàJour();
  }
  static std::string Bits(const FonctionRef& bloc) {
    std::string bits;
    for (const CanalRef& canal : *bloc->Canals()) {
      bits += canal->ValeurCanal() == kVrai ? '1' : (canal->ValeurCanal() == 0 ? '0' : '?');
    }
    return bits;
  }
  bool Dit(std::string_view texte) {
    const bool dit = registre->Contient(texte);
    registre->entrées.clear();
    return dit;
  }

  sim::CompteursVirtuels compteurs{*horloge};
  sim::BusPorts bus;
  std::vector<Jumeau> jumeaux;
};

TEST_F(DesCartes, LisentUneTensionEnPointsAToutGain) {
  for (const auto& [driver, jumeau, signée, gainAutomatique, codes] :
       Cas<const char*, Jumeau, bool, bool, double>{
           {"DrvACL8316_ACLD8125", ACL8316(), true, true, 32768},
           {"DrvA826PG_DB8225", A826(), true, false, 32768},
           {"DrvACL8113", Entrées12Bits(), false, true, 4096},
           {"DrvPCL813_PCLD881", Entrées12Bits(), false, true, 4096}}) {
    SCOPED_TRACE(driver);
    const FonctionRef bloc = Monte(jumeau, driver, "Entrée Analogique", {0, 3, 7, -1, 32}, false);
    Le(bloc, 3).NbLecture(4);
    jumeau->bornes.entréesAnalogiques[7] = 1.0;
    for (const double volts : {0.0, 0.31, 1.2, 2.4, 4.9, 9.9, 12.0, -0.2, -6.3}) {
      jumeau->bornes.entréesAnalogiques[3] = volts;
      bloc->MetàJour();
      const double attendu = std::max(signée ? -65536.0 : 0,
                                      std::min(volts * kPointsParVolt, 65536 * (1 - 1 / codes)));
      EXPECT_NEAR(Le(bloc, 3).ValeurCanal(), attendu, 65536 / codes) << volts;
      EXPECT_NEAR(Le(bloc, 7).ValeurCanal(), kPointsParVolt, 65536 / codes);
      if (std::fabs(volts) < 1.0) {
        EXPECT_EQ(Le(bloc, 3).Gain(), gainAutomatique ? 3 : 0) << volts;
      }
    }
    EXPECT_TRUE(registre->Contient("Voie -1 absente"));
    EXPECT_TRUE(Dit("Voie 32 absente")) << "no other channel is read in its place";
    Le(bloc, 0).NbLecture(0);
    bloc->MetàJour();
    EXPECT_TRUE(Dit("Erreur N°11 ("));
  }
}

TEST(GainAutomatique, ResteEntreLesSeuilsEtFinitToujours) {
  std::int16_t gain = 1;
  int conversions = 0;
  for (const auto& [lecture, départ, arrivée] :  // whatever the gain
       Cas<double, std::int16_t, std::int16_t>{{16284, 1, 1},
                                               {16283, 1, 3},
                                               {32668, 2, 2},
                                               {32669, 2, 0},
                                               {-16283, 0, 3},
                                               {-32768, 3, 0},
                                               {0, 7, 3}}) {
    gain = départ;
    conversions = 0;
    const double valeur = LitAvecGain(gain, kSeuils16Bits, [&, lue = lecture](std::int16_t) {
      ++conversions;
      return lue;
    });
    EXPECT_EQ(gain, arrivée) << lecture;
    EXPECT_EQ(valeur, lecture / (1 << gain));
    EXPECT_LE(conversions, 5);
  }
  // A signal that jumps all the time is not pursued.
  conversions = 0;
  (void)LitAvecGain(gain = 1, kSeuils16Bits, [&](std::int16_t) {
    if (++conversions > 1000) throw Echec(Numéro::ErreurInterne);
    return conversions % 2 == 0 ? 32767 : 100;
  });
  EXPECT_LE(conversions, 100);
}

// At a gain of one, though conversions left another on the board, and without losing its place.
TEST_F(DesCartes, BalaientSeizeVoiesAprèsDesConversions) {
  const Jumeau jumeau = ACL8316();
  const FonctionRef bloc = Monte(jumeau, "DrvACL8316_ACLD8125", "Entrée Analogique",
                                 {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15}, false);
  for (std::size_t i = 0; i < 16; ++i) {
    jumeau->bornes.entréesAnalogiques[i] = 0.5 * static_cast<double>(i) - 7;
  }
  bloc->MetàJour();
  ASSERT_EQ(Le(bloc, 15).Gain(), 3);
  Le(bloc, 2).NbLecture(3);
  bloc->ParamètresDepuisBD(essai::UneLigne({{"Driver", "DrvACL8316_ACLD8125"},
                                            {"Type de Fonction", "Entrée Analogique"},
                                            {"Mise à Jour par Fonction", true}}));
  bloc->Parent()->Initialise();
  EXPECT_EQ(bloc->NbLecture(), 3);
  for (int passe = 0; passe < 5; ++passe) {
    bloc->MetàJour();
    for (std::int32_t i = 0; i < 16; ++i) {
      EXPECT_NEAR(Le(bloc, i).ValeurCanal(), (0.5 * i - 7) * kPointsParVolt, 2) << i;
    }
  }
  EXPECT_TRUE(registre->entrées.empty());
}

// For each driver of logic inputs: what a set bit means to a block and to a channel.
TEST_F(DesCartes, LisentLesEntréesLogiquesDansLeSensDeChaqueDriver) {
  // Channels 0, 1, 9 with bits 0 and 9 set, by block and by channel; the block with bit 1 too.
  for (const auto& [driver, jumeau, parBloc, parCanal, après] :
       Cas<const char*, Jumeau, const char*, const char*, const char*>{
           {"DrvPCL731_PCLD782B", PCL731(), "101", "010", "111"},
           {"DrvPET48DIO_TB24P", PET48(), "100", "101", "110"},
           {"DrvACL8316_ACLD9182", ACL8316(), "100", "010", "110"},
           {"DrvA826PG_DB16P", A826(), "100", "101", "110"},
           {"DrvACL6126_ACLD9182", ACL6126(), "100", "101", "110"},
           {"DrvPET48DIO_PCLD782B", PET48(), "011", "010", "001"}}) {
    SCOPED_TRACE(driver);
    std::uint32_t& lignes = jumeau->bornes.entréesLogiques;
    lignes = 0x201;
    const FonctionRef bloc = Monte(jumeau, driver, "Entrée Logique", {0, 1, 9});
    bloc->MetàJour();
    EXPECT_EQ(Bits(bloc), parBloc);
    // Nothing moved: the block leaves the channels alone.
    Le(bloc, 1).ValeurCanal(5);
    bloc->MetàJour();
    EXPECT_EQ(Le(bloc, 1).ValeurCanal(), 5);
    ParCanal(bloc);
    EXPECT_EQ(Bits(bloc), parCanal);
    lignes = 0x203;
    bloc->MetàJour();
    EXPECT_EQ(Bits(bloc), après);
    // The first word after a start is shown, whatever it is: a broken wire reads 0.
    lignes = 0;
    bloc->MetàJour();
    Le(bloc, 1).ValeurCanal(5);
    bloc->Parent()->Initialise();
    bloc->MetàJour();
    EXPECT_NE(Le(bloc, 1).ValeurCanal(), 5);
  }
  EXPECT_TRUE(registre->entrées.empty());
}

TEST_F(DesCartes, GardentLesSingularités) {
  const Jumeau pcl = PCL731();
  const FonctionRef bloc = Monte(pcl, "DrvPCL731_PCLD782B", "Entrée Logique", {22, 23, 24});
  pcl->bornes.entréesLogiques = 0xFFFFFF;
  bloc->MetàJour();
  EXPECT_EQ(Bits(bloc), "100") << "the block does not read line 23";
  ParCanal(bloc);
  EXPECT_EQ(Bits(bloc), "001") << "there is no line 24: it reads true";

  const Jumeau acl = ACL6126();
  const FonctionRef entrées =
      Monte(acl, "DrvACL6126_ACLD9182", "Entrée Logique", {0, 1, 2, 3, 4, 5, 6, 7, 8});
  // 0x0100 weighs 255, like 0x00FF: the change test does not see it, but it is not lost.
  for (const auto& [mot, bits] : Cas<std::uint32_t, const char*>{
           {0x00FF, "111111110"}, {0x0100, "111111110"}, {0x0100, "000000001"}}) {
    acl->bornes.entréesLogiques = mot;
    entrées->MetàJour();
    EXPECT_EQ(Bits(entrées), bits);
  }
}

TEST_F(DesCartes, EcriventLesSortiesLogiques) {
  // Terminals after the start.
  const std::tuple<const char*, Jumeau, std::uint32_t> cas[] = {
      {"DrvPCL731_PCLD7225", PCL731(), 0xFFFFFF}, {"DrvPET48DIO_TB24R", PET48(), 0},
      {"DrvACL8316_ACLD9185", ACL8316(), 0},      {"DrvA826PG_DB16R", A826(), 0},
      {"DrvACL6126_ACLD9185", ACL6126(), 0},      {"DrvPET48DIO_PCLD7225", PET48(), 0xFFFFFF}};
  for (const auto& [driver, jumeau, repos] : cas) {
    SCOPED_TRACE(driver);
    const FonctionRef bloc = Monte(jumeau, driver, "Sortie Logique", {0, 1, 9});
    const std::uint32_t& lignes = jumeau->bornes.sortiesLogiques;
    EXPECT_EQ(lignes, repos);
    for (const std::int32_t n : {0, 1, 9}) Le(bloc, n).ValeurCanal(n == 1 ? 1 : kVrai);
    ParCanal(bloc);
    EXPECT_EQ(lignes ^ repos, 0x203U) << "whatever is not 0";
    bloc->MetàJour();
    EXPECT_EQ((lignes ^ repos) & 0xFFFFFFU, 0x201U) << "true alone";
  }
  EXPECT_TRUE(registre->entrées.empty());
}

// A number is one terminal, whoever writes it; no contact is driven against; and a card that lost
// its registers is driven again by the next word.
TEST_F(DesCartes, SortentUneVoieDePCL731SurUnSeulConnecteur) {
  constexpr std::uint32_t kRepos = 0xFFFFFF;
  for (const bool avecEntrées : {false, true}) {
    const auto pcl = std::make_shared<sim::CartePCL731>();
    Carte& une = Suivante();
    FonctionRef entrées;
    if (avecEntrées) entrées = Bloc(une, "DrvPCL731_PCLD782B", "Entrée Logique", {0, 9, 22});
    const FonctionRef sorties = Bloc(une, "DrvPCL731_PCLD7225", "Sortie Logique", {0, 9, 22});
    Branche(pcl, une);
    EXPECT_EQ(pcl->bornes.sortiesLogiques, kRepos) << "before the first refresh";
    EXPECT_EQ(pcl->PremierConnecteur(), avecEntrées ? std::nullopt : std::optional(kRepos));
    pcl->bornes.entréesLogiques = 0x200;
    for (const bool blocPuisCanal : {false, true}) {
      for (const CanalRef& canal : *sorties->Canals()) {
        const auto écrit = [&](double niveau, bool parBloc) {
          canal->ValeurCanal(niveau);
          parBloc ? sorties->MetàJour() : canal->MetàJour();
          if (avecEntrées) {
            entrées->MetàJour();
            EXPECT_EQ(Bits(entrées), "010");
          }
          return pcl->bornes.sortiesLogiques;
        };
        EXPECT_EQ(écrit(kVrai, blocPuisCanal), kRepos & ~Masque(canal->NuméroCanal()));
        EXPECT_EQ(écrit(0, !blocPuisCanal), kRepos) << canal->NuméroCanal();
      }
    }
    Le(sorties, 9).ValeurCanal(kVrai);
    *pcl = {};  // pulled and put back
    sorties->MetàJour();
    EXPECT_EQ(pcl->bornes.sortiesLogiques, kRepos & ~Masque(9));
  }
  EXPECT_TRUE(registre->entrées.empty());
}

// A bad number in the configuration must not keep a stop from the other outputs.
TEST_F(DesCartes, EcriventLesSortiesMalgréUneVoieAbsente) {
  const Jumeau jumeau = ACL8316();
  const FonctionRef bloc = Monte(jumeau, "DrvACL8316_ACLD9185", "Sortie Logique", {-1, 3, 16, 40});
  for (const std::int32_t absente : {-1, 16, 40}) {
    for (const double niveau : {kVrai, 0}) {
      Le(bloc, absente).ValeurCanal(kVrai);
      Le(bloc, 3).ValeurCanal(niveau);
      bloc->MetàJour();
      EXPECT_EQ(jumeau->bornes.sortiesLogiques, niveau == kVrai ? 8U : 0U);
    }
    const std::string texte = "Voie " + std::to_string(absente) + " absente de la carte";
    EXPECT_TRUE(Dit(texte + ", qui a les voies 0 à 15"));
    Le(bloc, absente).MetàJour();
    EXPECT_TRUE(Dit(texte));
    Le(bloc, absente).ValeurCanal(0);
  }
}

// An interface set to output pulls its lines down: only a board that has outputs may do it.
TEST_F(DesCartes, NeMettentEnSortieQuUneCarteASorties) {
  bus.Journalise(true);
  const auto metEnSortie = [&] {
    return std::ranges::any_of(bus.Ecritures(), [](const auto& écriture) {
      return écriture.port % 16 == 1 && écriture.valeur == 0x80;
    });
  };
  (void)Monte(PET48(), "DrvPET48DIO_PCLD782B", "Entrée Logique", {0});
  EXPECT_FALSE(metEnSortie());
  (void)Monte(PET48(), "DrvPET48DIO_PCLD7225", "Sortie Logique", {0});
  EXPECT_TRUE(metEnSortie());
}

TEST_F(DesCartes, EcriventLesSortiesAnalogiques) {
  for (const auto& [driver, jumeau, valeur, volts] : Cas<const char*, Jumeau, double, double>{
           {"DrvPCL728", std::make_shared<sim::CarteSortiesParPaires>(8U), 1024, 2.5},
           {"DrvACL6128", std::make_shared<sim::CarteSortiesParPaires>(8U), 3071.5, 7.5},
           {"DrvACL6126", ACL6126(), 4095, 9.99756},
           {"DrvA826PG", A826(), 2048, 5},
           {"DrvACL8316", ACL8316(), 1024, 5},
           {"DrvACL8316", ACL8316(), 2048, -10},
           {"DrvACL8316", ACL8316(), 3072, -5}}) {
    SCOPED_TRACE(testing::Message() << driver << " " << valeur);
    Canal& canal = Le(Monte(jumeau, driver, "Sortie Analogique", {0, 1}), 1);
    const auto& sorties = jumeau->bornes.sortiesAnalogiques;
    Ecrit(canal, valeur);
    EXPECT_NEAR(sorties[1], volts, 0.001);
    EXPECT_EQ(sorties[0], 0);
    EXPECT_TRUE(registre->entrées.empty());
    const bool décalée = std::string_view(driver) == "DrvACL8316";
    for (const double excès : {40000.0, -40000.0, décalée ? 6144.0 : 1e9, décalée ? -2049 : -1e9}) {
      Ecrit(canal, excès);
      EXPECT_TRUE(Dit("Erreur N°6 (")) << excès;
      EXPECT_NEAR(sorties[1], volts, 0.001) << "the output holds";
    }
  }
}

TEST_F(DesCartes, ProgrammentLaSortieEnFréquence) {
  const Jumeau jumeau = ACL8316();
  Canal& canal = Le(Monte(jumeau, "DrvACL8316", "Sortie Analogique", {0}), 0);
  LitCanal(canal, {{"Canal en fréquence", true}});
  for (const auto& [demandée, obtenue] : Cas<double, double>{
           {1000, 1000}, {30, 0}, {31, 2e6 / 64516}, {-5, 0}, {3000, 2e6 / 666}, {0, 0}}) {
    Ecrit(canal, demandée);
    EXPECT_DOUBLE_EQ(jumeau->bornes.fréquence, obtenue) << demandée;
  }
  EXPECT_EQ(jumeau->bornes.sortiesAnalogiques[0], 0) << "the analog output of that number stays";
}

TEST_F(DesCartes, NePartagentNiLeursImagesNiLeurAbsence) {
  std::vector<std::uint32_t> lues;
  for (const std::int32_t n : {0, 1}) {
    Ecrit(Le(Monte(ACL8316(), "DrvACL8316_ACLD9185", "Sortie Logique", {0, 1}), n), kVrai);
  }
  for (const Jumeau& jumeau : jumeaux) lues.push_back(jumeau->bornes.sortiesLogiques);
  EXPECT_EQ(lues, (std::vector<std::uint32_t>{1, 2}));
  const FonctionRef absente = Monte({}, "DrvACL8316_ACLD8125", "Entrée Analogique", {0}, false);
  absente->MetàJour();
  EXPECT_NEAR(Le(absente, 0).ValeurCanal(), 0, 1) << "the bus reads all ones";
  EXPECT_TRUE(registre->entrées.empty());
}

TEST(CompteurFin, ContinueAuDelàDeLaLimiteDeLaBibliothèque) {
  sim::HorlogeVirtuelle horloge(1);
  sim::CompteursVirtuels compteurs(horloge);
  Exacticks compteur;
  EXPECT_THROW((void)compteur.Lit(), Echec);
  for (int i = 0; i < 2; ++i) compteur.Ouvre(&compteurs, "essai");
  EXPECT_EQ(compteurs.Ouverts(), 1U) << "a former counter is closed";
  const double départ = horloge.Maintenant();
  for (int i = 0; i < 5; ++i) {
    horloge.Avance(70e6);
    EXPECT_NEAR(static_cast<double>(compteur.Lit()), horloge.Maintenant() - départ, 10);
  }
}

}  // namespace
}  // namespace zuma
