// What is done to a machine at its stop.
#include <array>

#include "arret/rudesse.h"
#include "arret/table_d_arret.h"

namespace zuma::arret {
namespace {

constexpr double kMilliseconde = 1000;

constexpr std::array kRudesses{
    Rudesse{.nom = "none"},
    Rudesse{.nom = "slow 60 ms", .pasDePasse = 0.06, .lenteur = 60 * kMilliseconde},
    Rudesse{.nom = "slow 600 ms", .pasDePasse = 0.6, .lenteur = 600 * kMilliseconde},
    Rudesse{.nom = "answers lost", .panne = sim::GenreDePanne::Silence},
    Rudesse{.nom = "cable out 5 s", .câbleSorti = true},
    Rudesse{.nom = "byte lost", .panne = sim::GenreDePanne::Perte},
    Rudesse{.nom = "line babbles", .panne = sim::GenreDePanne::Babillage},
    Rudesse{.nom = "neighbour hung", .voisinFigé = true},
    Rudesse{.nom = "command fails", .commandeFautive = true},
    Rudesse{.nom = "board forgets", .oubli = true},
    Rudesse{.nom = "found running", .occasion = Occasion::EntrePasses, .trouvéeEnMarche = true},
    Rudesse{.nom = "in a pass", .occasion = Occasion::PorteBrève},
    Rudesse{.nom = "listener", .occasion = Occasion::Ecouteur},
    Rudesse{.nom = "between passes", .occasion = Occasion::EntrePasses},
    Rudesse{.nom = "in a start", .occasion = Occasion::UnDépart},
    Rudesse{.nom = "in a calibration", .occasion = Occasion::UnEtalonnage},
};

}  // namespace

std::span<const Rudesse> Rudesses() {
  return kRudesses;
}
std::string_view Nom(const Rudesse& rudesse) {
  return rudesse.nom;
}

}  // namespace zuma::arret
