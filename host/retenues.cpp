#include "host/retenues.h"

#include <cstdio>
#include <string>

#include "platform/linux/texte_ligne.h"
#include "tree/retenues.h"

namespace zuma::host {
namespace {

// Its line of refresh goes out over two passes.
constexpr double kPassesParLigne = 2;

std::string Secondes(double secondes) {
  return TexteDeNombre(secondes, '.') + " s";
}

}  // namespace

std::vector<Problème> RetenuesTropLongues(Chassis& chassis) {
  const WatchdogRef watchdog = chassis.Watchdog();
  const double temps = watchdog->Temps();
  std::vector<Problème> problèmes;
  if (watchdog->SortiePulse() || watchdog->Adresse() == 0 || temps == 0) return problèmes;
  for (const CarteRef& carte : *chassis.Cartes()) {
    const double retenue = RetenueDUnePasse(*carte);
    if (retenue * kPassesParLigne < temps) continue;
    problèmes.push_back(
        {.origine = Origine::Donnée,
         .table = "WatchDog",
         .ligne = watchdog->Key(),
         .colonne = "Temps en seconde",
         .trouvé = Secondes(temps),
         .attendu = "more than " + Secondes(retenue * kPassesParLigne),
         .objet = carte->NomDeLaCarte(),
         .texte = "board " + carte->Key() + " (" + linux_::UneSeuleLigne(carte->NomDeLaCarte()) +
                  ") holds a pass for " + Secondes(retenue) +
                  " when its devices start or do not answer, and the watchdog trips once two "
                  "passes take longer than its time: give it more, or put the board on another "
                  "frame"});
  }
  return problèmes;
}

void DitLesRetenues(Chassis& chassis) {
  for (const Problème& problème : RetenuesTropLongues(chassis)) {
    std::fprintf(stderr, "%s\n", Ligne(problème).c_str());
  }
}

}  // namespace zuma::host
