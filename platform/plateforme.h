#pragma once

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
  /// Failures of the passes that go on.
  SuiviDesEchecs échecs;
  Pointeur<BoîteDeMessage> messages;
  Pointeur<PortsES> ports;
  Pointeur<CompteursFins> compteurs;
  Pointeur<FabriqueLiaisons> liaisons;
  Pointeur<Horloge> horloge;
  Pointeur<Fichiers> fichiers;
  Pointeur<Clavier> clavier;
  Pointeur<FTD2XX> ftdi;
  Pointeur<BibliothèqueCAN> can;
  Pointeur<BibliothèquePCI> pci;
  Pointeur<RéseauOrbit> orbit;
  Pointeur<BibliothèqueSpider> spider;
  Pointeur<Fenêtres> fenêtres;
  Pointeur<FinDuProgramme> fin;
  /// Drivers that boards, blocks and channels may name (`tree/registre_des_drivers.h`).
  Ref<RegistreDesDrivers> drivers;
  Réglages réglages;
};

}  // namespace zuma
