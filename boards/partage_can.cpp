#include "boards/partage_can.h"

#include <array>

#include "tree/fonction.h"

namespace zuma::partage_can {
namespace {

using enum ENUM_DRIVER;

std::string DriverDuBloc(const Canal& canal) {
  return std::string(canal.Parent()->LeDriver().texteFonction);
}
std::string Numéro(const Canal& canal) {
  return std::to_string(canal.NuméroCanal());
}
std::string RéglagesDuPort(const Canal& canal) {
  return std::to_string(canal.Parent()->VitesseCAN()) + " kbit/s, " + canal.Parent()->ModeCAN();
}
std::string Identifiant(const Canal& canal) {
  return std::to_string(canal.PositionID());
}
std::string NuméroDeSérie(const Canal& canal) {
  return canal.NuméroDeSérie();
}

// `valeur`: what the column holds; `attendu` is empty where the other channel's is expected.
struct Textes {
  std::string_view colonne, français, anglais;
  std::string (*valeur)(const Canal&);
  std::string_view attendu{};
};

// In the order of `Empêchement`.
constexpr std::array<Textes, 6> kTextes{{
    {"Driver", "le port CAN sert déjà une règle d'une autre génération",
     "the CAN port serves a ruler of the other generation of drivers already", &DriverDuBloc},
    {"Numéro du Canal", "le port CAN sert déjà une règle, seule sur son port",
     "the CAN port serves a ruler already that takes it for itself", &Numéro, "a port of its own"},
    {"Vitesse du CAN", "le port CAN a déjà une autre vitesse ou un autre mode",
     "the CAN port has another speed or mode already", &RéglagesDuPort},
    {"Position ID", "Position ID d'une autre règle du port",
     "another ruler of the port has this identifier", &Identifiant, "an identifier of its own"},
    {"Position ID", "la règle de ce numéro de série a déjà un autre Position ID",
     "the ruler of this serial number has another identifier already", &Identifiant},
    {"N° de série", "le bloc ne lit que la règle de son premier canal",
     "the block reads the ruler of its first channel alone", &NuméroDeSérie},
}};

const Textes& Les(const Conflit& conflit) {
  return kTextes[static_cast<std::size_t>(conflit.quoi)];
}

bool EstDeGénération1(const Canal& canal) {
  return canal.Driver() == drvpci7841;
}

bool EstUneRègle(const Canal& canal) {
  switch (canal.Driver()) {
    case drvpci7841:
    case drvpci7841_2:
    case DrvRègleMTS1Aimant:
    case DrvRègleMTS3Aimants3:
    case DrvRègleMTS3Aimants2_1:
    case DrvRègleMTSMultiMagnet:
      return true;
    default:
      return false;
  }
}

}  // namespace

std::string EnFrançais(const Conflit& conflit) {
  return "Canal " + conflit.canal->Key() + " : " + std::string(Les(conflit).français) + " (canal " +
         conflit.autre->Key() + ")";
}

std::string_view Colonne(const Conflit& conflit) noexcept {
  return Les(conflit).colonne;
}

bool EstDuBloc(const Conflit& conflit) noexcept {
  return conflit.quoi == Empêchement::Générations || conflit.quoi == Empêchement::Réglages;
}

std::string EnAnglais(const Conflit& conflit) {
  return std::string(Les(conflit).anglais) + " (channel " + conflit.autre->Key() + ")";
}

std::string Trouvé(const Conflit& conflit) {
  return Les(conflit).valeur(*conflit.canal);
}

std::string Attendu(const Conflit& conflit) {
  const Textes& textes = Les(conflit);
  return textes.attendu.empty() ? textes.valeur(*conflit.autre) : std::string(textes.attendu);
}

void Recherche::Note(const Canal& canal, const Canal& autre, Empêchement quoi) {
  conflits_.push_back({&canal, &autre, quoi});
}

void Recherche::AjouteRègle25(Port& port, const Canal& canal) {
  if (port.premier == nullptr) {
    port.premier = &canal;
  } else {
    Note(canal, *port.premier,
         EstDeGénération1(*port.premier) ? Empêchement::Seule : Empêchement::Générations);
  }
}

void Recherche::AjouteRègle26(Port& port, const Canal& canal, const Canal& têteDeBloc) {
  if (port.premier == nullptr) port.premier = &canal;
  const Canal& premier = *port.premier;
  if (EstDeGénération1(premier)) return Note(canal, premier, Empêchement::Générations);
  const Fonction& bloc = *canal.Parent();
  const Fonction& autreBloc = *premier.Parent();
  const bool enTête = &canal == &têteDeBloc;
  if (enTête &&
      (bloc.VitesseCAN() != autreBloc.VitesseCAN() || bloc.ModeCAN() != autreBloc.ModeCAN())) {
    Note(canal, premier, Empêchement::Réglages);
  }
  const std::string& série = canal.NuméroDeSérie();
  if (bloc.MAJParFonction() && !enTête) {
    if (!série.empty() && série != têteDeBloc.NuméroDeSérie()) {
      Note(canal, têteDeBloc, Empêchement::Bloc);
    }
    return;
  }
  const Canal& parId = *port.parIdentifiant.try_emplace(canal.PositionID(), &canal).first->second;
  if (parId.NuméroDeSérie() != série) return Note(canal, parId, Empêchement::Identifiant);
  const Canal& parSérie = *port.parSérie.try_emplace(série, &canal).first->second;
  if (parSérie.PositionID() != canal.PositionID()) Note(canal, parSérie, Empêchement::Série);
}

void Recherche::Ajoute(Carte& carte) {
  const auto base = static_cast<std::uint16_t>(carte.Adresse());
  for (const FonctionRef& bloc : carte.LesFonctions()) {
    const Canal* tête = nullptr;
    for (const CanalRef& canal : *bloc->Canals()) {
      if (!EstUneRègle(*canal) || canal->Parent() == nullptr) continue;
      if (tête == nullptr) tête = &*canal;
      const bool une = EstDeGénération1(*canal);
      Port& port = ports_[{base, une ? canal->NuméroCanal() : bloc->PortCAN()}];
      if (une) {
        AjouteRègle25(port, *canal);
      } else {
        AjouteRègle26(port, *canal, *tête);
      }
    }
  }
}

}  // namespace zuma::partage_can
