#include "platform/linux/bibliotheques_absentes.h"

#include <string>

namespace zuma::linux_ {

std::int32_t BibliothèqueAbsente::Manque(std::int32_t réponse) {
  if (std::exchange(dit_, true) || !registre_) return réponse;
  registre_->AjouteErreur("La bibliothèque " + std::string(quoi_) +
                              " n'existe pas pour ce système : rien n'est mesuré par elle. Essayez "
                              "la configuration sur la machine simulée (zuma run --sim), ou donnez "
                              "à la plateforme votre propre classe dérivée de " +
                              std::string(interface_) + ".",
                          TableVariables(1));
  return réponse;
}

OrbitAbsent::OrbitAbsent(Ref<ZED_Erreur> registre)
    : BibliothèqueAbsente(std::move(registre), "du réseau Orbit (palpeurs LVDT)", "RéseauOrbit") {}

SpiderAbsent::SpiderAbsent(Ref<ZED_Erreur> registre)
    : BibliothèqueAbsente(std::move(registre), "des amplificateurs Spider", "BibliothèqueSpider") {}

}  // namespace zuma::linux_
