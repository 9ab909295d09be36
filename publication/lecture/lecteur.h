#pragma once

#include <bit>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "publication/lecture/disposition.h"
#include "publication/lecture/objets.h"
#include "publication/lecture/zone.h"

namespace zuma::publication {

/// What a sample says of one object.
struct Mesure {
  double valeur = 0;  ///< in units; points on a channel, 1 and 0 for on and off on logic objects;
                      ///< no number when there is no reading
  double âge = 0;     ///< seconds since the oldest of what it is made from was read
  std::uint32_t état = 0;  ///< bits of `Etat`; above them the state of a sensor

  /// True when that bit is set.
  [[nodiscard]] bool Est(Etat bit) const noexcept { return (état & bit) != 0; }
  /// `ENUM_ETAT_CAPTEUR` of a sensor.
  [[nodiscard]] std::uint32_t EtatDuCapteur() const noexcept { return état >> kDécalageDeLEtat; }
};

/// One sample. To be read into again and again: its memory stays.
class Echantillon {
 public:
  /// Number of the sample, from 0.
  [[nodiscard]] std::uint64_t Numéro() const noexcept { return numéro_; }
  /// Since the start of the frame, by the machine's clock.
  [[nodiscard]] double Secondes() const noexcept { return Nombre(MotDEchantillon::Secondes); }
  /// Of the monotonic clock of the system, nanoseconds.
  [[nodiscard]] std::uint64_t Monotone() const noexcept { return Mot(MotDEchantillon::Monotone); }
  /// Number of the last pass before it.
  [[nodiscard]] std::uint64_t Passe() const noexcept { return Mot(MotDEchantillon::Passe); }
  /// Of the longest pass since the sample before, seconds.
  [[nodiscard]] double Durée() const noexcept { return Nombre(MotDEchantillon::Durée); }
  /// A stop is latched.
  [[nodiscard]] bool Arrêt() const noexcept { return Mot(MotDEchantillon::Arrêt) != 0; }
  /// The sensors were refreshed since the sample before.
  [[nodiscard]] bool Rafraîchi() const noexcept { return Mot(MotDEchantillon::Rafraîchi) != 0; }
  /// How often they were, since the start.
  [[nodiscard]] std::uint64_t Rafraîchissements() const noexcept {
    return Mot(MotDEchantillon::Rafraîchissements);
  }
  /// The frame's timer, microseconds: where the host lets it stand during a pass, exactly what the
  /// sensors saw in their last refresh.
  [[nodiscard]] double Horloge() const noexcept { return Nombre(MotDEchantillon::Horloge); }
  /// What it says of the object of that rank.
  [[nodiscard]] Mesure operator[](std::size_t objet) const noexcept {
    const std::uint64_t* mots = &mots_[RangDe(MotDEchantillon::kNombre) + objet * kMotsParObjet];
    const auto état = static_cast<std::uint32_t>(mots[1]);
    const auto âge = static_cast<std::uint32_t>(mots[1] >> kDécalageDeLAge);
    return {std::bit_cast<double>(mots[0]), std::bit_cast<float>(âge), état};
  }

 private:
  friend class Lecteur;
  [[nodiscard]] std::uint64_t Mot(MotDEchantillon rang) const noexcept {
    return mots_[RangDe(rang)];
  }
  [[nodiscard]] double Nombre(MotDEchantillon rang) const noexcept {
    return std::bit_cast<double>(Mot(rang));
  }
  std::uint64_t numéro_ = 0;
  std::vector<std::uint64_t> mots_;
};

/// One event, as it was read.
struct EvènementLu {
  std::uint64_t numéro = 0;                         ///< from 0
  double secondes = 0;                              ///< since the start
  std::uint64_t passe = 0;                          ///< number of the pass
  GenreDEvènement genre = GenreDEvènement::Départ;  ///< what happened
  std::optional<std::size_t> objet;                 ///< its rank
  double valeur = 0;                                ///< a set point or state; 0 without one
  std::string texte;                                ///< cut where it did not fit
};

/// What became of a read.
enum class Lu : std::uint8_t {
  Bon,
  PasEncore,  ///< not written yet
  Dépassé     ///< overwritten meanwhile: the writer does not wait for readers
};

/// Looks at a publication, from this process or another one, without the writer noticing. Not for
/// two threads at once; each has its own.
class Lecteur {
 public:
  /// Throws `Illisible`.
  explicit Lecteur(const std::string& fichier);
  /// Looks at memory of this process.
  explicit Lecteur(std::shared_ptr<const Zone> zone);

  /// Its description, as last read.
  [[nodiscard]] const ChassisPublié& LeChassis() const noexcept { return chassis_; }
  /// Reads the description again when it was written anew; true when it was.
  bool Actualise();

  ///@{
  /// Number behind the last sample, and of the first one that is still there.
  [[nodiscard]] std::uint64_t Suivant() const noexcept;
  [[nodiscard]] std::uint64_t Premier() const noexcept;
  ///@}
  /// Samples that the ring holds.
  [[nodiscard]] std::uint64_t Places() const noexcept;
  /// Reads a sample by its number.
  [[nodiscard]] Lu Lit(std::uint64_t numéro, Echantillon& échantillon) const;
  /// The last sample; false while there is none.
  bool LitLeDernier(Echantillon& échantillon) const;
  /// Number of the first sample that is there and not before `secondes`.
  [[nodiscard]] std::uint64_t PremierDepuis(double secondes) const;

  ///@{
  /// Number behind the last event, and of the first one that is still there.
  [[nodiscard]] std::uint64_t EvènementSuivant() const noexcept;
  [[nodiscard]] std::uint64_t PremierEvènement() const noexcept;
  ///@}
  /// Reads an event by its number.
  [[nodiscard]] Lu Lit(std::uint64_t numéro, EvènementLu& évènement) const;

  /// Process of the writer.
  [[nodiscard]] int Processus() const noexcept;
  /// Second 0 of the samples, nanoseconds since 1970, UTC.
  [[nodiscard]] std::uint64_t DépartUtc() const noexcept;
  /// The writer ended as it should; false while it runs and for one that was killed.
  [[nodiscard]] bool EstFini() const noexcept;
  /// The writer of this map runs, whoever has its name by now.
  [[nodiscard]] bool EstEnMarche() const;

 private:
  [[nodiscard]] std::uint64_t Champ(EnTête champ) const noexcept {
    return publication::Lit(mots_, champ);
  }
  [[nodiscard]] std::span<const Mot> PlaceDe(EnTête anneau, EnTête places, std::uint64_t mots,
                                             std::uint64_t numéro) const noexcept;

  std::shared_ptr<const Zone> zone_;
  std::span<const Mot> mots_;
  std::uint64_t génération_ = 1;
  ChassisPublié chassis_;
};

/// A publication of this machine.
struct Publiée {
  std::string fichier;   ///< path of the map
  bool vivante = false;  ///< its writer runs
};
/// Those of a folder, running ones first; maps of hosts that died included.
[[nodiscard]] std::vector<Publiée> Publications(const std::string& dossier);
/// True while the writer of the file runs.
[[nodiscard]] bool EstVivante(const std::string& fichier);
/// Where frames are published: $ZUMA_PUBLICATIONS, or /dev/shm, which is memory and no disk.
[[nodiscard]] std::string DossierDesPublications();

}  // namespace zuma::publication
