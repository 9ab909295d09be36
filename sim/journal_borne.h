#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// A simulated machine may run for weeks: what its twins keep of what they were told stays small.
namespace zuma::sim {

/// Entries that a record keeps at least.
inline constexpr std::size_t kEntréesGardées = 1000;

/// Adds an entry to what a twin was told. Of a long record at least the last `kEntréesGardées`
/// stay.
template <class T>
void Note(std::vector<T>& journal, T entrée) {
  if (journal.size() >= 2 * kEntréesGardées) {
    journal.erase(journal.begin(), journal.end() - static_cast<std::ptrdiff_t>(kEntréesGardées));
  }
  journal.push_back(std::move(entrée));
}

/// Adds bytes to those in which a twin looks for a question; of noise without one the end stays.
inline void Note(std::string& octets, std::string_view suite) {
  octets += suite;
  if (octets.size() > kEntréesGardées) octets.erase(0, octets.size() - kEntréesGardées);
}

}  // namespace zuma::sim
