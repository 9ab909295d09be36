#pragma once

#include "tree/fonction.h"

/// Listening to instruments that share one serial line with a block.
namespace zuma::ecoute_serie {

/// Makes the block's own line, when it has none yet, and opens it with the block's settings.
void OuvreLaLigne(Fonction& bloc);

/// Appends what came in to `tampon`. A line that fails is closed, so that it is opened anew later,
/// and the failure goes on; a closed line brings nothing.
void Relève(ZED_LiaisonSerie& ligne, Octets& tampon);

/// Closes the line and opens it again.
void Rouvre(ZED_LiaisonSerie& ligne);

}  // namespace zuma::ecoute_serie
