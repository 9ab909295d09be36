#pragma once

#include <string>

namespace zuma::publication {

/// One master for a machine: held by one process of this machine at a time, whatever its user and
/// wherever it publishes, and gone with the process whatever ends it. A name of the kernel's and no
/// file, so that nothing is left behind and no folder has to be written.
class Exclusivité {
 public:
  /// Takes the name; a name that another process holds leaves its number in `Occupant`. Where the
  /// kernel gives no such names nothing is held: `Occupant` is 0 then, too.
  explicit Exclusivité(const std::string& nom);
  ~Exclusivité();
  Exclusivité(const Exclusivité&) = delete;
  Exclusivité& operator=(const Exclusivité&) = delete;

  /// True when another process holds the name.
  [[nodiscard]] bool EstPrise() const noexcept { return prise_; }
  /// That process, as this one sees it; 0 when it cannot be known.
  [[nodiscard]] int Occupant() const noexcept { return occupant_; }

 private:
  int descripteur_ = -1;
  bool prise_ = false;
  int occupant_ = 0;
};

}  // namespace zuma::publication
