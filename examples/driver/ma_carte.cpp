// A driver outside zuma, in one file: the class, its operations, its twin and its row.
//     zuma run FILE --frame 50 --sim --driver libma_carte.so
//
// The board, "MC 8", does not exist. 8 inputs of 12 bits, 0 to 10 V, four ports from its base:
//
//     offset  written                       read
//     0       bits 0-2: channel, and a      bit 7: a conversion runs (20 us)
//             conversion starts
//     1       -                             low byte of the result
//     2       -                             bits 0-3: high nibble of the result, others 0
//     3       -                             identity, 0xC8
//
// Where no board answers the bus reads as all ones: no identity, and a conversion that never ends.
#include <algorithm>
#include <cmath>
#include <zuma/base/echec.h>
#include <zuma/base/poursuite.h>
#include <zuma/tree/carte.h>
#include <zuma/tree/jumeau_de_driver.h>
#include <zuma/tree/materiel.h>

namespace {

constexpr std::uint16_t kDépart = 0;
constexpr std::uint16_t kRésultatBas = 1;
constexpr std::uint16_t kRésultatHaut = 2;
constexpr std::uint16_t kIdentité = 3;
constexpr std::uint8_t kMC8 = 0xC8;
constexpr std::uint8_t kEnCours = 0x80;
constexpr std::int16_t kVoies = 8;
constexpr int kCodes = 4096;       // of 10 V
constexpr double kPatience = 100;  // the same: a pass never waits longer for one channel

/// Register access to one board. `Carte` makes one for each base address, and owns it.
class MC_8 : public zuma::Pilote {
 public:
  MC_8(const zuma::Matériel& matériel, std::uint16_t base) : matériel_(matériel), base_(base) {}

  void ExigeLaCarte() const {
    if (Lit(kIdentité) == kMC8) return;
    throw zuma::Echec(zuma::Numéro::MatérielAbsent, "Pas de carte MC 8 à cette adresse");
  }

  [[nodiscard]] double Convertit(std::int16_t voie) {
    if (voie < 0 || voie >= kVoies) throw zuma::Echec(zuma::Numéro::IndiceHorsPlage);
    matériel_.plateforme.ports->Outp(Port(kDépart), static_cast<std::uint8_t>(voie));
    const double limite = matériel_.timer->LitMicrosecondes() + kPatience;
    while ((Lit(kDépart) & kEnCours) != 0) {
      if (matériel_.timer->LitMicrosecondes() < limite) continue;
      throw zuma::Echec(zuma::Numéro::MatérielAbsent, "La conversion ne finit pas");
    }
    return (Lit(kRésultatHaut) & 0x0F) * 256 + Lit(kRésultatBas);
  }

 private:
  [[nodiscard]] std::uint16_t Port(std::uint16_t décalage) const {
    return static_cast<std::uint16_t>(base_ + décalage);
  }
  [[nodiscard]] std::uint8_t Lit(std::uint16_t décalage) const {
    return matériel_.plateforme.ports->Inp(Port(décalage));
  }

  zuma::Matériel matériel_;
  std::uint16_t base_;
};

// --- What blocks and channels ask of it. A failure is an `Echec`: it is told with the object that
// it concerns, the value stays, and its age tells that nothing was read.

constexpr zuma::OpérationsPilote kOpérations{
    .ouvre = [](zuma::Carte& carte, std::uint16_t base) -> zuma::Pilote& {
      return carte.PiloteDe<MC_8>(base);
    },
    // One channel that fails must not keep the others from being read.
    .rafraîchitBloc =
        [](zuma::Fonction& bloc) {
          zuma::Poursuite chacun;
          for (const zuma::CanalRef& canal : bloc.LesCanaux()) {
            chacun([&] { canal->MetàJour(); });
          }
          chacun.Termine();
        },
    .démarreCanal = [](zuma::Canal& canal) { canal.PiloteDe<MC_8>().ExigeLaCarte(); },
    .rafraîchitCanal =
        [](zuma::Canal& canal) {
          auto& carte = canal.PiloteDe<MC_8>();
          canal.LitMoyenne([&](std::int16_t&) { return carte.Convertit(canal.NuméroCanal()); },
                           kCodes);
        }};

// --- The twin, written from the register map above and not from the driver.

class JumeauDeMC8 : public zuma::JumeauDeCarte {
 public:
  std::uint8_t Lit(std::uint16_t décalage, const zuma::AutourDuJumeau& autour) override {
    const bool enCours = autour.bloquée || autour.microsecondes < fin_;
    const unsigned registres[] = {enCours ? 0x80U : 0U, code_ & 0xFFU, code_ >> 8U, 0xC8U};
    return static_cast<std::uint8_t>(registres[décalage & 3U]);
  }
  void Ecrit(std::uint16_t décalage, std::uint8_t octet,
             const zuma::AutourDuJumeau& autour) override {
    if (décalage != 0) return;
    const double codes = autour.bornes.entréesAnalogiques[octet & 7U] / 10 * 4096;
    code_ = static_cast<unsigned>(std::clamp(std::round(codes), 0.0, 4095.0));
    fin_ = autour.microsecondes + 20;
  }

 private:
  unsigned code_ = 0;
  double fin_ = 0;  ///< of the conversion, microseconds
};

constexpr zuma::JumeauDeDriver kJumeau{.crée = []() -> std::unique_ptr<zuma::JumeauDeCarte> {
                                         return std::make_unique<JumeauDeMC8>();
                                       },
                                       .place = {.ports = 4}};

// --- The row: number, texts of the configuration, and what it serves.

constexpr zuma::LigneDriver kLignes[] = {
    {.valeur = static_cast<zuma::ENUM_DRIVER>(10'001),
     .nom = "DrvMC8",
     .affichage = "MC 8",
     .texteFonction = "DrvMC8",
     .types = zuma::TypeServi(zuma::ENUM_TYPE_FONCTION::FctEntréesAnalogiques),
     // What a board that hangs may hold a pass up for; `zuma check` adds it up.
     .retenue = {.parCanal = true,
                 .secondes = [](const zuma::Réglages&) { return kPatience / 1e6; }},
     .lignesLues = kVoies,
     .pilote = &kOpérations,
     .jumeau = &kJumeau}};

}  // namespace

const zuma::DriversDUneBibliothèque zuma_drivers{.lignes = kLignes, .nombre = std::size(kLignes)};
