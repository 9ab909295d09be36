// The PCI boards over a comedi library made from its manual: what its calls give and refuse.
#include "platform/linux/pci_comedi.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cmath>
#include <cstring>
#include <map>
#include <utility>

#include <gtest/gtest.h>

#include "outils/banc_instrument.h"
#include "outils/cas.h"
#include "sim/cartes_pci.h"

namespace zuma::linux_ {

// A subdevice: its kind, its channels, codes 0 to `plusGrand`, its ranges.
struct Partie {
  int type;
  unsigned int voies;
  unsigned int plusGrand = 1;
  std::vector<CalibreComedi> calibres{{0, 1, 0}};
  std::array<double, 16> volts{};        // at the inputs
  std::array<unsigned int, 16> codes{};  // last written to the outputs
  unsigned int bits = 0;
  unsigned int aiguillage = ~0U;  // channel and range of the last conversion, and its voltage
  double retenu = 0;
};

struct AppareilComedi {
  const char* nom = nullptr;
  std::vector<Partie> parties{};
  int erreur = 0;  // of `comedi_open`
  int panne = 0;   // of each transfer
  int ouvertures = 0;
};

namespace {

using essai::Cas;
using Numéros = std::initializer_list<std::uint16_t>;
using Codes = std::initializer_list<std::int16_t>;

enum : int { kEA = 1, kSA, kEL, kSL };  // kinds of subdevices in the library's header

AppareilComedi Une9111(const char* nom) {
  std::vector<CalibreComedi> calibres;
  for (const double v : {10., 5., 2.5, 1.25, 0.625}) calibres.push_back({-v, v, 0});
  return {nom, {{kEA, 16, 0xFFFF, calibres}, {kSA, 1, 0xFFF}, {kEL, 16}, {kSL, 16}}};
}
std::map<std::string, AppareilComedi> appareils;
int dernièreErreur = 0;
int Echoue(int erreur) {
  dernièreErreur = erreur;
  return -1;
}

// A channel for a transfer, of a subdevice of that kind, while the board is there.
Partie* La(AppareilComedi* a, int type, unsigned int partie, unsigned int voie,
           unsigned int calibre) {
  Partie* p = partie < a->parties.size() ? &a->parties[partie] : nullptr;
  const bool existe =
      p != nullptr && type == p->type && voie < p->voies && calibre < p->calibres.size();
  dernièreErreur = existe ? a->panne : EINVAL;
  return dernièreErreur == 0 ? p : nullptr;
}

AppareilComedi* Ouvre(const char* fichier) {
  const auto trouvé = appareils.find(fichier);
  const int erreur = trouvé == appareils.end() ? ENOENT : trouvé->second.erreur;
  if (erreur != 0) return Echoue(erreur), nullptr;
  ++trouvé->second.ouvertures;
  return &trouvé->second;
}
int Cherche(AppareilComedi* a, int type, unsigned int) {
  const auto trouvée = std::ranges::find(a->parties, type, &Partie::type);
  return trouvée == a->parties.end() ? Echoue(EINVAL)
                                     : static_cast<int>(trouvée - a->parties.begin());
}
int Voies(AppareilComedi* a, unsigned int partie) {
  return static_cast<int>(a->parties[partie].voies);
}
unsigned int PlusGrand(AppareilComedi* a, unsigned int partie, unsigned int) {
  return a->parties[partie].plusGrand;
}
CalibreComedi* Calibre(AppareilComedi* a, unsigned int partie, unsigned int, unsigned int calibre) {
  std::vector<CalibreComedi>& calibres = a->parties[partie].calibres;
  return calibre < calibres.size() ? &calibres[calibre] : nullptr;
}
// Codes are linear from the lower bound of the range to the upper one. There is no pause for a
// multiplexed input to settle: half of the voltage before is still there.
int Lit(AppareilComedi* a, unsigned int partie, unsigned int voie, unsigned int calibre,
        unsigned int, unsigned int* code) {
  Partie* p = La(a, kEA, partie, voie, calibre);
  if (p == nullptr) return -1;
  const CalibreComedi& c = p->calibres[calibre];
  const unsigned int voulu = voie << 8U | calibre;
  const bool stable = std::exchange(p->aiguillage, voulu) == voulu;
  const double volts = stable ? p->volts[voie] : (p->volts[voie] + p->retenu) / 2;
  p->retenu = p->volts[voie];
  const double part = std::clamp((volts - c.min) / (c.max - c.min), 0., 1.);
  *code = static_cast<unsigned int>(std::lround(part * p->plusGrand));
  return 1;
}
int Ecrit(AppareilComedi* a, unsigned int partie, unsigned int voie, unsigned int calibre,
          unsigned int, unsigned int code) {
  Partie* p = La(a, kSA, partie, voie, calibre);
  if (p == nullptr || code > p->plusGrand) return Echoue(p == nullptr ? dernièreErreur : EINVAL);
  p->codes[voie] = code;
  return 1;
}
// Outputs of the mask are written, then all lines are read, outputs as they were written last.
int Echange(AppareilComedi* a, unsigned int partie, unsigned int masque, unsigned int* bits,
            unsigned int première) {
  const bool sorties = partie < a->parties.size() && a->parties[partie].type == kSL;
  Partie* p = La(a, sorties ? kSL : kEL, partie, première, 0);
  if (p == nullptr) return -1;
  const unsigned int écrits = sorties ? masque << première & ((1U << p->voies) - 1) : 0;
  p->bits = (p->bits & ~écrits) | (*bits << première & écrits);
  *bits = p->bits >> première;
  return 0;
}

const AppelsComedi kAppels{
    .comedi_open = &Ouvre,
    .comedi_close = [](AppareilComedi* a) { return --a->ouvertures, 0; },
    .comedi_errno = [] { return dernièreErreur; },
    .comedi_strerror = [](int erreur) -> const char* { return std::strerror(erreur); },
    .comedi_get_board_name = [](AppareilComedi* a) { return a->nom; },
    .comedi_find_subdevice_by_type = &Cherche,
    .comedi_get_n_channels = &Voies,
    .comedi_get_maxdata = &PlusGrand,
    .comedi_get_range = &Calibre,
    .comedi_data_read = &Lit,
    .comedi_data_write = &Ecrit,
    .comedi_dio_bitfield2 = &Echange};

std::string manque;
const AppelsComedi* Charge(std::string& pourquoi) {
  pourquoi = manque;
  return manque.empty() ? &kAppels : nullptr;
}

class DesCartesComedi : public testing::Test, public essai::BancInstrument {
 public:
  static constexpr std::uint16_t k9111 = BibliothèquePCI::kType9111;
  static constexpr std::uint16_t k6208 = BibliothèquePCI::kType6208V;
  DesCartesComedi() {
    Remet();
    plateforme.pci = &pci;
  }
  ~DesCartesComedi() override { chassis.Cartes({}); }
  static void Remet() {
    manque.clear();
    appareils = {{"/dev/comedi0", Une9111("pci9111_hr")},
                 {"/dev/comedi1", {"pci6208", {{kSA, 16, 0xFFFF}, {kEL, 4}, {kSL, 4}}}}};
  }
  static AppareilComedi& Celle9111() { return appareils["/dev/comedi0"]; }
  static std::uint16_t Enregistre(BibliothèquePCI& b, std::uint16_t type) {
    return static_cast<std::uint16_t>(b.Register_Card(type, 0));
  }
  PciComedi pci{registre, &Charge};
};

// The twin knows nothing of comedi: both must show the drivers the same board.
TEST_F(DesCartesComedi, MesurentEtCommandentCommeLeursJumelles) {
  sim::BibliothèquePCISimulée sim;
  auto& bornes = sim.Enfiche(k9111, 0).bornes;
  auto& sorties6208 = sim.Enfiche(k6208, 0).bornes.sortiesAnalogiques;
  const std::uint16_t ici = Enregistre(pci, k9111);
  const std::uint16_t là = Enregistre(sim, k9111);
  EXPECT_NE(pci.AI_9111_Config(ici, 2, 0, 0), 0);
  EXPECT_EQ(pci.AI_9111_Config(ici, 1, 0, 0) + sim.AI_9111_Config(là, 1, 0, 0), 0);
  for (const double volts : {9.9, -4., 0.6, -0.6, 0., -11., 11.}) {
    bornes.entréesAnalogiques.fill(volts);
    bornes.entréesAnalogiques[3] = -volts / 2;
    std::copy_n(bornes.entréesAnalogiques.begin(), 16, Celle9111().parties[0].volts.begin());
    for (std::uint16_t gain = 0; gain <= 6; ++gain) {
      for (const std::uint16_t canal : Numéros{0, 3, 15, 16}) {
        std::uint16_t lu = 7, voulu = 7;
        EXPECT_EQ(pci.AI_ReadChannel(ici, canal, gain, lu),
                  sim.AI_ReadChannel(là, canal, gain, voulu));
        EXPECT_NEAR(static_cast<std::int16_t>(lu), static_cast<std::int16_t>(voulu), 1)
            << volts << " V, channel " << canal << ", gain " << gain;
      }
    }
  }
  EXPECT_NE(pci.AO_WriteChannel(ici, 0, 5), 0) << "its polarity is not known";
  const std::uint16_t ici6208 = Enregistre(pci, k6208), là6208 = Enregistre(sim, k6208);
  for (const std::int16_t valeur : Codes{0, -1, 2047, -2048, 2048, -2049, 32767, -32768}) {
    for (const std::uint16_t polarité : Numéros{0, 1}) {
      EXPECT_EQ(pci.AO_9111_Config(ici, polarité) + sim.AO_9111_Config(là, polarité), 0);
      const std::int16_t réponse = pci.AO_WriteChannel(ici, 0, valeur);
      EXPECT_EQ(réponse, sim.AO_WriteChannel(là, 0, valeur)) << valeur;
      if (réponse != 0) continue;
      const double volts = Celle9111().parties[1].codes[0] / 409.6;
      EXPECT_NEAR(polarité == 1 ? 2 * volts - 10 : volts, bornes.sortiesAnalogiques[0], 1e-9)
          << valeur;
    }
    // The driver has 16 outputs and nothing behind the upper ones.
    for (const std::uint16_t canal : Numéros{0, 7, 8}) {
      EXPECT_EQ(pci.AO_WriteChannel(ici6208, canal, valeur),
                sim.AO_WriteChannel(là6208, canal, valeur));
      const double volts = appareils["/dev/comedi1"].parties[0].codes[canal % 8] / 3276.8 - 10;
      EXPECT_NEAR(volts, sorties6208[canal % 8], 1e-9) << valeur;
    }
  }
  EXPECT_TRUE(registre->entrées.empty());
}

// Through board, block and channels. A block is refused for a line that it has, and for no other.
TEST_F(DesCartesComedi, OntLesLignesLogiquesDeLeurPilote) {
  constexpr const char* kEntrées = "DrvPCI9111HR/Vorlanex EL";
  const FonctionRef basses = Ajoute("Entrée Logique", {0, 15}, {{"Driver", kEntrées}});
  const FonctionRef hautes = Ajoute("Entrée Logique", {1, 16}, {{"Driver", kEntrées}});
  const FonctionRef sorties =
      Ajoute("Sortie Logique", {2, 15, 16}, {{"Driver", "DrvPCI9111HR/Vorlanex SL"}});
  unsigned int& sortis = Celle9111().parties[3].bits;
  sortis = 0xFFFF;
  Démarre("DrvPCI9111HR", "", "0");
  EXPECT_EQ(sortis, 0U) << "cleared at the start, though the other port is not there";
  for (const auto& [bits, lues] :
       Cas<unsigned int, std::vector<double>>{{0x8002, {0, -1}}, {1, {-1, 0}}}) {
    Celle9111().parties[2].bits = bits;
    basses->MetàJour();
    EXPECT_EQ(Lues(basses), lues);
    for (const CanalRef& canal : *basses->Canals()) canal->MetàJour();
    EXPECT_EQ(Lues(basses), lues) << "line by line";
  }
  for (const std::int32_t numéro : {2, 15}) Le(sorties, numéro).ValeurCanal(kVrai);
  sorties->MetàJour();
  EXPECT_EQ(sortis, 0x8004U);
  Le(sorties, 15).ValeurCanal(0);
  Le(sorties, 15).MetàJour();
  EXPECT_EQ(sortis, 4U) << "a line alone";
  EXPECT_TRUE(registre->entrées.empty());

  hautes->MetàJour();
  EXPECT_TRUE(registre->Contient("refusée par la carte, ligne 16"));
  Le(sorties, 16).ValeurCanal(kVrai);
  for (int fois = 0; fois < 2; ++fois) sorties->MetàJour();
  EXPECT_TRUE(registre->Contient("le pilote comedi n'a que les lignes logiques 0 à 15"));
  EXPECT_EQ(registre->entrées.size(), 2U) << "told once";
}

TEST_F(DesCartesComedi, SeComptentParModèleEtSeFerment) {
  appareils["/dev/comedi2"].erreur = ENODEV;
  appareils["/dev/comedi9"] = Une9111("pci9111");
  {
    PciComedi cartes(registre, &Charge);
    const std::int16_t seconde = cartes.Register_Card(k9111, 1);
    EXPECT_GT(seconde, 47) << "no number of a board";
    EXPECT_GT(cartes.Register_Card(k6208, 0), seconde);
    EXPECT_EQ(cartes.Register_Card(k9111, 1), seconde);
    EXPECT_EQ(appareils["/dev/comedi9"].ouvertures + appareils["/dev/comedi1"].ouvertures, 2);
    EXPECT_NE(cartes.DO_WritePort(1, 0, 1), 0);
    Celle9111().erreur = EACCES;
    EXPECT_LT(cartes.Register_Card(k9111, 0), 0) << "which board is the first, nobody knows";
  }
  for (const auto& [fichier, appareil] : appareils) EXPECT_EQ(appareil.ouvertures, 0) << fichier;
}

TEST_F(DesCartesComedi, DisentCeQuiManqueEtQueFaire) {
  const std::tuple<std::function<void()>, const char*, const char*> cas[] = {
      {[] { manque = "?"; }, "bibliothèque comedi manque (?)", "installez le paquet libcomedi0"},
      {[] { appareils.clear(); }, "PCI 9111 n° 0 absente, aucun appareil", "chargez son pilote"},
      {[] { appareils.erase("/dev/comedi0"); }, "que /dev/comedi1 (pci6208)", "son numéro"},
      {[] { Celle9111().nom = nullptr; }, "/dev/comedi0 (sans nom)", "son numéro"},
      {[] { Celle9111().erreur = EACCES; }, "/dev/comedi0 ne s'ouvre pas (Perm", "droits de /dev"},
      {[] { Celle9111().erreur = EIO; }, "/dev/comedi0 ne s'ouvre pas", "dmesg"},
      {[] { Celle9111().parties[0].plusGrand = 4095; }, "4095 au lieu de 65535", "pilote"},
      {[] { Celle9111().parties[0].calibres[4].max = 0.5; }, "il manque un calibre", "pilote"},
      {[] { Celle9111().parties[0].calibres[1].unité = 1; }, "il manque un calibre", "pilote"},
      {[] { Celle9111().parties[2].voies = 8; }, "8 entrées logiques au lieu de 16", "pilote"},
      {[] { Celle9111().parties.pop_back(); }, "pas de sorties logiques", "pilote"}};
  for (const auto& [arrive, quoi, conseil] : cas) {
    Remet();
    arrive();
    PciComedi cartes(registre, &Charge);
    for (int fois = 0; fois < 2; ++fois) EXPECT_LT(cartes.Register_Card(k9111, 0), 0) << quoi;
    ASSERT_EQ(registre->entrées.size(), 1U) << "told once: " << quoi;
    EXPECT_PRED_FORMAT2(testing::IsSubstring, quoi, registre->entrées[0].message);
    EXPECT_PRED_FORMAT2(testing::IsSubstring, conseil, registre->entrées[0].message);
    EXPECT_EQ(Celle9111().ouvertures, 0) << quoi;
    registre->entrées.clear();
  }
}

TEST_F(DesCartesComedi, SePerdentEtSeRetrouvent) {
  const std::uint16_t poignée = Enregistre(pci, k9111);
  (void)pci.AO_9111_Config(poignée, 1);
  Celle9111().panne = ENODEV;
  std::uint16_t lu = 7;
  std::uint32_t mot = 7;
  EXPECT_NE(pci.AI_ReadChannel(poignée, 0, 1, lu), 0);
  EXPECT_NE(pci.DI_ReadPort(poignée, 0, mot), 0);
  EXPECT_EQ(lu + mot, 14U) << "what no call gave stays";
  EXPECT_NE(pci.AO_WriteChannel(poignée, 0, 5), 0);
  EXPECT_NE(pci.DO_WritePort(poignée, 0, 5), 0);
  EXPECT_EQ(registre->entrées.size(), 1U) << "told once";
  EXPECT_TRUE(registre->Contient("/dev/comedi0) : lecture d'une entrée analogique refusée (No"));
  Celle9111().erreur = ENODEV;
  EXPECT_LT(pci.Register_Card(k9111, 0), 0);
  EXPECT_NE(pci.DO_WritePort(poignée, 0, 5), 0);
  Celle9111().erreur = Celle9111().panne = 0;
  EXPECT_EQ(Enregistre(pci, k9111), poignée);
  EXPECT_EQ(pci.DI_ReadPort(poignée, 0, mot), 0);
}

}  // namespace
}  // namespace zuma::linux_
