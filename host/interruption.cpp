#include "host/interruption.h"

#include <atomic>
#include <csignal>

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
  std::signal(SIGINT, Note);
  std::signal(SIGTERM, Note);
}

Interruption::~Interruption() {
  std::signal(SIGINT, SIG_DFL);
  std::signal(SIGTERM, SIG_DFL);
}

bool Interruption::Demandée() noexcept {
  return demandée;
}

}  // namespace zuma::host
