// The PCI boards over a comedi library made from its manual: what its calls give and refuse.
#include "platform/linux/pci_comedi.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstring>
#include <map>

#include <gtest/gtest.h>

#include "outils/banc_instrument.h"
#include "outils/cas.h"
#include "sim/cartes_pci.h"

namespace zuma::linux_ {

// A subdevice as the manual has it: its kind, its channels, codes 0 to `plusGrand`, its ranges.
struct PartieComedi {
  int type;
  unsigned int voies;
  unsigned int plusGrand;
  std::vector<CalibreComedi> calibres{{0, 1, 0}};
  std::vector<double> volts{};        // at the inputs
  std::vector<unsigned int> codes{};  // last written to the outputs
  unsigned int bits = 0;
  double retenu = 0;  // voltage of the conversion before
};

struct AppareilComedi {
  const char* nom = nullptr;
  int erreur = ENODEV;  // of `comedi_open`
  std::vector<PartieComedi> parties{};
  int ouvertures = 0;
  int panne = 0;  // error of every transfer
};

namespace {

using essai::Cas;

constexpr int kEA = 1;  // kinds of subdevices in the library's header
constexpr int kSA = 2;
constexpr int kEL = 3;
constexpr int kSL = 4;

AppareilComedi Une9111(const char* nom) {
  AppareilComedi carte{.nom = nom, .erreur = 0};
  std::vector<CalibreComedi> calibres;
  for (const double v : {10., 5., 2.5, 1.25, 0.625}) calibres.push_back({-v, v, 0});
  carte.parties = {{kEA, 16, 0xFFFF, calibres, std::vector<double>(16)},
                   {kSA, 1, 0xFFF, {{-10, 10, 0}}, {}, {0}},
                   {kEL, 16, 1},
                   {kSL, 16, 1}};
  return carte;
}

AppareilComedi Une6208(const char* nom) {
  AppareilComedi carte{.nom = nom, .erreur = 0};
  carte.parties = {{kSA, 16, 0xFFFF, {{-10, 10, 0}}, {}, std::vector<unsigned int>(16)},
                   {kEL, 4, 1},
                   {kSL, 4, 1}};
  return carte;
}

std::map<std::string, AppareilComedi> appareils;
int dernièreErreur = 0;

int Echoue(int erreur) {
  dernièreErreur = erreur;
  return -1;
}
PartieComedi* LaPartie(AppareilComedi* a, unsigned int partie, unsigned int voie = 0) {
  const bool existe = partie < a->parties.size() && voie < a->parties[partie].voies;
  if (!existe) Echoue(EINVAL);
  return existe ? &a->parties[partie] : nullptr;
}
// A transfer to a channel and a range that are there, while the device is.
PartieComedi* Transfert(AppareilComedi* a, unsigned int partie, unsigned int voie,
                        unsigned int calibre, int type) {
  PartieComedi* p = LaPartie(a, partie, voie);
  if (p == nullptr) return nullptr;
  const int erreur = p->type != type || calibre >= p->calibres.size() ? EINVAL : a->panne;
  if (erreur != 0) Echoue(erreur);
  return erreur == 0 ? p : nullptr;
}

const AppelsComedi kAppels{
    .comedi_open = [](const char* fichier) -> AppareilComedi* {
      const auto trouvé = appareils.find(fichier);
      const int erreur = trouvé == appareils.end() ? ENOENT : trouvé->second.erreur;
      if (erreur != 0) return Echoue(erreur), nullptr;
      ++trouvé->second.ouvertures;
      return &trouvé->second;
    },
    .comedi_close = [](AppareilComedi* a) { return --a->ouvertures, 0; },
    .comedi_errno = [] { return dernièreErreur; },
    .comedi_strerror = [](int erreur) -> const char* { return std::strerror(erreur); },
    .comedi_get_board_name = [](AppareilComedi* a) { return a->nom; },
    .comedi_find_subdevice_by_type =
        [](AppareilComedi* a, int type, unsigned int premier) {
          for (std::size_t i = premier; i < a->parties.size(); ++i) {
            if (a->parties[i].type == type) return static_cast<int>(i);
          }
          return Echoue(EINVAL);
        },
    .comedi_get_n_channels =
        [](AppareilComedi* a, unsigned int partie) {
          const PartieComedi* p = LaPartie(a, partie);
          return p == nullptr ? -1 : static_cast<int>(p->voies);
        },
    .comedi_get_maxdata =
        [](AppareilComedi* a, unsigned int partie, unsigned int voie) {
          const PartieComedi* p = LaPartie(a, partie, voie);
          return p == nullptr ? 0U : p->plusGrand;
        },
    .comedi_get_n_ranges =
        [](AppareilComedi* a, unsigned int partie, unsigned int voie) {
          const PartieComedi* p = LaPartie(a, partie, voie);
          return p == nullptr ? -1 : static_cast<int>(p->calibres.size());
        },
    .comedi_get_range = [](AppareilComedi* a, unsigned int partie, unsigned int voie,
                           unsigned int calibre) -> CalibreComedi* {
      PartieComedi* p = LaPartie(a, partie, voie);
      return p == nullptr || calibre >= p->calibres.size() ? nullptr : &p->calibres[calibre];
    },
    // No pause for a multiplexed input to settle: half of the voltage before is still there. Codes
    // are linear from the lower bound of the range, 0, to the upper one.
    .comedi_data_read =
        [](AppareilComedi* a, unsigned int partie, unsigned int voie, unsigned int calibre,
           unsigned int, unsigned int* code) {
          PartieComedi* p = Transfert(a, partie, voie, calibre, kEA);
          if (p == nullptr) return -1;
          const CalibreComedi& c = p->calibres[calibre];
          const double volts = (p->volts[voie] + p->retenu) / 2;
          p->retenu = p->volts[voie];
          const double part = std::clamp((volts - c.min) / (c.max - c.min), 0., 1.);
          *code = static_cast<unsigned int>(std::lround(part * p->plusGrand));
          return 1;
        },
    .comedi_data_write =
        [](AppareilComedi* a, unsigned int partie, unsigned int voie, unsigned int calibre,
           unsigned int, unsigned int code) {
          PartieComedi* p = Transfert(a, partie, voie, calibre, kSA);
          if (p == nullptr) return -1;
          if (code > p->plusGrand) return Echoue(EINVAL);
          p->codes[voie] = code;
          return 1;
        },
    // Outputs of the mask are written, then all lines are read, outputs as they were written last.
    .comedi_dio_bitfield2 =
        [](AppareilComedi* a, unsigned int partie, unsigned int masque, unsigned int* bits,
           unsigned int première) {
          PartieComedi* p = LaPartie(a, partie, première);
          if (p == nullptr || (p->type != kEL && p->type != kSL)) return Echoue(EINVAL);
          if (a->panne != 0) return Echoue(a->panne);
          const unsigned int toutes = (1U << p->voies) - 1;
          const unsigned int écrits = p->type == kSL ? masque << première & toutes : 0;
          p->bits = (p->bits & ~écrits) | (*bits << première & écrits);
          *bits = p->bits >> première;
          return 0;
        }};

class DesCartesComedi : public testing::Test, public essai::BancInstrument {
 public:
  DesCartesComedi() {
    appareils.clear();
    appareils["/dev/comedi0"] = Une9111("pci9111");
    appareils["/dev/comedi1"] = Une6208("pci6208");
    plateforme.pci = &pci;
  }
  ~DesCartesComedi() override { chassis.Cartes({}); }
  std::uint16_t Enregistre(std::uint16_t type, std::uint16_t numéro = 0) {
    return static_cast<std::uint16_t>(pci.Register_Card(type, numéro));
  }
  static PartieComedi& Partie(std::size_t partie, const char* fichier = "/dev/comedi0") {
    return appareils.at(fichier).parties[partie];
  }
  [[nodiscard]] std::string Dit() const {
    return registre->entrées.empty() ? "" : registre->entrées.back().message;
  }

