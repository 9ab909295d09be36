#pragma once

#include <concepts>
#include <functional>
#include <memory>
#include <pybind11/pybind11.h>
#include <utility>

#include "base/objet.h"
#include "base/ref.h"
#include "core/collections.h"
#include "modele/vie.h"
#include "platform/collaborateurs.h"
#include "platform/liaison_serie.h"

// A list of parameters is shared as it stands: those added later show in it.
PYBIND11_MAKE_OPAQUE(zuma::ParamètresPartagés)

namespace zuma::python::modele {

/// What Python holds of something that lives with a frame: the life of the frame, and a share of
/// the object that ends with it.
class Poignée {
 public:
  Poignée(std::shared_ptr<Laisse> laisse, const void* adresse, std::shared_ptr<void> part,
          std::function<bool()> vit)
      : laisse_(std::move(laisse)), adresse_(adresse) {
    if (!laisse_->Ouverte()) throw ChassisFermé();
    part_ = &laisse_->Prend(adresse_, std::move(part), std::move(vit));
  }
  virtual ~Poignée() { laisse_->Rend(adresse_); }
  Poignée(const Poignée&) = delete;
  Poignée& operator=(const Poignée&) = delete;

  [[nodiscard]] const std::shared_ptr<Laisse>& LaLaisse() const noexcept { return laisse_; }
  /// Throws for an object whose frame is closed, and for one that went away within its frame.
  void Exige() const {
    if (!laisse_->Ouverte()) throw ChassisFermé();
    if (!part_->objet && part_->vit && !part_->vit()) throw Echec::ObjetAbsent();
  }
  /// The same for who keeps the object: the share of what Python may keep.
  [[nodiscard]] const std::shared_ptr<void>& LaPart() const {
    Exige();
    if (!part_->objet) {
      throw pybind11::type_error("only its frame holds this object: take it from its collection");
    }
    return part_->objet;
  }
  /// The share alone, or null for what only its frame holds.
  [[nodiscard]] void* LaPartOuRien() const { return Exige(), part_->objet.get(); }
  /// Tells objects apart, those of closed frames too; nothing to be followed.
  [[nodiscard]] const void* Adresse() const noexcept { return adresse_; }
  /// Handles of one object.
  [[nodiscard]] bool Même(const Poignée& autre) const noexcept {
    return adresse_ == autre.adresse_ && laisse_ == autre.laisse_;
  }

 private:
  std::shared_ptr<Laisse> laisse_;
  const void* adresse_;
  Laisse::Part* part_ = nullptr;
};

/// Handle of an object of the tree, whatever its class.
class PoignéeDObjet : public Poignée {
 public:
  PoignéeDObjet(std::shared_ptr<Laisse> laisse, zuma::Objet* objet, const void* adresse,
                std::shared_ptr<void> part, std::function<bool()> vit)
      : Poignée(std::move(laisse), adresse, std::move(part), std::move(vit)), base_(objet) {}
  [[nodiscard]] zuma::Objet& Objet() const { return Exige(), *base_; }
  /// Shares the object with its handles.
  [[nodiscard]] Ref<zuma::Objet> Partagé() const {
    return std::shared_ptr<zuma::Objet>(LaPart(), base_);
  }

 private:
  zuma::Objet* base_;
};

/// Handle of one class.
template <class T>
class PoignéeDe : public Poignée {
 public:
  PoignéeDe(std::shared_ptr<Laisse> laisse, T* objet, std::shared_ptr<void> part = {},
            std::function<bool()> vit = {})
      : Poignée(std::move(laisse), objet, std::move(part), std::move(vit)), objet_(objet) {}
  [[nodiscard]] T& Objet() const { return Exige(), *objet_; }
  [[nodiscard]] Ref<T> Partagé() const { return std::shared_ptr<T>(LaPart(), objet_); }

 private:
  T* objet_;
};

template <std::derived_from<zuma::Objet> T>
class PoignéeDe<T> : public PoignéeDObjet {
 public:
  PoignéeDe(std::shared_ptr<Laisse> laisse, T* objet, std::shared_ptr<void> part = {},
            std::function<bool()> vit = {})
      : PoignéeDObjet(std::move(laisse), objet, objet, std::move(part), std::move(vit)),
        objet_(objet) {}
  [[nodiscard]] T& Objet() const { return Exige(), *objet_; }
  [[nodiscard]] Ref<T> Partagé() const { return std::shared_ptr<T>(LaPart(), objet_); }

