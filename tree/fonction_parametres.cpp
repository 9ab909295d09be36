// Reading of a block's row, with the checks of its serial line.
#include <algorithm>
#include <array>

#include "base/colonnes.h"
#include "base/garde.h"
#include "base/reglages_ligne.h"
#include "tree/fonction.h"
#include "tree/registre_des_drivers.h"

namespace zuma {
namespace {

using namespace colonnes;
using OutilsCommuns::LitChampSûr;

template <class T>
struct Choix {
  std::string_view texte;
  T valeur;
};

constexpr std::array<Choix<ENUM_TYPE_FONCTION>, 4> kTypes{{
    {"Entrée Logique", ENUM_TYPE_FONCTION::FctEntréesLogiques},
    {"Sortie Logique", ENUM_TYPE_FONCTION::FctSortiesLogiques},
    {"Entrée Analogique", ENUM_TYPE_FONCTION::FctEntréesAnalogiques},
    {"Sortie Analogique", ENUM_TYPE_FONCTION::FctSortiesAnalogiques},
}};

constexpr std::array<Choix<std::int32_t>, 5> kParités{{
    {"No parity", 0},
    {"Even parity", 2},
    {"Odd parity", 1},
    {"Mark parity", 3},
    {"Space parity", 4},
}};

template <class T, std::size_t N>
const Choix<T>* Trouve(const std::array<Choix<T>, N>& choix, const Valeur& valeur) {
  const auto* texte = std::get_if<std::string>(&valeur);
  if (texte == nullptr) return nullptr;
  const auto trouvé = std::ranges::find(choix, *texte, &Choix<T>::texte);
  return trouvé == choix.end() ? nullptr : &*trouvé;
}

}  // namespace

/// The columns of a block's row and what is made of them.
struct Fonction::Lecture {
  static void Driver(Fonction& f, const Valeur& v) {
    f.ligne_ = &f.LaPlateforme().drivers->DeFonction(v);
  }
  static void Type(Fonction& f, const Valeur& v) {
    if (const auto* type = Trouve(kTypes, v)) f.TypeDeFonction_ = type->valeur;
  }
  static void Vitesse(Fonction& f, const Valeur& v);
  static void Parité(Fonction& f, const Valeur& v);
  static void BitsDeDonnées(Fonction& f, const Valeur& v);
  static void BitsDeStop(Fonction& f, const Valeur& v);
  static void Tout(Fonction& f, const Recordset& ligne);
};

void Fonction::ParamètresDepuisBD(const Ref<Recordset>& rstMonRecordSet) {
  Garde(*this, Forme::Procédure, "ParamètresDepuisBD", [&] {
    Lecture::Tout(*this, *rstMonRecordSet);
    ConfigureCanaux();
  });
}

// A missing column leaves its default. Modbus address and function are written in hexadecimal, as
// the address of a board is.
void Fonction::Lecture::Tout(Fonction& f, const Recordset& ligne) {
  using F = Fonction;
  static constexpr std::array<Colonne<Fonction>, 17> kColonnes{{
      {"Driver", &Driver},
      {"Type de Fonction", &Type},
      {"Nom de la Fonction", &LitTexte<&F::NomDeLaFonction_>},
      {"Mise à Jour par Fonction", &LitBooléen<&F::MAJParFonction_mbln>},
      {"Numéro du port CAN", &SaufNul<&LitEntier32<&F::mlngPortCAN>>},
      {"Vitesse du CAN", &SaufNul<&LitEntier16<&F::mintVitesseCAN>>},
      {"Mode CAN", &SaufNul<&LitTexte<&F::mstrModeCAN>>},
      {"Temps", &SaufVide<&LitNombre<&F::mdblTemps>>},
      {"ModBus - Adresse", &SaufVide<&LitHexa<&F::ModbusAdresse_>>},
      {"ModBus - Fonction", &SaufVide<&LitHexa<&F::ModbusFonction_>>},
      {"ModBus - Regitre départ", &SaufVide<&LitEntier32<&F::ModbusRegistreDeDepart_>>},
      {"RS232 - COM", &SaufVide<&LitEntier16<&F::mintPort>>},
      {"Nombre de Canaux", &SaufNul<&LitEntier32<&F::NombreDeCanaux_>>},
      {"RS232 - Baud Rate", &SaufVide<&Vitesse>},
      {"RS232 - Parity", &SaufVide<&Parité>},
      {"RS232 - Data", &SaufVide<&BitsDeDonnées>},
      {"RS232 - Stop", &SaufVide<&BitsDeStop>},
  }};
  for (const Colonne<Fonction>& colonne : kColonnes) {
    const Valeur* champ = ChercheChamp(ligne, colonne.nom);
    if (champ != nullptr) colonne.Lit(f, *champ);
  }
}

void Fonction::MessageRS232(std::string_view quoi, std::string_view suite) const {
  Montre("Unauthorized RS232 - " + std::string(quoi) + " for function '" + NomDeLaFonction_ +
         std::string(suite));
}

// The rate is narrowed to 16 bits first, then recognised by its 16-bit pattern: a rate above
// 32767 fails here, and databases hold the high rates as their signed low half.
void Fonction::Lecture::Vitesse(Fonction& f, const Valeur& v) {
  const std::int16_t motif = VersEntier16(LitChampSûr(v));
  const auto reconnaît = [motif](std::int32_t vitesse) {
    return static_cast<std::int16_t>(vitesse) == motif;
  };
  const auto vitesse = std::ranges::find_if(kVitessesSérie, reconnaît);
  if (vitesse == kVitessesSérie.end()) {
    f.MessageRS232("Baud Rate", "'. Default baud rate : 9600");
    f.mlngVitesse = kVitesseParDéfaut;
    return;
  }
  f.mlngVitesse = *vitesse;
}

void Fonction::Lecture::Parité(Fonction& f, const Valeur& v) {
  const auto* parité = Trouve(kParités, v);
  if (parité == nullptr) {
    f.MessageRS232("Parity ");
    return;
  }
  f.mlngParité = parité->valeur;
}

void Fonction::Lecture::BitsDeDonnées(Fonction& f, const Valeur& v) {
  const std::int16_t bits = VersEntier16(LitChampSûr(v));
  if (bits < 4 || bits > 8) {
    f.MessageRS232("Data ");
    return;
  }
  f.mlngBitsDonnées = bits;
}

void Fonction::Lecture::BitsDeStop(Fonction& f, const Valeur& v) {
  constexpr std::array<std::pair<double, std::int32_t>, 3> kStops{{{1, 1}, {1.5, 15}, {2, 2}}};
  const double lu = VersDouble(LitChampSûr(v));
  const auto stop = std::ranges::find(kStops, lu, &std::pair<double, std::int32_t>::first);
  if (stop == kStops.end()) {
    f.MessageRS232("Stop ");
    return;
  }
  f.mlngBitsStop = stop->second;
}

void Fonction::ConfigureCanaux() {
  opérations_ = ligne_->Sert(TypeDeFonction_) ? ligne_->pilote : nullptr;
  pilote_ = {};
  for (const CanalRef& canal : *Canals()) {
    if (canal->Driver() == ENUM_DRIVER::DrvAucun) canal->Driver(ligne_->valeur);
    canal->TypeCanal(TypeDeFonction_);
  }
}

}  // namespace zuma
