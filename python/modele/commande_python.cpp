// Commands.
#include "commands/commande.h"
#include "core/chassis.h"
#include "modele/causes.h"
#include "modele/liaisons.h"
#include "modele/rappels.h"
#include "modele/tables.h"
#include "platform/fenetres.h"

namespace py = pybind11;
using namespace py::literals;

namespace zuma::python::modele {
namespace {

using SoiMême = Commande;

void LieLIdentité(Classe<Commande>& classe) {
  classe.ZUMA_PROPRIETE(Label, "Name by which other rows refer to it; \"\" when it has none.")
      .ZUMA_PROPRIETE(NomDeLaCommande, "Name of the command, of the row.")
      .ZUMA_LECTURE(TypeCommande, "Its kind, of the row.")
      .ZUMA_PROPRIETE(LeRecordset, "The row that the command was read from.")
      .ZUMA_LECTURE(Canal, "The channel that it writes; None when the row names none.")
      .ZUMA_PROPRIETE(CapteurDeRecopie, "Source of a copying command.")
      .Propriété(
          "SélectionDeDébit", [](Commande& c) { return c.SélectionDeDébit(); },
          [](Commande&, const CanalRef&) {}, "Kept for hosts: stores nothing, gives None.");
}

void LieLaSortie(Classe<Commande>& classe) {
  classe
      .ZUMA_PROPRIETE(ValeurCouranteEnUnité,
                      "Value asked for, in units. Written, it is limited and drives the output at "
                      "once; what is no number is refused (5).",
                      Genre::Geste)
      .ZUMA_LECTURE(ValeurCouranteEnPoints, "Value of the channel; without one, failure 91.")
      .ZUMA_PROPRIETE(Enabled,
                      "In service. Set, it writes the present value to the channel; cleared, it "
                      "takes the value from there.",
                      Genre::Geste)
      .ZUMA_FAIT(DéclencheAU, Marche, "Drives the output to the initial value at once.")
      .ZUMA_FAIT(MaintientAuRepos, Geste, "Holds a copying command at rest until it is enabled.")
      .ZUMA_LECTURE(MaintenueAuRepos, "True until the command is put in service again.")
      .ZUMA_LECTURE(Atteinte, "The value has reached the device, as far as its link can tell.")
      .ZUMA_LECTURE(SortieSaturée, "The value reached a working limit.")
      .ZUMA_PROPRIETE(FréquenceDither, "Frequency of the dither in hertz, 0 for none.")
      .ZUMA_PROPRIETE(AmplitudeDither, "Peak-to-peak amplitude of the dither in units.")
      .ZUMA_PROPRIETE(OffsetServovalve, "Offset of the servo-valve in units.")
      .ZUMA_PROPRIETE(PenteOffsetServovalve, "Its slope, in units per unit of pressure.")
      .Méthode(
          "TesteAU", Genre::Bref,
          [](Commande& c, const py::list& causes) {
            SurDesCauses(causes, [&](auto textes) { c.TesteAU(textes); });
          },
          "TableAUs"_a, "A command raises no cause.")
      .Méthode(
          "Journal", Genre::Bref,
          [](Commande& c, const std::optional<py::function>& f) {
            c.Journal(f ? Rappel<const servo::Relevé&>(*f) : Commande::JournalServo());
          },
          "journal"_a, "Hears of each refresh of a servo command; None ends it.");
}

void LieLesLimites(Classe<Commande>& classe) {
  classe.ZUMA_LECTURE(ValeurInitiale, "Value in units to which a stop drives the output.")
      .ZUMA_LECTURE(MiniCommande, "Lower working limit in units.")
      .ZUMA_LECTURE(MaxiCommande, "Upper working limit in units.")
      .ZUMA_LECTURE(SécuritéMiniEnPoints, "Lower safety limit in points, the last clamp.")
      .ZUMA_LECTURE(SécuritéMaxiEnPoints, "Upper safety limit in points, the last clamp.")
      .ZUMA_LECTURE(SécuritéMiniEnUnité, "Lower safety limit in units.")
      .ZUMA_LECTURE(SécuritéMaxiEnUnité, "Upper safety limit in units.");
}

void LieLEtalonnage(Classe<Commande>& classe) {
  classe.ZUMA_LECTURE(UnitéEtalonnage, "Unit of the value and of its limits.")
      .ZUMA_LECTURE(CommentaireEtalonnage, "Remark of the calibration, of the row.")
      .ZUMA_PROPRIETE(NomEtalonneur, "Who calibrated it.")
      .ZUMA_PROPRIETE(DateEtalonnage, "When it was calibrated, a text.")
      .Lecture(
          "MaxPoints", [](Commande&) { return Commande::MaxPoints(); },
          "Rows of the calibration table.")
      .Méthode(
          "PointX", Genre::Bref, [](Commande& c, std::int16_t i) { return c.PointX(i); },
          "intIndex"_a, "Unit value of point 0 to 20; outside, failure 9.")
      .Méthode(
          "PointX", Genre::Bref,
          [](Commande& c, std::int16_t i, const Valeur& unités) { c.PointX(i, unités); },
          "intIndex"_a, "unités"_a)
      .Méthode(
          "PointY", Genre::Bref, [](Commande& c, std::int16_t i) { return c.PointY(i); },
          "intIndex"_a, "Point value of point 0 to 20; outside, failure 9.")
      .Méthode(
          "PointY", Genre::Bref,
          [](Commande& c, std::int16_t i, double points) { c.PointY(i, points); }, "intIndex"_a,
          "points"_a)
      .Méthode(
          "EtalonnageExterieur", Genre::Long,
          [](Commande& c, FenêtreHôte* mère) { return c.EtalonnageExterieur(mère); },
          "FeuilleMere_obj"_a = py::none(), "Opens the calibration form of a copying command.")
      .ZUMA_FAIT(ResetFeuilleEtalonnage, Long, "Forgets the calibration form.")
      .ZUMA_LECTURE(ModeEdition, "True while a calibration form exists.");
}

void LieLaVie(Classe<Commande>& classe) {
  classe
      .Méthode(
          "ParamètresDepuisBD", Genre::Bref,
          [](Commande& c, const Ref<Recordset>& r) { c.ParamètresDepuisBD(r); },
          "rstMonRecordSet"_a, "Reads the command's row.")
      .Méthode(
          "Lien", Genre::Long,
          [](Commande& c, const Désigné<Chassis>& chassis, const ParamètresRef& paramètres,
             const Ref<ZED_Traduction>& traducteur) {
            c.Lien(chassis.objet, paramètres, traducteur);
          },
          "MonZuma_obj"_a, "MesParametres_mobj"_a = ParamètresRef(),
          "Traducteur_obj"_a = Ref<ZED_Traduction>(),
          "Resolves channel, sensors, logic outputs and parameter.")
      .ZUMA_FAIT(MiseàJourDesLiens, Bref, "Does nothing: Lien has resolved all.")
      .ZUMA_FAIT(Initialise, Marche, "Takes limits and initial value of the row.")
      .ZUMA_FAIT(MetàJour, Marche, "Computes the output and writes it, or reads it back.")
      .Méthode(
          "AutoSave", Genre::Long, [](Commande& c, const std::string& Ou) { c.AutoSave(Ou); },
          "Ou"_a, "Appends the command's part of the diagnostic dump to a text file.");
}

}  // namespace

void LieLesCommandes(py::module_& m) {
  Classe<Commande> classe(m, "Commande", "One output of the frame in engineering units.");
  LieLIdentité(classe);
  LieLaSortie(classe);
  LieLesLimites(classe);
  LieLEtalonnage(classe);
  LieLaVie(classe);
}

}  // namespace zuma::python::modele
