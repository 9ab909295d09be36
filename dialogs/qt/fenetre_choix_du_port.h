#pragma once

#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>

#include "dialogs/choix_du_port.h"
#include "dialogs/qt/mots.h"

namespace zuma::qt {

/// Modal window of the port forms, for the stack of its caller. Closing it in any way presses
/// `BtnClose`, which ends a search that goes on; it closes by itself when the form is hidden.
class FenêtreChoixDuPort final : public QDialog {
 public:
  /// A window of that form, which outlives it.
  FenêtreChoixDuPort(ChoixDuPort& feuille, const Mots& mots);

  /// Takes everything from the form anew.
  void Relit();

 protected:
  /// Presses `BtnClose`, by whatever way the dialog ends.
  void done(int résultat) override;

 private:
  void Cherche();
  void MontreLaRecherche(bool enCours);
  [[nodiscard]] QPushButton* Bouton(const char* nom, const QString& texte);

  ChoixDuPort& feuille_;
  Mots mots_;
  QComboBox* port_;
  QComboBox* vitesse_;
  QLabel* état_;
  QLabel* avis_;
  QProgressBar* progrès_;
  QPushButton* recherche_;
  QPushButton* ferme_;
  QTimer timer_;
};

}  // namespace zuma::qt
