#pragma once

#include "core/chassis.h"
#include "host/desktop/textes.h"
#include "platform/fenetres.h"

class QMenu;

namespace zuma::host {

/// Lists the boards; one with a maintenance form opens it as a child of `mère`.
void RemplitLeMenuDesCartes(QMenu& menu, Chassis& chassis, const Textes& textes, FenêtreHôte& mère);

}  // namespace zuma::host
