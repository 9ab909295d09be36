#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/attente.h"
#include "platform/collaborateurs.h"
#include "platform/services.h"

namespace zuma::host {

/// Where a problem was met.
enum class Origine {
  Fichier,  ///< the database file itself
  Donnée,   ///< a value, column or table of it
  Message,  ///< a message box of the library
  Echec     ///< an entry of the error record
};

/// How bad it is.
enum class Gravité {
  Erreur,        ///< something does not work, or not safely
  Avertissement  ///< it works, and may not be meant so
};

/// One thing that is wrong with a configuration. Fields that do not apply stay empty.
struct Problème {
  Origine origine = Origine::Donnée;
  std::string table{};
  std::string ligne{};  ///< "Index" of the row
  std::string colonne{};
  std::string trouvé{};
  std::string attendu{};
  std::string objet{};  ///< class, key and name of the object concerned
  std::string texte{};
  Gravité gravité = Gravité::Erreur;

  friend bool operator==(const Problème&, const Problème&) = default;
};

/// Collects what a frame tells while it is loaded and linked.
class Recueil : public ZED_Erreur, public BoîteDeMessage, public AttenteLimitée {
 public:
  void AjouteErreur(std::string_view message, const TableVariables& variables) override;
  void Montre(std::string_view texte, const ObjetConcerné& objet) override;
  bool AttendEncore(std::string_view texte, const ObjetConcerné& objet, int fois) override;
  /// Keeps the problem, once: a board that is gone fails on every pass.
  void Ajoute(Problème problème);
  [[nodiscard]] const std::vector<Problème>& Problèmes() const { return problèmes_; }

 private:
  std::vector<Problème> problèmes_;
};

/// The problem as one line for people.
[[nodiscard]] std::string Ligne(const Problème& problème);
inline constexpr int kUneLigne = -1;
/// All problems as a JSON text, an array of objects, indented by `retrait` or on one line.
[[nodiscard]] std::string EnJson(const std::vector<Problème>& problèmes, int retrait = 2);

}  // namespace zuma::host
