#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <mutex>
#include <string>
#include <thread>

#include "host/regard/cas.h"
#include "publication/lecture/lecteur.h"

namespace zuma::host {

/// Keeps each stop of a frame as a case, from a thread of its own that looks at the publication:
/// the pass does nothing for it. A stop is written once the seconds behind it are there, or when
/// this ends. What cannot be written is told on the error output, and tried again each second for
/// as long as the publication holds the stop. First come the stops that the host before took with
/// it when it died.
class GardienDesArrêts {
 public:
  /// Looks at `lecteur` from now on; cases go to `dossier`, which is made when there is none.
  /// `laissée` is the map of a host that died, empty for none.
  GardienDesArrêts(publication::Lecteur lecteur, std::string dossier, std::string laissée = {},
                   Fenêtre fenêtre = Fenêtre());
  /// Writes what waits. To be called once the outputs are at rest.
  ~GardienDesArrêts();
  GardienDesArrêts(const GardienDesArrêts&) = delete;
  GardienDesArrêts& operator=(const GardienDesArrêts&) = delete;

 private:
  struct Attente {
    std::uint64_t arrêt;
    double jusquà;  ///< seconds that are wanted
  };
  void Tourne();
  void Tour(bool fin);
  void RecueilleCeQuiFutLaissé();
  [[nodiscard]] bool Ecrit(const publication::Lecteur& lecteur, std::uint64_t arrêt);
  [[nodiscard]] bool AttendLaFin();

  publication::Lecteur lecteur_;
  std::string dossier_;
  std::string laissée_;
  Fenêtre fenêtre_;
  std::uint64_t évènement_;  ///< the next one to be looked at
  std::deque<Attente> enAttente_;
  bool dit_ = false;
  std::chrono::steady_clock::time_point prochain_{};  ///< try, behind one that failed
  std::mutex verrou_;
  std::condition_variable réveil_;
  bool fin_ = false;
  std::thread fil_;
};

}  // namespace zuma::host
