#include "sensors/section.h"

#include <array>
#include <cmath>

#include "base/outils_trigonometrie.h"
#include "base/valeur.h"
#include "core/collections.h"

namespace zuma::section {
namespace {

using OutilsTrigonométrie::ArcSinus;
using OutilsTrigonométrie::Pi;

constexpr double Carré(double x) {
  return x * x;
}

struct Unité {
  std::string_view texte;
  double facteur;
};

constexpr std::array<Unité, 12> kUnités{{
    {"M", 100},
    {"DM", 10},
    {"CM", 1},
    {"MM", 0.1},
    {"µM", 0.0001},
    {"MG", 0.001},
    {"G", 1},
    {"KG", 1000},
    {"G/DM3", 1},
    {"KG/M3", 1},
    {"KG/DM3", 1000},
    {"G/CM3", 1000},
}};

// The formulas take dimensions in centimetres.

double PrismeAxial(const Eprouvette& e) {
  if (e.A == 0 || e.B == 0) return Carré(e.A + e.B);  // one side only: a square
  return e.A * e.B;
}

// Four-point bending. One of width and height left out makes a square.
double PrismeFlexion(const Eprouvette& e) {
  if (e.Grand_L == 0 || (e.B == 0 && e.H == 0)) return 0;
  const double largeur = e.B == 0 ? e.H : e.B;
  const double hauteur = e.H == 0 ? e.B : e.H;
  return Divise(2 * largeur * Carré(hauteur), 3 * (e.Grand_L - e.Petit_L));
}

double CylindreAxial(const Eprouvette& e) {
  return Pi() * Carré(e.D) / 4;
}

double CylindreFendage(const Eprouvette& e) {
  return Pi() * e.D * e.H / 2;
}

double TubeRondAxial(const Eprouvette& e) {
  if (e.E == 0 || !(e.D - 2 * e.E > 0)) return 0;
  return Pi() * e.E * (e.D - e.E);
}

// Half of a disc of diameter d, between two parallel chords b apart.
double DemiDisque(double b, double d) {
  return b / 4 * std::sqrt(Carré(d) - Carré(b)) + Carré(d) / 4 * ArcSinus(b / d);
}

// Test piece cut lengthwise out of the wall of a tube, B its width (ISO 6892-1): the difference of
// two such half discs.
double TronconDeTubeRondAxial(const Eprouvette& e) {
  const double intérieur = e.D - 2 * e.E;
  if (e.B == 0 || e.D == 0 || e.E == 0 || intérieur == 0) return 0;
  if (!(Carré(e.D) - Carré(e.B) > 0) || std::abs(e.B / e.D) > 1) return 0;
  if (!(Carré(intérieur) - Carré(e.B) > 0) || std::abs(e.B / intérieur) > 1) return 0;
  return DemiDisque(e.B, e.D) - DemiDisque(e.B, intérieur);
}

double HexagoneRegulierAxial(const Eprouvette& e) {
  return 3 * std::sqrt(3.0) * Carré(e.A) / 2;
}

double SpecialeAxiale(const Eprouvette& e) {
  return e.S;
}

enum class Essai { Axial, Flexion, Fendage, Aucun };

Essai EssaiDe(ENUM_TYPE_CONTRAINTE type) {
  switch (type) {
    case ENUM_TYPE_CONTRAINTE::Traction_Compression:
    case ENUM_TYPE_CONTRAINTE::Compression:
    case ENUM_TYPE_CONTRAINTE::Traction:
      return Essai::Axial;
    case ENUM_TYPE_CONTRAINTE::Flexion:
      return Essai::Flexion;
    case ENUM_TYPE_CONTRAINTE::Fendage:
      return Essai::Fendage;
    default:
      return Essai::Aucun;
  }
}

struct Formule {
  ENUM_FORME_EPROUVETTE forme;
  Essai essai;
  double (*section)(const Eprouvette&);
};

// What has no row has a section of 0.
constexpr std::array<Formule, 8> kFormules{{
    {ENUM_FORME_EPROUVETTE::Prisme, Essai::Axial, &PrismeAxial},
    {ENUM_FORME_EPROUVETTE::Prisme, Essai::Flexion, &PrismeFlexion},
    {ENUM_FORME_EPROUVETTE::Cylindre, Essai::Axial, &CylindreAxial},
    {ENUM_FORME_EPROUVETTE::Cylindre, Essai::Fendage, &CylindreFendage},
    {ENUM_FORME_EPROUVETTE::TubeRond, Essai::Axial, &TubeRondAxial},
    {ENUM_FORME_EPROUVETTE::TronconDeTubeRond, Essai::Axial, &TronconDeTubeRondAxial},
    {ENUM_FORME_EPROUVETTE::HexagoneRegulier, Essai::Axial, &HexagoneRegulierAxial},
    {ENUM_FORME_EPROUVETTE::Speciale, Essai::Axial, &SpecialeAxiale},
}};

Eprouvette EnCentimètres(Eprouvette e) {
  for (double* longueur : {&e.A, &e.B, &e.D, &e.E, &e.H, &e.L, &e.Grand_L, &e.Petit_L}) {
    *longueur *= e.kLongueur;
  }
  e.S *= Carré(e.kLongueur);
  return e;
}

double ParDimension(const Eprouvette& e) {
  for (const Formule& formule : kFormules) {
    if (formule.forme == e.forme && formule.essai == EssaiDe(e.essai)) return formule.section(e);
  }
  return 0;
}

double ParMasseVolumique(const Eprouvette& e) {
  constexpr double kCm3ParDm3 = 1000;
  const double masse = e.masse * e.kMasse;
  const double masseVolumique = e.masseVolumique * e.kMasseVolumique;
  if (masse == 0 || masseVolumique == 0 || e.L == 0) return 0;
  return masse / (masseVolumique / kCm3ParDm3) / e.L;
}

}  // namespace

double CoefficientUnité(std::string_view unité) noexcept {
  for (const Unité& connue : kUnités) {
    if (MêmeClé(unité, connue.texte)) return connue.facteur;
  }
  return 0;
}

double Calcule(const Eprouvette& éprouvette) {
  const Eprouvette e = EnCentimètres(éprouvette);
  switch (e.méthode) {
    case ENUM_TYPE_CALCUL_SURFACE::MasseVolumique:
      return ParMasseVolumique(e);
    case ENUM_TYPE_CALCUL_SURFACE::Dimension:
      return ParDimension(e);
  }
  return 0;
}

}  // namespace zuma::section
