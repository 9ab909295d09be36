#pragma once

#include <cstdint>
#include <string>

#include "core/objet.h"
#include "platform/base_de_donnees.h"
#include "tree/canal.h"

namespace zuma {

class Chassis;

/// Proof to the external hardware that the control program is alive.
class Watchdog : public Objet {
 public:
  explicit Watchdog(Plateforme& plateforme) : Objet(plateforme, "WatchDog") {}

  [[nodiscard]] std::int32_t Adresse() const { return mlngAdresse; }
  [[nodiscard]] CanalRef SortiePulse() const { return SortiePulse_; }
  [[nodiscard]] double Temps() const { return mdblTemps; }

  void ParamètresDepuisBD(const Ref<Recordset>& rstMonRecordSet);
  void Lien(const Ref<ZED_Securite>& MaSecurite_obj, const ParamètresRef& MesParametres_mobj,
            const Ref<ZED_Traduction>& Traducteur_obj, Chassis* MonChassis);
  void Initialise() {}
  void MetàJour() {}
  void DéclencheAU() {}

  [[nodiscard]] std::string_view NomPourErreur() const override { return mstrNom; }

 private:
  std::string mstrNom;
  std::int32_t mlngAdresse = 0;
  double mdblTemps = 0;
  CanalRef SortiePulse_;
};

using WatchdogRef = Ref<Watchdog>;

}  // namespace zuma
