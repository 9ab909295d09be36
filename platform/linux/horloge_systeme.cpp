#include "platform/linux/horloge_systeme.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cmath>
#include <ctime>

namespace zuma::linux_ {
namespace {

constexpr double kNanosecondes = 1e9;
constexpr double kUnJour = 86400;

std::string Texte(const char* format) {
  const std::time_t maintenant = std::time(nullptr);
  std::tm local{};
  ::localtime_r(&maintenant, &local);
  std::array<char, 32> tampon{};
  const std::size_t n = std::strftime(tampon.data(), tampon.size(), format, &local);
  return {tampon.data(), n};
}

}  // namespace

std::string HorlogeSystème::TexteHeure() const {
  return Texte("%H:%M:%S");
}

std::string HorlogeSystème::TexteInstant() {
  return Texte("%Y-%m-%d %H:%M:%S");
}

void HorlogeSystème::Dort(double secondes) {
  if (!(secondes > 0)) return;
  const double durée = std::min(secondes, kUnJour);
  std::timespec reste{};
  reste.tv_sec = static_cast<std::time_t>(durée);
  reste.tv_nsec = static_cast<long>((durée - std::floor(durée)) * kNanosecondes);
  while (::clock_nanosleep(CLOCK_MONOTONIC, 0, &reste, &reste) == EINTR) {
  }
}

}  // namespace zuma::linux_
