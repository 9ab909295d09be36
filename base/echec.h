#pragma once

#include <exception>
#include <source_location>
#include <string>
#include <string_view>

namespace zuma {

/// Numbers of the failures that the library itself raises or maps onto. They are what a support
/// engineer reads after "Erreur N°".
enum class Numéro : int {
  AppelIncorrect = 5,
  Dépassement = 6,
  MémoireInsuffisante = 7,
  IndiceHorsPlage = 9,
  DivisionParZéro = 11,
  TypeIncompatible = 13,
  ErreurInterne = 51,
  NuméroDeFichierIncorrect = 52,
  FichierIntrouvable = 53,
  FichierExistant = 58,
  ErreurDeFichier = 75,
  CheminIntrouvable = 76,
  ObjetAbsent = 91,
  NullIncorrect = 94,
  OpérationAbsente = 438,
  CléDéjàPrésente = 457,
  PasDEnregistrement = 3021,
  ColonneAbsente = 3061,
  RessourcesDépassées = 3035,
  LectureInterrompue = 3059,
  BaseVerrouillée = 3260,
  ElémentAbsent = 3265,
  BaseEnLectureSeule = 3027,
  EditionSansEdit = 3020,
  InstructionRefusée = 3075,
  TableAbsente = 3078,
  LigneDisparue = 3167,
  LigneModifiée = 3197,
  BaseIllisible = 3343,
  MatérielAbsent = 31999,
  ErreurDeLObjet = 32000,
};

/// French description of a numbered failure, as it stands in messages.
[[nodiscard]] std::string DescriptionDEchec(Numéro numéro);

/// A failure of an operation: number, description and source line. It never leaves a public
/// operation that has the error tail of `Garde`.
class Echec : public std::exception {
 public:
  /// With the description of that number; the line is the caller's.
  explicit Echec(Numéro numéro, std::source_location où = std::source_location::current());
  /// With a description of its own; the line is the caller's.
  Echec(Numéro numéro, std::string description,
        std::source_location où = std::source_location::current());

  /// The number as messages show it.
  [[nodiscard]] int NuméroErreur() const noexcept { return static_cast<int>(numéro_); }
  /// What went wrong, French, as it stands behind the number in messages.
  [[nodiscard]] const std::string& Description() const noexcept { return description_; }
  /// Source line of the failure; 0 when only the guarded operation's own line is known.
  [[nodiscard]] int Ligne() const noexcept { return ligne_; }
  /// The description, for those who know standard exceptions alone.
  [[nodiscard]] const char* what() const noexcept override { return description_.c_str(); }

  /// The same failure placed at `ligne` when it has no line of its own.
  [[nodiscard]] Echec AvecLigne(int ligne) const;

  /// The same failure with `détail` behind its description.
  [[nodiscard]] Echec Précisé(std::string_view détail) const;

  /// Failure of a missing object; the line is that of the guarded operation.
  [[nodiscard]] static Echec ObjetAbsent();

 private:
  Numéro numéro_;
  std::string description_;
  int ligne_;
};

/// Translates the exception being handled: an `Echec` as it is, anything of the standard library
/// into the nearest number, so that no foreign exception reaches the host.
[[nodiscard]] Echec EchecCourant(int ligne);

}  // namespace zuma
