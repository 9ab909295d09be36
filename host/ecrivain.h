#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <span>
#include <string>

#include "host/fichier_en_ajout.h"
#include "host/rangees.h"

namespace zuma::host {

/// How a recording goes.
struct EtatDEnregistrement {
  std::string fichier;          ///< path of the recording
  int erreur = 0;               ///< error number of the last try to write; 0: it goes on
  std::uint64_t écrites = 0;    ///< rows in the file
  std::uint64_t enAttente = 0;  ///< rows that a failing disk keeps waiting
  std::uint64_t perdues = 0;    ///< rows given up

  /// Nothing is missing, and nothing waits.
  [[nodiscard]] bool Complet() const { return erreur == 0 && enAttente == 0 && perdues == 0; }
};
/// Why a file is no longer written, in words.
[[nodiscard]] std::string Raison(int erreur);
/// The whole in one sentence for people; begins with RECORDING STOPPED while nothing is written.
[[nodiscard]] std::string Phrase(const EtatDEnregistrement& état);

/// The slow side of a recording: takes the rows of a source, makes CSV of them and appends it,
/// round by round. What the disk does not take waits for the next rounds, up to a limit; beyond it
/// the oldest is given up, and a line of its own tells how many rows are missing, from when to
/// when. No row is ever there in part.
class Ecrivain {
 public:
  /// How much is kept while the disk takes nothing.
  struct Réglages {
    /// Rounds that may wait: a minute, so that a disk that is full for a moment leaves no gap.
    std::size_t lots = 60;
    std::size_t octetsParLot = 1U << 20U;  ///< a longer round is written by parts
  };
  /// `entête`: first line of the file, with its line end.
  Ecrivain(FichierEnAjout& fichier, SourceDeRangées& rangées, std::string entête,
           const Réglages& réglages);
  /// The same with room for a minute.
  Ecrivain(FichierEnAjout& fichier, SourceDeRangées& rangées, std::string entête)
      : Ecrivain(fichier, rangées, std::move(entête), Réglages()) {}

  /// One round: the rows that are there go to the file.
  void Tour();
  /// The last round. What cannot be written is lost.
  void Conclut();
  /// May be called from any thread.
  [[nodiscard]] EtatDEnregistrement Etat() const;

 private:
  struct Lot {
    std::string texte;
    std::uint64_t rangées = 0;
    Lacune contenu{};  ///< its rows, and those that it tells to be lost
  };

  bool Puise();
  void Prend(const SourceDeRangées::Rangée& rangée);
  void NoteLaLacune(const Lacune& lacune);
  [[nodiscard]] int Ecrit();
  void AbandonneLePremier();

  FichierEnAjout& fichier_;
  SourceDeRangées& rangées_;
  Réglages réglages_;
  std::string entête_;  ///< empty once it is in the file
  std::deque<Lot> lots_;
  Lacune lacune_;  ///< given up before the first of them, and not told in the file yet
  std::atomic<int> erreur_ = 0;
  std::atomic<std::uint64_t> écrites_ = 0, enAttente_ = 0, perdues_ = 0;
};

}  // namespace zuma::host
