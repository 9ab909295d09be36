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
class Thumler : public Pilote {
 public:
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
  using Champs = std::array<std::string_view, 2>;
  /// The two fields of an answer "Ax<field>;<field>"; none when it is anything else.
  [[nodiscard]] static std::optional<Champs> LitChamps(std::string_view réponse) noexcept;

 private:
  void EnvoiThumler(std::string_view commande);
  [[nodiscard]] Octets QuestionThumler(std::string_view commande, std::int32_t longueur,
                                       double attente);
  void EnvoieConsigne(Carte& carte);
  void Ecrit(std::string_view commande, std::int32_t purge);
  void Exige(std::int32_t état, std::string_view opération);
  [[noreturn]] void Arrête(std::string_view raison);
  void Attente(double microsecondes);

  Matériel matériel_;
  std::optional<std::int32_t> numéro_;
  std::int32_t poignée_ = 0;
  bool ouverte_ = false;
  std::int32_t dernièreConsigne_ = 0;
};

}  // namespace zuma
