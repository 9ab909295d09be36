#pragma once

#include <filesystem>
#include <string>

#include "platform/linux/bibliotheques_absentes.h"
#include "platform/linux/can_socketcan.h"
#include "platform/linux/clavier_evdev.h"
#include "platform/linux/compteurs_linux.h"
#include "platform/linux/fichiers_linux.h"
#include "platform/linux/fin_du_programme.h"
#include "platform/linux/ftdi_usb.h"
#include "platform/linux/horloge_systeme.h"
#include "platform/linux/liaison_serie_linux.h"
#include "platform/linux/messages_terminal.h"
#include "platform/linux/parametres.h"
#include "platform/linux/pci_comedi.h"
#include "platform/linux/ports_linux.h"
#include "platform/linux/registre_erreurs.h"
#include "platform/linux/securite.h"
#include "platform/linux/traducteur.h"
#include "platform/plateforme.h"

namespace zuma::linux_ {

/// Where the installation's files lie when the host does not say: zuma/fichiers under
/// $XDG_STATE_HOME, else under ~/.local/state, else under the present folder.
[[nodiscard]] std::filesystem::path DossierParDéfaut();

/// What a host chooses; each default works as it stands.
struct RéglagesLinux {
  std::filesystem::path dossier = DossierParDéfaut();  ///< where the installation's files lie
  RéglagesRegistre registre;                           ///< in memory only by default
  CarteDesPorts portsSérie;                            ///< devices of the serial ports by number
  InterfacesCAN interfacesCAN;                         ///< network interfaces of the CAN ports
  bool demande = false;  ///< messages wait for an answer when there is a terminal
  DispositionClavier clavier = DispositionClavier::Azerty;  ///< what is printed on the keys
  Ref<RegistreDesDrivers> drivers;                          ///< those that a frame may name
  std::string langue;  ///< empty: the first language of the table
  Réglages réglages;   ///< settings of the installation
};

/// Everything that a frame needs of a Linux machine, and the collaborators of a host that brings
/// none of its own; USB drives (`ftdi`) are left to the host. To be made before the frames it
/// serves and released after them.
///
///     PlateformeLinux machine({.drivers = CréeLesDrivers()});
///     Chassis chassis(machine.services);
///     machine.securite->Branche(chassis, machine.registre);
class PlateformeLinux {
 public:
  /// Fails with 5 when the language is not known.
  explicit PlateformeLinux(RéglagesLinux choix);
  PlateformeLinux(const PlateformeLinux&) = delete;
  PlateformeLinux& operator=(const PlateformeLinux&) = delete;

  Ref<Minuterie> timer = Crée<Minuterie>();         ///< timer of the frame
  Ref<RegistreErreurs> registre;                    ///< error record of the frame
  Ref<Traducteur> traducteur = Crée<Traducteur>();  ///< translator of the frame
  Parametres parametres;                            ///< shared parameters of the frame

  ///@{
  /// The adapters that `services` points at.
  HorlogeSystème horloge;
  MessagesTerminal messages;
  PortsLinux ports;
  CompteursLinux compteurs;
  FabriqueLiaisonsLinux liaisons;
  CanSocketCAN can;
  OrbitAbsent orbit;
  SpiderAbsent spider;
  FichiersLinux fichiers;
  FinDuProgrammeLinux fin;
  ClavierEvdev clavier;
  FtdiUsb ftdi;
  PciComedi pci;
  ///@}
  Ref<Securite> securite;  ///< safety object of the frame

  /// What `Chassis` takes.
  Plateforme services;
};

}  // namespace zuma::linux_
