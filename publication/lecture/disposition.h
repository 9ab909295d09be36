#pragma once

#include <atomic>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>

// How a publication lies in memory: words of 64 bits, each written and read as one. A header, then
// the description (JSON), the ring of samples, the ring of events.
namespace zuma::publication {

/// One word of a map, read and written by several processes.
using Mot = std::atomic<std::uint64_t>;
static_assert(Mot::is_always_lock_free && sizeof(Mot) == 8);

inline constexpr std::uint64_t kMagie = 0x3142'5550'414D'555AULL;  ///< "ZUMAPUB1" in the file
inline constexpr std::uint64_t kVersion = 2;                       ///< of this layout
inline constexpr std::uint64_t kOrdre = 0x0102'0304'0506'0708ULL;  ///< reads otherwise elsewhere

/// Words of the header. Places and sizes are in words from the start of the map.
enum class EnTête : std::uint8_t {
  Magie,
  Version,
  Ordre,
  Taille,      ///< of the whole map
  Génération,  ///< of the description; odd while it is being written
  Processus,   ///< of the writer
  DépartUtc,   ///< nanoseconds since 1970, at second 0 of the samples
  Fini,        ///< 1 once the writer ended as it should
  Description,
  DescriptionPlaces,  ///< words that it may take
  DescriptionOctets,  ///< bytes that it takes
  Echantillons,
  EchantillonsPlaces,  ///< samples that the ring holds
  EchantillonMots,     ///< words of one
  EchantillonsEcrits,  ///< since the start
  Evènements,
  EvènementsPlaces,
  EvènementsEcrits,
  kNombre
};
inline constexpr std::size_t kMotsDEnTête = 512;  ///< a page

/// First words of a sample; behind them `kMotsParObjet` for each published object.
enum class MotDEchantillon : std::uint8_t {
  Séquence,
  Secondes,           ///< since the start, by the machine's clock
  Monotone,           ///< nanoseconds of the system's monotonic clock
  Passe,              ///< number of the pass
  Durée,              ///< seconds of the longest pass since the sample before
  Arrêt,              ///< 1 while a stop is latched
  Rafraîchi,          ///< 1 when the sensors were refreshed since the sample before
  Rafraîchissements,  ///< of the sensors, since the start
  Horloge,            ///< the timer of the frame, microseconds
  kNombre
};
/// Value; age (seconds, `float`) in the upper half of a word and state in the lower one.
enum class MotDObjet : std::uint8_t { Valeur, AgeEtEtat, kNombre };
/// Words of one object in a sample.
inline constexpr std::size_t kMotsParObjet = static_cast<std::size_t>(MotDObjet::kNombre);

/// Words of an event; its text fills the rest of its place.
enum class MotDEvènement : std::uint8_t {
  Séquence,
  Secondes,
  Passe,
  Genre,
  Objet,  ///< its rank in a sample
  Valeur,
  Octets,  ///< of the text
  kNombre
};
/// Words of one event, its text included.
inline constexpr std::size_t kMotsDEvènement = 32;
/// Words of them that the text may fill.
inline constexpr std::size_t kMotsDeTexte =
    kMotsDEvènement - static_cast<std::size_t>(MotDEvènement::kNombre);

/// What an event tells.
enum class GenreDEvènement : std::uint8_t {
  Départ,       ///< of the frame
  Arrêt,        ///< a stop was latched; the text is its cause
  Cause,        ///< one more cause of a stop that is latched
  Atteinte,     ///< an output stands where the stop put it
  Manquée,      ///< an output did not get there before the acknowledgement
  Acquitté,     ///< a stop was acknowledged
  EnService,    ///< watchdog and copying commands serve again
  Consigne,     ///< a command has another set point
  Entrée,       ///< a logic input changed
  Sortie,       ///< a logic output changed
  Problème,     ///< an entry of the error record, or a message
  Description,  ///< the description was written anew: a calibration, a limit
  Zéro,         ///< a zero of a sensor was begun before the refresh of that pass
  Tare,         ///< a tare, its value what the sensor is to read
  ZéroRepris,   ///< a zero was taken back
  TareReprise   ///< a tare was taken back
};

/// Bits of an object's state.
enum Etat : std::uint32_t {
  kEnService = 1U << 0U,    ///< an object that is in service
  kLu = 1U << 1U,           ///< it has given a reading
  kVieux = 1U << 2U,        ///< the reading is old
  kSélectionné = 1U << 3U,  ///< a sensor: it passed its selection
  kAtteint = 1U << 4U,      ///< an output: its device holds the value
  kMaintenu = 1U << 5U,     ///< a copying command, held at rest by a stop
  kSaturé = 1U << 6U,       ///< the value asked for or sent reached a limit
  kEnArrêt = 1U << 7U,      ///< a watchdog that a stop has armed
  kSorti = 1U << 8U         ///< a sensor fires the stop
};
/// Bits by which the age stands above the state.
inline constexpr unsigned kDécalageDeLAge = 32;
inline constexpr unsigned kDécalageDeLEtat = 16;  ///< `ENUM_ETAT_CAPTEUR` of a sensor, above it

/// Rank in an event that is of no object.
inline constexpr std::uint64_t kSansObjet = ~std::uint64_t{0};

/// Rank of a word among its like.
template <class Rang>
[[nodiscard]] constexpr std::size_t RangDe(Rang rang) noexcept {
  return static_cast<std::size_t>(rang);
}

/// What a place of a ring begins with: odd while it is written, and even, different for each
/// number, once it is there. Every word is stored with release and loaded with acquire, which costs
/// nothing on this kind of machine and needs no fence: a reader that sees one word of a later turn
/// sees the sequence of that turn, too.
[[nodiscard]] constexpr std::uint64_t SéquenceDe(std::uint64_t numéro) noexcept {
  return 2 * numéro + 2;
}

/// The words of one place while it is written.
class EnEcriture {
 public:
  /// Begins to write place `numéro`: from here on no reader takes it.
  EnEcriture(std::span<Mot> place, std::uint64_t numéro) : place_(place), numéro_(numéro) {
    place_[0].store(SéquenceDe(numéro) - 1, std::memory_order_relaxed);
  }
  ~EnEcriture() { place_[0].store(SéquenceDe(numéro_), std::memory_order_release); }
  EnEcriture(const EnEcriture&) = delete;
  EnEcriture& operator=(const EnEcriture&) = delete;

  ///@{
  /// Writes a word of the place; `rang` 0 is the sequence and not for this.
  void Ecrit(std::size_t rang, std::uint64_t mot) {
    place_[rang].store(mot, std::memory_order_release);
  }
  void Ecrit(std::size_t rang, double nombre) { Ecrit(rang, std::bit_cast<std::uint64_t>(nombre)); }
  ///@}
  /// The words from `rang` on, for who writes many with release, too.
  [[nodiscard]] Mot* Depuis(std::size_t rang) { return &place_[rang]; }

 private:
  std::span<Mot> place_;
  std::uint64_t numéro_;
};

/// Copies the words of place `numéro`; false when it holds another one, or is overwritten
/// meanwhile.
[[nodiscard]] inline bool LitLaPlace(std::span<const Mot> place, std::uint64_t numéro,
                                     std::span<std::uint64_t> copie) {
  if (place[0].load(std::memory_order_acquire) != SéquenceDe(numéro)) return false;
  for (std::size_t i = 1; i < place.size(); ++i) {
    copie[i] = place[i].load(std::memory_order_acquire);
  }
  return place[0].load(std::memory_order_relaxed) == SéquenceDe(numéro);
}

}  // namespace zuma::publication
