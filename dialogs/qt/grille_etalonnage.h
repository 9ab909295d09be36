#pragma once

#include <QAction>
#include <QTableView>

#include "dialogs/feuille_etalonnage.h"
#include "dialogs/qt/editeur_de_cellule.h"
#include "dialogs/qt/mots.h"

namespace zuma::qt {

/// `GrilleEtalonnage` with its editor: the points of a calibration form. A click, F2, Enter or a
/// typed character puts the editor over a cell; Enter keeps and goes down, Tab keeps and goes to
/// the next cell, and leaves the grid behind the last one. Cells that hold no number are marked,
/// and rows that the table does not use; rows are inserted and deleted from the context menu.
class GrilleEtalonnage final : public QTableView {
 public:
  /// The grid of that form, with its editor.
  GrilleEtalonnage(const Ref<FeuilleEtalonnage>& feuille, const Mots& mots, QWidget* parent);
  ~GrilleEtalonnage() override;

  /// Takes everything from the form anew.
  void Relit();
  ///@{
  /// All columns, and some rows of the table.
  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;
  ///@}

 protected:
  ///@{
  /// Moves and editing as the form wants them.
  void keyPressEvent(QKeyEvent* événement) override;
  bool focusNextPrevChild(bool suivante) override;
  void scrollContentsBy(int dx, int dy) override;
  void updateEditorGeometries() override;
  ///@}

 private:
  [[nodiscard]] QSize TailleDe(int rangées) const;
  QAction* Action(const char* nom, const QString& texte, const char* touches,
                  void (FeuilleEtalonnage::*fais)(int));
  void Active(const QModelIndex& où);
  void Départ(EditeurDeCellule::Départ départ);
  /// The cell `pas` further in reading order; none beyond the ends.
  [[nodiscard]] QModelIndex Voisine(int pas) const;
  void Descend(int rangées);
  void Place();

  Ref<FeuilleEtalonnage> feuille_;
  EditeurDeCellule* éditeur_;
  QAction* insère_ = nullptr;
};

}  // namespace zuma::qt
