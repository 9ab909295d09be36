#include "host/desktop/traducteur_du_chassis.h"

#include "sensors/textes_eprouvette.h"

namespace zuma::host {

std::string TraducteurDuChassis::Traduit(std::string_view clé, std::string_view défaut,
                                         std::string_view section) const {
  const linux_::Traducteur& source = textes_eprouvette::EstUnMot(clé) ? mots_ : textes_;
  return source.Traduit(clé, défaut, section);
}

}  // namespace zuma::host
