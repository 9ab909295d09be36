#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "platform/collaborateurs.h"

namespace zuma {

/// Shared parameters that a sensor may refer to, in the order of their columns and searches.
enum class ParamEprouvette : std::size_t {
  MethodeCalculDeSurface,
  L,  ///< length
  M,  ///< mass
  UniteMasse,
  MasseVolumique,
  UniteMasseVolumique,
  A,        ///< side
  B,        ///< other side
  C,        ///< factor of the stress
  D,        ///< outer diameter
  E,        ///< wall of a tube
  H,        ///< height
  N,        ///< read, used by nothing
  S,        ///< section, reference length or selected value
  Petit_L,  ///< distance between the upper supports
  Grand_L,  ///< distance between the lower supports
  UniteLongueur,
  FormeEprouvette,
  TypeDeCalcul,  ///< kind of test
  Offset,        ///< added to the value at each refresh
  Sélection,     ///< text that a selection compares
};

/// What the configuration, the messages and the error record call one of them.
struct LigneParamètre {
  std::string_view colonne;       ///< column of the sensor's row
  std::string_view message;       ///< name in messages
  std::string_view gestionnaire;  ///< handler of its `Change`; empty when nothing depends on it
};

/// How many there are.
inline constexpr std::size_t kNombreParamètres = 21;
/// What they are called, in the order of `ParamEprouvette`.
extern const std::array<LigneParamètre, kNombreParamètres> kLignesParamètres;

/// The parameters of one sensor: indices read from its row, objects found at link time. Handlers
/// are taken off when it goes away: parameters outlive sensors.
class ParamètresEprouvette {
 public:
  /// Told of a parameter that is not in the host's set.
  using Absent = std::function<void(const LigneParamètre&, std::int32_t index)>;
  /// Told of a parameter whose text changed, if it has a `gestionnaire`.
  using Change = std::function<void(const LigneParamètre&)>;

  ParamètresEprouvette() = default;
  ~ParamètresEprouvette();
  ParamètresEprouvette(const ParamètresEprouvette&) = delete;
  ParamètresEprouvette& operator=(const ParamètresEprouvette&) = delete;

  /// Index of parameter `rang` in the host's set; 0 is no reference.
  void Index(std::size_t rang, std::int32_t index) { liens_[rang].index = index; }
  /// Takes the first parameter whose name is the index as text, for each index but 0. One that is
  /// not found is told to `absent` and keeps what it had.
  void Lie(const ParamètresPartagés& partagés, const Absent& absent, const Change& change);

  /// Forgets all parameters and takes the handlers off.
  void Délie() noexcept;

  /// Nothing when there is no such reference.
  [[nodiscard]] const Ref<ZED_Parametre>& operator[](ParamEprouvette rang) const {
    return liens_[static_cast<std::size_t>(rang)].objet;
  }
  /// The value as text, without a copy where the parameter allows; fails with 91 on Nothing.
  [[nodiscard]] std::string_view Texte(ParamEprouvette rang) const;
  /// The value as a number; fails with 91 on Nothing and 13 on text that is no number.
  [[nodiscard]] double Nombre(ParamEprouvette rang) const;
  /// The value as a number; none on Nothing and on text that is no number.
  [[nodiscard]] std::optional<double> NombreSûr(ParamEprouvette rang) const;

 private:
  struct Lien {
    std::int32_t index = 0;
    Ref<ZED_Parametre> objet;
    int abonnement = 0;
    bool abonné = false;
    void Désabonne() noexcept;
  };
  std::array<Lien, kNombreParamètres> liens_;
  mutable std::string tampon_;
};

}  // namespace zuma
