// Libraries that `--driver` refuses, one for each CAS_ of tests/CMakeLists.txt.
#include "tree/ligne_driver.h"

namespace {

using enum zuma::ENUM_DRIVER;
#ifdef CAS_valeur
[[maybe_unused]] constexpr zuma::LigneDriver kLigne{.valeur = DrvModBus, .nom = "DrvEssai"};
#else
[[maybe_unused]] constexpr zuma::LigneDriver kLigne{
    .valeur = static_cast<zuma::ENUM_DRIVER>(10'002),
    .nom = "DrvEssai",
    .texteFonction = "DrvModBus"};
#endif
#ifdef CAS_version
[[maybe_unused]] constexpr std::uint32_t kVersion = 1;
#else
[[maybe_unused]] constexpr std::uint32_t kVersion = zuma::kVersionDesDrivers;
#endif

}  // namespace

#ifdef CAS_symbole_absent
extern "C" std::size_t zuma_nulle_part();
const zuma::DriversDUneBibliothèque zuma_drivers{.nombre = zuma_nulle_part()};
#elif defined(CAS_sans_symbole)
extern const zuma::DriversDUneBibliothèque autre_nom;
const zuma::DriversDUneBibliothèque autre_nom{kVersion, &kLigne, 1};
#else
const zuma::DriversDUneBibliothèque zuma_drivers{kVersion, &kLigne, 1};
#endif
