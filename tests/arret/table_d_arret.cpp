#include "arret/table_d_arret.h"

#include <array>
#include <cmath>
#include <sstream>

#include "arret/rudesse.h"
#include "arret/sortie.h"
#include "dialogs/cpt_normal_extrn_calibration.h"
#include "sim/bus_modbus.h"
#include "sim/testeur_cbr_simule.h"

namespace zuma::arret {
namespace {

using banc::Entier;
using banc::kSA;
using banc::kSL;
using banc::Réel;
using banc::Texte;

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
    Rudesse{.nom = "in a calibration", .occasion = Occasion::UnEtalonnage}};

constexpr double kAvant = 1.5;       // seconds of running before the stop, in kind conditions
constexpr double kPasCalme = 0.005;  // seconds
constexpr double kAprès = 8;         // seconds watched behind it
constexpr double kTenue = 1.5;       // seconds
constexpr double kVue = 0.01;        // seconds until inputs are read
constexpr double kBrève = 0.02;      // seconds that a door stands open
constexpr double kLiensMorts = 0.3;  // seconds
constexpr double kOubli = 0.03;      // seconds behind the stop
constexpr double kFinesse = 0.0001;  // seconds between two looks inside a pass
constexpr double kMarche = 50;       // set point, in units

// --- The frame

void AjouteLesVoisins(Lignes& lignes, const Sortie& sortie) {
  if (sortie.metEnRoute == nullptr) {
    lignes.Watchdog({Texte("Adresse", "700"), Réel("Temps en seconde", 0.5)});
  }
  lignes.Carte("UTS-0107", "13,9600,N,8,1");
  const std::int32_t canal = lignes.Bloc(kSL, {}, 1, true);
  lignes.Objet(kSL, {Texte("Nom de la Sortie Logique", kVoisine), Entier("Canal", canal)});
}

void AjouteLaCommandeFautive(Lignes& lignes) {
  lignes.Carte();
  const std::int32_t canal = lignes.Bloc(kSA, "DrvPCL728", 1, false);
  lignes.Objet("Commande", {Texte("Nom de la Commande", kVoisine), Entier("Canal", canal)});
}

Lignes Cadre(const Sortie& sortie, const Rudesse& rudesse) {
  Lignes lignes = Montage::Départ();
  if (rudesse.voisinFigé) AjouteLesVoisins(lignes, sortie);
  if (rudesse.commandeFautive) AjouteLaCommandeFautive(lignes);
  sortie.monte(lignes, sortie);
  return lignes;
}

// --- What is done to it

void Ralentit(Montage& m, double microsecondes) {
  for (std::int32_t port = 0; port < 32 && microsecondes > 0; ++port) {
    sim::LigneSérie* ligne = m.machine.sim.liaisons.Ligne(port);
    if (ligne == nullptr) continue;
    if (auto* testeur = dynamic_cast<sim::TesteurCBRSimulé*>(&*ligne->appareil)) {
      testeur->latence = microsecondes;
    }
    auto* bus = dynamic_cast<sim::BusModbus*>(&*ligne->appareil);
    for (std::uint8_t adresse = 1; bus != nullptr && adresse <= 5; ++adresse) {
      if (auto* esclave = bus->Esclave(adresse)) esclave->latence = microsecondes;
    }
  }
}

// A table of one abscissa gives no points: every refresh of the command fails.
void RendFautive(Montage& m) {
  for (const CommandeRef& commande : *m.marche->LeChassis().Commandes()) {
    if (commande->NomDeLaCommande() != kVoisine) continue;
    for (std::int16_t n = 1; n <= Commande::MaxPoints(); ++n) commande->PointX(n, Valeur(7.0));
  }
}

void Planifie(Montage& m, sim::GenreDePanne genre, double durée) {
  for (const sim::LieuDePanne lieu : {sim::LieuDePanne::Partout, sim::LieuDePanne::USB}) {
    m.machine.sim.pannes.push_back(
        {.genre = genre, .lieu = lieu, .début = 0, .fin = m.DepuisLeDépart() + durée});
  }
  m.machine.AvanceJusquA(m.DepuisLeDépart());
}

// A board that lost its power for a moment: its terminals stand anywhere.
void FaitOublier(Montage& m) {
  const CanalRef canal = m.LObjet().Canal();
  sim::Bornes& bornes = m.machine.sim.BorneDe(*canal)->DeLaCarte();
  bornes.sortiesAnalogiques.fill(5);
  bornes.sortiesLogiques = ~bornes.sortiesLogiques;
  bornes.fréquence = 1000;
}

void Eprouve(Montage& m, const Sortie& sortie, const Rudesse& rudesse) {
  Ralentit(m, rudesse.lenteur);
  if (rudesse.panne) Planifie(m, *rudesse.panne, kAprès * 2);
  if (rudesse.câbleSorti && sortie.débranche != nullptr) sortie.débranche(m, true);
  if (rudesse.câbleSorti && sortie.débranche == nullptr) {
    Planifie(m, sim::GenreDePanne::Débranchement, kCâbleDehors);
  }
  if (rudesse.commandeFautive) RendFautive(m);
  if (!rudesse.voisinFigé) return;
  m.machine.sim.liaisons.Ligne(13)->pannes.muette = true;
  auto* chien = m.machine.sim.ChienDeGarde();
  if (chien != nullptr && sortie.metEnRoute == nullptr) chien->Panne(true);
}

// --- The stop

void MetEnRoute(Montage& m, const Sortie& sortie) {
  if (sortie.metEnRoute != nullptr) return sortie.metEnRoute(m);
  const Objet objet = m.LObjet();
  if (objet.commande) {
    objet.commande->Enabled(true);
    objet.commande->ValeurCouranteEnUnité(kMarche);
  } else {
    objet.sortie->ValeurCourante(ENUM_ETAT_LOGIQUE::Actif);
  }
}

void ArrêteDansUnDépart(Montage& m, const Sortie& sortie) {
  m.machine.pendantUnSommeil = [&m] { m.marche->Arrête(); };
  MetEnRoute(m, sortie);
  m.Passe(0.001);
  if (m.machine.pendantUnSommeil) m.marche->Arrête();
  m.machine.pendantUnSommeil = nullptr;
}

// The stop comes from who hears of the new unit, while the form saves.
void ArrêteDansUnEtalonnage(Montage& m) {
  Capteur& capteur = **m.marche->LeChassis().Capteurs()->begin();
  capteur.EtalonnageExterieur(nullptr);
  (void)capteur.AbonneUnitChange([&m](const std::string&) { m.marche->Arrête(); });
  Cpt_Normal_Extrn_Calibration& feuille = *m.machine.fenêtres.capteur;
  feuille.TxtUnite = "daN";
  feuille.BtnOK();
}

void Arrête(Montage& m, const Sortie& sortie, const Rudesse& rudesse) {
  switch (rudesse.occasion) {
    case Occasion::Porte:
    case Occasion::PorteBrève:
      m.ouverte = true;
      return m.Passe(rudesse.pasDePasse);
    case Occasion::Ecouteur:
      (void)m.Ecouteur().AbonneChange([&m](ENUM_ETAT_LOGIQUE) { m.marche->Arrête(); });
      m.levé = true;
      return m.Passe(rudesse.pasDePasse);
    case Occasion::EntrePasses:
      return m.marche->Arrête();
    case Occasion::UnDépart:
      return ArrêteDansUnDépart(m, sortie);
    case Occasion::UnEtalonnage:
      return ArrêteDansUnEtalonnage(m);
  }
}

void Passe(Montage& m, double secondes, double pas) {
  for (const double fin = m.Maintenant() + secondes; m.Maintenant() < fin;) m.Passe(pas);
}

// The stated time, from the instant at which the machine gives cause to stop: the output's own, and
// behind a link in trouble the time to tell it. A neighbour that hangs holds the pass in which
// links are served, and a bare host, which drives the watchdog board before the outputs.
double Délai(const Sortie& sortie, const Rudesse& rudesse, Hôte hôte) {
  double délai = sortie.délai + 2 * rudesse.pasDePasse;
  const bool gêne =
      rudesse.panne || rudesse.câbleSorti || rudesse.lenteur > 0 || rudesse.voisinFigé;
  if (sortie.EstUnLien() && gêne) délai += host::SuiviDeLArrêt::kDélai / 1e6;
  if (rudesse.voisinFigé && (sortie.EstUnLien() || hôte == Hôte::Nu)) délai += kTenue;
  if (rudesse.occasion <= Occasion::Ecouteur) délai += kVue;
  if (rudesse.oubli) délai += kOubli + linux_::Securite::kReprise / 1e6;
  return délai;
}

/// Looks at a terminal from the stop on: between passes, and inside one whenever it reads the time.
class Regard {
 public:
  Regard(Verdict& verdict, Montage& montage, const Sortie& sortie)
      : verdict_(verdict), montage_(montage), sortie_(sortie), arrêt_(montage.Maintenant()) {
    verdict.repos = verdict.dite = Verdict::kJamais;
    montage.machine.àChaqueLecture = [this] { Note(); };
  }
  ~Regard() { montage_.machine.àChaqueLecture = nullptr; }

