#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "publication/lecture/lecteur.h"

namespace zuma::host {

/// What an account says of one stop, seconds counted from it.
struct Récit {
  std::uint64_t évènement = 0;       ///< its number
  double secondes = 0;               ///< since the start of the frame
  std::uint64_t passe = 0;           ///< pass in which it fired
  std::vector<std::string> causes;   ///< what fired; the first one stopped the machine
  std::vector<std::string> valeurs;  ///< which value stood against which limit, which input moved
  std::vector<std::string> auRepos;  ///< each output, and in which pass it came to rest
  std::vector<std::string> pasAuRepos;  ///< outputs that did not come to rest
  std::vector<std::string> ensuite;     ///< what the operator did next
};

/// Numbers of the events that are stops and still there.
[[nodiscard]] std::vector<std::uint64_t> LesArrêts(const publication::Lecteur& lecteur);

/// The account of the stop that event `arrêt` began, from what happened up to `après` seconds
/// behind it. Nothing for an event that is overwritten.
[[nodiscard]] std::optional<Récit> Raconte(const publication::Lecteur& lecteur, std::uint64_t arrêt,
                                           double après);

/// The account as sentences, questions as titles.
struct Paragraphe {
  std::string question;               ///< a title
  std::vector<std::string> réponses;  ///< sentences below it
};
/// The account in English sentences.
[[nodiscard]] std::vector<Paragraphe> EnMots(const Récit& récit);

}  // namespace zuma::host
