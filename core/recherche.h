#pragma once

#include <string>
#include <string_view>
#include <unordered_map>

#include "logic/entree_logique.h"
#include "logic/sortie_logique.h"
#include "sensors/capteur.h"
#include "tree/canal.h"

/// Searches of a frame by which objects resolve their references at link time. The first match in
/// collection order wins; no match gives Nothing.
namespace zuma::recherche {

/// Where keys and labels of a frame stand while an operation links its objects: each search below
/// would walk the whole frame for each reference otherwise. What a handler renames meanwhile is
/// still found, by walking.
class Annuaire {
 public:
  /// Serves the searches of this frame for as long as it lives.
  explicit Annuaire(Chassis& chassis);
  ~Annuaire();
  Annuaire(const Annuaire&) = delete;
  Annuaire& operator=(const Annuaire&) = delete;

  template <class T>
  /// Objects of one class, each found by its text.
  using Table = std::unordered_map<std::string, Ref<T>>;
  Table<Canal> canaux;           ///< by key, the others by label
  Table<Capteur> capteurs;       ///< sensors by label
  Table<EntréeLogique> entrées;  ///< logic inputs by label
  Table<SortieLogique> sorties;  ///< logic outputs by label

 private:
  Chassis& chassis_;
};

/// The channel of that key, over all boards and blocks.
[[nodiscard]] CanalRef CanalDeClé(Chassis& chassis, std::string_view clé);
///@{
/// The first object of that label.
[[nodiscard]] CapteurRef CapteurDeLabel(Chassis& chassis, std::string_view label);
[[nodiscard]] EntréeLogiqueRef EntréeLogiqueDeLabel(Chassis& chassis, std::string_view label);
[[nodiscard]] SortieLogiqueRef SortieLogiqueDeLabel(Chassis& chassis, std::string_view label);
///@}
/// The first shared parameter of that key.
[[nodiscard]] Ref<ZED_Parametre> ParamètreDeClé(const ParamètresPartagés& paramètres,
                                                std::string_view clé);

}  // namespace zuma::recherche
