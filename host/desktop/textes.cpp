#include "host/desktop/textes.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace zuma::host {
namespace {

constexpr std::string_view kSection = "Bureau";

QLocale LocaleDe(const QString& signe) {
  QLocale locale(signe == "," ? QLocale::French : QLocale::C);
  locale.setNumberOptions(QLocale::OmitGroupSeparator);
  return locale;
}

}  // namespace

Textes::Textes(Ref<ZED_Traduction> traducteur)
    : traducteur_(std::move(traducteur)), locale_(LocaleDe((*this)("Signe decimal"))) {}

QString Textes::operator()(std::string_view clé) const {
  return EnQt(traducteur_->Traduit(clé, clé, kSection));
}

QString Textes::Nombre(double valeur, int décimales) const {
  if (!std::isfinite(valeur)) return Absent();
  if (std::abs(valeur) < 0.5 * std::pow(10, -décimales)) valeur = 0;  // no "-0.000"
  return locale_.toString(valeur, 'f', décimales);
}

QString Textes::Court(double valeur) const {
  constexpr int kChiffres = 6;
  return std::isfinite(valeur) ? locale_.toString(valeur, 'g', kChiffres) : Absent();
}

QString Textes::Limites(double mini, double maxi, const std::string& unité) const {
  if (mini == 0 && maxi == 0) return Absent();
  return Court(mini) + " … " + AvecUnité(Court(maxi), unité);
}

int DécimalesPour(double échelle) {
  constexpr int kChiffres = 5;
  constexpr int kAuPlus = 6;
  if (!std::isfinite(échelle) || échelle == 0) return 3;
  const int ordre = static_cast<int>(std::floor(std::log10(std::abs(échelle)))) + 1;
  return std::clamp(kChiffres - ordre, 0, kAuPlus);
}

QString AvecUnité(const QString& nombre, const std::string& unité) {
  return unité.empty() ? nombre : nombre + QChar(QChar::Nbsp) + EnQt(unité);
}

QString NomOuNuméro(std::string_view nom, std::string_view clé) {
  const QString donné = EnQt(nom);
  return donné.trimmed().isEmpty() ? "#" + EnQt(clé) : donné;
}

QString SansTouche(QString nom) {
  return nom.replace("&", "&&");
}

QString Absent() {
  return QStringLiteral("–");
}

}  // namespace zuma::host
