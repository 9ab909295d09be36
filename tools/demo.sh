#!/usr/bin/env bash
# Makes a demo database, checks it and runs its frame on the simulated machine:
# demo.sh PROGRAM FOLDER SECONDS
set -euo pipefail

zuma=$1
dossier=$2
secondes=${3:-}

mkdir -p "$dossier"
base="$dossier/demo.db"
[ -e "$base" ] || "$zuma" init "$base"
"$zuma" check "$base" --frame 1
"$zuma" run "$base" --frame 1 --sim ${secondes:+--seconds "$secondes"}
