#include "sim/machine_simulee.h"

#include <array>
#include <chrono>
#include <cstdio>
#include <thread>

#include "boards/table_des_drivers.h"
#include "host/machine.h"
#include "sim/carte_ik121.h"

namespace zuma::host {
namespace {

std::string Volts(double volts) {
  std::array<char, 32> texte{};
  std::snprintf(texte.data(), texte.size(), "%+.4f V", volts);
  return texte.data();
}

// Where an encoder stands, in the unit that its channel reads.
std::string Comptes(double volts) {
  return std::to_string(sim::CarteIK121::Position(volts)) + " counts";
}

// Wires of the demo frame: channel, quantity, and what makes 10 V.
constexpr std::array<sim::Fil, 14> kCâblage{{
    {"1100", sim::Grandeur::Force, 100e3},
    {"1101", sim::Grandeur::Force, 10e3},
    {"1102", sim::Grandeur::Position, 0.2},
    {"1103", sim::Grandeur::PressionAlimentation, 25e6},
    {"1104", sim::Grandeur::PressionUtilisation, 25e6},
    {"1105", sim::Grandeur::Raccourcissement, 1e-3},
    {"1200", sim::Grandeur::Servovalve},
    {"1300", sim::Grandeur::Armé},
    {"1301", sim::Grandeur::PorteFermée},
    {"1302", sim::Grandeur::FinDeCourseHaut},
    {"1303", sim::Grandeur::FinDeCourseBas},
    {"1304", sim::Grandeur::BoutonAU},
    {"1400", sim::Grandeur::Pompe},
    {"1401", sim::Grandeur::Distributeur},
}};

// The simulated machine at the pace of a real one, so that a person can follow it.
class Simulée : public Machine {
 public:
  Simulée(BoîteDeMessage& messages, Cadence cadence, Ref<RegistreDesDrivers> drivers)
      : machine_(messages, std::move(drivers)), cadence_(cadence) {}

  Plateforme& Services() override { return machine_.services; }
  Ref<ZED_Timer> Timer() override { return machine_.horloge; }
  void Branche(Chassis& chassis) override { machine_.Branche(chassis, kCâblage); }
  sim::MachineSimulée* Jumelle() override { return &machine_; }
  std::string_view Fini() const override { return machine_.fin.raison; }

  double AvanceJusquA(double secondes) override {
    if (cadence_ == Cadence::Réelle) Dors(secondes);
    return machine_.AvanceJusquA(secondes);
  }

  std::string Borne(const Canal& canal) const override {
    const auto borne = machine_.BorneDe(canal);
    if (!borne) return {};
    const sim::Bornes* bornes = &borne->DeLaCarte();
    const std::size_t rang = borne->Ligne();
    switch (canal.TypeCanal()) {
      case ENUM_TYPE_FONCTION::FctEntréesAnalogiques:
        return canal.Driver() == ENUM_DRIVER::DrvIK121 ? Comptes(bornes->entréesAnalogiques[rang])
                                                       : Volts(bornes->entréesAnalogiques[rang]);
      case ENUM_TYPE_FONCTION::FctSortiesAnalogiques:
        return canal.EnFréquence() ? std::to_string(bornes->fréquence) + " Hz"
                                   : Volts(bornes->sortiesAnalogiques[rang]);
      case ENUM_TYPE_FONCTION::FctEntréesLogiques:
        return "line " + std::to_string(bornes->entréesLogiques >> rang & 1U);
      case ENUM_TYPE_FONCTION::FctSortiesLogiques:
        return "line " + std::to_string(bornes->sortiesLogiques >> rang & 1U);
      case ENUM_TYPE_FONCTION::FctAucune:
        break;
    }
    return {};
  }

 private:
  using Instant = std::chrono::steady_clock;
  void Dors(double secondes) const {
    std::this_thread::sleep_until(départ_ + std::chrono::duration_cast<Instant::duration>(
                                                std::chrono::duration<double>(secondes)));
  }

  sim::MachineSimulée machine_;
  Cadence cadence_;
  Instant::time_point départ_ = Instant::now();
};

}  // namespace

std::unique_ptr<Machine> MachineSimulée(BoîteDeMessage& messages, Cadence cadence,
                                        Ref<RegistreDesDrivers> drivers) {
  return std::make_unique<Simulée>(messages, cadence, drivers ? drivers : CréeLesDrivers());
}

}  // namespace zuma::host
