#!/usr/bin/env bash
# Makes a demo database, checks its frames, shows the first one live on the simulated machine, runs
# the others for some seconds of simulated time, runs a compression test on the simulated press, takes a
# picture of the desktop window, lets a second test run into a limit, for the page of its stop, and breaks a
# specimen from Python:
# demo.sh PROGRAM FOLDER SECONDS
set -euo pipefail

zuma=$1
dossier=$2
secondes=${3:-}

mkdir -p "$dossier"
base="$dossier/demo.db"
# A database of an earlier version lacks frames: it is put aside, whatever was changed in it.
if [ -e "$base" ]; then
  code=0
  "$zuma" check "$base" --frame 5 >/dev/null 2>&1 || code=$?
  if [ "$code" -eq 2 ]; then
    echo "$base is from an earlier version: kept as $base.old"
    mv "$base" "$base.old"
    [ ! -e "$base.params" ] || mv "$base.params" "$base.old.params"
  fi
fi
[ -e "$base" ] || "$zuma" init "$base"
for chassis in 1 3 4 5; do "$zuma" check "$base" --frame "$chassis"; done
# No recording is written over: each demo gets the first number that is free.
numero=1 csv="$dossier/run.csv"
while [ -e "$csv" ] || [ -e "$csv.json" ]; do
  numero=$((numero + 1)) csv="$dossier/run-$numero.csv"
done
# A person sees the live view; what is kept or checked gets every channel.
lignes=--lines
[ ! -t 1 ] || lignes=
"$zuma" run "$base" --frame 1 --sim $lignes --csv "$csv" ${secondes:+--seconds "$secondes"}
echo

# A frame as fast as it goes; what it prints goes to a file, its sum to the screen.
# A disturbed machine leaves entries, readings lost and found again, and then the code is 1.
montre() {
  local chassis=$1 titre=$2 admis=$(($# > 2)) code=0
  shift 2
  "$zuma" run "$base" --frame "$chassis" --sim --fast --lines --seconds 8 "$@" \
    >"$dossier/frame$chassis.txt" 2>"$dossier/frame$chassis.err" || code=$?
  if [ "$code" -gt "$admis" ]; then
    cat "$dossier/frame$chassis.err" >&2
    exit "$code"
  fi
  tools/resume_chassis.sh "Frame $chassis ($titre)" "$dossier/frame$chassis.txt"
}
montre 3 "buses and drives, wrong check sums from 2 to 5 s" --fault crc@2-5
montre 4 "instruments"
montre 5 "PCI boards, encoders, LVDT probes"
echo "See them live: $zuma run $base --frame 3 --sim (or 4, 5)"
echo
"$zuma" compression "$base" --frame 1 --out "$dossier"
echo
# What the toolkit says of a screen that is not there is of no interest.
QT_LOGGING_RULES="default.warning=false" \
  "$zuma" desktop "$base" --frame 1 --sim --lang en --picture "$dossier/desktop.png" --after 3
echo "The frame in a window: picture $dossier/desktop.png, live: $zuma desktop $base --sim --lang en"
echo
# A test that a limit stops: its black box page says why, and how the machine came to rest.
"$zuma" compression "$base" --frame 1 --out "$dossier" --fault overrange >"$dossier/overrange.txt" ||
  [ $? -eq 1 ]
cas=$(find "$dossier/stops" -mindepth 1 -maxdepth 1 -type d -newer "$dossier/frame5.txt" | tail -1)
python3 - "$cas" <<'FIN'
import json
import sys

cas = json.load(open(sys.argv[1] + "/case.json"))
print("A stop:", cas["What fired?"][0])
for question in list(cas)[4:8]:
    print(f"  {question} {'; '.join(cas[question])}")
FIN
echo "Its black box page: picture $cas/stop.svg"
echo
# The package of the same build, in the system's Python, whose packages it needs.
PYTHONPATH="$(dirname "$zuma")/python" PYTHONDONTWRITEBYTECODE=1 \
  /usr/bin/python3 examples/python/tensile.py "$base" --picture "$dossier/tensile.png"
