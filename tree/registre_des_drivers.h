#pragma once

#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "base/valeur.h"
#include "tree/ligne_driver.h"

namespace zuma {

struct Plateforme;

/// The drivers that a frame may use: those of the library and those that the host adds. It belongs
/// to the host's `Plateforme`, is filled before a frame is loaded, and is asked at load and start
/// only: blocks and channels keep what they were given, and the pass looks nothing up.
class RegistreDesDrivers {
 public:
  /// Takes all rows or none. A value or a text of a column that is there already fails with 457,
  /// rows of another form (`kVersionDesDrivers`), a row without a value or a name with 5. The rows
  /// are pointed at: they outlive the registry and its frames.
  void Ajoute(std::span<const LigneDriver> lignes);

  /// The row of a value; `kSansDriver` for one that is not there.
  [[nodiscard]] const LigneDriver& DeValeur(ENUM_DRIVER valeur) const noexcept;
  ///@{
  /// The row that a text of the configuration selects, compared exactly: column "Driver de la
  /// Carte", "Driver" of a block, "Driver canal". `kSansDriver` for Null and an unknown text.
  [[nodiscard]] const LigneDriver& DeCarte(const Valeur& texte) const;
  [[nodiscard]] const LigneDriver& DeFonction(const Valeur& texte) const;
  [[nodiscard]] const LigneDriver& DeCanal(const Valeur& texte) const;
  ///@}
  /// All rows, in the order in which they were added.
  [[nodiscard]] std::span<const LigneDriver* const> Tous() const noexcept { return lignes_; }

 private:
  using ParTexte = std::unordered_map<std::string_view, const LigneDriver*>;

  void Ajoute(const LigneDriver& ligne);

  std::vector<const LigneDriver*> lignes_;
  std::unordered_map<std::int32_t, const LigneDriver*> parValeur_;
  ParTexte parTexteDeCarte_;
  ParTexte parTexteDeFonction_;
  ParTexte parTexteDeCanal_;
};

/// The row of a value among the drivers of that platform. A value other than 0 fails with 91 where
/// the host gave none.
[[nodiscard]] const LigneDriver& LigneDuDriver(const Plateforme& plateforme, ENUM_DRIVER valeur);

}  // namespace zuma
