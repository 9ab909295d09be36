#include "platform/linux/lignes_tassees.h"

#include <cstdint>
#include <cstring>
#include <type_traits>
#include <variant>

namespace zuma::linux_ {
namespace {

template <class T>
void Pose(std::string& octets, const T& objet) {
  static_assert(std::is_trivially_copyable_v<T>);
  octets.append(reinterpret_cast<const char*>(&objet), sizeof objet);
}

template <class T>
T Prend(const char*& place) {
  T objet{};
  std::memcpy(&objet, place, sizeof objet);
  place += sizeof objet;
  return objet;
}

// A value bears the rank of its kind in front of it.
template <std::size_t kRang>
Valeur PrendValeur(const char*& place) {
  using T = std::variant_alternative_t<kRang, Valeur>;
  if constexpr (std::is_same_v<T, Nul>) {
    return Nul{};
  } else if constexpr (std::is_same_v<T, std::string>) {
    const auto longueur = Prend<std::size_t>(place);
    const char* const début = std::exchange(place, place + longueur);
    return std::string(début, longueur);
  } else {
    return Prend<T>(place);
  }
}

template <std::size_t... kRangs>
Valeur PrendValeur(std::size_t rang, const char*& place, std::index_sequence<kRangs...>) {
  Valeur valeur;
  static_cast<void>(((rang == kRangs && (valeur = PrendValeur<kRangs>(place), true)) || ...));
  return valeur;
}

}  // namespace

void LignesTassées::Ajoute(const Valeur& valeur) {
  octets_ += static_cast<char>(valeur.index());
  struct Visite {
    std::string& octets;
    void operator()(Nul) const {}
    void operator()(const std::string& texte) const {
      Pose(octets, texte.size());
      octets += texte;
    }
    void operator()(bool v) const { Pose(octets, v); }
    void operator()(std::int32_t v) const { Pose(octets, v); }
    void operator()(double v) const { Pose(octets, v); }
  };
  std::visit(Visite{octets_}, valeur);
}

void LignesTassées::Lit(std::size_t rang, std::span<Champ> champs) const {
  const char* place = octets_.data() + débuts_.at(rang);
  for (Champ& champ : champs) {
    const auto genre = static_cast<std::size_t>(*place++);
    champ.Value =
        PrendValeur(genre, place, std::make_index_sequence<std::variant_size_v<Valeur>>());
  }
  for (auto r = remplacées_.lower_bound({rang, 0});
       r != remplacées_.end() && r->first.first == rang; ++r) {
    champs[r->first.second].Value = r->second;
  }
}

}  // namespace zuma::linux_
