#pragma once

#include <QMainWindow>
#include <QTimer>
#include <map>
#include <string>
#include <vector>

#include "host/desktop/historique.h"
#include "host/desktop/textes.h"
#include "publication/lecture/lecteur.h"

class QLabel;
class QTableWidget;
class QTableWidgetItem;

namespace zuma::host {

class Graphique;

/// The window of a frame that another program runs: its objects as they are and the curves of the
/// ticked ones. It looks at the publication; there is nothing in it that operates anything.
class Spectateur : public QMainWindow {
 public:
  static constexpr QSize kTaille{1200, 800};

  /// Throws `publication::Illisible`.
  Spectateur(std::string fichier, const Textes& textes);

  /// Shows what was published since the last time.
  void Rafraîchit();

 private:
  static constexpr double kEtendue = 60;  ///< seconds of the curves
  enum Colonne { Nom, Valeur, Etat, kColonnes };

  [[nodiscard]] QTableWidget* NouvelleTable();
  void Suit(QTableWidgetItem& case_);
  void CommenceLesTraces();
  void PrendLesEchantillons();
  void MontreLeBandeau(bool vivante);
  void MontreLesValeurs();

  std::string fichier_;
  const Textes& textes_;
  publication::Lecteur lecteur_;
  publication::Echantillon échantillon_;
  std::uint64_t suivant_ = 0;
  std::vector<std::size_t> rangs_;  ///< of the objects, by row
  std::map<std::size_t, Historique> suivis_;
  QLabel* bandeau_;
  QTableWidget* table_;
  Graphique* graphique_;
  QTimer rafraîchissement_;
};

}  // namespace zuma::host
