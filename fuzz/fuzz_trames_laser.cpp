// Replies of the laser on any bytes, for any command: a right one moves only what its command tells
// of, and a measure stays within its 24 bits.
#include "fuzz/entree.h"
#include "instruments/trames_laser.h"

using namespace zuma;
using namespace zuma::trames_laser;

namespace {

void Reçoit(const Echange& échange, std::string_view envoyée, std::string_view reçue) {
  if (échange.incomplète(reçue.size()) || !échange.valide(échange, reçue)) return;
  const bool mesure = échange.commande == EnumEIRCommande::ReadDataBinary;
  for (const bool drapeau : {false, true}) {
    EtatLu état{drapeau, drapeau, drapeau, 0.5};
    Octets réponse(reçue);
    échange.prend(envoyée, réponse, état);
    Exige(réponse.empty() || reçue.ends_with(réponse), "la réponse gardée vient de la ligne");
    const int changés = (état.LaserState != drapeau) + (état.EchoState != drapeau) +
                        (état.ZeroState != drapeau) + (état.ReadValue != 0.5);
    Exige(mesure ? changés == 1 : changés <= 1, "un seul état à la fois");
    Exige(état.ReadValue >= -8388608 && état.ReadValue < 8388607, "mesure sur 24 bits");
    Exige(mesure || reçue.find(':') != Octets::npos, "une réponse a sa fin");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* données, std::size_t taille) {
  Entrée entrée(données, taille);
  const auto commande = static_cast<EnumEIRCommande>(entrée.Octet() % 24);
  const std::string_view envoyée = entrée.Octets(entrée.Octet() % 4);
  const Echange* échange = EchangeDe(commande);
  if (échange == nullptr) return 0;
  const Octets question = Question(*échange, envoyée);
  Exige(question.front() == échange->lettre && question.back() == '\r', "question");
  Reçoit(*échange, envoyée, entrée.Reste());
  return 0;
}
