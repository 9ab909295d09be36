#pragma once

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "base/cles.h"
#include "base/ref.h"
#include "base/valeur.h"
#include "platform/plateforme.h"

namespace zuma {

/// What the operations of a collection do with their failures.
enum class EchecsCollection {
  VersAppelant,  ///< all go to the caller
  TousAttrapés,  ///< all end with an empty result, nothing recorded
  ItemAttrapé    ///< `Item` ends with an empty result, the others go to the caller
};

/// Differences between the seven collections.
struct RèglesCollection {
  bool accepteObjet = false;     ///< `Add` takes an existing object
  bool cléFacultative = false;   ///< an empty key stores without key
  bool cléNullePermise = false;  ///< `Item` of a null key gives Nothing
  bool itemIndex = false;        ///< has `ItemIndex`
  bool modeEdition = false;      ///< has `ModeEdition`
  /// What becomes of its failures.
  EchecsCollection échecs = EchecsCollection::VersAppelant;
};

/// Members of a collection and their keys, in insertion order.
template <class T>
struct Membres {
  /// The objects; none is Nothing.
  std::vector<Ref<T>> objets;
  /// Key of the object at the same rank; none for one stored without a key.
  std::vector<std::optional<std::string>> clés;
};

/// What a collection held when it was asked: a walk over it meets exactly those members, which it
/// keeps alive, whatever becomes of the collection meanwhile. Taking one costs one count.
template <class T>
class Photo {
 public:
  /// Holds the members as they are.
  explicit Photo(std::shared_ptr<const Membres<T>> membres) noexcept
      : membres_(std::move(membres)) {}
  ///@{
  /// The members, in insertion order.
  [[nodiscard]] const Ref<T>* begin() const noexcept { return membres_->objets.data(); }
  [[nodiscard]] const Ref<T>* end() const noexcept { return begin() + membres_->objets.size(); }
  ///@}

 private:
  std::shared_ptr<const Membres<T>> membres_;
};

/// Place in a collection; the one that a walk begins with keeps a photo of it.
template <class T>
class Itérateur {
 public:
  ///@{
  /// What the algorithms of the standard library ask for.
  using value_type = Ref<T>;
  using difference_type = std::ptrdiff_t;
  using pointer = const Ref<T>*;
  using reference = const Ref<T>&;
  using iterator_category = std::forward_iterator_tag;
  ///@}

  Itérateur() noexcept = default;
  /// A place that keeps nothing alive: the end of a walk, which is compared only.
  explicit Itérateur(pointer place) noexcept : place_(place) {}
  /// The beginning of a walk, which keeps the members that it meets.
  Itérateur(std::shared_ptr<const Membres<T>> membres, pointer place) noexcept
      : place_(place), membres_(std::move(membres)) {}

  ///@{
  /// The object at this place.
  [[nodiscard]] reference operator*() const noexcept { return *place_; }
  [[nodiscard]] pointer operator->() const noexcept { return place_; }
  ///@}
  ///@{
  /// One member on.
  Itérateur& operator++() noexcept {
    ++place_;
    return *this;
  }
  Itérateur operator++(int) noexcept {
    Itérateur avant = *this;
    ++place_;
    return avant;
  }
  ///@}
  /// True at the same place.
  [[nodiscard]] friend bool operator==(const Itérateur& a, const Itérateur& b) noexcept {
    return a.place_ == b.place_;
  }

 private:
  pointer place_ = nullptr;
  std::shared_ptr<const Membres<T>> membres_;
};

/// Ordered keyed collection of the objects of one class. It owns counted references; an object
/// may stand in several collections. Enumeration is in insertion order, which is refresh order.
///
/// Members may be added and removed, and the collection itself dropped, while it is walked: a walk
/// ends on what it began with.
template <class T, RèglesCollection kRègles>
class Collection {
 public:
  /// An empty collection; its members get `plateforme`, which outlives them.
  explicit Collection(Plateforme& plateforme) : plateforme_(plateforme) {}

