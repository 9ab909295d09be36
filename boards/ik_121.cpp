#include "boards/ik_121.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <string>

namespace zuma {
namespace {

// Registers of an axis: four words a page, the page chosen at one port for both axes.
constexpr std::uint16_t kMasqueRegistre = 0x1F;
constexpr std::uint16_t kPage = 8;  // port
constexpr std::uint16_t kPortsParAxe = 4;
constexpr std::uint16_t kInitialisation = 0x0C;
constexpr std::uint16_t kCommandeEtat = 0x0E;
constexpr std::array<std::uint16_t, 2> kPremierMot{0, 6};  // of each latch

constexpr std::uint16_t kMarche = 1;
constexpr std::array<std::uint16_t, 2> kRemiseAZéro{0x48, 0x1C};

constexpr std::int64_t kMot = 65536;

constexpr std::uint16_t kBusVide = 0xFFFF;  // read where no board is
// Counts that an encoder makes in a second at the most: 400 kHz, each period in 1024 parts.
constexpr double kComptesParSeconde = 4.1e8;
constexpr double kJeu = 1e6;  // counts, for a clock that stands still between two reads

}  // namespace

std::uint16_t IK_121::Choisit(std::int16_t axe, std::uint16_t registre) {
  if (axe != 1 && axe != 2) {
    throw Echec(Numéro::IndiceHorsPlage,
                "Axe " + std::to_string(axe) + " absent de la carte, qui a les axes 1 et 2");
  }
  const unsigned numéro = registre & kMasqueRegistre;
  EcritMot(kPage, static_cast<std::uint16_t>(numéro / 4));
  return static_cast<std::uint16_t>((numéro & 3U) + (axe == 2 ? kPortsParAxe : 0U));
}

std::uint16_t IK_121::LitRegistre(std::int16_t axe, std::uint16_t registre) {
  return LitMot(Choisit(axe, registre));
}

void IK_121::EcritRegistre(std::int16_t axe, std::uint16_t registre, std::uint16_t mot) {
  EcritMot(Choisit(axe, registre), mot);
}

void IK_121::IK121_Initialise() {
  IK121_InitialiseAxe(1);
  IK121_InitialiseAxe(2);
}

void IK_121::IK121_InitialiseAxe(std::int16_t axe) {
  EcritRegistre(axe, kInitialisation, kMarche);
  for (const std::uint16_t mot : kRemiseAZéro) EcritRegistre(axe, kCommandeEtat, mot);
  EcritRegistre(axe, kCommandeEtat, LeMatériel().plateforme.réglages.ik121.départCompteur);
  derniers_[static_cast<std::size_t>(axe - 1)] = {0, LeMatériel().timer->LitMicrosecondes()};
}

std::int64_t IK_121::IK121_Lecture(std::int16_t axe, std::int32_t latch) {
  if (latch != 0 && latch != 1) {
    throw Echec(Numéro::IndiceHorsPlage,
                "Latch " + std::to_string(latch) + " absent de la carte, qui a les latchs 0 et 1");
  }
  const RéglagesIK121& réglages = LeMatériel().plateforme.réglages.ik121;
  const auto rang = static_cast<std::size_t>(latch);
  EcritRegistre(axe, kCommandeEtat, réglages.demandeLatch[rang]);
  const std::uint16_t état = AttendLatch(axe, rang);
  std::array<std::uint16_t, 3> mots{};
  auto registre = kPremierMot[rang];
  for (std::uint16_t& mot : mots) {
    mot = LitRegistre(axe, registre);
    registre = static_cast<std::uint16_t>(registre + 2);
  }
  if (état == kBusVide && std::ranges::all_of(mots, [](auto mot) { return mot == kBusVide; })) {
    throw Echec(Numéro::MatérielAbsent,
                "Axe " + std::to_string(axe) + " : la carte ne répond plus");
  }
  const std::int64_t compte = CompteIK121(mots, réglages.motHaut);
  ExigeUnMouvementPossible(axe, compte);
  return compte;
}

// Nothing guards the words on their way: a count that no encoder can have reached since the last
// one is none.
void IK_121::ExigeUnMouvementPossible(std::int16_t axe, std::int64_t compte) {
  Dernier& dernier = derniers_[static_cast<std::size_t>(axe - 1)];
  const double maintenant = LeMatériel().timer->LitMicrosecondes();
  const double possible = kJeu + kComptesParSeconde * (maintenant - dernier.heure) / 1e6;
  const auto pas = static_cast<double>(compte) - static_cast<double>(dernier.compte);
  if (!(std::fabs(pas) <= possible)) {
    throw Echec(Numéro::MatérielAbsent, "Axe " + std::to_string(axe) + " : compte " +
                                            std::to_string(compte) + " impossible derrière " +
                                            std::to_string(dernier.compte));
  }
  dernier = {compte, maintenant};
}

// Not for ever: no stop must wait behind a board that hangs. The last look comes after the limit: a
// program that was held up finds its latch all the same.
std::uint16_t IK_121::AttendLatch(std::int16_t axe, std::size_t rang) {
  const unsigned prêt = 1U << rang;
  ZED_Timer& timer = *LeMatériel().timer;
  std::optional<double> fin;
  bool passée = false;
  for (;;) {
    const std::uint16_t état = LitRegistre(axe, kCommandeEtat);
    if ((état & prêt) != 0) return état;
    if (passée) {
      throw Echec(Numéro::MatérielAbsent,
                  "Axe " + std::to_string(axe) + " : la carte ne donne pas son compte");
    }
    const double maintenant = timer.LitMicrosecondes();
    if (!fin) fin = maintenant + kAttenteLatch;
    passée = maintenant > *fin;
  }
}

double IK_121::LitAnalogique(std::int16_t axe, std::int16_t&) {
  const std::int64_t compte = IK121_Lecture(axe, LeMatériel().plateforme.réglages.ik121.latch);
  return static_cast<double>(-compte);
}

std::int64_t CompteIK121(std::span<const std::uint16_t, 3> mots, MotHautIK121 motHaut) {
  const std::int64_t bas = mots[0] + kMot * mots[1];
  const auto haut = static_cast<std::int16_t>(mots[2]);
  if (motHaut == MotHautIK121::Compte) return bas + kMot * kMot * haut;
  return VersEntier32(static_cast<double>(haut < 0 ? bas - kMot * kMot : bas));
}

}  // namespace zuma
