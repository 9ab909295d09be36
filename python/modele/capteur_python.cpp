// Sensors.
#include "core/chassis.h"
#include "modele/causes.h"
#include "modele/liaisons.h"
#include "modele/rappels.h"
#include "modele/tables.h"
#include "platform/fenetres.h"
#include "sensors/capteur.h"

namespace py = pybind11;
using namespace py::literals;

namespace zuma::python::modele {
namespace {

using SoiMême = Capteur;

void LieLIdentité(Classe<Capteur>& classe) {
  classe.ZUMA_PROPRIETE(Label, "Name by which other rows refer to it; \"\" when it has none.")
      .ZUMA_PROPRIETE(NomDuCapteur, "The name of the row.")
      .ZUMA_PROPRIETE(NomAfficheDuCapteur, "The name that the operator reads.")
      .ZUMA_PROPRIETE(TypeDeCapteur, "Kind of the sensor: where its value comes from.")
      .ZUMA_LECTURE(TexteMaxi, "Name of its maximum for the operator, of the row.")
      .ZUMA_PROPRIETE(LeRecordset, "The recordset of the sensor's row.")
      .ZUMA_PROPRIETE(Canal, "The channel that it reads; None on one made from something else.")
      .ZUMA_PROPRIETE(CapteursFils, "Sensors that it is made from, under \"1\", \"2\", ...")
      .ZUMA_PROPRIETE(Operateur_str, "\"+\", \"-\", \"*\" or \"/\" of a combination.");
}

void LieLaValeur(Classe<Capteur>& classe) {
  classe
      .ZUMA_PROPRIETE(
          ValeurCourante,
          "Value in units (UnitéEtalonnage), after tare and offset; 0 while not enabled. "
          "Written, it is of now; the next refresh of a kind that computes one "
          "replaces it.")
      .ZUMA_LECTURE(ValeurEnPoints, "Points after zero and integration; 0 while not enabled.")
      .Lecture(
          "Etat", [](Capteur& c) { return static_cast<ENUM_ETAT_CAPTEUR>(c.Etat()); },
          "State after the last refresh, an ENUM_ETAT_CAPTEUR.")
      .ZUMA_PROPRIETE(Enabled_bln, "False on a sensor out of service: its value reads 0.")
      .ZUMA_LECTURE(Age, "Seconds since the oldest of what the value is made from was read.")
      .ZUMA_LECTURE(EstVieux, "Something that the value is made from is too old.")
      .ZUMA_LECTURE(EstDUnInstrument, "It asks an instrument itself, or the host gives its value.")
      .ZUMA_LECTURE(EstLu, "False while an instrument behind it has given nothing: no measure.")
      .Lecture(
          "LAge", [](Capteur& c) { return c.LAge(); }, "Age, EstVieux and EstLu at once.")
      .ZUMA_LECTURE(AgeMaximal, "Age in seconds beyond which it is not valid; 0 for none.")
      .ZUMA_LECTURE(CapteurSelectionne, "The sensor passed its selection in the last refresh.")
      .ZUMA_LECTURE(MaxiDétecté, "Largest value since the last restart, in units.")
      .ZUMA_LECTURE(MiniDétecté, "Smallest value since the last restart, in units.")
      .ZUMA_LECTURE(EtatMaxi, "State at the moment of the last new maximum.")
      .ZUMA_PROPRIETE(AutoriseDétectionMaxi,
                      "Minimum and maximum are looked for; switched on, from the present value.")
      .ZUMA_FAIT(RazMaxiDétecté, Bref, "Restarts both extremes from the present value.")
      .ZUMA_PROPRIETE(TempsIntégration, "Integration time of the points, seconds; 0 is none.");
}

void LieLesLimites(Classe<Capteur>& classe) {
  classe.ZUMA_LECTURE(MaxiCapteur, "Upper limit of the range in units, as deduced at start.")
      .ZUMA_LECTURE(MiniCapteur, "Lower limit of the range in units, as deduced at start.")
      .ZUMA_PROPRIETE(MaxiCapteurUnité, "Upper limit in units, as configured.")
      .ZUMA_PROPRIETE(MiniCapteurUnité, "Lower limit in units, as configured.")
      .ZUMA_LECTURE(MaxiCapteurPoints, "Upper limit in points, brought to units.")
      .ZUMA_LECTURE(MiniCapteurPoints, "Lower limit in points, brought to units.")
      .ZUMA_LECTURE(SeuillLectureNonValide, "A reading below it is not valid; 0: no test.")
      .ZUMA_LECTURE(AU, "The sensor is in a dangerous overrun, or too old.")
      .ZUMA_FAIT(AutoriseAU, Bref, "Lets the sensor stop the frame, as at start.")
      .ZUMA_FAIT(InterditAU, Bref, "Keeps the sensor from stopping the frame.")
      .ZUMA_FAIT(DéclencheAU, Bref, "A sensor has no output to cut.")
      .Méthode(
          "TesteAU", Genre::Bref,
          [](Capteur& c, const py::list& causes) {
            SurDesCauses(causes, [&](auto textes) { c.TesteAU(textes); });
          },
          "TableAUs"_a,
          "Puts the cause in the first empty entry from 1 on of that list, when in danger.");
}

void LieZéroEtTare(Classe<Capteur>& classe) {
  classe.ZUMA_FAIT(Raz, Bref, "Starts measuring a new zero. Does not look at RazAutorise_bln.")
      .ZUMA_FAIT(AnnuleRaz, Bref, "Puts the zero back to 0.")
      .Méthode(
          "Tare", Genre::Bref, [](Capteur& c, const Valeur& v) { c.Tare(v); },
          "ValeurApresTarage_var"_a = Valeur(0.0),
          "Starts measuring a tare so that the present input reads that value, in units.")
      .ZUMA_FAIT(AnnuleTare, Bref, "Puts the tare back to 0.")
      .ZUMA_PROPRIETE(ValeurTare, "Tare in units, taken off each value; 0 for none.")
      .ZUMA_LECTURE(ValeurApresTarage, "Value in units that the last Tare asked for.")
      .ZUMA_LECTURE(EtatDeLaTare, "True once a tare was taken and until it is cancelled.")
      .ZUMA_LECTURE(EtatRAZ, "State of the zero.")
      .ZUMA_LECTURE(EtatTare, "Acquisition while a tare is being measured.")
      .ZUMA_LECTURE(RazAutorise_bln, "The row lets the operator zero the sensor.")
      .ZUMA_LECTURE(Gestes, "How often a zero or a tare was asked for or taken back.");
}

void LieLEtalonnage(Classe<Capteur>& classe) {
  classe.ZUMA_LECTURE(CommentaireEtalonnage, "Remark of the calibration, of the row.")
      .ZUMA_PROPRIETE(UnitéEtalonnage, "Unit of value and limits. Written, it raises UnitChange.")
      .ZUMA_PROPRIETE(DateEtalonnage, "When it was calibrated, a text.")
      .ZUMA_PROPRIETE(NomEtalonneur, "Who calibrated it.")
      .ZUMA_LECTURE(MaxPoints, "Rows of the calibration table.")
      .Méthode(
          "PointX", Genre::Bref, [](Capteur& c, std::int16_t i) { return c.PointX(i); },
          "intIndex"_a, "Unit value of point 0 to 20; outside, failure 9.")
      .Méthode(
          "PointX", Genre::Bref,
          [](Capteur& c, std::int16_t i, double unités) { c.PointX(i, unités); }, "intIndex"_a,
          "unités"_a)
      .Méthode(
          "PointY", Genre::Bref, [](Capteur& c, std::int16_t i) { return c.PointY(i); },
          "intIndex"_a, "Point value of point 0 to 20; outside, failure 9.")
      .Méthode(
          "PointY", Genre::Bref,
          [](Capteur& c, std::int16_t i, double points) { c.PointY(i, points); }, "intIndex"_a,
          "points"_a)
      .ZUMA_LECTURE(EtalonnageExterieurPossible, "The user may calibrate on the machine.")
      .Méthode(
          "EtalonnageExterieur", Genre::Long,
          [](Capteur& c, FenêtreHôte* mère) { return c.EtalonnageExterieur(mère); },
          "FeuilleMere_obj"_a = py::none(), "Opens the calibration dialog.")
      .ZUMA_FAIT(ResetFeuilleEtalonnage, Long, "Forgets the calibration dialog.")
      .ZUMA_LECTURE(ModeEdition, "True while the calibration dialog exists.");
}

void LieLaContrainte(Classe<Capteur>& classe) {
  classe.ZUMA_PROPRIETE(TypeCalculContrainte, "Kind of test of parameter \"Type de contrainte\".")
      .ZUMA_PROPRIETE(dblSurfaceContrainte, "The number in parameter \"S\".")
      .Méthode(
          "ConvertionContrainteForce", Genre::Bref,
          [](Capteur& c, double v) { return c.ConvertionContrainteForce(v); }, "Contrainte_dbl"_a,
          "Force of a stress on the present section.");
}

// What the model writes through its arguments comes back as a tuple behind the result.
void LieLeRecouvrement(Classe<Capteur>& classe) {
  classe.ZUMA_FAIT(GestionRecouvrement, Bref, "Simple switch between small and large sensor.")
      .Méthode(
          "RecouvrementInitAcquisistion", Genre::Bref,
          [](Capteur& c, const CapteurRef& petit, const CapteurRef& grand) {
            c.RecouvrementInitAcquisistion(petit, grand);
          },
          "PetitCapteur_obj"_a, "GrandCapteur_obj"_a, "Starts learning the gap.")
      .Méthode(
          "RecouvrementAcquisistion", Genre::Bref,
          [](Capteur& c, const CapteurRef& petit, const CapteurRef& grand) {
            c.RecouvrementAcquisistion(petit, grand);
          },
          "PetitCapteur_obj"_a, "GrandCapteur_obj"_a, "One more reading of the gap.")
      .Méthode(
          "RecouvrementLecture", Genre::Bref,
          [](Capteur& c, const CapteursRef& fils, std::string courant, const std::string& grand,
             const std::string& petit, double bas, double haut, double écart, std::int32_t lues) {
            const double valeur =
                c.RecouvrementLecture(fils, courant, grand, petit, bas, haut, écart, lues);
            return std::tuple(valeur, courant, écart, lues);
          },
          "CapteursFils_cobj"_a, "CapteurCourant_str"_a, "GrandCapteur_str"_a, "PetitCapteur_str"_a,
          "SeuilBasUC_dbl"_a, "SeuilHautUC_dbl"_a, "EcartMoyen_dbl"_a, "NbValeurLues_lng"_a,
          "Value to show, with the sensor shown, the gap and the readings as they are then.")
      .Méthode(
          "RecouvrementChangementCapteur", Genre::Bref,
          [](Capteur& c, const CapteursRef& capteurs, std::string courant,
             const std::string& nouveau, const std::string& petit, const std::string& grand,
             double écart, std::int32_t lues) {
            c.RecouvrementChangementCapteur(capteurs, courant, nouveau, petit, grand, écart, lues);
            return courant;
          },
          "LesCapteurs_cobj"_a, "CapteurCourant_str"_a, "NouveauCapteur_str"_a,
          "PetitCapteur_str"_a, "GrandCapteur_str"_a, "EcartMoyen_dbl"_a,
          "NombreDeValeursLues_lng"_a, "Shows another sensor; gives the one shown then.");
}

void LieLaVie(Classe<Capteur>& classe) {
  classe
      .Méthode(
          "ParamètresDepuisBD", Genre::Bref,
          [](Capteur& c, const Ref<Recordset>& r, double hertz) { c.ParamètresDepuisBD(r, hertz); },
          "rstMonRecordSet"_a, "FréquenceRafraichissement"_a, "Reads the sensor's row.")
      .Méthode(
          "Lien", Genre::Long,
          [](Capteur& c, const Ref<ZED_Securite>& sécurité, const ParamètresRef& paramètres,
             const Ref<ZED_Traduction>& traducteur, const Désigné<Chassis>& chassis) {
            c.Lien(sécurité, paramètres, traducteur, chassis.objet);
          },
          "MaSecurite_obj"_a = Ref<ZED_Securite>(), "MesParametres_mobj"_a = ParamètresRef(),
          "Traducteur_obj"_a = Ref<ZED_Traduction>(), "MonChassis"_a = py::none(),
          "Resolves the references of the row.")
      .ZUMA_FAIT(ReprendLesLimitesDesFils, Bref, "Has an overlap sensor compare its children.")
      .ZUMA_FAIT(Délie, Bref, "Lets go of children and shared parameters.")
      .ZUMA_FAIT(MiseàJourDesLiens, Bref, "Does nothing: Lien has resolved all.")
      .ZUMA_FAIT(Initialise, Long, "Prepares the first refresh.")
      .ZUMA_FAIT(MetàJour, Long, "One refresh, of this sensor alone.")
      .ZUMA_FAIT(Décharge, Bref, "Does nothing: a sensor holds nothing to close.")
      .Méthode(
          "AutoSave", Genre::Long, [](Capteur& c, const std::string& Ou) { c.AutoSave(Ou); },
          "Ou"_a, "Appends the sensor's part of the diagnostic dump to a text file.")
      .Méthode(
          "Espion", Genre::Long, [](Capteur& c, std::int16_t n) { c.Espion(n); }, "intNumFich"_a,
          "Writes name, key and channel on an open file descriptor.");
}

void LieLEvènement(Classe<Capteur>& classe) {
  classe
      .Méthode(
          "AbonneUnitChange", Genre::Bref,
          [](Capteur& c, py::function f) {
            return c.AbonneUnitChange(Rappel<const std::string&>(std::move(f)));
          },
          "f"_a, "Registers f(unit) and returns its number, for DésabonneUnitChange.")
      .Méthode(
          "DésabonneUnitChange", Genre::Bref,
          [](Capteur& c, int numéro) { c.DésabonneUnitChange(numéro); }, "numéro"_a,
          "Removes a handler; nothing on a number that is not there.");
  classe.Brute().def(
      "UnitChange",
      [](PoignéeDe<Capteur>& soi, py::function f) {
        return AbonneÀ(soi, "Capteur.UnitChange", &Capteur::AbonneUnitChange,
                       &Capteur::DésabonneUnitChange, Rappel<const std::string&>(std::move(f)));
      },
      "f"_a, "Event: calls f(unit) whenever the unit is written, until the subscription ends.");
}

void LieLesPetitesClasses(py::module_& m) {
  py::class_<GestesDuCapteur>(m, "GestesDuCapteur", "Counts of zeros and tares, modulo 256.")
      .def_readonly("zéros", &GestesDuCapteur::zéros, "asked for")
      .def_readonly("zérosRepris", &GestesDuCapteur::zérosRepris, "taken back")
      .def_readonly("tares", &GestesDuCapteur::tares, "asked for")
      .def_readonly("taresReprises", &GestesDuCapteur::taresReprises, "taken back")
      .def("__eq__", [](const GestesDuCapteur& a, const GestesDuCapteur& b) { return a == b; });
  py::class_<Capteur::AgeDeMesure>(m, "AgeDeMesure", "How old a measure is.")
      .def_readonly("secondes", &Capteur::AgeDeMesure::secondes, "of the oldest")
      .def_readonly("vieux", &Capteur::AgeDeMesure::vieux, "older than it may be")
      .def_readonly("lue", &Capteur::AgeDeMesure::lue, "a first value has come");
}

}  // namespace

void LieLesCapteurs(py::module_& m) {
  LieLesPetitesClasses(m);
  Classe<Capteur> classe(m, "Capteur", "One named measurement in engineering units.");
  LieLIdentité(classe);
  LieLaValeur(classe);
  LieLesLimites(classe);
  LieZéroEtTare(classe);
  LieLEtalonnage(classe);
  LieLaContrainte(classe);
  LieLeRecouvrement(classe);
  LieLaVie(classe);
  LieLEvènement(classe);
}

}  // namespace zuma::python::modele
