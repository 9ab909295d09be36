#!/usr/bin/env bash
# Counts the instructions that a refresh takes for each sensor, and fails when one of the figures has
# grown by more than 5 % over bench/instructions.txt: instructions.sh JOBS [--write]
# Counted and not timed: the same program gives the same figures on a busy machine.
set -euo pipefail
cd "$(dirname "$0")/.."

taches=$1
ecrit=${2:-}
tours=100
chauffe=20
capteurs=64
plafonds=bench/instructions.txt
mkdir -p build
cmake --preset release -DZUMA_BENCH=ON >build/release.log 2>&1 || { cat build/release.log >&2; exit 1; }
echo "Building zuma_bench (preset release)"
cmake --build --preset release -j "$taches" --target zuma_bench >build/bench.log || { cat build/bench.log >&2; exit 1; }
profil=$(mktemp)
trap 'rm -f "$profil"' EXIT

# Instructions within the functions named, without those of the simulated clock, boards and lines.
compte() {
  valgrind --tool=callgrind --compress-strings=no --callgrind-out-file="$profil" \
    --toggle-collect="$1" build/release/zuma_bench --turns "$tours" normal >/dev/null 2>build/valgrind.log ||
    { cat build/valgrind.log >&2; exit 1; }
  awk -v diviseur="$2" '
    /^fn=/ { fn = substr($0, 4); next }
    /^cfn=/ { cfn = substr($0, 5); next }
    /^calls=/ {
      getline
      if (cfn ~ /^zuma::sim::/ && fn !~ /^zuma::sim::/) ailleurs += $2
      next
    }
    /^[0-9+*-]/ { total += $2 }
    END { printf "%d\n", (total - ailleurs) / diviseur + 0.5 }' "$profil"
}

{
  echo "refresh of a sensor: $(compte 'zuma::Capteur::MetàJour()' $(((tours + chauffe) * capteurs)))"
  echo "pass, for each sensor: $(compte 'zuma::banc::FaitUnTour*' $((tours * capteurs)))"
} >build/instructions.txt
cat build/instructions.txt
[ "$ecrit" != --write ] || cp build/instructions.txt "$plafonds"
awk -F': ' 'NR == FNR { permis[$1] = $2 * 1.05; next }
  !($1 in permis) || $2 > permis[$1] { printf "%s: %d instructions, %d at most\n", $1, $2, permis[$1]; grandi = 1 }
  END { exit grandi }' "$plafonds" build/instructions.txt >&2
