#pragma once

#include <filesystem>
#include <string>

#include <fcntl.h>
#include <unistd.h>

#include "core/valeur.h"
#include "outils/dossier_provisoire.h"

namespace zuma::essai {

/// The other end of a line: a pseudo-terminal as the system makes it, reached under a name that can
/// be pulled and put back like a cable.
class BoutDeLigne {
 public:
  BoutDeLigne() { Branche(); }
  ~BoutDeLigne() { Débranche(); }
  void Branche() {
    maître = ::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK);
    ::grantpt(maître);
    ::unlockpt(maître);
    std::filesystem::create_symlink(::ptsname(maître), nom);
  }
  void Débranche() {
    ::close(maître);
    std::filesystem::remove(nom);
  }
  void Envoie(const Octets& octets) const { (void)!::write(maître, octets.data(), octets.size()); }
  [[nodiscard]] Octets Reçu() const {
    Octets tampon(256, '\0');
    const ssize_t n = ::read(maître, tampon.data(), tampon.size());
    return tampon.substr(0, static_cast<std::size_t>(n > 0 ? n : 0));
  }

  const DossierProvisoire dossier;
  const std::string nom = dossier.Fichier("port");
  int maître = -1;
};

}  // namespace zuma::essai
