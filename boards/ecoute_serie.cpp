#include "boards/ecoute_serie.h"

namespace zuma::ecoute_serie {

void OuvreLaLigne(Fonction& bloc) {
  if (!bloc.RS()) bloc.RS(bloc.LaPlateforme().liaisons->CréeLiaison());
  const LiaisonSérieRef ligne = bloc.RS();
  const RéglagesLigne réglages = bloc.LigneSérie();
  if (ligne->EtatPort() == 1) ligne->FermePort();
  ligne->BitsDeStop(réglages.bitsDeStop);
  ligne->BitsDeDonnées(réglages.bitsDeDonnées);
  ligne->ParitéSérie(réglages.parité);
  ligne->PortSérie(réglages.port);
  ligne->VitesseSérie(réglages.vitesse);
  ligne->OuvrePort();
}

void Relève(ZED_LiaisonSerie& ligne, Octets& tampon) {
  if (ligne.EtatPort() != 1) return;
  try {
    tampon += ligne.LitTampon();
  } catch (...) {
    ligne.FermePort();
    throw;
  }
}

void Rouvre(ZED_LiaisonSerie& ligne) {
  ligne.FermePort();
  ligne.OuvrePort();
}

}  // namespace zuma::ecoute_serie
