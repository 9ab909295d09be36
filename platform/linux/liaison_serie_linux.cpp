#include "platform/linux/liaison_serie_linux.h"

#include <algorithm>
#include <filesystem>

#include <unistd.h>

namespace zuma::linux_ {
namespace {

std::string Chemin(const CarteDesPorts& ports, std::int32_t numéro) {
  const auto connu = ports.find(numéro);
  if (connu != ports.end()) return connu->second;
  return "/dev/ttyS" + std::to_string(numéro - 1);
}

std::string Chemin(const CarteDesPorts& ports, const RéglagesInstrument& réglages) {
  const std::int32_t numéro = réglages.NuméroPort();
  return numéro > 0 ? Chemin(ports, numéro) : réglages.port;
}

}  // namespace

std::vector<std::string> PortsDeLaMachine() {
  namespace fs = std::filesystem;
  std::vector<std::string> stables;
  std::vector<std::string> numérotés;
  std::error_code erreur;
  for (const auto& e : fs::directory_iterator("/dev/serial/by-id", erreur)) {
    stables.push_back(e.path().string());
  }
  for (const auto& e : fs::directory_iterator("/dev", erreur)) {
    const std::string nom = e.path().filename().string();
    for (const std::string_view début : {"ttyUSB", "ttyACM", "ttyS"}) {
      if (nom.starts_with(début) && nom.size() > début.size()) numérotés.push_back("/dev/" + nom);
    }
  }
  std::ranges::sort(stables);
  std::ranges::sort(numérotés);
  stables.insert(stables.end(), numérotés.begin(), numérotés.end());
  return stables;
}

void LiaisonSérieLinux::OuvrePort() {
  port_.Ouvre(Chemin(ports_, numéro_), réglages_);
}

void PortInstrumentLinux::PortOuvert(bool ouvert) {
  if (!ouvert) {
    manqué_ = false;
    port_.Ferme();
  } else if (!port_.Ouvert()) {
    manqué_ = true;
    try {
      port_.Ouvre(chemin_, réglages_.ligne);
      manqué_ = false;
    } catch (const Echec&) {
      port_.Ferme();  // the instruments ask `PortOuvert` and `PortExiste`, and look for another one
    }
  }
}

void PortInstrumentLinux::ConfigurePort(std::string_view réglages, bool ouvrir) {
  port_.Ferme();
  std::string gardé = std::move(réglages_.port);
  réglages_ = LitRéglages(réglages);
  if (réglages_.port.empty()) réglages_.port = std::move(gardé);
  chemin_ = Chemin(ports_, réglages_);
  manqué_ = ouvrir && réglages_.valides;
  if (manqué_) PortOuvert(true);
}

void PortInstrumentLinux::RéinitialisePort() {
  if (manqué_) PortOuvert(true);
  port_.Vide();
}

void PortInstrumentLinux::EcritSortie(std::string_view octets) {
  try {
    port_.Ecrit(octets);
  } catch (const Echec&) {
    return;  // lost on the way, like bytes on a cable that is cut
  }
}

// Some instruments ask on every pass: nothing is allocated here.
bool PortInstrumentLinux::PortExiste() const {
  return !chemin_.empty() && ::access(chemin_.c_str(), F_OK) == 0;
}

}  // namespace zuma::linux_
