#include "host/defaut_capteur.h"

#include <array>
#include <cmath>

namespace zuma::host {
namespace {

using Genre = DéfautCapteur::Genre;

constexpr std::array<std::string_view, 7> kTextes{
    "out of service",     "not selected", "no channel",    "reading not valid",
    "outside its limits", "no number",    "reading frozen"};
constexpr double kPartImmobile = 1e-6;  // of the range

std::optional<Genre> GenrePropre(const Capteur& c) {
  if (!c.Enabled_bln()) return Genre::HorsService;
  if (!c.CapteurSelectionne()) return Genre::NonSélectionné;
  if (c.TypeDeCapteur() == ENUM_TYPE_CAPTEUR::capteurNormal && !c.Canal()) return Genre::SansCanal;
  if (!std::isfinite(c.ValeurCourante())) return Genre::PasUnNombre;
  const auto état = static_cast<ENUM_ETAT_CAPTEUR>(c.Etat());
  if (état == ENUM_ETAT_CAPTEUR::Correct) return {};
  return état == ENUM_ETAT_CAPTEUR::LectureNonValide ? Genre::NonValide : Genre::Dépassement;
}

double Etendue(const Capteur& c) {
  return c.MaxiCapteurUnité() - c.MiniCapteurUnité();
}

// True for what the value of `père` does without for now.
bool EstEcarté(const Capteur& père, const Capteur& fils, Genre genre) {
  if (père.TypeDeCapteur() == ENUM_TYPE_CAPTEUR::CapteurLePlusPetit) {
    return genre == Genre::NonSélectionné;
  }
  if (père.TypeDeCapteur() != ENUM_TYPE_CAPTEUR::CapteurRecouvrement) return false;
  if (genre != Genre::Dépassement || fils.ValeurCourante() < fils.MaxiCapteurUnité()) return false;
  for (const CapteurRef& autre : *père.CapteursFils()) {
    if (Etendue(*autre) > Etendue(fils)) return true;
  }
  return false;
}

}  // namespace

std::string_view Texte(Genre genre) noexcept {
  return kTextes[static_cast<std::size_t>(genre)];
}

std::optional<DéfautCapteur> DéfautDe(const Capteur& capteur) {
  if (const auto genre = GenrePropre(capteur)) return DéfautCapteur{*genre, capteur.NomDuCapteur()};
  const CapteursRef fils = capteur.CapteursFils();
  if (!fils) return {};
  for (const CapteurRef& f : *fils) {
    auto défaut = DéfautDe(*f);
    if (défaut && !EstEcarté(capteur, *f, défaut->genre)) return défaut;
  }
  return {};
}

void SuiviDuMouvement::Note(const Capteur& capteur, double secondes) {
  const double valeur = capteur.ValeurCourante();
  noté_ = secondes;
  if (std::abs(valeur - valeur_) <= kPartImmobile * std::abs(Etendue(capteur))) return;
  valeur_ = valeur;
  dernier_ = secondes;
}

}  // namespace zuma::host
