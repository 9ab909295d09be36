// Reading of a block's row, with the checks of its serial line.
#include <algorithm>
#include <array>

#include "core/garde.h"
#include "core/outils_communs.h"
#include "core/reglages_ligne.h"
#include "tree/fonction.h"

namespace zuma {
namespace {

using OutilsCommuns::HexaVersLong;
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

// A field found by walking; Null and, where the caller says so, empty text count as missing.
const Valeur* Présent(const Recordset& ligne, std::string_view colonne, bool videCompris) {
  const Valeur* champ = ChercheChamp(ligne, colonne);
  if (champ == nullptr || EstNul(*champ) || (videCompris && EstTexteVide(*champ))) return nullptr;
  return champ;
}

template <class T, std::size_t N>
const Choix<T>* Trouve(const std::array<Choix<T>, N>& choix, const Valeur& valeur) {
  const auto* texte = std::get_if<std::string>(&valeur);
  if (texte == nullptr) return nullptr;
  const auto trouvé = std::ranges::find(choix, *texte, &Choix<T>::texte);
  return trouvé == choix.end() ? nullptr : &*trouvé;
}

}  // namespace

void Fonction::ParamètresDepuisBD(const Ref<Recordset>& rstMonRecordSet) {
  Garde(*this, Forme::Procédure, "ParamètresDepuisBD", [&] {
    LitLigne(*rstMonRecordSet);
    ConfigureCanaux();
  });
}

void Fonction::LitLigne(const Recordset& ligne) {
  if (const Valeur* v = ChercheChamp(ligne, "Driver")) {
    musrDriver = DriverDeFonction(*v);
  }
  if (const Valeur* v = ChercheChamp(ligne, "Type de Fonction")) {
    if (const auto* type = Trouve(kTypes, *v)) TypeDeFonction_ = type->valeur;
  }
  if (const Valeur* v = ChercheChamp(ligne, "Nom de la Fonction")) {
    NomDeLaFonction_ = VersTexte(*v);
  }
  if (const Valeur* v = ChercheChamp(ligne, "Mise à Jour par Fonction")) {
    MAJParFonction_mbln = VersBooléen(*v);
  }
  if (const Valeur* v = Présent(ligne, "Numéro du port CAN", false)) {
    mlngPortCAN = VersEntier32(LitChampSûr(*v));
  }
  if (const Valeur* v = Présent(ligne, "Vitesse du CAN", false)) {
    mintVitesseCAN = VersEntier16(LitChampSûr(*v));
  }
  if (const Valeur* v = Présent(ligne, "Mode CAN", false)) mstrModeCAN = VersTexte(*v);
  if (const Valeur* v = Présent(ligne, "Temps", true)) mdblTemps = VersDouble(LitChampSûr(*v));
  // Address and function are written in hexadecimal, as the address of a board is.
  if (const Valeur* v = Présent(ligne, "ModBus - Adresse", true)) ModbusAdresse_ = HexaVersLong(*v);
  if (const Valeur* v = Présent(ligne, "ModBus - Fonction", true)) {
    ModbusFonction_ = HexaVersLong(*v);
  }
  if (const Valeur* v = Présent(ligne, "ModBus - Regitre départ", true)) {
    ModbusRegistreDeDepart_ = VersEntier32(LitChampSûr(*v));
  }
  if (const Valeur* v = Présent(ligne, "RS232 - COM", true)) {
    mintPort = VersEntier16(LitChampSûr(*v));
  }
  if (const Valeur* v = Présent(ligne, "Nombre de Canaux", false)) {
    NombreDeCanaux_ = VersEntier32(LitChampSûr(*v));
  }
  if (const Valeur* v = Présent(ligne, "RS232 - Baud Rate", true)) LitVitesse(*v);
  if (const Valeur* v = Présent(ligne, "RS232 - Parity", true)) LitParité(*v);
  if (const Valeur* v = Présent(ligne, "RS232 - Data", true)) LitBitsDeDonnées(*v);
  if (const Valeur* v = Présent(ligne, "RS232 - Stop", true)) LitBitsDeStop(*v);
}

void Fonction::MessageRS232(std::string_view quoi, std::string_view suite) const {
  Montre("Unauthorized RS232 - " + std::string(quoi) + " for function '" + NomDeLaFonction_ +
         std::string(suite));
}

// The rate is narrowed to 16 bits first, then recognised by its 16-bit pattern: a rate above
// 32767 fails here, and databases hold the high rates as their signed low half.
void Fonction::LitVitesse(const Valeur& valeur) {
  const std::int16_t motif = VersEntier16(LitChampSûr(valeur));
  const auto reconnaît = [motif](std::int32_t vitesse) {
    return static_cast<std::int16_t>(vitesse) == motif;
  };
  const auto vitesse = std::ranges::find_if(kVitessesSérie, reconnaît);
  if (vitesse == kVitessesSérie.end()) {
    MessageRS232("Baud Rate", "'. Default baud rate : 9600");
    mlngVitesse = kVitesseParDéfaut;
    return;
  }
  mlngVitesse = *vitesse;
}

void Fonction::LitParité(const Valeur& valeur) {
  const auto* parité = Trouve(kParités, valeur);
  if (parité == nullptr) {
    MessageRS232("Parity ");
    return;
  }
  mlngParité = parité->valeur;
}

void Fonction::LitBitsDeDonnées(const Valeur& valeur) {
  const std::int16_t bits = VersEntier16(LitChampSûr(valeur));
  if (bits < 4 || bits > 8) {
    MessageRS232("Data ");
    return;
  }
  mlngBitsDonnées = bits;
}

void Fonction::LitBitsDeStop(const Valeur& valeur) {
  constexpr std::array<std::pair<double, std::int32_t>, 3> kStops{{{1, 1}, {1.5, 15}, {2, 2}}};
  const double lu = VersDouble(LitChampSûr(valeur));
  const auto stop = std::ranges::find(kStops, lu, &std::pair<double, std::int32_t>::first);
  if (stop == kStops.end()) {
    MessageRS232("Stop ");
    return;
  }
  mlngBitsStop = stop->second;
}

void Fonction::ConfigureCanaux() {
  const LigneDriver& ligne = LigneDuDriver(musrDriver);
  opérations_ = ligne.Sert(TypeDeFonction_) ? ligne.pilote : nullptr;
  pilote_ = nullptr;
  for (const CanalRef& canal : *Canals()) {
    if (canal->Driver() == ENUM_DRIVER::DrvAucun) canal->Driver(musrDriver);
    canal->TypeCanal(TypeDeFonction_);
  }
}

}  // namespace zuma
