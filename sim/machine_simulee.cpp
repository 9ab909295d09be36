#include "sim/machine_simulee.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace zuma::sim {
namespace {

constexpr double kMilieu = 5;          // volts
constexpr double kAmplitude = 4;       // volts: 1 to 9 V suits unipolar boards too
constexpr double kPériode = 8;         // seconds
constexpr double kClignotement = 1.5;  // seconds
// The terminals move in steps, so that a view shows values and terminals of the same instant.
constexpr double kPalier = 0.1;  // seconds

}  // namespace

MachineSimulée::MachineSimulée(BoîteDeMessage& messages, Ref<RegistreDesDrivers> drivers) {
  services.drivers = std::move(drivers);
  services.messages = &messages;
  services.ports = &ports.Bus();
  services.compteurs = &compteurs;
  services.liaisons = &liaisons;
  services.can = &bus.Can();
  services.ftdi = &bus.Thumler();
  services.fin = &fin;
  services.orbit = &réseaux.Orbit();
  services.spider = &réseaux.Spider();
  services.horloge = horloge.Brut();
  services.fichiers = &fichiers;
  services.clavier = &clavier;
  services.pci = &pci.Bibliothèque();
  (void)liaisons.Attache(1, balance);
  (void)liaisons.Attache(2, comparateur);
  (void)liaisons.Attache(3, indicateur);
}

void MachineSimulée::Branche(Chassis& chassis, std::span<const Fil> câblage) {
  câblage_ = câblage;
  ports.Branche(chassis);
  pci.Branche(chassis);
  bus.Branche(chassis);
  instruments.Branche(chassis);
  réseaux.Branche(chassis);
  liaisons.Graine(graine);
  ports.Graine(graine);
  pci.Bibliothèque().Graine(graine);
  liaisons.MetEnMarche(pannes);
  bus.MetEnMarche(pannes);
  AppliqueLesPannes(kAvantLeDépart);
  for (const CarteRef& carte : *chassis.Cartes()) {
    for (const FonctionRef& bloc : *carte->Fonctions()) {
      const ENUM_TYPE_FONCTION type = bloc->TypeDeFonction();
      const bool logique = type == ENUM_TYPE_FONCTION::FctEntréesLogiques;
      const bool entrée = logique || type == ENUM_TYPE_FONCTION::FctEntréesAnalogiques;
      for (const CanalRef& canal : *bloc->Canals()) BrancheLeCanal(*canal, logique, entrée);
    }
  }
}

std::optional<Borne> MachineSimulée::BorneDe(const Canal& canal) const {
  const auto borne = ports.BorneDe(canal);
  return borne ? borne : pci.BorneDe(canal);
}

void MachineSimulée::BrancheLeCanal(const Canal& canal, bool logique, bool entrée) {
  const auto borne = BorneDe(canal);
  if (!borne) return;
  const auto fil = std::ranges::find(câblage_, canal.Key(), &Fil::canal);
  if (fil != câblage_.end()) {
    fils_.push_back({*borne, &*fil});
  } else if (entrée) {
    entrées_.push_back({*borne, logique, static_cast<double>(entrées_.size())});
  }
}

// Noise of the measuring chain, in volts: about half a millivolt, the same on every run.
double MachineSimulée::Bruit() {
  constexpr double kVolts = 0.0005;
  bruit_ ^= bruit_ << 13U;
  bruit_ ^= bruit_ >> 17U;
  bruit_ ^= bruit_ << 5U;
  return kVolts * (static_cast<double>(bruit_) / 2147483648.0 - 1);
}

void MachineSimulée::LitLesSorties(const FilPosé& posé) {
  if (posé.fil->grandeur == Grandeur::Servovalve) {
    presse.servovalve = posé.borne.TensionSortie() / kVoltsPleineEchelle;
  } else if (posé.fil->grandeur == Grandeur::Pompe) {
    presse.pompe = posé.borne.SortieLogique();
  } else if (posé.fil->grandeur == Grandeur::Distributeur) {
    presse.distributeur = posé.borne.SortieLogique();
  }
}

