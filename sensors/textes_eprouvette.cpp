#include "sensors/textes_eprouvette.h"

#include <algorithm>
#include <array>
#include <string>

namespace zuma::textes_eprouvette {
namespace {

template <class T>
struct Mot {
  std::string_view texte;
  T valeur;
};

constexpr std::array<Mot<ENUM_TYPE_CONTRAINTE>, 3> kObsolètes{{
    {"Traction/Compression de cylindre", ENUM_TYPE_CONTRAINTE::TractionCompressionCylindre},
    {"Traction/Compression de prisme", ENUM_TYPE_CONTRAINTE::TractionCompressionPrisme},
    {"Surface", ENUM_TYPE_CONTRAINTE::surface},
}};
constexpr std::array<Mot<ENUM_TYPE_CONTRAINTE>, 5> kContraintes{{
    {"Traction/Compression", ENUM_TYPE_CONTRAINTE::Traction_Compression},
    {"Compression", ENUM_TYPE_CONTRAINTE::Compression},
    {"Traction", ENUM_TYPE_CONTRAINTE::Traction},
    {"Flexion", ENUM_TYPE_CONTRAINTE::Flexion},
    {"Fendage", ENUM_TYPE_CONTRAINTE::Fendage},
}};
constexpr std::array<Mot<ENUM_FORME_EPROUVETTE>, 6> kFormes{{
    {"Prisme", ENUM_FORME_EPROUVETTE::Prisme},
    {"Cylindre", ENUM_FORME_EPROUVETTE::Cylindre},
    {"Hexagone regulier", ENUM_FORME_EPROUVETTE::HexagoneRegulier},
    {"Tube rond", ENUM_FORME_EPROUVETTE::TubeRond},
    {"Troncon de tube rond", ENUM_FORME_EPROUVETTE::TronconDeTubeRond},
    {"Speciale", ENUM_FORME_EPROUVETTE::Speciale},
}};
constexpr std::array<Mot<ENUM_TYPE_CALCUL_SURFACE>, 2> kMéthodes{{
    {"Par dimension", ENUM_TYPE_CALCUL_SURFACE::Dimension},
    {"Par masse volumique", ENUM_TYPE_CALCUL_SURFACE::MasseVolumique},
}};

// Walks the languages without switching to them, so that only the words of the current one match;
// the language is written back at the end all the same. Hosts rely on both.
template <class T, std::size_t N>
std::optional<T> Reconnaît(const std::array<Mot<T>, N>& mots, std::string_view texte,
                           ZED_Traduction& traducteur) {
  const std::string courante = traducteur.LangueCourante();
  std::optional<T> trouvé;
  for (std::size_t reste = traducteur.Langues().size(); reste > 0 && !trouvé; --reste) {
    for (const Mot<T>& mot : mots) {
      if (traducteur.Traduit(mot.texte) != texte) continue;
      trouvé = mot.valeur;
      break;
    }
  }
  traducteur.LangueCourante(courante);
  return trouvé;
}

template <class T, std::size_t N>
bool Contient(const std::array<Mot<T>, N>& mots, std::string_view texte) {
  return std::ranges::find(mots, texte, &Mot<T>::texte) != mots.end();
}

}  // namespace

bool EstUnMot(std::string_view clé) {
  return Contient(kContraintes, clé) || Contient(kFormes, clé) || Contient(kMéthodes, clé);
}

std::optional<ENUM_TYPE_CONTRAINTE> TypeContrainte(std::string_view texte,
                                                   const Ref<ZED_Traduction>& traducteur) {
  const auto obsolète = std::ranges::find(kObsolètes, texte, &Mot<ENUM_TYPE_CONTRAINTE>::texte);
  if (obsolète != kObsolètes.end()) return obsolète->valeur;
  return Reconnaît(kContraintes, texte, *traducteur);
}

bool EstObsolète(std::string_view texte) {
  return Contient(kObsolètes, texte);
}

std::optional<std::string_view> MotDeContrainte(ENUM_TYPE_CONTRAINTE type) {
  const auto cherche = [&](const auto& mots) -> std::optional<std::string_view> {
    const auto mot = std::ranges::find(mots, type, &Mot<ENUM_TYPE_CONTRAINTE>::valeur);
    if (mot == mots.end()) return {};
    return mot->texte;
  };
  const auto mot = cherche(kContraintes);
  return mot ? mot : cherche(kObsolètes);
}

std::optional<ENUM_FORME_EPROUVETTE> Forme(std::string_view texte,
                                           const Ref<ZED_Traduction>& traducteur) {
  return Reconnaît(kFormes, texte, *traducteur);
}

std::optional<ENUM_TYPE_CALCUL_SURFACE> Méthode(std::string_view texte,
                                                const Ref<ZED_Traduction>& traducteur) {
  return Reconnaît(kMéthodes, texte, *traducteur);
}

}  // namespace zuma::textes_eprouvette
