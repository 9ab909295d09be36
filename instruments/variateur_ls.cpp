#include "instruments/variateur_ls.h"

#include <array>
#include <cmath>
#include <string>
#include <utility>

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
// A half that is a little less in binary, such as that of 0.145, rounds up as its text does.
constexpr double kCommeSonTexte = 1 + 1e-15;
constexpr double kEntreDeuxDéparts = 1'000'000;  // microseconds

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
    if (canal->NuméroCanal() >= 0) travail(canal);
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
  PourChaqueCanal(bloc, [&](const CanalRef& canal) {
    if (canal->ValeurCanal() == kVrai) mot += std::exp2(canal->NuméroCanal());
  });
  return OutilsModbus::Registre(mot);
}

}  // namespace

std::array<std::uint16_t, 3> VariateurLS::Consigne(double valeur) {
  const double centièmes = std::round(std::fabs(valeur) * 100 * kCommeSonTexte);
  const double entier = std::floor(centièmes / 100);
  const int signe = valeur > 0 ? 1 : (valeur < 0 ? -1 : 0);
  return {OutilsModbus::Registre(signe), OutilsModbus::Registre(entier),
          OutilsModbus::Registre(centièmes - entier * 100)};
}

void VariateurLS::CommLSAvecSoftK9(Carte& carte) {
  mdblFréquenceLecture = kFréquenceDeLecture;
  const bool première = !std::exchange(miseEnRouteFaite_, true);
  if (!LigneOuverte(carte)) return;
  if (première) MiseEnRoute(carte);
  if (mblnEnAttente) {
    ChercheRéponse(carte);
    return;
  }
  const double maintenant = matériel_.timer->LitMicrosecondes();
  if (LaisseLaLigne(carte, maintenant)) return;
  PrépareQuestion(carte, maintenant);
  Envoie(carte);
}

// A line that failed is closed, opened anew every second and told as often: in between it counts
// like a silent drive.
bool VariateurLS::LigneOuverte(Carte& carte) {
  if (reprise_.Ouverte(*carte.RS(), *matériel_.timer)) return true;
  const double maintenant = matériel_.timer->LitMicrosecondes();
  if (maintenant - heureDEnvoi_ > kSilenceMaximal) {
    heureDEnvoi_ = maintenant;
    SeTait(carte);
  }
  return false;
}

template <class Travail>
void VariateurLS::SurLaLigne(Carte& carte, Travail&& travail) {
  try {
    travail(*carte.RS());
  } catch (...) {
    carte.RS()->FermePort();
    SeTait(carte);
    throw;
  }
}

// Blocks: nothing of the drive may move before its internal program is known to be stopped. Only
// the very first pass waits; a start that failed goes on step by step between the other exchanges.
void VariateurLS::MiseEnRoute(Carte& carte) {
  compteurErreurs_ = 0;
  while (pas_ < kDépart.size()) {
    if (EcritEtAttend(carte)) {
      ++pas_;
      continue;
    }
    if (++compteurErreurs_ > kEssaisAuDépart) {
      carte.Montre(kDépart[std::exchange(pas_, 0)].message);
      return;
    }
    pas_ = 0;
  }
}

bool VariateurLS::EcritEtAttend(Carte& carte) {
  PrépareDépart(carte);
  Envoie(carte);
  mblnEnAttente = false;
  bool bonne = false;
  do {
    SurLaLigne(carte, [&](ZED_LiaisonSerie& liaison) { réponse_ += liaison.LitTampon(); });
    bonne = OutilsModbus::DécodeRéponse(réponse_, question_, nullptr, FormeValeurs::Octets) ==
            Résultat::Bonne;
  } while (!bonne && matériel_.timer->LitMicrosecondes() - heureDEnvoi_ <= timeOut_);
  if (!bonne) doute_.SansRéponse(heureDEnvoi_, matériel_.timer->LitMicrosecondes());
  return bonne;
}

void VariateurLS::ChercheRéponse(Carte& carte) {
  SurLaLigne(carte, [&](ZED_LiaisonSerie& liaison) {
    if (liaison.OctetsReçus() == 0) return;
    réponse_ += liaison.LitTampon();
    heureDuDernierOctet_ = matériel_.timer->LitMicrosecondes();
  });
  Valeurs valeurs;
  const Résultat résultat = OutilsModbus::DécodeRéponse(
      réponse_, question_, genre_ == Genre::Lecture ? &valeurs : nullptr, FormeValeurs::Octets);
  const double maintenant = matériel_.timer->LitMicrosecondes();
  if (résultat == Résultat::Bonne) {
    Accepte(carte, valeurs, maintenant);
  } else {
    Juge(carte, résultat, maintenant);
  }
}

