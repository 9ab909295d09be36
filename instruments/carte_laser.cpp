// The board that holds a laser extensometer.
#include <array>
#include <string>

#include "instruments/instrument.h"
#include "instruments/laser_eir.h"
#include "instruments/liaison_en_port.h"
#include "instruments/operations.h"

namespace zuma::instruments {
namespace {

using enum ENUM_TYPE_FONCTION;

constexpr std::int32_t kDistanceSansParamètre = 1;

// A lost port is told like a silent laser: in both cases the measure is an old one.
double Silence(const LASER_EIR& laser) {
  return Etat(laser.Timeout() || !laser.MaComm()->PortOuvert());
}

constexpr std::array<Voie<LASER_EIR>, 5> kVoies{{
    {FctEntréesAnalogiques, 0, [](const LASER_EIR& laser) { return laser.ReadValue(); }},
    {FctEntréesLogiques, 0, [](const LASER_EIR& laser) { return Etat(laser.LaserState()); }},
    {FctEntréesLogiques, 1, [](const LASER_EIR& laser) { return Etat(laser.EchoState()); }},
    {FctEntréesLogiques, 2, [](const LASER_EIR& laser) { return Etat(laser.ZeroState()); }},
    {FctEntréesLogiques, 3, &Silence},
}};

std::int32_t DistanceCible(const Carte& carte) {
  const Ref<ZED_Parametre>& paramètre = carte.ParamètreEIR();
  if (!paramètre) return kDistanceSansParamètre;
  const std::string texte = paramètre->ValeurParamètre();
  try {
    return VersEntier32(Valeur(texte));
  } catch (const Echec& échec) {
    throw échec.Précisé(" : paramètre '" + paramètre->NomParamètre() + "' = '" + texte +
                        "', la distance de la cible, un nombre, est attendue");
  }
}

void OuvreLaLigne(Carte& carte) {
  try {
    carte.OuvreLigneSérie();
  } catch (const Echec& échec) {
    throw échec.Précisé(
        " ; nouvel essai chaque seconde, mais le laser garde ses propres réglages jusqu'au "
        "prochain démarrage de la carte");
  }
}

// The laser has its line before that is opened: on a port that is missing the start ends there,
// told in the record, and the refresh goes on trying. A laser as new has no exchange in progress,
// for whose end `Initialise` would wait for ever.
void Démarre(Carte& carte) {
  LASER_EIR& laser = Neuf<LASER_EIR>(carte);
  laser.MaComm(Crée<LiaisonEnPort>(carte.RS(), LitRéglages(carte.Configuration())));
  const std::int32_t distance = DistanceCible(carte);
  laser.DistanceCible(distance);  // for a port that comes later
  OuvreLaLigne(carte);
  laser.Initialise(distance);
}

}  // namespace

const OpérationsCarte kLaserEIR{.démarre = &Démarre,
                                .rafraîchit = &RafraîchitEtPublie<LASER_EIR, kVoies>,
                                .lieUnParamètre = true};

}  // namespace zuma::instruments