  /// Seconds since the stop.
  [[nodiscard]] double Depuis() const { return montage_.Maintenant() - arrêt_; }
  /// Between two passes: what the host tells too, which no pass changes before its end.
  void Ecoute() {
    dite_ = montage_.EstDite(sortie_.metEnRoute ? "Watchdog" : Montage::kSujet);
    if (dite_ && verdict_.dite == Verdict::kJamais) verdict_.dite = Depuis();
    Regarde();
  }

 private:
  void Note() {
    if (Depuis() >= vu_ + kFinesse) Regarde();
  }
  void Regarde() {
    const double t = Depuis();
    const bool repos = sortie_.auRepos(montage_);
    if (!repos) verdict_.repos = Verdict::kJamais;
    if (repos && verdict_.repos == Verdict::kJamais) verdict_.repos = t;
    if (!repos && !dite_ && t > verdict_.délai) verdict_.niLUnNiLAutre += t - vu_;
    vu_ = t;
  }

  Verdict& verdict_;
  Montage& montage_;
  const Sortie& sortie_;
  double arrêt_;
  double vu_ = 0;  // time of the last look
  bool dite_ = false;
};

void Suit(Regard& regard, Montage& m, const Sortie& sortie, const Rudesse& rudesse, Hôte hôte) {
  // A board on ports: nothing tells that it lost what it was written.
  const bool surDesPorts = !sortie.EstUnLien() && sortie.débranche == nullptr;
  bool oublie = rudesse.oubli && surDesPorts && hôte == Hôte::Fourni;
  while (regard.Depuis() < kAprès) {
    if (oublie && regard.Depuis() > kOubli) {
      FaitOublier(m);
      oublie = false;
    }
    regard.Ecoute();
    if (rudesse.occasion == Occasion::PorteBrève) m.ouverte = regard.Depuis() < kBrève;
    if (regard.Depuis() > kCâbleDehors && sortie.débranche != nullptr) sortie.débranche(m, false);
    m.Passe(rudesse.pasDePasse);
  }
  regard.Ecoute();
}

}  // namespace

