#!/usr/bin/env bash
# Builds the fuzz targets with clang and runs each for a bounded time: fuzz.sh SECONDS [JOBS]
# Findings and corpora stay in build/fuzz/corpus; the exit code tells whether one was found.
set -euo pipefail

if [[ ! ${1:-} =~ ^[1-9][0-9]*$ ]]; then
  echo "usage: $0 SECONDS [JOBS]" >&2
  exit 2
fi
secondes=$1
taches=${2:-$(nproc)}
cd "$(dirname "$0")/.."
tools/construit.sh fuzz "$taches" zuma_fuzz

echec=0
for cible in fuzz/fuzz_*.cpp; do
  nom=$(basename "$cible" .cpp)
  corpus="build/fuzz/corpus/$nom"
  mkdir -p "$corpus"
  echo "$nom: $secondes s"
  if ! "build/fuzz/$nom" -max_total_time="$secondes" -max_len=512 -timeout=5 \
      -artifact_prefix="$corpus/trouve-" -verbosity=0 -print_final_stats=1 "$corpus" \
      >"$corpus.log" 2>&1; then
    tail -n 40 "$corpus.log" >&2
    echo "$nom: a finding, see $corpus" >&2
    echec=1
    continue
  fi
  sed -n 's/^stat::number_of_executed_units: */  runs: /p' "$corpus.log"
done
exit "$echec"
