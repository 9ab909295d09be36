#pragma once

#include <memory>
#include <optional>
#include <string>

#include "host/chassis_en_marche.h"
#include "host/machine.h"
#include "host/machine_rejouee.h"
#include "host/parametres.h"
#include "outils/chassis_de_demo.h"
#include "sim/machine_simulee.h"

namespace zuma::essai {

/// A demo frame as a host runs it, published in a folder of its own, on the simulated
/// machine as fast as it goes, or on a recording; `sql` changes its base before.
class ChassisPubliéDeDémo {
 public:
  explicit ChassisPubliéDeDémo(std::int32_t chassis = 1, const char* sql = "",
                               const std::string& rejoué = {})
      : index(chassis) {
    if (*sql != '\0') base.Exécute(sql);
    if (!rejoué.empty()) {
      machine = host::MachineRejouée(std::move(machine), rejoué, host::Cadence::Libre);
    }
    EcritLesParamètres(base.chemin);
    ::setenv("ZUMA_PUBLICATIONS", publications.Chemin().c_str(), 1);
    marche.emplace(base.chemin, index, *machine, recueil, host::LitLesParamètres(base.chemin, {}));
  }
  ~ChassisPubliéDeDémo() {
    marche.reset();
    ::setenv("ZUMA_PUBLICATIONS", avant_.c_str(), 1);
  }
  ChassisPubliéDeDémo(const ChassisPubliéDeDémo&) = delete;
  ChassisPubliéDeDémo& operator=(const ChassisPubliéDeDémo&) = delete;

  template <class AprèsChaque>
  void Passe(double durée, AprèsChaque&& après) {
    constexpr double kPas = 0.001;
    for (const double fin = secondes + durée; secondes < fin && !machine->AuBout();) {
      secondes = machine->AvanceJusquA(secondes + kPas);
      marche->Passe();
      après();
    }
  }
  void Passe(double durée) {
    Passe(durée, [] {});
  }
  [[nodiscard]] std::string Fichier() const {
    return publications.Fichier(publication::NomDeFichier({base.chemin, index, true}));
  }

  std::int32_t index;
  BaseDeDémo base;
  DossierProvisoire publications;
  Ref<host::Recueil> recueil = Crée<host::Recueil>();
  std::unique_ptr<host::Machine> machine = host::MachineSimulée(*recueil, host::Cadence::Libre);
  std::optional<host::ChassisEnMarche> marche;
  double secondes = 0;

 private:
  std::string avant_ = publication::DossierDesPublications();
};

}  // namespace zuma::essai
