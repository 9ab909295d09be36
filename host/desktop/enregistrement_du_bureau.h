#pragma once

#include <QString>
#include <memory>
#include <string>
#include <vector>

#include "host/chassis_en_marche.h"
#include "host/enregistreur.h"

namespace zuma::host {

/// The recordings that an operator starts and ends in the window, one at a time. None of them waits
/// for a disk while the frame runs.
class EnregistrementDuBureau {
 public:
  explicit EnregistrementDuBureau(ChassisEnMarche& marche) : marche_(marche) {}
  /// Waits for the writers: the frame is at rest by then.
  ~EnregistrementDuBureau();
  EnregistrementDuBureau(const EnregistrementDuBureau&) = delete;
  EnregistrementDuBureau& operator=(const EnregistrementDuBureau&) = delete;

  [[nodiscard]] bool EnCours() const noexcept { return enCours_; }
  /// Records all sensors from their next refresh on. Throws `MauvaisUsage` for a name in use.
  void Commence(const std::string& fichier);
  void Finit();
  /// How the last one goes, or went; nothing when there was none.
  [[nodiscard]] QString Phrase() const;
  /// Its disk does not take it.
  [[nodiscard]] bool EnPanne() const;

 private:
  ChassisEnMarche& marche_;
  std::vector<std::unique_ptr<Enregistreur>> enregistreurs_;  ///< the last one may go on
  bool enCours_ = false;
};

}  // namespace zuma::host
