#!/usr/bin/env bash
# Installs a build into an empty prefix, builds and runs the examples against it by CMake and by
# pkg-config, as someone who has nothing but the package, and takes it away again:
# verifie_paquet.sh BUILD JOBS
set -euo pipefail
cd "$(dirname "$0")/.."

construction=$(realpath "$1")
taches=$2
travail=$(mktemp -d)
trap 'rm -rf "$travail"' EXIT
prefixe="$travail/prefix"

cmake --install "$construction" --prefix "$prefixe" >"$travail/install.log"
cmake -S examples -B "$travail/examples" -G Ninja -DCMAKE_PREFIX_PATH="$prefixe" \
  -DCMAKE_CXX_FLAGS="-Wall -Wextra" >"$travail/configure.log"
cmake --build "$travail/examples" -j "$taches" >"$travail/build.log" || {
  cat "$travail/build.log" >&2
  exit 1
}

bibliotheques=$(find "$prefixe" -name pkgconfig -printf '%h\n')
export PKG_CONFIG_PATH="$bibliotheques/pkgconfig"
read -ra drapeaux <<<"$(pkg-config --cflags --libs zuma)"
g++ -std=c++20 examples/host/minimal.cpp -o "$travail/minimal" "${drapeaux[@]}"

"$prefixe/bin/zuma" init "$travail/demo.db" >/dev/null
for hote in "$travail/examples/minimal" "$travail/examples/complet" "$travail/minimal"; do
  echo "$(basename "$hote"): $("$hote" "$travail/demo.db" | tail -1)"
done

# The package of Python, from the prefix alone.
PYTHONPATH="$prefixe/lib/python3/dist-packages" PYTHONDONTWRITEBYTECODE=1 \
  /usr/bin/python3 examples/python/readme.py "$travail/demo.db" | sed 's/^/python: /'

# A host outside the program is looked at while it runs: shown, scoped, recorded, attached to.
export ZUMA_PUBLICATIONS="$travail/publications"
mkdir "$ZUMA_PUBLICATIONS"
"$travail/examples/minimal" "$travail/demo.db" >/dev/null &
hote=$!
for _ in $(seq 100); do
  [ -z "$("$prefixe/bin/zuma" list --json)" ] || break
  sleep 0.05
done
echo "running host: $("$prefixe/bin/zuma" show Force | tail -1)"
"$prefixe/bin/zuma" scope Force --seconds 0.5 --svg "$travail/force.svg"
"$prefixe/bin/zuma" record Force --out "$travail/force.csv" --seconds 0.5
QT_QPA_PLATFORM=offscreen QT_LOGGING_RULES="default.warning=false" \
  "$prefixe/bin/zuma" desktop --attach --picture "$travail/attached.png" --after 0.5 2>/dev/null
echo "reader: $("$travail/examples/regarde" "$ZUMA_PUBLICATIONS"/*.pub Force)"
wait "$hote"
grep -q '<polyline' "$travail/force.svg"
[ "$(wc -l <"$travail/force.csv")" -gt 50 ]
[ -s "$travail/attached.png" ]

# A driver of one's own: by itself on its twin, then loaded by the installed program.
zuma="$prefixe/bin/zuma"
cmake -S examples/driver -B "$travail/driver" -G Ninja -DCMAKE_PREFIX_PATH="$prefixe" \
  -DCMAKE_CXX_FLAGS="-Wall -Wextra" >"$travail/configure.log"
cmake --build "$travail/driver" -j "$taches" >"$travail/build.log" || {
  cat "$travail/build.log" >&2
  exit 1
}
python3 - "$travail/demo.db" examples/driver/chassis.sql <<'FIN'
import pathlib
import sqlite3
import sys

sqlite3.connect(sys.argv[1]).executescript(pathlib.Path(sys.argv[2]).read_text())
FIN
echo "driver: $("$travail/driver/essai_ma_carte" "$travail/demo.db")"
avec=("$travail/demo.db" --frame 50 --driver "$travail/driver/libma_carte.so")
echo "driver: $("$zuma" check "${avec[@]}" | tail -1)"
"$zuma" run "${avec[@]}" --sim --fast --seconds 2 --json >"$travail/vues.jsonl"
python3 - "$travail/vues.jsonl" <<'FIN'
import json
import sys

vues = [json.loads(ligne) for ligne in open(sys.argv[1])]
for vue in vues:
    for canal in vue["channels"]:
        volts = float(canal["terminal"].split()[0])
        assert abs(canal["points"] - volts * 6553.6) <= 16, canal  # one code of 12 bits
valeurs = [vue["sensors"][0]["value"] for vue in vues]
assert len(set(valeurs)) == len(valeurs) >= 3, valeurs
print("driver: zuma run reads", *(f"{valeur:.3f} V" for valeur in valeurs))
FIN

xargs rm -f <"$construction/install_manifest.txt"
restes=$(find "$prefixe" -type f)
[ -z "$restes" ] || { echo "left behind: $restes" >&2; exit 1; }
