// Frames of the CBR tester on any bytes: what is judged good can be decoded, and nothing but what
// stands before the header is cut off.
#include <cmath>

#include "fuzz/entree.h"
#include "instruments/trames_utest.h"

using namespace zuma;
using namespace zuma::trames_utest;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* données, std::size_t taille) {
  const std::string_view reçus = Entrée(données, taille).Reste();
  for (const Attente& attente : {kIdentification, kMesures}) {
    Octets tampon(reçus);
    const Code code = Analyse(tampon, attente);
    Exige(reçus.ends_with(tampon), "tampon");
    Exige((code == Code::SansEntête) == (reçus.find("UTEST") == std::string_view::npos), "entête");
    if (code != Code::Bonne) continue;
    Exige(Analyse(tampon, attente) == Code::Bonne, "analyse répétée");
    (void)DécodeIdentification(tampon);
    if (attente.fonction != kMesures.fonction) continue;
    const Mesures mesures = DécodeMesures(tampon);
    Exige(std::fabs(mesures.force) <= 21474.83648, "force");
    Exige(mesures.déplacement >= 0 && mesures.déplacement <= 4294967.295, "déplacement");
  }
  return 0;
}
