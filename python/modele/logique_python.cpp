// Logic inputs and outputs, and the watchdog.
#include "core/chassis.h"
#include "logic/wdt_01.h"
#include "modele/causes.h"
#include "modele/liaisons.h"
#include "modele/plateforme.h"
#include "modele/rappels.h"
#include "modele/tables.h"

namespace py = pybind11;
using namespace py::literals;

namespace zuma::python::modele {
namespace {

// The link that all three have.
template <class T>
void LieLesLiens(Classe<T>& classe) {
  using SoiMême = T;
  classe
      .Méthode(
          "ParamètresDepuisBD", Genre::Bref,
          [](T& o, const Ref<Recordset>& r) { o.ParamètresDepuisBD(r); }, "rstMonRecordSet"_a,
          "Reads the object's row.")
      .Méthode(
          "Lien", Genre::Long,
          [](T& o, const Ref<ZED_Securite>& sécurité, const ParamètresRef& paramètres,
             const Ref<ZED_Traduction>& traducteur, const Désigné<Chassis>& chassis) {
            o.Lien(sécurité, paramètres, traducteur, chassis.objet);
          },
          "MaSecurite_obj"_a = Ref<ZED_Securite>(), "MesParametres_mobj"_a = ParamètresRef(),
          "Traducteur_obj"_a = Ref<ZED_Traduction>(), "MonChassis"_a = py::none(),
          "Resolves the references of the row.")
      .ZUMA_FAIT(MiseàJourDesLiens, Bref, "Does nothing: Lien has resolved all.")
      .ZUMA_FAIT(Initialise, Marche, "Prepares the first refresh.")
      .ZUMA_FAIT(MetàJour, Marche, "One refresh, of this object alone.")
      .Méthode(
          "AutoSave", Genre::Long, [](T& o, const std::string& Ou) { o.AutoSave(Ou); }, "Ou"_a,
          "Appends the object's part of the diagnostic dump to a text file.");
}

template <class T>
void LieTesteAU(Classe<T>& classe) {
  classe.Méthode(
      "TesteAU", Genre::Bref,
      [](T& o, const py::list& causes) {
        SurDesCauses(causes, [&](auto textes) { o.TesteAU(textes); });
      },
      "TableAUs"_a, "Leaves the list as it is.");
}

void LieLEntrée(py::module_& m) {
  using SoiMême = EntréeLogique;
  Classe<EntréeLogique> classe(m, "EntréeLogique", "One named on/off input of the frame.");
  classe.ZUMA_PROPRIETE(NomDeEntréeLogique, "Name of the input, of the row.")
      .ZUMA_PROPRIETE(Label, "Name by which others refer to it; \"\" when it has none.")
      .ZUMA_PROPRIETE(ValeurCourante,
                      "Filtered state, or the forced one. Written, it is the state of an input "
                      "without a channel; nothing on another.")
      .ZUMA_LECTURE(Canal, "Source channel; an empty one is made where the row names none.")
      .ZUMA_LECTURE(Touche, "Name of the key, empty for none.")
      .ZUMA_FAIT(AutoriseAU, Bref, "Lets the input ask for the stop, when its row says so.")
      .ZUMA_FAIT(InterditAU, Bref, "Keeps the input from asking for the stop.")
      .ZUMA_FAIT(DéclencheAU, Bref, "An input has nothing to cut.")
      .ZUMA_FAIT(ForceON, Bref, "Shows the input active; filter and stop go on.")
      .ZUMA_FAIT(ForceOFF, Bref, "Shows the input inactive; filter and stop go on.")
      .ZUMA_FAIT(LibereEntreeLogique, Bref, "Ends the forcing.")
      .Méthode(
          "AbonneChange", Genre::Bref,
          [](EntréeLogique& e, py::function f) {
            return e.AbonneChange(Rappel<ENUM_ETAT_LOGIQUE>(std::move(f)));
          },
          "f"_a, "Registers f(state) and returns its number, for DésabonneChange.")
      .Méthode(
          "DésabonneChange", Genre::Bref,
          [](EntréeLogique& e, int numéro) { e.DésabonneChange(numéro); }, "numéro"_a,
          "Removes a handler; nothing on a number that is not there.");
  classe.Brute().def(
      "Change",
      [](PoignéeDe<EntréeLogique>& soi, py::function f) {
        return AbonneÀ(soi, "EntréeLogique.Change", &EntréeLogique::AbonneChange,
                       &EntréeLogique::DésabonneChange, Rappel<ENUM_ETAT_LOGIQUE>(std::move(f)));
      },
      "f"_a, "Event: calls f(state) when the state changes, until the subscription ends.");
  LieTesteAU(classe);
  LieLesLiens(classe);
}

void LieLaSortie(py::module_& m) {
  using SoiMême = SortieLogique;
  Classe<SortieLogique> classe(m, "SortieLogique", "One named on/off output of the frame.");
  classe.ZUMA_PROPRIETE(NomDeLaSortieLogique, "Name of the output, of the row.")
      .ZUMA_PROPRIETE(Label, "Name by which others refer to it; \"\" when it has none.")
      .ZUMA_PROPRIETE(ValeurCourante,
                      "State that it was given last. Written, it drives the board at once.",
                      Genre::Geste)
      .ZUMA_LECTURE(Canal, "The channel that it writes; None when the row names none.")
      .ZUMA_LECTURE(Atteinte, "The state has reached the device, as far as its link can tell.")
      .ZUMA_FAIT(DéclencheAU, Marche, "Puts the output at rest.");
  LieTesteAU(classe);
  LieLesLiens(classe);
}

void LieLeWatchdog(py::module_& m) {
  using SoiMême = Watchdog;
  Classe<Watchdog> classe(
      m, "Watchdog",
      "Proof to the hardware that the control program is alive. Operations wait "
      "for a board that is not ready; MetàJour does not.");
  classe.ZUMA_FAIT(DéclencheAU, Marche, "Arms the board to trip in 10 ms; latched until Réarme.")
      .ZUMA_FAIT(Réarme, Marche, "Clears the latch and leaves the board stopped.")
      .ZUMA_PROPRIETE(Adresse, "Base port of the board; 0 for no board.")
      .ZUMA_PROPRIETE(Enabled, "Arms or stops the board; after a stop only kept.", Genre::Marche)
      .ZUMA_LECTURE(EnArrêt, "True from a stop until Réarme.")
      .ZUMA_LECTURE(ArrêtAtteint, "False while a stop has not reached the board.")
      .ZUMA_LECTURE(CartePrête, "False while the board would make its caller wait.")
      .ZUMA_LECTURE(SortiePulse, "The channel that it toggles; None for a board.")
      .ZUMA_PROPRIETE(Temps, "Time-out of the board in seconds; 0 for none.", Genre::Marche);
  LieLesLiens(classe);
}

// A board WDT 01 by itself, as the functions of its module take it.
struct CarteWDT {
  std::shared_ptr<Laisse> laisse;
  std::shared_ptr<Watchdog> objet;  // in whose name a silent board is told
  Ref<ZED_Timer> timer;
  std::uint16_t base;

