#!/usr/bin/env bash
# Configures a preset and builds targets with progress: construit.sh PRESET JOBS TARGET...
set -euo pipefail

prereglage=$1
taches=$2
shift 2
mkdir -p build
if ! cmake --preset "$prereglage" >"build/$prereglage.log" 2>&1; then
  cat "build/$prereglage.log" >&2
  exit 1
fi
echo "Building $* (preset $prereglage)"
cmake --build --preset "$prereglage" -j "$taches" --target "$@"
