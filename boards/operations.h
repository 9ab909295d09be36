#pragma once

#include "tree/ligne_driver.h"

/// Operations of the boards, one record for each driver value that selects them.
namespace zuma::pilotes {

///@{
/// Logic inputs, logic outputs, analog inputs and analog outputs of the port-mapped boards.
extern const OpérationsPilote kPCL731Entrées;
extern const OpérationsPilote kPCL731Sorties;
extern const OpérationsPilote kPET48EntréesTB24;
extern const OpérationsPilote kPET48EntréesPCLD;
extern const OpérationsPilote kPET48SortiesTB24;
extern const OpérationsPilote kPET48SortiesPCLD;
extern const OpérationsPilote kACL8316Entrées;
extern const OpérationsPilote kACL8316Sorties;
extern const OpérationsPilote kACL8316Analogique;
extern const OpérationsPilote kACL8316SortiesAnalogiques;
extern const OpérationsPilote kA826Entrées;
extern const OpérationsPilote kA826Sorties;
extern const OpérationsPilote kA826Analogique;
extern const OpérationsPilote kA826SortiesAnalogiques;
extern const OpérationsPilote kACL6126Entrées;
extern const OpérationsPilote kACL6126Sorties;
extern const OpérationsPilote kACL6126SortiesAnalogiques;
extern const OpérationsPilote kPCL813Analogique;
extern const OpérationsPilote kACL8113Analogique;
extern const OpérationsPilote kPCL728Sorties;
extern const OpérationsPilote kACL6128Sorties;
///@}

///@{
/// CAN card: rulers of the first generation, block of the second one, and its channels.
extern const OpérationsPilote kPCI7841;
extern const OpérationsPilote kPCI7841B;
extern const OpérationsPilote kRègle1Aimant;
extern const OpérationsPilote kRègle3Aimants3;
extern const OpérationsPilote kRègle3Aimants2_1;
extern const OpérationsPilote kRègleMultimagnet;
///@}

///@{
/// Serial lines whose channels decode what instruments send, and the METRO gauges.
extern const OpérationsPilote kLigneRS232;
extern const OpérationsPilote kBalanceLRPC31;
extern const OpérationsPilote kIndicateurDEXAL;
extern const OpérationsPilote kBalanceJADEVER;
extern const OpérationsPilote kMETRO;
extern const OpérationsPilote kMETRO_MUX;
///@}

///@{
/// PCI boards, encoder board, LVDT network, amplifier read block by block.
extern const OpérationsPilote kPCI9111Entrées;
extern const OpérationsPilote kPCI9111Sorties;
extern const OpérationsPilote kPCI9111Analogique;
extern const OpérationsPilote kPCI9111SortiesAnalogiques;
extern const OpérationsPilote kPCI6208VSorties;
extern const OpérationsPilote kIK121;
extern const OpérationsPilote kOrbit;
extern const OpérationsPilote kSpider8;
///@}

/// Board-level start of the PET 48 DIO family.
extern const OpérationsCarte kPET48Carte;
/// Board-level start of the CAN card's first generation.
extern const OpérationsCarte kPCI7841Carte;
///@{
/// Board-level starts of the PCI boards and of the LVDT network.
extern const OpérationsCarte kPCI9111Carte;
extern const OpérationsCarte kPCI6208VCarte;
extern const OpérationsCarte kOrbitCarte;
///@}
/// Board-level start of a serial line.
extern const OpérationsCarte kRS232Carte;

}  // namespace zuma::pilotes
