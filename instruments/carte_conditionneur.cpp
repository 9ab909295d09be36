#include <array>

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
constexpr std::array<Voie<T>, 5> kVoies{{
    {FctEntréesAnalogiques, 0, [](const T& c) { return Canal(c, 0); }},
    {FctEntréesAnalogiques, 1, [](const T& c) { return Canal(c, 1); }},
    {FctEntréesAnalogiques, 2, [](const T& c) { return Canal(c, 2); }},
    {FctEntréesLogiques, 0, [](const T& c) { return Etat(c.Initialised()); }},
    {FctEntréesLogiques, 1, [](const T& c) { return Etat(c.ErreurGenerale()); }},
}};

template <class T>
void Démarre(Carte& carte) {
  const Ref<PortInstrument> port = carte.LiaisonSerie2();
  port->ConfigurePort(carte.Configuration(), true);
  (void)Neuf<T>(carte).Initialise(port, carte.Adresse());
}

template <class T>
void Rafraîchit(Carte& carte) {
  T& conditionneur = De<T>(carte);
  conditionneur.Refresh();
  Publie<T>(carte, conditionneur, kVoies<T>);
}

template <class T>
constexpr OpérationsCarte kOpérations{.démarre = &Démarre<T>, .rafraîchit = &Rafraîchit<T>};

}  // namespace

const OpérationsCarte kConditionneurK9 = kOpérations<ClassConditionneurNum_K9>;
const OpérationsCarte kConditionneurK9V1 = kOpérations<ClassConditionneurNum_K9_V1_00>;

}  // namespace zuma::instruments
