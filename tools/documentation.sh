#!/usr/bin/env bash
# Makes the reference of the headers as they are once installed; a public name without its words fails.
# documentation.sh FOLDER: leaves FOLDER/html
set -euo pipefail
cd "$(dirname "$0")/.."

dossier=$1
mkdir -p "$dossier"
dossier=$(realpath "$dossier")
rm -rf "$dossier/headers" "$dossier/html"
cmake -S . -B "$dossier/configuration" -G Ninja -DZUMA_TESTS=OFF -DZUMA_PROGRAM=OFF -DZUMA_PYTHON=OFF \
  >"$dossier/configuration.log" 2>&1 || {
  cat "$dossier/configuration.log" >&2
  exit 1
}
cmake --install "$dossier/configuration" --component headers --prefix "$dossier/headers" \
  >"$dossier/installation.log"
version=$(sed -nE 's/^project\(zuma VERSION ([0-9.]+).*/\1/p' CMakeLists.txt)

echo "Making the reference of $(find "$dossier/headers" -name '*.h' | wc -l) headers"
{
  cat docs/Doxyfile
  echo "INPUT = docs/reference.dox $dossier/headers/include"
  echo "OUTPUT_DIRECTORY = $dossier"
  echo "STRIP_FROM_PATH = $dossier/headers/include"
  echo "PROJECT_NUMBER = $version"
} | doxygen -
echo "$dossier/html/index.html"
