#include <charconv>
#include <chrono>
#include <optional>
#include <string_view>
#include <thread>

#include "boards/table_des_drivers.h"
#include "host/configuration.h"
#include "host/machine.h"
#include "platform/linux/plateforme_linux.h"

namespace zuma::host {
namespace {

linux_::RéglagesLinux Choix(const Raccordement& raccordement,
                            const Ref<RegistreDesDrivers>& drivers) {
  linux_::RéglagesLinux choix;
  choix.drivers = drivers ? drivers : CréeLesDrivers();
  choix.portsSérie = raccordement.ports;
  choix.interfacesCAN = raccordement.can;
  return choix;
}

class Réelle : public Machine {
 public:
  Réelle(BoîteDeMessage& messages, const Raccordement& raccordement,
         const Ref<RegistreDesDrivers>& drivers)
      : linux_(Choix(raccordement, drivers)) {
    linux_.services.messages = &messages;
  }

  Plateforme& Services() override { return linux_.services; }
  Ref<ZED_Timer> Timer() override { return linux_.timer; }
  // Time counts from the first pass, since a start may wait seconds for an instrument that is not
  // there.
  double AvanceJusquA(double secondes) override {
    if (!départ_) départ_ = Instant::now();
    std::this_thread::sleep_until(*départ_ + std::chrono::duration_cast<Instant::duration>(
                                                 std::chrono::duration<double>(secondes)));
    return std::chrono::duration<double>(Instant::now() - *départ_).count();
  }
  void AvantLaFin(const std::function<void()>& geste) override { linux_.fin.Avant(geste); }
  void Rapporte(ZED_Erreur& registre) const override {
    for (const auto& entrée : linux_.registre->Entrées()) {
      registre.AjouteErreur(entrée.message, entrée.variables);
    }
  }

 private:
  using Instant = std::chrono::steady_clock;
  linux_::PlateformeLinux linux_;
  std::optional<Instant::time_point> départ_;
};

bool LitNombre(std::string_view texte, std::int32_t& nombre) {
  const auto [fin, erreur] = std::from_chars(texte.data(), texte.data() + texte.size(), nombre);
  return erreur == std::errc() && fin == texte.data() + texte.size() && nombre >= 0;
}

// An option as it was given, and what it should have been.
struct Argument {
  std::string_view texte;
  std::string_view option;
  std::string_view attendu;

  [[noreturn]] void Refuse() const {
    throw MauvaisUsage(std::string(option) + " \"" + std::string(texte) + "\": expected " +
                       std::string(attendu));
  }
};

// The two sides of a sign; neither may be empty.
std::pair<std::string_view, std::string_view> Partage(std::string_view texte, char signe,
                                                      const Argument& argument) {
  const std::size_t place = texte.find(signe);
  if (place == 0 || place == std::string_view::npos || place + 1 == texte.size()) argument.Refuse();
  return {texte.substr(0, place), texte.substr(place + 1)};
}

}  // namespace

Raccordement LitLesPorts(const std::vector<std::string>& ports,
                         const std::vector<std::string>& can) {
  Raccordement lu;
  for (const std::string& texte : ports) {
    const Argument argument{texte, "--port",
                            "NUMBER=DEVICE, as in 4=/dev/ttyUSB0, each number once"};
    const auto [numéro, appareil] = Partage(texte, '=', argument);
    std::int32_t port = 0;
    if (!LitNombre(numéro, port)) argument.Refuse();
    if (!lu.ports.emplace(port, appareil).second) argument.Refuse();
  }
  for (const std::string& texte : can) {
    const Argument argument{texte, "--can", "CARD:PORT=INTERFACE, as in 1:0=can0, each port once"};
    const auto [place, interface] = Partage(texte, '=', argument);
    const auto [carte, port] = Partage(place, ':', argument);
    std::pair<std::int32_t, std::int32_t> clé;
    if (!LitNombre(carte, clé.first) || !LitNombre(port, clé.second)) argument.Refuse();
    if (!lu.can.emplace(clé, interface).second) argument.Refuse();
  }
  return lu;
}

std::unique_ptr<Machine> MachineRéelle(BoîteDeMessage& messages, const Raccordement& raccordement,
                                       Ref<RegistreDesDrivers> drivers) {
  return std::make_unique<Réelle>(messages, raccordement, drivers);
}

}  // namespace zuma::host
