#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "boards/regles_mts.h"
#include "tree/carte.h"

namespace zuma {

/// Identifiers that a ruler of driver 25 gave at its start: of its start message and of its
/// positions. Those of the configuration serve the other rulers.
struct IdentifiantsDeRègle : EtatPilote {
  std::int32_t a = 0;  ///< of the start message
  std::int32_t b = 0;  ///< of the positions
};

/// First generation of the CAN card's driver (25): rulers that send their position unasked, one on
/// each port. The card is the one at the block's address.
class Pci7841 : public Pilote {
 public:
  /// The card whose number is `base`.
  Pci7841(const Matériel& matériel, std::uint16_t base) : matériel_(matériel), carte_(base) {}

  /// Speed of the rulers' bus, in kilobits per second.
  static constexpr std::int32_t kVitesse = 1000;
  /// Acceptance mask of a port.
  static constexpr std::uint8_t kMasque = 0xFF;
  /// Ports of a card.
  static constexpr std::int32_t kPorts = 2;

  /// Address byte of a port.
  [[nodiscard]] static constexpr std::uint8_t AdresseDuPort(std::int32_t port) noexcept {
    return static_cast<std::uint8_t>(port << 3U);
  }

  /// Gives what the library answers: 0 when the port is ready.
  std::int32_t ConfigPortW7841(std::int32_t port, std::uint8_t adresse, std::uint8_t masque,
                               std::int32_t vitesse);
  /// Empties the receive queue.
  void ViderReception(std::int32_t port);
  /// Node of the ruler of that serial number; -1 on failure.
  [[nodiscard]] std::int32_t LireIdentiteRègle(std::int32_t port, std::string_view numéroDeSérie);
  /// First identifier of the ruler; -1 on failure.
  [[nodiscard]] std::int32_t LirePositionID(std::int32_t port, std::int32_t noeud);
  /// Sends the five parameters; 0 on success.
  [[nodiscard]] std::int32_t ConfigureRègle(std::int32_t port, std::int32_t noeud,
                                            std::span<const std::uint8_t, 5> paramètres);
  /// Second identifier of the ruler; -1 on failure.
  [[nodiscard]] std::int32_t LireStatusID(std::int32_t port, std::int32_t noeud);
  /// Starts the ruler, which does not answer.
  void DémarreRègle(std::int32_t port, std::int32_t identifiantA, std::int32_t noeud);
  /// The latest position that came with that identifier, in counts; none when none came.
  [[nodiscard]] std::optional<std::int32_t> LirePosition(std::int32_t port,
                                                         std::int32_t identifiant);

  /// One attempt to start the ruler of a channel; false when it is lost.
  [[nodiscard]] bool Tente(Canal& canal);

 private:
  using Données = std::span<const std::uint8_t>;
  [[nodiscard]] bool Echange(std::int32_t port, Données demande, Trame7841& réponse);
  [[nodiscard]] std::int32_t Lit(std::int32_t port, Données demande);
  [[nodiscard]] bool Envoie(std::int32_t port, std::uint32_t identifiant, Données octets);
  [[nodiscard]] BibliothèqueCAN& Lib() const { return *matériel_.plateforme.can; }
  [[nodiscard]] const RéglagesCAN& LesRéglages() const { return matériel_.plateforme.réglages.can; }

  Matériel matériel_;
  std::int32_t carte_;
};

/// Second generation of the CAN card's driver (26 and the rulers 200 to 220): what is kept of the
/// rulers of one card, each known by its port's handle and its position identifier.
class PCI7841B : public Pilote {
 public:
  /// The rulers of one card.
  PCI7841B(const Matériel& matériel, std::uint16_t) : matériel_(matériel) {}

  /// Opens and configures a port of the card for `pour`, to whom a failed configuration is shown,
  /// and gives the handle all the same. `mode` is "11 bits" or "29 bits", any other text means the
  /// first; `vitesse` in kilobits per second.
  static std::int32_t InitCarteCAN(const Objet& pour, std::int32_t carte, std::int32_t port,
                                   std::uint32_t codeAcceptation, std::uint32_t masqueAcceptation,
                                   std::string_view mode, std::int32_t vitesse);

  /// The port behind that handle, for the dialogue with its rulers.
  [[nodiscard]] regles_mts::PortRègles Port(std::int32_t poignée) {
    return {matériel_, poignée, courrier_};
  }
  /// What is kept of one ruler, made on first use.
  struct Règle {
    std::int32_t poignée;                ///< of its port
    std::int16_t positionID;             ///< identifier of its positions
    regles_mts::LectureBloc bloc{};      ///< read as a block
    regles_mts::LectureSimple simple{};  ///< read by one channel
  };
  /// What is kept of the ruler with that identifier on that port.
  [[nodiscard]] Règle& LaRègle(std::int32_t poignée, std::int16_t positionID);

 private:
  Matériel matériel_;
  regles_mts::Courrier courrier_;
  std::vector<Règle> règles_;
};

}  // namespace zuma
