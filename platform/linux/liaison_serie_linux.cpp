#include "platform/linux/liaison_serie_linux.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <filesystem>

namespace zuma::linux_ {
namespace {

constexpr std::string_view kLettresParité = "NOEMS";
constexpr std::array<std::pair<std::string_view, std::int32_t>, 3> kStops{
    {{"1", 1}, {"1.5", 15}, {"2", 2}}};

bool LitEntier(std::string_view texte, std::int32_t& entier) {
  const auto [reste, erreur] = std::from_chars(texte.data(), texte.data() + texte.size(), entier);
  return erreur == std::errc() && reste == texte.data() + texte.size();
}

// Number of a port given as "3" or "COM3"; 0 for a device's name.
std::int32_t NuméroDe(std::string_view port) {
  if (port.starts_with("COM") || port.starts_with("com")) port.remove_prefix(3);
  std::int32_t numéro = 0;
  return LitEntier(port, numéro) ? numéro : 0;
}

std::string Chemin(const CarteDesPorts& ports, std::int32_t numéro) {
  const auto connu = ports.find(numéro);
  if (connu != ports.end()) return connu->second;
  return "/dev/ttyS" + std::to_string(numéro - 1);
}

std::string Chemin(const CarteDesPorts& ports, const std::string& port) {
  const std::int32_t numéro = NuméroDe(port);
  return numéro > 0 ? Chemin(ports, numéro) : port;
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

RéglagesInstrument LitRéglages(std::string_view texte) {
  RéglagesInstrument lus;
  std::vector<std::string_view> champs = Découpe(texte, ',');
  for (std::string_view& champ : champs) champ = SansBlancs(champ);
  if (champs.size() == 5) {
    lus.port = champs.front();
    champs.erase(champs.begin());
  }
  if (champs.size() != 4) return lus;
  const auto parité =
      champs[1].size() == 1 ? kLettresParité.find(champs[1]) : std::string_view::npos;
  const auto stop =
      std::ranges::find(kStops, champs[3], &std::pair<std::string_view, std::int32_t>::first);
  lus.valides = LitEntier(champs[0], lus.ligne.vitesse) && lus.ligne.vitesse > 0 &&
                parité != std::string_view::npos && LitEntier(champs[2], lus.ligne.bits) &&
                lus.ligne.bits >= 5 && lus.ligne.bits <= 8 && stop != kStops.end();
  if (!lus.valides) return lus;
  lus.ligne.parité = static_cast<std::int32_t>(parité);
  lus.ligne.stop = stop->second;
  return lus;
}

void LiaisonSérieLinux::OuvrePort() {
  port_.Ouvre(Chemin(ports_, numéro_), réglages_);
}

void PortInstrumentLinux::PortOuvert(bool ouvert) {
  if (!ouvert) {
    port_.Ferme();
  } else if (!port_.Ouvert()) {
    port_.Ouvre(Chemin(ports_, réglages_.port), réglages_.ligne);
  }
}

// A port that cannot be opened is no failure here: the instruments ask `PortExiste` and
// `PortOuvert`, and look for another one.
void PortInstrumentLinux::ConfigurePort(std::string_view réglages, bool ouvrir) {
  port_.Ferme();
  réglages_ = LitRéglages(réglages);
  if (!ouvrir || !réglages_.valides) return;
  try {
    PortOuvert(true);
  } catch (const Echec&) {
    réglages_.valides = false;
  }
}

bool PortInstrumentLinux::PortExiste() const {
  std::error_code erreur;
  return !réglages_.port.empty() && std::filesystem::exists(Chemin(ports_, réglages_.port), erreur);
}

std::int32_t PortInstrumentLinux::NuméroPort() const {
  return NuméroDe(réglages_.port);
}

std::string PortInstrumentLinux::Parité() const {
  return {kLettresParité[static_cast<std::size_t>(réglages_.ligne.parité)]};
}

std::string PortInstrumentLinux::BitsArrêt() const {
  const auto* stop = std::ranges::find(kStops, réglages_.ligne.stop,
                                       &std::pair<std::string_view, std::int32_t>::second);
  return std::string(stop == kStops.end() ? "1" : stop->first);
}

}  // namespace zuma::linux_
