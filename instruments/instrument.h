#pragma once

#include <cstdint>
#include <optional>
#include <span>

#include "tree/carte.h"

// How a board holds an instrument that a host could also use on its own, and carries its values to
// the channels.
namespace zuma::instruments {

/// The instrument of a board, in the place of a driver object. There is no second base address.
template <class Instrument>
class PiloteInstrument : public Pilote {
 public:
  /// Makes the instrument, with the services of the board.
  PiloteInstrument(const Matériel& matériel, std::uint16_t) : matériel_(matériel) { Recommence(); }
  /// Makes the instrument again, in the same place.
  void Recommence() {
    instrument_ = &place_.emplace(matériel_.plateforme);
    instrument_->TimerExact(matériel_.timer);
  }
  /// The instrument as it stands; `Recommence` makes another one in its place.
  [[nodiscard]] Instrument& LInstrument() noexcept { return *instrument_; }

 private:
  Matériel matériel_;
  std::optional<Instrument> place_;
  Instrument* instrument_ = nullptr;
};

/// The instrument of a board, made on first use.
template <class Instrument>
[[nodiscard]] Instrument& De(Carte& carte) {
  return carte.PiloteDe<PiloteInstrument<Instrument>>(0).LInstrument();
}

/// The board's instrument as new, for the start of a board: what the last one latched is gone.
template <class Instrument>
[[nodiscard]] Instrument& Neuf(Carte& carte) {
  auto& pilote = carte.PiloteDe<PiloteInstrument<Instrument>>(0);
  pilote.Recommence();
  return pilote.LInstrument();
}

/// One value of an instrument and the channel that takes it: the block's type and the channel's
/// number. States are told as -1 and 0, like on any logic channel.
template <class Instrument>
struct Voie {
  ENUM_TYPE_FONCTION type;                      ///< of the block
  std::int16_t numéro;                          ///< of the channel
  double (*lit)(const Instrument& instrument);  ///< value of the instrument
};

/// A state as a logic channel holds it: -1 true, 0 false.
[[nodiscard]] constexpr double Etat(bool vrai) noexcept {
  return vrai ? -1 : 0;
}

/// Copies each value to the channels of its type and number; the others keep theirs. Measures that
/// are not `nouvelles` keep the age of the last ones; states are always those of now.
template <class Instrument>
void Publie(Carte& carte, const Instrument& instrument, std::span<const Voie<Instrument>> voies,
            bool nouvelles = true) {
  for (const FonctionRef& bloc : carte.LesFonctions()) {
    for (const CanalRef& canal : bloc->LesCanaux()) {
      for (const Voie<Instrument>& voie : voies) {
        if (voie.type == bloc->TypeDeFonction() && voie.numéro == canal->NuméroCanal()) {
          const bool mesure = voie.type == ENUM_TYPE_FONCTION::FctEntréesAnalogiques;
          canal->TientValeurCanal(voie.lit(instrument));
          if (nouvelles || !mesure) canal->DateLaLecture();
        }
      }
    }
  }
}

/// Refresh of a board that is one instrument: one step of its exchange, then its values.
template <class Instrument, const auto& kVoies>
void RafraîchitEtPublie(Carte& carte) {
  Instrument& instrument = De<Instrument>(carte);
  const std::int32_t avant = instrument.Mesures();
  instrument.Refresh();
  Publie<Instrument>(carte, instrument, kVoies, instrument.Mesures() != avant);
}

}  // namespace zuma::instruments
