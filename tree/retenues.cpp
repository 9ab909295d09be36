#include "tree/retenues.h"

#include "tree/carte.h"

namespace zuma {
namespace {

double Coûte(const LigneDriver& ligne, bool parCanal, const Réglages& réglages) {
  const RetenueDeDriver& retenue = ligne.retenue;
  if (retenue.secondes == nullptr || retenue.parCanal != parCanal) return 0;
  return retenue.secondes(réglages);
}

}  // namespace

double RetenueDUnePasse(Carte& carte) {
  const Réglages& réglages = carte.LaPlateforme().réglages;
  double secondes = Coûte(carte.LeDriver(), false, réglages);
  for (const FonctionRef& bloc : carte.LesFonctions()) {
    for (const CanalRef& canal : bloc->LesCanaux()) {
      secondes += Coûte(canal->LeDriver(), true, réglages);
    }
  }
  return secondes;
}

}  // namespace zuma
