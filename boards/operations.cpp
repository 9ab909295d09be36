// What blocks and channels ask of the port-mapped and PCI boards, once for all boards.
#include "boards/operations.h"

#include <algorithm>
#include <bit>
#include <concepts>
#include <string>
#include <type_traits>

#include "boards/a_826pg.h"
#include "boards/acl_6126.h"
#include "boards/acl_8316.h"
#include "boards/blocs.h"
#include "boards/entrees_12_bits.h"
#include "boards/ik_121.h"
#include "boards/pci_6208_v.h"
#include "boards/pci_9111_hr.h"
#include "boards/pcl_731.h"
#include "boards/pet48_dio.h"
#include "tree/carte.h"

namespace zuma::pilotes {
namespace {

using enum ENUM_TYPE_FONCTION;

bool AvecBlocs(Carte& carte, ENUM_TYPE_FONCTION type) {
  const Fonctions& blocs = carte.LesFonctions();
  return std::any_of(blocs.begin(), blocs.end(),
                     [&](const FonctionRef& bloc) { return bloc->TypeDeFonction() == type; });
}

// --- Logic inputs

// What a board with logic inputs must have; it is asked once, where its operations are made.
template <class Board>
concept ADesEntrées = requires(Board& board, std::int16_t voie) {
  { Board::kEntrées } -> std::same_as<const RèglesDEntrées&>;
  { board.LitEntrées() } -> std::same_as<std::uint32_t>;
  { board.LitEntrée(voie) } -> std::same_as<bool>;
};

// Last word of the logic inputs, which the change test compares; none before the first read. It is
// the block's own: two blocks on one board each see every change.
struct DernierMot : EtatPilote {
  std::optional<std::uint32_t> mot;
};

// A board that weighs its word takes some words for the same one.
template <class Board>
bool PassePourLeMême(std::uint32_t mot, std::uint32_t précédent) {
  constexpr auto kPoids = Board::kEntrées.poids;
  return kPoids(mot) == kPoids(précédent);
}

// The first word after a start counts as a change, whatever it is: a wire that broke before must be
// seen.
template <class Board>
void DémarreEntrées(Fonction& bloc) {
  bloc.Etat<DernierMot>().mot.reset();
  auto& board = bloc.PiloteDe<Board>();
  if constexpr (requires { board.DémarreEntrées(true); }) {
    board.DémarreEntrées(AvecBlocs(*bloc.LaCarte(), FctSortiesLogiques));
  } else {
    board.DémarreEntrées();
  }
}

// Lines of a block's channels; a channel that has no bit has none.
std::uint32_t LignesDe(const Fonction& bloc) {
  std::uint32_t lignes = 0;
  for (const CanalRef& canal : bloc.LesCanaux()) {
    const std::int16_t numéro = canal->NuméroCanal();
    if (EstUneVoie(numéro, kBitsDuMot)) lignes |= Masque(numéro);
  }
  return lignes;
}

// Those of these lines that the last read did not give: a port always answers, a library may
// refuse. Lines that no channel has are not missed, since a library need not know the whole board.
template <class Board, class Lignes>
std::uint32_t Refusées([[maybe_unused]] const Board& board, [[maybe_unused]] Lignes&& lignes) {
  if constexpr (Board::kEntrées.peutRefuser) {
    static_assert(Board::kEntrées.bitParNuméro, "a channel must be the line of its number");
    return lignes() & ~board.LignesLues();
  }
  return 0;
}
Echec Refusée(std::uint32_t lignes) {
  return Echec(Numéro::MatérielAbsent, "Lecture des entrées logiques refusée par la carte, ligne " +
                                           std::to_string(std::countr_zero(lignes)));
}

// A channel takes the bit of its rank in the block, or of its number where the board or the block's
// setting says so. One that has no bit reads clear; it is told after the others got theirs.
template <class Board>
void RépartitLesBits(Fonction& bloc, std::uint32_t mot, void (Canal::*reçoit)(double)) {
  constexpr RèglesDEntrées kRègles = Board::kEntrées;
  const bool parNuméro =
      kRègles.bitParNuméro || (kRègles.parCanalPossible && !bloc.MAJParFonction());
  std::int16_t rang = 0;
  std::int16_t àVérifier = 0;
  for (const CanalRef& canal : bloc.LesCanaux()) {
    const std::int16_t bit = parNuméro ? canal->NuméroCanal() : rang;
    const bool existe = EstUneVoie(bit, kBitsDuMot);
    if (!existe) àVérifier = bit;
    (*canal.*reçoit)(existe && (mot & Masque(bit)) != 0 ? kVrai : 0);
    ++rang;
  }
  ExigeVoie(àVérifier, kBitsDuMot);
}

// One read: the word that is compared is the word that the channels get. With a second read behind
// the first, a contact that bounces in between is kept as seen and never shown.
//
// Where a library answers for the board, a read that it refuses opens every contact: a stop that
// waits for an open one must not be hidden by what was read before. Such values are of no time.
template <class Board>
void RafraîchitEntrées(Fonction& bloc) {
  auto& board = bloc.PiloteDe<Board>();
  const std::uint32_t mot = board.LitEntrées();
  auto& précédent = bloc.Etat<DernierMot>().mot;
  const auto lignes = [&] { return LignesDe(bloc); };
  if (const std::uint32_t refusées = Refusées(board, lignes); refusées != 0) {
    précédent.reset();
    RépartitLesBits<Board>(bloc, 0, &Canal::TientValeurCanal);
    throw Refusée(refusées);
  }
  if (précédent == mot) {
    for (const CanalRef& canal : bloc.LesCanaux()) canal->DateLaLecture();
    return;
  }
  if (précédent && PassePourLeMême<Board>(mot, *précédent)) {
    précédent.reset();  // not seen in this refresh, but in the next
    return;
  }
  précédent = mot;
  RépartitLesBits<Board>(bloc, mot, &Canal::ValeurCanal);
}

template <class Board>
void LitEntrée(Canal& canal) {
  auto& board = canal.PiloteDe<Board>();
  const bool vrai = board.LitEntrée(canal.NuméroCanal());
  const auto ligne = [&] { return Masque(canal.NuméroCanal()); };
  if (const std::uint32_t refusées = Refusées(board, ligne); refusées != 0) {
    canal.TientValeurCanal(0);
    throw Refusée(refusées);
  }
  canal.ValeurCanal(vrai ? kVrai : 0);
}

template <ADesEntrées Board>
constexpr OpérationsPilote kEntréesDe{.ouvre = &Ouvre<Board>,
                                      .démarreBloc = &DémarreEntrées<Board>,
                                      .rafraîchitBloc = &RafraîchitEntrées<Board>,
                                      .rafraîchitCanal = &LitEntrée<Board>};

// --- Outputs

// A port takes what it is written blindly; a library says whether it took it.
template <class Ecriture>
bool EstPrise(Ecriture&& écriture) {
  if constexpr (std::is_void_v<std::invoke_result_t<Ecriture&>>) {
    écriture();
    return true;
  } else {
    return écriture();
  }
}

template <class Ecriture>
void EcritEtMarque(Canal& canal, Ecriture&& écriture) {
  canal.OublieAtteint();
  if (EstPrise(écriture)) canal.MarqueAtteint();
}

// --- Logic outputs

template <class Board>
void DémarreSorties(Fonction& bloc) {
  auto& board = bloc.PiloteDe<Board>();
  if constexpr (requires { board.DémarreSorties(true); }) {
    board.DémarreSorties(AvecBlocs(*bloc.LaCarte(), FctEntréesLogiques));
  } else {
    board.DémarreSorties();
  }
}

// Only -1 counts for a block, where a single channel takes anything but 0. A channel that the board
// does not have is told after the write: it must not keep a stop from the others.
template <class Board>
void RafraîchitSorties(Fonction& bloc) {
  std::uint32_t image = 0;
  std::int16_t àVérifier = 0;
  for (const CanalRef& canal : bloc.LesCanaux()) {
    if (canal->ValeurCanal() != kVrai) continue;
    const std::int16_t numéro = canal->NuméroCanal();
    if (EstUneVoie(numéro, Board::kLignes)) {
      image |= Masque(numéro);
    } else {
      àVérifier = numéro;
    }
  }
  const bool prise = EstPrise([&] { return bloc.PiloteDe<Board>().EcritSorties(image); });
  for (const CanalRef& canal : bloc.LesCanaux()) {
    const bool marqué = prise && EstUneVoie(canal->NuméroCanal(), Board::kLignes);
    marqué ? canal->MarqueAtteint() : canal->OublieAtteint();
  }
  ExigeVoie(àVérifier, Board::kLignes);
}

template <class Board>
void EcritSortie(Canal& canal) {
  ExigeVoie(canal.NuméroCanal(), Board::kLignes);
  EcritEtMarque(canal, [&] {
    return canal.PiloteDe<Board>().EcritSortie(canal.NuméroCanal(), canal.ValeurCanal() != 0);
  });
}

template <class Board>
constexpr OpérationsPilote kSortiesDe{.ouvre = &Ouvre<Board>,
                                      .démarreBloc = &DémarreSorties<Board>,
                                      .rafraîchitBloc = &RafraîchitSorties<Board>,
                                      .rafraîchitCanal = &EcritSortie<Board>};

// --- Analog inputs

template <class Board>
void DémarreAnalogique(Fonction& bloc) {
  bloc.PiloteDe<Board>().DémarreAnalogique(bloc.MAJParFonction());
}

template <class Board>
void LitAnalogique(Canal& canal) {
  auto& board = canal.PiloteDe<Board>();
  canal.LitMoyenne(
      [&](std::int16_t& gain) { return board.LitAnalogique(canal.NuméroCanal(), gain); },
      Board::kPleineEchelle);
}

template <class Board>
constexpr OpérationsPilote kAnalogiqueDe{.ouvre = &Ouvre<Board>,
                                         .démarreBloc = &DémarreAnalogique<Board>,
                                         .rafraîchitBloc = &RafraîchitLesCanaux,
                                         .rafraîchitCanal = &LitAnalogique<Board>};

// The channels of a scan take the sums in the order of the block.
void RafraîchitScan(Fonction& bloc) {
  if (!bloc.MAJParFonction()) {
    RafraîchitLesCanaux(bloc);
    return;
  }
  ACL_8316::Sommes sommes{};
  bloc.PiloteDe<ACL_8316>().LitScan(bloc.NbLecture(), sommes);
  std::size_t rang = 0;
  for (const CanalRef& canal : bloc.LesCanaux()) {
    if (rang >= sommes.size()) throw Echec(Numéro::IndiceHorsPlage);
    canal->ValeurCanal(Divise(sommes[rang++], bloc.NbLecture()) * kPleineEchelle /
                       ACL_8316::kPleineEchelle);
  }
}

// --- Analog outputs

template <class Board>
void DémarreSortiesAnalogiques(Fonction& bloc) {
  bloc.PiloteDe<Board>().DémarreSortiesAnalogiques();
}

template <class Board>
void EcritAnalogique(Canal& canal) {
  EcritEtMarque(canal, [&] {
    return canal.PiloteDe<Board>().EcritAnalogique(canal.NuméroCanal(),
                                                   VersEntier16(canal.ValeurCanal()));
  });
}

template <class Board>
constexpr OpérationsPilote kSortiesAnalogiquesDe{.ouvre = &Ouvre<Board>,
                                                 .démarreBloc = &DémarreSortiesAnalogiques<Board>,
                                                 .rafraîchitBloc = &RafraîchitLesCanaux,
                                                 .rafraîchitCanal = &EcritAnalogique<Board>};

void DémarreSortieOuFréquence(Canal& canal) {
  if (canal.EnFréquence()) canal.PiloteDe<ACL_8316>().ArrêteFréquence();
}

void EcritSortieOuFréquence(Canal& canal) {
  if (!canal.EnFréquence()) {
    EcritAnalogique<ACL_8316>(canal);
    return;
  }
  EcritEtMarque(canal, [&] {
    canal.PiloteDe<ACL_8316>().ProgrammeFréquence(VersEntier16(canal.ValeurCanal()));
  });
}

// --- Channels that have a start of their own

constexpr OpérationsPilote AvecDépart(OpérationsPilote opérations, void (*démarreCanal)(Canal&)) {
  opérations.démarreCanal = démarreCanal;
  return opérations;
}

// The PCI library's answers are not looked at: a number that its board lacks is told at the start.
template <std::int16_t kNombre>
void VérifieVoie(Canal& canal) {
  ExigeVoie(canal.NuméroCanal(), kNombre);
}

void RemetAZéro(Canal& canal) {
  canal.PiloteDe<PCI_6208_V>().EcritAnalogique(canal.NuméroCanal(), 0);
}

void DémarreAxe(Canal& canal) {
  canal.PiloteDe<IK_121>().IK121_InitialiseAxe(canal.NuméroCanal());
}

// --- Whole boards

void DémarrePET48(Carte& carte) {
  PET48_DIO({carte.LaPlateforme(), carte.LeTimer()}, static_cast<std::uint16_t>(carte.Adresse()))
      .DémarreCarte(AvecBlocs(carte, FctSortiesLogiques));
}

}  // namespace

const OpérationsPilote kPCL731Entrées = kEntréesDe<PCL_731>;
const OpérationsPilote kPCL731Sorties = kSortiesDe<PCL_731>;
const OpérationsPilote kPET48EntréesTB24 = kEntréesDe<PET48_TB24>;
const OpérationsPilote kPET48EntréesPCLD = kEntréesDe<PET48_PCLD>;
const OpérationsPilote kPET48SortiesTB24 = kSortiesDe<PET48_TB24>;
const OpérationsPilote kPET48SortiesPCLD = kSortiesDe<PET48_PCLD>;
const OpérationsPilote kACL8316Entrées = kEntréesDe<ACL_8316>;
const OpérationsPilote kACL8316Sorties = kSortiesDe<ACL_8316>;
const OpérationsPilote kACL8316Analogique{.ouvre = &Ouvre<ACL_8316>,
                                          .démarreBloc = &DémarreAnalogique<ACL_8316>,
                                          .rafraîchitBloc = &RafraîchitScan,
                                          .rafraîchitCanal = &LitAnalogique<ACL_8316>};
const OpérationsPilote kACL8316SortiesAnalogiques{
    .ouvre = &Ouvre<ACL_8316>,
    .démarreBloc = &DémarreSortiesAnalogiques<ACL_8316>,
    .rafraîchitBloc = &RafraîchitLesCanaux,
    .démarreCanal = &DémarreSortieOuFréquence,
    .rafraîchitCanal = &EcritSortieOuFréquence};
const OpérationsPilote kA826Entrées = kEntréesDe<A_826PG>;
const OpérationsPilote kA826Sorties = kSortiesDe<A_826PG>;
const OpérationsPilote kA826Analogique = kAnalogiqueDe<A_826PG>;
const OpérationsPilote kA826SortiesAnalogiques = kSortiesAnalogiquesDe<A_826PG>;
const OpérationsPilote kACL6126Entrées = kEntréesDe<ACL_6126>;
const OpérationsPilote kACL6126Sorties = kSortiesDe<ACL_6126>;
const OpérationsPilote kACL6126SortiesAnalogiques = kSortiesAnalogiquesDe<ACL_6126>;
const OpérationsPilote kPCL813Analogique = kAnalogiqueDe<PCL_813B>;
const OpérationsPilote kACL8113Analogique = kAnalogiqueDe<ACL_8113>;
const OpérationsPilote kPCL728Sorties = kSortiesAnalogiquesDe<PCL_728>;
const OpérationsPilote kACL6128Sorties = kSortiesAnalogiquesDe<ACL_6128>;
const OpérationsPilote kPCI9111Entrées =
    AvecDépart(kEntréesDe<PCI_9111_HR>, &VérifieVoie<PCI_9111_HR::kLignesDesPorts>);
const OpérationsPilote kPCI9111Sorties =
    AvecDépart(kSortiesDe<PCI_9111_HR>, &VérifieVoie<PCI_9111_HR::kLignesDesPorts>);
const OpérationsPilote kPCI9111Analogique =
    AvecDépart(kAnalogiqueDe<PCI_9111_HR>, &VérifieVoie<PCI_9111_HR::kVoies>);
const OpérationsPilote kPCI9111SortiesAnalogiques = kSortiesAnalogiquesDe<PCI_9111_HR>;
const OpérationsPilote kPCI6208VSorties =
    AvecDépart(kSortiesAnalogiquesDe<PCI_6208_V>, &RemetAZéro);
const OpérationsPilote kIK121 = AvecDépart(kAnalogiqueDe<IK_121>, &DémarreAxe);
const OpérationsCarte kPET48Carte{.démarre = &DémarrePET48};

}  // namespace zuma::pilotes