void MachineSimulée::PoseLesEntrées(FilPosé& posé) {
  const auto mesure = [&](double valeur) {
    posé.borne.TensionEntrée(valeur / posé.fil->pleineEchelle * kVoltsPleineEchelle + Bruit());
  };
  const auto ligne = [&](bool vraie) { posé.borne.EntréeLogique(vraie); };
  switch (posé.fil->grandeur) {
    case Grandeur::Force:
      return mesure(presse.Force());
    case Grandeur::Position:
      return mesure(presse.Position());
    case Grandeur::PressionAlimentation:
      return mesure(presse.PressionAlimentation());
    case Grandeur::PressionUtilisation:
      return mesure(presse.PressionUtilisation());
    case Grandeur::Raccourcissement:
      return mesure(presse.Raccourcissement());
    case Grandeur::Armé:
      return ligne(presse.Armée());
    case Grandeur::PorteFermée:
      return ligne(presse.porteFermée);
    case Grandeur::FinDeCourseHaut:
      return ligne(presse.FinDeCourseHaut());
    case Grandeur::FinDeCourseBas:
      return ligne(presse.FinDeCourseBas());
    case Grandeur::BoutonAU:
      return ligne(presse.boutonAU);
    case Grandeur::Servovalve:
    case Grandeur::Pompe:
    case Grandeur::Distributeur:
      return;
  }
}

// The press lives by the machine's own clock, the time that a pass took included.
void MachineSimulée::FaitVivreLaPresse() {
  if (fils_.empty()) return;
  presse.chaîneFermée = ChienDeGarde() == nullptr || ChienDeGarde()->ContactFermé();
  for (const FilPosé& posé : fils_) LitLesSorties(posé);
  presse.Avance((horloge->Maintenant() - heurePresse_) / 1e6);
  heurePresse_ = horloge->Maintenant();
  for (FilPosé& posé : fils_) PoseLesEntrées(posé);
}

void MachineSimulée::Anime(Entrée& entrée, double secondes) {
  const double tour = secondes / kPériode + entrée.phase * 0.13;
  if (!entrée.logique) {
    entrée.borne.TensionEntrée(kMilieu + kAmplitude * std::sin(2 * std::numbers::pi * tour));
    return;
  }
  const auto rang = static_cast<std::uint64_t>(secondes / kClignotement + entrée.phase);
  entrée.borne.EntréeLogique(rang % 2 != 0);
}

// Faults that a test put on by hand stay as they are while none is planned.
void MachineSimulée::AppliqueLesPannes(double secondes) {
  if (pannes.empty() && !enPanne_) return;
  enPanne_ = !pannes.empty();
  liaisons.Applique(pannes, secondes);
  bus.Applique(pannes, secondes);
  ports.Applique(pannes, secondes);
  pci.Bibliothèque().Applique(pannes, secondes);
  RègleLHeure(secondes);
}

// Steps of the clock of the day add up, and are taken back as they end.
void MachineSimulée::RègleLHeure(double secondes) {
  double avance = 0;
  for (const PannePrévue& panne : pannes) {
    if (panne.genre == GenreDePanne::Horloge && panne.EstLà(secondes)) avance += panne.quantité;
  }
  horloge->RègleHeure(avance - avance_);
  avance_ = avance;
}

double MachineSimulée::AvanceJusquA(double secondes) {
  // The start of the boards took its own time.
  if (passe_ == 0) origine_ = horloge->Maintenant();
  const double retard = origine_ + secondes * 1e6 - horloge->Maintenant();
  if (retard > 0) horloge->Avance(retard);
  secondes = std::max(secondes, (horloge->Maintenant() - origine_) / 1e6);
  ports.Bus().Passe(++passe_);
  AppliqueLesPannes(secondes);
  FaitVivreLaPresse();
  const auto palier = std::llround(secondes / kPalier);
  if (palier == palier_) return secondes;
  palier_ = palier;
  bus.Anime(static_cast<double>(palier) * kPalier);
  instruments.Anime(static_cast<double>(palier) * kPalier);
  réseaux.Anime(static_cast<double>(palier) * kPalier);
  for (Entrée& entrée : entrées_) Anime(entrée, static_cast<double>(palier) * kPalier);
  return secondes;
}

}  // namespace zuma::sim
