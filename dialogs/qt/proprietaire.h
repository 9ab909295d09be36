#pragma once

class QDialog;
class QWidget;

namespace zuma {
class FenêtreHôte;
}

namespace zuma::qt {

/// Makes `fenêtre` owned by the host's window: its child when a widget of this program bears that
/// handle, otherwise kept above the window that does. Null frees it. Hides it when its parent
/// changes.
void Possède(QWidget& fenêtre, FenêtreHôte* mère);

/// Shows a dialog that belongs to its caller's stack, over the window that is active, and returns
/// once it is hidden or the program ends. The other windows take no input meanwhile.
void MontreAuDessus(QDialog& dialogue);

}  // namespace zuma::qt
