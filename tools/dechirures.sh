#!/usr/bin/env bash
# Hunts for torn reads of a publication, plainly and under ThreadSanitizer: dechirures.sh [READS]
set -euo pipefail
cd "$(dirname "$0")/.."

lectures=${1:-100000000}
travail=$(mktemp -d)
trap 'rm -rf "$travail"' EXIT
sources=(tools/dechirures/dechirures.cpp publication/lecture/*.cpp base/cles.cpp)
for genre in plain thread; do
  drapeaux=()
  [ "$genre" = plain ] || drapeaux=(-fsanitize=thread -g)
  g++ -std=c++20 -O2 -I. "${drapeaux[@]}" "${sources[@]}" -o "$travail/$genre" -pthread
done
"$travail/plain" "$lectures" 2
echo "under ThreadSanitizer: $(TSAN_OPTIONS=halt_on_error=1 "$travail/thread" $((lectures / 100)) 2)"
