#pragma once

#include <QLocale>
#include <QString>
#include <string_view>

#include "platform/collaborateurs.h"

namespace zuma::host {

/// Texts of the window in the operator's language, and numbers with its decimal sign.
class Textes {
 public:
  explicit Textes(Ref<ZED_Traduction> traducteur);

  /// The text of a key of section "Bureau".
  [[nodiscard]] QString operator()(std::string_view clé) const;
  /// `valeur` with that many decimals; a dash for what is no number.
  [[nodiscard]] QString Nombre(double valeur, int décimales) const;
  /// `valeur` with no more digits than it needs, six at most: for settings, that do not move.
  [[nodiscard]] QString Court(double valeur) const;
  /// Two limits and their unit; a dash where both are 0, which is none.
  [[nodiscard]] QString Limites(double mini, double maxi, const std::string& unité) const;
  /// Numbers of the axes.
  [[nodiscard]] const QLocale& Locale() const { return locale_; }

 private:
  Ref<ZED_Traduction> traducteur_;
  QLocale locale_;
};

/// Decimals that show five significant digits of a quantity of that size, six at most.
[[nodiscard]] int DécimalesPour(double échelle);
/// Number and unit, without a blank that ends the text where there is no unit.
[[nodiscard]] QString AvecUnité(const QString& nombre, const std::string& unité);
/// The name of an object, or its number where the configuration gives it none: two of those must
/// not look alike.
[[nodiscard]] QString NomOuNuméro(std::string_view nom, std::string_view clé);
/// A name for a button or a menu, whose "&" makes no key: a name must not operate an output.
[[nodiscard]] QString SansTouche(QString nom);
/// Sign in place of a number that is not there.
[[nodiscard]] QString Absent();
[[nodiscard]] inline QString EnQt(std::string_view texte) {
  return QString::fromUtf8(texte.data(), static_cast<qsizetype>(texte.size()));
}

}  // namespace zuma::host
