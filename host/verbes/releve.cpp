#include "host/verbes/releve.h"

#include <algorithm>
#include <array>

namespace zuma::host {
namespace {

constexpr std::int32_t kCanalDErreur = -1;
constexpr std::int32_t kCanalDErreurSansSigne = 65535;  // the same 16 bits

void PrendBloc(Relevé& r, std::int32_t clé, const LigneLue& l) {
  r.blocs.try_emplace(clé, Relevé::Bloc{.driver = l.Texte("Driver")});
}

// Behind the blocks.
void PrendCanal(Relevé& r, std::int32_t clé, const LigneLue& l) {
  const std::int32_t numéro = l.Renvoi("Numéro du Canal");
  const auto bloc = r.blocs.find(l.Renvoi("Fonction"));
  if (bloc == r.blocs.end()) return;
  bloc->second.canalDErreur |= numéro == kCanalDErreur || numéro == kCanalDErreurSansSigne;
  r.blocDesCanaux.try_emplace(clé, bloc->first);
}

void PrendPilote(Relevé& r, std::int32_t clé, const LigneLue& l) {
  const std::string_view colonne = l.Table() == "WatchDog" ? "Pulse" : "Canal";
  if (l.Texte("Type de Commande") == "Tout ou Rien") return;  // its logic outputs write, not it
  const std::int32_t canal = l.Renvoi(colonne);
  if (canal != 0) r.pilotes.push_back({l.Table(), colonne, clé, canal});
}

struct Prise {
  std::string_view table;
  void (*prend)(Relevé&, std::int32_t, const LigneLue&);
};
constexpr std::array<Prise, 5> kPrises{{{"Fonction", &PrendBloc},
                                        {"Canal", &PrendCanal},
                                        {"Commande", &PrendPilote},
                                        {"Sortie Logique", &PrendPilote},
                                        {"WatchDog", &PrendPilote}}};
constexpr std::string_view kLiaison = "Liaison Chassis / ";

}  // namespace

void Relevé::Prend(const LigneLue& ligne) {
  if (ligne.Table().starts_with(kLiaison)) {
    const std::string_view objet = ligne.Table().substr(kLiaison.size());
    liens.push_back({ligne.Table(), objet, ligne.Renvoi("Chassis"), ligne.Renvoi(objet)});
    return;
  }
  const auto* prise = std::ranges::find(kPrises, ligne.Table(), &Prise::table);
  const auto clé = ligne.Entier("Index");
  if (prise != kPrises.end() && clé) prise->prend(*this, *clé, ligne);
}

const Relevé::Bloc* Relevé::BlocDuCanal(std::int32_t canal) const {
  const auto trouvé = blocDesCanaux.find(canal);
  return trouvé == blocDesCanaux.end() ? nullptr : &blocs.at(trouvé->second);
}

}  // namespace zuma::host
