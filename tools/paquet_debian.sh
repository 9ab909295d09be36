#!/usr/bin/env bash
# Builds the Debian packages from the committed sources, in a folder of their own, and has lintian look
# at them: paquet_debian.sh FOLDER JOBS
set -euo pipefail
cd "$(dirname "$0")/.."

dossier=$1
taches=$2
rm -rf "$dossier"
mkdir -p "$dossier/zuma"
git archive HEAD | tar -x -C "$dossier/zuma"
echo "Building the packages (log: $dossier/build.log)"
(cd "$dossier/zuma" && DEB_BUILD_OPTIONS="parallel=$taches" dpkg-buildpackage -us -uc -b) \
  >"$dossier/build.log" 2>&1 || {
  tail -30 "$dossier/build.log" >&2
  exit 1
}
lintian --fail-on warning "$dossier"/zuma_*.changes
ls -1 "$dossier"/*.deb
