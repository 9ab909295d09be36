#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "base/outils_modbus.h"
#include "tree/carte.h"
#include "tree/doute.h"
#include "tree/reprise_ligne.h"
#include "tree/sorties_envoyees.h"

namespace zuma {

/// Variable-speed drive with the maker's software on Modbus RTU (`Drv_VarioLS_K9_Modbus`). After
/// its start sequence it never blocks: a pass sends one request, later passes look for the answer.
/// Set points and logic outputs are written on each exchange, a status read takes its turn: never
/// two reads in a row, and none before a stop (a set point that went to 0, a logic output that
/// changed).
///
/// A stop leaves with the first pass after the answer that is pending, which ends 100 ms after its
/// question at the latest; with nothing pending, in the same pass. One that is not answered leaves
/// again every 100 ms, with the values of that moment, for as long as that takes; every second when
/// the port itself is gone.
///
/// Ten failed exchanges in a row, silent ones too, set the error channels to -1, and so does a line
/// that fails.
class VariateurLS : public Pilote {
 public:
  /// A drive that is not started yet.
  VariateurLS(const Matériel& matériel, std::uint16_t) : matériel_(matériel) {}

  /// One pass of the exchange. The first one runs the start sequence, which waits for the drive.
  void CommLSAvecSoftK9(Carte& carte);

  /// Time allowed for an answer of `longueur` bytes at `vitesse` bauds, in microseconds. Shorter on
  /// the slow links, as the drive's software wants it: at 19200 and below no real drive answers in
  /// time, so that its line needs 38400 or more.
  [[nodiscard]] static double TimeOut(std::int32_t longueur, std::int32_t vitesse) noexcept {
    return (vitesse > 19200 ? 15'000.0 : 1'500.0) * longueur;
  }

  /// The registers that carry a set point: sign, integer part, hundredths.
  [[nodiscard]] static std::array<std::uint16_t, 3> Consigne(double valeur);

 private:
  enum class Genre : std::uint8_t { Départ, Lecture, Ecriture };

  void MiseEnRoute(Carte& carte);
  [[nodiscard]] bool EcritEtAttend(Carte& carte);
  [[nodiscard]] bool LigneOuverte(Carte& carte);
  template <class Travail>
  void SurLaLigne(Carte& carte, Travail&& travail);
  void ChercheRéponse(Carte& carte);
  void Juge(Carte& carte, OutilsModbus::Résultat résultat, double maintenant);
  [[nodiscard]] bool EstFinie(Carte& carte, double maintenant) const;
  void AttendLaSuite(double maintenant);
  void Echoue() noexcept;
  void ResteSansRéponse() noexcept;
  void SeTait(Carte& carte);
  void Accepte(Carte& carte, const OutilsModbus::Valeurs& valeurs, double maintenant);
  void Publie(Carte& carte, const OutilsModbus::Valeurs& valeurs);
  void Journalise(std::string_view texte, std::int32_t compteur);
  void PublieErreur(Carte& carte, double valeur);
  [[nodiscard]] bool LaisseLaLigne(Carte& carte, double maintenant);
  [[nodiscard]] Genre Choisit(Carte& carte, double maintenant) const;
  void PrépareQuestion(Carte& carte, double maintenant);
  void PrépareDépart(Carte& carte);
  void PrépareLecture(const Fonction& états);
  void PrépareEcriture(Carte& carte);
  void Envoie(Carte& carte);

  Matériel matériel_;
  RepriseDeLigne reprise_;
  Doute doute_;
  SortiesEnvoyées sorties_;
  std::int32_t compteurErreurs_ = 0;
  std::int32_t silences_ = 0;  ///< questions in a row that nothing answered
  Octets question_;
  Octets réponse_;
  Genre genre_ = Genre::Ecriture;   ///< of the last question
  double heureDEnvoi_ = 0;          ///< microseconds, like all that follow
  double timeOut_ = 0;              ///< time allowed for the answer
  double heureDuDernierOctet_ = 0;  ///< received
  double heureDeRéception_ = 0;     ///< start of the wait for the rest of an answer; 0 for none
  bool miseEnRouteFaite_ = false;
  std::size_t pas_ = 0;        ///< next step of the start; past the last one: the drive is started
  bool départPermis_ = false;  ///< the drive answers, and no step has failed since
  double heureDeDépart_ = 0;   ///< last time the first step was asked outside the start
  bool mblnEnAttente = false;
  double mdblFréquenceLecture = 0;  ///< hertz
  double mdblHeureLecture = 0;
};

}  // namespace zuma
