#pragma once

#include <chrono>
#include <cstdlib>
#include <fstream>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>
#include <sys/wait.h>

#include "base/valeur.h"
#include "outils/chassis_de_demo.h"
#include "platform/linux/base_creation.h"
#include "platform/linux/connexion_sqlite.h"
#include "platform/linux/demo.h"

namespace zuma::essai {

/// What a run of the program left.
struct Fin {
  int code;
  std::string sortie;
  std::string erreur;

  /// Its output as views, one a line.
  [[nodiscard]] std::vector<nlohmann::json> Vues() const {
    std::vector<nlohmann::json> vues;
    for (const std::string_view ligne : Découpe(sortie, '\n')) {
      if (!ligne.empty()) vues.push_back(nlohmann::json::parse(ligne));
    }
    return vues;
  }
};

class LeProgramme : public testing::Test {
 protected:
  // Runs the program through a shell.
  Fin Lance(const std::string& arguments) {
    const std::string sortie = dossier.Fichier("sortie");
    const std::string erreur = dossier.Fichier("erreur");
    const int état =
        std::system(("'" ZUMA_PROGRAMME "' " + arguments + " >" + sortie + " 2>" + erreur).c_str());
    return {WIFEXITED(état) ? WEXITSTATUS(état) : -1, Lit(sortie), Lit(erreur)};
  }
  // A demo base of its own, changed by `sql`.
  std::string Base(const std::string& sql = {}) {
    const std::string chemin = dossier.Fichier("demo" + std::to_string(++bases_) + ".db");
    linux_::CréeBase(chemin, linux_::LignesDeDémonstration());
    EcritLesParamètres(chemin);
    if (!sql.empty()) {
      linux_::ConnexionSqlite(chemin, linux_::Accès::Ecriture, {}).Exécute(sql.c_str());
    }
    return chemin;
  }
  DossierProvisoire dossier;

 private:
  int bases_ = 0;
};

}  // namespace zuma::essai
