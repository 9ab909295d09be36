#include "base/requetes.h"

namespace zuma::requêtes {
namespace {

std::string Liste(std::string_view table, std::string_view lien, std::int32_t chassis) {
  std::string requête = "SELECT ALL * FROM [";
  requête.append(table).append("] WHERE ([").append(table).append("]![Index] = ");
  requête.append("ANY ( SELECT [").append(table).append("] FROM [").append(lien);
  requête.append("] WHERE ([").append(lien).append("]![Chassis] = ");
  requête.append(std::to_string(chassis)).append(")))");
  return requête;
}

std::string Ligne(std::string_view table, std::int32_t index) {
  std::string requête = "SELECT ALL * FROM [";
  requête.append(table).append("] WHERE (([").append(table).append("]![Index])=");
  requête.append(std::to_string(index)).append(")");
  return requête;
}

std::string Liaison(std::string_view table, std::string_view lien, std::int32_t index,
                    std::int32_t chassis) {
  std::string requête = "SELECT ALL* FROM [";
  requête.append(lien).append("] WHERE ([").append(lien).append("]![").append(table).append("]=");
  requête.append(std::to_string(index)).append(") AND ([").append(lien).append("]![Chassis]=");
  requête.append(std::to_string(chassis)).append(")");
  return requête;
}

std::string ListeDesCapteurs(std::int32_t chassis) {
  return "SELECT Capteur.* "
         "FROM Capteur, [Liaison Chassis / Capteur], Chassis "
         "WHERE (([Capteur].[Index] = [Liaison Chassis / Capteur].[Capteur]) "
         "AND ([Liaison Chassis / Capteur].Chassis = [Chassis].[Index]) "
         "AND ([Chassis].[Index] = " +
         std::to_string(chassis) +
         ")) "
         "ORDER BY [Liaison Chassis / Capteur].[Index]";
}

// The index runs straight into AND and the first bracket stays open until the end.
std::string LiaisonEntréeLogique(std::int32_t index, std::int32_t chassis) {
  return "SELECT ALL* "
         "FROM [Liaison Chassis / Entrée Logique] "
         "WHERE ([Liaison Chassis / Entrée Logique]![Entrée Logique]=" +
         std::to_string(index) +
         "AND [Liaison Chassis / Entrée Logique]![Chassis]=" + std::to_string(chassis) + ")";
}

Ref<Recordset> OuLeVide(BaseDeDonnées& base, const std::string& instruction) {
  Ref<Recordset> lignes = base.OpenRecordset(instruction);
  return lignes->RecordCount() == 0 ? Ref<Recordset>() : lignes;
}

}  // namespace

const ObjetLié kCartes{
    "Carte",
    [](std::int32_t f) { return Liste("Carte", "Liaison Chassis / Carte", f); },
    [](std::int32_t n) { return Ligne("Carte", n); },
    nullptr,
};
const ObjetLié kCapteurs{
    "Capteur",
    ListeDesCapteurs,
    [](std::int32_t n) { return Ligne("Capteur", n); },
    [](std::int32_t n, std::int32_t f) {
      return Liaison("Capteur", "Liaison Chassis / Capteur", n, f);
    },
};
const ObjetLié kCommandes{
    "Commande",
    [](std::int32_t f) { return Liste("Commande", "Liaison Chassis / Commande", f); },
    [](std::int32_t n) { return Ligne("Commande", n); },
    [](std::int32_t n, std::int32_t f) {
      return Liaison("Commande", "Liaison Chassis / Commande", n, f);
    },
};
const ObjetLié kEntréesLogiques{
    "Entrée Logique",
    [](std::int32_t f) { return Liste("Entrée Logique", "Liaison Chassis / Entrée Logique", f); },
    [](std::int32_t n) { return Ligne("Entrée Logique", n); },
    LiaisonEntréeLogique,
};
const ObjetLié kSortiesLogiques{
    "Sortie Logique",
    [](std::int32_t f) { return Liste("Sortie Logique", "Liaison Chassis / Sortie Logique", f); },
    [](std::int32_t n) { return Ligne("Sortie Logique", n); },
    [](std::int32_t n, std::int32_t f) {
      return Liaison("Sortie Logique", "Liaison Chassis / Sortie Logique", n, f);
    },
};
const ObjetLié kWatchDog{
    "WatchDog",
    [](std::int32_t f) { return Liste("WatchDog", "Liaison Chassis / WatchDog", f); },
    [](std::int32_t n) { return Ligne("WatchDog", n); },
    nullptr,
};

std::string LigneDuChassis(std::int32_t chassis) {
  return "SELECT ALL * FROM [Chassis] WHERE [Chassis].[Index] = " + std::to_string(chassis);
}

std::string LigneDuChassisPourLien(std::int32_t chassis) {
  return "SELECT ALL* FROM [Chassis] WHERE [Chassis].[Index] = " + std::to_string(chassis);
}

std::string LigneDeLaFonction(std::int32_t index) {
  return Ligne("Fonction", index);
}

std::string LigneDuCanalDeBloc(std::int32_t index) {
  return "SELECT ALL * FROM [Canal] WHERE (([Canal]![Index])= " + std::to_string(index) + ")";
}

std::string FonctionsDe(std::int32_t carte) {
  return "SELECT [Index], [Nom de la Fonction] FROM Fonction WHERE ((Fonction![Carte])=" +
         std::to_string(carte) + ")";
}

std::string CanauxDe(std::int32_t fonction) {
  return "SELECT [Index], [Nom du Canal] FROM Canal WHERE ((Canal![Fonction])=" +
         std::to_string(fonction) + ") ORDER BY [Canal].[Numéro du Canal]";
}

Ref<Recordset> RecordSetCanal(BaseDeDonnées& base, const Valeur& index) {
  return OuLeVide(base, Ligne("Canal", VersEntier32(index)));
}
Ref<Recordset> RecordSetFonction(BaseDeDonnées& base, const Valeur& index) {
  return OuLeVide(base, LigneDeLaFonction(VersEntier32(index)));
}
Ref<Recordset> RecordSetCarte(BaseDeDonnées& base, const Valeur& index) {
  return OuLeVide(base, Ligne("Carte", VersEntier32(index)));
}
Ref<Recordset> RecordSetCapteur(BaseDeDonnées& base, const Valeur& index) {
  return OuLeVide(base, Ligne("Capteur", VersEntier32(index)));
}
Ref<Recordset> RecordSetSL(BaseDeDonnées& base, const Valeur& index) {
  return OuLeVide(base, "SELECT ALL * FROM [Capteur] WHERE (([Sortie logique]![Index])=" +
                            std::to_string(VersEntier32(index)) + ")");
}

}  // namespace zuma::requêtes
