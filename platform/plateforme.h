#pragma once

#include <cstdint>

#include "base/ref.h"
#include "base/suivi_des_echecs.h"
#include "platform/can.h"
#include "platform/clavier.h"
#include "platform/fenetres.h"
#include "platform/ftdi.h"
#include "platform/liaison_serie.h"
#include "platform/orbit.h"
#include "platform/pci_dask.h"
#include "platform/reglages.h"
#include "platform/services.h"
#include "platform/spider.h"

namespace zuma {

class RegistreDesDrivers;

/// The services of the machine below the library, grouped once and handed to `Chassis`. They
/// belong to the host and outlive the frame. A service left out is Nothing: an operation that
/// needs it fails with 91 in the error record, everything else works.
struct Plateforme {
  /// Time of the present pass in seconds of the frame's timer, which dates every reading. The frame
  /// sets it, by the one reading that its pass makes anyway.
  double heureDePasse = 0;
  /// Zeros and tares that were asked of sensors or taken back, all together: who looks for them on
  /// each pass looks here first. Goes round.
  std::uint32_t gestes = 0;
  /// Failures of the passes that go on.
  SuiviDesEchecs échecs;
  Pointeur<BoîteDeMessage> messages;    ///< notices to integrator and operator
  Pointeur<PortsES> ports;              ///< I/O ports of the machine
  Pointeur<CompteursFins> compteurs;    ///< fine event counters
  Pointeur<FabriqueLiaisons> liaisons;  ///< serial links
  Pointeur<Horloge> horloge;            ///< time of the day, and sleep
  Pointeur<Fichiers> fichiers;          ///< text files
  Pointeur<Clavier> clavier;            ///< keyboard of the operator
  Pointeur<FTD2XX> ftdi;                ///< USB devices in direct mode
  Pointeur<BibliothèqueCAN> can;        ///< CAN card
  Pointeur<BibliothèquePCI> pci;        ///< PCI boards
  Pointeur<RéseauOrbit> orbit;          ///< LVDT network
  Pointeur<BibliothèqueSpider> spider;  ///< measuring amplifiers
  Pointeur<Fenêtres> fenêtres;          ///< windows of the forms
  Pointeur<FinDuProgramme> fin;         ///< end of the process
  /// Drivers that boards, blocks and channels may name (`tree/registre_des_drivers.h`).
  Ref<RegistreDesDrivers> drivers;
  /// Settings of the installation; set before the frame is loaded.
  Réglages réglages;
};

}  // namespace zuma
