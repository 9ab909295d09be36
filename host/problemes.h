#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
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
  Origine origine = Origine::Donnée;  ///< where it was met
  std::string table{};                ///< table of the row
  std::string ligne{};                ///< "Index" of the row
  std::string colonne{};              ///< column of the value
  std::string trouvé{};               ///< value found
  std::string attendu{};              ///< value expected
  std::string objet{};                ///< class, key and name of the object concerned
  std::string texte{};                ///< what is wrong, or what was told
  Gravité gravité = Gravité::Erreur;  ///< how bad it is

  /// Equal in everything.
  friend bool operator==(const Problème&, const Problème&) = default;
};

/// Collects what a frame tells while it is loaded and linked.
class Recueil : public ZED_Erreur, public BoîteDeMessage, public AttenteLimitée {
 public:
  void AjouteErreur(std::string_view message, const TableVariables& variables) override;
  void Montre(std::string_view texte, const ObjetConcerné& objet) override;
  bool AttendEncore(std::string_view texte, const ObjetConcerné& objet, int fois) override;
  /// Keeps the problem, once: a board that is gone fails on every pass. False when it was there.
  bool Ajoute(Problème problème);
  /// The different ones, in the order in which they came.
  [[nodiscard]] const std::vector<Problème>& Problèmes() const { return problèmes_; }
  /// How many different ones came behind the first `kGardés`, which alone are kept.
  [[nodiscard]] std::size_t EnPlus() const { return connus_.size() - problèmes_.size(); }
  /// Problems that are kept.
  static constexpr std::size_t kGardés = 10'000;

 private:
  std::vector<Problème> problèmes_;
  std::unordered_set<std::uint64_t> connus_;  // by hash, so that no list is walked for each
  std::unordered_map<std::string, int> variantes_;
};

/// The problem as one line for people.
[[nodiscard]] std::string Ligne(const Problème& problème);
/// `retrait` of a JSON text on one line.
inline constexpr int kUneLigne = -1;
/// All problems as a JSON text, an array of objects, indented by `retrait` or on one line; a last
/// one tells of `enPlus` others.
[[nodiscard]] std::string EnJson(const std::vector<Problème>& problèmes, int retrait = 2,
                                 std::size_t enPlus = 0);
/// "and 12 more".
[[nodiscard]] std::string EtDAutres(std::size_t enPlus);

}  // namespace zuma::host
