#pragma once

#include <map>
#include <memory>
#include <mutex>
#include <pybind11/pybind11.h>
#include <string>

#include "host/machine.h"
#include "modele/poignees.h"
#include "modele/vie.h"
#include "platform/plateforme.h"

namespace zuma::python::modele {

/// What Python gave of a platform, by its name.
using Données = std::map<std::string, std::shared_ptr<pybind11::object>>;

/// What frames stand on: a machine, or the services that Python gives. It lasts as long as a frame.
struct Machinerie {
  /// Messages go to Python, or to the error output.
  std::shared_ptr<BoîteDeMessage> messages;
  std::unique_ptr<host::Machine> machine;  ///< none for services of Python alone
  Plateforme services;                     ///< what frames take a copy of
  Données données;                         ///< what `services` has of Python
  /// One call at a time on the machine, whichever of its frames it is for.
  std::shared_ptr<std::recursive_mutex> passage = std::make_shared<std::recursive_mutex>();
  double heure = 0;  ///< the machine's, in seconds after the start

  /// The machine; services of Python alone have none (91).
  [[nodiscard]] host::Machine& LaMachine() const;
};

/// Python's `Plateforme`. Objects made on it alone end with it; its frames go on.
class PlateformeTenue {
 public:
  explicit PlateformeTenue(std::shared_ptr<Machinerie> machinerie);
  ~PlateformeTenue() { laisse_->Ferme(); }
  PlateformeTenue(const PlateformeTenue&) = delete;
  PlateformeTenue& operator=(const PlateformeTenue&) = delete;

  [[nodiscard]] const std::shared_ptr<Machinerie>& LaMachinerie() const { return machinerie_; }
  [[nodiscard]] const std::shared_ptr<Laisse>& LaLaisse() const { return laisse_; }
  /// An object of no frame yet.
  template <class T>
  [[nodiscard]] std::unique_ptr<PoignéeDe<T>> Nouveau() const {
    const auto objet = std::make_shared<T>(machinerie_->services);
    return std::make_unique<PoignéeDe<T>>(laisse_, objet.get(), objet);
  }

 private:
  std::shared_ptr<Machinerie> machinerie_;
  std::shared_ptr<Laisse> laisse_;
};

}  // namespace zuma::python::modele
