#pragma once

#include <string>

#include "dialogs/choix_du_port.h"
#include "platform/collaborateurs.h"
#include "platform/plateforme.h"

namespace zuma {

/// A balance that sends its value continuously (`Drv_Balance_GRAM`); nothing is ever sent to it.
/// `TimerExact` is given before anything else.
class BalanceGram_CLASS : public TesteurDePort {
 public:
  /// Makes its own serial port with the services of `plateforme`, which outlive it.
  explicit BalanceGram_CLASS(Plateforme& plateforme);

  /// A record came in during the last half second, or the port was just opened.
  [[nodiscard]] bool BalanceConnectee() const noexcept { return BalanceConnectee_; }
  /// Opens the port: True when it works. Otherwise, with `AvecRechercheAuto`, the operator is asked
  /// for another one, and the result is False even when the one chosen works: `BalanceConnectee`
  /// tells. Nothing chosen, or no windows to ask in, is told in a message box.
  bool Initialise(std::string Settings_str, bool AvecRechercheAuto);
  /// Takes the last record that came in. A balance that is silent for half a second is no longer
  /// connected and is looked for every 5 s; its value stays.
  void Refresh();
  /// The balance has half a second from here to send its first record.
  void TimerExact(Ref<ZED_Timer> timer);
  [[nodiscard]] bool TestPort(const std::string& Settings_str) override;
  /// Settings in use, such as "3,9600,N,8,1".
  [[nodiscard]] const std::string& Settings() const noexcept { return mstrSettings; }
  /// Weight of the last readable record, in the unit of the balance.
  [[nodiscard]] double ValeurCourante() const noexcept { return mdblValeurCourante; }

  /// Good measures so far.
  [[nodiscard]] std::int32_t Mesures() const noexcept { return mesures_; }

 private:
  [[nodiscard]] bool PortUtilisable() const;
  void Configure(const std::string& réglages);
  void DemandeLePort(std::string& réglages);
  void Ecoute();
  void Accepte();
  void Cherche();

  Plateforme& plateforme_;
  Ref<PortInstrument> port_;
  std::string réglagesDonnés_;  ///< of the port that is looked for
  std::string mstrSettings;
  Ref<ZED_Timer> TimerExact_;
  bool BalanceConnectee_ = false;
  double heureEnregistrement_ = 0;  ///< of the last record, microseconds
  double heureRecherche_ = 0;       ///< of the last search in vain, microseconds
  Octets tampon_;
  double mdblValeurCourante = 0;
  std::string unité_;
  std::int32_t mesures_ = 0;
};

}  // namespace zuma
