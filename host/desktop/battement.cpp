#include "host/desktop/battement.h"

#include <algorithm>
#include <exception>
#include <utility>

namespace zuma::host {
namespace {

using Horloge = std::chrono::steady_clock;
constexpr std::chrono::milliseconds kRepos{1};  // for the window, between two passes

double Millisecondes(Horloge::duration durée) {
  return std::chrono::duration<double, std::milli>(durée).count();
}

}  // namespace

Battement::Battement(Travail travail) : travail_(std::move(travail)) {
  minuterie_.setTimerType(Qt::PreciseTimer);
  minuterie_.setSingleShot(true);
  minuterie_.setInterval(kRepos);
  QObject::connect(&minuterie_, &QTimer::timeout, &minuterie_, [this] { Bat(); });
}

void Battement::Démarre() {
  enMarche_ = true;
  OublieLesMesures();
  minuterie_.start();
}

void Battement::Arrête() {
  enMarche_ = false;
  minuterie_.stop();
}

void Battement::OublieLesMesures() {
  mesures_ = {};
  finDePasse_ = débutDeSeconde_ = Horloge::now();
  passesDeLaSeconde_ = 0;
}

void Battement::Bat() {
  if (enPasse_) return;
  enPasse_ = true;
  if (départ_ == Instant()) départ_ = Horloge::now();  // a machine counts from its first pass too
  UnePasse();
  enPasse_ = false;
  if (enMarche_) minuterie_.start();
}

// Each alone: whoever watches the machine behind the pass must hear of one that failed half-way.
template <class Fait>
void Battement::Tente(Fait&& fait) {
  try {
    fait();
  } catch (const std::exception& e) {
    travail_.échec(e.what());
  }
}

void Battement::UnePasse() {
  // A rest behind the clock: a machine that waits for its time has nothing to wait for.
  const std::chrono::duration<double> écoulé = Horloge::now() - départ_ - kRepos;
  Tente([&] { secondes_ = travail_.avance(std::max(0.0, écoulé.count())); });
  const Instant début = Horloge::now();
  Tente([&] { travail_.passe(); });
  const Instant fin = Horloge::now();
  mesures_.plusLongEcart = std::max(mesures_.plusLongEcart, Millisecondes(début - finDePasse_));
  mesures_.plusLonguePasse = std::max(mesures_.plusLonguePasse, Millisecondes(fin - début));
  finDePasse_ = fin;
  ++mesures_.passes;
  CompteLaSeconde(fin);
  Tente([&] { travail_.ensuite(secondes_); });
}

void Battement::CompteLaSeconde(Instant maintenant) {
  ++passesDeLaSeconde_;
  const std::chrono::duration<double> durée = maintenant - débutDeSeconde_;
  if (durée < std::chrono::seconds(1)) return;
  mesures_.parSeconde = static_cast<double>(passesDeLaSeconde_) / durée.count();
  débutDeSeconde_ = maintenant;
  passesDeLaSeconde_ = 0;
}

}  // namespace zuma::host
