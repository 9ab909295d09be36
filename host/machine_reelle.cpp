#include <chrono>
#include <thread>

#include "host/machine.h"
#include "platform/linux/plateforme_linux.h"

namespace zuma::host {
namespace {

class Réelle : public Machine {
 public:
  explicit Réelle(BoîteDeMessage& messages) : linux_({}) { linux_.services.messages = &messages; }

  Plateforme& Services() override { return linux_.services; }
  Ref<ZED_Timer> Timer() override { return linux_.timer; }
  // A pass costs little when nothing is due: a host may ask a thousand times a second.
  void AvanceJusquA(double) override { std::this_thread::sleep_for(std::chrono::milliseconds(1)); }

 private:
  linux_::PlateformeLinux linux_;
};

}  // namespace

std::unique_ptr<Machine> MachineRéelle(BoîteDeMessage& messages) {
  return std::make_unique<Réelle>(messages);
}

}  // namespace zuma::host
