#pragma once

#include <memory>

namespace zuma::host {

/// Keys of the terminal, one at a time and without echo, while this lives. Without a terminal
/// there is none.
class ClavierTerminal {
 public:
  ClavierTerminal();
  ~ClavierTerminal();
  ClavierTerminal(const ClavierTerminal&) = delete;
  ClavierTerminal& operator=(const ClavierTerminal&) = delete;
  /// The next key that waits, 0 for none. Never waits. Arrows come as 'k' (up) and 'j' (down).
  [[nodiscard]] char Touche();

 private:
  struct Ancien;
  std::unique_ptr<Ancien> ancien_;
};

}  // namespace zuma::host
