#pragma once

#include <QString>
#include <string>
#include <string_view>
#include <utility>

#include "platform/collaborateurs.h"

namespace zuma::qt {

/// A text of the library as Qt takes it.
[[nodiscard]] inline QString EnQt(std::string_view texte) {
  return QString::fromUtf8(texte.data(), static_cast<qsizetype>(texte.size()));
}

/// The operator's words for what belongs to the windows alone.
class Mots {
 public:
  /// Without a translator every word is its default.
  explicit Mots(Ref<ZED_Traduction> traducteur) : traducteur_(std::move(traducteur)) {}

  /// The word of that key, or `défaut`.
  [[nodiscard]] QString operator()(std::string_view clé, std::string_view défaut) const {
    return EnQt(traducteur_ ? traducteur_->Traduit(clé, défaut, "Zuma") : std::string(défaut));
  }

 private:
  Ref<ZED_Traduction> traducteur_;
};

}  // namespace zuma::qt
