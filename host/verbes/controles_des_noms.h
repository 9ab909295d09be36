#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "host/ligne_lue.h"

namespace zuma::host {

/// A name as a hurried reader takes it: without blanks at the ends, one between words, small
/// letters, accents kept.
[[nodiscard]] std::string NomRapproché(std::string_view nom);

/// Finds names and labels that differ by blanks or case alone: references compare exactly, people
/// do not. Names are compared within their table, or within the block or board that they belong to,
/// labels within their frame.
class ContrôleDesNoms {
 public:
  void Prend(const LigneLue& ligne, Constats& constats);

 private:
  struct Nom {
    std::string exact;
    std::string ligne;
  };
  using Place = std::tuple<std::string_view, std::int32_t, std::string>;
  std::map<Place, Nom> vus_;
};

/// Tells which of the columns that are missing the first row has under another spelling. Both
/// outlive the call.
void ContrôleLesColonnes(std::string_view table, const std::vector<std::string_view>& manquantes,
                         const Recordset& ligne, Constats& constats);

}  // namespace zuma::host
