// Links between the objects of a frame, its well-known inputs and the order of its sensors.
#include <algorithm>
#include <string>
#include <unordered_set>

#include "base/garde.h"
#include "base/requetes.h"
#include "core/chassis.h"
#include "core/recherche.h"

namespace zuma {
namespace {

// Sensors that depend on no other sensor.
constexpr std::array kSansFils{ENUM_TYPE_CAPTEUR::capteurNormal, ENUM_TYPE_CAPTEUR::CapteurTemps,
                               ENUM_TYPE_CAPTEUR::CapteurScout55};

bool SansFils(const Capteur& capteur) {
  return std::ranges::find(kSansFils, capteur.TypeDeCapteur()) != kSansFils.end();
}

using Clés = std::unordered_set<std::string>;

bool FilsTousTriés(const Capteur& capteur, const Clés& triés) {
  const CapteursRef fils = capteur.CapteursFils();
  if (!fils) return true;
  return std::ranges::all_of(*fils,
                             [&](const CapteurRef& f) { return !f || triés.contains(f->Key()); });
}

}  // namespace

void Chassis::Lien(const Ref<BaseDeDonnées>& dtbMaBase, const std::string& NomDuChassis,
                   const Ref<ZED_Securite>& MaSecurite_obj, const ParamètresRef& MesParam,
                   const Ref<ZED_Traduction>& Traducteur_obj) {
  Garde(*this, Forme::Méthode, "Lien", [&] {
    if (MaSecurite_obj) MaSecurite_obj_ = MaSecurite_obj;
    LieLesObjets(MaSecurite_obj, MesParam, Traducteur_obj);
    const std::int32_t index = VersEntier32(Valeur(NomDuChassis));
    const auto ligne = dtbMaBase->OpenRecordset(requêtes::LigneDuChassisPourLien(index));
    if (ligne->RecordCount() != 0) {
      ligne->MoveFirst();
      ParamètresDepuisBD(ligne);
      RepèreLesEntréesConnues();
    }
    TrieLesCapteurs();
  });
}

void Chassis::LieLesObjets(const Ref<ZED_Securite>& sécurité, const ParamètresRef& paramètres,
                           const Ref<ZED_Traduction>& traducteur) {
  const recherche::Annuaire annuaire(*this);
  for (const CapteurRef& capteur : *Capteurs()) {
    capteur->Lien(sécurité, paramètres, traducteur, this);
  }
  for (const CommandeRef& commande : *Commandes()) commande->Lien(this, paramètres, traducteur);
  for (const EntréeLogiqueRef& entrée : *EntréesLogiques()) {
    entrée->Lien(sécurité, paramètres, traducteur, this);
  }
  for (const SortieLogiqueRef& sortie : *SortiesLogiques()) {
    sortie->Lien(sécurité, paramètres, traducteur, this);
  }
  if (Watchdog()->Key() != "0" && !Watchdog()->Key().empty()) {
    Watchdog()->Lien(sécurité, paramètres, traducteur, this);
  }
}

void Chassis::ParamètresDepuisBD(const Ref<Recordset>& rstMonRecordSet) {
  Garde(*this, Forme::Procédure, "ParamètresDepuisBD", [&] {
    const auto litLabel = [&](std::string_view colonne, std::string& label) {
      const Valeur* valeur = ChercheChamp(*rstMonRecordSet, colonne);
      if (valeur != nullptr && !EstNul(*valeur)) label = VersTexte(*valeur);
    };
    litLabel("Départ de cycle d'essai", mstrLabelDépartEssai);
    litLabel("Départ de cycle de réarmement", mstrLabelDépartRéarme);
    litLabel("Départ de cyle manuel", mstrLabelDépartManuel);
    litLabel("Entrée Auto/Manu", mstrLabelAutoManu);
    litLabel("Entrée Armé", mstrLabelArmé);
    for (std::size_t i = 0; i < kNombreManuelles; ++i) {
      litLabel("Entrée manuelle " + std::to_string(i + 1), mstrLabelManuelle[i]);
    }
  });
}

// Labels are compared as they stand, so an empty label matches every input without a label.
void Chassis::RepèreLesEntréesConnues() {
  for (const EntréeLogiqueRef& entrée : *EntréesLogiques()) {
    const std::string& label = entrée->Label();
    if (label == mstrLabelArmé) AU_ = entrée;
    if (label == mstrLabelAutoManu) AutoManu_ = entrée;
    if (label == mstrLabelDépartEssai) DépartEssai_ = entrée;
    if (label == mstrLabelDépartRéarme) DépartRéarme_ = entrée;
    for (const std::string& manuelle : mstrLabelManuelle) {
      if (label == manuelle) EntréesManuelles()->Add(entrée->Key(), entrée);
    }
  }
}

void Chassis::TrieLesCapteurs() {
  const CapteursRef triés = Crée<zuma::Capteurs>(LaPlateforme());
  const CapteursRef restants = Capteurs();
  Clés clés;
  // Moves the sensors that qualify, in order; true when one moved.
  const auto déplace = [&](auto&& qualifié) {
    const std::int32_t avant = triés->Count();
    restants->RetireSi([&](const CapteurRef& capteur) {
      if (!qualifié(*capteur)) return false;
      triés->Référence(capteur, capteur->Key());
      clés.insert(capteur->Key());
      return true;
    });
    return triés->Count() != avant;
  };
  déplace(SansFils);
  while (déplace([&](const Capteur& capteur) { return FilsTousTriés(capteur, clés); })) {
  }
  Capteurs(triés);
  for (const CapteurRef& capteur : *triés) capteur->ReprendLesLimitesDesFils();
  if (restants->Count() != 0) Ecarte(*restants);
}

// What the sort leaves is named and let go of: in a cycle each would keep the other, and listen for
// ever to a host that has gone.
void Chassis::Ecarte(const zuma::Capteurs& restants) {
  std::string noms;
  for (const CapteurRef& capteur : restants) {
    noms += (noms.empty() ? " : " : ", ") + capteur->NomDuCapteur();
    capteur->Délie();
  }
  Montre("Gros soucis dans le tri des capteurs...Voir Marcel (K9)" + noms);
}

}  // namespace zuma
