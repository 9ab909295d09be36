#include "bench/scenarios.h"

#include <array>

#include "bench/banc.h"

namespace zuma::banc {
namespace {

// Rates that are due on every pass of this period, the watchdog's included.
constexpr double kToujours = 1000;  // hertz
constexpr double kPériode = 5000;   // microseconds
constexpr double kJamais = 0;       // hertz

// --- Frames

std::int32_t CarteDeMesure(Lignes& lignes) {
  lignes.Carte();
  return lignes.Bloc(kEA, kScan, 16, true);
}

Lignes CapteursNormaux() {
  Lignes lignes(kToujours, kJamais);
  for (int carte = 0; carte < 4; ++carte) {
    const std::int32_t premier = CarteDeMesure(lignes);
    for (std::int32_t n = 0; n < 16; ++n) lignes.CapteurNormal(premier + n);
  }
  return lignes;
}

struct Genre {
  std::string_view type;
  std::vector<Champ> champs;
};

// Every kind made from other sensors, from the clock or from outside.
std::vector<Genre> GenresDérivés() {
  return {
      {"Moyen", {Entier("Offset", paramètre::kDécalage)}},
      {"Recouvrement", {}},
      {"Contrainte",
       {Entier("Type de contrainte", paramètre::kType),
        Entier("Forme eprouvette", paramètre::kForme), Entier("D", paramètre::kDiamètre),
        Entier("Unite", paramètre::kUnité), Entier("S", paramètre::kSection)}},
      {"Temps", {Texte("Unité d'Etalonnage", "S")}},
      {"Vitesse", {}},
      {"DeltaL/L", {Entier("S", paramètre::kLongueur)}},
      {"Combinaison", {Texte("Opérateur", "-")}},
      {"Selectionnable", {Entier("S", paramètre::kChoix), Texte("Valeur de selection", "2")}},
      {"PPC", {}},
      {"SOLARTRON LVDT", {}},
  };
}

Lignes CapteursVariés() {
  constexpr std::int32_t kNormaux = 16;
  constexpr std::int32_t kDérivés = 48;
  Lignes lignes(kToujours, kJamais);
  const std::int32_t canal = CarteDeMesure(lignes);
  std::array<std::int32_t, kNormaux> normaux{};
  for (std::int32_t n = 0; n < kNormaux; ++n) {
    // Ranges that differ, for the kinds that choose among them.
    normaux[static_cast<std::size_t>(n)] =
        lignes.CapteurNormal(canal + n, {Réel("Sécurité Maximale en Unité", 1e6 * (n + 1))});
  }
  const std::vector<Genre> genres = GenresDérivés();
  for (std::size_t n = 0; n < kDérivés; ++n) {
    std::vector<Champ> champs = genres[n % genres.size()].champs;
    champs.push_back(Fils(1, normaux[n % kNormaux]));
    champs.push_back(Fils(2, normaux[(n + 1) % kNormaux]));
    lignes.Capteur(genres[n % genres.size()].type, std::move(champs));
  }
  return lignes;
}

void AjouteLesCommandes(Lignes& lignes) {
  const std::int32_t mesure = CarteDeMesure(lignes);
  const auto label = [](std::int32_t index) { return std::to_string(index); };
  const std::string alimentation = label(lignes.CapteurNormal(mesure));
  const std::string utilisation = label(lignes.CapteurNormal(mesure + 1));
  lignes.Carte();
  std::int32_t canal = lignes.Bloc(kSA, "DrvACL6128", 8, false);
  for (int n = 0; n < 4; ++n) {
    lignes.Commande("Normale", canal++,
                    {Réel("Fréquence dither", 200), Réel("Amplitude dither", 2)});
  }
  for (int n = 0; n < 2; ++n) {
    lignes.Commande(
        "Servo", canal++,
        {Texte("Capteur Alimentation", alimentation), Texte("Capteur Utilisation", utilisation)});
  }
  for (int n = 0; n < 2; ++n) {
    lignes.Commande("Recopie", canal++, {Texte("Capteur de recopie", utilisation)});
  }
  lignes.Carte();
  canal = lignes.Bloc(kSA, "DrvPCL728", 8, false);
  for (std::int32_t n = 0; n < 8; ++n) {
    lignes.Commande("Normale", canal++, {Entier("Paramètre", paramètre::kVoulue + n)});
  }
}

// Boards with both directions: 24 inputs and 24 outputs on one, 8 of each on the other.
void AjouteLesLogiques(Lignes& lignes) {
  std::int32_t rang = 0;
  for (const std::int32_t nombre : {24, 8}) {
    lignes.Carte("DrvPET48DIO");
    const std::int32_t entrée = lignes.Bloc(kEL, "DrvPET48DIO_TB24P", nombre, true);
    const std::int32_t sortie = lignes.Bloc(kSL, "DrvPET48DIO_TB24R", nombre, true);
    for (std::int32_t n = 0; n < nombre; ++n, ++rang) {
      lignes.EntréeLogique(entrée + n,
                           {Entier("Parametre Etat", paramètre::kEtat + rang),
                            Entier("Parametre Etat Actif", paramètre::kActif),
                            Entier("Parametre Etat Inactif", paramètre::kInactif),
                            Réel("Durée Anti-Rebond (s)", rang % 2 == 0 ? 0.0 : 0.012)});
      lignes.SortieLogique(sortie + n);
    }
  }
}

Lignes Boucle() {
  Lignes lignes(kToujours, kToujours);
  AjouteLesCommandes(lignes);
  AjouteLesLogiques(lignes);
  return lignes;
}

Lignes CinqCents() {
  Lignes lignes(kToujours, kToujours);
  AjouteLesCommandes(lignes);
  AjouteLesLogiques(lignes);
  while (lignes.NombreDObjets() + 18 + 16 <= 500) {
    const std::int32_t canal = CarteDeMesure(lignes);
    for (std::int32_t n = 0; n < 16; ++n) lignes.CapteurNormal(canal + n);
  }
  lignes.Carte();
  const std::int32_t canal = lignes.Bloc(kSA, "DrvACL6128", 8, false);
  for (std::int32_t n = 0; lignes.NombreDObjets() < 500; ++n) {
    lignes.Commande("Normale", canal + n % 8);
  }
  return lignes;
}

// --- Measures

class Passe : public Mesure {
 public:
  Passe(const Lignes& lignes, double période) : base_(lignes), banc_(base_), période_(période) {
    for (const CommandeRef& commande : *banc_.LeChassis().Commandes()) commande->Enabled(true);
  }
  void Avant() override {
    if (période_ == 0) return;
    banc_.LaMachine().horloge->Avance(période_);
    banc_.Bouge();
  }
  void Tour() override { banc_.LeChassis().MetàJour(); }
  double Horloge() const override { return banc_.Maintenant(); }
  std::string Plaintes() const override { return banc_.Plaintes(); }

