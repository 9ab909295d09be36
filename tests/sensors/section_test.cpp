// Stress on a specimen whose parameters the operator edits, against hand-worked figures and the
// formulas of the test standards.
#include "sensors/section.h"

#include <cmath>
#include <numbers>
#include <sstream>

#include "outils/banc_chassis_capteurs.h"
#include "outils/cas.h"

namespace zuma::essai {
namespace {

using std::numbers::pi;

constexpr double kForce = 78.53981633974483;  // 10 MPa on the cylinder of the bench

/// A stress sensor under child "F1" and the parameters of its specimen.
class UneContrainteSurEprouvette : public DansUnChassis {
 protected:
  using Parametres = std::map<std::string, Ref<Parametre>>;
  /// Parameters of that test, that shape and these dimensions, in pairs such as "A=4,5".
  Parametres Eprouvette(const char* type, const char* formeDe, const std::string& dimensions) {
    static const std::map<std::string, const char*> kNoms{
        {"U", "Unite"},           {"C", "Facteur de convertion"},        {"UM", "Unité de masse"},
        {"V", "Masse volumique"}, {"K", "Méthode de calcul de surface"}, {"LS", kAppuisSup},
        {"LI", kAppuisInf},       {"UV", "Unité de masse volumique"}};
    Parametres tous;
    tous["Type de contrainte"] = Partage(1, type);
    tous["Forme eprouvette"] = Partage(2, formeDe);
    std::istringstream mots(dimensions);
    for (std::string mot; mots >> mot;) {
      const std::string nom = mot.substr(0, mot.find('='));
      const auto connu = kNoms.find(nom);
      tous[connu == kNoms.end() ? nom : connu->second] =
          Partage(static_cast<int>(paramètres->size()) + 1, mot.substr(nom.size() + 1));
    }
    return tous;
  }
  Ref<Capteur> Contrainte(const Parametres& parametres) {
    Ligne colonnes{{"Type de Capteur", "Contrainte"}, {"Capteur Fils N° 1", "F1"}};
    for (const auto& [colonne, parametre] : parametres) {
      colonnes.push_back({colonne, std::stoi(parametre->NomParamètre())});
    }
    return Lié(colonnes);
  }
  Ref<Capteur> Contrainte() { return Contrainte(p); }
  double Sous(Capteur& c, double force) {
    chassis.Capteurs()->Item("1")->ValeurCourante(force);
    c.MetàJour();
    return c.ValeurCourante();
  }

