#pragma once

#include <QComboBox>

#include "dialogs/choix_du_port.h"

namespace zuma::qt {

/// A box with the texts of a form's list, whose selection goes to the list. `liste` outlives it.
[[nodiscard]] QComboBox* BoîteDe(ListeDeChoix& liste, const char* nom);

/// The wheel over it changes nothing while it is closed: it is turned to scroll, and what it would
/// choose is written with the next save.
void SansMolette(QWidget& boîte);

/// Takes texts and selection from the list anew.
void Relit(QComboBox& boîte, const ListeDeChoix& liste);

}  // namespace zuma::qt
