#include "host/avancement.h"

#include <cstdio>
#include <string>

#include <unistd.h>

namespace zuma::host {
namespace {

using namespace std::chrono_literals;
constexpr auto kAvantDeParaître = 500ms;
constexpr auto kEntreDeux = 200ms;
constexpr std::size_t kLargeur = 30;

}  // namespace

Avancement::Avancement()
    : terminal_(::isatty(STDERR_FILENO) != 0),
      prochain_(std::chrono::steady_clock::now() + kAvantDeParaître) {}

Avancement::~Avancement() {
  if (montré_) std::fputs("\r\033[K", stderr);
}

void Avancement::Montre(std::string_view quoi, double part) {
  if (!terminal_) return;
  const auto maintenant = std::chrono::steady_clock::now();
  if (maintenant < prochain_) return;
  prochain_ = maintenant + kEntreDeux;
  montré_ = true;
  std::string barre(static_cast<std::size_t>(part * kLargeur), '#');
  barre.resize(kLargeur, '.');
  std::fprintf(stderr, "\r\033[K[%s] %3.0f %%  %.*s", barre.c_str(), part * 100,
               static_cast<int>(quoi.size()), quoi.data());
  std::fflush(stderr);
}

}  // namespace zuma::host
