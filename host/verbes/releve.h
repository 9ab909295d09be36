#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "host/ligne_lue.h"

namespace zuma::host {

/// What the checks across tables need of their rows, by key. Of a key that is there twice, the
/// first row.
struct Relevé {
  struct Bloc {
    std::string driver;
    bool canalDErreur = false;
  };
  /// An object that writes to a channel.
  struct Pilote {
    std::string_view table;
    std::string_view colonne;
    std::int32_t clé = 0;
    std::int32_t canal = 0;
  };
  struct Lien {
    std::string_view table;
    std::string_view objet;  ///< its table
    std::int32_t chassis = 0;
    std::int32_t clé = 0;
  };

  std::map<std::int32_t, Bloc> blocs;
  std::map<std::int32_t, std::int32_t> blocDesCanaux;
  std::vector<Pilote> pilotes;
  std::vector<Lien> liens;

  void Prend(const LigneLue& ligne);
  /// The block of a channel, or none.
  [[nodiscard]] const Bloc* BlocDuCanal(std::int32_t canal) const;
};

}  // namespace zuma::host
