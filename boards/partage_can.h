#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tree/carte.h"

/// Which rulers of a configuration cannot share a port of a CAN card.
namespace zuma::partage_can {

/// Why two rulers cannot share a port.
enum class Empêchement : std::uint8_t {
  Générations,  ///< drivers 25 and 26 on one port
  Seule,        ///< a second ruler of driver 25, which takes its port for itself
  Réglages,     ///< another speed or mode than the first block of the port
  Identifiant,  ///< the position identifier of another ruler
  Série,        ///< another identifier for a ruler that has one
  Bloc          ///< a block that reads one ruler has another one
};

/// Two channels that cannot share a port.
struct Conflit {
  const Canal* canal;  ///< the one that comes behind `autre`
  const Canal* autre;  ///< the one that was there before
  Empêchement quoi;    ///< why not
};

/// For the error record.
[[nodiscard]] std::string EnFrançais(const Conflit& conflit);
///@{
/// For lists of problems: the column that is at fault, of the channel or of its block, and what is
/// wrong.
[[nodiscard]] std::string_view Colonne(const Conflit& conflit) noexcept;
[[nodiscard]] bool EstDuBloc(const Conflit& conflit) noexcept;
///@}
/// What is wrong, for lists of problems.
[[nodiscard]] std::string EnAnglais(const Conflit& conflit);
/// The value of that column that is at fault.
[[nodiscard]] std::string Trouvé(const Conflit& conflit);
/// What it should be instead.
[[nodiscard]] std::string Attendu(const Conflit& conflit);

/// Looks for conflicts over the boards of a frame, in one walk.
class Recherche {
 public:
  /// The channels of the board must stay where they are for as long as the search.
  void Ajoute(Carte& carte);
  /// What was found so far, in the order of the walk.
  [[nodiscard]] const std::vector<Conflit>& Conflits() const noexcept { return conflits_; }

 private:
  struct Port {
    const Canal* premier = nullptr;
    std::map<std::int16_t, const Canal*> parIdentifiant;
    std::map<std::string, const Canal*> parSérie;
  };
  void AjouteRègle25(Port& port, const Canal& canal);
  void AjouteRègle26(Port& port, const Canal& canal, const Canal& têteDeBloc);
  void Note(const Canal& canal, const Canal& autre, Empêchement quoi);

  std::map<std::pair<std::uint16_t, std::int32_t>, Port> ports_;  ///< by card and port
  std::vector<Conflit> conflits_;
};

}  // namespace zuma::partage_can
