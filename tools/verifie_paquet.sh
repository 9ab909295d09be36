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

xargs rm -f <"$construction/install_manifest.txt"
restes=$(find "$prefixe" -type f)
[ -z "$restes" ] || { echo "left behind: $restes" >&2; exit 1; }
