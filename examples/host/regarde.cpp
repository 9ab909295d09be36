// Looks at a frame that another program runs: regarde FILE.pub NAME
#include <cstdio>

#include "publication/lecture/lecteur.h"

namespace {

void Montre(const std::string& file, const std::string& name) {
  zuma::publication::Lecteur reader(file);
  zuma::publication::Echantillon sample;  // to be read into again and again
  if (!reader.LitLeDernier(sample)) return;
  for (std::size_t object : Cherche(reader.LeChassis(), name)) {
    std::printf("%g %s\n", sample[object].valeur, reader.LeChassis().objets[object].unité.c_str());
  }
}

}  // namespace

int main(int nombre, char** arguments) try {
  if (nombre != 3) return 2;
  Montre(arguments[1], arguments[2]);
  return 0;
} catch (const zuma::publication::Illisible& raison) {
  std::fprintf(stderr, "%s\n", raison.what());
  return 1;
}
