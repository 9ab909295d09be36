#include "host/desktop/etat_capteur.h"

#include <array>

#include "sensors/lecture.h"

namespace zuma::host {
namespace {

bool Dépasse(const Capteur& capteur) {
  return capteur.Etat() >= static_cast<std::int16_t>(ENUM_ETAT_CAPTEUR::DépassementNonDangeureux);
}

}  // namespace

const EtatAffiché& EtatDe(const Capteur& capteur) {
  static const std::array<EtatAffiché, 4> kEtats{{
      {"Etat correct", "✓", {}, QColor(0x1b, 0x6e, 0x2f)},
      {"Etat non valide", "○", {}, QColor(0x60, 0x60, 0x60)},
      {"Etat depassement", "▲", QColor(0xff, 0xe0, 0x9a), QColor(0x40, 0x2c, 0x00)},
      {"Etat danger", "■", QColor(0xb0, 0x00, 0x20), QColor(Qt::white)},
  }};
  static const EtatAffiché kHorsService{"Etat hors service", "–", {}, QColor(0x60, 0x60, 0x60)};
  static const EtatAffiché kEcarté{"Etat non selectionne", "–", {}, QColor(0x60, 0x60, 0x60)};
  static const EtatAffiché kAncien{"Etat ancien", "◷", QColor(0xff, 0xe0, 0x9a),
                                   QColor(0x40, 0x2c, 0x00)};
  if (!capteur.Enabled_bln()) return kHorsService;
  if (!capteur.CapteurSelectionne()) return kEcarté;
  if (EstAncien(capteur) && !Dépasse(capteur)) return kAncien;
  const auto rang = static_cast<std::size_t>(capteur.Etat());
  return kEtats[rang < kEtats.size() ? rang : 1];
}

}  // namespace zuma::host
