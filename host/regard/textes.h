#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "publication/lecture/lecteur.h"

// How what is published reads for people.
namespace zuma::host {

/// A moment in UTC, nanoseconds since 1970, as in ISO 8601: "2026-11-26T17:51:42.125Z".
[[nodiscard]] std::string HeureUtc(std::uint64_t nanosecondes);
/// The moment of a second of a publication.
[[nodiscard]] std::uint64_t MomentUtc(const publication::Lecteur& lecteur, double secondes);

/// Value with unit; a dash for a reading that is missing; "on" and "off" for logic objects.
[[nodiscard]] std::string ValeurEnTexte(const publication::ObjetPublié& objet,
                                        const publication::Mesure& mesure);
/// Value alone, at most `chiffres` behind the point.
[[nodiscard]] std::string NombreEnTexte(double nombre, int chiffres = 3);
/// What a channel holds, in six digits: from counts of a converter to thousandths of an instrument.
[[nodiscard]] std::string PointsEnTexte(double points);
/// A limit: as many digits as it has.
[[nodiscard]] std::string LimiteEnTexte(const std::optional<double>& limite);
/// What else there is to say of it: "DANGER", "not reached", "old since 3.2 s"; "ok" for nothing.
[[nodiscard]] std::string EtatEnTexte(const publication::ObjetPublié& objet,
                                      const publication::Mesure& mesure);
/// "sensor Force", "channel Board/Block/Channel".
[[nodiscard]] std::string Désignation(const publication::ObjetPublié& objet);

/// Word for an event: "stop", "cause", "at rest", "NOT AT REST", "acknowledged", "set point", ...
[[nodiscard]] std::string_view MotDe(publication::GenreDEvènement genre);
/// The event in one line, without its time.
[[nodiscard]] std::string Phrase(const publication::ChassisPublié& chassis,
                                 const publication::EvènementLu& évènement);

}  // namespace zuma::host
