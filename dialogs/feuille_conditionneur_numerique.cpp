#include "dialogs/feuille_conditionneur_numerique.h"

#include <algorithm>
#include <utility>

#include "base/outils_communs.h"

namespace zuma {
namespace {

struct Clé {
  std::string_view clé;
  std::string_view défaut;
};

// In the order of the elements.
constexpr std::array<Clé, FeuilleConditionneurNumerique::kNombreDElements> kClés{{
    {"Titre Feuille", "Feuille Conditionneur Numérique K9"},
    {"Texte Frame Communication", {}},
    {"Texte Frame Etat Module", {}},
    {"Texte Frame Valeurs", {}},
    {"Texte Label COM Details", {}},
    {"Texte Label COM Port trouve", {}},
    {"Texte Label Initialise", {}},
    {"Texte Label Details Module", {}},
    {"Texte Label Valeur", {}},
    {"Texte Bouton Initialise", {}},
    {"Texte Bouton Quitter", {}},
    {"Texte Bouton Retry Connection", {}},
}};

constexpr std::array<std::int32_t, 18> kVitesses{110,   300,    600,    1200,   2400,   4800,
                                                 9600,  14400,  19200,  28800,  38400,  56000,
                                                 57600, 115200, 128000, 256000, 921600, 1953125};

// Mark and space parity read as "1" and "0", by the level that the parity bit keeps.
constexpr std::array<std::pair<std::string_view, std::string_view>, 5> kParités{
    {{"S", "0"}, {"O", "Odd"}, {"M", "1"}, {"E", "Even"}, {"N", "No"}}};

constexpr std::array<std::string_view, 3> kStops{"1", "1.5", "2"};

std::string Vitesse(std::int32_t vitesse) {
  const bool connue = std::ranges::find(kVitesses, vitesse) != kVitesses.end();
  return connue ? std::to_string(vitesse) : "????";
}

std::string Parité(std::string_view lettre) {
  for (const auto& [code, texte] : kParités) {
    if (code == lettre) return std::string(texte);
  }
  return "???";
}

std::string Bits(std::int32_t bits) {
  return bits >= 4 && bits <= 8 ? std::to_string(bits) : "??";
}

std::string Stop(const std::string& stop) {
  return std::ranges::find(kStops, stop) != kStops.end() ? stop : "??";
}

std::string TexteCOM(const PortInstrument& port) {
  return "COM:" + std::to_string(port.NuméroPort()) + " Baudrate:" + Vitesse(port.Vitesse()) +
         " Parity:" + Parité(port.Parité()) + " Data:" + Bits(port.BitsDonnées()) +
         " Stop bit:" + Stop(port.BitsArrêt());
}

std::string Traduit(const Ref<ZED_Traduction>& traducteur, const Clé& clé) {
  if (traducteur) return traducteur->Traduit(clé.clé, clé.défaut, "Zuma");
  return std::string(clé.défaut.empty() ? clé.clé : clé.défaut);
}

}  // namespace

// The form leaves its window: it would show what is gone.
ConditionneurAffiché::~ConditionneurAffiché() {
  if (feuille_ != nullptr) feuille_->Décharge();
}

void FeuilleConditionneurNumerique::Reçoit(ConditionneurAffiché& module) {
  Lâche();
  if (module.feuille_ != nullptr) module.feuille_->Décharge();
  module_ = &module;
  module.feuille_ = this;
}

void FeuilleConditionneurNumerique::Montre(Fenêtres& fenêtres, FenêtreHôte* mère) {
  std::ranges::transform(kClés, textes_.begin(),
                         [&](const Clé& clé) { return Traduit(traducteur_, clé); });
  mère_ = mère;
  chargée_ = true;
  Timer();
  fenêtres.Montre(*this, mère);
}

void FeuilleConditionneurNumerique::Timer() {
  affichage_ = {};
  const Ref<PortInstrument> port = module_ != nullptr ? module_->PortAffiché() : nullptr;
  affichage_.com = port ? TexteCOM(*port) : "COM not found!";
  if (module_ == nullptr) return;
  affichage_.lampe = module_->InitialiséAffiché() ? Lampe::Verte : Lampe::Rouge;
  affichage_.drapeaux = module_->DrapeauxAffichés();
  for (std::int32_t i = 0; i < ConditionneurAffiché::kNombreDeValeurs; ++i) {
    affichage_.valeurs[static_cast<std::size_t>(i)] =
        OutilsCommuns::FormateNombre(Valeur(module_->ValeurAffichée(i)));
  }
}

void FeuilleConditionneurNumerique::BtnRetryConnection() {
  const Ref<PortInstrument> port = module_ != nullptr ? module_->PortAffiché() : nullptr;
  if (port) port->PortOuvert(true);
}

void FeuilleConditionneurNumerique::Lâche() noexcept {
  if (module_ != nullptr) module_->feuille_ = nullptr;
  module_ = nullptr;
}

void FeuilleConditionneurNumerique::Décharge() noexcept {
  Lâche();
  chargée_ = false;
}

}  // namespace zuma
