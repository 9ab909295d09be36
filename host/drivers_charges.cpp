#include "host/drivers_charges.h"

#include <dlfcn.h>
#include <filesystem>
#include <memory>

#include "base/echec.h"
#include "boards/table_des_drivers.h"
#include "host/configuration.h"

namespace zuma::host {
namespace {

struct Ferme {
  void operator()(void* poignée) const noexcept { ::dlclose(poignée); }
};
using Bibliothèque = std::unique_ptr<void, Ferme>;

Bibliothèque Charge(const std::string& fichier) {
  namespace fs = std::filesystem;
  std::error_code erreur;
  if (!fs::is_regular_file(fichier, erreur)) {
    throw MauvaisUsage("--driver " + fichier +
                       ": there is no such file; give the path of a library");
  }
  // A name without a folder would be looked for among the libraries of the system.
  Bibliothèque bibliothèque(::dlopen(fs::absolute(fichier).c_str(), RTLD_NOW | RTLD_LOCAL));
  if (!bibliothèque) {
    throw MauvaisUsage("--driver " + fichier + " cannot be loaded: " + ::dlerror() +
                       ". Build it as a module against this version of zuma");
  }
  return bibliothèque;
}

std::span<const LigneDriver> LignesDe(const Bibliothèque& bibliothèque,
                                      const std::string& fichier) {
  const auto* drivers =
      static_cast<const DriversDUneBibliothèque*>(::dlsym(bibliothèque.get(), "zuma_drivers"));
  if (drivers == nullptr) {
    throw MauvaisUsage("--driver " + fichier +
                       ": no symbol zuma_drivers in this library: it holds no drivers, or hides "
                       "them. Define it as tree/ligne_driver.h says");
  }
  if (drivers->version != kVersionDesDrivers) {
    throw MauvaisUsage("--driver " + fichier + ": made for version " +
                       std::to_string(drivers->version) +
                       " of the driver interface, this program has version " +
                       std::to_string(kVersionDesDrivers) + ". Build it again against this zuma");
  }
  return {drivers->lignes, drivers->nombre};
}

void Ajoute(RegistreDesDrivers& registre, std::span<const LigneDriver> lignes,
            const std::string& origine) {
  try {
    registre.Ajoute(lignes);
  } catch (const Echec& échec) {
    throw MauvaisUsage(origine + ": " + échec.Description() +
                       ". Give each driver a value, a name and texts that no other one has");
  }
}

}  // namespace

Ref<RegistreDesDrivers> LesDrivers(const std::vector<std::string>& fichiers,
                                   std::span<const LigneDriver> lignes) {
  std::vector<Bibliothèque> chargées;
  Ref<RegistreDesDrivers> registre = CréeLesDrivers();
  for (const std::string& fichier : fichiers) {
    chargées.push_back(Charge(fichier));
    Ajoute(*registre, LignesDe(chargées.back(), fichier), "--driver " + fichier);
  }
  Ajoute(*registre, lignes, "drivers of the host");
  // Their code serves frames, forms and handlers: nobody knows when the last of them has gone.
  for (Bibliothèque& chargée : chargées) (void)chargée.release();
  return registre;
}

}  // namespace zuma::host