std::span<const Rudesse> Rudesses() {
  return kRudesses;
}
std::string_view Nom(const Rudesse& rudesse) {
  return rudesse.nom;
}

bool Concerne(Hôte hôte, const Sortie& sortie) {
  return hôte == Hôte::Fourni || sortie.metEnRoute == nullptr;
}

Verdict Essaie(const Sortie& sortie, const Rudesse& rudesse, Hôte hôte) {
  Verdict verdict;
  try {
    const bool trouvée = rudesse.trouvéeEnMarche && sortie.enMarcheAvant != nullptr;
    const auto avant = [&](Montage& m) {
      if (!trouvée) return;
      sortie.enMarcheAvant(m);
      verdict.bougeait = !sortie.auRepos(m);
    };
    Montage m(Cadre(sortie, rudesse), avant);
    if (hôte == Hôte::Nu) m.Dénude();
    const bool plusTard = rudesse.occasion == Occasion::UnDépart;
    if (!trouvée && !plusTard) MetEnRoute(m, sortie);
    Passe(m, kAvant, kPasCalme);
    verdict.bougeait = verdict.bougeait || plusTard || !sortie.auRepos(m);
    verdict.délai = Délai(sortie, rudesse, hôte);
    verdict.clémente = &rudesse == Rudesses().data() && hôte == Hôte::Fourni;
    verdict.reprise = hôte == Hôte::Fourni || sortie.débranche == nullptr;
    Eprouve(m, sortie, rudesse);
    Regard regard(verdict, m, sortie);
    Arrête(m, sortie, rudesse);
    Suit(regard, m, sortie, rudesse, hôte);
  } catch (const std::exception& e) {
    verdict.plainte = e.what();
  }
  return verdict;
}

bool FinitAuRepos(const Sortie& sortie, bool exigée) {
  Montage m(Cadre(sortie, {}));
  MetEnRoute(m, sortie);
  Passe(m, kAvant, kPasCalme);
  if (sortie.auRepos(m)) return false;
  m.machine.sim.pannes = {{.genre = sim::GenreDePanne::Débranchement,
                           .lieu = sim::LieuDePanne::Partout,
                           .début = 0,
                           .fin = m.DepuisLeDépart() + kLiensMorts}};
  m.machine.AvanceJusquA(m.DepuisLeDépart());
  if (!exigée) {
    m.marche.reset();
    return sortie.auRepos(m);
  }
  bool dansUnePasse = false;
  m.machine.àChaqueLecture = [&] {
    m.machine.àChaqueLecture = nullptr;
    dansUnePasse = true;
    m.machine.Services().fin->ArrêteLeProgramme("Essai");
    m.machine.avantLaFin();
  };
  m.Passe(kPasCalme);
  return dansUnePasse && sortie.auRepos(m);
}

std::string EnLong(const Verdict& v) {
  std::ostringstream texte;
  texte << (v.bougeait ? "moving before" : "did not move") << ", rest after " << v.repos << " s of "
        << v.délai << ", told after " << v.dite << " s, neither for " << v.niLUnNiLAutre << " s "
        << v.plainte;
  return texte.str();
}

std::string EnBref(const Verdict& verdict) {
  if (!verdict.Tient()) return "FAILED";
  const auto ms = [](double secondes) { return std::to_string(std::lround(secondes * 1000)); };
  std::string bref = ms(verdict.repos) + " ms";
  if (verdict.dite < Verdict::kJamais) bref += ", told " + ms(verdict.dite);
  return bref;
}

}  // namespace zuma::arret
