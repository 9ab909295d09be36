#pragma once

#include <QLineEdit>
#include <functional>

#include "dialogs/feuille_etalonnage.h"

namespace zuma::qt {

/// `Text1`: the box over the cell that is being edited. What it takes is the form's business; it
/// tells the grid how the editing goes on.
class EditeurDeCellule final : public QLineEdit {
 public:
  /// How the editing was left: a key, or the focus lost.
  enum class Départ : std::uint8_t { Entrée, Echappement, Suivante, Précédente, Haut, Bas, Perdu };

  /// Edits for `feuille`, hidden until it is put over a cell; `départ` hears how each editing ends.
  EditeurDeCellule(Ref<FeuilleEtalonnage> feuille, QWidget* parent,
                   std::function<void(Départ)> départ);

  /// Takes the text of `Text1`, all selected.
  void Reprend();

 protected:
  ///@{
  /// Hands keys and a lost focus to the form.
  void keyPressEvent(QKeyEvent* événement) override;
  void focusOutEvent(QFocusEvent* événement) override;
  bool focusNextPrevChild(bool suivante) override;
  ///@}

 private:
  Ref<FeuilleEtalonnage> feuille_;
  std::function<void(Départ)> départ_;
};

}  // namespace zuma::qt
