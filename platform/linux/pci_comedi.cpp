#include "platform/linux/pci_comedi.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <dlfcn.h>
#include <span>

namespace zuma::linux_ {
namespace {

constexpr std::int16_t kRefus = -1;
/// No handle is the number of a board, nor 0, which a block has that was never started.
constexpr std::uint16_t kPremièrePoignée = 0x100;
/// As many boards as the kernel numbers.
constexpr int kAppareils = 48;
constexpr char kBibliothèque[] = "libcomedi.so.0";

constexpr std::uint16_t kSourceLogicielle = 1;
constexpr unsigned int kMasse = 0;  // analog reference
constexpr unsigned int kVolt = 0;
constexpr double kVoltsPleineEchelle = 10;
constexpr unsigned int kCodes12Bits = 4096;
constexpr unsigned int kCodes16Bits = 65536;

// Kinds of subdevices, as the library numbers them from 1.
enum Genre : int { kEntréesAnalogiques, kSortiesAnalogiques, kEntréesLogiques, kSortiesLogiques };
constexpr std::string_view kNoms[] = {"entrées analogiques", "sorties analogiques",
                                      "entrées logiques", "sorties logiques"};

constexpr std::uint16_t kLignes = 16;
constexpr std::uint32_t kMasqueDesLignes = 0xFFFF;

template <class Appel>
bool Trouve(void* bibliothèque, const char* nom, Appel*& appel, std::string& manque) {
  appel = reinterpret_cast<Appel*>(::dlsym(bibliothèque, nom));
  if (appel == nullptr) manque = std::string(kBibliothèque) + " n'a pas " + nom;
  return appel != nullptr;
}

// A name without a device behind it, as against one that may not be opened.
bool SansAppareil(int erreur) {
  return erreur == ENOENT || erreur == ENODEV || erreur == ENXIO;
}

std::string_view Conseil(int erreur) {
  if (erreur == EACCES || erreur == EPERM) {
    return "donnez à l'utilisateur les droits de /dev/comedi* (groupe iocard)";
  }
  return "vérifiez cet appareil et son pilote (dmesg)";
}

}  // namespace

const AppelsComedi* ChargeComedi(std::string& manque) {
  static AppelsComedi appels;
  void* const b = ::dlopen(kBibliothèque, RTLD_NOW | RTLD_LOCAL);
  if (b == nullptr) {
    manque = ::dlerror();
    return nullptr;
  }
#define ZUMA_TROUVE(nom) Trouve(b, #nom, appels.nom, manque)
  const bool complète = ZUMA_TROUVE(comedi_open) && ZUMA_TROUVE(comedi_close) &&
                        ZUMA_TROUVE(comedi_errno) && ZUMA_TROUVE(comedi_strerror) &&
                        ZUMA_TROUVE(comedi_get_board_name) &&
                        ZUMA_TROUVE(comedi_find_subdevice_by_type) &&
                        ZUMA_TROUVE(comedi_get_n_channels) && ZUMA_TROUVE(comedi_get_maxdata) &&
                        ZUMA_TROUVE(comedi_get_range) && ZUMA_TROUVE(comedi_data_read) &&
                        ZUMA_TROUVE(comedi_data_write) && ZUMA_TROUVE(comedi_dio_bitfield2);
#undef ZUMA_TROUVE
  return complète ? &appels : nullptr;
}

// What the boards need of a subdevice; the codes go from 0 to one less than `codes`.
struct PciComedi::Partie {
  Genre genre;
  std::uint16_t voies;
  unsigned int codes;
};

struct PciComedi::Modèle {
  std::uint16_t type;
  std::string_view nom;
  std::string_view marque;  // in the name that a driver gives its board, which varies with its age
  std::span<const Partie> parties;
  [[nodiscard]] const Partie* La(int genre) const {
    const auto partie = std::ranges::find(parties, genre, &Partie::genre);
    return partie == parties.end() ? nullptr : &*partie;
  }
  [[nodiscard]] static const Modèle* De(std::uint16_t type);
};

const PciComedi::Modèle* PciComedi::Modèle::De(std::uint16_t type) {
  static constexpr Partie k9111[] = {{kEntréesAnalogiques, 16, kCodes16Bits},
                                     {kSortiesAnalogiques, 1, kCodes12Bits},
                                     {kEntréesLogiques, kLignes, 2},
                                     {kSortiesLogiques, kLignes, 2}};
  // The driver offers 16 outputs, those of a larger board; nothing is behind the upper ones.
  static constexpr Partie k6208[] = {{kSortiesAnalogiques, 8, kCodes16Bits}};
  static constexpr Modèle kModèles[] = {{kType9111, "PCI 9111", "9111", k9111},
                                        {kType6208V, "PCI 6208", "6208", k6208}};
  const auto* const modèle = std::ranges::find(kModèles, type, &Modèle::type);
  return modèle == std::end(kModèles) ? nullptr : modèle;
}

void PciComedi::Signale(Carte& carte, const std::string& message) {
  if (carte.dit == message) return;
  carte.dit = message;
  if (!registre_) return;
  registre_->AjouteErreur("Carte " + std::string(carte.modèle->nom) + " n° " +
                              std::to_string(carte.numéro) + " " + message + ".",
                          TableVariables(1));
}

PciComedi::Carte& PciComedi::LaCarte(const Modèle& modèle, std::uint16_t numéro) {
  const auto connue = std::ranges::find_if(
      cartes_, [&](const Carte& c) { return c.modèle == &modèle && c.numéro == numéro; });
  if (connue != cartes_.end()) return *connue;
  Carte& carte = cartes_.emplace_back();
  carte.modèle = &modèle;
  carte.numéro = numéro;
  return carte;
}

PciComedi::Carte* PciComedi::La(std::uint16_t poignée, int genre) {
  const std::size_t rang = static_cast<std::size_t>(poignée) - kPremièrePoignée;
  if (rang >= cartes_.size()) return nullptr;
  Carte& carte = cartes_[rang];
  return carte.appareil && carte.modèle->La(genre) != nullptr ? &carte : nullptr;
}

std::int16_t PciComedi::Register_Card(std::uint16_t type, std::uint16_t numéro) {
  const Modèle* const modèle = Modèle::De(type);
  if (modèle == nullptr) return kRefus;
  std::string manque;
  if (appels_ == nullptr) appels_ = charge_(manque);
  if (appels_ == nullptr) {
    if (std::exchange(dit_, manque) != manque && registre_) {
      registre_->AjouteErreur(
          "Cartes PCI 9111 et PCI 6208 inaccessibles, la bibliothèque comedi "
          "manque (" +
              manque + ") ; installez le paquet libcomedi0.",
          TableVariables(1));
    }
    return kRefus;
  }
  Carte& carte = LaCarte(*modèle, numéro);
  const std::string défaut = Ouvre(carte);
  if (!défaut.empty()) {
    carte.appareil.reset();
    Signale(carte, défaut);
    return kRefus;
  }
  carte.dit.clear();
  return static_cast<std::int16_t>(kPremièrePoignée + (&carte - cartes_.data()));
}

std::string PciComedi::Ouvre(Carte& carte) {
  carte.appareil.reset();
  carte.aiguillage.reset();
  carte.bipolaire.reset();
  std::string vus;
  int rang = 0;
  for (int i = 0; i < kAppareils; ++i) {
    const std::string fichier = "/dev/comedi" + std::to_string(i);
    Appareil appareil(appels_->comedi_open(fichier.c_str()), Ferme{appels_->comedi_close});
    if (!appareil) {
      const int erreur = appels_->comedi_errno();
      if (SansAppareil(erreur)) continue;
      return "introuvable : " + fichier + " ne s'ouvre pas (" + appels_->comedi_strerror(erreur) +
             ") ; " + std::string(Conseil(erreur));
    }
    const char* const donné = appels_->comedi_get_board_name(appareil.get());
    const std::string nom = donné == nullptr ? "sans nom" : donné;
    vus += (vus.empty() ? "" : ", ") + fichier + " (" + nom + ")";
    if (nom.find(carte.modèle->marque) == std::string::npos || rang++ != carte.numéro) continue;
    carte.appareil = std::move(appareil);
    carte.fichier = fichier;
    return Reconnaît(carte);
  }
  return "absente, " + (vus.empty() ? "aucun appareil /dev/comedi*" : "il n'y a que " + vus) +
         " ; vérifiez la carte et son numéro, compté à partir de 0, et chargez son pilote comedi "
         "(lspci -k le nomme, modprobe le charge)";
}

std::string PciComedi::Reconnaît(Carte& carte) const {
  for (const Partie& partie : carte.modèle->parties) {
    const std::string défaut = ReconnaîtPartie(carte, partie);
    if (!défaut.empty()) {
      return "inutilisable par " + carte.fichier + " : " + défaut +
             " ; vérifiez la carte et son pilote comedi (comedi_board_info " + carte.fichier + ")";
    }
  }
  return {};
}

// A board of a sister model, or an older driver, must not measure or move by codes of another size.
std::string PciComedi::ReconnaîtPartie(Carte& carte, const Partie& partie) const {
  AppareilComedi* const appareil = carte.appareil.get();
  const std::string quoi(kNoms[partie.genre]);
  const int trouvée = appels_->comedi_find_subdevice_by_type(appareil, partie.genre + 1, 0);
  if (trouvée < 0) return "pas de " + quoi;
  const auto place = static_cast<unsigned int>(trouvée);
  carte.parties[static_cast<std::size_t>(partie.genre)] = place;
  const int voies = appels_->comedi_get_n_channels(appareil, place);
  if (voies < partie.voies) {
    return std::to_string(voies) + " " + quoi + " au lieu de " + std::to_string(partie.voies);
  }
  const unsigned int plusGrand = appels_->comedi_get_maxdata(appareil, place, 0);
  if (plusGrand != partie.codes - 1) {
    return quoi + " de codes 0 à " + std::to_string(plusGrand) + " au lieu de " +
           std::to_string(partie.codes - 1);
  }
  if (partie.genre != kEntréesAnalogiques || TrouveLesCalibres(carte)) return {};
  return "il manque un calibre de 10, 5, 2.5, 1.25 ou 0.625 V aux " + quoi;
}

// The library has the bounds from whole microvolts: they are not compared to the last bit.
bool PciComedi::TrouveLesCalibres(Carte& carte) const {
  AppareilComedi* const appareil = carte.appareil.get();
  const unsigned int place = carte.parties[kEntréesAnalogiques];
  double volts = kVoltsPleineEchelle;
  for (unsigned int& calibre : carte.calibres) {
    const auto convient = [&](const CalibreComedi& c) {
      const double écart = volts / 1000;
      return c.unité == kVolt && std::abs(c.max - volts) < écart && std::abs(c.min + volts) < écart;
    };
    const CalibreComedi* essayé = nullptr;
    calibre = 0;
    while ((essayé = appels_->comedi_get_range(appareil, place, 0, calibre)) != nullptr &&
           !convient(*essayé)) {
      ++calibre;
    }
    if (essayé == nullptr) return false;
    volts /= 2;
  }
  return true;
}

std::int16_t PciComedi::Répond(Carte& carte, bool réussi, std::string_view appel) {
  if (réussi) return 0;
  if (carte.dit.empty()) {
    const int erreur = appels_->comedi_errno();
    Signale(carte, "(" + carte.fichier + ") : " + std::string(appel) + " refusée (" +
                       appels_->comedi_strerror(erreur) +
                       ") ; vérifiez la carte et son pilote (dmesg), puis relancez");
  }
  return kRefus;
}

std::int16_t PciComedi::AI_9111_Config(std::uint16_t carte, std::uint16_t source,
                                       std::uint16_t mode, std::uint16_t trace) {
  const bool logicielle = source == kSourceLogicielle && mode == 0 && trace == 0;
  return logicielle && La(carte, kEntréesAnalogiques) != nullptr ? 0 : kRefus;
}

// The library starts a conversion at once: the first one on another input, or another range, still
// holds some of the voltage before, and is dropped.
std::int16_t PciComedi::AI_ReadChannel(std::uint16_t carte, std::uint16_t canal, std::uint16_t gain,
                                       std::uint16_t& valeur) {
  Carte* const la = La(carte, kEntréesAnalogiques);
  if (la == nullptr || canal >= la->modèle->La(kEntréesAnalogiques)->voies || gain < 1 ||
      gain > la->calibres.size()) {
    return kRefus;
  }
  const Aiguillage voulu{canal, la->calibres[gain - 1U]};
  unsigned int code = 0;
  const auto convertit = [&] {
    return appels_->comedi_data_read(la->appareil.get(), la->parties[kEntréesAnalogiques], canal,
                                     voulu.second, kMasse, &code) == 1;
  };
  bool réussi = true;
  if (std::exchange(la->aiguillage, voulu) != voulu) réussi = convertit();
  réussi = réussi && convertit();
  if (!réussi) la->aiguillage.reset();
  if (réussi) valeur = static_cast<std::uint16_t>(code - kCodes16Bits / 2);
  return Répond(*la, réussi, "lecture d'une entrée analogique");
}

std::int16_t PciComedi::AO_9111_Config(std::uint16_t carte, std::uint16_t polarité) {
  Carte* const la = La(carte, kSortiesAnalogiques);
  if (la == nullptr || la->modèle->type != kType9111 || polarité > 1) return kRefus;
  la->bipolaire = polarité == 1;
  return 0;
}

// The library counts from the lowest voltage, whatever its sign. It takes the 9111 for bipolar even
// where a jumper says otherwise: the code goes to the converter as it is.
std::int16_t PciComedi::AO_WriteChannel(std::uint16_t carte, std::uint16_t canal,
                                        std::int16_t valeur) {
  Carte* const la = La(carte, kSortiesAnalogiques);
  if (la == nullptr) return kRefus;
  const Partie& sorties = *la->modèle->La(kSortiesAnalogiques);
  const bool de9111 = la->modèle->type == kType9111;
  const int moitié = static_cast<int>(sorties.codes / 2);
  if (canal >= sorties.voies || valeur < -moitié || valeur >= moitié) return kRefus;
  if (de9111 && !la->bipolaire) return kRefus;
  const int plusBas = la->bipolaire.value_or(true) ? -moitié : 0;
  const int code = (valeur < plusBas ? valeur + 2 * moitié : valeur) - plusBas;
  return Répond(*la,
                appels_->comedi_data_write(la->appareil.get(), la->parties[kSortiesAnalogiques],
                                           canal, 0, kMasse, static_cast<unsigned int>(code)) == 1,
                "écriture d'une sortie analogique");
}

std::int16_t PciComedi::Echange(Carte& carte, int genre, std::uint32_t masque, unsigned int& bits) {
  const bool réussi = appels_->comedi_dio_bitfield2(carte.appareil.get(),
                                                    carte.parties[static_cast<std::size_t>(genre)],
                                                    masque, &bits, 0) >= 0;
  return Répond(
      carte, réussi,
      genre == kEntréesLogiques ? "lecture des entrées logiques" : "écriture des sorties logiques");
}

std::int16_t PciComedi::RefuseLigne(Carte& carte) {
  Signale(carte, "(" + carte.fichier +
                     ") : le pilote comedi n'a que les lignes logiques 0 à 15 ; câblez sur "
                     "celles-ci ce qui est sur les lignes 16 à 19");
  return kRefus;
}

std::int16_t PciComedi::DI_ReadPort(std::uint16_t carte, std::uint16_t port, std::uint32_t& mot) {
  Carte* const la = La(carte, kEntréesLogiques);
  if (la == nullptr || port != 0) return kRefus;
  unsigned int bits = 0;
  const std::int16_t réponse = Echange(*la, kEntréesLogiques, 0, bits);
  if (réponse == 0) mot = bits & kMasqueDesLignes;
  return réponse;
}

std::int16_t PciComedi::DI_ReadLine(std::uint16_t carte, std::uint16_t port, std::uint16_t ligne,
                                    std::uint16_t& état) {
  Carte* const la = La(carte, kEntréesLogiques);
  if (la == nullptr || ligne >= kLignes) return kRefus;
  if (port != 0) return RefuseLigne(*la);
  std::uint32_t mot = 0;
  const std::int16_t réponse = DI_ReadPort(carte, port, mot);
  if (réponse == 0) état = static_cast<std::uint16_t>(mot >> ligne & 1U);
  return réponse;
}

// Every stop clears both ports: a port that sets nothing has nothing to clear.
std::int16_t PciComedi::DO_WritePort(std::uint16_t carte, std::uint16_t port, std::uint32_t mot) {
  Carte* const la = La(carte, kSortiesLogiques);
  if (la == nullptr || port > 1) return kRefus;
  if (port == 1) return mot == 0 ? 0 : RefuseLigne(*la);
  unsigned int bits = mot & kMasqueDesLignes;
  return Echange(*la, kSortiesLogiques, kMasqueDesLignes, bits);
}

std::int16_t PciComedi::DO_WriteLine(std::uint16_t carte, std::uint16_t port, std::uint16_t ligne,
                                     std::uint16_t état) {
  Carte* const la = La(carte, kSortiesLogiques);
  if (la == nullptr || ligne >= kLignes || état > 1) return kRefus;
  if (port != 0) return RefuseLigne(*la);
  unsigned int bits = static_cast<unsigned int>(état) << ligne;
  return Echange(*la, kSortiesLogiques, 1U << ligne, bits);
}

}  // namespace zuma::linux_
