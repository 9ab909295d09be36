#pragma once

#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "base/objet.h"
#include "boards/table_des_drivers.h"
#include "platform/collaborateurs.h"
#include "platform/services.h"

// Witnesses of what the library asks of its host.
namespace zuma::essai {

/// Error record that keeps everything, and may do something when told.
class Registre : public ZED_Erreur {
 public:
  struct Entrée {
    std::string message;
    TableVariables variables;
  };
  void AjouteErreur(std::string_view message, const TableVariables& variables) override {
    entrées.push_back({std::string(message), variables});
    if (réaction) réaction();
  }
  /// True when one entry contains `morceau`.
  [[nodiscard]] bool Contient(std::string_view morceau) const {
    for (const Entrée& e : entrées) {
      if (e.message.find(morceau) != std::string::npos) return true;
    }
    return false;
  }
  std::vector<Entrée> entrées;
  std::function<void()> réaction;
};

/// Message box that keeps the texts and answers at once, or does something first.
class Messages : public BoîteDeMessage {
 public:
  void Montre(std::string_view texte, const ObjetConcerné& objet) override {
    textes.emplace_back(texte);
    clés.emplace_back(objet.clé);
    if (réaction) réaction();
  }
  std::vector<std::string> textes;
  std::vector<std::string> clés;
  std::function<void()> réaction;
};

/// Timer set by the test, in microseconds; each read adds `pas`.
class Minuterie : public ZED_Timer {
 public:
  double LitMicrosecondes() override { return heure += pas; }
  double heure = 0;
  double pas = 0;
};

/// A platform with witnesses only.
struct Banc {
  Banc() {
    plateforme.messages = &messages;
    plateforme.drivers = CréeLesDrivers();
  }
  Messages messages;
  Plateforme plateforme;
  Ref<Registre> registre = Crée<Registre>();
  Ref<Minuterie> timer = Crée<Minuterie>();
};

}  // namespace zuma::essai
