#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "publication/description.h"
#include "publication/lecture/disposition.h"
#include "publication/lecture/lecteur.h"
#include "publication/place.h"

namespace zuma::linux_ {
class Securite;
}

namespace zuma::publication {

/// How much a publication keeps.
struct Réglages {
  double secondes = 60;  ///< that the ring of samples holds
  /// Of the whole map; it holds fewer seconds of a frame that is larger.
  std::size_t octetsAuPlus = std::size_t{256} << 20U;
  /// What times the passes where the frame's own timer stands still during one; Nothing: the
  /// frame's.
  Ref<ZED_Timer> durées{};
};

/// Those of the user's surroundings: $ZUMA_PUBLICATION_SECONDS, where it is a number above 0.
[[nodiscard]] Réglages RéglagesDuSystème();

/// Where the parts of a map lie, in words from its start.
struct Plan {
  ///@{
  /// The description (JSON), and the words that it may take.
  std::size_t description = 0, descriptionPlaces = 0;
  ///@}
  std::size_t évènements = 0;  ///< ring of events
  ///@{
  /// The ring of samples, and the samples that it holds.
  std::size_t échantillons = 0, places = 0;
  ///@}
  std::size_t mots = 0;   ///< of one sample
  std::size_t total = 0;  ///< of the whole map
};

/// Lets others look at a frame that runs: behind each pass, `Publie` puts what is there into memory
/// that other programs read (`Lecteur`), and nobody holds the pass up. A sample is taken at each
/// refresh of the sensors, at each event, and 50 ms after the last one at the latest.
///
///     publication::Publication publication(chassis, place, {.fichier = "demo.db", .index = 1});
///     publication.Suit(sécurité);
///     while (...) { chassis.MetàJour(); publication.Publie(); }
///
/// Made once the frame is linked and started, released before it. It holds the objects that the
/// frame has by then: one that is added later is not published.
class Publication {
 public:
  /// Describes the frame and writes the map to `place`, which outlives this; `sujet` brings what
  /// the host
  /// alone knows.
  Publication(Chassis& chassis, Place& place, ChassisPublié sujet, const Réglages& réglages);
  /// The same with the settings as they are by default.
  Publication(Chassis& chassis, Place& place, ChassisPublié sujet)
      : Publication(chassis, place, std::move(sujet), Réglages()) {}
  ~Publication();
  Publication(const Publication&) = delete;
  Publication& operator=(const Publication&) = delete;

  /// The safety object whose stops and causes are events; it outlives this.
  void Suit(const linux_::Securite& sécurité) { sécurité_ = &sécurité; }

  /// Behind each pass. No allocation, no lock, no system call.
  void Publie();
  /// An event of the host's own, before the next `Publie`.
  void Note(GenreDEvènement genre, std::string_view texte);
  /// The host acknowledged a stop. Without it an acknowledgement whose cause fires again in the
  /// next pass is not seen.
  void NoteLAcquittement();
  /// The description again, for a calibration or a limit that changed.
  void Redécrit();

  /// To look from inside the process, whether there is a file or not.
  [[nodiscard]] Lecteur LeLecteur() const { return Lecteur(zone_); }
  /// Seconds that the ring of samples holds at the frame's rate.
  [[nodiscard]] double Temps() const noexcept;

 private:
  /// Something whose change is an event.
  struct Suivi {
    GenreDEvènement genre;
    std::size_t rang;
    std::function<double()> lit;
    double valeur = 0;
    double dit = -1;  ///< seconds of the last event
  };
  /// An output, and whether the stop in hand still has to reach it.
  struct SortieSuivie {
    std::size_t rang;
    std::function<bool()> atteinte;
    bool attendue = false;
  };

  void Pose(EnTête champ, std::uint64_t mot);
  void EcritLEnTête();
  void EcritLaDescription(std::string_view json);
  void RepèreLesSuivis();
  void SuitLArrêt();
  void CommenceLArrêt();
  void FinitLArrêt();
  void SuitLesSorties();
  void SuitLesValeurs();
  void SuitLesGestes();
  void Consigne(GenreDEvènement genre, std::uint64_t objet, double valeur, std::string_view texte);
  [[nodiscard]] std::span<Mot> LaPlace(std::uint64_t échantillon);
  void Echantillonne(bool rafraîchi);

  Chassis& chassis_;
  ChassisPublié sujet_;
  ObjetsDuChassis objets_;
  const linux_::Securite* sécurité_ = nullptr;
  Ref<ZED_Timer> durées_;
  bool debout_;  ///< the frame's timer stands still during a pass
  std::shared_ptr<Zone> zone_;
  std::span<Mot> mots_;
  std::vector<Suivi> suivis_;
  std::vector<SortieSuivie> sorties_;
  std::uint32_t gestes_ = 0;  ///< of all sensors, as they were told last
  std::vector<GestesDuCapteur> gestesDits_;
  Plan plan_{};
  std::uint64_t génération_ = 0;
  std::uint64_t échantillons_ = 0, évènements_ = 0, passes_ = 0, rafraîchissements_ = 0;
  double départ_ = 0;    ///< seconds of the timer
  double secondes_ = 0;  ///< of the present pass, since then
  double durée_ = 0;     ///< longest pass since the last sample
  double dernier_ = -1;  ///< seconds of the last sample
  bool arrêt_ = false;
  std::uint64_t passeDeLArrêt_ = 0;
  std::size_t causes_ = 0;
  std::size_t attendues_ = 0;  ///< outputs that the stop in hand has not reached
  bool évènement_ = false;     ///< since the last sample
};

}  // namespace zuma::publication
