#pragma once

#include <chrono>
#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <sys/wait.h>

#include "outils/dossier_provisoire.h"
#include "platform/linux/base_creation.h"
#include "platform/linux/connexion_sqlite.h"
#include "platform/linux/demo.h"

namespace zuma::essai {

/// What a run of the program left.
struct Fin {
  int code;
  std::string sortie;
  std::string erreur;
};

class LeProgramme : public testing::Test {
 protected:
  // Runs the program through a shell; each argument is one word.
  Fin Lance(const std::vector<std::string>& arguments) {
    std::string commande = "'" ZUMA_PROGRAMME "'";
    for (const std::string& argument : arguments) commande += " '" + argument + "'";
    const std::string sortie = dossier.Fichier("sortie");
    const std::string erreur = dossier.Fichier("erreur");
    const int état = std::system((commande + " >" + sortie + " 2>" + erreur).c_str());
    return {WIFEXITED(état) ? WEXITSTATUS(état) : -1, Lit(sortie), Lit(erreur)};
  }
  // A demo base of its own, changed by `sql`.
  std::string Base(const std::string& sql = {}) {
    const std::string chemin = dossier.Fichier("demo" + std::to_string(++bases_) + ".db");
    linux_::CréeBase(chemin, linux_::LignesDeDémonstration());
    std::ofstream paramètres(chemin + ".params");
    for (const auto& [index, valeur] : linux_::ParamètresDeDémonstration()) {
      paramètres << index << "=" << valeur << "\n";
    }
    if (!sql.empty()) {
      linux_::ConnexionSqlite(chemin, linux_::Accès::Ecriture, std::chrono::milliseconds(0))
          .Exécute(sql.c_str());
    }
    return chemin;
  }
  DossierProvisoire dossier;

 private:
  int bases_ = 0;
};

}  // namespace zuma::essai
