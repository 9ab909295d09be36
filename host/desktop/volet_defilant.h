#pragma once

#include <QScrollArea>

namespace zuma::host {

/// A pane that scrolls up and down and is never narrower than what it holds, at any size of text.
class VoletDéfilant : public QScrollArea {
 public:
  VoletDéfilant();
  [[nodiscard]] QSize minimumSizeHint() const override;
};

}  // namespace zuma::host
