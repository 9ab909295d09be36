// Curves of a frame that runs, with a trigger.
#include <array>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <functional>
#include <thread>

#include "host/configuration.h"
#include "host/courbe.h"
#include "host/ecrivain.h"
#include "host/fichier_en_ajout.h"
#include "host/interruption.h"
#include "host/regard/choix.h"
#include "host/regard/textes.h"
#include "host/verbes/tableau.h"
#include "host/verbes/trace.h"
#include "host/verbes/verbes.h"

namespace zuma::host {

using publication::Echantillon;
using publication::Lecteur;
using publication::Lu;

namespace {

constexpr double kPartAvant = 0.2;  // of the picture, before the trigger
constexpr std::chrono::milliseconds kPause{5};

struct Opérateur {
  std::string_view signe;
  bool (*compare)(double, double);
};
constexpr std::array<Opérateur, 6> kOpérateurs{{{">", [](double a, double b) { return a > b; }},
                                                {">=", [](double a, double b) { return a >= b; }},
                                                {"<", [](double a, double b) { return a < b; }},
                                                {"<=", [](double a, double b) { return a <= b; }},
                                                {"=", [](double a, double b) { return a == b; }},
                                                {"!=", [](double a, double b) { return a != b; }}}};

// "on" and "off" are values of logic objects.
double LitLaValeur(const std::string& texte) {
  if (texte == "on") return 1;
  if (texte == "off") return 0;
  std::size_t fin = 0;
  try {
    const double valeur = std::stod(texte, &fin);
    if (fin == texte.size() && std::isfinite(valeur)) return valeur;
  } catch (const std::exception&) {  // told below
  }
  throw MauvaisUsage("\"" + texte + "\" is no value: a number with a point, on or off");
}

// True in the first sample in which the condition holds and did not before.
class Déclencheur {
 public:
  Déclencheur(const Lecteur& lecteur, const std::vector<std::string>& mots)
      : rang_(ObjetsNommés(lecteur.LeChassis(), {mots.at(0)}).front()),
        seuil_(LitLaValeur(mots.at(2))) {
    for (const Opérateur& opérateur : kOpérateurs) {
      if (opérateur.signe == mots.at(1)) compare_ = opérateur.compare;
    }
    if (compare_ == nullptr) {
      throw MauvaisUsage("\"" + mots[1] + "\" is no comparison: > >= < <= = !=");
    }
  }
  [[nodiscard]] bool Part(const Echantillon& échantillon) {
    const bool tient = compare_(échantillon[rang_].valeur, seuil_);
    const bool part = tient && avant_ == 0;
    avant_ = tient ? 1 : 0;
    return part;
  }

 private:
  std::size_t rang_;
  double seuil_;
  bool (*compare_)(double, double) = nullptr;
  int avant_ = -1;  ///< -1: not seen yet
};

class Oscilloscope {
 public:
  Oscilloscope(const OptionsScope& options, const std::string& fichier)
      : options_(options),
        lecteur_(fichier),
        rangs_(ObjetsNommés(lecteur_.LeChassis(), options.noms)) {}

  int Lance() {
    const auto départ = ChercheLeDépart();
    if (!départ) return kProblèmes;
    Attend(*départ + options_.secondes);
    const std::vector<Courbe> courbes = Relève(*départ);
    if (!options_.svg.empty()) return EcritLImage(courbes);
    for (const Courbe& courbe : courbes) Imprime(courbe);
    return kBon;
  }

 private:
  [[nodiscard]] bool Vit() const { return lecteur_.EstEnMarche() && !Interruption::Demandée(); }

