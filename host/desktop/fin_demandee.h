#pragma once

#include <QTimer>

namespace zuma::host {

/// Ends the program of a window when a signal asks for it, whatever holds its passes: a form that
/// the library shows while a board starts or inside a pass waits in an event loop of its own, and
/// no pass would come to look. Forms are closed as by their own button, so that a search ends too.
/// The event loops end within 0.1 s, and a search for a port behind the try that is going on.
class FinDemandée {
 public:
  FinDemandée();
  FinDemandée(const FinDemandée&) = delete;
  FinDemandée& operator=(const FinDemandée&) = delete;

 private:
  QTimer regard_;
};

}  // namespace zuma::host
