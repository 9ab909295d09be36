#!/usr/bin/env bash
# Prints what a pass costs: bench.sh PROGRAM
# Time varies with the machine; allocations and instructions repeat exactly.
set -euo pipefail

programme=$1
tours=100
tours_chargement=2
dossier=$(mktemp -d)
trap 'rm -rf "$dossier"' EXIT

# Inclusive instructions of all, of the boards' busy waits and of the twins, a turn.
compte() {
  awk -v tours="$1" '
    /^fn=/ { fn = substr($0, 4); next }
    /^cfn=/ { cfn = substr($0, 5); next }
    /^calls=/ {
      getline
      if (cfn ~ /^zuma::(CarteES|Exacticks)::Attend\(/) attentes += $2
      if (cfn ~ /^zuma::sim::(BusPorts|Biblioth[^:]*|Port[^:]*|Liaison[^:]*|Spider[^:]*)::/ &&
          fn !~ /^zuma::sim::/) jumeaux += $2
      next
    }
    /^[0-9+*-]/ { total += $2 }
    END { printf "%d %d %d\n", total / tours, attentes / tours, jumeaux / tours }' "$2"
}

profile() {
  valgrind --tool=callgrind --compress-strings=no --callgrind-out-file="$dossier/profil" \
    --toggle-collect='zuma::banc::FaitUnTour*' "$programme" --turns "$2" "$1" \
    >"$dossier/valgrind.log" 2>&1 || { cat "$dossier/valgrind.log" >&2; exit 1; }
  compte "$2" "$dossier/profil"
}

"$programme" --benchmark_format=csv --benchmark_min_time=0.3 >"$dossier/temps.csv" 2>"$dossier/temps.log" ||
  { cat "$dossier/temps.log" >&2; exit 1; }

printf '%-58s %10s %7s | %12s = %12s + %9s + %9s | %9s\n' '' 'CPU us' 'allocs' \
  'instructions' 'library' 'waits' 'twins' 'waited us'
while IFS=$'\t' read -r nom texte; do
  n=$tours
  [ "$nom" = load ] && n=$tours_chargement
  # A scenario in which something failed has no figures here, and the read fails.
  read -r cpu allocations attendu < <(awk -F, -v nom="$nom" '
    $1 == "name" || $1 == "\"name\"" { for (i = 1; i <= NF; ++i) { gsub(/"/, "", $i); rang[$i] = i } next }
    { gsub(/"/, ""); if ($1 == nom && $rang["error_occurred"] != "true") print $rang["cpu_time"], $rang["allocations"], $rang["simulated_us"] }' \
    "$dossier/temps.csv") || { cat "$dossier/temps.csv" >&2; exit 1; }
  read -r total attentes jumeaux < <(profile "$nom" "$n")
  LC_ALL=C.UTF-8 printf '%-58s %10.2f %7.0f | %12d = %12d + %9d + %9d | %9.0f\n' "$texte" "$cpu" \
    "$allocations" "$total" $((total - attentes - jumeaux)) "$attentes" "$jumeaux" "$attendu"
done < <("$programme" --list)
cat <<'FIN'

CPU us: processor time, varies with the machine. allocs, instructions: for one pass, they repeat.
waits: boards' settling delays, spun on the simulated clock. twins: simulated boards, bus and lines.
waited us: time that passes on the simulated clock, a microsecond for each look at it; a real
machine spends about as much waiting for its boards.

FIN
"$programme" --publication
"$programme" --stop
