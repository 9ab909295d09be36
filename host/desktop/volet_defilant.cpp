#include "host/desktop/volet_defilant.h"

#include <QScrollBar>

namespace zuma::host {

VoletDéfilant::VoletDéfilant() {
  setFrameShape(QFrame::NoFrame);
  setFocusPolicy(Qt::NoFocus);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setWidgetResizable(true);
}

QSize VoletDéfilant::minimumSizeHint() const {
  QSize taille = QScrollArea::minimumSizeHint();
  if (widget() != nullptr) {
    taille.setWidth(widget()->minimumSizeHint().width() + verticalScrollBar()->sizeHint().width());
  }
  return taille;
}

}  // namespace zuma::host
