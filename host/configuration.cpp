#include "host/configuration.h"

#include "core/echec.h"
#include "core/outils_communs.h"
#include "platform/linux/base_sqlite.h"

namespace zuma::host {
namespace {

// Short: a calibration is saved between two passes, and a watchdog does not wait for a database.
constexpr std::chrono::milliseconds kAttente{100};

// Name of the frame in hand in brackets; nothing where it has none.
std::string Nom(const Recordset& lignes) {
  const Valeur* nom = ChercheChamp(lignes, "Nom du Chassis");
  return nom == nullptr || EstNulOuVide(*nom) ? std::string() : " (" + VersTexte(*nom) + ")";
}

}  // namespace

Ref<BaseDeDonnées> OuvreLaBase(const std::string& fichier, bool lectureSeule) {
  try {
    return Crée<linux_::BaseSqlite>(
        fichier, linux_::RéglagesBase{.lectureSeule = lectureSeule, .attenteVerrou = kAttente});
  } catch (const Echec& e) {
    throw MauvaisUsage(fichier + ": " + e.Description());
  }
}

void ExigeChassis(BaseDeDonnées& base, const std::string& fichier, std::int32_t chassis) {
  std::string connus;
  try {
    const Ref<Recordset> lignes = base.OpenRecordset("SELECT * FROM [Chassis]");
    for (; !lignes->FinDeTable(); lignes->MoveNext()) {
      const Valeur index = OutilsCommuns::LitChampSûr(LitChamp(*lignes, "Index"));
      if (EstNul(index)) continue;
      if (VersDouble(index) == chassis) return;
      connus += (connus.empty() ? "" : ", ") + VersTexte(index) + Nom(*lignes);
    }
  } catch (const Echec& e) {
    throw MauvaisUsage(fichier + ": " + e.Description());
  }
  throw MauvaisUsage(fichier + " has no frame " + std::to_string(chassis) +
                     ". Frames: " + (connus.empty() ? "none" : connus) + ".");
}

}  // namespace zuma::host
