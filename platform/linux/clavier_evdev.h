#pragma once

#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "platform/linux/etat_touches.h"

struct libevdev;

namespace zuma::linux_ {

/// The keyboards of the machine, read from the kernel's input devices: whatever window has the
/// focus, and without one. Opened on first use; one that is pulled out releases its keys and is
/// looked for again every second. The devices need the rights of group "input".
class ClavierEvdev : public Clavier {
 public:
  /// Looks for keyboards in `dossier`, at the first reading.
  explicit ClavierEvdev(DispositionClavier disposition = DispositionClavier::Azerty,
                        std::string dossier = "/dev/input");
  ~ClavierEvdev() override;
  ClavierEvdev(const ClavierEvdev&) = delete;
  ClavierEvdev& operator=(const ClavierEvdev&) = delete;

  [[nodiscard]] const EtatClavier& LitEtat() override;
  void EcritEtat(const EtatClavier& état) override;
  [[nodiscard]] std::string Défaut() const override;

 private:
  struct Appareil;

  void Cherche();
  void Ouvre(const std::string& chemin);
  // False when the device is gone.
  [[nodiscard]] bool Lit(Appareil& appareil);
  void Relâche(const Appareil& appareil);

  std::string dossier_;
  EtatTouches touches_;
  std::vector<std::unique_ptr<Appareil>> appareils_;
  std::size_t attendus_ = 1;  ///< keyboards that have been there together
  std::chrono::steady_clock::time_point prochaineRecherche_;
};

}  // namespace zuma::linux_
