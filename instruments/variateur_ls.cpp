#include "instruments/variateur_ls.h"

#include <array>
#include <cmath>
#include <string>

#include "tree/journal_modbus.h"

namespace zuma {
namespace {

using OutilsModbus::FormeValeurs;
using OutilsModbus::Résultat;
using OutilsModbus::Valeurs;
using enum ENUM_TYPE_FONCTION;

constexpr double kSilenceMaximal = 100'000;  // microseconds
constexpr std::int32_t kErreursAvantCanal = 10;
constexpr std::int32_t kEssaisAuDépart = 20;
constexpr double kFréquenceDeLecture = 20;  // hertz
constexpr std::int32_t kRegistresDEtat = 3;

// The messages differ by the closing parenthesis, which stands in the first one only.
struct PasDeDépart {
  std::uint16_t registre;
  std::uint16_t valeur;
  std::string_view message;
};
constexpr std::array<PasDeDépart, 3> kDépart{{
    {1032, 1, "Internal program speed controler stopped. Please Call K9 (++00 (0)0 00 00 00 00)."},
    {1032, 0, "Internal program speed controler stopped. Please Call K9 (++00 (0)0 00 00 00 00."},
    {1146, 2, "Internal program speed controler stopped. Please Call K9 (++00 (0)0 00 00 00 00."},
}};

// Lines of the journal, by result; an unknown answer leaves the exchange open.
struct LigneDeJournal {
  Résultat résultat;
  std::string_view texte;
};
constexpr std::array<LigneDeJournal, 7> kJournal{{
    {Résultat::Inconnue, ",Erreur non gérée,"},
    {Résultat::AutreEsclave, ",Adresse differente de question,"},
    {Résultat::AutreFonction, ",Fonction differente de question,"},
    {Résultat::Crc, ",Erreur CRC,"},
    {Résultat::Diagnostic, ",Erreur disgnostic,"},
    {Résultat::EcritureRefusée, ",Erreur ecriture,"},
    {Résultat::LectureRefusée, ",Erreur lecture,"},
}};

std::string_view TexteDeJournal(Résultat résultat) {
  for (const LigneDeJournal& ligne : kJournal) {
    if (ligne.résultat == résultat) return ligne.texte;
  }
  return kJournal.back().texte;
}

Fonction* PremièreDuType(Carte& carte, ENUM_TYPE_FONCTION type) {
  for (const FonctionRef& bloc : carte.LesFonctions()) {
    if (bloc->TypeDeFonction() == type) return bloc.Brut();
  }
  return nullptr;
}

// The drive is one slave: every block bears its address, and the first one is asked.
std::int32_t Adresse(Carte& carte) {
  for (const FonctionRef& bloc : carte.LesFonctions()) {
    return bloc->ModbusAdresse();
  }
  throw Echec(Numéro::ObjetAbsent);
}

template <class Travail>
void PourChaqueCanal(const Fonction& bloc, Travail&& travail) {
  for (const CanalRef& canal : bloc.LesCanaux()) {
    if (canal->NuméroCanal() >= 0) travail(*canal);
  }
}

template <class Travail>
void PourChaqueBloc(Carte& carte, ENUM_TYPE_FONCTION type, Travail&& travail) {
  for (const FonctionRef& bloc : carte.LesFonctions()) {
    if (bloc->TypeDeFonction() == type) PourChaqueCanal(*bloc, travail);
  }
}

std::uint16_t MotDesSorties(const Fonction& bloc) {
  double mot = 0;
  PourChaqueCanal(bloc, [&](Canal& canal) {
    if (canal.ValeurCanal() == kVrai) mot += std::exp2(canal.NuméroCanal());
  });
  return OutilsModbus::Registre(mot);
}

}  // namespace

std::array<std::uint16_t, 3> VariateurLS::Consigne(double valeur) {
  const double centièmes = std::round(std::fabs(valeur) * 100);
  const double entier = std::floor(centièmes / 100);
  const int signe = valeur > 0 ? 1 : (valeur < 0 ? -1 : 0);
  return {OutilsModbus::Registre(signe), OutilsModbus::Registre(entier),
          OutilsModbus::Registre(centièmes - entier * 100)};
}

void VariateurLS::CommLSAvecSoftK9(Carte& carte) {
  mdblFréquenceLecture = kFréquenceDeLecture;
  if (!miseEnRouteFaite_) MiseEnRoute(carte);
  if (mblnEnAttente) {
    ChercheRéponse(carte);
    return;
  }
  if (compteurErreurs_ == 0) PrépareQuestion(carte);
  Envoie(carte);
}

// Blocks: nothing of the drive may move before its internal program is known to be stopped.
void VariateurLS::MiseEnRoute(Carte& carte) {
  miseEnRouteFaite_ = true;
  compteurErreurs_ = 0;
  for (std::size_t pas = 0; pas < kDépart.size();) {
    if (EcritEtAttend(carte, kDépart[pas].registre, kDépart[pas].valeur)) {
      ++pas;
      continue;
    }
    if (++compteurErreurs_ > kEssaisAuDépart) {
      carte.Montre(kDépart[pas].message);
      return;
    }
    pas = 0;
  }
}

bool VariateurLS::EcritEtAttend(Carte& carte, std::uint16_t registre, std::uint16_t valeur) {
  OutilsModbus::ConstruitQuestion(Adresse(carte), 16, registre, 1, {&valeur, 1}, question_);
  const LiaisonSérieRef liaison = carte.RS();
  (void)liaison->LitTampon();
  réponse_.clear();
  liaison->EcritPort(question_);
  const double départ = matériel_.timer->LitMicrosecondes();
  const double attente = TimeOut(OutilsModbus::LongueurTrame(question_), liaison->VitesseSérie());
  do {
    réponse_ += liaison->LitTampon();
    if (OutilsModbus::DécodeRéponse(réponse_, question_, nullptr, FormeValeurs::Octets) ==
        Résultat::Bonne) {
      return true;
    }
  } while (matériel_.timer->LitMicrosecondes() - départ <= attente);
  return false;
}

void VariateurLS::ChercheRéponse(Carte& carte) {
  const LiaisonSérieRef liaison = carte.RS();
  if (liaison->OctetsReçus() > 0) réponse_ += liaison->LitTampon();
  Valeurs valeurs;
  const Résultat résultat = OutilsModbus::DécodeRéponse(
      réponse_, question_, lectureEnCours_ ? &valeurs : nullptr, FormeValeurs::Octets);
  const double maintenant = matériel_.timer->LitMicrosecondes();
  std::string_view journal;
  if (maintenant - heureDEnvoi_ > kSilenceMaximal && résultat != Résultat::Bonne) {
    compteurErreurs_ = 1;
    mblnEnAttente = false;
  } else if (résultat == Résultat::Bonne) {
    Accepte(carte, valeurs);
  } else if (résultat == Résultat::Incomplète) {
    AttendLaSuite(maintenant);
  } else {
    ++compteurErreurs_;
    if (résultat != Résultat::Inconnue) mblnEnAttente = false;
    journal = TexteDeJournal(résultat);
  }
  const std::int32_t compteur = compteurErreurs_;
  if (compteurErreurs_ >= kErreursAvantCanal) {
    compteurErreurs_ = 0;
    PublieErreur(carte, kVrai);
  }
  // Last: a journal that cannot be written must not hold the exchange.
  if (!journal.empty()) Journalise(journal, compteur);
}

// The rest of a cut answer gets one time-out from the first pass that saw it. Plain silence is not
// a cut answer: it ends by the limit of the whole exchange and never counts to ten.
void VariateurLS::AttendLaSuite(double maintenant) {
  if (timeOut_ == 0 || réponse_.empty()) return;
  if (heureDeRéception_ == 0) {
    heureDeRéception_ = maintenant;
  } else if (maintenant - heureDeRéception_ > timeOut_) {
    mblnEnAttente = false;
    ++compteurErreurs_;
  }
}

void VariateurLS::Accepte(Carte& carte, const Valeurs& valeurs) {
  compteurErreurs_ = 0;
  mblnEnAttente = false;
  if (lectureEnCours_) {
    const auto octet = [&](std::int32_t rang) { return std::uint32_t{valeurs.Item(rang)}; };
    const std::uint32_t mot = octet(2) + (octet(1) << 8U) + (octet(4) << 16U) + (octet(3) << 24U);
    const double mesure = octet(4) + octet(3) * 256;
    PourChaqueBloc(carte, FctEntréesLogiques, [&](Canal& canal) {
      const int bit = canal.NuméroCanal();
      canal.ValeurCanal(bit < 32 && ((mot >> bit) & 1U) != 0 ? kVrai : 0);
    });
    PourChaqueBloc(carte, FctEntréesAnalogiques, [&](Canal& canal) { canal.ValeurCanal(mesure); });
  }
  PublieErreur(carte, 0);
}

void VariateurLS::Journalise(std::string_view texte, std::int32_t compteur) {
  matériel_.plateforme.fichiers->AjouteLigne(
      kJournalModbus,
      matériel_.plateforme.horloge->TexteHeure() + std::string(texte) + std::to_string(compteur));
}

void VariateurLS::PublieErreur(Carte& carte, double valeur) {
  for (const FonctionRef& bloc : carte.LesFonctions()) {
    if (const CanalRef canal = bloc->CanalErreurModbus()) canal->ValeurCanal(valeur);
  }
}

void VariateurLS::PrépareQuestion(Carte& carte) {
  const Fonction* états = PremièreDuType(carte, FctEntréesLogiques);
  const double maintenant = matériel_.timer->LitMicrosecondes();
  const bool échéance = maintenant > mdblHeureLecture + 1e6 / mdblFréquenceLecture;
  lectureEnCours_ = échéance && états != nullptr;
  if (!lectureEnCours_) {
    if (échéance) mdblFréquenceLecture = 0;
    PrépareEcriture(carte);
    return;
  }
  mdblHeureLecture = maintenant;
  PrépareLecture(*états);
}

void VariateurLS::PrépareLecture(const Fonction& états) {
  OutilsModbus::ConstruitQuestion(états.ModbusAdresse(), états.ModbusFonction(),
                                  états.ModbusRegistreDeDepart(), kRegistresDEtat, {}, question_);
}

// Register and function are those of the logic outputs where there are any, else of the set point.
void VariateurLS::PrépareEcriture(Carte& carte) {
  Valeurs valeurs;
  const Fonction* cible = nullptr;
  bool enMouvement = false;
  if (const Fonction* consignes = PremièreDuType(carte, FctSortiesAnalogiques)) {
    cible = consignes;
    PourChaqueCanal(*consignes, [&](Canal& canal) {
      const auto registres = Consigne(canal.ValeurCanal());
      for (const std::uint16_t registre : registres) valeurs.Ajoute(registre);
      enMouvement = registres[0] != 0;
    });
  }
  valeurs.Ajoute(enMouvement ? OutilsModbus::Registre(carte.ConsigneRampe()) : std::uint16_t{0});
  if (const Fonction* sorties = PremièreDuType(carte, FctSortiesLogiques)) {
    cible = sorties;
    valeurs.Ajoute(MotDesSorties(*sorties));
  }
  if (cible == nullptr) {
    throw Echec(Numéro::ErreurDeLObjet, "Variateur sans bloc de sorties : rien à lui écrire");
  }
  OutilsModbus::ConstruitQuestion(Adresse(carte), cible->ModbusFonction(),
                                  cible->ModbusRegistreDeDepart(), valeurs.Nombre(),
                                  valeurs.Toutes(), question_);
}

void VariateurLS::Envoie(Carte& carte) {
  const LiaisonSérieRef liaison = carte.RS();
  (void)liaison->LitTampon();
  réponse_.clear();
  liaison->EcritPort(question_);
  mblnEnAttente = true;
  heureDEnvoi_ = matériel_.timer->LitMicrosecondes();
  timeOut_ = TimeOut(OutilsModbus::LongueurTrame(question_), liaison->VitesseSérie());
  heureDeRéception_ = 0;
}

}  // namespace zuma
