// Reading of a board's row and of its line settings.
#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "base/colonnes.h"
#include "base/garde.h"
#include "tree/carte.h"
#include "tree/registre_des_drivers.h"

namespace zuma {
namespace {

constexpr FormeDeLigne kForme{.dernierPort = 20, .vitesseDePlus = 1'953'125};
constexpr std::int32_t kRampeParDéfaut = 5;
constexpr double kTimeOutMinimal = 1;  // milliseconds
constexpr double kTimeOutMaximal = 10'000;

}  // namespace

void Carte::ParamètresDepuisBD(const Ref<Recordset>& rstMonRecordSet) {
  Garde(*this, Forme::Procédure, "ParamètresDepuisBD", [&] {
    rstMonRecordSet->MoveFirst();
    LeRecordset_ = rstMonRecordSet;
    const Recordset& ligne = *rstMonRecordSet;
    if (const Valeur* v = ChercheChamp(ligne, "Adresse")) {
      Adresse(colonnes::EnNommant("Adresse", [&] { return OutilsCommuns::HexaVersLong(*v); }));
    }
    if (const Valeur* v = ChercheChamp(ligne, "Nom de la Carte")) {
      NomDeLaCarte_ = colonnes::Texte(*v, "Nom de la Carte");
    }
    if (const Valeur* v = ChercheChamp(ligne, "Driver de la Carte")) {
      ligne_ = &LaPlateforme().drivers->DeCarte(*v);
    }
    const Valeur* configuration = ChercheChamp(ligne, "Configuration ModBus");
    if (configuration != nullptr && !EstNul(*configuration)) {
      Configuration_ = VersTexte(*configuration);
    }
    if (!Configuration_.empty()) DécodeConfiguration();
    const Valeur* timeOut = ChercheChamp(ligne, "ModBus - Time-out");
    if (timeOut != nullptr && !EstNulOuVide(*timeOut)) LitTimeOut(*timeOut);
    const Valeur* eir = ChercheChamp(ligne, "Config EIR");
    if (eir != nullptr && !EstNul(*eir)) mstrConfigEIR = VersTexte(*eir);
  });
}

// Comparisons are exact: a field with a blank in it, like one left out, matches nothing. The ramp
// stands behind the settings of the line.
void Carte::DécodeConfiguration() {
  std::vector<std::string_view> champs = Découpe(Configuration_, ',');
  const bool avecRampe = champs.size() == kPartiesDeLigne + 1;
  champs.resize(std::max(champs.size(), kPartiesDeLigne));
  if (!LitRéglagesLigne(champs, kForme, réglages_)) {
    Montre("Not supported Baud Rate in 'ParametrageDepuisBD' from object 'Carte' " + NomDeLaCarte_ +
           "'. Default baud rate : 9600");
  }
  mintConsigneRampe = kRampeParDéfaut;
  if (avecRampe) {
    const double rampe = colonnes::EnNommant(
        "Configuration ModBus", [&] { return VersDouble(Valeur(std::string(champs.back()))); });
    mintConsigneRampe = VersEntier32(std::trunc(rampe * 10));
  }
}

void Carte::LitTimeOut(const Valeur& valeur) {
  const Valeur nombre = OutilsCommuns::LitChampSûr(valeur);
  const double lu = EstNul(nombre) ? 0 : VersDouble(nombre);
  if (lu >= kTimeOutMinimal && lu <= kTimeOutMaximal) {
    TimeOutModbus_ = lu;
    return;
  }
  Montre("'ModBus - Time-out' of card '" + NomDeLaCarte_ + "' is '" + VersTexte(valeur) +
         "': 1 to 10000 ms expected. Default time-out: 50 ms");
}

}  // namespace zuma
