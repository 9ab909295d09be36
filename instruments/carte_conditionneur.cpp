// The boards that hold a digital conditioner.
#include <array>
#include <string>

#include "base/garde.h"
#include "instruments/conditionneur_num_k9.h"
#include "instruments/conditionneur_num_k9_v1_00.h"
#include "instruments/instrument.h"
#include "instruments/operations.h"

namespace zuma::instruments {
namespace {

using enum ENUM_TYPE_FONCTION;

double Canal(const ClassConditionneurNum_K9& conditionneur, std::int32_t index) {
  return conditionneur.ParCanalEA(index);
}
double Canal(const ClassConditionneurNum_K9_V1_00& conditionneur, std::int32_t index) {
  return conditionneur.ValeurCanal(index);
}

template <class T>
constexpr std::array<Voie<T>, 6> kVoies{{
    {FctEntréesAnalogiques, 0, [](const T& c) { return Canal(c, 0); }},
    {FctEntréesAnalogiques, 1, [](const T& c) { return Canal(c, 1); }},
    {FctEntréesAnalogiques, 2, [](const T& c) { return Canal(c, 2); }},
    {FctEntréesLogiques, 0, [](const T& c) { return Etat(c.Initialised()); }},
    {FctEntréesLogiques, 1, [](const T& c) { return Etat(c.ErreurGenerale()); }},
    {FctEntréesLogiques, 2, [](const T& c) { return Etat(c.Périmé()); }},
}};

std::string_view Raison(const PortInstrument& port, std::int32_t adresse, double version) {
  if (!port.PortOuvert()) return "port absent, occupé ou mal réglé";
  if (adresse < 0 || adresse > 127) return "adresse 0 à 7F attendue";
  return version == 0 ? "pas de réponse juste" : "ce module n'est pas connu";
}

// The classes themselves tell a start without module by their flags alone.
template <class T>
void Démarre(Carte& carte) {
  const Ref<PortInstrument> port = carte.LiaisonSerie2();
  port->ConfigurePort(carte.Configuration(), true);
  T& conditionneur = Neuf<T>(carte);
  (void)conditionneur.Initialise(port, carte.Adresse());
  if (conditionneur.Initialised()) return;
  Consigne(carte, Forme::Méthode, "Initialise",
           "Conditionneur d'adresse " + std::to_string(carte.Adresse()) + " sur '" +
               carte.Configuration() + "' non détecté (" +
               std::string(Raison(*port, carte.Adresse(), conditionneur.version())) + ")");
}

template <class T>
void Entretient(Carte& carte, FenêtreHôte& mère) {
  De<T>(carte).Reglage(&mère);
}

template <class T>
constexpr OpérationsCarte kOpérations{.démarre = &Démarre<T>,
                                      .rafraîchit = &RafraîchitEtPublie<T, kVoies<T>>,
                                      .entretient = &Entretient<T>};

}  // namespace

// The refresh pass serves the board of the first class block by block and never refreshes the board
// itself: its channels move at the frame's start, at a stop and when the host calls
// `Carte.MetàJour`. It must stay so.
const OpérationsCarte kConditionneurK9 = kOpérations<ClassConditionneurNum_K9>;
const OpérationsCarte kConditionneurK9V1 = kOpérations<ClassConditionneurNum_K9_V1_00>;

}  // namespace zuma::instruments
