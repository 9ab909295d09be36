#include "host/parametres.h"

#include <fstream>

#include "host/configuration.h"

namespace zuma::host {
namespace {

void AjouteLigne(linux_::Parametres& paramètres, std::string_view ligne, const std::string& où) {
  const std::size_t égal = ligne.find('=');
  double index = 0;
  if (égal == std::string_view::npos || !LitNombre(ligne.substr(0, égal), index)) {
    throw MauvaisUsage(où + ": \"" + std::string(ligne) + "\" is no parameter; expected " +
                       "index=value, for instance 5=50");
  }
  (void)paramètres.Ajoute(VersEntier32(index), std::string(SansBlancs(ligne.substr(égal + 1))));
}

}  // namespace

std::string FichierDesParamètres(const std::string& base) {
  return base + ".params";
}

linux_::Parametres LitLesParamètres(const std::string& base,
                                    const std::vector<std::string>& donnés) {
  linux_::Parametres paramètres;
  const std::string nom = FichierDesParamètres(base);
  std::ifstream fichier(nom);
  std::string ligne;
  for (int numéro = 1; std::getline(fichier, ligne); ++numéro) {
    const std::string_view texte = SansBlancs(ligne);
    if (texte.empty() || texte.starts_with('#')) continue;
    AjouteLigne(paramètres, texte, nom + ", line " + std::to_string(numéro));
  }
  for (const std::string& donné : donnés) AjouteLigne(paramètres, donné, "--param");
  return paramètres;
}

}  // namespace zuma::host
