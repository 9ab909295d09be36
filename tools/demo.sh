#!/usr/bin/env bash
# Makes a demo database, checks it, shows its frame live on the simulated machine, then runs a
# compression test on the simulated press: demo.sh PROGRAM FOLDER SECONDS
set -euo pipefail

zuma=$1
dossier=$2
secondes=${3:-}

mkdir -p "$dossier"
base="$dossier/demo.db"
[ -e "$base" ] || "$zuma" init "$base"
"$zuma" check "$base" --frame 1
"$zuma" run "$base" --frame 1 --sim --csv "$dossier/run.csv" ${secondes:+--seconds "$secondes"}
echo
"$zuma" compression "$base" --frame 1 --out "$dossier"
