#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "base/echec.h"
#include "platform/can.h"
#include "tree/materiel.h"

/// Magnetostrictive rulers on the CAN bus: frames, filters and dialogue. Positions are in the
/// ruler's own counts.
namespace zuma::regles_mts {

/// Length of the position of one magnet in a frame, in bytes.
inline constexpr std::size_t kOctetsPosition = 3;

/// 24-bit position, high byte first. A set top bit takes 0xFFFFFF off, one less than two's
/// complement would: that is the ruler's scale.
[[nodiscard]] constexpr std::int32_t Position(std::uint8_t b1, std::uint8_t b2,
                                              std::uint8_t b3) noexcept {
  const std::int32_t brute = (b1 * 256 + b2) * 256 + b3;
  return (brute & 0x800000) != 0 ? brute - 0xFFFFFF : brute;
}

/// First position of a frame; none in a frame too short for one.
[[nodiscard]] std::optional<std::int32_t> DécodePosition(std::span<const std::uint8_t> données);

///@{
/// The two positions of a frame. A frame that holds only the first has 0 for the second: no magnet.
using Paire = std::array<std::int32_t, 2>;
[[nodiscard]] std::optional<Paire> DécodePaire(std::span<const std::uint8_t> données);
///@}

/// The data bytes that a frame uses; a count beyond 8 counts as 8.
template <class Trame>
[[nodiscard]] std::span<const std::uint8_t> DonnéesUtiles(const Trame& trame) noexcept {
  return std::span(trame.données).first(trame.nombre < 8 ? trame.nombre : 8);
}

/// Serial number written as 8 hexadecimal digits, by pairs in the order of the text; anything else
/// fails with 13.
[[nodiscard]] std::array<std::uint8_t, 4> OctetsDeSérie(std::string_view numéro);

/// "lecture 2-1": second magnet less the first one; 0 unless the first three are all seen.
[[nodiscard]] std::int32_t Lecture2moins1(const std::optional<Paire>& première,
                                          const std::optional<Paire>& seconde) noexcept;
/// "lecture 3": the last magnet seen of the first three; 0 when a frame is missing.
[[nodiscard]] std::int32_t Lecture3(const std::optional<Paire>& première,
                                    const std::optional<Paire>& seconde) noexcept;

/// True when two magnets are far enough from each other to be told apart: more than about 2 % of
/// their positions.
[[nodiscard]] bool AimantsSéparés(std::int32_t a, std::int32_t b) noexcept;

/// What is kept of a two-magnet ruler between its reads.
struct Mémoire {
  ///@{
  /// Positions of magnets 1 and 2: the present one, and the one read before.
  std::int32_t c1 = 0, c2 = 0;  ///< positions
  std::int32_t q1 = 0, q2 = 0;  ///< the same one read before
  ///@}
};

/// Filter of the block read, `m` holding what was decoded and what was known before. Magnets too
/// close keep both former positions. Magnet 1 refuses a jump of 10000 counts or more, once it has a
/// position; magnet 2 takes any jump but one to 0.
void FiltreBloc(Mémoire& m) noexcept;

/// Filter of the single read: takes the positions `lues` into `m`. Magnet `aimant` (1 or 2) refuses
/// 0 and, once it has a position, a change of 1000 counts or more; the other one takes its position
/// as it is. Gives the new
/// position of `aimant` when it was taken.
std::optional<std::int32_t> FiltreSimple(Mémoire& m, const Paire& lues, int aimant) noexcept;

/// Frames that came while another ruler of their port was listened to: the latest one of each ruler
/// that is asked in one refresh and heard in the next.
class Courrier {
 public:
  /// Keeps frames of that identifier from now on.
  void Ouvre(std::int32_t poignée, std::uint32_t identifiant);
  /// False for a frame that is for none of these rulers.
  bool Range(std::int32_t poignée, const TrameCAN& trame) noexcept;
  /// Takes the frame that is kept; false when there is none.
  bool Prend(std::int32_t poignée, std::uint32_t identifiant, TrameCAN& trame) noexcept;

 private:
  struct Boîte {
    std::int32_t poignée;
    TrameCAN trame;
    bool pleine = false;
  };
  [[nodiscard]] Boîte* La(std::int32_t poignée, std::uint32_t identifiant) noexcept;

