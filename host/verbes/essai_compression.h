#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "core/chassis.h"
#include "host/defaut_capteur.h"
#include "platform/linux/securite.h"

namespace zuma::host {

/// A compression test as any host would write it, by the object model alone: arm, approach, load at
/// a constant stress rate up to the break, unload, rest. It owns no loop: the host passes the
/// frame, then calls `Observe` and `Agit`.
class EssaiCompression {
 public:
  struct Réglages {
    double vitesse = 0.6;  ///< MPa/s
    double limite = 120;   ///< seconds of load at most
  };
  enum class Fin : std::uint8_t { Rupture, Arrêt, Chaîne, Délai, Interrompu, ForceNonValide };
  /// A sample of the load, seconds after the start of the frame, MPa and per cent.
  struct Point {
    double secondes = 0;
    double contrainte = 0;
    double déformation = 0;
  };
  struct Résultat {
    double forceMaximale = 0;       ///< kN
    double contrainteMaximale = 0;  ///< MPa
    double vitesseTenue = 0;        ///< MPa/s, mean slope between 20 and 90 % of the maximum
    double durée = 0;               ///< seconds of load
  };

  /// Throws `MauvaisUsage` when the frame lacks a sensor or an output that the test needs.
  EssaiCompression(Chassis& chassis, const linux_::Securite& sécurité, const Réglages& réglages);

  /// After each pass, `secondes` after the start of the frame: ends the test on a stop, an open
  /// safety chain, or a force or a stress that must not be believed.
  void Observe(double secondes);
  /// The next command of the test. After a stop nothing is commanded.
  void Agit();
  /// Ends the test as the operator wants it.
  void Interrompt() { Finit(Fin::Interrompu); }

  /// How the test ended; none while it goes on. Unloading comes behind it.
  [[nodiscard]] std::optional<Fin> LaFin() const noexcept { return fin_; }
  /// What was wrong with the sensor that ended the test; none with any other end.
  [[nodiscard]] const std::optional<DéfautCapteur>& LeDéfaut() const noexcept { return défaut_; }
  /// The outputs are at rest: nothing more to do.
  [[nodiscard]] bool Terminé() const noexcept { return étape_ == nullptr; }
  /// Seconds of load so far; none before it.
  [[nodiscard]] std::optional<double> SecondesDeCharge() const;
  [[nodiscard]] const std::vector<Point>& Points() const noexcept { return points_; }
  [[nodiscard]] const Résultat& LeRésultat() const noexcept { return résultat_; }
  /// What the test is doing, in words for the operator.
  [[nodiscard]] std::string_view Phase() const noexcept;

  // What the test is made of, for whoever watches or disturbs it.
  [[nodiscard]] const Capteur& Force() const { return *organes_.force; }
  [[nodiscard]] const Commande& Servovalve() const { return *organes_.servovalve; }
  [[nodiscard]] const SortieLogique& Pompe() const { return *organes_.pompe; }
  [[nodiscard]] const SortieLogique& Distributeur() const { return *organes_.distributeur; }

 private:
  /// Sensors, commands and lines of the test, found by label as a host finds them.
  struct Organes {
    explicit Organes(Chassis& chassis);
    CapteurRef force, contrainte, déformation, alimentation;
    EntréeLogiqueRef armé;
    SortieLogiqueRef pompe, distributeur;
    CommandeRef servovalve;
  };
  struct Etape;

  void Finit(Fin fin);
  [[nodiscard]] std::optional<DéfautCapteur> ChercheUnDéfaut();
  void Entre(const Etape& étape);
  [[nodiscard]] bool Depuis(double durée) const { return secondes_ - début_ >= durée; }

  void Attend();
  void MetEnService();
  void AttendLaPression();
  void AttendLArmement();
  void Approche();
  void AttendLeContact();
  void CommenceLaCharge();
  void Charge();
  [[nodiscard]] bool Mesure();
  void Retire();
  void AttendLeRetour();
  void MetAuRepos();
  void AttendLeRepos();
  void Conclut();

  Chassis& chassis_;
  const linux_::Securite& sécurité_;
  Réglages réglages_;
  Organes organes_;
  const Etape* étape_;
  bool nouvelle_ = true;  ///< the step has not begun
  std::optional<Fin> fin_;
  std::optional<DéfautCapteur> défaut_;
  std::uint64_t rafraichissements_ = 0;  ///< of the sensors, at the last look
  SuiviDuMouvement mouvementDeLaForce_, mouvementDeLaContrainte_;
  std::vector<Point> points_;
  Résultat résultat_;
  double secondes_ = 0;
  double début_ = 0;  ///< of the present step
  bool armé_ = false;
  double contrainteDépart_ = 0;
  double intégrale_ = 0;
  double dernière_ = 0;  ///< instant of the last command of the load
};

/// The end in words.
[[nodiscard]] std::string_view Texte(EssaiCompression::Fin fin) noexcept;

}  // namespace zuma::host
