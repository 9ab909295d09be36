#include "host/demonstration.h"

#include <filesystem>
#include <fstream>

#include "base/echec.h"
#include "host/configuration.h"
#include "host/parametres.h"
#include "platform/linux/base_creation.h"
#include "platform/linux/demo.h"

namespace zuma::host {
namespace {

// The parameters are the host's, not the database's: they stand beside it.
void EcritLesParamètres(const std::string& base) {
  const std::string nom = FichierDesParamètres(base);
  if (std::filesystem::exists(nom)) return;
  std::ofstream fichier(nom);
  fichier << "# Shared parameters of " << std::filesystem::path(base).filename().string()
          << ": index = value. They describe the specimen.\n";
  for (const auto& [index, valeur] : linux_::ParamètresDeDémonstration()) {
    fichier << index << " = " << valeur << "\n";
  }
  if (!fichier.flush()) throw MauvaisUsage(nom + " cannot be written");
}

}  // namespace

void EcritLaDémonstration(const std::string& fichier) {
  try {
    linux_::CréeBase(fichier, linux_::LignesDeDémonstration());
  } catch (const Echec& e) {
    throw MauvaisUsage(e.what());
  }
  EcritLesParamètres(fichier);
}

}  // namespace zuma::host
