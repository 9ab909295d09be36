#pragma once

#include <exception>
#include <functional>
#include <list>
#include <memory>
#include <utility>

namespace zuma {

/// An event of the object model and its handlers, called in the order of their registration.
///
/// A handler may register or remove handlers, itself included, and may release the event's owner:
/// what it adds is called from the next event on, what it removes is not called any more. Every
/// handler is called even when one fails. Raising allocates nothing.
template <class... Arguments>
class Evènement {
 public:
  /// A handler. What it throws reaches who raised the event, behind the other handlers.
  using Abonné = std::function<void(Arguments...)>;

  Evènement() : liste_(std::make_shared<Liste>()) {}
  ~Evènement() { liste_->Vide(); }
  Evènement(const Evènement&) = delete;
  Evènement& operator=(const Evènement&) = delete;

  /// Registers a handler and returns its number, from 1, for `Désabonne`.
  int Abonne(Abonné abonné) {
    liste_->postes.push_back({++liste_->dernier, std::move(abonné)});
    return liste_->dernier;
  }

  /// Removes a handler; nothing on a number that is not there.
  void Désabonne(int numéro) noexcept {
    for (Poste& poste : liste_->postes) {
      if (poste.numéro == numéro) poste.numéro = kRetiré;
    }
    liste_->Purge();
  }

  /// Calls the handlers. The first failure goes to the caller once all have been called.
  void Lève(Arguments... arguments) const {
    const std::shared_ptr<Liste> liste = liste_;
    const int dernier = liste->dernier;
    std::exception_ptr échec;
    ++liste->appels;
    for (Poste& poste : liste->postes) {
      if (poste.numéro == kRetiré || poste.numéro > dernier) continue;
      try {
        poste.abonné(arguments...);
      } catch (...) {
        if (!échec) échec = std::current_exception();
      }
    }
    --liste->appels;
    liste->Purge();
    if (échec) std::rethrow_exception(échec);
  }

 private:
  static constexpr int kRetiré = 0;

  struct Poste {
    int numéro;
    Abonné abonné;
  };

  // Removed handlers stay in place for as long as an event is being raised.
  struct Liste {
    void Vide() noexcept {
      for (Poste& poste : postes) poste.numéro = kRetiré;
      Purge();
    }
    void Purge() noexcept {
      if (appels != 0) return;
      // Taken out first: the destructor of a handler may come back here.
      std::list<Poste> retirés;
      for (auto poste = postes.begin(); poste != postes.end();) {
        const auto ici = poste++;
        if (ici->numéro == kRetiré) retirés.splice(retirés.end(), postes, ici);
      }
    }
    std::list<Poste> postes;
    int dernier = 0;
    int appels = 0;
  };

  std::shared_ptr<Liste> liste_;
};

}  // namespace zuma
