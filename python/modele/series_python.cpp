// Serial links of boards and blocks. Bytes are bytes.
#include <optional>

#include "modele/liaisons.h"
#include "modele/tables.h"
#include "platform/liaison_serie.h"

namespace py = pybind11;
using namespace py::literals;

namespace zuma::python::modele {
namespace {

void LieLaLiaison(py::module_& m) {
  using SoiMême = ZED_LiaisonSerie;
  Classe<ZED_LiaisonSerie>(m, "ZED_LiaisonSerie",
                           "Serial link whose settings are written one by one before OuvrePort.")
      .Ecriture<std::int32_t>(
          "PortSérie", [](SoiMême& l, std::int32_t v) { l.PortSérie(v); }, "Port number, from 1.")
      .ZUMA_PROPRIETE(VitesseSérie, "Rate in bauds.")
      .Ecriture<std::int32_t>(
          "ParitéSérie", [](SoiMême& l, std::int32_t v) { l.ParitéSérie(v); },
          "0 none, 1 odd, 2 even, 3 mark, 4 space.")
      .Ecriture<std::int32_t>(
          "BitsDeDonnées", [](SoiMême& l, std::int32_t v) { l.BitsDeDonnées(v); }, "4 to 8.")
      .Ecriture<std::int32_t>(
          "BitsDeStop", [](SoiMême& l, std::int32_t v) { l.BitsDeStop(v); },
          "1, 15 (one and a half) or 2.")
      .ZUMA_LECTURE(EtatPort, "1 when the port is open.")
      .ZUMA_FAIT(OuvrePort, Marche, "Opens; a missing or busy port is a failure.")
      .ZUMA_FAIT(FermePort, Long, "Closes; nothing on a closed port.")
      .Méthode(
          "LitTampon", Genre::Bref,
          [](SoiMême& l, std::optional<std::int32_t> nombre) {
            return py::bytes(l.LitTampon(nombre));
          },
          "nombre"_a = py::none(), "What was received so far, removed from the buffer.")
      .Méthode(
          "EcritPort", Genre::Geste,
          [](SoiMême& l, const py::bytes& octets) { l.EcritPort(std::string(octets)); }, "octets"_a,
          "Sends the bytes; a port that is closed or gone is a failure.")
      .ZUMA_LECTURE(OctetsReçus, "Bytes waiting in the input buffer.");
}

void LieLePort(py::module_& m) {
  using SoiMême = PortInstrument;
  Classe<PortInstrument>(m, "PortInstrument",
                         "Serial port of an instrument, set up from one text. Nothing here fails.")
      .ZUMA_PROPRIETE(PortOuvert, "Opens or closes; settings not understood open nothing.")
      .Méthode(
          "ConfigurePort", Genre::Marche,
          [](SoiMême& p, const std::string& réglages, bool ouvrir) {
            p.ConfigurePort(réglages, ouvrir);
          },
          "réglages"_a, "ouvrir"_a, "Takes \"3,9600,N,8,1\"; opens when asked.")
      .ZUMA_LECTURE(PortExiste, "The machine has the device now.")
      .ZUMA_LECTURE(PortConfiguré, "The last settings were understood, and the port opened.")
      .ZUMA_LECTURE(OctetsEnAttente, "Bytes in the input buffer; 0 on a closed port.")
      .Méthode(
          "LitEntrée", Genre::Bref,
          [](SoiMême& p, std::optional<std::int32_t> nombre) {
            return py::bytes(p.LitEntrée(nombre));
          },
          "nombre"_a = py::none(), "What was received so far, removed from the buffer.")
      .Méthode(
          "EcritSortie", Genre::Geste,
          [](SoiMême& p, const py::bytes& octets) { p.EcritSortie(std::string(octets)); },
          "octets"_a, "Sends the bytes; lost without a word on a closed port.")
      .ZUMA_FAIT(RéinitialisePort, Marche, "Drops what waits; tries a port that is not open.")
      .ZUMA_LECTURE(NuméroPort, "Number of the port, from 1; 0 when named by its device.")
      .ZUMA_LECTURE(Vitesse, "Rate in bauds.")
      .ZUMA_LECTURE(Parité, "Letter of the parity.")
      .ZUMA_LECTURE(BitsDonnées, "Data bits, 5 to 8.")
      .ZUMA_LECTURE(BitsArrêt, "Stop bits as text.")
      .ZUMA_LECTURE(ListePorts, "Names of the ports that a form may offer.");
}

}  // namespace

void LieLesLiaisons(py::module_& m) {
  LieLaLiaison(m);
  LieLePort(m);
}

}  // namespace zuma::python::modele
