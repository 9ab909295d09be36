// Reading of a board's row and of its line settings.
#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <vector>

#include "core/garde.h"
#include "core/outils_communs.h"
#include "tree/carte.h"

namespace zuma {
namespace {

constexpr std::array<std::string_view, 17> kVitesses{
    "110",   "300",   "600",   "1200",  "2400",   "4800",   "9600",   "14400",  "19200",
    "28800", "38400", "56000", "57600", "115200", "128000", "256000", "1953125"};
constexpr std::int32_t kVitesseParDéfaut = 9600;
constexpr int kPortMaxi = 20;
constexpr std::int32_t kRampeParDéfaut = 5;

// Position of each setting in the text.
enum Rang : std::size_t { kPort, kVitesse, kParité, kDonnées, kStop, kRampe, kNombreAvecRampe };

std::vector<std::string> Découpe(std::string_view texte) {
  std::vector<std::string> champs;
  while (true) {
    const auto virgule = texte.find(',');
    champs.emplace_back(texte.substr(0, virgule));
    if (virgule == std::string_view::npos) return champs;
    texte.remove_prefix(virgule + 1);
  }
}

template <class Textes>
bool Connu(const Textes& textes, std::string_view texte) {
  return std::ranges::find(textes, texte) != std::end(textes);
}

}  // namespace

void Carte::ParamètresDepuisBD(const Ref<Recordset>& rstMonRecordSet) {
  Garde(*this, Forme::Procédure, "ParamètresDepuisBD", [&] {
    rstMonRecordSet->MoveFirst();
    LeRecordset_ = rstMonRecordSet;
    const Recordset& ligne = *rstMonRecordSet;
    if (const Valeur* v = ChercheChamp(ligne, "Adresse")) {
      Adresse(OutilsCommuns::HexaVersLong(*v));
    }
    if (const Valeur* v = ChercheChamp(ligne, "Nom de la Carte")) NomDeLaCarte_ = VersTexte(*v);
    if (const Valeur* v = ChercheChamp(ligne, "Driver de la Carte")) {
      Driver_enm_ = DriverDeCarte(*v);
      ligne_ = &LigneDuDriver(Driver_enm_);
    }
    const Valeur* configuration = ChercheChamp(ligne, "Configuration ModBus");
    if (configuration != nullptr && !EstNul(*configuration)) {
      Configuration_ = VersTexte(*configuration);
    }
    if (!Configuration_.empty()) DécodeConfiguration();
    const Valeur* eir = ChercheChamp(ligne, "Config EIR");
    if (eir != nullptr && !EstNul(*eir)) mstrConfigEIR = VersTexte(*eir);
  });
}

// Comparisons are exact: a field with a blank in it, like one left out, matches nothing.
void Carte::DécodeConfiguration() {
  std::vector<std::string> champs = Découpe(Configuration_);
  const bool avecRampe = champs.size() == kNombreAvecRampe;
  champs.resize(std::max<std::size_t>(champs.size(), kNombreAvecRampe));

  for (int port = 1; port <= kPortMaxi; ++port) {
    if (champs[kPort] == std::to_string(port)) mlngPort = port;
  }
  if (Connu(kVitesses, champs[kVitesse])) {
    mlngVitesse = std::stoi(champs[kVitesse]);
  } else {
    Montre("Not supported Baud Rate in 'ParametrageDepuisBD' from object 'Carte' " + NomDeLaCarte_ +
           "'. Default baud rate : 9600");
    mlngVitesse = kVitesseParDéfaut;
  }
  constexpr std::string_view kParités = "NOEMS";
  if (champs[kParité].size() == 1 && kParités.find(champs[kParité]) != std::string_view::npos) {
    mlngParité = static_cast<std::int32_t>(kParités.find(champs[kParité]));
  }
  if (champs[kDonnées].size() == 1 && champs[kDonnées] >= "4" && champs[kDonnées] <= "8") {
    mlngBitsDonnées = champs[kDonnées][0] - '0';
  }
  constexpr std::array<std::pair<std::string_view, std::int32_t>, 3> kStops{
      {{"1", 1}, {"1.5", 15}, {"2", 2}}};
  for (const auto& [texte, code] : kStops) {
    if (champs[kStop] == texte) mlngBitsStop = code;
  }
  mintConsigneRampe = avecRampe ? VersEntier32(std::trunc(VersDouble(Valeur(champs[kRampe])) * 10))
                                : kRampeParDéfaut;
}

}  // namespace zuma
