#include "instruments/thumler.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "base/garde.h"
#include "base/outils_communs.h"

namespace zuma {
namespace {

constexpr double kPauseOuverture = 500;     // microseconds
constexpr double kPauseLecture = 1000;      // microseconds
constexpr std::int32_t kTimeOutUSB = 1000;  // milliseconds
constexpr std::int32_t kBauds = 1'953'125;
constexpr std::int32_t kLectureMaximale = 20;
constexpr std::int32_t kLongueurMesures = 16;
constexpr double kAttenteMesures = 50;          // milliseconds
constexpr double kEntreDeuxArrêts = 1'000'000;  // microseconds
constexpr std::size_t kEnTête = 2;
constexpr std::size_t kLargeurConsigne = 3;

// The set point is the only channel of an analog output block.
Canal* CanalDeConsigne(Carte& carte) {
  for (const FonctionRef& bloc : carte.LesFonctions()) {
    if (bloc->TypeDeFonction() == ENUM_TYPE_FONCTION::FctSortiesAnalogiques &&
        bloc->LesCanaux().Count() == 1) {
      return bloc->LesCanaux().begin()->Brut();
    }
  }
  return nullptr;
}

}  // namespace

Thumler::~Thumler() {
  if (ouverte_) matériel_.plateforme.ftdi->FT_Close(poignée_);
}

void Thumler::Arrête(std::string_view raison) {
  if (matériel_.plateforme.fin) matériel_.plateforme.fin->ArrêteLeProgramme(raison);
  throw Echec(Numéro::ErreurDeLObjet, std::string(raison));
}

void Thumler::Exige(std::int32_t état, std::string_view opération) {
  if (état == 0) return;
  Arrête("Thumler : " + std::string(opération) + " a échoué (état " + std::to_string(état) +
         "). Vérifiez le câble USB.");
}

void Thumler::Attente(double microsecondes) {
  const double fin = matériel_.timer->LitMicrosecondes() + microsecondes;
  while (matériel_.timer->LitMicrosecondes() < fin) {
  }
}

std::int32_t Thumler::OuvreThumler(std::int32_t numéro) {
  FTD2XX& ftdi = *matériel_.plateforme.ftdi;
  if (std::exchange(ouverte_, false)) ftdi.FT_Close(poignée_);
  Exige(ftdi.FT_Open(numéro, poignée_), "FT_Open");
  ouverte_ = true;
  Attente(kPauseOuverture);
  Exige(ftdi.FT_SetTimeouts(poignée_, kTimeOutUSB, kTimeOutUSB), "FT_SetTimeouts");
  Attente(kPauseOuverture);
  Exige(ftdi.FT_SetBaudRate(poignée_, kBauds), "FT_SetBaudRate");
  return poignée_;
}

void Thumler::Ecrit(std::string_view commande, std::int32_t purge) {
  FTD2XX& ftdi = *matériel_.plateforme.ftdi;
  Exige(ftdi.FT_Purge(poignée_, purge), "FT_Purge");
  Octets octets(commande);
  if (!octets.starts_with('$')) octets.insert(octets.begin(), '$');
  Exige(ftdi.FT_Write(poignée_, octets), "FT_Write");
}

void Thumler::EnvoiThumler(std::string_view commande) {
  Ecrit(commande, FTD2XX::kPurgeEmission);
}

Octets Thumler::QuestionThumler(std::string_view commande, std::int32_t longueur, double attente) {
  FTD2XX& ftdi = *matériel_.plateforme.ftdi;
  Ecrit(commande, FTD2XX::kPurgeRéception);
  std::int32_t réception = 0;
  std::int32_t émission = 0;
  const double départ = matériel_.timer->LitMicrosecondes() / 1000;
  const auto attend = [&](auto&& prêt) {
    do {
      Exige(ftdi.FT_GetStatus(poignée_, réception, émission), "FT_GetStatus");
    } while (!prêt() && matériel_.timer->LitMicrosecondes() / 1000 - départ <= attente);
  };
  attend([&] { return émission == 0; });
  attend([&] { return réception >= longueur; });
  Attente(kPauseLecture);
  Exige(ftdi.FT_GetStatus(poignée_, réception, émission), "FT_GetStatus");
  Octets réponse;
  if (réception > 0) {
    Exige(ftdi.FT_Read(poignée_, std::min(réception, kLectureMaximale), réponse), "FT_Read");
  }
  return réponse;
}

std::string_view Thumler::Coupe(std::string_view octets) noexcept {
  return octets.substr(0, std::min(octets.find('\n'), octets.find('A', 1)));
}

std::optional<Thumler::Champs> Thumler::LitChamps(std::string_view réponse) noexcept {
  if (!réponse.starts_with('A') || réponse.size() < kEnTête) return {};
  const std::string_view texte = réponse.substr(kEnTête);
  const std::size_t milieu = texte.find(';');
  if (milieu == std::string_view::npos || milieu != texte.rfind(';')) return {};
  return Champs{texte.substr(0, milieu), texte.substr(milieu + 1)};
}

// A stop alone is given again: before a set point that runs, the "H" would halt the drive.
bool Thumler::RedonneLArrêt(const Canal& canal) const {
  if (canal.ValeurCanal() != 0 || canal.Atteint()) return false;
  if (muet_ || !heureDeLArrêt_) return muet_ || tourne_;
  return tourne_ && matériel_.timer->LitMicrosecondes() - *heureDeLArrêt_ >= kEntreDeuxArrêts;
}

// Halt, new set point, run: the drive takes a set point only at rest. A 0 counts as the last one
// sent too, so that the drive runs again when the former set point comes back.
void Thumler::EnvoieConsigne(Canal& canal) {
  const double valeur = canal.ValeurCanal();
  const std::int32_t entier = VersEntier32(std::trunc(valeur));
  if (entier == dernièreConsigne_ && !RedonneLArrêt(canal)) return;
  if (!canal.Atteint()) canal.OublieAtteint();
  EnvoiThumler("H");
  heureDeLArrêt_ = matériel_.timer->LitMicrosecondes();
  dernièreConsigne_ = entier;
  if (valeur == 0) return;
  std::string texte = OutilsCommuns::FormateNombre(Valeur(entier));
  texte.insert(0, kLargeurConsigne - std::min(kLargeurConsigne, texte.size()), '0');
  EnvoiThumler("V" + texte);
  EnvoiThumler("R");
}

// The process ends because of this drive, or of one like it: it gets its halt once more, and the
// time that is left belongs to the others. A drive that is wedged holds each call for a second.
void Thumler::FinitSansQuestion() {
  if (!std::exchange(arrêtFinal_, true)) EnvoiThumler("H");
  throw Echec(Numéro::ErreurDeLObjet, "Thumler : le programme se termine");
}

void Thumler::CommThumler(Carte& carte) {
  if (matériel_.plateforme.fin && matériel_.plateforme.fin->EnCours()) FinitSansQuestion();
  Canal* canal = CanalDeConsigne(carte);
  if (canal != nullptr) EnvoieConsigne(*canal);
  muet_ = true;
  const Octets octets = QuestionThumler("A", kLongueurMesures, kAttenteMesures);
  const std::string_view réponse = Coupe(octets);
  if (réponse.empty()) return;
  const auto champs = LitChamps(réponse);
  if (!champs) Arrête("Thumler : réponse inattendue « " + std::string(réponse) + " »");
  muet_ = false;
  if (canal != nullptr) Confirme(carte, *canal, *champs);
  Publie(carte, *champs);
}

// Which measure is the speed is a setting of the installation, the first one by default. What is no
// number does not prove that the drive is at rest.
bool Thumler::AuRepos(const Champs& champs) const {
  const auto rang = static_cast<std::size_t>(matériel_.plateforme.réglages.vitesseThumler);
  if (rang >= champs.size()) return true;
  const Valeur vitesse = OutilsCommuns::LitChampSûr(Valeur(std::string(champs[rang])));
  const double* nombre = std::get_if<double>(&vitesse);
  return nombre != nullptr && *nombre == 0;
}

// A set point that runs cannot be read back: the answer behind it is all that tells of it.
void Thumler::Confirme(const Carte& carte, Canal& canal, const Champs& champs) {
  const double valeur = canal.ValeurCanal();
  if (std::trunc(valeur) != dernièreConsigne_) return;
  tourne_ = !AuRepos(champs);
  if (valeur != 0 || !tourne_) {
    canal.MarqueAtteint(valeur);
    return;
  }
  const bool inattendue = canal.Atteint() || !heureDeLArrêt_;
  canal.OublieAtteint();
  if (inattendue) {
    zuma::Consigne(carte, Forme::Méthode, "CommThumler",
                   "Thumler : trouvé en marche avec une consigne de 0, arrêt donné");
  }
}

void Thumler::Publie(Carte& carte, const Champs& champs) {
  for (const FonctionRef& bloc : carte.LesFonctions()) {
    if (bloc->TypeDeFonction() != ENUM_TYPE_FONCTION::FctEntréesAnalogiques) continue;
    for (const CanalRef& canal : bloc->LesCanaux()) {
      const auto rang = static_cast<std::size_t>(canal->NuméroCanal());
      if (rang >= champs.size()) throw Echec(Numéro::IndiceHorsPlage);
      canal->ValeurCanal(VersDouble(OutilsCommuns::LitChampSûr(Valeur(std::string(champs[rang])))));
    }
  }
}

}  // namespace zuma
