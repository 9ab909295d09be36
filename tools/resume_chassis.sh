#!/usr/bin/env bash
# Sums up what `zuma run` printed of a frame: how many inputs it has and how many of them moved, how
# often an error indicator rose and fell, and the longest pass: resume_chassis.sh TITLE OUTPUT
set -euo pipefail

awk -F' [|] ' -v titre="$1" '
  $2 == "longest pass" { passe = $3 }
  $4 == "channel -1" {
    haut = !($7 ~ /^(0 points|off)$/)
    if (haut && !leve[$3]) montees++
    if (!haut && leve[$3]) descentes++
    leve[$3] = haut
  }
  $4 != "channel -1" && $5 ~ / in$/ {
    cle = $2 $3 $4
    if (cle in premiere && premiere[cle] != $7) bouge[cle] = 1
    if (!(cle in premiere)) premiere[cle] = $7
  }
  END {
    for (c in premiere) voies++
    for (c in bouge) mobiles++
    printf "%s: %d of %d inputs moved", titre, mobiles, voies
    if (montees > 0) printf ", error indicators rose %d times and fell %d times", montees, descentes
    printf ", longest pass %s\n", passe
  }' "$2"