  static constexpr const char* kAppuisSup = "Distance entre appuis sup";
  static constexpr const char* kAppuisInf = "Distance entre appuis inf";
  Parametres p = Eprouvette("Compression", "Cylindre", "D=100 U=mm S=0 A= C=");
  Ref<Parametre> essai = p["Type de contrainte"], forme = p["Forme eprouvette"], diamètre = p["D"],
                 unité = p["Unite"], section = p["S"], côté = p["A"],
                 facteur = p["Facteur de convertion"];
};

TEST_F(UneContrainteSurEprouvette, ALaSectionDeSaFormeEtDeSonEssai) {
  // A strip of a tube of 10, bore of 9, width of 2: the difference of two circular strips.
  const auto bande = [](double d) {
    constexpr int kPas = 200000;
    double aire = 0;
    for (int i = 0; i < kPas; ++i) aire += std::sqrt(d * d - std::pow(2 * (i + 0.5) / kPas, 2));
    return aire / kPas;
  };
  traducteur->mots = {{"Par masse volumique", "Masse"}};
  for (const auto& [type, deForme, dimensions, cm2] :
       Cas<const char*, const char*, const char*, double>{
           {"Compression", "Prisme", "A=40 B=50 U=mm", 20},
           {"Traction", "Prisme", "A=4", 16},
           {"Traction/Compression", "Prisme", "B=5", 25},
           {"Fendage", "Prisme", "A=4 B=5 H=9", 0},
           {"Compression", "Cylindre", "D=2", pi},
           // EN 12390-6: f = 2 F / (pi L d). EN 12390-5: f = F l / (d1 d2²), where the supports are
           // l apart and the loads l / 3; one side left out makes a square.
           {"Fendage", "Cylindre", "D=15 H=30", pi * 30 * 15 / 2},
           {"Flexion", "Prisme", "B=10 H=15 LS=15 LI=45", 50},
           {"Flexion", "Prisme", "H=10 LS=10 LI=40", 1e3 / 45},
           {"Flexion", "Prisme", "B=10 LS=10 LI=40", 1e3 / 45},
           {"Flexion", "Prisme", "B=10 LS=10", 0},
           {"Traction", "Tube rond", "D=10 E=1", 9 * pi},
           {"Traction", "Tube rond", "D=10 E=5", 0},  // no bore
           {"Traction", "Troncon de tube rond", "B=2 D=10 E=0,5", bande(10) - bande(9)},
           {"Traction", "Troncon de tube rond", "D=10 E=1", 0},
           {"Traction", "Troncon de tube rond", "B=2 D=10", 0},
           {"Traction", "Troncon de tube rond", "B=9,5 D=10 E=0,5", 0},  // wider than the bore
           {"Traction", "Hexagone regulier", "A=2", 10.39230484541326},
           {"Traction", "Speciale", "S=325 U=mm", 3.25},
           {"Traction/Compression de cylindre", "Cylindre", "D=2", 0},
           // 2 m of wire, 98.75 g, 7900 kg/m3: 6.25 mm².
           {"Traction", "Prisme", "K=Masse L=2 m=0,09875 UM=kg V=7,9 UV=kg/dm3 U=m", 0.0625},
           {"Traction", "Prisme", "K=Masse L=2 m=98,75", 0}}) {
    paramètres->clear();
    const auto c = Contrainte(Eprouvette(type, deForme, dimensions));
    // 10 MPa on 1 cm² is 1 kN.
    EXPECT_NEAR(c->ConvertionContrainteForce(10), cm2, 1e-9) << deForme << dimensions;
  }
  EXPECT_TRUE(registre->entrées.empty());
  EXPECT_TRUE(messages.textes.empty());
}

TEST(UneUnité, ALeFacteurDesUnitésDeBase) {
  const Cas<const char*, double> cas{{"dm", 10},    {"CM", 1},       {"µm", 0.0001},
                                     {"mg", 0.001}, {"g", 1},        {"g/dm3", 1},
                                     {"kg/m3", 1},  {"g/cm3", 1000}, {"", 0}};
  for (const auto& [texte, facteur] : cas) {
    EXPECT_EQ(section::CoefficientUnité(texte), facteur) << texte;
  }
}

TEST_F(UneContrainteSurEprouvette, SuitLesParamètresEtReporteLaSection) {
  const auto c = Contrainte();
  EXPECT_EQ(section->ValeurParamètre(), "7853,98163397448");  // mm², once
  côté->ValeurParamètre("12");  // of no use to a cylinder: computed again, nothing written
  EXPECT_EQ(section->écritures, 1);
  EXPECT_NEAR(Sous(*c, kForce), 10, 1e-9);  // 1 kN/cm² is 10 MPa
  facteur->ValeurParamètre("2");
  EXPECT_NEAR(Sous(*c, kForce), 20, 1e-9);
  EXPECT_NEAR(c->ConvertionContrainteForce(20), kForce, 1e-9);
  facteur->ValeurParamètre("deux");
  diamètre->ValeurParamètre("200");
  EXPECT_NEAR(Sous(*c, kForce), 2.5, 1e-9);
  EXPECT_EQ(section->ValeurParamètre(), "31415,9265358979");
  unité->ValeurParamètre("pouce");  // unknown: a section of 0, and nothing to write back
  EXPECT_EQ(Sous(*c, 50), 0);
  EXPECT_EQ(section->écritures, 2);
  EXPECT_TRUE(registre->entrées.empty());
  facteur->ValeurParamètre("0");
  EXPECT_EQ(c->ConvertionContrainteForce(20), 0);
  EXPECT_TRUE(registre->Contient("Erreur N°11 "));
}

TEST_F(UneContrainteSurEprouvette, ReconnaîtLesMotsDeLaLangueCourante) {
  traducteur->mots = {{"Compression", "Crushing"}, {"Cylindre", "Cylinder"}};
  essai->ValeurParamètre("Crushing");
  p["Méthode de calcul de surface"] = Partage(9, "Par poids");
  const auto c = Contrainte();
  EXPECT_EQ(messages.textes,
            (std::vector<std::string>{"Unknown shape of sample (Cylindre).",
                                      "Unknown surface calculation method (Par poids)."}));
  EXPECT_EQ(Sous(*c, 50), 0);
  EXPECT_EQ(traducteur->langue, "Français");
  EXPECT_GT(traducteur->écrituresDeLangue, 0);
  forme->ValeurParamètre("Cylinder");
  EXPECT_NEAR(Sous(*c, kForce), 10, 1e-9);
  messages.textes.clear();
  essai->ValeurParamètre("Torsion");
  EXPECT_EQ(messages.textes[0], "Strength type unknown (Torsion).");
  EXPECT_EQ(Sous(*c, 50), 0);
}

TEST_F(UneContrainteSurEprouvette, TientLaForceDuMaximumDeSonFils) {
  const auto c = Contrainte();
  const auto force = chassis.Capteurs()->Item("1");
  const auto maximum = [&](double kN) {
    force->ValeurCourante(kN);
    force->RazMaxiDétecté();
    (void)Sous(*c, 0);
    return c->MaxiDétecté();
  };
  EXPECT_NEAR(maximum(kForce), 10, 1e-9);
  (void)Sous(*c, kForce / 2);
  c->RazMaxiDétecté();
  (void)Sous(*c, 0);
  EXPECT_NEAR(c->MaxiDétecté(), 5, 1e-9);  // reset to the value: the child's did not change
  EXPECT_NEAR(maximum(2 * kForce), 20, 1e-9);
  EXPECT_NEAR(c->MiniDétecté(), 5, 1e-9);  // left alone by this kind
}

TEST_F(UneContrainteSurEprouvette, TientUneSectionPartagéeOuIllisible) {
  const auto c = Contrainte();
  p["Forme eprouvette"] = Partage(9, "Prisme");
  auto prisme = Contrainte();
  côté->ValeurParamètre("3");  // each writes its own section to the shared parameter
  EXPECT_NEAR(Sous(*c, kForce), 10, 1e-9);
  EXPECT_TRUE(registre->entrées.empty());
  prisme = {};
  section->ValeurParamètre("grande");
  EXPECT_TRUE(registre->Contient("Erreur N°13 "));
  EXPECT_TRUE(registre->Contient(" de la méthode S_mobj_Change de l'objet Capteur (Force)."));
  EXPECT_EQ(c->dblSurfaceContrainte(), 0);
  EXPECT_TRUE(registre->Contient(" de la propriété dblSurfaceContrainte en lecture "));
  c->dblSurfaceContrainte(12.5);
  EXPECT_NEAR(c->dblSurfaceContrainte(), 7853.98163397448, 1e-9);  // computed again at once
}

TEST_F(UneContrainteSurEprouvette, ParleDesTypesObsolètes) {
  using T = ENUM_TYPE_CONTRAINTE;
  const auto c = Contrainte();
  traducteur->mots = {{"Flexion", "Bending"}, {"Surface", "Area"}};
  const auto dit = [](const std::string& texte) {
    return std::vector{"'" + texte +
                       "' est un type de calcul obsolete. Veuillez apporter les "
                       "correction nécessaire dans le capteur 'Force'."};
  };
  for (const auto& [type, texte, dits] : Cas<T, std::string, std::vector<std::string>>{
           {T::surface, "Surface", dit("Surface")},
           {T::TractionCompressionCylindre, "Traction/Compression de cylindre",
            dit("Traction/Compression de cylindre")},
           {T::Flexion, "Bending", {}},  // alone written in the operator's language
           {T::Compression, "Compression", {}}}) {
    messages.textes.clear();
    c->TypeCalculContrainte(type);
    EXPECT_EQ(essai->ValeurParamètre(), texte);
    EXPECT_EQ(c->TypeCalculContrainte(), type);
    EXPECT_EQ(messages.textes, dits);
  }
  c->TypeCalculContrainte(static_cast<T>(7));
  EXPECT_EQ(essai->ValeurParamètre(), "Compression");
}

TEST_F(UneContrainteSurEprouvette, QuitteSesParamètresAvecLeCapteur) {
  (void)Contrainte();
  EXPECT_TRUE(diamètre->abonnés.empty());
  diamètre->ValeurParamètre("5");
  const auto c = Contrainte();
  Lie(*c);  // linked twice: one handler all the same
  EXPECT_EQ(diamètre->abonnés.size(), 1U);
  EXPECT_TRUE(facteur->abonnés.empty());
}

}  // namespace
}  // namespace zuma::essai
