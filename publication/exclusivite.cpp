#include "publication/exclusivite.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace zuma::publication {
namespace {

// A name that begins with a zero lies in no file system.
struct Adresse {
  explicit Adresse(const std::string& nom) {
    nomUnix.sun_family = AF_UNIX;
    const std::size_t lettres = std::min(nom.size(), sizeof nomUnix.sun_path - 1);
    std::copy_n(nom.begin(), lettres, &nomUnix.sun_path[1]);
    octets = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + lettres);
  }
  [[nodiscard]] const sockaddr* Brute() const {
    return reinterpret_cast<const sockaddr*>(&nomUnix);
  }

  sockaddr_un nomUnix{};
  socklen_t octets = 0;
};

int Socket() {
  return ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
}

// Who listens there is known to the kernel: nobody has to answer.
int QuiEcoute(const Adresse& adresse) {
  const int descripteur = Socket();
  ucred qui{};
  socklen_t octets = sizeof qui;
  const bool connu = descripteur >= 0 &&
                     ::connect(descripteur, adresse.Brute(), adresse.octets) == 0 &&
                     ::getsockopt(descripteur, SOL_SOCKET, SO_PEERCRED, &qui, &octets) == 0;
  if (descripteur >= 0) ::close(descripteur);
  return connu ? qui.pid : 0;
}

}  // namespace

Exclusivité::Exclusivité(const std::string& nom) : descripteur_(Socket()) {
  constexpr int kAttente = 16;
  const Adresse adresse(nom);
  if (descripteur_ < 0) return;
  if (::bind(descripteur_, adresse.Brute(), adresse.octets) == 0) {
    (void)::listen(descripteur_, kAttente);
    return;
  }
  prise_ = errno == EADDRINUSE;
  if (prise_) occupant_ = QuiEcoute(adresse);
}

Exclusivité::~Exclusivité() {
  if (descripteur_ >= 0) ::close(descripteur_);
}

}  // namespace zuma::publication