  std::vector<Boîte> boîtes_;
};

/// What a look at the receive queue found.
enum class Arrivée : std::uint8_t {
  Rien,
  Inconnue,  ///< a frame that is for no ruler of the port
  Sienne
};

/// One open port of the card with rulers on it, as the second generation of calls knows it.
class PortRègles {
 public:
  /// The port of that handle; `courrier` is shared with the other rulers of the card.
  PortRègles(const Matériel& matériel, std::int32_t poignée, Courrier& courrier)
      : courrier_(courrier),
        can_(*matériel.plateforme.can),
        timer_(*matériel.timer),
        réglages_(matériel.plateforme.réglages.can),
        poignée_(poignée) {}

  /// Empties the receive queue: frames of the other rulers that share the port are kept for them.
  void VideRéception();
  /// Empties the queue and asks for the position frame of that identifier. False when the card did
  /// not take the request.
  bool Demande(std::uint32_t identifiant);
  /// The next frame of the queue that is not for another ruler.
  [[nodiscard]] Arrivée Relève(std::uint32_t identifiant, TrameCAN& trame);
  /// Waits for a frame of that identifier, `attente` milliseconds at the most.
  [[nodiscard]] bool Attend(std::uint32_t identifiant, double attente, TrameCAN& trame);
  /// Sends a request and waits for its answer.
  [[nodiscard]] bool Echange(std::uint32_t identifiant, std::span<const std::uint8_t> octets,
                             std::uint32_t réponse);

  /// Settings of the CAN card and its rulers.
  [[nodiscard]] const RéglagesCAN& LesRéglages() const noexcept { return réglages_; }
  /// The frame's timer, microseconds.
  [[nodiscard]] double Maintenant() { return timer_.LitMicrosecondes(); }

 private:
  [[nodiscard]] bool Reçoit(TrameCAN& trame) { return can_.CanRcvMsg(poignée_, trame) == 0; }

  Courrier& courrier_;
  BibliothèqueCAN& can_;
  ZED_Timer& timer_;
  const RéglagesCAN& réglages_;
  std::int32_t poignée_;
};

/// What a ruler's start needs of its channel.
struct IdentitéRègle {
  std::string_view numéroDeSérie;  ///< 8 hexadecimal digits
  std::int16_t noeud = 0;          ///< node of the ruler
  std::int16_t positionID = 0;     ///< identifier of its positions
  std::int16_t statusID = 0;       ///< identifier of its states
  std::int16_t mode = 0;           ///< of the row
};

/// Starts a ruler: selects it by its serial number, gives it its identifiers and its mode. True on
/// failure: an answer is missing.
[[nodiscard]] bool DémarreRègle(PortRègles& port, const IdentitéRègle& règle);

/// One-magnet ruler: its position, 0 when it does not answer; none when the card did not take the
/// request, which says nothing of the ruler.
[[nodiscard]] std::optional<std::int32_t> LireRègleMono(PortRègles& port, std::int16_t positionID);

/// What a three-magnet ruler gives: the second magnet less the first, or the third.
enum class Lecture3Aimants : std::uint8_t { DeuxMoinsUn, Trois };
/// The same for three magnets.
[[nodiscard]] std::optional<std::int32_t> LireRègle3Aimants(PortRègles& port,
                                                            std::int16_t positionID,
                                                            Lecture3Aimants lecture);

/// State of the filtered single read of one ruler.
struct LectureSimple {
  Mémoire mémoire;  ///< positions, and those before
  ///@{
  /// The first read is over, the second one is.
  bool vu1 = false, vu2 = false;
  ///@}
  bool reçue = false;  ///< the last read took a frame of the ruler
};
/// Filtered position of magnet 1 or 2. The first two reads give what is stored and leave the bus
/// alone; each later one takes the answer to the request of the one before and asks again.
[[nodiscard]] std::int32_t LireRègleMulti(PortRègles& port, std::int16_t positionID, int aimant,
                                          LectureSimple& état);

/// State of the block read of one ruler.
struct LectureBloc {  ///< positions, and those before
  Mémoire mémoire;
  std::optional<double> heure;  ///< of the last request, microseconds
  bool reçue = false;           ///< the last read took a frame of the ruler
};
/// The two filtered positions; none while no frame came. Never waits: a ruler that is silent is
/// asked again every 200 milliseconds.
[[nodiscard]] std::optional<Paire> LireToutesPositions(PortRègles& port, std::int16_t positionID,
                                                       LectureBloc& état);

}  // namespace zuma::regles_mts
