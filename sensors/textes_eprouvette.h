#pragma once

#include <optional>
#include <string_view>

#include "platform/collaborateurs.h"
#include "sensors/enumerations.h"

/// The words that a specimen's parameters hold, as the operator reads them, and what they mean.
namespace zuma::textes_eprouvette {

/// True on the key of a word, of whatever list.
[[nodiscard]] bool EstUnMot(std::string_view clé);

/// Kind of test. The three obsolete words are known in every language; without a translator any
/// other word fails with 91.
[[nodiscard]] std::optional<ENUM_TYPE_CONTRAINTE> TypeContrainte(
    std::string_view texte, const Ref<ZED_Traduction>& traducteur);
/// True on the three words of the obsolete kinds.
[[nodiscard]] bool EstObsolète(std::string_view texte);
/// The word of a kind, untranslated; none for a value that is no kind.
[[nodiscard]] std::optional<std::string_view> MotDeContrainte(ENUM_TYPE_CONTRAINTE type);

/// Shape; only in the words of the current language.
[[nodiscard]] std::optional<ENUM_FORME_EPROUVETTE> Forme(std::string_view texte,
                                                         const Ref<ZED_Traduction>& traducteur);
/// Method of the section; only in the words of the current language.
[[nodiscard]] std::optional<ENUM_TYPE_CALCUL_SURFACE> Méthode(
    std::string_view texte, const Ref<ZED_Traduction>& traducteur);

}  // namespace zuma::textes_eprouvette
