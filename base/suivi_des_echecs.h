#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/collaborateurs.h"

namespace zuma {

class Objet;

/// Failures that come again on each pass: the first one is told at once, those behind it are
/// counted, and one entry with their number tells the end. Without that an outage of ten minutes
/// would flush everything else out of the record. Nothing costs anything while nothing fails.
class SuiviDesEchecs {
 public:
  /// What makes two failures the same: record, object, operation, place and number. Their words may
  /// differ.
  struct Signature {
    /// Record that the failure goes to.
    const ZED_Erreur* registre;
    /// Object that failed.
    const Objet* objet;
    /// Name of the operation.
    std::string_view opération;
    /// Source line of the failure.
    int ligne;
    /// Its number.
    int numéro;
    /// Equal in all five.
    bool operator==(const Signature&) const = default;
  };

  /// The failures are those of a pass, which come again with the next one. Outside of a pass each
  /// one is told.
  bool enPasse = false;

  /// Counts a failure of that time, in seconds. True when it goes on and was told already.
  [[nodiscard]] bool Répète(const Signature& signature, double heure);
  /// The entry of a failure that is new, for its end.
  void Retient(const Signature& signature, double heure, const std::string& message,
               const Ref<ZED_Erreur>& registre);
  /// Tells the end of what has not failed for ten seconds. A time before that of a failure is of
  /// another clock, and ends it too.
  void Examine(double heure);
  /// Tells what still goes on in a record, and forgets it: its objects end.
  void Conclut(const Ref<ZED_Erreur>& registre);

 private:
  struct Suite {
    Signature signature;
    std::string message;
    Ref<ZED_Erreur> registre;
    double début;
    double dernier;
    std::uint64_t nombre;
  };
  template <class Finie>
  void Dit(std::string_view début, Finie&& finie);

  std::vector<Suite> suites_;
};

}  // namespace zuma
