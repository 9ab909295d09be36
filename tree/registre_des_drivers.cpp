#include "tree/registre_des_drivers.h"

#include "base/echec.h"
#include "platform/plateforme.h"

namespace zuma {
namespace {

template <class Table>
const LigneDriver& Trouvée(const Table& table, const typename Table::key_type& clé) {
  const auto place = table.find(clé);
  return place == table.end() ? kSansDriver : *place->second;
}

template <class Table>
const LigneDriver& DuTexte(const Table& table, const Valeur& valeur) {
  const auto* texte = std::get_if<std::string>(&valeur);
  return texte == nullptr ? kSansDriver : Trouvée(table, *texte);
}

// `quoi` tells what the key is, for who has to choose another one.
template <class Table>
void Range(Table& table, const typename Table::key_type& clé, const std::string& quoi,
           const LigneDriver& ligne) {
  const auto [place, nouveau] = table.emplace(clé, &ligne);
  if (nouveau) return;
  throw Echec(Numéro::CléDéjàPrésente, "driver '" + std::string(ligne.nom) + "': " + quoi +
                                           " belongs to '" + std::string(place->second->nom) + "'");
}

template <class Table>
void RangeLeTexte(Table& table, std::string_view texte, const char* colonne,
                  const LigneDriver& ligne) {
  if (texte.empty()) return;
  Range(table, texte, "text \"" + std::string(texte) + "\" of column \"" + colonne + "\"", ligne);
}

}  // namespace

void RegistreDesDrivers::Ajoute(std::span<const LigneDriver> lignes) {
  RegistreDesDrivers complet = *this;
  for (const LigneDriver& ligne : lignes) complet.Ajoute(ligne);
  *this = std::move(complet);
}

void RegistreDesDrivers::Ajoute(const LigneDriver& ligne) {
  // Rows of another form are not read any further: what follows their version is not known.
  if (ligne.version != kVersionDesDrivers) {
    throw Echec(Numéro::AppelIncorrect, "driver made for version " + std::to_string(ligne.version) +
                                            " of the driver interface, this library has version " +
                                            std::to_string(kVersionDesDrivers) +
                                            ": build the driver again");
  }
  if (ligne.valeur == ENUM_DRIVER::DrvAucun || ligne.nom.empty()) {
    throw Echec(Numéro::AppelIncorrect, "a driver needs a value other than 0 and a name");
  }
  const auto valeur = static_cast<std::int32_t>(ligne.valeur);
  Range(parValeur_, valeur, "value " + std::to_string(valeur), ligne);
  RangeLeTexte(parTexteDeCarte_, ligne.texteCarte, "Driver de la Carte", ligne);
  RangeLeTexte(parTexteDeFonction_, ligne.texteFonction, "Driver", ligne);
  RangeLeTexte(parTexteDeCanal_, ligne.texteCanal, "Driver canal", ligne);
  lignes_.push_back(&ligne);
}

const LigneDriver& RegistreDesDrivers::DeValeur(ENUM_DRIVER valeur) const noexcept {
  return Trouvée(parValeur_, static_cast<std::int32_t>(valeur));
}
const LigneDriver& RegistreDesDrivers::DeCarte(const Valeur& texte) const {
  return DuTexte(parTexteDeCarte_, texte);
}
const LigneDriver& RegistreDesDrivers::DeFonction(const Valeur& texte) const {
  return DuTexte(parTexteDeFonction_, texte);
}
const LigneDriver& RegistreDesDrivers::DeCanal(const Valeur& texte) const {
  return DuTexte(parTexteDeCanal_, texte);
}

const LigneDriver& LigneDuDriver(const Plateforme& plateforme, ENUM_DRIVER valeur) {
  return valeur == ENUM_DRIVER::DrvAucun ? kSansDriver : plateforme.drivers->DeValeur(valeur);
}

}  // namespace zuma
