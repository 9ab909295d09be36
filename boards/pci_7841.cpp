#include "boards/pci_7841.h"

#include <algorithm>
#include <array>
#include <string>

#include "base/garde.h"
#include "boards/blocs.h"
#include "boards/operations.h"
#include "boards/partage_can.h"

namespace zuma {
namespace {

using regles_mts::DonnéesUtiles;

constexpr int kTentatives = 3;
constexpr std::array<std::uint8_t, 5> kParamètres{1, 0, 1, 0, 0};
constexpr int kTramesMaximum = 4096;  // a queue that never empties must not stop the pass
constexpr std::int32_t kEchec = -1;
constexpr std::int32_t kPlusGrandNoeud = 0xFF;

constexpr std::uint32_t kMasqueToutPasse = 0x7FF;

// Codes of `CanConfigPort`.
std::int32_t CodeDeVitesse(std::int32_t vitesse) {
  constexpr std::array<std::int32_t, 3> kVitesses{125, 250, 500};
  return static_cast<std::int32_t>(std::ranges::find(kVitesses, vitesse) - kVitesses.begin());
}

std::uint8_t Octet(std::int32_t valeur) {
  return static_cast<std::uint8_t>(valeur);
}

}  // namespace

// --- First generation

std::int32_t Pci7841::ConfigPortW7841(std::int32_t port, std::uint8_t adresse, std::uint8_t masque,
                                      std::int32_t vitesse) {
  Port7841 réglages{.adresse = adresse, .masque = masque};
  const auto& temps = LesRéglages().temps;
  const auto connu = std::ranges::find(temps, vitesse, &TempsCAN::vitesse);
  if (connu != temps.end()) réglages.temps = connu->registres;
  return Lib().W_7841_Config(carte_, port, réglages);
}

void Pci7841::ViderReception(std::int32_t port) {
  Trame7841 trame;
  for (int i = 0; i < kTramesMaximum && Lib().W_7841_RcvMsg(carte_, port, trame) == 1; ++i) {
  }
}

bool Pci7841::Envoie(std::int32_t port, std::uint32_t identifiant, Données octets) {
  Trame7841 trame{.identifiantBas = static_cast<std::uint8_t>(identifiant & 0xFFU),
                  .identifiantHaut = static_cast<std::uint8_t>(identifiant >> 8U),
                  .nombre = static_cast<std::uint8_t>(octets.size())};
  std::ranges::copy(octets, trame.données.begin());
  return Lib().W_7841_SendMsg(carte_, port, trame) == 0;
}

// An answer begins with the command that it answers.
bool Pci7841::Echange(std::int32_t port, Données demande, Trame7841& réponse) {
  const DialogueRègles& dialogue = LesRéglages().dialogue;
  if (!Envoie(port, dialogue.demande, demande)) return false;
  const double fin = matériel_.timer->LitMicrosecondes() + LesRéglages().attenteDémarrage * 1000;
  do {
    if (Lib().W_7841_RcvMsg(carte_, port, réponse) == 1 &&
        réponse.Identifiant() == dialogue.réponse && réponse.nombre > 0 &&
        réponse.données.front() == demande.front()) {
      return true;
    }
  } while (matériel_.timer->LitMicrosecondes() <= fin);
  return false;
}

// A number: low byte, then high byte, behind the command.
std::int32_t Pci7841::Lit(std::int32_t port, Données demande) {
  Trame7841 réponse;
  if (!Echange(port, demande, réponse) || réponse.nombre < 3) return kEchec;
  return réponse.données[1] + 256 * réponse.données[2];
}

std::int32_t Pci7841::LireIdentiteRègle(std::int32_t port, std::string_view numéroDeSérie) {
  const auto série = regles_mts::OctetsDeSérie(numéroDeSérie);
  const std::int32_t noeud =
      Lit(port,
          std::to_array({LesRéglages().dialogue.identité, série[0], série[1], série[2], série[3]}));
  return noeud > kPlusGrandNoeud ? kEchec : noeud;
}

std::int32_t Pci7841::LirePositionID(std::int32_t port, std::int32_t noeud) {
  return Lit(port, std::to_array({LesRéglages().dialogue.positionID, Octet(noeud)}));
}

std::int32_t Pci7841::LireStatusID(std::int32_t port, std::int32_t noeud) {
  return Lit(port, std::to_array({LesRéglages().dialogue.statusID, Octet(noeud)}));
}

// Each parameter is one request, which the ruler sends back as it took it.
std::int32_t Pci7841::ConfigureRègle(std::int32_t port, std::int32_t noeud,
                                     std::span<const std::uint8_t, 5> paramètres) {
  const auto& commandes = LesRéglages().dialogue.paramètres;
  for (std::size_t i = 0; i < paramètres.size(); ++i) {
    const auto demande = std::to_array({commandes[i], Octet(noeud), paramètres[i]});
    Trame7841 réponse;
    if (!Echange(port, demande, réponse) || !std::ranges::equal(DonnéesUtiles(réponse), demande)) {
      return kEchec;
    }
  }
  return 0;
}

void Pci7841::DémarreRègle(std::int32_t port, std::int32_t identifiantA, std::int32_t noeud) {
  (void)Envoie(port, static_cast<std::uint32_t>(identifiantA),
               std::to_array({LesRéglages().dialogue.marche, Octet(noeud)}));
}

// A ruler may send faster than the passes: the last frame counts.
std::optional<std::int32_t> Pci7841::LirePosition(std::int32_t port, std::int32_t identifiant) {
  std::optional<std::int32_t> position;
  Trame7841 trame;
  for (int i = 0; i < kTramesMaximum && Lib().W_7841_RcvMsg(carte_, port, trame) == 1; ++i) {
    if (static_cast<std::int32_t>(trame.Identifiant()) != identifiant) continue;
    if (const auto lue = regles_mts::DécodePosition(DonnéesUtiles(trame))) position = lue;
  }
  return position;
}

bool Pci7841::Tente(Canal& canal) {
  const std::int32_t port = canal.NuméroCanal();
  ConfigPortW7841(port, AdresseDuPort(port), kMasque, kVitesse);
  ViderReception(port);
  const std::int32_t noeud = LireIdentiteRègle(port, LesRéglages().numéroDeSérie);
  canal.NuméroDeNoeud(static_cast<std::int16_t>(noeud));
  if (noeud == kEchec) return false;
  const std::int32_t a = LirePositionID(port, noeud);
  auto& identifiants = canal.Etat<IdentifiantsDeRègle>();
  identifiants.a = a;
  if (a == kEchec || ConfigureRègle(port, noeud, kParamètres) != 0) return false;
  const std::int32_t b = LireStatusID(port, noeud);
  identifiants.b = b;
  if (b == kEchec) return false;
  DémarreRègle(port, a, noeud);
  return true;
}

// --- Second generation

std::int32_t PCI7841B::InitCarteCAN(const Objet& pour, std::int32_t carte, std::int32_t port,
                                    std::uint32_t codeAcceptation, std::uint32_t masqueAcceptation,
                                    std::string_view mode, std::int32_t vitesse) {
  BibliothèqueCAN& can = *pour.LaPlateforme().can;
  const std::int32_t poignée = can.CanOpenDriver(carte, port);
  const PortCAN réglages{.mode = mode == "29 bits" ? 1 : 0,
                         .codeAcceptation = codeAcceptation,
                         .masqueAcceptation = masqueAcceptation,
                         .codeVitesse = CodeDeVitesse(vitesse)};
  if (can.CanConfigPort(poignée, réglages) == kEchec) {
    std::string texte = "init carte CAN";
    const auto ajoute = [&texte](std::string_view ligne, std::string_view valeur) {
      texte.append("\n").append(ligne).append(valeur);
    };
    ajoute("Handle : ", std::to_string(poignée));
    ajoute("N° de carte : ", std::to_string(carte));
    ajoute("N° du port : ", std::to_string(port));
    ajoute("Mode : ", mode);
    ajoute("Acc Code : ", std::to_string(codeAcceptation));
    ajoute("Acc Mask : ", std::to_string(masqueAcceptation));
    ajoute("Vitesse : ", std::to_string(vitesse));
    pour.Montre(texte);
  }
  return poignée;
}

PCI7841B::Règle& PCI7841B::LaRègle(std::int32_t poignée, std::int16_t positionID) {
  const auto connue = std::ranges::find_if(règles_, [&](const Règle& règle) {
    return règle.poignée == poignée && règle.positionID == positionID;
  });
  if (connue != règles_.end()) return *connue;
  courrier_.Ouvre(poignée, static_cast<std::uint16_t>(positionID));
  return règles_.emplace_back(Règle{.poignée = poignée, .positionID = positionID});
}

// --- What boards, blocks and channels ask

namespace pilotes {
namespace {

using regles_mts::Lecture3Aimants;

// In the record, once for each start: the rulers go on as they can.
void DitLesConflits(Carte& carte, const Fonction* deCeBloc) {
  partage_can::Recherche recherche;
  recherche.Ajoute(carte);
  for (const partage_can::Conflit& conflit : recherche.Conflits()) {
    if (deCeBloc != nullptr && conflit.canal->Parent() != deCeBloc) continue;
    Consigne(*conflit.canal, Forme::Méthode, "Initialise", partage_can::EnFrançais(conflit));
  }
}

void DémarreCarte25(Carte& carte) {
  DitLesConflits(carte, nullptr);
  Pci7841& pilote = carte.PiloteDe<Pci7841>(static_cast<std::uint16_t>(carte.Adresse()));
  for (std::int32_t port = 0; port < Pci7841::kPorts; ++port) {
    if (pilote.ConfigPortW7841(port, Pci7841::AdresseDuPort(port), Pci7841::kMasque,
                               Pci7841::kVitesse) == 0) {
      continue;
    }
    throw Echec(Numéro::ErreurDeLObjet,
                "blnErreur d'initialisation de la carte PCI 7841 basé à l'adresse " +
                    std::to_string(carte.Adresse()));
  }
}

// The CAN port that a block opened.
struct PortOuvert : EtatPilote {
  std::optional<std::int32_t> poignée;
};

// A ruler that does not start leaves its channel out of service.
void DémarreCanal25(Canal& canal) {
  canal.EnService(false);
  for (int i = 0; i < kTentatives; ++i) {
    if (!canal.PiloteDe<Pci7841>().Tente(canal)) continue;
    canal.EnService(true);
    return;
  }
  throw Echec(Numéro::ErreurDeLObjet, "Imposiible d'initialiser le CAN");
}

// Between two frames of the ruler the value stays.
void LitCanal25(Canal& canal) {
  const auto position = canal.PiloteDe<Pci7841>().LirePosition(canal.NuméroCanal(),
                                                               canal.Etat<IdentifiantsDeRègle>().b);
  if (position) canal.ValeurCanal(*position);
}

void FermeBloc26(Fonction& bloc) noexcept {
  auto* const port = bloc.EtatOuRien<PortOuvert>();
  if (port == nullptr || !port->poignée) return;
  bloc.LaPlateforme().can->CanCloseDriver(*port->poignée);
  port->poignée.reset();
}

void OuvreBloc26(Fonction& bloc) {
  FermeBloc26(bloc);
  const std::int32_t poignée = PCI7841B::InitCarteCAN(
      bloc, bloc.Base(), bloc.PortCAN(), 0, kMasqueToutPasse, bloc.ModeCAN(), bloc.VitesseCAN());
  bloc.Etat<PortOuvert>().poignée = poignée;
  for (const CanalRef& canal : bloc.LesCanaux()) canal->HandlePort(poignée);
  if (bloc.MAJParFonction() && bloc.LesCanaux().Count() != 0) {
    (void)bloc.PiloteDe<PCI7841B>().LaRègle(poignée, (*bloc.LesCanaux().begin())->PositionID());
  }
  DitLesConflits(*bloc.LaCarte(), &bloc);
}

// One read for all the magnets of the block's ruler: the channels take them in their order.
void RafraîchitBloc26(Fonction& bloc) {
  if (!bloc.MAJParFonction()) {
    RafraîchitLesCanaux(bloc);
    return;
  }
  const zuma::Canals& canaux = bloc.LesCanaux();
  if (canaux.Count() == 0) return;
  const Canal& premier = **canaux.begin();
  auto& pilote = bloc.PiloteDe<PCI7841B>();
  auto port = pilote.Port(premier.HandlePort());
  auto& règle = pilote.LaRègle(premier.HandlePort(), premier.PositionID()).bloc;
  const auto positions = regles_mts::LireToutesPositions(port, premier.PositionID(), règle);
  if (!positions) return;
  std::size_t rang = 0;
  for (const CanalRef& canal : canaux) {
    if (rang >= positions->size()) throw Echec(Numéro::AppelIncorrect);
    canal->TientValeurCanal((*positions)[rang++]);
    if (règle.reçue) canal->DateLaLecture();
  }
}

// A ruler that does not answer leaves its channel out of service, which is told once.
void DémarreLaRègle(Canal& canal) {
  const bool servie = canal.EnService();
  canal.EnService(false);
  auto port = canal.PiloteDe<PCI7841B>().Port(canal.HandlePort());
  const bool échec = regles_mts::DémarreRègle(port, {.numéroDeSérie = canal.NuméroDeSérie(),
                                                     .noeud = canal.NuméroDeNoeud(),
                                                     .positionID = canal.PositionID(),
                                                     .statusID = canal.StatusID(),
                                                     .mode = canal.ModeOpératoire()});
  canal.EnService(!échec);
  if (!échec || !servie) return;
  Consigne(canal, Forme::Méthode, "Initialise",
           "Règle '" + canal.NuméroDeSérie() +
               "' muette au démarrage : canal hors service jusqu'au prochain");
}

// Two positions come in a frame: there is no third magnet to read by this driver.
void DémarreMultimagnet(Canal& canal) {
  const std::int16_t aimant = canal.PositionDeLAimant();
  (void)canal.PiloteDe<PCI7841B>().LaRègle(canal.HandlePort(), canal.PositionID());
  DémarreLaRègle(canal);
  if (aimant > canal.NombreDAimants() || (aimant >= 1 && aimant <= 2)) return;
  canal.EnService(false);
  throw Echec(Numéro::IndiceHorsPlage, DescriptionDEchec(Numéro::IndiceHorsPlage) +
                                           " : Position de l'aimant " + std::to_string(aimant) +
                                           ", 1 ou 2 attendu");
}

// A ruler that does not answer reads 0, which is the position of no magnet and of no time.
void PrendLaPosition(Canal& canal, std::int32_t position) {
  canal.TientValeurCanal(position);
  if (position != 0) canal.DateLaLecture();
}

void LitMono(Canal& canal) {
  auto port = canal.PiloteDe<PCI7841B>().Port(canal.HandlePort());
  const auto position = regles_mts::LireRègleMono(port, canal.PositionID());
  if (position) PrendLaPosition(canal, *position);
}

template <Lecture3Aimants kLecture>
void Lit3Aimants(Canal& canal) {
  auto port = canal.PiloteDe<PCI7841B>().Port(canal.HandlePort());
  const auto position = regles_mts::LireRègle3Aimants(port, canal.PositionID(), kLecture);
  if (position) PrendLaPosition(canal, *position);
}

void LitMultimagnet(Canal& canal) {
  if (canal.PositionDeLAimant() > canal.NombreDAimants()) return;
  auto& pilote = canal.PiloteDe<PCI7841B>();
  auto port = pilote.Port(canal.HandlePort());
  auto& règle = pilote.LaRègle(canal.HandlePort(), canal.PositionID()).simple;
  canal.TientValeurCanal(
      regles_mts::LireRègleMulti(port, canal.PositionID(), canal.PositionDeLAimant(), règle));
  if (règle.reçue) canal.DateLaLecture();
}

}  // namespace

const OpérationsCarte kPCI7841Carte{.démarre = &DémarreCarte25};
const OpérationsPilote kPCI7841{.ouvre = &Ouvre<Pci7841>,
                                .rafraîchitBloc = &RafraîchitLesCanaux,
                                .démarreCanal = &DémarreCanal25,
                                .rafraîchitCanal = &LitCanal25};
const OpérationsPilote kPCI7841B{.ouvre = &Ouvre<PCI7841B>,
                                 .démarreBloc = &OuvreBloc26,
                                 .rafraîchitBloc = &RafraîchitBloc26,
                                 .fermeBloc = &FermeBloc26};
const OpérationsPilote kRègle1Aimant{
    .ouvre = &Ouvre<PCI7841B>, .démarreCanal = &DémarreLaRègle, .rafraîchitCanal = &LitMono};
const OpérationsPilote kRègle3Aimants3{.ouvre = &Ouvre<PCI7841B>,
                                       .démarreCanal = &DémarreLaRègle,
                                       .rafraîchitCanal = &Lit3Aimants<Lecture3Aimants::Trois>};
const OpérationsPilote kRègle3Aimants2_1{
    .ouvre = &Ouvre<PCI7841B>,
    .démarreCanal = &DémarreLaRègle,
    .rafraîchitCanal = &Lit3Aimants<Lecture3Aimants::DeuxMoinsUn>};
const OpérationsPilote kRègleMultimagnet{.ouvre = &Ouvre<PCI7841B>,
                                         .démarreCanal = &DémarreMultimagnet,
                                         .rafraîchitCanal = &LitMultimagnet};

}  // namespace pilotes
}  // namespace zuma
