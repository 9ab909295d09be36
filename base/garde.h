#pragma once

#include <source_location>
#include <string_view>
#include <type_traits>
#include <utility>

#include "base/objet.h"

namespace zuma {

/// Form of an operation: it settles the kind text and the suffix of its message.
enum class Forme {
  Méthode,             ///< public method
  Procédure,           ///< `ParamètresDepuisBD` and private work
  Lecture,             ///< property read
  Ecriture,            ///< property write
  LectureParticulière  ///< `ChargeErreur` and a few like it: " en Lecture"
};

/// What a failure does when the object has no error record.
enum class SansErreur {
  Echoue,  ///< the tail itself fails, and that failure goes to the caller
  Montre   ///< the message goes to a message box
};

/// Table of an operation's variables, filled only on a failure.
class Variables {
 public:
  Variables() : table_(1) {}
  /// Next row: the text "Variable " + `nom`, and the value.
  void Ajoute(std::string_view nom, Valeur valeur);
  /// Next row under a text of its own.
  void AjouteLigne(std::string_view texte, Valeur valeur);
  /// Next row of a variable that hangs on an absent object: it stays empty.
  void AjouteVide() { table_.emplace_back(); }
  /// The rows so far; row 0 is empty.
  [[nodiscard]] const TableVariables& Table() const { return table_; }

 private:
  TableVariables table_;
};

namespace détail {
void Signale(const Objet& objet, Forme forme, std::string_view nom, const Echec& échec,
             const Variables& variables, SansErreur sans);
}  // namespace détail

/// Adds an entry to the object's error record under words of its own, in the form of the tail:
/// `début` stands in the place of number and description. The operation goes on.
void Consigne(const Objet& objet, Forme forme, std::string_view nom, std::string_view début,
              std::source_location où = std::source_location::current());

/// The error tail, the only one: runs `travail`; on a failure builds the message, collects the
/// variables with `remplit` and hands both to the object's error record, then returns normally
/// with a default result. Free on success.
template <class Travail, class Remplit>
auto Garde(const Objet& objet, Forme forme, std::string_view nom, Travail&& travail,
           Remplit&& remplit, SansErreur sans = SansErreur::Echoue,
           std::source_location où = std::source_location::current())
    -> std::invoke_result_t<Travail&> {
  try {
    return travail();
  } catch (...) {
    const Echec échec = EchecCourant(static_cast<int>(où.line()));
    Variables variables;
    remplit(variables);
    détail::Signale(objet, forme, nom, échec, variables, sans);
  }
  if constexpr (!std::is_void_v<std::invoke_result_t<Travail&>>) return {};
}

/// The same without variables; an object without error record fails.
template <class Travail>
auto Garde(const Objet& objet, Forme forme, std::string_view nom, Travail&& travail,
           std::source_location où = std::source_location::current())
    -> std::invoke_result_t<Travail&> {
  return Garde(
      objet, forme, nom, std::forward<Travail>(travail), [](Variables&) {}, SansErreur::Echoue, où);
}

}  // namespace zuma
