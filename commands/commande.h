#pragma once

#include <cstdint>
#include <string>

#include "core/objet.h"
#include "platform/base_de_donnees.h"

namespace zuma {

class Chassis;

/// Kind of a command; 0 takes no action.
enum class ENUM_TYPE_COMMANDE : std::int32_t {
  Aucune = 0,
  Normale = 1,
  ToutOuRien = 2,
  Servo = 3,
  Recopie = 4,
};

/// One output of the frame in engineering units.
class Commande : public Objet {
 public:
  explicit Commande(Plateforme& plateforme) : Objet(plateforme, "Commande") {}

  [[nodiscard]] const std::string& Label() const { return Label_; }
  void Label(std::string label) { Label_ = std::move(label); }
  [[nodiscard]] bool ModeEdition() const { return false; }
  [[nodiscard]] bool Enabled() const { return mblnEnabled; }
  void Enabled(bool enService) { mblnEnabled = enService; }
  [[nodiscard]] double FréquenceDither() const { return FréquenceDither_; }
  void FréquenceDither(double hertz) { FréquenceDither_ = hertz; }
  [[nodiscard]] ENUM_TYPE_COMMANDE TypeCommande() const { return TypeCommande_; }

  void ParamètresDepuisBD(const Ref<Recordset>& rstMonRecordSet);
  void Lien(Chassis* MonZuma_obj, const ParamètresRef& MesParametres_mobj,
            const Ref<ZED_Traduction>& Traducteur_obj);
  void MiseàJourDesLiens() {}
  void Initialise();
  void MetàJour();
  void DéclencheAU();

  [[nodiscard]] std::string_view NomPourErreur() const override { return NomDeLaCommande_; }

 private:
  std::string Label_;
  std::string NomDeLaCommande_;
  bool mblnEnabled = false;
  double FréquenceDither_ = 0;
  ENUM_TYPE_COMMANDE TypeCommande_ = ENUM_TYPE_COMMANDE::Aucune;
};

using CommandeRef = Ref<Commande>;

}  // namespace zuma