  [[nodiscard]] wdt_01::Liaison Liaison() const {
    return {*objet->LaPlateforme().ports, *timer, *objet, base};
  }
};

std::unique_ptr<CarteWDT> CréeLaCarte(PlateformeTenue& plateforme, const Ref<ZED_Timer>& timer,
                                      std::uint16_t base) {
  if (!timer) throw Echec::ObjetAbsent();
  auto objet = std::make_shared<Watchdog>(plateforme.LaMachinerie()->services);
  return std::make_unique<CarteWDT>(plateforme.LaLaisse(), std::move(objet), timer, base);
}

template <class R, class... A>
auto Opération(const char* source, R (*f)(const wdt_01::Liaison&, A...)) {
  return [source, f](CarteWDT& carte, std::decay_t<A>... arguments) {
    return Appelle(carte.laisse, source, Genre::Long,
                   [&] { return f(carte.Liaison(), arguments...); });
  };
}

void LieLaCarteWDT(py::module_& m) {
  py::class_<wdt_01::Etat>(m, "EtatWDT", "Status port of a board WDT 01.")
      .def_readonly("bit0", &wdt_01::Etat::bit0)
      .def_readonly("bit1", &wdt_01::Etat::bit1)
      .def_readonly("bit2", &wdt_01::Etat::bit2)
      .def_readonly("prête", &wdt_01::Etat::prête, "ready for a byte");
  py::class_<CarteWDT> classe(m, "WDT_01",
                              "A watchdog board at a port address, without a frame around it. All "
                              "but WDT_LitEtat wait until the board is ready.");
  classe.def(py::init(&CréeLaCarte), "plateforme"_a, "timer"_a, "base"_a)
      .def("WDT_LitEtat", Opération("WDT_LitEtat", &wdt_01::WDT_LitEtat),
           "Reads the status port; never waits.")
      .def("WDT_EcritOctet", Opération("WDT_EcritOctet", &wdt_01::WDT_EcritOctet), "octet"_a,
           "Writes a byte; False when the board made it wait beyond a second.")
      .def(
          "WDT_EcritLigne",
          [](CarteWDT& c, const std::string& ligne) {
            Opération("WDT_EcritLigne", &wdt_01::WDT_EcritLigne)(c, ligne);
          },
          "ligne"_a, "Writes a line, up to its first carriage return.")
      .def("WDT_Stoppe", Opération("WDT_Stoppe", &wdt_01::WDT_Stoppe),
           "Stops the board: it trips no more.")
      .def("WDT_Arme", Opération("WDT_Arme", &wdt_01::WDT_Arme), "Arms or refreshes the board.")
      .def("WDT_ChargeTemps", Opération("WDT_ChargeTemps", &wdt_01::WDT_ChargeTemps), "secondes"_a,
           "Stops the board and gives it its time, in seconds.")
      .def_static("LigneDuTemps", &wdt_01::LigneDuTemps, "secondes"_a,
                  "The line that gives the board a time.");
}

}  // namespace

void LieLaLogique(py::module_& m) {
  LieLEntrée(m);
  LieLaSortie(m);
  LieLeWatchdog(m);
  LieLaCarteWDT(m);
}

}  // namespace zuma::python::modele
