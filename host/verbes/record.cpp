// Records a frame that another program runs.
#include <chrono>
#include <cstdio>
#include <thread>

#include "host/configuration.h"
#include "host/enregistreur.h"
#include "host/interruption.h"
#include "host/regard/choix.h"
#include "host/verbes/terminal.h"
#include "host/verbes/verbes.h"

namespace zuma::host {
namespace {

constexpr std::chrono::milliseconds kPause{50};

void DitOùElleEnEst(const Enregistreur& enregistreur) {
  const EtatDEnregistrement état = enregistreur.Etat();
  std::fprintf(stderr, "\r%s\x1b[K", Phrase(état).c_str());
}

// Why a recording ends before it was to: empty for a good end. A host that hangs gives no samples
// any more, and its time stands still.
std::string PourquoiSArrêter(const publication::Lecteur& lecteur,
                             const publication::Echantillon& dernier, bool jusquÀUneHeure) {
  constexpr double kSilence = 5;
  if (lecteur.EstFini()) return {};
  if (!lecteur.EstEnMarche()) return "the host of the frame died";
  if (jusquÀUneHeure && SecondesDepuis(dernier) > kSilence) {
    return "the host of the frame has given nothing for 5 s";
  }
  return {};
}

}  // namespace

int Record(const OptionsRecord& options) {
  const std::string fichier = LaPublication(options.où, options.chassis);
  const Interruption interruption;
  const publication::Lecteur lecteur(fichier);
  auto objets = options.noms.empty() ? LesCapteurs(lecteur.LeChassis())
                                     : ObjetsNommés(lecteur.LeChassis(), options.noms);
  publication::Echantillon dernier;
  if (!lecteur.EstEnMarche() || !lecteur.LitLeDernier(dernier)) {
    throw MauvaisUsage("the frame does not run: there is nothing to record");
  }
  Enregistreur enregistreur(options.fichier, Enregistreur::Retard::Perd, {.âges = options.âges});
  const double début = dernier.Secondes();
  enregistreur.Commence(lecteur, std::move(objets), lecteur.LeChassis().paramètres, début);
  const bool terminal = Terminal().EstTerminal();
  std::string pourquoi;
  while (!Interruption::Demandée() && !lecteur.EstFini()) {
    (void)lecteur.LitLeDernier(dernier);
    pourquoi = PourquoiSArrêter(lecteur, dernier, options.secondes.has_value());
    if (!pourquoi.empty()) break;
    if (options.secondes && dernier.Secondes() - début >= *options.secondes) break;
    if (terminal) DitOùElleEnEst(enregistreur);
    std::this_thread::sleep_for(kPause);
  }
  enregistreur.Termine();
  const bool complet = FermeEtDit(enregistreur);
  if (complet) std::printf("%s\n", Phrase(enregistreur.Etat()).c_str());
  if (!pourquoi.empty()) std::fprintf(stderr, "zuma: %s: what it gave is kept\n", pourquoi.c_str());
  return complet && pourquoi.empty() ? kBon : kProblèmes;
}

}  // namespace zuma::host