 private:
  T* objet_;
};

template <>
class PoignéeDe<zuma::Objet> : public PoignéeDObjet {};

template <class T>
inline constexpr bool kEstUneCollection = false;
template <class T, RèglesCollection kRègles>
inline constexpr bool kEstUneCollection<Collection<T, kRègles>> = true;

/// Python holds it by a handle. Everything else is the host's own, and shared as it is.
template <class T>
concept Tenu = std::derived_from<T, Objet> || kEstUneCollection<T> ||
               std::same_as<T, ZED_LiaisonSerie> || std::same_as<T, PortInstrument>;

/// What an operation gives of an object that only its frame holds.
template <class T>
struct Désigné {
  T* objet = nullptr;
  std::function<bool()> vit{};
};

/// Life that an object from `parent` shares: that of the parent, or of its own platform.
template <class T>
[[nodiscard]] std::shared_ptr<Laisse> LaisseDe(const T& objet, pybind11::handle parent) {
  if (parent && pybind11::isinstance<Poignée>(parent)) return parent.cast<Poignée&>().LaLaisse();
  if constexpr (std::derived_from<T, Objet>) return Laisse::De(objet.LaPlateforme());
  throw ChassisFermé();
}

template <class T>
pybind11::object EnPython(const Ref<T>& objet) {
  return pybind11::cast(objet);
}

/// Written in Python: the C++ half must not outlive the other one.
class EcritEnPython {
 public:
  virtual ~EcritEnPython() = default;
};

/// Keeps an object of Python; lets go of it under the interpreter's lock, from whatever thread.
[[nodiscard]] std::shared_ptr<pybind11::object> Retenu(pybind11::object objet);

}  // namespace zuma::python::modele

namespace pybind11::detail {
namespace zm = zuma::python::modele;

template <zm::Tenu T>
class type_caster<zuma::Ref<T>> {
 public:
  static constexpr auto name_ = make_caster<zm::PoignéeDe<T>>::name;
  PYBIND11_TYPE_CASTER(zuma::Ref<T>,
                       const_name<zm::kEstUneCollection<T>>(name_, const_name("Optional[") + name_ +
                                                                       const_name("]")));

  bool load(handle source, bool convert) {
    if (source.is_none()) {
      value = {};
      return true;
    }
    make_caster<zm::PoignéeDe<T>> poignée;
    if (!poignée.load(source, convert)) return false;
    value = cast_op<zm::PoignéeDe<T>&>(poignée).Partagé();
    return true;
  }
  static handle cast(const zuma::Ref<T>& source, return_value_policy, handle parent) {
    if (!source) return none().release();
    auto poignée = std::make_unique<zm::PoignéeDe<T>>(zm::LaisseDe(*source, parent), source.Brut(),
                                                      source.Partagé());
    return pybind11::cast(std::move(poignée)).release();
  }
};

template <>
class type_caster<zuma::Ref<zuma::Objet>> {
 public:
  PYBIND11_TYPE_CASTER(zuma::Ref<zuma::Objet>, const_name("Optional[Objet]"));

  bool load(handle source, bool convert) {
    if (source.is_none()) return true;
    make_caster<zm::PoignéeDObjet> poignée;
    if (!poignée.load(source, convert)) return false;
    value = cast_op<zm::PoignéeDObjet&>(poignée).Partagé();
    return true;
  }
};

template <class T>
class type_caster<zm::Désigné<T>> {
 public:
  PYBIND11_TYPE_CASTER(zm::Désigné<T>, const_name("Optional[") +
                                           make_caster<zm::PoignéeDe<T>>::name + const_name("]"));

  bool load(handle source, bool convert) {
    value = {};
    if (source.is_none()) return true;
    make_caster<zm::PoignéeDe<T>> poignée;
    if (!poignée.load(source, convert)) return false;
    value.objet = &cast_op<zm::PoignéeDe<T>&>(poignée).Objet();
    return true;
  }
  static handle cast(const zm::Désigné<T>& source, return_value_policy, handle parent) {
    if (source.objet == nullptr) return none().release();
    auto poignée = std::make_unique<zm::PoignéeDe<T>>(zm::LaisseDe(*source.objet, parent),
                                                      source.objet, nullptr, source.vit);
    return pybind11::cast(std::move(poignée)).release();
  }
};

template <class T>
class type_caster<zuma::Ref<T>> {
 public:
  PYBIND11_TYPE_CASTER(zuma::Ref<T>, const_name("Optional[") +
                                         make_caster<std::shared_ptr<T>>::name + const_name("]"));

  bool load(handle source, bool convert) {
    if (source.is_none()) {
      value = {};
      return true;
    }
    make_caster<std::shared_ptr<T>> caster;
    if (!caster.load(source, convert)) return false;
    const auto partagé = cast_op<std::shared_ptr<T>>(caster);
    if constexpr (std::is_polymorphic_v<T>) {
      if (dynamic_cast<zm::EcritEnPython*>(partagé.get()) != nullptr) {
        const auto python = zm::Retenu(reinterpret_borrow<object>(source));
        value = std::shared_ptr<T>(python, partagé.get());
        return true;
      }
    }
    value = partagé;
    return true;
  }
  static handle cast(const zuma::Ref<T>& source, return_value_policy politique, handle parent) {
    if (!source) return none().release();
    return make_caster<std::shared_ptr<T>>::cast(source.Partagé(), politique, parent);
  }
};

}  // namespace pybind11::detail
