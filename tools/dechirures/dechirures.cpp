// Hunts for torn reads: one writer turns a small ring as fast as it can, readers take the last
// sample again and again, and each word of it must be of the same turn: dechirures READS READERS
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <thread>
#include <vector>

#include "publication/lecture/lecteur.h"

namespace {

namespace p = zuma::publication;

constexpr std::size_t kObjets = 16;
constexpr std::size_t kPlaces = 4;  // small: readers are overtaken all the time
constexpr std::size_t kMots = p::RangDe(p::MotDEchantillon::kNombre) + kObjets * p::kMotsParObjet;
constexpr std::size_t kDescription = p::kMotsDEnTête;
constexpr std::size_t kPlacesDeDescription = 1024;
constexpr std::size_t kEchantillons = kDescription + kPlacesDeDescription;

std::string Description() {
  p::ChassisPublié chassis;
  chassis.objets.resize(kObjets);
  return p::EnJson(chassis);
}

void Pose(std::span<p::Mot> mots, p::EnTête champ, std::uint64_t valeur) {
  mots[p::RangDe(champ)].store(valeur, std::memory_order_release);
}

std::shared_ptr<p::Zone> LaZone() {
  auto zone = p::Zone::Privée((kEchantillons + kPlaces * kMots) * sizeof(p::Mot));
  const auto mots = zone->Mots();
  const std::string json = Description();
  for (std::size_t i = 0; i < json.size(); ++i) {
    const auto octet = static_cast<std::uint64_t>(static_cast<unsigned char>(json[i]));
    mots[kDescription + i / 8].fetch_or(octet << (i % 8 * 8));
  }
  Pose(mots, p::EnTête::Description, kDescription);
  Pose(mots, p::EnTête::DescriptionPlaces, kPlacesDeDescription);
  Pose(mots, p::EnTête::DescriptionOctets, json.size());
  Pose(mots, p::EnTête::Echantillons, kEchantillons);
  Pose(mots, p::EnTête::EchantillonsPlaces, kPlaces);
  Pose(mots, p::EnTête::EchantillonMots, kMots);
  Pose(mots, p::EnTête::Génération, 2);
  return zone;
}

void Ecrit(std::span<p::Mot> mots, std::uint64_t numéro) {
  {
    p::EnEcriture place(mots.subspan(kEchantillons + numéro % kPlaces * kMots, kMots), numéro);
    for (std::size_t i = 1; i < kMots; ++i) place.Ecrit(i, static_cast<double>(numéro));
  }
  Pose(mots, p::EnTête::EchantillonsEcrits, numéro + 1);
}

// Values, ages and states are parts of one number each: only whole turns have them all alike.
bool EstEntier(const p::Echantillon& échantillon) {
  const auto numéro = static_cast<double>(échantillon.Numéro());
  for (std::size_t i = 0; i < kObjets; ++i) {
    if (échantillon[i].valeur != numéro) return false;
  }
  return échantillon.Secondes() == numéro && échantillon.Durée() == numéro;
}

}  // namespace

int main(int nombre, char** arguments) {
  const std::uint64_t lectures = nombre > 1 ? std::strtoull(arguments[1], nullptr, 10) : 1'000'000;
  const int lecteurs = nombre > 2 ? std::atoi(arguments[2]) : 2;
  const auto zone = LaZone();
  std::atomic<bool> fin = false;
  std::atomic<std::uint64_t> lus = 0, déchirés = 0;
  std::uint64_t écrits = 0;
  Ecrit(zone->Mots(), écrits++);
  std::thread écrivain([&] {
    while (!fin.load(std::memory_order_relaxed)) Ecrit(zone->Mots(), écrits++);
  });
  std::vector<std::thread> fils;
  for (int i = 0; i < lecteurs; ++i) {
    fils.emplace_back([&, lecteur = p::Lecteur(zone)] {
      p::Echantillon échantillon;
      for (std::uint64_t n = 0; n < lectures / static_cast<std::uint64_t>(lecteurs);) {
        if (!lecteur.LitLeDernier(échantillon)) continue;
        ++n;
        if (!EstEntier(échantillon)) ++déchirés;
      }
      lus += lectures / static_cast<std::uint64_t>(lecteurs);
    });
  }
  for (std::thread& fil : fils) fil.join();
  fin = true;
  écrivain.join();
  std::printf("%llu samples written, %llu read by %d readers, %llu torn\n",
              static_cast<unsigned long long>(écrits), static_cast<unsigned long long>(lus.load()),
              lecteurs, static_cast<unsigned long long>(déchirés.load()));
  return déchirés == 0 ? 0 : 1;
}
