// Boards, blocks and channels.
#include "modele/liaisons.h"
#include "modele/tables.h"
#include "tree/carte.h"

namespace py = pybind11;
using namespace py::literals;

namespace zuma::python::modele {
namespace {

// Parents that only their collection holds: Python asks each time whether they are still there.
template <class T>
Désigné<T> Suivi(T* objet) {
  if (objet == nullptr) return {};
  return {objet, [suivi = PointeurSuivi<T>(objet)] { return suivi.Brut() != nullptr; }};
}

void LieLaCarte(py::module_& m) {
  using SoiMême = Carte;
  Classe<Carte>(m, "Carte",
                "One I/O board, bus or instrument: all that one address or line reaches.")
      .Méthode(
          "AutoSave", Genre::Long, [](Carte& c, const std::string& Ou) { c.AutoSave(Ou); }, "Ou"_a,
          "Appends the board's block of the diagnostic dump to a text file.")
      .ZUMA_FAIT(DéclencheAU, Marche, "Has the next writes reach the board, whatever it holds.")
      .ZUMA_LECTURE(Driver_enm, "Driver of the board, of its row.")
      .Lecture(
          "LeDriver", [](SoiMême& o) { return &o.LeDriver(); }, "Row of that driver.")
      .Méthode(
          "Lien", Genre::Bref, [](Carte& c, const ParamètresRef& p) { c.Lien(p); },
          "MesParametres_obj"_a = ParamètresRef(),
          "Finds the parameter that \"Config EIR\" names for a laser board.")
      .Méthode(
          "ChargeLesFonctions", Genre::Long,
          [](Carte& c, const Ref<BaseDeDonnées>& base, std::int32_t index) {
            c.ChargeLesFonctions(base, index);
          },
          "dtbMaBase"_a, "lngIndexDeLaCarte"_a, "Makes and reads the blocks of the board.")
      .ZUMA_PROPRIETE(NomDeLaCarte, "Name of the board, of its row.")
      .Méthode(
          "ParamètresDepuisBD", Genre::Bref,
          [](Carte& c, const Ref<Recordset>& r) { c.ParamètresDepuisBD(r); }, "rstMonRecordSet"_a,
          "Reads the board's row.")
      .ZUMA_PROPRIETE(Adresse, "Port address, or the handle that the board's library returned.")
      .ZUMA_PROPRIETE(Fonctions, "Blocks of the board.")
      .ZUMA_PROPRIETE(FonctionSuivante, "Turn mark of a bus board; None at start.")
      .ZUMA_FAIT(MetàJour, Marche, "Exchanges with the board at once, whatever the rates.")
      .ZUMA_FAIT(Initialise, Marche, "Opens the board's link, then starts each block.")
      .ZUMA_LECTURE(Service, "How the pass serves the board.")
      .ZUMA_LECTURE(Attente, "How long a refresh may make its caller wait.")
      .ZUMA_LECTURE(RS, "Serial link of the board, made on first access.")
      .ZUMA_FAIT(OuvreLigneSérie, Marche, "Opens the board's serial link with its settings.")
      .ZUMA_LECTURE(Configuration, "Settings text of its line or instrument, of the row.")
      .ZUMA_LECTURE(TimeOutModbus, "Time of a Modbus slave for its answer, milliseconds.")
      .Méthode(
          "EnregistreConfiguration", Genre::Long,
          [](Carte& c, const std::string& réglages) { c.EnregistreConfiguration(réglages); },
          "réglages"_a, "Keeps the settings of an instrument, in its row too.")
      .ZUMA_LECTURE(LiaisonSerie2, "Second serial interface of the board, made on first access.")
      .ZUMA_LECTURE(ParamètreEIR, "Parameter that \"Config EIR\" names; None without.")
      .ZUMA_LECTURE(ConsigneRampe, "Ramp of the drive's set point, in tenths of the unit.");
}

void LieLaFonction(py::module_& m) {
  using SoiMême = Fonction;
  Classe<Fonction>(m, "Fonction", "One block of a board: like channels behind one driver.")
      .ZUMA_LECTURE(CanalErreurModbus,
                    "Channel -1, error indicator of a Modbus link; None without.")
      .ZUMA_LECTURE(Driver_enm, "Driver of the block, of its row.")
      .Lecture(
          "LeDriver", [](SoiMême& o) { return &o.LeDriver(); }, "Row of that driver.")
      .ZUMA_FAIT(Décharge, Long, "Closes what must be closed before the frame is released.")
      .Méthode(
          "AutoSave", Genre::Long, [](Fonction& f, const std::string& Ou) { f.AutoSave(Ou); },
          "Ou"_a, "Appends the block's part of the diagnostic dump to a text file.")
      .ZUMA_FAIT(DéclencheAU, Marche, "Hands the call to each channel, in order.")
      .ZUMA_FAIT(Lien, Bref, "Nothing to resolve.")
      .ZUMA_PROPRIETE(Canals, "Channels of the block.")
      .Méthode(
          "ChargeLesCanaux", Genre::Long,
          [](Fonction& f, const Ref<BaseDeDonnées>& base, std::int32_t index) {
            f.ChargeLesCanaux(base, index);
          },
          "dtbMaBase"_a, "lngIndexDeLaFonction"_a, "Makes and reads the channels.")
      .Propriété(
          "Parent", [](Fonction& f) { return Suivi(f.Parent()); },
          [](Fonction& f, const Désigné<Carte>& carte) { f.Parent(carte.objet); },
          "The board, as long as there is one.")
      .ZUMA_LECTURE(TypeDeFonction, "Kind of its channels.")
      .ZUMA_PROPRIETE(Adresse, "Base address, handed to every channel.")
      .ZUMA_LECTURE(NombreDeCanaux, "Number of channels that the row tells.")
      .ZUMA_LECTURE(NomDeLaFonction, "Name of the block, of its row.")
      .ZUMA_FAIT(Initialise, Marche, "Opens the hardware link and starts each channel.")
      .ZUMA_FAIT(MetàJour, Marche, "The block's exchange with the hardware.")
      .Méthode(
          "ParamètresDepuisBD", Genre::Bref,
          [](Fonction& f, const Ref<Recordset>& r) { f.ParamètresDepuisBD(r); },
          "rstMonRecordSet"_a, "Reads the block's row; behind ChargeLesCanaux.")
      .ZUMA_PROPRIETE(RS, "Serial link of the block; None until given or opened.")
      .ZUMA_PROPRIETE(Enabled, "False takes the block out of service, for good.")
      .ZUMA_PROPRIETE(RafraichissementEnCours, "A request is on the wire.")
      .ZUMA_LECTURE(ModbusAdresse, "Address of its Modbus slave, 1 to 247.")
      .ZUMA_LECTURE(ModbusFonction, "Modbus function by which it exchanges.")
      .ZUMA_LECTURE(ModbusRegistreDeDepart, "First Modbus register or coil, from 0.")
      .ZUMA_FAIT(SurveilleSesLectures, Bref, "Tells of readings that are old, and new again.")
      .ZUMA_LECTURE(MAJParFonction, "One read for the whole block, else channel by channel.")
      .ZUMA_LECTURE(NbLecture, "The largest NbLecture of the channels, since Initialise.")
      .ZUMA_LECTURE(PortCAN, "Port of the CAN card, of the row.")
      .ZUMA_LECTURE(VitesseCAN, "Kilobits per second.")
      .ZUMA_LECTURE(ModeCAN, "\"11 bits\" or \"29 bits\".")
      .Lecture(
          "LaCarte", [](Fonction& f) { return Suivi(f.LaCarte()); },
          "The board; its absence is a failure (91).");
}

void LieLeCanal(py::module_& m) {
  using SoiMême = Canal;
  Classe<Canal>(m, "Canal", "One hardware channel of a block, in points.")
      .Méthode(
          "AutoSave", Genre::Long, [](Canal& c, const std::string& Ou) { c.AutoSave(Ou); }, "Ou"_a,
          "Appends the channel's part of the diagnostic dump to a text file.")
      .ZUMA_FAIT(DéclencheAU, Bref, "A channel alone has nothing to cut.")
      .ZUMA_FAIT(Lien, Bref, "Nothing to resolve.")
      .Méthode(
          "ParamètresDepuisBD", Genre::Bref,
          [](Canal& c, const Ref<Recordset>& r) { c.ParamètresDepuisBD(r); }, "rstMonRecordSet"_a,
          "Reads the channel's row, at the current record.")
      .Propriété(
          "Gain", [](Canal& c) { return Valeur(std::int32_t{c.Gain()}); },
          [](Canal& c, const Valeur& gain) { c.Gain(gain); }, "Gain code of the channel.")
      .ZUMA_LECTURE(Nom, "Name of the channel, of its row.")
      .ZUMA_FAIT(Initialise, Marche, "Starts the channel on its board.")
      .ZUMA_FAIT(MetàJour, Marche, "Exchanges the value with the board.")
      .ZUMA_PROPRIETE(
          ValeurCanal,
          "Value in points: 65536 for the full scale of an analog channel, -1 or 0 for a "
          "logic one. Written, it waits for the next MetàJour.")
      .Méthode(
          "TientValeurCanal", Genre::Bref, [](Canal& c, double v) { c.TientValeurCanal(v); },
          "points"_a, "The same for a value that is not of now: it keeps its age.")
      .ZUMA_LECTURE(Age, "Seconds since the value was last read or written.")
      .ZUMA_LECTURE(AgeLimite, "Age beyond which a reading is old, seconds.")
      .ZUMA_LECTURE(EstVieux, "The reading is older than its device leaves it when all is well.")
      .Méthode(
          "Regarde", Genre::Bref,
          [](Canal& c) {
            double durée = 0;
            const Canal::Suite suite = c.Regarde(durée);
            return std::pair(suite, durée);
          },
          "What has become of the readings since the last look, and the seconds without one.")
      .ZUMA_LECTURE(EstLu, "False while the value is still the 0 of before the first reading.")
      .ZUMA_LECTURE(Atteint, "The value has reached the device, as far as the link can tell.")
      .Propriété(
          "Parent", [](Canal& c) { return Suivi(c.Parent()); },
          [](Canal& c, const Désigné<Fonction>& f) { c.Parent(f.objet); },
          "The block, as long as there is one.")
      .ZUMA_PROPRIETE(NbLecture, "Conversions averaged by one channel read.")
      .ZUMA_LECTURE(PositionID, "Identifier of a ruler's position message.")
      .ZUMA_PROPRIETE(Adresse, "Base address of its board.")
      .ZUMA_PROPRIETE(HandlePort, "Handle of the CAN port behind the channel.")
      .ZUMA_PROPRIETE(Driver, "Driver of the channel; of its row, else that of its block.")
      .Lecture(
          "LeDriver", [](SoiMême& o) { return &o.LeDriver(); }, "Row of that driver.")
      .ZUMA_PROPRIETE(TypeCanal, "Kind of the channel, that of its block.")
      .ZUMA_LECTURE(NuméroCanal, "Place of the channel on its board.")
      .ZUMA_LECTURE(CanalRafraichit, "True once a value was written or read.")
      .ZUMA_LECTURE(NuméroDeSérie, "Hexadecimal serial number of the device behind the channel.")
      .ZUMA_PROPRIETE(NuméroDeNoeud, "Node of the device on its bus.")
      .ZUMA_LECTURE(ModeOpératoire, "Mode that a ruler is told at its start.")
      .ZUMA_LECTURE(NombreDAimants, "Magnets on the ruler.")
      .ZUMA_LECTURE(PositionDeLAimant, "Which of the magnets this channel reads.")
      .ZUMA_LECTURE(StatusID, "Identifier of a ruler's status message.")
      .ZUMA_LECTURE(EnFréquence, "This analog output is a frequency output.")
      .ZUMA_LECTURE(RegistreSigné, "The words of this Modbus input have a sign.")
      .ZUMA_PROPRIETE(EnService, "False makes MetàJour do nothing; the value stays.");
}

}  // namespace

void LieLArbre(py::module_& m) {
  LieLeCanal(m);
  LieLaFonction(m);
  LieLaCarte(m);
}

}  // namespace zuma::python::modele