  // Second of the samples at which the picture begins.
  [[nodiscard]] std::optional<double> ChercheLeDépart() {
    Echantillon échantillon;
    if (!lecteur_.LitLeDernier(échantillon)) {
      DitQuIlNYARien(lecteur_);
      return {};
    }
    // Of a host that died there is no future to wait for.
    if (options_.déclencheur.empty()) {
      moment_.reset();
      return Vit() ? échantillon.Secondes() : échantillon.Secondes() - options_.secondes;
    }
    Déclencheur déclencheur(lecteur_, options_.déclencheur);
    std::uint64_t numéro = Vit() ? échantillon.Numéro() : lecteur_.Premier();
    const double fin = échantillon.Secondes() + options_.attente;
    while (true) {
      const Lu lu = lecteur_.Lit(numéro, échantillon);
      if (lu == Lu::Dépassé) numéro = std::max(numéro + 1, lecteur_.Premier());
      if (lu == Lu::Bon) {
        ++numéro;
        if (déclencheur.Part(échantillon)) {
          moment_ = échantillon.Secondes();
          return *moment_ - kPartAvant * options_.secondes;
        }
        if (échantillon.Secondes() <= fin) continue;
      }
      if (lu == Lu::Dépassé) continue;
      if (!Vit() || échantillon.Secondes() > fin) break;
      std::this_thread::sleep_for(kPause);
    }
    std::fprintf(stderr, "zuma: the trigger did not come\n");
    return {};
  }

  void Attend(double secondes) {
    Echantillon échantillon;
    while (Vit() && lecteur_.LitLeDernier(échantillon) && échantillon.Secondes() < secondes) {
      std::this_thread::sleep_for(kPause);
    }
  }

  [[nodiscard]] std::vector<Courbe> Relève(double départ) const {
    const double zéro = moment_.value_or(départ);
    std::vector<Courbe> courbes;
    for (const std::size_t rang : rangs_) {
      const auto& objet = lecteur_.LeChassis().objets[rang];
      courbes.push_back({Désignation(objet),
                         moment_ ? "seconds from the trigger" : "seconds",
                         objet.unité,
                         {},
                         moment_ ? std::optional(0.0) : std::nullopt,
                         {}});
    }
    Echantillon échantillon;
    for (auto n = lecteur_.PremierDepuis(départ); n < lecteur_.Suivant(); ++n) {
      if (lecteur_.Lit(n, échantillon) != Lu::Bon) continue;
      if (échantillon.Secondes() > départ + options_.secondes) break;
      for (std::size_t i = 0; i < rangs_.size(); ++i) {
        const double valeur = échantillon[rangs_[i]].valeur;
        if (!std::isfinite(valeur)) continue;
        courbes[i].points.emplace_back(échantillon.Secondes() - zéro, valeur);
      }
    }
    return courbes;
  }

  [[nodiscard]] int EcritLImage(const std::vector<Courbe>& courbes) const {
    constexpr std::size_t kColonnes = 2;
    const int erreur = FichierEnAjout(options_.svg).Ajoute(EnSvg(courbes, kColonnes));
    if (erreur != 0) throw MauvaisUsage(options_.svg + ": " + Raison(erreur));
    std::printf("%s written\n", options_.svg.c_str());
    return kBon;
  }

  void Imprime(const Courbe& courbe) const {
    if (options_.json) {
      ImprimeEnJson({{"name", courbe.titre}, {"unit", courbe.ordonnée}, {"points", courbe.points}});
      return;
    }
    constexpr std::size_t kHauteur = 8;
    std::printf("%s [%s]\n", AGauche(courbe.titre, Largeur(courbe.titre)).c_str(),
                AGauche(courbe.ordonnée, Largeur(courbe.ordonnée)).c_str());
    for (const std::string& ligne : EnPoints(courbe.points, terminal_.Colonnes(), kHauteur)) {
      std::printf("%s\n", ligne.c_str());
    }
    if (courbe.points.empty()) return;
    std::printf("%12s%.3f to %.3f %s\n", "", courbe.points.front().first,
                courbe.points.back().first, courbe.abscisse.c_str());
  }

  const OptionsScope& options_;
  Lecteur lecteur_;
  std::vector<std::size_t> rangs_;
  std::optional<double> moment_;  ///< of the trigger
  Terminal terminal_;
};

}  // namespace

int Scope(const OptionsScope& options) {
  if (options.noms.empty()) throw MauvaisUsage("scope what? `zuma show` lists the names");
  const std::string fichier = LaPublication(options.où, options.chassis);
  const Interruption interruption;
  return Oscilloscope(options, fichier).Lance();
}

}  // namespace zuma::host
