#include "host/interruption.h"

#include <atomic>

namespace zuma::host {
namespace {

std::atomic<bool> demandée = false;  // a signal handler can reach nothing else
static_assert(std::atomic<bool>::is_always_lock_free);

void Note(int) {
  demandée = true;
}

}  // namespace

Interruption::Interruption() {
  demandée = false;
  for (std::size_t i = 0; i < kSignaux.size(); ++i) {
    anciens_[i] = std::signal(kSignaux[i], Note);
    if (anciens_[i] == SIG_IGN) std::signal(kSignaux[i], SIG_IGN);
  }
}

Interruption::~Interruption() {
  for (std::size_t i = 0; i < kSignaux.size(); ++i) std::signal(kSignaux[i], anciens_[i]);
  demandée = false;  // nobody is left who would obey
}

bool Interruption::Demandée() noexcept {
  return demandée;
}

}  // namespace zuma::host
