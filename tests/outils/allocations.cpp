#include "outils/allocations.h"

#include <cstdlib>
#include <new>

namespace {
thread_local std::int64_t nombre = 0;
}  // namespace

void* operator new(std::size_t taille) {
  ++nombre;
  if (void* mémoire = std::malloc(taille == 0 ? 1 : taille)) return mémoire;
  throw std::bad_alloc();
}
void* operator new(std::size_t taille, const std::nothrow_t&) noexcept {
  ++nombre;
  return std::malloc(taille == 0 ? 1 : taille);
}
void operator delete(void* mémoire) noexcept {
  std::free(mémoire);
}
void operator delete(void* mémoire, std::size_t) noexcept {
  std::free(mémoire);
}

std::int64_t zuma::essai::Allocations() noexcept {
  return nombre;
}
