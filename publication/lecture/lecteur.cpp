#include "publication/lecture/lecteur.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <thread>

#include <fcntl.h>
#include <unistd.h>

namespace zuma::publication {
namespace {

std::uint64_t PremierDe(std::uint64_t écrits, std::uint64_t places) {
  return écrits > places ? écrits - places : 0;
}

// The bytes of a text that lies in words, `octets` of them.
std::string TexteDe(std::span<const std::uint64_t> mots, std::size_t octets) {
  std::string texte(std::min(octets, mots.size_bytes()), '\0');
  std::memcpy(texte.data(), mots.data(), texte.size());
  return texte;
}

}  // namespace

Lecteur::Lecteur(const std::string& fichier) : Lecteur(Zone::EnLecture(fichier)) {}

Lecteur::Lecteur(std::shared_ptr<const Zone> zone)
    : zone_(std::move(zone)), mots_(std::as_const(*zone_).Mots()) {
  Actualise();
}

bool Lecteur::Actualise() {
  constexpr int kEssais = 1000;  // of a millisecond: a writer that died amid it never ends
  if (Champ(EnTête::Génération) == génération_) return false;
  for (int essai = 0; essai < kEssais; ++essai) {
    const std::uint64_t avant = Champ(EnTête::Génération);
    const std::uint64_t octets = Champ(EnTête::DescriptionOctets);
    const auto places = mots_.subspan(Champ(EnTête::Description), Champ(EnTête::DescriptionPlaces));
    std::vector<std::uint64_t> copie(
        std::min<std::size_t>(places.size(), octets / sizeof(std::uint64_t) + 1));
    for (std::size_t i = 0; i < copie.size(); ++i) {
      copie[i] = places[i].load(std::memory_order_acquire);
    }
    if (avant % 2 == 0 && Champ(EnTête::Génération) == avant) {
      chassis_ = LitLaDescription(TexteDe(copie, octets));
      génération_ = avant;
      const std::size_t mots =
          RangDe(MotDEchantillon::kNombre) + chassis_.objets.size() * kMotsParObjet;
      if (mots > Champ(EnTête::EchantillonMots)) {
        throw Illisible("its description does not fit its samples");
      }
      return true;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  throw Illisible("its description was never finished");
}

std::span<const Mot> Lecteur::PlaceDe(EnTête anneau, EnTête places, std::uint64_t mots,
                                      std::uint64_t numéro) const noexcept {
  return mots_.subspan(Champ(anneau) + numéro % Champ(places) * mots, mots);
}

std::uint64_t Lecteur::Suivant() const noexcept {
  return Champ(EnTête::EchantillonsEcrits);
}
std::uint64_t Lecteur::Places() const noexcept {
  return Champ(EnTête::EchantillonsPlaces);
}
std::uint64_t Lecteur::Premier() const noexcept {
  return PremierDe(Suivant(), Places());
}

Lu Lecteur::Lit(std::uint64_t numéro, Echantillon& échantillon) const {
  const std::uint64_t mots = Champ(EnTête::EchantillonMots);
  if (numéro >= Suivant()) return Lu::PasEncore;
  échantillon.mots_.resize(mots);
  échantillon.numéro_ = numéro;
  const auto place = PlaceDe(EnTête::Echantillons, EnTête::EchantillonsPlaces, mots, numéro);
  return LitLaPlace(place, numéro, échantillon.mots_) ? Lu::Bon : Lu::Dépassé;
}

bool Lecteur::LitLeDernier(Echantillon& échantillon) const {
  while (true) {
    const std::uint64_t écrits = Suivant();
    if (écrits == 0) return false;
    if (Lit(écrits - 1, échantillon) == Lu::Bon) return true;
    if (Suivant() == écrits) return false;  // a writer that died amid a turn of the ring
  }
}

std::uint64_t Lecteur::PremierDepuis(double secondes) const {
  Echantillon échantillon;
  std::uint64_t bas = Premier();
  std::uint64_t haut = Suivant();
  while (bas < haut) {
    const std::uint64_t milieu = bas + (haut - bas) / 2;
    const bool avant = Lit(milieu, échantillon) != Lu::Bon || échantillon.Secondes() < secondes;
    if (avant) {
      bas = milieu + 1;
    } else {
      haut = milieu;
    }
  }
  return bas;
}

std::uint64_t Lecteur::EvènementSuivant() const noexcept {
  return Champ(EnTête::EvènementsEcrits);
}
std::uint64_t Lecteur::PremierEvènement() const noexcept {
  return PremierDe(EvènementSuivant(), Champ(EnTête::EvènementsPlaces));
}

Lu Lecteur::Lit(std::uint64_t numéro, EvènementLu& évènement) const {
  if (numéro >= EvènementSuivant()) return Lu::PasEncore;
  std::array<std::uint64_t, kMotsDEvènement> mots{};
  const auto place = PlaceDe(EnTête::Evènements, EnTête::EvènementsPlaces, kMotsDEvènement, numéro);
  if (!LitLaPlace(place, numéro, mots)) return Lu::Dépassé;
  const auto mot = [&](MotDEvènement rang) { return mots.at(RangDe(rang)); };
  évènement.numéro = numéro;
  évènement.secondes = std::bit_cast<double>(mot(MotDEvènement::Secondes));
  évènement.passe = mot(MotDEvènement::Passe);
  évènement.genre = static_cast<GenreDEvènement>(mot(MotDEvènement::Genre));
  évènement.objet.reset();
  if (mot(MotDEvènement::Objet) < chassis_.objets.size()) {
    évènement.objet = mot(MotDEvènement::Objet);
  }
  évènement.valeur = std::bit_cast<double>(mot(MotDEvènement::Valeur));
  évènement.texte = TexteDe(std::span(mots).last(kMotsDeTexte), mot(MotDEvènement::Octets));
  return Lu::Bon;
}

int Lecteur::Processus() const noexcept {
  return static_cast<int>(Champ(EnTête::Processus));
}
std::uint64_t Lecteur::DépartUtc() const noexcept {
  return Champ(EnTête::DépartUtc);
}
bool Lecteur::EstFini() const noexcept {
  return Champ(EnTête::Fini) != 0;
}
bool Lecteur::EstEnMarche() const {
  return !EstFini() && zone_->EstTenue();
}

std::string DossierDesPublications() {
  const char* choisi = std::getenv("ZUMA_PUBLICATIONS");
  return choisi != nullptr && *choisi != '\0' ? choisi : "/dev/shm";
}

bool EstVivante(const std::string& fichier) {
  const int descripteur = ::open(fichier.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (descripteur < 0) return false;
  const bool vivante = EstVerrouillé(descripteur);
  ::close(descripteur);
  return vivante;
}

std::vector<Publiée> Publications(const std::string& dossier) {
  namespace fs = std::filesystem;
  std::vector<Publiée> publiées;
  std::error_code erreur;
  for (fs::directory_iterator i(dossier, erreur), fin; !erreur && i != fin; i.increment(erreur)) {
    const std::string nom = i->path().filename();
    if (!nom.starts_with("zuma-") || !(nom.ends_with(".pub") || nom.ends_with(".pub.before"))) {
      continue;
    }
    publiées.push_back({i->path(), EstVivante(i->path())});
  }
  std::ranges::sort(publiées, [](const Publiée& a, const Publiée& b) {
    return a.vivante != b.vivante ? a.vivante : a.fichier < b.fichier;
  });
  return publiées;
}

}  // namespace zuma::publication
