#include "host/configuration.h"

#include "base/echec.h"
#include "base/outils_communs.h"
#include "host/interruption.h"
#include "platform/linux/base_sqlite.h"
#include "platform/linux/texte_ligne.h"

namespace zuma::host {
namespace {

// Short, at load as when a calibration is saved: passes stand still meanwhile, and a watchdog does
// not wait for a database.
constexpr std::chrono::milliseconds kAttente{100};

// Name of the frame in hand in brackets; nothing where it has none.
std::string Nom(const Recordset& lignes) {
  const Valeur* nom = ChampNommé(lignes, "Nom du Chassis");
  return nom == nullptr || EstNulOuVide(*nom) ? std::string()
                                              : " (" + linux_::UneSeuleLigne(VersTexte(*nom)) + ")";
}

// What fails on the file is misuse, told with the file and, where there is one, the way out.
template <class Travail>
auto SurLeFichier(const std::string& fichier, Travail&& travail) {
  try {
    return travail();
  } catch (const Echec& e) {
    std::string texte = fichier + ": " + linux_::UneSeuleLigne(e.Description());
    if (e.NuméroErreur() == static_cast<int>(Numéro::BaseVerrouillée)) {
      texte += ". Another program is writing to it: let it finish or close it, then start again.";
    }
    throw MauvaisUsage(texte);
  }
}

}  // namespace

Ref<BaseDeDonnées> OuvreLaBase(const std::string& fichier, bool lectureSeule) {
  return SurLeFichier(fichier, [&]() -> Ref<BaseDeDonnées> {
    return Crée<linux_::BaseSqlite>(
        fichier, linux_::RéglagesBase{.lectureSeule = lectureSeule,
                                      .attenteVerrou = kAttente,
                                      .bornes = {.interrompue = &Interruption::Demandée}});
  });
}

std::unique_ptr<const LecturesCohérentes> FigeLaBase(const Ref<BaseDeDonnées>& base,
                                                     const std::string& fichier) {
  return SurLeFichier(fichier, [&] { return std::make_unique<const LecturesCohérentes>(base); });
}

void ExigeChassis(BaseDeDonnées& base, const std::string& fichier, std::int32_t chassis) {
  std::string connus;
  const bool trouvé = SurLeFichier(fichier, [&] {
    const Ref<Recordset> lignes = base.OpenRecordset("SELECT * FROM [Chassis]");
    for (; !lignes->FinDeTable(); lignes->MoveNext()) {
      const Valeur index = OutilsCommuns::LitChampSûr(LitChamp(*lignes, "Index"));
      if (EstNul(index)) continue;
      if (VersDouble(index) == chassis) return true;
      connus += (connus.empty() ? "" : ", ") + VersTexte(index) + Nom(*lignes);
    }
    return false;
  });
  if (trouvé) return;
  throw MauvaisUsage(fichier + " has no frame " + std::to_string(chassis) +
                     ". Frames: " + (connus.empty() ? "none" : connus) + ".");
}

}  // namespace zuma::host
