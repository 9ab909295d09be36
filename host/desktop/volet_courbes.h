#pragma once

#include <QWidget>
#include <array>
#include <vector>

#include "host/desktop/graphique.h"
#include "host/desktop/historique.h"
#include "host/desktop/table_capteurs.h"

class QCheckBox;
class QComboBox;

namespace zuma::host {

/// Curves over time of the chosen sensors. All sensors are kept, so that one that is chosen later
/// shows what it was before.
class VoletCourbes : public QWidget {
 public:
  VoletCourbes(Chassis& chassis, const Textes& textes, const CourbesChoisies& choisies);

  /// After a refresh of the sensors.
  void Note(double secondes);
  /// Paints, unless it is paused or nobody sees it.
  void Rafraîchit();

 private:
  static constexpr std::array<double, 3> kEtendues{10, 60, 600};  ///< seconds
  struct Suivi {
    CapteurRef capteur;
    std::array<Historique, kEtendues.size()> historiques{
        Historique(kEtendues[0]), Historique(kEtendues[1]), Historique(kEtendues[2])};
    std::string unité{};  ///< as the curve shows it
  };

  void CommenceLesTraces();
  [[nodiscard]] bool TracesAJour() const;
  void ChangeDEtendue();
  void Dessine();

  const Textes& textes_;
  const CourbesChoisies& choisies_;
  std::vector<Suivi> suivis_;
  CourbesChoisies montrées_;
  Graphique* graphique_;
  QComboBox* étendue_;
  QCheckBox* pause_;
  double secondes_ = 0;
  double àLaPause_ = 0;  ///< instant that a paused pane shows
};

}  // namespace zuma::host
