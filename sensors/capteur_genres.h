#pragma once

#include "sensors/capteur.h"

// What the kinds of sensors do, inside the library's own sensor files.
namespace zuma {

/// What makes a ratio a percentage.
inline constexpr double kPourCent = 100;

/// The small functions of the kinds. Each works on the sensor it is given.
struct Capteur::Calcul {
  // Step of the refresh that gives the new value.
  static void Normal(Capteur& c, Passe& passe);
  static void Moyen(Capteur& c, Passe&);
  static void Recouvrement(Capteur& c, Passe&);
  static void Contrainte(Capteur& c, Passe&);
  static void Temps(Capteur& c, Passe&);
  static void Vitesse(Capteur& c, Passe&);
  static void DeltaL(Capteur& c, Passe&);
  static void Combinaison(Capteur& c, Passe&);
  struct Opération;
  [[nodiscard]] static double Différence(Capteur& c);
  [[nodiscard]] static double Quotient(Capteur& c);
  static void Selectionnable(Capteur& c, Passe&);
  static void LePlusPetit(Capteur& c, Passe&);
  static void Réservé1(Capteur& c, Passe&);
  static void Réservé2(Capteur& c, Passe&);
  static void Scout55(Capteur& c, Passe&);

  // Detection of the extremes.
  static void ExtrêmesDeLaValeur(Capteur& c);
  static void MaxiDeLaForce(Capteur& c);
  static void MaxiDeLAllongement(Capteur& c);

  // Start.
  static void PrendLesLimites(Capteur& c);
  static void DémarreLaMontre(Capteur& c);
  static void VideLaRégression(Capteur& c);
  static void DémarreRéservé1(Capteur& c);
  static void DémarreRéservé2(Capteur& c);
  static void DémarreScout55(Capteur& c);
  static void ContrôleLesUnités(Capteur& c);

  // Age.
  static AgeDeMesure AgeDuCanal(const Capteur& c);
  static AgeDeMesure AgeDesFils(const Capteur& c);
  static AgeDeMesure AgeDeLInstrument(const Capteur& c);
  static AgeDeMesure AgeDuDehors(const Capteur& c);

  // Zero.
  static void RazDuCanal(Capteur& c);
  static void RazDeLaMontre(Capteur& c);
  static void RazDuPetit(Capteur& c);
  static void RazDesFils(Capteur& c);
};

/// One kind: its number, its text in column "Type de Capteur" and what it does. A null function is
/// a step that the kind does not have.
struct Capteur::Genre {
  ENUM_TYPE_CAPTEUR type;
  std::string_view texte;
  void (*calcule)(Capteur&, Passe&) = nullptr;
  void (*extrêmes)(Capteur&) = nullptr;
  void (*démarre)(Capteur&) = nullptr;
  void (*remetàZéro)(Capteur&) = nullptr;
  AgeDeMesure (*âge)(const Capteur&) = nullptr;

  /// Row of a kind, none for a number or a text that is no kind.
  [[nodiscard]] static const Genre* De(ENUM_TYPE_CAPTEUR type);
  [[nodiscard]] static const Genre* DeTexte(std::string_view texte);

 private:
  [[nodiscard]] static std::span<const Genre> Tous();
};

}  // namespace zuma