  /// Makes a member, writes `sKey` to its `Key` and stores it under that key. A key already
  /// there fails with 457.
  Ref<T> Add(std::string_view sKey) {
    return Protège(kToutAttrapé, [&] {
      Ref<T> objet = Crée<T>(plateforme_);
      objet->Key(std::string(sKey));
      return Range(std::move(objet), sKey);
    });
  }

  /// Stores an existing object; its `Key` is left alone.
  Ref<T> Add(std::string_view sKey, Ref<T> monObjet)
    requires(kRègles.accepteObjet)
  {
    if (!monObjet) return Add(sKey);
    return Range(std::move(monObjet), sKey);
  }

  /// Stores an existing object under `sKey`, its `Key` left alone.
  Ref<T> Référence(Ref<T> objet, std::string_view sKey) {
    return Protège(kToutAttrapé, [&] {
      // A member is built and dropped on each call: construction has effects that are relied on.
      (void)Crée<T>(plateforme_);
      return Range(std::move(objet), sKey);
    });
  }

  /// The object of that key. An absent key fails with 5; a null key gives Nothing where the
  /// collection tests for it and fails like an absent one elsewhere.
  [[nodiscard]] Ref<T> Item(std::optional<std::string_view> vntIndexKey) const {
    return Protège(kItemAttrapé, [&]() -> Ref<T> {
      if (!vntIndexKey && kRègles.cléNullePermise) return {};
      return Trouvé(vntIndexKey)->second;
    });
  }

  /// The first object whose `Key` equals the argument exactly, or Nothing.
  [[nodiscard]] Ref<T> ItemIndex(const Valeur& vntIndexKey) const
    requires(kRègles.itemIndex)
  {
    if (EstNul(vntIndexKey)) return {};
    const std::string clé = VersTexte(vntIndexKey);
    for (const Ref<T>& objet : membres_->objets) {
      if (objet->Key() == clé) return objet;
    }
    return {};
  }

  /// Number of members.
  [[nodiscard]] std::int32_t Count() const {
    return static_cast<std::int32_t>(membres_->objets.size());
  }

  /// Removes the item of that key; an absent key fails with 5.
  void Remove(std::string_view vntIndexKey) {
    Protège(kToutAttrapé, [&] {
      const auto place = Trouvé(vntIndexKey);
      auto& [objets, clés] = AModifier();
      const auto clé = std::ranges::find_if(
          clés, [&](const auto& présente) { return présente && MêmeClé(*présente, place->first); });
      const auto objet = objets.begin() + (clé - clés.begin());
      // Let go last: the end of an object may come back here.
      const Ref<T> retiré = *objet;
      objets.erase(objet);
      clés.erase(clé);
      parClé_.erase(place);
    });
  }

  /// Removes the members for which `critère` holds; it is asked of each once, in order, before any
  /// is removed.
  template <class Critère>
  void RetireSi(Critère&& critère) {
    Membres<T> restent;
    std::vector<Ref<T>> retirés;  // let go last
    const auto photo = membres_;
    std::vector<bool> part;
    for (const Ref<T>& objet : photo->objets) part.push_back(critère(objet));
    for (std::size_t i = 0; i < part.size(); ++i) {
      const auto& clé = photo->clés[i];
      (part[i] ? retirés : restent.objets).push_back(photo->objets[i]);
      if (!part[i]) restent.clés.push_back(clé);
      if (part[i] && clé) parClé_.erase(parClé_.find(*clé));
    }
    membres_ = std::make_shared<Membres<T>>(std::move(restent));
  }

  /// True at the first item in edition.
  [[nodiscard]] bool ModeEdition() const
    requires(kRègles.modeEdition)
  {
    for (const Ref<T>& objet : membres_->objets) {
      if (objet->ModeEdition()) return true;
    }
    return false;
  }

