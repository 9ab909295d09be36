// The frame. One that Python makes stands on a platform of its own, a copy of the one that it was
// given: by that its objects know to which frame they belong.
#include "base/poursuite.h"
#include "core/chassis.h"
#include "modele/causes.h"
#include "modele/chassis_tenu.h"
#include "modele/liaisons.h"
#include "modele/tables.h"
#include "platform/linux/arret_du_chassis.h"

namespace py = pybind11;
using namespace py::literals;

namespace zuma::python::modele {

ChassisTenu::ChassisTenu(std::shared_ptr<Machinerie> machinerie)
    : machinerie_(std::move(machinerie)),
      données_(machinerie_->données),
      services_(machinerie_->services),
      chassis_(services_) {}

std::unique_ptr<PoignéeDe<Chassis>> ChassisTenu::Crée(const PlateformeTenue& plateforme) {
  const auto tenu = std::make_shared<ChassisTenu>(plateforme.LaMachinerie());
  const auto laisse = std::make_shared<Laisse>(
      tenu->services_, tenu, [brut = tenu.get()](const std::string& c) { brut->Arrête(c); },
      plateforme.LaMachinerie()->passage);
  tenu->laisse_ = laisse;
  laisse->ALaFin([brut = tenu.get()] { brut->Finit(); });
  laisse->Ouvre();
  // The frame ends with the last handle of it, whoever else is held.
  const std::shared_ptr<void> part(tenu.get(), [suivie = std::weak_ptr(laisse)](void*) {
    if (const auto là = suivie.lock()) là->Ferme();
  });
  return std::make_unique<PoignéeDe<Chassis>>(laisse, &tenu->chassis_, part);
}

void ChassisTenu::Arrête(const std::string& cause) {
  Poursuite chacun;
  if (sécurité_) {
    chacun([&] {
      sécurité_->PositionneCauseAU(cause);
      sécurité_->DéclencheSécurité();
    });
  }
  chacun([&] { linux_::ArrêteLeChassis(chassis_); });
  chacun.Termine();
}

// A frame that was loaded and looked at alone may be another program's: nothing of it is touched.
void ChassisTenu::Décharge() {
  if (std::exchange(déchargé_, true)) return;
  const auto laisse = laisse_.lock();
  Poursuite chacun;
  if (laisse && laisse->Touchée()) chacun([&] { linux_::ArrêteLeChassis(chassis_); });
  chacun([&] { chassis_.Décharge(); });
  chacun.Termine();
}

void ChassisTenu::Finit() {
  const py::gil_scoped_release libre;
  Décharge();
}

namespace {

using SoiMême = Chassis;

// The one that Python made; Nothing for a frame of somebody else.
ChassisTenu* DeNous(PoignéeDe<Chassis>& soi) {
  return ChassisTenu::De(soi);
}

void LieLaVie(Classe<Chassis>& classe) {
  classe
      .Méthode(
          "ChargeLeChassis", Genre::Long,
          [](Chassis& c, const Ref<BaseDeDonnées>& base, std::int32_t index) {
            c.ChargeLeChassis(base, index);
          },
          "dtbMaBase"_a, "lngIndexChassis"_a,
          "Builds the frame's tree from the database; only once. What is wrong is told in the "
          "error record.")
      .ZUMA_FAIT(MiseàJourDesLiens, Long, "Lets the objects resolve their references.")
      .ZUMA_FAIT(Initialise, Marche, "Starts boards and objects, once.")
      .ZUMA_FAIT(MetàJour, Passe,
                 "One pass: commands, watchdog, boards, sensors, logic inputs. Never waits. An "
                 "exception of a callback comes out of here, the frame being stopped.")
      .ZUMA_FAIT(ExigeUnRafraîchissement, Bref, "The next pass refreshes, whatever the time.")
      .ZUMA_LECTURE(RafraichissementsEA, "How often the sensors were refreshed.")
      .ZUMA_FAIT(DéclencheAU, Marche,
                 "Puts every output in its safe state at once. What did not get there is told by "
                 "SortiesNonAtteintes.")
      .Méthode(
          "SortiesNonAtteintes", Genre::Bref, [](Chassis& c) { return c.SortiesNonAtteintes(); },
          "Names of commands and logic outputs whose value has not reached their device.")
      .Méthode(
          "ParamètresDepuisBD", Genre::Bref,
          [](Chassis& c, const Ref<Recordset>& r) { c.ParamètresDepuisBD(r); }, "rstMonRecordSet"_a,
          "Reads the labels of the well-known inputs.")
      .Méthode(
          "AutoSave", Genre::Long, [](Chassis& c, const std::string& Ou) { c.AutoSave(Ou); },
          "Ou"_a, "Appends the diagnostic dump of the frame to a text file.")
      .Méthode(
          "TesteAU", Genre::Bref,
          [](Chassis& c, const py::list& causes) {
            SurDesCauses(causes, [&](auto textes) { c.TesteAU(textes); });
          },
          "astrTableAUs"_a, "Does nothing: causes are asked of the sensors.");
}

void LieLArbreDuChassis(Classe<Chassis>& classe) {
  classe.ZUMA_LECTURE(Nom, "Name of the frame's row; empty until it is loaded.")
      .ZUMA_PROPRIETE(Cartes, "The boards, in refresh order.")
      .ZUMA_PROPRIETE(Capteurs, "The sensors; behind Lien in the order of their dependencies.")
      .ZUMA_PROPRIETE(Commandes, "The commands, in refresh order.")
      .ZUMA_PROPRIETE(EntréesLogiques, "The logic inputs, in refresh order.")
      .ZUMA_PROPRIETE(SortiesLogiques, "The logic outputs, in refresh order.")
      .ZUMA_LECTURE(EntréesManuelles, "The manual inputs found by label, at most six.")
      .ZUMA_PROPRIETE(Watchdog, "The watchdog; one that does nothing when there is none.")
      .ZUMA_LECTURE(DépartEssai, "Input that starts a test; None without.")
      .ZUMA_LECTURE(DépartRéarme, "Input that rearms; None without.")
      .ZUMA_LECTURE(AutoManu, "Input that selects automatic or manual; None without.")
      .ZUMA_LECTURE(AU, "Input \"Entrée Armé\"; None without.")
      .ZUMA_LECTURE(LeTimer, "The timer that its pass reads.")
      .ZUMA_PROPRIETE(FréquenceEA, "Rate of the analog inputs in hertz; 0 is never due.")
      .Ecriture<double>(
          "FréquenceSA", [](Chassis& c, double v) { c.FréquenceSA(v); },
          "Rate of the analog outputs in hertz, for the dump.")
      .Ecriture<double>(
          "FréquenceEL", [](Chassis& c, double v) { c.FréquenceEL(v); },
          "Rate of the logic inputs in hertz; 0 is never due.")
      .Ecriture<double>(
          "FréquenceSL", [](Chassis& c, double v) { c.FréquenceSL(v); },
          "Rate of the logic outputs in hertz, for the dump.");
}

void Lie(PoignéeDe<Chassis>& soi, const Ref<BaseDeDonnées>& base, const std::string& nom,
         const Ref<ZED_Securite>& sécurité, const ParamètresRef& paramètres,
         const Ref<ZED_Traduction>& traducteur) {
  Appelle(soi.LaLaisse(), "Chassis.Lien", Genre::Long, [&] {
    if (ChassisTenu* tenu = DeNous(soi)) tenu->Sécurité(sécurité);
    soi.Objet().Lien(base, nom, sécurité, paramètres, traducteur);
  });
}

// At the end of the call the frame is closed, whatever failed.
void Décharge(PoignéeDe<Chassis>& soi) {
  Appelle(soi.LaLaisse(), "Chassis.Décharge", Genre::Long, [&] {
    ChassisTenu* tenu = DeNous(soi);
    if (tenu == nullptr) {
      soi.Objet().Décharge();
      return;
    }
    Poursuite chacun;
    chacun([&] { tenu->Décharge(); });
    const py::gil_scoped_acquire verrou;
    soi.LaLaisse()->Ferme();
    chacun.Termine();
  });
}

void LieLaFin(Classe<Chassis>& classe) {
  classe.Brute()
      .def(py::init(&ChassisTenu::Crée), "plateforme"_a,
           "A frame on that platform, empty. It ends with Décharge, with its `with`, or with the "
           "last reference: its outputs are put to rest by whatever way.")
      .def("Lien", &Lie, "dtbMaBase"_a, "NomDuChassis"_a, "MaSecurite_obj"_a = py::none(),
           "MesParam"_a = py::none(), "Traducteur_obj"_a = py::none(),
           "Links the objects and sorts the sensors. `NomDuChassis` is the frame's index as text.")
      .def("Décharge", &Décharge,
           "Ends a frame of Python: outputs at rest, then closed. Its objects answer no more; a "
           "failure is raised behind that.")
      .def("__enter__", [](py::object soi) { return soi; })
      .def("__exit__", [](PoignéeDe<Chassis>& soi, const py::args&) {
        if (soi.LaLaisse()->Ouverte()) Décharge(soi);
      });
}

template <class F>
auto SurLeChassis(const char* source, Genre genre, F f) {
  return [source, genre, f](PoignéeDe<Chassis>& chassis) {
    return Appelle(chassis.LaLaisse(), source, genre, [&] { return f(chassis.Objet()); });
  };
}

}  // namespace

py::object ChassisEnPython(Chassis& chassis) {
  return py::cast(
      std::make_unique<PoignéeDe<Chassis>>(Laisse::De(chassis.LaPlateforme()), &chassis));
}

void LieLeChassis(py::module_& m) {
  Classe<Chassis> classe(m, "Chassis", "One test frame, and the only object that a host creates.");
  LieLaVie(classe);
  LieLArbreDuChassis(classe);
  LieLaFin(classe);
  m.def("ArrêteLeChassis", SurLeChassis("ArrêteLeChassis", Genre::Marche, &linux_::ArrêteLeChassis),
        "chassis"_a,
        "The stop of a whole frame as a host wants it: outputs first, then the watchdog board.");
  m.def("MaintientLArrêt", SurLeChassis("MaintientLArrêt", Genre::Marche, &linux_::MaintientLArrêt),
        "chassis"_a, "The same outputs again, for a stop that goes on.");
  m.def("ArrêtAtteint", SurLeChassis("ArrêtAtteint", Genre::Bref, &linux_::ArrêtAtteint),
        "chassis"_a, "False while an output does not hold what it was told last.");
}

}  // namespace zuma::python::modele
