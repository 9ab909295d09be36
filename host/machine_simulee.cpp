#include "sim/machine_simulee.h"

#include <array>
#include <chrono>
#include <cstdio>
#include <thread>

#include "host/machine.h"

namespace zuma::host {
namespace {

std::string Volts(double volts) {
  std::array<char, 32> texte{};
  std::snprintf(texte.data(), texte.size(), "%+.4f V", volts);
  return texte.data();
}

// The simulated machine at the pace of a real one, so that a person can follow it.
class Simulée : public Machine {
 public:
  explicit Simulée(BoîteDeMessage& messages) : machine_(messages) {}

  Plateforme& Services() override { return machine_.services; }
  Ref<ZED_Timer> Timer() override { return machine_.horloge; }
  void Branche(Chassis& chassis) override { machine_.Branche(chassis); }

  void AvanceJusquA(double secondes) override {
    std::this_thread::sleep_until(départ_ + std::chrono::duration_cast<Instant::duration>(
                                                std::chrono::duration<double>(secondes)));
    machine_.AvanceJusquA(secondes);
  }

  std::string Borne(const Canal& canal) const override {
    const auto borne = machine_.ports.BorneDe(canal);
    if (!borne) return {};
    const sim::Bornes* bornes = &borne->DeLaCarte();
    const std::size_t rang = borne->Ligne();
    switch (canal.TypeCanal()) {
      case ENUM_TYPE_FONCTION::FctEntréesAnalogiques:
        return Volts(bornes->entréesAnalogiques[rang]);
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
  sim::MachineSimulée machine_;
  Instant::time_point départ_ = Instant::now();
};

}  // namespace

std::unique_ptr<Machine> MachineSimulée(BoîteDeMessage& messages) {
  return std::make_unique<Simulée>(messages);
}

}  // namespace zuma::host
