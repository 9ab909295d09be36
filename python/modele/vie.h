#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <pybind11/pybind11.h>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "base/echec.h"
#include "base/objet.h"
#include "platform/plateforme.h"

// How long what Python holds of the model answers. A frame stands on a platform of its own, and
// every object of the frame knows that platform: it is by the platform that a frame is opened and
// closed.
namespace zuma {
class Chassis;
}

namespace zuma::python::modele {

/// Calls of an object whose frame is closed. A failure like others for who asks no further.
struct ChassisFermé : Echec {
  ChassisFermé() : Echec(Numéro::ObjetAbsent, "Le chassis de cet objet est fermé") {}
};

/// Puts the frame to rest for that cause, latched like any other stop.
using ArrêtDuChassis = std::function<void(const std::string& cause)>;

/// From here on the objects of that platform answer. `garde` owns what they live by, the frame, its
/// machine and the platform itself; it is let go by `Ferme`. `arrête` stops the frame when
/// something that Python wrote fails inside a pass.
void Ouvre(Plateforme& plateforme, std::shared_ptr<void> garde, ArrêtDuChassis arrête = {});
/// The objects of that platform answer no more, and what Python held of them ends here, `garde`
/// behind it. Within a call on such an object all that ends with the outermost call. Nothing on a
/// platform that is not open. Waits for a call of another thread.
void Ferme(Plateforme& plateforme);

/// Life of what stands on one platform.
class Laisse : public std::enable_shared_from_this<Laisse> {
 public:
  /// Share of one object: what Python's handles of it hold together.
  struct Part {
    std::shared_ptr<void> objet;  ///< the share; none for what the frame alone holds
    std::function<bool()> vit;    ///< of such an object: it is still there
    std::size_t poignées = 0;     ///< handles that hold it
  };

  /// What shares a `passage` has one call at a time; by default that platform alone.
  Laisse(Plateforme& plateforme, std::shared_ptr<void> garde, ArrêtDuChassis arrête,
         std::shared_ptr<std::recursive_mutex> passage = nullptr);
  Laisse(const Laisse&) = delete;
  Laisse& operator=(const Laisse&) = delete;

  /// From here on it is the one of its platform.
  void Ouvre();
  /// The one of an open platform; throws `ChassisFermé` without.
  [[nodiscard]] static std::shared_ptr<Laisse> De(const Plateforme& plateforme);
  /// Closes all that are open, the last one first: the interpreter ends.
  static void FermeTout();
  /// This process is the child of the one that opened them: nothing of theirs is touched, ever.
  static void APartirDUnEnfant() noexcept;

  /// Open, and of this process.
  [[nodiscard]] bool Ouverte() const noexcept;
  /// See `Ferme` of the platform.
  void Ferme();
  /// To be done at the end, the last one first, before anything is let go.
  void ALaFin(std::function<void()> geste) { fins_.push_back(std::move(geste)); }
  /// Fires the stop of the frame.
  void Arrête(const std::string& cause) const;
  ///@{
  /// Something was moved on its hardware, which has to be put to rest at the end.
  void Touche() noexcept { touchée_ = true; }
  [[nodiscard]] bool Touchée() const noexcept { return touchée_; }
  ///@}

  ///@{
  /// One handle more of an object, or one less. The share is that of the first handle that has one.
  [[nodiscard]] Part& Prend(const void* objet, std::shared_ptr<void> part,
                            std::function<bool()> vit);
  void Rend(const void* objet) noexcept;
  ///@}

 private:
  friend class Séjour;
  void Entre();
  void Sort() noexcept;
  void Termine() noexcept;

  Plateforme* plateforme_;
  std::shared_ptr<void> garde_;
  ArrêtDuChassis arrête_;
  std::uint64_t naissance_;  ///< which process opened it
  bool ouverte_ = true;
  bool terminée_ = false;
  bool touchée_ = false;
  std::vector<std::function<void()>> fins_;
  std::unordered_map<const void*, Part> parts_;
  // One call at a time, whatever the threads of the program.
  std::shared_ptr<std::recursive_mutex> passage_;
  int appels_ = 0;                              ///< under way, one within the other
  std::vector<std::shared_ptr<void>> àLâcher_;  ///< given back during the call of another thread
};

/// A call under way: keeps the frame from ending and the other threads waiting, and keeps the first
/// exception of the Python that the call reaches. To be made and ended with the interpreter's lock;
/// in between it may be released.
class Séjour {
 public:
  /// Throws `ChassisFermé`; waits for the call of another thread.
  explicit Séjour(std::shared_ptr<Laisse> laisse);
  explicit Séjour(const Plateforme& plateforme) : Séjour(Laisse::De(plateforme)) {}
  /// A call on what belongs to no frame: keeps the exception alone.
  Séjour();
  ~Séjour();
  Séjour(const Séjour&) = delete;
  Séjour& operator=(const Séjour&) = delete;

  /// Ends a call: raises what Python raised inside it. In a pass the frame is stopped first.
  void Conclut(bool passe = false);

  /// The exception being handled goes to the innermost call of this thread, behind that; without
  /// one it is told as Python tells what nobody can catch.
  static void Retient(pybind11::error_already_set&& exception) noexcept;
  /// The innermost call of this thread has one to raise: who makes pass behind pass ends there.
  [[nodiscard]] static bool ARetenu() noexcept;

 private:
  std::shared_ptr<Laisse> laisse_;
  Séjour* dessus_;  ///< call of this thread that this one is made within
  std::shared_ptr<pybind11::error_already_set> retenue_;
};

/// A pass, or a row of passes, by whoever drives the frame: `travail` runs without the
/// interpreter's lock. What Python raised inside it comes out behind it, the frame being stopped by
/// then.
template <class Travail>
void FaitUnePasse(const Plateforme& plateforme, Travail&& travail) {
  Séjour séjour(plateforme);
  try {
    const pybind11::gil_scoped_release libre;
    travail();
  } catch (...) {
    séjour.Conclut(true);
    throw;
  }
  séjour.Conclut(true);
}

/// The first line of what an exception says, for who reads it as a cause or in the error record.
[[nodiscard]] std::string TexteDe(const pybind11::error_already_set& exception);

/// The frame itself as Python's `zuma.modele.Chassis`. Its platform must be open; whoever opened it
/// holds the frame.
[[nodiscard]] pybind11::object ChassisEnPython(Chassis& chassis);
/// An object of an open frame as an object of `zuma.modele`; None for Nothing. For the classes that
/// stand in a frame's collections; defined in `modele/poignees.h`.
template <class T>
[[nodiscard]] pybind11::object EnPython(const Ref<T>& objet);

}  // namespace zuma::python::modele
