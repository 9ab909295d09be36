#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

#include "tree/carte.h"

namespace zuma {

/// Drive on a USB link with a text protocol (`Drv_Thumler`). Each pass is one complete exchange,
/// bounded by 50 milliseconds. A link that fails ends the program through the platform: a drive
/// that no longer obeys must not be left to a frame that believes it does.
///
/// A stop (set point 0) is owed until an answer says that the drive is at rest: it is sent again in
/// each pass while answers are missing, else every second. A drive found running under a set point
/// of 0 is stopped and told in the error record.
class Thumler : public Pilote {
 public:
  /// A drive that is not opened yet.
  Thumler(const Matériel& matériel, std::uint16_t) : matériel_(matériel) {}
  ~Thumler() override;

  /// Opens device `numéro`, after closing the one that was open, and returns its handle.
  [[nodiscard]] std::int32_t OuvreThumler(std::int32_t numéro);
  /// Number of the device: the board's address at its first start, which holds the handle later.
  [[nodiscard]] std::int32_t Numéro(std::int32_t adresse) {
    return numéro_ ? *numéro_ : numéro_.emplace(adresse);
  }
  /// One pass: sends the set point when its integer part changed, reads the measures.
  void CommThumler(Carte& carte);

  /// What an answer keeps of the bytes received: it ends at a line feed or where the next one,
  /// another "A", begins. A line feed in front leaves no answer.
  [[nodiscard]] static std::string_view Coupe(std::string_view octets) noexcept;
  /// The texts of two fields.
  using Champs = std::array<std::string_view, 2>;
  /// The two fields of an answer "Ax<field>;<field>"; none when it is anything else.
  [[nodiscard]] static std::optional<Champs> LitChamps(std::string_view réponse) noexcept;

 private:
  void EnvoiThumler(std::string_view commande);
  [[nodiscard]] Octets QuestionThumler(std::string_view commande, std::int32_t longueur,
                                       double attente);
  void EnvoieConsigne(Canal& canal);
  [[nodiscard]] bool RedonneLArrêt(const Canal& canal) const;
  void Publie(Carte& carte, const Champs& champs);
  [[nodiscard]] bool AuRepos(const Champs& champs) const;
  void Confirme(const Carte& carte, Canal& canal, const Champs& champs);
  void Ecrit(std::string_view commande, std::int32_t purge);
  void Exige(std::int32_t état, std::string_view opération);
  [[noreturn]] void Arrête(std::string_view raison);
  [[noreturn]] void FinitSansQuestion();
  void Attente(double microsecondes);

  Matériel matériel_;
  std::optional<std::int32_t> numéro_;
  std::int32_t poignée_ = 0;
  bool ouverte_ = false;
  std::int32_t dernièreConsigne_ = 0;
  bool muet_ = false;        ///< the last question had no answer
  bool arrêtFinal_ = false;  ///< given on the way to the end of the process
  bool tourne_ = false;      ///< the last answer told a speed
  std::optional<double>
      heureDeLArrêt_;  ///< of the last "H", in microseconds; none before the first
};

}  // namespace zuma
