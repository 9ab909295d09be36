#include "host/desktop/traducteur_du_chassis.h"

#include "host/configuration.h"
#include "host/desktop/textes.h"
#include "sensors/textes_eprouvette.h"

namespace zuma::host {

std::string TraducteurDuChassis::Traduit(std::string_view clé, std::string_view défaut,
                                         std::string_view section) const {
  const linux_::Traducteur& source = textes_eprouvette::EstUnMot(clé) ? mots_ : textes_;
  return source.Traduit(clé, défaut, section);
}

Ref<ZED_Traduction> TraducteurEn(const std::string& demandée) {
  auto traducteur = Crée<TraducteurDuChassis>();
  std::string connues;
  for (const std::string& langue : traducteur->Langues()) {
    if (EnQt(langue).startsWith(EnQt(demandée), Qt::CaseInsensitive)) {
      traducteur->LangueCourante(langue);
      return traducteur;
    }
    connues += (connues.empty() ? "" : ", ") + langue;
  }
  throw MauvaisUsage("language \"" + demandée + "\" is not known. Languages: " + connues + ".");
}

}  // namespace zuma::host