 protected:
  Banc& LeBanc() { return banc_; }

 private:
  Base base_;
  Banc banc_;
  double période_;
};

// A host that writes every set point and every output before each pass, changed or not.
class PasseEtHôte : public Passe {
 public:
  PasseEtHôte()
      : Passe(Boucle(), kPériode),
        commandes_(LeBanc().LeChassis().Commandes()),
        sorties_(LeBanc().LeChassis().SortiesLogiques()) {}
  void Tour() override {
    const double unités = 20 + tour_ % 50;
    for (const CommandeRef& commande : *commandes_) commande->ValeurCouranteEnUnité(unités);
    const auto état = tour_++ % 2 == 0 ? ENUM_ETAT_LOGIQUE::Actif : ENUM_ETAT_LOGIQUE::Inactif;
    for (const SortieLogiqueRef& sortie : *sorties_) sortie->ValeurCourante(état);
    Passe::Tour();
  }

 private:
  CommandesRef commandes_;
  SortieLogiquesRef sorties_;
  unsigned tour_ = 0;
};

class Chargement : public Mesure {
 public:
  void Tour() override {
    Chassis chassis(machine_.services);
    Charge(chassis, base_, recueil_, machine_.horloge, {}, paramètres_.Collection(), {});
  }
  std::string Plaintes() const override {
    return recueil_->Problèmes().empty() ? "" : host::Ligne(recueil_->Problèmes().front());
  }

 private:
  Ref<host::Recueil> recueil_ = Crée<host::Recueil>();
  sim::MachineSimulée machine_{*recueil_};
  linux_::Parametres paramètres_ = ParamètresDeBanc();
  Base base_{CinqCents()};
};

template <auto kLignes>
std::unique_ptr<Mesure> Complète() {
  return std::make_unique<Passe>(kLignes(), kPériode);
}

constexpr std::array<Scénario, 7> kScénarios{{
    {"idle", "pass with nothing due, 8 boards, 64 channels",
     [] { return std::unique_ptr<Mesure>(new Passe(HuitCartes(kJamais, kJamais), 0)); }},
    {"boards", "full pass, 8 boards, 64 channels",
     &Complète<[] { return HuitCartes(kToujours, kToujours); }>},
    {"normal", "full pass, 64 sensors with filter and 20 points", &Complète<&CapteursNormaux>},
    {"mixed", "full pass, 64 sensors of every kind", &Complète<&CapteursVariés>},
    {"loop", "full pass, 16 commands, 32 inputs, 32 outputs", &Complète<&Boucle>},
    {"loop-host", "the same, host writes all set points and outputs",
     [] { return std::unique_ptr<Mesure>(new PasseEtHôte); }},
    {"load", "load and link of 500 objects",
     [] { return std::unique_ptr<Mesure>(new Chargement); }},
}};

}  // namespace

std::span<const Scénario> Scénarios() {
  return kScénarios;
}

[[gnu::noinline]] void FaitUnTour(Mesure& mesure) {
  mesure.Tour();
}

}  // namespace zuma::banc
