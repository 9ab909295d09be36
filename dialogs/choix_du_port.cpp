#include "dialogs/choix_du_port.h"

#include <utility>

namespace zuma {
namespace {

std::string Réglages(const std::string& port, const std::string& vitesse) {
  return port + "," + vitesse + ",N,8,1";
}

const std::string* Choisi(const ListeDeChoix& liste) noexcept {
  const bool choisi = liste.choisi && *liste.choisi < liste.textes.size();
  return choisi ? &liste.textes[*liste.choisi] : nullptr;
}

/// A flag that holds as long as this lives.
class Pendant {
 public:
  explicit Pendant(bool& drapeau) : drapeau_(drapeau) { drapeau_ = true; }
  ~Pendant() { drapeau_ = false; }
  Pendant(const Pendant&) = delete;
  Pendant& operator=(const Pendant&) = delete;

 private:
  bool& drapeau_;
};

}  // namespace

ChoixDuPort::ChoixDuPort(Fenêtres& fenêtres, TesteurDePort& instrument,
                         std::vector<std::string> ports, std::vector<std::string> vitesses)
    : CmbListeCOM{std::move(ports), {}},
      CmbListeBaudrate{std::move(vitesses), {}},
      fenêtres_(fenêtres),
      instrument_(instrument) {}

std::string ChoixDuPort::Settings() const {
  const std::string* port = Choisi(CmbListeCOM);
  const std::string* vitesse = Choisi(CmbListeBaudrate);
  return port == nullptr || vitesse == nullptr ? std::string() : Réglages(*port, *vitesse);
}

void ChoixDuPort::BtnAutoScan() {
  if (enRecherche_) return;
  const Pendant recherche(enRecherche_);
  if (!Cherche()) LblEtat.clear();
}

bool ChoixDuPort::Cherche() {
  for (std::size_t p = 0; p < CmbListeCOM.textes.size(); ++p) {
    for (std::size_t v = 0; v < CmbListeBaudrate.textes.size(); ++v) {
      const std::string réglages = Réglages(CmbListeCOM.textes[p], CmbListeBaudrate.textes[v]);
      LblEtat = réglages;
      fenêtres_.TraiteLesEvénements();
      if (!visible_) return false;
      if (!instrument_.TestPort(réglages)) continue;
      LblEtat = réglages + " : Find!";
      CmbListeCOM.choisi = p;
      CmbListeBaudrate.choisi = v;
      return true;
    }
  }
  return false;
}

}  // namespace zuma
