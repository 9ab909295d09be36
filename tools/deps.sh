#!/usr/bin/env bash
# Installs the Debian packages named as arguments, those that are missing only.
set -euo pipefail

manquants=()
for paquet in "$@"; do
  dpkg-query -W -f='${Status}' "$paquet" 2>/dev/null | grep -q 'ok installed' || manquants+=("$paquet")
done
[ ${#manquants[@]} -eq 0 ] && exit 0

if ! command -v apt-get >/dev/null; then
  echo "Missing packages: ${manquants[*]}. This is not Debian: install their equivalents." >&2
  exit 1
fi
racine=()
if [ "$(id -u)" -ne 0 ]; then
  command -v sudo >/dev/null || {
    echo "Missing packages: ${manquants[*]}. Run as root: apt-get install ${manquants[*]}" >&2
    exit 1
  }
  racine=(sudo)
fi
echo "Installing: ${manquants[*]}"
export DEBIAN_FRONTEND=noninteractive
"${racine[@]}" apt-get update -qq
"${racine[@]}" apt-get install -y -qq --no-install-recommends "${manquants[@]}" >/dev/null
