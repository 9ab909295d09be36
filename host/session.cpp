#include "host/session.h"

#include "core/echec.h"
#include "platform/linux/base_sqlite.h"

namespace zuma::host {

Ref<BaseDeDonnées> OuvreLaBase(const std::string& fichier, bool lectureSeule) {
  try {
    return Crée<linux_::BaseSqlite>(fichier, linux_::RéglagesBase{.lectureSeule = lectureSeule});
  } catch (const Echec& e) {
    throw MauvaisUsage(fichier + ": " + e.Description());
  }
}

void ExigeChassis(BaseDeDonnées& base, const std::string& fichier, std::int32_t chassis) {
  std::string connus;
  try {
    const Ref<Recordset> lignes = base.OpenRecordset("SELECT * FROM [Chassis]");
    for (; !lignes->FinDeTable(); lignes->MoveNext()) {
      const Valeur& index = LitChamp(*lignes, "Index");
      if (VersEntier32(index) == chassis) return;
      connus += connus.empty() ? "" : ", ";
      connus += VersTexte(index) + " (" + VersTexte(LitChamp(*lignes, "Nom du Chassis")) + ")";
    }
  } catch (const Echec& e) {
    throw MauvaisUsage(fichier + ": " + e.Description());
  }
  throw MauvaisUsage(fichier + " has no frame " + std::to_string(chassis) +
                     ". Frames: " + (connus.empty() ? "none" : connus) + ".");
}

}  // namespace zuma::host
