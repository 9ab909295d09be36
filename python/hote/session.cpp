#include "hote/session.h"

#include <algorithm>
#include <optional>
#include <pybind11/pybind11.h>
#include <utility>

#include "host/drivers_charges.h"
#include "host/pannes.h"
#include "host/parametres.h"
#include "hote/erreurs.h"
#include "publication/mesures.h"
#include "publication/place.h"

namespace zuma::python {
namespace {

namespace py = pybind11;

constexpr double kPasDePasse = 0.001;  // seconds between passes
// Whoever else wants the interpreter may keep it for milliseconds: it is not asked for at each
// pass.
constexpr auto kEntreDeuxRegards = std::chrono::milliseconds(50);

std::unique_ptr<host::Machine> LaMachine(const Choix& choix, host::Recueil& messages) {
  const auto drivers = host::LesDrivers(choix.drivers);
  if (!choix.simulation) {
    return host::MachineRéelle(messages, host::LitLesPorts(choix.ports, choix.can), drivers);
  }
  auto machine = host::MachineSimulée(messages, host::Cadence::Libre, drivers);
  machine->Jumelle()->graine = choix.graine;
  for (const std::string& texte : choix.pannes) {
    const auto pannes = host::LitLesPannes(texte, choix.graine);
    auto& prévues = machine->Jumelle()->pannes;
    prévues.insert(prévues.end(), pannes.begin(), pannes.end());
  }
  return machine;
}

// What the stop says of an exception that leaves a run.
std::string Cause() {
  try {
    throw;
  } catch (const py::error_already_set& échec) {
    const py::gil_scoped_acquire interprète;
    if (échec.matches(PyExc_KeyboardInterrupt)) return "interrupted at the keyboard";
    return "the program failed: " + py::str(échec.type().attr("__name__")).cast<std::string>() +
           ": " + py::str(échec.value()).cast<std::string>();
  } catch (const std::exception& échec) {
    return std::string("the program failed: ") + échec.what();
  }
}

}  // namespace

void RecueilDeSession::Note(std::string_view texte) {
  constexpr std::size_t kAuPlus = 2000;  // bytes: a frame that fails on each pass tells enough
  if (dernier_.size() > kAuPlus) return;
  if (!dernier_.empty()) dernier_ += "; ";
  dernier_ += texte;
}

void RecueilDeSession::AjouteErreur(std::string_view message, const TableVariables& variables) {
  Recueil::AjouteErreur(message, variables);
  Note(message);
}

void RecueilDeSession::Montre(std::string_view texte, const ObjetConcerné& objet) {
  Recueil::Montre(texte, objet);
  Note(texte);
}

// Stands for as long as passes run: none begins within another.
class Session::EnMarche {
 public:
  explicit EnMarche(std::atomic<bool>& drapeau) : drapeau_(drapeau) {
    if (drapeau_.exchange(true)) {
      throw Erreur("UsageError", "the frame runs already: what it calls must not run or close it");
    }
  }
  ~EnMarche() { drapeau_ = false; }
  EnMarche(const EnMarche&) = delete;
  EnMarche& operator=(const EnMarche&) = delete;