  std::string manque;
  PciComedi pci{registre, [this](std::string& pourquoi) {
                  pourquoi = manque;
                  return manque.empty() ? &kAppels : nullptr;
                }};
};

// The twin knows nothing of comedi: both must show the drivers the same board.
TEST_F(DesCartesComedi, RépondentCommeLeursJumelles) {
  sim::BibliothèquePCISimulée sim;
  auto& jumelle = sim.Enfiche(BibliothèquePCI::kType9111, 0).bornes;
  auto& jumelle6208 = sim.Enfiche(BibliothèquePCI::kType6208V, 0).bornes;
  const std::uint16_t ici = Enregistre(BibliothèquePCI::kType9111);
  const auto là = static_cast<std::uint16_t>(sim.Register_Card(BibliothèquePCI::kType9111, 0));
  EXPECT_EQ(pci.AI_9111_Config(ici, 1, 0, 0), sim.AI_9111_Config(là, 1, 0, 0));
  EXPECT_EQ(pci.AI_9111_Config(ici, 2, 0, 0), sim.AI_9111_Config(là, 2, 0, 0));
  for (const auto& [volts, canal, gain] : Cas<double, std::uint16_t, std::uint16_t>{{9.9, 0, 1},
                                                                                    {-9.9, 15, 1},
                                                                                    {-4, 3, 2},
                                                                                    {0, 3, 2},
                                                                                    {0.6, 4, 5},
                                                                                    {-0.6, 3, 5},
                                                                                    {1.2, 3, 4},
                                                                                    {2, 3, 3},
                                                                                    {-11, 3, 1},
                                                                                    {11, 3, 1},
                                                                                    {1, 16, 1},
                                                                                    {1, 3, 0},
                                                                                    {1, 3, 6}}) {
    const std::size_t borne = std::min<std::size_t>(canal, 15);
    Partie(0).volts[borne] = jumelle.entréesAnalogiques[borne] = volts;
    std::uint16_t lue = 7;
    std::uint16_t voulue = 7;
    EXPECT_EQ(pci.AI_ReadChannel(ici, canal, gain, lue),
              sim.AI_ReadChannel(là, canal, gain, voulue));
    EXPECT_NEAR(static_cast<std::int16_t>(lue), static_cast<std::int16_t>(voulue), 1)
        << volts << " V, canal " << canal << ", gain " << gain;
  }

  EXPECT_NE(pci.AO_WriteChannel(ici, 0, 5), 0) << "before its polarity is known";
  EXPECT_NE(pci.AO_9111_Config(ici, 2), 0);
  for (const auto& [polarité, valeur] : Cas<std::uint16_t, std::int16_t>{{1, 0},
                                                                         {1, 2047},
                                                                         {1, -2048},
                                                                         {1, 2048},
                                                                         {1, -2049},
                                                                         {0, 0},
                                                                         {0, 2047},
                                                                         {0, -2048},
                                                                         {0, -1}}) {
    EXPECT_EQ(pci.AO_9111_Config(ici, polarité), 0);
    (void)sim.AO_9111_Config(là, polarité);
    EXPECT_EQ(pci.AO_WriteChannel(ici, 0, valeur), sim.AO_WriteChannel(là, 0, valeur)) << valeur;
    const double part = Partie(1).codes[0] / 4096.;
    EXPECT_NEAR(polarité == 1 ? 20 * part - 10 : 10 * part, jumelle.sortiesAnalogiques[0], 1e-9)
        << polarité << " " << valeur;
  }
  EXPECT_NE(pci.AO_WriteChannel(ici, 1, 0), 0);

  const std::uint16_t ici6208 = Enregistre(BibliothèquePCI::kType6208V);
  const auto là6208 = static_cast<std::uint16_t>(sim.Register_Card(BibliothèquePCI::kType6208V, 0));
  for (const auto& [canal, valeur] : Cas<std::uint16_t, std::int16_t>{
           {0, 0}, {7, 32767}, {7, -32768}, {1, -1}, {8, 1}, {15, 1}}) {
    EXPECT_EQ(pci.AO_WriteChannel(ici6208, canal, valeur),
              sim.AO_WriteChannel(là6208, canal, valeur))
        << "behind outputs 8 to 15 of the driver is nothing";
    EXPECT_NEAR(Partie(0, "/dev/comedi1").codes[canal & 7U] / 3276.8 - 10,
                jumelle6208.sortiesAnalogiques[canal & 7U], 1e-9)
        << canal << " " << valeur;
  }
  std::uint16_t rien = 0;
  EXPECT_NE(pci.AI_ReadChannel(ici6208, 0, 1, rien), 0);
  EXPECT_NE(pci.DO_WriteLine(ici6208, 0, 0, 1), 0);
  EXPECT_TRUE(registre->entrées.empty());
}

TEST_F(DesCartesComedi, OntLesLignesLogiquesDeLeurPilote) {
  const std::uint16_t poignée = Enregistre(BibliothèquePCI::kType9111);
  unsigned int& sorties = Partie(3).bits;
  sorties = 0xFFFF;
  EXPECT_EQ(pci.DO_WritePort(poignée, 0, 0xF08001), 0);
  EXPECT_EQ(sorties, 0x8001U);
  EXPECT_EQ(pci.DO_WriteLine(poignée, 0, 4, 1), 0);
  EXPECT_EQ(pci.DO_WriteLine(poignée, 0, 15, 0), 0);
  EXPECT_EQ(sorties, 0x11U) << "one line alone";
  Partie(2).bits = 0x8002;
  std::uint32_t mot = 0;
  EXPECT_EQ(pci.DI_ReadPort(poignée, 0, mot), 0);
  EXPECT_EQ(mot, 0x8002U);
  for (const auto& [bit, voulu] : Cas<std::uint16_t, int>{{0, 0}, {1, 1}, {15, 1}}) {
    std::uint16_t état = 7;
    EXPECT_EQ(pci.DI_ReadLine(poignée, 0, bit, état), 0);
    EXPECT_EQ(état, voulu) << bit;
  }
  std::uint16_t état = 0;
  EXPECT_NE(pci.DI_ReadLine(poignée, 0, 16, état), 0);
  EXPECT_NE(pci.DO_WriteLine(poignée, 0, 16, 1), 0);
  EXPECT_NE(pci.DO_WriteLine(poignée, 0, 1, 2), 0);
  EXPECT_EQ(pci.DO_WritePort(poignée, 1, 0), 0) << "a stop has nothing to clear there";
  EXPECT_NE(pci.DI_ReadPort(poignée, 1, mot), 0);
  EXPECT_TRUE(registre->entrées.empty());
  EXPECT_NE(pci.DO_WritePort(poignée, 1, 1), 0);
  EXPECT_NE(pci.DI_ReadLine(poignée, 1, 0, état), 0);
  EXPECT_NE(pci.DO_WriteLine(poignée, 1, 0, 1), 0);
  EXPECT_EQ(registre->entrées.size(), 1U) << "told once";
  EXPECT_PRED_FORMAT2(testing::IsSubstring, "n'a que les lignes logiques 0 à 15", Dit());
  EXPECT_EQ(sorties, 0x11U);
}

// Through board, block and channels: a block is refused for a line that it has, and for no other.
TEST_F(DesCartesComedi, ServentLesBlocsDeLeursLignes) {
  const FonctionRef bas =
      Ajoute("Entrée Logique", {0, 15}, {{"Driver", "DrvPCI9111HR/Vorlanex EL"}});
  const FonctionRef haut =
      Ajoute("Entrée Logique", {1, 16}, {{"Driver", "DrvPCI9111HR/Vorlanex EL"}});
  const FonctionRef sorties =
      Ajoute("Sortie Logique", {2, 16}, {{"Driver", "DrvPCI9111HR/Vorlanex SL"}});
  Partie(3).bits = 0xFFFF;
  Démarre("DrvPCI9111HR", "", "0");
  EXPECT_EQ(Partie(3).bits, 0U) << "cleared at the start";
  Partie(2).bits = 0x8003;
  bas->MetàJour();
  EXPECT_EQ(Lues(bas), (std::vector<double>{-1, -1}));
  EXPECT_TRUE(registre->entrées.empty()) << Dit();
  haut->MetàJour();
  EXPECT_EQ(Lues(haut), (std::vector<double>{0, 0}));
  EXPECT_PRED_FORMAT2(testing::IsSubstring, "refusée par la carte, ligne 16", Dit());

  const auto écrit = [&](double deux, double seize) {
    Le(sorties, 2).ValeurCanal(deux);
    Le(sorties, 16).ValeurCanal(seize);
    sorties->MetàJour();
    return Partie(3).bits;
  };
  EXPECT_EQ(écrit(kVrai, 0), 4U);
  EXPECT_EQ(écrit(0, kVrai), 0U);
  EXPECT_TRUE(registre->Contient("n'a que les lignes logiques 0 à 15"));
  appareils.at("/dev/comedi0").panne = ENODEV;
  bas->MetàJour();
  EXPECT_EQ(Lues(bas), (std::vector<double>{0, 0})) << "a board that is lost opens its contacts";
}

TEST_F(DesCartesComedi, SeComptentParModèle) {
  appareils["/dev/comedi2"].erreur = ENODEV;
  appareils["/dev/comedi4"] = Une9111("pci9111_hr");
  appareils["/dev/comedi9"] = Une9111("pci9111");
  {
    PciComedi cartes(registre, [](std::string&) { return &kAppels; });
    for (const auto& [type, numéro, fichier] : Cas<std::uint16_t, std::uint16_t, const char*>{
             {BibliothèquePCI::kType9111, 2, "/dev/comedi9"},
             {BibliothèquePCI::kType9111, 1, "/dev/comedi4"},
             {BibliothèquePCI::kType6208V, 0, "/dev/comedi1"}}) {
      const std::int16_t poignée = cartes.Register_Card(type, numéro);
      EXPECT_GT(poignée, 47) << "no number of a board";
      EXPECT_EQ(appareils.at(fichier).ouvertures, 1) << fichier;
      EXPECT_EQ(cartes.Register_Card(type, numéro), poignée);
      EXPECT_EQ(appareils.at(fichier).ouvertures, 1) << fichier;
    }
    EXPECT_EQ(appareils.at("/dev/comedi0").ouvertures, 0) << "looked at, and let go";
  }
  for (const auto& [fichier, appareil] : appareils) EXPECT_EQ(appareil.ouvertures, 0) << fichier;
  EXPECT_LT(pci.Register_Card(7, 0), 0);
  for (const std::uint16_t poignée : std::initializer_list<std::uint16_t>{0, 1, 0xFFFF}) {
    EXPECT_NE(pci.DO_WritePort(poignée, 0, 1), 0) << poignée;
  }
}

TEST_F(DesCartesComedi, DisentCeQuiManqueEtQueFaire) {
  struct Défaut {
    std::function<void()> arrive;
    const char* quoi;
    const char* conseil;
  };
  const auto la9111 = []() -> AppareilComedi& { return appareils["/dev/comedi0"]; };
  const Défaut défauts[] = {
      {[&] { manque = "cannot open"; }, "la bibliothèque comedi manque (cannot open)",
       "installez le paquet libcomedi0"},
      {[&] { appareils.clear(); }, "PCI 9111 n° 0 absente, aucun appareil /dev/comedi*",
       "chargez son pilote"},
      {[&] { appareils.erase("/dev/comedi0"); }, "il n'y a que /dev/comedi1 (pci6208)",
       "son numéro"},
      {[&] { la9111().nom = nullptr; }, "/dev/comedi0 (sans nom)", "son numéro"},
      {[&] { la9111().erreur = EACCES; }, "/dev/comedi0 ne s'ouvre pas (Permission denied)",
       "droits de /dev/comedi*"},
      {[&] { la9111().erreur = EIO; }, "/dev/comedi0 ne s'ouvre pas", "dmesg"},
      {[&] { la9111().parties[0].plusGrand = 0xFFF; },
       "entrées analogiques de codes 0 à 4095 au lieu de 65535", "comedi_board_info /dev/comedi0"},
      {[&] { la9111().parties[0].calibres[4].max = 0.5; }, "il manque un calibre", "pilote"},
      {[&] { la9111().parties[0].calibres[1].unité = 1; }, "il manque un calibre", "pilote"},
      {[&] { la9111().parties[2].voies = 8; }, "8 entrées logiques au lieu de 16", "pilote"},
      {[&] { la9111().parties.pop_back(); }, "pas de sorties logiques", "pilote"}};
  for (const Défaut& défaut : défauts) {
    appareils["/dev/comedi0"] = Une9111("pci9111");
    appareils["/dev/comedi1"] = Une6208("pci6208");
    registre->entrées.clear();
    défaut.arrive();
    PciComedi cartes(registre, [this](std::string& pourquoi) {
      pourquoi = manque;
      return manque.empty() ? &kAppels : nullptr;
    });
    EXPECT_LT(cartes.Register_Card(BibliothèquePCI::kType9111, 0), 0) << défaut.quoi;
    EXPECT_LT(cartes.Register_Card(BibliothèquePCI::kType9111, 0), 0) << défaut.quoi;
    EXPECT_EQ(registre->entrées.size(), 1U) << "told once";
    EXPECT_PRED_FORMAT2(testing::IsSubstring, défaut.quoi, Dit());
    EXPECT_PRED_FORMAT2(testing::IsSubstring, défaut.conseil, Dit());
    for (const auto& [fichier, appareil] : appareils) EXPECT_EQ(appareil.ouvertures, 0) << fichier;
    manque.clear();
  }
  // The boards behind one that cannot be opened have numbers that nobody knows.
  appareils["/dev/comedi0"].erreur = EACCES;
  appareils["/dev/comedi1"] = Une9111("pci9111");
  EXPECT_LT(pci.Register_Card(BibliothèquePCI::kType9111, 0), 0);
}

TEST_F(DesCartesComedi, SePerdentEtSeRetrouvent) {
  const std::uint16_t poignée = Enregistre(BibliothèquePCI::kType9111);
  AppareilComedi& appareil = appareils.at("/dev/comedi0");
  appareil.panne = ENODEV;
  std::uint16_t valeur = 7;
  std::uint32_t mot = 7;
  (void)pci.AO_9111_Config(poignée, 1);
  for (int fois = 0; fois < 2; ++fois) {
    EXPECT_NE(pci.AI_ReadChannel(poignée, 0, 1, valeur), 0);
    EXPECT_NE(pci.AO_WriteChannel(poignée, 0, 5), 0);
    EXPECT_NE(pci.DI_ReadPort(poignée, 0, mot), 0);
    EXPECT_NE(pci.DI_ReadLine(poignée, 0, 1, valeur), 0);
    EXPECT_NE(pci.DO_WritePort(poignée, 0, 5), 0);
    EXPECT_NE(pci.DO_WriteLine(poignée, 0, 1, 1), 0);
  }
  EXPECT_EQ(valeur, 7U) << "what no call gave stays";
  EXPECT_EQ(mot, 7U);
  EXPECT_EQ(registre->entrées.size(), 1U);
  EXPECT_PRED_FORMAT2(testing::IsSubstring,
                      "PCI 9111 n° 0 (/dev/comedi0) : lecture d'une entrée analogique refusée (No",
                      Dit());
  appareil.erreur = ENODEV;
  EXPECT_LT(pci.Register_Card(BibliothèquePCI::kType9111, 0), 0);
  EXPECT_NE(pci.DI_ReadPort(poignée, 0, mot), 0);
  appareil.erreur = appareil.panne = 0;
  EXPECT_EQ(Enregistre(BibliothèquePCI::kType9111), poignée);
  EXPECT_EQ(pci.DI_ReadPort(poignée, 0, mot), 0);
  EXPECT_NE(pci.AO_WriteChannel(poignée, 0, 5), 0) << "its polarity is to be told again";
}

// The real library where it is installed; no machine has that many boards.
TEST(PciComedi, DitCeQuiManqueACetteMachine) {
  const auto registre = Crée<essai::Registre>();
  PciComedi pci(registre);
  EXPECT_LT(pci.Register_Card(BibliothèquePCI::kType9111, 1000), 0);
  EXPECT_LT(pci.Register_Card(BibliothèquePCI::kType9111, 1000), 0);
  ASSERT_EQ(registre->entrées.size(), 1U) << "told once";
  EXPECT_TRUE(registre->Contient("manque (libcomedi.so.0") ||
              registre->Contient("Carte PCI 9111 n° 1000 "))
      << registre->entrées.front().message;
}

}  // namespace
}  // namespace zuma::linux_
