#pragma once

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
/// this ends. What cannot be written is told on the error output, once, and the next stop is tried
/// again.
class GardienDesArrêts {
 public:
  /// Looks at `lecteur` from now on; cases go to `dossier`, which is made when there is none.
  GardienDesArrêts(publication::Lecteur lecteur, std::string dossier, Fenêtre fenêtre);
  /// The same with ten seconds before and five behind each stop.
  GardienDesArrêts(publication::Lecteur lecteur, std::string dossier)
      : GardienDesArrêts(std::move(lecteur), std::move(dossier), Fenêtre()) {}
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
  void Ecrit(std::uint64_t arrêt);
  [[nodiscard]] bool AttendLaFin();

  publication::Lecteur lecteur_;
  std::string dossier_;
  Fenêtre fenêtre_;
  std::uint64_t évènement_;  ///< the next one to be looked at
  std::deque<Attente> enAttente_;
  bool dit_ = false;
  std::mutex verrou_;
  std::condition_variable réveil_;
  bool fin_ = false;
  std::thread fil_;
};

}  // namespace zuma::host
