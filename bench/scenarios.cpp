#include "bench/scenarios.h"

#include <array>
#include <string>
#include <utility>

#include "outils/allocations.h"
#include "platform/linux/demo.h"

namespace zuma::banc {
namespace {

// Rates that are due on every pass of this period, the watchdog's included.
constexpr double kToujours = 1000;  // hertz
constexpr double kPériode = 5000;   // microseconds
constexpr double kJamais = 0;       // hertz
constexpr std::int32_t kCinqCents = 500;

Champ Fils(int rang, std::int32_t capteur) {
  return Texte("Capteur Fils N° " + std::to_string(rang), std::to_string(capteur));
}

// A board of 16 analog inputs with a sensor on each; returns the first sensor's Index.
std::int32_t SeizeCapteurs(Lignes& lignes) {
  lignes.Carte();
  const std::int32_t canal = lignes.Bloc(kEA, kScan, 16, true);
  for (std::int32_t n = 0; n < 16; ++n) {
    // Ranges that differ, for the kinds that choose among them.
    lignes.Objet("Capteur",
                 {Entier("Canal", canal + n), Réel("Sécurité Maximale en Unité", 1e6 * (n + 1))});
  }
  return canal + 16;
}

Lignes CapteursNormaux() {
  Lignes lignes(kToujours, kJamais);
  for (int carte = 0; carte < 4; ++carte) SeizeCapteurs(lignes);
  return lignes;
}

// 16 sensors from channels, and 48 of every kind made from others, from the clock or from outside.
Lignes CapteursVariés() {
  const std::vector<std::vector<Champ>> genres{
      {Texte("Type de Capteur", "Moyen"), Entier("Offset", kDécalage)},
      {Texte("Type de Capteur", "Recouvrement")},
      {Texte("Type de Capteur", "Contrainte"), Entier("Type de contrainte", kType),
       Entier("Forme eprouvette", kForme), Entier("D", kDiamètre), Entier("Unite", kUnité),
       Entier("S", kSection)},
      {Texte("Type de Capteur", "Temps"), Texte("Unité d'Etalonnage", "S")},
      {Texte("Type de Capteur", "Vitesse")},
      {Texte("Type de Capteur", "DeltaL/L"), Entier("S", kLongueur)},
      {Texte("Type de Capteur", "Combinaison"), Texte("Opérateur", "-")},
      {Texte("Type de Capteur", "Selectionnable"), Entier("S", kChoix),
       Texte("Valeur de selection", "2")},
      {Texte("Type de Capteur", "PPC")},
      {Texte("Type de Capteur", "SOLARTRON LVDT")},
  };
  Lignes lignes(kToujours, kJamais);
  const std::int32_t normal = SeizeCapteurs(lignes);
  for (std::int32_t n = 0; n < 48; ++n) {
    std::vector<Champ> champs = genres[static_cast<std::size_t>(n) % genres.size()];
    champs.push_back(Fils(1, normal + n % 16));
    champs.push_back(Fils(2, normal + (n + 1) % 16));
    lignes.Objet("Capteur", champs);
  }
  return lignes;
}

void AjouteLesCommandes(Lignes& lignes) {
  const std::int32_t capteur = SeizeCapteurs(lignes);
  const std::string alimentation = std::to_string(capteur);
  const std::string utilisation = std::to_string(capteur + 1);
  const std::vector<Champ> avecDither{Réel("Fréquence dither", 200), Réel("Amplitude dither", 2)};
  const std::vector<Champ> servo{Texte("Type de Commande", "Servo"),
                                 Texte("Capteur Alimentation", alimentation),
                                 Texte("Capteur Utilisation", utilisation)};
  const std::vector<Champ> recopie{Texte("Type de Commande", "Recopie"),
                                   Texte("Capteur de recopie", utilisation)};
  const auto ajoute = [&](int nombre, std::int32_t& canal, const std::vector<Champ>& champs) {
    for (int n = 0; n < nombre; ++n) {
      std::vector<Champ> tous = champs;
      tous.push_back(Entier("Canal", canal++));
      lignes.Objet("Commande", tous);
    }
  };
  lignes.Carte();
  std::int32_t canal = lignes.Bloc(kSA, "DrvACL6128", 8, false);
  ajoute(4, canal, avecDither);
  ajoute(2, canal, servo);
  ajoute(2, canal, recopie);
  lignes.Carte();
  canal = lignes.Bloc(kSA, "DrvPCL728", 8, false);
  for (std::int32_t n = 0; n < 8; ++n) ajoute(1, canal, {Entier("Paramètre", kDernier - n)});
}

// Boards with both directions: 24 inputs and 24 outputs on one, 8 of each on the other.
void AjouteLesLogiques(Lignes& lignes) {
  std::int32_t rang = 0;
  for (const std::int32_t nombre : {24, 8}) {
    lignes.Carte("DrvPET48DIO");
    const std::int32_t entrée = lignes.Bloc(kEL, "DrvPET48DIO_TB24P", nombre, true);
    const std::int32_t sortie = lignes.Bloc(kSL, "DrvPET48DIO_TB24R", nombre, true);
    for (std::int32_t n = 0; n < nombre; ++n, ++rang) {
      lignes.Objet(
          kEL, {Entier("Canal", entrée + n), Entier("Parametre Etat", kEtats + rang),
                Entier("Parametre Etat Actif", kActif), Entier("Parametre Etat Inactif", kInactif),
                Réel("Durée Anti-Rebond (s)", rang % 2 == 0 ? 0.0 : 0.012)});
      lignes.Objet(kSL, {Entier("Canal", sortie + n)});
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
  constexpr std::int32_t kObjetsParCarte = 34;
  Lignes lignes = Boucle();
  while (lignes.NombreDObjets() + kObjetsParCarte <= kCinqCents) SeizeCapteurs(lignes);
  lignes.Carte();
  lignes.Bloc(kSL, "DrvACL8316_ACLD9185", kCinqCents - lignes.NombreDObjets() - 1, true);
  return lignes;
}

// Every line of one PCI board; its outputs are written by block, each change at once.
Lignes UneCartePCI() {
  Lignes lignes(kToujours, kToujours);
  lignes.Carte("DrvPCI9111HR");
  lignes.Bloc(kEA, "DrvPCI9111HR/Vorlanex EA", 16, false);
  lignes.Bloc(kEL, "DrvPCI9111HR/Vorlanex EL", 20, true);
  const std::int32_t sortie = lignes.Bloc(kSL, "DrvPCI9111HR/Vorlanex SL", 20, true);
  for (std::int32_t n = 0; n < 20; ++n) lignes.Objet(kSL, {Entier("Canal", sortie + n)});
  return lignes;
}

// A host that writes every set point and every output before each pass.
class PasseEtHôte : public Mesure {
 public:
  using Mesure::Mesure;
  void Tour() override {
    const double unités = 20 + tour_ % 50;
    for (const CommandeRef& c : *commandes_) c->ValeurCouranteEnUnité(unités);
    const auto état = tour_++ % 2 == 0 ? ENUM_ETAT_LOGIQUE::Actif : ENUM_ETAT_LOGIQUE::Inactif;
    for (const SortieLogiqueRef& s : *sorties_) s->ValeurCourante(état);
    Mesure::Tour();
  }

 private:
  CommandesRef commandes_ = banc.LeChassis().Commandes();
  SortieLogiquesRef sorties_ = banc.LeChassis().SortiesLogiques();
  unsigned tour_ = 0;
};

/// A device on a line, with a look at what it allocates for its answers.
class AppareilCompté : public sim::AppareilSérie {
 public:
  AppareilCompté(Ref<sim::AppareilSérie> appareil, std::int64_t& allocations)
      : AppareilSérie(appareil->LHorloge()),
        appareil_(std::move(appareil)),
        allocations_(allocations) {}
  void Branche(sim::LigneSérie& ligne) override { appareil_->Branche(ligne); }
  void Reçoit(std::string_view octets, sim::LigneSérie& ligne) override {
    Compte([&] { appareil_->Reçoit(octets, ligne); });
  }
  void Réveil(sim::LigneSérie& ligne) override {
    Compte([&] { appareil_->Réveil(ligne); });
  }

 private:
  void Compte(auto&& travail) {
    const std::int64_t avant = essai::Allocations();
    travail();
    allocations_ += essai::Allocations() - avant;
  }

  Ref<sim::AppareilSérie> appareil_;
  std::int64_t& allocations_;
};

// The instruments of the demonstration, with the boards that a pass leaves to the host.
class PasseDesAppareils : public Mesure {
 public:
  PasseDesAppareils()
      : Mesure(linux_::LignesDeDémonstration(), linux_::kChassisDesAppareils, kPériode) {
    for (const CarteRef& carte : *banc.LeChassis().Cartes()) {
      const ENUM_DRIVER driver = carte->Driver_enm();
      if (driver == ENUM_DRIVER::DrvSpiderV1 ||
          driver == ENUM_DRIVER::DrvConditionneurNumeriqueK9) {
        duHôte_.push_back(carte);
      }
    }
    for (std::int32_t port = 1; port <= kPortsAuPlus; ++port) {
      sim::LigneSérie* ligne = banc.LaMachine().liaisons.Ligne(port);
      if (ligne == nullptr) continue;
      ligne->Attache(Crée<AppareilCompté>(ligne->appareil, allocationsDesJumeaux));
    }
  }
  void Tour() override {
    Mesure::Tour();
    for (const CarteRef& carte : duHôte_) carte->MetàJour();
  }

 private:
  static constexpr std::int32_t kPortsAuPlus = 20;
  std::vector<CarteRef> duHôte_;
};

class Chargement : public Mesure {
 public:
  using Mesure::Mesure;
  void Tour() override {
    Chassis chassis(banc.LaMachine().services);
    banc.Charge(chassis);
  }
};

template <class Genre>
std::unique_ptr<Mesure> Sur(const Lignes& lignes, double période = kPériode) {
  return std::make_unique<Genre>(lignes, période);
}

constexpr std::array<Scénario, 10> kScénarios{{
    {"idle", "pass with nothing due, 8 boards, 64 channels",
     [] { return Sur<Mesure>(HuitCartes(kJamais, kJamais), 0); }},
    {"boards", "full pass, 8 boards, 64 channels",
     [] { return Sur<Mesure>(HuitCartes(kToujours, kToujours)); }},
    {"normal", "full pass, 64 sensors with filter and 20 points",
     [] { return Sur<Mesure>(CapteursNormaux()); }},
    {"mixed", "full pass, 64 sensors of every kind", [] { return Sur<Mesure>(CapteursVariés()); }},
    {"loop", "full pass, 16 commands, 32 inputs, 32 outputs", [] { return Sur<Mesure>(Boucle()); }},
    {"loop-host", "the same, host writes all set points and outputs",
     [] { return Sur<PasseEtHôte>(Boucle()); }},
    {"pci", "full pass, a PCI 9111: 16 analog and 20 logic inputs",
     [] { return Sur<Mesure>(UneCartePCI()); }},
    {"pci-host", "the same, host writes its 20 logic outputs",
     [] { return Sur<PasseEtHôte>(UneCartePCI()); }},
    {"instruments", "full pass, 7 instruments, host refreshes 2 of them",
     []() -> std::unique_ptr<Mesure> { return std::make_unique<PasseDesAppareils>(); }},
    {"load", "load and link of 500 objects", [] { return Sur<Chargement>(CinqCents(), 0); }},
}};

}  // namespace

Mesure::Mesure(const std::vector<linux_::LigneDeBase>& lignes, std::int32_t chassis, double période)
    : banc(lignes, chassis), période_(période) {
  for (const CommandeRef& commande : *banc.LeChassis().Commandes()) commande->Enabled(true);
}

void Mesure::Avant() {
  if (période_ == 0) return;
  banc.LaMachine().horloge->Avance(période_);
  banc.Bouge();
}

std::span<const Scénario> Scénarios() {
  return kScénarios;
}

[[gnu::noinline]] void FaitUnTour(Mesure& mesure) {
  mesure.Tour();
}

}  // namespace zuma::banc