 private:
  std::atomic<bool>& drapeau_;
};

Session::Session(Choix choix)
    : choix_(std::move(choix)),
      recueil_(Crée<RecueilDeSession>()),
      machine_(LaMachine(choix_, *recueil_)) {
  host::MalgréTout malgréTout;
  if (choix_.malgréTout) malgréTout = [](const host::DépartRefusé&) { return true; };
  marche_ = std::make_unique<host::ChassisEnMarche>(
      choix_.fichier, choix_.chassis, *machine_, recueil_,
      host::LitLesParamètres(choix_.fichier, choix_.paramètres), malgréTout);
  if (choix_.gardeLesArrêts) {
    marche_->GardeLesArrêts(choix_.arrêts.empty() ? host::DossierDesArrêts(choix_.fichier)
                                                  : choix_.arrêts);
  }
  objets_ = std::make_unique<publication::ObjetsDuChassis>(marche_->LeChassis());
}

Session::~Session() {
  if (abandonnée_) {  // what would be released here is the parent's
    (void)objets_.release();
    (void)new std::pair(machine_, marche_);
    return;
  }
  try {
    Libère();
  } catch (...) {  // at rest by now: a listener that fails must not hide how the program ends
  }
}

// Who holds an object of the model within a call keeps the frame until that ends.
void Session::OuvreLeModèle() {
  modele::Ouvre(
      machine_->Services(),
      std::make_shared<std::pair<decltype(machine_), decltype(marche_)>>(machine_, marche_),
      [marche = std::weak_ptr(marche_)](const std::string& cause) {
        if (const auto celle = marche.lock()) celle->Arrête(cause);
      });
}

void Session::Ferme() {
  if (!EstOuverte()) return;
  ExigeLeFil();
  const EnMarche marche(enMarche_);
  Libère();
}

// A thread that dies with the interpreter leaves nothing behind that would put outputs to rest.
void Session::FermeALaFin() {
  constexpr auto kPas = std::chrono::milliseconds(1);
  constexpr int kAuPlus = 5000;  // steps: a pass, and what listens to it, take less
  finit_ = true;
  {
    const py::gil_scoped_release lâche;
    for (int pas = 0; enMarche_ && pas < kAuPlus; ++pas) std::this_thread::sleep_for(kPas);
  }
  fil_ = std::this_thread::get_id();
  Ferme();
}

void Session::Libère() {
  for (const auto& rangées : rangées_) {
    if (const auto celles = rangées.lock()) celles->Termine();
  }
  tenues.clear();
  tares_.clear();
  objets_ = nullptr;
  modele::Ferme(machine_->Services());
  {
    const py::gil_scoped_release lâche;  // links may take seconds to confirm that they rest
    marche_ = nullptr;
  }
  machine_->Rapporte(*recueil_);
  quandArrêt_ = {};
  DitLesProblèmes();
  quandProblème_ = {};
}

void Session::ExigeLeFil() const {
  if (abandonnée_) throw Erreur("WrongThread", "the frame belongs to the parent of this process");
  if (std::this_thread::get_id() == fil_) return;
  throw Erreur("WrongThread",
               "a frame belongs to the thread that opened it; other threads look at it with "
               "zuma.attach");
}

void Session::Exige() const {
  ExigeLeFil();
  if (!marche_) throw Erreur("FrameClosed", "the frame is closed");
}

void Session::ExigeSansArrêt() const {
  Exige();
  const auto& sécurité = marche_->LaSécurité();
  if (!sécurité.Déclenchée()) return;
  const std::string cause = sécurité.Causes().empty() ? "" : sécurité.Causes().front().texte;
  throw Erreur("FrameStopped", "a stop is latched (" + cause + "): acknowledge it first");
}

void Session::ExigeSansReproche() {
  const std::string texte = recueil_->Retire();
  if (!texte.empty()) throw Erreur("Refused", texte);
}

std::string Session::Publication() const {
  const publication::Identité identité{choix_.fichier, choix_.chassis, choix_.simulation};
  return publication::DossierDesPublications() + "/" + publication::NomDeFichier(identité);
}

void Session::LitLesValeurs(double* valeurs) const {
  for (const CapteurRef& capteur : LesObjets().capteurs) {
    *valeurs++ = publication::MesureDe(*capteur).valeur;
  }
}

// A simulated machine stands still while no pass runs; the time of a real one has gone on.
void Session::RègleLaMontre() {
  if (machine_->Jumelle() == nullptr) secondes_ = machine_->AvanceJusquA(secondes_);
  origine_ = secondes_;
  montre_ = Instant::now();
  prochainRegard_ = montre_ + kEntreDeuxRegards;
}

void Session::AttendLHeure(double secondes) const {
  if (vite_ || choix_.rythme <= 0) return;
  std::this_thread::sleep_until(
      montre_ + std::chrono::duration_cast<Instant::duration>(
                    std::chrono::duration<double>((secondes - origine_) / choix_.rythme)));
}

void Session::Regarde() {
  if (Instant::now() < prochainRegard_) return;
  const py::gil_scoped_acquire interprète;
  prochainRegard_ = Instant::now() + kEntreDeuxRegards;
  if (PyErr_CheckSignals() != 0) throw py::error_already_set();
}

void Session::Passe() {
  if (finit_) throw Erreur("FrameEnded", "the program ends");
  if (!machine_->Fini().empty()) {
    throw Erreur("FrameEnded", "a device ends the program: " + std::string(machine_->Fini()));
  }
  if (machine_->Jumelle() != nullptr) AttendLHeure(secondes_ + kPasDePasse);
  secondes_ = machine_->AvanceJusquA(secondes_ + kPasDePasse);
  for (auto& [clé, tenue] : tenues) {
    if (tenue.logique) {
      tenue.borne.EntréeLogique(tenue.volts != 0);
    } else {
      tenue.borne.TensionEntrée(tenue.volts);
    }
  }
  const std::uint64_t avant = marche_->LeChassis().RafraichissementsEA();
  marche_->Passe();
  ++passes_;
  if (marche_->LeChassis().RafraichissementsEA() != avant) SuitLeRafraîchissement();
  DitLesProblèmes();
  DitLArrêt();
}

void Session::SuitLeRafraîchissement() {
  std::erase_if(rangées_, [this](const std::weak_ptr<Rangées>& rangées) {
    const auto celles = rangées.lock();
    if (!celles || celles->EstFinie()) return true;
    celles->Prend(secondes_);
    return false;
  });
  std::erase_if(tares_, [](std::pair<const Capteur*, bool>& tare) {
    const bool mesurée = tare.first->EtatTare() != ENUM_OPERATION_MAV::Acquisition;
    return std::exchange(tare.second, mesurée) && mesurée;
  });
}

bool Session::Tare(const Capteur& capteur) const {
  return std::ranges::find(tares_, &capteur, &std::pair<const Capteur*, bool>::first) !=
         tares_.end();
}

void Session::DitLArrêt() {
  const auto& sécurité = marche_->LaSécurité();
  if (!sécurité.Déclenchée()) {
    arrêtDit_ = false;
  } else if (!std::exchange(arrêtDit_, true) && quandArrêt_) {
    quandArrêt_(sécurité.Causes().empty() ? std::string() : sécurité.Causes().front().texte);
  }
}

void Session::DitLesProblèmes() {
  const auto& problèmes = recueil_->Problèmes();
  while (quandProblème_ && dits_ < problèmes.size()) quandProblème_(problèmes[dits_++]);
}

// Passes end with whatever leaves the loop, and no set point may outlast them.
template <class Boucle>
auto Session::SousGarde(Boucle&& boucle) {
  Exige();
  const EnMarche marche(enMarche_);
  std::optional<decltype(boucle())> résultat;
  modele::FaitUnePasse(machine_->Services(), [&] {
    RègleLaMontre();
    try {
      résultat = boucle();
    } catch (...) {
      ArrêteQuoiQuIlArrive(Cause());
      throw;
    }
  });
  return *résultat;
}

// What keeps the stop from being driven must not hide why it was fired: it is told, too.
void Session::ArrêteQuoiQuIlArrive(const std::string& cause) {
  try {
    marche_->Arrête(cause);
  } catch (const std::exception& échec) {
    recueil_->AjouteErreur(échec.what(), {});
  }
}

Session::Fin Session::AvanceDéjà(double point, double fin, bool àTravers) {
  const auto& chassis = marche_->LeChassis();
  while (secondes_ + kPasDePasse / 2 < fin) {
    const bool arrêtée = marche_->LaSécurité().Déclenchée();
    const std::uint64_t avant = chassis.RafraichissementsEA();
    Passe();
    Regarde();
    if (modele::Séjour::ARetenu()) return Fin::Arrêt;  // what Python raised in the pass comes next
    if (!àTravers && !arrêtée && marche_->LaSécurité().Déclenchée()) return Fin::Arrêt;
    if (secondes_ + kPasDePasse / 2 >= point && chassis.RafraichissementsEA() != avant) {
      return Fin::Point;
    }
  }
  return Fin::Temps;
}

Session::Fin Session::Avance(double point, double fin, bool àTravers) {
  return SousGarde([&] { return AvanceDéjà(point, fin, àTravers); });
}

Session::Fin Session::Tourne(double fin, double période, bool àTravers,
                             const std::function<bool()>& continue_) {
  return SousGarde([&] {
    for (double point = secondes_;; point = std::max(point + période, secondes_)) {
      const Fin arrivée = AvanceDéjà(point, fin, àTravers);
      if (arrivée != Fin::Point || !continue_()) return arrivée;
    }
  });
}

void Session::Pas(std::int64_t nombre) {
  SousGarde([&] {
    for (; nombre > 0 && !modele::Séjour::ARetenu(); --nombre) {
      Passe();
      Regarde();
    }
    return true;
  });
}

void Session::AvanceVite(double fin) {
  struct Vite {
    bool& drapeau;
    ~Vite() { drapeau = false; }
  };
  const Vite vite{vite_};
  vite_ = true;
  (void)Avance(kJamais, fin, true);
}

double Session::MesureLaBoucle(std::int64_t nombre) {
  return SousGarde([&] {
    const auto départ = Instant::now();
    for (; nombre > 0; --nombre) {
      secondes_ = machine_->AvanceJusquA(secondes_ + kPasDePasse);
      marche_->Passe();
    }
    return std::chrono::duration<double>(Instant::now() - départ).count();
  });
}

bool Session::Acquitte() {
  bool acquitté = false;
  Fait([&] { acquitté = marche_->Acquitte(); });
  if (acquitté) arrêtDit_ = false;
  return acquitté;
}

}  // namespace zuma::python