void VariateurLS::Juge(Carte& carte, Résultat résultat, double maintenant) {
  std::string_view journal;
  if (maintenant - heureDEnvoi_ > kSilenceMaximal) {
    SeTait(carte);
  } else if (résultat == Résultat::Incomplète) {
    AttendLaSuite(maintenant);
  } else if (EstFinie(carte, maintenant)) {
    ++compteurErreurs_;
    if (résultat != Résultat::Inconnue) Echoue();
    if (résultat == Résultat::AutreEsclave || résultat == Résultat::AutreFonction) {
      ResteSansRéponse();
    }
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

// A drive whose answer is spoilt still speaks to its end, and hears nothing meanwhile: 3.5 bytes of
// silence end it, or the 100 ms of the exchange. Under noise the questions would else pile up in
// the port, with a stop behind them.
bool VariateurLS::EstFinie(Carte& carte, double maintenant) const {
  return maintenant - heureDuDernierOctet_ >= OutilsModbus::Silence(carte.RS()->VitesseSérie());
}

// The rest of a cut answer gets one time-out from the first pass that saw it. Plain silence is not
// a cut answer: it ends by the 100 ms of the whole exchange alone.
void VariateurLS::AttendLaSuite(double maintenant) {
  if (timeOut_ == 0 || réponse_.empty()) return;
  if (heureDeRéception_ == 0) {
    heureDeRéception_ = maintenant;
  } else if (maintenant - heureDeRéception_ > timeOut_) {
    ResteSansRéponse();
    ++compteurErreurs_;
  }
}

// A start whose step failed begins again.
void VariateurLS::Echoue() noexcept {
  mblnEnAttente = false;
  if (genre_ == Genre::Départ && pas_ < kDépart.size()) pas_ = 0;
}

void VariateurLS::ResteSansRéponse() noexcept {
  Echoue();
  doute_.SansRéponse(heureDEnvoi_, matériel_.timer->LitMicrosecondes());
}

// The counter of wrong answers starts again at each silence; silences have their own, to which a
// port that is gone adds one each 100 ms. Ten in a row, a second without the port, raise the error
// channels too: one that stays 0 with the cable out would be no truth.
void VariateurLS::SeTait(Carte& carte) {
  ResteSansRéponse();
  compteurErreurs_ = 1;
  départPermis_ = false;
  if (++silences_ < kErreursAvantCanal) return;
  silences_ = 0;
  PublieErreur(carte, kVrai);
}

// An answer in doubt ends the wait and says nothing: neither that the outputs arrived, nor that the
// link is well.
void VariateurLS::Accepte(Carte& carte, const Valeurs& valeurs, double maintenant) {
  mblnEnAttente = false;
  if (doute_.EnDoute()) {
    doute_.Entend(maintenant);
    return;
  }
  compteurErreurs_ = 0;
  silences_ = 0;
  départPermis_ = true;
  if (genre_ == Genre::Départ) ++pas_;
  if (genre_ == Genre::Lecture) Publie(carte, valeurs);
  if (genre_ == Genre::Ecriture) sorties_.Arrivent();
  PublieErreur(carte, 0);
}

void VariateurLS::Publie(Carte& carte, const Valeurs& valeurs) {
  const auto octet = [&](std::int32_t rang) { return std::uint32_t{valeurs.Item(rang)}; };
  const std::uint32_t mot = octet(2) + (octet(1) << 8U) + (octet(4) << 16U) + (octet(3) << 24U);
  const double mesure = octet(4) + octet(3) * 256;
  PourChaqueBloc(carte, FctEntréesLogiques, [&](const CanalRef& canal) {
    const int bit = canal->NuméroCanal();
    canal->ValeurCanal(bit < 32 && ((mot >> bit) & 1U) != 0 ? kVrai : 0);
  });
  PourChaqueBloc(carte, FctEntréesAnalogiques,
                 [&](const CanalRef& canal) { canal->ValeurCanal(mesure); });
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

// Behind a silence the line is left alone until no late answer can come any more; a stop does not
// wait for that.
bool VariateurLS::LaisseLaLigne(Carte& carte, double maintenant) {
  if (!doute_.Attend(maintenant) || sorties_.ArrêtDonné()) return false;
  SurLaLigne(carte, [&](ZED_LiaisonSerie& liaison) {
    if (!liaison.LitTampon().empty()) doute_.Entend(maintenant);
  });
  return true;
}

// A failed exchange is repeated as a write of the present values, whatever it was: a stop must not
// wait for a question that was made before it. Nor does it wait for a read, or for two in a row:
// with answers of 43 ms and more one would always be due. A start that failed is tried again a
// second later at the earliest, and only once the drive answers.
VariateurLS::Genre VariateurLS::Choisit(Carte& carte, double maintenant) const {
  if (compteurErreurs_ != 0 || sorties_.ArrêtDonné()) return Genre::Ecriture;
  const bool départ = pas_ < kDépart.size() && départPermis_ &&
                      (pas_ != 0 || maintenant - heureDeDépart_ > kEntreDeuxDéparts);
  if (départ) return Genre::Départ;
  const bool échéance = maintenant > mdblHeureLecture + 1e6 / mdblFréquenceLecture;
  const bool lecture =
      échéance && genre_ != Genre::Lecture && PremièreDuType(carte, FctEntréesLogiques) != nullptr;
  return lecture ? Genre::Lecture : Genre::Ecriture;
}

void VariateurLS::PrépareQuestion(Carte& carte, double maintenant) {
  genre_ = Choisit(carte, maintenant);
  switch (genre_) {
    case Genre::Départ:
      if (pas_ == 0) heureDeDépart_ = maintenant;
      PrépareDépart(carte);
      break;
    case Genre::Lecture:
      mdblHeureLecture = maintenant;
      PrépareLecture(*PremièreDuType(carte, FctEntréesLogiques));
      break;
    case Genre::Ecriture:
      PrépareEcriture(carte);
      break;
  }
}

void VariateurLS::PrépareDépart(Carte& carte) {
  genre_ = Genre::Départ;
  const PasDeDépart& pas = kDépart[pas_];
  OutilsModbus::ConstruitQuestion(Adresse(carte), 16, pas.registre, 1, {&pas.valeur, 1}, question_);
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
  sorties_.Vide();
  if (const Fonction* consignes = PremièreDuType(carte, FctSortiesAnalogiques)) {
    cible = consignes;
    PourChaqueCanal(*consignes, [&](const CanalRef& canal) {
      const auto registres = Consigne(canal->ValeurCanal());
      for (const std::uint16_t registre : registres) valeurs.Ajoute(registre);
      enMouvement = registres[0] != 0;
      sorties_.Ajoute(canal);
    });
  }
  valeurs.Ajoute(enMouvement ? OutilsModbus::Registre(carte.ConsigneRampe()) : std::uint16_t{0});
  if (const Fonction* sorties = PremièreDuType(carte, FctSortiesLogiques)) {
    cible = sorties;
    valeurs.Ajoute(MotDesSorties(*sorties));
    PourChaqueCanal(*sorties, [&](const CanalRef& canal) { sorties_.Ajoute(canal); });
  }
  if (cible == nullptr) {
    throw Echec(Numéro::ErreurDeLObjet, "Variateur sans bloc de sorties : rien à lui écrire");
  }
  OutilsModbus::ConstruitQuestion(Adresse(carte), cible->ModbusFonction(),
                                  cible->ModbusRegistreDeDepart(), valeurs.Nombre(),
                                  valeurs.Toutes(), question_);
}

void VariateurLS::Envoie(Carte& carte) {
  réponse_.clear();
  heureDeRéception_ = 0;
  if (genre_ == Genre::Ecriture) sorties_.Partent();
  SurLaLigne(carte, [&](ZED_LiaisonSerie& liaison) {
    (void)liaison.LitTampon();
    liaison.EcritPort(question_);
    mblnEnAttente = true;
    heureDEnvoi_ = matériel_.timer->LitMicrosecondes();
    timeOut_ = TimeOut(OutilsModbus::LongueurTrame(question_), liaison.VitesseSérie());
  });
}

}  // namespace zuma
