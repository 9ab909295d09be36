#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "core/outils_modbus.h"
#include "tree/carte.h"

namespace zuma {

/// Variable-speed drive with the maker's software on Modbus RTU (`Drv_VarioLS_K9_Modbus`). After
/// its start sequence it never blocks: a pass sends one request, later passes look for the answer.
/// Set points and logic outputs are written on each exchange, a status read takes its turn.
class VariateurLS : public Pilote {
 public:
  VariateurLS(const Matériel& matériel, std::uint16_t) : matériel_(matériel) {}

  /// One pass of the exchange. The first one runs the start sequence, which waits for the drive.
  void CommLSAvecSoftK9(Carte& carte);

  /// Time allowed for an answer of `longueur` bytes at `vitesse` bauds, in microseconds.
  [[nodiscard]] static double TimeOut(std::int32_t longueur, std::int32_t vitesse) noexcept {
    return (vitesse > 19200 ? 15'000.0 : 1'500.0) * longueur;
  }

  /// The registers that carry a set point: sign, integer part, hundredths.
  [[nodiscard]] static std::array<std::uint16_t, 3> Consigne(double valeur);

 private:
  void MiseEnRoute(Carte& carte);
  [[nodiscard]] bool EcritEtAttend(Carte& carte, std::uint16_t registre, std::uint16_t valeur);
  void ChercheRéponse(Carte& carte);
  void AttendLaSuite(double maintenant);
  void Accepte(Carte& carte, const OutilsModbus::Valeurs& valeurs);
  void Journalise(std::string_view texte, std::int32_t compteur);
  void PublieErreur(Carte& carte, double valeur);
  void PrépareQuestion(Carte& carte);
  void PrépareLecture(const Fonction& états);
  void PrépareEcriture(Carte& carte);
  void Envoie(Carte& carte);

  Matériel matériel_;
  std::int32_t compteurErreurs_ = 0;
  Octets question_;
  Octets réponse_;
  double heureDEnvoi_ = 0;       ///< microseconds, like all that follow
  double timeOut_ = 0;           ///< time allowed for the answer
  double heureDeRéception_ = 0;  ///< start of the wait for the rest of an answer; 0 for none
  bool lectureEnCours_ = false;
  bool miseEnRouteFaite_ = false;
  bool mblnEnAttente = false;
  double mdblFréquenceLecture = 0;  ///< hertz
  double mdblHeureLecture = 0;
};

}  // namespace zuma