  /// Walks the members of this moment, in insertion order (`NewEnum`):
  /// `for (const Ref<T>& objet : collection)`.
  [[nodiscard]] Itérateur<T> begin() const { return {membres_, membres_->objets.data()}; }
  /// The end of such a walk.
  [[nodiscard]] Itérateur<T> end() const {
    return Itérateur<T>(membres_->objets.data() + membres_->objets.size());
  }
  /// Its members at this moment, for a walk that comes later.
  [[nodiscard]] zuma::Photo<T> Photo() const { return zuma::Photo<T>(membres_); }

 private:
  static constexpr bool kToutAttrapé = kRègles.échecs == EchecsCollection::TousAttrapés;
  static constexpr bool kItemAttrapé =
      kToutAttrapé || kRègles.échecs == EchecsCollection::ItemAttrapé;

  // Runs an operation; where the collection swallows failures, one ends with an empty result.
  template <class Travail>
  static auto Protège(bool attrape, Travail&& travail) -> decltype(travail()) {
    if (!attrape) return travail();
    try {
      return travail();
    } catch (const Echec&) {
      return decltype(travail())();
    }
  }

  using ParClé = std::unordered_map<std::string, Ref<T>, EmpreinteDeClé, MêmesClés>;

  [[nodiscard]] typename ParClé::const_iterator Trouvé(std::optional<std::string_view> clé) const {
    const auto place = clé ? parClé_.find(*clé) : parClé_.end();
    if (place == parClé_.end()) {
      throw Echec(Numéro::AppelIncorrect, DescriptionDEchec(Numéro::ElémentAbsent) + " : '" +
                                              std::string(clé.value_or("")) + "'");
    }
    return place;
  }

  Ref<T> Range(Ref<T> objet, std::string_view clé) {
    const bool sansClé = kRègles.cléFacultative && clé.empty();
    if (!sansClé && !parClé_.emplace(clé, objet).second) {
      throw Echec(Numéro::CléDéjàPrésente,
                  DescriptionDEchec(Numéro::CléDéjàPrésente) + " : '" + std::string(clé) + "'");
    }
    auto& [objets, clés] = AModifier();
    clés.push_back(sansClé ? std::nullopt : std::optional<std::string>(clé));
    objets.push_back(objet);
    return objet;
  }

  // A copy when somebody walks the present members.
  Membres<T>& AModifier() {
    if (membres_.use_count() > 1) membres_ = std::make_shared<Membres<T>>(*membres_);
    return *membres_;
  }

  Plateforme& plateforme_;
  std::shared_ptr<Membres<T>> membres_ = std::make_shared<Membres<T>>();
  ParClé parClé_;  // the members that have a key
};

class Canal;
class Capteur;
class Carte;
class Commande;
class EntréeLogique;
class Fonction;
class SortieLogique;

/// Channels of a block.
using Canals = Collection<Canal, RèglesCollection{.échecs = EchecsCollection::TousAttrapés}>;
/// Blocks of a board.
using Fonctions = Collection<Fonction, RèglesCollection{}>;
/// Boards of a frame.
using Cartes = Collection<Carte, RèglesCollection{}>;
/// Sensors of a frame, or those that make one up.
using Capteurs = Collection<Capteur, RèglesCollection{.accepteObjet = true,
                                                      .cléFacultative = true,
                                                      .cléNullePermise = true,
                                                      .itemIndex = true,
                                                      .modeEdition = true}>;
/// Commands of a frame.
using Commandes = Collection<Commande, RèglesCollection{.accepteObjet = true,
                                                        .cléFacultative = true,
                                                        .cléNullePermise = true,
                                                        .itemIndex = true,
                                                        .modeEdition = true}>;
/// Logic inputs of a frame.
using EntréeLogiques =
    Collection<EntréeLogique, RèglesCollection{.accepteObjet = true,
                                               .cléFacultative = true,
                                               .cléNullePermise = true,
                                               .itemIndex = true,
                                               .échecs = EchecsCollection::ItemAttrapé}>;
/// Logic outputs of a frame.
using SortieLogiques = Collection<SortieLogique, RèglesCollection{.cléFacultative = true,
                                                                  .cléNullePermise = true,
                                                                  .itemIndex = true}>;

}  // namespace zuma
