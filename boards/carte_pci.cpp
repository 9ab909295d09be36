#include "boards/carte_pci.h"

#include <optional>

#include "tree/carte.h"

namespace zuma {
namespace {

// Number of a board in its machine. `Adresse` holds the handle once the board was registered: a
// second start must not take the one for the other.
class NuméroDeCarte : public Pilote {
 public:
  NuméroDeCarte(const Matériel&, std::uint16_t) {}
  [[nodiscard]] std::int32_t Pour(std::int32_t adresse) {
    if (adresse != poignée_) numéro_ = adresse;
    return numéro_;
  }
  void Poignée(std::int32_t poignée) { poignée_ = poignée; }

 private:
  std::int32_t numéro_ = 0;
  std::optional<std::int32_t> poignée_;
};

}  // namespace

std::int16_t EnregistreCartePCI(Carte& carte, std::uint16_t type) {
  auto& connue = carte.PiloteDe<NuméroDeCarte>(0);
  const auto numéro = static_cast<std::uint16_t>(connue.Pour(carte.Adresse()));
  const std::int16_t poignée = carte.LaPlateforme().pci->Register_Card(type, numéro);
  connue.Poignée(poignée);
  carte.Adresse(poignée);
  return poignée;
}

}  // namespace zuma
