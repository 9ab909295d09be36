#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "core/chassis.h"
#include "host/configuration.h"
#include "host/machine.h"
#include "host/problemes.h"
#include "outils/dossier_provisoire.h"
#include "platform/linux/base_creation.h"
#include "platform/linux/connexion_sqlite.h"
#include "platform/linux/demo.h"
#include "platform/linux/parametres.h"
#include "platform/linux/securite.h"
#include "platform/linux/traducteur.h"

namespace zuma::essai {

/// The parameters of the demo frames beside their database, as `zuma init` writes them.
inline void EcritLesParamètres(const std::string& base) {
  std::ofstream paramètres(base + ".params");
  for (const auto& [index, valeur] : linux_::ParamètresDeDémonstration()) {
    paramètres << index << "=" << valeur << "\n";
  }
}

/// A new demo database in a folder of its own.
struct BaseDeDémo {
  BaseDeDémo() { linux_::CréeBase(chemin, linux_::LignesDeDémonstration()); }
  void Exécute(const char* sql) const {
    linux_::ConnexionSqlite(chemin, linux_::Accès::Ecriture, {}).Exécute(sql);
  }
  /// Text of the one value that a statement gives.
  [[nodiscard]] std::string Lit(const std::string& sql) const {
    const linux_::ConnexionSqlite base(chemin, linux_::Accès::Lecture, {});
    linux_::InstructionSqlite lecture(base, sql);
    if (!lecture.Suivante()) return {};
    const auto* texte = reinterpret_cast<const char*>(sqlite3_column_text(lecture.Brut(), 0));
    return texte != nullptr ? texte : "";
  }

  DossierProvisoire dossier;
  std::string chemin = dossier.Fichier("demo.db");
};

/// A demo frame, loaded, linked and started on the simulated machine, whose time goes as fast as it
/// can. Windows and messages are those of the caller and outlive it.
class ChassisDeDémo {
 public:
  ChassisDeDémo(const std::string& fichier, std::int32_t index, BoîteDeMessage& messages,
                Fenêtres& fenêtres, const Ref<ZED_Traduction>& traducteur,
                bool lectureSeule = false)
      : machine_(host::MachineSimulée(messages, host::Cadence::Libre)) {
    const Ref<BaseDeDonnées> base = host::OuvreLaBase(fichier, lectureSeule);
    for (const auto& [n, valeur] : linux_::ParamètresDeDémonstration()) {
      (void)paramètres_.Ajoute(n, traducteur->Traduit(valeur, valeur));
    }
    machine_->Services().fenêtres = &fenêtres;
    sécurité_ = Crée<linux_::Securite>(machine_->Timer());
    chassis_ = std::make_unique<Chassis>(machine_->Services());
    sécurité_->Branche(*chassis_);
    chassis_->TimerExact(machine_->Timer());
    chassis_->ChargeErreur(registre);
    chassis_->ChargeLeChassis(base, index);
    chassis_->Lien(base, std::to_string(index), sécurité_, paramètres_.Collection(), traducteur);
    chassis_->MiseàJourDesLiens();
    machine_->Branche(*chassis_);
    chassis_->Initialise();
  }
  ~ChassisDeDémo() {
    sécurité_->Débranche();
    chassis_->Décharge();
  }

  Chassis& operator*() const { return *chassis_; }
  Chassis* operator->() const { return chassis_.get(); }
  void Passe(double secondes) {
    constexpr double kPas = 0.001;
    for (const double fin = secondes_ + secondes; secondes_ < fin;) {
      machine_->AvanceJusquA(secondes_ += kPas);
      chassis_->MetàJour();
    }
  }

  Ref<host::Recueil> registre = Crée<host::Recueil>();

 private:
  std::unique_ptr<host::Machine> machine_;
  linux_::Parametres paramètres_;
  Ref<linux_::Securite> sécurité_;
  std::unique_ptr<Chassis> chassis_;
  double secondes_ = 0;
};

/// Translator in English.
inline Ref<linux_::Traducteur> EnAnglais() {
  auto traducteur = Crée<linux_::Traducteur>();
  traducteur->LangueCourante("English");
  return traducteur;
}

}  // namespace zuma::essai
