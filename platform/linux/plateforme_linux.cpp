#include "platform/linux/plateforme_linux.h"

#include <cstdlib>
#include <utility>

#include "tree/journal_modbus.h"

namespace zuma::linux_ {
namespace {

// The folder of the drives' journal must be there before its first line.
void PrépareLesJournaux(const FichiersLinux& fichiers, ZED_Erreur& registre) {
  try {
    fichiers.CréeDossier(kJournalModbus);
  } catch (const Echec& échec) {
    registre.AjouteErreur(échec.Description(), TableVariables(1));
  }
}

}  // namespace

std::filesystem::path DossierParDéfaut() {
  namespace fs = std::filesystem;
  fs::path base;
  if (const char* état = std::getenv("XDG_STATE_HOME"); état != nullptr && *état == '/') {
    base = état;
  } else if (const char* maison = std::getenv("HOME"); maison != nullptr && *maison == '/') {
    base = fs::path(maison) / ".local" / "state";
  }
  return base / "zuma" / "fichiers";
}

PlateformeLinux::PlateformeLinux(RéglagesLinux choix)
    : registre(Crée<RegistreErreurs>(std::move(choix.registre))),
      messages(MessagesTerminal::Standard(choix.demande)),
      ports(registre),
      compteurs(timer),
      liaisons(std::move(choix.portsSérie)),
      can(registre, std::move(choix.interfacesCAN)),
      orbit(registre),
      spider(registre),
      fichiers(std::move(choix.dossier)),
      fin(registre),
      clavier(choix.clavier),
      pci(registre),
      securite(Crée<Securite>(timer, &horloge)) {
  services.messages = &messages;
  services.ports = &ports;
  services.compteurs = &compteurs;
  services.liaisons = &liaisons;
  services.can = &can;
  services.orbit = &orbit;
  services.spider = &spider;
  services.horloge = &horloge;
  services.fichiers = &fichiers;
  services.fin = &fin;
  services.clavier = &clavier;
  services.ftdi = &ftdi;
  services.pci = &pci;
  services.drivers = std::move(choix.drivers);
  services.réglages = choix.réglages;
  if (!choix.langue.empty()) traducteur->LangueCourante(std::move(choix.langue));
  securite->Bornes(*traducteur);
  PrépareLesJournaux(fichiers, *registre);
}

}  // namespace zuma::linux_
