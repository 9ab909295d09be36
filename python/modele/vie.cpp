#include "modele/vie.h"

#include <algorithm>

#include "base/poursuite.h"

namespace py = pybind11;

namespace zuma::python::modele {
namespace {

// Of the process: a child has another one, and none of its parent's frames.
std::uint64_t génération = 0;  // NOLINT(*-non-const-global-variables)

std::vector<std::shared_ptr<Laisse>>& LesLaisses() {
  static auto* const laisses = new std::vector<std::shared_ptr<Laisse>>;  // ends with the process
  return *laisses;
}

thread_local Séjour* enCours = nullptr;

}  // namespace

Laisse::Laisse(Plateforme& plateforme, std::shared_ptr<void> garde, ArrêtDuChassis arrête,
               std::shared_ptr<std::recursive_mutex> passage)
    : plateforme_(&plateforme),
      garde_(std::move(garde)),
      arrête_(std::move(arrête)),
      naissance_(génération),
      passage_(passage ? std::move(passage) : std::make_shared<std::recursive_mutex>()) {}

void Laisse::Ouvre() {
  LesLaisses().push_back(shared_from_this());
}

std::shared_ptr<Laisse> Laisse::De(const Plateforme& plateforme) {
  for (const auto& laisse : LesLaisses()) {
    if (laisse->plateforme_ == &plateforme && laisse->Ouverte()) return laisse;
  }
  throw ChassisFermé();
}

void Laisse::FermeTout() {
  const auto laisses = LesLaisses();
  for (auto laisse = laisses.rbegin(); laisse != laisses.rend(); ++laisse) (*laisse)->Ferme();
}

// What stands behind them is the parent's: it stays in the list, untouched, to the end.
void Laisse::APartirDUnEnfant() noexcept {
  ++génération;
}

bool Laisse::Ouverte() const noexcept {
  return ouverte_ && naissance_ == génération;
}

void Laisse::Ferme() {
  if (!Ouverte()) return;
  const std::shared_ptr<Laisse> moi = shared_from_this();
  Entre();
  ouverte_ = false;
  Sort();
}

void Laisse::Arrête(const std::string& cause) const {
  if (arrête_) arrête_(cause);
}

Laisse::Part& Laisse::Prend(const void* objet, std::shared_ptr<void> part,
                            std::function<bool()> vit) {
  Part& ici = parts_[objet];
  if (part && !ici.objet) ici.objet = std::move(part);
  if (!ici.objet) ici.vit = std::move(vit);
  ++ici.poignées;
  return ici;
}

void Laisse::Rend(const void* objet) noexcept {
  if (!Ouverte()) return;  // all was let go, or will be at the end of the call
  const auto ici = parts_.find(objet);
  if (ici == parts_.end() || --ici->second.poignées != 0) return;
  std::shared_ptr<void> part = std::move(ici->second.objet);
  parts_.erase(ici);
  if (!part) return;
  // The end of an object is work on its frame, which another thread may be in.
  if (passage_->try_lock()) {
    part = nullptr;
    passage_->unlock();
  } else {
    àLâcher_.push_back(std::move(part));
  }
}

void Laisse::Entre() {
  if (!passage_->try_lock()) {
    const py::gil_scoped_release libre;
    passage_->lock();
  }
  ++appels_;
}

void Laisse::Sort() noexcept {
  if (--appels_ == 0) {
    if (ouverte_) {
      std::vector<std::shared_ptr<void>> àLâcher = std::move(àLâcher_);
      àLâcher_.clear();
    } else {
      Termine();
    }
  }
  passage_->unlock();
}

// The last acts first, since they need all that is let go behind them: first the shares, then the
// frame and its machine.
void Laisse::Termine() noexcept {
  if (std::exchange(terminée_, true)) return;
  const std::shared_ptr<Laisse> moi = shared_from_this();
  Poursuite chacun;
  for (auto geste = fins_.rbegin(); geste != fins_.rend(); ++geste) chacun(*geste);
  fins_.clear();
  std::erase(LesLaisses(), moi);
  chacun([this] { auto parts = std::move(parts_); });
  chacun([this] { auto àLâcher = std::move(àLâcher_); });
  arrête_ = nullptr;
  chacun([this] { auto garde = std::move(garde_); });
}

Séjour::Séjour(std::shared_ptr<Laisse> laisse) : laisse_(std::move(laisse)), dessus_(enCours) {
  if (!laisse_->Ouverte()) throw ChassisFermé();
  laisse_->Entre();
  if (!laisse_->Ouverte()) {  // closed while this call waited
    laisse_->Sort();
    throw ChassisFermé();
  }
  enCours = this;
}

Séjour::Séjour() : dessus_(enCours) {
  enCours = this;
}

Séjour::~Séjour() {
  enCours = dessus_;
  if (laisse_) laisse_->Sort();
}

std::string TexteDe(const py::error_already_set& exception) {
  const std::string texte = exception.what();
  return "Python : " + texte.substr(0, texte.find('\n'));
}

void Séjour::Conclut(bool passe) {
  if (!retenue_) return;
  const std::shared_ptr<py::error_already_set> retenue = std::move(retenue_);
  if (passe && laisse_) {
    try {
      laisse_->Arrête(TexteDe(*retenue));
    } catch (const Echec&) {  // told in the error record; the exception goes first
    }
    retenue_ = nullptr;  // the stop itself met it again
  }
  throw py::error_already_set(*retenue);
}

void Séjour::Retient(py::error_already_set&& exception) noexcept {
  if (enCours == nullptr) {
    exception.discard_as_unraisable("zuma.modele");
  } else if (!enCours->retenue_) {
    enCours->retenue_ = std::make_shared<py::error_already_set>(std::move(exception));
  }
}

bool Séjour::ARetenu() noexcept {
  return enCours != nullptr && enCours->retenue_;
}

void Ouvre(Plateforme& plateforme, std::shared_ptr<void> garde, ArrêtDuChassis arrête) {
  LesLaisses().push_back(std::make_shared<Laisse>(plateforme, std::move(garde), std::move(arrête)));
}

void Ferme(Plateforme& plateforme) {
  try {
    Laisse::De(plateforme)->Ferme();
  } catch (const ChassisFermé&) {  // nothing to close
  }
}

}  // namespace zuma::python::modele
